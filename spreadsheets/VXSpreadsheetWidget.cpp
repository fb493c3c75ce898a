#include "spreadsheets/VXSpreadsheetWidget.h"

#include "spreadsheets/VXSpreadsheet.h"
#include "spreadsheets/VXSpreadsheetOptions.h"
#include "spreadsheets/VXSpreadsheetViewWidget.h"

#include "data_bridge/zr_contract/KestrixReaderLoader.h"
#include "platform/IPipelineController.h"
#include "platform/ZRDataStructureModel.h"
#include "platform/ZRDataStructureTreeView.h"
#include "platform/ZRDataStructureWidget.h"
#include "platform/ZRStyle.h"
#include "views/VXSplitViewTree.h"

#include <QAction>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QSaveFile>
#include <QScrollArea>
#include <QSplitter>
#include <QStyle>
#include <QUrl>
#include <QVBoxLayout>

namespace
{
const char k_FilePathKey[] = "kestrix_file_path";
const char k_StateKey[] = "spreadsheet_state";
const QString k_StateFilter = QStringLiteral("KESTRIX-ZR State File (*.ksxstate)");

QString ImportHintText()
{
  return QStringLiteral("<html><head/><body><p><b>To Import Data For Spreadsheets</b></p>"
                        "<ul><li>- Run a pipeline</li><li>- Drag and drop compatible files here</li><li>  "
                        "(.kestrix, .ksxstate)</li></ul></body></html>");
}
} // namespace

VXSpreadsheetWidget::VXSpreadsheetWidget(QWidget* parent)
    : QWidget(parent)
{
  setObjectName(QStringLiteral("VXSpreadsheetWidget"));
  setAcceptDrops(true);
  m_MainSplitter = new QSplitter(Qt::Horizontal, this);
  m_MainSplitter->setChildrenCollapsible(false);

  auto* treeSide = new QWidget(m_MainSplitter);
  auto* treeLayout = new QVBoxLayout(treeSide);
  treeLayout->setContentsMargins(0, 0, 0, 0);
  m_ImportHintLabel = new QLabel(ImportHintText(), treeSide);
  m_ImportHintLabel->setObjectName(QStringLiteral("importHintLabel"));
  m_ImportHintLabel->setWordWrap(true);
  m_DataStructureWidget = new ZRDataStructureWidget(treeSide);
  treeLayout->addWidget(m_ImportHintLabel);
  treeLayout->addWidget(m_DataStructureWidget, 1);

  m_ViewSplitter = new QSplitter(Qt::Horizontal, m_MainSplitter);
  m_ViewSplitter->setObjectName(QStringLiteral("spreadsheetViewSplitter"));
  m_ViewSplitter->setChildrenCollapsible(false);
  VXSplitViewTree::MarkRoot(m_ViewSplitter);

  auto* scroll = new QScrollArea(m_MainSplitter);
  scroll->setWidgetResizable(true);
  scroll->setMinimumWidth(260);
  m_OptionsPage = new QWidget();
  m_OptionsPage->setObjectName(QStringLiteral("spreadsheetOptionsPage"));
  m_OptionsLayout = new QVBoxLayout(m_OptionsPage);
  m_OptionsLayout->addStretch(1);
  scroll->setWidget(m_OptionsPage);

  m_MainSplitter->addWidget(treeSide);
  m_MainSplitter->addWidget(m_ViewSplitter);
  m_MainSplitter->addWidget(scroll);
  m_MainSplitter->setStretchFactor(0, 1);
  m_MainSplitter->setStretchFactor(1, 4);
  m_MainSplitter->setStretchFactor(2, 1);
  m_MainSplitter->setSizes({240, 760, 300});
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(m_MainSplitter);

  m_CancelMoveAction = new QAction(QStringLiteral("Cancel Move"), this);
  m_CancelMoveAction->setShortcut(Qt::Key_Escape);
  m_CancelMoveAction->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  m_CancelMoveAction->setEnabled(false);
  addAction(m_CancelMoveAction);
  connect(m_CancelMoveAction, &QAction::triggered, this, &VXSpreadsheetWidget::cancelMove);
  connect(ZRStyle::Instance(), &ZRStyle::styleSheetLoaded, this, &VXSpreadsheetWidget::onStylesheetChanged);

  addFirstView();
}

