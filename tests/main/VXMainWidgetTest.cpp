// The main widget: state files, presets, stored defaults, drops and the views it joins.
#include "main/VXMainWidget.h"

#include "data_views/VXRepresentation.h"
#include "main/MainWidgetTestSupport.h"
#include "main/VXInfoWidget.h"
#include "pipeline/FileToVXBridge.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "pipeline/VXPipelineModel.h"
#include "platform/QtZRSettings.h"
#include "platform/ZRSettingsKeys.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXGridAxesActor.h"
#include "views/VXViewGridWidget.h"
#include "views/VXViewWidget.h"
#include "views/VXVisualizationWidget.h"

#include <vtkCamera.h>
#include <vtkRenderer.h>

#include <nlohmann/json.hpp>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QProcess>
#include <QSignalSpy>
#include <QSplitter>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <memory>
#include <random>
#include <vector>

namespace
{
const QString k_VtkData = QStringLiteral(ZR_TEST_DATA_DIR "/vtk/");

void settle()
{
  for (int i = 0; i < 5; ++i)
  {
    QCoreApplication::processEvents();
    QTest::qWait(5);
  }
}

QByteArray readFile(const QString& path)
{
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
  QFile file(path);
  return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

QStringList messagesOf(const QSignalSpy& spy)
{
  QStringList messages;
  for (const QList<QVariant>& call : spy)
  {
    messages.append(call.front().toString());
  }
  return messages;
}

void clearStoredSettings()
{
  QtZRSettings settings;
  settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
  settings.clearGroup();
  settings.sync();
}

// The debug lines written while it lives.
class DebugCapture
{
public:
  DebugCapture()
  {
    s_Lines.clear();
    m_Previous = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& message)
                                        { s_Lines.append(message); });
  }
  ~DebugCapture() { qInstallMessageHandler(m_Previous); }
  const QStringList& lines() const { return s_Lines; }

private:
  static inline QStringList s_Lines;
  QtMessageHandler m_Previous = nullptr;
};

// A folder nobody may write into, also not a test that runs as root (there through the immutable flag).
class ReadOnlyFolder
{
public:
  explicit ReadOnlyFolder(const QString& path)
      : m_Path(path)
  {
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::ExeOwner | QFileDevice::ReadGroup |
                                    QFileDevice::ExeGroup | QFileDevice::ReadOther | QFileDevice::ExeOther);
    if (canWrite() && QProcess::execute(QStringLiteral("chattr"), {QStringLiteral("+i"), path}) == 0)
    {
      m_Immutable = true;
    }
  }
  ~ReadOnlyFolder()
  {
    if (m_Immutable)
    {
      QProcess::execute(QStringLiteral("chattr"), {QStringLiteral("-i"), m_Path});
    }
    QFile::setPermissions(m_Path, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
  }
  bool canWrite() const
  {
    QFile probe(QDir(m_Path).filePath(QStringLiteral(".probe")));
    const bool writable = probe.open(QIODevice::WriteOnly);
    if (writable)
    {
      probe.close();
      probe.remove();
    }
    return writable;
  }

private:
  QString m_Path;
  bool m_Immutable = false;
};

class MainWidgetTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    clearStoredSettings();
    ASSERT_TRUE(m_Dir.isValid());
    m_Widget = makeWidget();
  }

  void TearDown() override
  {
    m_Widget.reset();
    clearStoredSettings();
  }

  std::unique_ptr<ScriptedMainWidget> makeWidget()
  {
    auto widget = std::make_unique<ScriptedMainWidget>();
    widget->resize(1000, 600);
    widget->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(widget.get()));
    settle();
    return widget;
  }

  // Copies a fixture into the folder and imports it.
  VXBridgeObject* importCopy(VXMainWidget& widget, const QString& fixture, const QString& folder)
  {
    QDir().mkpath(folder);
    const QString path = QDir(folder).filePath(fixture);
    if (!QFileInfo::exists(path))
    {
      EXPECT_TRUE(QFile::copy(k_VtkData + fixture, path));
    }
    VXBridgeObject* bridge = widget.pipeline()->importFile(path);
    settle();
    return bridge;
  }

  void split(VXMainWidget& widget, int viewIndex, bool horizontally)
  {
    auto* view = qobject_cast<VXViewWidget*>(widget.getAllViewWidgets().at(viewIndex));
    ASSERT_NE(view, nullptr);
    horizontally ? view->splitHorizontally() : view->splitVertically();
    settle();
  }

  // Two files, three views, and a data view shown in a split window.
  void buildScene(VXMainWidget& widget, const QString& folder)
  {
    ASSERT_NE(importCopy(widget, QStringLiteral("image.vti"), folder), nullptr);
    split(widget, 0, true);
    widget.setActiveView(widget.getAllViewWidgets().at(1));
    ASSERT_NE(importCopy(widget, QStringLiteral("unstructured.vtu"), folder), nullptr);
    split(widget, 1, false);
    ASSERT_EQ(widget.getAllViewWidgets().size(), 3);
    ASSERT_EQ(widget.pipelineModel()->rowCount(), 2);
  }

  QModelIndex dataSourceIndex(VXMainWidget& widget, int bridgeRow) const
  {
    const QModelIndex bridge = widget.pipelineModel()->index(bridgeRow, 0);
    return widget.pipelineModel()->index(0, 0, bridge);
  }

  QTemporaryDir m_Dir;
  std::unique_ptr<ScriptedMainWidget> m_Widget;
};
} // namespace

