#include "app/ViewerMainWindow.h"

#include "data_bridge/ZRVtkLibFileTypes.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXViewGridWidget.h"
#include "views/VXViewWidget.h"
#include "views/VXVisualizationWidget.h"

#include <QCoreApplication>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QSaveFile>
#include <QStatusBar>
#include <QUrl>

#include <nlohmann/json.hpp>

ViewerMainWindow::ViewerMainWindow(QWidget* parent)
    : QMainWindow(parent)
    , m_Pipeline(new VXPipeline(this))
    , m_Grid(new VXViewGridWidget(this))
    , m_OutputPane(new QPlainTextEdit(this))
{
  setWindowTitle(QStringLiteral("KESTRIX-ZR Viewer"));
  setAcceptDrops(true);
  resize(1280, 900);

  m_Grid->setObjectName(QStringLiteral("viewGrid"));
  setCentralWidget(m_Grid);

  m_OutputPane->setObjectName(QStringLiteral("outputPane"));
  m_OutputPane->setReadOnly(true);
  m_OutputPane->setMaximumBlockCount(10000);
  auto* dock = new QDockWidget(QStringLiteral("Output"), this);
  dock->setObjectName(QStringLiteral("outputDock"));
  dock->setWidget(m_OutputPane);
  addDockWidget(Qt::BottomDockWidgetArea, dock);
  resizeDocks({dock}, {140}, Qt::Vertical);

  ViewerDataViewChoice::UseViewerDefaults();
  statusBar()->setObjectName(QStringLiteral("statusBar")); // made now so the layout does not jump later

  connect(m_Pipeline, &VXPipeline::sendOutputMessage, this, &ViewerMainWindow::appendOutput);
  connect(m_Pipeline, &VXPipeline::sendPopupMessage, this, &ViewerMainWindow::showPopup);
  connect(m_Pipeline, &VXPipeline::importProgress, this, &ViewerMainWindow::showProgress);
  connect(m_Grid, &VXViewGridWidget::activeViewChanged, m_Pipeline, &VXPipeline::setActiveViewWidget);
  connect(m_Grid, &VXViewGridWidget::viewCreated, this, &ViewerMainWindow::connectView);
  for (VXAbstractViewWidget* view : m_Grid->allViews())
  {
    connectView(view);
  }
  m_Pipeline->setActiveViewWidget(m_Grid->activeView());

  createMenus();
}

ViewerMainWindow::~ViewerMainWindow() = default;

VXPipeline* ViewerMainWindow::pipeline() const
{
  return m_Pipeline;
}

VXViewGridWidget* ViewerMainWindow::grid() const
{
  return m_Grid;
}

QPlainTextEdit* ViewerMainWindow::outputPane() const
{
  return m_OutputPane;
}

void ViewerMainWindow::setInteractive(bool interactive)
{
  m_Interactive = interactive;
}

void ViewerMainWindow::createMenus()
{
  QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
  QAction* open = file->addAction(QStringLiteral("&Open..."), this, &ViewerMainWindow::openFileDialog);
  open->setShortcut(QKeySequence::Open);
  file->addSeparator();
  QAction* quit = file->addAction(QStringLiteral("&Quit"), this, &QWidget::close);
  quit->setShortcut(QKeySequence::Quit);

  QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
  view->addAction(QStringLiteral("Save Layout..."), this,
                  [this]()
                  {
                    const QString path =
                        QFileDialog::getSaveFileName(this, QStringLiteral("Save Layout"), QString(),
                                                     QStringLiteral("Layout Files (*.json)"));
                    if (!path.isEmpty())
                    {
                      saveLayout(path);
                    }
                  });
  view->addAction(QStringLiteral("Load Layout..."), this,
                  [this]()
                  {
                    const QString path =
                        QFileDialog::getOpenFileName(this, QStringLiteral("Load Layout"), QString(),
                                                     QStringLiteral("Layout Files (*.json)"));
                    if (!path.isEmpty())
                    {
                      loadLayout(path);
                    }
                  });
  view->addSeparator();
  view->addAction(QStringLiteral("Equalize View Widths"), m_Grid, &VXViewGridWidget::equalizeColumnWidths);
  view->addAction(QStringLiteral("Equalize View Heights"), m_Grid, &VXViewGridWidget::equalizeRowHeights);
  view->addAction(QStringLiteral("Reset Camera"), this,
                  [this]
                  {
                    if (VXAbstractViewWidget* active = m_Grid->activeView())
                    {
                      active->resetCamera();
                    }
                  });
}

