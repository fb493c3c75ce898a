#pragma once

#include "spreadsheets/VXSpreadsheetOptions.h"

#include <memory>
#include <vector>

class QIntValidator;
class QModelIndex;
class VXSpreadsheetColorOptions;
class vtkColorTransferFunction;

namespace Ui
{
class VXBasicSpreadsheetOptions;
}

/**
 * @brief Options of a basic spreadsheet: its arrays, notation and precision, the current-column
 * frame, the column diff, and a colour block per column.
 */
class VXBasicSpreadsheetOptions : public VXSpreadsheetOptions
{
  Q_OBJECT

public:
  explicit VXBasicSpreadsheetOptions(VXSpreadsheet* spreadsheet, QWidget* parent = nullptr);
  ~VXBasicSpreadsheetOptions() override;

  int getSpreadsheetType() const override;
  void setDataStructure(const QString& id, std::shared_ptr<zr::core::DataStructure> dataStructure) override;
  void addDataArrays(const std::vector<zr::core::DataPath>& paths) override;
  void saveState(nlohmann::json& json) const override;
  void loadState(const nlohmann::json& json) override;

  void addColumnColorOptions(const QString& name, bool isStringArray);
  void removeColumnColorOption(int column);
  void clearColorOptions();
  void clearArrays();
  void columnColorOptionsIndexChanged(int index);
  void changeColumnColorOption(const QModelIndex& current, const QModelIndex& previous);
  void setBackgroundColorMap(int column, vtkColorTransferFunction* colorMap);
  void updateStatusMessageLabel(const QString& message);
  void onColumnDiffOptionChanged();
  void onColumnDiffColumnNumbersChanged();

  const std::vector<VXSpreadsheetColorOptions*>& colorOptions() const;
  QStringList columnSelectorItems() const;
  QString statusMessage() const;
  void setColumnDiffFields(bool enabled, const QString& first, const QString& second);

private:
  std::unique_ptr<Ui::VXBasicSpreadsheetOptions> m_Ui;
  std::vector<VXSpreadsheetColorOptions*> m_ColorOptions;
  QIntValidator* m_DiffValidator = nullptr;
};
