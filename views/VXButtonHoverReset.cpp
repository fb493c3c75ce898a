#include "views/VXButtonHoverReset.h"

#include <QAbstractButton>
#include <QCursor>
#include <QPointer>
#include <QTimer>

void VXButtonHoverReset::resetSoon(QAbstractButton* button)
{
  QPointer<QAbstractButton> guarded(button);
  QTimer::singleShot(0, button,
                     [guarded]()
                     {
                       if (!guarded.isNull())
                       {
                         reset(guarded.data());
                       }
                     });
}

void VXButtonHoverReset::reset(QAbstractButton* button)
{
  if (button == nullptr)
  {
    return;
  }
  const bool pointerOver =
      button->isVisible() && button->rect().contains(button->mapFromGlobal(QCursor::pos()));
  button->setAttribute(Qt::WA_UnderMouse, pointerOver);
  button->setDown(false);
  button->update();
}
