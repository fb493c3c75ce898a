#include "spreadsheets/VXSpreadsheet.h"

#include "spreadsheets/VXBasicSpreadsheetModel.h"
#include "spreadsheets/VXSpreadsheetItemDelegate.h"
#include "spreadsheets/VXSpreadsheetModel.h"
#include "spreadsheets/VXSpreadsheetTableView.h"
#include "spreadsheets/VXSpreadsheetTableWriter.h"

#include "ui_VXSpreadsheet.h"

#include "data_bridge/ZRVtkLibFileTypes.h"
#include "platform/ZRDragAndDrop.h"
#include "platform/ZRLocale.h"
#include "platform/ZRPreferences.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QHeaderView>
#include <QIntValidator>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSet>
#include <QStyle>

#include <algorithm>
#include <limits>
#include <set>

namespace
{
constexpr qint64 k_SlowAddMs = 4000;

QString LargeDataText()
{
  return QStringLiteral(
      "It looks like you are trying to add a large amount of data. This could take a large amount "
      "of system resources and may cause the program to be slow. Proceed with caution!");
}
} // namespace

VXSpreadsheet::VXSpreadsheet(QWidget* parent)
    : QWidget(parent)
    , m_Ui(std::make_unique<Ui::VXSpreadsheet>())
{
  m_Ui->setupUi(this);
  setMinimumSize(100, 100);
  m_Ui->tableView->setSortingEnabled(false);
  m_Ui->tableView->viewport()->installEventFilter(this);
  m_Delegate = new VXSpreadsheetItemDelegate(this, this);
  m_Ui->tableView->setItemDelegate(m_Delegate);

  auto* validator = new QIntValidator(this);
  validator->setBottom(0);
  m_Ui->rowLineEdit->setValidator(validator);
  m_Ui->colLineEdit->setValidator(validator);
  connect(m_Ui->rowLineEdit, &QLineEdit::returnPressed, this, &VXSpreadsheet::jumpToRowColumn);
  connect(m_Ui->colLineEdit, &QLineEdit::returnPressed, this, &VXSpreadsheet::jumpToRowColumn);

  setupContextMenu();
  setupStatisticsMenu();
  connect(m_Ui->tableView->horizontalHeader(), &QHeaderView::sectionResized, this,
          &VXSpreadsheet::resizeSelectedColumnsTo);
  connect(m_Ui->tableView->horizontalHeader(), &QHeaderView::sectionHandleDoubleClicked, this,
          &VXSpreadsheet::resizeColumn);
  connect(m_Ui->tableView->verticalHeader(), &QHeaderView::sectionHandleDoubleClicked, this,
          &VXSpreadsheet::resizeRow);
  connect(m_Ui->tableView->verticalScrollBar(), &QScrollBar::valueChanged, this,
          &VXSpreadsheet::onVerticalScroll);
  setModel(new VXBasicSpreadsheetModel());
  setAcceptDrops(true);
}

void VXSpreadsheet::dragEnterEvent(QDragEnterEvent* event)
{
  if (!event->mimeData()->hasFormat(ZR::DragAndDrop::DataStructureItem))
  {
    event->ignore();
    return;
  }
  if (!ZR::DragAndDrop::DropValuesFromMimeData(event->mimeData()).has_value())
  {
    Q_EMIT printOutput(QStringLiteral("An error occurred while dragging the DataObject"));
    event->ignore();
    return;
  }
  event->acceptProposedAction();
}

void VXSpreadsheet::dragMoveEvent(QDragMoveEvent* event)
{
  if (event->mimeData()->hasFormat(ZR::DragAndDrop::DataStructureItem))
  {
    event->acceptProposedAction();
  }
}

void VXSpreadsheet::dropEvent(QDropEvent* event)
{
  const auto values = ZR::DragAndDrop::DropValuesFromMimeData(event->mimeData());
  if (!values.has_value())
  {
    event->ignore();
    return;
  }
  std::vector<zr::core::DataPath> paths;
  for (const ZR::DragAndDrop::DataPathDropValue& value : *values)
  {
    paths.push_back(value.path);
  }
  event->acceptProposedAction();
  Q_EMIT dataArraysDropped(paths);
}

VXSpreadsheet::~VXSpreadsheet() = default;

