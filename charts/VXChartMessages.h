#pragma once

#include <QString>

/** @brief Messages the chart input panels share. */
namespace VXChartMessages
{
inline QString NoDataStructure()
{
  return QStringLiteral(
      "The data structure could not be found in memory and no .kestrix file was provided! You must "
      "run a pipeline or provide a .kestrix file in order use 2D charting");
}
inline QString ArrayMissing(const QString& path)
{
  return QStringLiteral("Data array at path '%1' does not exist and cannot be added to the chart.").arg(path);
}
inline QString LengthMismatch(const QString& path, qulonglong count, qulonglong expected)
{
  return QStringLiteral(
             "Cannot add data array %1 to the chart because it has %2 values and the rest of the chart data "
             "has %3 values")
      .arg(path)
      .arg(count)
      .arg(expected);
}
inline QString ComponentMissing(const QString& path, qulonglong components, qulonglong expected)
{
  return QStringLiteral(
             "Cannot add data array %1 to the chart because it has %2 components but was expecting %3 or "
             "more components")
      .arg(path)
      .arg(components)
      .arg(expected);
}
inline QString NoTuples(const QString& path)
{
  return QStringLiteral("Error retrieving values from data array at path '%1'. No tuples were found!")
      .arg(path);
}
} // namespace VXChartMessages
