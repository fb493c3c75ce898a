// The multidimensional spreadsheet's panel: dimension rows, the x and y rules, the slice it shows,
// data structure changes and its saved state.
#include "SpreadsheetTestArrays.h"

#include "spreadsheets/VXMultidimSpreadsheetOptions.h"
#include "spreadsheets/VXSpreadsheet.h"
#include "spreadsheets/VXSpreadsheetColorOptions.h"
#include "spreadsheets/VXSpreadsheetModel.h"

#include "colour/VXCustomRangeDialog.h"
#include "platform/ColorPresetsDialog.h"
#include "platform/ColorPresetsTableModel.h"
#include "platform/ZRSpinBox.h"

#include <QRadioButton>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace SpreadsheetTest;
using zr::core::DataPath;

namespace
{
// A float array of tuple shape (2, 3, 4) and component shape (5): dims (2, 3, 4, 5). Values are
// unrelated to their index so that a wrong index shows.
std::shared_ptr<zr::core::DataStructure> MakeStructure()
{
  auto ds = std::make_shared<zr::core::DataStructure>();
  auto* cube = zr::core::DataArray<float>::Create(*ds, "Cube", {2, 3, 4}, {5});
  for (zr::core::usize i = 0; i < cube->getSize(); ++i)
  {
    cube->getDataStoreRef().setValue(i, static_cast<float>((i * 37) % 101) / 4.0f);
  }
  MakeArray<float>(*ds, "Plain", {1, 2, 3});
  MakeStrings(*ds, "Names", {"a", "b"});
  return ds;
}

// The element at one index per dimension, read straight from the store.
float ValueAt(const zr::core::DataStructure& ds, const std::vector<unsigned long>& index)
{
  const auto* cube = ds.getDataAs<zr::core::DataArray<float>>(DataPath({"Cube"}));
  const std::vector<unsigned long> dims = {2, 3, 4, 5};
  unsigned long flat = 0;
  for (std::size_t d = 0; d < dims.size(); ++d)
  {
    flat = flat * dims[d] + index[d];
  }
  return cube->getDataStoreRef().getValue(flat);
}

QString Cell(const VXSpreadsheet& sheet, int row, int column)
{
  return sheet.model()->index(row, column).data().toString();
}

QRadioButton* Radio(QWidget& panel, const QString& name)
{
  return panel.findChild<QRadioButton*>(name);
}
} // namespace

TEST(VXMultidimSpreadsheetOptions, OpensOnTheFirstTwoDimensionsWithSpinBoxesOnTheRest)
{
  VXSpreadsheet sheet;
  VXMultidimSpreadsheetOptions options(&sheet);
  options.setDataStructure("run", MakeStructure());
  options.addDataArrays({DataPath({"Cube"})});
  EXPECT_EQ(options.pathText(), "Cube");
  EXPECT_EQ(options.dims(), (std::vector<unsigned long>{2, 3, 4, 5}));
  EXPECT_EQ(options.xDimension(), 0);
  EXPECT_EQ(options.yDimension(), 1);
  ASSERT_EQ(options.spinBoxes().size(), 4U);
  EXPECT_TRUE(options.spinBoxes()[0]->isHidden());
  EXPECT_TRUE(options.spinBoxes()[1]->isHidden());
  EXPECT_FALSE(options.spinBoxes()[2]->isHidden());
  EXPECT_FALSE(options.spinBoxes()[3]->isHidden());
  EXPECT_EQ(options.spinBoxes()[3]->maximum(), 4);
  EXPECT_EQ(sheet.model()->columnCount(), 2);
  EXPECT_EQ(sheet.model()->rowCount(), 3);
  EXPECT_TRUE(options.colorOptions()->isEnabled());
  ASSERT_NE(options.findChild<QWidget*>("dim_label_3"), nullptr);
}

TEST(VXMultidimSpreadsheetOptions, SliceMatchesTheValuesReadIndependently)
{
  VXSpreadsheet sheet;
  VXMultidimSpreadsheetOptions options(&sheet);
  const auto ds = MakeStructure();
  options.setDataStructure("run", ds);
  options.addDataArrays({DataPath({"Cube"})});
  // x on D3, y on D1, D0 fixed at 1 and D2 at 2.
  options.setDimensions(3, 1);
  options.spinBoxes()[0]->setValue(1);
  options.spinBoxes()[2]->setValue(2);
  ASSERT_EQ(sheet.model()->columnCount(), 5);
  ASSERT_EQ(sheet.model()->rowCount(), 3);
  for (int row = 0; row < 3; ++row)
  {
    for (int column = 0; column < 5; ++column)
    {
      const float expected =
          ValueAt(*ds, {1, static_cast<unsigned long>(row), 2, static_cast<unsigned long>(column)});
      EXPECT_EQ(Cell(sheet, row, column), QString::number(expected, 'g', 6)) << row << "," << column;
    }
  }
}

TEST(VXMultidimSpreadsheetOptions, AxesNeverShareADimension)
{
  VXSpreadsheet sheet;
  VXMultidimSpreadsheetOptions options(&sheet);
  options.setDataStructure("run", MakeStructure());
  options.addDataArrays({DataPath({"Cube"})});
  // x onto y's row: y moves on to the next dimension.
  Radio(options, "x_radio_button_1")->click();
  EXPECT_EQ(options.xDimension(), 1);
  EXPECT_EQ(options.yDimension(), 2);
  // Wrapping after the last dimension.
  Radio(options, "y_radio_button_3")->click();
  Radio(options, "x_radio_button_3")->click();
  EXPECT_EQ(options.xDimension(), 3);
  EXPECT_EQ(options.yDimension(), 0);
  EXPECT_EQ(sheet.model()->columnCount(), 5);
  EXPECT_EQ(sheet.model()->rowCount(), 2);
  // A spin box that becomes an axis hides; the slice reads 0 there though the box keeps its value.
  options.spinBoxes()[2]->setValue(3);
  Radio(options, "x_radio_button_2")->click();
  EXPECT_TRUE(options.spinBoxes()[2]->isHidden());
  EXPECT_EQ(options.spinBoxes()[2]->value(), 3);
}

