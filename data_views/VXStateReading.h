#pragma once

#include "platform/QtZRSettings.h"

#include <nlohmann/json.hpp>

#include <QColor>
#include <QString>

// Reading of state records and default settings: a key is read only when present, so a missing key
// keeps the current value; a JSON key of the wrong type raises the JSON library's error.
namespace ZRVtkModule::state
{
template<class T>
void readIfPresent(const nlohmann::json& json, const char* key, T& value)
{
  if (json.contains(key))
  {
    value = json.at(key).get<T>();
  }
}

template<class T>
void readSetting(const QtZRSettings& settings, const char* key, T& value)
{
  const QString name = QString::fromLatin1(key);
  if (settings.contains(name))
  {
    value = settings.value(name, QVariant::fromValue(value)).template value<T>();
  }
}

// A colour stored as three doubles from 0 to 1; read only when all three keys are there.
inline void writeColor(nlohmann::json& json, const char* const keys[3], const QColor& color)
{
  json[keys[0]] = color.redF();
  json[keys[1]] = color.greenF();
  json[keys[2]] = color.blueF();
}

inline void readColor(const nlohmann::json& json, const char* const keys[3], QColor& color)
{
  if (json.contains(keys[0]) && json.contains(keys[1]) && json.contains(keys[2]))
  {
    color = QColor::fromRgbF(json.at(keys[0]).get<double>(), json.at(keys[1]).get<double>(),
                             json.at(keys[2]).get<double>());
  }
}

inline void writeColorSetting(QtZRSettings& settings, const char* const keys[3], const QColor& color)
{
  settings.setValue(QString::fromLatin1(keys[0]), color.redF());
  settings.setValue(QString::fromLatin1(keys[1]), color.greenF());
  settings.setValue(QString::fromLatin1(keys[2]), color.blueF());
}

inline void readColorSetting(const QtZRSettings& settings, const char* const keys[3], QColor& color)
{
  if (settings.contains(QString::fromLatin1(keys[0])) && settings.contains(QString::fromLatin1(keys[1])) &&
      settings.contains(QString::fromLatin1(keys[2])))
  {
    color = QColor::fromRgbF(settings.value(QString::fromLatin1(keys[0])).toDouble(),
                             settings.value(QString::fromLatin1(keys[1])).toDouble(),
                             settings.value(QString::fromLatin1(keys[2])).toDouble());
  }
}
} // namespace ZRVtkModule::state
