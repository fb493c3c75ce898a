#pragma once

#include <vtkCommand.h>

class VXPlane;

// Hands the plane of a dragged implicit plane widget to its VXPlane.
class VXPlaneCallback : public vtkCommand
{
public:
  static VXPlaneCallback* New();
  vtkTypeMacro(VXPlaneCallback, vtkCommand);

  void Execute(vtkObject* caller, unsigned long eventId, void* callData) override;
  void setPlane(VXPlane* plane) { m_Plane = plane; }

private:
  VXPlane* m_Plane = nullptr;
};
