#include "views/VXViewCubeRepresentation.h"

#include <vtkObjectFactory.h>

vtkStandardNewMacro(VXViewCubeRepresentation);

VXViewCubeRepresentation::VXViewCubeRepresentation()
{
  setLabels(m_Labels);
}

void VXViewCubeRepresentation::setLabels(const std::array<std::string, 6>& labels)
{
  m_Labels = labels;
  for (int axis = 0; axis < 3; ++axis)
  {
    for (int dir = 0; dir < 2; ++dir)
    {
      // The base keeps plain pointers: they point into m_Labels, which lives as long as this object.
      AxisLabelsText[axis][dir] = m_Labels[2 * axis + dir].c_str();
    }
  }
  CreateDefaultProperties();
  Modified();
}
