// Runs the viewer program itself, as a user's script would, and checks the frames it writes.
#include "common/ZRImageBaseline.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <vtkFloatArray.h>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkXMLImageDataWriter.h>

#include <gtest/gtest.h>

#include <cmath>

namespace
{
const QString k_Viewer = QStringLiteral(ZR_TEST_BINARY_DIR "/bin/kestrix-viewer");
const QString k_DataDir = QStringLiteral(ZR_TEST_DATA_DIR);
const QString k_BaselineDir = QStringLiteral(ZR_APP_BASELINE_DIR);
// Renderer noise stays far below this; a wrong camera, a missing outline or a black frame far above.
constexpr double k_Tolerance = 10.0;

struct ViewerRun
{
  int exitCode = -1;
  QString errors;
};

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
  return run;
}

::testing::AssertionResult matchesBaseline(const QImage& image, const QString& name)
{
  return ZRTest::MatchesBaseline(image, k_BaselineDir, name, k_Tolerance);
}
} // namespace

TEST(ViewerScreenshot, FramesOfTheDefaultDataViewsMatchTheirBaselines)
{
  QTemporaryDir dir;
  const QString shot = dir.filePath(QStringLiteral("outlines.png"));
  const ViewerRun run =
      runViewer({k_DataDir + QStringLiteral("/vtk/unstructured.vtu"),
                 k_DataDir + QStringLiteral("/vtk/tool_binary.stl"), QStringLiteral("--screenshot"), shot,
                 QStringLiteral("--size"), QStringLiteral("640x480")});
  ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
  const QImage image(shot);
  ASSERT_EQ(image.size(), QSize(640, 480));
  EXPECT_TRUE(matchesBaseline(image, QStringLiteral("surfaces_640x480")));

  // Default size, one file.
  const QString single = dir.filePath(QStringLiteral("single.png"));
  const ViewerRun second =
      runViewer({k_DataDir + QStringLiteral("/vtk/image.vti"), QStringLiteral("--screenshot"), single});
  ASSERT_EQ(second.exitCode, 0) << second.errors.toStdString();
  EXPECT_EQ(QImage(single).size(), QSize(800, 600));
  EXPECT_TRUE(matchesBaseline(QImage(single), QStringLiteral("image_surface_800x600")));
}

TEST(ViewerScreenshot, BadInputGivesAMessageAndAnErrorCode)
{
  QTemporaryDir dir;
  const QString shot = dir.filePath(QStringLiteral("missing.png"));
  const ViewerRun missing =
      runViewer({k_DataDir + QStringLiteral("/vtk/no_such_file.vtu"), QStringLiteral("--screenshot"), shot,
                 QStringLiteral("--size"), QStringLiteral("320x240")});
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_TRUE(missing.errors.contains(QStringLiteral("no_such_file.vtu"))) << missing.errors.toStdString();
  EXPECT_EQ(QImage(shot).size(), QSize(320, 240)); // the empty scene is still written

  const ViewerRun badSize =
      runViewer({QStringLiteral("--screenshot"), shot, QStringLiteral("--size"), QStringLiteral("big")});
  EXPECT_EQ(badSize.exitCode, 2);
  EXPECT_TRUE(badSize.errors.contains(QStringLiteral("WIDTHxHEIGHT")));

  const ViewerRun unwritable =
      runViewer({k_DataDir + QStringLiteral("/vtk/poly.vtp"), QStringLiteral("--screenshot"),
                 QStringLiteral("/no/such/dir/shot.png")});
  EXPECT_EQ(unwritable.exitCode, 1);
  EXPECT_TRUE(unwritable.errors.contains(QStringLiteral("could not write")));
}

