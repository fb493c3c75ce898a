#pragma once

#include "data_bridge/VXErrorObserver.h"

#include <QString>

#include <vtkSmartPointer.h>

#include <vector>

class vtkObject;
class vtkOutputWindow;

// While alive, VTK errors of watched objects and of everything that prints through the output window
// (the executive, XML parsers, image libraries) are collected instead of printed. Warnings and other
// text still reach the previous output window. Main thread only, like every VTK pipeline call here.
class VXVtkErrorCapture
{
public:
  VXVtkErrorCapture();
  ~VXVtkErrorCapture();

  VXVtkErrorCapture(const VXVtkErrorCapture&) = delete;
  VXVtkErrorCapture& operator=(const VXVtkErrorCapture&) = delete;

  // Routes the object's own error events to this capture until the capture ends.
  void watch(vtkObject* object);

  bool hasErrors() const;
  QString errorText() const;
  void clear();

private:
  vtkSmartPointer<VXErrorObserver> m_Observer;
  vtkSmartPointer<vtkOutputWindow> m_PreviousWindow;
  std::vector<std::pair<vtkSmartPointer<vtkObject>, unsigned long>> m_Watched;
};
