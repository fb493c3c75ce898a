#pragma once

#include <vtkOutputWindow.h>

// The viewer's VTK output window. VTK prints every reader complaint to standard error, several lines
// each with source file and line: a damaged file would bury the one message the user needs. Quiet, it
// drops those texts; verbose, it prints them as VTK's default window does. Error captures put in front
// of it still collect every text, so a failed read still becomes a message of its own.
class VXQuietOutputWindow : public vtkOutputWindow
{
public:
  static VXQuietOutputWindow* New();
  vtkTypeMacro(VXQuietOutputWindow, vtkOutputWindow);

  // Makes a window of this kind VTK's output window for the rest of the process, and sets VTK's logger
  // to match: silent on standard error when quiet.
  static void Install(bool verbose);

  void DisplayText(const char* text) override;

  void setVerbose(bool verbose) { m_Verbose = verbose; }
  bool verbose() const { return m_Verbose; }

protected:
  VXQuietOutputWindow() = default;

private:
  bool m_Verbose = false;
};
