#include "main/VXInfoWidget.h"

#include "annotations/VXGlobalSource.h"
#include "ui_VXInfoWidget.h"
#include <vtkAlgorithm.h>
#include <vtkAlgorithmOutput.h>
#include <vtkImageData.h>

#include "data_views/VXRepresentationPimpl.h"
#include "filters/VXFilter.h"
#include "filters/VXFilterFactory.h"
#include "main/VXTreeStateLoader.h"
#include "pipeline/FileToVXBridge.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXCoreObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXDatasetInfoWidget.h"
#include "pipeline/VXDefaultDataViewsSetAside.h"
#include "pipeline/VXInfoWidgetProxyModel.h"
#include "pipeline/VXPipeline.h"
#include "pipeline/VXPipelineModel.h"
#include "pipeline/VXPipelineModelItemDelegate.h"
#include "pipeline/VXRenderTreeView.h"
#include "platform/QtZRSettings.h"
#include "platform/ZRStyle.h"
#include "views/VXAbstractViewWidget.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QShortcut>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

#include <array>

namespace
{
constexpr const char* k_ItemTypeKey = "item_type";
constexpr const char* k_ItemDataKey = "item_data";
constexpr const char* k_ItemChildrenKey = "item_children";
const QString k_StateFileSuffix = QStringLiteral("ksxstate");

// Names of the stored visualization presets; the store keeps one JSON text per preset name.
QStringList storedPresetNames()
{
  QtZRSettings settings;
  settings.beginGroup(QStringLiteral("VisualizationSettings"));
  const QString key = QStringLiteral("VisualizationPresets");
  if (!settings.contains(key))
  {
    return {};
  }
  const QVariant stored = settings.value(key);
  if (stored.canConvert<QVariantMap>() && !stored.toMap().isEmpty())
  {
    return stored.toMap().keys();
  }
  const nlohmann::json presets = nlohmann::json::parse(stored.toString().toStdString(), nullptr, false);
  QStringList names;
  if (presets.is_object())
  {
    for (auto it = presets.cbegin(); it != presets.cend(); ++it)
    {
      names.append(QString::fromStdString(it.key()));
    }
  }
  return names;
}
} // namespace

const QList<VXRepresentation::Type> VXInfoWidget::k_AddableRepresentationTypes = {
    VXRepresentation::Outline, VXRepresentation::Points, VXRepresentation::Wireframe,
    VXRepresentation::Surface};

VXInfoWidget::VXInfoWidget(QWidget* parent)
    : QWidget(parent)
    , m_Ui(std::make_unique<Ui::VXInfoWidget>())
{
  buildLayout();
  updateToolbarState();
}

VXInfoWidget::~VXInfoWidget()
{
  // The panels belong to their objects: hand them back before this widget takes them down.
  swapPanel(m_SettingsLayout, m_CurrentSettingsWidget, nullptr);
  swapPanel(m_DatasetInfoLayout, m_CurrentDatasetInfoWidget, nullptr);
}

void VXInfoWidget::buildLayout()
{
  m_Ui->setupUi(this);
  m_SearchField = m_Ui->pipelineSearchField;
  m_AddViewButton = m_Ui->addDataViewButton;
  m_AddFilterButton = m_Ui->addFilterButton;
  m_RemoveButton = m_Ui->removeItemButton;
  m_TreeView = m_Ui->pipelineTreeView;
  m_SettingsArea = m_Ui->itemSettingsArea;
  m_SettingsLayout = m_Ui->settingsLayout;
  m_DatasetInfoArea = m_Ui->datasetInfoArea;
  m_DatasetInfoLayout = m_Ui->datasetInfoLayout;

  m_AddViewButton->setIcon(ZRStyle::generateThemeIconFromName(QStringLiteral("Visualization")));
  auto* addMenu = new QMenu(m_AddViewButton);
  for (VXRepresentation::Type type : k_AddableRepresentationTypes)
  {
    QAction* action = addMenu->addAction(VXRepresentation::k_RepresentationTypeToString.value(type));
    connect(action, &QAction::triggered, this, [this, type]() { addRepresentationToSelection(type); });
  }
  m_AddViewButton->setMenu(addMenu);
  m_AddFilterButton->setIcon(ZRStyle::generateThemeIconFromName(QStringLiteral("VXFClip")));
  auto* filterMenu = new QMenu(m_AddFilterButton);
  for (const QString& filterType : VXFilterFactory::TypeNames())
  {
    QAction* action = filterMenu->addAction(VXFilterFactory::HumanName(filterType));
    connect(action, &QAction::triggered, this, [this, filterType]() { addFilterToSelection(filterType); });
  }
  m_AddFilterButton->setMenu(filterMenu);
  m_RemoveButton->setIcon(ZRStyle::generateThemeIconFromName(QStringLiteral("Close")));
  connect(m_RemoveButton, &QToolButton::clicked, this, &VXInfoWidget::removeSelectedItem);

  m_ProxyModel = new VXInfoWidgetProxyModel(this);
  m_TreeView->setModel(m_ProxyModel);
  m_TreeView->setItemDelegate(
      new VXPipelineModelItemDelegate(this, VXPipelineModel::VisibilityColumn, m_TreeView));
  connect(m_SearchField, &QLineEdit::textChanged, this,
          [this](const QString& text)
          {
            m_ProxyModel->setSearchText(text);
            m_TreeView->expandAll();
          });
  connect(m_TreeView, &QWidget::customContextMenuRequested, this, &VXInfoWidget::showContextMenu);
  auto* removeShortcut =
      new QShortcut(QKeySequence::Delete, m_TreeView, nullptr, nullptr, Qt::WidgetShortcut);
  connect(removeShortcut, &QShortcut::activated, this, &VXInfoWidget::removeSelectedItem);
  connect(m_TreeView->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &VXInfoWidget::onSelectionChanged);

  // The tree gets the most room, the settings next, the dataset information the least.
  m_Ui->infoSplitter->setStretchFactor(0, 2);
  m_Ui->infoSplitter->setStretchFactor(1, 3);
  m_Ui->infoSplitter->setStretchFactor(2, 1);
}

