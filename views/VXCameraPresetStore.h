#pragma once

#include <QString>
#include <QStringList>

class vtkCamera;

/**
 * @brief Camera presets in the application settings: group "VisualizationSettings", subgroup
 * "CameraPresets", the list "CameraPresetNames", and one subgroup per name with the camera's position,
 * view up, focal point, view angle and parallel scale.
 */
class VXCameraPresetStore
{
public:
  enum class StoreResult
  {
    Stored,
    NameExists,
    InvalidName,
    WriteFailed
  };

  /** Names in the order they were stored. */
  static QStringList names();
  /** Appends the name and stores the camera under it; an existing name (case-sensitive) is refused. */
  static StoreResult store(const QString& name, vtkCamera* camera);
  /**
   * Sets the camera from a stored preset. A vector is taken only when all three of its keys are there,
   * the angle and the scale only when present; the rest keeps the camera's current values. False when
   * the preset has no group at all.
   */
  static bool apply(const QString& name, vtkCamera* camera);
  /** Removes the name from the list and its group; false when it was not stored. */
  static bool remove(const QString& name);
};