TEST(ViewerScreenshot, ViewColouringAndPresetFromTheCommandLine)
{
  QTemporaryDir dir;
  const QString shot = dir.filePath(QStringLiteral("coloured.png"));
  const QString mesh = k_DataDir + QStringLiteral("/vtk/unstructured.vtu");
  const ViewerRun coloured =
      runViewer({mesh, QStringLiteral("--view"), QStringLiteral("surface"), QStringLiteral("--color-by"),
                 QStringLiteral("FeatureIds"), QStringLiteral("--preset"), QStringLiteral("Viridis"),
                 QStringLiteral("--screenshot"), shot, QStringLiteral("--size"), QStringLiteral("400x300")});
  ASSERT_EQ(coloured.exitCode, 0) << coloured.errors.toStdString();
  EXPECT_TRUE(matchesBaseline(QImage(shot), QStringLiteral("unstructured_featureids_viridis_400x300")));

  const ViewerRun wireframe =
      runViewer({mesh, QStringLiteral("--view"), QStringLiteral("wireframe"), QStringLiteral("--color-by"),
                 QStringLiteral("Height"), QStringLiteral("--screenshot"), shot, QStringLiteral("--size"),
                 QStringLiteral("400x300")});
  ASSERT_EQ(wireframe.exitCode, 0) << wireframe.errors.toStdString();
  EXPECT_TRUE(matchesBaseline(QImage(shot), QStringLiteral("unstructured_height_wireframe_400x300")));

  // Arrays of a .kestrix file can be named by their data path, as --list prints it.
  const QString sample = QStringLiteral(ZR_TEST_BINARY_DIR "/data/sample.kestrix");
  const ViewerRun byPath = runViewer(
      {sample, QStringLiteral("--color-by"), QStringLiteral("Sample/Grains/Cell Data/EulerAngles:2"),
       QStringLiteral("--screenshot"), shot, QStringLiteral("--size"), QStringLiteral("320x240")});
  EXPECT_EQ(byPath.exitCode, 0) << byPath.errors.toStdString();
  const ViewerRun wrongPath = runViewer({sample, QStringLiteral("--color-by"),
                                         QStringLiteral("Sample/Grains/Cell Data/EulerAngles:3"),
                                         QStringLiteral("--screenshot"), shot});
  EXPECT_EQ(wrongPath.exitCode, 1);
  EXPECT_TRUE(wrongPath.errors.contains(QStringLiteral("has 3 component(s)")))
      << wrongPath.errors.toStdString();

  // Unknown names are refused with the names that exist.
  const ViewerRun badView = runViewer(
      {mesh, QStringLiteral("--view"), QStringLiteral("cubes"), QStringLiteral("--screenshot"), shot});
  EXPECT_EQ(badView.exitCode, 2);
  EXPECT_TRUE(badView.errors.contains(
      QStringLiteral("the views are: glyph, outline, points, slice, surface, volume, wireframe")))
      << badView.errors.toStdString();
  const ViewerRun badPreset = runViewer(
      {mesh, QStringLiteral("--preset"), QStringLiteral("Nope"), QStringLiteral("--screenshot"), shot});
  EXPECT_EQ(badPreset.exitCode, 2);
  EXPECT_TRUE(badPreset.errors.contains(QStringLiteral("Viridis"))) << badPreset.errors.toStdString();
  const ViewerRun badArray = runViewer(
      {mesh, QStringLiteral("--color-by"), QStringLiteral("Nope"), QStringLiteral("--screenshot"), shot});
  EXPECT_EQ(badArray.exitCode, 1);
  EXPECT_TRUE(badArray.errors.contains(QStringLiteral("no array 'Nope'"))) << badArray.errors.toStdString();
  EXPECT_TRUE(badArray.errors.contains(QStringLiteral("Height"))) << badArray.errors.toStdString();
  const ViewerRun badComponent = runViewer(
      {mesh, QStringLiteral("--color-by"), QStringLiteral("Height:3"), QStringLiteral("--screenshot"), shot});
  EXPECT_EQ(badComponent.exitCode, 1);
  EXPECT_TRUE(badComponent.errors.contains(QStringLiteral("has 1 component(s)")))
      << badComponent.errors.toStdString();
}

