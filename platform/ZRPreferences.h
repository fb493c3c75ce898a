#pragma once

#include "platform/ZRPlatformExport.h"

#include "data_bridge/zr_contract/ColorPreset.h"

#include <QColor>
#include <QObject>
#include <QString>
#include <QStringList>

/**
 * @brief The user's application preferences (one per process), kept in the settings file under the
 * group "Preferences". Values are loaded on first use; writeSettings() stores them.
 */
class ZR_PLATFORM_EXPORT ZRPreferences : public QObject
{
  Q_OBJECT

public:
  static inline const QString k_AutoNotation = QStringLiteral("Auto");
  static inline const QString k_FixedNotation = QStringLiteral("Fixed");
  static inline const QString k_ScientificNotation = QStringLiteral("Scientific");
  static inline const QString k_DefaultLegendLocation = QStringLiteral("Top Right");

  static inline const QString RenderWindowBackgroundKey = QStringLiteral("RenderWindowBackground");
  static inline const QString CameraParallelProjectionKey = QStringLiteral("CameraParallelProjection");
  static inline const QString OrientationMarkerTextKey = QStringLiteral("OrientationMarkerText");
  static inline const QString TargetFrameRateKey = QStringLiteral("TargetFrameRate");
  static inline const QString DisableDecimationKey = QStringLiteral("DisableDecimation");
  static inline const QString AllowTooManyIndexedValuesKey = QStringLiteral("AllowTooManyIndexedValues");
  static inline const QString AllowMoreValuesThanIndexedColorsKey =
      QStringLiteral("AllowMoreValuesThanIndexedColors");
  static inline const QString DefaultNotationKey = QStringLiteral("DefaultNotation");
  static inline const QString DefaultPrecisionKey = QStringLiteral("DefaultPrecision");
  static inline const QString DefaultColorPresetKey = QStringLiteral("default_color_preset");
  static inline const QString DefaultIndexedColorPresetKey = QStringLiteral("default_indexed_color_preset");

  static ZRPreferences* Instance();

  QColor getDefaultRenderWindowBackground() const;
  void setDefaultRenderWindowBackground(const QColor& color);
  /** @brief The background a user gets back with "Restore Default Background Color". */
  static QColor builtInRenderWindowBackground();

  bool getCameraParallelProjDefault() const;
  void setCameraParallelProjDefault(bool parallel);

  /** @brief Six face labels of the orientation marker: +X, -X, +Y, -Y, +Z, -Z. */
  QStringList getOrientationMarkerText() const;
  /** @brief Ignores a list that is not six labels long. */
  void setOrientationMarkerText(const QStringList& faceLabels);

  int getTargetFrameRate() const;
  void setTargetFrameRate(int framesPerSecond);
  bool getDisableDecimation() const;
  void setDisableDecimation(bool disable);

  bool getAllowTooManyIndexedValues() const;
  void setAllowTooManyIndexedValues(bool allow);
  bool getAllowMoreValuesThanIndexedColors() const;
  void setAllowMoreValuesThanIndexedColors(bool allow);

  /** @brief The colour map new data sources and data views start with. */
  zr::core::ColorTableUtilities::ColorPreset getDefaultColorPreset() const;
  void setDefaultColorPreset(const zr::core::ColorTableUtilities::ColorPreset& preset);
  /** @brief A diverging blue-white-red map, the default when the user has chosen none. */
  static zr::core::ColorTableUtilities::ColorPreset builtInColorPreset();
  /** @brief The categorical map new categorical colourings start with. */
  zr::core::ColorTableUtilities::ColorPreset getDefaultIndexedColorPreset() const;
  void setDefaultIndexedColorPreset(const zr::core::ColorTableUtilities::ColorPreset& preset);
  /** @brief Twelve colours told apart easily, the categorical default when the user has chosen none. */
  static zr::core::ColorTableUtilities::ColorPreset builtInIndexedColorPreset();

  QString getDefaultNotation() const;
  void setDefaultNotation(const QString& notation);
  int getDefaultPrecision() const;
  void setDefaultPrecision(int precision);

  /** @brief Re-reads every value that the settings file holds; others keep their current value. */
  void readSettings();
  void writeSettings() const;
  /** @brief Back to the built-in values (not written until writeSettings()). */
  void restoreDefaults();

Q_SIGNALS:
  void customCameraPresetAdded(const QString& presetName);
  void customCameraPresetRemoved(const QString& presetName);
  void orientationMarkerTextChanged(const QStringList& faceLabels);
  void renderWindowBackgroundChanged(const QColor& color);

private:
  ZRPreferences();

  QColor m_RenderWindowBackground;
  bool m_CameraParallelProjection = false;
  QStringList m_OrientationMarkerText;
  int m_TargetFrameRate = 30;
  bool m_DisableDecimation = false;
  bool m_AllowTooManyIndexedValues = true;
  bool m_AllowMoreValuesThanIndexedColors = true;
  QString m_DefaultNotation = k_AutoNotation;
  zr::core::ColorTableUtilities::ColorPreset m_DefaultColorPreset;
  zr::core::ColorTableUtilities::ColorPreset m_DefaultIndexedColorPreset;
  int m_DefaultPrecision = 6;
};
