// The spreadsheet window: drops on the type buttons, views split, moved between and closed, tabs
// closed and reordered, data intake, and saved state.
#include "SpreadsheetTestArrays.h"

#include "spreadsheets/VXMultidimSpreadsheetOptions.h"
#include "spreadsheets/VXSpreadsheet.h"
#include "spreadsheets/VXSpreadsheetModel.h"
#include "spreadsheets/VXSpreadsheetOptions.h"
#include "spreadsheets/VXSpreadsheetTypeButton.h"
#include "spreadsheets/VXSpreadsheetTypeSelector.h"
#include "spreadsheets/VXSpreadsheetViewWidget.h"
#include "spreadsheets/VXSpreadsheetWidget.h"

#include "data_bridge/zr_contract/DataGroup.h"
#include "platform/ZRDataStructureModel.h"
#include "platform/ZRDataStructureTreeView.h"
#include "platform/ZRDataStructureWidget.h"
#include "platform/ZRDragAndDrop.h"
#include "views/VXMoveOverlay.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMimeData>
#include <QSignalSpy>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace SpreadsheetTest;
using zr::core::DataPath;
using Type = VXSpreadsheetTypeSelector::SpreadsheetType;

namespace
{
std::shared_ptr<zr::core::DataStructure> MakeStructure(bool withCube = true)
{
  auto ds = std::make_shared<zr::core::DataStructure>();
  MakeArray<float>(*ds, "Scalar", {1, 2, 3});
  MakeArray<std::int32_t>(*ds, "Triple", {1, 2, 3, 4, 5, 6}, 3);
  if (withCube)
  {
    auto* cube = zr::core::DataArray<float>::Create(*ds, "Cube", {2, 3}, {4});
    for (zr::core::usize i = 0; i < cube->getSize(); ++i)
    {
      cube->getDataStoreRef().setValue(i, static_cast<float>(i) * 0.5f);
    }
  }
  zr::core::DataGroup::Create(*ds, "Group");
  return ds;
}

std::unique_ptr<QMimeData> Drag(const std::vector<std::string>& paths)
{
  std::vector<ZR::DragAndDrop::DataPathDropValue> values;
  for (const std::string& path : paths)
  {
    values.push_back({*DataPath::FromString(path), "DataArray"});
  }
  auto mime = std::make_unique<QMimeData>();
  mime->setData(ZR::DragAndDrop::DataStructureItem, ZR::DragAndDrop::EncodeDropValues(values));
  return mime;
}

bool DragEnter(QWidget* target, const QMimeData* mime)
{
  QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, mime, Qt::LeftButton, Qt::NoModifier);
  enter.ignore();
  QApplication::sendEvent(target, &enter);
  return enter.isAccepted();
}

bool Drop(QWidget* target, const QMimeData* mime)
{
  QDropEvent drop(QPointF(5, 5), Qt::CopyAction, mime, Qt::LeftButton, Qt::NoModifier);
  drop.ignore();
  QApplication::sendEvent(target, &drop);
  return drop.isAccepted();
}

QStringList Messages(const QSignalSpy& spy)
{
  QStringList messages;
  for (const QList<QVariant>& call : spy)
  {
    messages << call.at(0).toString();
  }
  return messages;
}

std::vector<std::string> PathsOf(const VXSpreadsheetOptions* options)
{
  std::vector<std::string> paths;
  for (const DataPath& path : options->getDataPaths())
  {
    paths.push_back(path.toString());
  }
  return paths;
}

// A window fed with a run's structure, sized and shown so overlays and clicks behave as on screen.
struct Window
{
  Window()
  {
    widget.resize(1200, 700);
    widget.setDataStructure(nullptr, MakeStructure());
  }
  void show()
  {
    widget.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&widget));
  }
  VXSpreadsheetWidget widget;
};

VXSpreadsheetOptions* AddBasic(VXSpreadsheetViewWidget* view, std::vector<DataPath> paths)
{
  if (view->selectorAt(view->getActiveTabIndex()) == nullptr)
  {
    view->addTabButtonClicked();
  }
  view->selectorAt(view->getActiveTabIndex())->onBasicSpreadsheetSelected(std::move(paths));
  return view->getActiveSpreadsheetOptions();
}
} // namespace

