#include "data_bridge/VXVtkErrorCapture.h"

#include <vtkObjectFactory.h>
#include <vtkOutputWindow.h>

namespace
{
// Output window that hands errors to an observer and passes everything else to the window it replaced.
class VXCapturingOutputWindow : public vtkOutputWindow
{
public:
  static VXCapturingOutputWindow* New();
  vtkTypeMacro(VXCapturingOutputWindow, vtkOutputWindow);

  void setTargets(VXErrorObserver* observer, vtkOutputWindow* previous)
  {
    m_Observer = observer;
    m_Previous = previous;
  }

  void DisplayErrorText(const char* text) override
  {
    if (m_Observer != nullptr)
    {
      m_Observer->addMessage(text);
    }
  }
  void DisplayWarningText(const char* text) override
  {
    if (m_Previous != nullptr)
    {
      m_Previous->DisplayWarningText(text);
    }
  }
  void DisplayGenericWarningText(const char* text) override
  {
    if (m_Previous != nullptr)
    {
      m_Previous->DisplayGenericWarningText(text);
    }
  }
  void DisplayDebugText(const char* text) override
  {
    if (m_Previous != nullptr)
    {
      m_Previous->DisplayDebugText(text);
    }
  }
  void DisplayText(const char* text) override
  {
    if (m_Previous != nullptr)
    {
      m_Previous->DisplayText(text);
    }
  }

protected:
  VXCapturingOutputWindow() = default;

private:
  VXErrorObserver* m_Observer = nullptr;
  vtkOutputWindow* m_Previous = nullptr;
};
vtkStandardNewMacro(VXCapturingOutputWindow);
} // namespace

VXVtkErrorCapture::VXVtkErrorCapture()
    : m_Observer(vtkSmartPointer<VXErrorObserver>::New())
    , m_PreviousWindow(vtkOutputWindow::GetInstance())
{
  auto window = vtkSmartPointer<VXCapturingOutputWindow>::New();
  window->setTargets(m_Observer, m_PreviousWindow);
  vtkOutputWindow::SetInstance(window);
}

VXVtkErrorCapture::~VXVtkErrorCapture()
{
  for (const auto& [object, tag] : m_Watched)
  {
    object->RemoveObserver(tag);
  }
  vtkOutputWindow::SetInstance(m_PreviousWindow);
}

void VXVtkErrorCapture::watch(vtkObject* object)
{
  if (object != nullptr)
  {
    m_Watched.emplace_back(object, object->AddObserver(vtkCommand::ErrorEvent, m_Observer));
  }
}

bool VXVtkErrorCapture::hasErrors() const
{
  return m_Observer->hasErrors();
}

QString VXVtkErrorCapture::errorText() const
{
  return m_Observer->errorText();
}

void VXVtkErrorCapture::clear()
{
  m_Observer->clear();
}
