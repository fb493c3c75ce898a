#include "platform/AbstractZRGridSplitterWidget.h"

#include <nlohmann/json.hpp>

#include <QApplication>
#include <QFrame>
#include <QMouseEvent>
#include <QPointer>
#include <QTest>

#include <gtest/gtest.h>

#include <numeric>

namespace
{
class TestCell : public QFrame
{
  Q_OBJECT

public:
  explicit TestCell(int id)
      : m_Id(id)
  {
  }
  int m_Id = 0;
  bool m_Active = false;
  bool m_Closable = false;

public Q_SLOTS:
  void setActive(bool active) { m_Active = active; }
};

class TestGrid : public AbstractZRGridSplitterWidget
{
public:
  TestGrid()
  {
    resize(906, 606);
    setInitialWidget(new TestCell(m_NextId++));
  }

  // Loads a grid record the way the view grid does: cell by cell, each with a new widget.
  void load(const nlohmann::json& input)
  {
    for (QWidget* widget : takeAllWidgets())
    {
      widget->deleteLater();
    }
    readGridGeometry(input);
    for (int r = 0; r < rowCount(); ++r)
    {
      for (int c = 0; c < columnCount(); ++c)
      {
        const nlohmann::json& cellJson = input["cells"][r][c];
        ZRGridCell& cell = m_Cells[r][c];
        cell.rowSpan = cellJson["row_span"].get<int>();
        cell.colSpan = cellJson["col_span"].get<int>();
        if (!cellJson.contains("widget_state") || cell.isCovered())
        {
          continue;
        }
        auto* widget = new TestCell(0);
        widget->setParent(this);
        loadWidgetState(cellJson["widget_state"], widget);
        connectWidget(widget);
        cell.widget = widget;
        widget->show();
      }
    }
    updateAllClosable();
    layoutChildren();
  }

  TestCell* cell(int index) const { return static_cast<TestCell*>(allWidgets().at(index)); }
  QStringList ids() const
  {
    QStringList list;
    for (QWidget* w : allWidgets())
    {
      list << QString::number(static_cast<TestCell*>(w)->m_Id);
    }
    return list;
  }

  QStringList m_Log;
  int m_NextId = 1;

protected:
  QWidget* createSplitWidget(QWidget* /*source*/) override { return new TestCell(m_NextId++); }
  void saveWidgetState(QWidget* widget, nlohmann::json& output) const override
  {
    output["id"] = static_cast<TestCell*>(widget)->m_Id;
  }
  void loadWidgetState(const nlohmann::json& input, QWidget* widget) override
  {
    static_cast<TestCell*>(widget)->m_Id = input["id"].get<int>();
  }
  void setWidgetClosable(QWidget* widget, bool closable) override
  {
    static_cast<TestCell*>(widget)->m_Closable = closable;
  }
  void onWidgetCreated(QWidget* source, QWidget* created) override
  {
    m_Log << QStringLiteral("created %1 from %2")
                 .arg(static_cast<TestCell*>(created)->m_Id)
                 .arg(static_cast<TestCell*>(source)->m_Id);
  }
  void onWidgetClosing(QWidget* widget) override
  {
    m_Log << QStringLiteral("closing %1").arg(static_cast<TestCell*>(widget)->m_Id);
  }
  void onActiveWidgetChanged(QWidget* widget) override
  {
    m_Log << QStringLiteral("active %1").arg(static_cast<TestCell*>(widget)->m_Id);
  }
};

double sum(const std::vector<double>& values)
{
  return std::accumulate(values.begin(), values.end(), 0.0);
}

void sendMouse(QWidget* widget, QEvent::Type type, QPoint pos, Qt::MouseButtons buttons)
{
  QMouseEvent event(type, pos, widget->mapToGlobal(pos), Qt::LeftButton, buttons, Qt::NoModifier);
  QApplication::sendEvent(widget, &event);
}

// No two cells overlap, and every cell lies inside the grid.
void expectTiled(const TestGrid& grid)
{
  const QList<QWidget*> widgets = grid.allWidgets();
  for (int i = 0; i < widgets.size(); ++i)
  {
    EXPECT_TRUE(grid.rect().contains(widgets[i]->geometry())) << i;
    EXPECT_GT(widgets[i]->width(), 0);
    for (int j = i + 1; j < widgets.size(); ++j)
    {
      EXPECT_FALSE(widgets[i]->geometry().intersects(widgets[j]->geometry())) << i << " and " << j;
    }
  }
}
} // namespace

