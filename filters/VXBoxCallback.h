#pragma once

#include <vtkCommand.h>
#include <vtkSmartPointer.h>

class vtkTransform;
class VXBox;

// Copies the transform of a dragged box widget into the box's view transform.
class VXBoxCallback : public vtkCommand
{
public:
  static VXBoxCallback* New();
  vtkTypeMacro(VXBoxCallback, vtkCommand);

  void Execute(vtkObject* caller, unsigned long eventId, void* callData) override;
  void setTransform(vtkTransform* transform);
  void setBox(VXBox* box) { m_Box = box; }

private:
  vtkSmartPointer<vtkTransform> m_Transform;
  VXBox* m_Box = nullptr;
};
