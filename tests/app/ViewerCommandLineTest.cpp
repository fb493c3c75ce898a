// The viewer's scriptable modes, run as a user's script runs them.
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{
struct RunResult
{
  int exitCode = -1;
  QString out;
  QString err;
};

// Runs the viewer as a script would; without a display when asked, as on a headless machine.
RunResult runViewer(const QStringList& arguments, bool withDisplay = true)
{
  QProcess process;
  if (!withDisplay)
  {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
    {
      environment.remove(QString::fromLatin1(name));
    }
    process.setProcessEnvironment(environment);
  }
  process.start(QStringLiteral(ZR_TEST_BINARY_DIR "/bin/kestrix-viewer"), arguments);
  process.waitForFinished(120000);
  return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
          QString::fromUtf8(process.readAllStandardError())};
}

QString fixture(const QString& relativePath)
{
  return QStringLiteral(ZR_TEST_DATA_DIR "/") + relativePath;
}

const QString k_Sample = QStringLiteral(ZR_TEST_BINARY_DIR "/data/sample.kestrix");
} // namespace

TEST(ViewerCommandLine, ListsTheSampleTree)
{
  const RunResult result = runViewer({"--list", k_Sample});
  ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
  const QStringList lines = result.out.split('\n', Qt::SkipEmptyParts);
  ASSERT_GT(lines.size(), 8);
  EXPECT_TRUE(lines.front().startsWith(QStringLiteral("sample.kestrix")));
  EXPECT_TRUE(lines.at(1).startsWith(QStringLiteral("  Grains [vtkImageData] points: 274625 cells: 262144")))
      << lines.at(1).toStdString();
  EXPECT_TRUE(result.out.contains(QStringLiteral("    cell FeatureIds components: 1 range: [1, ")));
  EXPECT_TRUE(result.out.contains(QStringLiteral("[vtkRectilinearGrid]")));
  EXPECT_TRUE(result.out.contains(QStringLiteral("[vtkUnstructuredGrid]")));
  // Booleans, neighbour lists and strings never reach VTK.
  EXPECT_FALSE(result.out.contains(QStringLiteral(" Mask ")));
}

TEST(ViewerCommandLine, ListsTheDataPathsArraysAreAddressedBy)
{
  const RunResult result = runViewer({"--list", k_Sample}, false);
  ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
  EXPECT_TRUE(result.out.contains(QStringLiteral(" path: Sample/Grains\n"))) << result.out.toStdString();
  EXPECT_TRUE(result.out.contains(
      QRegularExpression(QStringLiteral("\n    cell FeatureIds components: 1 range: \\[1, \\d+\\] path: "
                                        "Sample/Grains/Cell Data/FeatureIds\n"))))
      << result.out.toStdString();
  // Files without a data structure have no data paths to print.
  const RunResult vtu = runViewer({"--list", fixture("vtk/unstructured.vtu")}, false);
  EXPECT_FALSE(vtu.out.contains(QStringLiteral("path:"))) << vtu.out.toStdString();
}

TEST(ViewerCommandLine, HelpListsEveryModeWithoutADisplay)
{
  for (const QStringList& arguments :
       {QStringList{"--help"}, QStringList{"-h"}, QStringList{"--list", "--help"}})
  {
    const RunResult result = runViewer(arguments, false);
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    for (const char* option : {"--list", "--convert", "--geometry", "--screenshot", "--size", "--theme",
                               "--glyph", "--glyph-orient", "--glyph-scale", "--opacity-curve", "--help"})
    {
      EXPECT_TRUE(result.out.contains(QString::fromLatin1(option))) << option;
    }
    EXPECT_TRUE(result.out.contains(
        QStringLiteral("kestrix-viewer --convert grains.kestrix grains.vti --geometry Grains")));
  }
  // A window mode without a display says so instead of aborting.
  const RunResult window = runViewer({k_Sample, "--screenshot", "out.png"}, false);
  EXPECT_EQ(window.exitCode, 2);
  EXPECT_TRUE(window.err.contains(QStringLiteral("no display"))) << window.err.toStdString();
  // A wrong command line of the scriptable modes prints the usage to standard error.
  const RunResult wrong = runViewer({"--convert", k_Sample}, false);
  EXPECT_EQ(wrong.exitCode, 2);
  EXPECT_TRUE(wrong.err.startsWith(QStringLiteral("Usage: kestrix-viewer")));
}

