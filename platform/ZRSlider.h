#pragma once

#include "platform/ZRPlatformExport.h"

#include <QSlider>

/**
 * @brief The application's slider; it keeps its value while a panel scrolls under the mouse.
 */
class ZR_PLATFORM_EXPORT ZRSlider : public QSlider
{
  Q_OBJECT

public:
  using QSlider::QSlider;
  ~ZRSlider() override;

protected:
  /** @brief Without focus the wheel scrolls the panel around the control, not its value. */
  void wheelEvent(QWheelEvent* event) override;
};
