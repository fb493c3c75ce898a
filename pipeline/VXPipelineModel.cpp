#include "pipeline/VXPipelineModel.h"

#include "annotations/VXGlobalSource.h"
#include "data_views/VXImageSliceRepPimpl.h"
#include "data_views/VXRepresentationPimpl.h"
#include "filters/VXFilter.h"
#include "main/VXInfoWidget.h"
#include "pipeline/FileToVXBridge.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXCoreObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "pipeline/ZRToVXBridge.h"
#include "platform/ZRStyle.h"
#include "views/VXAbstractViewWidget.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QSignalBlocker>

#include <algorithm>

namespace
{
const QString k_DataViewHint = QStringLiteral("With this item selected, use the above toolbar to add a "
                                              "DataView or add a Visual Filter to see your data.");

// The pipeline tree's own mark beside the object's icon, as one icon for the decoration role.
QIcon combinedIcon(const QIcon& objectIcon)
{
  const int size = 16;
  QPixmap pixmap(2 * size + 2, size);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.drawPixmap(0, 0,
                     ZRStyle::generateThemeIconFromName(QStringLiteral("VXPipelineTreeIcon")).pixmap(size));
  if (!objectIcon.isNull())
  {
    painter.drawPixmap(size + 2, 0, objectIcon.pixmap(size));
  }
  painter.end();
  return QIcon(pixmap);
}
} // namespace

// ---------------------------------------------------------------------------------------------------
// TreeItem

VXPipelineModel::TreeItem::TreeItem(Item item, TreeItem* parent)
    : m_Parent(parent)
    , m_Item(std::move(item))
{
}

VXPipelineModel::TreeItem::~TreeItem()
{
  qDeleteAll(m_Children);
}

VXBridgeObject* VXPipelineModel::TreeItem::bridgeObject() const
{
  if (m_Item.kind != Pipeline)
  {
    return nullptr;
  }
  const auto* bridge = std::any_cast<VXBridgeObject*>(&m_Item.payload);
  return bridge != nullptr ? *bridge : nullptr;
}

VXGlobalSource* VXPipelineModel::TreeItem::globalSource() const
{
  if (m_Item.kind != GlobalSource)
  {
    return nullptr;
  }
  const auto* source = std::any_cast<VXGlobalSource*>(&m_Item.payload);
  return source != nullptr ? *source : nullptr;
}

VXCoreObject* VXPipelineModel::TreeItem::coreObject() const
{
  if (m_Item.kind != DataSource && m_Item.kind != Filter && m_Item.kind != Representation)
  {
    return nullptr;
  }
  const auto* coreObject = std::any_cast<VXCoreObject*>(&m_Item.payload);
  return coreObject != nullptr ? *coreObject : nullptr;
}

QObject* VXPipelineModel::TreeItem::object() const
{
  if (VXBridgeObject* bridge = bridgeObject())
  {
    return bridge;
  }
  if (VXCoreObject* coreObject = this->coreObject())
  {
    return coreObject;
  }
  if (VXGlobalSource* source = globalSource())
  {
    return source;
  }
  const auto* object = std::any_cast<QObject*>(&m_Item.payload);
  return object != nullptr ? *object : nullptr;
}

VXPipelineModel::TreeItem* VXPipelineModel::TreeItem::child(int row) const
{
  return row >= 0 && row < m_Children.size() ? m_Children.at(row) : nullptr;
}

int VXPipelineModel::TreeItem::childIndex() const
{
  return m_Parent != nullptr ? m_Parent->m_Children.indexOf(const_cast<TreeItem*>(this)) : 0;
}

int VXPipelineModel::TreeItem::numChildRepresentations() const
{
  return static_cast<int>(std::count_if(m_Children.cbegin(), m_Children.cend(),
                                        [](const TreeItem* child)
                                        { return child->kind() == Representation; }));
}

VXPipelineModel::TreeItem* VXPipelineModel::TreeItem::appendChild(Item item)
{
  auto* child = new TreeItem(std::move(item), this);
  m_Children.append(child);
  return child;
}

bool VXPipelineModel::TreeItem::removeChild(TreeItem* child)
{
  if (!m_Children.removeOne(child))
  {
    return false;
  }
  delete child;
  return true;
}

VXPipelineModel::TreeItem* VXPipelineModel::TreeItem::find(const QObject* object)
{
  if (object == nullptr)
  {
    return nullptr;
  }
  if (this->object() == object)
  {
    return this;
  }
  for (TreeItem* child : m_Children)
  {
    if (TreeItem* found = child->find(object))
    {
      return found;
    }
  }
  return nullptr;
}

VXPipelineModel::TreeItem* VXPipelineModel::TreeItem::find(VXRepresentation* representation)
{
  return find(static_cast<const QObject*>(representation));
}

VXPipelineModel::TreeItem* VXPipelineModel::TreeItem::find(VXDataSource* dataSource)
{
  return find(static_cast<const QObject*>(dataSource));
}

VXPipelineModel::TreeItem* VXPipelineModel::TreeItem::find(VXCoreObject* coreObject)
{
  return find(static_cast<const QObject*>(coreObject));
}

