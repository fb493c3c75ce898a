// Series option panels: names, visibility, state keys, copies between series of one kind, bin ranges.
#include "charts/VXBarSeriesOptionsWidget.h"
#include "charts/VXHistogramSeriesOptionsWidget.h"
#include "charts/VXPointLineSeriesOptionsWidget.h"

#include <nlohmann/json.hpp>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace
{
TEST(VXSeriesOptionsWidgetTest, NameEditEmitsOldAndNewNames)
{
  VXBarSeriesOptionsWidget options("Volumes");
  EXPECT_EQ(options.objectName(), "seriesOptionsWidget");
  EXPECT_EQ(options.findChild<QLabel*>("titleLabel")->text(), "Volumes Plot Series Options");
  QSignalSpy renamed(&options, &VXSeriesOptionsWidget::seriesNameChanged);
  auto* edit = options.findChild<QLineEdit*>("seriesNameEdit");
  edit->setText("Volumes");
  Q_EMIT edit->editingFinished();
  EXPECT_EQ(renamed.count(), 0); // unchanged text
  edit->setText("Grain Volumes");
  Q_EMIT edit->editingFinished();
  ASSERT_EQ(renamed.count(), 1);
  EXPECT_EQ(renamed.at(0).at(0).toString(), "Volumes");
  EXPECT_EQ(renamed.at(0).at(1).toString(), "Grain Volumes");
  EXPECT_EQ(options.getSeriesName(), "Grain Volumes");
}

TEST(VXSeriesOptionsWidgetTest, EyeButtonReportsVisibilityWithItsTooltip)
{
  VXPointLineSeriesOptionsWidget options(VXSeriesOptionsWidget::Kind::Point, "x");
  QSignalSpy clicked(&options, &VXSeriesOptionsWidget::visibilityButtonClicked);
  auto* eye = options.findChild<QPushButton*>("visibilityBtn");
  EXPECT_EQ(eye->toolTip(), "Item is Visible in Chart");
  eye->click();
  ASSERT_EQ(clicked.count(), 1);
  EXPECT_FALSE(clicked.at(0).at(0).toBool());
  EXPECT_FALSE(options.showInChart());
  EXPECT_EQ(eye->toolTip(), "Item is NOT Visible in Chart");
}

TEST(VXSeriesOptionsWidgetTest, PointLineStateRoundTripsAndReadsMarkerNames)
{
  VXPointLineSeriesOptionsWidget line(VXSeriesOptionsWidget::Kind::Line, "EulerAngles_1");
  line.setColor(QColor(1, 2, 3));
  line.setPointMarker(5);
  line.setPointSize(9);
  line.setLineStyle(2);
  line.setLineThickness(4);
  nlohmann::json state;
  line.saveState(state);
  EXPECT_EQ(state["series_name"], "EulerAngles_1");
  EXPECT_EQ(state["point_marker"], 5);
  EXPECT_EQ(state["series_color_g"], 2);

  VXPointLineSeriesOptionsWidget copy(VXSeriesOptionsWidget::Kind::Line, "other");
  QSignalSpy markerChanged(&copy, &VXPointLineSeriesOptionsWidget::pointMarkerChanged);
  copy.loadState(state);
  EXPECT_EQ(markerChanged.count(), 0); // loading sets the controls silently
  nlohmann::json again;
  copy.saveState(again);
  EXPECT_EQ(state, again);
  // A marker may be stored by its name.
  copy.loadState(nlohmann::json{{"point_marker", "Diamond"}});
  EXPECT_EQ(copy.getPointMarker(), 2);
}

TEST(VXSeriesOptionsWidgetTest, CopiedStylePastesOnlyIntoTheSameKind)
{
  VXPointLineSeriesOptionsWidget first(VXSeriesOptionsWidget::Kind::Point, "a");
  first.setColor(QColor(200, 100, 50));
  first.setPointSize(11);
  first.copySettings();
  VXPointLineSeriesOptionsWidget second(VXSeriesOptionsWidget::Kind::Point, "b");
  ASSERT_TRUE(second.pasteSettings());
  EXPECT_EQ(second.getColor(), QColor(200, 100, 50));
  EXPECT_EQ(second.getPointSize(), 11);
  EXPECT_EQ(second.getSeriesName(), "b");
  VXHistogramSeriesOptionsWidget histogram("h");
  EXPECT_FALSE(histogram.pasteSettings());
}

TEST(VXSeriesOptionsWidgetTest, CustomRangesEmitOnlyWhenTheBoxIsOn)
{
  VXHistogramSeriesOptionsWidget options("Confidence Index");
  QSignalSpy ranges(&options, &VXHistogramSeriesOptionsWidget::customBinRangesChanged);
  auto* min = options.findChild<QLineEdit*>("minBinRangeEdit");
  EXPECT_FALSE(min->isEnabled());
  options.setCustomRanges(0.25, 0.75);
  options.onMinBinRangeEdited();
  EXPECT_EQ(ranges.count(), 0);
  QSignalSpy useChanged(&options, &VXHistogramSeriesOptionsWidget::useCustomRangesChanged);
  options.findChild<QCheckBox*>("useCustomRangesCheck")->setChecked(true);
  EXPECT_EQ(useChanged.count(), 1);
  EXPECT_TRUE(min->isEnabled());
  options.onMaxBinRangeEdited();
  ASSERT_EQ(ranges.count(), 1);
  EXPECT_EQ(ranges.at(0).at(0).toString(), "Confidence Index");
  EXPECT_DOUBLE_EQ(ranges.at(0).at(1).toDouble(), 0.25);
  EXPECT_DOUBLE_EQ(ranges.at(0).at(2).toDouble(), 0.75);

  nlohmann::json state;
  options.setBinCount(37);
  options.setBinRangeValue(VXHistogramSeriesOptionsWidget::BinMaximum);
  options.saveState(state);
  VXHistogramSeriesOptionsWidget copy("x");
  copy.loadState(state);
  EXPECT_EQ(copy.getBinCount(), 37);
  EXPECT_EQ(copy.getBinRangeValue(), VXHistogramSeriesOptionsWidget::BinMaximum);
  EXPECT_TRUE(copy.useCustomBinRanges());
  EXPECT_EQ(copy.getCustomRanges(), std::make_pair(0.25, 0.75));
}
} // namespace