TEST_F(MainWidgetTest, ConstructionJoinsGridPipelineAndInfoPanel)
{
  EXPECT_EQ(m_Widget->windowTitle(), QStringLiteral("Visualization Window"));
  ASSERT_EQ(m_Widget->getAllViewWidgets().size(), 1);
  VXAbstractViewWidget* view = m_Widget->getAllViewWidgets().front();
  EXPECT_EQ(m_Widget->getActiveViewWidget(), view);
  EXPECT_EQ(m_Widget->pipeline()->activeViewWidget(), view);
  EXPECT_TRUE(view->isActive());
  EXPECT_EQ(m_Widget->getInfoWidget()->pipelineModel(), m_Widget->pipelineModel());
  // The splitter gives three quarters to the views.
  const QList<int> sizes = m_Widget->splitter()->sizes();
  ASSERT_EQ(sizes.size(), 2);
  EXPECT_NEAR(sizes[0], 3 * sizes[1], 8);
}

TEST_F(MainWidgetTest, ActiveViewBookkeepingAndOnlyTheActiveViewSpeaks)
{
  qRegisterMetaType<VXAbstractViewWidget*>();
  QSignalSpy changed(m_Widget.get(), &VXMainWidget::changedActiveView);
  QSignalSpy output(m_Widget.get(), &VXMainWidget::printOutput);
  split(*m_Widget, 0, true);
  const QList<VXAbstractViewWidget*> views = m_Widget->getAllViewWidgets();
  ASSERT_EQ(views.size(), 2);
  m_Widget->setActiveView(views[0]);
  changed.clear();
  m_Widget->setActiveView(views[0]); // no-op
  EXPECT_EQ(changed.count(), 0);
  m_Widget->setActiveView(views[1]);
  ASSERT_EQ(changed.count(), 1);
  EXPECT_EQ(changed.front().front().value<VXAbstractViewWidget*>(), views[1]);
  EXPECT_FALSE(views[0]->isActive());
  EXPECT_TRUE(views[1]->isActive());
  EXPECT_EQ(m_Widget->pipeline()->activeViewWidget(), views[1]);
  EXPECT_EQ(m_Widget->getInfoWidget()->activeViewWidget(), views[1]);

  output.clear();
  Q_EMIT views[0]->getVisualizationWidget()->printOutput(QStringLiteral("from the inactive view"));
  Q_EMIT views[1]->getVisualizationWidget()->printOutput(QStringLiteral("from the active view"));
  EXPECT_EQ(messagesOf(output), QStringList({QStringLiteral("from the active view")}));
}

TEST_F(MainWidgetTest, ReloadReachesEveryViewSoGridAxesFollowTheNewBounds)
{
  const QString path = m_Dir.filePath(QStringLiteral("data.vtk"));
  ASSERT_TRUE(QFile::copy(k_VtkData + QStringLiteral("legacy_image.vtk"), path));
  auto* bridge = qobject_cast<FileToVXBridge*>(m_Widget->pipeline()->importFile(path));
  ASSERT_NE(bridge, nullptr);
  ASSERT_EQ(bridge->dataSources().size(), 1);
  VXDataSource* source = bridge->dataSources().front();
  if (source->findChildren<VXRepresentation*>().isEmpty())
  {
    ASSERT_TRUE(m_Widget->pipeline()->addRepresentation(source, VXRepresentation::Outline));
  }
  split(*m_Widget, 0, true);
  const QList<VXAbstractViewWidget*> views = m_Widget->getAllViewWidgets();
  ASSERT_EQ(views.size(), 2);
  // Shown in both windows.
  for (VXAbstractViewWidget* view : views)
  {
    m_Widget->setActiveView(view);
    source->findChildren<VXRepresentation*>().front()->setVisibility(true);
  }
  settle();

  // The image becomes the unstructured grid of 0..1 x 0..1 x 0..2.
  ASSERT_TRUE(QFile::remove(path));
  ASSERT_TRUE(QFile::copy(k_VtkData + QStringLiteral("legacy_ascii.vtk"), path));
  bridge->reload();
  settle();
  for (VXAbstractViewWidget* view : views)
  {
    VXGridAxesActor* axes = view->getVisualizationWidget()->getGridAxesActor();
    ASSERT_NE(axes, nullptr);
    const double* bounds = axes->GetGridBounds();
    EXPECT_EQ(std::vector<double>(bounds, bounds + 6), std::vector<double>({0, 1, 0, 1, 0, 2}))
        << "split view " << view->getSplitId();
  }
}

TEST_F(MainWidgetTest, SaveLoadSaveIsByteIdentical)
{
  buildScene(*m_Widget, m_Dir.filePath(QStringLiteral("data")));
  const QString first = m_Dir.filePath(QStringLiteral("first.ksxstate"));
  ASSERT_TRUE(m_Widget->saveStateToFile(first));
  const nlohmann::json saved = nlohmann::json::parse(readFile(first).toStdString());
  ASSERT_TRUE(saved.contains("split_view_state"));
  ASSERT_EQ(saved.at("tree_view_state").size(), 2u);
  EXPECT_EQ(readFile(first), QByteArray::fromStdString(saved.dump(2))); // indent of 2

  auto fresh = makeWidget();
  QSignalSpy output(fresh.get(), &VXMainWidget::printOutput);
  fresh->loadState(first);
  settle();
  EXPECT_TRUE(fresh->m_Questions.isEmpty()) << "an empty scene needs no question";
  EXPECT_EQ(fresh->getAllViewWidgets().size(), 3);
  EXPECT_EQ(fresh->pipelineModel()->rowCount(), 2);
  const QString second = m_Dir.filePath(QStringLiteral("second.ksxstate"));
  ASSERT_TRUE(fresh->saveStateToFile(second));
  EXPECT_TRUE(readFile(second) == readFile(first))
      << nlohmann::json::diff(nlohmann::json::parse(readFile(first).toStdString()),
                              nlohmann::json::parse(readFile(second).toStdString()))
             .dump(2)
      << messagesOf(output).join('\n').toStdString();
}

