#include "charts/VXChartProperties.h"

#include "platform/ZRColorButton.h"
#include "platform/ZRPreferences.h"
#include "platform/plottaro/PlottaroGraphicsView.h"

#include "ui_VXChartProperties.h"

#include <nlohmann/json.hpp>

#include <QApplication>
#include <QClipboard>
#include <QDoubleValidator>
#include <QMenu>
#include <QMessageBox>
#include <QSignalBlocker>

#include <tuple>

namespace
{
const char* const k_ChartProperties = "chart_properties";
const char* const k_DefaultChartNumber = "default_chart_number";
} // namespace

VXChartProperties::VXChartProperties(VXChart* chart, unsigned long number, QWidget* parent)
    : QWidget(parent)
    , m_Ui(std::make_unique<Ui::VXChartProperties>())
    , m_Chart(chart)
    , m_Number(number)
{
  m_Ui->setupUi(this);
  m_Fonts = {
      {{m_Ui->chartTitleFontCombo, m_Ui->chartTitleFontSizeSpin, m_Ui->chartTitleBoldCheck,
        m_Ui->chartTitleItalicCheck},
       {m_Ui->xAxisTitleFontCombo, m_Ui->xAxisTitleFontSizeSpin, m_Ui->xAxisTitleBoldCheck,
        m_Ui->xAxisTitleItalicCheck},
       {m_Ui->yAxisTitleFontCombo, m_Ui->yAxisTitleFontSizeSpin, m_Ui->yAxisTitleBoldCheck,
        m_Ui->yAxisTitleItalicCheck},
       {m_Ui->legendFontCombo, m_Ui->legendFontSizeSpin, m_Ui->legendBoldCheck, m_Ui->legendItalicCheck},
       {m_Ui->xAxisLabelFontCombo, m_Ui->xAxisLabelFontSizeSpin, m_Ui->xAxisLabelBoldCheck,
        m_Ui->xAxisLabelItalicCheck},
       {m_Ui->yAxisLabelFontCombo, m_Ui->yAxisLabelFontSizeSpin, m_Ui->yAxisLabelBoldCheck,
        m_Ui->yAxisLabelItalicCheck}}};
  for (QLineEdit* edit : {m_Ui->xAxisMinEdit, m_Ui->xAxisMaxEdit, m_Ui->xAxisSpacingEdit, m_Ui->yAxisMinEdit,
                          m_Ui->yAxisMaxEdit, m_Ui->yAxisSpacingEdit})
  {
    edit->setValidator(new QDoubleValidator(edit));
  }
  if (m_Chart != nullptr)
  {
    connect(m_Chart, &VXChart::axisMinMaxChanged, this, &VXChartProperties::syncAxesValues);
    connect(m_Chart, &VXChart::printOutput, this, &VXChartProperties::printOutput);
    connect(m_Chart->getView(), &plottaro::PlottaroGraphicsView::legendMoved, this,
            [this]
            {
              const QSignalBlocker blocker(m_Ui->legendPositionCombo);
              m_Ui->legendPositionCombo->setCurrentText(VXChart::k_CustomLegendLocation);
            });
  }
  connectControls();
  syncFromChart();
  saveUserInputMinMax();
}

VXChartProperties::~VXChartProperties() = default;

QString VXChartProperties::getChartName() const
{
  return QStringLiteral("Chart %1").arg(m_Number);
}

QString VXChartProperties::getLegendLocation() const
{
  return m_Ui->legendPositionCombo->currentText();
}

QString VXChartProperties::getChartTitle() const
{
  return m_Ui->chartTitleEdit->text();
}

