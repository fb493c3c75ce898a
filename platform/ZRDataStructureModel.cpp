#include "platform/ZRDataStructureModel.h"

#include "platform/ZRDragAndDrop.h"
#include "platform/ZRStyle.h"

#include "data_bridge/zr_contract/AttributeMatrix.h"
#include "data_bridge/zr_contract/BaseGroup.h"
#include "data_bridge/zr_contract/IArray.h"

#include <QMimeData>

namespace
{
using Type = zr::core::DataObject::Type;

QString ShapeText(const zr::core::ShapeType& shape)
{
  QStringList sizes;
  for (zr::core::usize size : shape)
  {
    sizes << QString::number(size);
  }
  return QStringLiteral("(") + sizes.join(QStringLiteral(", ")) + QStringLiteral(")");
}

bool IsArrayType(Type type)
{
  return type == Type::DataArray || type == Type::NeighborList || type == Type::StringArray ||
         type == Type::IArray || type == Type::IDataArray || type == Type::INeighborList;
}

QString IconName(const zr::core::DataObject& object)
{
  switch (object.getDataObjectType())
  {
  case Type::DataGroup:
    return QStringLiteral("VXPipelineTreeIcon");
  case Type::AttributeMatrix:
    return QStringLiteral("Cells");
  default:
    break;
  }
  if (IsArrayType(object.getDataObjectType()))
  {
    return QStringLiteral("BasicSpreadsheet");
  }
  return QStringLiteral("Visualization");
}
} // namespace

ZRDataStructureModel::ZRDataStructureModel(QObject* parent)
    : QAbstractItemModel(parent)
{
}

ZRDataStructureModel::~ZRDataStructureModel() = default;

void ZRDataStructureModel::setDataStructure(std::shared_ptr<zr::core::DataStructure> dataStructure)
{
  beginResetModel();
  m_DataStructure = std::move(dataStructure);
  m_Root.children.clear();
  if (m_DataStructure != nullptr)
  {
    std::vector<std::shared_ptr<zr::core::DataObject>> topLevel;
    for (const auto& [id, object] : *m_DataStructure)
    {
      topLevel.push_back(object);
    }
    buildChildren(m_Root, topLevel);
  }
  endResetModel();
}

void ZRDataStructureModel::buildChildren(Node& node,
                                         const std::vector<std::shared_ptr<zr::core::DataObject>>& members)
{
  for (const std::shared_ptr<zr::core::DataObject>& member : members)
  {
    if (member == nullptr)
    {
      continue;
    }
    auto child = std::make_unique<Node>();
    child->parent = &node;
    child->row = static_cast<int>(node.children.size());
    child->path = node.path.createChildPath(member->getName());
    child->id = member->getId();
    if (const auto* group = dynamic_cast<const zr::core::BaseGroup*>(member.get()))
    {
      buildChildren(*child, group->getDataMap().getAllItems());
    }
    node.children.push_back(std::move(child));
  }
}

std::shared_ptr<zr::core::DataStructure> ZRDataStructureModel::getDataStructure() const
{
  return m_DataStructure;
}

ZRDataStructureModel::Node* ZRDataStructureModel::nodeOf(const QModelIndex& index) const
{
  if (!index.isValid() || index.model() != this)
  {
    return nullptr;
  }
  return static_cast<Node*>(index.internalPointer());
}

const zr::core::DataObject* ZRDataStructureModel::objectOf(const QModelIndex& index) const
{
  const Node* node = nodeOf(index);
  if (node == nullptr || m_DataStructure == nullptr)
  {
    return nullptr;
  }
  return m_DataStructure->getData(node->id);
}

zr::core::DataPath ZRDataStructureModel::dataPath(const QModelIndex& index) const
{
  const Node* node = nodeOf(index);
  return node != nullptr ? node->path : zr::core::DataPath();
}

QModelIndex ZRDataStructureModel::indexOf(const zr::core::DataPath& path) const
{
  const Node* node = &m_Root;
  for (const std::string& name : path.getPathVector())
  {
    const Node* next = nullptr;
    for (const auto& child : node->children)
    {
      if (child->path.getTargetName() == name)
      {
        next = child.get();
        break;
      }
    }
    if (next == nullptr)
    {
      return {};
    }
    node = next;
  }
  if (node == &m_Root)
  {
    return {};
  }
  return createIndex(node->row, 0, const_cast<Node*>(node));
}

bool ZRDataStructureModel::isArray(const QModelIndex& index) const
{
  const zr::core::DataObject* object = objectOf(index);
  return object != nullptr && dynamic_cast<const zr::core::IArray*>(object) != nullptr;
}

