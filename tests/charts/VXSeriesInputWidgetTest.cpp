// Input panels: arrays dropped in, components, checks of lengths, colours and markers of new series, bins.
#include "charts/VXChart.h"
#include "charts/VXChartArrayInputWidget.h"
#include "charts/VXChartMultiArrayInputWidget.h"
#include "charts/VXHistogramSeriesInputWidget.h"
#include "charts/VXHistogramSeriesOptionsWidget.h"
#include "charts/VXLineSeriesInputWidget.h"
#include "charts/VXPointLineSeriesOptionsWidget.h"
#include "charts/VXScatterSeriesInputWidget.h"
#include "data_bridge/ZRVtkUtils.h"
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataGroup.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "platform/ZRDragAndDrop.h"
#include "platform/plottaro/SymbolConversion.h"

#include <nlohmann/json.hpp>

#include <QDropEvent>
#include <QListWidget>
#include <QMimeData>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace
{
using namespace zr::core;

std::shared_ptr<DataStructure> MakeStructure()
{
  auto ds = std::make_shared<DataStructure>();
  const IdType group = DataGroup::Create(*ds, "Data")->getId();
  auto* twelve = Float64Array::Create(*ds, "Twelve", {12}, {1}, group);
  auto* ten = Float32Array::Create(*ds, "Ten", {10}, {1}, group);
  auto* vectors = Float32Array::Create(*ds, "Vectors", {12}, {3}, group);
  auto* digits = Int32Array::Create(*ds, "Digits", {10}, {1}, group);
  for (usize i = 0; i < 12; ++i)
  {
    twelve->setValue(i, static_cast<double>(i) * 0.5);
    for (usize c = 0; c < 3; ++c)
    {
      vectors->setValue(i * 3 + c, static_cast<float>(i * 10 + c));
    }
  }
  for (usize i = 0; i < 10; ++i)
  {
    ten->setValue(i, static_cast<float>(i));
    digits->setValue(i, static_cast<int32_t>(9 - i));
  }
  return ds;
}

DataPath Path(const std::string& text)
{
  return *DataPath::FromString(text);
}

// The data of a drag out of the data structure tree.
std::unique_ptr<QMimeData> Dragged(const std::vector<std::string>& paths)
{
  std::vector<ZR::DragAndDrop::DataPathDropValue> values;
  for (const auto& path : paths)
  {
    values.push_back({Path(path), "DataArray"});
  }
  auto mime = std::make_unique<QMimeData>();
  mime->setData(ZR::DragAndDrop::DataStructureItem, ZR::DragAndDrop::EncodeDropValues(values));
  return mime;
}

void Drop(VXChartArrayInputWidget* target, const std::vector<std::string>& paths)
{
  EXPECT_TRUE(target->dropMimeData(Dragged(paths).get()));
}

void Drop(VXChartMultiArrayInputWidget* target, const std::vector<std::string>& paths)
{
  EXPECT_TRUE(target->dropMimeData(Dragged(paths).get()));
}

TEST(VXSeriesInputWidgetTest, ThreeComponentsGiveThreeRowsAndOnlyCheckedOnesBecomeSeries)
{
  VXScatterSeriesInputWidget panel;
  panel.setDataStructure(MakeStructure());
  Drop(panel.xInput(), {"Data/Twelve"});
  Drop(panel.yInput(), {"Data/Vectors"});
  auto lists = panel.yInput()->findChildren<QListWidget*>();
  ASSERT_EQ(lists.size(), 2);
  EXPECT_EQ(lists[1]->count(), 3);
  EXPECT_EQ(lists[1]->item(2)->text(), "Comp 2");
  lists[1]->item(1)->setCheckState(Qt::Unchecked);
  const auto values = panel.getYAxisValues();
  EXPECT_EQ(values.size(), 2u);
  ASSERT_EQ(values.count("Vectors_2"), 1u);
  EXPECT_EQ(values.at("Vectors_2")[3], 32.0);
  EXPECT_EQ(values.count("Vectors_1"), 0u);
  EXPECT_EQ(panel.getXAxisValues()[4], 2.0);

  VXChart chart;
  panel.applyTo(chart);
  EXPECT_EQ(chart.seriesNames(), (std::vector<std::string>{"Vectors_0", "Vectors_2"}));
}

TEST(VXSeriesInputWidgetTest, MalformedDropsAreReported)
{
  VXScatterSeriesInputWidget panel;
  QSignalSpy output(&panel, &VXChartSeriesInputWidget::printOutput);
  panel.setDataStructure(MakeStructure());
  QMimeData broken;
  broken.setData(ZR::DragAndDrop::DataStructureItem, "{not a list");
  EXPECT_FALSE(panel.xInput()->dropMimeData(&broken));
  ASSERT_EQ(output.count(), 1);
  EXPECT_EQ(output.at(0).at(0).toString(), "An error occurred while dragging the DataObject.");
  EXPECT_FALSE(panel.xInput()->dropMimeData(Dragged({"Data/Nothing"}).get()));
  EXPECT_EQ(output.at(1).at(0).toString(),
            "Data array at path 'Data/Nothing' does not exist and cannot be added to the chart.");
}

TEST(VXSeriesInputWidgetTest, LengthMismatchIsReportedAndAddsNoSeries)
{
  VXScatterSeriesInputWidget panel;
  QSignalSpy output(&panel, &VXChartSeriesInputWidget::printOutput);
  panel.setDataStructure(MakeStructure());
  Drop(panel.xInput(), {"Data/Twelve"});
  Drop(panel.yInput(), {"Data/Ten"});
  EXPECT_TRUE(panel.getYAxisValues().empty());
  bool found = false;
  for (const auto& call : output)
  {
    found = found || call.at(0).toString() ==
                         "Cannot add data array Data/Ten to the chart because it has 10 values and the "
                         "rest of the chart data has 12 values";
  }
  EXPECT_TRUE(found);
}

TEST(VXSeriesInputWidgetTest, APassOfTheColoursMovesToTheNextMarker)
{
  VXChartSeriesInputWidget::ResetInitSeriesMarkerIndexes();
  const auto& colors = ZRVtk::utils::k_ZRColorPreset1;
  const auto& markers = plottaro::MarkerStyles();
  std::vector<std::pair<QColor, int>> drawn;
  for (std::size_t i = 0; i <= colors.size(); ++i)
  {
    drawn.push_back(VXChartSeriesInputWidget::NextSeriesColorAndMarker());
  }
  EXPECT_EQ(drawn.front().first, colors.front());
  EXPECT_EQ(drawn.front().second, markers[0].first);
  EXPECT_EQ(drawn[1].first, colors[1]);
  EXPECT_EQ(drawn.back().first, colors.front());
  EXPECT_EQ(drawn.back().second, markers[1].first);

  // New panels take them in order.
  VXChartSeriesInputWidget::ResetInitSeriesMarkerIndexes();
  VXLineSeriesInputWidget panel;
  panel.setDataStructure(MakeStructure());
  Drop(panel.yInput(), {"Data/Vectors"});
  auto* second =
      dynamic_cast<VXPointLineSeriesOptionsWidget*>(panel.getSeriesOptionsWidget(Path("Data/Vectors"), 1));
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(second->getColor(), colors[1]);
}

TEST(VXSeriesInputWidgetTest, LineWithoutXUsesIndicesAndALostXArrayIsReported)
{
  VXLineSeriesInputWidget panel;
  QSignalSpy output(&panel, &VXChartSeriesInputWidget::printOutput);
  auto ds = MakeStructure();
  panel.setDataStructure(ds);
  Drop(panel.yInput(), {"Data/Ten"});
  const std::vector<double> x = panel.getXAxisValues();
  ASSERT_EQ(x.size(), 10u);
  EXPECT_EQ(x[9], 9.0);
  Drop(panel.xInput(), {"Data/Digits"});
  EXPECT_EQ(panel.getXAxisValues()[0], 9.0);
  // A new run of the pipeline without the x array.
  auto without = MakeStructure();
  without->removeData(without->getId(Path("Data/Digits")).value());
  panel.setDataStructure(without);
  bool found = false;
  for (const auto& call : output)
  {
    found = found ||
            call.at(0).toString() ==
                "Data array at path 'Data/Digits' does not exist and cannot be used as labels on the chart.";
  }
  EXPECT_TRUE(found);
  EXPECT_EQ(panel.getXAxisValues().size(), 10u);
}

TEST(VXSeriesInputWidgetTest, HistogramOfZeroToNineHasOneValuePerBin)
{
  VXHistogramSeriesInputWidget panel;
  QSignalSpy updates(&panel, &VXChartSeriesInputWidget::updateChart);
  panel.setDataStructure(MakeStructure());
  Drop(panel.input(), {"Data/Digits"});
  ASSERT_GE(updates.count(), 1);
  EXPECT_EQ(panel.seriesName(), "Digits");
  EXPECT_EQ(panel.getYAxisValues("Digits"), std::vector<double>(10, 1.0));
  EXPECT_EQ(panel.getXAxisValues().front(), 0.0);
  panel.options()->setBinRangeValue(VXHistogramSeriesOptionsWidget::BinMaximum);
  EXPECT_EQ(panel.getXAxisValues().back(), 10.0);
  panel.options()->setBinCount(2);
  EXPECT_EQ(panel.getYAxisValues("Digits"), (std::vector<double>{5.0, 5.0}));

  nlohmann::json state;
  panel.saveState(state);
  EXPECT_EQ(state["cached_bin_counts"], nlohmann::json({5.0, 5.0}));
  VXHistogramSeriesInputWidget restored;
  restored.setDataStructure(MakeStructure());
  restored.loadState(state);
  EXPECT_EQ(restored.getYAxisValues("Digits"), (std::vector<double>{5.0, 5.0}));
  EXPECT_EQ(restored.options()->getBinCount(), 2);
  VXChart chart;
  restored.applyTo(chart);
  EXPECT_EQ(chart.getBinEdges("Digits").size(), 3u);
}
} // namespace
