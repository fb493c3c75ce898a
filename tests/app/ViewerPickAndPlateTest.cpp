// Runs the viewer program with --pick and --build-plate as a user's script would.
#include <nlohmann/json.hpp>

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>

#include <gtest/gtest.h>

namespace
{
const QString k_Viewer = QStringLiteral(ZR_TEST_BINARY_DIR "/bin/kestrix-viewer");
// 3 x 2 x 1 cells from (1, 2, 3) with spacing (0.5, 0.25, 2): Density = 1.5 x point id, Phase = cell id % 3.
const QString k_Image = QStringLiteral(ZR_TEST_DATA_DIR "/vtk/image.vti");

struct ViewerRun
{
  int exitCode = -1;
  QString output;
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
  run.output = QString::fromLocal8Bit(process.readAllStandardOutput());
  run.errors = QString::fromLocal8Bit(process.readAllStandardError());
  return run;
}

nlohmann::json readJson(const QString& path)
{
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return nlohmann::json::parse(file.readAll().toStdString(), nullptr, false);
}
} // namespace

TEST(ViewerPick, PixelOnTheDataReportsItsCellPointPositionAndValues)
{
  const ViewerRun run =
      runViewer({k_Image, QStringLiteral("--view"), QStringLiteral("surface"), QStringLiteral("--size"),
                 QStringLiteral("400x300"), QStringLiteral("--pick"), QStringLiteral("190,140")});
  ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
  const nlohmann::json pick = nlohmann::json::parse(run.output.toStdString(), nullptr, false);
  ASSERT_TRUE(pick.is_object()) << run.output.toStdString();
  ASSERT_TRUE(pick.at("geometry").is_string()) << pick.dump();
  EXPECT_FALSE(pick.at("geometry").get<std::string>().empty());
  const int cell = pick.at("cell_id").get<int>();
  const int point = pick.at("point_id").get<int>();
  ASSERT_GE(cell, 0);
  ASSERT_LT(cell, 6);
  ASSERT_GE(point, 0);
  ASSERT_LT(point, 24);
  const nlohmann::json& position = pick.at("position");
  ASSERT_EQ(position.size(), 3u);
  EXPECT_GE(position.at(0).get<double>(), 1.0 - 1e-6);
  EXPECT_LE(position.at(0).get<double>(), 2.5 + 1e-6);
  EXPECT_GE(position.at(1).get<double>(), 2.0 - 1e-6);
  EXPECT_LE(position.at(1).get<double>(), 2.5 + 1e-6);
  // The values are those of the file at the reported ids.
  EXPECT_EQ(pick.at("values").at("Phase").get<double>(), cell % 3);
  EXPECT_DOUBLE_EQ(pick.at("values").at("Density").get<double>(), 1.5 * point);
  // The cell holds the position: cells run i fastest, 3 along x and 2 along y.
  const int i = cell % 3;
  const int j = (cell / 3) % 2;
  EXPECT_GE(position.at(0).get<double>(), 1.0 + 0.5 * i - 1e-6);
  EXPECT_LE(position.at(0).get<double>(), 1.5 + 0.5 * i + 1e-6);
  EXPECT_GE(position.at(1).get<double>(), 2.0 + 0.25 * j - 1e-6);
  EXPECT_LE(position.at(1).get<double>(), 2.25 + 0.25 * j + 1e-6);
}

TEST(ViewerPick, PixelOffTheDataReportsNothingThere)
{
  const ViewerRun run = runViewer({k_Image, QStringLiteral("--size"), QStringLiteral("400x300"),
                                   QStringLiteral("--pick"), QStringLiteral("2,2")});
  ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
  const nlohmann::json pick = nlohmann::json::parse(run.output.toStdString(), nullptr, false);
  ASSERT_TRUE(pick.is_object()) << run.output.toStdString();
  EXPECT_TRUE(pick.at("geometry").is_null());
  EXPECT_EQ(pick.at("cell_id"), -1);
  EXPECT_EQ(pick.at("point_id"), -1);
  EXPECT_TRUE(pick.at("position").is_null());
  EXPECT_TRUE(pick.at("values").empty());
}

