#pragma once

#include "platform/ZRPlatformExport.h"

#include <QLocale>
#include <QString>

/**
 * @brief The locale that numbers shown to the user are formatted with (group separators on).
 */
class ZR_PLATFORM_EXPORT ZRLocale
{
public:
  static QLocale locale();
  static void setLocale(const QLocale& locale);

  static QString toString(qint64 value);
  static QString toString(double value, char format = 'g', int precision = 6);
};
