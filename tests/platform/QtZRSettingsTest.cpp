#include "platform/QtZRSettings.h"
#include "platform/ZRPreferences.h"
#include "platform/ZRSettingsKeys.h"

#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{
// Each test gets its own settings file in a fresh folder.
class SettingsTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    ASSERT_TRUE(m_Dir.isValid());
    QtZRSettings::setSettingsDirectory(m_Dir.path());
  }
  void TearDown() override { QtZRSettings::setSettingsDirectory(QString()); }

  QTemporaryDir m_Dir;
};
} // namespace

TEST_F(SettingsTest, NestedGroupsRoundTripThroughTheFile)
{
  {
    QtZRSettings settings;
    EXPECT_EQ(settings.fileName(), m_Dir.filePath(QtZRSettings::k_FileName));
    settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
    settings.beginGroup(ZR::SettingsKeys::k_FilterSettings);
    settings.beginGroup(QStringLiteral("VXFClip"));
    EXPECT_EQ(settings.groupDepth(), 3);
    EXPECT_EQ(settings.group(), QStringLiteral("VisualizationSettings/FilterSettings/VXFClip"));
    settings.setValue(QStringLiteral("plane_normal_x"), 0.25);
    settings.endGroup();
    settings.setValue(QStringLiteral("top_of_filters"), true);
    ASSERT_TRUE(settings.sync());
  } // groups still open here are closed by the destructor

  QtZRSettings reread;
  EXPECT_EQ(reread.groupDepth(), 0);
  EXPECT_FALSE(reread.contains(QStringLiteral("plane_normal_x")));
  reread.beginGroup(QStringLiteral("VisualizationSettings"));
  reread.beginGroup(QStringLiteral("FilterSettings"));
  EXPECT_TRUE(reread.value(QStringLiteral("top_of_filters")).toBool());
  EXPECT_EQ(reread.childGroups(), QStringList{QStringLiteral("VXFClip")});
  reread.beginGroup(QStringLiteral("VXFClip"));
  ASSERT_TRUE(reread.contains(QStringLiteral("plane_normal_x")));
  EXPECT_DOUBLE_EQ(reread.value(QStringLiteral("plane_normal_x")).toDouble(), 0.25);
  EXPECT_FALSE(reread.contains(QStringLiteral("plane_normal_y")));
  EXPECT_EQ(reread.value(QStringLiteral("plane_normal_y"), 7).toInt(), 7);
}

TEST_F(SettingsTest, ClearGroupAndRemoveTouchOnlyTheirOwnKeys)
{
  QtZRSettings settings;
  settings.beginGroup(QStringLiteral("A"));
  settings.setValue(QStringLiteral("keep"), 1);
  settings.beginGroup(QStringLiteral("B"));
  settings.setValue(QStringLiteral("x"), 1);
  settings.setValue(QStringLiteral("y"), 2);
  settings.beginGroup(QStringLiteral("Preset One"));
  settings.setValue(QStringLiteral("camera_pos_x"), 1.5);
  settings.endGroup();

  settings.remove(QStringLiteral("Preset One")); // a whole child group
  EXPECT_TRUE(settings.childGroups().isEmpty());
  settings.remove(QString()); // must not wipe the group
  EXPECT_TRUE(settings.contains(QStringLiteral("x")));

  settings.clearGroup();
  EXPECT_TRUE(settings.childKeys().isEmpty());
  settings.endGroup();
  EXPECT_TRUE(settings.contains(QStringLiteral("keep")));
  EXPECT_FALSE(settings.childGroups().contains(QStringLiteral("B")));
}

TEST_F(SettingsTest, StringListsOfAnyLengthReadBackAsLists)
{
  const QStringList empty;
  const QStringList one{QStringLiteral("Untitled Preset")};
  const QStringList three{QStringLiteral("a"), QStringLiteral("b, c"), QStringLiteral("d")};
  {
    QtZRSettings settings;
    settings.setStringList(QStringLiteral("empty"), empty);
    settings.setStringList(QStringLiteral("one"), one);
    settings.setStringList(QStringLiteral("three"), three);
  }
  QtZRSettings reread;
  EXPECT_EQ(reread.stringList(QStringLiteral("empty"), {QStringLiteral("default")}), empty);
  EXPECT_EQ(reread.stringList(QStringLiteral("one")), one);
  EXPECT_EQ(reread.stringList(QStringLiteral("three")), three);
  EXPECT_EQ(reread.value(QStringLiteral("one")).toStringList(), one);
  EXPECT_EQ(reread.stringList(QStringLiteral("absent"), one), one);
}

