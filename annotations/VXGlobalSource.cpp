#include "annotations/VXGlobalSource.h"

#include "annotations/VXGlobalSourcePimpl.h"
#include "pipeline/VXPipeline.h"
#include "platform/ZRStyle.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXVisualizationWidget.h"

#include <nlohmann/json.hpp>

#include <QVBoxLayout>
#include <QWidget>

namespace
{
constexpr const char* k_ViewImplementationsKey = "global_source_view_implementations";
constexpr const char* k_RenderWindowIndexKey = "render_window_index";
constexpr const char* k_NameKey = "global_source_object_name";
constexpr const char* k_NameSuffixKey = "global_source_object_name_suffix";
} // namespace

VXGlobalSource::VXGlobalSource(QObject* parent)
    : VXBridgeObject(parent)
{
  m_BaseName = k_DefaultName;
}

VXGlobalSource::~VXGlobalSource()
{
  delete m_SettingsWidget;
}

QString VXGlobalSource::sourceName() const
{
  return name();
}

QIcon VXGlobalSource::getIcon() const
{
  return ZRStyle::generateThemeIconFromName(QStringLiteral("Annotation"));
}

VXPipeline* VXGlobalSource::pipeline() const
{
  return m_Pipeline;
}

void VXGlobalSource::setPipeline(VXPipeline* pipeline)
{
  m_Pipeline = pipeline;
}

const char* VXGlobalSource::nameKey() const
{
  return k_NameKey;
}

const char* VXGlobalSource::nameSuffixKey() const
{
  return k_NameSuffixKey;
}

void VXGlobalSource::write(nlohmann::json& json) const
{
  write(json, {});
}

void VXGlobalSource::read(const nlohmann::json& json)
{
  read(json, {});
}

void VXGlobalSource::write(nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) const
{
  json[nameKey()] = baseName().toStdString();
  json[nameSuffixKey()] = getNameSuffixCounter();
  // In the order of the view numbers, so that a file does not change with the addresses of a run.
  QMap<int, VXGlobalSourcePimpl*> byIndex;
  for (auto it = m_Instances.cbegin(); it != m_Instances.cend(); ++it)
  {
    if (it.value() && viewIndexes.contains(it.key()))
    {
      byIndex.insert(viewIndexes.value(it.key()), it.value().data());
    }
  }
  nlohmann::json entries = nlohmann::json::array();
  for (auto it = byIndex.cbegin(); it != byIndex.cend(); ++it)
  {
    nlohmann::json entry = nlohmann::json::object();
    entry[k_RenderWindowIndexKey] = it.key();
    it.value()->write(entry);
    entries.push_back(entry);
  }
  json[k_ViewImplementationsKey] = entries;
}

void VXGlobalSource::read(const nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes)
{
  if (json.contains(nameKey()))
  {
    setName(QString::fromStdString(json.at(nameKey()).get<std::string>()), getNameSuffixCounter());
  }
  if (json.contains(nameSuffixKey()))
  {
    setNameSuffix(json.at(nameSuffixKey()).get<int>());
  }
  if (!json.contains(k_ViewImplementationsKey))
  {
    return;
  }
  for (const nlohmann::json& entry : json.at(k_ViewImplementationsKey))
  {
    if (!entry.contains(k_RenderWindowIndexKey))
    {
      continue;
    }
    VXAbstractViewWidget* view = viewIndexes.key(entry.at(k_RenderWindowIndexKey).get<int>(), nullptr);
    if (view == nullptr)
    {
      continue; // its window is gone: nothing to draw in
    }
    if (VXGlobalSourcePimpl* existing = instance(view))
    {
      existing->read(entry);
    }
    else
    {
      addModuleInstance(nullptr, view, &entry);
    }
  }
  renderAll();
}

VXGlobalSourcePimpl* VXGlobalSource::instance(VXAbstractViewWidget* view) const
{
  return m_Instances.value(view);
}

void VXGlobalSource::adoptInstance(VXAbstractViewWidget* view, VXGlobalSourcePimpl* instance)
{
  InstanceMap instances = m_Instances;
  instances.detach();
  instances.insert(view, instance);
  m_Instances = instances;
  connect(instance, &VXGlobalSourcePimpl::requestRender, this, &VXGlobalSource::requestRender);
  if (VXVisualizationWidget* window = view->getVisualizationWidget())
  {
    connect(instance, &VXGlobalSourcePimpl::requestRender, window, &VXVisualizationWidget::render);
  }
  connect(view, &VXAbstractViewWidget::viewWidgetCreated, this, &VXGlobalSource::addViewWidgetCopy,
          Qt::UniqueConnection);
  connect(view, &QObject::destroyed, this,
          [this](QObject* gone)
          {
            InstanceMap instances = m_Instances;
            instances.detach();
            for (auto it = instances.begin(); it != instances.end();)
            {
              it = static_cast<QObject*>(it.key()) == gone ? instances.erase(it) : std::next(it);
            }
            m_Instances = instances;
          });
  instance->installEditOverlaySupport();
  if (view == activeView())
  {
    Q_EMIT enabledDisabledStateChanged(this, true);
    showActiveForm();
  }
}