void VXChartProperties::connectControls()
{
  // Each control's value goes to the chart's setter, while the chart exists.
  auto withChart = [this](auto apply)
  {
    return [this, apply](auto... values)
    {
      if (m_Chart != nullptr)
      {
        apply(m_Chart.data(), values...);
      }
    };
  };
  connect(m_Ui->chartTitleEdit, &QLineEdit::editingFinished, this,
          withChart([this](VXChart* chart)
                    { chart->setText(VXChart::TextRole::ChartTitle, m_Ui->chartTitleEdit->text()); }));
  connect(m_Ui->xAxisTitleEdit, &QLineEdit::editingFinished, this,
          withChart([this](VXChart* chart)
                    { chart->setText(VXChart::TextRole::XAxisTitle, m_Ui->xAxisTitleEdit->text()); }));
  connect(m_Ui->yAxisTitleEdit, &QLineEdit::editingFinished, this,
          withChart([this](VXChart* chart)
                    { chart->setText(VXChart::TextRole::YAxisTitle, m_Ui->yAxisTitleEdit->text()); }));
  for (int index = 0; index < VXChart::k_TextRoleCount; ++index)
  {
    const auto role = static_cast<VXChart::TextRole>(index);
    const FontControls& font = m_Fonts[static_cast<std::size_t>(index)];
    connect(font.family, &QComboBox::currentTextChanged, this,
            withChart([role](VXChart* chart, const QString& family) { chart->setFontFamily(role, family); }));
    connect(font.size, QOverload<int>::of(&QSpinBox::valueChanged), this,
            withChart([role](VXChart* chart, int size) { chart->setFontSize(role, size); }));
    connect(font.bold, &QCheckBox::toggled, this,
            withChart([role](VXChart* chart, bool on) { chart->setFontBold(role, on); }));
    connect(font.italic, &QCheckBox::toggled, this,
            withChart([role](VXChart* chart, bool on) { chart->setFontItalic(role, on); }));
  }
  const std::array<std::pair<ZRColorButton*, VXChart::TextRole>, 5> colorButtons = {
      {{m_Ui->chartTitleColorBtn, VXChart::TextRole::ChartTitle},
       {m_Ui->xAxisTitleColorBtn, VXChart::TextRole::XAxisTitle},
       {m_Ui->yAxisTitleColorBtn, VXChart::TextRole::YAxisTitle},
       {m_Ui->xAxisLabelColorBtn, VXChart::TextRole::XAxisLabels},
       {m_Ui->yAxisLabelColorBtn, VXChart::TextRole::YAxisLabels}}};
  for (const auto& [button, role] : colorButtons)
  {
    const VXChart::TextRole textRole = role;
    connect(
        button, &ZRColorButton::colorChanged, this,
        withChart([textRole](VXChart* chart, const QColor& color) { chart->setFontColor(textRole, color); }));
  }
  connect(m_Ui->showLegendCheck, &QCheckBox::toggled, this,
          withChart([](VXChart* chart, bool on) { chart->setLegendVisible(on); }));
  connect(m_Ui->legendPositionCombo, &QComboBox::currentTextChanged, this,
          withChart([](VXChart* chart, const QString& location) { chart->setLegendLocation(location); }));
  connect(m_Ui->legendSymbolWidthSpin, QOverload<int>::of(&QSpinBox::valueChanged), this,
          withChart([](VXChart* chart, int width) { chart->setLegendSymbolWidth(width); }));
  connect(m_Ui->resetLegendBtn, &QPushButton::clicked, this, &VXChartProperties::resetLegendLocation);

  struct AxisControls
  {
    VXChart::Axis axis;
    QLineEdit* min;
    QLineEdit* max;
    QLineEdit* spacing;
    QSpinBox* rotation;
    QSpinBox* offset;
    QCheckBox* grid;
    ZRColorButton* gridColor;
    QCheckBox* ticks;
    QCheckBox* log;
    QComboBox* format;
    QSpinBox* precision;
    QPushButton* reset;
  };
  const std::array<AxisControls, 2> axes = {
      {{VXChart::Axis::X, m_Ui->xAxisMinEdit, m_Ui->xAxisMaxEdit, m_Ui->xAxisSpacingEdit,
        m_Ui->xAxisRotationSpin, m_Ui->xAxisOffsetSpin, m_Ui->xAxisGridCheck, m_Ui->xAxisGridColorBtn,
        m_Ui->xAxisTickCheck, m_Ui->xAxisLogCheck, m_Ui->xAxisFormatCombo, m_Ui->xAxisPrecisionSpin,
        m_Ui->xAxisResetBtn},
       {VXChart::Axis::Y, m_Ui->yAxisMinEdit, m_Ui->yAxisMaxEdit, m_Ui->yAxisSpacingEdit,
        m_Ui->yAxisRotationSpin, m_Ui->yAxisOffsetSpin, m_Ui->yAxisGridCheck, m_Ui->yAxisGridColorBtn,
        m_Ui->yAxisTickCheck, m_Ui->yAxisLogCheck, m_Ui->yAxisFormatCombo, m_Ui->yAxisPrecisionSpin,
        m_Ui->yAxisResetBtn}}};
  for (const AxisControls& controls : axes)
  {
    const VXChart::Axis axis = controls.axis;
    for (QLineEdit* edit : {controls.min, controls.max, controls.spacing})
    {
      connect(edit, &QLineEdit::editingFinished, this,
              [this, axis]
              {
                saveUserInputMinMax();
                applyAxisRange(axis);
              });
    }
    connect(
        controls.rotation, QOverload<int>::of(&QSpinBox::valueChanged), this,
        withChart([axis](VXChart* chart, int degrees) { chart->setAxisLabelOrientation(axis, degrees); }));
    connect(controls.offset, QOverload<int>::of(&QSpinBox::valueChanged), this,
            withChart([axis](VXChart* chart, int offset) { chart->setAxisLabelOffset(axis, offset); }));
    connect(controls.grid, &QCheckBox::toggled, this,
            withChart([axis](VXChart* chart, bool on) { chart->setAxisGridLines(axis, on); }));
    connect(
        controls.gridColor, &ZRColorButton::colorChanged, this,
        withChart([axis](VXChart* chart, const QColor& color) { chart->setAxisGridLineColor(axis, color); }));
    connect(controls.ticks, &QCheckBox::toggled, this,
            withChart([axis](VXChart* chart, bool on) { chart->setAxisTickMarks(axis, on); }));
    connect(controls.log, &QCheckBox::toggled, this,
            withChart([axis](VXChart* chart, bool on) { chart->setAxisLogScale(axis, on); }));
    QComboBox* format = controls.format;
    QSpinBox* precision = controls.precision;
    auto applyFormat =
        withChart([axis, format, precision](VXChart* chart)
                  { chart->setAxisNumberFormat(axis, format->currentText(), precision->value()); });
    connect(format, &QComboBox::currentTextChanged, this, [applyFormat](const QString&) { applyFormat(); });
    connect(precision, QOverload<int>::of(&QSpinBox::valueChanged), this,
            [applyFormat](int) { applyFormat(); });
    connect(controls.reset, &QPushButton::clicked, this,
            [this, axis]
            {
              if (m_Chart != nullptr)
              {
                axis == VXChart::Axis::X ? m_Chart->resetXAxis() : m_Chart->resetYAxis();
              }
            });
  }
  if (m_Chart != nullptr)
  {
    // Colour buttons follow a reset of the chart's colours.
    connect(m_Chart, &VXChart::chartTitleFontColorReset, m_Ui->chartTitleColorBtn, &ZRColorButton::setColor);
    connect(m_Chart, &VXChart::xAxisTitleFontColorReset, m_Ui->xAxisTitleColorBtn, &ZRColorButton::setColor);
    connect(m_Chart, &VXChart::yAxisTitleFontColorReset, m_Ui->yAxisTitleColorBtn, &ZRColorButton::setColor);
    connect(m_Chart, &VXChart::xAxisLabelFontColorReset, m_Ui->xAxisLabelColorBtn, &ZRColorButton::setColor);
    connect(m_Chart, &VXChart::yAxisLabelFontColorReset, m_Ui->yAxisLabelColorBtn, &ZRColorButton::setColor);
    connect(m_Chart, &VXChart::xAxisGridLineColorReset, m_Ui->xAxisGridColorBtn, &ZRColorButton::setColor);
    connect(m_Chart, &VXChart::yAxisGridLineColorReset, m_Ui->yAxisGridColorBtn, &ZRColorButton::setColor);
  }
}

