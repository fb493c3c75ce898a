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
#include <QFile>
#include <QInputDialog>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace zr_test;

class VXVisualizationToolbarWidgetTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    ASSERT_TRUE(m_Scratch.isValid());
    QtZRSettings::setSettingsDirectory(m_Scratch.path());
    m_Window = makeShownWindow();
    m_Window->addActor(makeSphereActor(0, 0, 0, 0.9, 0.2, 0.2));
    m_Toolbar = m_Window->getToolbar();
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

TEST_F(VXVisualizationToolbarWidgetTest, CollapseHidesEveryButtonButItself)
{
  QTest::mouseClick(button("vxVisToolbarExpandCollapse"), Qt::LeftButton);
  EXPECT_FALSE(button("resetCameraBtn")->isVisible());
  EXPECT_FALSE(button("pickFocalPtButton")->isVisible());
  EXPECT_TRUE(button("vxVisToolbarExpandCollapse")->isVisible());
  QTest::mouseClick(button("vxVisToolbarExpandCollapse"), Qt::LeftButton);
  EXPECT_TRUE(button("resetCameraBtn")->isVisible());
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
  m_Window->saveScreenshot(path);
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
