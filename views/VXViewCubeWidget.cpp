#include "views/VXViewCubeWidget.h"

#include "views/VXViewCubeRepresentation.h"

#include <vtkCameraInterpolator.h>
#include <vtkNew.h>
#include <vtkObjectFactory.h>

vtkStandardNewMacro(VXViewCubeWidget);

void VXViewCubeWidget::CreateDefaultRepresentation()
{
  // The base may have made its own representation already; ours replaces it.
  if (VXViewCubeRepresentation::SafeDownCast(WidgetRep) == nullptr)
  {
    vtkNew<VXViewCubeRepresentation> representation;
    SetWidgetRepresentation(representation);
  }
}

VXViewCubeRepresentation* VXViewCubeWidget::getCubeRepresentation()
{
  CreateDefaultRepresentation();
  return VXViewCubeRepresentation::SafeDownCast(WidgetRep);
}

void VXViewCubeWidget::SetFaceLabels(const std::string& xPlus, const std::string& xMinus,
                                     const std::string& yPlus, const std::string& yMinus,
                                     const std::string& zPlus, const std::string& zMinus)
{
  if (auto* representation = getCubeRepresentation())
  {
    representation->setLabels({{xPlus, xMinus, yPlus, yMinus, zPlus, zMinus}});
  }
}

std::array<std::string, 6> VXViewCubeWidget::GetFaceLabels()
{
  if (auto* representation = getCubeRepresentation())
  {
    return representation->getLabels();
  }
  return {};
}
