#include "views/VXFrameRateCallback.h"

#include <vtkObjectFactory.h>

vtkStandardNewMacro(VXFrameRateCallback);

void VXFrameRateCallback::Execute(vtkObject* /*caller*/, unsigned long /*eventId*/, void* /*callData*/) {}
