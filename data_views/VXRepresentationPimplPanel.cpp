// The settings panel of a data view's instance: header, visibility hint, help and default settings.
#include "data_views/VXRepresentation.h"
#include "data_views/VXRepresentationPimpl.h"
#include "data_views/ZRVtkModuleUtils.h"
#include "platform/QElidedLabel.h"
#include "platform/QtZRSettings.h"
#include "platform/ZRCheckBox.h"
#include "platform/ZRIconPushButton.h"
#include "platform/ZRSettingsKeys.h"
#include "platform/ZRStyle.h"
#include "views/VXGridAxesActor.h"
#include "views/VXVisualizationWidget.h"

#include <vtkRenderer.h>
#include <vtkTextProperty.h>

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QUrl>
#include <QVBoxLayout>

namespace
{
VXRepresentationPimpl::DefaultSettingsQuestion& defaultSettingsQuestion()
{
  static VXRepresentationPimpl::DefaultSettingsQuestion s_Question;
  return s_Question;
}

QMessageBox::StandardButton askDefaultSettingsQuestion(const QString& title, const QString& text)
{
  if (defaultSettingsQuestion())
  {
    return defaultSettingsQuestion()(title, text);
  }
  QMessageBox box(QMessageBox::Information, title, text,
                  QMessageBox::Yes | QMessageBox::No | QMessageBox::Reset);
  box.setDefaultButton(QMessageBox::Yes);
  return static_cast<QMessageBox::StandardButton>(box.exec());
}

// The row layout that holds a control, anywhere below the panel's content.
QBoxLayout* layoutHolding(QWidget* content, QWidget* control)
{
  for (QBoxLayout* layout : content->findChildren<QBoxLayout*>())
  {
    if (layout->indexOf(control) >= 0)
    {
      return layout;
    }
  }
  return nullptr;
}
} // namespace

void VXRepresentationPimpl::setDefaultSettingsQuestion(DefaultSettingsQuestion question)
{
  defaultSettingsQuestion() = std::move(question);
}

bool VXRepresentationPimpl::writeSettings()
{
  if (m_Owner == nullptr)
  {
    return false;
  }
  const QString typeName = m_Owner->humanTypeName();
  const QMessageBox::StandardButton answer = askDefaultSettingsQuestion(
      QStringLiteral("Save Default %1 Settings").arg(typeName),
      QStringLiteral("Do you want to save the current setting values as the default values "
                     "for all %1 types? (Data specific settings will not be saved)")
          .arg(typeName));
  if (answer != QMessageBox::Yes && answer != QMessageBox::Reset)
  {
    return false;
  }
  QtZRSettings settings;
  settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
  settings.beginGroup(ZR::SettingsKeys::k_RepresentationSettings);
  settings.beginGroup(m_Owner->typeName());
  if (answer == QMessageBox::Reset)
  {
    settings.clearGroup();
    settings.sync();
    return false;
  }
  writeSettings(settings);
  settings.sync();
  return true;
}

void VXRepresentationPimpl::setVisibility(bool visible)
{
  m_ModuleVisible = visible;
  showDataGrid(visible && m_DataGridVisible);
  updateVisibilityControls();
}

void VXRepresentationPimpl::initializeSettingsWidget()
{
  addTitleWithVisibilityBtn();
  addVisibilityHintLabel(settingsContentLayout());
}

QVBoxLayout* VXRepresentationPimpl::settingsContentLayout() const
{
  if (!m_ScrollArea || m_ScrollArea->widget() == nullptr)
  {
    return nullptr;
  }
  return qobject_cast<QVBoxLayout*>(m_ScrollArea->widget()->layout());
}

