#pragma once

#include "platform/ZRPlatformExport.h"

#include "data_bridge/zr_contract/ColorPreset.h"

#include <QAbstractTableModel>
#include <QPixmap>
#include <QSize>

#include <vector>

/**
 * @brief The presets of ColorPresetsDialog: one row per preset with its colour bar and its name.
 */
class ZR_PLATFORM_EXPORT ColorPresetsTableModel : public QAbstractTableModel
{
  Q_OBJECT

public:
  using ColorPreset = zr::core::ColorTableUtilities::ColorPreset;

  enum Column
  {
    ColorBarColumn = 0,
    NameColumn,
    ColumnCount
  };

  static inline const QSize k_ColorBarSize = QSize(128, 16);

  explicit ColorPresetsTableModel(QObject* parent = nullptr);
  ~ColorPresetsTableModel() override;

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

  void setPresets(const std::vector<ColorPreset>& presets);
  void addPresets(const std::vector<ColorPreset>& presets);
  const ColorPreset& preset(int row) const;
  QPixmap colorBar(int row) const;
  /** @brief The first row of that name, or -1. */
  int rowOfName(const QString& name) const;

  /**
   * @brief A horizontal gradient of the preset's RGB points, linear in RGB between nodes, or equal
   * swatches of its indexed colours; transparent for a preset without colours.
   */
  static QPixmap CreateColorBar(const ColorPreset& preset, const QSize& size = k_ColorBarSize);

private:
  struct Entry
  {
    ColorPreset preset;
    QPixmap colorBar;
  };

  std::vector<Entry> m_Entries;
};
