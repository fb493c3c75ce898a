#pragma once

#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataStore.h"

#include <vtkGenericDataArray.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace CV
{
/**
 * A VTK data array whose memory is the DataStore of a host array. The array shares ownership of the
 * store with the host's DataArray, so both sides read and write the same buffer and a dataset that
 * outlives its DataStructure stays valid.
 *
 * Instantiated for the ten numeric element types; booleans are never wrapped.
 */
template<typename T>
class Array : public vtkGenericDataArray<Array<T>, T>
{
  using GenericDataArrayType = vtkGenericDataArray<Array<T>, T>;

public:
  using SelfType = Array<T>;
  using ValueType = T;
  using StoreType = zr::core::DataStore<T>;

  static Array* New();

  // Run-time type information by hand: every instantiation answers to the same class name.
  static constexpr const char* k_ClassName = "CV::Array<T>";
  static vtkTypeBool IsTypeOf(const char* type);
  vtkTypeBool IsA(const char* type) override;
  static Array* SafeDownCast(vtkObjectBase* object);
  static vtkIdType GetNumberOfGenerationsFromBaseType(const char* type);
  vtkIdType GetNumberOfGenerationsFromBase(const char* type) override;
  Array* NewInstance() const { return SafeDownCast(NewInstanceInternal()); }

  void* GetVoidPointer(vtkIdType valueIdx) override;
  void SetName(const char* name) override;
  vtkArrayIterator* NewIterator() override;

  // Accessors that vtkGenericDataArray asks for by name.
  ValueType GetValue(vtkIdType valueIdx) const;
  void SetValue(vtkIdType valueIdx, ValueType value);
  void GetTypedTuple(vtkIdType tupleIdx, ValueType* tuple) const;
  void SetTypedTuple(vtkIdType tupleIdx, const ValueType* tuple);
  ValueType GetTypedComponent(vtkIdType tupleIdx, int compIdx) const;
  void SetTypedComponent(vtkIdType tupleIdx, int compIdx, ValueType value);

  /**
   * Shares the store of the host array (nothing is moved: both sides hold the same buffer). A null
   * array or one whose store lives out of core does nothing.
   */
  void MoveDataStoreFromZorelibDataArray(zr::core::DataArray<T>* dataArray);

  /**
   * Computes the per-component ranges once, in parallel, and caches them in the array's information
   * so that VTK never scans the data for a range itself. Sharing a store that already knows its
   * ranges (the loader takes them while reading) caches those instead of scanning.
   */
  void ComputeMinMaxValuesInternal();

  const std::shared_ptr<StoreType>& GetDataStore() const { return m_DataStore; }

  /**
   * With the store's current tuple count, zeroes the shared buffer (the host array sees the zeros);
   * otherwise swaps in a new one-dimensional store of its own.
   */
  bool AllocateTuples(vtkIdType numTuples);
  // A new one-dimensional store keeping the leading values; the array no longer aliases the host.
  bool ReallocateTuples(vtkIdType numTuples);

protected:
  Array();
  ~Array() override;

  const char* GetClassNameInternal() const override { return k_ClassName; }
  vtkObjectBase* NewInstanceInternal() const override;

  friend GenericDataArrayType;

private:
  Array(const Array&) = delete;
  void operator=(const Array&) = delete;

  void setStore(std::shared_ptr<StoreType> store);
  void adoptStoreShape(); // steps shared by sharing and (re)allocation
  zr::core::usize elementCount() const;
  // Stores (minimum, maximum) per component under PER_FINITE_COMPONENT and PER_COMPONENT.
  void cacheComponentRanges(const std::vector<T>& minima, const std::vector<T>& maxima);

  std::shared_ptr<StoreType> m_DataStore;
  // Points into the store's buffer when the store is a plain DataStore<T>, whose getValue and
  // setValue are plain loads and stores; other stores go through their virtual accessors.
  T* m_DirectBuffer = nullptr;
};

#define ZR_CV_ARRAY_EXTERN(T) extern template class Array<T>;
ZR_CV_ARRAY_EXTERN(std::int8_t)
ZR_CV_ARRAY_EXTERN(std::uint8_t)
ZR_CV_ARRAY_EXTERN(std::int16_t)
ZR_CV_ARRAY_EXTERN(std::uint16_t)
ZR_CV_ARRAY_EXTERN(std::int32_t)
ZR_CV_ARRAY_EXTERN(std::uint32_t)
ZR_CV_ARRAY_EXTERN(std::int64_t)
ZR_CV_ARRAY_EXTERN(std::uint64_t)
ZR_CV_ARRAY_EXTERN(float)
ZR_CV_ARRAY_EXTERN(double)
#undef ZR_CV_ARRAY_EXTERN
} // namespace CV