// slice_cells.vti holds "CellIndex" = i + 10 j + 100 k in its 8 x 6 x 4 cells; at 800x600 its first
// slice, seen from the positive side of z, fills the middle of the window with x growing to the right
// and y upwards; slice 3 lies nearer the camera and so fills more of the window.
TEST(ViewerPick, PixelsOnAnImageSliceReportTheImageCellAndItsValues)
{
  const QString cells = QStringLiteral(ZR_TEST_DATA_DIR "/vtk/slice_cells.vti");
  struct Case
  {
    QString sliceNumber;
    QString pixel;
    int cell;
    double cellIndex;
  };
  const Case cases[] = {{QStringLiteral("0"), QStringLiteral("260,200"), 33, 41.0},
                        {QStringLiteral("0"), QStringLiteral("540,400"), 14, 16.0},
                        {QStringLiteral("3"), QStringLiteral("430,330"), 164, 324.0}};
  for (const Case& c : cases)
  {
    const ViewerRun run =
        runViewer({cells, QStringLiteral("--view"), QStringLiteral("slice"), QStringLiteral("--slice-number"),
                   c.sliceNumber, QStringLiteral("--pick"), c.pixel});
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    const nlohmann::json pick = nlohmann::json::parse(run.output.toStdString(), nullptr, false);
    ASSERT_TRUE(pick.is_object()) << run.output.toStdString();
    EXPECT_EQ(pick.at("cell_id").get<int>(), c.cell) << pick.dump();
    EXPECT_DOUBLE_EQ(pick.at("values").at("CellIndex").get<double>(), c.cellIndex) << pick.dump();
    ASSERT_EQ(pick.at("position").size(), 3u) << pick.dump();
    // The slice shows the cells at their centres: half a cell above the slice's lower face.
    EXPECT_DOUBLE_EQ(pick.at("position").at(2).get<double>(), c.sliceNumber.toDouble() + 0.5) << pick.dump();
  }
  const ViewerRun off = runViewer({cells, QStringLiteral("--view"), QStringLiteral("slice"),
                                   QStringLiteral("--pick"), QStringLiteral("50,50")});
  ASSERT_EQ(off.exitCode, 0) << off.errors.toStdString();
  const nlohmann::json nothing = nlohmann::json::parse(off.output.toStdString(), nullptr, false);
  ASSERT_TRUE(nothing.is_object()) << off.output.toStdString();
  EXPECT_EQ(nothing.at("cell_id"), -1);
  EXPECT_TRUE(nothing.at("values").empty());
}

TEST(ViewerPick, BadPixelsAreRefusedWithAMessage)
{
  const ViewerRun text = runViewer({k_Image, QStringLiteral("--pick"), QStringLiteral("middle")});
  EXPECT_EQ(text.exitCode, 2);
  EXPECT_TRUE(text.errors.contains(QStringLiteral("--pick takes a window pixel X,Y")))
      << text.errors.toStdString();
  const ViewerRun outside = runViewer({k_Image, QStringLiteral("--size"), QStringLiteral("200x100"),
                                       QStringLiteral("--pick"), QStringLiteral("150,100")});
  EXPECT_EQ(outside.exitCode, 2);
  EXPECT_TRUE(outside.errors.contains(QStringLiteral("outside the render window of 200x100")))
      << outside.errors.toStdString();
  EXPECT_TRUE(outside.output.isEmpty());
}

