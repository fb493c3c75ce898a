#pragma once

#include <vtkCameraOrientationRepresentation.h>

#include <array>
#include <string>

/**
 * @brief The camera orientation gizmo with settable handle labels. The toolkit's representation
 * draws fixed axis names; this one keeps its own texts and rebuilds the label textures from them.
 */
class VXViewCubeRepresentation : public vtkCameraOrientationRepresentation
{
public:
  static VXViewCubeRepresentation* New();
  vtkTypeMacro(VXViewCubeRepresentation, vtkCameraOrientationRepresentation);

  /** Labels in the order +X, -X, +Y, -Y, +Z, -Z. */
  void setLabels(const std::array<std::string, 6>& labels);
  std::array<std::string, 6> getLabels() const { return m_Labels; }

protected:
  VXViewCubeRepresentation();
  ~VXViewCubeRepresentation() override = default;

private:
  VXViewCubeRepresentation(const VXViewCubeRepresentation&) = delete;
  void operator=(const VXViewCubeRepresentation&) = delete;

  std::array<std::string, 6> m_Labels = {{"X", "-X", "Y", "-Y", "Z", "-Z"}};
};
