#include "views/VXVisualizationToolbarWidget.h"

#include "platform/ZRPreferences.h"
#include "platform/ZRStyle.h"
#include "views/VXButtonHoverReset.h"
#include "views/VXCameraPresetStore.h"
#include "views/VXInteractorStyleCamera.h"
#include "views/VXSnapToCameraMenu.h"
#include "views/VXVisualizationWidget.h"

#include "ui_VXVisualizationToolbarWidget.h"

#include <QEvent>
#include <QGraphicsOpacityEffect>
#include <QInputDialog>
#include <QLayout>
#include <QMenu>
#include <QTextDocumentFragment>

namespace
{
constexpr double k_ToolbarOpacity = 1.0;
constexpr int k_IconSide = 20;

/** Turns a mode off the way a user's click would, so that everything listening follows. */
void clickOff(QPushButton* button)
{
  Q_EMIT button->clicked(false);
  button->setChecked(false);
}
} // namespace

VXVisualizationToolbarWidget::VXVisualizationToolbarWidget(VXVisualizationWidget* window)
    : QWidget(window)
    , m_Ui(std::make_unique<Ui::VXVisualizationToolbarWidget>())
    , m_Window(window)
{
  m_Ui->setupUi(this);
  setupGui();
}

VXVisualizationToolbarWidget::~VXVisualizationToolbarWidget() = default;

void VXVisualizationToolbarWidget::setupGui()
{
  m_OpacityEffect = new QGraphicsOpacityEffect(this);
  m_OpacityEffect->setOpacity(k_ToolbarOpacity);
  setGraphicsEffect(m_OpacityEffect);

  m_SnapToCameraMenu = new VXSnapToCameraMenu(this);
  m_SnapToCameraMenu->hide();
  m_MenuOpacityEffect = new QGraphicsOpacityEffect(m_SnapToCameraMenu);
  m_MenuOpacityEffect->setOpacity(k_ToolbarOpacity);
  m_SnapToCameraMenu->setGraphicsEffect(m_MenuOpacityEffect);

  // Buttons that do not fit a short window are reached through this one, always the last.
  m_OverflowButton = new QPushButton(QStringLiteral("\u22EF"), this);
  m_OverflowButton->setObjectName(QStringLiteral("vxVisToolbarOverflowBtn"));
  m_OverflowButton->setToolTip(QStringLiteral("More camera buttons"));
  // Drawn like the camera buttons around it, not as a raised push button.
  m_OverflowButton->setFlat(true);
  m_OverflowMenu = new QMenu(m_OverflowButton);
  m_OverflowButton->setMenu(m_OverflowMenu);
  connect(m_OverflowMenu, &QMenu::aboutToShow, this, &VXVisualizationToolbarWidget::fillOverflowMenu);
  connect(m_OverflowMenu, &QMenu::aboutToHide, this,
          [this]() { VXButtonHoverReset::resetSoon(m_OverflowButton); });
  layout()->addWidget(m_OverflowButton);
  m_OverflowButton->hide();
  // The scene must never show through the buttons, or its lines look drawn over the icons.
  setAttribute(Qt::WA_StyledBackground, true);

  m_Ui->vxVisToolbarExpandCollapse->setText(QStringLiteral("\u2630"));
  m_Ui->vx2D3DToggleBtn->setText(QStringLiteral("2D"));
  setIcons();
  buildCameraPresetMenu();

  auto* ui = m_Ui.get();
  connect(ui->vxVisToolbarExpandCollapse, &QPushButton::clicked, this,
          &VXVisualizationToolbarWidget::updateExpandCollapseState);
  connect(ui->snapToCameraBtn, &QPushButton::clicked, this,
          &VXVisualizationToolbarWidget::toggleSnapToCameraMenu);
  connect(ui->hoverPointsBtn, &QPushButton::clicked, this,
          &VXVisualizationToolbarWidget::toggleHoverPointsButtonClicked);
  connect(ui->hoverPointsBtn, &QPushButton::clicked, this,
          &VXVisualizationToolbarWidget::hoverPointsBtnClicked);
  connect(ui->hoverCellsBtn, &QPushButton::clicked, this,
          &VXVisualizationToolbarWidget::toggleHoverCellsButtonClicked);
  connect(ui->hoverCellsBtn, &QPushButton::clicked, this,
          &VXVisualizationToolbarWidget::hoverCellsBtnClicked);
  connect(ui->vx2D3DToggleBtn, &QPushButton::clicked, this,
          &VXVisualizationToolbarWidget::toggleInteractiveVisModeBtn);
  connect(ui->vx2D3DToggleBtn, &QPushButton::clicked, this,
          &VXVisualizationToolbarWidget::interactiveModeBtnClicked);
  connect(ui->pickFocalPtButton, &QPushButton::clicked, this,
          &VXVisualizationToolbarWidget::togglePickFocalPtButtonClicked);
  connect(ui->resetCameraBtn, &QPushButton::clicked, this,
          &VXVisualizationToolbarWidget::resetCameraBtnClicked);

  auto* snap = m_SnapToCameraMenu;
  connect(snap, &VXSnapToCameraMenu::camXPlus, this, &VXVisualizationToolbarWidget::xPCameraBtnClicked);
  connect(snap, &VXSnapToCameraMenu::camXMinus, this, &VXVisualizationToolbarWidget::xMCameraBtnClicked);
  connect(snap, &VXSnapToCameraMenu::camYPlus, this, &VXVisualizationToolbarWidget::yPCameraBtnClicked);
  connect(snap, &VXSnapToCameraMenu::camYMinus, this, &VXVisualizationToolbarWidget::yMCameraBtnClicked);
  connect(snap, &VXSnapToCameraMenu::camZPlus, this, &VXVisualizationToolbarWidget::zPCameraBtnClicked);
  connect(snap, &VXSnapToCameraMenu::camZMinus, this, &VXVisualizationToolbarWidget::zMCameraBtnClicked);
  connectWindow();

  ZRPreferences* preferences = ZRPreferences::Instance();
  connect(preferences, &ZRPreferences::customCameraPresetAdded, this,
          &VXVisualizationToolbarWidget::addCustomCameraPresetToMenu);
  connect(preferences, &ZRPreferences::customCameraPresetRemoved, this,
          &VXVisualizationToolbarWidget::removeCustomCameraPresetFromMenu);
  connect(ZRStyle::Instance(), &ZRStyle::styleSheetLoaded, this,
          &VXVisualizationToolbarWidget::styleSheetChanged);
  adjustSize();
}

