#include "app/ViewerMainWindow.h"
#include "app/ViewerChartsWindow.h"
#include "charts/VXChartingViewWidget.h"
#include "charts/VXChartingWidget.h"

#include "data_views/VXRepresentation.h"
#include "data_views/VXRepresentationPimpl.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "platform/ZRDataStructureModel.h"
#include "platform/ZRDataStructureTreeView.h"
#include "platform/ZRDataStructureWidget.h"
#include "spreadsheets/VXSpreadsheetOptions.h"
#include "spreadsheets/VXSpreadsheetTypeSelector.h"
#include "spreadsheets/VXSpreadsheetViewWidget.h"
#include "spreadsheets/VXSpreadsheetWidget.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXViewGridWidget.h"

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QFile>
#include <QFileInfo>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace
{
const QString k_DataDir = QStringLiteral(ZR_TEST_DATA_DIR);

class ViewerWindowTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    m_Window = std::make_unique<ViewerMainWindow>();
    m_Window->setInteractive(false);
    m_Window->resize(900, 700);
    m_Window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(m_Window.get()));
  }
  void TearDown() override
  {
    m_Window.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  QString output() const { return m_Window->outputPane()->toPlainText(); }

  // The data views with an implementation in the window; only the shown ones when asked.
  int dataViewsIn(VXAbstractViewWidget* view, bool shownOnly = true) const
  {
    int count = 0;
    for (VXBridgeObject* bridge : m_Window->pipeline()->bridges())
    {
      for (VXDataSource* dataSource : bridge->dataSources())
      {
        for (VXRepresentation* representation : dataSource->findChildren<VXRepresentation*>())
        {
          VXRepresentationPimpl* implementation = representation->implementation(view);
          count += implementation != nullptr && (!shownOnly || implementation->isVisible()) ? 1 : 0;
        }
      }
    }
    return count;
  }
  VXAbstractViewWidget* activeView() const { return m_Window->grid()->activeView(); }

  std::unique_ptr<ViewerMainWindow> m_Window;
};
} // namespace

TEST_F(ViewerWindowTest, OpenedFileShowsAsADataViewInTheActiveView)
{
  ASSERT_EQ(m_Window->pipeline()->activeViewWidget(), activeView());
  EXPECT_TRUE(m_Window->openFile(k_DataDir + QStringLiteral("/vtk/unstructured.vtu")));
  EXPECT_TRUE(output().contains(QStringLiteral("Opened 'unstructured.vtu'")));
  EXPECT_EQ(dataViewsIn(activeView()), 1);
  EXPECT_TRUE(m_Window->openFile(k_DataDir + QStringLiteral("/vtk/tool_binary.stl")));
  EXPECT_EQ(dataViewsIn(activeView()), 2);
  EXPECT_EQ(m_Window->pipeline()->bridges().size(), 2);
}

TEST_F(ViewerWindowTest, UnreadableFileIsReportedAndTheWindowGoesOn)
{
  EXPECT_FALSE(m_Window->openFile(k_DataDir + QStringLiteral("/vtk/no_such_file.vtu")));
  EXPECT_TRUE(output().contains(QStringLiteral("/vtk/no_such_file.vtu': no such file.")));
  EXPECT_FALSE(m_Window->openFile(k_DataDir + QStringLiteral("/vtk")));
  EXPECT_TRUE(output().contains(QStringLiteral("/vtk': it is a folder.")));
  QTemporaryDir scratch;
  const QString unknown = scratch.filePath(QStringLiteral("notes.xyz"));
  QFile file(unknown);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("not a dataset\n");
  file.close();
  EXPECT_FALSE(m_Window->openFile(unknown));
  EXPECT_TRUE(output().contains(QStringLiteral("notes.xyz': its format is unknown or the file is damaged.")));
  EXPECT_EQ(dataViewsIn(activeView()), 0);
  EXPECT_TRUE(m_Window->openFile(k_DataDir + QStringLiteral("/vtk/poly.vtp")));
}

