#pragma once

#include "data_bridge/zr_contract/AbstractDataStore.h"
#include "data_bridge/zr_contract/DataStore.h"

#include <stdexcept>

namespace zr::core
{
// Shapes without values: what a skeleton import (preflight) puts into arrays. Reading or writing a
// value is a programming fault; load the array with KESTRIX::FinishImportingObject first.
template<class T>
class EmptyDataStore : public AbstractDataStore<T>
{
public:
  static constexpr const char k_Format[] = "Empty";

  EmptyDataStore(const ShapeType& tupleShape, const ShapeType& componentShape)
      : m_TupleShape(tupleShape)
      , m_ComponentShape(componentShape)
  {
  }

  usize getNumberOfTuples() const override { return ShapeProduct(m_TupleShape); }
  const ShapeType& getTupleShape() const override { return m_TupleShape; }
  usize getNumberOfComponents() const override { return ShapeProduct(m_ComponentShape); }
  const ShapeType& getComponentShape() const override { return m_ComponentShape; }
  void resizeTuples(const ShapeType& tupleShape) override { m_TupleShape = tupleShape; }
  IDataStore::StoreType getStoreType() const override { return IDataStore::StoreType::Empty; }
  std::string getDataFormat() const override { return k_Format; }
  usize memoryUsage() const override { return 0; }
  T getValue(usize) const override
  {
    throw std::runtime_error("EmptyDataStore::getValue() the array was imported without its values");
  }
  void setValue(usize, T) override
  {
    throw std::runtime_error("EmptyDataStore::setValue() the array was imported without its values");
  }
  std::unique_ptr<IDataStore> deepCopy() const override { return std::make_unique<EmptyDataStore<T>>(*this); }
  std::unique_ptr<IDataStore> createNewInstance() const override
  {
    return std::make_unique<DataStore<T>>(ShapeType{0}, m_ComponentShape, T{});
  }

private:
  ShapeType m_TupleShape;
  ShapeType m_ComponentShape;
};
} // namespace zr::core