void VXInfoWidget::setPipelineModel(VXPipelineModel* model)
{
  if (m_Model == model)
  {
    return;
  }
  if (m_Model)
  {
    disconnect(m_Model, nullptr, this, nullptr);
  }
  m_Model = model;
  m_ProxyModel->setSourceModel(model);
  if (model == nullptr)
  {
    return;
  }
  connect(model, &QAbstractItemModel::rowsInserted, this,
          [this](const QModelIndex& parent)
          {
            m_TreeView->expand(m_ProxyModel->mapFromSource(parent));
            updateToolbarState();
          });
  connect(model, &QAbstractItemModel::rowsRemoved, this, &VXInfoWidget::updateToolbarState);
  connect(model, &VXPipelineModel::selectIndexRequest, this, &VXInfoWidget::selectIndex);
}

VXPipelineModel* VXInfoWidget::pipelineModel() const
{
  return m_Model;
}

VXAbstractViewWidget* VXInfoWidget::activeViewWidget() const
{
  if (m_ActiveView)
  {
    return m_ActiveView;
  }
  return m_Model && m_Model->pipeline() != nullptr ? m_Model->pipeline()->activeViewWidget() : nullptr;
}

void VXInfoWidget::onActiveViewChanged(VXAbstractViewWidget* view)
{
  m_ActiveView = view;
  if (m_Model)
  {
    m_Model->refreshVisibility();
  }
  showItemPanels(selectedIndex());
}

QModelIndex VXInfoWidget::selectedIndex() const
{
  const QModelIndex current = m_TreeView->selectionModel()->currentIndex();
  return current.isValid() ? m_ProxyModel->mapToSource(current).siblingAtColumn(0) : QModelIndex();
}

void VXInfoWidget::selectIndex(const QModelIndex& index)
{
  const QModelIndex proxyIndex =
      m_ProxyModel->mapFromSource(index.siblingAtColumn(VXPipelineModel::NameColumn));
  m_TreeView->selectionModel()->setCurrentIndex(proxyIndex, QItemSelectionModel::ClearAndSelect |
                                                                QItemSelectionModel::Rows);
}

void VXInfoWidget::updateToolbarState()
{
  const QModelIndex index = selectedIndex();
  m_AddViewButton->setEnabled(m_Model && m_Model->canAddRepresentation(index));
  m_AddFilterButton->setEnabled(m_Model && m_Model->canAddFilter(index));
  m_RemoveButton->setEnabled(m_Model && index.isValid());
}

void VXInfoWidget::onSelectionChanged()
{
  Q_EMIT clearHighlightsRequest();
  updateToolbarState();
  showItemPanels(selectedIndex());
}

void VXInfoWidget::swapPanel(QVBoxLayout* layout, QPointer<QWidget>& shown, QWidget* next)
{
  if (next == shown)
  {
    return;
  }
  if (shown)
  {
    layout->removeWidget(shown);
    shown->hide();
    shown->setParent(nullptr); // its object keeps it
  }
  shown = next;
  if (next != nullptr)
  {
    layout->addWidget(next);
    next->show();
  }
}

