// The basic spreadsheet's options panel: arrays by data path, colour blocks per column, column
// diff, data structure changes and its saved state.
#include "SpreadsheetTestArrays.h"

#include "spreadsheets/VXBasicSpreadsheetOptions.h"
#include "spreadsheets/VXSpreadsheet.h"
#include "spreadsheets/VXSpreadsheetColorOptions.h"
#include "spreadsheets/VXSpreadsheetItemDelegate.h"
#include "spreadsheets/VXSpreadsheetModel.h"
#include "spreadsheets/VXSpreadsheetTableView.h"

#include <QItemSelectionModel>

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace SpreadsheetTest;
using zr::core::DataPath;

namespace
{
std::shared_ptr<zr::core::DataStructure> MakeStructure()
{
  auto ds = std::make_shared<zr::core::DataStructure>();
  MakeArray<float>(*ds, "Scalar", {1, 2, 3});
  MakeArray<std::int32_t>(*ds, "Triple", {1, 2, 3, 4, 5, 6, 7, 8, 9}, 3);
  MakeList<std::int16_t>(*ds, "Neighbors", {{1, 2}, {3}, {}});
  MakeStrings(*ds, "Names", {"a", "b", "c"});
  return ds;
}

QString LastMessage(const QSignalSpy& spy)
{
  return spy.isEmpty() ? QString() : spy.last().at(0).toString();
}
} // namespace

TEST(VXBasicSpreadsheetOptions, AddsArraysByPathWithAColourBlockPerColumn)
{
  VXSpreadsheet sheet;
  VXBasicSpreadsheetOptions options(&sheet);
  QSignalSpy output(&options, &VXSpreadsheetOptions::printOutput);
  options.addDataArrays({DataPath({"Scalar"})});
  ASSERT_EQ(output.size(), 2);
  EXPECT_EQ(output.at(0).at(0).toString(), VXSpreadsheetOptions::NoDataStructureText());
  EXPECT_EQ(LastMessage(output),
            "Data array at path 'Scalar' does not exist and cannot be added to the spreadsheet.");

  options.setDataStructure("run-1", MakeStructure());
  options.addDataArrays({DataPath({"Scalar"}), DataPath({"Gone", "Array"}), DataPath({"Triple"}),
                         DataPath({"Neighbors"}), DataPath({"Names"})});
  EXPECT_EQ(LastMessage(output),
            "Data array at path 'Gone/Array' does not exist and cannot be added to the spreadsheet.");
  EXPECT_EQ(options.getDataPaths().size(), 4U);
  EXPECT_EQ(options.columnSelectorItems(),
            QStringList({"Scalar", "Triple_comp0", "Triple_comp1", "Triple_comp2", "Neighbors_elem0",
                         "Neighbors_elem1", "Names"}));
  EXPECT_EQ(sheet.model()->columnCount(), 7);
  ASSERT_EQ(options.colorOptions().size(), 7U);
  EXPECT_FALSE(options.colorOptions()[6]->isEnabled()); // a string column has no colours
  EXPECT_EQ(options.colorOptions()[1]->rangeMaxText(), "7");
  EXPECT_EQ(options.getSpreadsheetName(), "Sheet 0");
}

TEST(VXBasicSpreadsheetOptions, ColumnDiffNeedsTwoColumnsAndSwitchesOffTheirColours)
{
  VXSpreadsheet sheet;
  VXBasicSpreadsheetOptions options(&sheet);
  options.setDataStructure("run-1", MakeStructure());
  options.addDataArrays({DataPath({"Triple"})});
  options.colorOptions()[0]->setUseBackgroundColors(true);
  options.colorOptions()[2]->setUseBackgroundColors(true);
  QSignalSpy output(&options, &VXSpreadsheetOptions::printOutput);

  options.setColumnDiffFields(true, "2", "2");
  EXPECT_EQ(LastMessage(output),
            "Warning: Spreadsheet column diff feature requires two different columns for "
            "comparison but you have entered 2 for both columns");
  EXPECT_TRUE(options.colorOptions()[2]->useBackgroundColors());

  options.setColumnDiffFields(true, "0", "2");
  // Column 0 keeps its colours; the other column of the pair loses them.
  EXPECT_TRUE(options.colorOptions()[0]->useBackgroundColors());
  EXPECT_FALSE(options.colorOptions()[2]->useBackgroundColors());
  EXPECT_EQ(sheet.itemDelegate()->columnColorMaps()[2], nullptr);
  EXPECT_NE(sheet.itemDelegate()->columnColorMaps()[0], nullptr);
}

