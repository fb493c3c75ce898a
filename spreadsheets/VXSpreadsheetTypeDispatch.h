#pragma once

#include "data_bridge/zr_contract/DataType.h"

#include <cstdint>

/**
 * @brief Calls a generic callable with a tag of the element type of a DataType; false for a value
 * outside the enumeration, or for booleans where they do not exist (neighbour lists).
 */
class VXSpreadsheetTypeDispatch
{
public:
  template<class T>
  struct Tag
  {
    using type = T;
  };

  template<bool WithBool, class FuncT>
  static bool Run(zr::core::DataType dataType, FuncT&& func)
  {
    using zr::core::DataType;
    switch (dataType)
    {
    case DataType::int8:
      func(Tag<std::int8_t>{});
      return true;
    case DataType::uint8:
      func(Tag<std::uint8_t>{});
      return true;
    case DataType::int16:
      func(Tag<std::int16_t>{});
      return true;
    case DataType::uint16:
      func(Tag<std::uint16_t>{});
      return true;
    case DataType::int32:
      func(Tag<std::int32_t>{});
      return true;
    case DataType::uint32:
      func(Tag<std::uint32_t>{});
      return true;
    case DataType::int64:
      func(Tag<std::int64_t>{});
      return true;
    case DataType::uint64:
      func(Tag<std::uint64_t>{});
      return true;
    case DataType::float32:
      func(Tag<float>{});
      return true;
    case DataType::float64:
      func(Tag<double>{});
      return true;
    case DataType::boolean:
      if constexpr (WithBool)
      {
        func(Tag<bool>{});
        return true;
      }
      return false;
    }
    return false;
  }
};