VXSpreadsheetWidget::~VXSpreadsheetWidget()
{
  removeSpreadsheetOptionsPageLayoutItem();
}

VXSpreadsheetViewWidget* VXSpreadsheetWidget::addFirstView()
{
  auto* view = new VXSpreadsheetViewWidget();
  m_ViewSplitter->addWidget(view);
  connectViewWidget(view);
  view->setDataStructure(m_DataStructureId,
                         m_DataStructureWidget->getDataStructureTreeView()->getDataStructureModel());
  view->setKestrixFilePath(m_KestrixFilePath);
  view->addTabButtonClicked();
  setActiveView(view);
  updateAllClosable();
  return view;
}

void VXSpreadsheetWidget::setDataStructure(ZR::IPipelineController* controller,
                                           std::shared_ptr<zr::core::DataStructure> dataStructure)
{
  if (controller != nullptr)
  {
    const QString path = controller->getOutputFilePath();
    m_KestrixFilePath = !path.isEmpty() && QFileInfo::exists(path) ? path : QString();
    m_DataStructureId = controller->getPipelineUuid();
  }
  m_DataStructure = std::move(dataStructure);
  m_DataStructureWidget->getDataStructureTreeView()->setActiveDataStructure(m_DataStructure);
  updateViewsDataStructure();
}

void VXSpreadsheetWidget::setDataStructure(const QString& path, bool)
{
  const QFileInfo info(path);
  if (!info.exists() || info.suffix().toLower() != QStringLiteral("kestrix"))
  {
    return;
  }
  auto loaded = zr::core::KESTRIX::LoadDataStructureFromFile(info.absoluteFilePath().toStdString(), false);
  if (!loaded.valid())
  {
    const QString why = loaded.errors().empty() ? QStringLiteral("the file could not be read")
                                                : QString::fromStdString(loaded.errors().front().message);
    Q_EMIT printOutput(QStringLiteral("Could not read the data structure of '%1': %2").arg(path, why));
    return;
  }
  m_KestrixFilePath = info.absoluteFilePath();
  m_DataStructureId = m_KestrixFilePath;
  m_DataStructure = std::make_shared<zr::core::DataStructure>(std::move(loaded.value()));
  m_DataStructureWidget->getDataStructureTreeView()->setActiveDataStructure(m_DataStructure);
  updateViewsDataStructure();
}

void VXSpreadsheetWidget::updateViewsDataStructure()
{
  m_ImportHintLabel->setVisible(m_DataStructure == nullptr);
  ZRDataStructureModel* model = m_DataStructureWidget->getDataStructureTreeView()->getDataStructureModel();
  for (VXSpreadsheetViewWidget* view : viewWidgets())
  {
    view->setKestrixFilePath(m_KestrixFilePath);
    view->setDataStructure(m_DataStructureId, model);
  }
}

std::shared_ptr<zr::core::DataStructure> VXSpreadsheetWidget::dataStructure() const
{
  return m_DataStructure;
}

QString VXSpreadsheetWidget::getKestrixFilePath() const
{
  return m_KestrixFilePath;
}

bool VXSpreadsheetWidget::canSaveState() const
{
  const QList<VXSpreadsheetViewWidget*> views = viewWidgets();
  return std::any_of(views.begin(), views.end(),
                     [](VXSpreadsheetViewWidget* view) { return !view->isEmpty(); });
}

bool VXSpreadsheetWidget::isEmpty() const
{
  return !canSaveState();
}

void VXSpreadsheetWidget::showHideDataStructure(bool show)
{
  m_DataStructureWidget->parentWidget()->setVisible(show);
}

ZRDataStructureWidget* VXSpreadsheetWidget::dataStructureWidget() const
{
  return m_DataStructureWidget;
}

