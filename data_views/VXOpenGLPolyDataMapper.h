#pragma once

#include <vtkOpenGLPolyDataMapper.h>

namespace image_slice_utilities
{
/**
 * The mapper of the textured polygon of an image slice. In hardware selection it writes the texel
 * under each fragment, not only the polygon, so a pick finds the image cell: the cell-id low pass
 * writes the texel index in the texture, the high pass the index of the piece of the image
 * ("activeExtent") when the slice was cut into several textures.
 */
class VXOpenGLPolyDataMapper : public vtkOpenGLPolyDataMapper
{
public:
  static VXOpenGLPolyDataMapper* New();
  vtkTypeMacro(VXOpenGLPolyDataMapper, vtkOpenGLPolyDataMapper);

  /** @brief Selection pass numbers of vtkHardwareSelector for the low and high words of cell ids. */
  static constexpr int k_CellIdLowPass = 5;
  static constexpr int k_CellIdHighPass = 6;

  /** @brief The index of the piece of the image that the next draw shows. */
  void setNextExtentIndex(int index) { m_NextExtentIndex = index; }
  int activeExtentIndex() const { return m_ActiveExtent; }

  void RenderPiece(vtkRenderer* ren, vtkActor* act) override;

protected:
  VXOpenGLPolyDataMapper() = default;
  ~VXOpenGLPolyDataMapper() override = default;

  void ReplaceShaderPicking(std::map<vtkShader::Type, vtkShader*> shaders, vtkRenderer* ren,
                            vtkActor* act) override;
  void SetMapperShaderParameters(vtkOpenGLHelper& cellBO, vtkRenderer* ren, vtkActor* act) override;

private:
  VXOpenGLPolyDataMapper(const VXOpenGLPolyDataMapper&) = delete;
  void operator=(const VXOpenGLPolyDataMapper&) = delete;

  int m_NextExtentIndex = 0;
  int m_ActiveExtent = -1;
};
} // namespace image_slice_utilities
