#pragma once

#include <vtkCommand.h>
#include <vtkInteractorStyleImage.h>

class VXAbstractViewWidget;
class VXVisualizationWidget;

/**
 * @brief How the mouse moves the camera of a render window. Mode 3 (image 3D) rotates with the left
 * button; mode 2 (image 2D) locks rotation out. Keys "1" and "2" switch the two pick modes while held.
 */
class VXInteractorStyleCamera : public vtkInteractorStyleImage
{
public:
  static VXInteractorStyleCamera* New();
  vtkTypeMacro(VXInteractorStyleCamera, vtkInteractorStyleImage);

  static constexpr unsigned long k_KeyPressedEvent = vtkCommand::UserEvent;
  static constexpr unsigned long k_KeyReleasedEvent = vtkCommand::UserEvent + 1;

  void setViewWidget(VXAbstractViewWidget* viewWidget) { m_ViewWidget = viewWidget; }
  VXAbstractViewWidget* getViewWidget() const { return m_ViewWidget; }
  /** The render window whose linked windows follow each camera move. */
  void setRenderWindowWidget(VXVisualizationWidget* window) { m_Window = window; }

  void OnChar() override;
  void OnMouseMove() override;
  void OnLeftButtonDown() override;
  void OnRightButtonDown() override;
  void OnMouseWheelForward() override;
  void OnMouseWheelBackward() override;
  void OnKeyPress() override;
  void OnKeyRelease() override;
  void Dolly() override;
  void Dolly(double factor) override;

  bool ctrlKey();
  bool altKey();
  bool shiftKey();
  bool pick1ModeOn() const { return m_Pick1Mode; }
  bool pick2ModeOn() const { return m_Pick2Mode; }
  bool cellPickModeOn() const { return m_CellPickMode; }
  void setCellPickMode(bool on) { m_CellPickMode = on; }

protected:
  VXInteractorStyleCamera() = default;
  ~VXInteractorStyleCamera() override = default;

private:
  VXInteractorStyleCamera(const VXInteractorStyleCamera&) = delete;
  void operator=(const VXInteractorStyleCamera&) = delete;

  void updateLinkedRenderWindows();
  void invokePickIfNeeded();

  VXAbstractViewWidget* m_ViewWidget = nullptr;
  VXVisualizationWidget* m_Window = nullptr;
  bool m_Pick1Mode = false;
  bool m_Pick2Mode = false;
  bool m_CellPickMode = false;
};
