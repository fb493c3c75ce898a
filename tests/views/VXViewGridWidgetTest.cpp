#include "views/VXViewGridWidget.h"
#include "views/VXViewWidget.h"
#include "views/VXVisualizationToolbarWidget.h"
#include "views/VXVisualizationWidget.h"

#include <vtkActor.h>
#include <vtkCamera.h>
#include <vtkNew.h>
#include <vtkPolyDataMapper.h>
#include <vtkRenderer.h>
#include <vtkSphereSource.h>

#include <nlohmann/json.hpp>

#include <QGraphicsBlurEffect>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <memory>

namespace
{
void settle()
{
  for (int i = 0; i < 5; ++i)
  {
    QCoreApplication::processEvents();
    QTest::qWait(5);
  }
}

QPushButton* button(QWidget* view, const char* name)
{
  return view->findChild<QPushButton*>(QString::fromLatin1(name));
}

VXViewWidget* viewAt(const VXViewGridWidget& grid, int index)
{
  return qobject_cast<VXViewWidget*>(grid.allViews().at(index));
}

QList<int> splitIds(const VXViewGridWidget& grid)
{
  QList<int> ids;
  for (VXAbstractViewWidget* view : grid.allViews())
  {
    ids.push_back(view->getSplitId());
  }
  return ids;
}

class ViewGridTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    qRegisterMetaType<VXAbstractViewWidget*>();
    m_Grid = std::make_unique<VXViewGridWidget>();
    m_Grid->resize(900, 600);
    m_Grid->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(m_Grid.get()));
    settle();
  }
  void TearDown() override
  {
    m_Grid.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  VXViewWidget* first() const { return viewAt(*m_Grid, 0); }

  std::unique_ptr<VXViewGridWidget> m_Grid;
};

// A grid record of one row of views with the given split ids.
nlohmann::json rowRecord(const std::vector<int>& ids, const std::vector<double>& widths)
{
  nlohmann::json cells = nlohmann::json::array();
  for (int id : ids)
  {
    cells.push_back({{"row_span", 1}, {"col_span", 1}, {"widget_state", {{"split_view_index", id}}}});
  }
  return {{"grid_version", 1},    {"grid_rows", 1},       {"grid_cols", ids.size()},
          {"col_widths", widths}, {"row_heights", {1.0}}, {"cells", {cells}}};
}
} // namespace

TEST_F(ViewGridTest, StartsWithOneViewThatCannotBeClosed)
{
  ASSERT_EQ(m_Grid->viewCount(), 1);
  VXViewWidget* view = first();
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(view->getSplitId(), 1);
  EXPECT_EQ(m_Grid->activeView(), view);
  EXPECT_TRUE(view->property("Active").toBool());
  EXPECT_NE(view->getVisualizationWidget(), nullptr);
  EXPECT_EQ(view->windowTitle(), QStringLiteral("Visualization Window"));
  EXPECT_EQ(button(view, "splitVizHorizontalBtn")->toolTip(), QStringLiteral("Split Horizontally"));
  EXPECT_EQ(button(view, "splitVizVerticalBtn")->toolTip(), QStringLiteral("Split Vertically"));
  EXPECT_FALSE(button(view, "closeVizBtn")->isEnabled());
  EXPECT_EQ(button(view, "closeVizBtn")->toolTip(), QStringLiteral("Cannot close the last view."));
  EXPECT_FALSE(button(view, "closeVizBtn")->icon().isNull());
  EXPECT_EQ(view->geometry(), m_Grid->rect());
}

