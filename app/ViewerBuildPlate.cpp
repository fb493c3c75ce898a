#include "app/ViewerBuildPlate.h"

#include "annotations/VXBuildPlateAnnotationSource.h"
#include "annotations/VXBuildPlateAnnotationSourceWidget.h"
#include "pipeline/VXPipeline.h"

#include <QRegularExpression>

#include <limits>

namespace
{
bool positiveInt(const QString& text, int& value)
{
  bool ok = false;
  const qlonglong parsed = text.trimmed().toLongLong(&ok);
  if (!ok || parsed <= 0 || parsed > std::numeric_limits<int>::max())
  {
    return false;
  }
  value = static_cast<int>(parsed);
  return true;
}
} // namespace

bool ViewerBuildPlate::parse(const QString& shape, const QString& spacing, QString* error)
{
  const QString shapeHelp = QStringLiteral("--build-plate takes square:W,D or circle:R with whole numbers "
                                           "above 0, for example square:250,250 or circle:100");
  nlohmann::json state = nlohmann::json::object();
  const QRegularExpressionMatch square =
      QRegularExpression(QStringLiteral("^square:([^,]+),([^,]+)$")).match(shape.trimmed());
  const QRegularExpressionMatch circle =
      QRegularExpression(QStringLiteral("^circle:([^,]+)$")).match(shape.trimmed());
  int width = 0;
  int depth = 0;
  int radius = 0;
  if (square.hasMatch() && positiveInt(square.captured(1), width) && positiveInt(square.captured(2), depth))
  {
    state["build_plate_annotation_plate_shape"] =
        static_cast<int>(VXBuildPlateAnnotationSourceWidget::Square);
    state["build_plate_annotation_x_dim"] = width;
    state["build_plate_annotation_y_dim"] = depth;
  }
  else if (circle.hasMatch() && positiveInt(circle.captured(1), radius))
  {
    state["build_plate_annotation_plate_shape"] =
        static_cast<int>(VXBuildPlateAnnotationSourceWidget::Circle);
    state["build_plate_annotation_radius"] = radius;
    state["build_plate_annotation_x_center"] = 0.0;
    state["build_plate_annotation_y_center"] = 0.0;
    state["build_plate_annotation_z_center"] = 0.0;
  }
  else
  {
    if (error != nullptr)
    {
      *error = shapeHelp + QStringLiteral(" (got '%1')").arg(shape);
    }
    return false;
  }
  if (!spacing.isNull())
  {
    bool ok = false;
    const double value = spacing.trimmed().toDouble(&ok);
    if (!ok || !(value > 0.0) || value > 1.0e6)
    {
      if (error != nullptr)
      {
        *error =
            QStringLiteral("--plate-spacing takes a number above 0, for example 10 (got '%1')").arg(spacing);
      }
      return false;
    }
    state["build_plate_annotation_x_spacing"] = value;
    state["build_plate_annotation_y_spacing"] = value;
    state["build_plate_annotation_x_minor_spacing"] = value / 5.0;
    state["build_plate_annotation_y_minor_spacing"] = value / 5.0;
  }
  state["global_source_visible"] = true;
  m_State = state;
  m_Set = true;
  return true;
}

nlohmann::json ViewerBuildPlate::instanceState() const
{
  return m_State;
}

VXBuildPlateAnnotationSource* ViewerBuildPlate::addTo(VXPipeline* pipeline,
                                                      const QList<VXAbstractViewWidget*>& views) const
{
  if (pipeline == nullptr)
  {
    return nullptr;
  }
  auto* plate = new VXBuildPlateAnnotationSource();
  pipeline->addGlobalSource(plate);
  for (VXAbstractViewWidget* view : views)
  {
    plate->addModuleInstance(nullptr, view, m_Set ? &m_State : nullptr);
  }
  return plate;
}
