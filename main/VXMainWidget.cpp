#include "main/VXMainWidget.h"

#include "ui_VXMainWidget.h"

#include "data_bridge/ZRVtkLibFileTypes.h"
#include "main/VXInfoWidget.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXDefaultDataViewsSetAside.h"
#include "pipeline/VXPipeline.h"
#include "pipeline/VXPipelineModel.h"
#include "pipeline/VXStateFileDirectory.h"
#include "platform/QtZRSettings.h"
#include "platform/ZRSettingsKeys.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXPickerCallback.h"
#include "views/VXScreenshotOptionsDialog.h"
#include "views/VXViewGridWidget.h"
#include "views/VXViewWidget.h"
#include "views/VXVisualizationWidget.h"

#include <nlohmann/json.hpp>

#include <QApplication>
#include <QClipboard>
#include <QDebug>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QMimeData>
#include <QPainter>
#include <QPushButton>
#include <QSaveFile>
#include <QShowEvent>
#include <QSplitter>
#include <QUrl>

#include <array>
#include <exception>

namespace
{
constexpr const char* k_SplitViewStateKey = "split_view_state";
constexpr const char* k_TreeViewStateKey = "tree_view_state";
const QString k_PresetsKey = ZR::SettingsKeys::k_VisualizationPresets;
const QString k_UriListMimeType = QStringLiteral("text/uri-list");

// The view numbers of a save or load exist only while it runs.
class ViewIndexesScope
{
public:
  explicit ViewIndexesScope(std::unique_ptr<QMap<VXAbstractViewWidget*, int>>& indexes)
      : m_Indexes(indexes)
  {
    m_Indexes = std::make_unique<QMap<VXAbstractViewWidget*, int>>();
  }
  ~ViewIndexesScope() { m_Indexes.reset(); }

  ViewIndexesScope(const ViewIndexesScope&) = delete;
  ViewIndexesScope& operator=(const ViewIndexesScope&) = delete;

private:
  std::unique_ptr<QMap<VXAbstractViewWidget*, int>>& m_Indexes;
};

void openRenderWindowSettings(QtZRSettings& settings)
{
  settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
  settings.beginGroup(ZR::SettingsKeys::k_RenderWindowSettings);
}
} // namespace

VXMainWidget::VXMainWidget(QWidget* parent)
    : QWidget(parent)
    , m_Ui(std::make_unique<Ui::VXMainWidget>())
{
  m_Ui->setupUi(this);
  setAcceptDrops(true);
  m_Pipeline = new VXPipeline(this);
  m_PipelineModel = new VXPipelineModel(m_Pipeline, m_Ui->infoWidget, this);
  m_Ui->infoWidget->setPipelineModel(m_PipelineModel);
  connectSignals();
  // The grid starts with one view, made before these connections existed.
  for (VXAbstractViewWidget* view : getAllViewWidgets())
  {
    connectViewWidget(view);
  }
  setActiveView(m_Ui->viewGridWidget->activeView());
}

VXMainWidget::~VXMainWidget()
{
  for (const QMetaObject::Connection& connection : m_ActiveViewConnections)
  {
    disconnect(connection);
  }
  // The data goes first, while the views its data views draw in and the panel still exist.
  delete m_PipelineModel;
  m_PipelineModel = nullptr;
  delete m_Pipeline;
  m_Pipeline = nullptr;
}

