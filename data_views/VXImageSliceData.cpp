#include "data_views/VXImageSliceData.h"

#include <vtkObjectFactory.h>

namespace image_slice_utilities
{
vtkStandardNewMacro(VXImageSliceData);

vtkIdType VXImageSliceData::GetNumberOfCells()
{
  const int* extent = GetExtent();
  vtkIdType count = 1;
  for (int axis = 0; axis < 3; ++axis)
  {
    const int size = extent[2 * axis + 1] - extent[2 * axis] + 1;
    if (size <= 0)
    {
      return 0;
    }
    count *= size;
  }
  return count;
}
} // namespace image_slice_utilities