TEST(VXBasicSpreadsheetOptions, RemovedColumnsShiftTheColoursOfLaterOnes)
{
  VXSpreadsheet sheet;
  VXBasicSpreadsheetOptions options(&sheet);
  options.setDataStructure("run-1", MakeStructure());
  options.addDataArrays({DataPath({"Scalar"}), DataPath({"Triple"}), DataPath({"Neighbors"})});
  ASSERT_EQ(options.colorOptions().size(), 6U);
  options.colorOptions()[3]->setUseBackgroundColors(true);
  options.colorOptions()[4]->setUseBackgroundColors(true);
  vtkColorTransferFunction* third = options.colorOptions()[3]->getColorTransferFunction();
  vtkColorTransferFunction* fourth = options.colorOptions()[4]->getColorTransferFunction();

  sheet.tableView()->selectionModel()->select(sheet.model()->index(0, 2), QItemSelectionModel::Select);
  sheet.removeSelectedColumn();
  ASSERT_EQ(options.colorOptions().size(), 5U);
  EXPECT_EQ(sheet.itemDelegate()->columnColorMaps()[2], third);
  EXPECT_EQ(sheet.itemDelegate()->columnColorMaps()[3], fourth);
  EXPECT_EQ(options.columnSelectorItems().at(2), "Triple_comp2");
}

TEST(VXBasicSpreadsheetOptions, ARunThatRemovedAnArrayDropsItsPathQuietly)
{
  VXSpreadsheet sheet;
  VXBasicSpreadsheetOptions options(&sheet);
  options.setDataStructure("run-1", MakeStructure());
  options.addDataArrays({DataPath({"Scalar"}), DataPath({"Names"})});
  QSignalSpy output(&options, &VXSpreadsheetOptions::printOutput);
  auto nextRun = MakeStructure();
  nextRun->removeData(DataPath({"Scalar"}));
  options.setDataStructure("run-2", nextRun);
  EXPECT_TRUE(output.isEmpty());
  ASSERT_EQ(options.getDataPaths().size(), 1U);
  EXPECT_EQ(options.getDataPaths()[0], DataPath({"Names"}));
  EXPECT_EQ(sheet.model()->columnCount(), 1);
  EXPECT_EQ(options.columnSelectorItems(), QStringList({"Names"}));
}

TEST(VXBasicSpreadsheetOptions, SavedStateBringsBackArraysFormatAndColours)
{
  const auto ds = MakeStructure();
  nlohmann::json state;
  {
    VXSpreadsheet sheet;
    VXBasicSpreadsheetOptions options(&sheet);
    options.setDefaultSpreadsheetNumber(4);
    options.setDataStructure("run-1", ds);
    options.addDataArrays({DataPath({"Triple"}), DataPath({"Scalar"})});
    sheet.setNotation("Fixed");
    options.colorOptions()[3]->setUseBackgroundColors(true);
    options.colorOptions()[3]->rescaleToCustomRange(-1.0, 5.0);
    options.saveState(state);
  }
  EXPECT_EQ(state["spreadsheet_data_arrays"], nlohmann::json::array({"Triple", "Scalar"}));
  EXPECT_EQ(state["default_spreadsheet_number"], 4);
  EXPECT_EQ(state["spreadsheet_color_options"][3]["spreadsheet_color_options_column_name"], "Scalar");

  VXSpreadsheet sheet;
  VXBasicSpreadsheetOptions options(&sheet);
  options.setDataStructure("run-1", ds);
  options.loadState(state);
  EXPECT_EQ(options.getDefaultSpreadsheetNumber(), 4U);
  EXPECT_EQ(sheet.model()->columnCount(), 4);
  ASSERT_EQ(options.colorOptions().size(), 4U);
  EXPECT_TRUE(options.colorOptions()[3]->useBackgroundColors());
  EXPECT_TRUE(options.colorOptions()[3]->usingCustomRange());
  EXPECT_EQ(options.colorOptions()[3]->range(), (std::array<double, 2>{-1.0, 5.0}));
  EXPECT_EQ(sheet.itemDelegate()->columnColorMaps()[3],
            options.colorOptions()[3]->getColorTransferFunction());
  EXPECT_FALSE(options.colorOptions()[0]->useBackgroundColors());
}
