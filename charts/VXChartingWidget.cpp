#include "charts/VXChartingWidget.h"

#include "charts/VXChartProperties.h"
#include "charts/VXChartSeriesInputWidget.h"
#include "charts/VXChartingViewWidget.h"
#include "data_bridge/zr_contract/KestrixReaderLoader.h"
#include "platform/ZRDataStructureTreeView.h"
#include "platform/ZRDataStructureWidget.h"
#include "views/VXMoveOverlay.h"
#include "views/VXSplitViewTree.h"

#include <nlohmann/json.hpp>

#include <QAction>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMimeData>
#include <QScrollArea>
#include <QSplitter>
#include <QTabWidget>
#include <QUrl>
#include <QVBoxLayout>

namespace
{
const char* const k_FilePathKey = "kestrix_file_path";

QScrollArea* Page(QWidget* parent)
{
  auto* page = new QScrollArea(parent);
  page->setWidgetResizable(true);
  return page;
}

// Takes the page's widget out without deleting it: it belongs to its chart.
void Release(QScrollArea* page)
{
  if (QWidget* widget = page->takeWidget())
  {
    widget->hide();
    widget->setParent(nullptr);
  }
}
} // namespace

VXChartingWidget::VXChartingWidget(QWidget* parent)
    : QWidget(parent)
    , m_FileLabel(new QLabel(this))
    , m_SeriesPage(Page(this))
    , m_PropertiesPage(Page(this))
{
  auto* layout = new QVBoxLayout(this);
  auto* splitter = new QSplitter(Qt::Horizontal, this);
  auto* left = new QWidget(splitter);
  auto* leftLayout = new QVBoxLayout(left);
  leftLayout->addWidget(new QLabel(QStringLiteral(" Data Structure"), left));
  m_FileLabel->setWordWrap(true);
  m_FileLabel->setText(
      QStringLiteral("To Import Data For Charting<ul><li>- Run a pipeline</li><li>- Drag and drop compatible "
                     "files here</li><li>  (.kestrix, .ksxstate)</li></ul>"));
  leftLayout->addWidget(m_FileLabel);
  m_Tree = new ZRDataStructureWidget(left);
  leftLayout->addWidget(m_Tree, 1);
  splitter->addWidget(left);
  m_ViewSplitter = new QSplitter(Qt::Horizontal, splitter);
  VXSplitViewTree::MarkRoot(m_ViewSplitter);
  m_View = makeView();
  m_ViewSplitter->addWidget(m_View);
  splitter->addWidget(m_ViewSplitter);
  auto* right = new QWidget(splitter);
  auto* rightLayout = new QVBoxLayout(right);
  rightLayout->addWidget(new QLabel(QStringLiteral("Series Options"), right));
  rightLayout->addWidget(m_SeriesPage, 1);
  rightLayout->addWidget(new QLabel(QStringLiteral("Properties"), right));
  rightLayout->addWidget(m_PropertiesPage, 1);
  splitter->addWidget(right);
  splitter->setStretchFactor(1, 3);
  splitter->setSizes({280, 620, 400});
  layout->addWidget(splitter);
  setAcceptDrops(true);
  m_View->setActive(true);
  m_CancelMoveAction = new QAction(QStringLiteral("Cancel Move"), this);
  m_CancelMoveAction->setShortcut(QKeySequence(Qt::Key_Escape));
  m_CancelMoveAction->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  addAction(m_CancelMoveAction);
  connect(m_CancelMoveAction, &QAction::triggered, this, &VXChartingWidget::cancelMove);
}

VXChartingViewWidget* VXChartingWidget::makeView()
{
  auto* view = new VXChartingViewWidget();
  view->setDataStructure(m_DataStructure);
  connect(view, &VXChartingViewWidget::printOutput, this, &VXChartingWidget::printOutput);
  connect(view, &VXChartingViewWidget::currentChartChanged, this,
          [this, view]
          {
            if (view == m_View)
            {
              showCurrentChartPages();
            }
          });
  connect(view, &VXChartingViewWidget::activationRequested, this, [this, view] { setActiveView(view); });
  connect(view, &VXChartingViewWidget::splitRequested, this,
          [this, view](Qt::Orientation orientation) { splitView(view, orientation); });
  connect(view, &VXChartingViewWidget::moveRequested, this,
          [this, view](int index) { beginMove(view, index); });
  connect(view, &VXChartingViewWidget::closeViewRequested, this, [this, view] { closeView(view); });
  return view;
}

