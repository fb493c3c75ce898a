#include "annotations/VXBuildPlateAnnotationSourcePimpl.h"

#include "annotations/VXGlobalSource.h"
#include "platform/QtZRSettings.h"
#include "views/VXVisualizationWidget.h"

#include "ui_VXBuildPlateAnnotationSourceWidget.h"

#include <nlohmann/json.hpp>

#include <vtkActor.h>
#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkIdList.h>
#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkTransform.h>
#include <vtkTransformFilter.h>
#include <vtkUnsignedCharArray.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace
{
constexpr const char* k_ShapeKey = "build_plate_annotation_plate_shape";
constexpr const char* k_XDimKey = "build_plate_annotation_x_dim";
constexpr const char* k_YDimKey = "build_plate_annotation_y_dim";
constexpr const char* k_XSpacingKey = "build_plate_annotation_x_spacing";
constexpr const char* k_YSpacingKey = "build_plate_annotation_y_spacing";
constexpr const char* k_XMinorSpacingKey = "build_plate_annotation_x_minor_spacing";
constexpr const char* k_YMinorSpacingKey = "build_plate_annotation_y_minor_spacing";
constexpr std::array<const char*, 3> k_OriginKeys = {
    "build_plate_annotation_x_origin", "build_plate_annotation_y_origin", "build_plate_annotation_z_origin"};
constexpr std::array<const char*, 3> k_NormalKeys = {
    "build_plate_annotation_x_normal", "build_plate_annotation_y_normal", "build_plate_annotation_z_normal"};
constexpr std::array<const char*, 3> k_CenterKeys = {
    "build_plate_annotation_x_center", "build_plate_annotation_y_center", "build_plate_annotation_z_center"};
constexpr const char* k_RadiusKey = "build_plate_annotation_radius";
constexpr const char* k_OpacityKey = "build_plate_annotation_opacity";
constexpr std::array<const char*, 3> k_ColorKeys = {
    "build_plate_annotation_color_r", "build_plate_annotation_color_g", "build_plate_annotation_color_b"};
constexpr std::array<const char*, 3> k_MinorColorKeys = {"build_plate_annotation_minor_color_r",
                                                         "build_plate_annotation_minor_color_g",
                                                         "build_plate_annotation_minor_color_b"};
// The rim of a circular plate: 120 steps of 3 degrees, the last point back on the first.
constexpr int k_RimPoints = 121;
constexpr double k_RimStep = 0.05235987755982988;

// Number of lines a length holds at a spacing, counted in float as the plate's settings are.
int lineCount(float length, float spacing)
{
  if (!(spacing > 0.0f) || !(length >= 0.0f))
  {
    return 0;
  }
  return static_cast<int>(std::floor(length / spacing));
}

// Collects line cells with one colour each.
struct LineBuilder
{
  vtkNew<vtkPoints> points;
  vtkNew<vtkCellArray> lines;
  vtkNew<vtkUnsignedCharArray> colors;

  LineBuilder()
  {
    colors->SetNumberOfComponents(3);
    colors->SetName(VXBuildPlateAnnotationSourcePimpl::k_ColorArrayName);
  }

  void add(double x0, double y0, double x1, double y1, const QColor& color)
  {
    const vtkIdType ids[2] = {points->InsertNextPoint(x0, y0, 0.0), points->InsertNextPoint(x1, y1, 0.0)};
    lines->InsertNextCell(2, ids);
    addColor(color);
  }

  void addColor(const QColor& color)
  {
    const unsigned char rgb[3] = {static_cast<unsigned char>(color.red()),
                                  static_cast<unsigned char>(color.green()),
                                  static_cast<unsigned char>(color.blue())};
    colors->InsertNextTypedTuple(rgb);
  }

  void fill(vtkPolyData* grid)
  {
    grid->Initialize();
    grid->SetPoints(points);
    grid->SetLines(lines);
    grid->GetCellData()->SetScalars(colors);
  }
};

template<class T>
void readIfPresent(const nlohmann::json& json, const char* key, T& value)
{
  if (json.contains(key))
  {
    value = json.at(key).get<T>();
  }
}

void readColor(const nlohmann::json& json, const std::array<const char*, 3>& keys, QColor& color)
{
  int rgb[3] = {color.red(), color.green(), color.blue()};
  for (int i = 0; i < 3; ++i)
  {
    readIfPresent(json, keys[i], rgb[i]);
  }
  color = QColor(std::clamp(rgb[0], 0, 255), std::clamp(rgb[1], 0, 255), std::clamp(rgb[2], 0, 255));
}

void writeColor(nlohmann::json& json, const std::array<const char*, 3>& keys, const QColor& color)
{
  json[keys[0]] = color.red();
  json[keys[1]] = color.green();
  json[keys[2]] = color.blue();
}
} // namespace

