#include "data_bridge/zr_contract/ColorPreset.h"

namespace zr::core::ColorTableUtilities
{
namespace
{
template<class T>
void ReadKey(const nlohmann::json& json, const char* key, T& target)
{
  auto iter = json.find(key);
  if (iter == json.end())
  {
    return;
  }
  try
  {
    target = iter->get<T>();
  }
  catch (const nlohmann::json::exception&)
  {
    // A mistyped entry keeps the default; presets come from user files.
  }
}
} // namespace

ColorPreset::ColorPreset(const nlohmann::json& json)
{
  if (!json.is_object())
  {
    return;
  }
  ReadKey(json, "Name", m_Name);
  ReadKey(json, "ColorSpace", m_ColorSpace);
  ReadKey(json, "Creator", m_Creator);
  ReadKey(json, "License", m_License);
  ReadKey(json, "Source", m_Source);
  ReadKey(json, "Points", m_Points);
  ReadKey(json, "RGBPoints", m_RGBPoints);
  ReadKey(json, "IndexedColors", m_IndexedColors);
  ReadKey(json, "NanColor", m_NanColor);
  ReadKey(json, "DefaultMap", m_DefaultMap);
  ReadKey(json, "Favorite", m_Favorite);
  auto annotations = json.find("Annotations");
  if (annotations != json.end() && annotations->is_array())
  {
    m_Annotations = *annotations;
  }
}

nlohmann::json ColorPreset::toJson() const
{
  nlohmann::json json = nlohmann::json::object();
  json["Name"] = m_Name;
  json["ColorSpace"] = m_ColorSpace;
  if (!m_Creator.empty())
  {
    json["Creator"] = m_Creator;
  }
  if (!m_License.empty())
  {
    json["License"] = m_License;
  }
  if (!m_Source.empty())
  {
    json["Source"] = m_Source;
  }
  if (!m_Points.empty())
  {
    json["Points"] = m_Points;
  }
  if (!m_RGBPoints.empty())
  {
    json["RGBPoints"] = m_RGBPoints;
  }
  if (!m_IndexedColors.empty())
  {
    json["IndexedColors"] = m_IndexedColors;
  }
  if (!m_NanColor.empty())
  {
    json["NanColor"] = m_NanColor;
  }
  if (!m_Annotations.empty())
  {
    json["Annotations"] = m_Annotations;
  }
  if (m_DefaultMap)
  {
    json["DefaultMap"] = true;
  }
  if (m_Favorite)
  {
    json["Favorite"] = true;
  }
  return json;
}

std::string ColorPreset::toJsonString(int indent) const
{
  return toJson().dump(indent);
}

bool ColorPreset::IsValidIndexedPreset(const ColorPreset& preset)
{
  return !preset.m_IndexedColors.empty() && preset.m_IndexedColors.size() % 3 == 0;
}

bool ColorPreset::operator==(const ColorPreset& other) const
{
  return toJson() == other.toJson();
}

bool ColorPreset::operator!=(const ColorPreset& other) const
{
  return !(*this == other);
}
} // namespace zr::core::ColorTableUtilities
