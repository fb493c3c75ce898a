#include "colour/TomvizHistogram.h"

#include <vtkArrayDispatch.h>
#include <vtkCellData.h>
#include <vtkDataArrayRange.h>
#include <vtkDataSet.h>
#include <vtkFloatArray.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkTable.h>
#include <vtkUnsignedCharArray.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace tomviz
{
namespace
{
// Counts one component of each tuple (or the magnitude for component -1) into the bins.
struct CountValues
{
  double min = 0.0;
  double width = 1.0;
  int component = 0;
  int* populations = nullptr;

  template<typename ArrayT>
  void operator()(ArrayT* array) const
  {
    const auto tuples = vtk::DataArrayTupleRange(array);
    const int components = array->GetNumberOfComponents();
    for (const auto tuple : tuples)
    {
      double value = 0.0;
      if (component < 0)
      {
        for (int c = 0; c < components; ++c)
        {
          const double v = static_cast<double>(tuple[c]);
          value += v * v;
        }
        value = std::sqrt(value);
      }
      else
      {
        value = static_cast<double>(tuple[component]);
      }
      if (std::isnan(value))
      {
        continue;
      }
      const double bin = std::floor((value - min) / width);
      if (bin >= 0.0 && bin < k_HistogramBins)
      {
        ++populations[static_cast<int>(bin)];
      }
    }
  }
};

template<typename ColumnT>
ColumnT* column(vtkTable* table, const char* name)
{
  auto* found = ColumnT::SafeDownCast(table->GetColumnByName(name));
  if (found != nullptr)
  {
    found->SetNumberOfComponents(1);
    found->SetNumberOfTuples(k_HistogramBins);
    return found;
  }
  // A table takes only columns as long as its others.
  vtkNew<ColumnT> made;
  made->SetName(name);
  made->SetNumberOfComponents(1);
  made->SetNumberOfTuples(k_HistogramBins);
  table->AddColumn(made);
  return made;
}
} // namespace

void calcHistogram(const unsigned char* values, long long count, int* populations)
{
  for (long long i = 0; i < count; ++i)
  {
    ++populations[values[i]];
  }
}

bool PopulateHistogram(vtkDataSet* dataSet, const std::string& arrayName, const std::string& columnName,
                       vtkTable* table, int component)
{
  if (dataSet == nullptr || table == nullptr)
  {
    return false;
  }
  vtkDataArray* array = dataSet->GetPointData()->GetArray(arrayName.c_str());
  if (array == nullptr)
  {
    array = dataSet->GetCellData()->GetArray(arrayName.c_str());
  }
  if (array == nullptr)
  {
    return false;
  }
  const int components = array->GetNumberOfComponents();
  component = components == 1 ? 0 : std::min(component, components - 1);
  double range[2] = {0.0, 0.0};
  array->GetRange(range, component);
  const double width = range[1] > range[0] ? (range[1] - range[0]) / (k_HistogramBins - 1) : 1.0;

  vtkFloatArray* extents = column<vtkFloatArray>(table, "image_extents");
  vtkIntArray* populations = column<vtkIntArray>(table, columnName.c_str());
  for (int bin = 0; bin < k_HistogramBins; ++bin)
  {
    extents->SetValue(bin, static_cast<float>(range[0] + (bin + 0.5) * width));
    populations->SetValue(bin, 0);
  }
  int* counts = populations->GetPointer(0);
  auto* bytes = vtkUnsignedCharArray::SafeDownCast(array);
  if (bytes != nullptr && components == 1)
  {
    // Bytes are counted by value first, then the 256 counts go to their bins.
    std::vector<int> byValue(256, 0);
    calcHistogram(bytes->GetPointer(0), static_cast<long long>(bytes->GetNumberOfTuples()), byValue.data());
    for (int value = static_cast<int>(range[0]); value <= static_cast<int>(range[1]); ++value)
    {
      counts[std::min(static_cast<int>(std::floor((value - range[0]) / width)), k_HistogramBins - 1)] +=
          byValue[value];
    }
  }
  else
  {
    CountValues count{range[0], width, components == 1 ? 0 : component, counts};
    if (!vtkArrayDispatch::Dispatch::Execute(array, count))
    {
      count(array);
    }
  }
  populations->Modified();
  extents->Modified();
  return true;
}
} // namespace tomviz
