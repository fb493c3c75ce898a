// The viewer's filter options run as a user's script runs them: values that do not parse, an array that
// does not exist, and a chain of filters that lands in the saved state in the order given.
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/KestrixIO.h"

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <string>

namespace
{
const QString k_Viewer = QStringLiteral(ZR_TEST_BINARY_DIR "/bin/kestrix-viewer");
const QString k_Image = QStringLiteral(ZR_TEST_DATA_DIR "/vtk/image.vti");
const QString k_Sample = QStringLiteral(ZR_TEST_BINARY_DIR "/data/sample.kestrix");

struct ViewerRun
{
  int exitCode = -1;
  QString errors;
  QString out;
};

using json = nlohmann::json;

// The first record of the type anywhere under the records, depth first; null when there is none.
const json* findRecord(const json& records, const std::string& type)
{
  for (const json& record : records)
  {
    if (record.value("item_type", std::string()) == type)
    {
      return &record;
    }
    if (record.contains("item_children"))
    {
      if (const json* found = findRecord(record.at("item_children"), type))
      {
        return found;
      }
    }
  }
  return nullptr;
}

QStringList childTypes(const json& record)
{
  QStringList types;
  for (const json& child : record.value("item_children", json::array()))
  {
    types.append(QString::fromStdString(child.value("item_type", std::string())));
  }
  return types;
}

ViewerRun runViewer(const QStringList& arguments)
{
  QProcess process;
  process.start(k_Viewer, arguments);
  ViewerRun run;
  if (!process.waitForFinished(60000))
  {
    process.kill();
    return run;
  }
  run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
  run.errors = QString::fromLocal8Bit(process.readAllStandardError());
  run.out = QString::fromLocal8Bit(process.readAllStandardOutput());
  return run;
}

// The viewer run with no display at all, as a script on a server runs it.
ViewerRun runWithoutDisplay(const QStringList& arguments)
{
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.remove(QStringLiteral("DISPLAY"));
  environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
  process.setProcessEnvironment(environment);
  process.start(k_Viewer, arguments);
  ViewerRun run;
  if (!process.waitForFinished(60000))
  {
    process.kill();
    return run;
  }
  run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
  run.errors = QString::fromLocal8Bit(process.readAllStandardError());
  run.out = QString::fromLocal8Bit(process.readAllStandardOutput());
  return run;
}

TEST(ViewerFilterOptions, ValuesThatDoNotParseAreRefused)
{
  QTemporaryDir dir;
  const QString shot = dir.filePath(QStringLiteral("never.png"));
  const QList<QStringList> cases = {{QStringLiteral("--clip-plane"), QStringLiteral("1,2,3")},
                                    {QStringLiteral("--clip-plane"), QStringLiteral("0,0,0,0,0,0")},
                                    {QStringLiteral("--clip-box"), QStringLiteral("5,1,0,1,0,1")},
                                    {QStringLiteral("--slice"), QStringLiteral("a,b,c,d,e,f")},
                                    {QStringLiteral("--threshold"), QStringLiteral("Density:low:2")},
                                    {QStringLiteral("--threshold"), QStringLiteral(":0:1")},
                                    {QStringLiteral("--resample"), QStringLiteral("50,0,50")},
                                    {QStringLiteral("--decimate"), QStringLiteral("10,10,2.5")}};
  for (const QStringList& option : cases)
  {
    const ViewerRun run =
        runViewer(QStringList{k_Image} + option + QStringList{QStringLiteral("--screenshot"), shot});
    EXPECT_EQ(run.exitCode, 2) << option.join(QLatin1Char(' ')).toStdString();
    EXPECT_TRUE(run.errors.contains(option.front())) << run.errors.toStdString();
    EXPECT_FALSE(QFileInfo::exists(shot));
  }
}

TEST(ViewerFilterOptions, AThresholdOnAnArrayThatDoesNotExistNamesTheArraysThereAre)
{
  QTemporaryDir dir;
  const ViewerRun run = runViewer({k_Image, QStringLiteral("--threshold"), QStringLiteral("Nope:0:1"),
                                   QStringLiteral("--screenshot"), dir.filePath(QStringLiteral("t.png"))});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(run.errors.contains(QStringLiteral("an array 'Nope'"))) << run.errors.toStdString();
  EXPECT_TRUE(run.errors.contains(QStringLiteral("Density"))) << run.errors.toStdString();
}

int countRecords(const json& records, const std::string& type)
{
  int count = 0;
  for (const json& record : records)
  {
    count += record.value("item_type", std::string()) == type ? 1 : 0;
    count += countRecords(record.value("item_children", json::array()), type);
  }
  return count;
}

TEST(ViewerFilterOptions, AThresholdGoesUnderTheDataSourcesThatHaveItsArray)
{
  // Of the sample's geometries only the specimen holder has "Stress"; the grains come first.
  QTemporaryDir dir;
  const QString state = dir.filePath(QStringLiteral("stress.ksxstate"));
  const ViewerRun run = runViewer({k_Sample, QStringLiteral("--threshold"), QStringLiteral("Stress:100:200"),
                                   QStringLiteral("--screenshot"), dir.filePath(QStringLiteral("stress.png")),
                                   QStringLiteral("--save-state"), state});
  ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
  EXPECT_EQ(run.errors.count(QStringLiteral("lack the array 'Stress' with component 0")), 1)
      << "one note names every data source left out: " << run.errors.toStdString();
  EXPECT_TRUE(run.errors.contains(QStringLiteral("Grains, ")) &&
              run.errors.contains(QStringLiteral("Thermal Grid")))
      << run.errors.toStdString();
  QFile file(state);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const json document = json::parse(file.readAll().toStdString(), nullptr, false);
  ASSERT_FALSE(document.is_discarded());
  EXPECT_EQ(countRecords(document.at("tree_view_state"), "VXFThreshold"), 1)
      << "nothing half-made under the data sources without the array";

  // Loading the state brings back that one filter and no other.
  const QString again = dir.filePath(QStringLiteral("again.ksxstate"));
  const ViewerRun reload =
      runViewer({QStringLiteral("--state"), state, QStringLiteral("--screenshot"),
                 dir.filePath(QStringLiteral("again.png")), QStringLiteral("--save-state"), again});
  ASSERT_EQ(reload.exitCode, 0) << reload.errors.toStdString();
  QFile reloaded(again);
  ASSERT_TRUE(reloaded.open(QIODevice::ReadOnly));
  const json second = json::parse(reloaded.readAll().toStdString(), nullptr, false);
  ASSERT_FALSE(second.is_discarded());
  EXPECT_EQ(countRecords(second.at("tree_view_state"), "VXFThreshold"), 1);

  // No data source with the array: an error naming the arrays there are, and no picture.
  const QString never = dir.filePath(QStringLiteral("never.png"));
  const ViewerRun missing = runViewer({k_Sample, QStringLiteral("--threshold"), QStringLiteral("Nope:0:1"),
                                       QStringLiteral("--screenshot"), never});
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_TRUE(missing.errors.contains(QStringLiteral("no data source has an array 'Nope' with component 0")))
      << missing.errors.toStdString();
  EXPECT_TRUE(missing.errors.contains(QStringLiteral("Stress")) &&
              missing.errors.contains(QStringLiteral("Phases")))
      << missing.errors.toStdString();

  // Listed without a display the same way.
  const ViewerRun listed = runWithoutDisplay(
      {QStringLiteral("--list"), k_Sample, QStringLiteral("--threshold"), QStringLiteral("Stress:100:200")});
  EXPECT_EQ(listed.exitCode, 0) << listed.errors.toStdString();
  EXPECT_EQ(listed.out.count(QStringLiteral("Threshold Filter [")), 1) << listed.out.toStdString();
  EXPECT_TRUE(listed.errors.contains(QStringLiteral("lack the array 'Stress' with component 0")))
      << listed.errors.toStdString();
}

TEST(ViewerFilterOptions, AThresholdWhoseArrayAFilterBeforeItDroppedLeavesNoHalfMadeChain)
{
  // The resampled image keeps the cell array "Phase" and drops the point array "Density".
  QTemporaryDir dir;
  const QString state = dir.filePath(QStringLiteral("dropped.ksxstate"));
  const QString shot = dir.filePath(QStringLiteral("dropped.png"));
  const ViewerRun run =
      runViewer({k_Image, QStringLiteral("--resample"), QStringLiteral("2,2,2"),
                 QStringLiteral("--threshold"), QStringLiteral("Density:0:50"),
                 QStringLiteral("--screenshot"), shot, QStringLiteral("--save-state"), state});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(
      run.errors.contains(QStringLiteral("--threshold: the output of --resample under 'Unnamed Geometry' has "
                                         "no array 'Density' with component 0; "
                                         "arrays: Phase; no filter is added under 'Unnamed Geometry'")))
      << run.errors.toStdString();
  // The picture and the state show the image as it was opened: no resample left without its threshold.
  const QImage picture(shot);
  ASSERT_FALSE(picture.isNull());
  // The white surface of the image, framed (the orientation axes in the top right are left out).
  int light = 0;
  for (int y = 0; y < picture.height(); ++y)
  {
    for (int x = 0; x < picture.width() * 2 / 3; ++x)
    {
      light += qGray(picture.pixel(x, y)) > 200 ? 1 : 0;
    }
  }
  EXPECT_GT(light, picture.width() * picture.height() / 20);
  QFile file(state);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const json document = json::parse(file.readAll().toStdString(), nullptr, false);
  ASSERT_FALSE(document.is_discarded());
  const json& tree = document.at("tree_view_state");
  EXPECT_EQ(countRecords(tree, "VXFImageResample"), 0);
  EXPECT_EQ(countRecords(tree, "VXFThreshold"), 0);
  const json* surface = findRecord(tree, "VXSurfaceRep");
  ASSERT_NE(surface, nullptr);
  EXPECT_TRUE(surface->dump().find("\"representation_visible\":true") != std::string::npos)
      << "the data source's own view is shown again: " << surface->dump();

  // Listed without a display: the same words, and no claim that the file could not be read.
  const ViewerRun listed = runWithoutDisplay({QStringLiteral("--list"), k_Image, QStringLiteral("--resample"),
                                              QStringLiteral("2,2,2"), QStringLiteral("--threshold"),
                                              QStringLiteral("Density:0:50")});
  EXPECT_EQ(listed.exitCode, 1);
  EXPECT_TRUE(listed.errors.contains(QStringLiteral(
      "--threshold: the output of --resample under 'Unnamed Geometry' has no array 'Density'")))
      << listed.errors.toStdString();
  EXPECT_FALSE(listed.errors.contains(QStringLiteral("cannot read"))) << listed.errors.toStdString();

  // The array the resample keeps is thresholded after it as asked.
  const QString kept = dir.filePath(QStringLiteral("kept.ksxstate"));
  const ViewerRun phase = runViewer({k_Image, QStringLiteral("--resample"), QStringLiteral("2,2,2"),
                                     QStringLiteral("--threshold"), QStringLiteral("Phase:0:5"),
                                     QStringLiteral("--save-state"), kept});
  ASSERT_EQ(phase.exitCode, 0) << phase.errors.toStdString();
  QFile keptFile(kept);
  ASSERT_TRUE(keptFile.open(QIODevice::ReadOnly));
  const json keptDocument = json::parse(keptFile.readAll().toStdString(), nullptr, false);
  ASSERT_FALSE(keptDocument.is_discarded());
  const json* resample = findRecord(keptDocument.at("tree_view_state"), "VXFImageResample");
  ASSERT_NE(resample, nullptr);
  EXPECT_EQ(childTypes(*resample), QStringList{QStringLiteral("VXFThreshold")});
}

TEST(ViewerFilterOptions, FiltersChainInTheOrderGiven)
{
  QTemporaryDir dir;
  const QString shot = dir.filePath(QStringLiteral("chain.png"));
  const QString state = dir.filePath(QStringLiteral("chain.ksxstate"));
  const ViewerRun run =
      runViewer({k_Image, QStringLiteral("--threshold"), QStringLiteral("Density:-1e30:1e30"),
                 QStringLiteral("--clip-plane"), QStringLiteral("0,0,0,1,0,0"), QStringLiteral("--slice"),
                 QStringLiteral("0,0,0,0,0,1"), QStringLiteral("--screenshot"), shot,
                 QStringLiteral("--save-state"), state});
  ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
  EXPECT_TRUE(QFileInfo(shot).size() > 0);
  QFile file(state);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const json document = json::parse(file.readAll().toStdString(), nullptr, false);
  ASSERT_FALSE(document.is_discarded());
  const json& tree = document.at("tree_view_state");
  const json* threshold = findRecord(tree, "VXFThreshold");
  ASSERT_NE(threshold, nullptr);
  EXPECT_EQ(childTypes(*threshold), QStringList{QStringLiteral("VXFClip")});
  const json* clip = findRecord(threshold->at("item_children"), "VXFClip");
  ASSERT_NE(clip, nullptr);
  EXPECT_EQ(childTypes(*clip), QStringList{QStringLiteral("VXFSlice")});
  const json* slice = findRecord(clip->at("item_children"), "VXFSlice");
  ASSERT_NE(slice, nullptr);
  EXPECT_EQ(childTypes(*slice), QStringList{QStringLiteral("VXSurfaceRep")})
      << "only the last output gets a view";
}
// Pixels of strong colour, split by whether red or blue leads: a solid grey or white view has none. The
// orientation axes in the top right corner are left out.
struct Hues
{
  int reddish = 0;
  int bluish = 0;
};

Hues countHues(const QImage& image)
{
  Hues hues;
  for (int y = 0; y < image.height(); ++y)
  {
    for (int x = 0; x < image.width(); ++x)
    {
      if (x > image.width() / 2 && y < image.height() / 2)
      {
        continue;
      }
      const QColor colour = image.pixelColor(x, y);
      hues.reddish += colour.red() > colour.blue() + 100 ? 1 : 0;
      hues.bluish += colour.blue() > colour.red() + 100 ? 1 : 0;
    }
  }
  return hues;
}

TEST(ViewerFilterOptions, TheLastFiltersOutputGetsTheViewColouringAndColourMapAsked)
{
  QTemporaryDir dir;
  // A slice at z = 4 of what a clip keeps of the image (x from 1 to 2.5, y from 2 to 2.5, z from 3 to 5).
  const QStringList filters = {k_Image,
                               QStringLiteral("--clip-plane"),
                               QStringLiteral("1.6,2,4,1,0,0"),
                               QStringLiteral("--slice"),
                               QStringLiteral("1.6,2,4,0,0,1"),
                               QStringLiteral("--size"),
                               QStringLiteral("400x300")};
  const QStringList colouring = {QStringLiteral("--color-by"), QStringLiteral("Density"),
                                 QStringLiteral("--preset"), QStringLiteral("Jet")};
  const QString coloured = dir.filePath(QStringLiteral("coloured.png"));
  const ViewerRun run =
      runViewer(filters + colouring + QStringList{QStringLiteral("--screenshot"), coloured});
  ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
  const QString plain = dir.filePath(QStringLiteral("plain.png"));
  const ViewerRun plainRun =
      runViewer(filters + QStringList{QStringLiteral("--color-by"), QStringLiteral("none"),
                                      QStringLiteral("--screenshot"), plain});
  ASSERT_EQ(plainRun.exitCode, 0) << plainRun.errors.toStdString();
  const QString byDefault = dir.filePath(QStringLiteral("default.png"));
  const ViewerRun defaultRun = runViewer(filters + QStringList{QStringLiteral("--screenshot"), byDefault});
  ASSERT_EQ(defaultRun.exitCode, 0) << defaultRun.errors.toStdString();

  // Jet runs from blue at the low end to red at the high end of the range.
  const Hues colouredHues = countHues(QImage(coloured));
  const Hues plainHues = countHues(QImage(plain));
  EXPECT_GT(colouredHues.reddish, 1000);
  EXPECT_GT(colouredHues.bluish, 1000);
  EXPECT_EQ(plainHues.reddish + plainHues.bluish, 0) << "with --color-by none the slice has one plain colour";
  // Without --color-by the filter's view takes the data's first array, through the default colour map.
  const Hues defaultHues = countHues(QImage(byDefault));
  EXPECT_GT(defaultHues.reddish + defaultHues.bluish, 1000) << "the default view colours by the data";

  // The kind of view reaches the filter's data view as well, with no message about it.
  const QString state = dir.filePath(QStringLiteral("wireframe.ksxstate"));
  const ViewerRun wireframe = runViewer(filters + colouring +
                                        QStringList{QStringLiteral("--view"), QStringLiteral("wireframe"),
                                                    QStringLiteral("--save-state"), state});
  ASSERT_EQ(wireframe.exitCode, 0) << wireframe.errors.toStdString();
  EXPECT_FALSE(wireframe.errors.contains(QStringLiteral("Representation already added")))
      << wireframe.errors.toStdString();
  QFile file(state);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const json document = json::parse(file.readAll().toStdString(), nullptr, false);
  ASSERT_FALSE(document.is_discarded());
  const json* slice = findRecord(document.at("tree_view_state"), "VXFSlice");
  ASSERT_NE(slice, nullptr);
  ASSERT_EQ(childTypes(*slice), QStringList{QStringLiteral("VXWireframeRep")});
  const std::string view = slice->at("item_children").front().dump();
  EXPECT_NE(view.find("\"active_array\":\"Density\""), std::string::npos) << view;
  EXPECT_NE(view.find("Jet"), std::string::npos) << view;
}

TEST(ViewerFilterOptions, ListPrintsEachFilterOutputUnderItsSourceWithoutADisplay)
{
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.remove(QStringLiteral("DISPLAY"));
  environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
  process.setProcessEnvironment(environment);
  process.start(k_Viewer, {QStringLiteral("--list"), k_Image, QStringLiteral("--threshold"),
                           QStringLiteral("Density:-1e30:1e30"), QStringLiteral("--slice"),
                           QStringLiteral("0,0,0,0,0,1")});
  ASSERT_TRUE(process.waitForFinished(60000));
  EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
  const QString out = QString::fromLocal8Bit(process.readAllStandardOutput());
  const int threshold = out.indexOf(QStringLiteral("Threshold Filter [vtkUnstructuredGrid]"));
  const int slice = out.indexOf(QStringLiteral("Slice Filter [vtkPolyData]"));
  ASSERT_GE(threshold, 0) << out.toStdString();
  EXPECT_GT(slice, threshold) << out.toStdString();
  EXPECT_TRUE(out.mid(threshold).contains(QStringLiteral("point Density components: 1 range: [0, 34.5]")))
      << out.toStdString();

  QProcess missing;
  missing.setProcessEnvironment(environment);
  missing.start(k_Viewer, {QStringLiteral("--list"), k_Image, QStringLiteral("--threshold"),
                           QStringLiteral("Nope:0:1")});
  ASSERT_TRUE(missing.waitForFinished(60000));
  EXPECT_NE(missing.exitCode(), 0);
  EXPECT_TRUE(
      QString::fromLocal8Bit(missing.readAllStandardError()).contains(QStringLiteral("an array 'Nope'")));
}
} // namespace

