#include "platform/ZRStyle.h"
#include "platform/ZRIconPushButton.h"

#include <QApplication>
#include <QImage>
#include <QSignalSpy>
#include <QTemporaryFile>

#include <gtest/gtest.h>

namespace
{
// The names under which the module asks for icons.
const QStringList k_UsedIconNames = {"Annotation",
                                     "BarChart",
                                     "BasicSpreadsheet",
                                     "Cells",
                                     "Close",
                                     "CustomCamera",
                                     "DataSource",
                                     "EdgeGeometry",
                                     "Eye",
                                     "FocalPoint",
                                     "Glyph",
                                     "HelpBlue",
                                     "HistogramChart",
                                     "HoverCells",
                                     "HoverPoints",
                                     "I Up",
                                     "LineChart",
                                     "MultidimSpreadsheet",
                                     "ParameterSeparator",
                                     "PickFocalPoint",
                                     "PipelineFileBridgeObj",
                                     "ResetCamera",
                                     "ResetFocalPoint",
                                     "RotateClockwise",
                                     "RotateCounterClockwise",
                                     "ScaleToData",
                                     "ScatterChart",
                                     "Settings",
                                     "SliceView",
                                     "SnapToCamera",
                                     "Split Horizontal",
                                     "Split Vertical",
                                     "TriangleGeometry",
                                     "Undo",
                                     "VertexGeometry",
                                     "Visualization",
                                     "VolumeView",
                                     "VXFClip",
                                     "VXFImageResample",
                                     "VXFQuadricClustering",
                                     "VXFSlice",
                                     "VXFThreshold",
                                     "VXPipelineTreeIcon",
                                     "invert",
                                     "preset"};

bool hasVisiblePixels(const QIcon& icon, QIcon::State state = QIcon::Off)
{
  const QImage image = icon.pixmap(QSize(22, 22), QIcon::Normal, state).toImage();
  for (int y = 0; y < image.height(); ++y)
  {
    for (int x = 0; x < image.width(); ++x)
    {
      if (qAlpha(image.pixel(x, y)) > 0)
      {
        return true;
      }
    }
  }
  return false;
}

class StyleTest : public ::testing::Test
{
protected:
  void TearDown() override { ZRStyle::Instance()->setTheme(ZRStyle::k_LightTheme); }
};
} // namespace

TEST_F(StyleTest, EveryIconTheModuleUsesDrawsInBothThemes)
{
  for (const QString& theme : {ZRStyle::k_LightTheme, ZRStyle::k_DarkTheme})
  {
    ASSERT_TRUE(ZRStyle::Instance()->setTheme(theme));
    for (const QString& name : k_UsedIconNames)
    {
      const QIcon icon = ZRStyle::generateThemeIconFromName(name);
      ASSERT_FALSE(icon.isNull()) << name.toStdString() << " in " << theme.toStdString();
      EXPECT_TRUE(hasVisiblePixels(icon)) << name.toStdString() << " in " << theme.toStdString();
    }
  }
  EXPECT_TRUE(ZRStyle::generateThemeIconFromName(QStringLiteral("NoSuchIcon")).isNull());
}

TEST_F(StyleTest, ThemeChangeSwitchesIconSetAndColoursAndIsAnnounced)
{
  ASSERT_TRUE(ZRStyle::Instance()->setTheme(ZRStyle::k_LightTheme));
  const QString lightPath = ZRStyle::themeIconPath(QStringLiteral("Close"));
  const QColor lightText = ZRStyle::getDefaultTextColor();
  QSignalSpy spy(ZRStyle::Instance(), &ZRStyle::styleSheetLoaded);

  ASSERT_TRUE(ZRStyle::Instance()->setTheme(ZRStyle::k_DarkTheme));
  ASSERT_EQ(spy.count(), 1);
  EXPECT_EQ(spy.at(0).at(0).toString(), ZRStyle::Instance()->currentThemeFile());
  EXPECT_EQ(ZRStyle::Instance()->currentThemeName(), ZRStyle::k_DarkTheme);
  EXPECT_NE(ZRStyle::themeIconPath(QStringLiteral("Close")), lightPath);
  EXPECT_NE(ZRStyle::getDefaultTextColor(), lightText);
  EXPECT_EQ(qobject_cast<QApplication*>(QCoreApplication::instance())->styleSheet(),
            ZRStyle::Instance()->styleSheet());
  EXPECT_TRUE(ZRStyle::getVisSettingsWidgetColors().contains(QStringLiteral("BreadcrumbTextVisible")));
  // An icon set asked for by name does not follow the theme.
  EXPECT_EQ(ZRStyle::themeIconPath(QStringLiteral("Close"), ZRStyle::k_LightTheme), lightPath);
  EXPECT_FALSE(ZRStyle::generateThemeIconFromName(QStringLiteral("Close"), ZRStyle::k_LightTheme).isNull());
  EXPECT_TRUE(ZRStyle::generateThemeIconFromName(QStringLiteral("Close"), QStringLiteral("sepia")).isNull());
}

