#pragma once

#include <QStringList>

class ViewerFilterSteps;

/**
 * The viewer's scriptable modes, which need no window (--help lists every mode and option):
 *   kestrix-viewer --list FILE...                       prints the pipeline tree each file imports to
 *   kestrix-viewer --convert IN OUT [--geometry NAME]   writes a dataset read from IN, with the
 *                                                       writer chosen by OUT's extension
 *   kestrix-viewer FILE --table PATH[,PATH...] --export-table OUT.csv   writes arrays as a table
 * Messages of the library go to standard error; the exit code is 0 on success.
 */
class ViewerCommandLine
{
public:
  /** @brief Every mode and option with an example; printed by --help. */
  static QString usage();
  static bool handles(const QStringList& arguments);
  static int run(const QStringList& arguments);
  /** @brief Whether a window could be opened: a display, or a Qt platform chosen by the caller. */
  static bool hasDisplay();
  /** @brief Says why the window modes cannot run here; returns the exit code. */
  static int refuseWithoutDisplay();

private:
  static int list(const QStringList& files, const ViewerFilterSteps& steps);
  static int convert(const QStringList& arguments);
};