void VXInfoWidget::showItemPanels(const QModelIndex& index)
{
  swapPanel(m_SettingsLayout, m_CurrentSettingsWidget, m_Model ? m_Model->itemWidget(index) : nullptr);

  QWidget* datasetInfo = nullptr;
  QSharedPointer<VXDatasetInfoWidget> hold;
  if (VXDataSource* source = m_Model ? m_Model->getDataSource(index) : nullptr)
  {
    datasetInfo = source->getDataSetInfoWidget();
  }
  else if (VXRepresentation* representation = m_Model ? m_Model->getRepresentation(index) : nullptr)
  {
    hold = representation->getDataSetInfoWidget();
    datasetInfo = hold.data();
  }
  swapPanel(m_DatasetInfoLayout, m_CurrentDatasetInfoWidget, datasetInfo);
  m_DatasetInfoHold = hold;
}

void VXInfoWidget::addRepresentationToSelection(VXRepresentation::Type type)
{
  const QModelIndex index = selectedIndex();
  if (!m_Model || !m_Model->canAddRepresentation(index))
  {
    Q_EMIT sendOutputMessage(QStringLiteral(
        "Select a data source or visual filter in the pipeline tree to add a data view to it"));
    return;
  }
  m_Model->addRepresentation(index, type);
}

void VXInfoWidget::removeSelectedItem()
{
  const QModelIndex index = selectedIndex();
  if (m_Model && index.isValid())
  {
    m_Model->removeItem(index);
  }
}

void VXInfoWidget::renameSelectedItem()
{
  const QModelIndex current = m_TreeView->selectionModel()->currentIndex();
  if (current.isValid())
  {
    m_TreeView->edit(current.siblingAtColumn(VXPipelineModel::NameColumn));
  }
}

void VXInfoWidget::reloadSelectedItem()
{
  if (auto* fileBridge =
          qobject_cast<FileToVXBridge*>(m_Model ? m_Model->getPipelineObject(selectedIndex()) : nullptr))
  {
    fileBridge->reload();
  }
}

void VXInfoWidget::copySelectedSettings()
{
  if (VXCoreObject* coreObject = m_Model ? m_Model->getCoreObject(selectedIndex()) : nullptr)
  {
    coreObject->copyActiveSettings();
  }
}

void VXInfoWidget::pasteSelectedSettings()
{
  if (VXCoreObject* coreObject = m_Model ? m_Model->getCoreObject(selectedIndex()) : nullptr)
  {
    coreObject->pasteToActiveSettings();
  }
}

void VXInfoWidget::fillPresetMenu(QMenu* menu, const QModelIndex& index)
{
  QAction* create = menu->addAction(QStringLiteral("Create Visualization Preset..."));
  connect(create, &QAction::triggered, this,
          [this, index = QPersistentModelIndex(index)]()
          {
            bool accepted = false;
            const QString name =
                QInputDialog::getText(this, QStringLiteral("Create Visualization Preset"),
                                      QStringLiteral("Preset name:"), QLineEdit::Normal, QString(), &accepted)
                    .trimmed();
            if (accepted && !name.isEmpty() && index.isValid())
            {
              Q_EMIT createPresetRequest(index, name, false);
            }
          });
  const QStringList presets = storedPresetNames();
  QMenu* apply = menu->addMenu(QStringLiteral("Apply Visualization Preset"));
  apply->setEnabled(!presets.isEmpty());
  for (const QString& preset : presets)
  {
    connect(apply->addAction(preset), &QAction::triggered, this,
            [this, preset, index = QPersistentModelIndex(index)]()
            {
              if (index.isValid())
              {
                Q_EMIT applyPresetRequest(index, preset);
              }
            });
  }
}

void VXInfoWidget::addFilterToSelection(const QString& filterType)
{
  const QModelIndex index = selectedIndex();
  if (!m_Model || !m_Model->canAddFilter(index))
  {
    Q_EMIT sendOutputMessage(QStringLiteral(
        "Select a data source or visual filter in the pipeline tree to add a visual filter to it"));
    return;
  }
  VXFilter* filter = VXFilterFactory::Create(filterType);
  if (filter == nullptr)
  {
    return;
  }
  if (!m_Model->addFilter(index, filter))
  {
    delete filter;
    Q_EMIT sendOutputMessage(
        QStringLiteral("Cannot add the visual filter because no render window is active"));
    return;
  }
  // The new filter's settings show at once, with its Apply button.
  selectIndex(m_Model->filterIndex(filter));
}

