#include "app/ViewerCommandLine.h"

#include "app/ViewerDataViewChoice.h"
#include "app/ViewerFilterSteps.h"
#include "app/ViewerMaskOut.h"
#include "app/ViewerTableExport.h"
#include "app/ViewerTreePrinter.h"

#include "data_bridge/ZRVtkDatasetWriters.h"
#include "data_bridge/zr_contract/KestrixReaderLoader.h"
#include "filters/VXFilter.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"

#include <vtkAppendFilter.h>
#include <vtkDataSet.h>
#include <vtkDataSetSurfaceFilter.h>
#include <vtkPolyData.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>

#include <QFileInfo>
#include <QTextStream>

namespace
{
const QString k_List = QStringLiteral("--list");
const QString k_Convert = QStringLiteral("--convert");
const QString k_Geometry = QStringLiteral("--geometry");
const QString k_Help = QStringLiteral("--help");
const QString k_HelpShort = QStringLiteral("-h");

QTextStream& errorStream()
{
  static QTextStream s_Err(stderr);
  return s_Err;
}

void printUsage(QTextStream& stream)
{
  stream << ViewerCommandLine::usage();
  stream.flush();
}

void fail(const QString& file, const QString& why)
{
  errorStream() << "kestrix-viewer: cannot read '" << file << "': " << why << '\n';
  errorStream().flush();
}

// A pipeline whose output messages (warnings, progress) go to standard error as they come. A pop-up
// is what a failed load says: it is kept in lastPopup and said once, with the file's name, by the caller.
void routeMessages(VXPipeline& pipeline, QString& lastPopup)
{
  QObject::connect(&pipeline, &VXPipeline::sendOutputMessage,
                   [](const QString& message)
                   {
                     errorStream() << message << '\n';
                     errorStream().flush();
                   });
  QObject::connect(&pipeline, &VXPipeline::sendPopupMessage,
                   [&lastPopup](const QString& title, const QString& message)
                   { lastPopup = title + QStringLiteral(": ") + message; });
}

// Says a kept pop-up of an import that gave data after all.
void flushPopup(QString& lastPopup)
{
  if (!lastPopup.isEmpty())
  {
    errorStream() << lastPopup << '\n';
    errorStream().flush();
    lastPopup.clear();
  }
}

// Why a file gave no data, in words a user can act on: the reader's own reason when it gave one (the
// last line of the load error), else what can be found out here.
QString explainEmptyImport(const QString& path, const QString& lastPopup)
{
  if (!lastPopup.isEmpty())
  {
    return lastPopup.split(QLatin1Char('\n'), Qt::SkipEmptyParts).last();
  }
  const QFileInfo info(path);
  if (!info.exists())
  {
    return QStringLiteral("no such file");
  }
  if (!info.isReadable())
  {
    return QStringLiteral("permission denied");
  }
  if (info.suffix().toLower() == QStringLiteral("kestrix"))
  {
    auto result = zr::core::KESTRIX::LoadDataStructureFromFile(path.toStdString(), false);
    if (!result.valid() && !result.errors().empty())
    {
      return QString::fromStdString(result.errors().front().message);
    }
    return QStringLiteral("the file holds no geometry");
  }
  return QStringLiteral("the file holds no readable dataset");
}

bool hasData(const VXBridgeObject& bridge)
{
  for (VXDataSource* dataSource : bridge.dataSources())
  {
    if (dataSource->getOutput() != nullptr)
    {
      return true;
    }
  }
  return false;
}

// The dataset in the form the writer of an extension takes: any dataset becomes an unstructured grid
// for .vtu and its outer surface for .vtp.
vtkSmartPointer<vtkDataSet> adaptForExtension(vtkDataSet* dataSet, const QString& extension)
{
  if (extension == QStringLiteral("vtu") && vtkUnstructuredGrid::SafeDownCast(dataSet) == nullptr)
  {
    vtkNew<vtkAppendFilter> append;
    append->AddInputData(dataSet);
    append->Update();
    return append->GetOutput();
  }
  if (extension == QStringLiteral("vtp") && vtkPolyData::SafeDownCast(dataSet) == nullptr)
  {
    vtkNew<vtkDataSetSurfaceFilter> surface;
    surface->SetInputData(dataSet);
    surface->Update();
    return surface->GetOutput();
  }
  return dataSet;
}

bool writeByExtension(const QString& path, vtkDataSet* dataSet, QString* errorMessage)
{
  using namespace ZRVtk::utils;
  const QString extension = QFileInfo(path).suffix().toLower();
  vtkSmartPointer<vtkDataSet> adapted = adaptForExtension(dataSet, extension);
  if (extension == QStringLiteral("vti"))
  {
    return WriteImageData(path, adapted, errorMessage);
  }
  if (extension == QStringLiteral("vtr"))
  {
    return WriteRectilinearGrid(path, adapted, errorMessage);
  }
  if (extension == QStringLiteral("vts"))
  {
    return WriteStructuredGrid(path, adapted, errorMessage);
  }
  if (extension == QStringLiteral("vtu"))
  {
    return WriteUnstructuredGrid(path, adapted, errorMessage);
  }
  if (extension == QStringLiteral("vtp"))
  {
    return WritePolyData(path, adapted, errorMessage);
  }
  if (extension == QStringLiteral("vtk"))
  {
    return WriteVtkData(path, adapted, errorMessage);
  }
  *errorMessage = QStringLiteral("no writer for files ending in '.%1' (use vti, vtr, vts, vtu, vtp or vtk)")
                      .arg(extension);
  return false;
}
} // namespace

