#pragma once

#include "data_bridge/zr_contract/AbstractDataStore.h"
#include "data_bridge/zr_contract/ComponentRanges.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <optional>

namespace zr::core
{
// The in-memory store: one contiguous buffer, elements in tuple-major order.
template<class T>
class DataStore : public AbstractDataStore<T>
{
public:
  // With an initial value the buffer is filled with it; without, the values are left unset.
  DataStore(const ShapeType& tupleShape, const ShapeType& componentShape, std::optional<T> initValue)
      : m_ComponentShape(componentShape)
      , m_TupleShape(tupleShape)
      , m_NumComponents(ShapeProduct(componentShape))
      , m_NumTuples(ShapeProduct(tupleShape))
      , m_InitValue(initValue)
  {
    allocate();
  }

  // Takes over an existing buffer of tuples * components elements.
  DataStore(std::unique_ptr<T[]> buffer, const ShapeType& tupleShape, const ShapeType& componentShape)
      : m_ComponentShape(componentShape)
      , m_TupleShape(tupleShape)
      , m_Data(std::move(buffer))
      , m_NumComponents(ShapeProduct(componentShape))
      , m_NumTuples(ShapeProduct(tupleShape))
  {
  }

  DataStore(const DataStore& other)
      : AbstractDataStore<T>(other)
      , m_ComponentShape(other.m_ComponentShape)
      , m_TupleShape(other.m_TupleShape)
      , m_NumComponents(other.m_NumComponents)
      , m_NumTuples(other.m_NumTuples)
      , m_InitValue(other.m_InitValue)
      , m_ComponentRanges(other.m_ComponentRanges)
      , m_RangesValid(other.m_RangesValid.load(std::memory_order_relaxed))
  {
    allocate();
    std::copy_n(other.m_Data.get(), this->getSize(), m_Data.get());
  }

  ~DataStore() override = default;

  usize getNumberOfTuples() const override { return m_NumTuples; }
  const ShapeType& getTupleShape() const override { return m_TupleShape; }
  usize getNumberOfComponents() const override { return m_NumComponents; }
  const ShapeType& getComponentShape() const override { return m_ComponentShape; }
  IDataStore::StoreType getStoreType() const override { return IDataStore::StoreType::InMemory; }
  std::string getDataFormat() const override { return ""; }
  usize memoryUsage() const override { return this->getSize() * sizeof(T); }
  std::optional<T> getInitValue() const { return m_InitValue; }

  // Keeps the leading values; new tuples get the initial value when there is one.
  void resizeTuples(const ShapeType& tupleShape) override
  {
    dataChanged();
    const usize oldSize = this->getSize();
    auto oldData = std::move(m_Data);
    m_TupleShape = tupleShape;
    m_NumTuples = ShapeProduct(tupleShape);
    allocate();
    std::copy_n(oldData.get(), std::min(oldSize, this->getSize()), m_Data.get());
  }

  T getValue(usize index) const override { return m_Data[index]; }
  void setValue(usize index, T value) override
  {
    m_Data[index] = value;
    dataChanged();
  }
  T at(usize index) const override
  {
    if (index >= this->getSize())
    {
      throw std::out_of_range(
          fmt::format("DataStore::at({}) is out of bounds. Size={}", index, this->getSize()));
    }
    return m_Data[index];
  }
  void fill(T value) override
  {
    std::fill_n(m_Data.get(), this->getSize(), value);
    dataChanged();
  }
  void copyIntoBuffer(usize start, T* buffer, usize count) const override
  {
    std::copy_n(m_Data.get() + start, count, buffer);
  }

  // Each non-const access may write, so it drops the known ranges.
  T* data()
  {
    dataChanged();
    return m_Data.get();
  }
  const T* data() const { return m_Data.get(); }
  T& operator[](usize index)
  {
    dataChanged();
    return m_Data[index];
  }
  const T& operator[](usize index) const { return m_Data[index]; }
  T* begin()
  {
    dataChanged();
    return m_Data.get();
  }
  T* end()
  {
    dataChanged();
    return m_Data.get() + this->getSize();
  }
  const T* begin() const { return m_Data.get(); }
  const T* end() const { return m_Data.get() + this->getSize(); }

  std::unique_ptr<IDataStore> deepCopy() const override { return std::make_unique<DataStore<T>>(*this); }
  std::unique_ptr<IDataStore> createNewInstance() const override
  {
    return std::make_unique<DataStore<T>>(ShapeType{0}, m_ComponentShape, m_InitValue);
  }

  /**
   * Per-component minima and maxima that whoever filled the buffer gathered on the way, so that
   * consumers need not scan the values again. Null unless they are known to hold: every write, and
   * every non-const access to the buffer, drops them.
   */
  const ComponentRanges<T>* getComponentRanges() const
  {
    return m_RangesValid.load(std::memory_order_acquire) ? &*m_ComponentRanges : nullptr;
  }
  // For the one who just filled the buffer, before the store is shared. Ignored unless the ranges
  // have this store's component count.
  void setComponentRanges(ComponentRanges<T> ranges)
  {
    if (ranges.getNumberOfComponents() == m_NumComponents)
    {
      m_ComponentRanges = std::move(ranges);
      m_RangesValid.store(true, std::memory_order_release);
    }
  }

private:
  // Only a flag is cleared (never the ranges freed), so writers on several threads may all call it.
  void dataChanged()
  {
    if (m_RangesValid.load(std::memory_order_relaxed))
    {
      m_RangesValid.store(false, std::memory_order_relaxed);
    }
  }

  void allocate()
  {
    const usize size = ShapeProduct({m_NumTuples, m_NumComponents});
    // Default-initialised on purpose: large arrays are written right after creation.
    m_Data.reset(size > 0 ? new T[size] : nullptr);
    if (m_InitValue.has_value() && size > 0)
    {
      std::fill_n(m_Data.get(), size, *m_InitValue);
    }
  }

  ShapeType m_ComponentShape;
  ShapeType m_TupleShape;
  std::unique_ptr<T[]> m_Data;
  usize m_NumComponents = 0;
  usize m_NumTuples = 0;
  std::optional<T> m_InitValue;
  std::optional<ComponentRanges<T>> m_ComponentRanges;
  std::atomic<bool> m_RangesValid{false};
};
} // namespace zr::core