TEST(GridSplitter, SplitThreeWaysAndCloseTheMiddle)
{
  TestGrid grid;
  TestCell* first = grid.cell(0);
  grid.addColumn(first);
  grid.addColumn(grid.cell(1));
  ASSERT_EQ(grid.widgetCount(), 3);
  EXPECT_EQ(grid.columnCount(), 3);
  EXPECT_EQ(grid.rowCount(), 1);
  EXPECT_EQ(grid.ids(), (QStringList{"1", "2", "3"}));
  EXPECT_NEAR(sum(grid.columnWeights()), 1.0, 1e-12);
  EXPECT_LT(grid.cell(0)->x(), grid.cell(1)->x());
  EXPECT_LT(grid.cell(1)->x(), grid.cell(2)->x());
  expectTiled(grid);

  QPointer<TestCell> middle = grid.cell(1);
  grid.markWidgetActive(middle);
  ASSERT_TRUE(middle->m_Active);
  grid.closeCell(middle);
  EXPECT_TRUE(grid.m_Log.contains(QStringLiteral("closing 2")));
  EXPECT_EQ(grid.widgetCount(), 2);
  EXPECT_EQ(grid.columnCount(), 2);
  EXPECT_EQ(grid.ids(), (QStringList{"1", "3"}));
  EXPECT_NEAR(sum(grid.columnWeights()), 1.0, 1e-12);
  // The active cell moved to the survivor that took the closed area.
  ASSERT_NE(grid.activeWidget(), nullptr);
  EXPECT_NE(grid.activeWidget(), middle.data());
  EXPECT_TRUE(static_cast<TestCell*>(grid.activeWidget())->m_Active);
  EXPECT_EQ(grid.m_Log.last(),
            QStringLiteral("active %1").arg(static_cast<TestCell*>(grid.activeWidget())->m_Id));
  // The survivors fill the width between them.
  EXPECT_EQ(grid.cell(0)->x(), 0);
  EXPECT_EQ(grid.cell(1)->geometry().right(), grid.width() - 1);
  expectTiled(grid);
  QTest::qWait(0);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(middle.isNull());
}

TEST(GridSplitter, SavedRecordLoadsIntoAFreshGridUnchanged)
{
  TestGrid grid;
  grid.addColumn(grid.cell(0)); // 1 | 2
  grid.addRow(grid.cell(1));    // 2 over 3 on the right
  grid.addColumn(grid.cell(0)); // 1 | 4 on the left
  grid.closeCell(grid.cell(0)); // 4 takes the left column
  nlohmann::json saved;
  grid.saveGridState(saved);
  ASSERT_TRUE(saved.contains("grid_version"));
  EXPECT_EQ(saved["grid_rows"], grid.rowCount());
  EXPECT_EQ(saved["grid_cols"], grid.columnCount());
  EXPECT_EQ(saved["cells"].size(), static_cast<std::size_t>(grid.rowCount()));

  TestGrid fresh;
  fresh.load(saved);
  nlohmann::json reloaded;
  fresh.saveGridState(reloaded);
  EXPECT_EQ(reloaded, saved) << reloaded.dump(1) << "\n" << saved.dump(1);
  EXPECT_EQ(fresh.widgetCount(), grid.widgetCount());
  EXPECT_EQ(fresh.ids(), grid.ids());
  for (int i = 0; i < grid.widgetCount(); ++i)
  {
    EXPECT_EQ(fresh.cell(i)->geometry(), grid.cell(i)->geometry()) << i;
  }
}