TEST(VXSpreadsheetTypeButtons, DropsMakeSpreadsheetsOfTheirKind)
{
  Window window;
  QSignalSpy output(&window.widget, &VXSpreadsheetWidget::printOutput);
  VXSpreadsheetViewWidget* view = window.widget.activeView();
  ASSERT_NE(view, nullptr);
  ASSERT_EQ(view->tabCount(), 1);
  VXSpreadsheetTypeSelector* selector = view->selectorAt(0);
  ASSERT_NE(selector, nullptr);
  VXSpreadsheetTypeButton* basic = selector->basicButton();

  // Two arrays on the basic button: one basic spreadsheet holding both.
  const auto two = Drag({"Scalar", "Triple"});
  EXPECT_TRUE(DragEnter(basic, two.get()));
  EXPECT_TRUE(basic->isDragHighlighted());
  EXPECT_TRUE(Drop(basic, two.get()));
  ASSERT_EQ(view->tabCount(), 1);
  EXPECT_EQ(view->selectorAt(0), nullptr);
  VXSpreadsheetOptions* options = view->optionsAt(0);
  ASSERT_NE(options, nullptr);
  EXPECT_EQ(options->getSpreadsheetType(), 0);
  EXPECT_EQ(PathsOf(options), (std::vector<std::string>{"Scalar", "Triple"}));
  EXPECT_EQ(view->spreadsheetAt(0)->model()->columnCount(), 4);
  EXPECT_EQ(view->tabWidget()->tabToolTip(0), "Sheet 1");
  EXPECT_EQ(window.widget.shownSpreadsheetOptions(), options);

  view->addTabButtonClicked();
  VXSpreadsheetTypeButton* multidim = view->selectorAt(1)->multidimButton();
  // More than one array: refused with the window's message.
  output.clear();
  EXPECT_FALSE(DragEnter(multidim, two.get()));
  EXPECT_EQ(Messages(output),
            QStringList({"Multidimensional spreadsheets can only support viewing one array at a time"}));
  EXPECT_FALSE(multidim->isDragHighlighted());
  EXPECT_FALSE(Drop(multidim, two.get()));
  EXPECT_NE(view->selectorAt(1), nullptr);
  // Malformed drag data, and paths that lead to no array.
  output.clear();
  QMimeData broken;
  broken.setData(ZR::DragAndDrop::DataStructureItem, "[{\"path\": 3}]");
  EXPECT_FALSE(DragEnter(multidim, &broken));
  EXPECT_EQ(Messages(output), QStringList({"An error occurred while dragging the DataObject"}));
  EXPECT_FALSE(DragEnter(multidim, Drag({"Group"}).get()));
  EXPECT_FALSE(DragEnter(basic, Drag({"Scalar", "Missing"}).get()));

  // One array on the multidimensional button.
  const auto cube = Drag({"Cube"});
  EXPECT_TRUE(DragEnter(multidim, cube.get()));
  EXPECT_TRUE(Drop(multidim, cube.get()));
  VXSpreadsheetOptions* slice = view->optionsAt(1);
  ASSERT_NE(slice, nullptr);
  EXPECT_EQ(slice->getSpreadsheetType(), 1);
  EXPECT_EQ(PathsOf(slice), (std::vector<std::string>{"Cube"}));
  EXPECT_EQ(view->tabWidget()->tabToolTip(1), "Sheet 2");
  EXPECT_EQ(view->spreadsheetAt(1)->model()->columnCount(), 2);
  EXPECT_EQ(view->spreadsheetAt(1)->model()->rowCount(), 3);
}

TEST(VXSpreadsheetTypeButtons, ArraysDroppedOnASpreadsheetJoinIt)
{
  Window window;
  VXSpreadsheetViewWidget* view = window.widget.activeView();
  VXSpreadsheetOptions* options = AddBasic(view, {DataPath({"Scalar"})});
  VXSpreadsheet* sheet = view->spreadsheetAt(0);
  const auto triple = Drag({"Triple"});
  EXPECT_TRUE(DragEnter(sheet, triple.get()));
  EXPECT_TRUE(Drop(sheet, triple.get()));
  EXPECT_EQ(PathsOf(options), (std::vector<std::string>{"Scalar", "Triple"}));
  EXPECT_EQ(sheet->model()->columnCount(), 4);
}

