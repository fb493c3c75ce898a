#include "filters/VXPlaneCallback.h"

#include "filters/VXPlane.h"

#include <vtkImplicitPlaneRepresentation.h>
#include <vtkImplicitPlaneWidget2.h>
#include <vtkNew.h>
#include <vtkObjectFactory.h>
#include <vtkPlane.h>

vtkStandardNewMacro(VXPlaneCallback);

void VXPlaneCallback::Execute(vtkObject* caller, unsigned long /*eventId*/, void* /*callData*/)
{
  auto* widget = vtkImplicitPlaneWidget2::SafeDownCast(caller);
  if (widget == nullptr || m_Plane == nullptr)
  {
    return;
  }
  auto* representation = vtkImplicitPlaneRepresentation::SafeDownCast(widget->GetRepresentation());
  if (representation == nullptr)
  {
    return;
  }
  vtkNew<vtkPlane> plane;
  representation->GetPlane(plane);
  std::array<double, 3> origin{};
  std::array<double, 3> normal{};
  plane->GetOrigin(origin.data());
  plane->GetNormal(normal.data());
  m_Plane->setValues(origin, normal);
}
