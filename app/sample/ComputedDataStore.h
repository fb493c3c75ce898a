#pragma once

#include "data_bridge/zr_contract/AbstractDataStore.h"
#include "data_bridge/zr_contract/DataStore.h"

#include <functional>
#include <memory>
#include <stdexcept>
#include <vector>

namespace zr::sample
{
using zr::core::ShapeType;
using zr::core::usize;

// A read-only store whose values are computed, a run of tuples at a time, when they are read. The
// writer copies such a store out in slabs, so a large synthetic array never exists whole in memory.
template<class T>
class ComputedDataStore : public zr::core::AbstractDataStore<T>
{
public:
  // Fills tupleCount tuples starting at firstTuple (tupleCount * components values).
  using Filler = std::function<void(usize firstTuple, usize tupleCount, T* out)>;

  ComputedDataStore(ShapeType tupleShape, ShapeType componentShape, Filler filler)
      : m_TupleShape(std::move(tupleShape))
      , m_ComponentShape(std::move(componentShape))
      , m_Filler(std::move(filler))
  {
  }

  usize getNumberOfTuples() const override { return zr::core::ShapeProduct(m_TupleShape); }
  const ShapeType& getTupleShape() const override { return m_TupleShape; }
  usize getNumberOfComponents() const override { return zr::core::ShapeProduct(m_ComponentShape); }
  const ShapeType& getComponentShape() const override { return m_ComponentShape; }
  void resizeTuples(const ShapeType&) override
  {
    throw std::runtime_error("ComputedDataStore cannot be resized");
  }
  zr::core::IDataStore::StoreType getStoreType() const override
  {
    return zr::core::IDataStore::StoreType::OutOfCore;
  }
  std::string getDataFormat() const override { return "Computed"; }
  usize memoryUsage() const override { return 0; }

  T getValue(usize index) const override
  {
    const usize components = getNumberOfComponents();
    std::unique_ptr<T[]> tuple(new T[components]);
    m_Filler(index / components, 1, tuple.get());
    return tuple[index % components];
  }
  void setValue(usize, T) override { throw std::runtime_error("ComputedDataStore values are read-only"); }

  void copyIntoBuffer(usize start, T* buffer, usize count) const override
  {
    if (count == 0)
    {
      return;
    }
    const usize components = getNumberOfComponents();
    const usize firstTuple = start / components;
    const usize lastTuple = (start + count - 1) / components;
    const usize tupleCount = lastTuple - firstTuple + 1;
    if (start % components == 0 && count == tupleCount * components)
    {
      m_Filler(firstTuple, tupleCount, buffer);
      return;
    }
    std::unique_ptr<T[]> tuples(new T[tupleCount * components]);
    m_Filler(firstTuple, tupleCount, tuples.get());
    std::copy_n(tuples.get() + (start - firstTuple * components), count, buffer);
  }

  std::unique_ptr<zr::core::IDataStore> deepCopy() const override
  {
    return std::make_unique<ComputedDataStore<T>>(*this);
  }
  std::unique_ptr<zr::core::IDataStore> createNewInstance() const override
  {
    return std::make_unique<zr::core::DataStore<T>>(ShapeType{0}, m_ComponentShape, T{});
  }

private:
  ShapeType m_TupleShape;
  ShapeType m_ComponentShape;
  Filler m_Filler;
};
} // namespace zr::sample
