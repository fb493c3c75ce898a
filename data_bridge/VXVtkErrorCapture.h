#pragma once

#include "data_bridge/VXErrorObserver.h"

#include <QString>

#include <vtkSmartPointer.h>

#include <vector>

class vtkObject;
class vtkOutputWindow;

// While alive, VTK errors of watched objects and of everything that prints through the output window
// (executives, XML parsers, piece readers, image libraries) are collected, so a failed read becomes
// one message; VTK's own output is left as it is, every text still reaches the previous output
// window. Main thread only, like every VTK pipeline call here.
class VXVtkErrorCapture
{
public:
  // With warningsAreErrors, VTK warnings count as errors too: some readers only warn when a file ends
  // early and hand out what they got.
  explicit VXVtkErrorCapture(bool warningsAreErrors = false);
  ~VXVtkErrorCapture();

  VXVtkErrorCapture(const VXVtkErrorCapture&) = delete;
  VXVtkErrorCapture& operator=(const VXVtkErrorCapture&) = delete;

  // Routes the object's own error events to this capture until the capture ends. For an algorithm,
  // its executive's too.
  void watch(vtkObject* object);

  bool hasErrors() const;
  QString errorText() const;
  void clear();

private:
  vtkSmartPointer<VXErrorObserver> m_Observer;
  vtkSmartPointer<vtkOutputWindow> m_PreviousWindow;
  bool m_WarningsAreErrors = false;
  std::vector<std::pair<vtkSmartPointer<vtkObject>, unsigned long>> m_Watched;
};