void VXMainWidget::connectSignals()
{
  VXViewGridWidget* grid = m_Ui->viewGridWidget;
  VXInfoWidget* info = m_Ui->infoWidget;
  connect(grid, &VXViewGridWidget::activeViewChanged, this, &VXMainWidget::setActiveView);
  connect(grid, &VXViewGridWidget::viewCreated, this, &VXMainWidget::connectViewWidget);
  connect(grid, &VXViewGridWidget::viewClosed, this, &VXMainWidget::activeViewClosed);

  connect(m_Pipeline, &VXPipeline::sendOutputMessage, this, &VXMainWidget::printOutput);
  connect(m_Pipeline, &VXPipeline::sendPopupMessage, this, &VXMainWidget::popupMessage);
  connect(m_Pipeline, &VXPipeline::requestRenderAll, this, &VXMainWidget::renderAllViews);
  connect(m_Pipeline, &VXPipeline::createMultiThresholdObjectsFilter, this,
          [this](zr::core::DataPath geometryPath, std::vector<ZR::ArrayThresholdRange> thresholds)
          { Q_EMIT createMultiThresholdObjectsFilter(geometryPath, std::move(thresholds)); });

  connect(m_PipelineModel, &VXPipelineModel::linkingDataViews, this, &VXMainWidget::onLinkingDataViews);

  connect(info, &VXInfoWidget::loadStateFileRequest, this,
          qOverload<const QString&>(&VXMainWidget::loadState));
  connect(info, &VXInfoWidget::createPresetRequest, this, &VXMainWidget::createPreset);
  connect(info, &VXInfoWidget::applyPresetRequest, this, &VXMainWidget::applyPreset);
  connect(info, &VXInfoWidget::exportPresets, this, &VXMainWidget::exportPresets);
  connect(info, &VXInfoWidget::importPresets, this, &VXMainWidget::importPresets);
  connect(info, &VXInfoWidget::importFileRequest, m_Pipeline, &VXPipeline::importFile);
  connect(info, &VXInfoWidget::sendOutputMessage, this, &VXMainWidget::printOutput);
  connect(info, &VXInfoWidget::clearHighlightsRequest, this, &VXMainWidget::clearAllRenderWindowHighlighters);
}

VXPipeline* VXMainWidget::pipeline() const
{
  return m_Pipeline;
}

VXPipelineModel* VXMainWidget::pipelineModel() const
{
  return m_PipelineModel;
}

VXAbstractViewWidget* VXMainWidget::getActiveViewWidget() const
{
  return m_ActiveView.data();
}

QList<VXAbstractViewWidget*> VXMainWidget::getAllViewWidgets() const
{
  return m_Ui->viewGridWidget->allViews();
}

VXInfoWidget* VXMainWidget::getInfoWidget() const
{
  return m_Ui->infoWidget;
}

VXViewGridWidget* VXMainWidget::viewGridWidget() const
{
  return m_Ui->viewGridWidget;
}

QSplitter* VXMainWidget::splitter() const
{
  return m_Ui->splitter;
}

bool VXMainWidget::canSaveState() const
{
  return m_Ui->infoWidget != nullptr && m_Ui->infoWidget->pipelineModel() != nullptr;
}

// ---- Views -------------------------------------------------------------------------------------

void VXMainWidget::connectViewWidget(VXAbstractViewWidget* viewWidget)
{
  if (viewWidget == nullptr)
  {
    return;
  }
  // Every view follows a reload, so that for example its grid axes take the new bounds.
  connect(m_Pipeline, &VXPipeline::pipelineOutputReloaded, viewWidget,
          &VXAbstractViewWidget::onPipelineOutputReloaded, Qt::UniqueConnection);
  VXVisualizationWidget* window = viewWidget->getVisualizationWidget();
  if (window == nullptr)
  {
    return;
  }
  connect(window, &VXVisualizationWidget::requestSaveAllViewsScreenshot, this,
          &VXMainWidget::saveAllViewsScreenshot, Qt::UniqueConnection);
  connect(window, &VXVisualizationWidget::requestCopyAllViewsToClipboard, this,
          &VXMainWidget::copyAllViewsToClipboard, Qt::UniqueConnection);
  connect(window, &VXVisualizationWidget::requestLinkAllCameras, this, &VXMainWidget::linkAllViews,
          Qt::UniqueConnection);
  connect(window, &VXVisualizationWidget::requestUnlinkAllCameras, this, &VXMainWidget::unlinkAllViews,
          Qt::UniqueConnection);
  connect(window, &VXVisualizationWidget::requestEqualizeViewWidths, this, &VXMainWidget::equalizeViewWidths,
          Qt::UniqueConnection);
  connect(window, &VXVisualizationWidget::requestEqualizeViewHeights, this,
          &VXMainWidget::equalizeViewHeights, Qt::UniqueConnection);
  QPointer<VXMainWidget> self(this);
  if (VXPickerCallback* picker = window->getPickerCallback())
  {
    // A pick names the data source whose dataset it found.
    picker->setGeometryNameLookup(
        [self](vtkDataObject* dataObject)
        {
          if (self.isNull() || self->m_PipelineModel == nullptr)
          {
            return QString();
          }

          for (VXDataSource* source : self->m_PipelineModel->getAllDataSources())
          {
            if (source != nullptr && static_cast<vtkDataObject*>(source->getOutput()) == dataObject)
            {
              return source->name();
            }
          }
          return QString();
        });
  }
  window->setAnyViewLinkedQuery(
      [self]()
      {
        if (self.isNull())
        {
          return false;
        }
        for (VXAbstractViewWidget* view : self->getAllViewWidgets())
        {
          if (view != nullptr && view->getVisualizationWidget() != nullptr &&
              view->getVisualizationWidget()->isLinked())
          {
            return true;
          }
        }
        return false;
      });
}

