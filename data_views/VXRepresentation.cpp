#include "data_views/VXRepresentation.h"

#include "data_views/VXDataSetInfoWidgetUpdateCallback.h"
#include "data_views/VXRepresentationPimpl.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXDatasetInfoWidget.h"
#include "pipeline/VXPipeline.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXVisualizationWidget.h"

#include <vtkAlgorithm.h>
#include <vtkAlgorithmOutput.h>
#include <vtkCommand.h>
#include <vtkDataSet.h>
#include <vtkSmartPointer.h>
#include <vtkWeakPointer.h>

#include <nlohmann/json.hpp>

#include <map>

namespace
{
std::map<VXRepresentation::Type, VXRepresentation::Factory>& factories()
{
  static std::map<VXRepresentation::Type, VXRepresentation::Factory> s_Factories;
  return s_Factories;
}
} // namespace

const QMap<QString, VXRepresentation::Type> VXRepresentation::k_RepresentationStringToType = {
    {QStringLiteral("None"), None},
    {QStringLiteral("Outline"), Outline},
    {QStringLiteral("Points"), Points},
    {QStringLiteral("Wireframe"), Wireframe},
    {QStringLiteral("Surface"), Surface},
    {QStringLiteral("Volume"), Volume},
    {QStringLiteral("2D Image/Slice"), ImageSlice}};

const QMap<VXRepresentation::Type, QString> VXRepresentation::k_RepresentationTypeToString = {
    {None, QStringLiteral("None")},
    {Outline, QStringLiteral("Outline")},
    {Points, QStringLiteral("Points")},
    {Wireframe, QStringLiteral("Wireframe")},
    {Surface, QStringLiteral("Surface")},
    {Volume, QStringLiteral("Volume")},
    {ImageSlice, QStringLiteral("2D Image/Slice")}};

void VXRepresentation::RegisterType(Type type, Factory factory)
{
  factories()[type] = std::move(factory);
}

VXRepresentation* VXRepresentation::Create(Type type, QObject* parent)
{
  const auto it = factories().find(type);
  return it != factories().end() && it->second ? it->second(parent) : nullptr;
}

bool VXRepresentation::IsRegistered(Type type)
{
  return factories().count(type) > 0;
}

struct VXRepresentation::InputProducerObserver
{
  vtkWeakPointer<vtkAlgorithm> m_Producer;
  vtkSmartPointer<VXDataSetInfoWidgetUpdateCallback<VXRepresentation>> m_Callback;
  unsigned long m_Tag = 0;

  void detach()
  {
    if (m_Producer != nullptr && m_Tag != 0)
    {
      m_Producer->RemoveObserver(m_Tag);
    }
    m_Producer = nullptr;
    m_Tag = 0;
  }
};

VXRepresentation::VXRepresentation(QObject* parent)
    : VXCoreObject(parent)
    , m_InputProducerObserver(std::make_unique<InputProducerObserver>())
{
}

VXRepresentation::~VXRepresentation()
{
  m_InputProducerObserver->detach();
  if (m_InputProducerObserver->m_Callback != nullptr)
  {
    m_InputProducerObserver->m_Callback->setView(nullptr);
  }
  finalize();
}

void VXRepresentation::observeInputProducer(vtkAlgorithmOutput* input)
{
  vtkAlgorithm* producer = input != nullptr ? input->GetProducer() : nullptr;
  InputProducerObserver& observer = *m_InputProducerObserver;
  if (producer == observer.m_Producer.Get())
  {
    return;
  }
  observer.detach();
  if (producer == nullptr)
  {
    return;
  }
  if (observer.m_Callback == nullptr)
  {
    observer.m_Callback = vtkSmartPointer<VXDataSetInfoWidgetUpdateCallback<VXRepresentation>>::New();
    observer.m_Callback->setView(this);
  }
  observer.m_Producer = producer;
  observer.m_Tag = producer->AddObserver(vtkCommand::EndEvent, observer.m_Callback);
}

