#include "platform/ColorPresetsFile.h"
#include "platform/ColorPresetsTableModel.h"

#include <nlohmann/json.hpp>

#include <QFile>
#include <QImage>
#include <QSet>

#include <gtest/gtest.h>

namespace
{
using ColorPreset = zr::core::ColorTableUtilities::ColorPreset;

const QString k_PresetData = QStringLiteral(ZR_TEST_DATA_DIR "/presets/");

nlohmann::json shippedJson()
{
  QFile file(ColorPresetsFile::k_BuiltInPresetsPath);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray text = file.readAll();
  return nlohmann::json::parse(text.constBegin(), text.constEnd());
}

const ColorPreset* findPreset(const std::vector<ColorPreset>& presets, const std::string& name)
{
  for (const ColorPreset& preset : presets)
  {
    if (preset.m_Name == name)
    {
      return &preset;
    }
  }
  return nullptr;
}

nlohmann::json grayPreset()
{
  return {{"Name", "Gray"}, {"RGBPoints", {0.0, 0.0, 0.0, 0.0, 1.0, 1.0, 1.0, 1.0}}};
}
} // namespace

TEST(ColorPresetsFile, ShippedPresetsAllParseWithValidNodes)
{
  const nlohmann::json raw = shippedJson();
  ASSERT_TRUE(raw.is_array());
  const std::vector<ColorPreset> presets = ColorPresetsFile::BuiltInPresets();
  ASSERT_EQ(presets.size(), raw.size()); // none left out

  QSet<QString> names;
  int indexedCount = 0;
  for (const ColorPreset& preset : presets)
  {
    SCOPED_TRACE(preset.m_Name);
    EXPECT_FALSE(names.contains(QString::fromStdString(preset.m_Name)));
    names.insert(QString::fromStdString(preset.m_Name));
    ASSERT_EQ(preset.m_NanColor.size(), 3u);
    if (!preset.m_IndexedColors.empty())
    {
      ++indexedCount;
      EXPECT_TRUE(ColorPreset::IsValidIndexedPreset(preset));
      EXPECT_GE(preset.m_IndexedColors.size() / 3, 7u);
      for (float value : preset.m_IndexedColors)
      {
        EXPECT_TRUE(value >= 0.0f && value <= 1.0f) << value;
      }
      continue;
    }
    const std::vector<float>& points = preset.m_RGBPoints;
    ASSERT_EQ(points.size() % 4, 0u);
    const size_t nodes = points.size() / 4;
    EXPECT_GE(nodes, 32u);
    EXPECT_LE(nodes, 64u);
    EXPECT_FLOAT_EQ(points.front(), 0.0f);
    EXPECT_FLOAT_EQ(points[points.size() - 4], 1.0f);
    for (size_t i = 0; i < points.size(); i += 4)
    {
      if (i > 0)
      {
        EXPECT_GT(points[i], points[i - 4]) << "node " << i / 4;
      }
      for (size_t c = 1; c <= 3; ++c)
      {
        EXPECT_TRUE(points[i + c] >= 0.0f && points[i + c] <= 1.0f) << "node " << i / 4;
      }
    }
  }
  EXPECT_GE(indexedCount, 3);

  // Perceptually uniform maps lead the list.
  ASSERT_GE(presets.size(), 5u);
  const std::vector<std::string> leading = {"Viridis", "Plasma", "Inferno", "Magma", "Cividis"};
  for (size_t i = 0; i < leading.size(); ++i)
  {
    EXPECT_EQ(presets[i].m_Name, leading[i]);
  }
  for (const char* name : {"Cool to Warm", "Blue - Orange", "Jet", "Turbo", "Rainbow"})
  {
    EXPECT_NE(findPreset(presets, name), nullptr) << name;
  }
  // The published end colours of viridis: dark purple to yellow.
  const ColorPreset* viridis = findPreset(presets, "Viridis");
  ASSERT_NE(viridis, nullptr);
  EXPECT_NEAR(viridis->m_RGBPoints[1], 0.267, 0.002);
  EXPECT_NEAR(viridis->m_RGBPoints[2], 0.005, 0.002);
  EXPECT_NEAR(viridis->m_RGBPoints[3], 0.329, 0.002);
  const size_t last = viridis->m_RGBPoints.size() - 4;
  EXPECT_NEAR(viridis->m_RGBPoints[last + 1], 0.993, 0.002);
  EXPECT_NEAR(viridis->m_RGBPoints[last + 2], 0.906, 0.002);
  EXPECT_NEAR(viridis->m_RGBPoints[last + 3], 0.144, 0.002);
}