QString ViewerCommandLine::usage()
{
  return QStringLiteral(
      "Usage: kestrix-viewer [FILE...] [--view V] [--color-by ARRAY] [--preset NAME] [--screenshot OUT.png]\n"
      "       kestrix-viewer --state FILE.ksxstate [--screenshot OUT.png]\n"
      "       kestrix-viewer --list FILE...\n"
      "       kestrix-viewer --convert IN OUT [--geometry NAME]\n"
      "       kestrix-viewer FILE --table PATH[,PATH...] --export-table OUT.csv [--delimiter ',' | tab]\n"
      "                      [--notation auto|fixed|scientific] [--precision N]\n"
      "       kestrix-viewer FILE.kestrix --threshold ARRAY:MIN:MAX [...] [--geometry NAME] --mask-out "
      "OUT.kestrix\n"
      "       kestrix-viewer FILE --chart histogram|scatter|line|bar --series PATH[:COMPONENT][,...]\n"
      "                      [--bins N] [--log-y] --export-chart OUT.png|OUT.svg|OUT.csv [--size WxH]\n"
      "\n"
      "Shows .kestrix files, VTK files (.vti .vtr .vts .vtu .vtp, their parallel forms .pvti ... .pvtp,\n"
      "legacy .vtk), STL files and images (.png .jpg .jpeg .tif .tiff .bmp).\n"
      "\n"
      "In a window (needs a display):\n"
      "  FILE...                  open the files; more can be dropped on the window\n"
      "                             kestrix-viewer grains.kestrix part.stl\n"
      "  --state FILE.ksxstate    load a saved visualization: split windows, pipeline tree, data\n"
      "                           views and cameras (a .ksxstate given as FILE does the same)\n"
      "                             kestrix-viewer --state grains.ksxstate\n"
      "  --save-state OUT.ksxstate\n"
      "                           write the visualization the command line opened to a state file\n"
      "                           and exit (off screen, like --screenshot, which it can join)\n"
      "                             kestrix-viewer grains.kestrix --color-by FeatureIds --save-state "
      "g.ksxstate\n"
      "  --view V                 data view of every file: outline, points, wireframe, surface,\n"
      "                           volume (images only), glyph or slice (images only)\n"
      "                           (default: surface, points or wireframe by the kind of geometry)\n"
      "                             kestrix-viewer mesh.vtu --view wireframe\n"
      "  --view slice             images (.vti, .kestrix image geometries, PNG/TIFF) one slice at a\n"
      "                           time; other geometries keep their default views\n"
      "  --slice-number N         the slice the image slice views show (from 0; implies --view slice);\n"
      "                           a number outside the image is an error\n"
      "  --slice-axis x|y|z       the axis the slices step along (default z: XY planes)\n"
      "                             kestrix-viewer grains.kestrix --view slice --slice-axis x --slice-number "
      "5\n"
      "                             kestrix-viewer grains.vti --view volume --color-by Confidence\n"
      "  --glyph SHAPE            glyph view with arrow, sphere or cube glyphs (implies --view glyph)\n"
      "                             kestrix-viewer centroids.vtp --glyph sphere --color-by Volumes\n"
      "  --glyph-orient ARRAY     turn the glyphs along a three-component point or cell array\n"
      "                           (implies --view glyph); an array the data lacks is an error\n"
      "                             kestrix-viewer shell.vtp --glyph arrow --glyph-orient Normals\n"
      "  --opacity-curve V:A[,V:A...]\n"
      "                           opacity curve of the volume views' array (the --color-by one or the\n"
      "                           first): nodes of value V in data units and opacity A from 0 to 1, at\n"
      "                           least two (implies --view volume)\n"
      "                             kestrix-viewer grains.vti --color-by Confidence --opacity-curve "
      "0:0,0.4:0.05,1:0.8\n"
      "  --glyph-scale S          scale factor of the glyphs (a positive number; implies --view glyph);\n"
      "                           without it glyphs are sized by the spacing of the points that carry\n"
      "                           them, so that neighbours about touch\n"
      "                             kestrix-viewer grains.vti --glyph sphere --glyph-scale 0.5\n"
      "  --color-by ARRAY[:C]     colour by a point or cell array, named or by data path, and one\n"
      "                           component C (from 0) or Magnitude (the default); without it each\n"
      "                           view takes its data's scalars or first array, and none keeps a\n"
      "                           solid colour\n"
      "                             kestrix-viewer grains.kestrix --color-by FeatureIds\n"
      "                             kestrix-viewer grains.kestrix --color-by \"Sample/Grains/Cell "
      "Data/EulerAngles:0\"\n"
      "  --preset NAME            colour map of the coloured views (Viridis, Cool to Warm, Jet, ...;\n"
      "                           a categorical one such as \"Categories 10\" colours values as categories)\n"
      "                             kestrix-viewer grains.kestrix --color-by Phases --preset \"Set 1\"\n"
      "  --screenshot OUT.png     render the first frame of the files off screen, save it and exit;\n"
      "                           with a state of several windows, all of them in one image\n"
      "                             kestrix-viewer grains.kestrix --view surface --color-by FeatureIds "
      "--screenshot grains.png\n"
      "  --size WxH               size of the screenshot in pixels (default 800x600)\n"
      "                             kestrix-viewer part.stl --screenshot part.png --size 1280x800\n"
      "  --build-plate square:W,D | circle:R\n"
      "                           add a build plate to every view: a W x D grid from the origin, or a\n"
      "                           circle of radius R about it (works with --screenshot and --state)\n"
      "                             kestrix-viewer part.stl --build-plate square:250,250 --screenshot p.png\n"
      "  --plate-spacing S        spacing of the plate's major lines (default 10; minor lines at S/5)\n"
      "                             kestrix-viewer part.stl --build-plate circle:100 --plate-spacing 20\n"
      "  --pick X,Y               print what lies under the window pixel X,Y (from the top left) of the\n"
      "                           first frame at --size as one JSON object and exit: \"geometry\",\n"
      "                           \"cell_id\", \"point_id\" (-1 where none), \"position\" and \"values\"\n"
      "                           (off screen, like --screenshot)\n"
      "                             kestrix-viewer part.stl --view surface --pick 400,300\n"
      "  --clip-plane OX,OY,OZ,NX,NY,NZ\n"
      "                           clip every data source with a plane, keeping the side its normal\n"
      "                           points to\n"
      "                             kestrix-viewer grains.kestrix --clip-plane 10,0,0,1,0,0\n"
      "  --clip-box XMIN,XMAX,YMIN,YMAX,ZMIN,ZMAX\n"
      "                           clip every data source with a box, keeping what is inside it\n"
      "                             kestrix-viewer grains.kestrix --clip-box 0,50,0,50,0,20\n"
      "  --slice OX,OY,OZ,NX,NY,NZ\n"
      "                           cut every data source with a plane\n"
      "                             kestrix-viewer grains.kestrix --slice 0,0,12,0,0,1\n"
      "  --threshold ARRAY[:COMPONENT]:MIN:MAX\n"
      "                           keep the cells whose value lies in [MIN, MAX]\n"
      "                             kestrix-viewer grains.kestrix --threshold Phases:2:2\n"
      "  --resample PX,PY,PZ      coarsen image data to the percentages of cells per axis\n"
      "                             kestrix-viewer grains.kestrix --resample 50,50,50\n"
      "  --decimate NX,NY,NZ      decimate the surface into NX x NY x NZ bins\n"
      "                             kestrix-viewer part.stl --decimate 40,40,40\n"
      "                           Filter options run in the order given, each on the output of the one\n"
      "                           before; the last output gets the data view (--view)\n"
      "                           With --list, each filter's output is printed under its data source\n"
      "  --spreadsheet PATH[,PATH...]\n"
      "                           open the Spreadsheets window (View > Show Spreadsheets) with a basic\n"
      "                           spreadsheet of the arrays at those data paths of the .kestrix file;\n"
      "                           give it again for more spreadsheets; kept by --save-state\n"
      "                             kestrix-viewer grains.kestrix --spreadsheet \"Sample/Grains/Cell "
      "Data/FeatureIds\"\n"
      "  --theme light|dark       colour theme of the window (default light)\n"
      "                             kestrix-viewer --theme dark grains.kestrix\n"
      "  --verbose                also print the rendering toolkit's own messages to standard error\n"
      "                             kestrix-viewer broken.vtu --verbose\n"
      "\n"
      "Without a display:\n"
      "  --list FILE...           print the pipeline tree each file imports to: each data source with\n"
      "                           its dataset class, counts, default data view and data path, and\n"
      "                           each array with its components, ranges and data path\n"
      "                             kestrix-viewer --list grains.kestrix mesh.vtu\n"
      "  --convert IN OUT         write the dataset read from IN with the writer OUT's extension\n"
      "                           names (.vti .vtr .vts .vtu .vtp .vtk)\n"
      "                             kestrix-viewer --convert part.stl part.vtp\n"
      "  --geometry NAME          with --convert: the geometry of a file that holds several\n"
      "                             kestrix-viewer --convert grains.kestrix grains.vti --geometry Grains\n"
      "  FILE --table PATH[,...]  the arrays at those data paths (as --list prints them) side by side as\n"
      "  --export-table OUT.csv   a table, written as a spreadsheet exports it: a sep= line, a header\n"
      "                           line, one line per tuple (arrays of several components give a\n"
      "                           column per component, neighbour lists one per list position)\n"
      "                             kestrix-viewer grains.kestrix --table \"Sample/Grains/Cell "
      "Data/FeatureIds\" "
      "--export-table ids.csv\n"
      "  --delimiter ',' | tab    with --table: the comma export (', ', the default) or tabs\n"
      "  --notation N             with --table: auto (default), fixed or scientific numbers\n"
      "  --precision N            with --table: digits of the numbers (default 6)\n"
      "                             kestrix-viewer grains.kestrix --table \"Sample/Grains/Cell "
      "Data/EulerAngles\" "
      "--export-table e.csv --delimiter tab --notation fixed --precision 3\n"
      "  --mask-out OUT.kestrix   with --threshold steps: add to the cell data of the geometry the mask of\n"
      "                           the cells that pass every threshold (a uint8 array, 1 for a passing\n"
      "                           cell, named \"Mask\", or \"Mask 2\" and on when that name is taken), as "
      "the\n"
      "                           threshold filter's multi-threshold button does in the window, and\n"
      "                           write the data structure to OUT.kestrix; each geometry whose cell data\n"
      "                           holds all the arrays gets one, or the one --geometry NAME names.\n"
      "                           Multi-component arrays are refused\n"
      "                             kestrix-viewer grains.kestrix --threshold Phases:2:2 --threshold "
      "\"Confidence Index\":0.5:1 --mask-out masked.kestrix\n"
      "  FILE --chart TYPE        draw the arrays at data paths as a chart and write it (no display\n"
      "  --series PATH[:C][,...]  needed): histogram bins one array (component C, default 0); scatter\n"
      "  --export-chart OUT       takes the x array first, then the y arrays; line and bar draw each\n"
      "                           array against its tuple index. Without :C a y array gives one series\n"
      "                           per component. OUT ends in .png, .jpg, .bmp, .tif, .svg or .csv\n"
      "                             kestrix-viewer grains.kestrix --chart histogram --series "
      "\"Sample/Grains/Cell Data/EulerAngles:0\" --bins 36 --export-chart phi1.png\n"
      "                             kestrix-viewer grains.kestrix --chart scatter --series "
      "\"Sample/Features/Volumes,Sample/Features/Diameters\" --export-chart sizes.svg\n"
      "  --bins N                 with --chart histogram: number of bins (default 10)\n"
      "  --log-y                  with --chart: logarithmic y axis; values at or below zero are left out\n"
      "                           and counted in a message\n"
      "  --size WxH               with --chart: size of the picture in pixels (default 800x600)\n"
      "  -h, --help               print this text and exit\n"
      "\n"
      "Messages go to standard error. Exit status: 0 on success, 1 when a file could not be read or\n"
      "written, 2 for a command line that cannot be followed.\n");
}

