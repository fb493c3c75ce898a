#pragma once

#include "data_bridge/zr_contract/BaseGroup.h"

#include <optional>

namespace zr::core
{
// A plain folder of objects.
class DataGroup : public BaseGroup
{
public:
  // Creates a group at the top level (no parent) or under parentId; null when the parent is missing
  // or already has a member of that name.
  static DataGroup* Create(DataStructure& dataStructure, std::string name,
                           std::optional<IdType> parentId = {});

  Type getDataObjectType() const override;
  std::string getTypeName() const override;

protected:
  DataGroup(DataStructure& dataStructure, std::string name);
  DataGroup(const DataGroup& other) = default;
  std::shared_ptr<DataObject> shallowCopy() const override;
};
} // namespace zr::core
