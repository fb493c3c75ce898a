#include "data_bridge/VXErrorObserver.h"

#include <QRegularExpression>

#include <vtkObjectFactory.h>
#include <vtkOutputWindow.h>

vtkStandardNewMacro(VXErrorObserver);

void VXErrorObserver::Execute(vtkObject* /*caller*/, unsigned long eventId, void* callData)
{
  if (eventId == vtkCommand::ErrorEvent || eventId == vtkCommand::WarningEvent)
  {
    const char* text = static_cast<const char*>(callData);
    addMessage(text);
    if (m_PassThrough != nullptr && text != nullptr)
    {
      if (eventId == vtkCommand::ErrorEvent)
      {
        m_PassThrough->DisplayErrorText(text);
      }
      else
      {
        m_PassThrough->DisplayWarningText(text);
      }
    }
  }
}

void VXErrorObserver::addMessage(const char* vtkMessage)
{
  const QString text = CleanMessage(vtkMessage);
  // The executive's note that an algorithm failed follows the algorithm's own reason and adds a dump of
  // the pipeline request; it is kept, in one line, only for when nothing else was said.
  static const QRegularExpression s_PipelineFailure(
      QStringLiteral("^Algorithm (\\w+)\\(0x[0-9a-fA-F]+\\) returned failure for request"));
  const QRegularExpressionMatch failure = s_PipelineFailure.match(text);
  if (failure.hasMatch())
  {
    if (m_PipelineFailure.isEmpty())
    {
      m_PipelineFailure = QStringLiteral("%1 failed to produce its output.").arg(failure.captured(1));
    }
    return;
  }
  // The executive repeats a reader's failure once per pipeline pass; one line is enough.
  if (!text.isEmpty() && !m_Errors.contains(text))
  {
    m_Errors.append(text);
  }
}

bool VXErrorObserver::hasErrors() const
{
  return !m_Errors.isEmpty() || !m_PipelineFailure.isEmpty();
}

QString VXErrorObserver::errorText() const
{
  return m_Errors.isEmpty() ? m_PipelineFailure : m_Errors.join(QLatin1Char('\n'));
}

void VXErrorObserver::clear()
{
  m_Errors.clear();
  m_PipelineFailure.clear();
}

QString VXErrorObserver::CleanMessage(const char* vtkMessage)
{
  if (vtkMessage == nullptr)
  {
    return {};
  }
  QString text = QString::fromUtf8(vtkMessage).trimmed();
  static const QRegularExpression s_LocationLine(
      QStringLiteral("^(ERROR|Warning|Generic Warning): In [^\\n]*, line \\d+\\s*\\n"));
  static const QRegularExpression s_ObjectPrefix(QStringLiteral("^\\w+ \\(0x[0-9a-fA-F]+\\): "));
  text.remove(s_LocationLine);
  text.remove(s_ObjectPrefix);
  return text.trimmed();
}
