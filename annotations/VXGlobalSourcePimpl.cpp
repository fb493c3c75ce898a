#include "annotations/VXGlobalSourcePimpl.h"

#include "annotations/VXGlobalSource.h"
#include "platform/QtZRSettings.h"
#include "platform/ZRIconPushButton.h"
#include "platform/ZRSettingsKeys.h"
#include "platform/ZRStyle.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXVisualizationWidget.h"

#include <nlohmann/json.hpp>

#include <QEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QLabel>
#include <QMessageBox>
#include <QMouseEvent>
#include <QToolTip>
#include <QVBoxLayout>

namespace
{
constexpr const char* k_VisibleKey = "global_source_visible";
const QString k_EditHint = QStringLiteral("Double-click to edit");
} // namespace

VXGlobalSourcePimpl::VXGlobalSourcePimpl(VXGlobalSource* source, VXAbstractViewWidget* view)
    : QObject(source)
    , m_Source(source)
    , m_View(view)
{
}

VXGlobalSourcePimpl::~VXGlobalSourcePimpl()
{
  removeEditOverlaySupport();
  delete m_EditOverlay;
}

VXGlobalSource* VXGlobalSourcePimpl::source() const
{
  return m_Source;
}

VXAbstractViewWidget* VXGlobalSourcePimpl::viewWidget() const
{
  return m_View;
}

VXVisualizationWidget* VXGlobalSourcePimpl::renderWindow() const
{
  return m_View ? m_View->getVisualizationWidget() : nullptr;
}

bool VXGlobalSourcePimpl::eventFilter(QObject* watched, QEvent* event)
{
  if (watched == renderWindow())
  {
    if (event->type() == QEvent::MouseButtonDblClick)
    {
      onVisualizationDoubleClicked(static_cast<QMouseEvent*>(event)->pos());
    }
    else if (event->type() == QEvent::ToolTip && m_Visible && hitTest(static_cast<QHelpEvent*>(event)->pos()))
    {
      QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), k_EditHint);
      return true;
    }
  }
  return QObject::eventFilter(watched, event);
}

void VXGlobalSourcePimpl::write(nlohmann::json& json) const
{
  json[k_VisibleKey] = m_Visible;
}

void VXGlobalSourcePimpl::read(const nlohmann::json& json)
{
  if (json.contains(k_VisibleKey))
  {
    setVisibility(json.at(k_VisibleKey).get<bool>());
  }
}

void VXGlobalSourcePimpl::openSettingsGroup(QtZRSettings& settings) const
{
  settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
  settings.beginGroup(ZR::SettingsKeys::k_GlobalSourceSettings);
  settings.beginGroup(m_Source ? m_Source->typeName() : QString());
}

void VXGlobalSourcePimpl::writeSettings()
{
  const QString type = m_Source ? m_Source->humanTypeName() : QString();
  const auto answer = QMessageBox::question(
      nullptr, QStringLiteral("Save Default %1 Settings").arg(type),
      QStringLiteral("Do you want to save the current setting values as the default values for %1 items?")
          .arg(type));
  if (answer == QMessageBox::Yes)
  {
    saveDefaultSettings();
  }
}

void VXGlobalSourcePimpl::saveDefaultSettings()
{
  QtZRSettings settings;
  openSettingsGroup(settings);
  writeSettingValues(settings);
  settings.sync();
}

void VXGlobalSourcePimpl::readSettings()
{
  QtZRSettings settings;
  openSettingsGroup(settings);
  readSettingValues(settings);
}

void VXGlobalSourcePimpl::writeSettingValues(QtZRSettings& settings) const
{
  settings.setValue(QString::fromLatin1(k_VisibleKey), m_Visible);
}

void VXGlobalSourcePimpl::readSettingValues(QtZRSettings& settings)
{
  if (settings.contains(QString::fromLatin1(k_VisibleKey)))
  {
    m_Visible = settings.value(QString::fromLatin1(k_VisibleKey)).toBool();
  }
}

std::optional<QRectF> VXGlobalSourcePimpl::getAnnotationNormalizedRect() const
{
  return std::nullopt;
}

QWidget* VXGlobalSourcePimpl::createEditOverlay(QWidget* parent)
{
  auto* overlay = new QFrame(parent);
  overlay->setObjectName(QStringLiteral("annotationEditOverlay"));
  overlay->setFrameShape(QFrame::StyledPanel);
  overlay->setAutoFillBackground(true);
  auto* layout = new QVBoxLayout(overlay);
  layout->setContentsMargins(4, 4, 4, 4);
  return overlay;
}

void VXGlobalSourcePimpl::populateEditOverlay() {}

void VXGlobalSourcePimpl::syncSettingsWidget() {}

int VXGlobalSourcePimpl::editOverlayMinWidth() const
{
  return 220;
}

void VXGlobalSourcePimpl::installEditOverlaySupport()
{
  if (VXVisualizationWidget* window = renderWindow())
  {
    window->installEventFilter(this);
  }
}

void VXGlobalSourcePimpl::removeEditOverlaySupport()
{
  if (VXVisualizationWidget* window = renderWindow())
  {
    window->removeEventFilter(this);
  }
}