QList<VXCoreObject*> VXPipelineModel::TreeItem::getAllFilters() const
{
  QList<VXCoreObject*> filters;
  for (const TreeItem* child : m_Children)
  {
    if (child->kind() == Filter && child->coreObject() != nullptr)
    {
      filters.append(child->coreObject());
    }
    filters.append(child->getAllFilters());
  }
  return filters;
}

QList<VXCoreObject*> VXPipelineModel::TreeItem::getAllCoreObjects() const
{
  QList<VXCoreObject*> objects;
  for (const TreeItem* child : m_Children)
  {
    if (child->coreObject() != nullptr)
    {
      objects.append(child->coreObject());
    }
    objects.append(child->getAllCoreObjects());
  }
  return objects;
}

QList<VXRepresentation*> VXPipelineModel::TreeItem::getAllRepresentations() const
{
  QList<VXRepresentation*> representations;
  for (const TreeItem* child : m_Children)
  {
    if (child->kind() == Representation)
    {
      if (auto* representation = qobject_cast<VXRepresentation*>(child->coreObject()))
      {
        representations.append(representation);
      }
    }
    representations.append(child->getAllRepresentations());
  }
  return representations;
}

// ---------------------------------------------------------------------------------------------------
// VXPipelineModel

VXPipelineModel::VXPipelineModel(VXPipeline* pipeline, VXInfoWidget* infoWidget, QObject* parent)
    : QAbstractItemModel(parent)
    , m_Pipeline(pipeline)
    , m_InfoWidget(infoWidget)
    , m_Root(std::make_unique<TreeItem>(TreeItem::Item{}))
{
  if (m_Pipeline == nullptr)
  {
    return;
  }
  connect(m_Pipeline, &VXPipeline::pipelineBridgeAdded, this, &VXPipelineModel::pipelineBridgeAdded);
  connect(m_Pipeline, &VXPipeline::globalSourceAdded, this, &VXPipelineModel::globalSourceAdded);
  connect(m_Pipeline, &VXPipeline::dataSourceAdded, this, &VXPipelineModel::dataSourceAdded);
  connect(m_Pipeline, &VXPipeline::filterAdded, this, &VXPipelineModel::filterAdded);
  connect(m_Pipeline, &VXPipeline::representationAdded, this, &VXPipelineModel::representationAdded);
  connect(m_Pipeline, &VXPipeline::removeDataSource, this, &VXPipelineModel::removeDataSource);
  connect(m_Pipeline, &VXPipeline::removeModule, this,
          [this](VXRepresentation* representation) { removeLeafItem(representation); });
  connect(m_Pipeline, &VXPipeline::representationViewInstanceAdded, this,
          &VXPipelineModel::representationViewInstanceAdded);
}

VXPipelineModel::~VXPipelineModel() = default;

VXInfoWidget* VXPipelineModel::infoWidget() const
{
  return m_InfoWidget;
}

QModelIndex VXPipelineModel::index(int row, int column, const QModelIndex& parent) const
{
  if (column < 0 || column >= columnCount() ||
      (parent.isValid() && parent.column() != NameColumn && parent.column() != VisibilityColumn))
  {
    return {};
  }
  TreeItem* parentItem = parent.isValid() ? treeItem(parent) : m_Root.get();
  TreeItem* child = parentItem != nullptr ? parentItem->child(row) : nullptr;
  return child != nullptr ? createIndex(row, column, child) : QModelIndex();
}

QModelIndex VXPipelineModel::parent(const QModelIndex& index) const
{
  TreeItem* item = treeItem(index);
  if (item == nullptr || item->parent() == nullptr || item->parent() == m_Root.get())
  {
    return {};
  }
  return itemIndex(item->parent(), 0);
}

int VXPipelineModel::rowCount(const QModelIndex& parent) const
{
  if (parent.isValid() && parent.column() != 0)
  {
    return 0;
  }
  TreeItem* item = parent.isValid() ? treeItem(parent) : m_Root.get();
  return item != nullptr ? item->childCount() : 0;
}

int VXPipelineModel::columnCount(const QModelIndex& /*parent*/) const
{
  return 2;
}