TEST(ViewerFilterOptions, MaskOutWritesTheMaskOfTheCellsThatPassEveryThreshold)
{
  QTemporaryDir dir;
  const QString masked = dir.filePath(QStringLiteral("masked.kestrix"));
  const ViewerRun run = runWithoutDisplay(
      {k_Sample, QStringLiteral("--threshold"), QStringLiteral("Phases:2:2"), QStringLiteral("--threshold"),
       QStringLiteral("Confidence Index:0.3:0.8"), QStringLiteral("--mask-out"), masked});
  ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
  // The sample's grains have a "Mask" of their own.
  EXPECT_TRUE(run.out.contains(QStringLiteral("Added the mask 'Sample/Grains/Cell Data/Mask 2': ")))
      << run.out.toStdString();
  EXPECT_TRUE(run.out.contains(QStringLiteral("pass Phases in [2, 2] and Confidence Index in [0.3, 0.8].")))
      << run.out.toStdString();

  // Counted here from the arrays of the written file.
  auto readBack = zr::core::KESTRIX::ImportDataStructureFromFile(masked.toStdString(), false);
  ASSERT_TRUE(readBack.valid());
  const zr::core::DataStructure& structure = readBack.value();
  const zr::core::DataPath cells({"Sample", "Grains", "Cell Data"});
  const auto* phases = structure.getDataAs<zr::core::Int32Array>(cells.createChildPath("Phases"));
  const auto* confidence =
      structure.getDataAs<zr::core::Float32Array>(cells.createChildPath("Confidence Index"));
  const auto* mask = structure.getDataAs<zr::core::UInt8Array>(cells.createChildPath("Mask 2"));
  ASSERT_NE(phases, nullptr);
  ASSERT_NE(confidence, nullptr);
  ASSERT_NE(mask, nullptr);
  ASSERT_EQ(mask->getNumberOfTuples(), phases->getNumberOfTuples());
  zr::core::usize passing = 0;
  zr::core::usize wrong = 0;
  for (zr::core::usize cell = 0; cell < phases->getNumberOfTuples(); ++cell)
  {
    const bool pass = (*phases)[cell] == 2 && (*confidence)[cell] >= 0.3f && (*confidence)[cell] <= 0.8f;
    passing += pass ? 1 : 0;
    wrong += (*mask)[cell] != (pass ? 1 : 0) ? 1 : 0;
  }
  EXPECT_EQ(wrong, 0u);
  EXPECT_GT(passing, 0u);
  EXPECT_LT(passing, phases->getNumberOfTuples());
  EXPECT_TRUE(
      run.out.contains(QStringLiteral(": %1 of %2 cells pass").arg(passing).arg(phases->getNumberOfTuples())))
      << run.out.toStdString();

  // The written file opens like any other, with the mask among the arrays.
  const ViewerRun list = runWithoutDisplay({QStringLiteral("--list"), masked});
  ASSERT_EQ(list.exitCode, 0) << list.errors.toStdString();
  EXPECT_TRUE(list.out.contains(QStringLiteral("Sample/Grains/Cell Data/Mask 2"))) << list.out.toStdString();
}