TEST(VXSpreadsheetViews, SplitMoveAndCloseViews)
{
  Window window;
  window.show();
  QSignalSpy output(&window.widget, &VXSpreadsheetWidget::printOutput);
  VXSpreadsheetViewWidget* first = window.widget.activeView();
  VXSpreadsheetOptions* options = AddBasic(first, {DataPath({"Scalar"})});
  QPointer<VXSpreadsheet> sheet = first->spreadsheetAt(0);
  EXPECT_FALSE(first->isClosable());

  // Next to, then underneath the new view: a nested splitter.
  first->splitHorizontally();
  ASSERT_EQ(window.widget.viewWidgets().size(), 2);
  VXSpreadsheetViewWidget* second = window.widget.viewWidgets()[1];
  EXPECT_EQ(window.widget.rootSplitter()->orientation(), Qt::Horizontal);
  EXPECT_NE(second->selectorAt(0), nullptr);
  second->splitVertically();
  ASSERT_EQ(window.widget.viewWidgets().size(), 3);
  VXSpreadsheetViewWidget* third = window.widget.viewWidgets()[2];
  auto* nested = qobject_cast<QSplitter*>(window.widget.rootSplitter()->widget(1));
  ASSERT_NE(nested, nullptr);
  EXPECT_EQ(nested->orientation(), Qt::Vertical);
  EXPECT_EQ(VXSpreadsheetViewWidget::FindViewWidget(nested), second);
  EXPECT_TRUE(first->isClosable());
  EXPECT_TRUE(first->closeViewAction()->isEnabled());

  // The tab menu offers the move only for a spreadsheet tab.
  const QPoint tabPoint = first->tabWidget()->tabBar()->tabRect(0).center();
  std::unique_ptr<QMenu> menu(
      window.widget.createContextMenu(first, first->tabWidget()->tabBar()->mapTo(first, tabPoint)));
  EXPECT_TRUE(first->moveSpreadsheetAction()->isEnabled());
  EXPECT_TRUE(menu->actions().contains(first->closeViewAction()));

  // Esc during a move: overlays go, the tab stays.
  window.widget.startMovingSpreadsheet(first, 0);
  EXPECT_TRUE(Messages(output).contains("Click a view to move the spreadsheet to that view."));
  EXPECT_FALSE(first->isOverlayVisible());
  EXPECT_TRUE(second->isOverlayVisible());
  EXPECT_TRUE(third->isOverlayVisible());
  EXPECT_EQ(third->findChild<VXMoveOverlay*>()->hintText(),
            "Click here to move the chart to this view or press Esc to cancel");
  QTest::keyClick(third, Qt::Key_Escape);
  EXPECT_FALSE(second->isOverlayVisible());
  EXPECT_FALSE(third->isOverlayVisible());
  EXPECT_EQ(first->spreadsheetAt(0), sheet);

  // A click on the third view's overlay moves the only tab of the first view, which then closes.
  menu.reset(window.widget.createContextMenu(first, first->tabWidget()->tabBar()->mapTo(first, tabPoint)));
  first->moveSpreadsheetAction()->trigger();
  auto* overlay = third->findChild<VXMoveOverlay*>();
  ASSERT_TRUE(overlay->isVisible());
  QTest::mouseClick(overlay, Qt::LeftButton, Qt::NoModifier, overlay->rect().center());
  QApplication::processEvents();
  ASSERT_EQ(window.widget.viewWidgets().size(), 2);
  EXPECT_FALSE(window.widget.viewWidgets().contains(first));
  EXPECT_FALSE(second->isOverlayVisible());
  ASSERT_EQ(third->tabCount(), 2);
  EXPECT_EQ(third->spreadsheetAt(1), sheet);
  EXPECT_EQ(third->optionsAt(1), options);
  EXPECT_EQ(third->getActiveTabIndex(), 1);
  EXPECT_EQ(third->tabWidget()->tabToolTip(1), "Sheet 1");
  EXPECT_EQ(window.widget.activeView(), third);
  EXPECT_EQ(window.widget.shownSpreadsheetOptions(), options);

  // Closing views: the last one stays.
  second->closeView();
  QApplication::processEvents();
  ASSERT_EQ(window.widget.viewWidgets(), QList<VXSpreadsheetViewWidget*>({third}));
  EXPECT_FALSE(third->isClosable());
  third->closeView();
  EXPECT_EQ(window.widget.viewWidgets().size(), 1);

  // Its tabs can all close: a fresh selector takes the last one's place.
  third->removeTab(1);
  third->removeTab(0);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(sheet.isNull());
  EXPECT_EQ(third->tabCount(), 1);
  EXPECT_NE(third->selectorAt(0), nullptr);
  EXPECT_TRUE(window.widget.isEmpty());
}