TEST(ColorPresetsFile, ValidationNamesWhatIsWrong)
{
  EXPECT_TRUE(ColorPresetsFile::Validate(grayPreset()).isEmpty());

  nlohmann::json descending = grayPreset();
  descending["RGBPoints"] = {1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 1.0, 1.0};
  EXPECT_TRUE(ColorPresetsFile::Validate(descending).contains(QStringLiteral("ascend")));

  nlohmann::json bright = grayPreset();
  bright["RGBPoints"] = {0.0, 0.0, 0.0, 0.0, 1.0, 255.0, 255.0, 255.0};
  EXPECT_TRUE(ColorPresetsFile::Validate(bright).contains(QStringLiteral("outside 0 to 1")));

  nlohmann::json partial = grayPreset();
  partial["RGBPoints"] = {0.0, 0.0, 0.0, 0.0, 1.0, 1.0, 1.0};
  EXPECT_TRUE(ColorPresetsFile::Validate(partial).contains(QStringLiteral("quadruples")));

  nlohmann::json wrongName = grayPreset();
  wrongName["Name"] = 7;
  EXPECT_TRUE(ColorPresetsFile::Validate(wrongName).contains(QStringLiteral("\"Name\" must be a text")));

  nlohmann::json noColors = {{"Name", "Empty"}, {"ColorSpace", "RGB"}};
  EXPECT_FALSE(ColorPresetsFile::Validate(noColors).isEmpty());

  nlohmann::json indexed = {{"Name", "Two"}, {"IndexedColors", {1, 0, 0, 0, 1, 0}}, {"NanColor", {1, 1}}};
  EXPECT_TRUE(ColorPresetsFile::Validate(indexed).contains(QStringLiteral("NanColor")));
  indexed["NanColor"] = {1, 1, 0};
  EXPECT_TRUE(ColorPresetsFile::Validate(indexed).isEmpty());
  EXPECT_FALSE(ColorPresetsFile::Validate(nlohmann::json::array()).isEmpty());
}