void VXSpreadsheetWidget::removeSpreadsheetOptionsPageLayoutItem()
{
  if (m_ShownOptions.isNull())
  {
    return;
  }
  if (m_ShownOptions->parentWidget() == m_OptionsPage)
  {
    m_OptionsLayout->removeWidget(m_ShownOptions);
    m_ShownOptions->hide();
    // Back to the view that owns it; a panel whose view is gone goes too.
    if (m_ShownOptionsOwner)
    {
      m_ShownOptions->setParent(m_ShownOptionsOwner);
    }
    else
    {
      m_ShownOptions->setParent(nullptr);
      m_ShownOptions->deleteLater();
    }
  }
  m_ShownOptions = nullptr;
  m_ShownOptionsOwner = nullptr;
}

void VXSpreadsheetWidget::insertCurrentSpreadsheetOptionsPageLayoutItem()
{
  if (m_ActiveView.isNull())
  {
    return;
  }
  VXSpreadsheetOptions* options = m_ActiveView->getActiveSpreadsheetOptions();
  if (options == nullptr)
  {
    return;
  }
  m_OptionsLayout->insertWidget(0, options);
  options->show();
  m_ShownOptions = options;
  m_ShownOptionsOwner = m_ActiveView;
}

void VXSpreadsheetWidget::openSpreadsheetOptionsPage()
{
  removeSpreadsheetOptionsPageLayoutItem();
  insertCurrentSpreadsheetOptionsPageLayoutItem();
}

VXSpreadsheetOptions* VXSpreadsheetWidget::shownSpreadsheetOptions() const
{
  return m_ShownOptions;
}

void VXSpreadsheetWidget::resetSpreadsheet()
{
  clearSplitViewState();
  m_KestrixFilePath.clear();
}

void VXSpreadsheetWidget::setOverlayHintVisibility(bool visible)
{
  for (VXSpreadsheetViewWidget* view : viewWidgets())
  {
    view->setOverlayHintVisibility(visible && !view->isSourceWidget());
  }
}

void VXSpreadsheetWidget::setActiveView(VXSpreadsheetViewWidget* view)
{
  if (m_ActiveView != view && !m_ActiveView.isNull())
  {
    m_ActiveView->setActive(false);
  }
  m_ActiveView = view;
  if (view != nullptr)
  {
    view->setActive(true);
  }
  openSpreadsheetOptionsPage();
}

VXSpreadsheetViewWidget* VXSpreadsheetWidget::activeView() const
{
  return m_ActiveView;
}

QList<VXSpreadsheetViewWidget*> VXSpreadsheetWidget::viewWidgets() const
{
  QList<VXSpreadsheetViewWidget*> views;
  for (QWidget* leaf : VXSplitViewTree::Leaves(m_ViewSplitter))
  {
    if (auto* view = qobject_cast<VXSpreadsheetViewWidget*>(leaf))
    {
      views << view;
    }
  }
  return views;
}

QSplitter* VXSpreadsheetWidget::rootSplitter() const
{
  return m_ViewSplitter;
}

