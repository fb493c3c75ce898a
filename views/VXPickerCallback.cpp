#include "views/VXPickerCallback.h"

#include "data_bridge/ZRVtkObjectName.h"
#include "views/VXInteractorStyleCamera.h"
#include "views/VXVisualizationWidget.h"

#include <vtkActor.h>
#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkCursor3D.h>
#include <vtkDataArray.h>
#include <vtkDataSet.h>
#include <vtkDataSetAttributes.h>
#include <vtkGenericCell.h>
#include <vtkIdList.h>
#include <vtkImageData.h>
#include <vtkMath.h>
#include <vtkNew.h>
#include <vtkObjectFactory.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkRectilinearGrid.h>
#include <vtkRenderWindow.h>
#include <vtkRenderWindowInteractor.h>
#include <vtkRenderer.h>
#include <vtkStructuredGrid.h>

#include <fmt/format.h>

#include <QCursor>
#include <QRect>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <limits>

vtkStandardNewMacro(VXPickerCallback);

namespace
{
const std::string k_Indent = "    ";
// Half the size, in pixels, of the point highlight cross on the screen.
constexpr double k_CrossHalfPixels = 7.5;

std::string formatValue(double value)
{
  return fmt::format("{:.8g}", value);
}
} // namespace

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
  auto* style = caller != nullptr && caller->IsA("VXInteractorStyleCamera") != 0
                    ? static_cast<VXInteractorStyleCamera*>(caller)
                    : nullptr;
  switch (eventId)
  {
  case k_EndInteractionEvent:
    toggleHighlightersVisibility(false);
    m_Window->render();
    break;
  case k_HoverTimerEvent:
    m_HoverText = QString::fromStdString(GeneratePickInfo());
    QToolTip::showText(QCursor::pos(), m_HoverText, nullptr, QRect());
    m_Window->render();
    break;
  case k_PickEvent:
    // A focal point pick (the cell pick mode) is the window's own, on its mouse press; here a click
    // with a pick key held reports the point and moves the focal point there. A miss does nothing.
    if (style != nullptr && m_PickKeyHeld)
    {
      m_HoverText = QString::fromStdString(GeneratePickInfo());
      if (m_LastPick.hit)
      {
        Q_EMIT m_Window->pickEvent(m_PickPosition.data(), style->pick1ModeOn() || style->cellPickModeOn(),
                                   style->pick2ModeOn() || style->cellPickModeOn());
        Q_EMIT m_Window->printOutput(m_HoverText);
      }
    }
    break;
  case VXInteractorStyleCamera::k_KeyPressedEvent:
    if (style != nullptr && (style->pick1ModeOn() || style->pick2ModeOn()))
    {
      m_PickKeyHeld = true;
      m_HoverText = QString::fromStdString(GeneratePickInfo());
      m_Window->render();
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
      m_Window->render();
    }
    break;
  default:
    break;
  }
}

VXPickResult VXPickerCallback::pickAt(int x, int y) const
{
  return VXHardwarePicker::Pick(m_Renderer, x, y, &m_SelectionBuffers);
}

QString VXPickerCallback::geometryName(const VXPickResult& pick) const
{
  QString name;
  if (pick.original != nullptr && m_GeometryNameLookup)
  {
    name = m_GeometryNameLookup(pick.original);
  }
  if (name.isEmpty() && pick.original != nullptr)
  {
    name = QString::fromStdString(ZRVtk::GetObjectName(pick.original));
  }
  return name.isEmpty() ? QStringLiteral("Unnamed Geometry") : name;
}