void VXMainWidget::setActiveView(VXAbstractViewWidget* viewWidget)
{
  if (viewWidget == m_ActiveView.data())
  {
    return;
  }
  if (!m_ActiveView.isNull())
  {
    m_ActiveView->setActive(false);
  }
  for (const QMetaObject::Connection& connection : m_ActiveViewConnections)
  {
    disconnect(connection);
  }
  m_ActiveViewConnections.clear();

  m_ActiveView = viewWidget;
  m_Pipeline->setActiveViewWidget(viewWidget);
  Q_EMIT changedActiveView(viewWidget);
  m_Ui->infoWidget->onActiveViewChanged(viewWidget);
  if (viewWidget == nullptr)
  {
    return;
  }
  viewWidget->setActive(true);
  // Only the active view speaks in the output.
  if (VXVisualizationWidget* window = viewWidget->getVisualizationWidget())
  {
    m_ActiveViewConnections.append(
        connect(window, &VXVisualizationWidget::printOutput, this, &VXMainWidget::printOutput));
  }
}

void VXMainWidget::activeViewClosed(VXAbstractViewWidget* /*closedView*/)
{
  // The grid names the next active view, and setActiveView does the work.
}

void VXMainWidget::renderActiveView()
{
  if (!m_ActiveView.isNull())
  {
    m_ActiveView->renderView();
  }
}

void VXMainWidget::renderAllViews()
{
  for (VXAbstractViewWidget* view : getAllViewWidgets())
  {
    if (view != nullptr)
    {
      view->renderView();
    }
  }
}

void VXMainWidget::setBlockRender(bool block)
{
  for (VXAbstractViewWidget* view : getAllViewWidgets())
  {
    if (view != nullptr)
    {
      view->setBlockRender(block);
    }
  }
}

void VXMainWidget::equalizeViewWidths()
{
  m_Ui->viewGridWidget->equalizeColumnWidths();
}

void VXMainWidget::equalizeViewHeights()
{
  m_Ui->viewGridWidget->equalizeRowHeights();
}

void VXMainWidget::linkAllViews()
{
  const QList<VXAbstractViewWidget*> views = getAllViewWidgets();
  if (views.size() <= 1)
  {
    return;
  }
  VXAbstractViewWidget* reference = !m_ActiveView.isNull() ? m_ActiveView.data() : views.front();
  VXVisualizationWidget* referenceWindow = reference->getVisualizationWidget();
  if (referenceWindow == nullptr)
  {
    return;
  }
  for (VXAbstractViewWidget* view : views)
  {
    if (view != nullptr && view != reference && view->getVisualizationWidget() != nullptr)
    {
      view->getVisualizationWidget()->linkCameraWith(referenceWindow);
    }
  }
}

void VXMainWidget::unlinkAllViews()
{
  for (VXAbstractViewWidget* view : getAllViewWidgets())
  {
    if (view != nullptr && view->getVisualizationWidget() != nullptr)
    {
      view->getVisualizationWidget()->unlinkCamera();
    }
  }
}

void VXMainWidget::onLinkingDataViews(bool isLinking)
{
  // Each view shows its split id over a blurred render while the user picks the views to link.
  for (VXAbstractViewWidget* view : getAllViewWidgets())
  {
    if (auto* viewWidget = qobject_cast<VXViewWidget*>(view))
    {
      viewWidget->setSplitIdOverlayHintVisibility(isLinking);
    }
  }
}

void VXMainWidget::clearAllRenderWindowHighlighters()
{
  for (VXAbstractViewWidget* view : getAllViewWidgets())
  {
    if (view != nullptr && view->getVisualizationWidget() != nullptr)
    {
      view->getVisualizationWidget()->clearOutlines();
    }
  }
  renderAllViews();
}

