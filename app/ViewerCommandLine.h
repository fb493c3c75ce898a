#pragma once

#include <QStringList>

/**
 * The viewer's scriptable modes, which need no window:
 *   kestrix-viewer --list FILE...                       prints the pipeline tree each file imports to
 *   kestrix-viewer --convert IN OUT [--geometry NAME]   writes a dataset read from IN, with the
 *                                                       writer chosen by OUT's extension
 * Messages of the library go to standard error; the exit code is 0 on success.
 */
class ViewerCommandLine
{
public:
  static bool handles(const QStringList& arguments);
  static int run(const QStringList& arguments);

private:
  static int list(const QStringList& files);
  static int convert(const QStringList& arguments);
};