void VXSpreadsheet::setupContextMenu()
{
  m_ContextMenu = new QMenu(this);
  m_CopyAction = m_ContextMenu->addAction(QStringLiteral("Copy Selection"));
  m_CopyAction->setShortcut(QKeySequence::Copy);
  m_CopyAction->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  addAction(m_CopyAction);
  m_SelectAllAction = m_ContextMenu->addAction(QStringLiteral("Select All"));
  m_SelectAllAction->setShortcut(QKeySequence::SelectAll);
  m_SelectAllAction->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  addAction(m_SelectAllAction);
  m_ExportCommaAction = m_ContextMenu->addAction(QStringLiteral("Export Comma Delimited"));
  m_ExportTabAction = m_ContextMenu->addAction(QStringLiteral("Export Tab Delimited"));
  m_ContextMenu->addSeparator();
  m_RemoveColumnsAction = m_ContextMenu->addAction(QStringLiteral("Remove Selected Column(s)"));
  m_ClearAction = m_ContextMenu->addAction(QStringLiteral("Clear Table"));

  connect(m_CopyAction, &QAction::triggered, this, &VXSpreadsheet::copySelectedItems);
  connect(m_SelectAllAction, &QAction::triggered, m_Ui->tableView, &QTableView::selectAll);
  connect(m_ExportCommaAction, &QAction::triggered, this, [this]() { exportTable(QStringLiteral(", ")); });
  connect(m_ExportTabAction, &QAction::triggered, this, [this]() { exportTable(QStringLiteral("\t")); });
  connect(m_RemoveColumnsAction, &QAction::triggered, this, &VXSpreadsheet::removeSelectedColumn);
  connect(m_ClearAction, &QAction::triggered, this, &VXSpreadsheet::clear);

  m_Ui->tableView->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(m_Ui->tableView, &QWidget::customContextMenuRequested, this,
          [this](const QPoint& position)
          { m_ContextMenu->popup(m_Ui->tableView->viewport()->mapToGlobal(position)); });
}

void VXSpreadsheet::setupStatisticsMenu()
{
  m_StatisticsMenu = new QMenu(this);
  m_MinAction = m_StatisticsMenu->addAction(QStringLiteral("Min: "));
  m_MaxAction = m_StatisticsMenu->addAction(QStringLiteral("Max: "));
  m_SumAction = m_StatisticsMenu->addAction(QStringLiteral("Sum: "));
  m_AvgAction = m_StatisticsMenu->addAction(QStringLiteral("Avg: "));
  for (QAction* action : statisticsActions())
  {
    action->setCheckable(true);
    connect(action, &QAction::toggled, this, &VXSpreadsheet::onSelectionChanged);
  }
  m_MinAction->setChecked(true);
  connect(m_Ui->statsMenuButton, &QPushButton::clicked, this, &VXSpreadsheet::statsMenuButtonClicked);
  m_Ui->statsMenuButton->hide();
}

void VXSpreadsheet::setModel(VXSpreadsheetModel* model)
{
  if (model == m_Model)
  {
    return;
  }
  VXSpreadsheetModel* old = m_Model;
  m_Model = model;
  if (m_Model != nullptr)
  {
    m_Model->setParent(this);
    m_Model->setRowWindow(0, k_WindowRows);
  }
  m_Ui->tableView->setModel(m_Model);
  delete old;
  connectModel();
  updateTotalRowsColsToolTips();
}

void VXSpreadsheet::connectModel()
{
  if (m_Model == nullptr)
  {
    return;
  }
  QItemSelectionModel* selection = m_Ui->tableView->selectionModel();
  connect(selection, &QItemSelectionModel::selectionChanged, this, &VXSpreadsheet::onSelectionChanged);
  connect(selection, &QItemSelectionModel::currentColumnChanged, this,
          [this](const QModelIndex& current, const QModelIndex& previous)
          {
            m_Ui->tableView->viewport()->update();
            Q_EMIT currentColumnChanged(current, previous);
          });
  connect(m_Model, &QAbstractItemModel::modelReset, this, &VXSpreadsheet::updateTotalRowsColsToolTips);
  connect(m_Model, &QAbstractItemModel::rowsInserted, this, &VXSpreadsheet::updateTotalRowsColsToolTips);
  connect(m_Model, &QAbstractItemModel::rowsRemoved, this, &VXSpreadsheet::updateTotalRowsColsToolTips);
  connect(m_Model, &QAbstractItemModel::columnsInserted, this, &VXSpreadsheet::updateTotalRowsColsToolTips);
  connect(m_Model, &QAbstractItemModel::columnsRemoved, this, &VXSpreadsheet::updateTotalRowsColsToolTips);
}