TEST(GridSplitter, SpanningCellSplitsWithinItsSpanAndClosedAreaGoesToATilingSide)
{
  TestGrid grid;
  TestCell* left = grid.cell(0);
  grid.addColumn(left);
  TestCell* right = grid.cell(1);
  grid.addRow(right); // left spans both rows
  TestCell* bottomRight = grid.cell(2);
  int row = -1;
  int col = -1;
  ASSERT_TRUE(grid.findWidget(left, row, col));
  EXPECT_EQ(grid.cellAt(row, col).rowSpan, 2);
  EXPECT_EQ(grid.cellAt(1, 0).rowSpan, 0); // under the spanning cell

  // Splitting the spanning cell by rows needs no new row.
  grid.addRow(left);
  EXPECT_EQ(grid.rowCount(), 2);
  EXPECT_EQ(grid.widgetCount(), 4);
  EXPECT_EQ(grid.cellAt(0, 0).rowSpan, 1);
  expectTiled(grid);
  grid.closeCell(grid.cell(2)); // the new lower-left cell: its upper neighbour spans down again
  EXPECT_EQ(grid.cellAt(0, 0).rowSpan, 2);

  // Closing the tall left cell: the two right cells together tile its side and widen.
  grid.closeCell(left);
  EXPECT_EQ(grid.columnCount(), 1);
  EXPECT_EQ(grid.rowCount(), 2);
  EXPECT_EQ(right->x(), 0);
  EXPECT_EQ(bottomRight->x(), 0);
  EXPECT_EQ(right->width(), grid.width());
  expectTiled(grid);
}

TEST(GridSplitter, ClosableOnlyWithMoreThanOneCell)
{
  TestGrid grid;
  TestCell* only = grid.cell(0);
  EXPECT_FALSE(only->m_Closable);
  grid.closeCell(only);
  EXPECT_EQ(grid.widgetCount(), 1);
  EXPECT_TRUE(grid.m_Log.filter(QStringLiteral("closing")).isEmpty());

  grid.addRow(only);
  EXPECT_TRUE(grid.cell(0)->m_Closable);
  EXPECT_TRUE(grid.cell(1)->m_Closable);
  EXPECT_TRUE(grid.m_Log.contains(QStringLiteral("created 2 from 1")));
  grid.closeCell(grid.cell(1));
  EXPECT_FALSE(grid.cell(0)->m_Closable);
}

TEST(GridSplitter, DraggingASeparatorMovesWeightBetweenItsNeighbours)
{
  TestGrid grid;
  grid.addColumn(grid.cell(0));
  grid.addRow(grid.cell(0));
  grid.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&grid));
  const int leftBefore = grid.cell(0)->width();
  const std::vector<double> rowsBefore = grid.rowWeights();

  // Press in the gap right of the first column and drag 100 pixels to the right.
  const QPoint gap(grid.cell(0)->geometry().right() + 1 + AbstractZRGridSplitterWidget::k_SeparatorWidth / 2,
                   10);
  sendMouse(&grid, QEvent::MouseMove, gap, Qt::NoButton);
  EXPECT_EQ(grid.cursor().shape(), Qt::SplitHCursor);
  sendMouse(&grid, QEvent::MouseButtonPress, gap, Qt::LeftButton);
  sendMouse(&grid, QEvent::MouseMove, gap + QPoint(60, 0), Qt::LeftButton);
  sendMouse(&grid, QEvent::MouseButtonRelease, gap + QPoint(100, 0), Qt::NoButton);
  EXPECT_NEAR(grid.cell(0)->width(), leftBefore + 100, 1);
  EXPECT_GT(grid.columnWeights()[0], grid.columnWeights()[1]);
  EXPECT_NEAR(sum(grid.columnWeights()), 1.0, 1e-9);
  EXPECT_EQ(grid.rowWeights(), rowsBefore);
  expectTiled(grid);

  // A drag far beyond the edge stops at the minimum size of the other column.
  const QPoint gap2(grid.cell(0)->geometry().right() + 2, 10);
  sendMouse(&grid, QEvent::MouseButtonPress, gap2, Qt::LeftButton);
  sendMouse(&grid, QEvent::MouseButtonRelease, gap2 + QPoint(5000, 0), Qt::NoButton);
  EXPECT_NEAR(grid.allWidgets().at(1)->width(), AbstractZRGridSplitterWidget::k_MinimumCellSize, 1);

  grid.equalizeColumnWidths();
  EXPECT_DOUBLE_EQ(grid.columnWeights()[0], grid.columnWeights()[1]);
  EXPECT_NEAR(grid.cell(0)->width(), grid.allWidgets().at(1)->width(), 1);
  grid.equalizeRowHeights();
  EXPECT_DOUBLE_EQ(grid.rowWeights()[0], 0.5);
}

