#pragma once

#include "platform/ZRPlatformExport.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

class QSettings;

/**
 * @brief The application's settings: nested groups of keys over one INI file (QSettings).
 *
 * Where the file lies, first match wins: the directory given to setSettingsDirectory(), the directory
 * in the environment variable ZR_SETTINGS_DIR (tests point it at a scratch folder), the user's
 * configuration folder. Open groups are closed when the object goes away.
 */
class ZR_PLATFORM_EXPORT QtZRSettings
{
public:
  static inline const QString k_FileName = QStringLiteral("KESTRIX-ZR.ini");
  static inline const char* k_DirectoryEnvVar = "ZR_SETTINGS_DIR";

  QtZRSettings();
  explicit QtZRSettings(const QString& filePath);
  ~QtZRSettings();

  QtZRSettings(const QtZRSettings&) = delete;
  QtZRSettings& operator=(const QtZRSettings&) = delete;

  /** @brief Directory override for the whole process; an empty path removes it. */
  static void setSettingsDirectory(const QString& dirPath);
  /** @brief The file a default-constructed object uses. */
  static QString defaultFilePath();

  QString fileName() const;

  void beginGroup(const QString& name);
  void endGroup();
  /** @brief Slash-separated path of the open groups, empty at the top. */
  QString group() const;
  int groupDepth() const;

  bool contains(const QString& key) const;
  QVariant value(const QString& key, const QVariant& defaultValue = QVariant()) const;
  /** @brief A list value; a stored empty or one-entry list reads back correctly. */
  QStringList stringList(const QString& key, const QStringList& defaultValue = {}) const;
  void setValue(const QString& key, const QVariant& value);
  void setStringList(const QString& key, const QStringList& value);
  /** @brief Removes a key, or a whole child group of that name. */
  void remove(const QString& key);
  /** @brief Removes every key and child group of the open group. */
  void clearGroup();

  QStringList childKeys() const;
  QStringList childGroups() const;

  /** @brief Writes pending changes to disk; false when the file cannot be written. */
  bool sync();

private:
  std::unique_ptr<QSettings> m_Settings;
  QStringList m_Groups;
};
