#include "charts/VXPointLineSeriesOptionsWidget.h"

#include "platform/plottaro/SymbolConversion.h"

#include "ui_VXPointLineSeriesOptions.h"

#include <nlohmann/json.hpp>

#include <QSignalBlocker>

namespace
{
constexpr int k_DefaultPointSize = 6;
constexpr int k_DefaultLineThickness = 2;

// A number, or the name the combo box shows.
int ReadChoice(const nlohmann::json& value, const QComboBox& combo)
{
  if (value.is_number())
  {
    return value.get<int>();
  }
  const int index = combo.findText(QString::fromStdString(value.get<std::string>()));
  return index >= 0 ? combo.itemData(index).toInt() : combo.currentData().toInt();
}

void SelectData(QComboBox* combo, int data)
{
  const int index = combo->findData(data);
  if (index >= 0)
  {
    combo->setCurrentIndex(index);
  }
}
} // namespace

VXPointLineSeriesOptionsWidget::VXPointLineSeriesOptionsWidget(Kind kind, const QString& seriesName,
                                                               QWidget* parent)
    : VXSeriesOptionsWidget(kind, seriesName, parent)
    , m_Ui(std::make_unique<Ui::VXPointLineSeriesOptions>())
{
  auto* controls = new QWidget(extraArea());
  m_Ui->setupUi(controls);
  extraArea()->layout()->addWidget(controls);
  for (const auto& [marker, name] : plottaro::MarkerStyles())
  {
    m_Ui->markerCombo->addItem(QString::fromStdString(name), marker);
  }
  for (const auto& [style, name] : plottaro::LineStyles())
  {
    m_Ui->lineStyleCombo->addItem(QString::fromStdString(name), style);
  }
  // A point series draws no line.
  const bool lines = kind == Kind::Line;
  m_Ui->lineStyleLabel->setVisible(lines);
  m_Ui->lineStyleCombo->setVisible(lines);
  m_Ui->lineThicknessLabel->setVisible(lines);
  m_Ui->lineThicknessSpin->setVisible(lines);
  connect(m_Ui->markerCombo, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
          [this] { Q_EMIT pointMarkerChanged(getSeriesName(), getPointMarker()); });
  connect(m_Ui->pointSizeSpin, QOverload<int>::of(&QSpinBox::valueChanged), this,
          [this](int size) { Q_EMIT pointSizeChanged(getSeriesName(), size); });
  connect(m_Ui->lineStyleCombo, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
          [this] { Q_EMIT lineStyleChanged(getSeriesName(), getLineStyle()); });
  connect(m_Ui->lineThicknessSpin, QOverload<int>::of(&QSpinBox::valueChanged), this,
          [this](int thickness) { Q_EMIT lineThicknessChanged(getSeriesName(), thickness); });
}

VXPointLineSeriesOptionsWidget::~VXPointLineSeriesOptionsWidget() = default;

int VXPointLineSeriesOptionsWidget::getPointMarker() const
{
  return m_Ui->markerCombo->currentData().toInt();
}

void VXPointLineSeriesOptionsWidget::setPointMarker(int marker)
{
  SelectData(m_Ui->markerCombo, marker);
}

int VXPointLineSeriesOptionsWidget::getPointSize() const
{
  return m_Ui->pointSizeSpin->value();
}

void VXPointLineSeriesOptionsWidget::setPointSize(int size)
{
  m_Ui->pointSizeSpin->setValue(size);
}

int VXPointLineSeriesOptionsWidget::getLineStyle() const
{
  return m_Ui->lineStyleCombo->currentData().toInt();
}

void VXPointLineSeriesOptionsWidget::setLineStyle(int style)
{
  SelectData(m_Ui->lineStyleCombo, style);
}

int VXPointLineSeriesOptionsWidget::getLineThickness() const
{
  return m_Ui->lineThicknessSpin->value();
}

void VXPointLineSeriesOptionsWidget::setLineThickness(int thickness)
{
  m_Ui->lineThicknessSpin->setValue(thickness);
}

void VXPointLineSeriesOptionsWidget::resetProperties()
{
  VXSeriesOptionsWidget::resetProperties();
  m_Ui->markerCombo->setCurrentIndex(0);
  m_Ui->lineStyleCombo->setCurrentIndex(0);
  setPointSize(k_DefaultPointSize);
  setLineThickness(k_DefaultLineThickness);
}

void VXPointLineSeriesOptionsWidget::writeStyle(nlohmann::json& json) const
{
  VXSeriesOptionsWidget::writeStyle(json);
  json["point_marker"] = getPointMarker();
  json["point_marker_size"] = getPointSize();
  json["line_style"] = getLineStyle();
  json["line_thickness"] = getLineThickness();
}

void VXPointLineSeriesOptionsWidget::readStyle(const nlohmann::json& json)
{
  VXSeriesOptionsWidget::readStyle(json);
  const QSignalBlocker markerBlocker(m_Ui->markerCombo);
  const QSignalBlocker sizeBlocker(m_Ui->pointSizeSpin);
  const QSignalBlocker styleBlocker(m_Ui->lineStyleCombo);
  const QSignalBlocker thicknessBlocker(m_Ui->lineThicknessSpin);
  if (json.contains("point_marker"))
  {
    setPointMarker(ReadChoice(json.at("point_marker"), *m_Ui->markerCombo));
  }
  if (json.contains("point_marker_size"))
  {
    setPointSize(json.at("point_marker_size").get<int>());
  }
  if (json.contains("line_style"))
  {
    setLineStyle(ReadChoice(json.at("line_style"), *m_Ui->lineStyleCombo));
  }
  if (json.contains("line_thickness"))
  {
    setLineThickness(json.at("line_thickness").get<int>());
  }
}
