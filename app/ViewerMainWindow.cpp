#include "app/ViewerMainWindow.h"

#include "annotations/VXBuildPlateAnnotationSource.h"
#include "app/ViewerChartsWindow.h"
#include "app/ViewerMainWidget.h"
#include "app/ViewerMaskHost.h"
#include "app/ViewerRecentFiles.h"
#include "data_bridge/ZRVtkLibFileTypes.h"
#include "data_bridge/zr_contract/IArray.h"
#include "main/VXInfoWidget.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "pipeline/VXPipelineModel.h"
#include "platform/QtZRSettings.h"
#include "platform/ZRSettingsKeys.h"
#include "spreadsheets/VXSpreadsheetTypeSelector.h"
#include "spreadsheets/VXSpreadsheetViewWidget.h"
#include "spreadsheets/VXSpreadsheetWidget.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXViewGridWidget.h"
#include "views/VXViewWidget.h"
#include "views/VXVisualizationWidget.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QSaveFile>
#include <QStatusBar>
#include <QUrl>

#include <nlohmann/json.hpp>

namespace
{
const QString k_SettingsGroup = QStringLiteral("Viewer");
const QString k_GeometryKey = QStringLiteral("window_geometry");
const QString k_WindowStateKey = QStringLiteral("window_state");
const QString k_StateFilter = QStringLiteral("Visualization State (*.ksxstate)");
const QString k_PresetFilter = QStringLiteral("Visualization Presets (*.json)");
const QString k_DataStructureFilter = QStringLiteral("KESTRIX-ZR Data (*.kestrix)");

// The library's messages that say a state or preset did not load or save whole.
bool isFailureMessage(const QString& message)
{
  return message.startsWith(QLatin1String("Error ")) || message.startsWith(QLatin1String("Failed "));
}

QStringList storedPresetNames()
{
  QtZRSettings settings;
  settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
  const QByteArray text = settings.value(ZR::SettingsKeys::k_VisualizationPresets).toString().toUtf8();
  const nlohmann::json presets =
      nlohmann::json::parse(text.constData(), text.constData() + text.size(), nullptr, false);
  QStringList names;
  if (presets.is_object())
  {
    for (auto entry = presets.begin(); entry != presets.end(); ++entry)
    {
      names << QString::fromStdString(entry.key());
    }
  }
  return names;
}
} // namespace