QVariant VXPipelineModel::data(const QModelIndex& index, int role) const
{
  TreeItem* item = treeItem(index);
  if (item == nullptr)
  {
    return {};
  }
  VXGlobalSource* globalSource = item->globalSource();
  // An annotation is shown in the tree like a bridge, with a visibility of its own per view.
  VXBridgeObject* bridge = globalSource != nullptr ? globalSource : item->bridgeObject();
  VXCoreObject* coreObject = item->coreObject();
  if (bridge == nullptr && coreObject == nullptr)
  {
    return {};
  }
  const QString name = bridge != nullptr ? bridge->name() : coreObject->name();

  switch (role)
  {
  case Qt::CheckStateRole:
  {
    if (index.column() == VisibilityColumn && globalSource != nullptr)
    {
      return globalSource->isVisible() ? Qt::Checked : Qt::Unchecked;
    }
    if (index.column() != VisibilityColumn || coreObject == nullptr)
    {
      return {};
    }
    VXAbstractViewWidget* view = m_InfoWidget ? m_InfoWidget->activeViewWidget() : nullptr;
    if (view == nullptr && m_Pipeline != nullptr)
    {
      view = m_Pipeline->activeViewWidget();
    }
    const bool visible = view != nullptr && coreObject->viewWidgets().value(view, false);
    return visible ? Qt::Checked : Qt::Unchecked;
  }
  case Qt::ToolTipRole:
    switch (item->kind())
    {
    case TreeItem::Pipeline:
      return QStringLiteral("Name: %1\nType: %2").arg(name, QStringLiteral("Pipeline or File"));
    case TreeItem::GlobalSource:
      return QStringLiteral("Name: %1\nType: %2").arg(name, QStringLiteral("Global Source"));
    case TreeItem::DataSource:
      return QStringLiteral("Name: %1\nType: %2\n%3").arg(name, QStringLiteral("DataSource"), k_DataViewHint);
    case TreeItem::Filter:
      return QStringLiteral("Name: %1\nType: %2\n%3")
          .arg(name, QStringLiteral("Visual Filter"), k_DataViewHint);
    case TreeItem::Representation:
      return QStringLiteral("Name: %1\nType: %2\nClick on the parent of this item in the tree to add another "
                            "DataView or additional Visual Filters.")
          .arg(name, QStringLiteral("Data View"));
    default:
      return {};
    }
  case Qt::DecorationRole:
    if (index.column() != NameColumn)
    {
      return {};
    }
    return combinedIcon(bridge != nullptr ? bridge->getIcon() : coreObject->getIcon());
  case Qt::DisplayRole:
  case Qt::EditRole:
    return index.column() == NameColumn ? QVariant(name) : QVariant();
  case Qt::ForegroundRole:
  {
    auto* fileBridge = qobject_cast<FileToVXBridge*>(bridge);
    const bool flagged = (fileBridge != nullptr && fileBridge->autoReloadFlagged()) ||
                         (coreObject != nullptr && coreObject->autoReload());
    return flagged ? ZRStyle::getDarkRed() : ZRStyle::getDefaultTextColor();
  }
  default:
    return {};
  }
}

bool VXPipelineModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
  TreeItem* item = treeItem(index);
  if (item == nullptr)
  {
    return false;
  }
  if (role == Qt::CheckStateRole && item->globalSource() != nullptr)
  {
    const bool visible = value.userType() == QMetaType::Bool ? value.toBool() : value.toInt() == Qt::Checked;
    item->globalSource()->setVisibility(visible);
    const QModelIndex checkIndex = itemIndex(item, VisibilityColumn);
    Q_EMIT dataChanged(checkIndex, checkIndex, {Qt::CheckStateRole});
    Q_EMIT itemVisibilityChanged(index, visible);
    return true;
  }
  if (role == Qt::CheckStateRole)
  {
    VXCoreObject* coreObject = item->coreObject();
    if (coreObject == nullptr)
    {
      return false;
    }
    const bool visible = value.userType() == QMetaType::Bool ? value.toBool() : value.toInt() == Qt::Checked;
    coreObject->setVisibility(visible);
    Q_EMIT coreObject->requestRender();
    const QModelIndex checkIndex = itemIndex(item, VisibilityColumn);
    Q_EMIT dataChanged(checkIndex, checkIndex, {Qt::CheckStateRole});
    Q_EMIT itemVisibilityChanged(index, visible);
    return true;
  }
  if (index.column() != NameColumn || (role != Qt::DisplayRole && role != Qt::EditRole))
  {
    return false;
  }
  const QString name = value.toString();
  if (name.isEmpty() || itemNameIsDuplicate(index, name))
  {
    return false;
  }
  if (VXGlobalSource* globalSource = item->globalSource())
  {
    globalSource->setName(name, 0);
  }
  else if (VXBridgeObject* bridge = item->bridgeObject())
  {
    bridge->setName(name, 0);
  }
  else if (VXCoreObject* coreObject = item->coreObject())
  {
    coreObject->setBaseName(name);
    coreObject->setNameSuffixCounter(0);
  }
  else
  {
    return false;
  }
  Q_EMIT dataChanged(index, index, {Qt::DisplayRole, Qt::EditRole});
  return true;
}

QVariant VXPipelineModel::headerData(int section, Qt::Orientation orientation, int role) const
{
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
  {
    return {};
  }
  return section == NameColumn ? QStringLiteral("Name") : QVariant();
}

Qt::ItemFlags VXPipelineModel::flags(const QModelIndex& index) const
{
  if (!index.isValid())
  {
    return Qt::NoItemFlags;
  }
  if (index.column() == NameColumn)
  {
    return Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsUserCheckable | Qt::ItemIsEnabled;
  }
  return Qt::ItemIsSelectable | Qt::ItemIsEnabled;
}

bool VXPipelineModel::itemNameIsDuplicate(const QModelIndex& index, const QString& name) const
{
  TreeItem* item = treeItem(index);
  if (item == nullptr || item->parent() == nullptr)
  {
    return false;
  }
  for (const TreeItem* sibling : item->parent()->children())
  {
    if (sibling == item || sibling->kind() != item->kind())
    {
      continue;
    }
    const QString siblingName = sibling->bridgeObject() != nullptr   ? sibling->bridgeObject()->name()
                                : sibling->globalSource() != nullptr ? sibling->globalSource()->name()
                                : sibling->coreObject() != nullptr   ? sibling->coreObject()->name()
                                                                     : QString();
    if (siblingName == name)
    {
      return true;
    }
  }
  return false;
}

