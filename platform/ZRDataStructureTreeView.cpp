#include "platform/ZRDataStructureTreeView.h"

#include "platform/ZRDataStructureModel.h"

#include <QHeaderView>

ZRDataStructureTreeView::ZRDataStructureTreeView(QWidget* parent)
    : QTreeView(parent)
    , m_Model(new ZRDataStructureModel(this))
{
  setModel(m_Model);
  setHeaderHidden(true);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setDragEnabled(true);
  setDragDropMode(QAbstractItemView::DragOnly);
  setDefaultDropAction(Qt::CopyAction);
  setMouseTracking(true);
  setUniformRowHeights(true);
  connect(this, &QTreeView::entered, this, &ZRDataStructureTreeView::onEntered);
}

ZRDataStructureTreeView::~ZRDataStructureTreeView() = default;

void ZRDataStructureTreeView::setActiveDataStructure(
    const std::shared_ptr<zr::core::DataStructure>& dataStructure)
{
  // A new run of the pipeline should not fold the branches the user had open.
  std::vector<zr::core::DataPath> expanded;
  collectExpanded(QModelIndex(), expanded);
  const bool firstFill = m_Model->rowCount() == 0;
  m_Model->setDataStructure(dataStructure);
  if (firstFill || expanded.empty())
  {
    expandToDepth(1);
  }
  else
  {
    for (const zr::core::DataPath& path : expanded)
    {
      const QModelIndex index = m_Model->indexOf(path);
      if (index.isValid())
      {
        expand(index);
      }
    }
  }
  if (!m_FilterText.isEmpty())
  {
    applyFilter(QModelIndex(), false);
  }
}

ZRDataStructureModel* ZRDataStructureTreeView::getDataStructureModel() const
{
  return m_Model;
}

std::vector<zr::core::DataPath> ZRDataStructureTreeView::selectedArrayPaths() const
{
  std::vector<zr::core::DataPath> paths;
  if (selectionModel() != nullptr)
  {
    collectSelectedArrays(QModelIndex(), paths);
  }
  return paths;
}

void ZRDataStructureTreeView::collectSelectedArrays(const QModelIndex& parent,
                                                    std::vector<zr::core::DataPath>& paths) const
{
  for (int row = 0; row < m_Model->rowCount(parent); ++row)
  {
    const QModelIndex index = m_Model->index(row, 0, parent);
    if (m_Model->isArray(index) && selectionModel()->isSelected(index))
    {
      paths.push_back(m_Model->dataPath(index));
    }
    collectSelectedArrays(index, paths);
  }
}

void ZRDataStructureTreeView::setFilterText(const QString& text)
{
  m_FilterText = text.trimmed();
  applyFilter(QModelIndex(), false);
  if (!m_FilterText.isEmpty())
  {
    expandAll();
  }
}

QString ZRDataStructureTreeView::filterText() const
{
  return m_FilterText;
}

bool ZRDataStructureTreeView::applyFilter(const QModelIndex& parent, bool ancestorMatches)
{
  bool anyVisible = false;
  for (int row = 0; row < m_Model->rowCount(parent); ++row)
  {
    const QModelIndex index = m_Model->index(row, 0, parent);
    const bool matches = m_FilterText.isEmpty() ||
                         index.data(Qt::DisplayRole).toString().contains(m_FilterText, Qt::CaseInsensitive);
    const bool childVisible = applyFilter(index, ancestorMatches || matches);
    const bool visible = matches || ancestorMatches || childVisible;
    setRowHidden(row, parent, !visible);
    anyVisible = anyVisible || visible;
  }
  return anyVisible;
}

void ZRDataStructureTreeView::collectExpanded(const QModelIndex& parent,
                                              std::vector<zr::core::DataPath>& paths) const
{
  for (int row = 0; row < m_Model->rowCount(parent); ++row)
  {
    const QModelIndex index = m_Model->index(row, 0, parent);
    if (isExpanded(index))
    {
      paths.push_back(m_Model->dataPath(index));
      collectExpanded(index, paths);
    }
  }
}

void ZRDataStructureTreeView::onEntered(const QModelIndex& index)
{
  Q_EMIT dataStructureItemHovered(m_Model->dataPath(index), m_Model->isArray(index));
}

void ZRDataStructureTreeView::leaveEvent(QEvent* event)
{
  QTreeView::leaveEvent(event);
  Q_EMIT dataStructureItemHovered(zr::core::DataPath(), false);
}
