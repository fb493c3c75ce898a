#include "spreadsheets/VXSpreadsheetModel.h"

#include "data_bridge/zr_contract/INeighborList.h"
#include "data_bridge/zr_contract/StringArray.h"
#include "platform/ZRStyle.h"

#include <QApplication>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QStyle>

#include <algorithm>

VXSpreadsheetModel::VXSpreadsheetModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

VXSpreadsheetModel::~VXSpreadsheetModel() = default;

char VXSpreadsheetModel::FormatCharacter(NotationType notation)
{
  switch (notation)
  {
  case Fixed:
    return 'f';
  case Scientific:
    return 'e';
  case Auto:
  default:
    return 'g';
  }
}

VXSpreadsheetModel::NotationType VXSpreadsheetModel::notation() const
{
  return m_Notation;
}

void VXSpreadsheetModel::setNotation(NotationType notation)
{
  if (notation == m_Notation)
  {
    return;
  }
  m_Notation = notation;
  // Only the visible cells ask again; nothing is kept per cell.
  if (rowCount() > 0 && columnCount() > 0)
  {
    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
  }
}

int VXSpreadsheetModel::precision() const
{
  return m_Precision;
}

void VXSpreadsheetModel::setPrecision(int precision)
{
  if (precision == m_Precision)
  {
    return;
  }
  m_Precision = precision;
  if (rowCount() > 0 && columnCount() > 0)
  {
    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
  }
}

QVariant VXSpreadsheetModel::data(const QModelIndex& index, int role) const
{
  if ((role == MinimumRole || role == MaximumRole) && rangesForEveryIndex())
  {
    return role == MinimumRole ? columnMinimum(index.column()) : columnMaximum(index.column());
  }
  if (!index.isValid() || !validIndex(index))
  {
    return {};
  }
  switch (role)
  {
  case Qt::DisplayRole:
  case Qt::EditRole:
  case DisplayTextRole:
    return getValue(index);
  case Qt::TextAlignmentRole:
    return static_cast<int>(Qt::AlignCenter);
  case Qt::SizeHintRole:
    return sizeHintFor(index);
  case RowIndexRole:
    return index.row();
  case ColumnIndexRole:
    return index.column();
  case MinimumRole:
    return columnMinimum(index.column());
  case MaximumRole:
    return columnMaximum(index.column());
  case WidestRole:
    return widestMeasure(index);
  default:
    return {};
  }
}

QHash<int, QByteArray> VXSpreadsheetModel::roleNames() const
{
  QHash<int, QByteArray> names = QAbstractTableModel::roleNames();
  names.insert(DisplayTextRole, "display");
  names.insert(RowIndexRole, "rowIndex");
  names.insert(ColumnIndexRole, "colIndex");
  return names;
}

Qt::ItemFlags VXSpreadsheetModel::flags(const QModelIndex& index) const
{
  if (!index.isValid())
  {
    return Qt::NoItemFlags;
  }
  return QAbstractTableModel::flags(index) | Qt::ItemIsDropEnabled;
}

bool VXSpreadsheetModel::rangesForEveryIndex() const
{
  return false;
}

unsigned long VXSpreadsheetModel::GetMaxListSize(const std::shared_ptr<zr::core::INeighborList>& list)
{
  if (list == nullptr || list->getIListStore() == nullptr)
  {
    return 0;
  }
  return static_cast<unsigned long>(list->getIListStore()->getMaxListSize());
}

double VXSpreadsheetModel::GetMaxStringWidthValue(const std::shared_ptr<zr::core::StringArray>& array)
{
  if (array == nullptr)
  {
    return 0.0;
  }
  int widest = 0;
  for (const std::string& value : array->values())
  {
    widest = std::max(widest, MeasureText(QString::fromStdString(value)));
  }
  return widest;
}

int VXSpreadsheetModel::MeasureText(const QString& text)
{
  if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr)
  {
    return 0;
  }
  return ZRStyle::getStringWidth(text);
}

double VXSpreadsheetModel::measureNumbers(double widest, const double* minimum, const double* maximum) const
{
  const char format = FormatCharacter(m_Notation);
  int width = MeasureText(QString::number(widest, format, m_Precision));
  if (minimum != nullptr)
  {
    width = std::max(width, MeasureText(QString::number(*minimum, format, m_Precision)));
  }
  if (maximum != nullptr)
  {
    width = std::max(width, MeasureText(QString::number(*maximum, format, m_Precision)));
  }
  return width;
}

int VXSpreadsheetModel::CellMargin()
{
  auto* application = qobject_cast<QApplication*>(QCoreApplication::instance());
  if (application == nullptr || QApplication::style() == nullptr)
  {
    return 0;
  }
  return QApplication::style()->pixelMetric(QStyle::PM_FocusFrameHMargin);
}

QSize VXSpreadsheetModel::sizeHintFor(const QModelIndex& index) const
{
  if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr)
  {
    return {};
  }
  const QFontMetrics metrics(ZRStyle::getDefaultFont());
  const int width = 4 * CellMargin() + 3 + metrics.horizontalAdvance(getValue(index));
  const int height = std::max(metrics.height(), ZRStyle::getItemSize(11));
  return {width, height};
}

void VXSpreadsheetModel::setRowWindow(quint64 offset, quint64 rows)
{
  beginResetModel();
  m_RowOffset = offset;
  m_WindowRows = std::min<quint64>(std::max<quint64>(rows, 1), k_MaxRows);
  endResetModel();
}

quint64 VXSpreadsheetModel::rowOffset() const
{
  return m_RowOffset;
}

quint64 VXSpreadsheetModel::windowRows() const
{
  return m_WindowRows;
}

quint64 VXSpreadsheetModel::tableRowCount() const
{
  return static_cast<quint64>(rowCount());
}

QString VXSpreadsheetModel::textAt(quint64 row, int column) const
{
  return getValue(index(static_cast<int>(row), column));
}

int VXSpreadsheetModel::windowed(quint64 tableRows) const
{
  if (tableRows <= m_RowOffset)
  {
    return 0;
  }
  return static_cast<int>(std::min(tableRows - m_RowOffset, m_WindowRows));
}
