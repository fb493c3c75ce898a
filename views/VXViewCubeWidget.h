#pragma once

#include <vtkCameraOrientationWidget.h>

#include <array>
#include <string>

class VXViewCubeRepresentation;

/**
 * @brief The orientation gizmo in the corner of a render window. Clicking a handle turns the camera
 * to look along that axis.
 */
class VXViewCubeWidget : public vtkCameraOrientationWidget
{
public:
  static VXViewCubeWidget* New();
  vtkTypeMacro(VXViewCubeWidget, vtkCameraOrientationWidget);

  /** Labels in the order +X, -X, +Y, -Y, +Z, -Z. */
  void SetFaceLabels(const std::string& xPlus, const std::string& xMinus, const std::string& yPlus,
                     const std::string& yMinus, const std::string& zPlus, const std::string& zMinus);
  std::array<std::string, 6> GetFaceLabels();

  void CreateDefaultRepresentation() override;
  VXViewCubeRepresentation* getCubeRepresentation();

protected:
  VXViewCubeWidget() = default;
  ~VXViewCubeWidget() override = default;

private:
  VXViewCubeWidget(const VXViewCubeWidget&) = delete;
  void operator=(const VXViewCubeWidget&) = delete;
};
