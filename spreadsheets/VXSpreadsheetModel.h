#pragma once

#include "data_bridge/zr_contract/IArray.h"

#include <QAbstractTableModel>

#include <memory>
#include <vector>

namespace zr::core
{
class INeighborList;
class StringArray;
} // namespace zr::core

/**
 * @brief Read-only table over host arrays. Nothing is copied or converted when an array comes in:
 * cells are formatted on request, and the one pass over the values at that moment gathers what
 * column sizing needs (widest value, ranges).
 */
class VXSpreadsheetModel : public QAbstractTableModel
{
  Q_OBJECT

public:
  enum NotationType
  {
    Auto = 0,
    Fixed = 1,
    Scientific = 2
  };

  enum Roles
  {
    DisplayTextRole = Qt::UserRole,
    RowIndexRole = Qt::UserRole + 2,
    ColumnIndexRole = Qt::UserRole + 3,
    MinimumRole = Qt::UserRole + 4,
    MaximumRole = Qt::UserRole + 5,
    WidestRole = Qt::UserRole + 6
  };

  /** @brief Most rows a table shows: the row count is read back as a 32-bit int. */
  static constexpr quint64 k_MaxRows = 2147483647ULL;

  explicit VXSpreadsheetModel(QObject* parent = nullptr);
  ~VXSpreadsheetModel() override;

  /** @brief The format character of QString::number for a notation: 'g', 'f' or 'e'. */
  static char FormatCharacter(NotationType notation);

  NotationType notation() const;
  void setNotation(NotationType notation);
  int precision() const;
  void setPrecision(int precision);

  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QHash<int, QByteArray> roleNames() const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

  virtual void removeColumn(int column) = 0;
  virtual void addArray(const std::shared_ptr<zr::core::IArray>& array,
                        const std::vector<unsigned long>& dims, int xDim, int yDim,
                        const std::vector<unsigned long>& indices) = 0;
  virtual void clear() = 0;
  virtual bool validIndex(const QModelIndex& index) const = 0;
  virtual QString getValue(const QModelIndex& index) const = 0;

  /**
   * @brief Shows rows [offset, offset + rows) of the table. A view keeps a record per row (and row
   * positions in 32-bit pixels), so a big table is shown one window of rows at a time.
   */
  void setRowWindow(quint64 offset, quint64 rows);
  quint64 rowOffset() const;
  quint64 windowRows() const;
  /** @brief Rows of the whole table, not only those of the window. */
  virtual quint64 tableRowCount() const;
  /** @brief The text of a cell by its row in the whole table. */
  virtual QString textAt(quint64 row, int column) const;

  /** @brief The largest list of any tuple. */
  static unsigned long GetMaxListSize(const std::shared_ptr<zr::core::INeighborList>& list);
  /** @brief Pixel width of the widest string of the array (0 for none). */
  static double GetMaxStringWidthValue(const std::shared_ptr<zr::core::StringArray>& array);
  /** @brief Pixel width of text in the table's font; 0 where no GUI runs (nothing to lay out then). */
  static int MeasureText(const QString& text);
  /** @brief The style's focus frame margin that cells keep on each side. */
  static int CellMargin();

protected:
  /** @brief Whether the minimum and maximum roles answer before the index is checked. */
  virtual bool rangesForEveryIndex() const;
  /** @brief Column's minimum and maximum for the colour roles. */
  virtual double columnMinimum(int column) const = 0;
  virtual double columnMaximum(int column) const = 0;
  /** @brief The widest-value measure in pixels, for column sizing. */
  virtual double widestMeasure(const QModelIndex& index) const = 0;
  /** @brief Widest of the three numbers once formatted with the current notation and precision. */
  double measureNumbers(double widest, const double* minimum, const double* maximum) const;
  QSize sizeHintFor(const QModelIndex& index) const;
  /** @brief How many of a table's rows the window shows. */
  int windowed(quint64 tableRows) const;

  quint64 m_RowOffset = 0;
  quint64 m_WindowRows = k_MaxRows;

  NotationType m_Notation = Auto;
  int m_Precision = 6;
  std::vector<double> m_WidestValues;
};
