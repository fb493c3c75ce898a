#include "RenderWindowTestUtils.h"

#include "platform/QtZRSettings.h"
#include "platform/ZRSettingsKeys.h"
#include "views/VXGridAxesActor.h"
#include "views/VXInteractorStyleCamera.h"
#include "views/VXPickerCallback.h"
#include "views/VXViewCubeWidget.h"

#include <vtkActor.h>
#include <vtkCallbackCommand.h>
#include <vtkCamera.h>
#include <vtkCursor3D.h>
#include <vtkMath.h>
#include <vtkOrientationMarkerWidget.h>
#include <vtkPropCollection.h>
#include <vtkRenderer.h>

#include <nlohmann/json.hpp>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTouchDevice>
#include <QTouchEvent>

#include <algorithm>
#include <array>

using namespace zr_test;

namespace
{
std::array<double, 3> viewDirection(vtkCamera* camera)
{
  std::array<double, 3> direction;
  camera->GetDirectionOfProjection(direction.data());
  return direction;
}

// Geometry comes in single precision, so points agree to about 1e-7.
void expectVector(const double* actual, const std::array<double, 3>& expected, const char* what)
{
  for (int i = 0; i < 3; ++i)
  {
    EXPECT_NEAR(actual[i], expected[i], 1e-6) << what << " component " << i;
  }
}

/** Counts the frames the main renderer finishes. */
class FrameCounter
{
public:
  explicit FrameCounter(vtkRenderer* renderer)
  {
    m_Callback->SetClientData(&m_Frames);
    m_Callback->SetCallback([](vtkObject*, unsigned long, void* clientData, void*)
                            { ++*static_cast<int*>(clientData); });
    renderer->AddObserver(vtkCommand::EndEvent, m_Callback);
  }
  int frames() const { return m_Frames; }

private:
  int m_Frames = 0;
  vtkNew<vtkCallbackCommand> m_Callback;
};
} // namespace

class VXVisualizationWidgetTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    m_Window = makeShownWindow();
    m_Window->addActor(makeSphereActor(1.0, 2.0, 3.0, 0.8, 0.2, 0.2));
    m_Window->resetCamera();
    settle();
  }

  vtkCamera* camera() const { return m_Window->getRenderer()->GetActiveCamera(); }

  std::unique_ptr<VXVisualizationWidget> m_Window;
};

TEST_F(VXVisualizationWidgetTest, EachAxisDirectionLooksAlongItsAxisWithItsViewUp)
{
  struct Case
  {
    void (VXVisualizationWidget::*slot)();
    std::array<double, 3> direction;
    std::array<double, 3> viewUp;
  };
  const Case cases[] = {{&VXVisualizationWidget::camXPlus, {1, 0, 0}, {0, 0, 1}},
                        {&VXVisualizationWidget::camYPlus, {0, 1, 0}, {0, 0, 1}},
                        {&VXVisualizationWidget::camZPlus, {0, 0, 1}, {0, 1, 0}},
                        {&VXVisualizationWidget::camXMinus, {-1, 0, 0}, {0, 0, 1}},
                        {&VXVisualizationWidget::camYMinus, {0, -1, 0}, {0, 0, 1}},
                        {&VXVisualizationWidget::camZMinus, {0, 0, -1}, {0, 1, 0}},
                        {&VXVisualizationWidget::camImageView, {0, 0, 1}, {0, -1, 0}}};
  for (const Case& c : cases)
  {
    // Start from an odd camera, so that nothing is right by accident.
    camera()->SetPosition(7.0, -3.0, 5.0);
    camera()->SetViewUp(0.3, 0.9, 0.1);
    (m_Window.get()->*c.slot)();
    expectVector(viewDirection(camera()).data(), c.direction, "direction");
    expectVector(camera()->GetViewUp(), c.viewUp, "view up");
    // The camera looks at the data's centre, from the distance that a reset gives.
    expectVector(camera()->GetFocalPoint(), {1.0, 2.0, 3.0}, "focal point");
  }
}

TEST_F(VXVisualizationWidgetTest, RotationsRollTheViewUpByAQuarterTurn)
{
  m_Window->camYPlus();
  m_Window->rotateCamClockwise();
  // Looking along +Y with +Z up, a clockwise roll brings the view up to -X.
  expectVector(camera()->GetViewUp(), {-1.0, 0.0, 0.0}, "after clockwise");
  m_Window->rotateCamCounterClockwise();
  m_Window->rotateCamCounterClockwise();
  expectVector(camera()->GetViewUp(), {1.0, 0.0, 0.0}, "after two counterclockwise");
}