std::string VXPickerCallback::GeneratePickInfo()
{
  vtkRenderWindowInteractor* interactor = m_Renderer != nullptr && m_Renderer->GetRenderWindow() != nullptr
                                              ? m_Renderer->GetRenderWindow()->GetInteractor()
                                              : nullptr;
  if (interactor == nullptr)
  {
    return {};
  }
  const int* position = interactor->GetEventPosition();
  m_LastPick = pickAt(position[0], position[1]);
  if (!m_LastPick.hit)
  {
    toggleHighlightersVisibility(false);
    return {};
  }
  m_PickPosition = m_LastPick.position;
  vtkDataSet* dataSet = m_LastPick.original;
  std::string report = geometryName(m_LastPick).toStdString();
  // Cells while hovering over cells; points while hovering over points or holding a pick key.
  const bool cellMode = m_HoverCellsOn && !m_PickKeyHeld;
  if (cellMode)
  {
    m_PointHighlightActor->VisibilityOff();
    if (m_LastPick.cellId >= 0)
    {
      createCellHighlighter(dataSet, m_LastPick.cellId);
    }
    printDataValues(dataSet->GetCellData(), m_LastPick.cellId, "Cell", m_LastPick.position.data(), report);
  }
  else
  {
    m_CellHighlightActor->VisibilityOff();
    double point[3] = {m_LastPick.position[0], m_LastPick.position[1], m_LastPick.position[2]};
    if (m_LastPick.pointId >= 0 && m_LastPick.pointId < dataSet->GetNumberOfPoints())
    {
      dataSet->GetPoint(m_LastPick.pointId, point);
      m_PickPosition = {{point[0], point[1], point[2]}};
    }
    createPointHighlighter(point[0], point[1], point[2]);
    printDataValues(dataSet->GetPointData(), m_LastPick.pointId, "Point", point, report);
  }
  return report;
}

void VXPickerCallback::printDataValues(vtkDataSetAttributes* attributes, long long id,
                                       const std::string& label, const double coords[3], std::string& report)
{
  report += fmt::format("\n{}{} Id: {}", k_Indent, label, id);
  report += fmt::format("\n{}Coords: ({}, {}, {})", k_Indent, formatValue(coords[0]), formatValue(coords[1]),
                        formatValue(coords[2]));
  if (attributes == nullptr)
  {
    return;
  }
  for (int i = 0; i < attributes->GetNumberOfArrays(); ++i)
  {
    vtkDataArray* array = attributes->GetArray(i);
    if (array == nullptr)
    {
      continue;
    }
    const std::string name = array->GetName() != nullptr ? array->GetName() : fmt::format("Array {}", i);
    if (id < 0 || id >= array->GetNumberOfTuples())
    {
      report += fmt::format("\n{}{}: ", k_Indent, name);
      report += fmt::format("Idx = {} - Not Valid Max = {}", id, array->GetNumberOfTuples());
      continue;
    }
    const int components = array->GetNumberOfComponents();
    if (components == 1)
    {
      report += fmt::format("\n{}{}: {}", k_Indent, name, formatValue(array->GetComponent(id, 0)));
      continue;
    }
    for (int component = 0; component < components; ++component)
    {
      report += fmt::format("\n{}{}[{}]: {}", k_Indent, name, component,
                            formatValue(array->GetComponent(id, component)));
    }
  }
}

double VXPickerCallback::getPointHighlighterSizeRatio(double x, double y, double z)
{
  if (m_Renderer == nullptr)
  {
    return std::numeric_limits<double>::quiet_NaN();
  }
  double display[3];
  m_Renderer->SetWorldPoint(x, y, z, 1.0);
  m_Renderer->WorldToDisplay();
  m_Renderer->GetDisplayPoint(display);
  double corners[2][3];
  for (int i = 0; i < 2; ++i)
  {
    const double offset = i == 0 ? -k_CrossHalfPixels : k_CrossHalfPixels;
    double world[4];
    m_Renderer->SetDisplayPoint(display[0] + offset, display[1] + offset, display[2]);
    m_Renderer->DisplayToWorld();
    m_Renderer->GetWorldPoint(world);
    for (int axis = 0; axis < 3; ++axis)
    {
      corners[i][axis] = world[3] != 0.0 ? world[axis] / world[3] : world[axis];
    }
  }
  const double distance = std::sqrt(vtkMath::Distance2BetweenPoints(corners[0], corners[1]));
  vtkActor* sized =
      (m_HoverPointsOn || m_PickKeyHeld) ? m_PointHighlightActor.Get() : m_CellHighlightActor.Get();
  if (sized == nullptr)
  {
    return std::numeric_limits<double>::quiet_NaN();
  }
  const double* bounds = sized->GetBounds();
  const double width = bounds != nullptr ? bounds[1] - bounds[0] : 0.0;
  if (width == 0.0)
  {
    return std::numeric_limits<double>::quiet_NaN();
  }
  return distance / width;
}

