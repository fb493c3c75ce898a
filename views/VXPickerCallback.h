#pragma once

#include <vtkCommand.h>
#include <vtkSmartPointer.h>

#include <QString>

#include <array>

class vtkActor;
class vtkRenderer;
class VXVisualizationWidget;

/**
 * @brief Observer of the hover widget and the interactor style of one render window: keeps the hover
 * modes and the two highlight actors (point cross and picked cell) that the render window must know
 * about. The pick report itself is produced by the picking code.
 */
class VXPickerCallback : public vtkCommand
{
public:
  static VXPickerCallback* New();
  vtkTypeMacro(VXPickerCallback, vtkCommand);

  void setRenderer(vtkRenderer* renderer) { m_Renderer = renderer; }
  void setWindow(VXVisualizationWidget* window) { m_Window = window; }
  void setupHighlightActors();
  void Execute(vtkObject* caller, unsigned long eventId, void* callData) override;
  void toggleHighlightersVisibility(bool visible);

  bool hoverPointsOn() const { return m_HoverPointsOn; }
  bool hoverCellsOn() const { return m_HoverCellsOn; }
  void setHoverPointsOn(bool on) { m_HoverPointsOn = on; }
  void setHoverCellsOn(bool on) { m_HoverCellsOn = on; }
  bool pickKeyHeld() const { return m_PickKeyHeld; }
  QString getHoverText() const { return m_HoverText; }
  void setHoverText(const QString& text) { m_HoverText = text; }
  const double* getPickPosition() const { return m_PickPosition.data(); }

  vtkActor* getPointHighlightActor() const { return m_PointHighlightActor; }
  vtkActor* getCellHighlightActor() const { return m_CellHighlightActor; }

protected:
  VXPickerCallback() = default;
  ~VXPickerCallback() override = default;

private:
  vtkRenderer* m_Renderer = nullptr;
  VXVisualizationWidget* m_Window = nullptr;
  bool m_HoverPointsOn = false;
  bool m_HoverCellsOn = false;
  bool m_PickKeyHeld = false;
  vtkSmartPointer<vtkActor> m_PointHighlightActor;
  vtkSmartPointer<vtkActor> m_CellHighlightActor;
  float m_CellLineWidth = 1.0f;
  float m_CellPointSize = 1.0f;
  QString m_HoverText;
  std::array<double, 3> m_PickPosition = {{0.0, 0.0, 0.0}};
};
