#include "platform/ColorPresetsFile.h"

#include <QFile>
#include <QFileInfo>

namespace
{
enum class KeyKind
{
  Text,
  Numbers,
  Flag,
  Array
};

struct KnownKey
{
  const char* name;
  KeyKind kind;
};

// Keys that other programs write and that a preset may leave out.
constexpr KnownKey k_KnownKeys[] = {
    {"Name", KeyKind::Text},         {"ColorSpace", KeyKind::Text},       {"Creator", KeyKind::Text},
    {"License", KeyKind::Text},      {"Source", KeyKind::Text},           {"Points", KeyKind::Numbers},
    {"RGBPoints", KeyKind::Numbers}, {"IndexedColors", KeyKind::Numbers}, {"NanColor", KeyKind::Numbers},
    {"Annotations", KeyKind::Array}, {"DefaultMap", KeyKind::Flag},       {"Favorite", KeyKind::Flag}};

QString kindText(KeyKind kind)
{
  switch (kind)
  {
  case KeyKind::Text:
    return QStringLiteral("a text");
  case KeyKind::Numbers:
    return QStringLiteral("an array of numbers");
  case KeyKind::Flag:
    return QStringLiteral("true or false");
  case KeyKind::Array:
    return QStringLiteral("an array");
  }
  return {};
}

bool hasKind(const nlohmann::json& value, KeyKind kind)
{
  switch (kind)
  {
  case KeyKind::Text:
    return value.is_string();
  case KeyKind::Flag:
    return value.is_boolean();
  case KeyKind::Array:
    return value.is_array();
  case KeyKind::Numbers:
    if (!value.is_array())
    {
      return false;
    }
    for (const auto& element : value)
    {
      if (!element.is_number())
      {
        return false;
      }
    }
    return true;
  }
  return false;
}

bool isUnitColor(double value)
{
  return value >= 0.0 && value <= 1.0;
}

QString presetLabel(const nlohmann::json& presetJson, size_t index)
{
  if (presetJson.is_object())
  {
    auto name = presetJson.find("Name");
    if (name != presetJson.end() && name->is_string() && !name->get<std::string>().empty())
    {
      return QStringLiteral("\"%1\"").arg(QString::fromStdString(name->get<std::string>()));
    }
  }
  return QStringLiteral("number %1").arg(index + 1);
}

QString checkRgbPoints(const std::vector<double>& points)
{
  if (points.size() % 4 != 0)
  {
    return QStringLiteral("\"RGBPoints\" must hold whole x, r, g, b quadruples, but has %1 numbers")
        .arg(points.size());
  }
  for (size_t i = 0; i < points.size(); i += 4)
  {
    if (i > 0 && points[i] < points[i - 4])
    {
      return QStringLiteral("the positions of \"RGBPoints\" must ascend, but node %1 stands at %2 after %3")
          .arg(i / 4 + 1)
          .arg(points[i])
          .arg(points[i - 4]);
    }
    if (!isUnitColor(points[i + 1]) || !isUnitColor(points[i + 2]) || !isUnitColor(points[i + 3]))
    {
      return QStringLiteral("the colour of node %1 of \"RGBPoints\" is outside 0 to 1").arg(i / 4 + 1);
    }
  }
  return {};
}

QString checkColorList(const std::vector<double>& values, const char* key)
{
  if (values.size() % 3 != 0)
  {
    return QStringLiteral("\"%1\" must hold whole r, g, b triples, but has %2 numbers")
        .arg(QLatin1String(key))
        .arg(values.size());
  }
  for (double value : values)
  {
    if (!isUnitColor(value))
    {
      return QStringLiteral("\"%1\" holds the value %2, outside 0 to 1").arg(QLatin1String(key)).arg(value);
    }
  }
  return {};
}
} // namespace