QImage VXMainWidget::grabAllViews(bool transparent, const QColor& color)
{
  struct Placed
  {
    VXVisualizationWidget* window;
    QRect rect;
  };
  std::vector<Placed> placed;
  QRect bounds;
  for (VXAbstractViewWidget* view : getAllViewWidgets())
  {
    VXVisualizationWidget* window = view != nullptr ? view->getVisualizationWidget() : nullptr;
    if (window == nullptr)
    {
      continue;
    }
    const QRect rect(window->mapTo(this, QPoint(0, 0)), window->size());
    placed.push_back({window, rect});
    bounds = bounds.united(rect);
  }
  if (bounds.isEmpty())
  {
    return {};
  }
  QImage image(bounds.size(), QImage::Format_ARGB32);
  image.fill(transparent ? QColor(Qt::transparent) : color);
  QPainter painter(&image);
  for (const Placed& entry : placed)
  {
    const QImage part = entry.window->captureViewImage(transparent, color);
    painter.drawImage(entry.rect.topLeft() - bounds.topLeft(), part);
  }
  painter.end();
  return image;
}

void VXMainWidget::saveAllViewsScreenshot()
{
  bool transparent = false;
  QColor color = Qt::black;
  if (!m_ActiveView.isNull() && m_ActiveView->getVisualizationWidget() != nullptr)
  {
    color = m_ActiveView->getVisualizationWidget()->getBackgroundColor();
  }
  if (!askScreenshotOptions(transparent, color))
  {
    return;
  }
  const QString filePath = chooseScreenshotFile();
  if (filePath.isEmpty())
  {
    return;
  }
  const QImage image = grabAllViews(transparent, color);
  if (image.isNull() || !image.save(filePath))
  {
    QMessageBox::critical(this, QStringLiteral("Save Failed"),
                          QStringLiteral("Failed to save the screenshot to:\n%1").arg(filePath));
  }
}

void VXMainWidget::copyAllViewsToClipboard()
{
  QColor color = Qt::black;
  if (!m_ActiveView.isNull() && m_ActiveView->getVisualizationWidget() != nullptr)
  {
    color = m_ActiveView->getVisualizationWidget()->getBackgroundColor();
  }
  const QImage image = grabAllViews(false, color);
  if (!image.isNull())
  {
    QApplication::clipboard()->setImage(image);
  }
}

void VXMainWidget::popupMessage(const QString& title, const QString& message)
{
  showPopup(title, message);
}

// ---- State -------------------------------------------------------------------------------------

void VXMainWidget::numberViews()
{
  int index = 0;
  for (VXAbstractViewWidget* view : getAllViewWidgets())
  {
    m_ViewIndexes->insert(view, index++);
  }
}

void VXMainWidget::saveState(nlohmann::json& output)
{
  ViewIndexesScope scope(m_ViewIndexes);
  numberViews();
  nlohmann::json splitState = nlohmann::json::object();
  m_Ui->viewGridWidget->saveState(splitState);
  output[k_SplitViewStateKey] = splitState;
  if (canSaveState())
  {
    nlohmann::json treeState = nlohmann::json::array();
    m_Ui->infoWidget->saveState(QModelIndex(), treeState, *m_ViewIndexes);
    output[k_TreeViewStateKey] = treeState;
  }
  for (const StateSection& section : m_StateSections)
  {
    nlohmann::json sectionState = nlohmann::json::object();
    section.save(sectionState);
    // A window with nothing to keep leaves no key, so that loading the file leaves that window alone.
    if (!sectionState.empty())
    {
      output[section.key.toStdString()] = sectionState;
    }
  }
}

void VXMainWidget::addStateSection(const QString& key, std::function<void(nlohmann::json&)> save,
                                   std::function<void(const nlohmann::json&)> load)
{
  m_StateSections.push_back({key, std::move(save), std::move(load)});
}

bool VXMainWidget::writeTextFile(const QString& filePath, const QByteArray& text, const QString& openFailure,
                                 const QString& writeFailure, const QString& commitFailure)
{
  QSaveFile file(filePath);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
  {
    Q_EMIT printOutput(openFailure.arg(filePath));
    return false;
  }
  if (file.write(text) != text.size())
  {
    file.cancelWriting();
    Q_EMIT printOutput(writeFailure.arg(filePath));
    return false;
  }
  if (!file.commit())
  {
    Q_EMIT printOutput(commitFailure.arg(filePath));
    return false;
  }
  return true;
}