TEST_F(ViewGridTest, SplitButtonOfAnInactiveViewActivatesItBeforeTheSplit)
{
  const int nextId = VXViewWidget::nextSplitViewId();
  VXViewWidget* left = first();
  QTest::mouseClick(button(left, "splitVizHorizontalBtn"), Qt::LeftButton);
  ASSERT_EQ(m_Grid->viewCount(), 2);
  VXViewWidget* right = viewAt(*m_Grid, 1);
  EXPECT_EQ(m_Grid->columnCount(), 2); // a horizontal split puts the views side by side
  EXPECT_LT(left->x() + left->width(), right->x() + 1);
  EXPECT_EQ(right->getSplitId(), nextId);
  EXPECT_EQ(VXViewWidget::nextSplitViewId(), nextId + 1);
  EXPECT_TRUE(button(left, "closeVizBtn")->isEnabled());
  EXPECT_EQ(button(right, "closeVizBtn")->toolTip(), QStringLiteral("Close this view."));
  m_Grid->markWidgetActive(right);
  ASSERT_EQ(m_Grid->activeView(), right);

  QSignalSpy activeSpy(m_Grid.get(), &VXViewGridWidget::activeViewChanged);
  QSignalSpy createdSpy(m_Grid.get(), &VXViewGridWidget::viewCreated);
  QSignalSpy sourceSpy(left, &VXAbstractViewWidget::viewWidgetCreated);
  QTest::mouseClick(button(left, "splitVizVerticalBtn"), Qt::LeftButton);
  ASSERT_EQ(activeSpy.count(), 1);
  EXPECT_EQ(activeSpy.at(0).at(0).value<VXAbstractViewWidget*>(), left);
  ASSERT_EQ(createdSpy.count(), 1);
  ASSERT_EQ(sourceSpy.count(), 1);
  auto* below = createdSpy.at(0).at(0).value<VXAbstractViewWidget*>();
  EXPECT_EQ(sourceSpy.at(0).at(0).value<VXAbstractViewWidget*>(), left);
  EXPECT_EQ(sourceSpy.at(0).at(1).value<VXAbstractViewWidget*>(), below);
  EXPECT_EQ(m_Grid->rowCount(), 2); // a vertical split adds a row
  EXPECT_EQ(below->x(), left->x());
  EXPECT_GT(below->y(), left->y());
  EXPECT_FALSE(right->isActive());
}

TEST_F(ViewGridTest, SplitCopiesTheCamera)
{
  vtkCamera* camera = first()->getVisualizationWidget()->getRenderer()->GetActiveCamera();
  camera->SetPosition(3.0, -7.0, 2.0);
  camera->SetFocalPoint(0.5, 0.5, 0.5);
  camera->SetViewUp(0.0, 0.0, 1.0);
  m_Grid->addColumn(first());
  vtkCamera* copied = viewAt(*m_Grid, 1)->getVisualizationWidget()->getRenderer()->GetActiveCamera();
  EXPECT_NE(copied, camera);
  EXPECT_NEAR(copied->GetPosition()[1], -7.0, 1e-9);
  EXPECT_NEAR(copied->GetFocalPoint()[0], 0.5, 1e-9);
  EXPECT_NEAR(copied->GetViewUp()[2], 1.0, 1e-9);
}

TEST_F(ViewGridTest, ClosingDownToOneViewDisablesItsCloseButton)
{
  m_Grid->addColumn(first());
  QPointer<VXViewWidget> second = viewAt(*m_Grid, 1);
  m_Grid->markWidgetActive(second);
  QSignalSpy closedSpy(m_Grid.get(), &VXViewGridWidget::viewClosed);
  QSignalSpy closingSpy(second.data(), &VXAbstractViewWidget::closingView);
  QSignalSpy activeSpy(m_Grid.get(), &VXViewGridWidget::activeViewChanged);

  QTest::mouseClick(button(second, "closeVizBtn"), Qt::LeftButton);
  EXPECT_EQ(closingSpy.count(), 1);
  ASSERT_EQ(closedSpy.count(), 1);
  EXPECT_EQ(closedSpy.at(0).at(0).value<VXAbstractViewWidget*>(), second.data());
  ASSERT_EQ(m_Grid->viewCount(), 1);
  EXPECT_EQ(m_Grid->activeView(), first());
  EXPECT_EQ(activeSpy.count(), 1);
  EXPECT_FALSE(button(first(), "closeVizBtn")->isEnabled());
  EXPECT_EQ(button(first(), "closeVizBtn")->toolTip(), QStringLiteral("Cannot close the last view."));
  settle();
  EXPECT_TRUE(second.isNull());

  QTest::mouseClick(button(first(), "closeVizBtn"), Qt::LeftButton); // disabled: nothing happens
  EXPECT_EQ(m_Grid->viewCount(), 1);
}