VXBuildPlateAnnotationSourcePimpl::VXBuildPlateAnnotationSourcePimpl(VXGlobalSource* source,
                                                                     VXAbstractViewWidget* view)
    : VXGlobalSourcePimpl(source, view)
    , m_Grid(vtkSmartPointer<vtkPolyData>::New())
    , m_RotateFilter(vtkSmartPointer<vtkTransformFilter>::New())
    , m_TranslateFilter(vtkSmartPointer<vtkTransformFilter>::New())
    , m_Mapper(vtkSmartPointer<vtkPolyDataMapper>::New())
    , m_Actor(vtkSmartPointer<vtkActor>::New())
{
  m_RotateFilter->SetInputData(m_Grid);
  m_TranslateFilter->SetInputConnection(m_RotateFilter->GetOutputPort());
  m_Mapper->SetInputConnection(m_TranslateFilter->GetOutputPort());
  m_Mapper->SetScalarModeToUseCellData();
  m_Mapper->SetColorModeToDirectScalars();
  m_Actor->SetMapper(m_Mapper);
  // An annotation is no data: picks and hovers go through it.
  m_Actor->PickableOff();
  m_Actor->GetProperty()->LightingOff();
  m_Actor->GetProperty()->SetLineWidth(1.0f);
}

VXBuildPlateAnnotationSourcePimpl::~VXBuildPlateAnnotationSourcePimpl()
{
  removeFromScene();
  delete m_SettingsForm;
}

vtkActor* VXBuildPlateAnnotationSourcePimpl::actor() const
{
  return m_Actor;
}

vtkPolyData* VXBuildPlateAnnotationSourcePimpl::plateOutput() const
{
  m_TranslateFilter->Update();
  return vtkPolyData::SafeDownCast(m_TranslateFilter->GetOutput());
}

void VXBuildPlateAnnotationSourcePimpl::write(nlohmann::json& json) const
{
  VXGlobalSourcePimpl::write(json);
  json[k_ShapeKey] = m_PlateShape;
  json[k_XDimKey] = m_XDimension;
  json[k_YDimKey] = m_YDimension;
  json[k_XSpacingKey] = m_XSpacing;
  json[k_YSpacingKey] = m_YSpacing;
  json[k_XMinorSpacingKey] = m_XMinorSpacing;
  json[k_YMinorSpacingKey] = m_YMinorSpacing;
  for (int i = 0; i < 3; ++i)
  {
    json[k_OriginKeys[i]] = m_Origin[i];
    json[k_NormalKeys[i]] = m_Normal[i];
    json[k_CenterKeys[i]] = m_Center[i];
  }
  json[k_RadiusKey] = m_Radius;
  json[k_OpacityKey] = m_Opacity;
  writeColor(json, k_ColorKeys, m_Color);
  writeColor(json, k_MinorColorKeys, m_MinorColor);
}

