#include "platform/ZRPreferences.h"

#include "platform/QtZRSettings.h"
#include "platform/ZRSettingsKeys.h"

namespace
{
const QStringList k_DefaultOrientationMarkerText = {QStringLiteral("+X"), QStringLiteral("-X"),
                                                    QStringLiteral("+Y"), QStringLiteral("-Y"),
                                                    QStringLiteral("+Z"), QStringLiteral("-Z")};

// A stored preset replaces the current one only when it parses as a preset object.
void readPreset(const QString& text, zr::core::ColorTableUtilities::ColorPreset& preset)
{
  const nlohmann::json json = nlohmann::json::parse(text.toStdString(), nullptr, false);
  if (json.is_object())
  {
    preset = zr::core::ColorTableUtilities::ColorPreset(json);
  }
}
} // namespace

ZRPreferences* ZRPreferences::Instance()
{
  static ZRPreferences* s_Instance = nullptr;
  if (s_Instance == nullptr)
  {
    s_Instance = new ZRPreferences();
    s_Instance->readSettings();
  }
  return s_Instance;
}

ZRPreferences::ZRPreferences()
{
  restoreDefaults();
}

QColor ZRPreferences::builtInRenderWindowBackground()
{
  return QColor(82, 99, 118);
}

void ZRPreferences::restoreDefaults()
{
  m_RenderWindowBackground = builtInRenderWindowBackground();
  m_CameraParallelProjection = false;
  m_OrientationMarkerText = k_DefaultOrientationMarkerText;
  m_TargetFrameRate = 30;
  m_DisableDecimation = false;
  m_AllowTooManyIndexedValues = true;
  m_AllowMoreValuesThanIndexedColors = true;
  m_DefaultNotation = k_AutoNotation;
  m_DefaultPrecision = 6;
  m_DefaultColorPreset = builtInColorPreset();
  m_DefaultIndexedColorPreset = builtInIndexedColorPreset();
}

zr::core::ColorTableUtilities::ColorPreset ZRPreferences::builtInColorPreset()
{
  zr::core::ColorTableUtilities::ColorPreset preset;
  preset.m_Name = "Cool to Warm";
  preset.m_ColorSpace = "Diverging";
  preset.m_RGBPoints = {0.0f,   0.231f, 0.298f, 0.753f, 0.5f,   0.865f,
                        0.865f, 0.865f, 1.0f,   0.706f, 0.016f, 0.149f};
  preset.m_NanColor = {1.0f, 1.0f, 0.0f};
  preset.m_DefaultMap = true;
  return preset;
}

zr::core::ColorTableUtilities::ColorPreset ZRPreferences::builtInIndexedColorPreset()
{
  zr::core::ColorTableUtilities::ColorPreset preset;
  preset.m_Name = "Categories 12";
  // Distinct hues at alternating lightness, so that neighbouring categories stay apart.
  preset.m_IndexedColors = {0.122f, 0.471f, 0.706f, 1.0f,   0.498f, 0.055f, 0.173f, 0.627f, 0.173f,
                            0.839f, 0.153f, 0.157f, 0.580f, 0.404f, 0.741f, 0.549f, 0.337f, 0.294f,
                            0.890f, 0.467f, 0.761f, 0.498f, 0.498f, 0.498f, 0.737f, 0.741f, 0.133f,
                            0.090f, 0.745f, 0.812f, 0.682f, 0.780f, 0.910f, 1.0f,   0.733f, 0.471f};
  preset.m_NanColor = {1.0f, 1.0f, 0.0f};
  preset.m_DefaultMap = true;
  return preset;
}

zr::core::ColorTableUtilities::ColorPreset ZRPreferences::getDefaultIndexedColorPreset() const
{
  return m_DefaultIndexedColorPreset;
}

void ZRPreferences::setDefaultIndexedColorPreset(const zr::core::ColorTableUtilities::ColorPreset& preset)
{
  m_DefaultIndexedColorPreset = preset;
}

zr::core::ColorTableUtilities::ColorPreset ZRPreferences::getDefaultColorPreset() const
{
  return m_DefaultColorPreset;
}

void ZRPreferences::setDefaultColorPreset(const zr::core::ColorTableUtilities::ColorPreset& preset)
{
  m_DefaultColorPreset = preset;
}

QColor ZRPreferences::getDefaultRenderWindowBackground() const
{
  return m_RenderWindowBackground;
}

void ZRPreferences::setDefaultRenderWindowBackground(const QColor& color)
{
  if (!color.isValid() || color == m_RenderWindowBackground)
  {
    return;
  }
  m_RenderWindowBackground = color;
  Q_EMIT renderWindowBackgroundChanged(color);
}

bool ZRPreferences::getCameraParallelProjDefault() const
{
  return m_CameraParallelProjection;
}

void ZRPreferences::setCameraParallelProjDefault(bool parallel)
{
  m_CameraParallelProjection = parallel;
}

QStringList ZRPreferences::getOrientationMarkerText() const
{
  return m_OrientationMarkerText;
}

