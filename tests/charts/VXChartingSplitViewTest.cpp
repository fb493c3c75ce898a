// The charting window's views: splitting, closing, moving a chart between them, and the splitter tree kept in
// its state.
#include "charts/VXChart.h"
#include "charts/VXChartProperties.h"
#include "charts/VXChartingViewWidget.h"
#include "charts/VXChartingWidget.h"
#include "views/VXMoveOverlay.h"

#include <nlohmann/json.hpp>

#include <QAction>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>

#include <gtest/gtest.h>

namespace
{
void ChooseType(VXChartingViewWidget& view, const char* type)
{
  view.selectorAt(view.tabs()->currentIndex())->findChild<QPushButton*>(type)->click();
}

int OverlaysOn(VXChartingViewWidget* view)
{
  return static_cast<int>(view->findChildren<VXMoveOverlay*>().size());
}

TEST(VXChartingSplitViewTest, SplittingPutsANewActiveViewBesideOrBelow)
{
  VXChartingWidget charting;
  VXChartingViewWidget* first = charting.activeView();
  VXChartingViewWidget* right = charting.splitView(first, Qt::Horizontal);
  ASSERT_NE(right, nullptr);
  VXChartingViewWidget* below = charting.splitView(right, Qt::Vertical);
  ASSERT_NE(below, nullptr);
  EXPECT_EQ(charting.views(), (QList<VXChartingViewWidget*>{first, right, below}));
  EXPECT_EQ(charting.activeView(), below);
  EXPECT_TRUE(below->isActive());
  EXPECT_FALSE(first->isActive());
  auto* inner = qobject_cast<QSplitter*>(below->parentWidget());
  ASSERT_NE(inner, nullptr);
  EXPECT_EQ(inner->orientation(), Qt::Vertical);
  EXPECT_EQ(inner->indexOf(right), 0);
  EXPECT_EQ(charting.rootSplitter()->orientation(), Qt::Horizontal);

  charting.setActiveView(first);
  EXPECT_TRUE(first->isActive());
  EXPECT_FALSE(below->isActive());
}

TEST(VXChartingSplitViewTest, ClosingViewsCollapsesSplittersButKeepsTheLast)
{
  VXChartingWidget charting;
  VXChartingViewWidget* first = charting.activeView();
  VXChartingViewWidget* right = charting.splitView(first, Qt::Horizontal);
  VXChartingViewWidget* below = charting.splitView(right, Qt::Vertical);
  ChooseType(*right, "Line Chart");
  ASSERT_TRUE(charting.closeView(below));
  EXPECT_EQ(charting.views(), (QList<VXChartingViewWidget*>{first, right}));
  EXPECT_EQ(right->parentWidget(), charting.rootSplitter()); // the vertical splitter is gone
  EXPECT_EQ(charting.activeView(), first);
  ASSERT_TRUE(charting.closeView(first));
  EXPECT_EQ(charting.views(), QList<VXChartingViewWidget*>{right});
  EXPECT_EQ(charting.activeView(), right);
  EXPECT_NE(right->chartAt(0), nullptr);
  EXPECT_FALSE(charting.closeView(right));
  EXPECT_EQ(charting.views(), QList<VXChartingViewWidget*>{right});
}

TEST(VXChartingSplitViewTest, AChartMovesToTheViewClickedAndEscapeCancels)
{
  VXChartingWidget charting;
  VXChartingViewWidget* source = charting.activeView();
  ChooseType(*source, "Bar Chart");
  source->chartAt(0)->setChartTitle("Moved");
  source->addTabButtonClicked();
  ChooseType(*source, "Scatter Chart");
  VXChartingViewWidget* target = charting.splitView(source, Qt::Horizontal);

  charting.beginMove(source, 0);
  EXPECT_TRUE(charting.isMoving());
  EXPECT_EQ(OverlaysOn(target), 1);
  EXPECT_EQ(OverlaysOn(source), 0);
  charting.cancelMoveAction()->trigger();
  EXPECT_FALSE(charting.isMoving());
  EXPECT_EQ(OverlaysOn(target), 0);
  EXPECT_EQ(source->tabs()->count(), 2);

  charting.beginMove(source, 0);
  Q_EMIT target->findChild<VXMoveOverlay*>()->clicked();
  EXPECT_FALSE(charting.isMoving());
  EXPECT_EQ(OverlaysOn(target), 0);
  ASSERT_EQ(source->tabs()->count(), 1);
  EXPECT_EQ(source->tabs()->tabToolTip(0), "Chart 2");
  ASSERT_EQ(target->tabs()->count(), 1); // the empty tab gave way
  ASSERT_NE(target->chartAt(0), nullptr);
  EXPECT_EQ(target->chartAt(0)->getChartTitle(), "Moved");
  EXPECT_EQ(target->tabs()->tabToolTip(0), "Chart 1");
  EXPECT_EQ(charting.activeView(), target);
}

TEST(VXChartingSplitViewTest, TheSplitterTreeSavesLoadsAndSavesTheSame)
{
  VXChartingWidget charting;
  VXChartingViewWidget* first = charting.activeView();
  ChooseType(*first, "Line Chart");
  VXChartingViewWidget* right = charting.splitView(first, Qt::Horizontal);
  ChooseType(*right, "Histogram");
  VXChartingViewWidget* below = charting.splitView(right, Qt::Vertical);
  ChooseType(*below, "Bar Chart");
  below->chartAt(0)->setChartTitle("Below");
  charting.setActiveView(right);

  nlohmann::json saved;
  charting.saveState(saved);
  EXPECT_EQ(saved["split_view_second"]["split_view_orientation"], static_cast<int>(Qt::Vertical));

  VXChartingWidget restored;
  ASSERT_TRUE(restored.loadState(saved));
  const QList<VXChartingViewWidget*> views = restored.views();
  ASSERT_EQ(views.size(), 3);
  EXPECT_EQ(restored.activeView(), views[1]);
  ASSERT_NE(views[2]->chartAt(0), nullptr);
  EXPECT_EQ(views[2]->chartAt(0)->getChartTitle(), "Below");
  auto* inner = qobject_cast<QSplitter*>(views[2]->parentWidget());
  ASSERT_NE(inner, nullptr);
  EXPECT_EQ(inner->orientation(), Qt::Vertical);
  nlohmann::json again;
  restored.saveState(again);
  EXPECT_EQ(saved, again) << saved.dump(2) << "\n----\n" << again.dump(2);
}
} // namespace
