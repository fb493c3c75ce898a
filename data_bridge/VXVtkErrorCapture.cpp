#include "data_bridge/VXVtkErrorCapture.h"

#include <vtkAlgorithm.h>
#include <vtkExecutive.h>
#include <vtkObjectFactory.h>
#include <vtkOutputWindow.h>

namespace
{
// Output window that hands errors to an observer and passes every text on to the window it replaced.
class VXCapturingOutputWindow : public vtkOutputWindow
{
public:
  static VXCapturingOutputWindow* New();
  vtkTypeMacro(VXCapturingOutputWindow, vtkOutputWindow);

  void setTargets(VXErrorObserver* observer, vtkOutputWindow* previous, bool warningsAreErrors)
  {
    m_Observer = observer;
    m_Previous = previous;
    m_WarningsAreErrors = warningsAreErrors;
  }

  // VTK's macros set the message type and call DisplayText directly, so the type is looked at here.
  void DisplayText(const char* text) override
  {
    switch (GetCurrentMessageType())
    {
    case MESSAGE_TYPE_ERROR:
      m_Observer->addMessage(text);
      m_Previous->DisplayErrorText(text);
      break;
    case MESSAGE_TYPE_WARNING:
    case MESSAGE_TYPE_GENERIC_WARNING:
      if (m_WarningsAreErrors)
      {
        m_Observer->addMessage(text);
      }
      m_Previous->DisplayWarningText(text);
      break;
    case MESSAGE_TYPE_DEBUG:
      m_Previous->DisplayDebugText(text);
      break;
    default:
      m_Previous->DisplayText(text);
      break;
    }
  }

protected:
  VXCapturingOutputWindow() = default;

private:
  VXErrorObserver* m_Observer = nullptr;
  vtkOutputWindow* m_Previous = nullptr;
  bool m_WarningsAreErrors = false;
};
vtkStandardNewMacro(VXCapturingOutputWindow);
} // namespace

VXVtkErrorCapture::VXVtkErrorCapture(bool warningsAreErrors)
    : m_Observer(vtkSmartPointer<VXErrorObserver>::New())
    , m_PreviousWindow(vtkOutputWindow::GetInstance())
    , m_WarningsAreErrors(warningsAreErrors)
{
  auto window = vtkSmartPointer<VXCapturingOutputWindow>::New();
  window->setTargets(m_Observer, m_PreviousWindow, warningsAreErrors);
  vtkOutputWindow::SetInstance(window);
  m_Observer->setPassThrough(m_PreviousWindow);
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
    if (m_WarningsAreErrors)
    {
      m_Watched.emplace_back(object, object->AddObserver(vtkCommand::WarningEvent, m_Observer));
    }
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
