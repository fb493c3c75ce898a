#pragma once

#include "data_bridge/zr_contract/DataType.h"

#include <fmt/format.h>

#include <cstdint>
#include <stdexcept>
#include <type_traits>
#include <utility>

// Turning a run-time DataType into a call of a function template.
//
//   struct PrintSize
//   {
//     template <class T>
//     void operator()(std::ostream& out) const { out << sizeof(T); }
//   };
//   ExecuteDataFunction(PrintSize{}, array.getDataType(), std::cout);
namespace zr::core
{
// Calls func.template operator()<T>(args...) for the element type of dataType, booleans included.
template<class FuncT, class... ArgsT>
auto ExecuteDataFunction(FuncT&& func, DataType dataType, ArgsT&&... args)
{
  switch (dataType)
  {
  case DataType::int8:
    return func.template operator()<std::int8_t>(std::forward<ArgsT>(args)...);
  case DataType::uint8:
    return func.template operator()<std::uint8_t>(std::forward<ArgsT>(args)...);
  case DataType::int16:
    return func.template operator()<std::int16_t>(std::forward<ArgsT>(args)...);
  case DataType::uint16:
    return func.template operator()<std::uint16_t>(std::forward<ArgsT>(args)...);
  case DataType::int32:
    return func.template operator()<std::int32_t>(std::forward<ArgsT>(args)...);
  case DataType::uint32:
    return func.template operator()<std::uint32_t>(std::forward<ArgsT>(args)...);
  case DataType::int64:
    return func.template operator()<std::int64_t>(std::forward<ArgsT>(args)...);
  case DataType::uint64:
    return func.template operator()<std::uint64_t>(std::forward<ArgsT>(args)...);
  case DataType::float32:
    return func.template operator()<float>(std::forward<ArgsT>(args)...);
  case DataType::float64:
    return func.template operator()<double>(std::forward<ArgsT>(args)...);
  case DataType::boolean:
    return func.template operator()<bool>(std::forward<ArgsT>(args)...);
  }
  throw std::runtime_error(
      "zr::core::ExecuteDataFunction<...>(FuncT&& func, DataType dataType, ArgsT&&... args). "
      "Error: Invalid DataType");
}

// Same for the ten numeric types: there are no neighbour lists of booleans.
template<class FuncT, class... ArgsT>
auto ExecuteNeighborFunction(FuncT&& func, DataType dataType, ArgsT&&... args)
{
  switch (dataType)
  {
  case DataType::int8:
    return func.template operator()<std::int8_t>(std::forward<ArgsT>(args)...);
  case DataType::uint8:
    return func.template operator()<std::uint8_t>(std::forward<ArgsT>(args)...);
  case DataType::int16:
    return func.template operator()<std::int16_t>(std::forward<ArgsT>(args)...);
  case DataType::uint16:
    return func.template operator()<std::uint16_t>(std::forward<ArgsT>(args)...);
  case DataType::int32:
    return func.template operator()<std::int32_t>(std::forward<ArgsT>(args)...);
  case DataType::uint32:
    return func.template operator()<std::uint32_t>(std::forward<ArgsT>(args)...);
  case DataType::int64:
    return func.template operator()<std::int64_t>(std::forward<ArgsT>(args)...);
  case DataType::uint64:
    return func.template operator()<std::uint64_t>(std::forward<ArgsT>(args)...);
  case DataType::float32:
    return func.template operator()<float>(std::forward<ArgsT>(args)...);
  case DataType::float64:
    return func.template operator()<double>(std::forward<ArgsT>(args)...);
  case DataType::boolean:
    throw std::runtime_error("Cannot create a NeighborList of booleans.");
  }
  throw std::runtime_error(
      "zr::core::ExecuteNeighborFunction<...>(FuncT&& func, DataType dataType, ArgsT&&... "
      "args). Error: Invalid DataType");
}

// Switches each element type on or off for RunTemplateClass, in DataType order, boolean last.
template<bool UseInt8 = true, bool UseUInt8 = true, bool UseInt16 = true, bool UseUInt16 = true,
         bool UseInt32 = true, bool UseUInt32 = true, bool UseInt64 = true, bool UseUInt64 = true,
         bool UseFloat32 = true, bool UseFloat64 = true, bool UseBoolean = false>
struct ArrayTypeOptions
{
  static constexpr bool k_Int8 = UseInt8;
  static constexpr bool k_UInt8 = UseUInt8;
  static constexpr bool k_Int16 = UseInt16;
  static constexpr bool k_UInt16 = UseUInt16;
  static constexpr bool k_Int32 = UseInt32;
  static constexpr bool k_UInt32 = UseUInt32;
  static constexpr bool k_Int64 = UseInt64;
  static constexpr bool k_UInt64 = UseUInt64;
  static constexpr bool k_Float32 = UseFloat32;
  static constexpr bool k_Float64 = UseFloat64;
  static constexpr bool k_Boolean = UseBoolean;
};

// The ten numeric types; what the module uses.
using NoBooleanType = ArrayTypeOptions<>;
using AllArrayTypes = ArrayTypeOptions<true, true, true, true, true, true, true, true, true, true, true>;

namespace detail
{
template<template<class> class ClassT, class T, class... ArgsT>
auto RunTemplateClassFor(ArgsT&&... args)
{
  return ClassT<T>(std::forward<ArgsT>(args)...)();
}

[[noreturn]] inline void ThrowRunTemplateClassError(DataType dataType)
{
  throw std::runtime_error(fmt::format(
      "FilterUtilities::RunTemplateClass<> Error: dataType did not match any known type. DataType was {}",
      DataTypeToString(dataType)));
}
} // namespace detail

// Builds ClassT<T>(args...) for the element type of dataType and calls it. Types switched off in
// OptionsT count as unknown.
template<template<class> class ClassT, class OptionsT = NoBooleanType, class... ArgsT>
auto RunTemplateClass(DataType dataType, ArgsT&&... args)
{
  using ReturnT = decltype(detail::RunTemplateClassFor<ClassT, float>(std::forward<ArgsT>(args)...));
#define ZR_RUN_TEMPLATE_CASE(ENUM, FLAG, TYPE)                                                               \
  case DataType::ENUM:                                                                                       \
    if constexpr (OptionsT::FLAG)                                                                            \
    {                                                                                                        \
      return static_cast<ReturnT>(detail::RunTemplateClassFor<ClassT, TYPE>(std::forward<ArgsT>(args)...));  \
    }                                                                                                        \
    break;
  switch (dataType)
  {
    ZR_RUN_TEMPLATE_CASE(int8, k_Int8, std::int8_t)
    ZR_RUN_TEMPLATE_CASE(uint8, k_UInt8, std::uint8_t)
    ZR_RUN_TEMPLATE_CASE(int16, k_Int16, std::int16_t)
    ZR_RUN_TEMPLATE_CASE(uint16, k_UInt16, std::uint16_t)
    ZR_RUN_TEMPLATE_CASE(int32, k_Int32, std::int32_t)
    ZR_RUN_TEMPLATE_CASE(uint32, k_UInt32, std::uint32_t)
    ZR_RUN_TEMPLATE_CASE(int64, k_Int64, std::int64_t)
    ZR_RUN_TEMPLATE_CASE(uint64, k_UInt64, std::uint64_t)
    ZR_RUN_TEMPLATE_CASE(float32, k_Float32, float)
    ZR_RUN_TEMPLATE_CASE(float64, k_Float64, double)
    ZR_RUN_TEMPLATE_CASE(boolean, k_Boolean, bool)
  }
#undef ZR_RUN_TEMPLATE_CASE
  detail::ThrowRunTemplateClassError(dataType);
}
} // namespace zr::core
