#pragma once

#include "data_bridge/zr_contract/AbstractDataStore.h"
#include "data_bridge/zr_contract/DataStore.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/IDataArray.h"

#include <memory>
#include <optional>
#include <stdexcept>

namespace zr::core
{
// A typed array over a shared store. The store is held by std::shared_ptr: whoever locks it
// (getSharedDataStore) keeps the values alive after the array and its DataStructure are gone.
template<class T>
class DataArray : public IDataArray
{
public:
  using value_type = T;
  using store_type = AbstractDataStore<T>;

  // Creates an array with a new in-memory store (filled with initValue when given) at the top level
  // or under parentId. Null when the parent is missing or refuses it, or the name is taken.
  static DataArray* Create(DataStructure& dataStructure, std::string name, const ShapeType& tupleShape,
                           const ShapeType& componentShape, std::optional<IdType> parentId = {},
                           std::optional<T> initValue = T{})
  {
    return Create(dataStructure, std::move(name),
                  std::make_shared<DataStore<T>>(tupleShape, componentShape, initValue), parentId);
  }

  // Creates an array over an existing store (which may be shared with other arrays).
  static DataArray* Create(DataStructure& dataStructure, std::string name,
                           std::shared_ptr<AbstractDataStore<T>> store, std::optional<IdType> parentId = {})
  {
    std::shared_ptr<DataArray> array(new DataArray(dataStructure, std::move(name), std::move(store)));
    if (!dataStructure.insert(array, parentId))
    {
      return nullptr;
    }
    return array.get();
  }

  ~DataArray() override = default;

  std::string getTypeName() const override { return "DataArray<" + DataTypeToString(GetDataType<T>()) + ">"; }
  DataType getDataType() const override { return GetDataType<T>(); }

  IDataStore* getIDataStore() override { return m_DataStore.get(); }
  const IDataStore* getIDataStore() const override { return m_DataStore.get(); }
  AbstractDataStore<T>* getDataStore() { return m_DataStore.get(); }
  const AbstractDataStore<T>* getDataStore() const { return m_DataStore.get(); }
  AbstractDataStore<T>& getDataStoreRef() { return static_cast<AbstractDataStore<T>&>(getIDataStoreRef()); }
  const AbstractDataStore<T>& getDataStoreRef() const
  {
    return static_cast<const AbstractDataStore<T>&>(getIDataStoreRef());
  }
  std::shared_ptr<AbstractDataStore<T>> getSharedDataStore() const { return m_DataStore; }
  // The store as contiguous memory, or null when it lives elsewhere (out of core, empty).
  DataStore<T>* getInMemoryStore() { return dynamic_cast<DataStore<T>*>(m_DataStore.get()); }
  const DataStore<T>* getInMemoryStore() const
  {
    return dynamic_cast<const DataStore<T>*>(m_DataStore.get());
  }
  void setDataStore(std::shared_ptr<AbstractDataStore<T>> store) { m_DataStore = std::move(store); }

  // Reads through the store's virtual getValue, so it also works for out-of-core stores.
  T operator[](usize index) const
  {
    if (m_DataStore == nullptr)
    {
      throw std::runtime_error("DataArray::operator[] requires a valid DataStore");
    }
    return m_DataStore->getValue(index);
  }
  // Writable element reference; needs the values in memory.
  T& operator[](usize index)
  {
    auto* store = dynamic_cast<DataStore<T>*>(m_DataStore.get());
    if (store == nullptr)
    {
      throw std::runtime_error("DataArray::operator[] requires a valid DataStore");
    }
    return (*store)[index];
  }
  T at(usize index) const { return getDataStoreRef().at(index); }
  T getValue(usize index) const { return getDataStoreRef().getValue(index); }
  void setValue(usize index, T value) { getDataStoreRef().setValue(index, value); }
  // Element (tuple, component) for tuple-major storage.
  T getComponent(usize tupleIndex, usize componentIndex) const
  {
    return getValue(tupleIndex * getNumberOfComponents() + componentIndex);
  }
  void fill(T value) { getDataStoreRef().fill(value); }

protected:
  DataArray(DataStructure& dataStructure, std::string name, std::shared_ptr<AbstractDataStore<T>> store)
      : IDataArray(dataStructure, std::move(name))
      , m_DataStore(std::move(store))
  {
  }
  DataArray(const DataArray&) = default;

  std::shared_ptr<DataObject> shallowCopy() const override
  {
    return std::shared_ptr<DataObject>(new DataArray(*this));
  }

private:
  std::shared_ptr<AbstractDataStore<T>> m_DataStore;
};

using Int8Array = DataArray<std::int8_t>;
using UInt8Array = DataArray<std::uint8_t>;
using Int16Array = DataArray<std::int16_t>;
using UInt16Array = DataArray<std::uint16_t>;
using Int32Array = DataArray<std::int32_t>;
using UInt32Array = DataArray<std::uint32_t>;
using Int64Array = DataArray<std::int64_t>;
using UInt64Array = DataArray<std::uint64_t>;
using Float32Array = DataArray<float>;
using Float64Array = DataArray<double>;
using BoolArray = DataArray<bool>;
} // namespace zr::core
