#pragma once

#include "platform/ZRPlatformExport.h"

#include "data_bridge/zr_contract/ColorPreset.h"

#include <QColor>
#include <QDialog>
#include <QMetaType>
#include <QPixmap>
#include <QPointer>

#include <memory>

class ColorPresetsTableModel;
class QMessageBox;
class QSortFilterProxyModel;

Q_DECLARE_METATYPE(zr::core::ColorTableUtilities::ColorPreset)

namespace Ui
{
class ColorPresetsDialog;
}

/**
 * @brief Lists the colour map presets with their colour bars, filters them by name, applies the chosen
 * one and imports preset files. Starts with the presets shipped with the application.
 */
class ZR_PLATFORM_EXPORT ColorPresetsDialog : public QDialog
{
  Q_OBJECT

public:
  using ColorPreset = zr::core::ColorTableUtilities::ColorPreset;

  explicit ColorPresetsDialog(QWidget* parent = nullptr);
  ~ColorPresetsDialog() override;

  /** @brief Shows the colour; emits nanColorChanged() too when announce is true. */
  void setNanColor(const QColor& color, bool announce);
  QColor nanColor() const;

  ColorPresetsTableModel* presetsModel() const;

  /** @brief Selects the first visible preset of that name; false if none is shown. */
  bool selectPreset(const QString& name);
  /** @brief Name of the selected preset, empty when none is selected. */
  QString selectedPresetName() const;

  /**
   * @brief Adds the valid presets of a JSON file of one preset or an array of presets. Files that
   * cannot be read and presets left out are reported in a message box. Returns the number added.
   */
  int importPresetFile(const QString& filePath);

public Q_SLOTS:
  /** @brief Emits applyPreset() for the selected preset; does nothing without a selection. */
  void applySelectedPreset();
  /** @brief Asks for a preset file and imports it. */
  void importPresets();

Q_SIGNALS:
  // Spelled out in full: queued connections and signal spies find the type by this name.
  void applyPreset(const zr::core::ColorTableUtilities::ColorPreset& preset, const QPixmap& colorBar);
  void restoreDefaultPreset();
  void nanColorChanged(const QColor& color);

private:
  int selectedSourceRow() const;
  void updateButtons();
  void showImportMessages(const QString& text);

  std::unique_ptr<Ui::ColorPresetsDialog> m_Ui;
  ColorPresetsTableModel* m_Model = nullptr;
  QSortFilterProxyModel* m_FilterModel = nullptr;
  QPointer<QMessageBox> m_MessageBox;
};
