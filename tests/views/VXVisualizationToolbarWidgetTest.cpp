#include "RenderWindowTestUtils.h"

#include "platform/QtZRSettings.h"
#include "platform/ZRPreferences.h"
#include "views/VXCameraPresetStore.h"
#include "views/VXInteractorStyleCamera.h"
#include "views/VXScreenshotOptionsDialog.h"
#include "views/VXSnapToCameraMenu.h"
#include "views/VXViewCubeWidget.h"
#include "views/VXVisualizationToolbarWidget.h"

#include <vtkCamera.h>
#include <vtkRenderer.h>

#include <QApplication>
#include <QCheckBox>
#include <QCursor>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QInputDialog>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <array>
#include <cmath>

using namespace zr_test;

class VXVisualizationToolbarWidgetTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    ASSERT_TRUE(m_Scratch.isValid());
    QtZRSettings::setSettingsDirectory(m_Scratch.path());
    // Tall enough for every camera button; short windows are tested on their own.
    m_Window = makeShownWindow(320, 560);
    m_Window->addActor(makeSphereActor(0, 0, 0, 0.9, 0.2, 0.2));
    m_Toolbar = m_Window->getToolbar();
    ASSERT_TRUE(m_Toolbar->getOverflowedButtons().isEmpty());
  }
  void TearDown() override
  {
    m_Window.reset();
    QtZRSettings::setSettingsDirectory(QString());
  }

  QPushButton* button(const char* name) const
  {
    auto* found = m_Toolbar->findChild<QPushButton*>(QString::fromLatin1(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }

  QStringList presetMenuTexts() const
  {
    QStringList texts;
    for (QAction* action : m_Toolbar->getCameraPresetMenu()->actions())
    {
      if (action->isVisible())
      {
        texts << (action->isSeparator() ? QStringLiteral("|") : action->text());
      }
    }
    return texts;
  }

  QTemporaryDir m_Scratch;
  std::unique_ptr<VXVisualizationWidget> m_Window;
  VXVisualizationToolbarWidget* m_Toolbar = nullptr;
};

TEST_F(VXVisualizationToolbarWidgetTest, HoverPointsTurnsFocalPointPickingOff)
{
  QTest::mouseClick(button("pickFocalPtButton"), Qt::LeftButton);
  ASSERT_TRUE(m_Window->pickFocalPointModeOn());
  QTest::mouseClick(button("hoverPointsBtn"), Qt::LeftButton);
  EXPECT_TRUE(m_Window->hoverPointsModeOn());
  EXPECT_FALSE(m_Window->pickFocalPointModeOn());
  EXPECT_FALSE(m_Window->hoverCellsModeOn());
  EXPECT_FALSE(button("pickFocalPtButton")->isChecked());
  EXPECT_TRUE(button("hoverPointsBtn")->isChecked());

  // Hover cells and hover points exclude each other.
  QTest::mouseClick(button("hoverCellsBtn"), Qt::LeftButton);
  EXPECT_TRUE(m_Window->hoverCellsModeOn());
  EXPECT_FALSE(m_Window->hoverPointsModeOn());
  EXPECT_FALSE(button("hoverPointsBtn")->isChecked());
}

TEST_F(VXVisualizationToolbarWidgetTest, PickingWhileHoveringCellsUnchecksOnlyTheCellButton)
{
  QTest::mouseClick(button("hoverCellsBtn"), Qt::LeftButton);
  QSignalSpy cellClicks(button("hoverCellsBtn"), &QPushButton::clicked);
  QTest::mouseClick(button("pickFocalPtButton"), Qt::LeftButton);
  EXPECT_EQ(cellClicks.count(), 0);
  EXPECT_FALSE(button("hoverCellsBtn")->isChecked());
  EXPECT_TRUE(m_Window->pickFocalPointModeOn());
  EXPECT_TRUE(m_Window->hoverCellsModeOn()) << "picking runs on the cell hover machinery";
}

TEST_F(VXVisualizationToolbarWidgetTest, HoverFeatureMaskEnablesButtonsAndEndsActiveModes)
{
  QTest::mouseClick(button("hoverPointsBtn"), Qt::LeftButton);
  m_Toolbar->enableDisableHoverFeatures(1);
  EXPECT_FALSE(m_Window->hoverPointsModeOn());
  EXPECT_FALSE(button("hoverPointsBtn")->isEnabled());
  EXPECT_TRUE(button("hoverCellsBtn")->isEnabled());
  m_Toolbar->enableDisableHoverFeatures(2);
  EXPECT_TRUE(button("hoverPointsBtn")->isEnabled());
  EXPECT_FALSE(button("hoverCellsBtn")->isEnabled());
}

TEST_F(VXVisualizationToolbarWidgetTest, TwoDimensionalLockSwitchesTheInteractionMode)
{
  EXPECT_EQ(m_Window->getInteractorStyle()->GetInteractionMode(), VTKIS_IMAGE3D);
  QTest::mouseClick(button("vx2D3DToggleBtn"), Qt::LeftButton);
  EXPECT_EQ(m_Window->getInteractorStyle()->GetInteractionMode(), VTKIS_IMAGE2D);
  QTest::mouseClick(button("vx2D3DToggleBtn"), Qt::LeftButton);
  EXPECT_EQ(m_Window->getInteractorStyle()->GetInteractionMode(), VTKIS_IMAGE3D);
}

TEST_F(VXVisualizationToolbarWidgetTest, LeftDragPansWhenLockedTo2DAndRotatesIn3D)
{
  m_Window->resetCamera();
  settle();
  auto drag = [this]()
  {
    const QPoint from(200, 120);
    const QPoint to(260, 150);
    auto send = [this](QEvent::Type type, const QPoint& at, Qt::MouseButton which, Qt::MouseButtons held)
    {
      QMouseEvent event(type, at, m_Window->mapToGlobal(at), which, held, Qt::NoModifier);
      QApplication::sendEvent(m_Window.get(), &event);
    };
    send(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    for (int i = 1; i <= 6; ++i)
    {
      send(QEvent::MouseMove, from + (to - from) * i / 6, Qt::NoButton, Qt::LeftButton);
    }
    send(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
    settle();
  };
  vtkCamera* camera = m_Window->getRenderer()->GetActiveCamera();
  auto direction = [camera]()
  {
    std::array<double, 3> d{};
    camera->GetDirectionOfProjection(d.data());
    return d;
  };

  QTest::mouseClick(button("vx2D3DToggleBtn"), Qt::LeftButton);
  ASSERT_EQ(m_Window->getInteractorStyle()->GetInteractionMode(), VTKIS_IMAGE2D);
  const std::array<double, 3> lookingBefore = direction();
  const std::array<double, 3> focalBefore = {camera->GetFocalPoint()[0], camera->GetFocalPoint()[1],
                                             camera->GetFocalPoint()[2]};
  drag();
  const double moved =
      std::hypot(camera->GetFocalPoint()[0] - focalBefore[0], camera->GetFocalPoint()[1] - focalBefore[1],
                 camera->GetFocalPoint()[2] - focalBefore[2]);
  EXPECT_GT(moved, 0.05) << "the camera slid with the drag";
  const std::array<double, 3> lookingAfter = direction();
  for (int i = 0; i < 3; ++i)
  {
    EXPECT_NEAR(lookingAfter[i], lookingBefore[i], 1e-9) << "a pan never turns the camera";
  }

  QTest::mouseClick(button("vx2D3DToggleBtn"), Qt::LeftButton);
  drag();
  const std::array<double, 3> rotated = direction();
  EXPECT_GT(std::abs(rotated[0] - lookingAfter[0]) + std::abs(rotated[1] - lookingAfter[1]), 0.05)
      << "in 3D the same drag rotates";
}

TEST_F(VXVisualizationToolbarWidgetTest, CollapseHidesEveryButtonButItself)
{
  QTest::mouseClick(button("vxVisToolbarExpandCollapse"), Qt::LeftButton);
  EXPECT_FALSE(button("resetCameraBtn")->isVisible());
  EXPECT_FALSE(button("pickFocalPtButton")->isVisible());
  EXPECT_TRUE(button("vxVisToolbarExpandCollapse")->isVisible());
  QTest::mouseClick(button("vxVisToolbarExpandCollapse"), Qt::LeftButton);
  EXPECT_TRUE(button("resetCameraBtn")->isVisible());
}

TEST_F(VXVisualizationToolbarWidgetTest, ShortWindowPutsTheLastButtonsInTheOverflowMenu)
{
  m_Window->resize(320, 700);
  settle();
  QPushButton* overflow = m_Toolbar->getOverflowButton();
  EXPECT_FALSE(overflow->isVisible());
  EXPECT_TRUE(m_Toolbar->getOverflowedButtons().isEmpty());
  EXPECT_TRUE(button("pickFocalPtButton")->isVisible());
  EXPECT_EQ(m_Toolbar->height(), m_Toolbar->fullHeight());

  m_Window->resize(320, 200);
  settle();
  EXPECT_TRUE(overflow->isVisible());
  EXPECT_LE(m_Toolbar->geometry().bottom(), m_Window->height() - 1) << "nothing is cut off";
  EXPECT_TRUE(button("resetCameraBtn")->isVisible()) << "the first buttons stay";
  const QList<QPushButton*> moved = m_Toolbar->getOverflowedButtons();
  ASSERT_FALSE(moved.isEmpty());
  EXPECT_EQ(moved.back(), button("pickFocalPtButton")) << "the last buttons move first";
  for (QPushButton* hidden : moved)
  {
    EXPECT_FALSE(hidden->isVisible());
  }

  // The menu reaches the hidden buttons: picking the focal point from it turns the mode on.
  QMenu* menu = m_Toolbar->getOverflowMenu();
  Q_EMIT menu->aboutToShow();
  ASSERT_EQ(menu->actions().size(), moved.size());
  QAction* pick = menu->actions().back();
  EXPECT_EQ(pick->text(), QStringLiteral("Pick a focal point for the camera"));
  pick->trigger();
  EXPECT_TRUE(m_Window->pickFocalPointModeOn());
  EXPECT_TRUE(button("pickFocalPtButton")->isChecked());
  Q_EMIT menu->aboutToShow();
  EXPECT_TRUE(menu->actions().back()->isChecked());
  menu->actions().back()->trigger();
  EXPECT_FALSE(m_Window->pickFocalPointModeOn());

  m_Window->resize(320, 700);
  settle();
  EXPECT_FALSE(overflow->isVisible());
  EXPECT_TRUE(button("pickFocalPtButton")->isVisible());
}

TEST_F(VXVisualizationToolbarWidgetTest, CollapseButtonStaysUnderThePointer)
{
  for (const int height : {700, 240})
  {
    m_Window->resize(320, height);
    settle();
    QPushButton* collapse = button("vxVisToolbarExpandCollapse");
    const QPoint before = collapse->mapTo(m_Window.get(), QPoint(0, 0));
    QTest::mouseClick(collapse, Qt::LeftButton);
    settle();
    EXPECT_EQ(collapse->mapTo(m_Window.get(), QPoint(0, 0)), before) << "collapsed at height " << height;
    EXPECT_FALSE(m_Toolbar->getOverflowButton()->isVisible());
    QTest::mouseClick(collapse, Qt::LeftButton);
    settle();
    EXPECT_EQ(collapse->mapTo(m_Window.get(), QPoint(0, 0)), before) << "expanded at height " << height;
    EXPECT_TRUE(button("resetCameraBtn")->isVisible());
  }
}

TEST_F(VXVisualizationToolbarWidgetTest, SnapMenuButtonsKeepTheApplicationsColours)
{
  // Only the toolbar's own buttons are light on dark; the pop-up's buttons must read as enabled.
  QPushButton* top = m_Toolbar->getSnapToCameraMenu()->findChild<QPushButton*>(QStringLiteral("cameraZmBtn"));
  ASSERT_NE(top, nullptr);
  m_Toolbar->toggleSnapToCameraMenu();
  settle();
  const QImage shown = top->grab().toImage();
  m_Toolbar->toggleSnapToCameraMenu();
  int darkPixels = 0;
  for (int y = 0; y < shown.height(); ++y)
  {
    for (int x = 0; x < shown.width(); ++x)
    {
      darkPixels += qGray(shown.pixel(x, y)) < 100 ? 1 : 0;
    }
  }
  EXPECT_GT(darkPixels, 10) << "the text is dark on the light button face";
  EXPECT_NE(top->palette().color(QPalette::ButtonText), QColor(Qt::white));
}

TEST_F(VXVisualizationToolbarWidgetTest, PresetButtonIsNoLongerLitOnceItsMenuCloses)
{
  QPushButton* presets = button("customCamPresetBtn");
  const QRect screen = QGuiApplication::primaryScreen()->geometry();
  QCursor::setPos(screen.bottomRight() - QPoint(2, 2));
  ASSERT_FALSE(presets->rect().contains(presets->mapFromGlobal(QCursor::pos())));
  // The state a button is left in when its menu took the pointer away.
  presets->setAttribute(Qt::WA_UnderMouse, true);
  presets->setDown(true);
  Q_EMIT m_Toolbar->getCameraPresetMenu()->aboutToHide();
  settle();
  EXPECT_FALSE(presets->testAttribute(Qt::WA_UnderMouse));
  EXPECT_FALSE(presets->isDown());
}

TEST_F(VXVisualizationToolbarWidgetTest, SnapMenuTogglesAndItsButtonsTurnTheCamera)
{
  VXSnapToCameraMenu* menu = m_Toolbar->getSnapToCameraMenu();
  EXPECT_FALSE(menu->isVisible());
  EXPECT_TRUE(menu->windowFlags().testFlag(Qt::FramelessWindowHint));
  QTest::mouseClick(button("snapToCameraBtn"), Qt::LeftButton);
  EXPECT_TRUE(menu->isVisible());
  const QPoint expected =
      button("snapToCameraBtn")->mapToGlobal(QPoint(button("snapToCameraBtn")->width(), 0));
  EXPECT_EQ(menu->pos(), expected);

  QSignalSpy toolbarSignal(m_Toolbar, &VXVisualizationToolbarWidget::yPCameraBtnClicked);
  auto* front = menu->findChild<QPushButton*>(QStringLiteral("cameraYpBtn"));
  ASSERT_NE(front, nullptr);
  EXPECT_EQ(front->text(), QStringLiteral("Front"));
  QTest::mouseClick(front, Qt::LeftButton);
  EXPECT_FALSE(menu->isVisible());
  EXPECT_EQ(toolbarSignal.count(), 1);
  double direction[3];
  m_Window->getRenderer()->GetActiveCamera()->GetDirectionOfProjection(direction);
  EXPECT_NEAR(direction[1], 1.0, 1e-9);
}

TEST_F(VXVisualizationToolbarWidgetTest, PresetMenuListsStoredPresetsInEveryToolbar)
{
  EXPECT_EQ(presetMenuTexts(), (QStringList{"Add New Camera Preset", "|", "Delete Camera Preset(s)"}));
  auto second = makeShownWindow();
  ASSERT_TRUE(m_Window->storeCameraPreset(QStringLiteral("Overview")));
  Q_EMIT ZRPreferences::Instance()->customCameraPresetAdded(QStringLiteral("Overview"));
  const QStringList withPreset = {"Add New Camera Preset", "|", "Overview", "|", "Delete Camera Preset(s)"};
  EXPECT_EQ(presetMenuTexts(), withPreset);
  EXPECT_EQ(second->getToolbar()->getCameraPresetMenuNames(), QStringList{"Overview"});

  // A toolbar made later reads the stored list.
  auto third = makeShownWindow();
  EXPECT_EQ(third->getToolbar()->getCameraPresetMenuNames(), QStringList{"Overview"});

  Q_EMIT ZRPreferences::Instance()->customCameraPresetRemoved(QStringLiteral("Overview"));
  EXPECT_EQ(presetMenuTexts(), (QStringList{"Add New Camera Preset", "|", "Delete Camera Preset(s)"}));
  EXPECT_TRUE(second->getToolbar()->getCameraPresetMenuNames().isEmpty());
}

TEST_F(VXVisualizationToolbarWidgetTest, ButtonsCarryTheirToolTips)
{
  EXPECT_EQ(button("snapToCameraBtn")->toolTip(), QStringLiteral("Set view direction shortcuts"));
  EXPECT_EQ(button("rotateClockwise")->toolTip(),
            QStringLiteral("<html><head/><body><p>Rotate clockwise 90<span style=\" "
                           "vertical-align:super;\">0</span></p></body></html>"));
  EXPECT_FALSE(button("resetCameraBtn")->icon().isNull());
}

TEST_F(VXVisualizationToolbarWidgetTest, PresetsAreAddedAndDeletedThroughTheirDialogs)
{
  auto second = makeShownWindow();
  m_Window->camYMinus();
  answerNextDialog<QInputDialog>(
      [](QInputDialog* dialog)
      {
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Visualization Camera Preset Name"));
        EXPECT_EQ(dialog->textValue(), QStringLiteral("Untitled Preset"));
        dialog->setTextValue(QStringLiteral("Back view"));
        dialog->accept();
      });
  m_Toolbar->addCustomCameraPreset();
  EXPECT_EQ(VXCameraPresetStore::names(), QStringList{"Back view"});
  EXPECT_EQ(second->getToolbar()->getCameraPresetMenuNames(), QStringList{"Back view"});

  // Choosing the preset in the other window's menu turns its camera.
  for (QAction* action : second->getToolbar()->getCameraPresetMenu()->actions())
  {
    if (action->text() == QStringLiteral("Back view"))
    {
      action->trigger();
    }
  }
  double direction[3];
  second->getRenderer()->GetActiveCamera()->GetDirectionOfProjection(direction);
  EXPECT_NEAR(direction[1], -1.0, 1e-9);

  // A cancelled dialog stores nothing.
  answerNextDialog<QInputDialog>([](QInputDialog* dialog) { dialog->reject(); });
  m_Toolbar->addCustomCameraPreset();
  EXPECT_EQ(VXCameraPresetStore::names(), QStringList{"Back view"});

  answerNextDialog<QInputDialog>(
      [](QInputDialog* dialog)
      {
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Remove Camera Preset"));
        dialog->setTextValue(QStringLiteral("Back view"));
        dialog->accept();
      });
  m_Toolbar->removeCustomCameraPreset();
  EXPECT_TRUE(VXCameraPresetStore::names().isEmpty());
  EXPECT_TRUE(m_Toolbar->getCameraPresetMenuNames().isEmpty());
  EXPECT_TRUE(second->getToolbar()->getCameraPresetMenuNames().isEmpty());
}

TEST_F(VXVisualizationToolbarWidgetTest, ScreenshotIsSavedWithTheChosenBackground)
{
  m_Window->resetCamera();
  const QString path = m_Scratch.filePath(QStringLiteral("shot.png"));
  answerNextDialog<VXScreenshotOptionsDialog>(
      [](VXScreenshotOptionsDialog* dialog)
      {
        dialog->findChild<QCheckBox*>(QStringLiteral("transparentBGCheckBox"))->setChecked(true);
        dialog->accept();
      });
  QSignalSpy messages(m_Window.get(), &VXVisualizationWidget::printOutput);
  m_Window->saveScreenshot(path);
  ASSERT_EQ(messages.count(), 1) << "the user is told where the picture went";
  EXPECT_EQ(messages.at(0).at(0).toString(),
            QStringLiteral("Screenshot saved to %1").arg(QDir::toNativeSeparators(path)));
  const QImage saved(path);
  ASSERT_FALSE(saved.isNull());
  EXPECT_EQ(saved.size(), m_Window->size());
  EXPECT_TRUE(saved.hasAlphaChannel());
  EXPECT_EQ(qAlpha(saved.pixel(2, 2)), 0);

  // A cancelled dialog writes nothing.
  const QString other = m_Scratch.filePath(QStringLiteral("other.png"));
  answerNextDialog<VXScreenshotOptionsDialog>([](VXScreenshotOptionsDialog* dialog) { dialog->reject(); });
  m_Window->saveScreenshot(other);
  EXPECT_FALSE(QFile::exists(other));
  EXPECT_EQ(messages.count(), 1) << "nothing written, nothing said";
}

TEST_F(VXVisualizationToolbarWidgetTest, OrientationLabelsFollowThePreferences)
{
  const QStringList labels = {"E", "W", "N", "S", "Up", "Down"};
  Q_EMIT ZRPreferences::Instance()->orientationMarkerTextChanged(labels);
  const auto shown = m_Window->getCameraOrientationWidget()->GetFaceLabels();
  for (int i = 0; i < 6; ++i)
  {
    EXPECT_EQ(QString::fromStdString(shown[i]), labels[i]);
  }
  // A list of the wrong length is ignored.
  Q_EMIT ZRPreferences::Instance()->orientationMarkerTextChanged({"A", "B"});
  EXPECT_EQ(m_Window->getCameraOrientationWidget()->GetFaceLabels()[0], "E");
}
