#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace zr::core::ColorTableUtilities
{
// A colour preset record as stored in preset files:
// {"Name", "ColorSpace", "Creator", "License", "Source", "Points", "RGBPoints" (x, r, g, b quadruples),
//  "IndexedColors" (r, g, b triples), "NanColor", "Annotations" (value and label texts alternating),
//  "DefaultMap", "Favorite"}.
class ColorPreset
{
public:
  ColorPreset() = default;
  // Missing or mistyped keys leave the defaults.
  explicit ColorPreset(const nlohmann::json& json);

  nlohmann::json toJson() const;
  std::string toJsonString(int indent = -1) const;

  // True when the preset has at least one r, g, b triple of indexed colours and whole triples only.
  static bool IsValidIndexedPreset(const ColorPreset& preset);

  bool operator==(const ColorPreset& other) const;
  bool operator!=(const ColorPreset& other) const;

  std::string m_Name;
  std::string m_ColorSpace = "RGB";
  std::string m_Creator;
  std::string m_License;
  std::string m_Source;
  std::vector<float> m_Points;
  std::vector<float> m_RGBPoints;
  std::vector<float> m_IndexedColors;
  std::vector<float> m_NanColor;
  nlohmann::json m_Annotations = nlohmann::json::array();
  bool m_DefaultMap = false;
  bool m_Favorite = false;
};
} // namespace zr::core::ColorTableUtilities
