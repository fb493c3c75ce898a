#include "data_bridge/zr_contract/DataType.h"

namespace zr::core
{
std::string DataTypeToString(DataType dataType)
{
  switch (dataType)
  {
  case DataType::int8:
    return "int8";
  case DataType::uint8:
    return "uint8";
  case DataType::int16:
    return "int16";
  case DataType::uint16:
    return "uint16";
  case DataType::int32:
    return "int32";
  case DataType::uint32:
    return "uint32";
  case DataType::int64:
    return "int64";
  case DataType::uint64:
    return "uint64";
  case DataType::float32:
    return "float32";
  case DataType::float64:
    return "float64";
  case DataType::boolean:
    return "boolean";
  }
  return "unknown";
}

usize GetDataTypeSize(DataType dataType)
{
  switch (dataType)
  {
  case DataType::int8:
  case DataType::uint8:
  case DataType::boolean:
    return 1;
  case DataType::int16:
  case DataType::uint16:
    return 2;
  case DataType::int32:
  case DataType::uint32:
  case DataType::float32:
    return 4;
  case DataType::int64:
  case DataType::uint64:
  case DataType::float64:
    return 8;
  }
  return 0;
}

usize ShapeProduct(const ShapeType& shape)
{
  if (shape.empty())
  {
    return 0;
  }
  usize product = 1;
  for (usize extent : shape)
  {
    product *= extent;
  }
  return product;
}
} // namespace zr::core
