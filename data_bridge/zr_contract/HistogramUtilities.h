#pragma once

#include "data_bridge/zr_contract/AbstractDataStore.h"

#include <array>
#include <cmath>
#include <limits>
#include <type_traits>
#include <vector>

namespace zr::core::HistogramUtilities
{
struct Histogram
{
  std::vector<usize> counts;
  // binCount + 1 edges; bin i is [edges[i], edges[i+1]), the last bin includes its upper edge.
  std::vector<double> edges;
  // Values outside the range or NaN.
  usize skipped = 0;
};

// Serial histogram of one component (or of all values when component < 0) over [range[0], range[1]].
template<class T>
Histogram GenerateHistogram(const AbstractDataStore<T>& store, const std::array<double, 2>& range,
                            usize binCount, int component = -1)
{
  Histogram histogram;
  if (binCount == 0)
  {
    return histogram;
  }
  histogram.counts.assign(binCount, 0);
  histogram.edges.resize(binCount + 1);
  const double width = (range[1] - range[0]) / static_cast<double>(binCount);
  for (usize i = 0; i <= binCount; ++i)
  {
    histogram.edges[i] = range[0] + width * static_cast<double>(i);
  }
  const usize numComponents = store.getNumberOfComponents();
  const usize size = store.getSize();
  const bool oneComponent = component >= 0 && static_cast<usize>(component) < numComponents;
  const usize start = oneComponent ? static_cast<usize>(component) : 0;
  const usize step = oneComponent ? numComponents : 1;
  for (usize i = start; i < size; i += step)
  {
    const auto value = static_cast<double>(store.getValue(i));
    if (std::isnan(value) || value < range[0] || value > range[1])
    {
      ++histogram.skipped;
      continue;
    }
    usize bin = width > 0.0 ? static_cast<usize>((value - range[0]) / width) : 0;
    histogram.counts[std::min(bin, binCount - 1)]++;
  }
  return histogram;
}

// Finite minimum and maximum of all values; {+inf, -inf} when there is none.
template<class T>
std::array<double, 2> FindRange(const AbstractDataStore<T>& store)
{
  std::array<double, 2> range = {std::numeric_limits<double>::infinity(),
                                 -std::numeric_limits<double>::infinity()};
  const usize size = store.getSize();
  for (usize i = 0; i < size; ++i)
  {
    const auto value = static_cast<double>(store.getValue(i));
    if (std::isfinite(value))
    {
      range[0] = std::min(range[0], value);
      range[1] = std::max(range[1], value);
    }
  }
  return range;
}
} // namespace zr::core::HistogramUtilities
