#pragma once

#include <vtkCommand.h>

class VXVisualizationWidget;

/**
 * @brief Observer of the end of each frame of a render window's main renderer. It does nothing yet;
 * it stays in place as the hook for frame-rate work.
 */
class VXFrameRateCallback : public vtkCommand
{
public:
  static VXFrameRateCallback* New();
  vtkTypeMacro(VXFrameRateCallback, vtkCommand);

  void setWindow(VXVisualizationWidget* window) { m_Window = window; }
  void Execute(vtkObject* caller, unsigned long eventId, void* callData) override;

protected:
  VXFrameRateCallback() = default;
  ~VXFrameRateCallback() override = default;

private:
  VXVisualizationWidget* m_Window = nullptr;
};