void VXVisualizationToolbarWidget::connectWindow()
{
  if (m_Window == nullptr)
  {
    return;
  }
  auto* ui = m_Ui.get();
  VXVisualizationWidget* window = m_Window;
  connect(ui->resetCameraBtn, &QPushButton::clicked, window, &VXVisualizationWidget::resetCamera);
  connect(ui->rotateClockwise, &QPushButton::clicked, window, &VXVisualizationWidget::rotateCamClockwise);
  connect(ui->rotateCounterClockwise, &QPushButton::clicked, window,
          &VXVisualizationWidget::rotateCamCounterClockwise);
  connect(ui->cameraImageViewBtn, &QPushButton::clicked, window, &VXVisualizationWidget::camImageView);
  connect(ui->focalPtButton, &QPushButton::clicked, window,
          &VXVisualizationWidget::toggleFocalPointVisibility);
  connect(ui->resetFocalPtButton, &QPushButton::clicked, window,
          [window]() { window->resetFocalPoint(true); });

  auto* snap = m_SnapToCameraMenu;
  connect(snap, &VXSnapToCameraMenu::camXPlus, window, &VXVisualizationWidget::camXPlus);
  connect(snap, &VXSnapToCameraMenu::camXMinus, window, &VXVisualizationWidget::camXMinus);
  connect(snap, &VXSnapToCameraMenu::camYPlus, window, &VXVisualizationWidget::camYPlus);
  connect(snap, &VXSnapToCameraMenu::camYMinus, window, &VXVisualizationWidget::camYMinus);
  connect(snap, &VXSnapToCameraMenu::camZPlus, window, &VXVisualizationWidget::camZPlus);
  connect(snap, &VXSnapToCameraMenu::camZMinus, window, &VXVisualizationWidget::camZMinus);
}