TEST_F(VXVisualizationWidgetTest, TwoRenderRequestsBeforeTheEventLoopRunGiveOneFrame)
{
  settle();
  FrameCounter counter(m_Window->getRenderer());
  const int before = m_Window->getCoalescedFrameCount();
  m_Window->render();
  m_Window->render();
  EXPECT_TRUE(m_Window->isRenderPending());
  EXPECT_EQ(counter.frames(), 0) << "render() must never draw synchronously";
  settle();
  EXPECT_EQ(m_Window->getCoalescedFrameCount(), before + 1);
  const int framesForTwoRequests = counter.frames();
  EXPECT_GE(framesForTwoRequests, 1);

  // One request alone costs the same as the burst of two.
  m_Window->render();
  settle();
  EXPECT_EQ(m_Window->getCoalescedFrameCount(), before + 2);
  EXPECT_EQ(counter.frames(), 2 * framesForTwoRequests);
}

TEST_F(VXVisualizationWidgetTest, GridAxesDialogIsMadeWhenFirstAskedFor)
{
  // A window that nobody asks for grid options has no dialog, and still saves the defaults.
  EXPECT_FALSE(m_Window->hasGridAxesWidget());
  nlohmann::json defaults;
  m_Window->saveState(defaults);
  EXPECT_EQ(defaults["global_grid_axes_spacingx"], 0.0);
  EXPECT_EQ(defaults["global_grid_axes_show_grid_lines"], false);
  EXPECT_FALSE(m_Window->hasGridAxesWidget());

  // "Edit Axes Grid" opens it; OK applies its values to the grid actor.
  QTimer::singleShot(
      0,
      []
      {
        auto* dialog = qobject_cast<VXGridAxesWidget*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Grid Axes Options"));
        dialog->findChild<QLineEdit*>(QStringLiteral("spacingX"))->setText(QStringLiteral("0.5"));
        dialog->findChild<QCheckBox*>(QStringLiteral("showGridCheckBox"))->setChecked(true);
        dialog->onOkButtonClicked();
      });
  m_Window->editGridAxes();
  ASSERT_TRUE(m_Window->hasGridAxesWidget());
  EXPECT_TRUE(m_Window->getGridAxesActor()->GetGenerateGrid());
  EXPECT_TRUE(m_Window->getGridAxesActor()->GetUseCustomLabels(0));
  EXPECT_FALSE(m_Window->getGridAxesActor()->GetUseCustomLabels(1));

  // Apply of the lazily made dialog still reaches the window.
  m_Window->getGridAxesWidget().setShowGrid(false);
  Q_EMIT m_Window->getGridAxesWidget().apply();
  EXPECT_FALSE(m_Window->getGridAxesActor()->GetGenerateGrid());

  // Loading spacing into a fresh window makes its dialog with the loaded values.
  auto other = makeShownWindow();
  nlohmann::json saved;
  m_Window->saveState(saved);
  EXPECT_EQ(saved["global_grid_axes_spacingx"], 0.5);
  other->loadState(saved);
  ASSERT_TRUE(other->hasGridAxesWidget());
  EXPECT_EQ(other->getGridAxesWidget().getSpacing()[0], 0.5);
}

TEST_F(VXVisualizationWidgetTest, StateRoundTripsThroughJson)
{
  camera()->SetPosition(10.0, 20.0, 30.0);
  camera()->SetFocalPoint(1.0, 2.0, 3.0);
  camera()->SetViewUp(0.0, 1.0, 0.0);
  camera()->SetViewAngle(40.0);
  camera()->SetParallelScale(7.5);
  camera()->SetParallelProjection(1);
  m_Window->getGridAxesAction()->setChecked(true);
  m_Window->getGridAxesWidget().setSpacing({{0.5, 0.0, 0.25}});
  m_Window->getGridAxesWidget().setShowGrid(true);
  m_Window->useOwnContextMenu(false);
  nlohmann::json saved;
  m_Window->saveState(saved);

  EXPECT_EQ(saved["camera_pos_y"], 20.0);
  EXPECT_EQ(saved["parallel_projection"], 1);
  EXPECT_EQ(saved["global_grid_axes"], true);
  EXPECT_EQ(saved["global_grid_axes_spacingx"], 0.5);
  EXPECT_EQ(saved["global_grid_axes_show_grid_lines"], true);
  EXPECT_EQ(saved["own_context_menu"], false);
  EXPECT_EQ(saved["check_context_menu"], false);
  EXPECT_EQ(saved["num_render_layers"], 2);

  auto other = makeShownWindow();
  other->addActor(makeCubeActor(1.0, 2.0, 3.0, 0.2, 0.8, 0.2));
  other->loadState(saved);
  nlohmann::json reloaded;
  other->saveState(reloaded);
  EXPECT_EQ(reloaded, saved);
  vtkCamera* otherCamera = other->getRenderer()->GetActiveCamera();
  expectVector(otherCamera->GetPosition(), {10.0, 20.0, 30.0}, "position");
  EXPECT_TRUE(other->getParallelProjectionAction()->isChecked());
  EXPECT_FALSE(other->usesOwnContextMenu());
  // The loaded spacing shows on the grid at once: x labels every 0.5 from the data's minimum.
  ASSERT_TRUE(other->getRenderer()->HasViewProp(other->getGridAxesActor()));
  EXPECT_EQ(other->getGridAxesActor()->GetLabelTexts(0), (std::vector<std::string>{"0.5", "1", "1.5"}));
  EXPECT_TRUE(other->getGridAxesActor()->GetGenerateGrid());
}

