#pragma once

#include "data_bridge/zr_contract/IArray.h"
#include "data_bridge/zr_contract/IListStore.h"

#include <stdexcept>

namespace zr::core
{
// One variable-length list per tuple (for example the neighbouring features of each feature).
class INeighborList : public IArray
{
public:
  ~INeighborList() override = default;

  virtual IListStore* getIListStore() = 0;
  virtual const IListStore* getIListStore() const = 0;

  IListStore& getIListStoreRef()
  {
    IListStore* store = getIListStore();
    if (store == nullptr)
    {
      throw std::runtime_error("INeighborList: Null IListStore");
    }
    return *store;
  }
  const IListStore& getIListStoreRef() const
  {
    const IListStore* store = getIListStore();
    if (store == nullptr)
    {
      throw std::runtime_error("INeighborList: Null IListStore");
    }
    return *store;
  }

  usize getNumberOfLists() const
  {
    const IListStore* store = getIListStore();
    return store == nullptr ? 0 : store->getNumberOfLists();
  }

  ArrayType getArrayType() const override { return ArrayType::NeighborListArray; }
  // One tuple per list, one component.
  ShapeType getTupleShape() const override { return {getNumberOfLists()}; }
  ShapeType getComponentShape() const override { return {1}; }
  Type getDataObjectType() const override { return Type::NeighborList; }

protected:
  INeighborList(DataStructure& dataStructure, std::string name)
      : IArray(dataStructure, std::move(name))
  {
  }
  INeighborList(const INeighborList&) = default;
};
} // namespace zr::core