vtkDataSet* VXRepresentation::inputDataSet() const
{
  for (VXRepresentationPimpl* implementation : getDataViewSplits())
  {
    if (implementation == nullptr)
    {
      continue;
    }
    vtkAlgorithmOutput* input = implementation->inputPort();
    if (input == nullptr || input->GetProducer() == nullptr)
    {
      return nullptr;
    }
    return vtkDataSet::SafeDownCast(input->GetProducer()->GetOutputDataObject(input->GetIndex()));
  }
  return nullptr;
}

void VXRepresentation::initializeDataSetInfoWidget()
{
  if (m_DatasetInfoWidget.isNull())
  {
    m_DatasetInfoWidget = QSharedPointer<VXDatasetInfoWidget>::create();
    connect(this, &VXCoreObject::pathChanged, m_DatasetInfoWidget.data(), &VXDatasetInfoWidget::setItemPath);
  }
  m_DatasetInfoWidget->setItemPath(pathName());
  m_DatasetInfoWidget->setDataSet(inputDataSet());
}

void VXRepresentation::updateDataSetInfoWidget()
{
  if (m_DatasetInfoWidget.isNull())
  {
    return;
  }
  m_DatasetInfoWidget->setItemPath(pathName());
  m_DatasetInfoWidget->setDataSet(inputDataSet());
  m_DatasetInfoWidget->updateInfo();
}

void VXRepresentation::showDataSetInfoWidget()
{
  getDataSetInfoWidget()->show();
}

QSharedPointer<VXDatasetInfoWidget> VXRepresentation::getDataSetInfoWidget()
{
  initializeDataSetInfoWidget();
  updateDataSetInfoWidget();
  return m_DatasetInfoWidget;
}

void VXRepresentation::initialize(vtkAlgorithmOutput* inputPort)
{
  for (VXRepresentationPimpl* implementation : getDataViewSplits())
  {
    if (implementation != nullptr)
    {
      implementation->initialize(inputPort);
    }
  }
}

bool VXRepresentation::addViewWidgetSplit(VXAbstractViewWidget* source, VXAbstractViewWidget* split,
                                          vtkAlgorithmOutput* port, bool visible)
{
  if (split == nullptr)
  {
    return false;
  }
  VXRepresentationPimpl* implementation = m_Implementations.value(split);
  if (m_Implementations.contains(split) && implementation != nullptr)
  {
    if (!isOwnImplementation(implementation))
    {
      return false;
    }
    visible = implementation->isVisible();
  }
  else
  {
    if (!m_Implementations.isEmpty() && port != nullptr)
    {
      return false; // only the first window's implementation is given a port
    }
    implementation = createImplementation(split);
    implementation->readDefaultSettings();
    if (!m_Implementations.isEmpty())
    {
      VXRepresentationPimpl* settingsSource = m_Implementations.first();
      if (source != nullptr && m_Implementations.value(source) != nullptr)
      {
        settingsSource = m_Implementations.value(source);
      }
      implementation->copySettings(settingsSource);
    }
    m_Implementations.insert(split, implementation);
    addViewWidget(split);
    connect(split, &VXAbstractViewWidget::viewWidgetCreated, this, &VXRepresentation::addViewWidgetCopy,
            Qt::UniqueConnection);
  }
  vtkAlgorithmOutput* input = nullptr;
  for (VXRepresentationPimpl* existing : getDataViewSplits())
  {
    if (existing != nullptr && existing != implementation && existing->inputPort() != nullptr)
    {
      input = existing->inputPort();
      break;
    }
  }
  if (input == nullptr)
  {
    input = port != nullptr ? port : (m_ParentSource ? m_ParentSource->outputPort() : nullptr);
  }
  if (input == nullptr)
  {
    return false;
  }
  implementation->initialize(input);
  observeInputProducer(input);
  implementation->setVisibility(visible);
  m_ViewMap[split] = visible;
  updateDataSetInfoWidget();
  return true;
}

