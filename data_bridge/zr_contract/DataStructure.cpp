#include "data_bridge/zr_contract/DataStructure.h"

#include "data_bridge/zr_contract/BaseGroup.h"

#include <algorithm>
#include <functional>

namespace zr::core
{
DataStructure::DataStructure() = default;

DataStructure::DataStructure(const DataStructure& other)
    : m_NextId(other.m_NextId)
{
  relinkAfterCopy(other);
}

DataStructure::DataStructure(DataStructure&& other) noexcept
    : m_NextId(other.m_NextId)
    , m_Objects(std::move(other.m_Objects))
    , m_RootGroup(std::move(other.m_RootGroup))
{
  other.m_Objects.clear();
  other.m_RootGroup.clear();
  adoptObjects();
}

DataStructure& DataStructure::operator=(const DataStructure& other)
{
  if (this != &other)
  {
    DataStructure copy(other);
    *this = std::move(copy);
  }
  return *this;
}

DataStructure& DataStructure::operator=(DataStructure&& other) noexcept
{
  if (this != &other)
  {
    for (auto& [id, object] : m_Objects)
    {
      object->m_DataStructure = nullptr;
    }
    m_NextId = other.m_NextId;
    m_Objects = std::move(other.m_Objects);
    m_RootGroup = std::move(other.m_RootGroup);
    other.m_Objects.clear();
    other.m_RootGroup.clear();
    adoptObjects();
  }
  return *this;
}

DataStructure::~DataStructure()
{
  // Objects held elsewhere (a shared_ptr kept by a consumer) must not point at a dead structure.
  for (auto& [id, object] : m_Objects)
  {
    object->m_DataStructure = nullptr;
  }
}

void DataStructure::relinkAfterCopy(const DataStructure& source)
{
  for (const auto& [id, object] : source.m_Objects)
  {
    std::shared_ptr<DataObject> copy = object->shallowCopy();
    copy->m_DataStructure = this;
    m_Objects.emplace(id, std::move(copy));
  }
  for (auto& [id, object] : m_Objects)
  {
    auto* group = dynamic_cast<BaseGroup*>(object.get());
    if (group == nullptr)
    {
      continue;
    }
    for (auto& [memberId, member] : group->m_DataMap.getMap())
    {
      member = m_Objects.at(memberId);
    }
  }
  for (const auto& [id, object] : source.m_RootGroup)
  {
    m_RootGroup.getMap().emplace(id, m_Objects.at(id));
  }
}

void DataStructure::adoptObjects()
{
  for (auto& [id, object] : m_Objects)
  {
    object->m_DataStructure = this;
  }
}

IdType DataStructure::getNextId() const
{
  return m_NextId;
}

void DataStructure::resetIds(IdType first)
{
  std::map<IdType, IdType> oldToNew;
  IdType next = first;
  for (const auto& [id, object] : m_Objects)
  {
    oldToNew[id] = next++;
  }
  std::map<IdType, std::shared_ptr<DataObject>> renumbered;
  for (auto& [id, object] : m_Objects)
  {
    object->m_Id = oldToNew.at(id);
    for (IdType& parentId : object->m_ParentIds)
    {
      parentId = oldToNew.at(parentId);
    }
    object->remapIds(oldToNew);
    renumbered.emplace(object->m_Id, object);
  }
  m_Objects = std::move(renumbered);
  for (auto& [id, object] : m_Objects)
  {
    auto* group = dynamic_cast<BaseGroup*>(object.get());
    if (group == nullptr)
    {
      continue;
    }
    DataMap::MapType members;
    for (auto& [memberId, member] : group->m_DataMap.getMap())
    {
      members.emplace(member->m_Id, member);
    }
    group->m_DataMap.getMap() = std::move(members);
  }
  DataMap::MapType roots;
  for (auto& [id, object] : m_RootGroup.getMap())
  {
    roots.emplace(object->m_Id, object);
  }
  m_RootGroup.getMap() = std::move(roots);
  m_NextId = next;
}

usize DataStructure::getSize() const
{
  return m_Objects.size();
}

bool DataStructure::empty() const
{
  return m_Objects.empty();
}

std::optional<IdType> DataStructure::getId(const DataPath& path) const
{
  const DataObject* object = getData(path);
  if (object == nullptr)
  {
    return std::nullopt;
  }
  return object->getId();
}

bool DataStructure::containsData(IdType id) const
{
  return m_Objects.count(id) > 0;
}

bool DataStructure::containsData(const DataPath& path) const
{
  return getData(path) != nullptr;
}

DataObject* DataStructure::getData(IdType id)
{
  return getSharedData(id).get();
}

const DataObject* DataStructure::getData(IdType id) const
{
  return getSharedData(id).get();
}

DataObject* DataStructure::getData(const DataPath& path)
{
  return getSharedData(path).get();
}

const DataObject* DataStructure::getData(const DataPath& path) const
{
  return getSharedData(path).get();
}

std::shared_ptr<DataObject> DataStructure::getSharedData(IdType id) const
{
  auto iter = m_Objects.find(id);
  return iter == m_Objects.end() ? nullptr : iter->second;
}

std::shared_ptr<DataObject> DataStructure::getSharedData(const DataPath& path) const
{
  const std::vector<std::string>& names = path.getPathVector();
  if (names.empty())
  {
    return nullptr;
  }
  std::shared_ptr<DataObject> current = m_RootGroup.findByName(names.front());
  for (std::size_t i = 1; i < names.size() && current != nullptr; ++i)
  {
    const auto* group = dynamic_cast<const BaseGroup*>(current.get());
    if (group == nullptr)
    {
      return nullptr;
    }
    current = group->getDataMap().findByName(names[i]);
  }
  return current;
}

const DataMap& DataStructure::getDataMap() const
{
  return m_RootGroup;
}

std::vector<IdType> DataStructure::getTopLevelIds() const
{
  return m_RootGroup.getKeys();
}

std::vector<DataPath> DataStructure::getAllDataPaths() const
{
  std::vector<DataPath> paths;
  std::function<void(const DataMap&, const DataPath&, int)> visit =
      [&](const DataMap& map, const DataPath& parent, int depth)
  {
    if (depth > 1024)
    {
      return;
    }
    for (const auto& [id, object] : map)
    {
      DataPath path = parent.createChildPath(object->getName());
      paths.push_back(path);
      if (const auto* group = dynamic_cast<const BaseGroup*>(object.get()))
      {
        visit(group->getDataMap(), path, depth + 1);
      }
    }
  };
  visit(m_RootGroup, DataPath(), 0);
  return paths;
}

DataStructure::Iterator DataStructure::begin()
{
  return m_RootGroup.begin();
}

DataStructure::Iterator DataStructure::end()
{
  return m_RootGroup.end();
}

DataStructure::ConstIterator DataStructure::begin() const
{
  return m_RootGroup.begin();
}

DataStructure::ConstIterator DataStructure::end() const
{
  return m_RootGroup.end();
}

bool DataStructure::insert(const std::shared_ptr<DataObject>& object, std::optional<IdType> parentId,
                           std::optional<IdType> id)
{
  if (object == nullptr || object->m_DataStructure != this || object->getName().empty())
  {
    return false;
  }
  auto existing = m_Objects.find(object->m_Id);
  if (existing != m_Objects.end() && existing->second == object)
  {
    // Already here: a second parent goes through addAdditionalParent.
    return false;
  }
  const IdType newId = id.value_or(m_NextId);
  if (m_Objects.count(newId) > 0)
  {
    return false;
  }
  BaseGroup* parent = nullptr;
  if (parentId.has_value())
  {
    parent = dynamic_cast<BaseGroup*>(getData(*parentId));
    if (parent == nullptr || !parent->canInsert(*object) || parent->contains(object->getName()))
    {
      return false;
    }
  }
  else if (m_RootGroup.contains(object->getName()))
  {
    return false;
  }
  object->m_Id = newId;
  object->m_ParentIds.clear();
  if (parent != nullptr)
  {
    parent->m_DataMap.insert(object);
    object->m_ParentIds.push_back(*parentId);
  }
  else
  {
    m_RootGroup.insert(object);
  }
  m_Objects.emplace(newId, object);
  m_NextId = std::max(m_NextId, newId + 1);
  return true;
}

bool DataStructure::addAdditionalParent(IdType targetId, IdType parentId)
{
  std::shared_ptr<DataObject> target = getSharedData(targetId);
  auto* parent = dynamic_cast<BaseGroup*>(getData(parentId));
  if (target == nullptr || parent == nullptr || !parent->canInsert(*target) || parent->contains(targetId) ||
      parent->contains(target->getName()))
  {
    return false;
  }
  // A group must not become its own ancestor.
  for (const DataPath& parentPath : parent->getDataPaths())
  {
    for (std::size_t depth = 1; depth <= parentPath.getLength(); ++depth)
    {
      const std::vector<std::string>& names = parentPath.getPathVector();
      if (getData(DataPath(std::vector<std::string>(names.begin(), names.begin() + depth))) == target.get())
      {
        return false;
      }
    }
  }
  parent->m_DataMap.insert(target);
  target->m_ParentIds.push_back(parentId);
  return true;
}

bool DataStructure::addToTopLevel(IdType targetId)
{
  std::shared_ptr<DataObject> target = getSharedData(targetId);
  if (target == nullptr || m_RootGroup.contains(targetId) || m_RootGroup.contains(target->getName()))
  {
    return false;
  }
  return m_RootGroup.insert(target);
}

std::shared_ptr<DataObject> DataStructure::insertCopyOf(const DataObject& source,
                                                        std::optional<IdType> parentId)
{
  std::shared_ptr<DataObject> copy = source.shallowCopy();
  copy->m_DataStructure = this;
  if (auto* group = dynamic_cast<BaseGroup*>(copy.get()))
  {
    group->m_DataMap.clear();
  }
  if (!insert(copy, parentId, source.getId()))
  {
    return nullptr;
  }
  return copy;
}

bool DataStructure::setNextId(IdType nextId)
{
  if (!m_Objects.empty() && m_Objects.rbegin()->first >= nextId)
  {
    return false;
  }
  m_NextId = nextId;
  return true;
}

void DataStructure::removeFromParents(DataObject& object)
{
  m_RootGroup.remove(object.getId());
  for (IdType parentId : object.m_ParentIds)
  {
    if (auto* parent = dynamic_cast<BaseGroup*>(getData(parentId)))
    {
      parent->m_DataMap.remove(object.getId());
    }
  }
  object.m_ParentIds.clear();
}

bool DataStructure::removeData(IdType id)
{
  std::shared_ptr<DataObject> object = getSharedData(id);
  if (object == nullptr)
  {
    return false;
  }
  removeFromParents(*object);
  m_Objects.erase(id);
  if (auto* group = dynamic_cast<BaseGroup*>(object.get()))
  {
    std::vector<std::shared_ptr<DataObject>> members = group->m_DataMap.getAllItems();
    group->m_DataMap.clear();
    for (const auto& member : members)
    {
      auto& parents = member->m_ParentIds;
      parents.erase(std::remove(parents.begin(), parents.end(), id), parents.end());
      if (parents.empty() && !m_RootGroup.contains(member->getId()))
      {
        removeData(member->getId());
      }
    }
  }
  object->m_DataStructure = nullptr;
  return true;
}

bool DataStructure::removeData(const DataPath& path)
{
  std::optional<IdType> id = getId(path);
  return id.has_value() && removeData(*id);
}
} // namespace zr::core
