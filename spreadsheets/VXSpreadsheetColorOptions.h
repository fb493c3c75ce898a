#pragma once

#include <nlohmann/json.hpp>

#include <vtkColorTransferFunction.h>

#include "data_bridge/zr_contract/ColorPreset.h"

#include <QPixmap>
#include <QPointer>
#include <QWidget>

#include <array>
#include <memory>

class ColorPresetsDialog;
class VXCustomRangeDialog;
class VXLookupTable;
class VXSpreadsheetOptions;
class vtkColorTransferFunction;

namespace Ui
{
class VXSpreadsheetColorOptions;
}

/**
 * @brief The colour block of a spreadsheet column (or of a whole slice): whether cells take
 * background colours, from which preset, inverted or not, over the data's range or a custom one.
 */
class VXSpreadsheetColorOptions : public QWidget
{
  Q_OBJECT

public:
  explicit VXSpreadsheetColorOptions(VXSpreadsheetOptions* options, QWidget* parent = nullptr);
  ~VXSpreadsheetColorOptions() override;

  vtkColorTransferFunction* getColorTransferFunction();
  bool usingCustomRange() const;
  std::array<double, 2> customRange() const;
  std::array<double, 2> range() const;
  bool useBackgroundColors() const;
  void setUseBackgroundColors(bool use);
  bool isInverted() const;
  QString presetName() const;
  QString rangeMinText() const;
  QString rangeMaxText() const;

  void setRange(const std::array<double, 2>& range);
  void rescaleToDataRange();
  void rescaleToCustomRange(double min, double max);
  void invertColorMap(bool inverted);
  void onColorMapChanged(const zr::core::ColorTableUtilities::ColorPreset& preset, const QPixmap& pixmap);
  void onNanColorChanged(const QColor& color);
  void onBackgroundColorCheckBoxChanged();
  /** @brief The preset dialog, made on first use. */
  ColorPresetsDialog* colorPresetsDialog();
  /** @brief The custom range dialog, made on first use. */
  VXCustomRangeDialog* customRangeDialog();
  void showColorPresetsDialog();
  void showCustomRangeDialog();
  void restoreDefaultColorMap();
  void initializeLookupTable();
  void clear();
  void saveState(nlohmann::json& json) const;
  void loadState(const nlohmann::json& json);

Q_SIGNALS:
  void colorMapChanged(vtkColorTransferFunction* colorMap);

private:
  void setRangeLabels(double min, double max);
  void emitIfUsed();
  void enableControls(bool enable);

  void showPixmap(const QPixmap& pixmap);

  std::unique_ptr<Ui::VXSpreadsheetColorOptions> m_Ui;
  QPointer<ColorPresetsDialog> m_PresetsDialog;
  QPointer<VXCustomRangeDialog> m_CustomRangeDialog;
  QPixmap m_PresetPixmap;
  VXSpreadsheetOptions* m_Options = nullptr;
  VXLookupTable* m_LookupTable = nullptr;
  std::array<double, 2> m_CustomRange{0.0, 0.0};
  bool m_UsingCustomRange = false;
  bool m_Inverted = false;
  QString m_PresetName;
};
