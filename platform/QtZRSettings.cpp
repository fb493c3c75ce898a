#include "platform/QtZRSettings.h"

#include <QDir>
#include <QSettings>
#include <QStandardPaths>

namespace
{
QString& directoryOverride()
{
  static QString s_Directory;
  return s_Directory;
}
} // namespace

QtZRSettings::QtZRSettings()
    : QtZRSettings(defaultFilePath())
{
}

QtZRSettings::QtZRSettings(const QString& filePath)
    : m_Settings(std::make_unique<QSettings>(filePath, QSettings::IniFormat))
{
}

QtZRSettings::~QtZRSettings()
{
  while (!m_Groups.isEmpty())
  {
    endGroup();
  }
}

void QtZRSettings::setSettingsDirectory(const QString& dirPath)
{
  directoryOverride() = dirPath;
}

QString QtZRSettings::defaultFilePath()
{
  QString dir = directoryOverride();
  if (dir.isEmpty())
  {
    dir = qEnvironmentVariable(k_DirectoryEnvVar);
  }
  if (dir.isEmpty())
  {
    dir =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/KESTRIX");
  }
  return QDir(dir).filePath(k_FileName);
}

QString QtZRSettings::fileName() const
{
  return m_Settings->fileName();
}

void QtZRSettings::beginGroup(const QString& name)
{
  m_Settings->beginGroup(name);
  m_Groups.push_back(name);
}

void QtZRSettings::endGroup()
{
  if (m_Groups.isEmpty())
  {
    return;
  }
  m_Settings->endGroup();
  m_Groups.pop_back();
}

QString QtZRSettings::group() const
{
  return m_Settings->group();
}

int QtZRSettings::groupDepth() const
{
  return m_Groups.size();
}

bool QtZRSettings::contains(const QString& key) const
{
  return m_Settings->contains(key);
}

QVariant QtZRSettings::value(const QString& key, const QVariant& defaultValue) const
{
  return m_Settings->value(key, defaultValue);
}

QStringList QtZRSettings::stringList(const QString& key, const QStringList& defaultValue) const
{
  if (!m_Settings->contains(key))
  {
    return defaultValue;
  }
  // INI files keep a one-entry list as a plain string and an empty one as an empty string.
  const QVariant stored = m_Settings->value(key);
  if (stored.userType() == QMetaType::QString && stored.toString().isEmpty())
  {
    return {};
  }
  return stored.toStringList();
}

void QtZRSettings::setValue(const QString& key, const QVariant& value)
{
  m_Settings->setValue(key, value);
}

void QtZRSettings::setStringList(const QString& key, const QStringList& value)
{
  m_Settings->setValue(key, value);
}

void QtZRSettings::remove(const QString& key)
{
  if (key.isEmpty())
  {
    return; // QSettings would wipe the whole group; that is clearGroup()'s job
  }
  m_Settings->remove(key);
}

void QtZRSettings::clearGroup()
{
  m_Settings->remove(QString());
}

QStringList QtZRSettings::childKeys() const
{
  return m_Settings->childKeys();
}

QStringList QtZRSettings::childGroups() const
{
  return m_Settings->childGroups();
}

bool QtZRSettings::sync()
{
  m_Settings->sync();
  return m_Settings->status() == QSettings::NoError;
}
