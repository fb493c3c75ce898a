#pragma once

#include <vtkCallbackCommand.h>

/**
 * @brief Refreshes a data view's dataset information panel whenever the producer it observes has
 * finished a run, so the panel follows a reloaded or re-executed input.
 */
template<class T>
class VXDataSetInfoWidgetUpdateCallback : public vtkCallbackCommand
{
public:
  static VXDataSetInfoWidgetUpdateCallback* New()
  {
    auto* callback = new VXDataSetInfoWidgetUpdateCallback();
    callback->InitializeObjectBase();
    return callback;
  }

  void setView(T* view) { m_View = view; }

  void Execute(vtkObject* /*caller*/, unsigned long /*eventId*/, void* /*callData*/) override
  {
    if (m_View != nullptr)
    {
      m_View->updateDataSetInfoWidget();
    }
  }

private:
  VXDataSetInfoWidgetUpdateCallback() = default;

  T* m_View = nullptr;
};
