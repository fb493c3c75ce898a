#pragma once

#include <QStringList>

/**
 * The viewer's chart export, which needs no window:
 *   kestrix-viewer FILE --chart histogram|scatter|line|bar --series PATH[:COMPONENT][,...] [--bins N]
 *                  [--log-y] --export-chart OUT.png|OUT.svg|OUT.csv [--size WxH]
 * draws the arrays at those data paths as one chart and writes it.
 */
class ViewerChartExport
{
public:
  static bool handles(const QStringList& arguments);
  /** @brief Exit code: 0 written, 1 a file could not be read or written, 2 a command line or data that
   * cannot be followed. Needs a QApplication (any platform, offscreen too). */
  static int run(const QStringList& arguments);
};
