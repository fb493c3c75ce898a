#pragma once

#include "platform/QtZRSettings.h"

#include <nlohmann/json.hpp>

#include <array>

/**
 * @brief Three-component values of the filters' tools (plane origin and normal, box translation,
 * rotation and scale), kept under one key per component in state records and default settings.
 * The clip and the slice share the plane's keys.
 */
namespace VXFilterTriples
{
using Keys = const char* const[3];

inline constexpr const char* k_PlaneNormal[3] = {"clip_plane_normal_x", "clip_plane_normal_y",
                                                 "clip_plane_normal_z"};
inline constexpr const char* k_PlaneOrigin[3] = {"clip_plane_origin_x", "clip_plane_origin_y",
                                                 "clip_plane_origin_z"};

inline void Write(nlohmann::json& json, const Keys& keys, const std::array<double, 3>& values)
{
  for (int i = 0; i < 3; ++i)
  {
    json[keys[i]] = values[i];
  }
}

// A missing key keeps the current value.
inline std::array<double, 3> Read(const nlohmann::json& json, const Keys& keys, std::array<double, 3> values)
{
  for (int i = 0; i < 3; ++i)
  {
    if (json.contains(keys[i]))
    {
      values[i] = json.at(keys[i]).get<double>();
    }
  }
  return values;
}

inline void Store(QtZRSettings& settings, const Keys& keys, const std::array<double, 3>& values)
{
  for (int i = 0; i < 3; ++i)
  {
    settings.setValue(QString::fromLatin1(keys[i]), values[i]);
  }
}

inline std::array<double, 3> Load(const QtZRSettings& settings, const Keys& keys,
                                  std::array<double, 3> values)
{
  for (int i = 0; i < 3; ++i)
  {
    if (settings.contains(QString::fromLatin1(keys[i])))
    {
      values[i] = settings.value(QString::fromLatin1(keys[i])).toDouble();
    }
  }
  return values;
}
} // namespace VXFilterTriples