void VXBuildPlateAnnotationSourcePimpl::read(const nlohmann::json& json)
{
  readIfPresent(json, k_ShapeKey, m_PlateShape);
  readIfPresent(json, k_XDimKey, m_XDimension);
  readIfPresent(json, k_YDimKey, m_YDimension);
  readIfPresent(json, k_XSpacingKey, m_XSpacing);
  readIfPresent(json, k_YSpacingKey, m_YSpacing);
  readIfPresent(json, k_XMinorSpacingKey, m_XMinorSpacing);
  readIfPresent(json, k_YMinorSpacingKey, m_YMinorSpacing);
  for (int i = 0; i < 3; ++i)
  {
    readIfPresent(json, k_OriginKeys[i], m_Origin[i]);
    readIfPresent(json, k_NormalKeys[i], m_Normal[i]);
    readIfPresent(json, k_CenterKeys[i], m_Center[i]);
  }
  readIfPresent(json, k_RadiusKey, m_Radius);
  readIfPresent(json, k_OpacityKey, m_Opacity);
  m_Opacity = std::clamp(m_Opacity, 0.0, 1.0);
  readColor(json, k_ColorKeys, m_Color);
  readColor(json, k_MinorColorKeys, m_MinorColor);
  // The visibility last: it applies the plate with all the values read.
  VXGlobalSourcePimpl::read(json);
  applySource();
  syncSettingsWidget();
}

void VXBuildPlateAnnotationSourcePimpl::writeSettingValues(QtZRSettings& settings) const
{
  VXGlobalSourcePimpl::writeSettingValues(settings);
  nlohmann::json values = nlohmann::json::object();
  write(values);
  values.erase("global_source_visible");
  for (auto it = values.cbegin(); it != values.cend(); ++it)
  {
    const QString key = QString::fromStdString(it.key());
    if (it->is_number_integer())
    {
      settings.setValue(key, it->get<int>());
    }
    else
    {
      settings.setValue(key, it->get<double>());
    }
  }
}

void VXBuildPlateAnnotationSourcePimpl::readSettingValues(QtZRSettings& settings)
{
  VXGlobalSourcePimpl::readSettingValues(settings);
  nlohmann::json defaults = nlohmann::json::object();
  write(defaults);
  nlohmann::json values = nlohmann::json::object();
  for (auto it = defaults.cbegin(); it != defaults.cend(); ++it)
  {
    const QString key = QString::fromStdString(it.key());
    if (it.key() == "global_source_visible" || !settings.contains(key))
    {
      continue;
    }
    if (it->is_number_integer())
    {
      values[it.key()] = settings.value(key).toInt();
    }
    else
    {
      values[it.key()] = settings.value(key).toDouble();
    }
  }
  values["global_source_visible"] = m_Visible;
  read(values);
}

void VXBuildPlateAnnotationSourcePimpl::addToScene()
{
  VXVisualizationWidget* window = renderWindow();
  if (window == nullptr || m_InScene)
  {
    return;
  }
  applySource();
  window->addActor(m_Actor);
  m_InScene = true;
}

void VXBuildPlateAnnotationSourcePimpl::removeFromScene()
{
  VXVisualizationWidget* window = renderWindow();
  if (window == nullptr || !m_InScene)
  {
    return;
  }
  window->removeOutline(m_Actor);
  window->removeActor(m_Actor);
  m_InScene = false;
  window->render();
}

void VXBuildPlateAnnotationSourcePimpl::setVisibility(bool visible)
{
  setVisibleFlag(visible);
  if (m_VisibilityHintLabel)
  {
    m_VisibilityHintLabel->setVisible(!visible);
  }
  applySource();
}

void VXBuildPlateAnnotationSourcePimpl::applySource()
{
  if (m_PlateShape == VXBuildPlateAnnotationSourceWidget::Circle)
  {
    generateCircleBuildPlateGrid();
  }
  else
  {
    generateSquareBuildPlateGrid();
  }
  m_Actor->GetProperty()->SetOpacity(m_Opacity);
  m_Actor->SetVisibility(m_Visible);
  Q_EMIT requestRender();
}

