#include "data_bridge/zr_contract/DataMap.h"

#include "data_bridge/zr_contract/DataObject.h"

namespace zr::core
{
std::vector<IdType> DataMap::getKeys() const
{
  std::vector<IdType> keys;
  keys.reserve(m_Map.size());
  for (const auto& [id, object] : m_Map)
  {
    keys.push_back(id);
  }
  return keys;
}

std::vector<std::shared_ptr<DataObject>> DataMap::getAllItems() const
{
  std::vector<std::shared_ptr<DataObject>> items;
  items.reserve(m_Map.size());
  for (const auto& [id, object] : m_Map)
  {
    items.push_back(object);
  }
  return items;
}

usize DataMap::getSize() const
{
  return m_Map.size();
}

bool DataMap::empty() const
{
  return m_Map.empty();
}

bool DataMap::contains(IdType id) const
{
  return m_Map.count(id) > 0;
}

bool DataMap::contains(const std::string& name) const
{
  return findByName(name) != nullptr;
}

std::shared_ptr<DataObject> DataMap::getSharedData(IdType id) const
{
  auto iter = m_Map.find(id);
  return iter == m_Map.end() ? nullptr : iter->second;
}

std::shared_ptr<DataObject> DataMap::findByName(const std::string& name) const
{
  for (const auto& [id, object] : m_Map)
  {
    if (object != nullptr && object->getName() == name)
    {
      return object;
    }
  }
  return nullptr;
}

bool DataMap::insert(const std::shared_ptr<DataObject>& object)
{
  if (object == nullptr || contains(object->getName()))
  {
    return false;
  }
  return m_Map.emplace(object->getId(), object).second;
}

bool DataMap::remove(IdType id)
{
  return m_Map.erase(id) > 0;
}

void DataMap::clear()
{
  m_Map.clear();
}

DataMap::Iterator DataMap::begin()
{
  return m_Map.begin();
}

DataMap::Iterator DataMap::end()
{
  return m_Map.end();
}

DataMap::ConstIterator DataMap::begin() const
{
  return m_Map.begin();
}

DataMap::ConstIterator DataMap::end() const
{
  return m_Map.end();
}

DataMap::MapType& DataMap::getMap()
{
  return m_Map;
}

const DataMap::MapType& DataMap::getMap() const
{
  return m_Map;
}
} // namespace zr::core
