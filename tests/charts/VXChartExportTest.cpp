// Charts written as SVG, CSV and images, and pictures of the four chart types against baselines.
#include "charts/VXChart.h"
#include "charts/VXChartCsvWriter.h"
#include "charts/VXExportDialog.h"
#include "common/ZRImageBaseline.h"
#include "platform/plottaro/Plot.h"

#include <QFile>
#include <QImageReader>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextStream>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <cmath>

namespace
{
const QString k_BaselineDir = QStringLiteral(ZR_TEST_DATA_DIR "/../charts/baselines");

PlotProperties Style(int type, plottaro::Color color)
{
  PlotProperties props;
  props.type = type;
  props.color = color;
  props.lineThickness = 2;
  props.pointSize = 7;
  return props;
}

const plottaro::Color k_Red(std::uint8_t(220), std::uint8_t(40), std::uint8_t(30));
const plottaro::Color k_Blue(std::uint8_t(30), std::uint8_t(80), std::uint8_t(200));

// Two line series of 7 points each.
void AddTwoLines(VXChart& chart)
{
  std::vector<double> x;
  std::vector<double> a;
  std::vector<double> b;
  for (int i = 0; i < 7; ++i)
  {
    x.push_back(i * 1.5);
    a.push_back(std::sin(i * 0.8) * 10.0);
    b.push_back(i * i - 5.0);
  }
  chart.addPlots(
      {{"alpha", Style(PlotProperties::Line, k_Red)}, {"beta", Style(PlotProperties::Line, k_Blue)}}, x,
      {{"alpha", a}, {"beta", b}});
}

QString Hex(const plottaro::Color& color)
{
  return color.toQColor().name(QColor::HexRgb);
}

TEST(VXChartExportTest, SvgParsesAndHasOnePathPerSeries)
{
  VXChart chart;
  AddTwoLines(chart);
  chart.setLegendVisible(false); // the legend would draw a short line in each colour too
  QTemporaryDir dir;
  const QString path = dir.filePath("chart.svg");
  ASSERT_TRUE(VXExportDialog::SaveSvgFile(path, 640, 480, &chart));
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  QXmlStreamReader xml(&file);
  // QSvgGenerator writes the pen of each drawing state on a <g> and the shapes inside it.
  std::vector<QString> strokes;
  std::map<QString, int> pathsByStroke;
  while (!xml.atEnd())
  {
    xml.readNext();
    if (xml.isStartElement() && xml.name() == QLatin1String("g"))
    {
      strokes.push_back(xml.attributes().value("stroke").toString());
    }
    else if (xml.isEndElement() && xml.name() == QLatin1String("g"))
    {
      strokes.pop_back();
    }
    else if (xml.isStartElement() &&
             (xml.name() == QLatin1String("path") || xml.name() == QLatin1String("polyline")))
    {
      const QString stroke = strokes.empty() ? QString() : strokes.back();
      pathsByStroke[stroke] += 1;
    }
  }
  ASSERT_FALSE(xml.hasError()) << xml.errorString().toStdString();
  EXPECT_EQ(pathsByStroke[Hex(k_Red)], 1) << "red";
  EXPECT_EQ(pathsByStroke[Hex(k_Blue)], 1) << "blue";
}

TEST(VXChartExportTest, CsvReadsBackWithEveryValue)
{
  VXChart chart;
  AddTwoLines(chart);
  QTemporaryDir dir;
  const QString path = dir.filePath("chart.csv");
  ASSERT_EQ(VXChartCsvWriter::WriteFile(path, chart), VXChartCsvWriter::Status::Written);
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
  QTextStream in(&file);
  EXPECT_EQ(in.readLine(), "X,alpha,beta");
  const std::vector<double> x = chart.getSeriesValues("X");
  const std::vector<double> a = chart.getSeriesValues("alpha");
  const std::vector<double> b = chart.getSeriesValues("beta");
  for (std::size_t i = 0; i < x.size(); ++i)
  {
    const QStringList cells = in.readLine().split(',');
    ASSERT_EQ(cells.size(), 3);
    EXPECT_EQ(cells[0].toDouble(), x[i]);
    EXPECT_EQ(cells[1].toDouble(), a[i]);
    EXPECT_EQ(cells[2].toDouble(), b[i]);
  }
  EXPECT_TRUE(in.readLine().isNull());

  // Categories come first under "Category"; a category with a comma is quoted.
  VXChart bars;
  bars.addPlot("count", Style(PlotProperties::Bar, k_Blue), std::vector<std::string>{"a", "b,c"}, {3.0, 4.0});
  const QString barPath = dir.filePath("bars.csv");
  ASSERT_EQ(VXChartCsvWriter::WriteFile(barPath, bars), VXChartCsvWriter::Status::Written);
  QFile barFile(barPath);
  ASSERT_TRUE(barFile.open(QIODevice::ReadOnly | QIODevice::Text));
  EXPECT_EQ(QString::fromUtf8(barFile.readAll()), "Category,count\na,3\n\"b,c\",4\n");

  VXChart empty;
  EXPECT_EQ(VXChartCsvWriter::WriteFile(dir.filePath("none.csv"), empty), VXChartCsvWriter::Status::NoData);
  EXPECT_EQ(VXChartCsvWriter::Message(VXChartCsvWriter::Status::NoData, "x"), "No data to export.");
}

TEST(VXChartExportTest, ImageFormatFollowsTheEndingInAnyCase)
{
  EXPECT_EQ(VXExportDialog::ImageFormatOf("a.JPG"), "JPEG");
  EXPECT_EQ(VXExportDialog::ImageFormatOf("a.jpeg"), "JPEG");
  EXPECT_EQ(VXExportDialog::ImageFormatOf("b.Png"), "PNG");
  EXPECT_EQ(VXExportDialog::ImageFormatOf("c.tif"), "TIFF");
  EXPECT_EQ(VXExportDialog::ImageFormatOf("c.TIFF"), "TIFF");
  EXPECT_EQ(VXExportDialog::ImageFormatOf("d.bmp"), "BMP");
  EXPECT_EQ(VXExportDialog::ImageFormatOf("e.gif"), "");

  VXChart chart;
  AddTwoLines(chart);
  QTemporaryDir dir;
  const QString path = dir.filePath("a.JPG");
  ASSERT_TRUE(VXExportDialog::SaveImageFile(path, 321, 123, false, &chart));
  QImageReader reader(path);
  reader.setDecideFormatFromContent(true);
  EXPECT_EQ(reader.format(), "jpeg");
  EXPECT_EQ(reader.size(), QSize(321, 123));
  EXPECT_FALSE(VXExportDialog::SaveImageFile(dir.filePath("a.gif"), 100, 100, false, &chart));
  EXPECT_FALSE(VXExportDialog::SaveImageFile(dir.filePath("b.png"), 100, 100, false, nullptr));
}

TEST(VXChartExportTest, DialogChangesSuffixByTypeAndExportsCsv)
{
  VXChart chart;
  chart.resize(500, 400);
  VXExportDialog dialog(&chart);
  QSignalSpy output(&dialog, &VXExportDialog::printOutput);
  QTemporaryDir dir;
  dialog.setExportFile(dir.filePath("my chart.png"));
  EXPECT_TRUE(dialog.isSaveEnabled());
  dialog.setExportType(VXExportDialog::Svg);
  EXPECT_EQ(dialog.exportFile(), dir.filePath("my chart.svg"));
  dialog.setExportType(VXExportDialog::Csv);
  EXPECT_EQ(dialog.exportFile(), dir.filePath("my chart.csv"));
  // An empty chart has nothing to write.
  dialog.onSaveButtonClicked();
  ASSERT_EQ(output.count(), 1);
  EXPECT_EQ(output.at(0).at(0).toString(), "No data to export.");
  AddTwoLines(chart);
  dialog.onSaveButtonClicked();
  ASSERT_EQ(output.count(), 2);
  EXPECT_EQ(output.at(1).at(0).toString(), "Chart saved to file at " + dir.filePath("my chart.csv"));
  EXPECT_TRUE(QFile::exists(dir.filePath("my chart.csv")));
  // An image needs an image ending.
  dialog.setExportType(VXExportDialog::Image);
  dialog.setExportFile(dir.filePath("x.gif"));
  EXPECT_FALSE(dialog.isSaveEnabled());
}

// Pictures of each chart type; the baselines were made by this test with ZR_REGENERATE_BASELINES=1 and
// looked at.
TEST(VXChartExportTest, FourChartTypesMatchTheirBaselines)
{
  const std::vector<double> x = {1.0, 2.0, 3.0, 4.0, 5.0, 6.0};
  const std::vector<double> y = {3.0, 1.0, 4.0, 1.5, 5.0, 2.5};
  const std::vector<double> z = {2.0, 2.5, 1.0, 3.5, 4.5, 4.0};
  {
    VXChart chart;
    chart.addPlots(
        {{"first", Style(PlotProperties::Line, k_Red)}, {"second", Style(PlotProperties::Line, k_Blue)}}, x,
        {{"first", y}, {"second", z}});
    EXPECT_TRUE(
        ZRTest::MatchesBaseline(chart.getPlot()->renderToImage(480, 360), k_BaselineDir, "chart-line", 20.0));
  }
  {
    VXChart chart;
    chart.addPlots(
        {{"first", Style(PlotProperties::Points, k_Red)}, {"second", Style(PlotProperties::Points, k_Blue)}},
        x, {{"first", y}, {"second", z}});
    EXPECT_TRUE(ZRTest::MatchesBaseline(chart.getPlot()->renderToImage(480, 360), k_BaselineDir,
                                        "chart-scatter", 20.0));
  }
  {
    VXChart chart;
    PlotProperties bars = Style(PlotProperties::Bar, k_Blue);
    bars.barSpacing = 8;
    chart.addPlot("counts", bars, std::vector<std::string>{"Ferrite", "Austenite", "Martensite"},
                  {12.0, 7.0, 3.0});
    EXPECT_TRUE(
        ZRTest::MatchesBaseline(chart.getPlot()->renderToImage(480, 360), k_BaselineDir, "chart-bar", 20.0));
  }
  {
    VXChart chart;
    chart.addHistogram("sizes", Style(PlotProperties::Histogram, k_Red), {0.0, 1.0, 2.0, 3.0, 4.0},
                       {5.0, 9.0, 4.0, 1.0});
    EXPECT_TRUE(ZRTest::MatchesBaseline(chart.getPlot()->renderToImage(480, 360), k_BaselineDir,
                                        "chart-histogram", 20.0));
  }
}
} // namespace