QString ColorPresetsFile::Validate(const nlohmann::json& presetJson)
{
  if (!presetJson.is_object())
  {
    return QStringLiteral("it is not a JSON object");
  }
  for (const KnownKey& key : k_KnownKeys)
  {
    auto value = presetJson.find(key.name);
    if (value != presetJson.end() && !hasKind(*value, key.kind))
    {
      return QStringLiteral("key \"%1\" must be %2").arg(QLatin1String(key.name), kindText(key.kind));
    }
  }
  const bool hasRgb = presetJson.contains("RGBPoints") && !presetJson.at("RGBPoints").empty();
  const bool hasIndexed = presetJson.contains("IndexedColors") && !presetJson.at("IndexedColors").empty();
  if (!hasRgb && !hasIndexed)
  {
    return QStringLiteral("it has neither \"RGBPoints\" nor \"IndexedColors\"");
  }
  if (hasRgb)
  {
    const QString reason = checkRgbPoints(presetJson.at("RGBPoints").get<std::vector<double>>());
    if (!reason.isEmpty())
    {
      return reason;
    }
  }
  if (hasIndexed)
  {
    const QString reason =
        checkColorList(presetJson.at("IndexedColors").get<std::vector<double>>(), "IndexedColors");
    if (!reason.isEmpty())
    {
      return reason;
    }
  }
  if (presetJson.contains("NanColor") && !presetJson.at("NanColor").empty())
  {
    const auto nanColor = presetJson.at("NanColor").get<std::vector<double>>();
    if (nanColor.size() != 3)
    {
      return QStringLiteral("\"NanColor\" must be one r, g, b triple");
    }
    const QString reason = checkColorList(nanColor, "NanColor");
    if (!reason.isEmpty())
    {
      return reason;
    }
  }
  return {};
}

ColorPresetsFile::Result ColorPresetsFile::FromJson(const nlohmann::json& json, const QString& sourceName)
{
  Result result;
  if (!json.is_array() && !json.is_object())
  {
    result.messages.append(
        QStringLiteral(
            "\"%1\" holds no color presets: a preset file is a JSON array of presets or one preset")
            .arg(sourceName));
    return result;
  }
  result.readable = true;
  const nlohmann::json presets = json.is_array() ? json : nlohmann::json::array({json});
  if (presets.empty())
  {
    result.messages.append(QStringLiteral("\"%1\" holds no color presets").arg(sourceName));
  }
  for (size_t i = 0; i < presets.size(); ++i)
  {
    const QString reason = Validate(presets[i]);
    if (!reason.isEmpty())
    {
      result.messages.append(QStringLiteral("Skipped color preset %1 of \"%2\": %3.")
                                 .arg(presetLabel(presets[i], i), sourceName, reason));
      continue;
    }
    ColorPreset preset(presets[i]);
    if (preset.m_Name.empty())
    {
      preset.m_Name = QStringLiteral("Preset %1").arg(i + 1).toStdString();
    }
    result.presets.push_back(std::move(preset));
  }
  return result;
}

ColorPresetsFile::Result ColorPresetsFile::ReadText(const QByteArray& text, const QString& sourceName)
{
  nlohmann::json json;
  try
  {
    json = nlohmann::json::parse(text.constBegin(), text.constEnd());
  }
  catch (const nlohmann::json::parse_error& error)
  {
    Result result;
    result.messages.append(
        QStringLiteral("Could not read color presets from \"%1\": it is not valid JSON (%2).")
            .arg(sourceName, QString::fromUtf8(error.what())));
    return result;
  }
  return FromJson(json, sourceName);
}

ColorPresetsFile::Result ColorPresetsFile::ReadFile(const QString& filePath)
{
  QFile file(filePath);
  if (!file.open(QIODevice::ReadOnly))
  {
    Result result;
    result.messages.append(
        QStringLiteral("Could not open color preset file \"%1\": %2").arg(filePath, file.errorString()));
    return result;
  }
  return ReadText(file.readAll(), QFileInfo(filePath).fileName());
}

std::vector<ColorPresetsFile::ColorPreset> ColorPresetsFile::BuiltInPresets()
{
  return ReadFile(k_BuiltInPresetsPath).presets;
}