TEST(ViewerScreenshot, VolumeAndGlyphViewsFromTheCommandLine)
{
  QTemporaryDir dir;
  const QString image = k_DataDir + QStringLiteral("/vtk/image.vti");
  const QString poly = k_DataDir + QStringLiteral("/vtk/poly.vtp");
  const QString volumeShot = dir.filePath(QStringLiteral("volume.png"));
  const QString volumeState = dir.filePath(QStringLiteral("volume.ksxstate"));
  const ViewerRun volume = runViewer(
      {image, QStringLiteral("--view"), QStringLiteral("volume"), QStringLiteral("--screenshot"), volumeShot,
       QStringLiteral("--size"), QStringLiteral("400x300"), QStringLiteral("--save-state"), volumeState});
  ASSERT_EQ(volume.exitCode, 0) << volume.errors.toStdString();
  EXPECT_TRUE(matchesBaseline(QImage(volumeShot), QStringLiteral("image_volume_400x300")));
  // The per-array colour and opacity maps come back from the state and are saved the same again.
  const QString again = dir.filePath(QStringLiteral("again.ksxstate"));
  const ViewerRun resaved =
      runViewer({QStringLiteral("--state"), volumeState, QStringLiteral("--save-state"), again});
  ASSERT_EQ(resaved.exitCode, 0) << resaved.errors.toStdString();
  QFile first(volumeState);
  QFile second(again);
  ASSERT_TRUE(first.open(QIODevice::ReadOnly) && second.open(QIODevice::ReadOnly));
  const QByteArray saved = first.readAll();
  EXPECT_TRUE(saved.contains("array_scalar_opacity_fct"));
  EXPECT_EQ(saved.toStdString(), second.readAll().toStdString());

  const QString glyphShot = dir.filePath(QStringLiteral("glyphs.png"));
  const ViewerRun glyphs =
      runViewer({poly, QStringLiteral("--glyph"), QStringLiteral("sphere"), QStringLiteral("--screenshot"),
                 glyphShot, QStringLiteral("--size"), QStringLiteral("400x300")});
  ASSERT_EQ(glyphs.exitCode, 0) << glyphs.errors.toStdString();
  EXPECT_TRUE(matchesBaseline(QImage(glyphShot), QStringLiteral("poly_glyph_spheres_400x300")));

  const QString shot = dir.filePath(QStringLiteral("bad.png"));
  const ViewerRun notAnImage = runViewer(
      {poly, QStringLiteral("--view"), QStringLiteral("volume"), QStringLiteral("--screenshot"), shot});
  EXPECT_EQ(notAnImage.exitCode, 1);
  EXPECT_TRUE(notAnImage.errors.contains(QStringLiteral("--view volume draws images")))
      << notAnImage.errors.toStdString();
  const ViewerRun badGlyph = runViewer(
      {poly, QStringLiteral("--glyph"), QStringLiteral("teapot"), QStringLiteral("--screenshot"), shot});
  EXPECT_EQ(badGlyph.exitCode, 2);
  EXPECT_TRUE(badGlyph.errors.contains(QStringLiteral("the glyphs are: arrow, sphere, cube")))
      << badGlyph.errors.toStdString();
  const ViewerRun glyphOfSurface =
      runViewer({poly, QStringLiteral("--view"), QStringLiteral("surface"), QStringLiteral("--glyph"),
                 QStringLiteral("cube"), QStringLiteral("--screenshot"), shot});
  EXPECT_EQ(glyphOfSurface.exitCode, 2);
  EXPECT_TRUE(glyphOfSurface.errors.contains(QStringLiteral("--glyph draws glyph views")))
      << glyphOfSurface.errors.toStdString();
}

namespace
{
// A 32^3 image whose "Distance" from the centre runs from 0 to about 27.
QString WriteDistanceVolume(const QString& path)
{
  constexpr int k_Side = 32;
  vtkNew<vtkImageData> image;
  image->SetDimensions(k_Side, k_Side, k_Side);
  vtkNew<vtkFloatArray> distance;
  distance->SetName("Distance");
  const double centre = (k_Side - 1) / 2.0;
  for (int z = 0; z < k_Side; ++z)
  {
    for (int y = 0; y < k_Side; ++y)
    {
      for (int x = 0; x < k_Side; ++x)
      {
        const double dx = x - centre;
        const double dy = y - centre;
        const double dz = z - centre;
        distance->InsertNextValue(static_cast<float>(std::sqrt(dx * dx + dy * dy + dz * dz)));
      }
    }
  }
  image->GetPointData()->AddArray(distance);
  vtkNew<vtkXMLImageDataWriter> writer;
  writer->SetInputData(image);
  writer->SetFileName(path.toLocal8Bit().constData());
  writer->Write();
  return path;
}
} // namespace

