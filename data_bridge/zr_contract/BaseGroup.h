#pragma once

#include "data_bridge/zr_contract/DataMap.h"
#include "data_bridge/zr_contract/DataObject.h"

namespace zr::core
{
// A DataObject with members. Members are added through DataStructure (Create functions with this
// group's id as parent, or DataStructure::addAdditionalParent).
class BaseGroup : public DataObject
{
public:
  using Iterator = DataMap::Iterator;
  using ConstIterator = DataMap::ConstIterator;

  ~BaseGroup() override;

  const DataMap& getDataMap() const;
  usize getSize() const;
  bool contains(const std::string& name) const;
  bool contains(IdType id) const;
  // The member with exactly this name, or null.
  DataObject* operator[](const std::string& name);
  const DataObject* operator[](const std::string& name) const;

  Iterator begin();
  Iterator end();
  ConstIterator begin() const;
  ConstIterator end() const;

protected:
  BaseGroup(DataStructure& dataStructure, std::string name);
  BaseGroup(const BaseGroup& other) = default;

  // Whether an object of this kind may become a member; a group accepts anything.
  virtual bool canInsert(const DataObject& object) const;

private:
  friend class DataStructure;
  DataMap m_DataMap;
};
} // namespace zr::core
