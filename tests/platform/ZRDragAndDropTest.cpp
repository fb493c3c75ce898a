#include "platform/ZRDragAndDrop.h"

#include <QtCore/QMimeData>

#include <gtest/gtest.h>

using namespace ZR::DragAndDrop;

TEST(ZRDragAndDropTest, ValuesSurviveEncodingInOrder)
{
  const std::vector<DataPathDropValue> values = {
      {zr::core::DataPath({"Sample", "Grains", "Cell Data", "Phases"}), "DataArray"},
      {zr::core::DataPath({"Names"}), "StringArray"}};
  QMimeData mime;
  mime.setData(DataStructureItem, EncodeDropValues(values));
  const auto decoded = DropValuesFromMimeData(&mime);
  ASSERT_TRUE(decoded.has_value());
  ASSERT_EQ(decoded->size(), 2u);
  EXPECT_EQ((*decoded)[0].path.toString(), "Sample/Grains/Cell Data/Phases");
  EXPECT_EQ((*decoded)[0].objectType, "DataArray");
  EXPECT_EQ((*decoded)[1].path.toString(), "Names");
  EXPECT_EQ((*decoded)[1].objectType, "StringArray");
}

TEST(ZRDragAndDropTest, MalformedOrMissingDataGivesNoValues)
{
  EXPECT_FALSE(DecodeDropValues("not json").has_value());
  EXPECT_FALSE(DecodeDropValues(R"({"path": "a"})").has_value());
  EXPECT_FALSE(DecodeDropValues(R"([{"path": 3}])").has_value());
  EXPECT_FALSE(DecodeDropValues(R"([{"path": "a//b"}])").has_value());
  EXPECT_FALSE(DecodeDropValues(R"([{"type": "DataArray"}])").has_value());
  QMimeData plainText;
  plainText.setText("Sample/Grains");
  EXPECT_FALSE(DropValuesFromMimeData(&plainText).has_value());
  EXPECT_FALSE(DropValuesFromMimeData(nullptr).has_value());
  const auto empty = DecodeDropValues("[]");
  ASSERT_TRUE(empty.has_value());
  EXPECT_TRUE(empty->empty());
}
