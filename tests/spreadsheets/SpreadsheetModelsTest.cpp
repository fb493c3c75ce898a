// The table models: cell text of every element type, headers, rows of arrays of different lengths,
// column removal, the multidimensional slice and the one pass that sizes columns.
#include "SpreadsheetTestArrays.h"

#include "spreadsheets/DataArrayToStringFunction.h"
#include "spreadsheets/NeighborListArrayToStringFunction.h"
#include "spreadsheets/VXBasicSpreadsheetModel.h"
#include "spreadsheets/VXMultidimSpreadsheetModel.h"
#include "spreadsheets/VXSpreadsheetArrayScan.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace SpreadsheetTest;
using zr::core::DataStructure;

namespace
{
QString Cell(const QAbstractItemModel& model, int row, int column)
{
  return model.data(model.index(row, column), Qt::DisplayRole).toString();
}

QString Header(const QAbstractItemModel& model, int column)
{
  return model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
}
} // namespace

TEST(SpreadsheetCellText, EveryNumericTypeGoesThroughADouble)
{
  DataStructure ds;
  VXBasicSpreadsheetModel model;
  model.addArray(MakeArray<std::int8_t>(ds, "i8", {-128}));
  model.addArray(MakeArray<std::uint8_t>(ds, "u8", {255}));
  model.addArray(MakeArray<std::int16_t>(ds, "i16", {-32768}));
  model.addArray(MakeArray<std::uint16_t>(ds, "u16", {65535}));
  model.addArray(MakeArray<std::int32_t>(ds, "i32", {1234567}));
  model.addArray(MakeArray<std::uint32_t>(ds, "u32", {4000000000U}));
  model.addArray(MakeArray<std::int64_t>(ds, "i64", {-42}));
  model.addArray(MakeArray<std::uint64_t>(ds, "u64", {7}));
  model.addArray(MakeArray<float>(ds, "f32", {0.1f}));
  model.addArray(MakeArray<double>(ds, "f64", {3.14159265}));
  model.addArray(MakeArray<bool>(ds, "b", {true}));
  ASSERT_EQ(model.columnCount(), 11);
  const QStringList expected = {"-128", "255", "-32768",  "65535", "1.23457e+06", "4e+09", "-42",
                                "7",    "0.1", "3.14159", "1"};
  for (int column = 0; column < 11; ++column)
  {
    EXPECT_EQ(Cell(model, 0, column), expected[column]) << Header(model, column).toStdString();
  }
}

TEST(SpreadsheetCellText, NotationAndPrecisionChangeTheTextOnly)
{
  DataStructure ds;
  VXBasicSpreadsheetModel model;
  model.addArray(MakeArray<double>(ds, "Values", {1234.5678, -0.000125}));
  model.addArray(MakeArray<bool>(ds, "Flags", {false, true}));
  const double widestBefore = model.widestValue(0);

  model.setNotation(VXSpreadsheetModel::Fixed);
  model.setPrecision(2);
  EXPECT_EQ(Cell(model, 0, 0), "1234.57");
  EXPECT_EQ(Cell(model, 1, 0), "-0.00");
  EXPECT_EQ(Cell(model, 1, 1), "1.00");

  model.setNotation(VXSpreadsheetModel::Scientific);
  model.setPrecision(3);
  EXPECT_EQ(Cell(model, 0, 0), "1.235e+03");
  EXPECT_EQ(Cell(model, 1, 0), "-1.250e-04");
  EXPECT_EQ(Cell(model, 0, 1), "0.000e+00");

  model.setNotation(VXSpreadsheetModel::Auto);
  model.setPrecision(6);
  EXPECT_EQ(Cell(model, 0, 0), "1234.57");
  EXPECT_EQ(Cell(model, 1, 0), "-0.000125");
  // The widest value was fixed at 'g', precision 6, when the array came in.
  EXPECT_EQ(model.widestValue(0), widestBefore);
  EXPECT_EQ(model.widestValue(0), -0.000125);
}

