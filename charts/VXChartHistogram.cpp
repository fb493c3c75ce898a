#include "charts/VXChartHistogram.h"

#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DispatchHelpers.h"
#include "data_bridge/zr_contract/HistogramAtComponent.h"

#include <fmt/format.h>

#include <atomic>
#include <cmath>
#include <limits>
#include <type_traits>

namespace
{
namespace HU = zr::core::HistogramUtilities;

// The next value above, one representable step for floating point and one for integers.
template<class T>
T StepUp(T value)
{
  if constexpr (std::is_floating_point_v<T>)
  {
    return static_cast<T>(std::nexttoward(value, std::numeric_limits<long double>::infinity()));
  }
  else
  {
    return value < std::numeric_limits<T>::max() ? static_cast<T>(value + 1) : value;
  }
}

struct ComputeFunctor
{
  template<class T>
  void operator()(const zr::core::IDataArray& array, std::size_t component, int binCount,
                  const std::optional<std::pair<double, double>>& customRange, const QString& arrayPath,
                  VXChartHistogram& result) const
  {
    if constexpr (std::is_same_v<T, bool>)
    {
      result.messages << QStringLiteral(
                             "Data array at path '%1' holds true/false values, which cannot be binned "
                             "in a histogram.")
                             .arg(arrayPath);
    }
    else
    {
      const auto& store = static_cast<const zr::core::AbstractDataStore<T>&>(array.getIDataStoreRef());
      const auto bins = static_cast<zr::core::usize>(binCount);
      std::pair<T, T> range;
      if (customRange.has_value())
      {
        range = {static_cast<T>(customRange->first), static_cast<T>(customRange->second)};
      }
      else
      {
        const std::pair<T, T> found = HU::concurrent::FindRangeAtComponent(store, component);
        if (found.first > found.second)
        {
          result.messages << QStringLiteral(
                                 "Data array at path '%1' has no finite values at component %2 to bin.")
                                 .arg(arrayPath)
                                 .arg(component);
          return;
        }
        // Bins are half open: raise the top until the maximum itself lands in the last bin.
        range = {found.first, StepUp(found.second)};
        for (int attempt = 0; attempt < 64; ++attempt)
        {
          const float increment = HU::detail::Increment(range, bins);
          if (HU::detail::BinOf(found.second, range.first, increment, bins) < bins)
          {
            break;
          }
          range.second = StepUp(range.second);
        }
      }
      zr::core::DataStore<T> edges({bins + 1}, {1}, T{});
      zr::core::DataStore<std::uint64_t> counts({bins}, {1}, std::uint64_t{0});
      std::atomic_bool cancel = false;
      std::atomic<zr::core::usize> outside = 0;
      const zr::core::Result<> binned = HU::concurrent::GenerateHistogramAtComponent(
          store, edges, counts, bins, range, cancel, component, outside);
      for (const auto& error : binned.errors())
      {
        result.messages << QString::fromStdString(error.message);
      }
      if (binned.invalid())
      {
        return;
      }
      result.outsideCount = outside;
      if (outside > 0)
      {
        result.messages << QStringLiteral(
                               "Histogram of '%1': %2 values lie in no bin (outside the range %3 to %4, "
                               "or not a number) and are not counted.")
                               .arg(arrayPath)
                               .arg(static_cast<qulonglong>(outside))
                               .arg(QString::fromStdString(
                                   VXChartHistogram::FormatEdge(static_cast<double>(range.first))))
                               .arg(QString::fromStdString(
                                   VXChartHistogram::FormatEdge(static_cast<double>(range.second))));
      }
      result.edges.resize(bins + 1);
      for (zr::core::usize i = 0; i <= bins; ++i)
      {
        result.edges[i] = static_cast<double>(edges.getValue(i));
      }
      result.counts.resize(bins);
      for (zr::core::usize i = 0; i < bins; ++i)
      {
        result.counts[i] = static_cast<double>(counts.getValue(i));
        result.minLabels.push_back(VXChartHistogram::FormatEdge(result.edges[i]));
        result.maxLabels.push_back(VXChartHistogram::FormatEdge(result.edges[i + 1]));
      }
      result.valid = true;
    }
  }
};
} // namespace

std::string VXChartHistogram::FormatEdge(double value)
{
  return fmt::format("{:.6g}", value);
}

VXChartHistogram VXChartHistogram::Compute(const zr::core::IDataArray& array, std::size_t component,
                                           int binCount,
                                           const std::optional<std::pair<double, double>>& customRange,
                                           const QString& arrayPath)
{
  VXChartHistogram result;
  if (binCount <= 0)
  {
    result.messages << QStringLiteral("A histogram needs at least one bin, not %1.").arg(binCount);
    return result;
  }
  if (customRange.has_value() && !(customRange->first < customRange->second))
  {
    result.messages << QStringLiteral(
                           "The custom bin range %1 to %2 is empty: its minimum must lie below its maximum.")
                           .arg(customRange->first)
                           .arg(customRange->second);
    return result;
  }
  if (array.getIDataStore() == nullptr)
  {
    result.messages << QStringLiteral("Data array at path '%1' has no values.").arg(arrayPath);
    return result;
  }
  const auto components = static_cast<std::size_t>(array.getIDataStoreRef().getNumberOfComponents());
  if (component >= components)
  {
    result.messages << QStringLiteral(
                           "Cannot bin component %1 of data array at path '%2': it has %3 component(s).")
                           .arg(component)
                           .arg(arrayPath)
                           .arg(components);
    return result;
  }
  zr::core::ExecuteDataFunction(ComputeFunctor{}, array.getDataType(), array, component, binCount,
                                customRange, arrayPath, result);
  return result;
}