TEST(ViewerCommandLine, ListsEveryDatasetKindAndFailsOnBadFiles)
{
  QTemporaryDir dir;
  const QString broken = dir.filePath("broken.kestrix");
  {
    QFile file(broken);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("\x89HDF\r\n\x1a\n truncated");
  }
  const RunResult result =
      runViewer({"--list", fixture("vtk/unstructured.vtu"), fixture("vtk/legacy_binary.vtk"),
                 fixture("vtk/tool_ascii.stl"), fixture("images/gradient_100x50.png"), broken,
                 dir.filePath("missing.vti")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(result.out.contains(QStringLiteral("[vtkUnstructuredGrid] points: 9 cells: 2")));
  EXPECT_TRUE(result.out.contains(QStringLiteral("tool_ascii.stl")));
  EXPECT_TRUE(result.out.contains(QStringLiteral("cells: 5000")));
  EXPECT_TRUE(result.err.contains(QStringLiteral("cannot read '%1'").arg(broken)));
  EXPECT_TRUE(result.err.contains(QStringLiteral("missing.vti' does not exist.")))
      << result.err.toStdString();
}

TEST(ViewerCommandLine, ConvertsByOutputExtension)
{
  QTemporaryDir dir;
  const QString vtp = dir.filePath("tool.vtp");
  RunResult result = runViewer({"--convert", fixture("vtk/tool_binary.stl"), vtp});
  ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
  result = runViewer({"--list", vtp});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_TRUE(result.out.contains(QStringLiteral("[vtkPolyData] points: 4 cells: 4")));

  // A .kestrix file with several geometries needs one named.
  const QString vtu = dir.filePath("grid.vtu");
  result = runViewer({"--convert", k_Sample, vtu});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_TRUE(result.err.contains(QStringLiteral("--geometry")));
  result = runViewer({"--convert", k_Sample, vtu, "--geometry", "Grains"});
  ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
  result = runViewer({"--list", vtu});
  EXPECT_TRUE(result.out.contains(QStringLiteral("[vtkUnstructuredGrid] points: 274625 cells: 262144")));
  EXPECT_TRUE(result.out.contains(QStringLiteral("cell EulerAngles components: 3")));

  result = runViewer({"--convert", fixture("vtk/image.vti"), dir.filePath("out.xyz")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(result.err.contains(QStringLiteral("no writer for files ending in '.xyz'")));
}

TEST(ViewerCommandLine, EachUnreadableFileIsNamedOnceWithItsReason)
{
  QTemporaryDir dir;
  const QString truncated = dir.filePath("truncated.vtu");
  const QString fakePng = dir.filePath("fake.png");
  {
    QFile source(fixture("vtk/unstructured.vtu"));
    ASSERT_TRUE(source.open(QIODevice::ReadOnly));
    QFile file(truncated);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(source.readAll().left(300));
    QFile fake(fakePng);
    ASSERT_TRUE(fake.open(QIODevice::WriteOnly));
    fake.write("this is no image at all");
  }
  const RunResult result = runViewer({"--list", truncated, fakePng, fixture("vtk/poly.vtp")}, false);
  EXPECT_EQ(result.exitCode, 1);
  const QStringList lines = result.err.split('\n', Qt::SkipEmptyParts);
  for (const QString& file : {truncated, fakePng})
  {
    QStringList naming;
    for (const QString& line : lines)
    {
      if (line.contains(QFileInfo(file).fileName()))
      {
        naming << line;
      }
    }
    ASSERT_EQ(naming.size(), 1) << result.err.toStdString();
    EXPECT_TRUE(naming.front().startsWith(QStringLiteral("kestrix-viewer: cannot read '%1': ").arg(file)));
    EXPECT_FALSE(naming.front().endsWith(QStringLiteral("the file holds no readable dataset")))
        << naming.front().toStdString();
  }
  // VTK's own dumps stay out of a quiet run; the readable file is listed.
  EXPECT_FALSE(result.err.contains(QStringLiteral("vtkXMLUnstructuredGridReader")))
      << result.err.toStdString();
  EXPECT_TRUE(result.out.contains(QStringLiteral("[vtkPolyData]")));
}

TEST(ViewerCommandLine, ExportsArraysByDataPathAsATableWithoutADisplay)
{
  QTemporaryDir dir;
  const QString out = dir.filePath("grains.csv");
  const RunResult result = runViewer(
      {k_Sample, "--table", "Sample/Grains/Cell Data/FeatureIds,Sample/Grains/Cell Data/EulerAngles",
       "--export-table", out, "--delimiter", "tab", "--notation", "fixed", "--precision", "2"},
      false);
  ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
  QFile file(out);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QString text = QString::fromUtf8(file.readAll());
  ASSERT_TRUE(text.endsWith('\n'));
  const QStringList lines = text.left(text.size() - 1).split('\n');
  ASSERT_EQ(lines.size(), 2 + 262144);
  EXPECT_EQ(lines.at(0), "sep=\t");
  EXPECT_EQ(lines.at(1), "FeatureIds\tEulerAngles_comp0\tEulerAngles_comp1\tEulerAngles_comp2");
  const QRegularExpression row(
      QStringLiteral("^\\d+\\.00\\t-?\\d+\\.\\d\\d\\t-?\\d+\\.\\d\\d\\t-?\\d+\\.\\d\\d$"));
  for (int i = 2; i < lines.size(); i += 4099)
  {
    EXPECT_TRUE(row.match(lines.at(i)).hasMatch()) << lines.at(i).toStdString();
  }

  // Strings and neighbour lists, with the comma export's delimiter.
  const QString lists = dir.filePath("lists.csv");
  const RunResult mixed = runViewer({k_Sample, "--table",
                                     "Sample/Ensemble Data/Phase Names,Sample/Grains/Grain Data/NeighborList",
                                     "--export-table", lists},
                                    false);
  ASSERT_EQ(mixed.exitCode, 0) << mixed.err.toStdString();
  QFile listFile(lists);
  ASSERT_TRUE(listFile.open(QIODevice::ReadOnly));
  const QStringList listLines = QString::fromUtf8(listFile.readAll()).split('\n');
  EXPECT_EQ(listLines.at(0), "sep=, ");
  EXPECT_TRUE(listLines.at(1).startsWith("Phase Names, NeighborList_elem0, NeighborList_elem1"))
      << listLines.at(1).toStdString();
}

TEST(ViewerCommandLine, TableExportNamesWhatExistsForAMissingPath)
{
  QTemporaryDir dir;
  const QString out = dir.filePath("none.csv");
  const RunResult result =
      runViewer({k_Sample, "--table", "Sample/Grains/Cell Data/NoSuchArray", "--export-table", out}, false);
  EXPECT_NE(result.exitCode, 0);
  EXPECT_TRUE(result.err.contains("no array at 'Sample/Grains/Cell Data/NoSuchArray'"))
      << result.err.toStdString();
  EXPECT_TRUE(result.err.contains("\n  Sample/Grains/Cell Data/FeatureIds\n")) << result.err.toStdString();
  EXPECT_FALSE(QFileInfo::exists(out));

  const RunResult badDelimiter = runViewer(
      {k_Sample, "--table", "Sample/Grains/Cell Data/FeatureIds", "--export-table", out, "--delimiter", ";"},
      false);
  EXPECT_EQ(badDelimiter.exitCode, 2);
  EXPECT_TRUE(badDelimiter.err.contains("--delimiter")) << badDelimiter.err.toStdString();
  const RunResult help = runViewer({"--help"}, false);
  EXPECT_TRUE(help.out.contains("--export-table OUT.csv"));
}
