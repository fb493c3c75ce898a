#include "app/ViewerApplication.h"

#include "app/ViewerBuildPlate.h"
#include "app/ViewerFilterSteps.h"
#include "app/ViewerMainWidget.h"
#include "app/ViewerMainWindow.h"
#include "app/ViewerPick.h"
#include "main/VXInfoWidget.h"
#include "platform/ZRStyle.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXViewGridWidget.h"
#include "views/VXVisualizationWidget.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QPointer>
#include <QRegularExpression>
#include <QSurfaceFormat>
#include <QTextStream>
#include <QVTKOpenGLNativeWidget.h>
#include <vtkRenderWindow.h>

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

struct ScriptedRun
{
  QStringList files;
  QString statePath;
  QString screenshotPath;
  QString saveStatePath;
  QSize size;
  ViewerBuildPlate buildPlate;
  bool pick = false;
  QPoint pickPixel;
  QStringList spreadsheets;
};

// Each --spreadsheet value: one basic spreadsheet of the comma-separated data paths.
int openSpreadsheets(ViewerMainWindow& window, const QStringList& values)
{
  int failures = 0;
  for (const QString& value : values)
  {
    failures += window.openSpreadsheet(value.split(QLatin1Char(','), Qt::SkipEmptyParts)) ? 0 : 1;
  }
  return failures;
}

