#include "views/VXPickerCallback.h"

#include "views/VXInteractorStyleCamera.h"

#include <vtkActor.h>
#include <vtkCursor3D.h>
#include <vtkNew.h>
#include <vtkObjectFactory.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkRenderer.h>

vtkStandardNewMacro(VXPickerCallback);

void VXPickerCallback::setupHighlightActors()
{
  vtkNew<vtkCursor3D> cross;
  cross->AllOff();
  cross->AxesOn();
  vtkNew<vtkPolyDataMapper> pointMapper;
  pointMapper->SetInputConnection(cross->GetOutputPort());
  pointMapper->ScalarVisibilityOff();
  m_PointHighlightActor = vtkSmartPointer<vtkActor>::New();
  m_PointHighlightActor->SetMapper(pointMapper);
  m_PointHighlightActor->PickableOff();
  m_PointHighlightActor->GetProperty()->SetColor(1.0, 0.0, 1.0);
  m_PointHighlightActor->VisibilityOff();

  vtkNew<vtkPolyDataMapper> cellMapper;
  cellMapper->ScalarVisibilityOff();
  m_CellHighlightActor = vtkSmartPointer<vtkActor>::New();
  m_CellHighlightActor->SetMapper(cellMapper);
  m_CellHighlightActor->PickableOff();
  auto* cellProperty = m_CellHighlightActor->GetProperty();
  cellProperty->SetColor(1.0, 0.0, 1.0);
  cellProperty->SetPointSize(m_CellPointSize + 2.0f);
  cellProperty->RenderPointsAsSpheresOn();
  cellProperty->SetLineWidth(m_CellLineWidth + 1.0f);
  cellProperty->RenderLinesAsTubesOn();
  m_CellHighlightActor->VisibilityOff();

  if (m_Renderer != nullptr)
  {
    m_Renderer->AddActor(m_PointHighlightActor);
    m_Renderer->AddActor(m_CellHighlightActor);
  }
}

void VXPickerCallback::toggleHighlightersVisibility(bool visible)
{
  if (m_PointHighlightActor != nullptr)
  {
    m_PointHighlightActor->SetVisibility(visible);
  }
  if (m_CellHighlightActor != nullptr)
  {
    m_CellHighlightActor->SetVisibility(visible);
  }
}

void VXPickerCallback::Execute(vtkObject* caller, unsigned long eventId, void* /*callData*/)
{
  if (m_Window == nullptr)
  {
    return;
  }
  auto* style = vtkObject::SafeDownCast(caller) != nullptr && caller->IsA("VXInteractorStyleCamera")
                    ? static_cast<VXInteractorStyleCamera*>(caller)
                    : nullptr;
  switch (eventId)
  {
  case vtkCommand::EndInteractionEvent:
    toggleHighlightersVisibility(false);
    break;
  case VXInteractorStyleCamera::k_KeyPressedEvent:
    if (style != nullptr && (style->pick1ModeOn() || style->pick2ModeOn()))
    {
      m_PickKeyHeld = true;
    }
    break;
  case VXInteractorStyleCamera::k_KeyReleasedEvent:
    if (style != nullptr)
    {
      m_PickKeyHeld = false;
      if (m_PointHighlightActor != nullptr)
      {
        m_PointHighlightActor->SetVisibility(m_HoverPointsOn);
      }
      if (m_CellHighlightActor != nullptr)
      {
        m_CellHighlightActor->SetVisibility(m_HoverCellsOn);
      }
    }
    break;
  default:
    break;
  }
}
