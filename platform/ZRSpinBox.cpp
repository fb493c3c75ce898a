#include "platform/ZRSpinBox.h"

#include <QWheelEvent>

ZRSpinBox::~ZRSpinBox() = default;

void ZRSpinBox::wheelEvent(QWheelEvent* event)
{
  if (!hasFocus())
  {
    event->ignore();
    return;
  }
  QSpinBox::wheelEvent(event);
}