TEST_F(ViewerWindowTest, SplitViewGetsHiddenCopiesAndBecomesThePipelinesViewWhenActive)
{
  ASSERT_TRUE(m_Window->openFile(k_DataDir + QStringLiteral("/vtk/poly.vtp")));
  VXAbstractViewWidget* first = activeView();
  m_Window->grid()->addColumn(first);
  ASSERT_EQ(m_Window->grid()->viewCount(), 2);
  VXAbstractViewWidget* second = m_Window->grid()->allViews().at(1);
  EXPECT_EQ(dataViewsIn(second, false), 1);
  EXPECT_EQ(dataViewsIn(second), 0); // a split window starts with its copies hidden
  m_Window->grid()->markWidgetActive(second);
  EXPECT_EQ(m_Window->pipeline()->activeViewWidget(), second);
  // The next file goes to the active view only.
  ASSERT_TRUE(m_Window->openFile(k_DataDir + QStringLiteral("/vtk/vtk_ascii.stl")));
  EXPECT_EQ(dataViewsIn(second), 1);
  EXPECT_EQ(dataViewsIn(first), 1);
  EXPECT_EQ(dataViewsIn(first, false), 1);
}

TEST_F(ViewerWindowTest, DroppedFilesAreImported)
{
  QMimeData mime;
  mime.setUrls({QUrl::fromLocalFile(k_DataDir + QStringLiteral("/vtk/structured.vts")),
                QUrl::fromLocalFile(k_DataDir + QStringLiteral("/images/gradient_100x50.png"))});
  const QPoint centre = m_Window->rect().center();
  QDragEnterEvent enter(centre, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(m_Window.get(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(centre, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(m_Window.get(), &drop);
  EXPECT_TRUE(drop.isAccepted());
  EXPECT_EQ(m_Window->pipeline()->bridges().size(), 2);
  EXPECT_TRUE(output().contains(QStringLiteral("Opened 'structured.vts'")));
  EXPECT_TRUE(output().contains(QStringLiteral("Opened 'gradient_100x50.png'")));

  QMimeData text;
  text.setText(QStringLiteral("not a file"));
  QDragEnterEvent refused(centre, Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
  refused.setAccepted(false);
  QApplication::sendEvent(m_Window.get(), &refused);
  EXPECT_FALSE(refused.isAccepted());
}

TEST_F(ViewerWindowTest, PopupsOfAScriptedRunGoToTheOutputPane)
{
  Q_EMIT m_Window->pipeline()->sendPopupMessage(QStringLiteral("Load File Error"),
                                                QStringLiteral("Broken file"));
  EXPECT_TRUE(output().contains(QStringLiteral("Load File Error: Broken file")));
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(ViewerWindowTest, LayoutSavesAndLoadsBack)
{
  QTemporaryDir dir;
  VXAbstractViewWidget* first = activeView();
  m_Window->grid()->addColumn(first);
  m_Window->grid()->addRow(m_Window->grid()->allViews().at(1));
  ASSERT_EQ(m_Window->grid()->viewCount(), 3);
  const QString path = dir.filePath(QStringLiteral("layout.json"));
  ASSERT_TRUE(m_Window->saveLayout(path));

  m_Window->grid()->reset();
  ASSERT_EQ(m_Window->grid()->viewCount(), 1);
  ASSERT_TRUE(m_Window->loadLayout(path));
  EXPECT_EQ(m_Window->grid()->viewCount(), 3);
  EXPECT_EQ(m_Window->pipeline()->activeViewWidget(), activeView());
  // Files opened after the load still reach the active view.
  ASSERT_TRUE(m_Window->openFile(k_DataDir + QStringLiteral("/vtk/poly.vtp")));
  EXPECT_EQ(dataViewsIn(activeView()), 1);

  const QString broken = dir.filePath(QStringLiteral("broken.json"));
  {
    QFile file(broken);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("{ not json");
  }
  EXPECT_FALSE(m_Window->loadLayout(broken));
  EXPECT_TRUE(output().contains(QStringLiteral("is not a layout file")));
  EXPECT_EQ(m_Window->grid()->viewCount(), 3);
  EXPECT_FALSE(m_Window->loadLayout(dir.filePath(QStringLiteral("missing.json"))));
  EXPECT_FALSE(m_Window->saveLayout(dir.filePath(QStringLiteral("no/such/folder/layout.json"))));
}

TEST_F(ViewerWindowTest, SpreadsheetWindowFollowsOpenedFilesAndTheStateFile)
{
  QTemporaryDir dir;
  VXSpreadsheetWidget* sheets = m_Window->spreadsheetWidget();
  EXPECT_FALSE(m_Window->spreadsheetDock()->isVisible());
  auto* show = m_Window->findChild<QAction*>(QStringLiteral("showSpreadsheetsAction"));
  ASSERT_NE(show, nullptr);
  EXPECT_EQ(show->text(), QStringLiteral("Show Spreadsheets"));
  show->trigger();
  EXPECT_TRUE(m_Window->spreadsheetDock()->isVisible());

  // A file of bare arrays (written by h5py): no data view, but its arrays reach the spreadsheets.
  const QString file = k_DataDir + QStringLiteral("/kestrix/foreign_layouts.kestrix");
  m_Window->openFile(file);
  EXPECT_EQ(sheets->getKestrixFilePath(), QFileInfo(file).absoluteFilePath());
  ZRDataStructureModel* tree =
      sheets->dataStructureWidget()->getDataStructureTreeView()->getDataStructureModel();
  EXPECT_TRUE(tree->indexOf(zr::core::DataPath({"Plain Heights"})).isValid());
  VXSpreadsheetViewWidget* view = sheets->activeView();
  view->selectorAt(0)->onBasicSpreadsheetSelected({zr::core::DataPath({"Plain Heights"})});
  ASSERT_NE(view->optionsAt(0), nullptr);
  ASSERT_EQ(view->optionsAt(0)->getDataPaths().size(), 1U);
  view->splitHorizontally();

  const QString statePath = dir.filePath(QStringLiteral("sheets.ksxstate"));
  ASSERT_TRUE(m_Window->saveStateFile(statePath));
  QFile stateFile(statePath);
  ASSERT_TRUE(stateFile.open(QIODevice::ReadOnly));
  const nlohmann::json saved = nlohmann::json::parse(stateFile.readAll().toStdString());
  ASSERT_TRUE(saved.contains("spreadsheet_state"));
  EXPECT_EQ(saved["spreadsheet_state"]["kestrix_file_path"],
            QFileInfo(file).absoluteFilePath().toStdString());

  // A second viewer loads the state file: the same spreadsheets, saved back the same.
  ViewerMainWindow other;
  other.setInteractive(false);
  other.loadStateFile(statePath);
  EXPECT_FALSE(other.spreadsheetDock()->isHidden());
  ASSERT_EQ(other.spreadsheetWidget()->viewWidgets().size(), 2);
  nlohmann::json again;
  other.spreadsheetWidget()->saveState(again);
  EXPECT_EQ(again, saved["spreadsheet_state"]);

  // A state file without the key leaves the window alone.
  nlohmann::json withoutSheets = saved;
  withoutSheets.erase("spreadsheet_state");
  const QString plainPath = dir.filePath(QStringLiteral("plain.ksxstate"));
  {
    QFile plain(plainPath);
    ASSERT_TRUE(plain.open(QIODevice::WriteOnly));
    plain.write(QByteArray::fromStdString(withoutSheets.dump(2)));
  }
  m_Window->loadStateFile(plainPath);
  EXPECT_EQ(sheets->viewWidgets().size(), 2);
  EXPECT_EQ(sheets->viewWidgets().front()->optionsAt(0)->getDataPaths().size(), 1U);
}

TEST_F(ViewerWindowTest, ChartingSplitViewsGoThroughTheStateFile)
{
  VXChartingWidget* charting = m_Window->chartsWindow()->chartingWidget();
  ASSERT_NE(charting->splitView(charting->activeView(), Qt::Vertical), nullptr);
  QTemporaryDir dir;
  const QString statePath = dir.filePath(QStringLiteral("charts.ksxstate"));
  ASSERT_TRUE(m_Window->saveStateFile(statePath));
  QFile stateFile(statePath);
  ASSERT_TRUE(stateFile.open(QIODevice::ReadOnly));
  const nlohmann::json saved = nlohmann::json::parse(stateFile.readAll().toStdString());
  ASSERT_TRUE(saved.contains("charting_state"));

  ViewerMainWindow other;
  other.setInteractive(false);
  other.loadStateFile(statePath);
  VXChartingWidget* restored = other.chartsWindow()->chartingWidget();
  EXPECT_EQ(restored->views().size(), 2);
  nlohmann::json again;
  restored->saveState(again);
  EXPECT_EQ(again, saved["charting_state"]);
}