void VXRepresentationPimpl::addTitleWithVisibilityBtn()
{
  // The panel is rebuilt from scratch each time it is asked for.
  if (m_SettingsWidget)
  {
    m_SettingsWidget->setParent(nullptr);
    m_SettingsWidget->deleteLater();
  }
  m_HelpToolTips.clear();
  const QString typeName = m_Owner != nullptr ? m_Owner->humanTypeName() : QString();

  m_TitleFrame = new QFrame();
  m_TitleFrame->setObjectName(QStringLiteral("settingsWidgetTitleFrame"));
  auto* titleLayout = new QHBoxLayout(m_TitleFrame);
  titleLayout->setContentsMargins(2, 2, 2, 2);
  titleLayout->setSpacing(4);

  m_VisibilityButton = new ZRIconPushButton(m_TitleFrame);
  m_VisibilityButton->setObjectName(QStringLiteral("m_VisibilityButton"));
  m_VisibilityButton->setCheckable(true);
  m_VisibilityButton->setThemeIconName(QStringLiteral("Eye"), true);
  m_VisibilityButton->setChecked(isVisible());
  m_VisibilityButton->setToolTip(QStringLiteral("Show or hide this item in the render window"));
  connect(m_VisibilityButton.data(), &QPushButton::toggled, this,
          [this](bool checked)
          {
            setVisibility(checked);
            if (m_Owner != nullptr)
            {
              Q_EMIT m_Owner->settingsWidgetVisibilityButtonClicked(checked);
            }
          });
  titleLayout->addWidget(m_VisibilityButton);

  auto* title = new QLabel(typeName, m_TitleFrame);
  title->setObjectName(QStringLiteral("visSettingsTitleNameLabel"));
  QFont bold = title->font();
  bold.setBold(true);
  title->setFont(bold);
  titleLayout->addWidget(title, 1);

  m_HelpButton = ZRVtkModule::utils::GenerateHelpButton(
      m_TitleFrame, QStringLiteral("Open the user manual help documentation for %1 types").arg(typeName));
  m_HelpButton->setObjectName(QStringLiteral("m_HelpButton"));
  connect(m_HelpButton.data(), &QPushButton::clicked, this, &VXRepresentationPimpl::openHelpLink);
  titleLayout->addWidget(m_HelpButton);

  m_DefaultSettingsButton = ZRVtkModule::utils::GenerateSettingsToolButton(
      m_TitleFrame,
      QStringLiteral("Save the current settings as the default settings for %1 types").arg(typeName));
  m_DefaultSettingsButton->setObjectName(QStringLiteral("m_DefaultSettingsButton"));
  connect(m_DefaultSettingsButton.data(), &QPushButton::clicked, this, [this]() { writeSettings(); });
  titleLayout->addWidget(m_DefaultSettingsButton);

  m_ScrollArea = new QScrollArea();
  m_SettingsWidget =
      ZRVtkModule::utils::CreateSettingsWidget(QPointer<QWidget>(m_TitleFrame.data()), m_ScrollArea);
}

void VXRepresentationPimpl::addVisibilityHintLabel(QVBoxLayout* layout)
{
  if (layout == nullptr)
  {
    return;
  }
  m_VisibilityHintLabel = new QElidedLabel(layout->parentWidget());
  m_VisibilityHintLabel->setObjectName(QStringLiteral("m_VisibilityHintLabel"));
  m_VisibilityHintLabel->setAutoFillBackground(true);
  layout->addWidget(m_VisibilityHintLabel);
  connect(ZRStyle::Instance(), &ZRStyle::styleSheetLoaded, m_VisibilityHintLabel.data(),
          [this]() { updateVisibilityControls(); });
  if (m_Owner != nullptr)
  {
    connect(m_Owner, &VXCoreObject::pathChanged, m_VisibilityHintLabel.data(),
            [this]() { updateVisibilityControls(); });
  }
  updateVisibilityControls();
}

void VXRepresentationPimpl::updateVisibilityControls()
{
  const bool visible = isVisible();
  if (m_VisibilityButton)
  {
    const QSignalBlocker blocker(m_VisibilityButton);
    m_VisibilityButton->setChecked(visible);
  }
  if (!m_VisibilityHintLabel)
  {
    return;
  }
  m_VisibilityHintLabel->setText(visible ? QStringLiteral("Item is Visible in Render Window")
                                         : QStringLiteral("Item is NOT Visible in Render Window"));
  m_VisibilityHintLabel->setToolTip(pathName());
  const QMap<QString, QColor> colors = ZRStyle::getVisSettingsWidgetColors();
  const QColor text = colors.value(visible ? QStringLiteral("BreadcrumbTextVisible")
                                           : QStringLiteral("BreadcrumbTextNotVisible"));
  const QColor background = colors.value(visible ? QStringLiteral("BreadcrumbBackgroundVisible")
                                                 : QStringLiteral("BreadcrumbBackgroundNotVisible"));
  QPalette palette = m_VisibilityHintLabel->palette();
  if (text.isValid())
  {
    palette.setColor(QPalette::WindowText, text);
  }
  if (background.isValid())
  {
    palette.setColor(QPalette::Window, background);
  }
  m_VisibilityHintLabel->setPalette(palette);
}