// --- queries ---------------------------------------------------------------------------------------

VXPipelineModel::TreeItem* VXPipelineModel::treeItem(const QModelIndex& index) const
{
  if (!index.isValid() || index.model() != this)
  {
    return nullptr;
  }
  return static_cast<TreeItem*>(index.internalPointer());
}

QWidget* VXPipelineModel::itemWidget(const QModelIndex& index) const
{
  if (VXGlobalSource* globalSource = getGlobalSource(index))
  {
    return globalSource->settingsWidget();
  }
  VXCoreObject* coreObject = getCoreObject(index);
  return coreObject != nullptr ? coreObject->settingsWidget() : nullptr;
}

bool VXPipelineModel::isPipeline(const QModelIndex& index) const
{
  TreeItem* item = treeItem(index);
  return item != nullptr && item->kind() == TreeItem::Pipeline;
}

bool VXPipelineModel::isDataSource(const QModelIndex& index) const
{
  TreeItem* item = treeItem(index);
  return item != nullptr && item->kind() == TreeItem::DataSource;
}

bool VXPipelineModel::isFilter(const QModelIndex& index) const
{
  TreeItem* item = treeItem(index);
  return item != nullptr && item->kind() == TreeItem::Filter;
}

bool VXPipelineModel::isRepresentation(const QModelIndex& index) const
{
  TreeItem* item = treeItem(index);
  return item != nullptr && item->kind() == TreeItem::Representation;
}

bool VXPipelineModel::isGlobalSource(const QModelIndex& index) const
{
  TreeItem* item = treeItem(index);
  return item != nullptr && item->kind() == TreeItem::GlobalSource;
}

bool VXPipelineModel::canAddRepresentation(const QModelIndex& index) const
{
  return isDataSource(index) || isFilter(index);
}

bool VXPipelineModel::canAddFilter(const QModelIndex& index) const
{
  return isDataSource(index) || isFilter(index);
}

bool VXPipelineModel::canReload(const QModelIndex& index) const
{
  return qobject_cast<FileToVXBridge*>(getPipelineObject(index)) != nullptr;
}

bool VXPipelineModel::canSave(const QModelIndex& index) const
{
  VXCoreObject* coreObject = getCoreObject(index);
  return (isDataSource(index) || isFilter(index)) && coreObject != nullptr &&
         coreObject->outputPort() != nullptr;
}

VXBridgeObject* VXPipelineModel::getPipelineObject(const QModelIndex& index) const
{
  TreeItem* item = treeItem(index);
  return item != nullptr ? item->bridgeObject() : nullptr;
}

VXGlobalSource* VXPipelineModel::getGlobalSource(const QModelIndex& index) const
{
  TreeItem* item = treeItem(index);
  return item != nullptr ? item->globalSource() : nullptr;
}

VXCoreObject* VXPipelineModel::getCoreObject(const QModelIndex& index) const
{
  TreeItem* item = treeItem(index);
  return item != nullptr ? item->coreObject() : nullptr;
}

VXRepresentation* VXPipelineModel::getRepresentation(const QModelIndex& index) const
{
  return isRepresentation(index) ? qobject_cast<VXRepresentation*>(getCoreObject(index)) : nullptr;
}

VXFilter* VXPipelineModel::getFilter(const QModelIndex& index) const
{
  return isFilter(index) ? qobject_cast<VXFilter*>(getCoreObject(index)) : nullptr;
}

VXDataSource* VXPipelineModel::getDataSource(const QModelIndex& index) const
{
  return isDataSource(index) ? qobject_cast<VXDataSource*>(getCoreObject(index)) : nullptr;
}

QList<VXDataSource*> VXPipelineModel::getChildDataSources(const QModelIndex& index) const
{
  QList<VXDataSource*> sources;
  TreeItem* item = index.isValid() ? treeItem(index) : m_Root.get();
  if (item == nullptr)
  {
    return sources;
  }
  for (const TreeItem* child : item->children())
  {
    if (auto* source = qobject_cast<VXDataSource*>(child->coreObject()))
    {
      sources.append(source);
    }
  }
  return sources;
}

QModelIndex VXPipelineModel::itemIndex(const TreeItem* item, int column) const
{
  if (item == nullptr || item == m_Root.get())
  {
    return {};
  }
  return createIndex(item->childIndex(), column, const_cast<TreeItem*>(item));
}

QModelIndex VXPipelineModel::helperIndex(const QObject* object, int column) const
{
  return itemIndex(m_Root->find(object), column);
}

QModelIndex VXPipelineModel::pipelineIndex(VXBridgeObject* bridge) const
{
  return helperIndex(bridge);
}

QModelIndex VXPipelineModel::globalSourceIndex(VXGlobalSource* globalSource) const
{
  return helperIndex(globalSource);
}

QModelIndex VXPipelineModel::representationIndex(VXRepresentation* representation) const
{
  return helperIndex(representation);
}

QModelIndex VXPipelineModel::dataSourceIndex(VXDataSource* dataSource) const
{
  return helperIndex(dataSource);
}