TEST(ViewerScreenshot, OpacityCurveOfTheVolumeFromTheCommandLine)
{
  QTemporaryDir dir;
  const QString volume = WriteDistanceVolume(dir.filePath(QStringLiteral("distance.vti")));
  const QString ramp = dir.filePath(QStringLiteral("ramp.png"));
  const QString shell = dir.filePath(QStringLiteral("shell.png"));
  const ViewerRun plain =
      runViewer({volume, QStringLiteral("--view"), QStringLiteral("volume"), QStringLiteral("--screenshot"),
                 ramp, QStringLiteral("--size"), QStringLiteral("400x300")});
  ASSERT_EQ(plain.exitCode, 0) << plain.errors.toStdString();
  // Only a shell at distance 8 to 11 is opaque: a ball instead of a cube with bright corners.
  const ViewerRun curved =
      runViewer({volume, QStringLiteral("--opacity-curve"), QStringLiteral("0:0,7:0,9:0.9,11:0.9,12:0,28:0"),
                 QStringLiteral("--screenshot"), shell, QStringLiteral("--size"), QStringLiteral("400x300")});
  ASSERT_EQ(curved.exitCode, 0) << curved.errors.toStdString();
  EXPECT_TRUE(matchesBaseline(QImage(shell), QStringLiteral("distance_volume_shell_400x300")));
  // The curve changes the picture: many pixels differ from the default ramp's.
  const QImage shellImage = QImage(shell).convertToFormat(QImage::Format_RGB32);
  const QImage rampImage = QImage(ramp).convertToFormat(QImage::Format_RGB32);
  ASSERT_EQ(shellImage.size(), rampImage.size());
  int changed = 0;
  for (int y = 0; y < shellImage.height(); ++y)
  {
    for (int x = 0; x < shellImage.width(); ++x)
    {
      const QRgb p = shellImage.pixel(x, y);
      const QRgb q = rampImage.pixel(x, y);
      changed +=
          std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) + std::abs(qBlue(p) - qBlue(q)) > 60;
    }
  }
  EXPECT_GT(changed, 3000);

  // Malformed curves are refused before anything is drawn.
  const QString bad = dir.filePath(QStringLiteral("bad.png"));
  for (const char* curve : {"5:0.5", "0:0,abc", "0:0,10:1.5", "0:0,0:1", "0;0,10;1", ""})
  {
    const ViewerRun refused = runViewer({volume, QStringLiteral("--opacity-curve"),
                                         QString::fromLatin1(curve), QStringLiteral("--screenshot"), bad});
    EXPECT_EQ(refused.exitCode, 2) << curve;
    EXPECT_TRUE(refused.errors.contains(QStringLiteral("--opacity-curve takes VALUE:OPACITY pairs")))
        << curve << ": " << refused.errors.toStdString();
  }
  EXPECT_FALSE(QFileInfo::exists(bad));
  const ViewerRun otherView = runViewer({volume, QStringLiteral("--view"), QStringLiteral("surface"),
                                         QStringLiteral("--opacity-curve"), QStringLiteral("0:0,28:1"),
                                         QStringLiteral("--screenshot"), bad});
  EXPECT_EQ(otherView.exitCode, 2);
  EXPECT_TRUE(otherView.errors.contains(QStringLiteral("--opacity-curve shapes volume views")))
      << otherView.errors.toStdString();
}

