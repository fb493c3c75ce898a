#include "views/VXCameraPresetStore.h"

#include "platform/QtZRSettings.h"
#include "platform/ZRSettingsKeys.h"

#include <vtkCamera.h>

namespace
{
using namespace ZR::SettingsKeys;

const QString k_PositionKeys[3] = {k_CameraPosX, k_CameraPosY, k_CameraPosZ};
const QString k_ViewUpKeys[3] = {k_CameraViewUpX, k_CameraViewUpY, k_CameraViewUpZ};
const QString k_FocalPointKeys[3] = {k_CameraFocalPtX, k_CameraFocalPtY, k_CameraFocalPtZ};

void openPresetGroups(QtZRSettings& settings)
{
  settings.beginGroup(k_VisualizationSettings);
  settings.beginGroup(k_CameraPresets);
}

void writeVector(QtZRSettings& settings, const QString keys[3], const double values[3])
{
  for (int i = 0; i < 3; ++i)
  {
    settings.setValue(keys[i], values[i]);
  }
}

/** Values are read as text and converted, whatever type the settings file gives back. */
bool readVector(const QtZRSettings& settings, const QString keys[3], double out[3])
{
  for (int i = 0; i < 3; ++i)
  {
    if (!settings.contains(keys[i]))
    {
      return false;
    }
  }
  for (int i = 0; i < 3; ++i)
  {
    out[i] = settings.value(keys[i]).toString().toDouble();
  }
  return true;
}
} // namespace

QStringList VXCameraPresetStore::names()
{
  QtZRSettings settings;
  openPresetGroups(settings);
  return settings.stringList(k_CameraPresetNames);
}

VXCameraPresetStore::StoreResult VXCameraPresetStore::store(const QString& name, vtkCamera* camera)
{
  if (name.isEmpty() || camera == nullptr)
  {
    return StoreResult::InvalidName;
  }
  QtZRSettings settings;
  openPresetGroups(settings);
  QStringList stored = settings.stringList(k_CameraPresetNames);
  if (stored.contains(name, Qt::CaseSensitive))
  {
    return StoreResult::NameExists;
  }
  stored.append(name);
  settings.setStringList(k_CameraPresetNames, stored);
  settings.beginGroup(name);
  writeVector(settings, k_PositionKeys, camera->GetPosition());
  writeVector(settings, k_ViewUpKeys, camera->GetViewUp());
  writeVector(settings, k_FocalPointKeys, camera->GetFocalPoint());
  settings.setValue(k_CameraViewAngle, camera->GetViewAngle());
  settings.setValue(k_CameraParallelScale, camera->GetParallelScale());
  settings.endGroup();
  return settings.sync() ? StoreResult::Stored : StoreResult::WriteFailed;
}

bool VXCameraPresetStore::apply(const QString& name, vtkCamera* camera)
{
  if (name.isEmpty() || camera == nullptr)
  {
    return false;
  }
  QtZRSettings settings;
  openPresetGroups(settings);
  if (!settings.childGroups().contains(name))
  {
    return false;
  }
  settings.beginGroup(name);
  double position[3];
  double viewUp[3];
  double focalPoint[3];
  camera->GetPosition(position);
  camera->GetViewUp(viewUp);
  camera->GetFocalPoint(focalPoint);
  readVector(settings, k_PositionKeys, position);
  readVector(settings, k_ViewUpKeys, viewUp);
  readVector(settings, k_FocalPointKeys, focalPoint);
  double viewAngle = camera->GetViewAngle();
  double parallelScale = camera->GetParallelScale();
  if (settings.contains(k_CameraViewAngle))
  {
    viewAngle = settings.value(k_CameraViewAngle).toString().toDouble();
  }
  if (settings.contains(k_CameraParallelScale))
  {
    parallelScale = settings.value(k_CameraParallelScale).toString().toDouble();
  }
  camera->SetPosition(position);
  camera->SetViewUp(viewUp);
  camera->SetFocalPoint(focalPoint);
  camera->SetViewAngle(viewAngle);
  camera->SetParallelScale(parallelScale);
  return true;
}

bool VXCameraPresetStore::remove(const QString& name)
{
  QtZRSettings settings;
  openPresetGroups(settings);
  QStringList stored = settings.stringList(k_CameraPresetNames);
  if (!stored.contains(name, Qt::CaseSensitive))
  {
    return false;
  }
  stored.removeAll(name);
  settings.remove(name);
  settings.setStringList(k_CameraPresetNames, stored);
  return settings.sync();
}