TEST_F(VXVisualizationWidgetTest, MissingKeysKeepTheCurrentValues)
{
  camera()->SetPosition(10.0, 20.0, 30.0);
  camera()->SetViewAngle(33.0);
  nlohmann::json partial = {{"camera_pos_x", 1.0}, {"camera_pos_y", 2.0}, {"camera_view_angle", 45.0}};
  m_Window->loadState(partial);
  // A vector with a missing component is not taken at all.
  expectVector(camera()->GetPosition(), {10.0, 20.0, 30.0}, "position");
  EXPECT_DOUBLE_EQ(camera()->GetViewAngle(), 45.0);

  m_Window->loadState(nlohmann::json::array({1, 2, 3}));
  EXPECT_DOUBLE_EQ(camera()->GetViewAngle(), 45.0);
  EXPECT_THROW(m_Window->loadState(nlohmann::json{{"own_context_menu", "yes"}}), nlohmann::json::type_error);
}

TEST_F(VXVisualizationWidgetTest, UnlinkingOneOfThreeLeavesTheOtherTwoLinked)
{
  auto second = makeShownWindow();
  auto third = makeShownWindow();
  second->linkCameraWith(m_Window.get());
  third->linkCameraWith(second.get());

  const std::set<VXVisualizationWidget*> all = {m_Window.get(), second.get(), third.get()};
  for (VXVisualizationWidget* w : all)
  {
    EXPECT_EQ(w->getLinkedWidgets(), all);
  }
  // One camera drives all three.
  EXPECT_EQ(second->getRenderer()->GetActiveCamera(), camera());
  EXPECT_EQ(third->getRenderer()->GetActiveCamera(), camera());
  m_Window->camXMinus();
  expectVector(viewDirection(third->getRenderer()->GetActiveCamera()).data(), {-1, 0, 0}, "third direction");

  // The window whose camera the group shares leaves: the other two keep looking the same way.
  m_Window->unlinkCamera();
  EXPECT_FALSE(m_Window->isLinked());
  const std::set<VXVisualizationWidget*> rest = {second.get(), third.get()};
  EXPECT_EQ(second->getLinkedWidgets(), rest);
  EXPECT_EQ(third->getLinkedWidgets(), rest);
  EXPECT_EQ(second->getRenderer()->GetActiveCamera(), third->getRenderer()->GetActiveCamera());
  EXPECT_NE(second->getRenderer()->GetActiveCamera(), camera());
  m_Window->camZPlus();
  expectVector(viewDirection(second->getRenderer()->GetActiveCamera()).data(), {-1, 0, 0},
               "second direction");

  // A destroyed window never stays in a group.
  third.reset();
  EXPECT_FALSE(second->isLinked());
}

TEST_F(VXVisualizationWidgetTest, LinkingStartsInOneWindowAndEndsWhenAnotherTakesTheFocus)
{
  auto second = makeShownWindow();
  m_Window->startLinkCameras();
  EXPECT_EQ(VXVisualizationWidget::getLinkingWidget(), m_Window.get());
  QFocusEvent focusIn(QEvent::FocusIn, Qt::MouseFocusReason);
  QApplication::sendEvent(second.get(), &focusIn);
  EXPECT_EQ(VXVisualizationWidget::getLinkingWidget(), nullptr);
  EXPECT_TRUE(second->isLinked());
  EXPECT_EQ(second->getRenderer()->GetActiveCamera(), camera());
}

