#include "data_bridge/ZRVtkLibConstants.h"

namespace ZRVtkLib
{
const char* const ZorelibOriginCellIndexes = "Original Cell Index";
const char* const VtkOriginCellIds = "vtkOriginalCellIds";
const char* const VtkOriginPointIds = "vtkOriginalPointIds";
} // namespace ZRVtkLib