bool VXGlobalSourcePimpl::hitTest(const QPoint& point) const
{
  const std::optional<QRectF> rect = getAnnotationNormalizedRect();
  const VXVisualizationWidget* window = renderWindow();
  if (!rect.has_value() || window == nullptr)
  {
    return false;
  }
  const int width = window->width();
  const int height = window->height();
  // The rectangle's y runs up from the bottom; the widget's runs down from the top.
  const int left = static_cast<int>(rect->x() * width);
  const int top = static_cast<int>((1.0 - rect->y() - rect->height()) * height);
  const int right = left + static_cast<int>(width * rect->width()) - 1;
  const int bottom = top + static_cast<int>(rect->height() * height) - 1;
  return point.x() >= left && point.x() <= right && point.y() >= top && point.y() <= bottom;
}

void VXGlobalSourcePimpl::showEditOverlay()
{
  VXVisualizationWidget* window = renderWindow();
  if (window == nullptr)
  {
    return;
  }
  if (!m_EditOverlay)
  {
    m_EditOverlay = createEditOverlay(window);
    populateEditOverlay();
  }
  m_EditOverlay->setMinimumWidth(editOverlayMinWidth());
  m_EditOverlay->adjustSize();
  // Beside the annotation when it has a place, else in the top left corner.
  QPoint at(8, 8);
  if (const std::optional<QRectF> rect = getAnnotationNormalizedRect())
  {
    at = QPoint(static_cast<int>((rect->x() + rect->width()) * window->width()) + 4,
                static_cast<int>((1.0 - rect->y() - rect->height()) * window->height()));
  }
  at.setX(std::max(0, std::min(at.x(), window->width() - m_EditOverlay->width())));
  at.setY(std::max(0, std::min(at.y(), window->height() - m_EditOverlay->height())));
  m_EditOverlay->move(at);
  m_EditOverlay->show();
  m_EditOverlay->raise();
}

void VXGlobalSourcePimpl::hideEditOverlay()
{
  if (m_EditOverlay)
  {
    m_EditOverlay->hide();
  }
}

bool VXGlobalSourcePimpl::isEditOverlayShown() const
{
  return m_EditOverlay && m_EditOverlay->isVisible();
}

void VXGlobalSourcePimpl::onVisualizationDoubleClicked(const QPoint& pos)
{
  if (hitTest(pos))
  {
    showEditOverlay();
  }
}

QWidget* VXGlobalSourcePimpl::addTitleWithVisibilityBtn()
{
  auto* frame = new QFrame();
  frame->setObjectName(QStringLiteral("settingsWidgetTitleFrame"));
  auto* layout = new QHBoxLayout(frame);
  layout->setContentsMargins(2, 2, 2, 2);
  auto* visibilityButton = new ZRIconPushButton(frame);
  visibilityButton->setObjectName(QStringLiteral("m_VisibilityButton"));
  visibilityButton->setCheckable(true);
  visibilityButton->setChecked(m_Visible);
  visibilityButton->setIcon(ZRStyle::generateCheckableThemeIconFromName(QStringLiteral("Eye")));
  visibilityButton->setToolTip(QStringLiteral("Show or hide the annotation in this view"));
  layout->addWidget(visibilityButton);
  auto* nameLabel = new QLabel(m_Source ? m_Source->name() : QString(), frame);
  nameLabel->setObjectName(QStringLiteral("visSettingsTitleNameLabel"));
  QFont bold = nameLabel->font();
  bold.setBold(true);
  nameLabel->setFont(bold);
  layout->addWidget(nameLabel, 1);
  auto* saveButton = new ZRIconPushButton(frame);
  saveButton->setObjectName(QStringLiteral("saveDefaultSettingsButton"));
  saveButton->setIcon(ZRStyle::generateThemeIconFromName(QStringLiteral("Save")));
  saveButton->setToolTip(QStringLiteral("Save the current settings as the default settings for all %1 types")
                             .arg(m_Source ? m_Source->humanTypeName() : QString()));
  layout->addWidget(saveButton);

  connect(visibilityButton, &QPushButton::toggled, this,
          [this](bool checked)
          {
            setVisibility(checked);
            if (m_Source)
            {
              Q_EMIT m_Source->settingsWidgetVisibilityButtonClicked(checked);
            }
          });
  connect(saveButton, &QPushButton::clicked, this, [this]() { writeSettings(); });
  if (m_Source)
  {
    connect(m_Source, &VXBridgeObject::nameChanged, nameLabel, &QLabel::setText);
  }
  return frame;
}

void VXGlobalSourcePimpl::addVisibilityHintLabel(QVBoxLayout* layout)
{
  if (layout == nullptr)
  {
    return;
  }
  m_VisibilityHintLabel = new QLabel(QStringLiteral("Hidden in this view: press the eye to show it."));
  m_VisibilityHintLabel->setObjectName(QStringLiteral("m_VisibilityHintLabel"));
  m_VisibilityHintLabel->setWordWrap(true);
  m_VisibilityHintLabel->setVisible(!m_Visible);
  layout->addWidget(m_VisibilityHintLabel);
}
