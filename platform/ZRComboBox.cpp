#include "platform/ZRComboBox.h"

#include <QWheelEvent>

ZRComboBox::~ZRComboBox() = default;

void ZRComboBox::wheelEvent(QWheelEvent* event)
{
  if (!hasFocus())
  {
    event->ignore();
    return;
  }
  QComboBox::wheelEvent(event);
}
