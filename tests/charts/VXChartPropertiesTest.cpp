// The properties panel: its controls drive the chart, and its state reads back unchanged.
#include "charts/VXChartProperties.h"
#include "charts/VXChart.h"

#include <nlohmann/json.hpp>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>

#include <gtest/gtest.h>

namespace
{
TEST(VXChartPropertiesTest, SaveLoadSaveIsIdentical)
{
  VXChart chart;
  VXChartProperties properties(&chart, 4);
  EXPECT_EQ(properties.getChartName(), "Chart 4");
  chart.setChartTitle("Misorientation");
  chart.setFontSize(VXChart::TextRole::YAxisTitle, 19);
  chart.setFontBold(VXChart::TextRole::XAxisLabels, true);
  chart.setAxisGridLineColor(VXChart::Axis::Y, QColor(90, 91, 92));
  chart.setAxisTickMarks(VXChart::Axis::X, false);
  chart.setXAxisNumberFormat("Fixed", 1);
  chart.setAxisLabelOrientation(VXChart::Axis::X, 45);
  chart.setLegendLocation("Bottom Left");
  chart.setYAxisMin(-2.0);
  chart.setYAxisMax(8.0);
  nlohmann::json first;
  properties.saveState(first);
  ASSERT_TRUE(first.contains("chart_properties"));
  EXPECT_EQ(first["chart_properties"]["default_chart_number"], 4);
  EXPECT_EQ(first["chart_properties"]["chart_title"], "Misorientation");
  EXPECT_EQ(first["chart_properties"]["xaxis_number_format"], "Fixed");

  VXChart otherChart;
  VXChartProperties other(&otherChart, 1);
  other.loadState(first);
  nlohmann::json second;
  other.saveState(second);
  EXPECT_EQ(first, second) << first.dump(2) << "\n----\n" << second.dump(2);
  EXPECT_EQ(other.getChartName(), "Chart 4");
  // The controls show what was loaded.
  EXPECT_EQ(other.getChartTitle(), "Misorientation");
  EXPECT_EQ(other.getLegendLocation(), "Bottom Left");
  EXPECT_EQ(other.findChild<QSpinBox*>("yAxisTitleFontSizeSpin")->value(), 19);
  EXPECT_FALSE(other.findChild<QCheckBox*>("xAxisTickCheck")->isChecked());
  EXPECT_EQ(other.findChild<QLineEdit*>("yAxisMinEdit")->text(), "-2");
}

TEST(VXChartPropertiesTest, MissingKeysKeepTheCurrentValues)
{
  VXChart chart;
  VXChartProperties properties(&chart, 2);
  chart.setChartTitle("Kept");
  properties.loadState(nlohmann::json{{"chart_properties", {{"yaxis_title", "Count"}}}});
  EXPECT_EQ(chart.getChartTitle(), "Kept");
  EXPECT_EQ(chart.getTextStyle(VXChart::TextRole::YAxisTitle).text, "Count");
  EXPECT_EQ(properties.getChartName(), "Chart 2");
}

TEST(VXChartPropertiesTest, ControlsDriveTheChart)
{
  VXChart chart;
  VXChartProperties properties(&chart, 1);
  properties.findChild<QCheckBox*>("yAxisLogCheck")->setChecked(true);
  EXPECT_TRUE(chart.getAxisSettings(VXChart::Axis::Y).logScale);
  properties.findChild<QComboBox*>("xAxisFormatCombo")->setCurrentText("Scientific");
  properties.findChild<QSpinBox*>("xAxisPrecisionSpin")->setValue(2);
  EXPECT_EQ(chart.getAxisSettings(VXChart::Axis::X).notation, "Scientific");
  EXPECT_EQ(chart.getAxisSettings(VXChart::Axis::X).precision, 2);
  properties.findChild<QComboBox*>("legendFontCombo")->setCurrentText("Courier New");
  EXPECT_EQ(chart.getTextStyle(VXChart::TextRole::Legend).family, "Courier New");
  properties.findChild<QComboBox*>("legendPositionCombo")->setCurrentText("Top");
  EXPECT_EQ(chart.getLegendLocation(), "Top");
  // A reset of the chart shows in the axis fields.
  chart.addPlot("s", PlotProperties{}, {0.0, 10.0}, {5.0, 25.0});
  chart.resetYAxis();
  EXPECT_EQ(properties.findChild<QLineEdit*>("yAxisMaxEdit")->text(), "25");
  EXPECT_EQ(properties.findChild<QLineEdit*>("yAxisMinEdit")->text(), "5");
}
} // namespace

namespace
{
TEST(VXChartPropertiesTest, StoredDefaultsReachANewChartAndCanBeCleared)
{
  VXChart::ClearSettings();
  {
    VXChart chart;
    chart.setFontSize(VXChart::TextRole::ChartTitle, 21);
    chart.setLegendLocation("Bottom");
    chart.setXAxisMin(-3.0); // data bounds are not defaults
    chart.writeSettings();
  }
  VXChart fresh;
  fresh.readSettings();
  EXPECT_EQ(fresh.getTextStyle(VXChart::TextRole::ChartTitle).size, 21);
  EXPECT_EQ(fresh.getLegendLocation(), "Bottom");
  EXPECT_NE(fresh.getAxisSettings(VXChart::Axis::X).min, -3.0);
  VXChart::ClearSettings();
  VXChart plain;
  plain.readSettings();
  EXPECT_EQ(plain.getTextStyle(VXChart::TextRole::ChartTitle).size, 32);
}
} // namespace
