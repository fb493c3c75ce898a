#pragma once

#include "data_bridge/zr_contract/DataType.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace zr::core
{
class DataObject;

// The members of a group (or the top level of a DataStructure), ordered by ascending id.
class DataMap
{
public:
  using MapType = std::map<IdType, std::shared_ptr<DataObject>>;
  using Iterator = MapType::iterator;
  using ConstIterator = MapType::const_iterator;

  std::vector<IdType> getKeys() const;
  std::vector<std::shared_ptr<DataObject>> getAllItems() const;
  usize getSize() const;
  bool empty() const;
  bool contains(IdType id) const;
  bool contains(const std::string& name) const;
  std::shared_ptr<DataObject> getSharedData(IdType id) const;
  // The member with exactly this name, or null.
  std::shared_ptr<DataObject> findByName(const std::string& name) const;

  bool insert(const std::shared_ptr<DataObject>& object);
  bool remove(IdType id);
  void clear();

  Iterator begin();
  Iterator end();
  ConstIterator begin() const;
  ConstIterator end() const;

  MapType& getMap();
  const MapType& getMap() const;

private:
  MapType m_Map;
};
} // namespace zr::core