// Opens what the command line names off screen, then writes the picture and the state asked for.
int runScripted(ViewerMainWindow& window, const ScriptedRun& run)
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
  // A picture has no use for the pipeline tree: the render windows get the whole window.
  window.mainWidget()->getInfoWidget()->hide();
  // The render window gets exactly the asked size whatever the layout around it, so no resizing
  // round trips through the window system are needed.
  const QPointer<VXVisualizationWidget> initialView = activeVisualizationWidget(window);
  if (initialView != nullptr)
  {
    initialView->setFixedSize(run.size);
  }
  // show() lays the window out and makes the OpenGL context before it returns; files opened after it
  // see the final size of the render window when their camera is reset.
  window.show();

  int failures = 0;
  if (!run.statePath.isEmpty())
  {
    failures += window.loadStateFile(run.statePath) ? 0 : 1;
    // The first window stays through the load, with the size given to it above.
    if (initialView != nullptr)
    {
      initialView->setMinimumSize(0, 0);
      initialView->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    }
    // The state made its own windows: one gets the asked size as above, several share it.
    if (window.grid()->viewCount() == 1 && activeVisualizationWidget(window) != nullptr)
    {
      activeVisualizationWidget(window)->setFixedSize(run.size);
    }
    else
    {
      window.grid()->setFixedSize(run.size);
    }
    QCoreApplication::processEvents();
  }
  for (const QString& file : run.files)
  {
    failures += window.openFile(file) ? 0 : 1;
  }
  if (run.buildPlate.isSet())
  {
    window.addBuildPlate(run.buildPlate);
    // A loaded state keeps its cameras; otherwise the plate is framed with the data.
    if (run.statePath.isEmpty())
    {
      for (VXAbstractViewWidget* view : window.grid()->allViews())
      {
        view->resetCamera();
      }
    }
  }
  failures += openSpreadsheets(window, run.spreadsheets);
  if (!run.screenshotPath.isEmpty())
  {
    const QImage image =
        window.grid()->viewCount() > 1 ? window.captureAllViews() : window.captureActiveView();
    if (image.isNull())
    {
      err << "kestrix-viewer: could not render a frame\n";
      return 1;
    }
    if (!image.save(run.screenshotPath))
    {
      err << "kestrix-viewer: could not write the screenshot to '" << run.screenshotPath << "'\n";
      return 1;
    }
  }
  if (run.pick)
  {
    VXVisualizationWidget* view = activeVisualizationWidget(window);
    if (view == nullptr || run.pickPixel.x() >= view->width() || run.pickPixel.y() >= view->height())
    {
      err << "kestrix-viewer: --pick " << run.pickPixel.x() << ',' << run.pickPixel.y()
          << " lies outside the render window of " << (view != nullptr ? view->width() : 0) << 'x'
          << (view != nullptr ? view->height() : 0) << " pixels\n";
      return 2;
    }
    // The pick reads the first frame: draw it if no screenshot did.
    if (run.screenshotPath.isEmpty() && window.captureActiveView().isNull())
    {
      err << "kestrix-viewer: could not render a frame\n";
      return 1;
    }
    QTextStream out(stdout);
    out << QString::fromStdString(ViewerPick::Report(view, run.pickPixel).dump()) << '\n';
    out.flush();
  }
  if (!run.saveStatePath.isEmpty() && !window.saveStateFile(run.saveStatePath))
  {
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
      QStringLiteral("Data view of every file: outline, points, wireframe, surface, volume or glyph."),
      QStringLiteral("view"));
  const QCommandLineOption colorByOption(
      QStringLiteral("color-by"),
      QStringLiteral("Colour by ARRAY[:COMPONENT|:Magnitude], a name or a data path."),
      QStringLiteral("array"));
  const QCommandLineOption presetOption(
      QStringLiteral("preset"), QStringLiteral("Colour map of the coloured views."), QStringLiteral("name"));
  const QCommandLineOption stateOption(QStringLiteral("state"), QStringLiteral("Load a saved visualization."),
                                       QStringLiteral("file"));
  const QCommandLineOption saveStateOption(
      QStringLiteral("save-state"), QStringLiteral("Write the visualization to a state file and exit."),
      QStringLiteral("file"));
  const QCommandLineOption buildPlateOption(
      QStringLiteral("build-plate"),
      QStringLiteral("Add a build plate to every view: square:W,D or circle:R."), QStringLiteral("shape"));
  const QCommandLineOption plateSpacingOption(QStringLiteral("plate-spacing"),
                                              QStringLiteral("Spacing of the build plate's major lines."),
                                              QStringLiteral("spacing"));
  const QCommandLineOption pickOption(
      QStringLiteral("pick"), QStringLiteral("Print what lies under the window pixel X,Y as JSON and exit."),
      QStringLiteral("pixel"));
  parser.addOptions({screenshotOption, sizeOption, themeOption, verboseOption, viewOption, colorByOption,
                     presetOption, stateOption, saveStateOption, buildPlateOption, plateSpacingOption,
                     pickOption});
  const QCommandLineOption sliceNumberOption(
      QStringLiteral("slice-number"), QStringLiteral("Slice of the image slice views."), QStringLiteral("n"));
  const QCommandLineOption sliceAxisOption(QStringLiteral("slice-axis"),
                                           QStringLiteral("Axis of the image slice views: x, y or z."),
                                           QStringLiteral("axis"));
  parser.addOptions({sliceNumberOption, sliceAxisOption});
  const QCommandLineOption glyphOption(QStringLiteral("glyph"),
                                       QStringLiteral("Shape of the glyph views: arrow, sphere or cube."),
                                       QStringLiteral("shape"));
  parser.addOption(glyphOption);
  const QCommandLineOption glyphOrientOption(QStringLiteral("glyph-orient"),
                                             QStringLiteral("Three-component array that turns the glyphs."),
                                             QStringLiteral("array"));
  parser.addOption(glyphOrientOption);
  const QCommandLineOption opacityCurveOption(
      QStringLiteral("opacity-curve"),
      QStringLiteral("Opacity curve of the volume views' array: VALUE:OPACITY[,VALUE:OPACITY...]."),
      QStringLiteral("nodes"));
  parser.addOption(opacityCurveOption);
  const QCommandLineOption glyphScaleOption(
      QStringLiteral("glyph-scale"),
      QStringLiteral("Scale factor of the glyphs, in place of the one the point spacing gives."),
      QStringLiteral("factor"));
  parser.addOption(glyphScaleOption);
  const QCommandLineOption spreadsheetOption(
      QStringLiteral("spreadsheet"),
      QStringLiteral("Open a spreadsheet of the arrays at these data paths of the .kestrix file."),
      QStringLiteral("paths"));
  parser.addOption(spreadsheetOption);
  // The filter options are read again in their order by ViewerFilterSteps; here they are only known.
  for (const QString& option : ViewerFilterSteps::OptionNames())
  {
    parser.addOption(QCommandLineOption(option.mid(2), QStringLiteral("A visual filter (see --help)."),
                                        QStringLiteral("value")));
  }
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
      (parser.isSet(presetOption) && !choice.setPreset(parser.value(presetOption), &choiceError)) ||
      (parser.isSet(sliceAxisOption) && !choice.setSliceAxis(parser.value(sliceAxisOption), &choiceError)) ||
      (parser.isSet(sliceNumberOption) &&
       !choice.setSliceNumber(parser.value(sliceNumberOption), &choiceError)) ||
      (parser.isSet(glyphOption) && !choice.setGlyph(parser.value(glyphOption), &choiceError)) ||
      (parser.isSet(glyphOrientOption) &&
       !choice.setGlyphOrientation(parser.value(glyphOrientOption), &choiceError)) ||
      (parser.isSet(opacityCurveOption) &&
       !choice.setOpacityCurve(parser.value(opacityCurveOption), &choiceError)) ||
      (parser.isSet(glyphScaleOption) && !choice.setGlyphScale(parser.value(glyphScaleOption), &choiceError)))
  {
    err << "kestrix-viewer: " << choiceError << '\n';
    return 2;
  }

  const bool scripted =
      parser.isSet(screenshotOption) || parser.isSet(saveStateOption) || parser.isSet(pickOption);
  if (scripted && qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
  {
    // No one uses the screenshot mode's window through assistive technology, and without a session
    // bus Qt's accessibility bridge would have libdbus start dbus-launch on the first widget text.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
  }
  QPoint pickPixel;
  QString pickError;
  if (parser.isSet(pickOption) && !ViewerPick::Parse(parser.value(pickOption), pickPixel, &pickError))
  {
    err << "kestrix-viewer: " << pickError << '\n';
    return 2;
  }
  ViewerBuildPlate buildPlate;
  if (parser.isSet(plateSpacingOption) && !parser.isSet(buildPlateOption))
  {
    err << "kestrix-viewer: --plate-spacing needs --build-plate\n";
    return 2;
  }
  QString plateError;
  if (parser.isSet(buildPlateOption) &&
      !buildPlate.parse(parser.value(buildPlateOption),
                        parser.isSet(plateSpacingOption) ? parser.value(plateSpacingOption) : QString(),
                        &plateError))
  {
    err << "kestrix-viewer: " << plateError << '\n';
    return 2;
  }
  ViewerFilterSteps filterSteps;
  QString filterError;
  if (!filterSteps.parse(app.arguments().mid(1), &filterError))
  {
    err << "kestrix-viewer: " << filterError << '\n';
    return 2;
  }

  ViewerMainWindow window;
  window.setDataViewChoice(choice);
  window.setFilterSteps(filterSteps);
  const QStringList files = parser.positionalArguments();
  if (scripted)
  {
    return runScripted(window, {files, parser.value(stateOption), parser.value(screenshotOption),
                                parser.value(saveStateOption), size, buildPlate, parser.isSet(pickOption),
                                pickPixel, parser.values(spreadsheetOption)});
  }
  window.setInteractive(true);
  window.show();
  if (parser.isSet(stateOption))
  {
    window.loadStateFile(parser.value(stateOption));
  }
  for (const QString& file : files)
  {
    window.openFile(file);
  }
  if (buildPlate.isSet())
  {
    window.addBuildPlate(buildPlate);
  }
  openSpreadsheets(window, parser.values(spreadsheetOption));
  return app.exec();
}