QList<VXChartingViewWidget*> VXChartingWidget::views() const
{
  QList<VXChartingViewWidget*> views;
  for (QWidget* leaf : VXSplitViewTree::Leaves(m_ViewSplitter))
  {
    if (auto* view = qobject_cast<VXChartingViewWidget*>(leaf))
    {
      views.append(view);
    }
  }
  return views;
}

void VXChartingWidget::setActiveView(VXChartingViewWidget* view)
{
  if (view == nullptr)
  {
    return;
  }
  for (VXChartingViewWidget* each : views())
  {
    each->setActive(each == view);
  }
  m_View = view;
  showCurrentChartPages();
}

VXChartingViewWidget* VXChartingWidget::splitView(VXChartingViewWidget* view, Qt::Orientation orientation)
{
  VXChartingViewWidget* added = makeView();
  if (VXSplitViewTree::SplitLeaf(view, added, orientation) == nullptr)
  {
    delete added;
    return nullptr;
  }
  setActiveView(added);
  return added;
}

bool VXChartingWidget::closeView(VXChartingViewWidget* view)
{
  if (!VXSplitViewTree::CloseLeaf(m_ViewSplitter, view))
  {
    Q_EMIT printOutput(QStringLiteral("The last charting view cannot be closed"));
    return false;
  }
  if (m_MoveSource == view)
  {
    cancelMove();
  }
  const bool wasActive = view == m_View;
  // The pages show the active view's panels, which belong to its charts.
  Release(m_SeriesPage);
  Release(m_PropertiesPage);
  view->deleteLater();
  view->hide();
  view->setParent(nullptr);
  if (wasActive)
  {
    m_View = nullptr;
    setActiveView(views().value(0));
  }
  else
  {
    showCurrentChartPages();
  }
  return true;
}

void VXChartingWidget::beginMove(VXChartingViewWidget* source, int index)
{
  cancelMove();
  if (source == nullptr || index < 0 || index >= source->tabs()->count() || views().size() < 2)
  {
    Q_EMIT printOutput(QStringLiteral("Moving a chart needs a second view to move it to"));
    return;
  }
  m_MoveSource = source;
  m_MoveIndex = index;
  for (VXChartingViewWidget* view : views())
  {
    if (view == source)
    {
      continue;
    }
    auto* overlay = new VXMoveOverlay(view);
    connect(overlay, &VXMoveOverlay::clicked, this, [this, view] { moveTo(view); });
    overlay->show();
    overlay->raise();
    m_Overlays.append(overlay);
  }
  setFocus();
}

bool VXChartingWidget::moveTo(VXChartingViewWidget* target)
{
  if (m_MoveSource == nullptr || target == nullptr || target == m_MoveSource)
  {
    return false;
  }
  VXChartingViewWidget* source = m_MoveSource;
  const int index = m_MoveIndex;
  clearOverlays();
  nlohmann::json tab;
  source->saveTab(index, tab);
  Release(m_SeriesPage);
  Release(m_PropertiesPage);
  target->appendTab(tab);
  source->removeTab(index);
  setActiveView(target);
  return true;
}

void VXChartingWidget::cancelMove()
{
  clearOverlays();
}

void VXChartingWidget::clearOverlays()
{
  for (const QPointer<VXMoveOverlay>& overlay : m_Overlays)
  {
    delete overlay.data();
  }
  m_Overlays.clear();
  m_MoveSource = nullptr;
  m_MoveIndex = -1;
}

VXChartingWidget::~VXChartingWidget()
{
  Release(m_SeriesPage);
  Release(m_PropertiesPage);
}

void VXChartingWidget::showCurrentChartPages()
{
  Release(m_SeriesPage);
  Release(m_PropertiesPage);
  if (m_View == nullptr)
  {
    return;
  }
  const int index = m_View->tabs()->currentIndex();
  if (VXChartSeriesInputWidget* input = m_View->inputAt(index))
  {
    m_SeriesPage->setWidget(input);
    input->show();
  }
  if (VXChartProperties* properties = m_View->propertiesAt(index))
  {
    m_PropertiesPage->setWidget(properties);
    properties->show();
  }
}

void VXChartingWidget::showHideChartTypeInputs(bool show)
{
  m_SeriesPage->setVisible(show);
}

void VXChartingWidget::setDataStructure(const std::shared_ptr<const zr::core::DataStructure>& dataStructure,
                                        const QString& filePath)
{
  m_DataStructure = dataStructure;
  m_FilePath = filePath;
  m_FileLabel->setText(filePath.isEmpty() ? QStringLiteral("Data of the last pipeline run") : filePath);
  for (VXChartingViewWidget* view : views())
  {
    view->setDataStructure(dataStructure);
  }
  // The tree only reads the structure; it takes it as the host's model does.
  m_Tree->getDataStructureTreeView()->setActiveDataStructure(
      std::const_pointer_cast<zr::core::DataStructure>(dataStructure));
}