VXSpreadsheetModel* VXSpreadsheet::model() const
{
  return m_Model;
}

VXSpreadsheetTableView* VXSpreadsheet::tableView() const
{
  return m_Ui->tableView;
}

VXSpreadsheetItemDelegate* VXSpreadsheet::itemDelegate() const
{
  return m_Delegate;
}

bool VXSpreadsheet::addArray(const std::shared_ptr<zr::core::IArray>& array, int columns)
{
  if (m_Model == nullptr || array == nullptr)
  {
    return false;
  }
  QElapsedTimer timer;
  timer.start();
  m_Model->addArray(array, {}, 0, 0, {});
  reportIfSlow(timer.elapsed());

  const quint64 tuples = array->getNumberOfTuples();
  auto* basic = qobject_cast<VXBasicSpreadsheetModel*>(m_Model);
  const quint64 limit = basic != nullptr ? basic->rowLimit() : VXSpreadsheetModel::k_MaxRows;
  if (tuples > limit)
  {
    const QString message =
        QStringLiteral(
            "Warning: The array '%1' has %2 tuples, more than the %3 rows a KESTRIX-ZR spreadsheet can "
            "show; only its first %3 tuples are shown.")
            .arg(QString::fromStdString(array->getName()))
            .arg(ZRLocale::toString(static_cast<qint64>(tuples)))
            .arg(ZRLocale::toString(static_cast<qint64>(limit)));
    m_Ui->msgLabel->setText(message);
    Q_EMIT printOutput(message);
  }
  m_Delegate->addColumns(columns);
  m_ShowHeaders = true;
  m_Ui->tableView->horizontalHeader()->setVisible(true);
  const int first = m_Model->columnCount() - columns;
  for (int column = std::max(first, 0); column < m_Model->columnCount(); ++column)
  {
    m_Ui->tableView->horizontalHeader()->resizeSection(column, columnWidthFor(column));
  }
  updateTotalRowsColsToolTips();
  return true;
}

bool VXSpreadsheet::setTable(const std::shared_ptr<zr::core::IArray>& array,
                             const std::vector<unsigned long>& dims, int xDim, int yDim,
                             const std::vector<unsigned long>& indices)
{
  if (array == nullptr || m_Model == nullptr || dims.size() < 2 || xDim < 0 || yDim < 0)
  {
    return false;
  }
  const auto largest = *std::max_element(dims.begin(), dims.end());
  QElapsedTimer timer;
  timer.start();
  m_Model->addArray(array, dims, xDim, yDim, indices);
  reportIfSlow(timer.elapsed());
  if (largest > VXSpreadsheetModel::k_MaxRows)
  {
    const QString message =
        QStringLiteral(
            "Warning: A dimension of the array '%1' has %2 entries, more than the %3 rows or columns a "
            "KESTRIX-ZR spreadsheet can show; only its first %3 are shown.")
            .arg(QString::fromStdString(array->getName()))
            .arg(ZRLocale::toString(static_cast<qint64>(largest)))
            .arg(ZRLocale::toString(static_cast<qint64>(VXSpreadsheetModel::k_MaxRows)));
    m_Ui->msgLabel->setText(message);
    Q_EMIT printOutput(message);
  }
  m_Delegate->clearColumns();
  m_Delegate->addColumns(m_Model->columnCount());
  m_ShowHeaders = false;
  resizeAllColumnsToMaxContent();
  updateTotalRowsColsToolTips();
  return true;
}

void VXSpreadsheet::reportIfSlow(qint64 elapsedMs)
{
  if (elapsedMs >= k_SlowAddMs)
  {
    Q_EMIT largeDataWarning(LargeDataText());
    Q_EMIT printOutput(LargeDataText());
  }
}

void VXSpreadsheet::clear()
{
  if (m_Model != nullptr)
  {
    m_Model->clear();
  }
  m_Delegate->clearColumns();
  m_Ui->msgLabel->clear();
  updateTotalRowsColsToolTips();
  Q_EMIT tableCleared();
}

void VXSpreadsheet::setEnableRemove(bool enable)
{
  m_RemoveColumnsAction->setEnabled(enable);
  m_RemoveColumnsAction->setVisible(enable);
}