QModelIndex VXPipelineModel::filterIndex(VXFilter* filter) const
{
  return helperIndex(filter);
}

QModelIndex VXPipelineModel::coreObjectIndex(VXCoreObject* coreObject) const
{
  return helperIndex(coreObject);
}

QList<VXRepresentation*> VXPipelineModel::getAllRepresentations() const
{
  return m_Root->getAllRepresentations();
}

QList<VXCoreObject*> VXPipelineModel::getAllFilters() const
{
  return m_Root->getAllFilters();
}

QList<VXCoreObject*> VXPipelineModel::getAllCoreObjects() const
{
  return m_Root->getAllCoreObjects();
}

QList<VXDataSource*> VXPipelineModel::getAllDataSources() const
{
  QList<VXDataSource*> sources;
  for (VXCoreObject* coreObject : getAllCoreObjects())
  {
    if (auto* source = qobject_cast<VXDataSource*>(coreObject))
    {
      sources.append(source);
    }
  }
  return sources;
}

QStringList VXPipelineModel::getAllDataSourceNames() const
{
  QStringList names;
  for (VXDataSource* source : getAllDataSources())
  {
    names.append(source->pathName());
  }
  return names;
}

QList<VXBridgeObject*> VXPipelineModel::getAllBridgeObjects() const
{
  QList<VXBridgeObject*> bridges;
  for (const TreeItem* child : m_Root->children())
  {
    if (child->bridgeObject() != nullptr)
    {
      bridges.append(child->bridgeObject());
    }
  }
  return bridges;
}

QList<VXGlobalSource*> VXPipelineModel::getAllGlobalSources() const
{
  QList<VXGlobalSource*> sources;
  for (const TreeItem* child : m_Root->children())
  {
    if (child->globalSource() != nullptr)
    {
      sources.append(child->globalSource());
    }
  }
  return sources;
}

VXDataSource* VXPipelineModel::getDataSource(const QString& pathName) const
{
  for (VXDataSource* source : getAllDataSources())
  {
    if (source->pathName() == pathName)
    {
      return source;
    }
  }
  return nullptr;
}

QModelIndex VXPipelineModel::pathIndex(const QString& pathName) const
{
  for (VXCoreObject* coreObject : getAllCoreObjects())
  {
    if (coreObject->pathName() == pathName)
    {
      return coreObjectIndex(coreObject);
    }
  }
  for (VXBridgeObject* bridge : getAllBridgeObjects())
  {
    if (bridge->name() == pathName)
    {
      return pipelineIndex(bridge);
    }
  }
  return {};
}

// --- changes through the pipeline ------------------------------------------------------------------

void VXPipelineModel::addBridgeObject(VXBridgeObject* bridge)
{
  if (m_Pipeline != nullptr && bridge != nullptr)
  {
    m_Pipeline->addVXBridgeObject(bridge);
  }
}

void VXPipelineModel::addGlobalSource(VXGlobalSource* globalSource)
{
  if (m_Pipeline != nullptr && globalSource != nullptr)
  {
    m_Pipeline->addGlobalSource(globalSource);
  }
}

bool VXPipelineModel::addRepresentation(const QModelIndex& index, VXRepresentation::Type type)
{
  if (m_Pipeline == nullptr || !canAddRepresentation(index))
  {
    return false;
  }
  return m_Pipeline->addRepresentation(getCoreObject(index), type);
}

bool VXPipelineModel::loadRepresentation(const QModelIndex& index, VXRepresentation* representation)
{
  if (m_Pipeline == nullptr || !canAddRepresentation(index))
  {
    return false;
  }
  return m_Pipeline->addLoadedRepresentation(getCoreObject(index), representation);
}

bool VXPipelineModel::addFilter(const QModelIndex& index, VXFilter* filter)
{
  if (m_Pipeline == nullptr || filter == nullptr || !canAddFilter(index))
  {
    return false;
  }
  return m_Pipeline->addFilter(getCoreObject(index), filter);
}

void VXPipelineModel::showInfoWidget(const QModelIndex& index)
{
  if (treeItem(index) != nullptr)
  {
    Q_EMIT selectIndexRequest(index);
  }
}

void VXPipelineModel::refreshVisibility()
{
  if (m_Root->childCount() == 0)
  {
    return;
  }
  emitSubtreeChanged(m_Root.get(), {Qt::CheckStateRole});
}

void VXPipelineModel::emitSubtreeChanged(TreeItem* item, const QVector<int>& roles)
{
  if (item->childCount() > 0)
  {
    const QModelIndex parentIndex = itemIndex(item, 0);
    Q_EMIT dataChanged(index(0, 0, parentIndex),
                       index(item->childCount() - 1, columnCount() - 1, parentIndex), roles);
  }
  for (TreeItem* child : item->children())
  {
    emitSubtreeChanged(child, roles);
  }
}

// --- slots following the pipeline -------------------------------------------------------------------