ViewerMainWindow::ViewerMainWindow(QWidget* parent)
    : QMainWindow(parent)
    , m_MainWidget(new ViewerMainWidget(this))
    , m_OutputPane(new QPlainTextEdit(this))
{
  setWindowTitle(QStringLiteral("KESTRIX-ZR Viewer"));
  resize(1280, 900);

  m_MainWidget->setObjectName(QStringLiteral("mainWidget"));
  grid()->setObjectName(QStringLiteral("viewGrid"));
  setCentralWidget(m_MainWidget);
  // Drops land on the window, so that dropped files get the viewer's data view choice as opened ones do.
  m_MainWidget->setAcceptDrops(false);
  setAcceptDrops(true);

  m_OutputPane->setObjectName(QStringLiteral("outputPane"));
  m_OutputPane->setReadOnly(true);
  m_OutputPane->setMaximumBlockCount(10000);
  auto* dock = new QDockWidget(QStringLiteral("Output"), this);
  dock->setObjectName(QStringLiteral("outputDock"));
  dock->setWidget(m_OutputPane);
  addDockWidget(Qt::BottomDockWidgetArea, dock);
  resizeDocks({dock}, {140}, Qt::Vertical);

  // The spreadsheet window docks beside the views, hidden until asked for or restored from a state.
  m_SpreadsheetWidget = new VXSpreadsheetWidget(this);
  m_SpreadsheetWidget->setObjectName(QStringLiteral("spreadsheetWidget"));
  m_SpreadsheetDock = new QDockWidget(QStringLiteral("Spreadsheets"), this);
  m_SpreadsheetDock->setObjectName(QStringLiteral("spreadsheetsDock"));
  m_SpreadsheetDock->setWidget(m_SpreadsheetWidget);
  addDockWidget(Qt::BottomDockWidgetArea, m_SpreadsheetDock);
  // Spreadsheets above the output pane, each across the whole width.
  splitDockWidget(m_SpreadsheetDock, dock, Qt::Vertical);
  m_SpreadsheetDock->hide();
  connect(m_SpreadsheetDock, &QDockWidget::visibilityChanged, this,
          [this, dock](bool visible)
          {
            if (visible)
            {
              resizeDocks({m_SpreadsheetDock, dock}, {380, 120}, Qt::Vertical);
            }
          });
  connect(m_SpreadsheetWidget, &VXSpreadsheetWidget::printOutput, this, &ViewerMainWindow::appendOutput);
  connect(m_SpreadsheetWidget, &VXSpreadsheetWidget::loadStateRequested, this,
          &ViewerMainWindow::loadStateFile);
  m_MainWidget->addStateSection(
      QStringLiteral("spreadsheet_state"),
      [this](nlohmann::json& state)
      {
        // An unused window writes nothing: a later load then leaves it alone.
        if (!m_SpreadsheetWidget->isEmpty())
        {
          m_SpreadsheetWidget->saveState(state);
        }
      },
      [this](const nlohmann::json& state)
      {
        if (state.is_object() && !state.empty() && m_SpreadsheetWidget->loadState(state) &&
            !m_SpreadsheetWidget->isEmpty())
        {
          m_SpreadsheetDock->show();
        }
      });

  ViewerDataViewChoice::UseViewerDefaults();
  statusBar()->setObjectName(QStringLiteral("statusBar")); // made now so the layout does not jump later

  connect(m_MainWidget, &VXMainWidget::printOutput, this, &ViewerMainWindow::appendOutput);
  connect(pipeline(), &VXPipeline::importProgress, this, &ViewerMainWindow::showProgress);
  // A state file dropped on the window is the viewer's to load: it asks before it replaces the scene.
  connect(m_MainWidget, &VXMainWidget::loadStateRequested, this, &ViewerMainWindow::loadStateFile);
  // The viewer is the host a threshold filter's multi-threshold request goes to.
  m_MaskHost = new ViewerMaskHost(pipeline(), this);
  connect(m_MaskHost, &ViewerMaskHost::outputMessage, this, &ViewerMainWindow::appendOutput);
  connect(m_MainWidget, &VXMainWidget::createMultiThresholdObjectsFilter, this,
          [this](const zr::core::DataPath& geometryPath, std::vector<ZR::ArrayThresholdRange> thresholds)
          {
            // The selected item is the threshold whose button was pressed: its file wins.
            const QModelIndex selected = m_MainWidget->getInfoWidget()->selectedIndex();
            VXCoreObject* origin =
                selected.isValid() ? m_MainWidget->pipelineModel()->getCoreObject(selected) : nullptr;
            m_MaskHost->createMask(geometryPath, thresholds, origin);
          });

  createMenus();
  m_Charts = new ViewerChartsWindow(this, m_MainWidget);
  connect(m_Charts, &ViewerChartsWindow::printOutput, this, &ViewerMainWindow::appendOutput);
}

ViewerMainWindow::~ViewerMainWindow() = default;

ViewerMainWidget* ViewerMainWindow::mainWidget() const
{
  return m_MainWidget;
}

VXPipeline* ViewerMainWindow::pipeline() const
{
  return m_MainWidget->pipeline();
}

VXViewGridWidget* ViewerMainWindow::grid() const
{
  return m_MainWidget->viewGridWidget();
}

QPlainTextEdit* ViewerMainWindow::outputPane() const
{
  return m_OutputPane;
}

VXSpreadsheetWidget* ViewerMainWindow::spreadsheetWidget() const
{
  return m_SpreadsheetWidget;
}

QDockWidget* ViewerMainWindow::spreadsheetDock() const
{
  return m_SpreadsheetDock;
}