void VXRepresentation::addViewWidgetCopy(VXAbstractViewWidget* sourceViewWidget,
                                         VXAbstractViewWidget* splitViewWidget)
{
  // A split window starts with every view made but hidden.
  addViewWidgetSplit(sourceViewWidget, splitViewWidget, nullptr, false);
}

void VXRepresentation::initializeViewWidgetSplits(vtkAlgorithmOutput* port, bool visible)
{
  for (VXAbstractViewWidget* view : m_Implementations.keys())
  {
    addViewWidgetSplit(nullptr, view, port, visible);
  }
}

VXRepresentationPimpl* VXRepresentation::implementation(VXAbstractViewWidget* view) const
{
  return m_Implementations.value(view);
}

VXRepresentationPimpl* VXRepresentation::activeImplementation() const
{
  return implementation(activeView());
}

std::vector<VXRepresentationPimpl*> VXRepresentation::getDataViewSplits() const
{
  std::vector<VXRepresentationPimpl*> splits;
  for (const QPointer<VXRepresentationPimpl>& implementation : m_Implementations)
  {
    splits.push_back(implementation.data());
  }
  return splits;
}

void VXRepresentation::removeModuleInstance(VXAbstractViewWidget* view)
{
  if (VXRepresentationPimpl* implementation = m_Implementations.value(view))
  {
    implementation->finalize();
  }
  m_Implementations.remove(view);
  m_ViewMap.remove(view);
}

bool VXRepresentation::finalize()
{
  bool result = VXCoreObject::finalize();
  for (VXRepresentationPimpl* implementation : getDataViewSplits())
  {
    if (!result)
    {
      break;
    }
    result = implementation != nullptr && implementation->finalize();
  }
  return result;
}

vtkAlgorithmOutput* VXRepresentation::outputPort() const
{
  VXRepresentationPimpl* implementation = activeImplementation();
  return implementation != nullptr ? implementation->outputPort() : nullptr;
}

VXLookupTable* VXRepresentation::lookupTable() const
{
  VXRepresentationPimpl* implementation = activeImplementation();
  return implementation != nullptr ? implementation->lookupTable() : nullptr;
}

QWidget* VXRepresentation::settingsWidget()
{
  // Rebuilt each time: the panel shows the instance of the window that is active now.
  m_SettingsWidget = nullptr;
  initializeSettingsWidget();
  return m_SettingsWidget;
}

void VXRepresentation::initializeSettingsWidget()
{
  VXRepresentationPimpl* implementation = activeImplementation();
  if (implementation == nullptr)
  {
    addSettingsWidgetTitle(nullptr, nullptr);
    return;
  }
  implementation->initializeSettingsWidget();
  m_SettingsWidget = implementation->settingsWidget();
}

bool VXRepresentation::isVisible() const
{
  VXRepresentationPimpl* implementation = activeImplementation();
  return implementation != nullptr && implementation->isVisible();
}

void VXRepresentation::setVisibility(bool visible)
{
  VXAbstractViewWidget* view = activeView();
  if (view == nullptr)
  {
    return;
  }
  if (VXRepresentationPimpl* implementation = m_Implementations.value(view))
  {
    implementation->setVisibility(visible);
    m_ViewMap[view] = visible;
    return;
  }
  addViewWidgetSplit(nullptr, view, nullptr, visible);
}

void VXRepresentation::copyActiveSettings()
{
  if (VXRepresentationPimpl* implementation = activeImplementation())
  {
    implementation->copySettings();
  }
}

void VXRepresentation::pasteToActiveSettings()
{
  VXRepresentationPimpl* implementation = activeImplementation();
  if (implementation == nullptr)
  {
    return;
  }
  try
  {
    implementation->pasteSettings();
  }
  catch (const nlohmann::json::exception& error)
  {
    if (VXPipeline* owner = pipeline())
    {
      Q_EMIT owner->sendOutputMessage(
          QStringLiteral(
              "Cannot paste settings into '%1': the clipboard holds no settings of a data view (%2)")
              .arg(pathName(), QString::fromUtf8(error.what())));
    }
  }
}