void VXPipelineModel::watchObject(QObject* object)
{
  // A name or flag that changes elsewhere repaints the row.
  auto repaint = [this, object]()
  {
    const QModelIndex first = helperIndex(object, VisibilityColumn);
    if (first.isValid())
    {
      Q_EMIT dataChanged(first, helperIndex(object, NameColumn),
                         {Qt::DisplayRole, Qt::EditRole, Qt::ForegroundRole});
    }
  };
  if (auto* bridge = qobject_cast<VXBridgeObject*>(object))
  {
    connect(bridge, &VXBridgeObject::nameChanged, this, repaint);
  }
  if (auto* coreObject = qobject_cast<VXCoreObject*>(object))
  {
    connect(coreObject, &VXCoreObject::pathChanged, this, repaint);
    connect(coreObject, &VXCoreObject::autoReloadFlagChanged, this, repaint);
    connect(coreObject, &VXCoreObject::enabledDisabledStateChanged, this,
            &VXPipelineModel::coreObjectViewStateChanged);
  }
  // An object deleted behind the model's back takes its rows with it.
  connect(object, &QObject::destroyed, this,
          [this](QObject* gone)
          {
            if (TreeItem* item = m_Root->find(gone))
            {
              removeTreeItem(item);
            }
          });
}

void VXPipelineModel::pipelineBridgeAdded(VXBridgeObject* pipelineBridge)
{
  if (pipelineBridge == nullptr || m_Root->find(pipelineBridge) != nullptr)
  {
    return;
  }
  QList<VXBridgeObject*> others = getAllBridgeObjects();
  const int row = m_Root->childCount();
  beginInsertRows(QModelIndex(), row, row);
  m_Root->appendChild({TreeItem::Pipeline, pipelineBridge});
  endInsertRows();
  if (pipelineBridge->getNameSuffixCounter() == 0 && !pipelineBridge->baseName().isEmpty())
  {
    pipelineBridge->setNameSuffix(GetNameSuffixCounter(others, pipelineBridge->baseName()));
  }
  watchObject(pipelineBridge);
  if (auto* fileBridge = qobject_cast<FileToVXBridge*>(pipelineBridge))
  {
    connect(fileBridge, &FileToVXBridge::autoReloadFlagChanged, this, &VXPipelineModel::onFileObjectFlagged);
  }
  if (auto* zrBridge = qobject_cast<ZRToVXBridge*>(pipelineBridge))
  {
    Q_EMIT zrToVXBridgeObjectAdded(zrBridge);
  }
}

void VXPipelineModel::globalSourceAdded(VXGlobalSource* globalSource)
{
  if (globalSource == nullptr || m_Root->find(globalSource) != nullptr)
  {
    return;
  }
  const int row = m_Root->childCount();
  beginInsertRows(QModelIndex(), row, row);
  m_Root->appendChild({TreeItem::GlobalSource, globalSource});
  endInsertRows();
  watchObject(globalSource);
  // The check of the row follows the view that has (or lacks) an instance.
  connect(globalSource, &VXGlobalSource::enabledDisabledStateChanged, this,
          [this](VXGlobalSource* source, bool)
          {
            const QModelIndex first = helperIndex(source, VisibilityColumn);
            if (first.isValid())
            {
              Q_EMIT dataChanged(first, helperIndex(source, NameColumn));
            }
          });
  connect(globalSource, &VXGlobalSource::settingsWidgetVisibilityButtonClicked, this,
          [this, globalSource](bool)
          {
            const QModelIndex first = helperIndex(globalSource, VisibilityColumn);
            if (first.isValid())
            {
              Q_EMIT dataChanged(first, first, {Qt::CheckStateRole});
            }
          });
}

void VXPipelineModel::removeGlobalSource(VXGlobalSource* source)
{
  TreeItem* item = m_Root->find(source);
  if (item == nullptr || item->globalSource() == nullptr)
  {
    return;
  }
  removeTreeItem(item);
  if (m_Pipeline != nullptr)
  {
    m_Pipeline->globalSourceRemoved(source);
  }
  source->finalize();
  source->deleteLater();
}

void VXPipelineModel::appendCoreObjectRow(VXCoreObject* coreObject, TreeItem::Kind kind)
{
  if (coreObject == nullptr || m_Root->find(coreObject) != nullptr)
  {
    return;
  }
  TreeItem* parentItem = m_Root->find(coreObject->parent());
  if (parentItem == nullptr)
  {
    return; // its parent is not in the tree: nothing to hang it under
  }
  const QModelIndex parentIndex = itemIndex(parentItem, 0);
  const int row = parentItem->childCount();
  beginInsertRows(parentIndex, row, row);
  parentItem->appendChild({kind, coreObject});
  endInsertRows();
  watchObject(coreObject);
  if (m_Pipeline != nullptr)
  {
    // Objects follow the active view, and a data view tells the tree whether it is drawn there.
    connect(m_Pipeline, &VXPipeline::activeViewChanged, coreObject, &VXCoreObject::activeViewChanged,
            Qt::UniqueConnection);
  }
  if (auto* fileBridge = qobject_cast<FileToVXBridge*>(coreObject->parent()))
  {
    if (fileBridge->autoReloadFlagged())
    {
      coreObject->setAutoReload(true);
    }
  }
}

void VXPipelineModel::dataSourceAdded(VXDataSource* dataSource)
{
  appendCoreObjectRow(dataSource, TreeItem::DataSource);
}