bool VXMainWidget::saveStateToFile(const QString& filePath)
{
  nlohmann::json state = nlohmann::json::object();
  {
    // File items record their paths also relative to the state file's folder.
    VXStateFileDirectory directory(QFileInfo(filePath).absolutePath());
    saveState(state);
  }
  const std::string text = state.dump(2);
  return writeTextFile(filePath, QByteArray::fromStdString(text),
                       QStringLiteral("Failed to open state file '%1'"),
                       QStringLiteral("Failed to write out state file for '%1'"),
                       QStringLiteral("Failed to commit state file '%1'"));
}

void VXMainWidget::saveState()
{
  const QString filePath = chooseSaveFile(QStringLiteral("Save State File"), k_StateFileFilter);
  if (filePath.isEmpty())
  {
    return;
  }
  saveStateToFile(filePath);
}

void VXMainWidget::clearSplitViewState()
{
  m_Ui->viewGridWidget->reset();
  const QList<VXAbstractViewWidget*> views = getAllViewWidgets();
  if (!views.isEmpty() && views.front() != nullptr && views.front()->getVisualizationWidget() != nullptr)
  {
    Q_EMIT views.front()->getVisualizationWidget()->hideAll();
  }
}

void VXMainWidget::loadState(const nlohmann::json& input)
{
  for (const char* key : {k_SplitViewStateKey, k_TreeViewStateKey})
  {
    if (!input.is_object() || !input.contains(key))
    {
      Q_EMIT printOutput(QStringLiteral("Error reading visualization state from state file; missing %1 key")
                             .arg(QLatin1String(key)));
      return;
    }
  }
  clearSplitViewState();
  VXDefaultDataViewsSetAside noDefaultViews;
  VXViewWidget* first = nullptr;
  for (VXAbstractViewWidget* view : m_Ui->viewGridWidget->allViews())
  {
    if ((first = qobject_cast<VXViewWidget*>(view)) != nullptr)
    {
      break;
    }
  }
  m_Ui->viewGridWidget->loadState(input.at(k_SplitViewStateKey), first);
  ViewIndexesScope scope(m_ViewIndexes);
  numberViews();
  m_Ui->infoWidget->loadState(input.at(k_TreeViewStateKey), *m_ViewIndexes);
  for (const StateSection& section : m_StateSections)
  {
    const std::string key = section.key.toStdString();
    if (input.contains(key))
    {
      section.load(input.at(key));
    }
  }
}

void VXMainWidget::loadState(const QString& filePath)
{
  if (m_PipelineModel->rowCount() > 0 &&
      !askYesNo(
          QStringLiteral("Possible Loss of Data"),
          QStringLiteral("The existing render window split view state will be cleared while loading the "
                         "state file. This may result in a loss of existing data.\n\nWould you like to "
                         "continue loading the state anyway?")))
  {
    return;
  }
  const QString failure =
      QStringLiteral("Error opening visualization state from state file %1").arg(filePath);
  QFile file(filePath);
  if (!file.open(QIODevice::ReadOnly))
  {
    Q_EMIT printOutput(failure);
    return;
  }
  const QByteArray text = file.readAll();
  file.close();
  try
  {
    const nlohmann::json state = nlohmann::json::parse(text.constData(), text.constData() + text.size());
    // Files named in the state may have moved with it: they are looked for beside it too.
    VXStateFileDirectory directory(QFileInfo(filePath).absolutePath());
    loadState(state);
  }
  catch (const std::exception& error)
  {
    Q_EMIT printOutput(failure);
    Q_EMIT printOutput(QString::fromUtf8(error.what()));
  }
}

void VXMainWidget::loadState()
{
  const QString filePath = chooseOpenFile(QStringLiteral("Load State File"), k_StateFileFilter);
  if (!filePath.isEmpty())
  {
    loadState(filePath);
  }
}

// ---- Presets -----------------------------------------------------------------------------------

nlohmann::json VXMainWidget::readPresets(bool& present) const
{
  QtZRSettings settings;
  settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
  present = settings.contains(k_PresetsKey);
  if (!present)
  {
    return nlohmann::json::object();
  }
  const QByteArray text = settings.value(k_PresetsKey).toString().toUtf8();
  nlohmann::json presets =
      nlohmann::json::parse(text.constData(), text.constData() + text.size(), nullptr, false);
  return presets.is_object() ? presets : nlohmann::json::object();
}

