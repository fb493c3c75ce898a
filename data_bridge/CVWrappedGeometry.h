#pragma once

#include "data_bridge/zr_contract/DataPath.h"

#include <vtkDataSet.h>
#include <vtkSmartPointer.h>

namespace CV::VtkBridge
{
// A geometry of the data structure as a VTK dataset, with the path it was found at. The dataset is
// null when wrapping failed.
struct WrappedGeometry
{
  vtkSmartPointer<vtkDataSet> m_DataSet;
  zr::core::DataPath m_DataPath;
};
} // namespace CV::VtkBridge
