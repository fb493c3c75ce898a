#pragma once

#include "views/VXHardwarePicker.h"
#include "views/VXSelectionBuffers.h"

#include <vtkActor.h>
#include <vtkCommand.h>
#include <vtkSmartPointer.h>

#include <QString>

#include <array>
#include <functional>
#include <string>

class vtkDataObject;
class vtkDataSet;
class vtkDataSetAttributes;
class vtkRenderer;
class VXVisualizationWidget;

/**
 * @brief Observer of the hover widget and the interactor style of one render window: turns the mouse
 * position into a report of what lies under it (geometry, point or cell id, coordinates, the value of
 * every array), shows it as a tool tip while hovering, and marks the point or cell with a highlight.
 */
class VXPickerCallback : public vtkCommand
{
public:
  static VXPickerCallback* New();
  vtkTypeMacro(VXPickerCallback, vtkCommand);

  // Events of the interactor style and the hover widget that the callback handles.
  static constexpr unsigned long k_PickEvent = vtkCommand::PickEvent;                     // 7
  static constexpr unsigned long k_HoverTimerEvent = vtkCommand::TimerEvent;              // 25
  static constexpr unsigned long k_EndInteractionEvent = vtkCommand::EndInteractionEvent; // 45

  using GeometryNameLookup = std::function<QString(vtkDataObject*)>;

  void setRenderer(vtkRenderer* renderer) { m_Renderer = renderer; }
  void setWindow(VXVisualizationWidget* window) { m_Window = window; }
  /** How a picked dataset is named in the report: the name of the data source that made it. */
  void setGeometryNameLookup(GeometryNameLookup lookup) { m_GeometryNameLookup = std::move(lookup); }
  void setupHighlightActors();
  void Execute(vtkObject* caller, unsigned long eventId, void* callData) override;

  /** The report of what lies under the interactor's event position; highlights the point or cell. */
  std::string GeneratePickInfo();
  /**
   * Picks at a display position (pixels from the bottom left) without highlighting anything. The
   * selection buffers are kept between picks while the scene stands still.
   */
  VXPickResult pickAt(int x, int y) const;
  /** The selection buffers kept for the picks of this window. */
  VXSelectionBuffers& selectionBuffers() const { return m_SelectionBuffers; }
  /** The name of the data source of a pick, or "Unnamed Geometry". */
  QString geometryName(const VXPickResult& pick) const;
  /**
   * Appends the label and id, the coordinates, the (i, j, k) index when one is given (cells and points
   * of images and grids) and one line per array of the attributes at that id to the report.
   */
  static void printDataValues(vtkDataSetAttributes* attributes, long long id, const std::string& label,
                              const double coords[3], std::string& report);
  void createPointHighlighter(double x, double y, double z);
  void createCellHighlighter(vtkDataSet* dataSet, vtkIdType cellId);
  /** World size of 15 screen pixels at the point, over the highlight's current width; NaN for width 0. */
  double getPointHighlighterSizeRatio(double x, double y, double z);
  void toggleHighlightersVisibility(bool visible);

  bool hoverPointsOn() const { return m_HoverPointsOn; }
  bool hoverCellsOn() const { return m_HoverCellsOn; }
  void setHoverPointsOn(bool on) { m_HoverPointsOn = on; }
  void setHoverCellsOn(bool on) { m_HoverCellsOn = on; }
  bool pickKeyHeld() const { return m_PickKeyHeld; }
  QString getHoverText() const { return m_HoverText; }
  void setHoverText(const QString& text) { m_HoverText = text; }
  const double* getPickPosition() const { return m_PickPosition.data(); }
  const VXPickResult& lastPick() const { return m_LastPick; }

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
  GeometryNameLookup m_GeometryNameLookup;
  VXPickResult m_LastPick;
  mutable VXSelectionBuffers m_SelectionBuffers;
};
