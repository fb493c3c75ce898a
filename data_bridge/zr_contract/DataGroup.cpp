#include "data_bridge/zr_contract/DataGroup.h"

#include "data_bridge/zr_contract/DataStructure.h"

namespace zr::core
{
DataGroup* DataGroup::Create(DataStructure& dataStructure, std::string name, std::optional<IdType> parentId)
{
  std::shared_ptr<DataGroup> group(new DataGroup(dataStructure, std::move(name)));
  return dataStructure.insert(group, parentId) ? group.get() : nullptr;
}

DataGroup::DataGroup(DataStructure& dataStructure, std::string name)
    : BaseGroup(dataStructure, std::move(name))
{
}

DataObject::Type DataGroup::getDataObjectType() const
{
  return Type::DataGroup;
}

std::string DataGroup::getTypeName() const
{
  return "DataGroup";
}

std::shared_ptr<DataObject> DataGroup::shallowCopy() const
{
  return std::shared_ptr<DataObject>(new DataGroup(*this));
}
} // namespace zr::core
