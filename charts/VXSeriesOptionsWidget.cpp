#include "charts/VXSeriesOptionsWidget.h"

#include "platform/QtZRSettings.h"
#include "platform/ZRIconPushButton.h"
#include "platform/ZRSettingsKeys.h"

#include "ui_VXSeriesOptionsWidget.h"

#include <nlohmann/json.hpp>

#include <QMessageBox>
#include <QSignalBlocker>

#include <map>

namespace
{
const QColor k_DefaultColor(31, 119, 180);

// The last style copied from a series, per kind.
std::map<VXSeriesOptionsWidget::Kind, nlohmann::json>& CopiedStyles()
{
  static std::map<VXSeriesOptionsWidget::Kind, nlohmann::json> s_Copied;
  return s_Copied;
}

QString KindName(VXSeriesOptionsWidget::Kind kind)
{
  switch (kind)
  {
  case VXSeriesOptionsWidget::Kind::Point:
    return QStringLiteral("Point");
  case VXSeriesOptionsWidget::Kind::Line:
    return QStringLiteral("Line");
  case VXSeriesOptionsWidget::Kind::Bar:
    return QStringLiteral("Bar");
  case VXSeriesOptionsWidget::Kind::Histogram:
    return QStringLiteral("Histogram");
  }
  return {};
}
} // namespace

VXSeriesOptionsWidget::VXSeriesOptionsWidget(Kind kind, const QString& seriesName, QWidget* parent)
    : QWidget(parent)
    , m_Ui(std::make_unique<Ui::VXSeriesOptionsWidget>())
    , m_Kind(kind)
{
  m_Ui->setupUi(this);
  setObjectName(QStringLiteral("seriesOptionsWidget"));
  m_Ui->colorBtn->setColor(k_DefaultColor);
  setSeriesName(seriesName);
  initializeTitleWithVisibilityBtn(m_Ui->visibilityBtn);
  connect(m_Ui->seriesNameEdit, &QLineEdit::editingFinished, this,
          &VXSeriesOptionsWidget::onSeriesNameChanged);
  connect(m_Ui->colorBtn, &ZRColorButton::colorChanged, this,
          [this](const QColor& color)
          { Q_EMIT colorChanged(m_SeriesName, plottaro::Color::FromQColor(color)); });
}

VXSeriesOptionsWidget::~VXSeriesOptionsWidget() = default;

QWidget* VXSeriesOptionsWidget::extraArea() const
{
  return m_Ui->extraArea;
}

QColor VXSeriesOptionsWidget::getColor() const
{
  return m_Ui->colorBtn->getColor();
}

void VXSeriesOptionsWidget::setColor(const QColor& color)
{
  m_Ui->colorBtn->setColor(color);
}

std::array<float, 3> VXSeriesOptionsWidget::getColorArray() const
{
  const QColor color = getColor();
  return {static_cast<float>(color.redF()), static_cast<float>(color.greenF()),
          static_cast<float>(color.blueF())};
}

void VXSeriesOptionsWidget::setSeriesName(const QString& name)
{
  m_SeriesName = name;
  const QSignalBlocker blocker(m_Ui->seriesNameEdit);
  m_Ui->seriesNameEdit->setText(name);
  m_Ui->titleLabel->setText(name + QStringLiteral(" Plot Series Options"));
}

bool VXSeriesOptionsWidget::showInChart() const
{
  return m_Ui->visibilityBtn->isChecked();
}

void VXSeriesOptionsWidget::setShowInChart(bool show)
{
  const QSignalBlocker blocker(m_Ui->visibilityBtn);
  m_Ui->visibilityBtn->setChecked(show);
  m_Ui->visibilityBtn->setToolTip(show ? QStringLiteral("Item is Visible in Chart")
                                       : QStringLiteral("Item is NOT Visible in Chart"));
}

void VXSeriesOptionsWidget::initializeTitleWithVisibilityBtn(ZRIconPushButton* button)
{
  m_Ui->titleLabel->setText(m_SeriesName + QStringLiteral(" Plot Series Options"));
  button->setCheckable(true);
  button->setThemeIconName(QStringLiteral("Eye"), true);
  button->setToolTip(button->isChecked() ? QStringLiteral("Item is Visible in Chart")
                                         : QStringLiteral("Item is NOT Visible in Chart"));
  connect(button, &QPushButton::clicked, this, &VXSeriesOptionsWidget::onVisibilityChanged);
}

void VXSeriesOptionsWidget::onVisibilityChanged(bool visible)
{
  m_Ui->visibilityBtn->setToolTip(visible ? QStringLiteral("Item is Visible in Chart")
                                          : QStringLiteral("Item is NOT Visible in Chart"));
  Q_EMIT visibilityButtonClicked(visible);
}

