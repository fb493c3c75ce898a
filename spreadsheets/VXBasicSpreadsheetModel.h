#pragma once

#include "spreadsheets/VXSpreadsheetModel.h"

#include <array>
#include <memory>
#include <utility>
#include <vector>

class IArrayToStringFunctor;

/**
 * @brief Any number of arrays side by side, one column per component (per list position for a
 * neighbour list). Shorter arrays leave blank cells below their last tuple.
 */
class VXBasicSpreadsheetModel : public VXSpreadsheetModel
{
  Q_OBJECT

public:
  explicit VXBasicSpreadsheetModel(QObject* parent = nullptr);
  ~VXBasicSpreadsheetModel() override;

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

  void removeColumn(int column) override;
  /** @brief Adds the array's columns; dims, xDim, yDim and indices do not apply here. */
  void addArray(const std::shared_ptr<zr::core::IArray>& array, const std::vector<unsigned long>& dims,
                int xDim, int yDim, const std::vector<unsigned long>& indices) override;
  void addArray(const std::shared_ptr<zr::core::IArray>& array);
  void clear() override;
  bool validIndex(const QModelIndex& index) const override;
  QString getValue(const QModelIndex& index) const override;
  quint64 tableRowCount() const override;
  QString textAt(quint64 row, int column) const override;

  /** @brief Tuples of the longest array, also those past the rows a table can show. */
  quint64 totalRowCount() const;
  /** @brief Most rows shown; larger arrays show their first rows only. */
  quint64 rowLimit() const;
  void setRowLimit(quint64 limit);

  std::size_t arrayCount() const;
  const std::vector<std::array<double, 2>>& componentRanges(std::size_t arrayIndex) const;
  double widestValue(std::size_t arrayIndex) const;

protected:
  double columnMinimum(int column) const override;
  double columnMaximum(int column) const override;
  double widestMeasure(const QModelIndex& index) const override;

private:
  void scanArray(const std::shared_ptr<zr::core::IArray>& array, unsigned long columns);

  std::vector<std::shared_ptr<zr::core::IArray>> m_Arrays;
  std::vector<IArrayToStringFunctor*> m_Functors;
  std::vector<std::vector<std::array<double, 2>>> m_ComponentRanges;
  std::vector<std::pair<unsigned long, unsigned long>> m_Columns;
  quint64 m_RowCount = 0;
  quint64 m_RowLimit = k_MaxRows;
};
