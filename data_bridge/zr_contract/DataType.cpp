#include "data_bridge/zr_contract/DataType.h"

#include <stdexcept>

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

std::optional<usize> CheckedMultiply(usize a, usize b)
{
  usize product = 0;
  if (__builtin_mul_overflow(a, b, &product))
  {
    return std::nullopt;
  }
  return product;
}

std::optional<usize> CheckedAdd(usize a, usize b)
{
  usize sum = 0;
  if (__builtin_add_overflow(a, b, &sum))
  {
    return std::nullopt;
  }
  return sum;
}

std::optional<usize> CheckedShapeProduct(const ShapeType& shape)
{
  if (shape.empty())
  {
    return 0;
  }
  usize product = 1;
  for (usize extent : shape)
  {
    std::optional<usize> next = CheckedMultiply(product, extent);
    if (!next.has_value())
    {
      return std::nullopt;
    }
    product = *next;
  }
  return product;
}

usize ShapeProduct(const ShapeType& shape)
{
  std::optional<usize> product = CheckedShapeProduct(shape);
  if (!product.has_value())
  {
    std::string extents;
    for (usize extent : shape)
    {
      extents += (extents.empty() ? "" : ", ") + std::to_string(extent);
    }
    throw std::overflow_error("The shape {" + extents + "} has more elements than 64 bits can count");
  }
  return *product;
}
} // namespace zr::core