bool ViewerMainWindow::openSpreadsheet(const QStringList& dataPaths)
{
  const std::shared_ptr<zr::core::DataStructure> dataStructure = m_SpreadsheetWidget->dataStructure();
  if (dataStructure == nullptr)
  {
    appendOutput(QStringLiteral("kestrix-viewer: --spreadsheet needs a .kestrix file to take arrays from"));
    return false;
  }
  std::vector<zr::core::DataPath> paths;
  bool allFound = true;
  for (const QString& text : dataPaths)
  {
    const auto path = zr::core::DataPath::FromString(text.trimmed().toStdString());
    if (!path.has_value() || dataStructure->getDataAs<zr::core::IArray>(*path) == nullptr)
    {
      appendOutput(QStringLiteral("kestrix-viewer: no array at the data path '%1' of '%2'")
                       .arg(text, QFileInfo(m_SpreadsheetWidget->getKestrixFilePath()).fileName()));
      allFound = false;
      continue;
    }
    paths.push_back(*path);
  }
  VXSpreadsheetViewWidget* view = m_SpreadsheetWidget->activeView();
  if (view == nullptr || paths.empty())
  {
    return false;
  }
  if (view->selectorAt(view->getActiveTabIndex()) == nullptr)
  {
    view->addTabButtonClicked();
  }
  view->selectorAt(view->getActiveTabIndex())->onBasicSpreadsheetSelected(paths);
  m_SpreadsheetDock->show();
  return allFound;
}

void ViewerMainWindow::setInteractive(bool interactive)
{
  m_Interactive = interactive;
  m_MainWidget->setInteractive(interactive);
  if (interactive)
  {
    restoreWindowGeometry();
    m_MainWidget->readSettings();
  }
}

void ViewerMainWindow::createMenus()
{
  QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
  file->addAction(QStringLiteral("&Open..."), this, &ViewerMainWindow::openFileDialog)
      ->setShortcut(QKeySequence::Open);
  m_RecentMenu = file->addMenu(QStringLiteral("Open &Recent"));
  m_RecentMenu->setObjectName(QStringLiteral("recentMenu"));
  connect(m_RecentMenu, &QMenu::aboutToShow, this, &ViewerMainWindow::fillRecentMenu);
  file->addSeparator();
  file->addAction(QStringLiteral("&Load State..."), this, &ViewerMainWindow::loadStateDialog)
      ->setShortcut(QKeySequence(QStringLiteral("Ctrl+L")));
  file->addAction(QStringLiteral("&Save State..."), this, &ViewerMainWindow::saveStateDialog)
      ->setShortcut(QKeySequence::Save);
  file->addSeparator();
  file->addAction(QStringLiteral("Export Presets..."), this, &ViewerMainWindow::exportPresetsDialog);
  file->addAction(QStringLiteral("Import Presets..."), this, &ViewerMainWindow::importPresetsDialog);
  file->addSeparator();
  QAction* saveStructure = file->addAction(QStringLiteral("Save Data Structure As..."), this,
                                           &ViewerMainWindow::saveDataStructureDialog);
  saveStructure->setObjectName(QStringLiteral("saveDataStructureAction"));
  saveStructure->setEnabled(m_MaskHost->canSave());
  connect(m_MaskHost, &ViewerMaskHost::canSaveChanged, saveStructure, &QAction::setEnabled);
  file->addSeparator();
  file->addAction(QStringLiteral("Save Screenshot of All Views..."), m_MainWidget,
                  &VXMainWidget::saveAllViewsScreenshot);
  file->addAction(QStringLiteral("Copy All Views to Clipboard"), m_MainWidget,
                  &VXMainWidget::copyAllViewsToClipboard);
  file->addSeparator();
  file->addAction(QStringLiteral("&Quit"), this, &QWidget::close)->setShortcut(QKeySequence::Quit);

  QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
  view->addAction(QStringLiteral("Link All Views"), m_MainWidget, &VXMainWidget::linkAllViews);
  view->addAction(QStringLiteral("Unlink All Views"), m_MainWidget, &VXMainWidget::unlinkAllViews);
  view->addAction(QStringLiteral("Equalize View Widths"), m_MainWidget, &VXMainWidget::equalizeViewWidths);
  view->addAction(QStringLiteral("Equalize View Heights"), m_MainWidget, &VXMainWidget::equalizeViewHeights);
  view->addAction(QStringLiteral("Reset Camera"), this,
                  [this]
                  {
                    if (VXAbstractViewWidget* active = grid()->activeView())
                    {
                      active->resetCamera();
                    }
                  });
  view->addSeparator();
  view->addAction(QStringLiteral("Add build plate"), this, [this] { addBuildPlate(); });
  QAction* showSpreadsheets = m_SpreadsheetDock->toggleViewAction();
  showSpreadsheets->setText(QStringLiteral("Show Spreadsheets"));
  showSpreadsheets->setObjectName(QStringLiteral("showSpreadsheetsAction"));
  view->addAction(showSpreadsheets);
  view->addSeparator();
  view->addAction(QStringLiteral("Save Layout as Default..."), m_MainWidget, &VXMainWidget::writeSettings);
}

