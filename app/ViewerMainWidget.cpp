#include "app/ViewerMainWidget.h"

ViewerMainWidget::ViewerMainWidget(QWidget* parent)
    : VXMainWidget(parent)
{
}

void ViewerMainWidget::setInteractive(bool interactive)
{
  m_Interactive = interactive;
}

bool ViewerMainWidget::askYesNo(const QString& title, const QString& text)
{
  return !m_Interactive || VXMainWidget::askYesNo(title, text);
}

void ViewerMainWidget::showPopup(const QString& title, const QString& message)
{
  Q_EMIT printOutput(QStringLiteral("%1: %2").arg(title, message));
  if (m_Interactive && isVisible())
  {
    VXMainWidget::showPopup(title, message);
  }
}
