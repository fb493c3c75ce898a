#pragma once

#include <QString>
#include <QStringList>

#include <vtkCommand.h>

class vtkOutputWindow;

// Collects the text of VTK error events (and, when observed for them, warning events), so that a
// failed read or write becomes one message for the user. With a pass-through window set, each event
// is still shown there, as VTK would have shown it without an observer.
class VXErrorObserver : public vtkCommand
{
public:
  static VXErrorObserver* New();
  vtkTypeMacro(VXErrorObserver, vtkCommand);

  void Execute(vtkObject* caller, unsigned long eventId, void* callData) override;

  // Adds one message as VTK formats it ("ERROR: In file, line N\nClass (0x..): text").
  void addMessage(const char* vtkMessage);

  bool hasErrors() const;
  // The messages without VTK's file, line and object prefixes, one per line.
  QString errorText() const;
  void clear();

  void setPassThrough(vtkOutputWindow* window) { m_PassThrough = window; }

  // "ERROR: In file, line N\nvtkSomeReader (0x1234): Cannot open file." gives "Cannot open file."
  static QString CleanMessage(const char* vtkMessage);

protected:
  VXErrorObserver() = default;

private:
  QStringList m_Errors;
  QString m_PipelineFailure;
  vtkOutputWindow* m_PassThrough = nullptr;
};
