#include "app/ViewerApplication.h"

#include "app/ViewerMainWindow.h"
#include "platform/ZRStyle.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXViewGridWidget.h"
#include "views/VXVisualizationWidget.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QRegularExpression>
#include <QSurfaceFormat>
#include <QTextStream>
#include <QVTKOpenGLNativeWidget.h>

#include <cstdio>

namespace
{
const QSize k_DefaultScreenshotSize(800, 600);

bool parseSize(const QString& text, QSize& size)
{
  const QRegularExpressionMatch match = QRegularExpression(QStringLiteral("^(\\d+)[xX](\\d+)$")).match(text);
  if (!match.hasMatch())
  {
    return false;
  }
  size = QSize(match.captured(1).toInt(), match.captured(2).toInt());
  return size.width() >= 16 && size.height() >= 16 && size.width() <= 16384 && size.height() <= 16384;
}

VXVisualizationWidget* activeVisualizationWidget(ViewerMainWindow& window)
{
  VXAbstractViewWidget* view = window.grid()->activeView();
  return view != nullptr ? view->getVisualizationWidget() : nullptr;
}

int takeScreenshot(ViewerMainWindow& window, const QStringList& files, const QString& outPath,
                   const QSize& size)
{
  QTextStream err(stderr);
  QObject::connect(&window, &ViewerMainWindow::outputAppended,
                   [&err](const QString& message)
                   {
                     err << message << '\n';
                     err.flush();
                   });
  window.setInteractive(false);
  window.setAttribute(Qt::WA_DontShowOnScreen, true);
  // The render window gets exactly the asked size whatever the layout around it, so no resizing
  // round trips through the window system are needed.
  if (VXVisualizationWidget* view = activeVisualizationWidget(window))
  {
    view->setFixedSize(size);
  }
  // show() lays the window out and makes the OpenGL context before it returns; files opened after it
  // see the final size of the render window when their camera is reset.
  window.show();

  int failures = 0;
  for (const QString& file : files)
  {
    failures += window.openFile(file) ? 0 : 1;
  }
  const QImage image = window.captureActiveView();
  if (image.isNull())
  {
    err << "kestrix-viewer: could not render a frame\n";
    return 1;
  }
  if (!image.save(outPath))
  {
    err << "kestrix-viewer: could not write the screenshot to '" << outPath << "'\n";
    return 1;
  }
  return failures == 0 ? 0 : 1;
}
} // namespace

int ViewerApplication::run(int argc, char** argv)
{
  QSurfaceFormat::setDefaultFormat(QVTKOpenGLNativeWidget::defaultFormat());
  QApplication app(argc, argv);
  QCoreApplication::setOrganizationName(QStringLiteral("KESTRIX"));
  QCoreApplication::setApplicationName(QStringLiteral("kestrix-viewer"));

  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Shows .kestrix, VTK, STL and image files."));
  parser.addHelpOption();
  const QCommandLineOption screenshotOption(QStringLiteral("screenshot"),
                                            QStringLiteral("Render the first frame to <file> and exit."),
                                            QStringLiteral("file"));
  const QCommandLineOption sizeOption(
      QStringLiteral("size"), QStringLiteral("Size of the screenshot, WIDTHxHEIGHT (default 800x600)."),
      QStringLiteral("size"));
  const QCommandLineOption themeOption(QStringLiteral("theme"),
                                       QStringLiteral("Colour theme: light or dark."),
                                       QStringLiteral("theme"), ZRStyle::k_LightTheme);
  const QCommandLineOption verboseOption(QStringLiteral("verbose"),
                                         QStringLiteral("Print VTK's own messages to standard error."));
  const QCommandLineOption viewOption(
      QStringLiteral("view"),
      QStringLiteral("Data view of every file: outline, points, wireframe or surface."),
      QStringLiteral("view"));
  const QCommandLineOption colorByOption(
      QStringLiteral("color-by"),
      QStringLiteral("Colour by ARRAY[:COMPONENT|:Magnitude], a name or a data path."),
      QStringLiteral("array"));
  const QCommandLineOption presetOption(
      QStringLiteral("preset"), QStringLiteral("Colour map of the coloured views."), QStringLiteral("name"));
  parser.addOptions(
      {screenshotOption, sizeOption, themeOption, verboseOption, viewOption, colorByOption, presetOption});
  parser.addPositionalArgument(QStringLiteral("files"), QStringLiteral("Files to open."),
                               QStringLiteral("[FILE...]"));
  parser.process(app);

  QTextStream err(stderr);
  if (!ZRStyle::Instance()->setTheme(parser.value(themeOption)))
  {
    err << "kestrix-viewer: unknown theme '" << parser.value(themeOption) << "'\n";
    return 2;
  }
  QSize size = k_DefaultScreenshotSize;
  if (parser.isSet(sizeOption) && !parseSize(parser.value(sizeOption), size))
  {
    err << "kestrix-viewer: --size takes WIDTHxHEIGHT, for example 1280x1024\n";
    return 2;
  }

  ViewerDataViewChoice choice;
  QString choiceError;
  if ((parser.isSet(viewOption) && !choice.setView(parser.value(viewOption), &choiceError)) ||
      (parser.isSet(colorByOption) && !choice.setColorBy(parser.value(colorByOption), &choiceError)) ||
      (parser.isSet(presetOption) && !choice.setPreset(parser.value(presetOption), &choiceError)))
  {
    err << "kestrix-viewer: " << choiceError << '\n';
    return 2;
  }

  if (parser.isSet(screenshotOption) && qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
  {
    // No one uses the screenshot mode's window through assistive technology, and without a session
    // bus Qt's accessibility bridge would have libdbus start dbus-launch on the first widget text.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
  }
  ViewerMainWindow window;
  window.setDataViewChoice(choice);
  const QStringList files = parser.positionalArguments();
  if (parser.isSet(screenshotOption))
  {
    return takeScreenshot(window, files, parser.value(screenshotOption), size);
  }
  window.show();
  for (const QString& file : files)
  {
    window.openFile(file);
  }
  return app.exec();
}