TEST(ViewerScreenshot, GlyphOrientationArrayFromTheCommandLine)
{
  QTemporaryDir dir;
  const QString poly = k_DataDir + QStringLiteral("/vtk/poly.vtp");
  const QString state = dir.filePath(QStringLiteral("turned.ksxstate"));
  const ViewerRun turned =
      runViewer({poly, QStringLiteral("--glyph"), QStringLiteral("arrow"), QStringLiteral("--glyph-orient"),
                 QStringLiteral("Normals"), QStringLiteral("--save-state"), state});
  ASSERT_EQ(turned.exitCode, 0) << turned.errors.toStdString();
  QFile saved(state);
  ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
  const QByteArray text = saved.readAll();
  EXPECT_TRUE(text.contains("\"glyph_orientation_array\": \"Normals\"")) << text.toStdString();

  // Alone it asks for the glyph view, and the arrays the data has are named when it lacks one.
  const ViewerRun missing =
      runViewer({poly, QStringLiteral("--glyph-orient"), QStringLiteral("Velocity"),
                 QStringLiteral("--save-state"), dir.filePath(QStringLiteral("missing.ksxstate"))});
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_TRUE(missing.errors.contains(QStringLiteral("no three-component array 'Velocity'")))
      << missing.errors.toStdString();
  EXPECT_TRUE(missing.errors.contains(QStringLiteral("the arrays there are: Normals")))
      << missing.errors.toStdString();
  const ViewerRun ofSurface =
      runViewer({poly, QStringLiteral("--view"), QStringLiteral("surface"), QStringLiteral("--glyph-orient"),
                 QStringLiteral("Normals"), QStringLiteral("--save-state"), state});
  EXPECT_EQ(ofSurface.exitCode, 2);
  EXPECT_TRUE(ofSurface.errors.contains(QStringLiteral("--glyph-orient turns glyph views")))
      << ofSurface.errors.toStdString();
}

TEST(ViewerScreenshot, GlyphsOnAnImageAreSizedByItsSpacingUnlessAScaleIsGiven)
{
  QTemporaryDir dir;
  // Cells of 1 x 1 x 2: spheres of diameter 1 at the cell centres about touch along x and y.
  const QString image = k_DataDir + QStringLiteral("/vtk/slice_cells_coarse.vti");
  const QString shot = dir.filePath(QStringLiteral("image-glyphs.png"));
  const QString state = dir.filePath(QStringLiteral("image-glyphs.ksxstate"));
  const ViewerRun glyphs =
      runViewer({image, QStringLiteral("--glyph"), QStringLiteral("sphere"), QStringLiteral("--color-by"),
                 QStringLiteral("Phase"), QStringLiteral("--screenshot"), shot, QStringLiteral("--size"),
                 QStringLiteral("400x300"), QStringLiteral("--save-state"), state});
  ASSERT_EQ(glyphs.exitCode, 0) << glyphs.errors.toStdString();
  EXPECT_TRUE(matchesBaseline(QImage(shot), QStringLiteral("image_glyph_spheres_400x300")));
  QFile first(state);
  ASSERT_TRUE(first.open(QIODevice::ReadOnly));
  const QByteArray derived = first.readAll();
  EXPECT_TRUE(derived.contains("\"glyph_scale_factor\": 1.0")) << derived.toStdString();
  EXPECT_TRUE(derived.contains("\"glyph_scale_factor_from_data\": true")) << derived.toStdString();
  // Loaded and saved again, the state is the same.
  const QString again = dir.filePath(QStringLiteral("again.ksxstate"));
  const ViewerRun resaved =
      runViewer({QStringLiteral("--state"), state, QStringLiteral("--save-state"), again});
  ASSERT_EQ(resaved.exitCode, 0) << resaved.errors.toStdString();
  QFile second(again);
  ASSERT_TRUE(second.open(QIODevice::ReadOnly));
  EXPECT_EQ(derived.toStdString(), second.readAll().toStdString());

  // A scale given for a script is kept as chosen, through its state too.
  const QString chosenState = dir.filePath(QStringLiteral("chosen.ksxstate"));
  const ViewerRun chosen =
      runViewer({image, QStringLiteral("--glyph"), QStringLiteral("sphere"), QStringLiteral("--glyph-scale"),
                 QStringLiteral("0.25"), QStringLiteral("--save-state"), chosenState});
  ASSERT_EQ(chosen.exitCode, 0) << chosen.errors.toStdString();
  const QString chosenAgain = dir.filePath(QStringLiteral("chosen-again.ksxstate"));
  const ViewerRun chosenResaved =
      runViewer({QStringLiteral("--state"), chosenState, QStringLiteral("--save-state"), chosenAgain});
  ASSERT_EQ(chosenResaved.exitCode, 0) << chosenResaved.errors.toStdString();
  QFile chosenFirst(chosenState);
  QFile chosenSecond(chosenAgain);
  ASSERT_TRUE(chosenFirst.open(QIODevice::ReadOnly) && chosenSecond.open(QIODevice::ReadOnly));
  const QByteArray chosenText = chosenFirst.readAll();
  EXPECT_TRUE(chosenText.contains("\"glyph_scale_factor\": 0.25")) << chosenText.toStdString();
  EXPECT_TRUE(chosenText.contains("\"glyph_scale_factor_from_data\": false")) << chosenText.toStdString();
  EXPECT_EQ(chosenText.toStdString(), chosenSecond.readAll().toStdString());

  for (const QString& bad : {QStringLiteral("0"), QStringLiteral("-1"), QStringLiteral("big")})
  {
    const ViewerRun refused =
        runViewer({image, QStringLiteral("--glyph-scale"), bad, QStringLiteral("--save-state"),
                   dir.filePath(QStringLiteral("bad.ksxstate"))});
    EXPECT_EQ(refused.exitCode, 2) << bad.toStdString();
    EXPECT_TRUE(refused.errors.contains(QStringLiteral("--glyph-scale takes a positive number")))
        << refused.errors.toStdString();
  }
  const ViewerRun ofSurface =
      runViewer({image, QStringLiteral("--view"), QStringLiteral("surface"), QStringLiteral("--glyph-scale"),
                 QStringLiteral("2"), QStringLiteral("--save-state"), state});
  EXPECT_EQ(ofSurface.exitCode, 2);
  EXPECT_TRUE(ofSurface.errors.contains(QStringLiteral("--glyph-scale sizes glyph views")))
      << ofSurface.errors.toStdString();
}