TEST(SettingsLocation, EnvironmentVariableNamesTheFolderUnlessOverridden)
{
  QTemporaryDir envDir;
  QTemporaryDir overrideDir;
  const QByteArray old = qgetenv(QtZRSettings::k_DirectoryEnvVar);
  qputenv(QtZRSettings::k_DirectoryEnvVar, envDir.path().toLocal8Bit());
  EXPECT_EQ(QtZRSettings::defaultFilePath(), envDir.filePath(QtZRSettings::k_FileName));
  QtZRSettings::setSettingsDirectory(overrideDir.path());
  EXPECT_EQ(QtZRSettings::defaultFilePath(), overrideDir.filePath(QtZRSettings::k_FileName));
  QtZRSettings::setSettingsDirectory(QString());
  qputenv(QtZRSettings::k_DirectoryEnvVar, old);
}

TEST_F(SettingsTest, PreferencesReadOnlyTheKeysThatArePresent)
{
  ZRPreferences* prefs = ZRPreferences::Instance();
  prefs->restoreDefaults();
  {
    QtZRSettings settings;
    settings.beginGroup(ZR::SettingsKeys::k_PreferencesGroup);
    settings.setValue(ZRPreferences::DefaultPrecisionKey, 3);
    settings.setValue(ZRPreferences::DefaultNotationKey, QStringLiteral("Nonsense"));
    settings.setStringList(ZRPreferences::OrientationMarkerTextKey,
                           {QStringLiteral("too"), QStringLiteral("few")});
  }
  prefs->setDefaultRenderWindowBackground(QColor(1, 2, 3));
  prefs->readSettings();
  EXPECT_EQ(prefs->getDefaultPrecision(), 3);
  EXPECT_EQ(prefs->getDefaultNotation(), ZRPreferences::k_AutoNotation); // invalid text ignored
  EXPECT_EQ(prefs->getOrientationMarkerText().size(), 6);                // wrong length ignored
  EXPECT_EQ(prefs->getDefaultRenderWindowBackground(), QColor(1, 2, 3)); // absent key keeps value
  prefs->restoreDefaults();
}

TEST_F(SettingsTest, PreferencesWrittenAreReadBackAndAnnounced)
{
  ZRPreferences* prefs = ZRPreferences::Instance();
  prefs->restoreDefaults();
  const QStringList labels{QStringLiteral("R"), QStringLiteral("L"), QStringLiteral("A"),
                           QStringLiteral("P"), QStringLiteral("S"), QStringLiteral("I")};
  QSignalSpy markerSpy(prefs, &ZRPreferences::orientationMarkerTextChanged);
  prefs->setOrientationMarkerText(labels);
  ASSERT_EQ(markerSpy.count(), 1);
  EXPECT_EQ(markerSpy.at(0).at(0).toStringList(), labels);
  prefs->setDefaultRenderWindowBackground(QColor(10, 20, 30));
  prefs->setCameraParallelProjDefault(true);
  prefs->setDefaultNotation(ZRPreferences::k_ScientificNotation);
  prefs->writeSettings();

  prefs->restoreDefaults();
  ASSERT_NE(prefs->getOrientationMarkerText(), labels);
  prefs->readSettings();
  EXPECT_EQ(prefs->getOrientationMarkerText(), labels);
  EXPECT_EQ(prefs->getDefaultRenderWindowBackground(), QColor(10, 20, 30));
  EXPECT_TRUE(prefs->getCameraParallelProjDefault());
  EXPECT_EQ(prefs->getDefaultNotation(), ZRPreferences::k_ScientificNotation);
  prefs->restoreDefaults();
}
