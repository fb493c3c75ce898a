#include "platform/ZRSlider.h"

#include <QWheelEvent>

ZRSlider::~ZRSlider() = default;

void ZRSlider::wheelEvent(QWheelEvent* event)
{
  if (!hasFocus())
  {
    event->ignore();
    return;
  }
  QSlider::wheelEvent(event);
}