bool VXChartingWidget::setDataStructure(const QString& filePath, bool quiet)
{
  const QFileInfo info(filePath);
  auto loaded = zr::core::KESTRIX::LoadDataStructureFromFile(info.absoluteFilePath().toStdString(), false);
  if (!loaded.valid())
  {
    if (!quiet)
    {
      const QString why = loaded.errors().empty() ? QStringLiteral("the file could not be read")
                                                  : QString::fromStdString(loaded.errors().front().message);
      Q_EMIT printOutput(QStringLiteral("Could not read '%1' for charting: %2").arg(filePath, why));
    }
    return false;
  }
  setDataStructure(std::make_shared<zr::core::DataStructure>(std::move(loaded.value())),
                   info.absoluteFilePath());
  return true;
}

void VXChartingWidget::saveState(nlohmann::json& json) const
{
  if (m_FilePath.isEmpty())
  {
    Q_EMIT printOutput(QStringLiteral(
        "Warning: There is no .kestrix file associated with the current charts. The state saved "
        "from these charts may not load correctly!"));
  }
  json[k_FilePathKey] = m_FilePath.toStdString();
  VXSplitViewTree::Save(m_ViewSplitter, json,
                        [](QWidget* leaf, nlohmann::json& leafJson)
                        {
                          if (auto* view = qobject_cast<VXChartingViewWidget*>(leaf))
                          {
                            view->saveState(leafJson);
                          }
                        });
}

bool VXChartingWidget::loadState(const nlohmann::json& json)
{
  if (!json.contains("num_chart_tabs") && !json.contains("split_view_orientation"))
  {
    Q_EMIT printOutput(
        QStringLiteral("Error reading charting state from state file; no chart split views found"));
    return false;
  }
  if (!json.contains(k_FilePathKey))
  {
    Q_EMIT printOutput(QStringLiteral("Error reading charting state from state file; no %1 key found")
                           .arg(QString::fromLatin1(k_FilePathKey)));
    return false;
  }
  const QString filePath = QString::fromStdString(json.at(k_FilePathKey).get<std::string>());
  if (!filePath.isEmpty() && filePath != m_FilePath)
  {
    setDataStructure(filePath);
  }
  cancelMove();
  try
  {
    if (!VXSplitViewTree::HasTree(json))
    {
      // A state of one view, without splitters.
      m_View->loadState(json);
      showCurrentChartPages();
      return true;
    }
    Release(m_SeriesPage);
    Release(m_PropertiesPage);
    m_View = nullptr;
    VXSplitViewTree::Clear(m_ViewSplitter);
    VXChartingViewWidget* active = nullptr;
    const QString error =
        VXSplitViewTree::Load(m_ViewSplitter, json,
                              [this, &active](const nlohmann::json& leafJson) -> QWidget*
                              {
                                VXChartingViewWidget* view = makeView();
                                view->setConfirmClose(false);
                                view->loadState(leafJson);
                                view->setConfirmClose(true);
                                if (active == nullptr || leafJson.value("active_view", false))
                                {
                                  active = view;
                                }
                                return view;
                              });
    if (views().isEmpty())
    {
      m_ViewSplitter->addWidget(makeView());
    }
    setActiveView(active != nullptr && views().contains(active) ? active : views().front());
    if (!error.isEmpty())
    {
      Q_EMIT printOutput(error);
      return false;
    }
  }
  catch (const nlohmann::json::exception& error)
  {
    Q_EMIT printOutput(QStringLiteral("Error loading charting state from state file: %1")
                           .arg(QString::fromUtf8(error.what())));
    return false;
  }
  showCurrentChartPages();
  return true;
}

void VXChartingWidget::dragEnterEvent(QDragEnterEvent* event)
{
  if (event->mimeData()->hasFormat(QStringLiteral("text/uri-list")))
  {
    event->acceptProposedAction();
  }
}

void VXChartingWidget::dropEvent(QDropEvent* event)
{
  for (const QUrl& url : event->mimeData()->urls())
  {
    const QString path = url.toLocalFile();
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QStringLiteral("kestrix"))
    {
      setDataStructure(path);
    }
    else if (suffix == QStringLiteral("ksxstate"))
    {
      Q_EMIT loadStateRequested(path);
    }
  }
  event->acceptProposedAction();
}