TEST_F(ViewGridTest, ThreeWaySplitWithTheMiddleClosedReloadsIntoAFreshGrid)
{
  m_Grid->addColumn(first());
  m_Grid->addColumn(viewAt(*m_Grid, 1));
  ASSERT_EQ(m_Grid->viewCount(), 3);
  m_Grid->closeCell(viewAt(*m_Grid, 1));
  ASSERT_EQ(m_Grid->viewCount(), 2);
  viewAt(*m_Grid, 1)->getVisualizationWidget()->getRenderer()->GetActiveCamera()->SetPosition(1.0, 2.0, 30.0);
  nlohmann::json saved;
  m_Grid->saveState(saved);
  EXPECT_EQ(saved["grid_cols"], 2);
  const QList<int> ids = splitIds(*m_Grid);

  VXViewGridWidget fresh;
  fresh.resize(900, 600);
  fresh.show();
  VXViewWidget* existing = viewAt(fresh, 0);
  VXVisualizationWidget* existingWindow = existing->getVisualizationWidget();
  QSignalSpy createdSpy(&fresh, &VXViewGridWidget::viewCreated);
  fresh.loadState(saved, existing);
  EXPECT_EQ(createdSpy.count(), 2);
  ASSERT_EQ(fresh.viewCount(), 2);
  EXPECT_EQ(viewAt(fresh, 0), existing); // the first cell keeps the existing view and window
  EXPECT_EQ(existing->getVisualizationWidget(), existingWindow);
  EXPECT_EQ(splitIds(fresh), ids);
  EXPECT_NEAR(viewAt(fresh, 1)->getVisualizationWidget()->getRenderer()->GetActiveCamera()->GetPosition()[2],
              30.0, 1e-9);
  nlohmann::json reloaded;
  fresh.saveState(reloaded);
  EXPECT_EQ(reloaded, saved) << reloaded.dump(1);
  for (int i = 0; i < 2; ++i)
  {
    EXPECT_EQ(viewAt(fresh, i)->geometry(), viewAt(*m_Grid, i)->geometry());
  }
  EXPECT_TRUE(button(viewAt(fresh, 0), "closeVizBtn")->isEnabled());
}

TEST_F(ViewGridTest, OneByOneRecordReusesTheExistingView)
{
  VXViewWidget* existing = first();
  VXVisualizationWidget* window = existing->getVisualizationWidget();
  const int childViews = m_Grid->findChildren<VXViewWidget*>().size();
  m_Grid->loadState(rowRecord({4}, {1.0}), existing);
  settle();
  EXPECT_EQ(m_Grid->viewCount(), 1);
  EXPECT_EQ(first(), existing);
  EXPECT_EQ(existing->getVisualizationWidget(), window);
  EXPECT_EQ(existing->getSplitId(), 4);
  EXPECT_EQ(m_Grid->findChildren<VXViewWidget*>().size(), childViews);
  EXPECT_EQ(m_Grid->activeView(), existing);
}

TEST_F(ViewGridTest, LoadedIdsMoveTheCounterAboveThem)
{
  VXViewWidget::setNextSplitViewId(3);
  m_Grid->loadState(rowRecord({1, 7, 2}, {0.5}), first());
  EXPECT_EQ(splitIds(*m_Grid), (QList<int>{1, 7, 2}));
  EXPECT_EQ(VXViewWidget::nextSplitViewId(), 8);
  m_Grid->addRow(first());
  EXPECT_EQ(viewAt(*m_Grid, 3)->getSplitId(), 8); // the new row comes after the first
  // Weights missing from the record take equal shares.
  ASSERT_EQ(m_Grid->columnWeights().size(), 3u);
  EXPECT_DOUBLE_EQ(m_Grid->columnWeights()[0], 0.5);
  EXPECT_DOUBLE_EQ(m_Grid->columnWeights()[2], 1.0 / 3.0);
}

