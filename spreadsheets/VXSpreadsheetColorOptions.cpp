#include "spreadsheets/VXSpreadsheetColorOptions.h"

#include "spreadsheets/VXSpreadsheet.h"
#include "spreadsheets/VXSpreadsheetOptions.h"

#include "ui_VXSpreadsheetColorOptions.h"

#include "colour/VXCustomRangeDialog.h"
#include "colour/VXLookupTable.h"
#include "platform/ColorPresetsDialog.h"
#include "platform/ColorPresetsFile.h"
#include "platform/ColorPresetsTableModel.h"
#include "platform/ZRPreferences.h"

#include <vtkColorTransferFunction.h>

#include <QImage>
#include <QPixmap>
#include <QTransform>

namespace
{
const char k_UseKey[] = "spreadsheet_use_background_color";
const char k_PresetKey[] = "spreadsheet_color_preset_name";
const char k_InvertedKey[] = "spreadsheet_color_map_inverted";
const char k_CustomKey[] = "using_custom_range";
const char k_MinKey[] = "custom_range_min";
const char k_MaxKey[] = "custom_range_max";

// A strip of the colour map from its lowest to its highest node, mirrored when inverted.
QPixmap MapStrip(vtkColorTransferFunction* map, bool mirrored)
{
  QImage image(128, 12, QImage::Format_RGB32);
  double range[2] = {0.0, 1.0};
  map->GetRange(range);
  for (int x = 0; x < image.width(); ++x)
  {
    double rgb[3];
    map->GetColor(range[0] + (range[1] - range[0]) * x / (image.width() - 1), rgb);
    const QRgb colour = qRgb(int(rgb[0] * 255), int(rgb[1] * 255), int(rgb[2] * 255));
    for (int y = 0; y < image.height(); ++y)
    {
      image.setPixel(x, y, colour);
    }
  }
  QPixmap pixmap = QPixmap::fromImage(image);
  return mirrored ? pixmap.transformed(QTransform::fromScale(-1.0, 1.0)) : pixmap;
}
} // namespace

VXSpreadsheetColorOptions::VXSpreadsheetColorOptions(VXSpreadsheetOptions* options, QWidget* parent)
    : QWidget(parent)
    , m_Ui(std::make_unique<Ui::VXSpreadsheetColorOptions>())
    , m_Options(options)
{
  m_Ui->setupUi(this);
  m_Ui->msgLabel->hide();
  connect(m_Ui->useBackgroundColorsCheckBox, &QCheckBox::toggled, this,
          &VXSpreadsheetColorOptions::onBackgroundColorCheckBoxChanged);
  connect(m_Ui->m_InvertColorBtn, &QPushButton::toggled, this, &VXSpreadsheetColorOptions::invertColorMap);
  connect(m_Ui->scaleToDataBtn, &QPushButton::clicked, this, &VXSpreadsheetColorOptions::rescaleToDataRange);
  connect(m_Ui->m_ColorPresetButton, &QPushButton::clicked, this,
          &VXSpreadsheetColorOptions::showColorPresetsDialog);
  connect(m_Ui->customRangeBtn, &QPushButton::clicked, this,
          &VXSpreadsheetColorOptions::showCustomRangeDialog);
  initializeLookupTable();
  enableControls(false);
}

VXSpreadsheetColorOptions::~VXSpreadsheetColorOptions() = default;

void VXSpreadsheetColorOptions::initializeLookupTable()
{
  if (m_LookupTable == nullptr)
  {
    m_LookupTable = new VXLookupTable(this);
  }
  const auto preset = ZRPreferences::Instance()->getDefaultColorPreset();
  m_LookupTable->parseRgbJson(preset);
  m_PresetName = QString::fromStdString(preset.m_Name);
  if (m_UsingCustomRange)
  {
    m_LookupTable->setRange(m_CustomRange[0], m_CustomRange[1]);
    setRangeLabels(m_CustomRange[0], m_CustomRange[1]);
  }
  else
  {
    m_LookupTable->setRange(0.0, 0.0);
    setRangeLabels(0.0, 0.0);
  }
  if (m_CustomRangeDialog)
  {
    m_CustomRangeDialog->setRange(m_LookupTable->getRange());
  }
  if (m_Inverted)
  {
    m_LookupTable->invert();
  }
  m_PresetPixmap = ColorPresetsTableModel::CreateColorBar(preset);
  showPixmap(m_PresetPixmap);
}