void ViewerMainWindow::connectView(VXAbstractViewWidget* view)
{
  if (view == nullptr || view->getVisualizationWidget() == nullptr)
  {
    return;
  }
  VXVisualizationWidget* window = view->getVisualizationWidget();
  connect(window, &VXVisualizationWidget::printOutput, this, &ViewerMainWindow::appendOutput,
          Qt::UniqueConnection);
  connect(window, &VXVisualizationWidget::requestEqualizeViewWidths, m_Grid,
          &VXViewGridWidget::equalizeColumnWidths, Qt::UniqueConnection);
  connect(window, &VXVisualizationWidget::requestEqualizeViewHeights, m_Grid,
          &VXViewGridWidget::equalizeRowHeights, Qt::UniqueConnection);
}

void ViewerMainWindow::appendOutput(const QString& message)
{
  m_OutputPane->appendPlainText(message);
  Q_EMIT outputAppended(message);
}

void ViewerMainWindow::showProgress(const QString& message)
{
  // The import blocks the event loop: repaint the status line now, without taking user input.
  statusBar()->showMessage(message);
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void ViewerMainWindow::showPopup(const QString& title, const QString& message)
{
  appendOutput(QStringLiteral("%1: %2").arg(title, message));
  if (m_Interactive && isVisible())
  {
    QMessageBox::warning(this, title, message);
  }
}

void ViewerMainWindow::setDataViewChoice(const ViewerDataViewChoice& choice)
{
  m_DataViewChoice = choice;
  m_DataViewChoice.applyDefaults();
}

bool ViewerMainWindow::openFile(const QString& path)
{
  VXBridgeObject* bridge = m_Pipeline->importFile(path);
  statusBar()->clearMessage();
  int withData = 0;
  for (VXDataSource* dataSource : bridge != nullptr ? bridge->dataSources() : QList<VXDataSource*>())
  {
    withData += dataSource->getOutput() != nullptr ? 1 : 0;
  }
  if (withData == 0)
  {
    appendOutput(QStringLiteral("No data could be read from '%1'.").arg(path));
    return false;
  }
  appendOutput(
      QStringLiteral("Opened '%1': %2 data source(s).").arg(QFileInfo(path).fileName()).arg(withData));
  QString choiceError;
  if (!m_DataViewChoice.applyTo(*bridge, m_Grid->activeView(), &choiceError))
  {
    appendOutput(QStringLiteral("kestrix-viewer: ") + choiceError);
    return false;
  }
  if (VXAbstractViewWidget* active = m_Grid->activeView())
  {
    active->resetCamera();
  }
  return true;
}

void ViewerMainWindow::openFileDialog()
{
  const QStringList paths = QFileDialog::getOpenFileNames(this, QStringLiteral("Open Data Files"), QString(),
                                                          ZRVtkLib::io::SUPPORTED_EXTENSIONS_LIST);
  for (const QString& path : paths)
  {
    openFile(path);
  }
}

bool ViewerMainWindow::saveLayout(const QString& path)
{
  nlohmann::json layout;
  m_Grid->saveState(layout);
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
  auto* existing = qobject_cast<VXViewWidget*>(m_Grid->allViews().value(0));
  if (layout.is_discarded() || !layout.is_object() || existing == nullptr)
  {
    appendOutput(QStringLiteral("'%1' is not a layout file.").arg(path));
    return false;
  }
  try
  {
    m_Grid->loadState(layout, existing);
  }
  catch (const nlohmann::json::exception& error)
  {
    appendOutput(
        QStringLiteral("Could not load the layout from '%1': %2").arg(path, QString::fromUtf8(error.what())));
    return false;
  }
  m_Pipeline->setActiveViewWidget(m_Grid->activeView());
  return true;
}

QImage ViewerMainWindow::captureActiveView()
{
  VXAbstractViewWidget* active = m_Grid->activeView();
  if (active == nullptr || active->getVisualizationWidget() == nullptr)
  {
    return {};
  }
  return active->getVisualizationWidget()->captureViewImage(false, QColor());
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