void VXRepresentation::setParentSource(VXCoreObject* parentSource)
{
  m_ParentSource = parentSource;
  setParent(parentSource);
  updatePath();
}

VXCoreObject* VXRepresentation::parentDataSource() const
{
  return qobject_cast<VXDataSource*>(parent());
}

void VXRepresentation::write(nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) const
{
  json["core_object_name"] = baseName().toStdString();
  json["core_object_name_suffix"] = getNameSuffixCounter();
  // In the order of the view numbers: the map's own order is that of addresses, which differ per run.
  QMap<int, VXRepresentationPimpl*> byIndex;
  for (auto it = m_Implementations.cbegin(); it != m_Implementations.cend(); ++it)
  {
    if (it.value() != nullptr && viewIndexes.contains(it.key()))
    {
      byIndex.insert(viewIndexes.value(it.key()), it.value().data());
    }
  }
  nlohmann::json implementations = nlohmann::json::array();
  for (auto it = byIndex.cbegin(); it != byIndex.cend(); ++it)
  {
    nlohmann::json entry = nlohmann::json::object();
    entry["render_window_index"] = it.key();
    it.value()->write(entry);
    implementations.push_back(entry);
  }
  json["rep_view_implementations"] = implementations;
}

void VXRepresentation::read(const nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes)
{
  if (json.contains("core_object_name"))
  {
    setBaseName(QString::fromStdString(json.at("core_object_name").get<std::string>()));
  }
  if (json.contains("core_object_name_suffix"))
  {
    setNameSuffixCounter(json.at("core_object_name_suffix").get<int>());
  }
  if (!json.contains("rep_view_implementations"))
  {
    return;
  }
  for (const nlohmann::json& entry : json.at("rep_view_implementations"))
  {
    VXAbstractViewWidget* view = viewIndexes.key(entry.at("render_window_index").get<int>(), nullptr);
    VXRepresentationPimpl* implementation = createImplementation(view);
    implementation->readDefaultSettings();
    implementation->read(entry);
    if (view == nullptr)
    {
      implementation->deleteLater(); // its window is gone: nothing to draw in
      continue;
    }
    if (VXRepresentationPimpl* old = m_Implementations.value(view))
    {
      old->finalize();
      old->deleteLater();
    }
    m_Implementations.insert(view, implementation);
    addViewWidget(view);
  }
}

void VXRepresentation::receivePipelineOutputReloaded()
{
  for (VXRepresentationPimpl* implementation : getDataViewSplits())
  {
    if (implementation != nullptr)
    {
      implementation->receivePipelineOutputReloaded();
    }
  }
  updateDataSetInfoWidget();
  renderAll();
}

void VXRepresentation::activeViewChanged(VXAbstractViewWidget* previousActiveView,
                                         VXAbstractViewWidget* currentActiveView)
{
  if (previousActiveView == currentActiveView)
  {
    return;
  }
  Q_EMIT enabledDisabledStateChanged(this, m_Implementations.value(currentActiveView) != nullptr);
}

void VXRepresentation::renderAll()
{
  for (VXRepresentationPimpl* implementation : getDataViewSplits())
  {
    if (implementation != nullptr)
    {
      implementation->requestRender();
    }
  }
}

void VXRepresentation::removeModule()
{
  if (VXPipeline* owner = pipeline())
  {
    owner->removeModule(this);
  }
}

void VXRepresentation::highlightInRenderWindows(bool highlight)
{
  m_Highlighted = highlight;
  for (VXRepresentationPimpl* implementation : getDataViewSplits())
  {
    if (implementation != nullptr)
    {
      implementation->highlightInRenderWindow(highlight);
    }
  }
}

void VXRepresentation::updateGridAxesBounds()
{
  for (VXRepresentationPimpl* implementation : getDataViewSplits())
  {
    if (implementation != nullptr && implementation->visualizationWidget() != nullptr)
    {
      implementation->visualizationWidget()->updateGridAxesBounds(false);
    }
  }
}
