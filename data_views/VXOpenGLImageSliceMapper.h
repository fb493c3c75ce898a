#pragma once

#include <vtkOpenGLImageSliceMapper.h>

#include <array>
#include <vector>

class vtkInformationIntegerKey;

namespace image_slice_utilities
{
using TextureExtent = std::array<int, 6>;

/**
 * The pieces (sub-extents) that image slices were cut into for texturing during the hardware
 * selection in progress, in drawing order. The hardware selector clears it when a selection begins,
 * and hands it to each slice mapper (setExtents) when it ends.
 */
std::vector<TextureExtent>& SubDividedTextureExtents();

/**
 * The image slice mapper of the slice view. Its textured polygon is drawn by a
 * VXOpenGLPolyDataMapper, so that a hardware pick reports the image cell under the cursor; during a
 * selection it records the pieces of the image it draws, so that the pick can be decoded.
 *
 * Decoding a pick (the entry point for pickers): cellIdFromSelection() turns the cell id that the
 * selector reports for this mapper's prop into the id of the cell of the image.
 */
class VXOpenGLImageSliceMapper : public vtkOpenGLImageSliceMapper
{
public:
  static VXOpenGLImageSliceMapper* New();
  vtkTypeMacro(VXOpenGLImageSliceMapper, vtkOpenGLImageSliceMapper);

  /** @brief The prop key "activeExtent": the index of the piece drawn last by the polygon pass. */
  static vtkInformationIntegerKey* ACTIVE_EXTENT();

  void Render(vtkRenderer* ren, vtkImageSlice* prop) override;
  void Update() override;
  using vtkOpenGLImageSliceMapper::Update;

  /** @brief Whether a texture of the size fits the renderer's limits. */
  bool CheckTextureSize(const int size[2], vtkRenderer* ren);
  /** @brief The pieces the base mapper cuts the extent into, in the order it draws them. */
  void recursiveRenderTexturedPolygon(vtkRenderer* ren, const int extent[6],
                                      std::vector<TextureExtent>& pieces);

  // The list of pieces of the last selection, filled by the hardware selector.
  const std::vector<TextureExtent>& getExtents() const { return m_Extents; }
  void setExtents(const std::vector<TextureExtent>& extents) { m_Extents = extents; }
  void clearExtents() { m_Extents.clear(); }

  /**
   * Decodes a selection id: the low 24 bits index a texel in a piece, the bits above the piece in
   * getExtents(). Gives the (i, j, k) of the point of the drawn image (a cell of the source image
   * when the slice view draws cells); false when the piece index is not in the list.
   */
  bool ijkFromSelection(long long selectionId, int ijk[3]) const;
  /** @brief The id of the drawn point at the selection in the mapper's input, or -1. */
  long long cellIdFromSelection(long long selectionId);

protected:
  VXOpenGLImageSliceMapper();
  ~VXOpenGLImageSliceMapper() override = default;

private:
  VXOpenGLImageSliceMapper(const VXOpenGLImageSliceMapper&) = delete;
  void operator=(const VXOpenGLImageSliceMapper&) = delete;

  std::vector<TextureExtent> m_Extents;
};
} // namespace image_slice_utilities