TEST(GridSplitter, PressOnACellMakesItActiveOnce)
{
  TestGrid grid;
  grid.addColumn(grid.cell(0));
  grid.show();
  TestCell* second = grid.cell(1);
  grid.m_Log.clear();
  QTest::mouseClick(second, Qt::LeftButton);
  EXPECT_EQ(grid.activeWidget(), second);
  EXPECT_TRUE(second->m_Active);
  EXPECT_FALSE(grid.cell(0)->m_Active);
  QTest::mouseClick(second, Qt::LeftButton);
  EXPECT_EQ(grid.m_Log, QStringList{QStringLiteral("active 2")});
}

TEST(GridSplitter, ResetKeepsTheActiveCellAndADeletedCellLeavesTheTable)
{
  TestGrid grid;
  grid.addColumn(grid.cell(0));
  grid.addRow(grid.cell(1));
  delete grid.cell(2);
  EXPECT_EQ(grid.widgetCount(), 2);
  EXPECT_EQ(grid.rowCount(), 1);
  expectTiled(grid);

  TestCell* second = grid.cell(1);
  grid.markWidgetActive(second);
  grid.resetGrid();
  EXPECT_EQ(grid.widgetCount(), 1);
  EXPECT_EQ(grid.cell(0), second);
  EXPECT_EQ(grid.columnWeights(), std::vector<double>{1.0});
  EXPECT_EQ(second->geometry(), grid.rect());
}

TEST(GridSplitter, RecordWithShortWeightListsUsesEqualShares)
{
  TestGrid grid;
  nlohmann::json record = {{"grid_version", 1},
                           {"grid_rows", 1},
                           {"grid_cols", 3},
                           {"col_widths", {0.5}},
                           {"cells",
                            {{{{"row_span", 1}, {"col_span", 1}, {"widget_state", {{"id", 7}}}},
                              {{"row_span", 1}, {"col_span", 2}, {"widget_state", {{"id", 8}}}},
                              {{"row_span", 0}, {"col_span", 0}}}}}};
  grid.load(record);
  ASSERT_EQ(grid.columnWeights().size(), 3u);
  EXPECT_DOUBLE_EQ(grid.columnWeights()[0], 0.5);
  EXPECT_DOUBLE_EQ(grid.columnWeights()[1], 1.0 / 3.0);
  EXPECT_DOUBLE_EQ(grid.columnWeights()[2], 1.0 / 3.0);
  EXPECT_EQ(grid.ids(), (QStringList{"7", "8"}));
  EXPECT_EQ(grid.cell(1)->geometry().right(), grid.width() - 1);

  nlohmann::json wrongType = record;
  wrongType["grid_rows"] = "one";
  EXPECT_THROW(grid.load(wrongType), nlohmann::json::type_error);
}

TEST(GridSplitter, InterlockedCellsAroundAClosedOneLeaveAnEmptyArea)
{
  // Four cells wind around a centre cell, so no side of the centre is tiled by its neighbours.
  auto cell = [](int rows, int cols, int id)
  {
    nlohmann::json c = {{"row_span", rows}, {"col_span", cols}};
    if (id > 0)
    {
      c["widget_state"] = {{"id", id}};
    }
    return c;
  };
  const nlohmann::json record = {{"grid_version", 1},
                                 {"grid_rows", 3},
                                 {"grid_cols", 3},
                                 {"cells",
                                  {{cell(1, 2, 1), cell(0, 0, 0), cell(2, 1, 2)},
                                   {cell(2, 1, 4), cell(1, 1, 5), cell(0, 0, 0)},
                                   {cell(0, 0, 0), cell(1, 2, 3), cell(0, 0, 0)}}}};
  TestGrid grid;
  grid.load(record);
  ASSERT_EQ(grid.widgetCount(), 5);
  grid.closeCell(grid.cell(3)); // id 5, the centre
  EXPECT_EQ(grid.widgetCount(), 4);
  EXPECT_EQ(grid.rowCount(), 3);
  EXPECT_EQ(grid.cellAt(1, 1).widget, nullptr);
  EXPECT_FALSE(grid.cellAt(1, 1).isCovered());
  expectTiled(grid);
  // The empty area survives a save and load.
  nlohmann::json saved;
  grid.saveGridState(saved);
  TestGrid fresh;
  fresh.load(saved);
  EXPECT_EQ(fresh.widgetCount(), 4);
}

#include "AbstractZRGridSplitterWidgetTest.moc"
