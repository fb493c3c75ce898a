#pragma once

#include <vtkType.h>

#include <array>

namespace CV
{
// The value at each index of a structured grid's cell id array is the index itself.
struct StructuredGridCellIdFunctor
{
  std::array<int, 3> m_Dimensions{0, 0, 0};

  vtkIdType operator()(vtkIdType index) const { return index; }
};
} // namespace CV
