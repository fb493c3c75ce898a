#pragma once

#include "data_bridge/zr_contract/DataPath.h"

#include <nlohmann/json.hpp>

#include <QFrame>

#include <vector>

class QLabel;
class VXSpreadsheetTypeButton;
class ZRDataStructureModel;

/**
 * @brief The page of an empty tab: one button per kind of spreadsheet, each also a drop target for
 * arrays dragged from the data structure tree.
 */
class VXSpreadsheetTypeSelector : public QFrame
{
  Q_OBJECT

public:
  enum class SpreadsheetType : int
  {
    Basic = 0,
    Multidimensional = 1
  };
  Q_ENUM(SpreadsheetType)

  explicit VXSpreadsheetTypeSelector(QWidget* parent = nullptr);
  ~VXSpreadsheetTypeSelector() override;

  SpreadsheetType getSpreadsheetType() const;
  void setDataStructure(ZRDataStructureModel* model);
  VXSpreadsheetTypeButton* basicButton() const;
  VXSpreadsheetTypeButton* multidimButton() const;
  QString descriptionText() const;

  void saveState(nlohmann::json& json) const;
  void loadState(const nlohmann::json& json);

  static QString BasicDescription();
  static QString MultidimDescription();

public Q_SLOTS:
  void onBasicSpreadsheetSelected(std::vector<zr::core::DataPath> paths);
  void onMultidimSpreadsheetSelected(std::vector<zr::core::DataPath> paths);

Q_SIGNALS:
  void spreadsheetTypeSelected(VXSpreadsheetTypeSelector::SpreadsheetType type,
                               std::vector<zr::core::DataPath> paths);
  void printOutput(const QString& message) const;

private:
  void showDescription(const QString& description);

  VXSpreadsheetTypeButton* m_BasicButton = nullptr;
  VXSpreadsheetTypeButton* m_MultidimButton = nullptr;
  QLabel* m_DescriptionLabel = nullptr;
  SpreadsheetType m_Type = SpreadsheetType::Basic;
};