void VXMainWidget::writePresets(const nlohmann::json& presets) const
{
  QtZRSettings settings;
  settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
  settings.setValue(k_PresetsKey, QString::fromStdString(presets.dump()));
  settings.sync();
}

void VXMainWidget::addPresetToSettings(const QString& presetName, const nlohmann::json& preset)
{
  bool present = false;
  nlohmann::json presets = readPresets(present);
  presets[presetName.toStdString()] = preset.dump();
  writePresets(presets);
  Q_EMIT presetAdded(presetName);
  Q_EMIT printOutput(
      QStringLiteral("Successfully saved preset %1 to the visualization presets").arg(presetName));
}

nlohmann::json VXMainWidget::getPresetJson(const QString& presetName)
{
  bool present = false;
  const nlohmann::json presets = readPresets(present);
  if (!present)
  {
    Q_EMIT printOutput(
        QStringLiteral("Error reading visualization presets; missing %1 key").arg(k_PresetsKey));
    return {};
  }
  const auto entry = presets.find(presetName.toStdString());
  if (entry == presets.end() || !entry->is_string())
  {
    Q_EMIT printOutput(
        QStringLiteral("Error reading visualization preset %1. Expected json formatted string not found.")
            .arg(presetName));
    return {};
  }
  const std::string& text = entry->get_ref<const std::string&>();
  nlohmann::json preset = nlohmann::json::parse(text, nullptr, false);
  if (text.empty() || preset.is_discarded())
  {
    Q_EMIT printOutput(
        QStringLiteral("Error reading visualization preset %1. No json formatted strings found.")
            .arg(presetName));
    return {};
  }
  return preset;
}

void VXMainWidget::createPreset(const QModelIndex& dataSourceIndex, const QString& presetName,
                                bool saveSplitViewState)
{
  if (m_ActiveView.isNull())
  {
    Q_EMIT printOutput(
        QStringLiteral("Failed to create visualization preset because there is no active render window"));
    return;
  }
  if (m_Ui->infoWidget == nullptr)
  {
    Q_EMIT printOutput(
        QStringLiteral("Failed to create visualization preset because no info widget has been set"));
    return;
  }
  nlohmann::json preset = nlohmann::json::object();
  if (saveSplitViewState)
  {
    nlohmann::json splitState = nlohmann::json::object();
    m_Ui->viewGridWidget->saveState(splitState);
    preset[k_SplitViewStateKey] = splitState;
  }
  {
    ViewIndexesScope scope(m_ViewIndexes);
    numberViews();
    nlohmann::json treeState = nlohmann::json::array();
    m_Ui->infoWidget->saveState(dataSourceIndex, treeState, *m_ViewIndexes);
    preset[k_TreeViewStateKey] = treeState;
  }
  addPresetToSettings(presetName, preset);
}

void VXMainWidget::applyPreset(const QModelIndex& parentIndex, const QString& presetName)
{
  const nlohmann::json preset = getPresetJson(presetName);
  if (!preset.is_object())
  {
    return;
  }
  try
  {
    VXDefaultDataViewsSetAside noDefaultViews;
    if (preset.contains(k_SplitViewStateKey))
    {
      if (!askYesNo(
              QStringLiteral("Loading Preset Possible Loss of Data"),
              QStringLiteral("The existing render window split view state will be cleared while loading "
                             "preset '%1'. This may result in a loss of existing data.\n\n Would you like "
                             "to continue opening the preset?)")
                  .arg(presetName)))
      {
        return;
      }
      clearSplitViewState();
      VXViewWidget* first = nullptr;
      for (VXAbstractViewWidget* view : m_Ui->viewGridWidget->allViews())
      {
        if ((first = qobject_cast<VXViewWidget*>(view)) != nullptr)
        {
          break;
        }
      }
      m_Ui->viewGridWidget->loadState(preset.at(k_SplitViewStateKey), first);
    }
    if (preset.contains(k_TreeViewStateKey))
    {
      ViewIndexesScope scope(m_ViewIndexes);
      numberViews();
      m_Ui->infoWidget->loadState(preset.at(k_TreeViewStateKey), *m_ViewIndexes, parentIndex);
    }
  }
  catch (const std::exception& error)
  {
    Q_EMIT printOutput(QStringLiteral("Error applying visualization preset %1: %2")
                           .arg(presetName, QString::fromUtf8(error.what())));
  }
}

