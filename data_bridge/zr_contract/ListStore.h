#pragma once

#include "data_bridge/zr_contract/IListStore.h"

#include <algorithm>
#include <vector>

namespace zr::core
{
// One variable-length list of values per tuple, in memory.
template<class T>
class ListStore : public IListStore
{
public:
  using ListType = std::vector<T>;

  ListStore() = default;
  explicit ListStore(usize numLists)
      : m_Lists(numLists)
  {
  }
  explicit ListStore(std::vector<ListType> lists)
      : m_Lists(std::move(lists))
  {
  }

  usize getNumberOfLists() const override { return m_Lists.size(); }
  usize getListSize(usize listIndex) const override
  {
    return listIndex < m_Lists.size() ? m_Lists[listIndex].size() : 0;
  }
  usize getMaxListSize() const override
  {
    usize maxSize = 0;
    for (const auto& list : m_Lists)
    {
      maxSize = std::max<usize>(maxSize, list.size());
    }
    return maxSize;
  }
  usize getTotalValueCount() const override
  {
    usize total = 0;
    for (const auto& list : m_Lists)
    {
      total += list.size();
    }
    return total;
  }
  DataType getDataType() const override { return GetDataType<T>(); }

  const ListType& getList(usize listIndex) const { return m_Lists.at(listIndex); }
  void setList(usize listIndex, ListType list) { m_Lists.at(listIndex) = std::move(list); }
  void addEntry(usize listIndex, T value) { m_Lists.at(listIndex).push_back(value); }
  void resizeLists(usize numLists) { m_Lists.resize(numLists); }
  const std::vector<ListType>& getLists() const { return m_Lists; }

private:
  std::vector<ListType> m_Lists;
};
} // namespace zr::core
