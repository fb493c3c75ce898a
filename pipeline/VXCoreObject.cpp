#include "pipeline/VXCoreObject.h"

#include "data_views/ZRVtkModuleUtils.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXPipeline.h"
#include "platform/QElidedLabel.h"
#include "platform/ZRIconPushButton.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXVisualizationWidget.h"

#include <nlohmann/json.hpp>

#include <QHBoxLayout>
#include <QLabel>

namespace
{
constexpr const char* k_RenderWindowIndexKey = "render_window_index";
constexpr const char* k_CoreObjectVisibilityKey = "core_object_visibility";
} // namespace

VXCoreObject::VXCoreObject(QObject* parent)
    : QObject(parent)
{
}

VXCoreObject::~VXCoreObject()
{
  delete m_SettingsScrollArea.data();
  delete m_SettingsFrame.data();
  delete m_SettingsWidget.data();
}

void VXCoreObject::write(nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) const
{
  // In the order of the view numbers: the map's own order is that of addresses, which differ per run.
  QMap<int, bool> visibilityByIndex;
  for (auto it = m_ViewMap.cbegin(); it != m_ViewMap.cend(); ++it)
  {
    if (viewIndexes.contains(it.key()))
    {
      visibilityByIndex.insert(viewIndexes.value(it.key()), it.value());
    }
  }
  json = nlohmann::json::array();
  for (auto it = visibilityByIndex.cbegin(); it != visibilityByIndex.cend(); ++it)
  {
    json.push_back({{k_RenderWindowIndexKey, it.key()}, {k_CoreObjectVisibilityKey, it.value()}});
  }
}

void VXCoreObject::read(const nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes)
{
  if (!json.is_array())
  {
    return;
  }
  // The record names every view the object is in: views it was given while loading are dropped.
  ViewMap views;
  for (const auto& entry : json)
  {
    const int index = entry.at(k_RenderWindowIndexKey).get<int>();
    VXAbstractViewWidget* view = viewIndexes.key(index, nullptr);
    if (view == nullptr)
    {
      continue;
    }
    views[view] = entry.at(k_CoreObjectVisibilityKey).get<bool>();
  }
  m_ViewMap.clear();
  for (auto it = views.cbegin(); it != views.cend(); ++it)
  {
    addViewWidget(it.key());
    m_ViewMap[it.key()] = it.value();
  }
}

bool VXCoreObject::finalize()
{
  for (auto it = m_ViewMap.cbegin(); it != m_ViewMap.cend(); ++it)
  {
    if (it.key() == nullptr)
    {
      return false;
    }
  }
  return true;
}

void VXCoreObject::setBaseName(const QString& name)
{
  m_BaseName = name;
  updatePath();
}

VXLookupTable* VXCoreObject::lookupTable() const
{
  return nullptr;
}

QWidget* VXCoreObject::settingsWidget()
{
  if (m_SettingsWidget)
  {
    return m_SettingsWidget;
  }
  if (activeView() == nullptr)
  {
    return nullptr;
  }
  initializeSettingsWidget();
  return m_SettingsWidget;
}

QWidget* VXCoreObject::addSettingsWidgetTitle(ZRIconPushButton* helpButton, ZRIconPushButton* closeButton)
{
  auto* frame = new QFrame();
  frame->setObjectName(QStringLiteral("settingsWidgetTitleFrame"));
  auto* layout = new QHBoxLayout(frame);
  layout->setContentsMargins(2, 2, 2, 2);
  auto* nameLabel = new QLabel(name(), frame);
  nameLabel->setObjectName(QStringLiteral("visSettingsTitleNameLabel"));
  QFont bold = nameLabel->font();
  bold.setBold(true);
  nameLabel->setFont(bold);
  layout->addWidget(nameLabel);
  auto* pathLabel = new QElidedLabel(frame);
  pathLabel->setObjectName(QStringLiteral("visSettingsTitlePathLabel"));
  pathLabel->setText(pathName());
  layout->addWidget(pathLabel, 1);
  connect(this, &VXCoreObject::pathChanged, pathLabel,
          [this, nameLabel, pathLabel](const QString& path)
          {
            nameLabel->setText(name());
            pathLabel->setText(path);
          });
  for (ZRIconPushButton* button : {helpButton, closeButton})
  {
    if (button != nullptr)
    {
      layout->addWidget(button);
    }
  }
  if (!m_SettingsScrollArea)
  {
    m_SettingsScrollArea = new QScrollArea();
  }
  m_SettingsFrame = frame;
  m_SettingsWidget = ZRVtkModule::utils::CreateSettingsWidget(frame, m_SettingsScrollArea);
  return m_SettingsWidget;
}

void VXCoreObject::addViewWidget(VXAbstractViewWidget* view)
{
  m_ViewMap.insert(view, m_ViewMap.value(view, false));
  if (view == nullptr)
  {
    return;
  }
  if (VXVisualizationWidget* window = view->getVisualizationWidget())
  {
    connect(this, &VXCoreObject::requestRender, window, &VXVisualizationWidget::render, Qt::UniqueConnection);
  }
}

VXAbstractViewWidget* VXCoreObject::activeView() const
{
  return m_Pipeline != nullptr ? m_Pipeline->activeViewWidget() : nullptr;
}

bool VXCoreObject::isVisible() const
{
  VXAbstractViewWidget* view = activeView();
  if (view == nullptr || !m_ViewMap.contains(view))
  {
    return false;
  }
  return m_ViewMap.value(view);
}

void VXCoreObject::setVisibility(bool visible)
{
  VXAbstractViewWidget* view = activeView();
  if (view == nullptr)
  {
    return;
  }
  if (!m_ViewMap.contains(view))
  {
    addViewWidget(view);
  }
  m_ViewMap[view] = visible;
}

QString VXCoreObject::name() const
{
  if (m_NameSuffixCounter >= 1)
  {
    return QStringLiteral("%1 %2").arg(m_BaseName).arg(m_NameSuffixCounter);
  }
  return m_BaseName;
}

QString VXCoreObject::pathName() const
{
  QString path = name();
  for (QObject* ancestor = parent(); ancestor != nullptr; ancestor = ancestor->parent())
  {
    if (auto* coreObject = qobject_cast<VXCoreObject*>(ancestor))
    {
      path = coreObject->name() + m_PathDelimiter + path;
    }
    else if (auto* bridge = qobject_cast<VXBridgeObject*>(ancestor))
    {
      path = bridge->name() + m_PathDelimiter + path;
    }
  }
  return path;
}

void VXCoreObject::setNameSuffixCounter(int counter)
{
  m_NameSuffixCounter = counter;
  updatePath();
}

void VXCoreObject::setAutoReload(bool autoReload)
{
  if (m_AutoReload == autoReload)
  {
    return;
  }
  m_AutoReload = autoReload;
  Q_EMIT autoReloadFlagChanged(autoReload);
}

void VXCoreObject::updatePath()
{
  Q_EMIT pathChanged(pathName());
}

void VXCoreObject::activeViewChanged(VXAbstractViewWidget* /*previousActiveView*/,
                                     VXAbstractViewWidget* /*currentActiveView*/)
{
}