void VXVisualizationToolbarWidget::setIcons()
{
  // The toolbar floats over the render window, whose background is dark whatever the theme: it
  // always takes the light glyphs.
  auto* ui = m_Ui.get();
  const std::pair<QPushButton*, const char*> icons[] = {
      {ui->resetCameraBtn, "ResetCamera"},      {ui->customCamPresetBtn, "CustomCamera"},
      {ui->rotateClockwise, "RotateClockwise"}, {ui->rotateCounterClockwise, "RotateCounterClockwise"},
      {ui->snapToCameraBtn, "SnapToCamera"},    {ui->cameraImageViewBtn, "I Up"},
      {ui->hoverPointsBtn, "HoverPoints"},      {ui->hoverCellsBtn, "HoverCells"},
      {ui->focalPtButton, "FocalPoint"},        {ui->resetFocalPtButton, "ResetFocalPoint"},
      {ui->pickFocalPtButton, "PickFocalPoint"}};
  for (const auto& [button, name] : icons)
  {
    button->setIcon(ZRStyle::generateThemeIconFromName(QString::fromLatin1(name), ZRStyle::k_DarkTheme));
    button->setIconSize(QSize(k_IconSide, k_IconSide));
  }
  // Only the toolbar's own buttons are light on dark; its pop-ups keep the application's colours.
  setStyleSheet(QStringLiteral(
      "VXVisualizationToolbarWidget { background-color: rgba(32, 36, 44, 235); border-radius: 4px; }"
      "VXVisualizationToolbarWidget > QPushButton { color: white; padding: 3px; border: none; "
      "background: transparent; }"
      "VXVisualizationToolbarWidget > QPushButton:checked { background-color: rgba(255, 255, 255, 70); "
      "border-radius: 3px; }"
      "VXVisualizationToolbarWidget > QPushButton:hover { background-color: rgba(255, 255, 255, 35); "
      "border-radius: 3px; }"
      "VXVisualizationToolbarWidget > QPushButton::menu-indicator { width: 0px; }"));
}

void VXVisualizationToolbarWidget::styleSheetChanged(const QString& /*jsonFilePath*/)
{
  setIcons();
}

void VXVisualizationToolbarWidget::buildCameraPresetMenu()
{
  m_PresetMenu = new QMenu(this);
  m_AddPresetAction = m_PresetMenu->addAction(QStringLiteral("Add New Camera Preset"));
  connect(m_AddPresetAction, &QAction::triggered, this, &VXVisualizationToolbarWidget::addCustomCameraPreset);
  m_PresetMenu->addSeparator();
  m_DeleteSeparator = m_PresetMenu->addSeparator();
  m_DeletePresetAction = m_PresetMenu->addAction(QStringLiteral("Delete Camera Preset(s)"));
  connect(m_DeletePresetAction, &QAction::triggered, this,
          &VXVisualizationToolbarWidget::removeCustomCameraPreset);
  m_DeleteSeparator->setVisible(false);
  for (const QString& name : VXCameraPresetStore::names())
  {
    addPresetAction(name);
  }
  m_Ui->customCamPresetBtn->setMenu(m_PresetMenu);
  // The menu took the pointer away: the button must not stay lit once it closes.
  connect(m_PresetMenu, &QMenu::aboutToHide, this,
          [this]() { VXButtonHoverReset::resetSoon(m_Ui->customCamPresetBtn); });
}

void VXVisualizationToolbarWidget::addPresetAction(const QString& presetName)
{
  if (presetName.isEmpty() || m_PresetActions.contains(presetName))
  {
    return;
  }
  auto* action = new QAction(presetName, m_PresetMenu);
  m_PresetMenu->insertAction(m_DeleteSeparator, action);
  m_PresetActions.insert(presetName, action);
  m_DeleteSeparator->setVisible(true);
  connect(action, &QAction::triggered, this,
          [this, presetName]()
          {
            if (m_Window != nullptr)
            {
              m_Window->applyCustomCameraPosPreset(presetName);
            }
          });
}

void VXVisualizationToolbarWidget::addCustomCameraPresetToMenu(const QString& presetName)
{
  addPresetAction(presetName);
}

void VXVisualizationToolbarWidget::removeCustomCameraPresetFromMenu(const QString& presetName)
{
  QAction* action = m_PresetActions.take(presetName);
  if (action != nullptr)
  {
    m_PresetMenu->removeAction(action);
    action->deleteLater();
  }
  m_DeleteSeparator->setVisible(!m_PresetActions.isEmpty());
}