TEST_F(ViewGridTest, SpannedCellMakesNoViewAndActiveViewComesFromTheRecord)
{
  nlohmann::json record = rowRecord({1, 2, 3}, {0.3, 0.3, 0.4});
  record["cells"][0][1]["col_span"] = 2;
  record["cells"][0][1]["widget_state"]["active_view"] = true;
  record["cells"][0][2]["col_span"] = 0;
  record["cells"][0][2]["row_span"] = 0;
  m_Grid->loadState(record, first());
  ASSERT_EQ(m_Grid->viewCount(), 2);
  EXPECT_EQ(splitIds(*m_Grid), (QList<int>{1, 2}));
  EXPECT_EQ(m_Grid->activeView(), viewAt(*m_Grid, 1));
  EXPECT_TRUE(viewAt(*m_Grid, 1)->isActive());
  EXPECT_EQ(viewAt(*m_Grid, 1)->geometry().right(), m_Grid->width() - 1);
}

TEST_F(ViewGridTest, WrongTypesInARecordRaiseTheTypeError)
{
  nlohmann::json badActive = rowRecord({1}, {1.0});
  badActive["cells"][0][0]["widget_state"]["active_view"] = 1;
  m_Grid->addColumn(first());
  VXViewWidget* existing = first();
  EXPECT_THROW(m_Grid->loadState(badActive, existing), nlohmann::json::type_error);
  // The grid is left usable, with the existing view alone.
  ASSERT_EQ(m_Grid->viewCount(), 1);
  EXPECT_EQ(first(), existing);
  EXPECT_EQ(m_Grid->activeView(), existing);
  EXPECT_EQ(existing->geometry(), m_Grid->rect());

  nlohmann::json badId = rowRecord({1}, {1.0});
  badId["cells"][0][0]["widget_state"]["split_view_index"] = "one";
  EXPECT_THROW(first()->loadState(badId["cells"][0][0]["widget_state"]), nlohmann::json::type_error);

  first()->loadState(nlohmann::json{{"split_view_index", true}});
  EXPECT_EQ(first()->getSplitId(), 1);
  first()->loadState(nlohmann::json::object());
  EXPECT_EQ(first()->getSplitId(), 0);
}

TEST_F(ViewGridTest, LegacyTreeRebuildsTheSplits)
{
  // Views 1 | (5 over 6): a column split whose second child is a row split.
  const nlohmann::json legacy = {
      {"split_view_orientation", 1},
      {"0", {{"split_view_index", 1}}},
      {"1",
       {{"split_view_orientation", 2}, {"0", {{"split_view_index", 5}}}, {"1", {{"split_view_index", 6}}}}}};
  VXViewWidget::setNextSplitViewId(3);
  m_Grid->addColumn(first()); // replaced by the load
  m_Grid->loadState(legacy, first());
  ASSERT_EQ(m_Grid->viewCount(), 3);
  EXPECT_EQ(m_Grid->columnCount(), 2);
  EXPECT_EQ(m_Grid->rowCount(), 2);
  EXPECT_EQ(splitIds(*m_Grid), (QList<int>{1, 5, 6}));
  EXPECT_EQ(viewAt(*m_Grid, 0)->height(), m_Grid->height());
  EXPECT_EQ(viewAt(*m_Grid, 1)->x(), viewAt(*m_Grid, 2)->x());
  EXPECT_NE(m_Grid->activeView(), nullptr);
  // The next split goes above every loaded id: no second "Split View 6".
  EXPECT_EQ(VXViewWidget::nextSplitViewId(), 7);
  m_Grid->addColumn(first());
  EXPECT_EQ(splitIds(*m_Grid).count(7), 1);

  // A branch without an orientation ends quietly.
  m_Grid->loadState(nlohmann::json{{"0", {{"split_view_index", 9}}}}, first());
  EXPECT_EQ(m_Grid->viewCount(), 1);
}