TEST(SpreadsheetCellText, NeighbourListsStringsAndMissingStores)
{
  DataStructure ds;
  VXBasicSpreadsheetModel model;
  model.addArray(MakeList<std::int32_t>(ds, "Neighbors", {{4, 5, 6}, {}, {7}}));
  model.addArray(MakeStrings(ds, "Phase", {"Ferrite", "Ni\xc3\xb1o", ""}));
  ASSERT_EQ(model.columnCount(), 4);
  EXPECT_EQ(Header(model, 0), "Neighbors_elem0");
  EXPECT_EQ(Header(model, 2), "Neighbors_elem2");
  EXPECT_EQ(Header(model, 3), "Phase");
  EXPECT_EQ(Cell(model, 0, 2), "6");
  EXPECT_EQ(Cell(model, 1, 0), ""); // an empty list
  EXPECT_EQ(Cell(model, 2, 1), ""); // past the end of a shorter list
  EXPECT_EQ(Cell(model, 1, 3), QString::fromUtf8("Ni\xc3\xb1o"));
  // Neighbour-list ranges are per list position.
  EXPECT_EQ(model.componentRanges(0)[0][0], 4.0);
  EXPECT_EQ(model.componentRanges(0)[0][1], 7.0);
  EXPECT_EQ(model.componentRanges(0)[2][1], 6.0);

  auto list = ds.getSharedDataAs<zr::core::NeighborList<std::int32_t>>(zr::core::DataPath({"Neighbors"}));
  NeighborListArrayToStringFunction<std::int32_t> listText(list);
  EXPECT_EQ(listText.toString(0UL, VXSpreadsheetModel::Auto, 6), "INVALID");

  auto storeless =
      std::dynamic_pointer_cast<zr::core::DataArray<float>>(MakeArray<float>(ds, "Empty", {1.0f}));
  storeless->setDataStore(nullptr);
  DataArrayToStringFunction<float> text(storeless);
  try
  {
    text.toString(0UL, VXSpreadsheetModel::Auto, 6);
    FAIL() << "a store-less array was read";
  }
  catch (const std::runtime_error& error)
  {
    EXPECT_STREQ(error.what(), "DataArray::operator[] requires a valid DataStore");
  }
}

TEST(SpreadsheetBasicModel, HeadersFollowComponentsAndEmptyListsAddNothing)
{
  DataStructure ds;
  VXBasicSpreadsheetModel model;
  model.addArray(MakeArray<float>(ds, "Single", {1, 2}));
  model.addArray(MakeArray<float>(ds, "Triple", {1, 2, 3, 4, 5, 6}, 3));
  model.addArray(MakeList<float>(ds, "Nobody", {{}, {}}));
  ASSERT_EQ(model.columnCount(), 4);
  EXPECT_EQ(Header(model, 0), "Single");
  EXPECT_EQ(Header(model, 1), "Triple_comp0");
  EXPECT_EQ(Header(model, 3), "Triple_comp2");
  EXPECT_EQ(model.headerData(1, Qt::Vertical).toString(), "1");
  EXPECT_EQ(Header(model, 9), "");
  EXPECT_FALSE(model.headerData(0, Qt::Horizontal, Qt::ToolTipRole).isValid());
  EXPECT_EQ(model.arrayCount(), 3U);
  EXPECT_EQ(model.roleNames().value(VXSpreadsheetModel::DisplayTextRole), "display");
  EXPECT_TRUE(model.flags(model.index(0, 0)).testFlag(Qt::ItemIsDropEnabled));
  EXPECT_EQ(model.flags(QModelIndex()), Qt::NoItemFlags);
}

