#pragma once

#include <QImage>

class vtkRenderWindow;

/**
 * @brief Reads a render window's frame into a QImage, and merges the glow of the outline layer into
 * a transparent frame.
 */
class VXRenderBufferCapture
{
public:
  /** Colour change (0..255) up to which the glow pass left a pixel alone. */
  static constexpr int k_GlowNoise = 3;
  /** Scale from a pixel's colour change into the opacity the glow gives it. */
  static constexpr int k_GlowAlphaGain = 4;

  /** Re-renders the window and reads its back buffer: RGBA8888 with alpha, RGB888 without. */
  static QImage grab(vtkRenderWindow* window, bool rgba);

  /**
   * The glow pass writes no alpha of its own, so a transparent frame takes its alpha from a frame
   * without the outline layer (scene), and each pixel the glow changed gets the glow's colour and an
   * opacity from the size of the change. Both images are RGBA8888 of the same size.
   */
  static void mergeGlow(QImage& scene, const QImage& withGlow);
};