TEST_F(VXVisualizationWidgetTest, LinkingSaysWhatToDoAndEscapeCancelsIt)
{
  auto second = makeShownWindow();
  QSignalSpy messages(m_Window.get(), &VXVisualizationWidget::printOutput);
  m_Window->startLinkCameras();
  ASSERT_EQ(messages.count(), 1);
  EXPECT_TRUE(messages.at(0).at(0).toString().contains(QStringLiteral("Escape")));
  QTest::keyClick(m_Window.get(), Qt::Key_Escape);
  EXPECT_EQ(VXVisualizationWidget::getLinkingWidget(), nullptr);
  ASSERT_EQ(messages.count(), 2);
  EXPECT_EQ(messages.at(1).at(0).toString(), QStringLiteral("Camera linking cancelled."));
  QFocusEvent focusIn(QEvent::FocusIn, Qt::MouseFocusReason);
  QApplication::sendEvent(second.get(), &focusIn);
  EXPECT_FALSE(second->isLinked()) << "a cancelled link links nothing";

  m_Window->startLinkCameras();
  QApplication::sendEvent(second.get(), &focusIn);
  EXPECT_TRUE(second->isLinked());
  ASSERT_EQ(messages.count(), 4);
  EXPECT_EQ(messages.at(3).at(0).toString(), QStringLiteral("Cameras linked: 2 views share one camera."));
}

