#pragma once

#include "main/VXMainWidget.h"

/**
 * @brief The library's main widget as the viewer hosts it. A scripted run (screenshots, state files
 * written from the command line) has no one to answer questions: its pop-ups go only to the output
 * and its questions take the answer that keeps the run going.
 */
class ViewerMainWidget : public VXMainWidget
{
  Q_OBJECT

public:
  explicit ViewerMainWidget(QWidget* parent = nullptr);

  void setInteractive(bool interactive);
  bool isInteractive() const { return m_Interactive; }

protected:
  bool askYesNo(const QString& title, const QString& text) override;
  void showPopup(const QString& title, const QString& message) override;

private:
  bool m_Interactive = true;
};