VXBuildPlateAnnotationSource* ViewerMainWindow::addBuildPlate(const ViewerBuildPlate& plate)
{
  VXBuildPlateAnnotationSource* source = plate.addTo(pipeline(), grid()->allViews());
  if (source != nullptr)
  {
    appendOutput(QStringLiteral("Added %1 to %2 view(s)").arg(source->name()).arg(grid()->allViews().size()));
  }
  return source;
}

void ViewerMainWindow::fillRecentMenu()
{
  m_RecentMenu->clear();
  const QStringList files = ViewerRecentFiles::Files();
  for (const QString& path : files)
  {
    m_RecentMenu->addAction(QFileInfo(path).fileName(), this, [this, path] { openFile(path); })
        ->setToolTip(path);
  }
  if (files.isEmpty())
  {
    m_RecentMenu->addAction(QStringLiteral("No Recent Files"))->setEnabled(false);
    return;
  }
  m_RecentMenu->addSeparator();
  m_RecentMenu->addAction(QStringLiteral("Clear List"), this, [] { ViewerRecentFiles::Clear(); });
}

void ViewerMainWindow::rememberFile(const QString& path)
{
  if (m_Interactive)
  {
    ViewerRecentFiles::Add(path);
  }
}

void ViewerMainWindow::appendOutput(const QString& message)
{
  m_OutputPane->appendPlainText(message);
  if (m_StateLoadErrors >= 0 && isFailureMessage(message))
  {
    ++m_StateLoadErrors;
  }
  Q_EMIT outputAppended(message);
}