TEST_F(VXVisualizationWidgetTest, PickingAFocalPointSetsItOnTheDataAndLeavesTheClipboardAlone)
{
  QApplication::clipboard()->setText(QStringLiteral("kept"));
  QSignalSpy messages(m_Window.get(), &VXVisualizationWidget::printOutput);
  m_Window->toggleFocalPointPicking(true);
  ASSERT_TRUE(m_Window->pickFocalPointModeOn());
  ASSERT_EQ(messages.count(), 1) << "the mode says how it is used";

  // The background holds nothing: nothing changes and nothing is said.
  QTest::mouseClick(m_Window.get(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
  settle();
  EXPECT_EQ(messages.count(), 1);
  EXPECT_FALSE(m_Window->isFocalPointLocked());
  expectVector(camera()->GetFocalPoint(), {1.0, 2.0, 3.0}, "focal point after a miss");
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("kept"));

  // The sphere's near side is hit in the middle of the window.
  QTest::mouseClick(m_Window.get(), Qt::LeftButton, Qt::NoModifier,
                    QPoint(m_Window->width() / 2, m_Window->height() / 2));
  settle();
  const double* focal = camera()->GetFocalPoint();
  EXPECT_NEAR(focal[0], 1.0, 0.05);
  EXPECT_NEAR(focal[1], 2.0, 0.05);
  EXPECT_NEAR(focal[2], 4.0, 0.05) << "on the surface facing the camera";
  EXPECT_TRUE(m_Window->isFocalPointLocked());
  ASSERT_EQ(messages.count(), 2);
  EXPECT_TRUE(messages.at(1).at(0).toString().startsWith(QStringLiteral("Focal point set to (")));
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("kept"));
  for (const QList<QVariant>& message : messages)
  {
    EXPECT_NE(message.at(0).toString(), QStringLiteral("Picked item data copied to clipboard"));
  }
  m_Window->toggleFocalPointPicking(false);

  // A data pick over nothing leaves the clipboard as it was, too.
  m_Window->toggleHoverPoints(true);
  m_Window->getPickerCallback()->setHoverText(QString());
  QTest::mouseClick(m_Window.get(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("kept"));
  EXPECT_EQ(messages.count(), 2);
  m_Window->toggleHoverPoints(false);
}

TEST_F(VXVisualizationWidgetTest, FocalPointCursorSizeFollowsTheVisibleData)
{
  double bounds[6];
  // Sphere of radius 1: the largest extent is 2 (within the tessellation), so r is about 0.5.
  m_Window->syncFocalPointSourceToActiveCamera();
  m_Window->getFocalPointSource()->GetModelBounds(bounds);
  EXPECT_NEAR(bounds[1] - bounds[0], 2 * 0.25 * 2.0, 0.02);
  expectVector(m_Window->getFocalPointSource()->GetFocalPoint(), {1.0, 2.0, 3.0}, "cursor centre");

  auto empty = makeShownWindow();
  empty->syncFocalPointSourceToActiveCamera();
  empty->getFocalPointSource()->GetModelBounds(bounds);
  EXPECT_DOUBLE_EQ(bounds[1] - bounds[0], 2.0) << "no visible props: r = 1";
}

TEST_F(VXVisualizationWidgetTest, PickedFocalPointLocksTheCursorAndResetReturnsToTheDataCentre)
{
  double picked[3] = {1.5, 2.0, 3.5};
  m_Window->updateFocalPoint(picked, true, false, true);
  EXPECT_TRUE(m_Window->isFocalPointLocked());
  expectVector(camera()->GetFocalPoint(), {1.5, 2.0, 3.5}, "picked focal point");
  m_Window->resetFocalPoint(true);
  EXPECT_FALSE(m_Window->isFocalPointLocked());
  expectVector(camera()->GetFocalPoint(), {1.0, 2.0, 3.0}, "reset focal point");
}

TEST_F(VXVisualizationWidgetTest, GridSpacingGivesExactLabelsAndZeroKeepsAutomaticOnes)
{
  m_Window->getGridAxesAction()->setChecked(true);
  m_Window->toggleGridAxes();
  VXGridAxesActor* grid = m_Window->getGridAxesActor();
  ASSERT_TRUE(m_Window->getRenderer()->HasViewProp(grid));
  // The grid fits the sphere (centre 1,2,3, radius 1), not itself.
  EXPECT_NEAR(grid->GetGridBounds()[0], 0.0, 0.01);
  EXPECT_NEAR(grid->GetGridBounds()[1], 2.0, 0.01);

  m_Window->getGridAxesWidget().setSpacing({{0.3, 0.0, 0.0}});
  m_Window->applyGridAxesEdits();
  // From the minimum (about 0) one label every 0.3 up to the maximum (about 2): seven of them.
  const auto values = grid->GetLabelValues(0);
  const double min = grid->GetGridBounds()[0];
  ASSERT_EQ(values.size(), 7u);
  for (std::size_t k = 0; k < values.size(); ++k)
  {
    EXPECT_NEAR(values[k], min + k * 0.3, 1e-9);
  }
  // The texts carry the minimum's decimals and none of the running sum's noise.
  const std::vector<std::string> texts = grid->GetLabelTexts(0);
  ASSERT_EQ(texts.size(), values.size());
  for (std::size_t k = 0; k < texts.size(); ++k)
  {
    EXPECT_NEAR(std::stod(texts[k]), values[k], 1e-6) << texts[k];
    EXPECT_EQ(texts[k].find("9999"), std::string::npos) << texts[k];
  }
  EXPECT_FALSE(grid->GetUseCustomLabels(1));
  EXPECT_EQ(grid->GetLabelValues(1),
            VXGridAxesActor::AutomaticLabelValues(grid->GetGridBounds()[2], grid->GetGridBounds()[3]));

  // Unchecking the action takes the grid out of the scene.
  m_Window->getGridAxesAction()->setChecked(false);
  m_Window->toggleGridAxes();
  EXPECT_FALSE(m_Window->getRenderer()->HasViewProp(grid));
}

TEST_F(VXVisualizationWidgetTest, CrowdedGridLabelsAreThinnedToAnEvenSubset)
{
  m_Window->getGridAxesAction()->setChecked(true);
  m_Window->toggleGridAxes();
  VXGridAxesActor* grid = m_Window->getGridAxesActor();
  auto drawnLabels = [this, grid]()
  {
    m_Window->render();
    settle();
    return grid->GetVisibleLabelTexts(0);
  };

  // Two labels over the 320 pixel wide window stand clear of each other: both are drawn.
  m_Window->getGridAxesWidget().setSpacing({{1.0, 0.0, 0.0}});
  m_Window->applyGridAxesEdits();
  EXPECT_EQ(drawnLabels(), grid->GetLabelTexts(0));

  // Two hundred cannot all be read: an evenly spaced subset is left, the first label among them.
  m_Window->getGridAxesWidget().setSpacing({{0.01, 0.0, 0.0}});
  m_Window->applyGridAxesEdits();
  const std::vector<std::string> all = grid->GetLabelTexts(0);
  ASSERT_GT(all.size(), 150u);
  const std::vector<std::string> drawn = drawnLabels();
  EXPECT_GE(drawn.size(), 2u);
  EXPECT_LT(drawn.size(), all.size() / 4);
  ASSERT_FALSE(drawn.empty());
  EXPECT_EQ(drawn.front(), all.front());
  const std::size_t stride = std::find(all.begin(), all.end(), drawn[1]) - all.begin();
  for (std::size_t k = 0; k < drawn.size(); ++k)
  {
    EXPECT_EQ(drawn[k], all[k * stride]);
  }

  // Zoomed far in, the same labels spread out and more of them are drawn again.
  camera()->Zoom(8.0);
  EXPECT_GT(drawnLabels().size(), drawn.size());
}

TEST_F(VXVisualizationWidgetTest, RightClickOpensTheMenuButRightDragDoesNot)
{
  PopupMenuWatcher menus;
  const QPoint at(100, 100);
  QTest::mousePress(m_Window.get(), Qt::RightButton, Qt::NoModifier, at);
  QMouseEvent move(QEvent::MouseMove, at + QPoint(30, 10), Qt::NoButton, Qt::RightButton, Qt::NoModifier);
  QApplication::sendEvent(m_Window.get(), &move);
  QTest::mouseRelease(m_Window.get(), Qt::RightButton, Qt::NoModifier, at + QPoint(30, 10));
  EXPECT_EQ(menus.count(), 0) << "a right drag moves the camera and shows no menu";

  // The menu runs its own loop: the release returns once the watcher has closed it.
  QTest::mousePress(m_Window.get(), Qt::RightButton, Qt::NoModifier, at);
  QTest::mouseRelease(m_Window.get(), Qt::RightButton, Qt::NoModifier, at);
  EXPECT_EQ(menus.count(), 1);

  m_Window->useOwnContextMenu(false);
  QTest::mousePress(m_Window.get(), Qt::RightButton, Qt::NoModifier, at);
  QTest::mouseRelease(m_Window.get(), Qt::RightButton, Qt::NoModifier, at);
  EXPECT_EQ(menus.count(), 1) << "a window without its own menu shows none";
}

TEST_F(VXVisualizationWidgetTest, ContextMenuOffersUnlinkOnlyWhenSomethingIsLinked)
{
  auto texts = [this]()
  {
    QStringList result;
    std::unique_ptr<QMenu> menu(m_Window->getContextMenu());
    for (QAction* action : menu->actions())
    {
      result << (action->isSeparator() ? QStringLiteral("|") : action->text());
    }
    return result;
  };
  const QStringList unlinked = texts();
  EXPECT_EQ(unlinked, (QStringList{"Show All Geometries", "Hide All Geometries", "|", "Link Cameras",
                                   "Link All Cameras", "Camera Parallel Projection", "|", "Current View",
                                   "All Views", "Equalize Views", "|", "Change Background Color",
                                   "Restore Default Background Color", "|", "Axes Grid", "Edit Axes Grid"}));
  bool anyLinked = true;
  m_Window->setAnyViewLinkedQuery([&anyLinked]() { return anyLinked; });
  EXPECT_TRUE(texts().contains("Unlink All Cameras"));
  EXPECT_FALSE(texts().contains("Unlink Cameras"));

  auto second = makeShownWindow();
  second->linkCameraWith(m_Window.get());
  anyLinked = false;
  EXPECT_TRUE(texts().contains("Unlink Cameras"));
  EXPECT_TRUE(texts().contains("Unlink All Cameras"));
}

TEST_F(VXVisualizationWidgetTest, TouchEventsNeverMoveTheCamera)
{
  m_Window->camYPlus();
  double before[3];
  camera()->GetPosition(before);
  QTouchDevice device;
  device.setType(QTouchDevice::TouchScreen);
  QTouchEvent::TouchPoint point(0);
  point.setPos(QPointF(100, 100));
  point.setState(Qt::TouchPointPressed);
  for (QEvent::Type type : {QEvent::TouchBegin, QEvent::TouchUpdate, QEvent::TouchEnd})
  {
    QTouchEvent touch(type, &device, Qt::NoModifier, Qt::TouchPointPressed, {point});
    EXPECT_TRUE(QApplication::sendEvent(m_Window.get(), &touch));
    point.setPos(point.pos() + QPointF(40, 25));
  }
  settle();
  expectVector(camera()->GetPosition(), {before[0], before[1], before[2]}, "position");
}

TEST_F(VXVisualizationWidgetTest, CameraPresetsPersistInTheSettings)
{
  QTemporaryDir scratch;
  ASSERT_TRUE(scratch.isValid());
  QtZRSettings::setSettingsDirectory(scratch.path());
  m_Window->camXMinus();
  camera()->SetViewAngle(25.0);
  ASSERT_TRUE(m_Window->storeCameraPreset(QStringLiteral("Side")));
  {
    QtZRSettings settings;
    settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
    settings.beginGroup(ZR::SettingsKeys::k_CameraPresets);
    EXPECT_EQ(settings.stringList(ZR::SettingsKeys::k_CameraPresetNames), QStringList{"Side"});
    settings.beginGroup(QStringLiteral("Side"));
    EXPECT_DOUBLE_EQ(settings.value(ZR::SettingsKeys::k_CameraViewAngle).toDouble(), 25.0);
  }

  // A duplicate name is refused with a message, and the stored preset stays as it was.
  QSignalSpy messages(m_Window.get(), &VXVisualizationWidget::printOutput);
  m_Window->camZPlus();
  EXPECT_FALSE(m_Window->storeCameraPreset(QStringLiteral("Side")));
  ASSERT_EQ(messages.count(), 1);
  EXPECT_EQ(messages.at(0).at(0).toString(),
            QStringLiteral("Cannot save camera preset because preset name Side already exists."));

  auto other = makeShownWindow();
  other->addActor(makeSphereActor(1.0, 2.0, 3.0, 0.8, 0.2, 0.2));
  other->applyCustomCameraPosPreset(QStringLiteral("Side"));
  vtkCamera* otherCamera = other->getRenderer()->GetActiveCamera();
  expectVector(viewDirection(otherCamera).data(), {-1, 0, 0}, "preset direction");
  EXPECT_DOUBLE_EQ(otherCamera->GetViewAngle(), 25.0);
  // The cursor follows the preset's focal point.
  expectVector(other->getFocalPointSource()->GetFocalPoint(), {1.0, 2.0, 3.0}, "cursor");
  QtZRSettings::setSettingsDirectory(QString());
}

TEST_F(VXVisualizationWidgetTest, HoverModesShareOneHoverWidgetAndPickingUsesCellHover)
{
  m_Window->toggleFocalPointPicking(true);
  EXPECT_TRUE(m_Window->pickFocalPointModeOn());
  EXPECT_TRUE(m_Window->hoverCellsModeOn());
  m_Window->toggleFocalPointPicking(false);
  EXPECT_FALSE(m_Window->pickFocalPointModeOn());
  EXPECT_FALSE(m_Window->hoverCellsModeOn());
}

TEST_F(VXVisualizationWidgetTest, DataViewActorsExcludeHelpersAndHiddenProps)
{
  auto cube = makeCubeActor(0, 0, 0, 0.2, 0.8, 0.2);
  EXPECT_FALSE(m_Window->isDataViewActor(cube));
  std::vector<vtkProp*> added;
  std::vector<vtkProp*> removed;
  QObject::connect(m_Window.get(), &VXVisualizationWidget::actorAdded,
                   [&added](vtkProp* p) { added.push_back(p); });
  QObject::connect(m_Window.get(), &VXVisualizationWidget::actorRemoved,
                   [&removed, this](vtkProp* p)
                   {
                     // Listeners hear of the removal while the prop is still in the scene.
                     EXPECT_TRUE(m_Window->getRenderer()->HasViewProp(p));
                     removed.push_back(p);
                   });
  m_Window->addActor(cube);
  EXPECT_EQ(added, std::vector<vtkProp*>{cube});
  EXPECT_TRUE(m_Window->isDataViewActor(cube));
  cube->VisibilityOff();
  EXPECT_FALSE(m_Window->isDataViewActor(cube));
  EXPECT_FALSE(m_Window->isDataViewActor(m_Window->getGridAxesActor()));
  m_Window->removeActor(cube);
  EXPECT_EQ(removed, std::vector<vtkProp*>{cube});
  EXPECT_FALSE(m_Window->getRenderer()->HasViewProp(cube));

  m_Window->addOutline(cube);
  m_Window->addOutline(cube);
  EXPECT_TRUE(m_Window->hasOutlineActor(cube));
  EXPECT_EQ(m_Window->getOverlayRenderer()->GetViewProps()->GetNumberOfItems(), 1);
  m_Window->clearOutlines();
  EXPECT_FALSE(m_Window->hasOutlineActor(cube));
}

TEST_F(VXVisualizationWidgetTest, CopyTakesTheSourceCamera)
{
  auto other = makeShownWindow();
  m_Window->camYMinus();
  other->copy(m_Window.get());
  vtkCamera* copied = other->getRenderer()->GetActiveCamera();
  expectVector(copied->GetPosition(),
               {camera()->GetPosition()[0], camera()->GetPosition()[1], camera()->GetPosition()[2]},
               "position");
  expectVector(copied->GetViewUp(), {0.0, 0.0, 1.0}, "view up");
  EXPECT_NE(copied, camera()) << "a copy is no link";
}

TEST_F(VXVisualizationWidgetTest, ClearingTheWindowRemovesEveryProp)
{
  ASSERT_NE(m_Window->getCameraOrientationWidget(), nullptr);
  m_Window->clearRenderWindow();
  EXPECT_EQ(m_Window->getRenderer()->GetViewProps()->GetNumberOfItems(), 0);
  EXPECT_EQ(m_Window->getCameraOrientationWidget(), nullptr);
  // The window keeps working.
  m_Window->addActor(makeCubeActor(0, 0, 0, 1, 1, 1));
  m_Window->camZPlus();
  expectVector(viewDirection(camera()).data(), {0, 0, 1}, "direction");
}

TEST_F(VXVisualizationWidgetTest, DimensionsAreCheckedAgainstTheTextureLimit)
{
  int maxSize = 0;
  EXPECT_TRUE(m_Window->areDimensionsValid(16, 16, 1, maxSize));
  EXPECT_GE(maxSize, 1024);
  EXPECT_FALSE(m_Window->areDimensionsValid(1, maxSize + 1, 1, maxSize));
}

TEST_F(VXVisualizationWidgetTest, PressInHoverModeCopiesTheHoverTextWithoutIndents)
{
  QSignalSpy messages(m_Window.get(), &VXVisualizationWidget::printOutput);
  QSignalSpy pressed(m_Window.get(), &VXVisualizationWidget::mousePressed);
  m_Window->getPickerCallback()->setHoverText(
      QStringLiteral("Sphere\n    Point Id: 7\n        Coords: 1, 2, 3"));
  QTest::mouseClick(m_Window.get(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
  EXPECT_EQ(messages.count(), 0) << "no hover mode, nothing copied";
  EXPECT_EQ(pressed.count(), 1);

  m_Window->toggleHoverPoints(true);
  QTest::mouseClick(m_Window.get(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("Sphere\nPoint Id: 7\nCoords: 1, 2, 3"));
  ASSERT_EQ(messages.count(), 1);
  EXPECT_EQ(messages.at(0).at(0).toString(), QStringLiteral("Picked item data copied to clipboard"));
  EXPECT_EQ(pressed.count(), 2);
  m_Window->toggleHoverPoints(false);
}

TEST_F(VXVisualizationWidgetTest, GridDialogAppliesItsSpacingOnOk)
{
  m_Window->getGridAxesAction()->setChecked(true);
  m_Window->toggleGridAxes();
  answerNextDialog<QDialog>(
      [](QDialog* dialog)
      {
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Grid Axes Options"));
        // X spans about 0 to 2 and is automatic: the form shows the step in use, 0.5.
        EXPECT_EQ(dialog->findChild<QLineEdit*>(QStringLiteral("spacingX"))->text(), QStringLiteral("0.5"));
        dialog->findChild<QLineEdit*>(QStringLiteral("spacingY"))->setText(QStringLiteral("0.25"));
        dialog->findChild<QCheckBox*>(QStringLiteral("showGridCheckBox"))->setChecked(true);
        dialog->findChild<QPushButton*>(QStringLiteral("okButton"))->click();
      });
  m_Window->editGridAxes();
  VXGridAxesActor* grid = m_Window->getGridAxesActor();
  EXPECT_TRUE(grid->GetUseCustomLabels(1));
  EXPECT_FALSE(grid->GetUseCustomLabels(0)) << "the automatic step shown and left alone stays automatic";
  EXPECT_TRUE(grid->GetGenerateGrid());
  // Y runs about 1 to 3 around the sphere: a label every 0.25 from its minimum.
  const std::vector<double> ys = grid->GetLabelValues(1);
  ASSERT_GE(ys.size(), 7u);
  for (std::size_t k = 0; k < ys.size(); ++k)
  {
    EXPECT_NEAR(ys[k], grid->GetGridBounds()[2] + k * 0.25, 1e-9) << k;
  }
  const std::vector<std::string> yTexts = grid->GetLabelTexts(1);
  for (std::size_t i = 0; i < ys.size(); ++i)
  {
    EXPECT_NEAR(std::stod(yTexts[i]), ys[i], 1e-6) << yTexts[i];
  }

  // Reset in the dialog brings the automatic labels back once applied.
  answerNextDialog<QDialog>(
      [](QDialog* dialog)
      {
        dialog->findChild<QPushButton*>(QStringLiteral("resetButton"))->click();
        dialog->findChild<QPushButton*>(QStringLiteral("okButton"))->click();
      });
  m_Window->editGridAxes();
  EXPECT_FALSE(grid->GetUseCustomLabels(1));
  EXPECT_FALSE(grid->GetGenerateGrid());
}

TEST_F(VXVisualizationWidgetTest, OlderCornerMarkerCanStillBeShown)
{
  EXPECT_EQ(m_Window->getOrientationWidget(), nullptr) << "only made on request";
  m_Window->initializeOrientationWidget();
  ASSERT_NE(m_Window->getOrientationWidget(), nullptr);
  EXPECT_TRUE(m_Window->getOrientationWidget()->GetEnabled());
  EXPECT_FALSE(m_Window->getOrientationWidget()->GetInteractive());
  const QImage image = m_Window->captureViewImage(false, QColor());
  EXPECT_FALSE(image.isNull());
}

TEST_F(VXVisualizationWidgetTest, DoubleClickIsReportedWithItsPosition)
{
  QSignalSpy doubleClicks(m_Window.get(), &VXVisualizationWidget::doubleClicked);
  QTest::mouseDClick(m_Window.get(), Qt::LeftButton, Qt::NoModifier, QPoint(40, 30));
  ASSERT_EQ(doubleClicks.count(), 1);
  EXPECT_EQ(doubleClicks.at(0).at(0).toPoint(), QPoint(40, 30));
}