void VXChartProperties::applyAxisRange(VXChart::Axis axis)
{
  if (m_Chart == nullptr)
  {
    return;
  }
  const bool isX = axis == VXChart::Axis::X;
  QLineEdit* min = isX ? m_Ui->xAxisMinEdit : m_Ui->yAxisMinEdit;
  QLineEdit* max = isX ? m_Ui->xAxisMaxEdit : m_Ui->yAxisMaxEdit;
  QLineEdit* spacing = isX ? m_Ui->xAxisSpacingEdit : m_Ui->yAxisSpacingEdit;
  bool minOk = false;
  bool maxOk = false;
  bool spacingOk = false;
  const double minValue = min->text().toDouble(&minOk);
  const double maxValue = max->text().toDouble(&maxOk);
  const double spacingValue = spacing->text().toDouble(&spacingOk);
  if (!minOk || !maxOk || !(minValue < maxValue))
  {
    Q_EMIT printOutput(
        QStringLiteral("The %1 axis needs a minimum below its maximum; the axis is left as it was.")
            .arg(isX ? QStringLiteral("x") : QStringLiteral("y")));
    syncAxesValues();
    return;
  }
  m_Chart->setAxisMin(axis, minValue);
  m_Chart->setAxisMax(axis, maxValue);
  m_Chart->setAxisMajorGridSpacing(axis, spacingOk && spacingValue > 0.0 ? spacingValue : 0.0);
}