TEST(ViewerState, ASavedStateRendersTheSamePictureAndMovesWithItsData)
{
  QTemporaryDir dir;
  const QString original = dir.filePath(QStringLiteral("original"));
  ASSERT_TRUE(QDir().mkpath(original));
  const QString mesh = original + QStringLiteral("/unstructured.vtu");
  ASSERT_TRUE(QFile::copy(k_DataDir + QStringLiteral("/vtk/unstructured.vtu"), mesh));
  const QString state = original + QStringLiteral("/mesh.ksxstate");
  const QString before = dir.filePath(QStringLiteral("before.png"));
  const ViewerRun saved = runViewer({mesh, QStringLiteral("--color-by"), QStringLiteral("FeatureIds"),
                                     QStringLiteral("--preset"), QStringLiteral("Viridis"),
                                     QStringLiteral("--save-state"), state, QStringLiteral("--screenshot"),
                                     before, QStringLiteral("--size"), QStringLiteral("400x300")});
  ASSERT_EQ(saved.exitCode, 0) << saved.errors.toStdString();
  ASSERT_TRUE(QFileInfo::exists(state));

  // The folder moves: the state finds its data beside it.
  const QString moved = dir.filePath(QStringLiteral("moved"));
  ASSERT_TRUE(QDir().rename(original, moved));
  const QString after = dir.filePath(QStringLiteral("after.png"));
  const ViewerRun loaded =
      runViewer({QStringLiteral("--state"), moved + QStringLiteral("/mesh.ksxstate"),
                 QStringLiteral("--screenshot"), after, QStringLiteral("--size"), QStringLiteral("400x300")});
  ASSERT_EQ(loaded.exitCode, 0) << loaded.errors.toStdString();
  EXPECT_EQ(QImage(after).size(), QImage(before).size());
  EXPECT_LT(ZRTest::ImageError(QImage(after), QImage(before)), k_Tolerance);

  // Saved again from the loaded state, the record is the same but for the paths that moved.
  const QString again = moved + QStringLiteral("/again.ksxstate");
  const ViewerRun resaved = runViewer({QStringLiteral("--state"), moved + QStringLiteral("/mesh.ksxstate"),
                                       QStringLiteral("--save-state"), again});
  ASSERT_EQ(resaved.exitCode, 0) << resaved.errors.toStdString();
  QFile first(moved + QStringLiteral("/mesh.ksxstate"));
  QFile second(again);
  ASSERT_TRUE(first.open(QIODevice::ReadOnly) && second.open(QIODevice::ReadOnly));
  EXPECT_EQ(QString::fromUtf8(first.readAll()).replace(original, moved).toStdString(),
            QString::fromUtf8(second.readAll()).toStdString());
}

