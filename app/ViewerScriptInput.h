#pragma once

#include "data_bridge/zr_contract/DataStructure.h"

#include <QString>
#include <QStringList>

#include <optional>

/**
 * @brief What the viewer's display-free script options (--table, --chart) share: messages on standard
 * error with an exit code, and the data structure of the .kestrix file they read arrays from.
 */
class ViewerScriptInput
{
public:
  /** @brief Prints "kestrix-viewer: MESSAGE" on standard error and returns the exit code. */
  static int Complain(const QString& message, int exitCode);

  /**
   * @brief The data structure of a .kestrix file; no value after a message naming the file and why
   * (missing, not a .kestrix file, unreadable), with the exit code to end with in exitCode.
   */
  static std::optional<zr::core::DataStructure> LoadDataStructure(const QString& file, int& exitCode);

  /** @brief Data paths of every array of a structure, as --list prints them. */
  static QStringList ArrayPaths(const zr::core::DataStructure& dataStructure);
};
