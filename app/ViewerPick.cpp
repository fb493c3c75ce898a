#include "app/ViewerPick.h"

#include "views/VXPickerCallback.h"
#include "views/VXVisualizationWidget.h"

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataSet.h>
#include <vtkDataSetAttributes.h>
#include <vtkPointData.h>
#include <vtkRenderWindow.h>
#include <vtkRenderer.h>

#include <QRegularExpression>

namespace
{
nlohmann::json arrayValue(vtkDataArray* array, vtkIdType id)
{
  if (array->GetNumberOfComponents() == 1)
  {
    return array->GetComponent(id, 0);
  }
  nlohmann::json components = nlohmann::json::array();
  for (int component = 0; component < array->GetNumberOfComponents(); ++component)
  {
    components.push_back(array->GetComponent(id, component));
  }
  return components;
}

// The arrays of one kind of attribute at an id; a name that is taken already gets the kind after it.
void addValues(vtkDataSetAttributes* attributes, vtkIdType id, const char* kind, nlohmann::json& values)
{
  if (attributes == nullptr || id < 0)
  {
    return;
  }
  for (int i = 0; i < attributes->GetNumberOfArrays(); ++i)
  {
    vtkDataArray* array = attributes->GetArray(i);
    if (array == nullptr || array->GetName() == nullptr || id >= array->GetNumberOfTuples())
    {
      continue;
    }
    std::string name = array->GetName();
    if (values.contains(name))
    {
      name += std::string(" (") + kind + ")";
    }
    values[name] = arrayValue(array, id);
  }
}
} // namespace

bool ViewerPick::Parse(const QString& text, QPoint& pixel, QString* error)
{
  const QRegularExpressionMatch match =
      QRegularExpression(QStringLiteral("^\\s*(\\d+)\\s*,\\s*(\\d+)\\s*$")).match(text);
  bool xOk = false;
  bool yOk = false;
  const int x = match.hasMatch() ? match.captured(1).toInt(&xOk) : -1;
  const int y = match.hasMatch() ? match.captured(2).toInt(&yOk) : -1;
  if (!xOk || !yOk)
  {
    if (error != nullptr)
    {
      *error =
          QStringLiteral("--pick takes a window pixel X,Y from the top left, for example 400,300 (got '%1')")
              .arg(text);
    }
    return false;
  }
  pixel = QPoint(x, y);
  return true;
}

nlohmann::json ViewerPick::Report(VXVisualizationWidget* window, const QPoint& pixel)
{
  nlohmann::json report = {{"geometry", nullptr},
                           {"cell_id", -1},
                           {"point_id", -1},
                           {"position", nullptr},
                           {"values", nlohmann::json::object()}};
  VXPickerCallback* picker = window != nullptr ? window->getPickerCallback() : nullptr;
  vtkRenderer* renderer = window != nullptr ? window->getRenderer() : nullptr;
  if (picker == nullptr || renderer == nullptr || renderer->GetRenderWindow() == nullptr)
  {
    return report;
  }
  // The toolkit counts pixels from the bottom left.
  const int height = renderer->GetRenderWindow()->GetSize()[1];
  const VXPickResult pick = picker->pickAt(pixel.x(), height - 1 - pixel.y());
  if (!pick.hit || pick.original == nullptr)
  {
    return report;
  }
  report["geometry"] = picker->geometryName(pick).toStdString();
  report["cell_id"] = pick.cellId;
  report["point_id"] = pick.pointId;
  report["position"] = {pick.position[0], pick.position[1], pick.position[2]};
  nlohmann::json values = nlohmann::json::object();
  addValues(pick.original->GetCellData(), pick.cellId, "cell", values);
  addValues(pick.original->GetPointData(), pick.pointId, "point", values);
  report["values"] = values;
  return report;
}
