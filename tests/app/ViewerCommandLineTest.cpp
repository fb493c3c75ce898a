// The viewer's scriptable modes, run as a user's script runs them.
#include <QFile>
#include <QProcess>
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

RunResult runViewer(const QStringList& arguments)
{
  QProcess process;
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
  EXPECT_TRUE(result.err.contains(QStringLiteral("missing.vti': no such file")));
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