void VXChartProperties::setAxesMinMaxStepInputEnabled(bool enabled)
{
  for (QLineEdit* edit : {m_Ui->xAxisMinEdit, m_Ui->xAxisMaxEdit, m_Ui->xAxisSpacingEdit, m_Ui->yAxisMinEdit,
                          m_Ui->yAxisMaxEdit, m_Ui->yAxisSpacingEdit})
  {
    edit->setEnabled(enabled);
  }
}

void VXChartProperties::syncAxesValues()
{
  if (m_Chart == nullptr)
  {
    return;
  }
  const std::array<std::array<QLineEdit*, 3>, 2> edits = {
      {{m_Ui->xAxisMinEdit, m_Ui->xAxisMaxEdit, m_Ui->xAxisSpacingEdit},
       {m_Ui->yAxisMinEdit, m_Ui->yAxisMaxEdit, m_Ui->yAxisSpacingEdit}}};
  for (int axis = 0; axis < 2; ++axis)
  {
    const VXChart::AxisSettings& settings = m_Chart->getAxisSettings(static_cast<VXChart::Axis>(axis));
    const std::array<double, 3> values = {settings.min, settings.max, settings.spacing};
    for (int i = 0; i < 3; ++i)
    {
      const QSignalBlocker blocker(edits[axis][i]);
      edits[axis][i]->setText(QString::number(values[i], 'g', 10));
    }
  }
}

void VXChartProperties::saveUserInputMinMax()
{
  const std::array<std::array<QLineEdit*, 3>, 2> edits = {
      {{m_Ui->xAxisMinEdit, m_Ui->xAxisMaxEdit, m_Ui->xAxisSpacingEdit},
       {m_Ui->yAxisMinEdit, m_Ui->yAxisMaxEdit, m_Ui->yAxisSpacingEdit}}};
  for (int axis = 0; axis < 2; ++axis)
  {
    for (int i = 0; i < 3; ++i)
    {
      bool ok = false;
      const double value = edits[axis][i]->text().toDouble(&ok);
      if (ok)
      {
        m_UserMinMaxSpacing[axis][i] = value;
      }
    }
  }
}

void VXChartProperties::resetAxesToUserData()
{
  if (m_Chart == nullptr)
  {
    return;
  }
  for (int axis = 0; axis < 2; ++axis)
  {
    const auto chartAxis = static_cast<VXChart::Axis>(axis);
    m_Chart->setAxisMin(chartAxis, m_UserMinMaxSpacing[axis][0]);
    m_Chart->setAxisMax(chartAxis, m_UserMinMaxSpacing[axis][1]);
    m_Chart->setAxisMajorGridSpacing(chartAxis, m_UserMinMaxSpacing[axis][2]);
  }
  syncAxesValues();
}