void VXSpreadsheetColorOptions::showPixmap(const QPixmap& pixmap)
{
  if (pixmap.isNull())
  {
    m_Ui->colorMapPixmapLabel->setPixmap(MapStrip(m_LookupTable->getColorTransferFunction(), false));
    return;
  }
  m_Ui->colorMapPixmapLabel->setPixmap(m_Inverted ? pixmap.transformed(QTransform().scale(-1.0, 1.0))
                                                  : pixmap);
}

ColorPresetsDialog* VXSpreadsheetColorOptions::colorPresetsDialog()
{
  if (!m_PresetsDialog)
  {
    m_PresetsDialog = new ColorPresetsDialog(this);
    m_PresetsDialog->setNanColor(m_LookupTable->getNANColor(), false);
    connect(m_PresetsDialog.data(), &ColorPresetsDialog::applyPreset, this,
            &VXSpreadsheetColorOptions::onColorMapChanged);
    connect(m_PresetsDialog.data(), &ColorPresetsDialog::restoreDefaultPreset, this,
            &VXSpreadsheetColorOptions::restoreDefaultColorMap);
    connect(m_PresetsDialog.data(), &ColorPresetsDialog::nanColorChanged, this,
            &VXSpreadsheetColorOptions::onNanColorChanged);
  }
  return m_PresetsDialog;
}

VXCustomRangeDialog* VXSpreadsheetColorOptions::customRangeDialog()
{
  if (!m_CustomRangeDialog)
  {
    m_CustomRangeDialog = new VXCustomRangeDialog(this);
    m_CustomRangeDialog->setWindowTitle(QStringLiteral("Set Custom Data Range"));
    m_CustomRangeDialog->setRange(m_LookupTable->getRange());
    connect(m_CustomRangeDialog.data(), &VXCustomRangeDialog::rescale, this,
            &VXSpreadsheetColorOptions::rescaleToCustomRange);
    connect(m_CustomRangeDialog.data(), &VXCustomRangeDialog::needsRangeReset, this,
            &VXSpreadsheetColorOptions::rescaleToDataRange);
  }
  return m_CustomRangeDialog;
}

void VXSpreadsheetColorOptions::showColorPresetsDialog()
{
  ColorPresetsDialog* dialog = colorPresetsDialog();
  dialog->selectPreset(m_PresetName);
  dialog->show();
  dialog->raise();
}

void VXSpreadsheetColorOptions::showCustomRangeDialog()
{
  VXCustomRangeDialog* dialog = customRangeDialog();
  dialog->setRange(m_LookupTable->getRange());
  dialog->show();
  dialog->raise();
}

void VXSpreadsheetColorOptions::onColorMapChanged(const zr::core::ColorTableUtilities::ColorPreset& preset,
                                                  const QPixmap& pixmap)
{
  const std::array<double, 2> range = m_LookupTable->getRange();
  const QColor nanColor = m_LookupTable->getNANColor();
  m_LookupTable->parseRgbJson(preset);
  m_LookupTable->setRange(range[0], range[1]);
  m_LookupTable->setNANColor(nanColor);
  m_PresetName = QString::fromStdString(preset.m_Name);
  if (m_Inverted)
  {
    m_LookupTable->invert();
  }
  m_PresetPixmap = pixmap.isNull() ? ColorPresetsTableModel::CreateColorBar(preset) : pixmap;
  showPixmap(m_PresetPixmap);
  emitIfUsed();
}

void VXSpreadsheetColorOptions::onNanColorChanged(const QColor& color)
{
  m_LookupTable->setNANColor(color);
  emitIfUsed();
}