VXAbstractViewWidget* VXGlobalSource::activeView() const
{
  return m_Pipeline ? m_Pipeline->activeViewWidget() : nullptr;
}

void VXGlobalSource::finalize()
{
  for (const QPointer<VXGlobalSourcePimpl>& instance : m_Instances)
  {
    if (instance)
    {
      instance->removeFromScene();
    }
  }
  renderAll();
}

bool VXGlobalSource::isVisible() const
{
  return isVisibleIn(activeView());
}

bool VXGlobalSource::isVisibleIn(VXAbstractViewWidget* view) const
{
  VXGlobalSourcePimpl* instance = m_Instances.value(view);
  return instance != nullptr && instance->isVisible();
}

void VXGlobalSource::setVisibility(bool visible)
{
  VXAbstractViewWidget* view = activeView();
  if (view == nullptr)
  {
    return;
  }
  if (VXGlobalSourcePimpl* instance = m_Instances.value(view))
  {
    instance->setVisibility(visible);
  }
  else if (visible)
  {
    addModuleInstance(nullptr, view, nullptr);
  }
  if (m_Pipeline)
  {
    Q_EMIT m_Pipeline->requestRenderAll();
  }
  Q_EMIT requestRender();
}

void VXGlobalSource::removeModuleInstance(VXAbstractViewWidget* view)
{
  VXGlobalSourcePimpl* instance = m_Instances.value(view);
  InstanceMap instances = m_Instances;
  instances.detach();
  instances.remove(view);
  m_Instances = instances;
  if (instance != nullptr)
  {
    instance->removeFromScene();
    if (m_ShownForm && m_ShownForm == instance->settingsForm())
    {
      m_ShownForm = nullptr;
    }
    instance->deleteLater();
  }
  if (view == activeView())
  {
    Q_EMIT enabledDisabledStateChanged(this, false);
  }
}

void VXGlobalSource::addViewWidgetCopy(VXAbstractViewWidget* sourceViewWidget,
                                       VXAbstractViewWidget* splitViewWidget)
{
  addModuleInstance(sourceViewWidget, splitViewWidget, nullptr);
}

void VXGlobalSource::activeViewChanged(VXAbstractViewWidget* previousActiveView,
                                       VXAbstractViewWidget* currentActiveView)
{
  if (previousActiveView == currentActiveView)
  {
    return;
  }
  const bool hasInstance = currentActiveView != nullptr && m_Instances.value(currentActiveView) != nullptr;
  Q_EMIT enabledDisabledStateChanged(this, hasInstance);
  showActiveForm();
}

void VXGlobalSource::renderAll()
{
  for (auto it = m_Instances.cbegin(); it != m_Instances.cend(); ++it)
  {
    if (it.key() != nullptr && it.key()->getVisualizationWidget() != nullptr)
    {
      it.key()->getVisualizationWidget()->render();
    }
  }
  Q_EMIT requestRenderAll();
}

void VXGlobalSource::initializeSettingsWidget()
{
  if (m_SettingsWidget)
  {
    return;
  }
  m_SettingsWidget = new QWidget();
  m_SettingsWidget->setObjectName(QStringLiteral("globalSourceSettingsWidget"));
  m_FormLayout = new QVBoxLayout(m_SettingsWidget);
  m_FormLayout->setContentsMargins(0, 0, 0, 0);
  showActiveForm();
}

QWidget* VXGlobalSource::settingsWidget()
{
  initializeSettingsWidget();
  return m_SettingsWidget;
}

void VXGlobalSource::showActiveForm()
{
  if (!m_SettingsWidget || !m_FormLayout)
  {
    return;
  }
  VXGlobalSourcePimpl* active = m_Instances.value(activeView());
  QWidget* form = active != nullptr ? active->settingsForm() : nullptr;
  if (form == m_ShownForm)
  {
    return;
  }
  if (m_ShownForm)
  {
    m_FormLayout->removeWidget(m_ShownForm);
    m_ShownForm->hide();
    // The form stays with its instance; only the panel lets go of it.
    m_ShownForm->setParent(nullptr);
  }
  m_ShownForm = form;
  if (form != nullptr)
  {
    active->syncSettingsWidget();
    m_FormLayout->addWidget(form);
    form->show();
  }
}
