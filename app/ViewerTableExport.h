#pragma once

#include <QStringList>

/**
 * The viewer's table export, which needs no window:
 *   kestrix-viewer FILE --table PATH[,PATH...] --export-table OUT.csv [--delimiter ',' | tab]
 *                  [--notation auto|fixed|scientific] [--precision N]
 * writes the arrays at those data paths side by side, as a spreadsheet's export writes them.
 */
class ViewerTableExport
{
public:
  static bool handles(const QStringList& arguments);
  /** @brief Exit code: 0 written, 1 a file could not be read or written, 2 a command line that cannot be
   * followed. */
  static int run(const QStringList& arguments);
};
