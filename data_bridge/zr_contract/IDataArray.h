#pragma once

#include "data_bridge/zr_contract/IArray.h"
#include "data_bridge/zr_contract/IDataStore.h"

#include <stdexcept>

namespace zr::core
{
// A numeric or boolean array backed by an IDataStore.
class IDataArray : public IArray
{
public:
  ~IDataArray() override = default;

  virtual IDataStore* getIDataStore() = 0;
  virtual const IDataStore* getIDataStore() const = 0;

  IDataStore& getIDataStoreRef()
  {
    IDataStore* store = getIDataStore();
    if (store == nullptr)
    {
      throw std::runtime_error("IDataArray: Null IDataStore");
    }
    return *store;
  }
  const IDataStore& getIDataStoreRef() const
  {
    const IDataStore* store = getIDataStore();
    if (store == nullptr)
    {
      throw std::runtime_error("IDataArray: Null IDataStore");
    }
    return *store;
  }

  ArrayType getArrayType() const override { return ArrayType::DataArray; }
  ShapeType getTupleShape() const override { return getIDataStoreRef().getTupleShape(); }
  ShapeType getComponentShape() const override { return getIDataStoreRef().getComponentShape(); }
  std::string getDataFormat() const override
  {
    const IDataStore* store = getIDataStore();
    return store == nullptr ? std::string() : store->getDataFormat();
  }
  Type getDataObjectType() const override { return Type::DataArray; }

protected:
  IDataArray(DataStructure& dataStructure, std::string name)
      : IArray(dataStructure, std::move(name))
  {
  }
  IDataArray(const IDataArray&) = default;
};
} // namespace zr::core