TEST(ViewerState, BrokenStateFilesGiveTheirMessageAndAnErrorCode)
{
  QTemporaryDir dir;
  const QString shot = dir.filePath(QStringLiteral("shot.png"));
  const auto write = [&dir](const QString& name, const QByteArray& text)
  {
    QFile file(dir.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    return file.fileName();
  };
  const ViewerRun truncated =
      runViewer({QStringLiteral("--state"), write(QStringLiteral("cut.ksxstate"), "{\"split"),
                 QStringLiteral("--screenshot"), shot});
  EXPECT_EQ(truncated.exitCode, 1);
  EXPECT_TRUE(truncated.errors.contains(QStringLiteral("Error opening visualization state from state file")))
      << truncated.errors.toStdString();

  const ViewerRun noTree = runViewer({QStringLiteral("--state"),
                                      write(QStringLiteral("notree.ksxstate"), "{\"split_view_state\": {}}"),
                                      QStringLiteral("--screenshot"), shot});
  EXPECT_EQ(noTree.exitCode, 1);
  EXPECT_TRUE(noTree.errors.contains(QStringLiteral("missing tree_view_state key")))
      << noTree.errors.toStdString();

  const ViewerRun missing =
      runViewer({QStringLiteral("--state"), dir.filePath(QStringLiteral("none.ksxstate")),
                 QStringLiteral("--screenshot"), shot});
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_TRUE(missing.errors.contains(QStringLiteral("none.ksxstate"))) << missing.errors.toStdString();
}

TEST(ViewerState, TheSampleStatesLoadAndRenderTheirPictures)
{
  QTemporaryDir dir;
  for (const QString name : {QStringLiteral("grains-and-boundaries"), QStringLiteral("thermal-and-holder")})
  {
    const QString state = QStringLiteral(ZR_TEST_BINARY_DIR "/data/") + name + QStringLiteral(".ksxstate");
    const QString shot = dir.filePath(name + QStringLiteral(".png"));
    const ViewerRun run = runViewer({QStringLiteral("--state"), state, QStringLiteral("--screenshot"), shot,
                                     QStringLiteral("--size"), QStringLiteral("800x300")});
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    EXPECT_TRUE(matchesBaseline(QImage(shot), QStringLiteral("sample_state_") + name)) << name.toStdString();
  }
}

TEST(ViewerSpreadsheets, SpreadsheetOptionOpensArraysAndTheStateKeepsThem)
{
  QTemporaryDir dir;
  const QString sample = QStringLiteral(ZR_TEST_BINARY_DIR "/data/sample.kestrix");
  const QString array = QStringLiteral("Sample/Grains/Cell Data/FeatureIds");
  const QString state = dir.filePath(QStringLiteral("sheets.ksxstate"));
  const ViewerRun saved =
      runViewer({sample, QStringLiteral("--spreadsheet"), array, QStringLiteral("--save-state"), state});
  ASSERT_EQ(saved.exitCode, 0) << saved.errors.toStdString();
  QFile file(state);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QString text = QString::fromUtf8(file.readAll());
  EXPECT_TRUE(text.contains(QStringLiteral("\"spreadsheet_state\""))) << text.toStdString();
  EXPECT_TRUE(text.contains(QStringLiteral("\"spreadsheet_data_arrays\": [\n")));
  EXPECT_TRUE(text.contains(QStringLiteral("\"") + array + QStringLiteral("\"")));

  // Saved again from the loaded state: the same record.
  const QString again = dir.filePath(QStringLiteral("again.ksxstate"));
  const ViewerRun resaved =
      runViewer({QStringLiteral("--state"), state, QStringLiteral("--save-state"), again});
  ASSERT_EQ(resaved.exitCode, 0) << resaved.errors.toStdString();
  QFile second(again);
  ASSERT_TRUE(second.open(QIODevice::ReadOnly));
  EXPECT_EQ(QString::fromUtf8(second.readAll()).toStdString(), text.toStdString());

  const ViewerRun missing =
      runViewer({sample, QStringLiteral("--spreadsheet"), QStringLiteral("No/Such/Array"),
                 QStringLiteral("--save-state"), dir.filePath(QStringLiteral("x.ksxstate"))});
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_TRUE(missing.errors.contains(QStringLiteral("no array at the data path 'No/Such/Array'")))
      << missing.errors.toStdString();
  const ViewerRun noKestrix =
      runViewer({k_DataDir + QStringLiteral("/vtk/image.vti"), QStringLiteral("--spreadsheet"), array,
                 QStringLiteral("--save-state"), dir.filePath(QStringLiteral("y.ksxstate"))});
  EXPECT_EQ(noKestrix.exitCode, 1);
  EXPECT_TRUE(noKestrix.errors.contains(QStringLiteral("--spreadsheet needs a .kestrix file")))
      << noKestrix.errors.toStdString();
}

TEST(ViewerScreenshot, APhotographIsShownInItsOwnColoursWithoutAnyColouringOption)
{
  // A PNG that PIL wrote: red grows from left to right, green from top to bottom, blue is 128.
  QTemporaryDir dir;
  const QString shot = dir.filePath(QStringLiteral("photo.png"));
  const ViewerRun run =
      runViewer({k_DataDir + QStringLiteral("/images/gradient_100x50.png"), QStringLiteral("--view"),
                 QStringLiteral("slice"), QStringLiteral("--screenshot"), shot, QStringLiteral("--size"),
                 QStringLiteral("400x300")});
  ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
  const QImage image(shot);
  ASSERT_EQ(image.size(), QSize(400, 300));
  const QColor centre = image.pixelColor(200, 150);
  const QColor left = image.pixelColor(150, 150);
  const QColor right = image.pixelColor(250, 150);
  EXPECT_NEAR(centre.blue(), 128, 12);
  EXPECT_NEAR(centre.red(), 128, 25);
  EXPECT_NEAR(centre.green(), 128, 25);
  EXPECT_GT(right.red(), left.red() + 30) << "the colours are the picture's, not a colour map of them";
  EXPECT_NEAR(left.blue(), 128, 12);
  EXPECT_NEAR(right.blue(), 128, 12);
}

TEST(ViewerScreenshot, ThePictureStandsTheSameWayReadFromPngOrTiff)
{
  // PIL wrote one picture twice: the two frames must match, not be mirrors of each other.
  QTemporaryDir dir;
  QImage frames[2];
  const QString suffixes[2] = {QStringLiteral("png"), QStringLiteral("tif")};
  for (int i = 0; i < 2; ++i)
  {
    const QString shot = dir.filePath(QStringLiteral("gradient-%1.png").arg(suffixes[i]));
    const ViewerRun run =
        runViewer({k_DataDir + QStringLiteral("/images/gradient_100x50.") + suffixes[i],
                   QStringLiteral("--view"), QStringLiteral("slice"), QStringLiteral("--screenshot"), shot,
                   QStringLiteral("--size"), QStringLiteral("400x300")});
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    frames[i] = QImage(shot);
  }
  // Green grows from the top of the picture to its bottom.
  EXPECT_LT(frames[0].pixelColor(200, 120).green() + 40, frames[0].pixelColor(200, 180).green());
  for (const QPoint at : {QPoint(200, 120), QPoint(200, 180), QPoint(160, 150), QPoint(240, 150)})
  {
    EXPECT_NEAR(frames[0].pixelColor(at).green(), frames[1].pixelColor(at).green(), 4)
        << at.x() << ", " << at.y();
    EXPECT_NEAR(frames[0].pixelColor(at).red(), frames[1].pixelColor(at).red(), 4)
        << at.x() << ", " << at.y();
  }
}
