#pragma once

#include "data_bridge/zr_contract/IDataArray.h"

#include <cstddef>
#include <vector>

/** @brief The values of one component of a numeric array, tuple by tuple, as doubles. */
class VXChartArrayValues
{
public:
  /** @brief Empty for an array without a store or a component it does not have. */
  static std::vector<double> Read(const zr::core::IDataArray& array, std::size_t component);
  static std::size_t ComponentCount(const zr::core::IDataArray& array);
};