void VXSpreadsheetWidget::connectViewWidget(VXSpreadsheetViewWidget* view)
{
  m_ViewWidgets << view;
  QPointer<VXSpreadsheetViewWidget> guarded(view);
  connect(view, &VXSpreadsheetViewWidget::mousePressed, this,
          [this, guarded]()
          {
            if (guarded && m_ActiveView != guarded)
            {
              setActiveView(guarded);
            }
          });
  connect(view, &VXSpreadsheetViewWidget::currentPanelChanged, this,
          [this, guarded]()
          {
            if (guarded && guarded == m_ActiveView)
            {
              openSpreadsheetOptionsPage();
            }
          });
  connect(view, &VXSpreadsheetViewWidget::viewWidgetClosed, this,
          [this, guarded]()
          {
            if (guarded)
            {
              viewWidgetClosed(guarded);
            }
          });
  connect(view, &VXSpreadsheetViewWidget::viewWidgetCreated, this,
          [this](VXSpreadsheetViewWidget* created)
          {
            connectViewWidget(created);
            updateAllClosable();
          });
  connect(view, &VXSpreadsheetViewWidget::spreadsheetCreated, this, &VXSpreadsheetWidget::connectSpreadsheet);
  connect(view, &VXSpreadsheetViewWidget::contextMenuRequested, this,
          [this, guarded](const QPoint& position)
          {
            if (guarded)
            {
              requestContextMenu(guarded, position);
            }
          });
  connect(view, &VXSpreadsheetViewWidget::moveRequested, this,
          [this, guarded]()
          {
            if (guarded)
            {
              startMovingSpreadsheet(guarded, guarded->sourceTab());
            }
          });
  connect(view, &VXSpreadsheetViewWidget::overlayClicked, this,
          [this, guarded]()
          {
            if (guarded && m_MoveSource)
            {
              const int tab = m_MoveSource->sourceTab();
              VXSpreadsheetViewWidget* source = m_MoveSource;
              m_MoveSource = nullptr;
              m_CancelMoveAction->setEnabled(false);
              setOverlayHintVisibility(false);
              guarded->moveSpreadsheet(source, tab);
              setActiveView(guarded);
              updateAllClosable();
            }
          });
  connect(view, &VXSpreadsheetViewWidget::printOutput, this, &VXSpreadsheetWidget::printOutput);
  updateAllClosable();
}

void VXSpreadsheetWidget::connectSpreadsheet(VXSpreadsheet* spreadsheet)
{
  // printOutput reaches the window through the view; column removal needs nothing of the window.
  spreadsheet->setAcceptDrops(true);
}

void VXSpreadsheetWidget::viewWidgetClosed(VXSpreadsheetViewWidget* view)
{
  m_ViewWidgets.removeAll(view);
  if (m_ShownOptionsOwner == view)
  {
    removeSpreadsheetOptionsPageLayoutItem();
  }
  if (m_MoveSource == view)
  {
    cancelMove();
  }
  view->deleteLater();
  if (m_ActiveView == view || m_ActiveView.isNull())
  {
    m_ActiveView = nullptr;
    setActiveView(VXSpreadsheetViewWidget::FindViewWidget(m_ViewSplitter));
  }
  updateAllClosable();
}

void VXSpreadsheetWidget::closeSplitView(const QSplitter* splitter)
{
  for (QWidget* leaf : VXSplitViewTree::Leaves(splitter))
  {
    if (auto* view = qobject_cast<VXSpreadsheetViewWidget*>(leaf))
    {
      view->closeView();
    }
  }
}

void VXSpreadsheetWidget::clearSplitViewState()
{
  cancelMove();
  removeSpreadsheetOptionsPageLayoutItem();
  m_ActiveView = nullptr;
  m_ViewWidgets.clear();
  VXSplitViewTree::Clear(m_ViewSplitter);
  m_ViewSplitter->setOrientation(Qt::Horizontal);
  addFirstView();
}

void VXSpreadsheetWidget::updateAllClosable()
{
  for (VXSpreadsheetViewWidget* view : viewWidgets())
  {
    view->updateClosable();
  }
}

void VXSpreadsheetWidget::onStylesheetChanged()
{
  for (VXSpreadsheetViewWidget* view : viewWidgets())
  {
    view->style()->unpolish(view);
    view->style()->polish(view);
  }
}

QMenu* VXSpreadsheetWidget::createContextMenu(VXSpreadsheetViewWidget* view, const QPoint& position)
{
  view->setSourceTab(position);
  view->updateClosable();
  auto* menu = new QMenu(this);
  menu->addMenu(view->addSpreadsheetMenu());
  QAction* move = view->moveSpreadsheetAction();
  move->setEnabled(view->spreadsheetAt(view->sourceTab()) != nullptr && viewWidgets().size() > 1);
  menu->addAction(move);
  if (view->isClosable())
  {
    menu->addAction(view->closeViewAction());
  }
  return menu;
}

void VXSpreadsheetWidget::requestContextMenu(VXSpreadsheetViewWidget* view, const QPoint& position)
{
  QMenu* menu = createContextMenu(view, position);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->popup(view->mapToGlobal(position));
}

