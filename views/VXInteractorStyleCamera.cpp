#include "views/VXInteractorStyleCamera.h"

#include "views/VXVisualizationWidget.h"

#include <vtkCallbackCommand.h>
#include <vtkObjectFactory.h>
#include <vtkRenderWindowInteractor.h>
#include <vtkRenderer.h>

#include <cmath>
#include <cstring>

vtkStandardNewMacro(VXInteractorStyleCamera);

void VXInteractorStyleCamera::OnChar()
{
  // The toolkit's key shortcuts (wireframe, stereo, quit, ...) are all off in our windows.
}

void VXInteractorStyleCamera::OnMouseMove()
{
  if (GetInteractionMode() == VTKIS_IMAGE3D)
  {
    vtkInteractorStyleTrackballCamera::OnMouseMove();
  }
  else
  {
    vtkInteractorStyleImage::OnMouseMove();
  }
  updateLinkedRenderWindows();
}

void VXInteractorStyleCamera::OnLeftButtonDown()
{
  if (GetInteractionMode() == VTKIS_IMAGE3D)
  {
    vtkInteractorStyleTrackballCamera::OnLeftButtonDown();
  }
  else if (Interactor != nullptr)
  {
    // Locked to 2D a left drag pans, as in image viewers; the release and the moves are handled by
    // the base classes, which end and follow any pan.
    FindPokedRenderer(Interactor->GetEventPosition()[0], Interactor->GetEventPosition()[1]);
    if (CurrentRenderer != nullptr)
    {
      GrabFocus(EventCallbackCommand);
      StartPan();
    }
  }
  updateLinkedRenderWindows();
  invokePickIfNeeded();
}

void VXInteractorStyleCamera::OnRightButtonDown()
{
  if (GetInteractionMode() == VTKIS_IMAGE3D)
  {
    vtkInteractorStyleTrackballCamera::OnRightButtonDown();
  }
  else
  {
    vtkInteractorStyleImage::OnRightButtonDown();
  }
  updateLinkedRenderWindows();
  invokePickIfNeeded();
}

void VXInteractorStyleCamera::OnMouseWheelForward()
{
  vtkInteractorStyleTrackballCamera::OnMouseWheelForward();
  updateLinkedRenderWindows();
}

void VXInteractorStyleCamera::OnMouseWheelBackward()
{
  vtkInteractorStyleTrackballCamera::OnMouseWheelBackward();
  updateLinkedRenderWindows();
}

void VXInteractorStyleCamera::OnKeyPress()
{
  const char* key = Interactor != nullptr ? Interactor->GetKeySym() : nullptr;
  if (key != nullptr && std::strcmp(key, "1") == 0)
  {
    m_Pick1Mode = true;
    m_Pick2Mode = false;
  }
  else if (key != nullptr && std::strcmp(key, "2") == 0)
  {
    m_Pick2Mode = true;
    m_Pick1Mode = false;
  }
  InvokeEvent(k_KeyPressedEvent);
}

void VXInteractorStyleCamera::OnKeyRelease()
{
  const char* key = Interactor != nullptr ? Interactor->GetKeySym() : nullptr;
  if (key != nullptr && (std::strcmp(key, "1") == 0 || std::strcmp(key, "2") == 0))
  {
    m_Pick1Mode = false;
    m_Pick2Mode = false;
  }
  InvokeEvent(k_KeyReleasedEvent);
}

void VXInteractorStyleCamera::Dolly()
{
  if (CurrentRenderer == nullptr)
  {
    return;
  }
  const double* center = CurrentRenderer->GetCenter();
  const int dy = Interactor->GetLastEventPosition()[1] - Interactor->GetEventPosition()[1];
  // Opposite sign to the toolkit: dragging down zooms in, as our users expect.
  Dolly(std::pow(1.1, dy * MotionFactor / center[1]));
}

void VXInteractorStyleCamera::Dolly(double factor)
{
  vtkInteractorStyleTrackballCamera::Dolly(factor);
}

bool VXInteractorStyleCamera::ctrlKey()
{
  return Interactor != nullptr && Interactor->GetControlKey() != 0;
}

bool VXInteractorStyleCamera::altKey()
{
  return Interactor != nullptr && Interactor->GetAltKey() != 0;
}

bool VXInteractorStyleCamera::shiftKey()
{
  return Interactor != nullptr && Interactor->GetShiftKey() != 0;
}

void VXInteractorStyleCamera::updateLinkedRenderWindows()
{
  if (m_Window == nullptr)
  {
    return;
  }
  for (VXVisualizationWidget* linked : m_Window->getLinkedWidgets())
  {
    if (linked != m_Window)
    {
      linked->render();
    }
  }
}

void VXInteractorStyleCamera::invokePickIfNeeded()
{
  if (m_Pick1Mode || m_Pick2Mode || m_CellPickMode)
  {
    InvokeEvent(vtkCommand::PickEvent);
  }
}