void VXVisualizationToolbarWidget::addCustomCameraPreset()
{
  if (m_Window == nullptr)
  {
    return;
  }
  const QString name = m_Window->addCustomCameraPosPreset();
  if (!name.isEmpty())
  {
    // Every toolbar of every view listens to the preferences, this one included.
    Q_EMIT ZRPreferences::Instance()->customCameraPresetAdded(name);
  }
}

void VXVisualizationToolbarWidget::removeCustomCameraPreset()
{
  const QStringList names = VXCameraPresetStore::names();
  if (names.isEmpty())
  {
    return;
  }
  bool ok = false;
  const QString name = QInputDialog::getItem(this, QStringLiteral("Remove Camera Preset"),
                                             QStringLiteral("Preset Name:"), names, 0, false, &ok);
  if (!ok || name.isEmpty())
  {
    return;
  }
  if (!VXCameraPresetStore::remove(name))
  {
    return;
  }
  removeCustomCameraPresetFromMenu(name);
  Q_EMIT ZRPreferences::Instance()->customCameraPresetRemoved(name);
}

void VXVisualizationToolbarWidget::toggleSnapToCameraMenu()
{
  // From the overflow menu the pop-up stands beside the overflow button.
  QPushButton* button = m_Ui->snapToCameraBtn->isVisible() ? m_Ui->snapToCameraBtn : m_OverflowButton;
  m_SnapToCameraMenu->move(button->mapToGlobal(QPoint(button->width(), 0)));
  m_SnapToCameraMenu->setVisible(!m_SnapToCameraMenu->isVisible());
  if (m_SnapToCameraMenu->isVisible())
  {
    m_SnapToCameraMenu->setFocus(Qt::PopupFocusReason);
  }
}

void VXVisualizationToolbarWidget::toggleInteractiveVisModeBtn()
{
  if (m_Window == nullptr || m_Window->getInteractorStyle() == nullptr)
  {
    return;
  }
  const bool locked2D = m_Ui->vx2D3DToggleBtn->isChecked();
  m_Window->getInteractorStyle()->SetInteractionMode(locked2D ? VTKIS_IMAGE2D : VTKIS_IMAGE3D);
  m_Ui->vx2D3DToggleBtn->setText(locked2D ? QStringLiteral("3D") : QStringLiteral("2D"));
}

void VXVisualizationToolbarWidget::toggleHoverPointsButtonClicked(bool checked)
{
  if (m_Window == nullptr)
  {
    return;
  }
  if (m_Window->hoverCellsModeOn())
  {
    clickOff(m_Ui->hoverCellsBtn);
  }
  if (m_Window->pickFocalPointModeOn())
  {
    clickOff(m_Ui->pickFocalPtButton);
  }
  m_Window->toggleHoverPoints(checked);
}

void VXVisualizationToolbarWidget::toggleHoverCellsButtonClicked(bool checked)
{
  if (m_Window == nullptr)
  {
    return;
  }
  if (m_Window->hoverPointsModeOn())
  {
    clickOff(m_Ui->hoverPointsBtn);
  }
  if (checked && m_Window->pickFocalPointModeOn())
  {
    clickOff(m_Ui->pickFocalPtButton);
  }
  m_Window->toggleHoverCells(checked);
}

void VXVisualizationToolbarWidget::togglePickFocalPtButtonClicked(bool checked)
{
  if (m_Window == nullptr)
  {
    return;
  }
  if (m_Window->hoverPointsModeOn())
  {
    clickOff(m_Ui->hoverPointsBtn);
  }
  if (checked && m_Window->hoverCellsModeOn())
  {
    // Picking keeps the cell hover machinery running: only the button changes.
    m_Ui->hoverCellsBtn->setChecked(false);
  }
  m_Window->toggleFocalPointPicking(checked);
}

void VXVisualizationToolbarWidget::turnOffPickFocalPointButton()
{
  if (m_Ui->pickFocalPtButton->isChecked())
  {
    clickOff(m_Ui->pickFocalPtButton);
  }
}

