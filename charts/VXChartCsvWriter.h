#pragma once

#include <QString>

class VXChart;

/**
 * @brief Writes a chart's data as CSV: a header of "Category" (or "X") and the series names, then one line
 * per index with the x value or category and each series' value. Numbers are written so that they read
 * back exactly.
 */
class VXChartCsvWriter
{
public:
  enum class Status
  {
    Written,
    NoData,
    OpenFailed,
    WriteFailed
  };

  static Status WriteFile(const QString& path, const VXChart& chart);
  /** @brief The user's message for a status other than Written ("No data to export." for NoData). */
  static QString Message(Status status, const QString& path);
};
