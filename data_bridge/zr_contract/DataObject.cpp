#include "data_bridge/zr_contract/DataObject.h"

#include "data_bridge/zr_contract/BaseGroup.h"
#include "data_bridge/zr_contract/DataStructure.h"

namespace zr::core
{
namespace
{
// Parent chains longer than this can only come from a cycle.
constexpr int k_MaxDepth = 1024;

void CollectPaths(const DataStructure& dataStructure, const DataObject& object,
                  std::vector<std::string>& suffix, std::vector<DataPath>& paths, int depth)
{
  if (depth > k_MaxDepth)
  {
    return;
  }
  suffix.push_back(object.getName());
  const std::vector<IdType>& parentIds = object.getParentIds();
  if (dataStructure.getDataMap().contains(object.getId()))
  {
    paths.emplace_back(std::vector<std::string>(suffix.rbegin(), suffix.rend()));
  }
  for (IdType parentId : parentIds)
  {
    const DataObject* parent = dataStructure.getData(parentId);
    if (parent != nullptr)
    {
      CollectPaths(dataStructure, *parent, suffix, paths, depth + 1);
    }
  }
  suffix.pop_back();
}
} // namespace

DataObject::DataObject(DataStructure& dataStructure, std::string name)
    : m_DataStructure(&dataStructure)
    , m_Name(std::move(name))
{
}

DataObject::~DataObject() = default;

IdType DataObject::getId() const
{
  return m_Id;
}

const std::string& DataObject::getName() const
{
  return m_Name;
}

bool DataObject::rename(const std::string& name)
{
  if (name.empty())
  {
    return false;
  }
  if (m_DataStructure != nullptr)
  {
    if (m_ParentIds.empty() && m_DataStructure->getDataMap().findByName(name) != nullptr)
    {
      return false;
    }
    for (IdType parentId : m_ParentIds)
    {
      const auto* parent = dynamic_cast<const BaseGroup*>(m_DataStructure->getData(parentId));
      if (parent != nullptr && parent->contains(name))
      {
        return false;
      }
    }
  }
  m_Name = name;
  return true;
}

const std::vector<IdType>& DataObject::getParentIds() const
{
  return m_ParentIds;
}

std::vector<DataPath> DataObject::getDataPaths() const
{
  std::vector<DataPath> paths;
  if (m_DataStructure == nullptr)
  {
    return paths;
  }
  std::vector<std::string> suffix;
  CollectPaths(*m_DataStructure, *this, suffix, paths, 0);
  return paths;
}

DataStructure* DataObject::getDataStructure() const
{
  return m_DataStructure;
}

void DataObject::remapIds(const std::map<IdType, IdType>&) {}
} // namespace zr::core
