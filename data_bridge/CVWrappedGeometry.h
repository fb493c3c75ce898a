#pragma once

#include "data_bridge/zr_contract/DataPath.h"

#include <vtkDataSet.h>
#include <vtkSmartPointer.h>

#include <string>
#include <vector>

namespace CV::VtkBridge
{
// A geometry of the data structure as a VTK dataset, with the path it was found at. The dataset is
// null when wrapping failed; the messages then say why, and otherwise tell what was left out.
struct WrappedGeometry
{
  vtkSmartPointer<vtkDataSet> m_DataSet;
  zr::core::DataPath m_DataPath;
  std::vector<std::string> m_Messages;
};
} // namespace CV::VtkBridge