void VXPipelineModel::filterAdded(VXFilter* filter)
{
  if (filter == nullptr)
  {
    return;
  }
  if (filter->getNameSuffixCounter() == 0 && filter->baseName() == filter->defaultName())
  {
    QList<VXCoreObject*> others = getAllFilters();
    others.removeAll(filter);
    filter->setNameSuffixCounter(GetNameSuffixCounter(others, filter->baseName()));
  }
  appendCoreObjectRow(filter, TreeItem::Filter);
}

void VXPipelineModel::representationAdded(VXRepresentation* vxRepresentation)
{
  if (vxRepresentation == nullptr)
  {
    return;
  }
  // A filter's first Apply adds a data view; later ones only rerun it.
  if (auto* filter = qobject_cast<VXFilter*>(vxRepresentation->parent()))
  {
    filter->setShouldAddRep(false);
  }
  if (vxRepresentation->getNameSuffixCounter() == 0 &&
      vxRepresentation->baseName() == vxRepresentation->defaultName())
  {
    QList<VXCoreObject*> others;
    for (VXRepresentation* representation : getAllRepresentations())
    {
      if (representation != vxRepresentation)
      {
        others.append(representation);
      }
    }
    vxRepresentation->setNameSuffixCounter(GetNameSuffixCounter(others, vxRepresentation->baseName()));
  }
  appendCoreObjectRow(vxRepresentation, TreeItem::Representation);
  // A view asks to join or leave the group of linked slices; a repeated request changes nothing.
  connect(vxRepresentation, &VXRepresentation::requestLinkViews, this,
          [this](VXRepresentationPimpl* view)
          {
            if (view != nullptr && !m_LinkedSliceViews.contains(view))
            {
              linkImageSliceSlices(view);
            }
          });
  connect(vxRepresentation, &VXRepresentation::requestUnlinkViews, this,
          [this](VXRepresentationPimpl* view)
          {
            if (view != nullptr && m_LinkedSliceViews.contains(view))
            {
              linkImageSliceSlices(view);
            }
          });
}

void VXPipelineModel::removeTreeItem(TreeItem* item)
{
  if (item == nullptr || item == m_Root.get() || item->parent() == nullptr)
  {
    return;
  }
  QObject* object = item->object();
  if (object != nullptr)
  {
    disconnect(object, nullptr, this, nullptr);
  }
  TreeItem* parentItem = item->parent();
  const int row = item->childIndex();
  beginRemoveRows(itemIndex(parentItem, 0), row, row);
  parentItem->removeChild(item);
  endRemoveRows();
}

void VXPipelineModel::removeItem(QModelIndex index)
{
  TreeItem* item = treeItem(index);
  if (item == nullptr)
  {
    return;
  }
  // Children first, so that each object leaves through its own way.
  while (item->childCount() > 0)
  {
    removeItem(itemIndex(item->child(item->childCount() - 1), 0));
  }
  switch (item->kind())
  {
  case TreeItem::Pipeline:
    removePipeline(item->bridgeObject());
    break;
  case TreeItem::GlobalSource:
    removeGlobalSource(item->globalSource());
    break;
  case TreeItem::DataSource:
  {
    auto* dataSource = qobject_cast<VXDataSource*>(item->coreObject());
    removeTreeItem(item);
    if (dataSource != nullptr)
    {
      if (m_Pipeline != nullptr)
      {
        m_Pipeline->onDataSourceRemoved(dataSource);
      }
      Q_EMIT dataSource->requestClear();
      dataSource->deleteLater();
    }
    break;
  }
  case TreeItem::Filter:
  case TreeItem::Representation:
    removeLeafItem(item->coreObject());
    break;
  default:
    removeTreeItem(item);
    break;
  }
}

void VXPipelineModel::removeItems(QModelIndexList indexList)
{
  // Rows may move while others go: hold on to them through persistent indexes.
  QList<QPersistentModelIndex> persistent;
  for (const QModelIndex& index : indexList)
  {
    persistent.append(index);
  }
  for (const QPersistentModelIndex& index : persistent)
  {
    if (index.isValid())
    {
      removeItem(index);
    }
  }
}

void VXPipelineModel::removePipeline(VXBridgeObject* bridge)
{
  TreeItem* item = m_Root->find(bridge);
  if (item == nullptr)
  {
    return;
  }
  while (item->childCount() > 0)
  {
    removeItem(itemIndex(item->child(item->childCount() - 1), 0));
  }
  const bool wasPipelineOutput = qobject_cast<ZRToVXBridge*>(bridge) != nullptr;
  removeTreeItem(item);
  if (m_Pipeline != nullptr)
  {
    m_Pipeline->pipelineBridgeRemoved(bridge);
  }
  bridge->deleteLater();
  if (wasPipelineOutput)
  {
    Q_EMIT zrToVXBridgeObjectRemoved();
  }
}

