#pragma once

#include "platform/ZRPlatformExport.h"

#include "data_bridge/zr_contract/ColorPreset.h"

#include <nlohmann/json.hpp>

#include <QString>
#include <QStringList>

#include <vector>

/**
 * @brief Reads colour preset files: a JSON array of presets, or one preset object, in the form that
 * visualization tools export ("Name", "ColorSpace", "RGBPoints" as x, r, g, b quadruples, "IndexedColors"
 * as r, g, b triples, "NanColor", "Annotations"). Presets that fail the checks are left out, each with a
 * message naming it; the others are kept.
 */
class ZR_PLATFORM_EXPORT ColorPresetsFile
{
public:
  using ColorPreset = zr::core::ColorTableUtilities::ColorPreset;

  /** @brief The resource path of the presets shipped with the application. */
  static inline const QString k_BuiltInPresetsPath = QStringLiteral(":/ZRColorPresets/ColorPresets.json");

  struct Result
  {
    std::vector<ColorPreset> presets;
    /** @brief One line per preset left out, or for a file that could not be read at all. */
    QStringList messages;
    /** @brief False when the file could not be opened or is not JSON of presets. */
    bool readable = false;
  };

  static Result ReadFile(const QString& filePath);
  static Result ReadText(const QByteArray& text, const QString& sourceName);
  static Result FromJson(const nlohmann::json& json, const QString& sourceName);

  /** @brief The shipped presets, in their file order. */
  static std::vector<ColorPreset> BuiltInPresets();

  /**
   * @brief Checks one preset object: known keys of the right JSON type, whole quadruples and triples,
   * ascending positions, colours in 0..1 and at least some colours. Returns an empty text if valid,
   * otherwise the reason.
   */
  static QString Validate(const nlohmann::json& presetJson);
};