TEST_F(StyleTest, UnknownOrBrokenThemeKeepsTheCurrentOne)
{
  ASSERT_TRUE(ZRStyle::Instance()->setTheme(ZRStyle::k_DarkTheme));
  QSignalSpy spy(ZRStyle::Instance(), &ZRStyle::styleSheetLoaded);
  EXPECT_FALSE(ZRStyle::Instance()->setTheme(QStringLiteral("sepia")));

  QTemporaryFile broken;
  ASSERT_TRUE(broken.open());
  broken.write("{ \"name\": \"broken\", \"colors\": ");
  broken.close();
  EXPECT_FALSE(ZRStyle::Instance()->loadStyleSheet(broken.fileName()));
  EXPECT_FALSE(ZRStyle::Instance()->loadStyleSheet(QStringLiteral("/no/such/theme.json")));
  EXPECT_EQ(spy.count(), 0);
  EXPECT_EQ(ZRStyle::Instance()->currentThemeName(), ZRStyle::k_DarkTheme);
}

TEST_F(StyleTest, CheckableIconsShowTheirUncheckedState)
{
  const QIcon eye = ZRStyle::generateCheckableThemeIconFromName(QStringLiteral("Eye"));
  const QImage on = eye.pixmap(QSize(22, 22), QIcon::Normal, QIcon::On).toImage();
  const QImage off = eye.pixmap(QSize(22, 22), QIcon::Normal, QIcon::Off).toImage();
  EXPECT_TRUE(hasVisiblePixels(eye, QIcon::On));
  EXPECT_NE(on, off);
  // Without an "-off" variant both states draw the same icon.
  const QIcon close = ZRStyle::generateCheckableThemeIconFromName(QStringLiteral("Close"));
  EXPECT_EQ(close.pixmap(QSize(22, 22), QIcon::Normal, QIcon::On).toImage(),
            close.pixmap(QSize(22, 22), QIcon::Normal, QIcon::Off).toImage());
}

TEST_F(StyleTest, IconButtonFollowsTheTheme)
{
  ASSERT_TRUE(ZRStyle::Instance()->setTheme(ZRStyle::k_LightTheme));
  ZRIconPushButton button;
  button.setThemeIconName(QStringLiteral("ResetCamera"));
  const QImage light = button.icon().pixmap(QSize(22, 22)).toImage();
  ASSERT_FALSE(light.isNull());
  ASSERT_TRUE(ZRStyle::Instance()->setTheme(ZRStyle::k_DarkTheme));
  const QImage dark = button.icon().pixmap(QSize(22, 22)).toImage();
  EXPECT_NE(light, dark);
  EXPECT_EQ(button.themeIconName(), QStringLiteral("ResetCamera"));
}

TEST(StyleSizes, LevelsGrowAndTextWidthFollowsTheText)
{
  EXPECT_LT(ZRStyle::getItemSize(1), ZRStyle::getItemSize(5));
  EXPECT_LT(ZRStyle::getFontSize(2), ZRStyle::getFontSize(6));
  EXPECT_GT(ZRStyle::getStringWidth(QStringLiteral("wide text here")),
            ZRStyle::getStringWidth(QStringLiteral("w")));
  EXPECT_EQ(ZRStyle::getStringWidth(QString()), 0);
}
