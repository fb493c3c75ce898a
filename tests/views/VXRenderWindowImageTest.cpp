// Real rendering under xvfb, compared with the reference images in baselines/.
#include "RenderWindowTestUtils.h"

#include "views/VXVisualizationToolbarWidget.h"

#include <vtkActor.h>
#include <vtkCamera.h>
#include <vtkRenderer.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QTemporaryDir>

using namespace zr_test;

namespace
{
const QColor k_Background(40, 50, 70);
} // namespace

class VXRenderWindowImageTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    m_Window = makeShownWindow(320, 240);
    m_Window->setRenderWindowBackgroundColor(k_Background);
    // Red sphere at the origin, green cube along +X, blue cube along +Y: every view direction differs.
    m_Window->addActor(makeSphereActor(0, 0, 0, 0.9, 0.2, 0.2));
    m_Window->addActor(makeCubeActor(2.5, 0, 0, 0.2, 0.9, 0.2));
    m_Window->addActor(makeCubeActor(0, 2.5, 0, 0.2, 0.3, 0.9));
    m_Window->camZMinus();
    settle();
  }

  QImage capture() { return m_Window->captureViewImage(false, QColor()); }

  std::unique_ptr<VXVisualizationWidget> m_Window;
};

TEST_F(VXRenderWindowImageTest, SceneFromTopMatchesBaseline)
{
  const QImage image = capture();
  EXPECT_EQ(image.size(), QSize(320, 240));
  EXPECT_TRUE(matchesBaseline(image, "scene-top"));
}

TEST_F(VXRenderWindowImageTest, SceneFromLeftMatchesBaseline)
{
  m_Window->camXPlus();
  EXPECT_TRUE(matchesBaseline(capture(), "scene-left"));
}

TEST_F(VXRenderWindowImageTest, AWrongCameraOrABlackFrameFailsTheComparison)
{
  const QImage top = capture();
  m_Window->camXPlus();
  EXPECT_GT(imageError(capture(), top), k_BaselineTolerance) << "a different view must not pass as the same";
  QImage black(top.size(), QImage::Format_RGB888);
  black.fill(Qt::black);
  EXPECT_GT(imageError(black, top), k_BaselineTolerance);
  // The same frame twice is well inside the tolerance.
  m_Window->camZMinus();
  EXPECT_LT(imageError(capture(), top), 1.0);
}

TEST_F(VXRenderWindowImageTest, OutlinedPropsGlowOnTheOverlayLayer)
{
  auto outlined = makeCubeActor(2.5, 0, 0, 0.2, 0.9, 0.2);
  const QImage plain = capture();
  m_Window->addOutline(outlined);
  const QImage glowing = capture();
  EXPECT_GT(imageError(glowing, plain), 0.5) << "the outline layer is missing from the frame";
  EXPECT_TRUE(matchesBaseline(glowing, "scene-top-outline"));
  m_Window->clearOutlines();
  EXPECT_LT(imageError(capture(), plain), 1.0);
}

TEST_F(VXRenderWindowImageTest, AxesGridMatchesBaseline)
{
  m_Window->getGridAxesWidget().setSpacing({{1.0, 1.0, 0.0}});
  m_Window->getGridAxesWidget().setShowGrid(true);
  m_Window->getGridAxesAction()->setChecked(true);
  m_Window->toggleGridAxes();
  m_Window->applyGridAxesEdits();
  m_Window->camZMinus();
  EXPECT_TRUE(matchesBaseline(capture(), "scene-top-grid"));
}

TEST_F(VXRenderWindowImageTest, TransparentScreenshotHasNoAlphaInTheBackground)
{
  const QImage opaque = capture();
  const QImage image = m_Window->captureViewImage(true, QColor());
  ASSERT_EQ(image.format(), QImage::Format_RGBA8888);
  ASSERT_EQ(image.size(), opaque.size());
  int background = 0;
  int scene = 0;
  for (int y = 0; y < image.height(); ++y)
  {
    for (int x = 0; x < image.width(); ++x)
    {
      const QColor colour = opaque.pixelColor(x, y);
      const int alpha = qAlpha(image.pixel(x, y));
      if (colour == k_Background)
      {
        ++background;
        ASSERT_EQ(alpha, 0) << "background pixel " << x << "," << y;
      }
      else if (x < image.width() / 2 && colour.red() > 150 && colour.green() < 100)
      {
        // Inside the red sphere (the gizmo's red handle in the upper right corner blends its edges).
        ++scene;
        ASSERT_EQ(alpha, 255) << "sphere pixel " << x << "," << y;
      }
    }
  }
  EXPECT_GT(background, image.width() * image.height() / 2);
  EXPECT_GT(scene, 1000);
}

TEST_F(VXRenderWindowImageTest, TransparentScreenshotKeepsTheGlowOfOutlinedProps)
{
  m_Window->addOutline(makeCubeActor(2.5, 0, 0, 0.2, 0.9, 0.2));
  const QImage opaque = capture();
  const QImage image = m_Window->captureViewImage(true, QColor());
  // The outlined cube covers about x 200..240, y 140..180; its glow is a band a few pixels wide.
  const QRect cube(200, 140, 41, 41);
  const QRect glowBand = cube.adjusted(-8, -8, 8, 8);
  int glowPixels = 0;
  for (int y = 0; y < image.height(); ++y)
  {
    for (int x = 0; x < image.width(); ++x)
    {
      const int alpha = qAlpha(image.pixel(x, y));
      if (!glowBand.contains(x, y) && opaque.pixelColor(x, y) == k_Background)
      {
        ASSERT_EQ(alpha, 0) << "background pixel " << x << "," << y;
      }
      else if (glowBand.contains(x, y) && !cube.contains(x, y) && alpha > 0)
      {
        ++glowPixels;
      }
    }
  }
  EXPECT_GT(glowPixels, 200) << "the glow is lost in a transparent screenshot";
  // Inside the cube the scene is opaque and keeps its colour.
  EXPECT_EQ(qAlpha(image.pixel(cube.center())), 255);
  EXPECT_EQ(QColor(image.pixel(cube.center())).rgb(), opaque.pixelColor(cube.center()).rgb());
}

TEST_F(VXRenderWindowImageTest, ScreenshotColourReplacesTheBackgroundOnlyForTheCapture)
{
  const QImage image = m_Window->captureViewImage(false, QColor(255, 255, 255));
  EXPECT_EQ(image.pixelColor(5, image.height() - 5), QColor(255, 255, 255));
  EXPECT_EQ(m_Window->getBackgroundColor(), k_Background);
  // The toolbar is back after the capture, and was not in the frame.
  EXPECT_TRUE(m_Window->getToolbar()->isVisible());
  const QImage after = capture();
  EXPECT_EQ(after.pixelColor(5, after.height() - 5), k_Background);
}

TEST_F(VXRenderWindowImageTest, CopiedScreenshotLandsOnTheClipboard)
{
  QApplication::clipboard()->clear();
  m_Window->copyScreenshot();
  const QImage copied = QApplication::clipboard()->image();
  ASSERT_FALSE(copied.isNull());
  EXPECT_EQ(copied.size(), QSize(320, 240));
  EXPECT_LT(imageError(copied, capture()), k_BaselineTolerance);
}
