#pragma once

#include "platform/ZRPlatformExport.h"

#include <QComboBox>

/**
 * @brief The application's combo box; it keeps its value while a panel scrolls under the mouse.
 */
class ZR_PLATFORM_EXPORT ZRComboBox : public QComboBox
{
  Q_OBJECT

public:
  using QComboBox::QComboBox;
  ~ZRComboBox() override;

protected:
  /** @brief Without focus the wheel scrolls the panel around the control, not its value. */
  void wheelEvent(QWheelEvent* event) override;
};
