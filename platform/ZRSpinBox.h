#pragma once

#include "platform/ZRPlatformExport.h"

#include <QSpinBox>

/**
 * @brief The application's spin box; it keeps its value while a panel scrolls under the mouse.
 */
class ZR_PLATFORM_EXPORT ZRSpinBox : public QSpinBox
{
  Q_OBJECT

public:
  using QSpinBox::QSpinBox;
  ~ZRSpinBox() override;

protected:
  /** @brief Without focus the wheel scrolls the panel around the control, not its value. */
  void wheelEvent(QWheelEvent* event) override;
};