void VXSpreadsheet::setBackgroundColorMap(unsigned long column, vtkColorTransferFunction* colorMap)
{
  m_Delegate->setColorMap(colorMap, static_cast<int>(column));
  m_Ui->tableView->viewport()->update();
}

void VXSpreadsheet::setBackgroundColorMap(vtkColorTransferFunction* colorMap)
{
  m_Delegate->setColorMap(colorMap, -1);
  m_Ui->tableView->viewport()->update();
}

void VXSpreadsheet::setColumnDiff(bool enabled, int first, int second)
{
  m_Delegate->setColumnDiff(enabled, first, second);
  m_Ui->tableView->viewport()->update();
}

void VXSpreadsheet::setCurrentColumnHighlighting(bool highlight)
{
  m_Delegate->setCurrentColumnHighlighting(highlight);
  m_Ui->tableView->viewport()->update();
}

int VXSpreadsheet::numSelectedCells() const
{
  QItemSelectionModel* selection = m_Ui->tableView->selectionModel();
  return selection == nullptr ? 0 : selection->selectedIndexes().size();
}

int VXSpreadsheet::currentColumn() const
{
  QItemSelectionModel* selection = m_Ui->tableView->selectionModel();
  return selection == nullptr ? -1 : selection->currentIndex().column();
}

void VXSpreadsheet::setCurrentColumn(int column)
{
  if (m_Model == nullptr || column < 0 || column >= m_Model->columnCount())
  {
    return;
  }
  const int row = std::max(m_Ui->tableView->currentIndex().row(), 0);
  m_Ui->tableView->setCurrentIndex(m_Model->index(row, column));
  m_Ui->tableView->viewport()->update();
}

int VXSpreadsheet::rowCount() const
{
  return m_Model == nullptr
             ? 0
             : static_cast<int>(std::min(m_Model->tableRowCount(), VXSpreadsheetModel::k_MaxRows));
}

void VXSpreadsheet::showRowsFrom(quint64 firstRow)
{
  if (m_Model == nullptr)
  {
    return;
  }
  const quint64 rows = m_Model->tableRowCount();
  const quint64 window = m_Model->windowRows();
  const quint64 offset = rows > window ? std::min(firstRow, rows - window) : 0;
  if (offset != m_Model->rowOffset())
  {
    moveRowWindow(offset, firstRow);
  }
}

void VXSpreadsheet::onVerticalScroll(int value)
{
  QScrollBar* bar = m_Ui->tableView->verticalScrollBar();
  if (m_MovingWindow || m_Model == nullptr || bar->maximum() <= 0)
  {
    return;
  }
  const quint64 offset = m_Model->rowOffset();
  const quint64 half = m_Model->windowRows() / 2;
  const quint64 top = offset + static_cast<quint64>(std::max(m_Ui->tableView->rowAt(0), 0));
  const quint64 windowEnd = offset + static_cast<quint64>(m_Model->rowCount());
  if (value >= bar->maximum() && windowEnd < m_Model->tableRowCount())
  {
    moveRowWindow(std::min(offset + half, m_Model->tableRowCount() - m_Model->windowRows()), top);
  }
  else if (value <= bar->minimum() && offset > 0)
  {
    moveRowWindow(offset > half ? offset - half : 0, top);
  }
}

void VXSpreadsheet::moveRowWindow(quint64 offset, quint64 keepRowAtTop)
{
  m_MovingWindow = true;
  m_Model->setRowWindow(offset, m_Model->windowRows());
  if (m_Model->rowCount() > 0 && m_Model->columnCount() > 0 && keepRowAtTop >= offset)
  {
    const int row = static_cast<int>(std::min<quint64>(keepRowAtTop - offset, m_Model->rowCount() - 1));
    m_Ui->tableView->scrollTo(m_Model->index(row, 0), QAbstractItemView::PositionAtTop);
  }
  m_MovingWindow = false;
}

std::pair<double, double> VXSpreadsheet::getMinMax() const
{
  if (m_Model == nullptr || m_Model->columnCount() == 0)
  {
    return {0.0, 0.0};
  }
  std::pair<double, double> range{std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest()};
  for (int column = 0; column < m_Model->columnCount(); ++column)
  {
    const auto [minimum, maximum] = getMinMax(static_cast<unsigned long>(column));
    range.first = std::min(range.first, minimum);
    range.second = std::max(range.second, maximum);
  }
  return range;
}

