#pragma once

#include <vtkHardwareSelector.h>
#include <vtkSmartPointer.h>

#include <cstdint>
#include <deque>
#include <vector>

class vtkRenderer;

/**
 * The selection buffers of one renderer, kept while the picture they were rendered from stands, so
 * that a mouse moving over a still scene picks without rendering anything.
 *
 * A capture renders the prop and cell id passes into a small square around the pixel asked for
 * (pieces of the window, kept up to a few at once). All of them are dropped as soon as anything that
 * decides what lies under a pixel changes: the camera, the window or viewport size, the props of the
 * renderer, or the visibility, pickability, transform, mapper or mapper input of a pickable prop (an
 * image slice changing slice is a change of its mapper). Props that are not pickable (highlights,
 * cursors, hover text) are hidden while capturing and do not count.
 */
class VXSelectionBuffers
{
public:
  VXSelectionBuffers();
  ~VXSelectionBuffers();
  VXSelectionBuffers(const VXSelectionBuffers&) = delete;
  VXSelectionBuffers& operator=(const VXSelectionBuffers&) = delete;

  /**
   * What the selection drew at a display pixel (from the bottom left of the window): the prop and the
   * cell id. Renders only when no kept buffer holds the pixel for the scene as it is now.
   */
  vtkHardwareSelector::PixelInformation pixelInformation(vtkRenderer* renderer, int x, int y);

  /** Drops every kept buffer. */
  void clear();

  /** How many captures (renders of the selection passes) have been made: tests read it. */
  long captureCount() const { return m_CaptureCount; }

  /** Side, in pixels, of the square rendered around a pixel that no kept buffer holds. */
  static constexpr int k_PieceSize = 64;
  /** Pieces of the window kept for one picture. */
  static constexpr std::size_t k_MaxPieces = 16;

private:
  struct Piece
  {
    unsigned int area[4] = {0, 0, 0, 0};
    vtkSmartPointer<vtkHardwareSelector> selector;
  };

  std::vector<std::uint64_t> sceneSignature(vtkRenderer* renderer) const;
  const Piece* capture(vtkRenderer* renderer, int x, int y);

  vtkRenderer* m_Renderer = nullptr;
  std::vector<std::uint64_t> m_Signature;
  std::deque<Piece> m_Pieces;
  long m_CaptureCount = 0;
};