void VXMainWidget::exportPresets(const QString& filePath, const QList<QString>& presetNames)
{
  nlohmann::json output = nlohmann::json::object();
  for (const QString& name : presetNames)
  {
    // A preset that cannot be read has been reported and is left out.
    nlohmann::json preset = getPresetJson(name);
    if (preset.is_object())
    {
      output[name.toStdString()] = std::move(preset);
    }
  }
  const std::string text = output.dump(2);
  if (writeTextFile(filePath, QByteArray::fromStdString(text),
                    QStringLiteral("Failed to open preset export file '%1'"),
                    QStringLiteral("Failed to write out preset export file for '%1'"),
                    QStringLiteral("Failed to commit preset export file '%1'")))
  {
    Q_EMIT printOutput(QStringLiteral("Presets successfully written to file at '%1'").arg(filePath));
  }
}

void VXMainWidget::importPresets(const QString& filePath)
{
  bool present = false;
  nlohmann::json presets = readPresets(present);
  QFile file(filePath);
  if (!file.open(QIODevice::ReadOnly))
  {
    Q_EMIT printOutput(QStringLiteral("Error opening visualization preset file %1").arg(filePath));
    return;
  }
  const QByteArray text = file.readAll();
  nlohmann::json imported;
  try
  {
    imported = nlohmann::json::parse(text.constData(), text.constData() + text.size());
  }
  catch (const nlohmann::json::exception& error)
  {
    Q_EMIT printOutput(
        QStringLiteral("Error importing presets from '%1': malformed JSON (%2). The file may be "
                       "corrupt or not a valid preset file.")
            .arg(filePath, QString::fromUtf8(error.what())));
    return;
  }
  if (!imported.is_object())
  {
    Q_EMIT printOutput(
        QStringLiteral("Error importing presets from '%1': malformed JSON (%2). The file may be "
                       "corrupt or not a valid preset file.")
            .arg(filePath, QStringLiteral("expected an object of preset names")));
    return;
  }
  for (auto it = imported.begin(); it != imported.end(); ++it)
  {
    // A preset that is no object cannot be applied: it is left out and named.
    if (!it.value().is_object())
    {
      Q_EMIT printOutput(QStringLiteral("Skipped preset %1 in '%2': it is not a visualization preset")
                             .arg(QString::fromStdString(it.key()), filePath));
      continue;
    }
    presets[it.key()] = it.value().dump();
  }
  writePresets(presets);
  Q_EMIT printOutput(QStringLiteral("Successfully imported preset(s) from file %1").arg(filePath));
}

// ---- Defaults ----------------------------------------------------------------------------------

void VXMainWidget::writeSettings()
{
  switch (askSaveDefaults())
  {
  case DefaultsChoice::Save:
  {
    nlohmann::json gridState = nlohmann::json::object();
    m_Ui->viewGridWidget->saveState(gridState);
    QtZRSettings settings;
    openRenderWindowSettings(settings);
    settings.setValue(ZR::SettingsKeys::k_SplitViewState, QString::fromStdString(gridState.dump()));
    settings.setValue(ZR::SettingsKeys::k_InfoSplitterState, m_Ui->splitter->saveState());
    settings.sync();
    break;
  }
  case DefaultsChoice::Reset:
  {
    QtZRSettings settings;
    openRenderWindowSettings(settings);
    settings.clearGroup();
    settings.remove(ZR::SettingsKeys::k_InfoSplitterState);
    settings.sync();
    break;
  }
  case DefaultsChoice::DontSave:
    break;
  }
}

void VXMainWidget::readSettings()
{
  QtZRSettings settings;
  openRenderWindowSettings(settings);
  if (!settings.contains(ZR::SettingsKeys::k_SplitViewState))
  {
    return;
  }
  try
  {
    const QByteArray text = settings.value(ZR::SettingsKeys::k_SplitViewState).toString().toUtf8();
    const nlohmann::json gridState = nlohmann::json::parse(text.constData(), text.constData() + text.size());
    VXViewWidget* first = nullptr;
    for (VXAbstractViewWidget* view : m_Ui->viewGridWidget->allViews())
    {
      if ((first = qobject_cast<VXViewWidget*>(view)) != nullptr)
      {
        break;
      }
    }
    m_Ui->viewGridWidget->loadState(gridState, first);
    if (settings.contains(ZR::SettingsKeys::k_InfoSplitterState))
    {
      m_Ui->splitter->restoreState(settings.value(ZR::SettingsKeys::k_InfoSplitterState).toByteArray());
    }
  }
  catch (const std::exception& error)
  {
    // A bad stored layout must never stop the start: the default layout stands.
    qDebug().noquote() << k_CorruptSettingsMessage << QString::fromUtf8(error.what());
  }
  catch (...)
  {
    qDebug().noquote() << k_CorruptSettingsMessage << QStringLiteral("unknown error");
  }
}

