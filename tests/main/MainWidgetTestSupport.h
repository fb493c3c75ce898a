#pragma once

#include "main/VXMainWidget.h"

#include <QColor>
#include <QString>
#include <QStringList>

/**
 * A main widget whose questions are answered by the test and whose message boxes are recorded
 * instead of shown.
 */
class ScriptedMainWidget : public VXMainWidget
{
  Q_OBJECT

public:
  using VXMainWidget::VXMainWidget;

  bool m_Answer = true;
  QStringList m_Questions;
  QStringList m_Popups;
  QString m_FileToChoose;
  DefaultsChoice m_DefaultsChoice = DefaultsChoice::DontSave;

protected:
  bool askYesNo(const QString& title, const QString& /*text*/) override
  {
    m_Questions.append(title);
    return m_Answer;
  }
  QString chooseSaveFile(const QString& /*caption*/, const QString& /*filter*/) override
  {
    return m_FileToChoose;
  }
  QString chooseOpenFile(const QString& /*caption*/, const QString& /*filter*/) override
  {
    return m_FileToChoose;
  }
  DefaultsChoice askSaveDefaults() override { return m_DefaultsChoice; }
  void showPopup(const QString& title, const QString& message) override
  {
    m_Popups.append(title + QStringLiteral(": ") + message);
  }
  bool askScreenshotOptions(bool& transparent, QColor& color) override
  {
    transparent = false;
    color = Qt::red;
    return !m_FileToChoose.isEmpty();
  }
  QString chooseScreenshotFile() override { return m_FileToChoose; }
};