TEST_F(MainWidgetTest, HostStateSectionsTravelInTheSameFileAndOldFilesLeaveThemAlone)
{
  buildScene(*m_Widget, m_Dir.filePath(QStringLiteral("data")));
  int tables = 3;
  m_Widget->addStateSection(
      QStringLiteral("spreadsheet_state"), [&tables](nlohmann::json& out) { out["tables"] = tables; },
      [&tables](const nlohmann::json& in) { tables = in.at("tables").get<int>(); });
  const QString path = m_Dir.filePath(QStringLiteral("with-tables.ksxstate"));
  ASSERT_TRUE(m_Widget->saveStateToFile(path));
  const nlohmann::json saved = nlohmann::json::parse(readFile(path).toStdString());
  EXPECT_EQ(saved.at("spreadsheet_state").at("tables"), 3);
  // A window with nothing to keep writes no key.
  m_Widget->addStateSection(
      QStringLiteral("charting_state"), [](nlohmann::json&) {}, [](const nlohmann::json&) { FAIL(); });
  nlohmann::json withEmpty;
  m_Widget->saveState(withEmpty);
  EXPECT_FALSE(withEmpty.contains("charting_state"));

  tables = 0;
  auto fresh = makeWidget();
  int loaded = -1;
  fresh->addStateSection(
      QStringLiteral("spreadsheet_state"), [](nlohmann::json&) {},
      [&loaded](const nlohmann::json& in) { loaded = in.at("tables").get<int>(); });
  fresh->loadState(path);
  settle();
  EXPECT_EQ(loaded, 3);

  // A file written before the section existed keeps the host's window as it is.
  nlohmann::json older = saved;
  older.erase("spreadsheet_state");
  loaded = -1;
  auto third = makeWidget();
  third->addStateSection(
      QStringLiteral("spreadsheet_state"), [](nlohmann::json&) {},
      [&loaded](const nlohmann::json& in) { loaded = in.at("tables").get<int>(); });
  third->loadState(older);
  settle();
  EXPECT_EQ(loaded, -1);
  EXPECT_EQ(third->pipelineModel()->rowCount(), 2);
}

TEST_F(MainWidgetTest, LoadIntoANonEmptySceneAsksFirstAndNoMeansNothingChanges)
{
  buildScene(*m_Widget, m_Dir.filePath(QStringLiteral("data")));
  const QString path = m_Dir.filePath(QStringLiteral("scene.ksxstate"));
  ASSERT_TRUE(m_Widget->saveStateToFile(path));
  m_Widget->m_Answer = false;
  m_Widget->loadState(path);
  EXPECT_EQ(m_Widget->m_Questions, QStringList({QStringLiteral("Possible Loss of Data")}));
  EXPECT_EQ(m_Widget->getAllViewWidgets().size(), 3);
  EXPECT_EQ(m_Widget->pipelineModel()->rowCount(), 2);
}

TEST_F(MainWidgetTest, MissingTreeViewStateGivesTheMessageAndChangesNothing)
{
  split(*m_Widget, 0, true);
  ASSERT_NE(importCopy(*m_Widget, QStringLiteral("image.vti"), m_Dir.path()), nullptr);
  nlohmann::json state;
  m_Widget->saveState(state);
  state.erase("tree_view_state");
  QSignalSpy output(m_Widget.get(), &VXMainWidget::printOutput);
  m_Widget->loadState(state);
  EXPECT_EQ(messagesOf(output),
            QStringList({QStringLiteral(
                "Error reading visualization state from state file; missing tree_view_state key")}));
  EXPECT_EQ(m_Widget->getAllViewWidgets().size(), 2);
  EXPECT_EQ(m_Widget->pipelineModel()->rowCount(), 1);

  // The same through a file.
  state.erase("split_view_state");
  const QString path = m_Dir.filePath(QStringLiteral("nothing.ksxstate"));
  ASSERT_TRUE(writeFile(path, QByteArray::fromStdString(state.dump(2))));
  output.clear();
  m_Widget->loadState(path);
  EXPECT_EQ(messagesOf(output),
            QStringList({QStringLiteral(
                "Error reading visualization state from state file; missing split_view_state key")}));
  EXPECT_EQ(m_Widget->getAllViewWidgets().size(), 2);
}