void VXBuildPlateAnnotationSourcePimpl::generateSquareBuildPlateGrid()
{
  const float xDim = static_cast<float>(m_XDimension);
  const float yDim = static_cast<float>(m_YDimension);
  const int majorX = m_XSpacing > 0.0f ? lineCount(xDim, m_XSpacing) + 1 : 0;
  const int majorY = m_YSpacing > 0.0f ? lineCount(yDim, m_YSpacing) + 1 : 0;
  const int minorX = lineCount(xDim, m_XMinorSpacing);
  const int minorY = lineCount(yDim, m_YMinorSpacing);

  // Minor lines first, so that the major ones draw over them.
  LineBuilder builder;
  builder.colors->Allocate(3 * static_cast<vtkIdType>(majorX + majorY + minorX + minorY));
  for (int i = 0; i < minorX; ++i)
  {
    const double x = i * m_XMinorSpacing + m_XMinorSpacing;
    builder.add(x, 0.0, x, yDim, m_MinorColor);
  }
  for (int i = 0; i < majorX; ++i)
  {
    const double x = i * m_XSpacing;
    builder.add(x, 0.0, x, yDim, m_Color);
  }
  for (int i = 0; i < minorY; ++i)
  {
    const double y = i * m_YMinorSpacing + m_YMinorSpacing;
    builder.add(0.0, y, xDim, y, m_MinorColor);
  }
  for (int i = 0; i < majorY; ++i)
  {
    const double y = i * m_YSpacing;
    builder.add(0.0, y, xDim, y, m_Color);
  }
  builder.fill(m_Grid);
  orientAndPlace(m_Origin);
}

void VXBuildPlateAnnotationSourcePimpl::generateCircleBuildPlateGrid()
{
  const double radius = m_Radius;
  LineBuilder builder;
  // The rim, one polyline cell in the major colour.
  vtkNew<vtkIdList> rim;
  for (int i = 0; i < k_RimPoints; ++i)
  {
    const double angle = i * k_RimStep;
    rim->InsertNextId(
        builder.points->InsertNextPoint(radius * std::cos(angle), radius * std::sin(angle), 0.0));
  }
  builder.lines->InsertNextCell(rim);
  builder.addColor(m_Color);

  // Lines at whole multiples of the spacing from the centre, each ending on the rim; a line at the
  // rim or beyond it would have no length and is left out.
  auto family = [&](float spacing, bool alongY, const QColor& color)
  {
    const int count = lineCount(static_cast<float>(radius), spacing);
    for (int k = -count; k <= count; ++k)
    {
      const double d = k * static_cast<double>(spacing);
      const double reach = radius * radius - d * d;
      if (reach <= 0.0)
      {
        continue;
      }
      const double half = std::sqrt(reach);
      if (alongY)
      {
        builder.add(d, -half, d, half, color);
      }
      else
      {
        builder.add(-half, d, half, d, color);
      }
    }
  };
  family(m_XMinorSpacing, true, m_MinorColor);
  family(m_XSpacing, true, m_Color);
  family(m_YMinorSpacing, false, m_MinorColor);
  family(m_YSpacing, false, m_Color);
  builder.fill(m_Grid);
  orientAndPlace(m_Center);
}

void VXBuildPlateAnnotationSourcePimpl::orientAndPlace(const std::array<float, 3>& translation)
{
  double normal[3] = {m_Normal[0], m_Normal[1], m_Normal[2]};
  const double length = std::sqrt(normal[0] * normal[0] + normal[1] * normal[1] + normal[2] * normal[2]);
  if (length > 0.0)
  {
    for (double& component : normal)
    {
      component /= length;
    }
  }
  const double angle = std::acos(std::clamp(normal[2], -1.0, 1.0));
  vtkNew<vtkTransform> rotation;
  // About z crossed with the normal, by minus the angle between them.
  rotation->RotateWXYZ(-angle * 180.0 / M_PI, -normal[1], normal[0], 0.0);
  m_RotateFilter->SetTransform(rotation);
  vtkNew<vtkTransform> placement;
  placement->Translate(translation[0], translation[1], translation[2]);
  m_TranslateFilter->SetTransform(placement);
  m_Grid->Modified();
}

void VXBuildPlateAnnotationSourcePimpl::gridBoundsChanged()
{
  if (VXVisualizationWidget* window = renderWindow())
  {
    window->updateGridAxesBounds(true);
  }
}

// --- setters ---------------------------------------------------------------------------------------

