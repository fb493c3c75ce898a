#pragma once

#include "data_bridge/zr_contract/DataType.h"

namespace zr::core
{
// Size queries on the lists of a neighbour list.
class IListStore
{
public:
  virtual ~IListStore() = default;

  virtual usize getNumberOfLists() const = 0;
  virtual usize getListSize(usize listIndex) const = 0;
  // Length of the longest list; 0 with no lists.
  virtual usize getMaxListSize() const = 0;
  // Sum of all list lengths.
  virtual usize getTotalValueCount() const = 0;
  virtual DataType getDataType() const = 0;
};
} // namespace zr::core