std::pair<double, double> VXSpreadsheet::getMinMax(unsigned long column) const
{
  if (m_Model == nullptr || column >= static_cast<unsigned long>(m_Model->columnCount()))
  {
    return {0.0, 0.0};
  }
  const QModelIndex index = m_Model->index(0, static_cast<int>(column));
  return {m_Model->data(index, VXSpreadsheetModel::MinimumRole).toDouble(),
          m_Model->data(index, VXSpreadsheetModel::MaximumRole).toDouble()};
}

bool VXSpreadsheet::showsHeaders() const
{
  return m_ShowHeaders;
}

void VXSpreadsheet::setNotation(const QString& notation)
{
  if (m_Model == nullptr)
  {
    return;
  }
  VXSpreadsheetModel::NotationType type = VXSpreadsheetModel::Auto;
  if (notation == ZRPreferences::k_AutoNotation)
  {
    type = VXSpreadsheetModel::Auto;
  }
  else if (notation == ZRPreferences::k_FixedNotation)
  {
    type = VXSpreadsheetModel::Fixed;
  }
  else if (notation == ZRPreferences::k_ScientificNotation)
  {
    type = VXSpreadsheetModel::Scientific;
  }
  else
  {
    return;
  }
  m_Model->setNotation(type);
  m_Delegate->setNotationType(static_cast<VXSpreadsheetItemDelegate::NotationType>(type));
  m_Ui->tableView->viewport()->update();
}

void VXSpreadsheet::setPrecision(int precision)
{
  if (m_Model == nullptr)
  {
    return;
  }
  m_Model->setPrecision(precision);
  m_Delegate->setPrecision(precision);
  m_Ui->tableView->viewport()->update();
}

void VXSpreadsheet::resizeRow(int row)
{
  m_Ui->tableView->resizeRowToContents(row);
}

int VXSpreadsheet::columnWidthFor(int column) const
{
  if (m_Model == nullptr)
  {
    return 0;
  }
  // The widest value was measured when the array came in; the header is measured as it stands.
  const double widest = m_Model->data(m_Model->index(0, column), VXSpreadsheetModel::WidestRole).toDouble();
  const int values = static_cast<int>(widest) + 4 * VXSpreadsheetModel::CellMargin() + 3;
  return std::max(values, m_Ui->tableView->headerWidth(column));
}

void VXSpreadsheet::resizeColumn(int column)
{
  QHeaderView* header = m_Ui->tableView->horizontalHeader();
  const QSignalBlocker blocker(header);
  header->resizeSection(column, columnWidthFor(column));
  for (const QModelIndex& index : m_Ui->tableView->selectionModel()->selectedColumns())
  {
    header->resizeSection(index.column(), columnWidthFor(index.column()));
  }
}

void VXSpreadsheet::resizeAllColumnsToMaxContent()
{
  if (m_Model == nullptr)
  {
    return;
  }
  int widest = 0;
  for (int column = 0; column < m_Model->columnCount(); ++column)
  {
    widest = std::max(widest, columnWidthFor(column));
  }
  QHeaderView* header = m_Ui->tableView->horizontalHeader();
  const QSignalBlocker blocker(header);
  for (int column = 0; column < m_Model->columnCount(); ++column)
  {
    header->resizeSection(column, widest);
  }
}

void VXSpreadsheet::resizeSelectedColumnsTo(int logical, int, int newSize)
{
  QHeaderView* header = m_Ui->tableView->horizontalHeader();
  const QSignalBlocker blocker(header);
  for (const QModelIndex& index : m_Ui->tableView->selectionModel()->selectedColumns())
  {
    if (index.column() != logical)
    {
      header->resizeSection(index.column(), newSize);
    }
  }
}

