#pragma once

#include <cstdint>
#include <string>

namespace zr::core
{
using usize = std::uint64_t;
using IdType = std::uint64_t;

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
} // namespace zr::core