TEST_F(ViewGridTest, BlockedViewIgnoresRenderAndCameraRequests)
{
  VXViewWidget* view = first();
  VXVisualizationWidget* window = view->getVisualizationWidget();
  vtkNew<vtkSphereSource> sphere;
  vtkNew<vtkPolyDataMapper> mapper;
  mapper->SetInputConnection(sphere->GetOutputPort());
  vtkNew<vtkActor> actor;
  actor->SetMapper(mapper);
  actor->SetPosition(10.0, 0.0, 0.0);
  window->addActor(actor);
  settle();

  view->setBlockRender(true);
  EXPECT_FALSE(window->getRenderer()->GetDraw());
  settle();
  const int frames = window->getCoalescedFrameCount();
  double before[3];
  window->getRenderer()->GetActiveCamera()->GetFocalPoint(before);
  view->renderView();
  view->resetCamera();
  view->updateScene();
  EXPECT_FALSE(window->isRenderPending());
  settle();
  EXPECT_EQ(window->getCoalescedFrameCount(), frames);
  EXPECT_DOUBLE_EQ(window->getRenderer()->GetActiveCamera()->GetFocalPoint()[0], before[0]);

  view->setBlockRender(false); // unblocking draws once
  EXPECT_TRUE(window->getRenderer()->GetDraw());
  EXPECT_TRUE(window->isRenderPending());
  view->resetCamera();
  EXPECT_NEAR(window->getRenderer()->GetActiveCamera()->GetFocalPoint()[0], 10.0, 1e-6);

  nlohmann::json state;
  view->saveState(state);
  EXPECT_EQ(state["block_render"], false);
  EXPECT_EQ(state["split_view_index"], view->getSplitId());
  EXPECT_TRUE(state.contains("camera_pos_x"));
}

TEST_F(ViewGridTest, OverlayHintNamesTheViewAndBlursTheWindow)
{
  VXViewWidget* view = first();
  view->setSplitId(12);
  EXPECT_EQ(view->overlayHintLabel()->text(), QStringLiteral("Split View 12"));
  EXPECT_EQ(view->overlayHintLabel()->objectName(), QStringLiteral("m_MoveChartOverlayHint"));
  EXPECT_EQ(view->overlayBackgroundLabel()->objectName(), QStringLiteral("m_MoveChartOverlayBackground"));
  EXPECT_FALSE(view->overlayHintLabel()->isVisible());

  view->setSplitIdOverlayHintVisibility(true);
  EXPECT_TRUE(view->overlayHintLabel()->isVisible());
  EXPECT_TRUE(view->overlayBackgroundLabel()->isVisible());
  EXPECT_EQ(view->overlayHintLabel()->size(), view->size());
  EXPECT_DOUBLE_EQ(view->renderWindowBlurEffect()->blurRadius(), 5.0);

  m_Grid->addColumn(view); // the view shrinks, the labels follow
  settle();
  EXPECT_EQ(view->overlayBackgroundLabel()->size(), view->size());

  view->setSplitIdOverlayHintVisibility(false);
  EXPECT_FALSE(view->overlayHintLabel()->isVisible());
  EXPECT_DOUBLE_EQ(view->renderWindowBlurEffect()->blurRadius(), 0.0);
}

TEST_F(ViewGridTest, StatusMessageFromTheRenderWindowReachesTheStatusLine)
{
  VXViewWidget* view = first();
  Q_EMIT view->getVisualizationWidget()->statusMessage(QStringLiteral("Point 17: (1, 2, 3)"));
  EXPECT_EQ(view->findChild<QLabel*>("statusLabel")->text(), QStringLiteral("Point 17: (1, 2, 3)"));
  EXPECT_EQ(view->findChild<QLabel*>("statusLabel")->toolTip(),
            QStringLiteral("<html><head/><body><p>Point 17: (1, 2, 3)</p></body></html>"));
}