void VXSeriesOptionsWidget::onSeriesNameChanged()
{
  const QString newName = m_Ui->seriesNameEdit->text();
  if (newName == m_SeriesName || newName.isEmpty())
  {
    const QSignalBlocker blocker(m_Ui->seriesNameEdit);
    m_Ui->seriesNameEdit->setText(m_SeriesName);
    return;
  }
  const QString oldName = m_SeriesName;
  setSeriesName(newName);
  Q_EMIT seriesNameChanged(oldName, newName);
}

void VXSeriesOptionsWidget::writeStyle(nlohmann::json& json) const
{
  const QColor color = getColor();
  json["series_color_r"] = color.red();
  json["series_color_g"] = color.green();
  json["series_color_b"] = color.blue();
}

void VXSeriesOptionsWidget::readStyle(const nlohmann::json& json)
{
  if (json.contains("series_color_r") && json.contains("series_color_g") && json.contains("series_color_b"))
  {
    setColor(QColor(json.at("series_color_r").get<int>(), json.at("series_color_g").get<int>(),
                    json.at("series_color_b").get<int>()));
  }
}

void VXSeriesOptionsWidget::saveState(nlohmann::json& json) const
{
  json["series_name"] = m_SeriesName.toStdString();
  json["show_in_chart"] = showInChart();
  writeStyle(json);
}

void VXSeriesOptionsWidget::loadState(const nlohmann::json& json)
{
  if (json.contains("series_name"))
  {
    setSeriesName(QString::fromStdString(json.at("series_name").get<std::string>()));
  }
  if (json.contains("show_in_chart"))
  {
    setShowInChart(json.at("show_in_chart").get<bool>());
  }
  readStyle(json);
}

void VXSeriesOptionsWidget::resetProperties()
{
  setColor(k_DefaultColor);
  setShowInChart(true);
}

QString VXSeriesOptionsWidget::settingsGroup() const
{
  switch (m_Kind)
  {
  case Kind::Point:
    return ZR::SettingsKeys::k_ChartPointOptionsGroup;
  case Kind::Line:
    return ZR::SettingsKeys::k_ChartLinesOptionsGroup;
  case Kind::Bar:
    return ZR::SettingsKeys::k_ChartBarOptionsGroup;
  case Kind::Histogram:
    return ZR::SettingsKeys::k_ChartHistogramOptionsGroup;
  }
  return {};
}

void VXSeriesOptionsWidget::writeSettings() const
{
  nlohmann::json json;
  writeStyle(json);
  QtZRSettings settings;
  settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
  settings.beginGroup(ZR::SettingsKeys::k_ChartSeriesOptionsSettingsGroup);
  settings.beginGroup(settingsGroup());
  for (const auto& [key, value] : json.items())
  {
    settings.setValue(QString::fromStdString(key), QString::fromStdString(value.dump()));
  }
  settings.sync();
}

void VXSeriesOptionsWidget::readSettings()
{
  QtZRSettings settings;
  settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
  settings.beginGroup(ZR::SettingsKeys::k_ChartSeriesOptionsSettingsGroup);
  settings.beginGroup(settingsGroup());
  nlohmann::json json = nlohmann::json::object();
  for (const QString& key : settings.childKeys())
  {
    nlohmann::json value =
        nlohmann::json::parse(settings.value(key).toString().toStdString(), nullptr, false);
    if (!value.is_discarded())
    {
      json[key.toStdString()] = value;
    }
  }
  try
  {
    readStyle(json);
  }
  catch (const nlohmann::json::exception&)
  {
    // A damaged stored default is ignored; the current values stay.
  }
}

void VXSeriesOptionsWidget::askToSaveDefaultSettings()
{
  if (QMessageBox::question(
          this, QStringLiteral("Save Default Series Options Settings"),
          QStringLiteral("Do you want to save the current setting values as the default values?")) ==
      QMessageBox::Yes)
  {
    writeSettings();
  }
}

void VXSeriesOptionsWidget::askToResetDefaultSettings()
{
  const QString text =
      QStringLiteral("Do you want to reset the default settings for %1 Series Options to the application "
                     "default values?")
          .arg(KindName(m_Kind));
  if (QMessageBox::question(this, QStringLiteral("Reset Default Settings"), text) != QMessageBox::Yes)
  {
    return;
  }
  {
    QtZRSettings settings;
    settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
    settings.beginGroup(ZR::SettingsKeys::k_ChartSeriesOptionsSettingsGroup);
    settings.beginGroup(settingsGroup());
    settings.clearGroup();
    settings.sync();
  }
  resetProperties();
}

void VXSeriesOptionsWidget::copySettings() const
{
  nlohmann::json json;
  writeStyle(json);
  CopiedStyles()[m_Kind] = json;
}

bool VXSeriesOptionsWidget::pasteSettings()
{
  auto found = CopiedStyles().find(m_Kind);
  if (found == CopiedStyles().end())
  {
    return false;
  }
  readStyle(found->second);
  return true;
}