void ZRPreferences::setOrientationMarkerText(const QStringList& faceLabels)
{
  if (faceLabels.size() != 6 || faceLabels == m_OrientationMarkerText)
  {
    return;
  }
  m_OrientationMarkerText = faceLabels;
  Q_EMIT orientationMarkerTextChanged(faceLabels);
}

int ZRPreferences::getTargetFrameRate() const
{
  return m_TargetFrameRate;
}

void ZRPreferences::setTargetFrameRate(int framesPerSecond)
{
  m_TargetFrameRate = qMax(1, framesPerSecond);
}

bool ZRPreferences::getDisableDecimation() const
{
  return m_DisableDecimation;
}

void ZRPreferences::setDisableDecimation(bool disable)
{
  m_DisableDecimation = disable;
}

bool ZRPreferences::getAllowTooManyIndexedValues() const
{
  return m_AllowTooManyIndexedValues;
}

void ZRPreferences::setAllowTooManyIndexedValues(bool allow)
{
  m_AllowTooManyIndexedValues = allow;
}

bool ZRPreferences::getAllowMoreValuesThanIndexedColors() const
{
  return m_AllowMoreValuesThanIndexedColors;
}

void ZRPreferences::setAllowMoreValuesThanIndexedColors(bool allow)
{
  m_AllowMoreValuesThanIndexedColors = allow;
}

QString ZRPreferences::getDefaultNotation() const
{
  return m_DefaultNotation;
}

void ZRPreferences::setDefaultNotation(const QString& notation)
{
  if (notation == k_AutoNotation || notation == k_FixedNotation || notation == k_ScientificNotation)
  {
    m_DefaultNotation = notation;
  }
}

int ZRPreferences::getDefaultPrecision() const
{
  return m_DefaultPrecision;
}

void ZRPreferences::setDefaultPrecision(int precision)
{
  m_DefaultPrecision = qBound(0, precision, 17);
}

void ZRPreferences::readSettings()
{
  QtZRSettings settings;
  settings.beginGroup(ZR::SettingsKeys::k_PreferencesGroup);
  if (settings.contains(RenderWindowBackgroundKey))
  {
    setDefaultRenderWindowBackground(QColor(settings.value(RenderWindowBackgroundKey).toString()));
  }
  if (settings.contains(CameraParallelProjectionKey))
  {
    m_CameraParallelProjection = settings.value(CameraParallelProjectionKey).toBool();
  }
  if (settings.contains(OrientationMarkerTextKey))
  {
    setOrientationMarkerText(settings.stringList(OrientationMarkerTextKey));
  }
  if (settings.contains(TargetFrameRateKey))
  {
    setTargetFrameRate(settings.value(TargetFrameRateKey).toInt());
  }
  if (settings.contains(DisableDecimationKey))
  {
    m_DisableDecimation = settings.value(DisableDecimationKey).toBool();
  }
  if (settings.contains(AllowTooManyIndexedValuesKey))
  {
    m_AllowTooManyIndexedValues = settings.value(AllowTooManyIndexedValuesKey).toBool();
  }
  if (settings.contains(AllowMoreValuesThanIndexedColorsKey))
  {
    m_AllowMoreValuesThanIndexedColors = settings.value(AllowMoreValuesThanIndexedColorsKey).toBool();
  }
  if (settings.contains(DefaultNotationKey))
  {
    setDefaultNotation(settings.value(DefaultNotationKey).toString());
  }
  if (settings.contains(DefaultPrecisionKey))
  {
    setDefaultPrecision(settings.value(DefaultPrecisionKey).toInt());
  }
  readPreset(settings.value(DefaultColorPresetKey).toString(), m_DefaultColorPreset);
  readPreset(settings.value(DefaultIndexedColorPresetKey).toString(), m_DefaultIndexedColorPreset);
}

void ZRPreferences::writeSettings() const
{
  QtZRSettings settings;
  settings.beginGroup(ZR::SettingsKeys::k_PreferencesGroup);
  settings.setValue(RenderWindowBackgroundKey, m_RenderWindowBackground.name());
  settings.setValue(CameraParallelProjectionKey, m_CameraParallelProjection);
  settings.setStringList(OrientationMarkerTextKey, m_OrientationMarkerText);
  settings.setValue(TargetFrameRateKey, m_TargetFrameRate);
  settings.setValue(DisableDecimationKey, m_DisableDecimation);
  settings.setValue(AllowTooManyIndexedValuesKey, m_AllowTooManyIndexedValues);
  settings.setValue(AllowMoreValuesThanIndexedColorsKey, m_AllowMoreValuesThanIndexedColors);
  settings.setValue(DefaultNotationKey, m_DefaultNotation);
  settings.setValue(DefaultPrecisionKey, m_DefaultPrecision);
  settings.setValue(DefaultColorPresetKey, QString::fromStdString(m_DefaultColorPreset.toJsonString()));
  settings.setValue(DefaultIndexedColorPresetKey,
                    QString::fromStdString(m_DefaultIndexedColorPreset.toJsonString()));
  settings.sync();
}
