// kestrix-viewer: opens .kestrix, VTK, STL and image files in a window, or runs one of the
// scriptable modes (--list, --convert) without one.
#include "app/ViewerApplication.h"
#include "app/ViewerChartExport.h"
#include "app/ViewerCommandLine.h"
#include "data_bridge/VXQuietOutputWindow.h"

#include <QApplication>
#include <QCoreApplication>
#include <QStringList>

int main(int argc, char** argv)
{
  QStringList arguments;
  for (int i = 1; i < argc; ++i)
  {
    arguments << QString::fromLocal8Bit(argv[i]);
  }
  // VTK's own error dumps only on request; failed reads still report through their messages.
  const bool verbose = arguments.removeAll(QStringLiteral("--verbose")) > 0;
  VXQuietOutputWindow::Install(verbose);
  if (ViewerChartExport::handles(arguments) && !arguments.contains(QStringLiteral("--help")) &&
      !arguments.contains(QStringLiteral("-h")))
  {
    // Charts are drawn by widgets, which need a QApplication; without a display it draws off screen.
    if (!ViewerCommandLine::hasDisplay())
    {
      qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kestrix-viewer"));
    return ViewerChartExport::run(arguments);
  }
  if (!ViewerCommandLine::handles(arguments))
  {
    // Without a display Qt would abort while connecting: say why instead.
    if (!ViewerCommandLine::hasDisplay())
    {
      return ViewerCommandLine::refuseWithoutDisplay();
    }
    return ViewerApplication::run(argc, argv);
  }
  QCoreApplication app(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("kestrix-viewer"));
  return ViewerCommandLine::run(arguments);
}