TEST(ViewerBuildPlate, PlateGoesIntoTheStateAndComesBackFromIt)
{
  QTemporaryDir dir;
  const QString first = dir.filePath(QStringLiteral("first.ksxstate"));
  const ViewerRun run = runViewer({k_Image, QStringLiteral("--build-plate"), QStringLiteral("square:250,200"),
                                   QStringLiteral("--plate-spacing"), QStringLiteral("25"),
                                   QStringLiteral("--save-state"), first});
  ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
  const nlohmann::json state = readJson(first);
  const nlohmann::json& tree = state.at("tree_view_state");
  const auto plate = std::find_if(tree.begin(), tree.end(),
                                  [](const nlohmann::json& item)
                                  { return item.at("item_type") == "VXBuildPlateAnnotationSource"; });
  ASSERT_NE(plate, tree.end()) << tree.dump(2);
  const nlohmann::json& view = plate->at("item_data").at("global_source_view_implementations").at(0);
  EXPECT_EQ(view.at("build_plate_annotation_x_dim"), 250);
  EXPECT_EQ(view.at("build_plate_annotation_y_dim"), 200);
  EXPECT_EQ(view.at("build_plate_annotation_x_spacing"), 25.0);
  EXPECT_EQ(view.at("build_plate_annotation_x_minor_spacing"), 5.0);

  // Loaded and saved again, the record is the same.
  const QString second = dir.filePath(QStringLiteral("second.ksxstate"));
  const ViewerRun again =
      runViewer({QStringLiteral("--state"), first, QStringLiteral("--save-state"), second});
  ASSERT_EQ(again.exitCode, 0) << again.errors.toStdString();
  EXPECT_EQ(readJson(second).at("tree_view_state"), tree);
}

TEST(ViewerBuildPlate, PlateIsDrawnInTheScreenshot)
{
  QTemporaryDir dir;
  const QString bare = dir.filePath(QStringLiteral("bare.png"));
  const QString withPlate = dir.filePath(QStringLiteral("plate.png"));
  ASSERT_EQ(
      runViewer({QStringLiteral("--screenshot"), bare, QStringLiteral("--size"), QStringLiteral("320x240")})
          .exitCode,
      0);
  const ViewerRun run =
      runViewer({QStringLiteral("--build-plate"), QStringLiteral("circle:50"), QStringLiteral("--screenshot"),
                 withPlate, QStringLiteral("--size"), QStringLiteral("320x240")});
  ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
  const QImage empty(bare);
  const QImage drawn(withPlate);
  ASSERT_EQ(drawn.size(), QSize(320, 240));
  // White and gray lines over the background: many pixels change, most at the centre.
  int changed = 0;
  for (int y = 0; y < drawn.height(); ++y)
  {
    for (int x = 0; x < drawn.width(); ++x)
    {
      changed += drawn.pixel(x, y) != empty.pixel(x, y) ? 1 : 0;
    }
  }
  EXPECT_GT(changed, 2000);
  EXPECT_NE(drawn.pixel(160, 120), empty.pixel(160, 120)) << "lines cross at the centre of the plate";
}

TEST(ViewerBuildPlate, BadShapesAndSpacingsAreRefusedWithAMessage)
{
  for (const QString& shape : {QStringLiteral("triangle:3"), QStringLiteral("square:10"),
                               QStringLiteral("square:0,10"), QStringLiteral("circle:-4")})
  {
    const ViewerRun run = runViewer({QStringLiteral("--build-plate"), shape, QStringLiteral("--save-state"),
                                     QStringLiteral("/tmp/never-written.ksxstate")});
    EXPECT_EQ(run.exitCode, 2) << shape.toStdString();
    EXPECT_TRUE(run.errors.contains(QStringLiteral("--build-plate takes square:W,D or circle:R")))
        << run.errors.toStdString();
  }
  const ViewerRun spacing = runViewer({QStringLiteral("--build-plate"), QStringLiteral("circle:10"),
                                       QStringLiteral("--plate-spacing"), QStringLiteral("0")});
  EXPECT_EQ(spacing.exitCode, 2);
  EXPECT_TRUE(spacing.errors.contains(QStringLiteral("--plate-spacing takes a number above 0")));
  const ViewerRun alone = runViewer({QStringLiteral("--plate-spacing"), QStringLiteral("5")});
  EXPECT_EQ(alone.exitCode, 2);
  EXPECT_TRUE(alone.errors.contains(QStringLiteral("--plate-spacing needs --build-plate")));
}