void VXSpreadsheetWidget::startMovingSpreadsheet(VXSpreadsheetViewWidget* source, int tab)
{
  if (source == nullptr || source->spreadsheetAt(tab) == nullptr)
  {
    return;
  }
  cancelMove();
  source->setAsSourceWidget();
  source->setSourceTab(tab);
  m_MoveSource = source;
  m_CancelMoveAction->setEnabled(true);
  Q_EMIT printOutput(QStringLiteral("Click a view to move the spreadsheet to that view."));
  setOverlayHintVisibility(true);
}

void VXSpreadsheetWidget::cancelMove()
{
  if (m_MoveSource)
  {
    m_MoveSource->clearSourceWidget();
  }
  m_MoveSource = nullptr;
  m_CancelMoveAction->setEnabled(false);
  setOverlayHintVisibility(false);
}

QAction* VXSpreadsheetWidget::cancelMoveAction() const
{
  return m_CancelMoveAction;
}

void VXSpreadsheetWidget::saveState(const QSplitter* splitter, nlohmann::json& json) const
{
  VXSplitViewTree::Save(splitter, json,
                        [](QWidget* leaf, nlohmann::json& leafJson)
                        {
                          if (auto* view = qobject_cast<VXSpreadsheetViewWidget*>(leaf))
                          {
                            view->saveState(leafJson);
                          }
                        });
}

void VXSpreadsheetWidget::saveState(nlohmann::json& json) const
{
  if (m_KestrixFilePath.isEmpty())
  {
    Q_EMIT printOutput(
        QStringLiteral("Warning: There is no .kestrix file associated with the current charts. The "
                       "state saved from these charts may not load correctly!"));
  }
  json[k_FilePathKey] = m_KestrixFilePath.toStdString();
  saveState(m_ViewSplitter, json);
}

QString VXSpreadsheetWidget::loadState(const nlohmann::json& json, QSplitter* splitter)
{
  ZRDataStructureModel* model = m_DataStructureWidget->getDataStructureTreeView()->getDataStructureModel();
  return VXSplitViewTree::Load(splitter, json,
                               [this, model](const nlohmann::json& leafJson) -> QWidget*
                               {
                                 auto* view = new VXSpreadsheetViewWidget();
                                 view->setDataStructure(m_DataStructureId, model);
                                 view->setKestrixFilePath(m_KestrixFilePath);
                                 connectViewWidget(view);
                                 view->loadState(leafJson);
                                 return view;
                               });
}

bool VXSpreadsheetWidget::loadState(const nlohmann::json& json)
{
  if (!VXSplitViewTree::HasTree(json))
  {
    Q_EMIT printOutput(
        QStringLiteral("Error reading charting state from state file; no chart split views found"));
    return false;
  }
  if (!json.contains(k_FilePathKey) || !json[k_FilePathKey].is_string())
  {
    Q_EMIT printOutput(
        QStringLiteral("Error reading charting state from state file; no %1 key found").arg(k_FilePathKey));
    return false;
  }
  const QString path = QString::fromStdString(json[k_FilePathKey].get<std::string>());
  if (!path.isEmpty() && QFileInfo(path).absoluteFilePath() != m_KestrixFilePath && QFileInfo::exists(path))
  {
    setDataStructure(path, true);
  }
  cancelMove();
  removeSpreadsheetOptionsPageLayoutItem();
  m_ActiveView = nullptr;
  m_ViewWidgets.clear();
  VXSplitViewTree::Clear(m_ViewSplitter);
  if (m_ViewSplitter->count() != 0)
  {
    Q_EMIT printOutput(QStringLiteral("Error closing current charting split views"));
    return false;
  }
  const QString error = loadState(json, m_ViewSplitter);
  if (viewWidgets().isEmpty())
  {
    addFirstView();
  }
  VXSpreadsheetViewWidget* active = nullptr;
  for (VXSpreadsheetViewWidget* view : viewWidgets())
  {
    if (view->isActive() && active == nullptr)
    {
      active = view;
    }
    view->setActive(false);
  }
  setActiveView(active != nullptr ? active : viewWidgets().front());
  updateAllClosable();
  if (!error.isEmpty())
  {
    Q_EMIT printOutput(error);
    return false;
  }
  return true;
}

