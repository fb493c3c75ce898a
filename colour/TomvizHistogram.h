#pragma once

#include <string>

class vtkDataSet;
class vtkTable;

namespace tomviz
{
/** @brief Bins of the volume editor's histogram. */
constexpr int k_HistogramBins = 200;

/**
 * @brief The histogram of a point or cell array of a dataset in 200 bins over its range, into a table:
 * the first column ("image_extents", floats) holds each bin's centre, the column named columnName
 * (ints) its population. The bin width is (max - min) / 199, so that the last bin starts at max.
 * Columns already in the table are reused. A multi-component array is binned by its magnitude, or by
 * one component when component is 0 or more. False, with the table untouched, without such an array.
 */
bool PopulateHistogram(vtkDataSet* dataSet, const std::string& arrayName, const std::string& columnName,
                       vtkTable* table, int component = -1);

/** @brief The 8-bit case: one increment per value into 256 bins, no scaling. */
void calcHistogram(const unsigned char* values, long long count, int* populations);
} // namespace tomviz