void VXBuildPlateAnnotationSourcePimpl::setPlateShape(int shape)
{
  m_PlateShape = shape == VXBuildPlateAnnotationSourceWidget::Circle
                     ? VXBuildPlateAnnotationSourceWidget::Circle
                     : VXBuildPlateAnnotationSourceWidget::Square;
  if (m_Form)
  {
    m_Form->setShapeInputsVisibility(static_cast<VXBuildPlateAnnotationSourceWidget::Shape>(m_PlateShape));
  }
  applySource();
  gridBoundsChanged();
}

void VXBuildPlateAnnotationSourcePimpl::setXDimension(int value)
{
  if (m_Form)
  {
    setXMinorSpacing(m_Form->ui()->xMinorSpacing->value());
  }
  m_XDimension = value;
  applySource();
  gridBoundsChanged();
}

void VXBuildPlateAnnotationSourcePimpl::setYDimension(int value)
{
  if (m_Form)
  {
    setYMinorSpacing(m_Form->ui()->yMinorSpacing->value());
  }
  m_YDimension = value;
  applySource();
  gridBoundsChanged();
}

void VXBuildPlateAnnotationSourcePimpl::setXSpacing(double value)
{
  if (m_Form)
  {
    setXMinorSpacing(m_Form->ui()->xMinorSpacing->value());
  }
  m_XSpacing = static_cast<float>(value);
  applySource();
  gridBoundsChanged();
}

void VXBuildPlateAnnotationSourcePimpl::setYSpacing(double value)
{
  if (m_Form)
  {
    setYMinorSpacing(m_Form->ui()->yMinorSpacing->value());
  }
  m_YSpacing = static_cast<float>(value);
  applySource();
  gridBoundsChanged();
}

void VXBuildPlateAnnotationSourcePimpl::setXMinorSpacing(double value)
{
  m_XMinorSpacing = static_cast<float>(value);
  applySource();
}

void VXBuildPlateAnnotationSourcePimpl::setYMinorSpacing(double value)
{
  m_YMinorSpacing = static_cast<float>(value);
  applySource();
}

void VXBuildPlateAnnotationSourcePimpl::setXOrigin(double value)
{
  m_Origin[0] = static_cast<float>(value);
  applySource();
}

void VXBuildPlateAnnotationSourcePimpl::setYOrigin(double value)
{
  m_Origin[1] = static_cast<float>(value);
  applySource();
}

void VXBuildPlateAnnotationSourcePimpl::setZOrigin(double value)
{
  m_Origin[2] = static_cast<float>(value);
  applySource();
}

void VXBuildPlateAnnotationSourcePimpl::setXNormal(double value)
{
  m_Normal[0] = static_cast<float>(value);
  applySource();
}

void VXBuildPlateAnnotationSourcePimpl::setYNormal(double value)
{
  m_Normal[1] = static_cast<float>(value);
  applySource();
}

void VXBuildPlateAnnotationSourcePimpl::setZNormal(double value)
{
  m_Normal[2] = static_cast<float>(value);
  applySource();
}

void VXBuildPlateAnnotationSourcePimpl::setOpacity(int percent)
{
  m_Opacity = std::clamp(percent / 100.0, 0.0, 1.0);
  applySource();
}

void VXBuildPlateAnnotationSourcePimpl::setBuildPlateColor(const QColor& color)
{
  m_Color = color;
  applySource();
}

void VXBuildPlateAnnotationSourcePimpl::setBuildPlateMinorColor(const QColor& color)
{
  m_MinorColor = color;
  applySource();
}

void VXBuildPlateAnnotationSourcePimpl::setXCenter(double value)
{
  m_Center[0] = static_cast<float>(value);
  applySource();
}

void VXBuildPlateAnnotationSourcePimpl::setYCenter(double value)
{
  m_Center[1] = static_cast<float>(value);
  applySource();
}

void VXBuildPlateAnnotationSourcePimpl::setZCenter(double value)
{
  m_Center[2] = static_cast<float>(value);
  applySource();
}