bool VXSpreadsheetWidget::saveState() const
{
  const QString path = QFileDialog::getSaveFileName(
      const_cast<VXSpreadsheetWidget*>(this), QStringLiteral("Save State File"), QString(), k_StateFilter);
  return !path.isEmpty() && saveState(path);
}

bool VXSpreadsheetWidget::saveState(const QString& filePath) const
{
  nlohmann::json state = nlohmann::json::object();
  saveState(state);
  nlohmann::json document = nlohmann::json::object();
  document[k_StateKey] = state;
  QSaveFile file(filePath);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
  {
    Q_EMIT printOutput(QStringLiteral("Failed to open state file '%1'").arg(filePath));
    return false;
  }
  const std::string text = document.dump(2);
  if (file.write(text.data(), static_cast<qint64>(text.size())) != static_cast<qint64>(text.size()))
  {
    file.cancelWriting();
    Q_EMIT printOutput(QStringLiteral("Failed to write out state file for '%1'").arg(filePath));
    return false;
  }
  if (!file.commit())
  {
    Q_EMIT printOutput(QStringLiteral("Failed to commit state file '%1'").arg(filePath));
    return false;
  }
  return true;
}

bool VXSpreadsheetWidget::loadState()
{
  const QString path =
      QFileDialog::getOpenFileName(this, QStringLiteral("Load State File"), QString(), k_StateFilter);
  return !path.isEmpty() && loadState(path);
}

bool VXSpreadsheetWidget::loadState(const QString& filePath)
{
  if (QFileInfo(filePath).suffix().toLower() != QStringLiteral("ksxstate") || !QFileInfo::exists(filePath))
  {
    Q_EMIT printOutput(
        QStringLiteral("A valid KESTRIX-ZR state file (*.ksxstate) was not found. Could not load state."));
    return false;
  }
  if (!isEmpty())
  {
    const auto answer = QMessageBox::warning(
        this, QStringLiteral("Possible Loss of Data"),
        QStringLiteral(
            "The existing render window split view state will be cleared while loading the state file. "
            "This may result in a loss of existing data. Do you want to continue?"),
        QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    if (answer != QMessageBox::Yes)
    {
      return false;
    }
  }
  QFile file(filePath);
  if (!file.open(QIODevice::ReadOnly))
  {
    Q_EMIT printOutput(QStringLiteral("Error opening state file %1").arg(filePath));
    return false;
  }
  const QByteArray bytes = file.readAll();
  const nlohmann::json document =
      nlohmann::json::parse(bytes.constData(), bytes.constData() + bytes.size(), nullptr, false);
  if (!document.is_object())
  {
    Q_EMIT printOutput(QStringLiteral("Error opening state file %1").arg(filePath));
    return false;
  }
  return loadState(document.contains(k_StateKey) ? document[k_StateKey] : document);
}

void VXSpreadsheetWidget::keyPressEvent(QKeyEvent* event)
{
  if (event->key() == Qt::Key_Escape && m_MoveSource)
  {
    cancelMove();
    event->accept();
    return;
  }
  QWidget::keyPressEvent(event);
}

void VXSpreadsheetWidget::dragEnterEvent(QDragEnterEvent* event)
{
  if (event->mimeData()->hasFormat(QStringLiteral("text/uri-list")))
  {
    event->acceptProposedAction();
    return;
  }
  QWidget::dragEnterEvent(event);
}

void VXSpreadsheetWidget::dropEvent(QDropEvent* event)
{
  if (!event->mimeData()->hasUrls())
  {
    QWidget::dropEvent(event);
    return;
  }
  for (const QUrl& url : event->mimeData()->urls())
  {
    const QString path = QDir::toNativeSeparators(url.toLocalFile());
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QStringLiteral("ksxstate"))
    {
      Q_EMIT loadStateRequested(path);
    }
    else if (suffix == QStringLiteral("kestrix"))
    {
      setDataStructure(path, true);
    }
  }
  event->acceptProposedAction();
}
