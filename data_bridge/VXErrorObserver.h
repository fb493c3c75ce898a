#pragma once

#include <QString>
#include <QStringList>

#include <vtkCommand.h>

// Collects the text of VTK error events (and, when observed for them, warning events), so that a
// failed read or write becomes one message for the user instead of lines on the console.
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

  // "ERROR: In file, line N\nvtkSomeReader (0x1234): Cannot open file." gives "Cannot open file."
  static QString CleanMessage(const char* vtkMessage);

protected:
  VXErrorObserver() = default;

private:
  QStringList m_Errors;
};