void VXChartProperties::cacheCustomLegendLocation()
{
  if (m_Chart != nullptr)
  {
    m_Chart->cacheCustomLegendLocation(VXChart::k_CustomLegendLocation);
  }
  const QSignalBlocker blocker(m_Ui->legendPositionCombo);
  m_Ui->legendPositionCombo->setCurrentText(VXChart::k_CustomLegendLocation);
}

void VXChartProperties::syncLegendLocation()
{
  if (m_Chart != nullptr)
  {
    m_Chart->syncLegendLocation(m_Ui->legendPositionCombo->currentText());
  }
}

void VXChartProperties::resetLegendLocation()
{
  m_Ui->legendPositionCombo->setCurrentText(ZRPreferences::k_DefaultLegendLocation);
  syncLegendLocation();
}

void VXChartProperties::syncFromChart()
{
  if (m_Chart == nullptr)
  {
    return;
  }
  const std::array<QLineEdit*, 3> titles = {m_Ui->chartTitleEdit, m_Ui->xAxisTitleEdit, m_Ui->yAxisTitleEdit};
  for (int index = 0; index < 3; ++index)
  {
    const QSignalBlocker blocker(titles[index]);
    titles[index]->setText(m_Chart->getTextStyle(static_cast<VXChart::TextRole>(index)).text);
  }
  for (int index = 0; index < VXChart::k_TextRoleCount; ++index)
  {
    const VXChart::TextStyle& style = m_Chart->getTextStyle(static_cast<VXChart::TextRole>(index));
    const FontControls& font = m_Fonts[static_cast<std::size_t>(index)];
    const QSignalBlocker familyBlocker(font.family);
    const QSignalBlocker sizeBlocker(font.size);
    const QSignalBlocker boldBlocker(font.bold);
    const QSignalBlocker italicBlocker(font.italic);
    if (font.family->findText(style.family) < 0)
    {
      font.family->addItem(style.family); // a family from a state file that the list does not offer
    }
    font.family->setCurrentText(style.family);
    font.size->setValue(style.size);
    font.bold->setChecked(style.bold);
    font.italic->setChecked(style.italic);
  }
  m_Ui->chartTitleColorBtn->setColor(m_Chart->getTextStyle(VXChart::TextRole::ChartTitle).color);
  m_Ui->xAxisTitleColorBtn->setColor(m_Chart->getTextStyle(VXChart::TextRole::XAxisTitle).color);
  m_Ui->yAxisTitleColorBtn->setColor(m_Chart->getTextStyle(VXChart::TextRole::YAxisTitle).color);
  m_Ui->xAxisLabelColorBtn->setColor(m_Chart->getTextStyle(VXChart::TextRole::XAxisLabels).color);
  m_Ui->yAxisLabelColorBtn->setColor(m_Chart->getTextStyle(VXChart::TextRole::YAxisLabels).color);
  {
    const QSignalBlocker legendBlocker(m_Ui->showLegendCheck);
    const QSignalBlocker positionBlocker(m_Ui->legendPositionCombo);
    const QSignalBlocker widthBlocker(m_Ui->legendSymbolWidthSpin);
    m_Ui->showLegendCheck->setChecked(m_Chart->getLegendVisible());
    m_Ui->legendPositionCombo->setCurrentText(m_Chart->getLegendLocation());
    m_Ui->legendSymbolWidthSpin->setValue(m_Chart->getLegendSymbolWidth());
  }
  const std::array<std::tuple<QSpinBox*, QSpinBox*, QCheckBox*, ZRColorButton*, QCheckBox*, QCheckBox*,
                              QComboBox*, QSpinBox*>,
                   2>
      axes = {
          {{m_Ui->xAxisRotationSpin, m_Ui->xAxisOffsetSpin, m_Ui->xAxisGridCheck, m_Ui->xAxisGridColorBtn,
            m_Ui->xAxisTickCheck, m_Ui->xAxisLogCheck, m_Ui->xAxisFormatCombo, m_Ui->xAxisPrecisionSpin},
           {m_Ui->yAxisRotationSpin, m_Ui->yAxisOffsetSpin, m_Ui->yAxisGridCheck, m_Ui->yAxisGridColorBtn,
            m_Ui->yAxisTickCheck, m_Ui->yAxisLogCheck, m_Ui->yAxisFormatCombo, m_Ui->yAxisPrecisionSpin}}};
  for (int axis = 0; axis < 2; ++axis)
  {
    const VXChart::AxisSettings& settings = m_Chart->getAxisSettings(static_cast<VXChart::Axis>(axis));
    const auto& [rotation, offset, grid, gridColor, ticks, log, format, precision] = axes[axis];
    const QSignalBlocker b1(rotation);
    const QSignalBlocker b2(offset);
    const QSignalBlocker b3(grid);
    const QSignalBlocker b4(ticks);
    const QSignalBlocker b5(log);
    const QSignalBlocker b6(format);
    const QSignalBlocker b7(precision);
    rotation->setValue(settings.labelOrientation);
    offset->setValue(settings.labelOffset);
    grid->setChecked(settings.gridLines);
    gridColor->setColor(settings.gridColor);
    ticks->setChecked(settings.tickMarks);
    log->setChecked(settings.logScale);
    format->setCurrentText(settings.notation);
    precision->setValue(settings.precision);
  }
  syncAxesValues();
}