TEST(ColorPresetsFile, ReadsFilesOfOtherProgramsAndLeavesOutBadPresets)
{
  const auto good = ColorPresetsFile::ReadFile(k_PresetData + "good-presets.json");
  EXPECT_TRUE(good.readable);
  EXPECT_TRUE(good.messages.isEmpty()) << good.messages.join('\n').toStdString();
  ASSERT_EQ(good.presets.size(), 2u);
  EXPECT_EQ(good.presets[0].m_Name, "Exported Twilight");
  EXPECT_EQ(good.presets[0].m_RGBPoints.size(), 36u);
  EXPECT_FLOAT_EQ(good.presets[0].m_RGBPoints.front(), -1.0f);
  EXPECT_EQ(good.presets[1].m_IndexedColors.size(), 9u);
  EXPECT_EQ(good.presets[1].m_Annotations.size(), 6u);
  EXPECT_EQ(good.presets[1].m_Annotations[1], "Ferrite");

  const auto single = ColorPresetsFile::ReadFile(k_PresetData + "single-preset.json");
  ASSERT_EQ(single.presets.size(), 1u);
  EXPECT_EQ(single.presets[0].m_Name, "Exported Single");

  const auto mixed = ColorPresetsFile::ReadFile(k_PresetData + "mixed-presets.json");
  EXPECT_TRUE(mixed.readable);
  ASSERT_EQ(mixed.presets.size(), 2u);
  EXPECT_EQ(mixed.presets[0].m_Name, "Good Before");
  EXPECT_EQ(mixed.presets[1].m_Name, "Good After");
  ASSERT_EQ(mixed.messages.size(), 2);
  EXPECT_TRUE(mixed.messages[0].contains(QStringLiteral("\"Text Points\"")));
  EXPECT_TRUE(mixed.messages[0].contains(QStringLiteral("RGBPoints")));
  EXPECT_TRUE(mixed.messages[1].contains(QStringLiteral("\"Object Colors\"")));
  EXPECT_TRUE(mixed.messages[1].contains(QStringLiteral("mixed-presets.json")));

  const auto malformed = ColorPresetsFile::ReadFile(k_PresetData + "malformed-presets.json");
  EXPECT_FALSE(malformed.readable);
  EXPECT_TRUE(malformed.presets.empty());
  ASSERT_EQ(malformed.messages.size(), 1);
  EXPECT_TRUE(malformed.messages[0].contains(QStringLiteral("malformed-presets.json")));
  EXPECT_TRUE(malformed.messages[0].contains(QStringLiteral("not valid JSON")));

  const auto missing = ColorPresetsFile::ReadFile(k_PresetData + "no-such-file.json");
  EXPECT_FALSE(missing.readable);
  ASSERT_EQ(missing.messages.size(), 1);
  EXPECT_TRUE(missing.messages[0].startsWith(QStringLiteral("Could not open")));

  const auto scalar = ColorPresetsFile::ReadText("42", QStringLiteral("number.json"));
  EXPECT_FALSE(scalar.readable);
  EXPECT_EQ(scalar.messages.size(), 1);
  const auto empty = ColorPresetsFile::ReadText("[]", QStringLiteral("empty.json"));
  EXPECT_TRUE(empty.presets.empty());
  EXPECT_EQ(empty.messages.size(), 1);
}

TEST(ColorPresetsTableModel, ColorBarsShowTheNodesAndTheSwatches)
{
  ColorPreset ramp;
  ramp.m_Name = "Ramp";
  ramp.m_RGBPoints = {-2.0f, 0.0f, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f, 2.0f, 1.0f, 1.0f, 1.0f};
  const QImage bar = ColorPresetsTableModel::CreateColorBar(ramp, QSize(101, 4)).toImage();
  ASSERT_EQ(bar.size(), QSize(101, 4));
  EXPECT_EQ(QColor(bar.pixel(0, 2)), QColor(0, 0, 0));
  EXPECT_EQ(QColor(bar.pixel(50, 2)), QColor(255, 0, 0)); // the middle node sits at the middle
  EXPECT_EQ(QColor(bar.pixel(100, 2)), QColor(255, 255, 255));
  const QColor quarter(bar.pixel(25, 0));
  EXPECT_NEAR(quarter.red(), 128, 2);
  EXPECT_EQ(quarter.green(), 0);

  ColorPreset categories;
  categories.m_IndexedColors = {1.0f, 0.0f, 0.0f, 0.0f, 0.0f, 1.0f};
  const QImage swatches = ColorPresetsTableModel::CreateColorBar(categories, QSize(10, 2)).toImage();
  EXPECT_EQ(QColor(swatches.pixel(4, 1)), QColor(255, 0, 0));
  EXPECT_EQ(QColor(swatches.pixel(5, 1)), QColor(0, 0, 255));

  ColorPresetsTableModel model;
  model.setPresets({ramp, categories});
  EXPECT_EQ(model.rowCount(), 2);
  EXPECT_EQ(model.data(model.index(0, ColorPresetsTableModel::NameColumn)).toString(),
            QStringLiteral("Ramp"));
  EXPECT_FALSE(model.data(model.index(0, ColorPresetsTableModel::ColorBarColumn), Qt::DecorationRole)
                   .value<QPixmap>()
                   .isNull());
  EXPECT_EQ(model.rowOfName(QStringLiteral("Ramp")), 0);
  EXPECT_EQ(model.rowOfName(QStringLiteral("Nothing")), -1);
}
