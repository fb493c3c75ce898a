#include "filters/VXBoxCallback.h"

#include "filters/VXBox.h"

#include <vtkBoxRepresentation.h>
#include <vtkBoxWidget2.h>
#include <vtkObjectFactory.h>
#include <vtkTransform.h>

vtkStandardNewMacro(VXBoxCallback);

void VXBoxCallback::setTransform(vtkTransform* transform)
{
  m_Transform = transform;
}

void VXBoxCallback::Execute(vtkObject* caller, unsigned long /*eventId*/, void* /*callData*/)
{
  auto* widget = vtkBoxWidget2::SafeDownCast(caller);
  if (widget == nullptr || m_Transform == nullptr)
  {
    return;
  }
  auto* representation = vtkBoxRepresentation::SafeDownCast(widget->GetRepresentation());
  if (representation == nullptr)
  {
    return;
  }
  representation->GetTransform(m_Transform);
  if (m_Box != nullptr)
  {
    Q_EMIT m_Box->transformChanged();
  }
}