TEST(ViewerFilterOptions, MaskOutRefusesWhatItCannotDo)
{
  QTemporaryDir dir;
  const QString masked = dir.filePath(QStringLiteral("never.kestrix"));
  const QString threshold = QStringLiteral("--threshold");
  const QString maskOut = QStringLiteral("--mask-out");
  struct Case
  {
    QStringList arguments;
    int exitCode;
    QString message;
  };
  const QList<Case> cases = {
      {{k_Sample, threshold, QStringLiteral("EulerAngles:1:0:1"), maskOut, masked},
       2,
       QStringLiteral(
           "Creating Multi-Threshold Objects filter from VXFThreshold filter currently does not support "
           "multi component arrays.")},
      {{k_Sample, maskOut, masked}, 2, QStringLiteral("--mask-out takes one or more --threshold")},
      {{k_Sample, threshold, QStringLiteral("Phases:1:2"), QStringLiteral("--slice"),
        QStringLiteral("0,0,0,0,0,1"), maskOut, masked},
       2,
       QStringLiteral("and no other filter")},
      {{k_Sample, threshold, QStringLiteral("Nope:1:2"), maskOut, masked},
       2,
       QStringLiteral("no geometry of '%1' holds Nope in its cell data; its geometries: ").arg(k_Sample)},
      {{k_Sample, threshold, QStringLiteral("Phases:1:2"), QStringLiteral("--geometry"),
        QStringLiteral("Nowhere"), maskOut, masked},
       2,
       QStringLiteral("has no geometry named 'Nowhere'")},
      {{k_Sample, threshold, QStringLiteral("Phases:1:2"), QStringLiteral("--geometry"),
        QStringLiteral("Grain Centroids"), maskOut, masked},
       2,
       QStringLiteral(
           "Cannot create a mask on 'Sample/Grain Centroids': its cell data 'Vertex Data' has no array "
           "'Phases'")},
      {{k_Sample, threshold, QStringLiteral("Phases:1:2"), maskOut, k_Sample},
       2,
       QStringLiteral("--mask-out writes a new file: '%1' is the file it reads").arg(k_Sample)},
      {{k_Image, threshold, QStringLiteral("Density:1:2"), maskOut, masked}, 2, QStringLiteral("is not one")},
      {{dir.filePath(QStringLiteral("missing.kestrix")), threshold, QStringLiteral("Phases:1:2"), maskOut,
        masked},
       1,
       QStringLiteral("no such file")},
      {{k_Sample, threshold, QStringLiteral("Phases:1:2"), maskOut,
        dir.filePath(QStringLiteral("no/such/dir/m.kestrix"))},
       1,
       QStringLiteral("cannot write")},
  };
  for (const Case& test : cases)
  {
    const ViewerRun run = runWithoutDisplay(test.arguments);
    EXPECT_EQ(run.exitCode, test.exitCode) << test.arguments.join(QLatin1Char(' ')).toStdString();
    EXPECT_TRUE(run.errors.contains(test.message))
        << test.arguments.join(QLatin1Char(' ')).toStdString() << ": " << run.errors.toStdString();
    EXPECT_FALSE(QFileInfo::exists(masked));
  }
}