void VXInfoWidget::showContextMenu(const QPoint& position)
{
  QMenu menu(this);
  const QModelIndex proxyIndex = m_TreeView->indexAt(position);
  const QModelIndex index = proxyIndex.isValid() ? m_ProxyModel->mapToSource(proxyIndex) : QModelIndex();
  if (index.isValid() && m_Model)
  {
    selectIndex(index);
    if (m_Model->canAddRepresentation(index))
    {
      QMenu* add = menu.addMenu(QStringLiteral("Add Data View"));
      for (VXRepresentation::Type type : k_AddableRepresentationTypes)
      {
        connect(add->addAction(VXRepresentation::k_RepresentationTypeToString.value(type)),
                &QAction::triggered, this, [this, type]() { addRepresentationToSelection(type); });
      }
      addImageDataViews(add, index);
      menu.addSeparator();
    }
    if (m_Model->canAddFilter(index))
    {
      QMenu* addFilter = menu.addMenu(QStringLiteral("Add Visual Filter"));
      for (const QString& filterType : VXFilterFactory::TypeNames())
      {
        connect(addFilter->addAction(VXFilterFactory::HumanName(filterType)), &QAction::triggered, this,
                [this, filterType]() { addFilterToSelection(filterType); });
      }
      menu.addSeparator();
    }
    connect(menu.addAction(QStringLiteral("Rename")), &QAction::triggered, this,
            &VXInfoWidget::renameSelectedItem);
    connect(menu.addAction(QStringLiteral("Remove")), &QAction::triggered, this,
            &VXInfoWidget::removeSelectedItem);
    if (m_Model->canReload(index))
    {
      connect(menu.addAction(QStringLiteral("Reload")), &QAction::triggered, this,
              &VXInfoWidget::reloadSelectedItem);
    }
    if (m_Model->getCoreObject(index) != nullptr)
    {
      const QString what =
          m_Model->isRepresentation(index) ? QStringLiteral("Data View") : QStringLiteral("Coloring");
      menu.addSeparator();
      connect(menu.addAction(QStringLiteral("Copy %1 Settings").arg(what)), &QAction::triggered, this,
              &VXInfoWidget::copySelectedSettings);
      connect(menu.addAction(QStringLiteral("Paste %1 Settings").arg(what)), &QAction::triggered, this,
              &VXInfoWidget::pasteSelectedSettings);
    }
    if (m_Model->isDataSource(index))
    {
      menu.addSeparator();
      fillPresetMenu(&menu, index);
    }
    VXRepresentation* representation = m_Model->getRepresentation(index);
    if (representation != nullptr && representation->getType() == VXRepresentation::ImageSlice)
    {
      VXRepresentationPimpl* view = representation->activeImplementation();
      const bool linked = view != nullptr && m_Model->linkedSliceViews().contains(view);
      menu.addSeparator();
      QAction* link =
          menu.addAction(linked ? QStringLiteral("Unlink Slices") : QStringLiteral("Link Slices"));
      link->setEnabled(view != nullptr);
      connect(link, &QAction::triggered, this,
              [this, view = QPointer<VXRepresentationPimpl>(view)]()
              {
                if (view && m_Model)
                {
                  m_Model->linkImageSliceSlices(view);
                }
              });
    }
  }
  else
  {
    connect(menu.addAction(QStringLiteral("Load File")), &QAction::triggered, this,
            [this]()
            {
              const QString path = QFileDialog::getOpenFileName(this, QStringLiteral("Load File"));
              if (!path.isEmpty())
              {
                Q_EMIT importFileRequest(path);
              }
            });
    connect(menu.addAction(QStringLiteral("Load State")), &QAction::triggered, this,
            [this]()
            {
              const QString path =
                  QFileDialog::getOpenFileName(this, QStringLiteral("Load State File"), QString(),
                                               QStringLiteral("State File (*.ksxstate)"));
              if (!path.isEmpty())
              {
                Q_EMIT loadStateFileRequest(path);
              }
            });
    menu.addSeparator();
    connect(menu.addAction(QStringLiteral("Import Visualization Presets...")), &QAction::triggered, this,
            [this]()
            {
              const QString path =
                  QFileDialog::getOpenFileName(this, QStringLiteral("Import Visualization Presets"),
                                               QString(), QStringLiteral("JSON (*.json)"));
              if (!path.isEmpty())
              {
                Q_EMIT importPresets(path);
              }
            });
    QAction* exportAction = menu.addAction(QStringLiteral("Export Visualization Presets..."));
    const QStringList presets = storedPresetNames();
    exportAction->setEnabled(!presets.isEmpty());
    connect(exportAction, &QAction::triggered, this,
            [this, presets]()
            {
              const QString path =
                  QFileDialog::getSaveFileName(this, QStringLiteral("Export Visualization Presets"),
                                               QString(), QStringLiteral("JSON (*.json)"));
              if (!path.isEmpty())
              {
                Q_EMIT exportPresets(path, presets);
              }
            });
  }
  menu.exec(m_TreeView->viewport()->mapToGlobal(position));
}

