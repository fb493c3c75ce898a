// A minimal host of the visualization module: a window around the module's main widget, with the
// files named on the command line imported into its pipeline.
//   kestrix-embed-host FILE... [--screenshot OUT.png]   with --screenshot, saves the first frame and exits
#include "main/VXMainWidget.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "views/VXAbstractViewWidget.h"

#include <QVTKOpenGLNativeWidget.h>

#include <QApplication>
#include <QCoreApplication>
#include <QStringList>
#include <QSurfaceFormat>
#include <QTextStream>

int main(int argc, char** argv)
{
  // VTK's render windows need this format before the application starts.
  QSurfaceFormat::setDefaultFormat(QVTKOpenGLNativeWidget::defaultFormat());
  QApplication app(argc, argv);
  QCoreApplication::setOrganizationName(QStringLiteral("KESTRIX"));
  QCoreApplication::setApplicationName(QStringLiteral("kestrix-embed-host"));
  QTextStream err(stderr);

  QStringList files;
  QString screenshot;
  const QStringList arguments = QCoreApplication::arguments().mid(1);
  for (int i = 0; i < arguments.size(); ++i)
  {
    if (arguments[i] == QStringLiteral("--screenshot") && i + 1 < arguments.size())
    {
      screenshot = arguments[++i];
    }
    else
    {
      files << arguments[i];
    }
  }
  if (files.isEmpty())
  {
    err << "Usage: kestrix-embed-host FILE... [--screenshot OUT.png]\n";
    return 2;
  }

  VXMainWidget widget;
  // The module reports through messages; a host shows them its own way (here, on standard error).
  const auto say = [&err](const QString& message)
  {
    err << message << '\n';
    err.flush();
  };
  QObject::connect(&widget, &VXMainWidget::printOutput, say);
  QObject::connect(widget.pipeline(), &VXPipeline::sendOutputMessage, say);
  QObject::connect(widget.pipeline(), &VXPipeline::sendPopupMessage,
                   [&say](const QString& title, const QString& message)
                   { say(title + QStringLiteral(": ") + message); });
  widget.resize(1000, 700);
  widget.show();

  int failures = 0;
  for (const QString& file : files)
  {
    VXBridgeObject* bridge = widget.pipeline()->importFile(file);
    int withData = 0;
    for (VXDataSource* dataSource : bridge != nullptr ? bridge->dataSources() : QList<VXDataSource*>())
    {
      withData += dataSource->getOutput() != nullptr ? 1 : 0;
    }
    if (withData == 0)
    {
      say(QStringLiteral("kestrix-embed-host: no data could be read from '%1'").arg(file));
      ++failures;
    }
  }
  if (VXAbstractViewWidget* active = widget.getActiveViewWidget())
  {
    active->resetCamera();
  }
  widget.renderAllViews();

  if (screenshot.isEmpty())
  {
    return app.exec();
  }
  const QImage image = widget.grabAllViews(false, QColor(Qt::black));
  if (image.isNull() || !image.save(screenshot))
  {
    say(QStringLiteral("kestrix-embed-host: could not write the frame to '%1'").arg(screenshot));
    return 1;
  }
  return failures == 0 ? 0 : 1;
}