void VXBuildPlateAnnotationSourcePimpl::setRadius(int value)
{
  m_Radius = value;
  applySource();
  gridBoundsChanged();
}

// --- copying ---------------------------------------------------------------------------------------

void VXBuildPlateAnnotationSourcePimpl::copySettings(const VXBuildPlateAnnotationSourcePimpl* other)
{
  if (other == nullptr || other == this)
  {
    return;
  }
  nlohmann::json values = nlohmann::json::object();
  other->write(values);
  read(values);
}

void VXBuildPlateAnnotationSourcePimpl::copySettingsToClipboard() const
{
  nlohmann::json values = nlohmann::json::object();
  write(values);
  QApplication::clipboard()->setText(QString::fromStdString(values.dump(2)));
}

bool VXBuildPlateAnnotationSourcePimpl::pasteSettings()
{
  const nlohmann::json values =
      nlohmann::json::parse(QApplication::clipboard()->text().toStdString(), nullptr, false);
  if (!values.is_object() || !values.contains(k_ShapeKey))
  {
    return false;
  }
  try
  {
    read(values);
  }
  catch (const nlohmann::json::exception&)
  {
    return false;
  }
  return true;
}

void VXBuildPlateAnnotationSourcePimpl::highlightInRenderWindow(bool highlight)
{
  VXVisualizationWidget* window = renderWindow();
  if (window == nullptr)
  {
    return;
  }
  if (highlight && m_InScene)
  {
    window->addOutline(m_Actor);
  }
  else
  {
    window->removeOutline(m_Actor);
  }
  window->render();
}

// --- settings form ---------------------------------------------------------------------------------

QWidget* VXBuildPlateAnnotationSourcePimpl::settingsForm()
{
  if (m_SettingsForm)
  {
    return m_SettingsForm;
  }
  m_SettingsForm = new QWidget();
  m_SettingsForm->setObjectName(QStringLiteral("buildPlateSettings"));
  auto* layout = new QVBoxLayout(m_SettingsForm);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(addTitleWithVisibilityBtn());
  addVisibilityHintLabel(layout);
  m_Form = new VXBuildPlateAnnotationSourceWidget(m_SettingsForm);
  layout->addWidget(m_Form);
  syncSettingsWidget();
  connectForm();
  return m_SettingsForm;
}

void VXBuildPlateAnnotationSourcePimpl::connectForm()
{
  Ui::VXBuildPlateAnnotationSourceWidget* ui = m_Form->ui();
  using Spin = QSpinBox;
  using DSpin = QDoubleSpinBox;
  connect(ui->plateShape, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
          [this, ui](int) { setPlateShape(ui->plateShape->currentData().toInt()); });
  connect(ui->xDimension, QOverload<int>::of(&Spin::valueChanged), this,
          &VXBuildPlateAnnotationSourcePimpl::setXDimension);
  connect(ui->yDimension, QOverload<int>::of(&Spin::valueChanged), this,
          &VXBuildPlateAnnotationSourcePimpl::setYDimension);
  connect(ui->radius, QOverload<int>::of(&Spin::valueChanged), this,
          &VXBuildPlateAnnotationSourcePimpl::setRadius);
  connect(ui->xSpacing, QOverload<double>::of(&DSpin::valueChanged), this,
          &VXBuildPlateAnnotationSourcePimpl::setXSpacing);
  connect(ui->ySpacing, QOverload<double>::of(&DSpin::valueChanged), this,
          &VXBuildPlateAnnotationSourcePimpl::setYSpacing);
  connect(ui->xMinorSpacing, QOverload<double>::of(&DSpin::valueChanged), this,
          &VXBuildPlateAnnotationSourcePimpl::setXMinorSpacing);
  connect(ui->yMinorSpacing, QOverload<double>::of(&DSpin::valueChanged), this,
          &VXBuildPlateAnnotationSourcePimpl::setYMinorSpacing);
  connect(ui->xOrigin, QOverload<double>::of(&DSpin::valueChanged), this,
          &VXBuildPlateAnnotationSourcePimpl::setXOrigin);
  connect(ui->yOrigin, QOverload<double>::of(&DSpin::valueChanged), this,
          &VXBuildPlateAnnotationSourcePimpl::setYOrigin);
  connect(ui->zOrigin, QOverload<double>::of(&DSpin::valueChanged), this,
          &VXBuildPlateAnnotationSourcePimpl::setZOrigin);
  connect(ui->xNormal, QOverload<double>::of(&DSpin::valueChanged), this,
          &VXBuildPlateAnnotationSourcePimpl::setXNormal);
  connect(ui->yNormal, QOverload<double>::of(&DSpin::valueChanged), this,
          &VXBuildPlateAnnotationSourcePimpl::setYNormal);
  connect(ui->zNormal, QOverload<double>::of(&DSpin::valueChanged), this,
          &VXBuildPlateAnnotationSourcePimpl::setZNormal);
  connect(ui->xCenter, QOverload<double>::of(&DSpin::valueChanged), this,
          &VXBuildPlateAnnotationSourcePimpl::setXCenter);
  connect(ui->yCenter, QOverload<double>::of(&DSpin::valueChanged), this,
          &VXBuildPlateAnnotationSourcePimpl::setYCenter);
  connect(ui->zCenter, QOverload<double>::of(&DSpin::valueChanged), this,
          &VXBuildPlateAnnotationSourcePimpl::setZCenter);
  connect(ui->opacity, &QSlider::valueChanged, this, &VXBuildPlateAnnotationSourcePimpl::setOpacity);
  connect(ui->majorColor, &ZRColorButton::colorChanged, this,
          &VXBuildPlateAnnotationSourcePimpl::setBuildPlateColor);
  connect(ui->minorColor, &ZRColorButton::colorChanged, this,
          &VXBuildPlateAnnotationSourcePimpl::setBuildPlateMinorColor);
}