void VXVisualizationToolbarWidget::enableDisableHoverFeatures(int allowHover)
{
  if (m_Window != nullptr && m_Window->hoverPointsModeOn())
  {
    clickOff(m_Ui->hoverPointsBtn);
  }
  if (m_Window != nullptr && m_Window->hoverCellsModeOn())
  {
    clickOff(m_Ui->hoverCellsBtn);
  }
  m_Ui->hoverPointsBtn->setEnabled((allowHover & 2) != 0);
  m_Ui->hoverCellsBtn->setEnabled((allowHover & 1) != 0);
}

void VXVisualizationToolbarWidget::updateExpandCollapseState(bool collapsed)
{
  m_Collapsed = collapsed;
  applyFit();
}

QList<QPushButton*> VXVisualizationToolbarWidget::cameraButtons() const
{
  // In the order of the layout, top to bottom, without the collapse and the overflow buttons.
  QList<QPushButton*> buttons;
  for (int i = 0; i < layout()->count(); ++i)
  {
    auto* button = qobject_cast<QPushButton*>(layout()->itemAt(i)->widget());
    if (button != nullptr && button != m_Ui->vxVisToolbarExpandCollapse && button != m_OverflowButton)
    {
      buttons.append(button);
    }
  }
  return buttons;
}

int VXVisualizationToolbarWidget::fullHeight() const
{
  const QMargins margins = layout()->contentsMargins();
  const int spacing = layout()->spacing();
  int height = margins.top() + margins.bottom() + m_Ui->vxVisToolbarExpandCollapse->sizeHint().height();
  for (QPushButton* button : cameraButtons())
  {
    height += spacing + button->sizeHint().height();
  }
  return height;
}

void VXVisualizationToolbarWidget::fitToHeight(int available)
{
  m_AvailableHeight = available;
  applyFit();
}

void VXVisualizationToolbarWidget::applyFit()
{
  const QList<QPushButton*> buttons = cameraButtons();
  m_Overflowed.clear();
  const bool everythingFits = m_AvailableHeight <= 0 || fullHeight() <= m_AvailableHeight;
  const QMargins margins = layout()->contentsMargins();
  const int spacing = layout()->spacing();
  int used = margins.top() + margins.bottom() + m_Ui->vxVisToolbarExpandCollapse->sizeHint().height() +
             spacing + m_OverflowButton->sizeHint().height();
  for (QPushButton* button : buttons)
  {
    const int needed = spacing + button->sizeHint().height();
    const bool fits = everythingFits || (m_Overflowed.isEmpty() && used + needed <= m_AvailableHeight);
    button->setVisible(!m_Collapsed && fits);
    if (fits)
    {
      used += needed;
    }
    else
    {
      m_Overflowed.append(button);
    }
  }
  m_OverflowButton->setVisible(!m_Collapsed && !m_Overflowed.isEmpty());
  if (m_Collapsed || m_Overflowed.isEmpty())
  {
    m_OverflowMenu->hide();
  }
  adjustSize();
}

void VXVisualizationToolbarWidget::fillOverflowMenu()
{
  m_OverflowMenu->clear();
  for (QPushButton* button : m_Overflowed)
  {
    // The first sentence of the tool tip names the button well enough.
    QString text = QTextDocumentFragment::fromHtml(button->toolTip()).toPlainText().trimmed();
    const int stop = text.indexOf(QLatin1Char('.'));
    if (stop > 0)
    {
      text = text.left(stop);
    }
    if (button->menu() != nullptr)
    {
      QMenu* sub = m_OverflowMenu->addMenu(button->icon(), text);
      sub->addActions(button->menu()->actions());
      continue;
    }
    QAction* action = m_OverflowMenu->addAction(button->icon(), text);
    action->setCheckable(button->isCheckable());
    action->setChecked(button->isChecked());
    connect(action, &QAction::triggered, button, &QPushButton::click);
  }
}

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
void VXVisualizationToolbarWidget::enterEvent(QEnterEvent* event)
#else
void VXVisualizationToolbarWidget::enterEvent(QEvent* event)
#endif
{
  m_OpacityEffect->setOpacity(k_ToolbarOpacity);
  m_MenuOpacityEffect->setOpacity(k_ToolbarOpacity);
  QWidget::enterEvent(event);
}

void VXVisualizationToolbarWidget::leaveEvent(QEvent* event)
{
  m_OpacityEffect->setOpacity(k_ToolbarOpacity);
  m_MenuOpacityEffect->setOpacity(k_ToolbarOpacity);
  QWidget::leaveEvent(event);
}