TEST(VXMultidimSpreadsheetOptions, TakesOneArrayOnlyAndDropsVanishedOnes)
{
  VXSpreadsheet sheet;
  VXMultidimSpreadsheetOptions options(&sheet);
  QSignalSpy output(&options, &VXSpreadsheetOptions::printOutput);
  options.setDataStructure("run", MakeStructure());
  options.addDataArrays({DataPath({"Cube"})});
  options.addDataArrays({DataPath({"Cube"}), DataPath({"Plain"})});
  ASSERT_FALSE(output.isEmpty());
  EXPECT_EQ(output.last().at(0).toString(),
            "Multidimensional spreadsheets only support one Data Array at a time.");
  EXPECT_EQ(options.getDataPaths().size(), 1U);
  EXPECT_EQ(sheet.model()->columnCount(), 2);

  // A run without the array empties the panel and says so.
  auto without = MakeStructure();
  without->removeData(DataPath({"Cube"}));
  options.setDataStructure("run", without);
  EXPECT_EQ(output.last().at(0).toString(),
            "Data array at path 'Cube' no longer exists and will be removed from the spreadsheet.");
  EXPECT_TRUE(options.getDataPaths().empty());
  EXPECT_EQ(sheet.model()->columnCount(), 0);
  EXPECT_TRUE(options.dims().empty());
}

TEST(VXMultidimSpreadsheetOptions, StateRoundTripRestoresAxesIndicesAndFormat)
{
  const auto ds = MakeStructure();
  nlohmann::json saved;
  {
    VXSpreadsheet sheet;
    VXMultidimSpreadsheetOptions options(&sheet);
    options.setDefaultSpreadsheetNumber(4);
    options.setDataStructure("run", ds);
    options.addDataArrays({DataPath({"Cube"})});
    options.setDimensions(2, 3);
    options.spinBoxes()[1]->setValue(2);
    options.colorOptions()->rescaleToCustomRange(1.0, 9.0);
    options.saveState(saved);
  }
  EXPECT_EQ(saved["spreadsheet_x_dim_index"], 2);
  EXPECT_EQ(saved["spreadsheet_y_dim_index"], 3);
  EXPECT_EQ(saved["spreadsheet_selected_dims"], nlohmann::json::array({0, 2, 0, 0}));

  VXSpreadsheet sheet;
  VXMultidimSpreadsheetOptions options(&sheet);
  options.setDataStructure("run", ds);
  options.loadState(saved);
  EXPECT_EQ(options.getDefaultSpreadsheetNumber(), 4U);
  EXPECT_EQ(options.xDimension(), 2);
  EXPECT_EQ(options.yDimension(), 3);
  EXPECT_EQ(options.spinBoxes()[1]->value(), 2);
  EXPECT_TRUE(options.colorOptions()->usingCustomRange());
  EXPECT_EQ(Cell(sheet, 1, 2), QString::number(ValueAt(*ds, {0, 2, 2, 1}), 'g', 6));
  nlohmann::json again;
  options.saveState(again);
  EXPECT_EQ(again, saved);
}

TEST(VXSpreadsheetColorOptions, DialogsApplyPresetsAndCustomRanges)
{
  VXSpreadsheet sheet;
  VXMultidimSpreadsheetOptions options(&sheet);
  options.setDataStructure("run", MakeStructure());
  options.addDataArrays({DataPath({"Cube"})});
  VXSpreadsheetColorOptions* colors = options.colorOptions();
  colors->setUseBackgroundColors(true);
  const std::array<double, 2> dataRange = colors->range();
  QSignalSpy changed(colors, &VXSpreadsheetColorOptions::colorMapChanged);

  ColorPresetsDialog* presets = colors->colorPresetsDialog();
  ASSERT_GT(presets->presetsModel()->rowCount(), 1);
  QString other;
  for (int row = 0; row < presets->presetsModel()->rowCount() && other.isEmpty(); ++row)
  {
    const QString name = QString::fromStdString(presets->presetsModel()->preset(row).m_Name);
    if (name != colors->presetName())
    {
      other = name;
    }
  }
  ASSERT_TRUE(presets->selectPreset(other));
  presets->applySelectedPreset();
  EXPECT_EQ(colors->presetName(), other);
  EXPECT_EQ(changed.count(), 1);
  EXPECT_EQ(colors->range(), dataRange);

  VXCustomRangeDialog* range = colors->customRangeDialog();
  Q_EMIT range->rescale(2.0, 5.0);
  EXPECT_TRUE(colors->usingCustomRange());
  EXPECT_EQ(colors->range(), (std::array<double, 2>{2.0, 5.0}));
  EXPECT_EQ(colors->rangeMinText(), "2");
  EXPECT_EQ(changed.count(), 2);
  Q_EMIT range->needsRangeReset();
  EXPECT_FALSE(colors->usingCustomRange());
  const auto [min, max] = sheet.getMinMax();
  EXPECT_EQ(colors->range(), (std::array<double, 2>{min, max}));

  // A saved preset comes back by name.
  nlohmann::json saved;
  colors->saveState(saved);
  VXSpreadsheetColorOptions restored(&options);
  EXPECT_NE(restored.presetName(), other);
  restored.loadState(saved);
  EXPECT_EQ(restored.presetName(), other);
  EXPECT_TRUE(restored.useBackgroundColors());
}
