#pragma once

#include "platform/ZRPlatformExport.h"

#include <QLabel>

/**
 * @brief The application's text label (its own type so that the style sheet can address it).
 */
class ZR_PLATFORM_EXPORT ZRLabel : public QLabel
{
  Q_OBJECT

public:
  using QLabel::QLabel;
  ~ZRLabel() override;
};