TEST_F(MainWidgetTest, UnreadableStateFilesGiveTheOpeningMessage)
{
  QSignalSpy output(m_Widget.get(), &VXMainWidget::printOutput);
  const QString missing = m_Dir.filePath(QStringLiteral("missing.ksxstate"));
  m_Widget->loadState(missing);
  ASSERT_FALSE(output.isEmpty());
  EXPECT_EQ(output.front().front().toString(),
            QStringLiteral("Error opening visualization state from state file %1").arg(missing));

  const QString broken = m_Dir.filePath(QStringLiteral("broken.ksxstate"));
  ASSERT_TRUE(writeFile(broken, "{\"split_view_state\": {"));
  output.clear();
  m_Widget->loadState(broken);
  ASSERT_FALSE(output.isEmpty());
  EXPECT_EQ(output.front().front().toString(),
            QStringLiteral("Error opening visualization state from state file %1").arg(broken));
  EXPECT_EQ(m_Widget->getAllViewWidgets().size(), 1);
}

TEST_F(MainWidgetTest, SaveIntoAReadOnlyFolderFailsAndKeepsTheOldFile)
{
  const QString folder = m_Dir.filePath(QStringLiteral("locked"));
  ASSERT_TRUE(QDir().mkpath(folder));
  const QString path = QDir(folder).filePath(QStringLiteral("state.ksxstate"));
  ASSERT_TRUE(writeFile(path, "old state"));
  ASSERT_NE(importCopy(*m_Widget, QStringLiteral("image.vti"), m_Dir.path()), nullptr);
  QSignalSpy output(m_Widget.get(), &VXMainWidget::printOutput);
  {
    ReadOnlyFolder locked(folder);
    if (locked.canWrite())
    {
      GTEST_SKIP() << "the folder cannot be made read-only here";
    }
    m_Widget->m_FileToChoose = path;
    m_Widget->saveState(); // through the dialog's path
    EXPECT_EQ(QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList({QStringLiteral("state.ksxstate")}))
        << "no partial file";
  }
  EXPECT_EQ(messagesOf(output), QStringList({QStringLiteral("Failed to open state file '%1'").arg(path)}));
  EXPECT_EQ(readFile(path), QByteArray("old state"));
}

TEST_F(MainWidgetTest, StateMovedTogetherWithItsDataLoads)
{
  const QString original = m_Dir.filePath(QStringLiteral("original"));
  buildScene(*m_Widget, QDir(original).filePath(QStringLiteral("data")));
  const QString statePath = QDir(original).filePath(QStringLiteral("scene.ksxstate"));
  ASSERT_TRUE(m_Widget->saveStateToFile(statePath));
  const nlohmann::json saved = nlohmann::json::parse(readFile(statePath).toStdString());
  EXPECT_EQ(saved["tree_view_state"][0]["item_data"]["bridge_object_file_relative_path"], "data/image.vti");
  m_Widget.reset();

  // Copy state and data elsewhere, then remove the original.
  QTemporaryDir elsewhere;
  ASSERT_TRUE(QDir().mkpath(elsewhere.filePath(QStringLiteral("data"))));
  for (const QString& name : {QStringLiteral("data/image.vti"), QStringLiteral("data/unstructured.vtu"),
                              QStringLiteral("scene.ksxstate")})
  {
    ASSERT_TRUE(QFile::copy(QDir(original).filePath(name), elsewhere.filePath(name)));
  }
  ASSERT_TRUE(QDir(original).removeRecursively());

  auto moved = makeWidget();
  QSignalSpy output(moved.get(), &VXMainWidget::printOutput);
  moved->loadState(elsewhere.filePath(QStringLiteral("scene.ksxstate")));
  settle();
  EXPECT_TRUE(moved->m_Popups.isEmpty()) << moved->m_Popups.join('\n').toStdString();
  ASSERT_EQ(moved->pipelineModel()->rowCount(), 2) << messagesOf(output).join('\n').toStdString();
  const QList<VXBridgeObject*> bridges = moved->pipeline()->bridges();
  ASSERT_EQ(bridges.size(), 2);
  EXPECT_EQ(bridges[0]->filePath(), elsewhere.filePath(QStringLiteral("data/image.vti")));
  ASSERT_EQ(bridges[0]->dataSources().size(), 1);
  ASSERT_NE(bridges[0]->dataSources().front()->getOutput(), nullptr);
  EXPECT_EQ(bridges[0]->dataSources().front()->getOutput()->GetNumberOfPoints(), 24);
  EXPECT_EQ(moved->getAllViewWidgets().size(), 3);
}