void VXSpreadsheet::jumpToRowColumn()
{
  if (m_Model == nullptr || m_Model->tableRowCount() == 0 || m_Model->columnCount() == 0)
  {
    return;
  }
  bool ok = false;
  qulonglong row = m_Ui->rowLineEdit->text().toULongLong(&ok, 10);
  row = ok ? row : 0;
  qint64 column = m_Ui->colLineEdit->text().toLongLong(&ok, 10);
  column = ok ? std::max<qint64>(column, 0) : 0;
  row = std::min<qulonglong>(row, m_Model->tableRowCount() - 1);
  column = std::min<qint64>(column, m_Model->columnCount() - 1);
  {
    const QSignalBlocker rowBlocker(m_Ui->rowLineEdit);
    const QSignalBlocker columnBlocker(m_Ui->colLineEdit);
    m_Ui->rowLineEdit->setText(QString::number(row));
    m_Ui->colLineEdit->setText(QString::number(column));
  }
  const quint64 offset = m_Model->rowOffset();
  if (row < offset || row >= offset + static_cast<quint64>(m_Model->rowCount()))
  {
    const quint64 half = m_Model->windowRows() / 2;
    showRowsFrom(row > half ? row - half : 0);
  }
  const QModelIndex index =
      m_Model->index(static_cast<int>(row - m_Model->rowOffset()), static_cast<int>(column));
  m_Ui->tableView->setCurrentIndex(index);
  m_Ui->tableView->scrollTo(index);
}

void VXSpreadsheet::updateTotalRowsColsToolTips()
{
  const int rows = rowCount();
  const int columns = m_Model == nullptr ? 0 : m_Model->columnCount();
  const QString rowTip = rows == 0 ? QString() : QStringLiteral("Row Count: %1").arg(rows);
  const QString columnTip = columns == 0 ? QString() : QStringLiteral("Column Count: %1").arg(columns);
  m_Ui->rowLineEdit->setToolTip(rowTip);
  m_Ui->rowLabel->setToolTip(rowTip);
  m_Ui->colLineEdit->setToolTip(columnTip);
  m_Ui->colLabel->setToolTip(columnTip);
}

void VXSpreadsheet::statsMenuButtonClicked()
{
  m_StatisticsMenu->popup(m_Ui->statsMenuButton->mapToGlobal(QPoint(0, 0)));
}

void VXSpreadsheet::removeSelectedColumn()
{
  if (m_Model == nullptr)
  {
    return;
  }
  std::set<int> columns;
  for (const QModelIndex& index : m_Ui->tableView->selectionModel()->selectedIndexes())
  {
    columns.insert(index.column());
  }
  // From the right, so the numbers of those still to go stay valid.
  for (auto it = columns.rbegin(); it != columns.rend(); ++it)
  {
    m_Model->removeColumn(*it);
    m_Delegate->removeColumn(*it);
    Q_EMIT columnRemoved(*it);
  }
  updateTotalRowsColsToolTips();
}

void VXSpreadsheet::copySelectedItems()
{
  if (m_Model == nullptr)
  {
    return;
  }
  QModelIndexList indexes = m_Ui->tableView->selectionModel()->selectedIndexes();
  if (indexes.isEmpty())
  {
    Q_EMIT printOutput(QStringLiteral("Cannot copy from table because no cell(s) were selected"));
    return;
  }
  std::sort(indexes.begin(), indexes.end(),
            [](const QModelIndex& a, const QModelIndex& b)
            { return a.row() != b.row() ? a.row() < b.row() : a.column() < b.column(); });
  QString text;
  for (int i = 0; i < indexes.size(); ++i)
  {
    if (i > 0)
    {
      text += indexes[i].row() != indexes[i - 1].row() ? QStringLiteral("\n") : QStringLiteral("\t");
    }
    text += m_Model->data(indexes[i], Qt::DisplayRole).toString();
  }
  QApplication::clipboard()->setText(text);
  const quint64 lastRow = m_Model->rowOffset() + static_cast<quint64>(indexes.last().row());
  Q_EMIT printOutput(QStringLiteral("Copied %1 rows to the clipboard\n").arg(lastRow + 1));
}

void VXSpreadsheet::exportTable(const QString& delimiter)
{
  if (m_Model == nullptr)
  {
    return;
  }
  const QString filePath = QFileDialog::getSaveFileName(this, QStringLiteral("Export Current Table Data"),
                                                        QString(), ZRVtkLib::io::CSV_FILE_FILTER);
  if (filePath.isEmpty())
  {
    return;
  }
  exportTableToFile(delimiter, filePath);
}