vtkColorTransferFunction* VXSpreadsheetColorOptions::getColorTransferFunction()
{
  return m_LookupTable->getColorTransferFunction();
}

bool VXSpreadsheetColorOptions::usingCustomRange() const
{
  return m_UsingCustomRange;
}

std::array<double, 2> VXSpreadsheetColorOptions::customRange() const
{
  return m_CustomRange;
}

std::array<double, 2> VXSpreadsheetColorOptions::range() const
{
  return m_LookupTable->getRange();
}

bool VXSpreadsheetColorOptions::useBackgroundColors() const
{
  return m_Ui->useBackgroundColorsCheckBox->isChecked();
}

void VXSpreadsheetColorOptions::setUseBackgroundColors(bool use)
{
  m_Ui->useBackgroundColorsCheckBox->setChecked(use);
}

bool VXSpreadsheetColorOptions::isInverted() const
{
  return m_Inverted;
}

QString VXSpreadsheetColorOptions::presetName() const
{
  return m_PresetName;
}

QString VXSpreadsheetColorOptions::rangeMinText() const
{
  return m_Ui->rangeMinLabel->text();
}

QString VXSpreadsheetColorOptions::rangeMaxText() const
{
  return m_Ui->rangeMaxLabel->text();
}

void VXSpreadsheetColorOptions::setRangeLabels(double min, double max)
{
  m_Ui->rangeMinLabel->setText(QString::number(min, 'g', 6));
  m_Ui->rangeMaxLabel->setText(QString::number(max, 'g', 6));
}

void VXSpreadsheetColorOptions::emitIfUsed()
{
  if (useBackgroundColors())
  {
    Q_EMIT colorMapChanged(getColorTransferFunction());
  }
}

void VXSpreadsheetColorOptions::enableControls(bool enable)
{
  for (QWidget* control :
       {static_cast<QWidget*>(m_Ui->colorMapPixmapLabel), static_cast<QWidget*>(m_Ui->rangeMinLabel),
        static_cast<QWidget*>(m_Ui->rangeMaxLabel), static_cast<QWidget*>(m_Ui->m_ColorPresetButton),
        static_cast<QWidget*>(m_Ui->m_InvertColorBtn), static_cast<QWidget*>(m_Ui->scaleToDataBtn),
        static_cast<QWidget*>(m_Ui->customRangeBtn)})
  {
    control->setEnabled(enable);
  }
}

void VXSpreadsheetColorOptions::setRange(const std::array<double, 2>& range)
{
  m_LookupTable->setRange(range[0], range[1]);
  if (m_CustomRangeDialog)
  {
    m_CustomRangeDialog->setRange(range);
  }
  setRangeLabels(range[0], range[1]);
}

void VXSpreadsheetColorOptions::rescaleToDataRange()
{
  m_UsingCustomRange = false;
  std::pair<double, double> range{0.0, 0.0};
  if (m_Options != nullptr && m_Options->spreadsheet() != nullptr)
  {
    range = m_Options->spreadsheet()->getMinMax();
  }
  setRange({range.first, range.second});
  emitIfUsed();
}

void VXSpreadsheetColorOptions::rescaleToCustomRange(double min, double max)
{
  m_CustomRange = {min, max};
  m_UsingCustomRange = true;
  m_LookupTable->setRange(min, max);
  setRangeLabels(min, max);
  emitIfUsed();
}

void VXSpreadsheetColorOptions::invertColorMap(bool inverted)
{
  if (inverted == m_Inverted)
  {
    return;
  }
  m_Inverted = inverted;
  m_LookupTable->invert();
  showPixmap(m_PresetPixmap);
  emitIfUsed();
}

