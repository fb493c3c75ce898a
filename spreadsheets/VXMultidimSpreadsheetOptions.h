#pragma once

#include "spreadsheets/VXSpreadsheetOptions.h"

#include "data_bridge/zr_contract/IArray.h"

#include <memory>
#include <vector>

class QButtonGroup;
class VXSpreadsheetColorOptions;
class ZRLabel;
class ZRRadioButton;
class ZRSpinBox;
class vtkColorTransferFunction;

namespace Ui
{
class VXMultidimSpreadsheetOptions;
}

/**
 * @brief Options of a multidimensional spreadsheet: its one array, which two dimensions span the
 * table, the fixed index of every other dimension, notation and precision, and one colour block.
 */
class VXMultidimSpreadsheetOptions : public VXSpreadsheetOptions
{
  Q_OBJECT

public:
  explicit VXMultidimSpreadsheetOptions(VXSpreadsheet* spreadsheet, QWidget* parent = nullptr);
  ~VXMultidimSpreadsheetOptions() override;

  int getSpreadsheetType() const override;
  void setDataStructure(const QString& id, std::shared_ptr<zr::core::DataStructure> dataStructure) override;
  void addDataArrays(const std::vector<zr::core::DataPath>& paths) override;
  void saveState(nlohmann::json& json) const override;
  void loadState(const nlohmann::json& json) override;

  /** @brief One row per entry of shape, numbered on from index. */
  void layoutDimWidgets(int& index, const std::vector<unsigned long>& shape);
  void clear();
  void updateSpreadsheet(const std::shared_ptr<zr::core::IArray>& array);
  void xDimRadioButtonClicked();
  void yDimRadioButtonClicked();
  void spinBoxValueChanged();
  void setBackgroundColorMap(vtkColorTransferFunction* colorMap);
  void updateStatusMessageLabel(const QString& message);

  const std::vector<unsigned long>& dims() const;
  int xDimension() const;
  int yDimension() const;
  /** @brief Checks the x and y radio buttons of two dimensions and shows that slice. */
  void setDimensions(int xDim, int yDim);
  const std::vector<ZRSpinBox*>& spinBoxes() const;
  VXSpreadsheetColorOptions* colorOptions() const;
  QString pathText() const;
  QString statusMessage() const;

  static QString InvalidDimensionText();
  static QString NoArraysText();

private:
  void onDimensionClicked(QButtonGroup* clicked, QButtonGroup* other);
  void removeDimWidgets();

  std::unique_ptr<Ui::VXMultidimSpreadsheetOptions> m_Ui;
  QButtonGroup* m_XGroup = nullptr;
  QButtonGroup* m_YGroup = nullptr;
  std::vector<ZRLabel*> m_DimLabels;
  std::vector<ZRRadioButton*> m_XRadioButtons;
  std::vector<ZRRadioButton*> m_YRadioButtons;
  std::vector<ZRSpinBox*> m_SpinBoxes;
  std::vector<unsigned long> m_Dims;
  VXSpreadsheetColorOptions* m_ColorOptions = nullptr;
};