void VXPickerCallback::createPointHighlighter(double x, double y, double z)
{
  if (m_PointHighlightActor == nullptr)
  {
    return;
  }
  m_PointHighlightActor->SetPosition(x, y, z);
  const double ratio = getPointHighlighterSizeRatio(x, y, z);
  if (std::isfinite(ratio) && ratio > 0.0)
  {
    double scale[3];
    m_PointHighlightActor->GetScale(scale);
    m_PointHighlightActor->SetScale(scale[0] * ratio, scale[1] * ratio, scale[2] * ratio);
  }
  m_PointHighlightActor->VisibilityOn();
}

void VXPickerCallback::createCellHighlighter(vtkDataSet* dataSet, vtkIdType cellId)
{
  if (m_CellHighlightActor == nullptr || dataSet == nullptr || cellId < 0 ||
      cellId >= dataSet->GetNumberOfCells())
  {
    return;
  }
  // The cell is drawn by its edges (or as a vertex), which shows on any side of any kind of cell.
  vtkNew<vtkGenericCell> cell;
  dataSet->GetCell(cellId, cell);
  vtkNew<vtkPoints> points;
  points->SetDataTypeToDouble();
  for (vtkIdType i = 0; i < cell->GetNumberOfPoints(); ++i)
  {
    points->InsertNextPoint(dataSet->GetPoint(cell->GetPointId(i)));
  }
  vtkNew<vtkPolyData> highlight;
  highlight->SetPoints(points);
  vtkNew<vtkCellArray> lines;
  vtkNew<vtkCellArray> vertices;
  if (cell->GetCellDimension() == 0)
  {
    for (vtkIdType i = 0; i < cell->GetNumberOfPoints(); ++i)
    {
      vertices->InsertNextCell(1, &i);
    }
  }
  else if (cell->GetCellDimension() == 1)
  {
    vtkNew<vtkIdList> ids;
    for (vtkIdType i = 0; i < cell->GetNumberOfPoints(); ++i)
    {
      ids->InsertNextId(i);
    }
    lines->InsertNextCell(ids);
  }
  else
  {
    for (int e = 0; e < cell->GetNumberOfEdges(); ++e)
    {
      vtkCell* edge = cell->GetEdge(e);
      vtkIdType ends[2] = {-1, -1};
      // The edge holds dataset point ids; find their places among the cell's points.
      for (vtkIdType i = 0; i < cell->GetNumberOfPoints(); ++i)
      {
        for (int k = 0; k < 2; ++k)
        {
          if (cell->GetPointId(i) == edge->GetPointId(k) && ends[k] < 0)
          {
            ends[k] = i;
          }
        }
      }
      if (ends[0] >= 0 && ends[1] >= 0)
      {
        lines->InsertNextCell(2, ends);
      }
    }
  }
  highlight->SetLines(lines);
  highlight->SetVerts(vertices);
  auto* mapper = vtkPolyDataMapper::SafeDownCast(m_CellHighlightActor->GetMapper());
  if (mapper != nullptr)
  {
    mapper->SetInputData(highlight);
  }
  m_CellHighlightActor->VisibilityOn();
}