void VXBuildPlateAnnotationSourcePimpl::syncSettingsWidget()
{
  if (!m_Form)
  {
    return;
  }
  Ui::VXBuildPlateAnnotationSourceWidget* ui = m_Form->ui();
  const QList<QWidget*> inputs = m_Form->findChildren<QWidget*>();
  std::vector<std::unique_ptr<QSignalBlocker>> blockers;
  for (QWidget* input : inputs)
  {
    blockers.push_back(std::make_unique<QSignalBlocker>(input));
  }
  ui->plateShape->setCurrentIndex(ui->plateShape->findData(m_PlateShape));
  m_Form->setShapeInputsVisibility(static_cast<VXBuildPlateAnnotationSourceWidget::Shape>(m_PlateShape));
  ui->xDimension->setValue(m_XDimension);
  ui->yDimension->setValue(m_YDimension);
  ui->radius->setValue(m_Radius);
  ui->xSpacing->setValue(m_XSpacing);
  ui->ySpacing->setValue(m_YSpacing);
  ui->xMinorSpacing->setValue(m_XMinorSpacing);
  ui->yMinorSpacing->setValue(m_YMinorSpacing);
  const std::array<QDoubleSpinBox*, 3> origin = {ui->xOrigin, ui->yOrigin, ui->zOrigin};
  const std::array<QDoubleSpinBox*, 3> normal = {ui->xNormal, ui->yNormal, ui->zNormal};
  const std::array<QDoubleSpinBox*, 3> center = {ui->xCenter, ui->yCenter, ui->zCenter};
  for (int i = 0; i < 3; ++i)
  {
    origin[i]->setValue(m_Origin[i]);
    normal[i]->setValue(m_Normal[i]);
    center[i]->setValue(m_Center[i]);
  }
  ui->opacity->setValue(static_cast<int>(std::lround(m_Opacity * 100.0)));
  ui->majorColor->setColor(m_Color);
  ui->minorColor->setColor(m_MinorColor);
  if (auto* eye = m_SettingsForm
                      ? m_SettingsForm->findChild<QPushButton*>(QStringLiteral("m_VisibilityButton"))
                      : nullptr)
  {
    const QSignalBlocker blocker(eye);
    eye->setChecked(m_Visible);
  }
}
