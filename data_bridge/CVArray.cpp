#include "data_bridge/CVArray.h"

#include "data_bridge/CVComputeRangeFunctor.h"
#include "data_bridge/ZRVtkObjectName.h"

#include <vtkArrayIteratorTemplate.h>
#include <vtkInformation.h>
#include <vtkInformationDoubleVectorKey.h>
#include <vtkInformationInformationVectorKey.h>
#include <vtkInformationVector.h>
#include <vtkObjectFactory.h>

#include <tbb/partitioner.h>
#include <tbb/task_group.h>

#include <fmt/format.h>

#include <cmath>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <typeinfo>

namespace CV
{
using zr::core::usize;

template<typename T>
Array<T>* Array<T>::New()
{
  VTK_STANDARD_NEW_BODY(Array<T>);
}

template<typename T>
Array<T>::Array() = default;

template<typename T>
Array<T>::~Array() = default;

template<typename T>
vtkTypeBool Array<T>::IsTypeOf(const char* type)
{
  if (std::strcmp(k_ClassName, type) == 0)
  {
    return 1;
  }
  return vtkDataArray::IsTypeOf(type);
}

template<typename T>
vtkTypeBool Array<T>::IsA(const char* type)
{
  return IsTypeOf(type);
}

template<typename T>
Array<T>* Array<T>::SafeDownCast(vtkObjectBase* object)
{
  // The class name is shared by all instantiations, so the element type is checked too.
  auto* array = dynamic_cast<Array<T>*>(object);
  return array;
}

template<typename T>
vtkIdType Array<T>::GetNumberOfGenerationsFromBaseType(const char* type)
{
  if (std::strcmp(k_ClassName, type) == 0)
  {
    return 0;
  }
  return 1 + vtkDataArray::GetNumberOfGenerationsFromBaseType(type);
}

template<typename T>
vtkIdType Array<T>::GetNumberOfGenerationsFromBase(const char* type)
{
  return GetNumberOfGenerationsFromBaseType(type);
}

template<typename T>
vtkObjectBase* Array<T>::NewInstanceInternal() const
{
  Array<T>* instance = Array<T>::New();
  const zr::core::ShapeType componentShape =
      m_DataStore ? zr::core::ShapeType(m_DataStore->getComponentShape()) : zr::core::ShapeType{1};
  instance->setStore(std::make_shared<StoreType>(zr::core::ShapeType{0}, componentShape, T(0)));
  if (m_DataStore)
  {
    instance->SetNumberOfComponents(static_cast<int>(m_DataStore->getNumberOfComponents()));
    instance->Size = 0;
  }
  return instance;
}

template<typename T>
void Array<T>::setStore(std::shared_ptr<StoreType> store)
{
  m_DataStore = std::move(store);
  m_DirectBuffer = (m_DataStore && typeid(*m_DataStore) == typeid(StoreType)) ? m_DataStore->data() : nullptr;
}

template<typename T>
usize Array<T>::elementCount() const
{
  return m_DataStore->getNumberOfTuples() * m_DataStore->getNumberOfComponents();
}

template<typename T>
void Array<T>::adoptStoreShape()
{
  if (this->NumberOfComponents < 1)
  {
    this->NumberOfComponents = 1;
    this->Modified();
  }
  this->LegacyTuple.resize(static_cast<std::size_t>(this->NumberOfComponents));
  // Allocate() sees an unchanged size and allocates nothing, but it resets MaxId.
  const vtkIdType size = this->Size;
  if (this->Allocate(size, 0))
  {
    this->MaxId = size - 1;
  }
}

template<typename T>
void Array<T>::MoveDataStoreFromZorelibDataArray(zr::core::DataArray<T>* dataArray)
{
  if (dataArray == nullptr || !dataArray->getDataFormat().empty())
  {
    return;
  }
  auto store = std::dynamic_pointer_cast<StoreType>(dataArray->getSharedDataStore());
  // Ranges the loader took while the values were in cache. They are copied before setStore, whose
  // writable pointer makes the store drop them.
  std::optional<zr::core::ComponentRanges<T>> knownRanges;
  if (const zr::core::ComponentRanges<T>* ranges = store ? store->getComponentRanges() : nullptr)
  {
    knownRanges = *ranges;
  }
  setStore(std::move(store));
  if (!m_DataStore)
  {
    return;
  }
  SetName(dataArray->getName().c_str());
  this->SetNumberOfComponents(static_cast<int>(m_DataStore->getNumberOfComponents()));
  this->Size = static_cast<vtkIdType>(elementCount());
  this->MaxId = this->Size - 1;
  if (knownRanges.has_value() && knownRanges->getNumberOfComponents() == m_DataStore->getNumberOfComponents())
  {
    cacheComponentRanges(knownRanges->minima(), knownRanges->maxima());
  }
  else
  {
    ComputeMinMaxValuesInternal();
  }
  adoptStoreShape();
  ZRVtk::SetObjectName(this, dataArray->getName());
}

template<typename T>
void Array<T>::ComputeMinMaxValuesInternal()
{
  if (!m_DataStore)
  {
    return;
  }
  const usize numComponents = m_DataStore->getNumberOfComponents();
  const usize numTuples = m_DataStore->getNumberOfTuples();
  if (numComponents == 0)
  {
    return;
  }
  ComputeRangeFunctor<T> functor(m_DataStore->data(), numComponents);
  if (numTuples > 0)
  {
    tbb::task_group_context context;
    tbb::parallel_reduce(tbb::blocked_range<unsigned long>(0, numTuples), functor, tbb::auto_partitioner(),
                         context);
  }
  cacheComponentRanges(functor.minima(), functor.maxima());
}

template<typename T>
void Array<T>::cacheComponentRanges(const std::vector<T>& minima, const std::vector<T>& maxima)
{
  const usize numComponents = minima.size();
  if (numComponents == 0)
  {
    return;
  }
  vtkNew<vtkInformationVector> finiteRanges;
  vtkNew<vtkInformationVector> ranges;
  finiteRanges->SetNumberOfInformationObjects(static_cast<int>(numComponents));
  ranges->SetNumberOfInformationObjects(static_cast<int>(numComponents));
  for (usize comp = 0; comp < numComponents; ++comp)
  {
    const double range[2] = {static_cast<double>(minima[comp]), static_cast<double>(maxima[comp])};
    finiteRanges->GetInformationObject(static_cast<int>(comp))
        ->Set(vtkDataArray::COMPONENT_RANGE(), range, 2);
    ranges->GetInformationObject(static_cast<int>(comp))->Set(vtkDataArray::COMPONENT_RANGE(), range, 2);
  }
  vtkInformation* info = this->GetInformation();
  info->Set(vtkAbstractArray::PER_FINITE_COMPONENT(), finiteRanges);
  // NaN never enters the scan, so the same values are what GetRange() would compute; caching them
  // there too keeps mappers and filters from scanning the data again.
  info->Set(vtkAbstractArray::PER_COMPONENT(), ranges);
}

template<typename T>
T Array<T>::GetValue(vtkIdType valueIdx) const
{
  if (m_DirectBuffer != nullptr)
  {
    return m_DirectBuffer[valueIdx];
  }
  if (!m_DataStore)
  {
    throw std::runtime_error("CV::Array::GetValue() does not have an underlying zr::core::DataStore");
  }
  return m_DataStore->getValue(static_cast<usize>(valueIdx));
}

template<typename T>
void Array<T>::SetValue(vtkIdType valueIdx, T value)
{
  if (m_DirectBuffer != nullptr)
  {
    m_DirectBuffer[valueIdx] = value;
    return;
  }
  if (!m_DataStore)
  {
    throw std::runtime_error("CV::Array::SetValue() does not have an underlying zr::core::DataStore");
  }
  m_DataStore->setValue(static_cast<usize>(valueIdx), value);
}

template<typename T>
T Array<T>::GetTypedComponent(vtkIdType tupleIdx, int compIdx) const
{
  if (!m_DataStore)
  {
    throw std::runtime_error(
        "CV::Array::GetTypedComponent() does not have an underlying zr::core::DataStore");
  }
  const usize numComponents = m_DataStore->getNumberOfComponents();
  if (compIdx < 0 && numComponents > 1)
  {
    // The magnitude asked for by a negative component is the root of the plain sum of the components,
    // summed in the element type. Consumers rely on this exact value.
    T sum = T(0);
    for (usize comp = 0; comp < numComponents; ++comp)
    {
      sum = static_cast<T>(sum + m_DataStore->getValue(static_cast<usize>(tupleIdx) * numComponents + comp));
    }
    if constexpr (std::is_floating_point_v<T>)
    {
      return std::sqrt(sum);
    }
    else
    {
      const double root = std::sqrt(static_cast<double>(sum));
      return std::isnan(root) ? T(0) : static_cast<T>(root);
    }
  }
  if (compIdx < 0)
  {
    compIdx = 0;
  }
  const usize elementIndex = static_cast<usize>(tupleIdx) * numComponents + static_cast<usize>(compIdx);
  const usize numElements = elementCount();
  if (elementIndex >= numElements)
  {
    throw std::runtime_error(fmt::format("CV::Array::GetTypedComponent() 'elementIndex + compIdx' of {} is "
                                         "greater than the number of elements {}",
                                         elementIndex, numElements));
  }
  return m_DirectBuffer != nullptr ? m_DirectBuffer[elementIndex] : m_DataStore->getValue(elementIndex);
}

template<typename T>
void Array<T>::SetTypedComponent(vtkIdType tupleIdx, int compIdx, T value)
{
  if (!m_DataStore)
  {
    throw std::runtime_error(
        "CV::Array::SetTypedComponent() does not have an underlying zr::core::DataStore");
  }
  const usize numComponents = m_DataStore->getNumberOfComponents();
  // A negative component enters the index as it stands and lands far outside the buffer.
  const usize elementIndex = static_cast<usize>(tupleIdx) * numComponents + static_cast<usize>(compIdx);
  const usize numElements = elementCount();
  if (elementIndex >= numElements)
  {
    throw std::runtime_error(fmt::format("CV::Array::SetTypedComponent() 'elementIndex + compIdx' of {} is "
                                         "greater than the number of elements {}",
                                         elementIndex, numElements));
  }
  if (m_DirectBuffer != nullptr)
  {
    m_DirectBuffer[elementIndex] = value;
  }
  else
  {
    m_DataStore->setValue(elementIndex, value);
  }
}

template<typename T>
void Array<T>::GetTypedTuple(vtkIdType tupleIdx, T* tuple) const
{
  for (int comp = 0; comp < this->NumberOfComponents; ++comp)
  {
    tuple[comp] = GetTypedComponent(tupleIdx, comp);
  }
}

template<typename T>
void Array<T>::SetTypedTuple(vtkIdType tupleIdx, const T* tuple)
{
  for (int comp = 0; comp < this->NumberOfComponents; ++comp)
  {
    SetTypedComponent(tupleIdx, comp, tuple[comp]);
  }
}

template<typename T>
bool Array<T>::AllocateTuples(vtkIdType numTuples)
{
  const usize tuples = static_cast<usize>(numTuples);
  if (m_DataStore && m_DataStore->getNumberOfTuples() == tuples)
  {
    // Same size: the shared buffer is zeroed in place, and the host array sees the zeros.
    m_DataStore->fill(T(0));
    return true;
  }
  const zr::core::ShapeType componentShape =
      m_DataStore ? zr::core::ShapeType(m_DataStore->getComponentShape()) : zr::core::ShapeType{1};
  // From here on the array has a store of its own and no longer aliases the host array.
  setStore(std::make_shared<StoreType>(zr::core::ShapeType{tuples}, componentShape, T(0)));
  this->NumberOfComponents = static_cast<int>(m_DataStore->getNumberOfComponents());
  this->Size = static_cast<vtkIdType>(elementCount());
  adoptStoreShape();
  return true;
}

template<typename T>
bool Array<T>::ReallocateTuples(vtkIdType numTuples)
{
  if (!m_DataStore)
  {
    throw std::runtime_error("CV::Array::ReallocateTuples() does not have an underlying zr::core::DataStore");
  }
  auto newStore = std::make_shared<StoreType>(zr::core::ShapeType{static_cast<usize>(numTuples)},
                                              zr::core::ShapeType(m_DataStore->getComponentShape()), T(0));
  const usize oldCount = elementCount();
  const usize newCount = newStore->getNumberOfTuples() * newStore->getNumberOfComponents();
  const usize copyCount = std::min(oldCount, newCount);
  for (usize index = 0; index < copyCount; ++index)
  {
    newStore->setValue(index, m_DataStore->getValue(index));
  }
  setStore(std::move(newStore));
  this->NumberOfComponents = static_cast<int>(m_DataStore->getNumberOfComponents());
  this->Size = static_cast<vtkIdType>(elementCount());
  adoptStoreShape();
  return true;
}

template<typename T>
void* Array<T>::GetVoidPointer(vtkIdType valueIdx)
{
  if (!m_DataStore)
  {
    return nullptr;
  }
  return m_DataStore->data() + valueIdx;
}

template<typename T>
void Array<T>::SetName(const char* name)
{
  if (name == nullptr && this->Name == nullptr)
  {
    return;
  }
  if (name != nullptr && this->Name != nullptr && std::strcmp(name, this->Name) == 0)
  {
    return;
  }
  delete[] this->Name;
  this->Name = nullptr;
  if (name != nullptr)
  {
    const std::size_t length = std::strlen(name) + 1;
    this->Name = new char[length];
    std::memcpy(this->Name, name, length);
  }
  this->Modified();
}

template<typename T>
vtkArrayIterator* Array<T>::NewIterator()
{
  vtkArrayIteratorTemplate<T>* iterator = vtkArrayIteratorTemplate<T>::New();
  iterator->Initialize(this);
  return iterator;
}

template class Array<std::int8_t>;
template class Array<std::uint8_t>;
template class Array<std::int16_t>;
template class Array<std::uint16_t>;
template class Array<std::int32_t>;
template class Array<std::uint32_t>;
template class Array<std::int64_t>;
template class Array<std::uint64_t>;
template class Array<float>;
template class Array<double>;
} // namespace CV
