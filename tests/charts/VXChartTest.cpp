// The chart over the plotting library: formats, bounds, defaults, series bookkeeping and log axes.
#include "charts/VXChart.h"
#include "platform/plottaro/Plot.h"
#include "platform/plottaro/PlotItem.h"

#include <nlohmann/json.hpp>

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{
PlotProperties Style(int type, plottaro::Color color)
{
  PlotProperties props;
  props.type = type;
  props.color = color;
  return props;
}

TEST(VXChartTest, NumberFormatsBecomeLabelFormats)
{
  VXChart chart;
  chart.setXAxisNumberFormat("Fixed", 2);
  EXPECT_EQ(chart.getPlot()->axisLabelFormat(VXChart::k_PlotXAxis), "{:.2f}");
  chart.setYAxisNumberFormat("Scientific", 3);
  EXPECT_EQ(chart.getPlot()->axisLabelFormat(VXChart::k_PlotYAxis), "{:.3e}");
  chart.setXAxisNumberFormat("Auto", 5);
  EXPECT_EQ(chart.getPlot()->axisLabelFormat(VXChart::k_PlotXAxis), "");
  EXPECT_EQ(chart.getAxisSettings(VXChart::Axis::X).precision, 5);
}

TEST(VXChartTest, SpacingFollowsTheDataRangeOnlyWhenUnset)
{
  VXChart chart;
  chart.addPlot("a", Style(PlotProperties::Line, plottaro::Color::Black()), {0.0, 1.0, 2.0},
                {2.0, 12.0, 7.0});
  EXPECT_DOUBLE_EQ(chart.getAxisSettings(VXChart::Axis::Y).min, 2.0);
  EXPECT_DOUBLE_EQ(chart.getAxisSettings(VXChart::Axis::Y).max, 12.0);
  EXPECT_DOUBLE_EQ(chart.getAxisSettings(VXChart::Axis::Y).spacing, 1.0);
  EXPECT_DOUBLE_EQ(chart.getAxisSettings(VXChart::Axis::X).spacing, 0.2);

  VXChart flat;
  flat.addPlot("a", Style(PlotProperties::Line, plottaro::Color::Black()), {0.0, 1.0}, {3.0, 3.0});
  EXPECT_DOUBLE_EQ(flat.getAxisSettings(VXChart::Axis::Y).spacing, 0.0);
}

TEST(VXChartTest, BoundsOfAnEmptyChartAreZeroToOne)
{
  VXChart chart;
  double bounds[4];
  chart.getBounds(bounds);
  EXPECT_EQ(bounds[0], 0.0);
  EXPECT_EQ(bounds[1], 1.0);
  EXPECT_EQ(bounds[2], 0.0);
  EXPECT_EQ(bounds[3], 1.0);
  chart.addPlot("a", Style(PlotProperties::Points, plottaro::Color::Black()), {-4.0, 9.0}, {0.5, -0.25});
  chart.getBounds(bounds);
  EXPECT_EQ(bounds[0], -4.0);
  EXPECT_EQ(bounds[1], 9.0);
  EXPECT_EQ(bounds[2], -0.25);
  EXPECT_EQ(bounds[3], 0.5);
}

TEST(VXChartTest, ResetPropertiesSetsDefaultsAndResetsColourButtons)
{
  VXChart chart;
  chart.setFontSize(VXChart::TextRole::ChartTitle, 10);
  chart.setAxisGridLineColor(VXChart::Axis::Y, Qt::red);
  QSignalSpy gridReset(&chart, &VXChart::yAxisGridLineColorReset);
  QSignalSpy titleReset(&chart, &VXChart::chartTitleFontColorReset);
  chart.resetProperties();
  EXPECT_EQ(chart.getTextStyle(VXChart::TextRole::ChartTitle).size, 32);
  EXPECT_EQ(chart.getTextStyle(VXChart::TextRole::XAxisTitle).size, 24);
  EXPECT_EQ(chart.getTextStyle(VXChart::TextRole::YAxisTitle).size, 24);
  EXPECT_EQ(chart.getTextStyle(VXChart::TextRole::Legend).size, 16);
  EXPECT_TRUE(chart.getTextStyle(VXChart::TextRole::ChartTitle).bold);
  EXPECT_FALSE(chart.getTextStyle(VXChart::TextRole::XAxisLabels).bold);
  EXPECT_EQ(chart.getChartTitle(), "Chart Title");
  EXPECT_EQ(chart.getLegendLocation(), "Top Right");
  EXPECT_EQ(chart.getLegendSymbolWidth(), 16);
  EXPECT_EQ(chart.getAxisSettings(VXChart::Axis::Y).gridColor, QColor(242, 242, 242, 255));
  ASSERT_EQ(gridReset.count(), 1);
  EXPECT_EQ(gridReset.at(0).at(0).value<QColor>(), QColor(242, 242, 242, 255));
  ASSERT_EQ(titleReset.count(), 1);
  EXPECT_EQ(titleReset.at(0).at(0).value<QColor>(), QColor(0, 0, 0, 255));
}

TEST(VXChartTest, UnknownFontFamilyUsesTheDefaultFontAndKeepsTheName)
{
  VXChart chart;
  QSignalSpy familyChanged(&chart, &VXChart::chartTitleFontFamilyChanged);
  chart.setFontFamily(VXChart::TextRole::ChartTitle, "No Such Family");
  EXPECT_EQ(chart.getTextStyle(VXChart::TextRole::ChartTitle).family, "No Such Family");
  ASSERT_EQ(familyChanged.count(), 1);
  EXPECT_EQ(familyChanged.at(0).at(0).toString(), "No Such Family");
  const plottaro::Font font = chart.buildFont("No Such Family", 20, true, true);
  EXPECT_EQ(font.family(), plottaro::Font::defaultFont(20).family());
  EXPECT_DOUBLE_EQ(font.size(), 20.0);
  EXPECT_EQ(VXChart::GetFontFileName("Times New Roman", true, true), "timesbi.ttf");
  EXPECT_EQ(VXChart::GetFontFileName("Lato", false, true), "Lato-Italic.ttf");
  EXPECT_EQ(VXChart::GetFontFileName("Comic", false, false), "");
}

TEST(VXChartTest, RenamingKeepsStyleAndReordersByName)
{
  VXChart chart;
  const plottaro::Color red(std::uint8_t(200), std::uint8_t(10), std::uint8_t(10));
  const plottaro::Color blue(std::uint8_t(10), std::uint8_t(10), std::uint8_t(200));
  chart.addPlots({{"alpha", Style(PlotProperties::Line, red)}, {"beta", Style(PlotProperties::Line, blue)}},
                 std::vector<double>{0.0, 1.0}, {{"alpha", {1.0, 2.0}}, {"beta", {3.0, 4.0}}});
  chart.renamePlotSeries("alpha", "zeta");
  EXPECT_EQ(chart.seriesNames(), (std::vector<std::string>{"beta", "zeta"}));
  EXPECT_EQ(chart.getColor("zeta"), red);
  EXPECT_EQ(chart.getSeriesValues("zeta"), (std::vector<double>{1.0, 2.0}));
  EXPECT_TRUE(chart.getSeriesValues("alpha").empty());
  // A setter on a name that is not a series does nothing.
  chart.setColor("alpha", blue);
  EXPECT_FALSE(chart.hasSeries("alpha"));
  // Renaming onto an existing series is refused, both keep their values.
  chart.renamePlotSeries("beta", "zeta");
  EXPECT_EQ(chart.getSeriesValues("beta"), (std::vector<double>{3.0, 4.0}));
  EXPECT_EQ(chart.getPlot()->items().size(), 2u);
  chart.removePlot("beta");
  EXPECT_EQ(chart.getPlot()->items().size(), 1u);
  chart.clearPlots();
  EXPECT_TRUE(chart.getPlot()->items().empty());
  EXPECT_FALSE(chart.hasXValues());
}

TEST(VXChartTest, LogAxisLeavesOutValuesAtOrBelowZeroAndSaysSo)
{
  VXChart chart;
  QSignalSpy output(&chart, &VXChart::printOutput);
  chart.addPlot("s", Style(PlotProperties::Points, plottaro::Color::Black()), {1.0, 2.0, 3.0, 4.0},
                {-1.0, 0.0, 10.0, 100.0});
  EXPECT_EQ(output.count(), 0);
  QSignalSpy axisChanged(&chart, &VXChart::axisMinMaxChanged);
  chart.setYAxisLogScale(true);
  EXPECT_EQ(axisChanged.count(), 1);
  ASSERT_EQ(output.count(), 1);
  const QString message = output.at(0).at(0).toString();
  EXPECT_TRUE(message.contains("'s'")) << message.toStdString();
  EXPECT_TRUE(message.contains("2 of its 4 values")) << message.toStdString();
  EXPECT_EQ(chart.getPlot()->items().front()->hiddenSampleCount(), 2u);
  // The axis spans the positive values only.
  EXPECT_DOUBLE_EQ(chart.getAxisSettings(VXChart::Axis::Y).min, 10.0);
  EXPECT_DOUBLE_EQ(chart.getAxisSettings(VXChart::Axis::Y).max, 100.0);
  const auto interval = chart.getPlot()->axisInterval(VXChart::k_PlotYAxis);
  EXPECT_GT(interval[0], 0.0);
  EXPECT_GE(interval[1], 100.0);
  // The picture still renders, with finite axes.
  const QImage image = chart.getPlot()->renderToImage(400, 300);
  EXPECT_FALSE(image.isNull());
  chart.setYAxisLogScale(false);
  EXPECT_EQ(chart.getPlot()->items().front()->hiddenSampleCount(), 0u);
  EXPECT_DOUBLE_EQ(chart.getAxisSettings(VXChart::Axis::Y).min, -1.0);
}

TEST(VXChartTest, NanValuesAreLeftOutAndReported)
{
  VXChart chart;
  QSignalSpy output(&chart, &VXChart::printOutput);
  chart.addPlot("n", Style(PlotProperties::Line, plottaro::Color::Black()), {0.0, 1.0, 2.0},
                {1.0, std::numeric_limits<double>::quiet_NaN(), 3.0});
  ASSERT_EQ(output.count(), 1);
  EXPECT_TRUE(output.at(0).at(0).toString().contains("1 of its 3 values"));
  EXPECT_DOUBLE_EQ(chart.getAxisSettings(VXChart::Axis::Y).max, 3.0);
}

TEST(VXChartTest, PropertiesRoundTripThroughJson)
{
  VXChart chart;
  chart.setChartTitle("Grain sizes");
  chart.setFontFamily(VXChart::TextRole::XAxisTitle, "Courier New");
  chart.setFontItalic(VXChart::TextRole::Legend, true);
  chart.setFontColor(VXChart::TextRole::YAxisLabels, QColor(10, 20, 30));
  chart.setAxisGridLineColor(VXChart::Axis::X, QColor(1, 2, 3));
  chart.setXAxisMin(-5.0);
  chart.setXAxisMax(5.0);
  chart.setYAxisLogScale(true);
  chart.setYAxisNumberFormat("Scientific", 4);
  const float anchor[2] = {0.25f, 0.5f};
  chart.setLegendPoint(anchor);
  chart.setLegendLocation(VXChart::k_CustomLegendLocation);
  nlohmann::json first;
  chart.writeProperties(first);

  VXChart copy;
  copy.readProperties(first);
  nlohmann::json second;
  copy.writeProperties(second);
  EXPECT_EQ(first, second) << first.dump(2) << "\n----\n" << second.dump(2);
  EXPECT_TRUE(copy.getPlot()->axisIsLogarithmic(VXChart::k_PlotYAxis));
  EXPECT_EQ(copy.getPlot()->axisLabelFormat(VXChart::k_PlotYAxis), "{:.4e}");
  EXPECT_EQ(copy.getPlot()->legendPosition(), plottaro::LegendPosition::Anchored);
}
} // namespace