TEST_F(MainWidgetTest, PresetRoundTripThroughAFile)
{
  ASSERT_NE(importCopy(*m_Widget, QStringLiteral("image.vti"), m_Dir.path()), nullptr);
  const QModelIndex source = dataSourceIndex(*m_Widget, 0);
  ASSERT_TRUE(source.isValid());
  const int viewsUnderSource = m_Widget->pipelineModel()->rowCount(source);
  ASSERT_GE(viewsUnderSource, 1) << "the file got no default data view";

  QSignalSpy added(m_Widget.get(), &VXMainWidget::presetAdded);
  QSignalSpy output(m_Widget.get(), &VXMainWidget::printOutput);
  m_Widget->createPreset(source, QStringLiteral("Outlined"), false);
  ASSERT_EQ(added.count(), 1);
  EXPECT_EQ(added.front().front().toString(), QStringLiteral("Outlined"));
  EXPECT_EQ(messagesOf(output),
            QStringList({QStringLiteral("Successfully saved preset Outlined to the visualization presets")}));
  const nlohmann::json preset = m_Widget->getPresetJson(QStringLiteral("Outlined"));
  ASSERT_TRUE(preset.is_object());
  EXPECT_FALSE(preset.contains("split_view_state"));
  ASSERT_EQ(preset.at("tree_view_state").size(), static_cast<std::size_t>(viewsUnderSource));

  const QString file = m_Dir.filePath(QStringLiteral("presets.json"));
  output.clear();
  // A name without a preset is reported and left out of the file.
  m_Widget->exportPresets(file, {QStringLiteral("Outlined"), QStringLiteral("Nope")});
  EXPECT_EQ(
      messagesOf(output),
      QStringList({QStringLiteral(
                       "Error reading visualization preset Nope. Expected json formatted string not found."),
                   QStringLiteral("Presets successfully written to file at '%1'").arg(file)}));
  const nlohmann::json exported = nlohmann::json::parse(readFile(file).toStdString());
  EXPECT_EQ(exported, nlohmann::json({{"Outlined", preset}}));

  clearStoredSettings();
  output.clear();
  m_Widget->importPresets(file);
  EXPECT_EQ(messagesOf(output),
            QStringList({QStringLiteral("Successfully imported preset(s) from file %1").arg(file)}));
  EXPECT_EQ(m_Widget->getPresetJson(QStringLiteral("Outlined")), preset);

  // Applied to a second file's source: no question without a split state, and the views come.
  ASSERT_NE(importCopy(*m_Widget, QStringLiteral("unstructured.vtu"), m_Dir.path()), nullptr);
  const QModelIndex target = dataSourceIndex(*m_Widget, 1);
  const int before = m_Widget->pipelineModel()->rowCount(target);
  m_Widget->applyPreset(target, QStringLiteral("Outlined"));
  settle();
  EXPECT_TRUE(m_Widget->m_Questions.isEmpty());
  EXPECT_EQ(m_Widget->pipelineModel()->rowCount(target), before + viewsUnderSource);
}

TEST_F(MainWidgetTest, PresetWithTheSplitStateAsksBeforeClearingTheViews)
{
  ASSERT_NE(importCopy(*m_Widget, QStringLiteral("image.vti"), m_Dir.path()), nullptr);
  split(*m_Widget, 0, true);
  m_Widget->createPreset(dataSourceIndex(*m_Widget, 0), QStringLiteral("TwoViews"), true);
  ASSERT_TRUE(m_Widget->getPresetJson(QStringLiteral("TwoViews")).contains("split_view_state"));
  const int before = m_Widget->pipelineModel()->rowCount(dataSourceIndex(*m_Widget, 0));
  m_Widget->m_Answer = false;
  m_Widget->applyPreset(dataSourceIndex(*m_Widget, 0), QStringLiteral("TwoViews"));
  EXPECT_EQ(m_Widget->m_Questions, QStringList({QStringLiteral("Loading Preset Possible Loss of Data")}));
  EXPECT_EQ(m_Widget->pipelineModel()->rowCount(dataSourceIndex(*m_Widget, 0)), before);
  EXPECT_EQ(m_Widget->getAllViewWidgets().size(), 2);
}