void VXSpreadsheet::exportTableToFile(const QString& delimiter, const QString& filePath)
{
  if (m_Model == nullptr)
  {
    return;
  }
  switch (VXSpreadsheetTableWriter::WriteFile(filePath, *m_Model, delimiter, m_ShowHeaders))
  {
  case VXSpreadsheetTableWriter::Status::OpenFailed:
    Q_EMIT printOutput(QStringLiteral("Failed to open file '%1' for writing").arg(filePath));
    return;
  case VXSpreadsheetTableWriter::Status::CommitFailed:
    Q_EMIT printOutput(QStringLiteral("Failed to commit file '%1'").arg(filePath));
    break;
  case VXSpreadsheetTableWriter::Status::Written:
    break;
  }
  Q_EMIT printOutput(
      QStringLiteral("Current spreadsheet data was successfully written to file at '%1'").arg(filePath));
}

void VXSpreadsheet::onSelectionChanged()
{
  const QModelIndexList indexes = m_Ui->tableView->selectionModel() == nullptr
                                      ? QModelIndexList()
                                      : m_Ui->tableView->selectionModel()->selectedIndexes();
  const int count = indexes.size();
  m_Ui->msgLabel->setText(count == 0 ? QString() : QStringLiteral("%1 Cell(s) Selected").arg(count));
  Q_EMIT selectedCellCountChanged(count);
  if (count < 2 || m_Model == nullptr)
  {
    m_MinAction->setText(QStringLiteral("Min: "));
    m_MaxAction->setText(QStringLiteral("Max: "));
    m_SumAction->setText(QStringLiteral("Sum: "));
    m_AvgAction->setText(QStringLiteral("Avg: "));
    m_Ui->statsMenuButton->setText(QString());
    m_Ui->statsMenuButton->hide();
    return;
  }
  // Taken over the text shown, with its rounding and notation.
  constexpr double k_MinSeed = std::numeric_limits<double>::max();
  constexpr double k_MaxSeed = std::numeric_limits<double>::min();
  double minimum = k_MinSeed;
  double maximum = k_MaxSeed;
  double sum = 0.0;
  for (const QModelIndex& index : indexes)
  {
    bool ok = false;
    const double value = m_Model->data(index, Qt::DisplayRole).toDouble(&ok);
    if (!ok)
    {
      continue;
    }
    sum += value;
    minimum = std::min(minimum, value);
    maximum = std::max(maximum, value);
  }
  m_MinAction->setText(QStringLiteral("Min: ") +
                       (minimum == k_MinSeed ? QString() : QString::number(minimum, 'g', 6)));
  m_MaxAction->setText(QStringLiteral("Max: ") +
                       (maximum == k_MaxSeed ? QString() : QString::number(maximum, 'g', 6)));
  m_SumAction->setText(QStringLiteral("Sum: ") + QString::number(sum));
  m_AvgAction->setText(QStringLiteral("Avg: ") + QString::number(sum / count));
  QString buttonText;
  for (QAction* action : statisticsActions())
  {
    if (action->isChecked())
    {
      buttonText = action->text();
      break;
    }
  }
  m_Ui->statsMenuButton->setText(buttonText);
  m_Ui->statsMenuButton->show();
}

bool VXSpreadsheet::eventFilter(QObject* watched, QEvent* event)
{
  // On the release, so that a click that selects has done so first.
  if (watched == m_Ui->tableView->viewport() && event->type() == QEvent::MouseButtonRelease)
  {
    Q_EMIT mousePressed();
  }
  return QWidget::eventFilter(watched, event);
}

QAction* VXSpreadsheet::copyAction() const
{
  return m_CopyAction;
}

QAction* VXSpreadsheet::removeColumnsAction() const
{
  return m_RemoveColumnsAction;
}

QList<QAction*> VXSpreadsheet::statisticsActions() const
{
  return {m_MinAction, m_MaxAction, m_SumAction, m_AvgAction};
}

QString VXSpreadsheet::statisticsButtonText() const
{
  return m_Ui->statsMenuButton->text();
}

bool VXSpreadsheet::statisticsButtonVisible() const
{
  return !m_Ui->statsMenuButton->isHidden();
}

QString VXSpreadsheet::messageText() const
{
  return m_Ui->msgLabel->text();
}

QString VXSpreadsheet::rowFieldText() const
{
  return m_Ui->rowLineEdit->text();
}

void VXSpreadsheet::setGoToFields(const QString& row, const QString& column)
{
  m_Ui->rowLineEdit->setText(row);
  m_Ui->colLineEdit->setText(column);
}
