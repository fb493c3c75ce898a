#pragma once

#include "platform/ZRPlatformExport.h"

#include <QRadioButton>

/**
 * @brief The application's radio button (its own type so that the style sheet can address it).
 */
class ZR_PLATFORM_EXPORT ZRRadioButton : public QRadioButton
{
  Q_OBJECT

public:
  using QRadioButton::QRadioButton;
  ~ZRRadioButton() override;
};
