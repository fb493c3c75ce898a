#include "data_bridge/zr_contract/BaseGroup.h"

namespace zr::core
{
BaseGroup::BaseGroup(DataStructure& dataStructure, std::string name)
    : DataObject(dataStructure, std::move(name))
{
}

BaseGroup::~BaseGroup() = default;

const DataMap& BaseGroup::getDataMap() const
{
  return m_DataMap;
}

usize BaseGroup::getSize() const
{
  return m_DataMap.getSize();
}

bool BaseGroup::contains(const std::string& name) const
{
  return m_DataMap.contains(name);
}

bool BaseGroup::contains(IdType id) const
{
  return m_DataMap.contains(id);
}

DataObject* BaseGroup::operator[](const std::string& name)
{
  return m_DataMap.findByName(name).get();
}

const DataObject* BaseGroup::operator[](const std::string& name) const
{
  return m_DataMap.findByName(name).get();
}

BaseGroup::Iterator BaseGroup::begin()
{
  return m_DataMap.begin();
}

BaseGroup::Iterator BaseGroup::end()
{
  return m_DataMap.end();
}

BaseGroup::ConstIterator BaseGroup::begin() const
{
  return m_DataMap.begin();
}

BaseGroup::ConstIterator BaseGroup::end() const
{
  return m_DataMap.end();
}

bool BaseGroup::canInsert(const DataObject&) const
{
  return true;
}
} // namespace zr::core
