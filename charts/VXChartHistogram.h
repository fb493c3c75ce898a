#pragma once

#include "data_bridge/zr_contract/IDataArray.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <string>
#include <utility>
#include <vector>

/**
 * @brief Equal bins of one component of an array, as a histogram chart shows them. Without a custom range
 * the bins span the array's finite minimum to its maximum, raised just enough that the maximum falls in
 * the last bin. The counting is one parallel pass over the array where it lies; values in no bin (outside
 * a custom range, NaN) are counted and reported.
 */
class VXChartHistogram
{
public:
  std::vector<double> edges;  ///< bin count + 1 edges
  std::vector<double> counts; ///< one count per bin
  std::vector<std::string> minLabels;
  std::vector<std::string> maxLabels;
  std::size_t outsideCount = 0;
  QStringList messages; ///< what the user should read: errors, and the count of values in no bin
  bool valid = false;

  static VXChartHistogram Compute(const zr::core::IDataArray& array, std::size_t component, int binCount,
                                  const std::optional<std::pair<double, double>>& customRange,
                                  const QString& arrayPath);
  /** @brief The text of one bin edge in labels and exports. */
  static std::string FormatEdge(double value);
};