void VXPipelineModel::removeLeafItem(VXCoreObject* coreObject)
{
  TreeItem* item = m_Root->find(coreObject);
  if (item == nullptr)
  {
    return;
  }
  while (item->childCount() > 0)
  {
    removeItem(itemIndex(item->child(item->childCount() - 1), 0));
  }
  TreeItem* parentItem = item->parent();
  removeTreeItem(item);
  // A filter that lost its last data view gets a new one on its next Apply.
  if (auto* filter = qobject_cast<VXFilter*>(parentItem != nullptr ? parentItem->coreObject() : nullptr))
  {
    if (qobject_cast<VXRepresentation*>(coreObject) != nullptr && parentItem->numChildRepresentations() == 0)
    {
      filter->setShouldAddRep(true);
    }
  }
  if (auto* representation = qobject_cast<VXRepresentation*>(coreObject))
  {
    // Its props leave the windows now; the object itself goes once control is back in the event loop.
    representation->finalize();
    representation->renderAll();
  }
  coreObject->deleteLater();
}

void VXPipelineModel::removeDataSource(VXDataSource* dataSource)
{
  const QModelIndex index = dataSourceIndex(dataSource);
  if (index.isValid())
  {
    removeItem(index);
  }
}

void VXPipelineModel::coreObjectViewStateChanged(VXCoreObject* coreObject, bool /*isEnabled*/)
{
  const QModelIndex first = helperIndex(coreObject, VisibilityColumn);
  if (first.isValid())
  {
    const QModelIndex last = helperIndex(coreObject, NameColumn);
    Q_EMIT dataChanged(first, last);
  }
}

void VXPipelineModel::flagChildren(TreeItem* item, bool flag)
{
  if (item == nullptr)
  {
    return;
  }
  for (TreeItem* child : item->children())
  {
    if (VXCoreObject* coreObject = child->coreObject())
    {
      coreObject->setAutoReload(flag);
    }
    flagChildren(child, flag);
  }
}

void VXPipelineModel::onFileObjectFlagged(FileToVXBridge* fileBridgeObject, bool flagged)
{
  TreeItem* item = m_Root->find(fileBridgeObject);
  if (item == nullptr)
  {
    return;
  }
  flagChildren(item, flagged);
  const QModelIndex bridgeIndex = itemIndex(item, 0);
  Q_EMIT dataChanged(bridgeIndex, itemIndex(item, NameColumn), {Qt::ForegroundRole});
  emitSubtreeChanged(item, {Qt::ForegroundRole});
}

// --- slice linking ----------------------------------------------------------------------------------

QList<VXRepresentationPimpl*> VXPipelineModel::linkedSliceViews() const
{
  QList<VXRepresentationPimpl*> views;
  for (const QPointer<VXRepresentationPimpl>& view : m_LinkedSliceViews)
  {
    if (view)
    {
      views.append(view);
    }
  }
  return views;
}

void VXPipelineModel::linkImageSliceSlices(VXRepresentationPimpl* representation)
{
  if (representation == nullptr)
  {
    return;
  }
  m_LinkedSliceViews.removeAll(QPointer<VXRepresentationPimpl>());
  const bool joining = !m_LinkedSliceViews.contains(representation);
  if (joining)
  {
    m_LinkedSliceViews.append(representation);
  }
  else
  {
    m_LinkedSliceViews.removeAll(representation);
  }
  representation->setLinked(joining);
  connectLinkedSliceView(representation, joining);
  // While a link is being made the user picks the views to join; the views show their split ids.
  Q_EMIT linkingDataViews(joining);
}

void VXPipelineModel::linkLoadedRepresentations()
{
  m_LinkedSliceViews.clear();
  for (VXRepresentation* representation : getAllRepresentations())
  {
    for (VXRepresentationPimpl* implementation : representation->getDataViewSplits())
    {
      if (implementation != nullptr && implementation->isLinked())
      {
        m_LinkedSliceViews.append(implementation);
        connectLinkedSliceView(implementation, true);
      }
    }
  }
}

void VXPipelineModel::connectLinkedSliceView(VXRepresentationPimpl* representation, bool linked)
{
  auto* slice = qobject_cast<VXImageSliceRepPimpl*>(representation);
  if (slice == nullptr)
  {
    return;
  }
  disconnect(slice, &VXImageSliceRepPimpl::sliceNumberChanged, this, nullptr);
  disconnect(slice, &VXImageSliceRepPimpl::sliceDirectionChanged, this, nullptr);
  disconnect(slice, &VXImageSliceRepPimpl::linkPhysicalUnitsChanged, this, nullptr);
  if (!linked)
  {
    return;
  }
  // Each linked view moves the others; they follow with their own signals blocked.
  connect(slice, &VXImageSliceRepPimpl::sliceNumberChanged, this,
          [this](int number, VXImageSliceRepPimpl* source)
          { VXImageSliceRepPimpl::updateLinkedSlices(linkedSliceViews(), number, source); });
  connect(slice, &VXImageSliceRepPimpl::sliceDirectionChanged, this,
          [this](ZRVtkModule::constants::SliceDirection direction, VXImageSliceRepPimpl* source)
          { VXImageSliceRepPimpl::updateLinkedSliceDirections(linkedSliceViews(), direction, source); });
  connect(slice, &VXImageSliceRepPimpl::linkPhysicalUnitsChanged, this,
          [this](bool link, VXImageSliceRepPimpl* source)
          { VXImageSliceRepPimpl::updateLinkedPhysicalUnits(linkedSliceViews(), link, source); });
}