// ---- Events ------------------------------------------------------------------------------------

void VXMainWidget::showEvent(QShowEvent* event)
{
  QWidget::showEvent(event);
  const int width = m_Ui->splitter->width();
  if (width > 0)
  {
    m_Ui->splitter->setSizes({(3 * width) >> 2, width >> 2});
  }
}

void VXMainWidget::dragEnterEvent(QDragEnterEvent* event)
{
  if (event->mimeData()->hasFormat(k_UriListMimeType))
  {
    event->acceptProposedAction();
  }
}

void VXMainWidget::dropEvent(QDropEvent* event)
{
  const QList<QUrl> urls = event->mimeData()->urls();
  for (const QUrl& url : urls)
  {
    const QString filePath = url.toLocalFile();
    if (filePath.isEmpty())
    {
      continue;
    }
    // The host decides what a state file means for its own document.
    if (QFileInfo(filePath).suffix().compare(ZRVtkLib::io::STATE_FILE_EXT, Qt::CaseInsensitive) == 0)
    {
      Q_EMIT loadStateRequested(filePath);
    }
    else
    {
      m_Pipeline->importFile(filePath);
    }
  }
  event->acceptProposedAction();
}

// ---- Questions and dialogs ---------------------------------------------------------------------

bool VXMainWidget::askYesNo(const QString& title, const QString& text)
{
  return QMessageBox::question(this, title, text, QMessageBox::Yes | QMessageBox::No, QMessageBox::No) ==
         QMessageBox::Yes;
}

QString VXMainWidget::chooseSaveFile(const QString& caption, const QString& filter)
{
  return QFileDialog::getSaveFileName(this, caption, QString(), filter);
}

QString VXMainWidget::chooseOpenFile(const QString& caption, const QString& filter)
{
  return QFileDialog::getOpenFileName(this, caption, QString(), filter);
}

VXMainWidget::DefaultsChoice VXMainWidget::askSaveDefaults()
{
  QMessageBox box(this);
  box.setWindowTitle(QStringLiteral("Save Default Render Window Settings"));
  box.setText(QStringLiteral("Do you want to save the current render window state as the default?"));
  QPushButton* save = box.addButton(QStringLiteral("Save"), QMessageBox::YesRole);
  box.addButton(QStringLiteral("Don't Save"), QMessageBox::RejectRole);
  QPushButton* reset = box.addButton(QStringLiteral("Reset to Default"), QMessageBox::ResetRole);
  box.setDefaultButton(save);
  box.exec();
  if (box.clickedButton() == save)
  {
    return DefaultsChoice::Save;
  }
  if (box.clickedButton() == reset)
  {
    return DefaultsChoice::Reset;
  }
  return DefaultsChoice::DontSave;
}

void VXMainWidget::showPopup(const QString& title, const QString& message)
{
  QMessageBox::information(this, title, message);
}

bool VXMainWidget::askScreenshotOptions(bool& transparent, QColor& color)
{
  VXScreenshotOptionsDialog dialog(this);
  dialog.setDefaultColor(color);
  if (dialog.exec() != QDialog::Accepted)
  {
    return false;
  }
  transparent = dialog.useTransparentBackground();
  color = dialog.getBackgroundColor();
  return true;
}

QString VXMainWidget::chooseScreenshotFile()
{
  QString selectedFilter = QStringLiteral("PNG Image (*.png)");
  return QFileDialog::getSaveFileName(
      this, QStringLiteral("Save Screenshot of All Views"), QDir::currentPath(),
      QStringLiteral("PNG Image (*.png);;JPEG Image (*.jpg *.jpeg);;Bitmap Image (*.bmp)"), &selectedFilter);
}
