#pragma once

#include "platform/ZRPlatformExport.h"

#include <QString>

/**
 * @brief Where the host's documentation lies. A help address is
 * GetHelpRootDir() + GetDocumentationFilePrefix() + a page path and anchor.
 */
class ZR_PLATFORM_EXPORT QtZRUtils
{
public:
  /** @brief The documentation root as a URL text ("file:///..." or "https://..."), no trailing slash. */
  static QString GetHelpRootDir();
  /** @brief Overrides the root (the environment variable ZR_HELP_ROOT does the same). */
  static void SetHelpRootDir(const QString& root);
  /** @brief Folder of the documentation below the root. */
  static QString GetDocumentationFilePrefix();
  /** @brief Opens a page below the root in the user's browser; false if none could be started. */
  static bool OpenHelpPage(const QString& pathAndAnchor);
};
