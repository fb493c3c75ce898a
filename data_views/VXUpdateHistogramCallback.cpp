#include "data_views/VXUpdateHistogramCallback.h"

#include "data_views/VXRepresentationPimpl.h"

#include <vtkObjectFactory.h>

vtkStandardNewMacro(VXUpdateHistogramCallback);

void VXUpdateHistogramCallback::Execute(vtkObject* /*caller*/, unsigned long /*eventId*/, void* /*callData*/)
{
  if (m_Representation != nullptr)
  {
    m_Representation->generateHistogramData();
  }
}
