#pragma once

#include <QString>

/**
 * @brief The folder of the state file being written or read, for the time of that save or load.
 *
 * Items that name files (the file bridges) record their paths also relative to this folder, and on
 * load fall back to that relative path when the absolute one is gone, so a state file that moved
 * together with its data still loads. Saves and loads run on the GUI thread and may nest.
 */
class VXStateFileDirectory
{
public:
  explicit VXStateFileDirectory(const QString& directory);
  ~VXStateFileDirectory();

  VXStateFileDirectory(const VXStateFileDirectory&) = delete;
  VXStateFileDirectory& operator=(const VXStateFileDirectory&) = delete;

  /** @brief The folder of the innermost save or load under way; empty when there is none. */
  static QString Current();

private:
  QString m_Previous;
};
