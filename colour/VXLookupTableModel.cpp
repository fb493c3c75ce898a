#include "colour/VXLookupTableModel.h"

#include <QColorDialog>

VXLookupTableModel::VXLookupTableModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

void VXLookupTableModel::setTable(const QList<LUTEntry>& entries)
{
  beginResetModel();
  m_Entries = entries;
  endResetModel();
}

void VXLookupTableModel::clearTable()
{
  setTable({});
}

void VXLookupTableModel::addRow(const QColor& color, const QString& value, const QString& annotation)
{
  const int row = static_cast<int>(m_Entries.size());
  beginInsertRows(QModelIndex(), row, row);
  m_Entries.append({color, value, annotation});
  endInsertRows();
}

void VXLookupTableModel::removeRow(const QModelIndex& index)
{
  if (!isValidRow(index))
  {
    return;
  }
  beginRemoveRows(QModelIndex(), index.row(), index.row());
  m_Entries.removeAt(index.row());
  endRemoveRows();
}

int VXLookupTableModel::rowCount(const QModelIndex& parent) const
{
  return parent.isValid() ? 0 : static_cast<int>(m_Entries.size());
}

int VXLookupTableModel::columnCount(const QModelIndex& parent) const
{
  return parent.isValid() ? 0 : ColumnCount;
}

bool VXLookupTableModel::isValidRow(const QModelIndex& index) const
{
  return index.isValid() && index.row() >= 0 && index.row() < m_Entries.size();
}

QVariant VXLookupTableModel::data(const QModelIndex& index, int role) const
{
  if (!isValidRow(index) || (role != Qt::DisplayRole && role != Qt::EditRole))
  {
    return {};
  }
  const LUTEntry& entry = m_Entries.at(index.row());
  switch (index.column())
  {
  case ColorColumn:
    return entry.color;
  case ValueColumn:
    return entry.value;
  case AnnotationColumn:
    return entry.annotation;
  default:
    return {};
  }
}

bool VXLookupTableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
  if (!isValidRow(index) || role != Qt::EditRole)
  {
    return false;
  }
  LUTEntry& entry = m_Entries[index.row()];
  switch (index.column())
  {
  case ColorColumn:
    entry.color = value.value<QColor>();
    break;
  case ValueColumn:
    entry.value = value.toString();
    Q_EMIT valueChanged(index);
    break;
  case AnnotationColumn:
    entry.annotation = value.toString();
    break;
  default:
    return false;
  }
  Q_EMIT dataChanged(index, index);
  return true;
}

QVariant VXLookupTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
  {
    return QAbstractTableModel::headerData(section, orientation, role);
  }
  switch (section)
  {
  case ColorColumn:
    return QStringLiteral("Color");
  case ValueColumn:
    return QStringLiteral("Value");
  case AnnotationColumn:
    return QStringLiteral("Annotation");
  default:
    return {};
  }
}

Qt::ItemFlags VXLookupTableModel::flags(const QModelIndex& index) const
{
  if (!isValidRow(index))
  {
    return Qt::NoItemFlags;
  }
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable;
}

void VXLookupTableModel::colorButtonClicked(const QModelIndex& index)
{
  if (!isValidRow(index))
  {
    return;
  }
  const QColor chosen = chooseColor(m_Entries.at(index.row()).color);
  if (chosen.isValid())
  {
    setData(this->index(index.row(), ColorColumn), chosen, Qt::EditRole);
  }
}

QColor VXLookupTableModel::chooseColor(const QColor& initial)
{
  return QColorDialog::getColor(initial, nullptr, QStringLiteral("Select Color"));
}
