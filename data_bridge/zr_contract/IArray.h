#pragma once

#include "data_bridge/zr_contract/DataObject.h"
#include "data_bridge/zr_contract/DataType.h"

namespace zr::core
{
// Anything with tuples and components: data arrays, neighbour lists, string arrays.
class IArray : public DataObject
{
public:
  enum class ArrayType : std::uint8_t
  {
    DataArray = 0,
    NeighborListArray = 1,
    StringArray = 2
  };

  ~IArray() override = default;

  virtual ArrayType getArrayType() const = 0;
  virtual ShapeType getTupleShape() const = 0;
  virtual ShapeType getComponentShape() const = 0;
  // Element type. A StringArray reports int8 (its characters); tell it apart by ArrayType first.
  virtual DataType getDataType() const = 0;
  // Empty when the values are in memory and may be read by address.
  virtual std::string getDataFormat() const { return ""; }

  usize getNumberOfTuples() const { return ShapeProduct(getTupleShape()); }
  usize getNumberOfComponents() const { return ShapeProduct(getComponentShape()); }
  usize getSize() const { return getNumberOfTuples() * getNumberOfComponents(); }

protected:
  IArray(DataStructure& dataStructure, std::string name)
      : DataObject(dataStructure, std::move(name))
  {
  }
  IArray(const IArray&) = default;
};
} // namespace zr::core
