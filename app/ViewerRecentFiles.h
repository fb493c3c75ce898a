#pragma once

#include <QStringList>

/**
 * @brief The files and state files the viewer opened last, newest first, kept in the settings so
 * that they are there in the next run. Files that no longer exist drop out when the list is read.
 */
class ViewerRecentFiles
{
public:
  static constexpr int k_MaximumCount = 10;

  static QStringList Files();
  static void Add(const QString& path);
  static void Clear();
};
