#include "pipeline/ZRDataViewListModel.h"

#include "data_views/VXRepresentationPimpl.h"

ZRDataViewListModel::ZRDataViewListModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

ZRDataViewListModel::ZRDataViewListModel(const std::vector<VXRepresentationPimpl*>& dataViews,
                                         QObject* parent)
    : QAbstractTableModel(parent)
{
  initialize(dataViews);
}

ZRDataViewListModel::~ZRDataViewListModel() = default;

void ZRDataViewListModel::initialize(const std::vector<VXRepresentationPimpl*>& dataViews)
{
  beginResetModel();
  m_Rows.clear();
  for (VXRepresentationPimpl* dataView : dataViews)
  {
    m_Rows.push_back({dataView, false});
  }
  endResetModel();
}

VXRepresentationPimpl* ZRDataViewListModel::at(int row) const
{
  return row >= 0 && row < static_cast<int>(m_Rows.size())
             ? m_Rows[static_cast<std::size_t>(row)].m_DataView.data()
             : nullptr;
}

std::vector<VXRepresentationPimpl*> ZRDataViewListModel::getLinkedDataViews() const
{
  std::vector<VXRepresentationPimpl*> linked;
  for (const Row& row : m_Rows)
  {
    if (row.m_Linked)
    {
      linked.push_back(row.m_DataView.data());
    }
  }
  return linked;
}

int ZRDataViewListModel::rowCount(const QModelIndex& parent) const
{
  return parent.isValid() ? 0 : static_cast<int>(m_Rows.size());
}

int ZRDataViewListModel::columnCount(const QModelIndex& parent) const
{
  return parent.isValid() ? 0 : 2;
}

QVariant ZRDataViewListModel::data(const QModelIndex& index, int role) const
{
  if (!index.isValid() || index.row() >= static_cast<int>(m_Rows.size()))
  {
    return {};
  }
  const Row& row = m_Rows[static_cast<std::size_t>(index.row())];
  if (index.column() == LinkedColumn && role == Qt::CheckStateRole)
  {
    return row.m_Linked ? Qt::Checked : Qt::Unchecked;
  }
  if (index.column() == PathColumn &&
      (role == Qt::DisplayRole || role == Qt::ToolTipRole || role == Qt::UserRole))
  {
    return row.m_DataView ? row.m_DataView->pathName() : QString();
  }
  return {};
}

QVariant ZRDataViewListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
  {
    return {};
  }
  switch (section)
  {
  case LinkedColumn:
    return QStringLiteral("Linked Views");
  case PathColumn:
    return QStringLiteral("Data View Paths");
  default:
    return {};
  }
}

bool ZRDataViewListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
  if (!index.isValid() || index.column() != LinkedColumn || role != Qt::CheckStateRole ||
      index.row() >= static_cast<int>(m_Rows.size()))
  {
    return false;
  }
  m_Rows[static_cast<std::size_t>(index.row())].m_Linked = value.toInt() == Qt::Checked;
  Q_EMIT dataChanged(index, index, {Qt::CheckStateRole});
  return true;
}

Qt::ItemFlags ZRDataViewListModel::flags(const QModelIndex& index) const
{
  Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  if (index.isValid() && index.column() == LinkedColumn)
  {
    flags |= Qt::ItemIsUserCheckable;
  }
  return flags;
}
