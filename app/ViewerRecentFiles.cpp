#include "app/ViewerRecentFiles.h"

#include "platform/QtZRSettings.h"

#include <QFileInfo>

namespace
{
const QString k_Group = QStringLiteral("Viewer");
const QString k_Key = QStringLiteral("recent_files");
} // namespace

QStringList ViewerRecentFiles::Files()
{
  QtZRSettings settings;
  settings.beginGroup(k_Group);
  QStringList files;
  for (const QString& path : settings.stringList(k_Key))
  {
    if (QFileInfo::exists(path))
    {
      files << path;
    }
  }
  return files;
}

void ViewerRecentFiles::Add(const QString& path)
{
  const QString absolute = QFileInfo(path).absoluteFilePath();
  QtZRSettings settings;
  settings.beginGroup(k_Group);
  QStringList files = settings.stringList(k_Key);
  files.removeAll(absolute);
  files.prepend(absolute);
  while (files.size() > k_MaximumCount)
  {
    files.removeLast();
  }
  settings.setStringList(k_Key, files);
  settings.sync();
}

void ViewerRecentFiles::Clear()
{
  QtZRSettings settings;
  settings.beginGroup(k_Group);
  settings.remove(k_Key);
  settings.sync();
}
