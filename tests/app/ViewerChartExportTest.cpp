// The viewer's chart export, run as a script runs it, without a display.
#include <QFile>
#include <QImageReader>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QTextStream>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace
{
struct RunResult
{
  int exitCode = -1;
  QString err;
};

RunResult runViewer(const QStringList& arguments)
{
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
  {
    environment.remove(QString::fromLatin1(name));
  }
  process.setProcessEnvironment(environment);
  process.start(QStringLiteral(ZR_TEST_BINARY_DIR "/bin/kestrix-viewer"), arguments);
  process.waitForFinished(120000);
  return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
          QString::fromUtf8(process.readAllStandardError())};
}

const QString k_Sample = QStringLiteral(ZR_TEST_BINARY_DIR "/data/sample.kestrix");
const QString k_FeatureIds = QStringLiteral("Sample/Grains/Cell Data/FeatureIds");
const QString k_Euler = QStringLiteral("Sample/Grains/Cell Data/EulerAngles");

QStringList ReadLines(const QString& path)
{
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
  {
    return {};
  }
  QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
  if (!lines.isEmpty() && lines.back().isEmpty())
  {
    lines.pop_back();
  }
  return lines;
}

TEST(ViewerChartExport, HistogramCsvMatchesACountOfTheTableExport)
{
  QTemporaryDir dir;
  // The values themselves, written by the table export.
  const QString table = dir.filePath("ids.csv");
  ASSERT_EQ(runViewer({k_Sample, "--table", k_FeatureIds, "--export-table", table}).exitCode, 0);
  std::vector<double> values;
  const QStringList tableLines = ReadLines(table);
  for (int i = 2; i < tableLines.size(); ++i)
  {
    values.push_back(tableLines.at(i).toDouble());
  }
  ASSERT_EQ(values.size(), 262144u);

  const QString out = dir.filePath("hist.csv");
  const RunResult result = runViewer(
      {k_Sample, "--chart", "histogram", "--series", k_FeatureIds, "--bins", "7", "--export-chart", out});
  ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
  const QStringList lines = ReadLines(out);
  ASSERT_EQ(lines.size(), 8);
  EXPECT_EQ(lines.at(0), "X,FeatureIds");
  // Integers: the bins run from the minimum to the maximum + 1.
  const double min = *std::min_element(values.begin(), values.end());
  const double max = *std::max_element(values.begin(), values.end()) + 1.0;
  const float increment = static_cast<float>((max - min) / 7.0);
  std::vector<double> expected(7, 0.0);
  for (double value : values)
  {
    expected[static_cast<std::size_t>(std::floor((value - min) / increment))] += 1.0;
  }
  for (int bin = 0; bin < 7; ++bin)
  {
    const QStringList cells = lines.at(bin + 1).split(',');
    ASSERT_EQ(cells.size(), 2);
    EXPECT_EQ(cells[1].toDouble(), expected[static_cast<std::size_t>(bin)]) << "bin " << bin;
  }
  EXPECT_EQ(lines.at(1).split(',')[0].toDouble(), min);
}

TEST(ViewerChartExport, ScatterSvgAndLinePngWithoutADisplay)
{
  QTemporaryDir dir;
  const QString svg = dir.filePath("euler.svg");
  const RunResult scatter =
      runViewer({k_Sample, "--chart", "scatter", "--series", k_Euler + ":0," + k_Euler + ":1",
                 "--export-chart", svg, "--size", "500x400"});
  ASSERT_EQ(scatter.exitCode, 0) << scatter.err.toStdString();
  QFile file(svg);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  QXmlStreamReader xml(&file);
  QString width;
  while (!xml.atEnd())
  {
    xml.readNext();
    if (xml.isStartElement() && xml.name() == QLatin1String("svg"))
    {
      width = xml.attributes().value("width").toString();
    }
  }
  EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
  EXPECT_TRUE(width.startsWith("176")) << width.toStdString(); // 500 px at QSvgGenerator's 72 dpi, in mm

  const QString png = dir.filePath("phases.png");
  const RunResult line =
      runViewer({k_Sample, "--chart", "line", "--series", "Sample/Grains/Grain Data/Volumes", "--log-y",
                 "--export-chart", png, "--size", "640x360"});
  ASSERT_EQ(line.exitCode, 0) << line.err.toStdString();
  // Grain 0 has volume 0: left out of the logarithmic axis, and said.
  EXPECT_TRUE(line.err.contains("not above zero on a logarithmic axis")) << line.err.toStdString();
  QImageReader reader(png);
  EXPECT_EQ(reader.format(), "png");
  EXPECT_EQ(reader.size(), QSize(640, 360));
}

TEST(ViewerChartExport, EveryComponentBecomesASeries)
{
  QTemporaryDir dir;
  const QString out = dir.filePath("euler.csv");
  const RunResult result =
      runViewer({k_Sample, "--chart", "bar", "--series", k_Euler, "--export-chart", out});
  ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
  const QStringList lines = ReadLines(out);
  ASSERT_EQ(lines.size(), 1 + 262144);
  EXPECT_EQ(lines.at(0), "X,EulerAngles_0,EulerAngles_1,EulerAngles_2");
  EXPECT_EQ(lines.at(5).split(',').at(0), "4");
}

TEST(ViewerChartExport, BadInputIsAMessageAndANonZeroExit)
{
  QTemporaryDir dir;
  const QString out = dir.filePath("x.png");
  const RunResult missing =
      runViewer({k_Sample, "--chart", "line", "--series", "Sample/Nope", "--export-chart", out});
  EXPECT_EQ(missing.exitCode, 2);
  EXPECT_TRUE(missing.err.contains(
      "Data array at path 'Sample/Nope' does not exist and cannot be added to the chart."))
      << missing.err.toStdString();

  const RunResult lengths =
      runViewer({k_Sample, "--chart", "scatter", "--series",
                 k_FeatureIds + ",Sample/Grains/Grain Data/Volumes", "--export-chart", out});
  EXPECT_EQ(lengths.exitCode, 2);
  EXPECT_TRUE(lengths.err.contains("values and the rest of the chart data has 262144 values"))
      << lengths.err.toStdString();

  const RunResult type =
      runViewer({k_Sample, "--chart", "pie", "--series", k_FeatureIds, "--export-chart", out});
  EXPECT_EQ(type.exitCode, 2);
  EXPECT_TRUE(type.err.contains("--chart is histogram, scatter, line or bar, not 'pie'"))
      << type.err.toStdString();

  const RunResult component =
      runViewer({k_Sample, "--chart", "histogram", "--series", k_Euler + ":3", "--export-chart", out});
  EXPECT_EQ(component.exitCode, 2);
  EXPECT_TRUE(component.err.contains("has 3 components but was expecting 4 or more components"))
      << component.err.toStdString();

  const RunResult ending = runViewer(
      {k_Sample, "--chart", "line", "--series", k_FeatureIds, "--export-chart", dir.filePath("x.gif")});
  EXPECT_EQ(ending.exitCode, 2);

  const RunResult noFile = runViewer(
      {dir.filePath("none.kestrix"), "--chart", "line", "--series", k_FeatureIds, "--export-chart", out});
  EXPECT_EQ(noFile.exitCode, 1);
  EXPECT_TRUE(noFile.err.contains("no such file"));

  const RunResult unwritable =
      runViewer({k_Sample, "--chart", "line", "--series", "Sample/Grains/Grain Data/Volumes",
                 "--export-chart", dir.filePath("no/such/dir/x.png")});
  EXPECT_EQ(unwritable.exitCode, 1);
  EXPECT_FALSE(QFile::exists(out));
}
} // namespace