TEST(SpreadsheetBasicModel, ShorterArraysLeaveBlankCellsAndRemovalShrinksRows)
{
  DataStructure ds;
  VXBasicSpreadsheetModel model;
  model.addArray(MakeArray<std::int32_t>(ds, "Ten", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
  model.addArray(
      MakeArray<std::int32_t>(ds, "Five", {10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24}, 3));
  EXPECT_EQ(model.rowCount(), 10);
  EXPECT_EQ(Cell(model, 4, 3), "24");
  for (int row = 5; row < 10; ++row)
  {
    EXPECT_EQ(Cell(model, row, 1), "");
  }
  // One of an array's three columns goes: the array stays with its other two.
  model.removeColumn(2);
  EXPECT_EQ(model.columnCount(), 3);
  EXPECT_EQ(model.arrayCount(), 2U);
  EXPECT_EQ(Cell(model, 0, 2), "12");
  EXPECT_EQ(model.rowCount(), 10);
  // The longer array goes: rows shrink to the shorter one.
  model.removeColumn(0);
  EXPECT_EQ(model.arrayCount(), 1U);
  EXPECT_EQ(model.rowCount(), 5);
  EXPECT_EQ(Cell(model, 1, 0), "13");
  EXPECT_EQ(model.componentRanges(0)[0][0], 10.0);
  model.removeColumn(7); // out of range: ignored
  model.removeColumn(-1);
  EXPECT_EQ(model.columnCount(), 2);
  model.removeColumn(1);
  model.removeColumn(0); // the last column of all resets the model
  EXPECT_EQ(model.columnCount(), 0);
  EXPECT_EQ(model.rowCount(), 0);
  EXPECT_EQ(model.arrayCount(), 0U);
}

TEST(SpreadsheetBasicModel, RangesAndWidestComeFromOnePassFirstLongestWins)
{
  DataStructure ds;
  VXBasicSpreadsheetModel model;
  // 12345.6 and -1234.5 both print with 7 characters; the first of them wins.
  model.addArray(MakeArray<double>(ds, "V", {1.0, 12345.6, -5.0, -1234.5, 2.0, 3.0}, 2));
  EXPECT_EQ(model.widestValue(0), 12345.6);
  const auto& ranges = model.componentRanges(0);
  ASSERT_EQ(ranges.size(), 2U);
  EXPECT_EQ(ranges[0][0], -5.0);
  EXPECT_EQ(ranges[0][1], 2.0);
  EXPECT_EQ(ranges[1][0], -1234.5);
  EXPECT_EQ(ranges[1][1], 12345.6);
  EXPECT_EQ(model.data(model.index(0, 1), VXSpreadsheetModel::MinimumRole).toDouble(), -1234.5);
  EXPECT_EQ(model.data(model.index(0, 1), VXSpreadsheetModel::MaximumRole).toDouble(), 12345.6);
  EXPECT_GT(model.data(model.index(0, 1), VXSpreadsheetModel::WidestRole).toDouble(), 0.0);
  EXPECT_EQ(model.data(model.index(0, 0), Qt::TextAlignmentRole).toInt(), static_cast<int>(Qt::AlignCenter));
}

TEST(SpreadsheetBasicModel, ParallelPassMatchesTheSerialDefinition)
{
  // Many values in many tasks: the merged result must equal one walk in order with Qt's own text.
  DataStructure ds;
  QRandomGenerator random(20261123);
  std::vector<double> values(200000);
  for (double& value : values)
  {
    const int kind = random.bounded(4);
    const double magnitude = std::pow(10.0, random.bounded(-8, 9));
    value = (kind == 0 ? std::round(random.generateDouble() * 1e6) : random.generateDouble() * magnitude) *
            (random.bounded(2) == 0 ? -1.0 : 1.0);
  }
  values[150000] = std::numeric_limits<double>::quiet_NaN();
  values[170000] = -std::numeric_limits<double>::infinity();
  values[180000] = -0.0;
  VXBasicSpreadsheetModel model;
  model.addArray(MakeArray<double>(ds, "Random", values, 2));

  int longest = 0;
  double widest = 0.0;
  for (double value : values)
  {
    const int length = QString::number(value, 'g', 6).size();
    EXPECT_EQ(VXSpreadsheetArrayScan::FormattedLength(value), length) << value;
    if (length > longest)
    {
      longest = length;
      widest = value;
    }
  }
  EXPECT_EQ(model.widestValue(0), widest);
}

TEST(SpreadsheetMultidimModel, SliceReadsTheRowMajorIndex)
{
  DataStructure ds;
  std::vector<std::int32_t> values(120);
  for (std::size_t i = 0; i < values.size(); ++i)
  {
    values[i] = static_cast<std::int32_t>(i);
  }
  VXMultidimSpreadsheetModel model;
  model.addArray(MakeArray<std::int32_t>(ds, "Block", values), {2, 3, 4, 5}, 3, 1, {1, 0, 2, 0});
  EXPECT_EQ(model.columnCount(), 5);
  EXPECT_EQ(model.rowCount(), 3);
  EXPECT_EQ(model.flatIndex(2, 4), 114UL);
  EXPECT_EQ(Cell(model, 2, 4), "114");
  // The pass covers the slice: rows 60+0..2*20+10+0..4.
  EXPECT_EQ(model.minimum(), 70.0);
  EXPECT_EQ(model.maximum(), 114.0);
  // Answered for any index, even an invalid one.
  EXPECT_EQ(model.data(QModelIndex(), VXSpreadsheetModel::MinimumRole).toDouble(), 70.0);
  EXPECT_EQ(Header(model, 0), "1");
  model.removeColumn(0);
  EXPECT_EQ(model.columnCount(), 5);
  model.clear();
  EXPECT_EQ(model.columnCount(), 0);
  EXPECT_EQ(Cell(model, 0, 0), "");
}

TEST(SpreadsheetMultidimModel, MergesChunkWinnersByValueAndReadsListsBothWays)
{
  DataStructure ds;
  VXMultidimSpreadsheetModel model;
  std::map<unsigned long, double> first{{0, -123456.0}, {1, 5.0}};
  std::map<unsigned long, double> second{{0, 2.0}, {7, 99.0}};
  model.addArray(MakeArray<float>(ds, "Square", {0, 0, 0, 0}), {2, 2}, 1, 0, {0, 0});
  model.sendThreadSafeUpdate(first, -1.0, 1.0);
  model.sendThreadSafeUpdate(second, -3.0, 0.5);
  // The larger value, not the longer text; a column outside the list is dropped.
  EXPECT_EQ(model.widestValues()[0], 2.0);
  EXPECT_EQ(model.widestValues()[1], 5.0);
  EXPECT_EQ(model.minimum(), -3.0);
  EXPECT_EQ(model.maximum(), 1.0);

  auto list = MakeList<std::int16_t>(ds, "Lists", {{1, 2}, {3}, {4, 5}});
  model.addArray(list, {3, 2}, 1, 0, {0, 0});
  EXPECT_EQ(Cell(model, 2, 1), "5");
  EXPECT_EQ(Cell(model, 1, 1), "");
  model.addArray(list, {3, 2}, 0, 1, {0, 0});
  EXPECT_EQ(model.rowCount(), 2);
  EXPECT_EQ(Cell(model, 1, 2), "5");
  EXPECT_EQ(model.maximum(), 5.0);

  model.addArray(MakeStrings(ds, "Names", {"a", "bb", "ccc", "dddd"}), {2, 2}, 1, 0, {0, 0});
  EXPECT_EQ(Cell(model, 1, 1), "dddd");
}
