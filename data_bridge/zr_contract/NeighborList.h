#pragma once

#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/INeighborList.h"
#include "data_bridge/zr_contract/ListStore.h"

#include <memory>
#include <optional>
#include <type_traits>

namespace zr::core
{
// Neighbour list of one of the ten numeric element types (there is no list of booleans).
template<class T>
class NeighborList : public INeighborList
{
  static_assert(!std::is_same_v<T, bool>, "There is no NeighborList of booleans");

public:
  using value_type = T;

  static NeighborList* Create(DataStructure& dataStructure, std::string name, usize numLists,
                              std::optional<IdType> parentId = {})
  {
    return Create(dataStructure, std::move(name), std::make_shared<ListStore<T>>(numLists), parentId);
  }
  static NeighborList* Create(DataStructure& dataStructure, std::string name,
                              std::shared_ptr<ListStore<T>> store, std::optional<IdType> parentId = {})
  {
    std::shared_ptr<NeighborList> list(new NeighborList(dataStructure, std::move(name), std::move(store)));
    if (!dataStructure.insert(list, parentId))
    {
      return nullptr;
    }
    return list.get();
  }

  std::string getTypeName() const override
  {
    return "NeighborList<" + DataTypeToString(GetDataType<T>()) + ">";
  }
  DataType getDataType() const override { return GetDataType<T>(); }
  IListStore* getIListStore() override { return m_Store.get(); }
  const IListStore* getIListStore() const override { return m_Store.get(); }
  std::shared_ptr<ListStore<T>> getSharedListStore() const { return m_Store; }

  // Value valueIndex of list listIndex; ok tells whether both indices were inside.
  T getValue(int listIndex, int valueIndex, bool& ok) const
  {
    ok = false;
    if (m_Store == nullptr || listIndex < 0 || valueIndex < 0)
    {
      return T{};
    }
    const auto list = static_cast<usize>(listIndex);
    const auto value = static_cast<usize>(valueIndex);
    if (list >= m_Store->getNumberOfLists() || value >= m_Store->getListSize(list))
    {
      return T{};
    }
    ok = true;
    return m_Store->getList(list)[value];
  }
  const std::vector<T>& getList(usize listIndex) const { return m_Store->getList(listIndex); }
  void setList(usize listIndex, std::vector<T> list) { m_Store->setList(listIndex, std::move(list)); }

protected:
  NeighborList(DataStructure& dataStructure, std::string name, std::shared_ptr<ListStore<T>> store)
      : INeighborList(dataStructure, std::move(name))
      , m_Store(std::move(store))
  {
  }
  NeighborList(const NeighborList&) = default;
  std::shared_ptr<DataObject> shallowCopy() const override
  {
    return std::shared_ptr<DataObject>(new NeighborList(*this));
  }

private:
  std::shared_ptr<ListStore<T>> m_Store;
};
} // namespace zr::core