TEST_F(MainWidgetTest, PresetMessagesForMissingAndDamagedEntries)
{
  QSignalSpy output(m_Widget.get(), &VXMainWidget::printOutput);
  EXPECT_TRUE(m_Widget->getPresetJson(QStringLiteral("None")).is_null());
  EXPECT_EQ(
      messagesOf(output),
      QStringList({QStringLiteral("Error reading visualization presets; missing VisualizationPresets key")}));

  {
    QtZRSettings settings;
    settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
    settings.setValue(ZR::SettingsKeys::k_VisualizationPresets,
                      QStringLiteral(R"({"Number": 5, "Empty": "", "Broken": "{\"tree_view_state\": ["})"));
  }
  output.clear();
  EXPECT_TRUE(m_Widget->getPresetJson(QStringLiteral("Number")).is_null());
  EXPECT_TRUE(m_Widget->getPresetJson(QStringLiteral("Empty")).is_null());
  EXPECT_TRUE(m_Widget->getPresetJson(QStringLiteral("Broken")).is_null());
  EXPECT_EQ(
      messagesOf(output),
      QStringList(
          {QStringLiteral(
               "Error reading visualization preset Number. Expected json formatted string not found."),
           QStringLiteral("Error reading visualization preset Empty. No json formatted strings found."),
           QStringLiteral("Error reading visualization preset Broken. No json formatted strings found.")}));

  output.clear();
  m_Widget->createPreset(QModelIndex(), QStringLiteral("NoView"), false);
  m_Widget->setActiveView(nullptr);
  m_Widget->createPreset(QModelIndex(), QStringLiteral("NoView"), false);
  EXPECT_EQ(messagesOf(output).last(),
            QStringLiteral("Failed to create visualization preset because there is no active render window"));
}

TEST_F(MainWidgetTest, ImportOfAMalformedPresetFileKeepsTheStoredPresets)
{
  ASSERT_NE(importCopy(*m_Widget, QStringLiteral("image.vti"), m_Dir.path()), nullptr);
  m_Widget->createPreset(dataSourceIndex(*m_Widget, 0), QStringLiteral("Kept"), false);
  const nlohmann::json kept = m_Widget->getPresetJson(QStringLiteral("Kept"));

  QSignalSpy output(m_Widget.get(), &VXMainWidget::printOutput);
  const QString file = m_Dir.filePath(QStringLiteral("damaged.json"));
  ASSERT_TRUE(writeFile(file, "{\"Broken\": {\"tree_view_state\": [ }"));
  m_Widget->importPresets(file);
  ASSERT_EQ(output.count(), 1);
  const QString message = output.front().front().toString();
  EXPECT_TRUE(
      message.startsWith(QStringLiteral("Error importing presets from '%1': malformed JSON (").arg(file)))
      << message.toStdString();
  EXPECT_TRUE(message.endsWith(QStringLiteral("). The file may be corrupt or not a valid preset file.")));
  EXPECT_EQ(m_Widget->getPresetJson(QStringLiteral("Kept")), kept);

  output.clear();
  const QString missing = m_Dir.filePath(QStringLiteral("missing.json"));
  m_Widget->importPresets(missing);
  EXPECT_EQ(messagesOf(output),
            QStringList({QStringLiteral("Error opening visualization preset file %1").arg(missing)}));
}

TEST_F(MainWidgetTest, StoredLayoutRoundTripAndResetToDefault)
{
  split(*m_Widget, 0, false);
  m_Widget->m_DefaultsChoice = VXMainWidget::DefaultsChoice::Save;
  m_Widget->writeSettings();

  auto restored = makeWidget();
  restored->readSettings();
  settle();
  EXPECT_EQ(restored->getAllViewWidgets().size(), 2);

  restored->m_DefaultsChoice = VXMainWidget::DefaultsChoice::Reset;
  restored->writeSettings();
  QtZRSettings settings;
  settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
  settings.beginGroup(ZR::SettingsKeys::k_RenderWindowSettings);
  EXPECT_FALSE(settings.contains(ZR::SettingsKeys::k_SplitViewState));
  EXPECT_FALSE(settings.contains(ZR::SettingsKeys::k_InfoSplitterState));
}

TEST_F(MainWidgetTest, CorruptStoredLayoutNeverStopsTheStart)
{
  for (const QString& stored : {QStringLiteral("{\"grid_version\": 1, \"rows\": "),
                                QStringLiteral(R"({"grid_version": "one", "rows": "two", "cells": 3})"),
                                QStringLiteral(R"({"children": "not a tree", "split_view_index": []})")})
  {
    {
      QtZRSettings settings;
      settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
      settings.beginGroup(ZR::SettingsKeys::k_RenderWindowSettings);
      settings.setValue(ZR::SettingsKeys::k_SplitViewState, stored);
      settings.sync();
    }
    auto widget = makeWidget();
    DebugCapture debug;
    widget->readSettings();
    settle();
    EXPECT_GE(widget->getAllViewWidgets().size(), 1) << stored.toStdString();
    ASSERT_NE(widget->getActiveViewWidget(), nullptr);
    if (stored.startsWith(QStringLiteral("{\"grid_version\": 1, \"rows\": ")))
    {
      ASSERT_FALSE(debug.lines().isEmpty());
      EXPECT_TRUE(debug.lines().front().startsWith(VXMainWidget::k_CorruptSettingsMessage));
      EXPECT_EQ(widget->getAllViewWidgets().size(), 1);
    }
    // The widget still works: a split and a save.
    split(*widget, 0, true);
    nlohmann::json state;
    widget->saveState(state);
    EXPECT_TRUE(state.contains("split_view_state"));
  }
}

TEST_F(MainWidgetTest, DroppedStateFileIsRequestedAndOtherFilesImported)
{
  const QString state = m_Dir.filePath(QStringLiteral("dropped.ksxstate"));
  ASSERT_TRUE(writeFile(state, "{}"));
  const QString data = m_Dir.filePath(QStringLiteral("image.vti"));
  ASSERT_TRUE(QFile::copy(k_VtkData + QStringLiteral("image.vti"), data));
  QSignalSpy requested(m_Widget.get(), &VXMainWidget::loadStateRequested);
  QSignalSpy output(m_Widget.get(), &VXMainWidget::printOutput);

  QMimeData mime;
  mime.setUrls({QUrl::fromLocalFile(state), QUrl::fromLocalFile(data)});
  QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(m_Widget.get(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(m_Widget.get(), &drop);
  settle();

  ASSERT_EQ(requested.count(), 1);
  EXPECT_EQ(requested.front().front().toString(), state);
  EXPECT_TRUE(output.isEmpty()) << "the state file was loaded directly";
  ASSERT_EQ(m_Widget->pipeline()->bridges().size(), 1);
  EXPECT_EQ(m_Widget->pipeline()->bridges().front()->filePath(), data);

  QMimeData text;
  text.setText(QStringLiteral("no files"));
  QDragEnterEvent refused(QPoint(10, 10), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
  refused.ignore();
  QCoreApplication::sendEvent(m_Widget.get(), &refused);
  EXPECT_FALSE(refused.isAccepted());
}

TEST_F(MainWidgetTest, LinkAllViewsNeedsMoreThanOneView)
{
  m_Widget->linkAllViews();
  EXPECT_FALSE(m_Widget->getAllViewWidgets().front()->getVisualizationWidget()->isLinked());

  split(*m_Widget, 0, true);
  split(*m_Widget, 1, false);
  const QList<VXAbstractViewWidget*> views = m_Widget->getAllViewWidgets();
  m_Widget->setActiveView(views[1]);
  m_Widget->linkAllViews();
  for (VXAbstractViewWidget* view : views)
  {
    EXPECT_TRUE(view->getVisualizationWidget()->isLinked());
  }
  m_Widget->unlinkAllViews();
  for (VXAbstractViewWidget* view : views)
  {
    EXPECT_FALSE(view->getVisualizationWidget()->isLinked());
  }
}

namespace
{
// A left drag across a render window, as the mouse gives it: press, a few moves with the button held,
// release.
void dragAcross(QWidget* window, const QPoint& from, const QPoint& to)
{
  auto send = [window](QEvent::Type type, const QPoint& at, Qt::MouseButton button, Qt::MouseButtons held)
  {
    QMouseEvent event(type, at, window->mapToGlobal(at), button, held, Qt::NoModifier);
    QApplication::sendEvent(window, &event);
  };
  send(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
  const int steps = 8;
  for (int i = 1; i <= steps; ++i)
  {
    send(QEvent::MouseMove, from + (to - from) * i / steps, Qt::NoButton, Qt::LeftButton);
  }
  send(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
  settle();
}

std::array<double, 3> viewDirectionOf(VXAbstractViewWidget* view)
{
  std::array<double, 3> direction{};
  view->getVisualizationWidget()->getRenderer()->GetActiveCamera()->GetDirectionOfProjection(
      direction.data());
  return direction;
}

double angleBetween(const std::array<double, 3>& a, const std::array<double, 3>& b)
{
  const double dot = a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
  return std::acos(std::clamp(dot, -1.0, 1.0));
}

QAction* menuAction(QMenu* menu, const QString& text)
{
  for (QAction* action : menu->actions())
  {
    if (action->text() == text)
    {
      return action;
    }
  }
  return nullptr;
}
} // namespace

TEST_F(MainWidgetTest, LinkAllCamerasFromTheMenuMakesEveryViewFollowARotation)
{
  ASSERT_NE(importCopy(*m_Widget, QStringLiteral("image.vti"), m_Dir.path()), nullptr);
  split(*m_Widget, 0, true);
  split(*m_Widget, 1, false);
  const QList<VXAbstractViewWidget*> views = m_Widget->getAllViewWidgets();
  ASSERT_EQ(views.size(), 3);
  VXVisualizationWidget* rotated = views[2]->getVisualizationWidget();

  std::unique_ptr<QMenu> menu(rotated->getContextMenu());
  EXPECT_EQ(menuAction(menu.get(), QStringLiteral("Unlink All Cameras")), nullptr);
  QAction* linkAll = menuAction(menu.get(), QStringLiteral("Link All Cameras"));
  ASSERT_NE(linkAll, nullptr);
  linkAll->trigger();
  settle();
  menu.reset(views[0]->getVisualizationWidget()->getContextMenu());
  EXPECT_NE(menuAction(menu.get(), QStringLiteral("Unlink Cameras")), nullptr);
  EXPECT_NE(menuAction(menu.get(), QStringLiteral("Unlink All Cameras")), nullptr);

  const std::array<double, 3> before = viewDirectionOf(views[2]);
  const QPoint centre(rotated->width() / 2, rotated->height() / 2);
  dragAcross(rotated, centre - QPoint(40, 0), centre + QPoint(40, 0));
  const std::array<double, 3> after = viewDirectionOf(views[2]);
  ASSERT_GT(angleBetween(before, after), 0.1) << "the drag turns the camera";
  for (VXAbstractViewWidget* view : views)
  {
    EXPECT_LT(angleBetween(viewDirectionOf(view), after), 1e-9) << "every linked view looks the same way";
  }

  menu.reset(rotated->getContextMenu());
  QAction* unlinkAll = menuAction(menu.get(), QStringLiteral("Unlink All Cameras"));
  ASSERT_NE(unlinkAll, nullptr);
  unlinkAll->trigger();
  settle();
  const std::array<double, 3> firstBefore = viewDirectionOf(views[0]);
  const std::array<double, 3> secondBefore = viewDirectionOf(views[1]);
  const std::array<double, 3> thirdBefore = viewDirectionOf(views[2]);
  dragAcross(rotated, centre - QPoint(0, 40), centre + QPoint(0, 40));
  EXPECT_GT(angleBetween(viewDirectionOf(views[2]), thirdBefore), 0.1);
  EXPECT_LT(angleBetween(viewDirectionOf(views[0]), firstBefore), 1e-9) << "unlinked views stay put";
  EXPECT_LT(angleBetween(viewDirectionOf(views[1]), secondBefore), 1e-9);
  menu.reset(rotated->getContextMenu());
  EXPECT_EQ(menuAction(menu.get(), QStringLiteral("Unlink All Cameras")), nullptr);
}

TEST_F(MainWidgetTest, RequestsOfANewViewsWindowReachTheMainWidget)
{
  split(*m_Widget, 0, true);
  const QList<VXAbstractViewWidget*> views = m_Widget->getAllViewWidgets();
  ASSERT_EQ(views.size(), 2);
  VXVisualizationWidget* made = views[1]->getVisualizationWidget();
  Q_EMIT made->requestLinkAllCameras();
  EXPECT_TRUE(views[0]->getVisualizationWidget()->isLinked());
  EXPECT_TRUE(made->isLinked());
  Q_EMIT made->requestUnlinkAllCameras();
  EXPECT_FALSE(views[0]->getVisualizationWidget()->isLinked());

  QApplication::clipboard()->clear();
  Q_EMIT made->requestCopyAllViewsToClipboard();
  const QImage copied = QApplication::clipboard()->image();
  QRect bounds;
  for (VXAbstractViewWidget* view : views)
  {
    QWidget* window = view->getVisualizationWidget();
    bounds = bounds.united(QRect(window->mapTo(m_Widget.get(), QPoint(0, 0)), window->size()));
  }
  EXPECT_EQ(copied.size(), bounds.size());
}

TEST_F(MainWidgetTest, LinkingDataViewsBlursEveryViewAndRestoresThem)
{
  split(*m_Widget, 0, true);
  m_Widget->onLinkingDataViews(true);
  for (VXAbstractViewWidget* view : m_Widget->getAllViewWidgets())
  {
    auto* viewWidget = qobject_cast<VXViewWidget*>(view);
    ASSERT_NE(viewWidget, nullptr);
    EXPECT_TRUE(viewWidget->overlayHintLabel()->isVisible());
  }
  m_Widget->onLinkingDataViews(false);
  for (VXAbstractViewWidget* view : m_Widget->getAllViewWidgets())
  {
    EXPECT_FALSE(qobject_cast<VXViewWidget*>(view)->overlayHintLabel()->isVisible());
  }
}

TEST_F(MainWidgetTest, AllViewsImageHoldsEachViewAtItsPlace)
{
  split(*m_Widget, 0, true);
  settle();
  const QList<VXAbstractViewWidget*> views = m_Widget->getAllViewWidgets();
  QRect bounds;
  for (VXAbstractViewWidget* view : views)
  {
    QWidget* window = view->getVisualizationWidget();
    bounds = bounds.united(QRect(window->mapTo(m_Widget.get(), QPoint(0, 0)), window->size()));
  }
  const QImage image = m_Widget->grabAllViews(false, QColor(Qt::red));
  EXPECT_EQ(image.size(), bounds.size());
  // The gap between the two windows keeps the chosen colour.
  QWidget* left = views[0]->getVisualizationWidget();
  const QPoint gap =
      left->mapTo(m_Widget.get(), QPoint(left->width() + 1, left->height() / 2)) - bounds.topLeft();
  EXPECT_EQ(QColor(image.pixel(gap)), QColor(Qt::red));

  const QString path = m_Dir.filePath(QStringLiteral("all.png"));
  m_Widget->m_FileToChoose = path;
  m_Widget->saveAllViewsScreenshot();
  QImage saved(path);
  EXPECT_EQ(saved.size(), bounds.size());
}

TEST_F(MainWidgetTest, MutatedStateFilesGiveMessagesAndNeverCrash)
{
  buildScene(*m_Widget, m_Dir.filePath(QStringLiteral("data")));
  const QString good = m_Dir.filePath(QStringLiteral("good.ksxstate"));
  ASSERT_TRUE(m_Widget->saveStateToFile(good));
  const QByteArray goodBytes = readFile(good);
  const nlohmann::json goodJson = nlohmann::json::parse(goodBytes.toStdString());
  m_Widget.reset();

  auto widget = makeWidget();
  QSignalSpy output(widget.get(), &VXMainWidget::printOutput);
  std::mt19937 random(20261123u);
  // Values that no reader converts to the type of the value they replace.
  const std::vector<nlohmann::json> notNumbers = {"x", nlohmann::json::array(), nlohmann::json::object(),
                                                  nullptr};
  const std::vector<nlohmann::json> notStrings = {7, nlohmann::json::array(), nlohmann::json::object(),
                                                  nullptr};
  const std::vector<nlohmann::json> notBooleans = {"x", 2, nlohmann::json::array(), nullptr};
  int reported = 0;
  const QString mutated = m_Dir.filePath(QStringLiteral("mutated.ksxstate"));
  for (int round = 0; round < 40; ++round)
  {
    QByteArray bytes;
    const bool truncate = round % 4 == 0;
    if (truncate)
    {
      // Cut the file short: it no longer parses.
      bytes = goodBytes.left(static_cast<int>(random() % static_cast<unsigned>(goodBytes.size() - 1)));
    }
    else
    {
      // Put a value of another type at a random place of the record.
      nlohmann::json state = goodJson;
      const nlohmann::json flat = state.flatten();
      auto it = flat.begin();
      std::advance(it, static_cast<long>(random() % flat.size()));
      nlohmann::json::json_pointer pointer(it.key());
      const nlohmann::json& original = it.value();
      const std::vector<nlohmann::json>& choices =
          original.is_string() ? notStrings : (original.is_boolean() ? notBooleans : notNumbers);
      state[pointer] = choices[random() % choices.size()];
      bytes = QByteArray::fromStdString(state.dump(2));
    }
    ASSERT_TRUE(writeFile(mutated, bytes));
    output.clear();
    widget->loadState(mutated);
    settle();
    if (truncate)
    {
      ASSERT_FALSE(output.isEmpty()) << "round " << round;
      EXPECT_EQ(output.front().front().toString(),
                QStringLiteral("Error opening visualization state from state file %1").arg(mutated));
    }
    reported += output.isEmpty() ? 0 : 1;
    // Whatever came of it, the widget keeps a usable view and can save its scene.
    ASSERT_GE(widget->getAllViewWidgets().size(), 1) << "round " << round;
    nlohmann::json again;
    EXPECT_NO_THROW(widget->saveState(again)) << "round " << round;
  }
  // Most wrong types are refused with the message; some readers take any value and keep their own.
  EXPECT_GT(reported, 20) << reported << " of 40";
  // And a good file still loads after all that.
  output.clear();
  widget->loadState(good);
  settle();
  EXPECT_EQ(widget->getAllViewWidgets().size(), 3) << messagesOf(output).join('\n').toStdString();
}