TEST(VXSpreadsheetViews, ClosedAndMovedTabsKeepTheirPanels)
{
  Window window;
  VXSpreadsheetViewWidget* view = window.widget.activeView();
  std::vector<VXSpreadsheetOptions*> panels;
  for (const char* name : {"Scalar", "Triple", "Cube"})
  {
    panels.push_back(AddBasic(view, {DataPath({name})}));
  }
  ASSERT_EQ(view->tabCount(), 3);
  view->removeTab(1);
  QApplication::processEvents();
  ASSERT_EQ(view->tabCount(), 2);
  EXPECT_EQ(view->optionsAt(1), panels[2]);
  EXPECT_EQ(view->optionsAt(2), nullptr);
  // Number 2 went back to the pool.
  EXPECT_EQ(view->usedSpreadsheetNumbers(), (std::vector<unsigned long>{1, 3}));
  VXSpreadsheetOptions* again = AddBasic(view, {DataPath({"Triple"})});
  EXPECT_EQ(again->getSpreadsheetName(), "Sheet 2");

  // A drag reorder of the tab bar: every tab keeps its own panel.
  view->tabWidget()->tabBar()->moveTab(0, 2);
  EXPECT_EQ(view->optionsAt(2), panels[0]);
  EXPECT_EQ(view->optionsAt(0), panels[2]);
  EXPECT_EQ(view->optionsAt(1), again);
  for (int tab = 0; tab < view->tabCount(); ++tab)
  {
    EXPECT_EQ(view->tabWidget()->widget(tab), view->spreadsheetAt(tab));
  }
}

TEST(VXSpreadsheetWindowState, SaveLoadSaveIsIdentical)
{
  const auto ds = MakeStructure();
  nlohmann::json first;
  {
    Window window;
    window.widget.setDataStructure(nullptr, ds);
    VXSpreadsheetViewWidget* left = window.widget.activeView();
    AddBasic(left, {DataPath({"Scalar"}), DataPath({"Triple"})});
    left->addTabButtonClicked(); // a tab still on its selector
    left->splitHorizontally();
    VXSpreadsheetViewWidget* right = window.widget.viewWidgets()[1];
    right->selectorAt(0)->onMultidimSpreadsheetSelected({DataPath({"Cube"})});
    static_cast<VXMultidimSpreadsheetOptions*>(right->optionsAt(0))->setDimensions(1, 0);
    right->splitVertically();
    window.widget.setActiveView(right);
    window.widget.saveState(first);
  }
  EXPECT_EQ(first["kestrix_file_path"], "");
  EXPECT_EQ(first["split_view_orientation"], static_cast<int>(Qt::Horizontal));
  EXPECT_EQ(first["split_view_first"]["num_spreadsheet_tabs"], 2);
  EXPECT_TRUE(first["split_view_first"]["spreadsheet_type_selectors"].contains("1"));
  EXPECT_TRUE(first["split_view_first"]["spreadsheet_options"].contains("0"));
  EXPECT_EQ(first["split_view_second"]["split_view_orientation"], static_cast<int>(Qt::Vertical));

  Window restored;
  restored.widget.setDataStructure(nullptr, ds);
  ASSERT_TRUE(restored.widget.loadState(first));
  const QList<VXSpreadsheetViewWidget*> views = restored.widget.viewWidgets();
  ASSERT_EQ(views.size(), 3);
  EXPECT_NE(views[0]->optionsAt(0), nullptr);
  EXPECT_NE(views[0]->selectorAt(1), nullptr);
  EXPECT_EQ(restored.widget.activeView(), views[1]);
  auto* slice = qobject_cast<VXMultidimSpreadsheetOptions*>(views[1]->optionsAt(0));
  ASSERT_NE(slice, nullptr);
  EXPECT_EQ(slice->xDimension(), 1);
  EXPECT_EQ(views[1]->spreadsheetAt(0)->model()->columnCount(), 3);
  nlohmann::json second;
  restored.widget.saveState(second);
  EXPECT_EQ(second, first);

  // The same through the window's own state file.
  QTemporaryDir dir;
  const QString path = dir.filePath("sheets.ksxstate");
  ASSERT_TRUE(restored.widget.saveState(path));
  Window fromFile;
  fromFile.widget.setDataStructure(nullptr, ds);
  ASSERT_TRUE(fromFile.widget.loadState(path));
  nlohmann::json third;
  fromFile.widget.saveState(third);
  EXPECT_EQ(third, first);
}