void VXChartProperties::saveState(nlohmann::json& json) const
{
  nlohmann::json properties = nlohmann::json::object();
  if (m_Chart != nullptr)
  {
    m_Chart->writeProperties(properties);
  }
  properties[k_DefaultChartNumber] = m_Number;
  json[k_ChartProperties] = properties;
}

void VXChartProperties::loadState(const nlohmann::json& json)
{
  if (!json.contains(k_ChartProperties) || m_Chart == nullptr)
  {
    return;
  }
  const nlohmann::json& properties = json.at(k_ChartProperties);
  if (properties.contains(k_DefaultChartNumber))
  {
    m_Number = properties.at(k_DefaultChartNumber).get<unsigned long>();
  }
  m_Chart->readProperties(properties);
  syncFromChart();
  saveUserInputMinMax();
}

void VXChartProperties::askToSaveDefaultSettings()
{
  if (m_Chart == nullptr ||
      QMessageBox::question(
          this, QStringLiteral("Save Default Chart Property Settings"),
          QStringLiteral("Do you want to save the current setting values as the default values? (Data "
                         "specific settings will not be saved)")) != QMessageBox::Yes)
  {
    return;
  }
  m_Chart->writeSettings();
}

void VXChartProperties::askToResetDefaultSettings()
{
  if (m_Chart == nullptr ||
      QMessageBox::question(
          this, QStringLiteral("Reset Default Settings"),
          QStringLiteral("Do you want to reset the default settings for chart properties to the "
                         "application default values?")) != QMessageBox::Yes)
  {
    return;
  }
  VXChart::ClearSettings();
  m_Chart->resetProperties();
  syncFromChart();
}

void VXChartProperties::copySettings()
{
  nlohmann::json json;
  saveState(json);
  json[k_ChartProperties].erase(k_DefaultChartNumber);
  QApplication::clipboard()->setText(QString::fromStdString(json.dump(2)));
}

void VXChartProperties::pasteSettings()
{
  const nlohmann::json json =
      nlohmann::json::parse(QApplication::clipboard()->text().toStdString(), nullptr, false);
  if (json.is_discarded() || !json.is_object() || !json.contains(k_ChartProperties))
  {
    Q_EMIT printOutput(QStringLiteral("Cannot paste chart settings for current page!"));
    return;
  }
  try
  {
    loadState(json);
  }
  catch (const nlohmann::json::exception&)
  {
    Q_EMIT printOutput(QStringLiteral("Cannot paste chart settings for current page!"));
  }
}

void VXChartProperties::requestContextMenu(const QPoint& position)
{
  QMenu menu(this);
  menu.addAction(QStringLiteral("Copy Settings"), this, &VXChartProperties::copySettings);
  menu.addAction(QStringLiteral("Paste Settings"), this, &VXChartProperties::pasteSettings);
  menu.addAction(QStringLiteral("Reset Axes to Last User Input"), this,
                 &VXChartProperties::resetAxesToUserData);
  menu.exec(mapToGlobal(position));
}
