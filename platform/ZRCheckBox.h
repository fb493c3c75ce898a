#pragma once

#include "platform/ZRPlatformExport.h"

#include <QCheckBox>

/**
 * @brief The application's check box (its own type so that the style sheet can address it).
 */
class ZR_PLATFORM_EXPORT ZRCheckBox : public QCheckBox
{
  Q_OBJECT

public:
  using QCheckBox::QCheckBox;
  ~ZRCheckBox() override;
};