void VXInfoWidget::dragEnterEvent(QDragEnterEvent* event)
{
  if (event->mimeData()->hasUrls())
  {
    event->acceptProposedAction();
  }
}

void VXInfoWidget::dropEvent(QDropEvent* event)
{
  for (const QUrl& url : event->mimeData()->urls())
  {
    const QString path = url.toLocalFile();
    if (path.isEmpty())
    {
      continue;
    }
    if (QFileInfo(path).suffix().toLower() == k_StateFileSuffix)
    {
      Q_EMIT loadStateFileRequest(path);
    }
    else
    {
      Q_EMIT importFileRequest(path);
    }
  }
  event->acceptProposedAction();
}

void VXInfoWidget::saveState(const QModelIndex& index, nlohmann::json& output,
                             const QMap<VXAbstractViewWidget*, int>& viewIndexes)
{
  output = nlohmann::json::array();
  if (!m_Model)
  {
    return;
  }
  const QModelIndex parent = index.model() == m_ProxyModel ? m_ProxyModel->mapToSource(index) : index;
  const QModelIndex parentRow = parent.isValid() ? parent.siblingAtColumn(0) : parent;
  for (int row = 0; row < m_Model->rowCount(parentRow); ++row)
  {
    const QModelIndex child = m_Model->index(row, 0, parentRow);
    nlohmann::json record = nlohmann::json::object();
    nlohmann::json itemData = nlohmann::json::object();
    if (VXGlobalSource* globalSource = m_Model->getGlobalSource(child))
    {
      record[k_ItemTypeKey] = globalSource->typeName().toStdString();
      globalSource->write(itemData, viewIndexes);
    }
    else if (VXBridgeObject* bridge = m_Model->getPipelineObject(child))
    {
      record[k_ItemTypeKey] = bridge->typeName().toStdString();
      bridge->write(itemData);
    }
    else if (VXCoreObject* coreObject = m_Model->getCoreObject(child))
    {
      record[k_ItemTypeKey] = coreObject->typeName().toStdString();
      coreObject->write(itemData, viewIndexes);
    }
    else
    {
      continue;
    }
    record[k_ItemDataKey] = itemData;
    if (m_Model->rowCount(child) >= 1)
    {
      saveState(child, record[k_ItemChildrenKey], viewIndexes);
    }
    output.push_back(record);
  }
}

void VXInfoWidget::loadState(const nlohmann::json& input, const QMap<VXAbstractViewWidget*, int>& viewIndexes,
                             const QModelIndex& parent)
{
  if (!m_Model)
  {
    Q_EMIT sendOutputMessage(
        QStringLiteral("Error reading state file; the pipeline tree has no model to load into"));
    return;
  }
  const QModelIndex source = parent.model() == m_ProxyModel ? m_ProxyModel->mapToSource(parent) : parent;
  VXDefaultDataViewsSetAside noDefaultViews;
  VXTreeStateLoader loader(m_Model, viewIndexes,
                           [this](const QString& message) { Q_EMIT sendOutputMessage(message); });
  loader.load(input, source.isValid() ? source.siblingAtColumn(0) : source);
  m_Model->linkLoadedRepresentations();
  m_TreeView->expandAll();
}

void VXInfoWidget::addImageDataViews(QMenu* menu, const QModelIndex& index)
{
  // Images can also be shown slice by slice.
  VXCoreObject* object = m_Model ? m_Model->getCoreObject(index) : nullptr;
  vtkAlgorithmOutput* port = object != nullptr ? object->outputPort() : nullptr;
  if (port == nullptr || port->GetProducer() == nullptr ||
      vtkImageData::SafeDownCast(port->GetProducer()->GetOutputDataObject(port->GetIndex())) == nullptr ||
      !VXRepresentation::IsRegistered(VXRepresentation::ImageSlice))
  {
    return;
  }
  connect(menu->addAction(VXRepresentation::k_RepresentationTypeToString.value(VXRepresentation::ImageSlice)),
          &QAction::triggered, this,
          [this]() { addRepresentationToSelection(VXRepresentation::ImageSlice); });
}