void ViewerMainWindow::showProgress(const QString& message)
{
  // The import blocks the event loop: repaint the status line now, without taking user input.
  statusBar()->showMessage(message);
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void ViewerMainWindow::setDataViewChoice(const ViewerDataViewChoice& choice)
{
  m_DataViewChoice = choice;
  m_DataViewChoice.applyDefaults();
}

bool ViewerMainWindow::openFile(const QString& path)
{
  if (QFileInfo(path).suffix().compare(k_StateFileSuffix, Qt::CaseInsensitive) == 0)
  {
    return loadStateFile(path);
  }
  // Say why before any reader is tried: a missing or closed file is the user's to fix.
  const QFileInfo info(path);
  QString unreadableReason;
  if (!info.exists())
  {
    unreadableReason = QStringLiteral("no such file");
  }
  else if (info.isDir())
  {
    unreadableReason = QStringLiteral("it is a folder");
  }
  else if (!info.isReadable())
  {
    unreadableReason = QStringLiteral("the file is not readable (permission denied)");
  }
  if (!unreadableReason.isEmpty())
  {
    appendOutput(QStringLiteral("No data could be read from '%1': %2.").arg(path, unreadableReason));
    return false;
  }
  VXBridgeObject* bridge = pipeline()->importFile(path);
  // Its arrays go to the spreadsheet window, geometries or not.
  if (info.suffix().compare(QStringLiteral("kestrix"), Qt::CaseInsensitive) == 0)
  {
    m_SpreadsheetWidget->setDataStructure(info.absoluteFilePath(), true);
  }
  statusBar()->clearMessage();
  int withData = 0;
  for (VXDataSource* dataSource : bridge != nullptr ? bridge->dataSources() : QList<VXDataSource*>())
  {
    withData += dataSource->getOutput() != nullptr ? 1 : 0;
  }
  if (withData == 0)
  {
    appendOutput(
        QStringLiteral("No data could be read from '%1': its format is unknown or the file is damaged.")
            .arg(path));
    return false;
  }
  rememberFile(path);
  m_Charts->setDataFile(path);
  appendOutput(
      QStringLiteral("Opened '%1': %2 data source(s).").arg(QFileInfo(path).fileName()).arg(withData));
  QString choiceError;
  // Filters first, so that the colouring and colour map reach the data views of their outputs too.
  QString filterNote;
  if (!m_FilterSteps.applyTo(pipeline(), *bridge, m_DataViewChoice.viewType(), &choiceError, &filterNote,
                             m_MainWidget->pipelineModel()))
  {
    appendOutput(QStringLiteral("kestrix-viewer: ") + choiceError);
    // No chain was added: the file shows through its own data views, framed as any file opened.
    if (VXAbstractViewWidget* active = grid()->activeView())
    {
      active->resetCamera();
    }
    return false;
  }
  if (!filterNote.isEmpty())
  {
    appendOutput(QStringLiteral("kestrix-viewer: ") + filterNote);
  }
  if (!m_DataViewChoice.applyTo(*bridge, grid()->activeView(), &choiceError))
  {
    appendOutput(QStringLiteral("kestrix-viewer: ") + choiceError);
    return false;
  }
  if (VXAbstractViewWidget* active = grid()->activeView())
  {
    active->resetCamera();
  }
  return true;
}

bool ViewerMainWindow::loadStateFile(const QString& path)
{
  if (!QFileInfo(path).isFile())
  {
    appendOutput(
        QStringLiteral("Error opening visualization state from state file %1: no such file").arg(path));
    return false;
  }
  m_StateLoadErrors = 0;
  m_MainWidget->loadState(path);
  statusBar()->clearMessage();
  const int errors = m_StateLoadErrors;
  m_StateLoadErrors = -1;
  if (errors == 0)
  {
    rememberFile(path);
    appendOutput(QStringLiteral("Loaded the state '%1'.").arg(QFileInfo(path).fileName()));
  }
  return errors == 0;
}

bool ViewerMainWindow::saveStateFile(const QString& path)
{
  if (!m_MainWidget->saveStateToFile(path))
  {
    return false;
  }
  rememberFile(path);
  appendOutput(QStringLiteral("Saved the state to '%1'.").arg(path));
  const QStringList unsaved = m_MaskHost->unsavedFileNames();
  if (!unsaved.isEmpty())
  {
    // The state names the files as they are on disk, without the masks made here.
    appendOutput(QStringLiteral("The state refers to %1 as saved on disk, without the masks made here: "
                                "views coloured by a mask will not come back when the state is loaded. Save "
                                "the data structure with File > Save Data Structure As..., then save the "
                                "state again.")
                     .arg(QStringLiteral("'%1'").arg(unsaved.join(QStringLiteral("', '")))));
  }
  return true;
}

void ViewerMainWindow::openFileDialog()
{
  const QStringList paths = QFileDialog::getOpenFileNames(this, QStringLiteral("Open Data Files"), QString(),
                                                          ZRVtkLib::io::SUPPORTED_EXTENSIONS_LIST +
                                                              QStringLiteral(";;") + k_StateFilter);
  for (const QString& path : paths)
  {
    openFile(path);
  }
}

void ViewerMainWindow::loadStateDialog()
{
  const QString path =
      QFileDialog::getOpenFileName(this, QStringLiteral("Load State File"), QString(), k_StateFilter);
  if (!path.isEmpty())
  {
    loadStateFile(path);
  }
}

void ViewerMainWindow::saveStateDialog()
{
  QString path =
      QFileDialog::getSaveFileName(this, QStringLiteral("Save State File"), QString(), k_StateFilter);
  if (path.isEmpty())
  {
    return;
  }
  if (QFileInfo(path).suffix().isEmpty())
  {
    path += QStringLiteral(".") + k_StateFileSuffix;
  }
  saveStateFile(path);
}

void ViewerMainWindow::exportPresetsDialog()
{
  const QStringList names = storedPresetNames();
  if (names.isEmpty())
  {
    appendOutput(QStringLiteral("There are no visualization presets to export: create one from a data "
                                "source's context menu in the pipeline tree."));
    return;
  }
  const QString path =
      QFileDialog::getSaveFileName(this, QStringLiteral("Export Presets"), QString(), k_PresetFilter);
  if (!path.isEmpty())
  {
    m_MainWidget->exportPresets(path, names);
  }
}

void ViewerMainWindow::importPresetsDialog()
{
  const QString path =
      QFileDialog::getOpenFileName(this, QStringLiteral("Import Presets"), QString(), k_PresetFilter);
  if (!path.isEmpty())
  {
    m_MainWidget->importPresets(path);
  }
}

void ViewerMainWindow::saveDataStructureDialog()
{
  QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Save Data Structure As"), QString(),
                                              k_DataStructureFilter);
  if (path.isEmpty())
  {
    return;
  }
  if (QFileInfo(path).suffix().isEmpty())
  {
    path += QStringLiteral(".kestrix");
  }
  m_MaskHost->saveDataStructure(path);
}