std::string ZRDataStructureModel::ObjectTypeName(const zr::core::DataObject& object)
{
  switch (object.getDataObjectType())
  {
  case Type::DataGroup:
    return "DataGroup";
  case Type::AttributeMatrix:
    return "AttributeMatrix";
  case Type::DataArray:
  case Type::IDataArray:
    return "DataArray";
  case Type::NeighborList:
  case Type::INeighborList:
    return "NeighborList";
  case Type::StringArray:
    return "StringArray";
  default:
    break;
  }
  // Geometries name themselves ("ImageGeom", "TriangleGeom", ...).
  const std::string name = object.getTypeName();
  return name.substr(0, name.find('<'));
}

QString ZRDataStructureModel::ToolTipText(const zr::core::DataObject& object)
{
  QStringList lines;
  lines << QStringLiteral("Type: %1").arg(QString::fromStdString(object.getTypeName()));
  if (const auto* array = dynamic_cast<const zr::core::IArray*>(&object))
  {
    lines << QStringLiteral("Tuple Shape: %1").arg(ShapeText(array->getTupleShape()));
    lines << QStringLiteral("Component Shape: %1").arg(ShapeText(array->getComponentShape()));
  }
  else if (const auto* matrix = dynamic_cast<const zr::core::AttributeMatrix*>(&object))
  {
    lines << QStringLiteral("Tuple Shape: %1").arg(ShapeText(matrix->getTupleShape()));
  }
  return lines.join(QLatin1Char('\n'));
}

QModelIndex ZRDataStructureModel::index(int row, int column, const QModelIndex& parent) const
{
  if (column != 0 || row < 0 || (parent.isValid() && parent.column() != 0))
  {
    return {};
  }
  const Node* parentNode = parent.isValid() ? nodeOf(parent) : &m_Root;
  if (parentNode == nullptr || row >= static_cast<int>(parentNode->children.size()))
  {
    return {};
  }
  return createIndex(row, 0, parentNode->children[row].get());
}

QModelIndex ZRDataStructureModel::parent(const QModelIndex& child) const
{
  const Node* node = nodeOf(child);
  if (node == nullptr || node->parent == nullptr || node->parent == &m_Root)
  {
    return {};
  }
  return createIndex(node->parent->row, 0, node->parent);
}

int ZRDataStructureModel::rowCount(const QModelIndex& parent) const
{
  if (parent.isValid() && parent.column() != 0)
  {
    return 0;
  }
  const Node* node = parent.isValid() ? nodeOf(parent) : &m_Root;
  return node != nullptr ? static_cast<int>(node->children.size()) : 0;
}

int ZRDataStructureModel::columnCount(const QModelIndex&) const
{
  return 1;
}

QVariant ZRDataStructureModel::data(const QModelIndex& index, int role) const
{
  const Node* node = nodeOf(index);
  const zr::core::DataObject* object = objectOf(index);
  if (node == nullptr || object == nullptr)
  {
    return {};
  }
  switch (role)
  {
  case Qt::DisplayRole:
  case Qt::EditRole:
    return QString::fromStdString(object->getName());
  case Qt::ToolTipRole:
    return ToolTipText(*object);
  case Qt::DecorationRole:
    return ZRStyle::generateThemeIconFromName(IconName(*object));
  case DataPathRole:
    return QString::fromStdString(node->path.toString());
  case ObjectTypeRole:
    return QString::fromStdString(ObjectTypeName(*object));
  case IsArrayRole:
    return dynamic_cast<const zr::core::IArray*>(object) != nullptr;
  default:
    return {};
  }
}

QVariant ZRDataStructureModel::headerData(int section, Qt::Orientation orientation, int role) const
{
  if (section == 0 && orientation == Qt::Horizontal && role == Qt::DisplayRole)
  {
    return QStringLiteral("Data Structure");
  }
  return {};
}

Qt::ItemFlags ZRDataStructureModel::flags(const QModelIndex& index) const
{
  if (nodeOf(index) == nullptr)
  {
    return Qt::NoItemFlags;
  }
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (isArray(index))
  {
    flags |= Qt::ItemIsDragEnabled;
  }
  return flags;
}

QStringList ZRDataStructureModel::mimeTypes() const
{
  return {ZR::DragAndDrop::DataStructureItem};
}

QMimeData* ZRDataStructureModel::mimeData(const QModelIndexList& indexes) const
{
  std::vector<ZR::DragAndDrop::DataPathDropValue> values;
  for (const QModelIndex& index : indexes)
  {
    const zr::core::DataObject* object = objectOf(index);
    if (object == nullptr || !isArray(index))
    {
      continue;
    }
    values.push_back({dataPath(index), ObjectTypeName(*object)});
  }
  if (values.empty())
  {
    return nullptr;
  }
  auto* mimeData = new QMimeData();
  mimeData->setData(ZR::DragAndDrop::DataStructureItem, ZR::DragAndDrop::EncodeDropValues(values));
  return mimeData;
}

Qt::DropActions ZRDataStructureModel::supportedDragActions() const
{
  return Qt::CopyAction;
}
