#include "platform/ZRLocale.h"

namespace
{
QLocale& storedLocale()
{
  static QLocale s_Locale = []
  {
    QLocale locale = QLocale::system();
    locale.setNumberOptions(QLocale::DefaultNumberOptions);
    return locale;
  }();
  return s_Locale;
}
} // namespace

QLocale ZRLocale::locale()
{
  return storedLocale();
}

void ZRLocale::setLocale(const QLocale& locale)
{
  storedLocale() = locale;
}

QString ZRLocale::toString(qint64 value)
{
  return storedLocale().toString(value);
}

QString ZRLocale::toString(double value, char format, int precision)
{
  return storedLocale().toString(value, format, precision);
}