bool ViewerMainWindow::saveLayout(const QString& path)
{
  nlohmann::json layout;
  grid()->saveState(layout);
  QSaveFile file(path);
  const QByteArray text = QByteArray::fromStdString(layout.dump(2));
  if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit())
  {
    appendOutput(QStringLiteral("Could not save the layout to '%1': %2").arg(path, file.errorString()));
    return false;
  }
  appendOutput(QStringLiteral("Saved the layout to '%1'.").arg(path));
  return true;
}

bool ViewerMainWindow::loadLayout(const QString& path)
{
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
  {
    appendOutput(QStringLiteral("Could not open the layout file '%1': %2").arg(path, file.errorString()));
    return false;
  }
  const nlohmann::json layout = nlohmann::json::parse(file.readAll().toStdString(), nullptr, false);
  auto* existing = qobject_cast<VXViewWidget*>(grid()->allViews().value(0));
  if (layout.is_discarded() || !layout.is_object() || existing == nullptr)
  {
    appendOutput(QStringLiteral("'%1' is not a layout file.").arg(path));
    return false;
  }
  try
  {
    grid()->loadState(layout, existing);
  }
  catch (const nlohmann::json::exception& error)
  {
    appendOutput(
        QStringLiteral("Could not load the layout from '%1': %2").arg(path, QString::fromUtf8(error.what())));
    return false;
  }
  m_MainWidget->setActiveView(grid()->activeView());
  return true;
}

QImage ViewerMainWindow::captureActiveView()
{
  VXAbstractViewWidget* active = grid()->activeView();
  if (active == nullptr || active->getVisualizationWidget() == nullptr)
  {
    return {};
  }
  return active->getVisualizationWidget()->captureViewImage(false, QColor());
}

QImage ViewerMainWindow::captureAllViews()
{
  VXAbstractViewWidget* active = grid()->activeView();
  const QColor background = active != nullptr && active->getVisualizationWidget() != nullptr
                                ? active->getVisualizationWidget()->getBackgroundColor()
                                : QColor(Qt::black);
  return m_MainWidget->grabAllViews(false, background);
}

void ViewerMainWindow::restoreWindowGeometry()
{
  QtZRSettings settings;
  settings.beginGroup(k_SettingsGroup);
  restoreGeometry(settings.value(k_GeometryKey).toByteArray());
  restoreState(settings.value(k_WindowStateKey).toByteArray());
}

void ViewerMainWindow::saveWindowGeometry() const
{
  QtZRSettings settings;
  settings.beginGroup(k_SettingsGroup);
  settings.setValue(k_GeometryKey, saveGeometry());
  settings.setValue(k_WindowStateKey, saveState());
  settings.sync();
}

void ViewerMainWindow::closeEvent(QCloseEvent* event)
{
  if (m_Interactive)
  {
    saveWindowGeometry();
  }
  QMainWindow::closeEvent(event);
}

void ViewerMainWindow::dragEnterEvent(QDragEnterEvent* event)
{
  if (event->mimeData()->hasFormat(QStringLiteral("text/uri-list")))
  {
    event->acceptProposedAction();
  }
}

void ViewerMainWindow::dropEvent(QDropEvent* event)
{
  bool any = false;
  for (const QUrl& url : event->mimeData()->urls())
  {
    if (url.isLocalFile())
    {
      openFile(url.toLocalFile());
      any = true;
    }
  }
  if (any)
  {
    event->acceptProposedAction();
  }
}
