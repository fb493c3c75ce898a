#include "data_bridge/zr_contract/Application.h"
#include "data_bridge/zr_contract/ColorPreset.h"
#include "data_bridge/zr_contract/Result.h"

#include <gtest/gtest.h>

using namespace zr::core;
using ColorTableUtilities::ColorPreset;

TEST(ResultTest, ValidityAndErrors)
{
  Result<int> good(5);
  EXPECT_TRUE(good.valid());
  EXPECT_EQ(good.value(), 5);
  good.warnings().push_back({3, "note"});
  EXPECT_TRUE(good.valid());

  Result<int> bad = MakeErrorResult<int>(-7, "broken");
  EXPECT_FALSE(bad.valid());
  EXPECT_EQ(bad.errors().front().code, -7);
  EXPECT_EQ(bad.errors().front().message, "broken");
  EXPECT_THROW(bad.value(), std::logic_error);

  Result<> voidBad = MakeErrorResult(-1, "nope");
  EXPECT_FALSE(voidBad.valid());
  EXPECT_TRUE(Result<>().valid());
  Result<std::string> converted = ConvertInvalidResult<std::string>(std::move(voidBad));
  EXPECT_FALSE(converted.valid());
  EXPECT_EQ(converted.errors().front().message, "nope");
}

TEST(ApplicationTest, OneInstanceWithPreferences)
{
  auto first = Application::GetOrCreateInstance();
  auto second = Application::GetOrCreateInstance();
  EXPECT_EQ(first, second);
  Preferences* preferences = first->getPreferences();
  EXPECT_EQ(preferences->largeDataFormat(), "");
  preferences->setLargeDataSize(123);
  EXPECT_EQ(second->getPreferences()->largeDataSize(), 123u);
  preferences->setValue("custom", {{"a", 1}});
  EXPECT_EQ(preferences->value("custom")["a"], 1);
  EXPECT_TRUE(preferences->value("missing").is_null());
  preferences->clear();
  EXPECT_GT(preferences->largeDataSize(), 123u);
}

TEST(ColorPresetTest, JsonRoundTripAndIndexedCheck)
{
  const nlohmann::json json = {{"Name", "Grains"},
                               {"ColorSpace", "Lab"},
                               {"RGBPoints", {0.0, 0.0, 0.0, 1.0, 1.0, 1.0, 0.0, 0.0}},
                               {"IndexedColors", {1.0, 0.0, 0.0, 0.0, 1.0, 0.0}},
                               {"Annotations", {"1", "Ferrite", "2", "Austenite"}},
                               {"NanColor", {1.0, 1.0, 0.0}}};
  const ColorPreset preset(json);
  EXPECT_EQ(preset.m_Name, "Grains");
  EXPECT_EQ(preset.m_RGBPoints.size(), 8u);
  EXPECT_TRUE(ColorPreset::IsValidIndexedPreset(preset));
  EXPECT_EQ(ColorPreset(preset.toJson()), preset);
  EXPECT_EQ(nlohmann::json::parse(preset.toJsonString(2)), preset.toJson());
  EXPECT_EQ(preset.toJson()["Annotations"][3], "Austenite");

  ColorPreset partial(
      nlohmann::json{{"Name", "X"}, {"IndexedColors", {1.0, 0.0}}, {"RGBPoints", "not a list"}});
  EXPECT_FALSE(ColorPreset::IsValidIndexedPreset(partial));
  EXPECT_TRUE(partial.m_RGBPoints.empty());
  EXPECT_FALSE(ColorPreset::IsValidIndexedPreset(ColorPreset()));
}
