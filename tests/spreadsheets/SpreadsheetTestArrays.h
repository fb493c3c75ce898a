#pragma once

// Arrays for the spreadsheet tests: plain arrays in a data structure, and a store that computes its
// values and counts how they are read, to see what a table reads and when.
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/NeighborList.h"
#include "data_bridge/zr_contract/StringArray.h"

#include <atomic>
#include <memory>
#include <string>
#include <vector>

namespace SpreadsheetTest
{
template<class T>
std::shared_ptr<zr::core::IArray> MakeArray(zr::core::DataStructure& ds, const std::string& name,
                                            const std::vector<T>& values, zr::core::usize components = 1)
{
  auto* array = zr::core::DataArray<T>::Create(ds, name, {values.size() / components}, {components});
  for (zr::core::usize i = 0; i < values.size(); ++i)
  {
    array->getDataStoreRef().setValue(i, values[i]);
  }
  return ds.getSharedDataAs<zr::core::IArray>(array->getId());
}

template<class T>
std::shared_ptr<zr::core::IArray> MakeList(zr::core::DataStructure& ds, const std::string& name,
                                           const std::vector<std::vector<T>>& lists)
{
  auto* list = zr::core::NeighborList<T>::Create(ds, name, lists.size());
  for (zr::core::usize i = 0; i < lists.size(); ++i)
  {
    list->setList(i, lists[i]);
  }
  return ds.getSharedDataAs<zr::core::IArray>(list->getId());
}

inline std::shared_ptr<zr::core::IArray> MakeStrings(zr::core::DataStructure& ds, const std::string& name,
                                                     const std::vector<std::string>& values)
{
  auto* strings = zr::core::StringArray::Create(ds, name, values);
  return ds.getSharedDataAs<zr::core::IArray>(strings->getId());
}

// Values computed from the index (index % 1000), no memory of their own. Counts single reads and
// elements read in blocks.
class CountingStore : public zr::core::AbstractDataStore<float>
{
public:
  explicit CountingStore(zr::core::usize tuples)
      : m_TupleShape{tuples}
  {
  }

  zr::core::usize getNumberOfTuples() const override { return m_TupleShape[0]; }
  const zr::core::ShapeType& getTupleShape() const override { return m_TupleShape; }
  zr::core::usize getNumberOfComponents() const override { return 1; }
  const zr::core::ShapeType& getComponentShape() const override { return m_ComponentShape; }
  void resizeTuples(const zr::core::ShapeType&) override {}
  StoreType getStoreType() const override { return StoreType::OutOfCore; }
  std::string getDataFormat() const override { return "computed"; }
  std::unique_ptr<zr::core::IDataStore> deepCopy() const override { return nullptr; }
  std::unique_ptr<zr::core::IDataStore> createNewInstance() const override { return nullptr; }
  zr::core::usize memoryUsage() const override { return 0; }

  float getValue(zr::core::usize index) const override
  {
    ++singleReads;
    return static_cast<float>(index % 1000);
  }
  void setValue(zr::core::usize, float) override {}
  void copyIntoBuffer(zr::core::usize start, float* buffer, zr::core::usize count) const override
  {
    blockReads += count;
    for (zr::core::usize i = 0; i < count; ++i)
    {
      buffer[i] = static_cast<float>((start + i) % 1000);
    }
  }

  mutable std::atomic<zr::core::usize> singleReads{0};
  mutable std::atomic<zr::core::usize> blockReads{0};

private:
  zr::core::ShapeType m_TupleShape;
  zr::core::ShapeType m_ComponentShape{1};
};
} // namespace SpreadsheetTest