TEST(VXSpreadsheetWindowState, BadStateIsReportedAndLeavesAView)
{
  Window window;
  QSignalSpy output(&window.widget, &VXSpreadsheetWidget::printOutput);
  EXPECT_FALSE(window.widget.loadState(nlohmann::json::object()));
  EXPECT_EQ(Messages(output).last(),
            "Error reading charting state from state file; no chart split views found");
  EXPECT_FALSE(window.widget.loadState(nlohmann::json{{"split_view_orientation", 1}}));
  EXPECT_EQ(Messages(output).last(),
            "Error reading charting state from state file; no kestrix_file_path key found");
  EXPECT_FALSE(window.widget.loadState(nlohmann::json{
      {"kestrix_file_path", ""}, {"split_view_first", {{"split_view_second", nlohmann::json::object()}}}}));
  EXPECT_EQ(Messages(output).last(),
            "Error loading charting state from state file; missing split view orientation key");
  EXPECT_EQ(window.widget.viewWidgets().size(), 1);
  EXPECT_FALSE(window.widget.loadState(QStringLiteral("/no/such/file.ksxstate")));
  EXPECT_EQ(Messages(output).last(),
            "A valid KESTRIX-ZR state file (*.ksxstate) was not found. Could not load state.");
}

TEST(VXSpreadsheetWindowData, RunsAndFilesFeedTheTreeAndEveryPanel)
{
  Window window;
  VXSpreadsheetViewWidget* view = window.widget.activeView();
  ZRDataStructureModel* tree =
      window.widget.dataStructureWidget()->getDataStructureTreeView()->getDataStructureModel();
  EXPECT_EQ(view->selectorAt(0)->basicButton()->dataStructureModel(), tree);
  VXSpreadsheetOptions* options = AddBasic(view, {DataPath({"Scalar"}), DataPath({"Cube"})});
  ASSERT_EQ(options->getDataPaths().size(), 2U);

  // A later run without one of the arrays: it drops out of the open spreadsheet.
  window.widget.setDataStructure(nullptr, MakeStructure(false));
  EXPECT_EQ(PathsOf(options), (std::vector<std::string>{"Scalar"}));
  EXPECT_FALSE(tree->indexOf(DataPath({"Cube"})).isValid());

  // A .kestrix file written by another program.
  const QString file = QStringLiteral(ZR_TEST_DATA_DIR "/kestrix/foreign_layouts.kestrix");
  window.widget.setDataStructure(file, true);
  EXPECT_EQ(window.widget.getKestrixFilePath(), QFileInfo(file).absoluteFilePath());
  EXPECT_TRUE(tree->indexOf(DataPath({"Plain Heights"})).isValid());
  EXPECT_TRUE(options->getDataPaths().empty());
  view->addTabButtonClicked();
  const auto heights = Drag({"Plain Heights"});
  ASSERT_NE(view->selectorAt(1), nullptr);
  ASSERT_EQ(view->selectorAt(1)->multidimButton()->dataStructureModel(), tree);
  ASSERT_TRUE(VXSpreadsheetTypeButton::ValidateDragData({DataPath({"Plain Heights"}), "DataArray"}, tree));
  EXPECT_TRUE(DragEnter(view->selectorAt(1)->multidimButton(), heights.get()));
  ASSERT_TRUE(Drop(view->selectorAt(1)->multidimButton(), heights.get()));
  VXSpreadsheet* sheet = view->spreadsheetAt(1);
  // x runs along the tuples (D0), y along the components (D1).
  EXPECT_EQ(sheet->model()->rowCount(), 2);
  EXPECT_EQ(sheet->model()->columnCount(), 60);
  const auto* array =
      window.widget.dataStructure()->getDataAs<zr::core::DataArray<double>>(DataPath({"Plain Heights"}));
  ASSERT_NE(array, nullptr);
  EXPECT_EQ(sheet->model()->index(1, 7).data().toString(),
            QString::number(array->getDataStoreRef().getValue(7 * 2 + 1), 'g', 6));

  // Other files are left alone.
  window.widget.setDataStructure(QStringLiteral(ZR_TEST_DATA_DIR "/kestrix/make-kestrix-fixtures.py"), true);
  EXPECT_EQ(window.widget.getKestrixFilePath(), QFileInfo(file).absoluteFilePath());
}
