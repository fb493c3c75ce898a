#include "views/VXCameraPresetStore.h"

#include "platform/QtZRSettings.h"
#include "platform/ZRSettingsKeys.h"

#include <vtkCamera.h>
#include <vtkNew.h>

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace
{
using Result = VXCameraPresetStore::StoreResult;

class VXCameraPresetStoreTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    ASSERT_TRUE(m_Scratch.isValid());
    QtZRSettings::setSettingsDirectory(m_Scratch.path());
  }
  void TearDown() override { QtZRSettings::setSettingsDirectory(QString()); }

  /** Opens the group of one preset for direct reads and writes. */
  static void openPreset(QtZRSettings& settings, const QString& name)
  {
    settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
    settings.beginGroup(ZR::SettingsKeys::k_CameraPresets);
    settings.beginGroup(name);
  }

  QTemporaryDir m_Scratch;
};

TEST_F(VXCameraPresetStoreTest, StoredPresetRestoresEveryCameraValue)
{
  vtkNew<vtkCamera> camera;
  camera->SetPosition(1.5, -2.0, 30.0);
  camera->SetFocalPoint(0.5, 0.25, -1.0);
  camera->SetViewUp(0.0, 0.0, 1.0);
  camera->SetViewAngle(42.0);
  camera->SetParallelScale(3.25);
  EXPECT_TRUE(VXCameraPresetStore::names().isEmpty());
  ASSERT_EQ(VXCameraPresetStore::store(QStringLiteral("Top"), camera), Result::Stored);
  ASSERT_EQ(VXCameraPresetStore::store(QStringLiteral("Side"), camera), Result::Stored);
  EXPECT_EQ(VXCameraPresetStore::names(), (QStringList{"Top", "Side"}));

  vtkNew<vtkCamera> other;
  ASSERT_TRUE(VXCameraPresetStore::apply(QStringLiteral("Top"), other));
  EXPECT_DOUBLE_EQ(other->GetPosition()[0], 1.5);
  EXPECT_DOUBLE_EQ(other->GetPosition()[2], 30.0);
  EXPECT_DOUBLE_EQ(other->GetFocalPoint()[1], 0.25);
  EXPECT_DOUBLE_EQ(other->GetViewAngle(), 42.0);
  EXPECT_DOUBLE_EQ(other->GetParallelScale(), 3.25);
  EXPECT_NEAR(other->GetViewUp()[2], 1.0, 1e-12);
}

TEST_F(VXCameraPresetStoreTest, ExistingNameIsRefusedAndTheStoredPresetStays)
{
  vtkNew<vtkCamera> camera;
  camera->SetViewAngle(20.0);
  ASSERT_EQ(VXCameraPresetStore::store(QStringLiteral("Top"), camera), Result::Stored);
  camera->SetViewAngle(60.0);
  EXPECT_EQ(VXCameraPresetStore::store(QStringLiteral("Top"), camera), Result::NameExists);
  // Names differ by case: a new preset.
  EXPECT_EQ(VXCameraPresetStore::store(QStringLiteral("top"), camera), Result::Stored);
  EXPECT_EQ(VXCameraPresetStore::store(QString(), camera), Result::InvalidName);
  EXPECT_EQ(VXCameraPresetStore::names(), (QStringList{"Top", "top"}));
  QtZRSettings settings;
  openPreset(settings, QStringLiteral("Top"));
  EXPECT_DOUBLE_EQ(settings.value(ZR::SettingsKeys::k_CameraViewAngle).toDouble(), 20.0);
}

TEST_F(VXCameraPresetStoreTest, IncompleteVectorsKeepTheCurrentCamera)
{
  {
    QtZRSettings settings;
    openPreset(settings, QStringLiteral("Partial"));
    settings.setValue(ZR::SettingsKeys::k_CameraPosX, QStringLiteral("9"));
    settings.setValue(ZR::SettingsKeys::k_CameraPosY, QStringLiteral("9"));
    settings.setValue(ZR::SettingsKeys::k_CameraFocalPtX, QStringLiteral("1"));
    settings.setValue(ZR::SettingsKeys::k_CameraFocalPtY, QStringLiteral("2"));
    settings.setValue(ZR::SettingsKeys::k_CameraFocalPtZ, QStringLiteral("-3.5"));
    settings.setValue(ZR::SettingsKeys::k_CameraViewAngle, QStringLiteral("15"));
    settings.sync();
  }
  vtkNew<vtkCamera> camera;
  camera->SetPosition(4.0, 5.0, 6.0);
  camera->SetParallelScale(2.0);
  ASSERT_TRUE(VXCameraPresetStore::apply(QStringLiteral("Partial"), camera));
  EXPECT_DOUBLE_EQ(camera->GetPosition()[0], 4.0) << "two of three position keys are not a position";
  EXPECT_DOUBLE_EQ(camera->GetFocalPoint()[2], -3.5);
  EXPECT_DOUBLE_EQ(camera->GetViewAngle(), 15.0);
  EXPECT_DOUBLE_EQ(camera->GetParallelScale(), 2.0);

  EXPECT_FALSE(VXCameraPresetStore::apply(QStringLiteral("Missing"), camera));
  EXPECT_DOUBLE_EQ(camera->GetViewAngle(), 15.0);
}

TEST_F(VXCameraPresetStoreTest, RemovedPresetLeavesListAndGroup)
{
  vtkNew<vtkCamera> camera;
  VXCameraPresetStore::store(QStringLiteral("A"), camera);
  VXCameraPresetStore::store(QStringLiteral("B"), camera);
  EXPECT_TRUE(VXCameraPresetStore::remove(QStringLiteral("A")));
  EXPECT_FALSE(VXCameraPresetStore::remove(QStringLiteral("A")));
  EXPECT_EQ(VXCameraPresetStore::names(), QStringList{"B"});
  EXPECT_FALSE(VXCameraPresetStore::apply(QStringLiteral("A"), camera));
  EXPECT_TRUE(VXCameraPresetStore::apply(QStringLiteral("B"), camera));
}
} // namespace
