#include "data_bridge/VXQuietOutputWindow.h"

#include <vtkLogger.h>
#include <vtkObjectFactory.h>
#include <vtkSmartPointer.h>

vtkStandardNewMacro(VXQuietOutputWindow);

void VXQuietOutputWindow::Install(bool verbose)
{
  auto window = vtkSmartPointer<VXQuietOutputWindow>::New();
  window->setVerbose(verbose);
  vtkOutputWindow::SetInstance(window);
  // VTK's error and warning macros also write each message through its logger, straight to standard
  // error, before the output window sees it.
  vtkLogger::SetStderrVerbosity(verbose ? vtkLogger::VERBOSITY_INFO : vtkLogger::VERBOSITY_OFF);
}

void VXQuietOutputWindow::DisplayText(const char* text)
{
  if (m_Verbose)
  {
    // The base class prints to standard error or output by the message type VTK set before the call.
    vtkOutputWindow::DisplayText(text);
  }
}
