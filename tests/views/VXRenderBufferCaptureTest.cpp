#include "views/VXRenderBufferCapture.h"

#include <gtest/gtest.h>

namespace
{
QImage filled(const QColor& colour, int alpha)
{
  QImage image(4, 2, QImage::Format_RGBA8888);
  QColor c = colour;
  c.setAlpha(alpha);
  image.fill(c);
  return image;
}

TEST(VXRenderBufferCaptureTest, GlowGivesOpacityByTheSizeOfItsChange)
{
  QImage scene = filled(QColor(40, 50, 70), 0);
  QImage glow = scene.copy();
  glow.setPixelColor(0, 0, QColor(40, 60, 70, 0));  // change 10
  glow.setPixelColor(1, 0, QColor(40, 250, 70, 0)); // change 200
  glow.setPixelColor(2, 0, QColor(42, 52, 72, 0));  // the pass's shift of a unit or two
  VXRenderBufferCapture::mergeGlow(scene, glow);

  EXPECT_EQ(scene.pixelColor(0, 0), QColor(40, 60, 70, 10 * VXRenderBufferCapture::k_GlowAlphaGain));
  EXPECT_EQ(scene.pixelColor(1, 0), QColor(40, 250, 70, 255));
  EXPECT_EQ(scene.pixelColor(2, 0), QColor(40, 50, 70, 0));
  EXPECT_EQ(scene.pixelColor(3, 1), QColor(40, 50, 70, 0));
}

TEST(VXRenderBufferCaptureTest, OpaqueScenePixelsStayOpaque)
{
  QImage scene = filled(QColor(200, 20, 20), 255);
  QImage glow = filled(QColor(200, 40, 20), 0);
  VXRenderBufferCapture::mergeGlow(scene, glow);
  EXPECT_EQ(scene.pixelColor(0, 0), QColor(200, 40, 20, 255));
}

TEST(VXRenderBufferCaptureTest, MismatchedFramesLeaveTheSceneAsItIs)
{
  QImage scene = filled(QColor(1, 2, 3), 0);
  const QImage before = scene.copy();
  VXRenderBufferCapture::mergeGlow(scene, QImage(3, 2, QImage::Format_RGBA8888));
  EXPECT_EQ(scene, before);
  VXRenderBufferCapture::mergeGlow(scene,
                                   filled(QColor(250, 2, 3), 0).convertToFormat(QImage::Format_ARGB32));
  EXPECT_EQ(scene, before);
  EXPECT_TRUE(VXRenderBufferCapture::grab(nullptr, true).isNull());
}
} // namespace
