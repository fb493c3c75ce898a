// The charting window: chart tabs from the type selector, closing, and the state it keeps.
#include "charts/VXChartingWidget.h"
#include "charts/VXChart.h"
#include "charts/VXChartArrayInputWidget.h"
#include "charts/VXChartProperties.h"
#include "charts/VXChartingViewWidget.h"
#include "charts/VXHistogramSeriesInputWidget.h"
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "platform/ZRDataStructureModel.h"
#include "platform/ZRDataStructureTreeView.h"
#include "platform/ZRDataStructureWidget.h"
#include "platform/ZRDragAndDrop.h"

#include <nlohmann/json.hpp>

#include <QItemSelectionModel>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>

#include <gtest/gtest.h>

namespace
{
using namespace zr::core;

std::shared_ptr<DataStructure> Digits()
{
  auto ds = std::make_shared<DataStructure>();
  auto* digits = Int32Array::Create(*ds, "Digits", {10}, {1});
  for (usize i = 0; i < 10; ++i)
  {
    digits->setValue(i, static_cast<int32_t>(i));
  }
  return ds;
}

VXChartTypeSelector* SelectorOf(VXChartingViewWidget& view)
{
  return view.selectorAt(view.tabs()->currentIndex());
}

TEST(VXChartingWidgetTest, ANewTabOffersTheFourTypes)
{
  VXChartingViewWidget view;
  ASSERT_EQ(view.tabs()->count(), 1);
  VXChartTypeSelector* selector = SelectorOf(view);
  ASSERT_NE(selector, nullptr);
  for (const char* text : {"Scatter Chart", "Line Chart", "Bar Chart", "Histogram"})
  {
    EXPECT_NE(selector->findChild<QPushButton*>(text), nullptr) << text;
  }
  selector->findChild<QPushButton*>("Line Chart")->click();
  ASSERT_NE(view.chartAt(0), nullptr);
  EXPECT_EQ(view.tabs()->tabToolTip(0), "Chart 1");
  view.addTabButtonClicked();
  SelectorOf(view)->findChild<QPushButton*>("Bar Chart")->click();
  EXPECT_EQ(view.tabs()->tabToolTip(1), "Chart 2");
}

TEST(VXChartingWidgetTest, ClosingTheLastTabLeavesASelectorAndFreesItsNumber)
{
  VXChartingViewWidget view;
  view.setConfirmClose(false);
  SelectorOf(view)->findChild<QPushButton*>("Scatter Chart")->click();
  view.addTabButtonClicked();
  SelectorOf(view)->findChild<QPushButton*>("Scatter Chart")->click();
  view.closeTab(0);
  view.addTabButtonClicked();
  SelectorOf(view)->findChild<QPushButton*>("Histogram")->click();
  EXPECT_EQ(view.propertiesAt(1)->getChartName(), "Chart 1"); // the smallest number free again
  view.closeTab(1);
  view.closeTab(0);
  ASSERT_EQ(view.tabs()->count(), 1);
  EXPECT_NE(view.selectorAt(0), nullptr);
  EXPECT_EQ(view.chartAt(0), nullptr);
}

TEST(VXChartingWidgetTest, StateSavesLoadsAndSavesTheSame)
{
  VXChartingWidget charting;
  charting.setDataStructure(Digits(), QString());
  VXChartingViewWidget* view = charting.activeView();
  SelectorOf(*view)->findChild<QPushButton*>("Histogram")->click();
  auto* histogram = dynamic_cast<VXHistogramSeriesInputWidget*>(view->inputAt(0));
  ASSERT_NE(histogram, nullptr);
  histogram->input()->setDataPath(*DataPath::FromString("Digits"));
  EXPECT_EQ(view->chartAt(0)->seriesNames(), std::vector<std::string>{"Digits"});
  view->chartAt(0)->setChartTitle("Digits");
  view->addTabButtonClicked();

  QSignalSpy output(&charting, &VXChartingWidget::printOutput);
  nlohmann::json first;
  charting.saveState(first);
  ASSERT_EQ(output.count(), 1); // no .kestrix file behind the data
  EXPECT_TRUE(output.at(0).at(0).toString().startsWith("Warning: There is no .kestrix file associated"));
  EXPECT_EQ(first["split_view_first"]["num_chart_tabs"], 2);
  EXPECT_EQ(first["split_view_first"]["chart_type_selectors"]["0"]["chart_type"], 3);

  VXChartingWidget restored;
  restored.setDataStructure(Digits(), QString());
  ASSERT_TRUE(restored.loadState(first));
  VXChartingViewWidget* restoredView = restored.activeView();
  ASSERT_EQ(restoredView->tabs()->count(), 2);
  ASSERT_NE(restoredView->chartAt(0), nullptr);
  EXPECT_EQ(restoredView->chartAt(0)->getChartTitle(), "Digits");
  EXPECT_EQ(restoredView->chartAt(0)->getSeriesValues("Digits"), std::vector<double>(10, 1.0));
  nlohmann::json second;
  restored.saveState(second);
  EXPECT_EQ(first, second) << first.dump(2) << "\n----\n" << second.dump(2);
}

TEST(VXChartingWidgetTest, AStateWithoutViewsStopsWithItsMessage)
{
  VXChartingWidget charting;
  QSignalSpy output(&charting, &VXChartingWidget::printOutput);
  EXPECT_FALSE(charting.loadState(nlohmann::json{{"kestrix_file_path", ""}}));
  ASSERT_EQ(output.count(), 1);
  EXPECT_EQ(output.at(0).at(0).toString(),
            "Error reading charting state from state file; no chart split views found");
  EXPECT_FALSE(charting.loadState(nlohmann::json{{"num_chart_tabs", 1}}));
  EXPECT_EQ(output.at(1).at(0).toString(),
            "Error reading charting state from state file; no kestrix_file_path key found");
}
} // namespace

namespace
{
TEST(VXChartingWidgetTest, ArraysDraggedFromTheTreeFeedAChart)
{
  VXChartingWidget charting;
  charting.setDataStructure(Digits(), QString());
  ZRDataStructureTreeView* tree = charting.dataStructureWidget()->getDataStructureTreeView();
  ZRDataStructureModel* model = tree->getDataStructureModel();
  ASSERT_EQ(model->rowCount(), 1);
  const QModelIndex digits = model->indexOf(*DataPath::FromString("Digits"));
  ASSERT_TRUE(digits.isValid());
  tree->selectionModel()->select(digits, QItemSelectionModel::Select);
  ASSERT_EQ(tree->selectedArrayPaths().size(), 1u);
  // What the tree hands to a drag of the selected array.
  const std::unique_ptr<QMimeData> mime(model->mimeData({digits}));
  ASSERT_NE(mime, nullptr);

  VXChartingViewWidget* view = charting.activeView();
  SelectorOf(*view)->findChild<QPushButton*>("Histogram")->click();
  auto* histogram = dynamic_cast<VXHistogramSeriesInputWidget*>(view->inputAt(0));
  ASSERT_NE(histogram, nullptr);
  ASSERT_TRUE(histogram->input()->dropMimeData(mime.get()));
  EXPECT_EQ(view->chartAt(0)->getSeriesValues("Digits"), std::vector<double>(10, 1.0));
}
} // namespace
