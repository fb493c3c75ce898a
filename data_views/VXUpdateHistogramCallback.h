#pragma once

#include <vtkCallbackCommand.h>

class VXRepresentationPimpl;

/**
 * Observes the end of each run of a view's upstream algorithm and has the view's histogram follow the
 * new data. The view clears its pointer before it goes.
 */
class VXUpdateHistogramCallback : public vtkCallbackCommand
{
public:
  static VXUpdateHistogramCallback* New();
  vtkTypeMacro(VXUpdateHistogramCallback, vtkCallbackCommand);

  void setRepresentation(VXRepresentationPimpl* representation) { m_Representation = representation; }
  void Execute(vtkObject* caller, unsigned long eventId, void* callData) override;

protected:
  VXUpdateHistogramCallback() = default;
  ~VXUpdateHistogramCallback() override = default;

private:
  VXUpdateHistogramCallback(const VXUpdateHistogramCallback&) = delete;
  void operator=(const VXUpdateHistogramCallback&) = delete;

  VXRepresentationPimpl* m_Representation = nullptr;
};
