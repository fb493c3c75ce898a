#pragma once

#include "data_bridge/zr_contract/DataPath.h"
#include "data_bridge/zr_contract/DataStructure.h"

#include <nlohmann/json.hpp>

#include <QPointer>
#include <QWidget>

#include <memory>
#include <vector>

class QComboBox;
class QSpinBox;
class VXSpreadsheet;

/**
 * @brief The panel beside a spreadsheet: it owns the spreadsheet's data paths, turns them into
 * arrays through the current data structure and sets how the table shows them.
 */
class VXSpreadsheetOptions : public QWidget
{
  Q_OBJECT

public:
  VXSpreadsheetOptions(VXSpreadsheet* spreadsheet, QWidget* parent = nullptr);
  ~VXSpreadsheetOptions() override;

  unsigned long getDefaultSpreadsheetNumber() const;
  void setDefaultSpreadsheetNumber(unsigned long number);
  VXSpreadsheet* spreadsheet() const;
  const std::vector<zr::core::DataPath>& getDataPaths() const;
  /** @brief "Sheet %1" with the default number. */
  QString getSpreadsheetName() const;
  std::shared_ptr<zr::core::DataStructure> dataStructure() const;

  /** @brief Fills the combo with the three notations and the spin box with the precision, and wires both. */
  void setupNotationAndPrecision(QComboBox* notation, QSpinBox* precision);

  /** @brief The object at a path as T, or null; says so when there is no data structure at all. */
  template<class T>
  std::shared_ptr<T> getArray(const zr::core::DataPath& path)
  {
    if (m_DataStructure == nullptr)
    {
      Q_EMIT printOutput(NoDataStructureText());
      return nullptr;
    }
    return m_DataStructure->getSharedDataAs<T>(path);
  }

  virtual void saveState(nlohmann::json& json) const;
  virtual void loadState(const nlohmann::json& json);
  virtual int getSpreadsheetType() const = 0;
  /** @brief The structure the paths are resolved in, after every run of the host's pipeline. */
  virtual void setDataStructure(const QString& id, std::shared_ptr<zr::core::DataStructure> dataStructure);
  virtual void addDataArrays(const std::vector<zr::core::DataPath>& paths) = 0;

  static QString NoDataStructureText();
  static QString MissingArrayText(const zr::core::DataPath& path);

Q_SIGNALS:
  void printOutput(const QString& message) const;

protected:
  /** @brief The data paths a saved panel lists; entries that are no path are left out. */
  static std::vector<zr::core::DataPath> PathsFromState(const nlohmann::json& json);

  QPointer<VXSpreadsheet> m_Spreadsheet;
  unsigned long m_DefaultSpreadsheetNumber = 0;
  std::vector<zr::core::DataPath> m_DataPaths;
  QString m_DataStructureId;
  std::shared_ptr<zr::core::DataStructure> m_DataStructure;
};
