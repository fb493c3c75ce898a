#pragma once

#include "data_bridge/zr_contract/DataPath.h"
#include "data_bridge/zr_contract/IArray.h"

#include <QWidget>

#include <memory>
#include <utility>
#include <vector>

class QAction;
class QMenu;
class QModelIndex;
class VXSpreadsheetItemDelegate;
class VXSpreadsheetModel;
class VXSpreadsheetTableView;
class vtkColorTransferFunction;

namespace Ui
{
class VXSpreadsheet;
}

/**
 * @brief One spreadsheet on screen: the table over a model, its go-to bar, selection statistics,
 * copy, delimited export and the context menu.
 */
class VXSpreadsheet : public QWidget
{
  Q_OBJECT

public:
  /** @brief Rows the table view holds at once; scrolling past either end moves this window. */
  static constexpr quint64 k_WindowRows = 1000000;

  explicit VXSpreadsheet(QWidget* parent = nullptr);
  ~VXSpreadsheet() override;

  /** @brief Takes the model (parented to this widget); the old one is deleted. */
  void setModel(VXSpreadsheetModel* model);
  VXSpreadsheetModel* model() const;
  VXSpreadsheetTableView* tableView() const;
  VXSpreadsheetItemDelegate* itemDelegate() const;

  /**
   * @brief Appends an array's columns. An array with more tuples than a table has rows shows its
   * first rows, with a message saying so. False when there is no model or array.
   */
  bool addArray(const std::shared_ptr<zr::core::IArray>& array, int columns);
  /** @brief Shows one slice of an array; false for a null array or model, or unusable dimensions. */
  bool setTable(const std::shared_ptr<zr::core::IArray>& array, const std::vector<unsigned long>& dims,
                int xDim, int yDim, const std::vector<unsigned long>& indices);
  void clear();
  void setEnableRemove(bool enable);
  void setBackgroundColorMap(unsigned long column, vtkColorTransferFunction* colorMap);
  void setBackgroundColorMap(vtkColorTransferFunction* colorMap);
  void setColumnDiff(bool enabled, int first, int second);
  void setCurrentColumnHighlighting(bool highlight);
  int numSelectedCells() const;
  int currentColumn() const;
  void setCurrentColumn(int column);
  /** @brief Rows of the whole table (the view holds a window of them). */
  int rowCount() const;
  /** @brief Moves the view's window of rows so that it starts near firstRow of the table. */
  void showRowsFrom(quint64 firstRow);
  std::pair<double, double> getMinMax() const;
  std::pair<double, double> getMinMax(unsigned long column) const;
  bool showsHeaders() const;

  /** @brief Writes the export layout to a file; the dialog-free half of exportTable. */
  void exportTableToFile(const QString& delimiter, const QString& filePath);

  QAction* copyAction() const;
  QAction* removeColumnsAction() const;
  /** @brief Min, Max, Sum and Avg, in that order. */
  QList<QAction*> statisticsActions() const;
  QString statisticsButtonText() const;
  bool statisticsButtonVisible() const;
  QString messageText() const;
  QString rowFieldText() const;
  void setGoToFields(const QString& row, const QString& column);

public Q_SLOTS:
  void setNotation(const QString& notation);
  void setPrecision(int precision);
  void resizeRow(int row);
  void resizeColumn(int column);
  void resizeAllColumnsToMaxContent();
  void resizeSelectedColumnsTo(int logical, int oldSize, int newSize);
  void jumpToRowColumn();
  void updateTotalRowsColsToolTips();
  void statsMenuButtonClicked();
  void removeSelectedColumn();
  void copySelectedItems();
  void exportTable(const QString& delimiter);
  void onSelectionChanged();

Q_SIGNALS:
  void mousePressed() const;
  void tableCleared();
  void printOutput(const QString& message) const;
  void largeDataWarning(const QString& message);
  void dataArraysDropped(std::vector<zr::core::DataPath>& paths);
  void columnRemoved(int column);
  void selectedCellCountChanged(int count);
  void currentColumnChanged(const QModelIndex& current, const QModelIndex& previous);

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

private:
  void setupContextMenu();
  void setupStatisticsMenu();
  void connectModel();
  void reportIfSlow(qint64 elapsedMs);
  int columnWidthFor(int column) const;
  void onVerticalScroll(int value);
  void moveRowWindow(quint64 offset, quint64 keepRowAtTop);

  std::unique_ptr<Ui::VXSpreadsheet> m_Ui;
  VXSpreadsheetModel* m_Model = nullptr;
  VXSpreadsheetItemDelegate* m_Delegate = nullptr;
  QMenu* m_ContextMenu = nullptr;
  QAction* m_CopyAction = nullptr;
  QAction* m_SelectAllAction = nullptr;
  QAction* m_ExportCommaAction = nullptr;
  QAction* m_ExportTabAction = nullptr;
  QAction* m_RemoveColumnsAction = nullptr;
  QAction* m_ClearAction = nullptr;
  QMenu* m_StatisticsMenu = nullptr;
  QAction* m_MinAction = nullptr;
  QAction* m_MaxAction = nullptr;
  QAction* m_SumAction = nullptr;
  QAction* m_AvgAction = nullptr;
  bool m_ShowHeaders = false;
  bool m_MovingWindow = false;
};