void VXRepresentationPimpl::updateSettingsControls()
{
  updateVisibilityControls();
  if (m_DataGridCheckBox)
  {
    const QSignalBlocker blocker(m_DataGridCheckBox);
    m_DataGridCheckBox->setChecked(m_DataGridVisible);
  }
}

void VXRepresentationPimpl::openHelpLink()
{
  QDesktopServices::openUrl(QUrl(m_HelpUrl + helpAnchor()));
}

void VXRepresentationPimpl::addHelpToolTip(QWidget* control, const QString& anchor, const QString& toolTip)
{
  m_HelpToolTips.append({control, anchor, toolTip});
}

void VXRepresentationPimpl::addHelpToolTipControls()
{
  QVBoxLayout* content = settingsContentLayout();
  if (content == nullptr)
  {
    return;
  }
  for (const HelpToolTip& entry : m_HelpToolTips)
  {
    QBoxLayout* row = entry.control ? layoutHolding(content->parentWidget(), entry.control) : nullptr;
    if (row == nullptr)
    {
      continue;
    }
    ZRIconPushButton* button =
        ZRVtkModule::utils::GenerateHelpButton(entry.control->parentWidget(), entry.toolTip);
    button->setObjectName(QStringLiteral("helpToolTipButton") + entry.anchor);
    button->setProperty("helpAnchor", entry.anchor);
    const QString url = m_HelpUrl + entry.anchor;
    connect(button, &QPushButton::clicked, this, [url]() { QDesktopServices::openUrl(QUrl(url)); });
    row->insertWidget(row->indexOf(entry.control) + 1, button);
  }
}

void VXRepresentationPimpl::addDataAxesGridControls(QVBoxLayout* layout)
{
  m_DataGridCheckBox = ZRVtkModule::utils::GenerateCheckBoxWidget(
      layout->parentWidget(), layout, ZRVtkModule::constants::k_DataAxesGridLabel);
  m_DataGridCheckBox->setChecked(m_DataGridVisible);
  connect(m_DataGridCheckBox.data(), &QCheckBox::toggled, this,
          &VXRepresentationPimpl::setDataGridVisibility);
}

void VXRepresentationPimpl::setDataGridVisibility(bool visible)
{
  m_DataGridVisible = visible;
  showDataGrid(visible && isVisible());
  requestRender();
}

void VXRepresentationPimpl::showDataGrid(bool shown)
{
  VXVisualizationWidget* window = visualizationWidget();
  if (window == nullptr || window->getRenderer() == nullptr)
  {
    return;
  }
  vtkRenderer* renderer = window->getRenderer();
  if (!shown)
  {
    if (m_DataAxesGridActor != nullptr)
    {
      renderer->RemoveViewProp(m_DataAxesGridActor);
    }
    return;
  }
  if (m_DataAxesGridActor == nullptr)
  {
    m_DataAxesGridActor = vtkSmartPointer<VXGridAxesActor>::New();
    m_DataAxesGridActor->SetGenerateTicks(true);
    m_DataAxesGridActor->SetGenerateGrid(false);
    m_DataAxesGridActor->SetGenerateEdges(true);
    m_DataAxesGridActor->SetLabelDisplayOffset(0, -10);
    for (int axis = 0; axis < 3; ++axis)
    {
      vtkTextProperty* title = m_DataAxesGridActor->GetTitleTextProperty(axis);
      title->SetFontSize(static_cast<int>(title->GetFontSize() * 1.5));
    }
  }
  const std::array<double, 6> bounds = getModuleBounds();
  if (bounds[0] <= bounds[1])
  {
    m_DataAxesGridActor->SetGridBounds(bounds.data());
  }
  if (!renderer->HasViewProp(m_DataAxesGridActor))
  {
    renderer->AddViewProp(m_DataAxesGridActor);
  }
}
