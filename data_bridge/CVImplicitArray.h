#pragma once

#include <vtkAOSDataArrayTemplate.h>
#include <vtkGenericDataArray.h>
#include <vtkObjectFactory.h>

#include <type_traits>
#include <utility>

namespace CV
{
/**
 * A read-only VTK data array whose values are computed from their index by a backend functor, so
 * it costs no memory per value (VTK 9.1 has no vtkImplicitArray). The backend is called as
 * `backend(valueIndex)` and its return type is the element type.
 */
template<class BackendT>
class ImplicitArray
    : public vtkGenericDataArray<ImplicitArray<BackendT>,
                                 std::decay_t<decltype(std::declval<BackendT>()(vtkIdType{0}))>>
{
public:
  using ValueType = std::decay_t<decltype(std::declval<BackendT>()(vtkIdType{0}))>;
  using SelfType = ImplicitArray<BackendT>;
  using GenericDataArrayType = vtkGenericDataArray<SelfType, ValueType>;

  vtkAbstractTemplateTypeMacro(SelfType, GenericDataArrayType);

  static ImplicitArray* New() { VTK_STANDARD_NEW_BODY(ImplicitArray); }

  void SetBackend(BackendT backend) { m_Backend = std::move(backend); }
  const BackendT& GetBackend() const { return m_Backend; }

  /** Sets the shape without allocating anything: the values come from the backend. */
  void SetShape(int numComponents, vtkIdType numTuples)
  {
    this->SetNumberOfComponents(numComponents);
    this->Size = numTuples * numComponents;
    this->MaxId = this->Size - 1;
    this->Modified();
  }

  ValueType GetValue(vtkIdType valueIdx) const { return m_Backend(valueIdx); }
  void SetValue(vtkIdType, ValueType) {}
  void GetTypedTuple(vtkIdType tupleIdx, ValueType* tuple) const
  {
    for (int comp = 0; comp < this->NumberOfComponents; ++comp)
    {
      tuple[comp] = GetValue(tupleIdx * this->NumberOfComponents + comp);
    }
  }
  void SetTypedTuple(vtkIdType, const ValueType*) {}
  ValueType GetTypedComponent(vtkIdType tupleIdx, int compIdx) const
  {
    return GetValue(tupleIdx * this->NumberOfComponents + compIdx);
  }
  void SetTypedComponent(vtkIdType, int, ValueType) {}

protected:
  ImplicitArray() = default;
  ~ImplicitArray() override = default;

  // The array is a view: resizing requests keep the computed shape.
  bool AllocateTuples(vtkIdType) { return true; }
  bool ReallocateTuples(vtkIdType) { return true; }

  // Filters that copy attribute data make new instances and fill them: they get a plain array.
  vtkObjectBase* NewInstanceInternal() const override { return vtkAOSDataArrayTemplate<ValueType>::New(); }

  friend GenericDataArrayType;

private:
  ImplicitArray(const ImplicitArray&) = delete;
  void operator=(const ImplicitArray&) = delete;

  BackendT m_Backend{};
};
} // namespace CV
