#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace zr::core
{
using usize = std::uint64_t;
using IdType = std::uint64_t;
// Shapes are listed slowest-varying first (Z, Y, X for an image's cells).
using ShapeType = std::vector<usize>;

// Element types of arrays and stores; the number is what every dispatch switches on.
enum class DataType : std::uint8_t
{
  int8 = 0,
  uint8 = 1,
  int16 = 2,
  uint16 = 3,
  int32 = 4,
  uint32 = 5,
  int64 = 6,
  uint64 = 7,
  float32 = 8,
  float64 = 9,
  boolean = 10
};

std::string DataTypeToString(DataType dataType);

// Width in bytes of one element; 0 for a value outside the enumeration.
usize GetDataTypeSize(DataType dataType);

// Product of the extents; 1 for an empty shape is deliberately not used: empty means no elements.
// Throws std::overflow_error when the product does not fit 64 bits: a shape that big cannot be
// allocated, and a product taken modulo 2^64 would let a store smaller than its shape through.
usize ShapeProduct(const ShapeType& shape);

// The same product, or nothing when it overflows; for shapes that come from files.
std::optional<usize> CheckedShapeProduct(const ShapeType& shape);

// a * b, or nothing when it overflows.
std::optional<usize> CheckedMultiply(usize a, usize b);

// a + b, or nothing when it overflows.
std::optional<usize> CheckedAdd(usize a, usize b);

template<class T>
constexpr DataType GetDataType()
{
  if constexpr (std::is_same_v<T, std::int8_t>)
    return DataType::int8;
  else if constexpr (std::is_same_v<T, std::uint8_t>)
    return DataType::uint8;
  else if constexpr (std::is_same_v<T, std::int16_t>)
    return DataType::int16;
  else if constexpr (std::is_same_v<T, std::uint16_t>)
    return DataType::uint16;
  else if constexpr (std::is_same_v<T, std::int32_t>)
    return DataType::int32;
  else if constexpr (std::is_same_v<T, std::uint32_t>)
    return DataType::uint32;
  else if constexpr (std::is_same_v<T, std::int64_t>)
    return DataType::int64;
  else if constexpr (std::is_same_v<T, std::uint64_t>)
    return DataType::uint64;
  else if constexpr (std::is_same_v<T, float>)
    return DataType::float32;
  else if constexpr (std::is_same_v<T, double>)
    return DataType::float64;
  else if constexpr (std::is_same_v<T, bool>)
    return DataType::boolean;
  else
    static_assert(sizeof(T) == 0, "Unsupported element type");
}
} // namespace zr::core