bool ViewerCommandLine::handles(const QStringList& arguments)
{
  return arguments.contains(k_Help) || arguments.contains(k_HelpShort) ||
         ViewerTableExport::handles(arguments) || ViewerMaskOut::handles(arguments) ||
         (!arguments.isEmpty() && (arguments.front() == k_List || arguments.front() == k_Convert));
}

bool ViewerCommandLine::hasDisplay()
{
  return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
         !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

int ViewerCommandLine::refuseWithoutDisplay()
{
  errorStream() << "kestrix-viewer: no display to open a window on (DISPLAY is not set). The modes "
                   "--list, --convert and --table need none; under a headless session run the window modes "
                   "with xvfb-run. See kestrix-viewer --help.\n";
  errorStream().flush();
  return 2;
}

int ViewerCommandLine::run(const QStringList& arguments)
{
  if (arguments.contains(k_Help) || arguments.contains(k_HelpShort))
  {
    QTextStream out(stdout);
    printUsage(out);
    return 0;
  }
  if (ViewerTableExport::handles(arguments))
  {
    return ViewerTableExport::run(arguments);
  }
  if (ViewerMaskOut::handles(arguments))
  {
    return ViewerMaskOut::run(arguments);
  }
  if (arguments.size() >= 2 && arguments.front() == k_List)
  {
    ViewerFilterSteps steps;
    QString error;
    if (!steps.parse(arguments.mid(1), &error))
    {
      errorStream() << "kestrix-viewer: " << error << '\n';
      return 2;
    }
    return list(ViewerFilterSteps::WithoutFilterOptions(arguments.mid(1)), steps);
  }
  if (arguments.size() >= 3 && arguments.front() == k_Convert)
  {
    return convert(arguments.mid(1));
  }
  printUsage(errorStream());
  return 2;
}

int ViewerCommandLine::list(const QStringList& files, const ViewerFilterSteps& steps)
{
  ViewerDataViewChoice::UseViewerDefaults(); // the default views a window would show
  QTextStream out(stdout);
  VXPipeline pipeline;
  QString lastPopup;
  routeMessages(pipeline, lastPopup);
  ViewerTreePrinter printer(out);
  int failures = 0;
  for (const QString& file : files)
  {
    lastPopup.clear();
    VXBridgeObject* bridge = pipeline.importFile(file);
    if (!hasData(*bridge))
    {
      fail(file, explainEmptyImport(file, lastPopup));
      ++failures;
      continue;
    }
    flushPopup(lastPopup);
    printer.print(*bridge);
    if (steps.isEmpty())
    {
      continue;
    }
    QString error;
    QString note;
    const QList<VXDataSource*> sources =
        steps.sourcesWithThresholdArrays(bridge->dataSources(), &error, &note);
    if (!error.isEmpty())
    {
      // The file was read: what failed is the filter chain asked for.
      errorStream() << "kestrix-viewer: " << file << ": " << error << '\n';
      errorStream().flush();
      ++failures;
      continue;
    }
    if (!note.isEmpty())
    {
      errorStream() << "kestrix-viewer: " << file << ": " << note << '\n';
      errorStream().flush();
    }
    for (VXDataSource* source : sources)
    {
      const QList<VXFilter*> chain = steps.runWithoutView(source, &error);
      if (chain.isEmpty())
      {
        errorStream() << "kestrix-viewer: " << file << ": " << error << '\n';
        errorStream().flush();
        ++failures;
        continue;
      }
      for (int depth = 0; depth < chain.size(); ++depth)
      {
        vtkAlgorithmOutput* port = chain[depth]->outputPort();
        printer.printFilterOutput(chain[depth]->name(),
                                  vtkDataSet::SafeDownCast(port->GetProducer()->GetOutputDataObject(0)),
                                  depth + 1);
      }
    }
  }
  return failures == 0 ? 0 : 1;
}

int ViewerCommandLine::convert(const QStringList& arguments)
{
  const QString input = arguments.at(0);
  const QString output = arguments.at(1);
  QString geometryName;
  if (arguments.size() >= 4 && arguments.at(2) == k_Geometry)
  {
    geometryName = arguments.at(3);
  }
  else if (arguments.size() != 2)
  {
    printUsage(errorStream());
    return 2;
  }

  VXPipeline pipeline;
  QString lastPopup;
  routeMessages(pipeline, lastPopup);
  VXBridgeObject* bridge = pipeline.importFile(input);
  if (!hasData(*bridge))
  {
    fail(input, explainEmptyImport(input, lastPopup));
    return 1;
  }
  flushPopup(lastPopup);
  VXDataSource* chosen = nullptr;
  QStringList names;
  for (VXDataSource* dataSource : bridge->dataSources())
  {
    names << dataSource->name();
    if (dataSource->getOutput() != nullptr && (geometryName.isEmpty() || dataSource->name() == geometryName))
    {
      chosen = chosen == nullptr ? dataSource : chosen;
    }
  }
  if (geometryName.isEmpty() && bridge->dataSources().size() > 1)
  {
    errorStream() << "kestrix-viewer: '" << input
                  << "' holds several geometries; choose one with --geometry NAME: "
                  << names.join(QStringLiteral(", ")) << '\n';
    errorStream().flush();
    return 2;
  }
  if (chosen == nullptr && names.contains(geometryName))
  {
    errorStream() << "kestrix-viewer: the geometry '" << geometryName << "' of '" << input
                  << "' could not be made into a dataset (the reason is above)\n";
    errorStream().flush();
    return 1;
  }
  if (chosen == nullptr)
  {
    errorStream() << "kestrix-viewer: '" << input << "' has no geometry named '" << geometryName
                  << "'; it has: " << names.join(QStringLiteral(", ")) << '\n';
    errorStream().flush();
    return 2;
  }
  QString errorMessage;
  if (!writeByExtension(output, chosen->getOutput(), &errorMessage))
  {
    errorStream() << "kestrix-viewer: cannot write '" << output << "': " << errorMessage << '\n';
    errorStream().flush();
    return 1;
  }
  return 0;
}
