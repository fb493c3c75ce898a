#pragma once

#include <vtkWeakPointer.h>

#include <QString>
#include <QWidget>

class QLabel;
class QTableWidget;
class vtkAbstractArray;
class vtkDataSet;

/**
 * @brief The information panel of one dataset: its kind, bounds, point and cell counts, memory, and
 * a table of its point, cell and field arrays with type, number of components and the range of each
 * component. It holds the dataset weakly, so that it never keeps a replaced dataset alive, and shows
 * that there is none when the dataset is gone.
 */
class VXDatasetInfoWidget : public QWidget
{
  Q_OBJECT

public:
  // Columns of the array table.
  enum Column
  {
    NameColumn = 0,
    AssociationColumn,
    TypeColumn,
    ComponentsColumn,
    RangeColumn,
    ColumnCount
  };

  explicit VXDatasetInfoWidget(QWidget* parent = nullptr);
  ~VXDatasetInfoWidget() override;

  void setItemPath(const QString& path);
  QString itemPath() const { return m_ItemPath; }
  /** @brief Null shows that there is no dataset. Call updateInfo() to show the new dataset. */
  void setDataSet(vtkDataSet* dataSet);
  vtkDataSet* dataSet() const;
  /** @brief Re-reads the dataset it holds. */
  void updateInfo();

  QTableWidget* arrayTable() const { return m_ArrayTable; }
  /** @brief The shown value of a summary line ("Type", "Points", "Cells", "Memory", "Bounds"). */
  QString summaryValue(const QString& field) const;

  /** @brief "[min, max]" for each component, separated by "; "; empty for arrays without a range. */
  static QString FormatComponentRanges(vtkAbstractArray* array);
  /** @brief A byte count as B, KiB, MiB or GiB with two decimals above bytes. */
  static QString FormatMemory(double bytes);
  static QString FormatNumber(double value);

private:
  void showNoDataSet();
  void fillArrayTable(vtkDataSet* dataSet);

  QString m_ItemPath;
  vtkWeakPointer<vtkDataSet> m_DataSet;
  QLabel* m_ItemPathLabel = nullptr;
  QLabel* m_TypeLabel = nullptr;
  QLabel* m_PointsLabel = nullptr;
  QLabel* m_CellsLabel = nullptr;
  QLabel* m_MemoryLabel = nullptr;
  QLabel* m_BoundsLabel = nullptr;
  QTableWidget* m_ArrayTable = nullptr;
};