TEST_F(ViewGridTest, SplitRequestFromTheRenderWindowMenuSplitsItsView)
{
  Q_EMIT first()->getVisualizationWidget()->requestSplitVertically();
  EXPECT_EQ(m_Grid->viewCount(), 2);
  EXPECT_EQ(m_Grid->rowCount(), 2);
  Q_EMIT viewAt(*m_Grid, 1)->getVisualizationWidget()->requestSplitHorizontally();
  EXPECT_EQ(m_Grid->viewCount(), 3);
  EXPECT_EQ(m_Grid->columnCount(), 2);
  m_Grid->reset();
  EXPECT_EQ(m_Grid->viewCount(), 1);
  EXPECT_FALSE(first()->isClosable());
}

namespace
{
// Where the toolbar of a render window stands by its full height: a quarter down a tall window, near
// the top of a short one, and never reaching below the window's bottom.
void expectToolbarPlaced(VXVisualizationWidget* window)
{
  VXVisualizationToolbarWidget* toolbar = window->getToolbar();
  const int height = window->height();
  const int expectedY = height / 2 > toolbar->fullHeight() ? height / 4 : std::min(20, height - 64);
  EXPECT_EQ(toolbar->y(), std::max(0, expectedY)) << "window height " << height;
  EXPECT_EQ(toolbar->x(), 0);
  EXPECT_LE(toolbar->geometry().bottom(), height - 1) << "the toolbar is never cut off";
  EXPECT_TRUE(toolbar->isVisible());
}
} // namespace

TEST(ViewGridLayoutTest, ShrinkAndGrowKeepsEveryViewAndItsToolbarInPlace)
{
  // The grid above an output pane, as in a main window.
  QWidget window;
  auto* layout = new QVBoxLayout(&window);
  auto* grid = new VXViewGridWidget(&window);
  layout->addWidget(grid, 1);
  layout->addWidget(new QPlainTextEdit(&window));
  window.resize(1200, 900);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  settle();
  grid->addColumn(grid->allViews().at(0));
  grid->addRow(grid->allViews().at(0));
  grid->addColumn(grid->allViews().at(1));
  settle();
  const int columns = grid->columnCount();
  const int rows = grid->rowCount();
  ASSERT_EQ(columns, 3);
  ASSERT_EQ(rows, 2);
  const QSize view = VXViewGridWidget::minimumViewSize();
  EXPECT_EQ(grid->minimumSizeHint(),
            QSize(columns * view.width() + (columns - 1) * VXViewGridWidget::k_SeparatorWidth,
                  rows * view.height() + (rows - 1) * VXViewGridWidget::k_SeparatorWidth));

  window.resize(200, 150);
  settle();
  EXPECT_GE(grid->width(), grid->minimumSizeHint().width()) << "the grid never collapses";
  EXPECT_GE(grid->height(), grid->minimumSizeHint().height());
  for (VXAbstractViewWidget* cell : grid->allViews())
  {
    VXVisualizationWidget* renderWindow = cell->getVisualizationWidget();
    EXPECT_GT(renderWindow->height(), 60);
    expectToolbarPlaced(renderWindow);
  }

  window.resize(1200, 900);
  settle();
  for (VXAbstractViewWidget* cell : grid->allViews())
  {
    VXVisualizationWidget* renderWindow = cell->getVisualizationWidget();
    expectToolbarPlaced(renderWindow);
    VXVisualizationToolbarWidget* toolbar = renderWindow->getToolbar();
    const bool roomForAll = toolbar->y() + toolbar->fullHeight() <= renderWindow->height() - 4;
    EXPECT_EQ(toolbar->getOverflowButton()->isVisible(), !roomForAll);
    EXPECT_EQ(toolbar->getOverflowedButtons().isEmpty(), roomForAll);
  }

  // Closing views lowers the minimum again.
  grid->closeCell(grid->allViews().at(1));
  settle();
  EXPECT_LE(grid->minimumSizeHint().width(), 2 * view.width() + VXViewGridWidget::k_SeparatorWidth);
}
