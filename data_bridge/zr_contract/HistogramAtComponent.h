#pragma once

#include "data_bridge/zr_contract/AbstractDataStore.h"
#include "data_bridge/zr_contract/DataStore.h"
#include "data_bridge/zr_contract/Result.h"

#include <fmt/format.h>
#include <tbb/blocked_range.h>
#include <tbb/enumerable_thread_specific.h>
#include <tbb/parallel_for.h>
#include <tbb/parallel_reduce.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace zr::core::HistogramUtilities
{
namespace detail
{
constexpr const char* k_FunctionName = "GenerateHistogramAtComponent";
constexpr usize k_TuplesPerTask = usize(1) << 16;
constexpr usize k_BlockElements = usize(1) << 14;

// Calls visit(value) for the component of each tuple in [firstTuple, lastTuple); arrays in memory are read
// in place, others in small blocks of whole tuples.
template<class T, class VisitT>
void ForEachAtComponent(const AbstractDataStore<T>& store, usize component, usize firstTuple, usize lastTuple,
                        VisitT&& visit)
{
  const usize stride = store.getNumberOfComponents();
  if (const auto* inMemory = dynamic_cast<const DataStore<T>*>(&store))
  {
    const T* values = inMemory->data() + component;
    for (usize tuple = firstTuple; tuple < lastTuple; ++tuple)
    {
      visit(values[tuple * stride]);
    }
    return;
  }
  const usize tuplesPerBlock = std::max<usize>(1, k_BlockElements / std::max<usize>(1, stride));
  std::unique_ptr<T[]> block(new T[tuplesPerBlock * stride]);
  for (usize start = firstTuple; start < lastTuple; start += tuplesPerBlock)
  {
    const usize count = std::min(tuplesPerBlock, lastTuple - start);
    store.copyIntoBuffer(start * stride, block.get(), count * stride);
    for (usize i = 0; i < count; ++i)
    {
      visit(block[i * stride + component]);
    }
  }
}

// Bin of a value, or numBins when it lies in none (outside the range, NaN).
template<class T>
inline usize BinOf(T value, T min, float increment, usize numBins)
{
  const double bin =
      std::floor((static_cast<double>(value) - static_cast<double>(min)) / static_cast<double>(increment));
  return bin >= 0.0 && bin < static_cast<double>(numBins) ? static_cast<usize>(bin) : numBins;
}

template<class T>
Result<> CheckArguments(const AbstractDataStore<T>& inputStore, const AbstractDataStore<T>& binRangesStore,
                        const AbstractDataStore<uint64_t>& histogramCountsStore, usize numBins,
                        usize component, const char* file, int line)
{
  if (binRangesStore.getSize() < numBins + 1)
  {
    return MakeErrorResult(
        -23761,
        fmt::format("HistogramUtilities::{}: binRangesStore is too small to hold ranges. Needed: {} | "
                    "Current Size: {}. {}:{}",
                    k_FunctionName, numBins + 1, binRangesStore.getSize(), file, line));
  }
  if (histogramCountsStore.getSize() < numBins)
  {
    return MakeErrorResult(
        -23762,
        fmt::format("HistogramUtilities::{}: histogramCountsStore is too small to hold counts. Needed: {} "
                    "| Current Size: {}. {}:{}",
                    k_FunctionName, numBins, histogramCountsStore.getSize(), file, line));
  }
  if (component >= inputStore.getNumberOfComponents())
  {
    return MakeErrorResult(
        -23763, fmt::format("HistogramUtilities::{}: supplied component index is larger than "
                            "component size of input array. Needed: x < {} | Currently: {}. "
                            "{}:{}",
                            k_FunctionName, inputStore.getNumberOfComponents(), component, file, line));
  }
  return {};
}

template<class T>
float Increment(const std::pair<T, T>& range, usize numBins)
{
  return static_cast<float>((static_cast<double>(range.second) - static_cast<double>(range.first)) /
                            static_cast<double>(numBins));
}

// Edges min + T(i * increment); one bin spans exactly the range.
template<class T>
void FillBinEdges(AbstractDataStore<T>& binRangesStore, usize numBins, const std::pair<T, T>& range)
{
  const float increment = Increment(range, numBins);
  binRangesStore.setValue(0, range.first);
  for (usize i = 1; i < numBins; ++i)
  {
    binRangesStore.setValue(i,
                            static_cast<T>(range.first + static_cast<T>(static_cast<float>(i) * increment)));
  }
  binRangesStore.setValue(numBins, range.second);
}

template<class T>
Result<> Finish(AbstractDataStore<uint64_t>& histogramCountsStore, const std::vector<uint64_t>& counts,
                usize overflowCount, std::atomic<usize>& overflow, const char* file, int line)
{
  for (usize i = 0; i < counts.size(); ++i)
  {
    histogramCountsStore.setValue(i, counts[i]);
  }
  overflow += overflowCount;
  if (overflowCount > 0)
  {
    return Result<>(std::vector<Warning>{
        Warning{-23764, fmt::format("HistogramUtilities::{}: Overflow detected: overflow count {}. {}:{}",
                                    k_FunctionName, overflowCount, file, line)}});
  }
  return {};
}

template<class T>
Result<> Cancelled(const char* file, int line)
{
  return MakeErrorResult(-23765, fmt::format("HistogramUtilities::{}: Signal Interrupt Received. {}:{}",
                                             k_FunctionName, file, line));
}
} // namespace detail

/**
 * Counts of the values at one component in numBins equal bins over [range.first, range.second): bin i spans
 * min + T(i * increment) to min + T((i + 1) * increment), increment = (max - min) / numBins in single
 * precision; a value goes to bin floor((value - min) / increment). Values in no bin (outside the range,
 * NaN) add to overflow and give a warning with their count. binRangesStore receives numBins + 1 edges.
 */
namespace serial
{
template<class T>
Result<> GenerateHistogramAtComponent(const AbstractDataStore<T>& inputStore,
                                      AbstractDataStore<T>& binRangesStore,
                                      AbstractDataStore<uint64_t>& histogramCountsStore, usize numBins,
                                      const std::pair<T, T>& range, const std::atomic_bool& shouldCancel,
                                      usize component, std::atomic<usize>& overflow)
{
  auto checked = detail::CheckArguments(inputStore, binRangesStore, histogramCountsStore, numBins, component,
                                        __FILE__, __LINE__);
  if (checked.invalid() || numBins == 0)
  {
    return checked;
  }
  detail::FillBinEdges(binRangesStore, numBins, range);
  const float increment = detail::Increment(range, numBins);
  std::vector<uint64_t> counts(numBins, 0);
  usize outside = 0;
  const usize tuples = inputStore.getNumberOfTuples();
  for (usize first = 0; first < tuples; first += detail::k_TuplesPerTask)
  {
    if (shouldCancel)
    {
      return detail::Cancelled<T>(__FILE__, __LINE__);
    }
    detail::ForEachAtComponent(inputStore, component, first,
                               std::min(tuples, first + detail::k_TuplesPerTask),
                               [&](T value)
                               {
                                 const usize bin = detail::BinOf(value, range.first, increment, numBins);
                                 if (bin < numBins)
                                 {
                                   ++counts[bin];
                                 }
                                 else
                                 {
                                   ++outside;
                                 }
                               });
  }
  return detail::Finish<T>(histogramCountsStore, counts, outside, overflow, __FILE__, __LINE__);
}
} // namespace serial

/** The same counts in one parallel pass: each task counts into its thread's own bins, merged at the end. */
namespace concurrent
{
template<class T>
Result<> GenerateHistogramAtComponent(const AbstractDataStore<T>& inputStore,
                                      AbstractDataStore<T>& binRangesStore,
                                      AbstractDataStore<uint64_t>& histogramCountsStore, usize numBins,
                                      const std::pair<T, T>& range, const std::atomic_bool& shouldCancel,
                                      usize component, std::atomic<usize>& overflow)
{
  auto checked = detail::CheckArguments(inputStore, binRangesStore, histogramCountsStore, numBins, component,
                                        __FILE__, __LINE__);
  if (checked.invalid() || numBins == 0)
  {
    return checked;
  }
  detail::FillBinEdges(binRangesStore, numBins, range);
  const float increment = detail::Increment(range, numBins);
  // One counter per bin plus one for values in no bin, per thread.
  tbb::enumerable_thread_specific<std::vector<uint64_t>> local(
      [numBins] { return std::vector<uint64_t>(numBins + 1, 0); });
  const usize tuples = inputStore.getNumberOfTuples();
  std::atomic_bool cancelled = false;
  tbb::parallel_for(tbb::blocked_range<usize>(0, tuples, detail::k_TuplesPerTask),
                    [&](const tbb::blocked_range<usize>& block)
                    {
                      if (shouldCancel)
                      {
                        cancelled = true;
                        return;
                      }
                      uint64_t* counts = local.local().data();
                      detail::ForEachAtComponent(
                          inputStore, component, block.begin(), block.end(),
                          [&](T value) { ++counts[detail::BinOf(value, range.first, increment, numBins)]; });
                    });
  if (cancelled)
  {
    return detail::Cancelled<T>(__FILE__, __LINE__);
  }
  std::vector<uint64_t> counts(numBins + 1, 0);
  for (const auto& partial : local)
  {
    for (usize i = 0; i <= numBins; ++i)
    {
      counts[i] += partial[i];
    }
  }
  const usize outside = counts[numBins];
  counts.pop_back();
  return detail::Finish<T>(histogramCountsStore, counts, outside, overflow, __FILE__, __LINE__);
}

/** Finite minimum and maximum at one component, in one parallel pass; {max, lowest} when there is none. */
template<class T>
std::pair<T, T> FindRangeAtComponent(const AbstractDataStore<T>& inputStore, usize component)
{
  using Range = std::pair<T, T>;
  const Range empty{std::numeric_limits<T>::max(), std::numeric_limits<T>::lowest()};
  if (component >= inputStore.getNumberOfComponents())
  {
    return empty;
  }
  return tbb::parallel_reduce(
      tbb::blocked_range<usize>(0, inputStore.getNumberOfTuples(), detail::k_TuplesPerTask), empty,
      [&](const tbb::blocked_range<usize>& block, Range range)
      {
        detail::ForEachAtComponent(inputStore, component, block.begin(), block.end(),
                                   [&](T value)
                                   {
                                     if constexpr (std::is_floating_point_v<T>)
                                     {
                                       if (!std::isfinite(value))
                                       {
                                         return;
                                       }
                                     }
                                     range.first = value < range.first ? value : range.first;
                                     range.second = value > range.second ? value : range.second;
                                   });
        return range;
      },
      [](const Range& a, const Range& b) {
        return Range{std::min(a.first, b.first), std::max(a.second, b.second)};
      });
}
} // namespace concurrent
} // namespace zr::core::HistogramUtilities