void VXSpreadsheetColorOptions::onBackgroundColorCheckBoxChanged()
{
  const bool use = useBackgroundColors();
  enableControls(use);
  if (use)
  {
    const bool hasSelection = m_Options != nullptr && m_Options->spreadsheet() != nullptr &&
                              m_Options->spreadsheet()->numSelectedCells() > 0;
    m_Ui->msgLabel->setVisible(hasSelection);
    Q_EMIT colorMapChanged(getColorTransferFunction());
  }
  else
  {
    m_Ui->msgLabel->hide();
    Q_EMIT colorMapChanged(nullptr);
  }
}

void VXSpreadsheetColorOptions::restoreDefaultColorMap()
{
  const auto preset = ZRPreferences::Instance()->getDefaultColorPreset();
  onColorMapChanged(preset, ColorPresetsTableModel::CreateColorBar(preset));
}

void VXSpreadsheetColorOptions::clear()
{
  const QSignalBlocker blockUse(m_Ui->useBackgroundColorsCheckBox);
  const QSignalBlocker blockInvert(m_Ui->m_InvertColorBtn);
  m_Ui->useBackgroundColorsCheckBox->setChecked(false);
  m_Ui->m_InvertColorBtn->setChecked(false);
  m_Inverted = false;
  m_UsingCustomRange = false;
  enableControls(false);
  initializeLookupTable();
}

void VXSpreadsheetColorOptions::saveState(nlohmann::json& json) const
{
  json[k_UseKey] = useBackgroundColors();
  json[k_PresetKey] = m_PresetName.toStdString();
  json[k_InvertedKey] = m_Inverted;
  json[k_CustomKey] = m_UsingCustomRange;
  json[k_MinKey] = m_CustomRange[0];
  json[k_MaxKey] = m_CustomRange[1];
}

void VXSpreadsheetColorOptions::loadState(const nlohmann::json& json)
{
  if (json.contains(k_InvertedKey) && json[k_InvertedKey].is_boolean())
  {
    const QSignalBlocker blocker(m_Ui->m_InvertColorBtn);
    m_Ui->m_InvertColorBtn->setChecked(json[k_InvertedKey].get<bool>());
    if (m_Ui->m_InvertColorBtn->isChecked() != m_Inverted)
    {
      m_Inverted = !m_Inverted;
      m_LookupTable->invert();
    }
  }
  if (json.contains(k_CustomKey) && json[k_CustomKey].is_boolean() && json.contains(k_MinKey) &&
      json[k_MinKey].is_number() && json.contains(k_MaxKey) && json[k_MaxKey].is_number())
  {
    m_UsingCustomRange = json[k_CustomKey].get<bool>();
    m_CustomRange = {json[k_MinKey].get<double>(), json[k_MaxKey].get<double>()};
    if (m_UsingCustomRange)
    {
      m_LookupTable->setRange(m_CustomRange[0], m_CustomRange[1]);
      setRangeLabels(m_CustomRange[0], m_CustomRange[1]);
    }
  }
  if (json.contains(k_PresetKey) && json[k_PresetKey].is_string())
  {
    const QString name = QString::fromStdString(json[k_PresetKey].get<std::string>());
    if (name != m_PresetName)
    {
      // A preset that is gone falls back to the default one.
      auto preset = ZRPreferences::Instance()->getDefaultColorPreset();
      if (m_PresetsDialog && m_PresetsDialog->presetsModel()->rowOfName(name) >= 0)
      {
        preset = m_PresetsDialog->presetsModel()->preset(m_PresetsDialog->presetsModel()->rowOfName(name));
      }
      else
      {
        for (const auto& builtIn : ColorPresetsFile::BuiltInPresets())
        {
          if (QString::fromStdString(builtIn.m_Name) == name)
          {
            preset = builtIn;
            break;
          }
        }
      }
      const QSignalBlocker blocker(this);
      onColorMapChanged(preset, QPixmap());
    }
  }
  if (json.contains(k_UseKey) && json[k_UseKey].is_boolean())
  {
    const QSignalBlocker blocker(m_Ui->useBackgroundColorsCheckBox);
    m_Ui->useBackgroundColorsCheckBox->setChecked(json[k_UseKey].get<bool>());
    enableControls(useBackgroundColors());
  }
}
