// The image slice view from the viewer's command line, run as a user's script runs it.
#include "common/ZRImageBaseline.h"

#include <nlohmann/json.hpp>

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{
const QString k_Viewer = QStringLiteral(ZR_TEST_BINARY_DIR "/bin/kestrix-viewer");
const QString k_Cells = QStringLiteral(ZR_TEST_DATA_DIR "/vtk/slice_cells.vti");
const QString k_Empty = QStringLiteral(ZR_TEST_DATA_DIR "/vtk/empty_image.vti");

struct ViewerRun
{
  int exitCode = -1;
  QString output;
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
  run.output = QString::fromLocal8Bit(process.readAllStandardError() + process.readAllStandardOutput());
  return run;
}

nlohmann::json readJson(const QString& path)
{
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
  {
    return nullptr;
  }
  return nlohmann::json::parse(file.readAll().toStdString(), nullptr, false);
}
} // namespace

TEST(ViewerSliceOptions, ASliceAlongAnAxisIsDrawn)
{
  QTemporaryDir dir;
  const QString shot = dir.filePath(QStringLiteral("slice.png"));
  const ViewerRun run =
      runViewer({k_Cells, QStringLiteral("--view"), QStringLiteral("slice"), QStringLiteral("--slice-axis"),
                 QStringLiteral("y"), QStringLiteral("--slice-number"), QStringLiteral("2"),
                 QStringLiteral("--screenshot"), shot, QStringLiteral("--size"), QStringLiteral("320x240")});
  ASSERT_EQ(run.exitCode, 0) << run.output.toStdString();
  const QImage image(shot);
  ASSERT_EQ(image.size(), QSize(320, 240));
  EXPECT_TRUE(ZRTest::MatchesBaseline(image, QStringLiteral(ZR_APP_BASELINE_DIR),
                                      QStringLiteral("slice_y2_320x240"), 10.0));
  // The slice options alone ask for the slice view.
  const ViewerRun implied = runViewer(
      {k_Cells, QStringLiteral("--slice-number"), QStringLiteral("3"), QStringLiteral("--screenshot"), shot});
  EXPECT_EQ(implied.exitCode, 0) << implied.output.toStdString();
}

TEST(ViewerSliceOptions, BadSliceOptionsGiveAMessageAndAnErrorCode)
{
  QTemporaryDir dir;
  const QString shot = dir.filePath(QStringLiteral("slice.png"));
  const ViewerRun outOfRange =
      runViewer({k_Cells, QStringLiteral("--view"), QStringLiteral("slice"), QStringLiteral("--slice-number"),
                 QStringLiteral("4"), QStringLiteral("--screenshot"), shot});
  EXPECT_NE(outOfRange.exitCode, 0);
  EXPECT_NE(outOfRange.exitCode, -1);
  EXPECT_TRUE(outOfRange.output.contains(QStringLiteral("slice number 4 is out of range")))
      << outOfRange.output.toStdString();
  EXPECT_TRUE(outOfRange.output.contains(QStringLiteral("along z run from 0 to 3")))
      << outOfRange.output.toStdString();

  const ViewerRun alongX = runViewer({k_Cells, QStringLiteral("--slice-axis"), QStringLiteral("x"),
                                      QStringLiteral("--slice-number"), QStringLiteral("-1"),
                                      QStringLiteral("--screenshot"), shot});
  EXPECT_NE(alongX.exitCode, 0);
  EXPECT_TRUE(alongX.output.contains(QStringLiteral("along x run from 0 to 7")))
      << alongX.output.toStdString();

  const ViewerRun badAxis = runViewer(
      {k_Cells, QStringLiteral("--slice-axis"), QStringLiteral("w"), QStringLiteral("--screenshot"), shot});
  EXPECT_EQ(badAxis.exitCode, 2);
  EXPECT_TRUE(badAxis.output.contains(QStringLiteral("--slice-axis takes x, y or z")))
      << badAxis.output.toStdString();

  const ViewerRun badNumber = runViewer({k_Cells, QStringLiteral("--slice-number"), QStringLiteral("middle"),
                                         QStringLiteral("--screenshot"), shot});
  EXPECT_EQ(badNumber.exitCode, 2);
  EXPECT_TRUE(badNumber.output.contains(QStringLiteral("--slice-number takes a whole number")))
      << badNumber.output.toStdString();

  const ViewerRun otherView = runViewer({k_Cells, QStringLiteral("--view"), QStringLiteral("surface"),
                                         QStringLiteral("--slice-number"), QStringLiteral("1"),
                                         QStringLiteral("--screenshot"), shot});
  EXPECT_EQ(otherView.exitCode, 2);
  EXPECT_TRUE(otherView.output.contains(QStringLiteral("need --view slice")))
      << otherView.output.toStdString();
}

TEST(ViewerSliceOptions, AnEmptyImageIsAMessageAndNoCrash)
{
  QTemporaryDir dir;
  const ViewerRun run =
      runViewer({k_Empty, QStringLiteral("--view"), QStringLiteral("slice"), QStringLiteral("--screenshot"),
                 dir.filePath(QStringLiteral("empty.png"))});
  EXPECT_NE(run.exitCode, -1) << "the viewer crashed or hung";
  EXPECT_NE(run.exitCode, 0);
  EXPECT_TRUE(run.output.contains(QStringLiteral("empty"), Qt::CaseInsensitive)) << run.output.toStdString();
}

TEST(ViewerSliceOptions, SavedSliceStateLoadsAndSavesTheSame)
{
  QTemporaryDir dir;
  const QString first = dir.filePath(QStringLiteral("first.ksxstate"));
  const QString second = dir.filePath(QStringLiteral("second.ksxstate"));
  const ViewerRun saved = runViewer({k_Cells, QStringLiteral("--slice-axis"), QStringLiteral("x"),
                                     QStringLiteral("--slice-number"), QStringLiteral("5"),
                                     QStringLiteral("--save-state"), first});
  ASSERT_EQ(saved.exitCode, 0) << saved.output.toStdString();
  const ViewerRun again =
      runViewer({QStringLiteral("--state"), first, QStringLiteral("--save-state"), second});
  ASSERT_EQ(again.exitCode, 0) << again.output.toStdString();
  const nlohmann::json a = readJson(first);
  const nlohmann::json b = readJson(second);
  ASSERT_TRUE(a.is_object());
  EXPECT_EQ(a, b);
  const std::string text = a.dump();
  EXPECT_NE(text.find("\"VXImageSliceRep\""), std::string::npos);
  EXPECT_NE(text.find("\"slice_num\":5"), std::string::npos);
  EXPECT_NE(text.find("\"slice_dir\":1"), std::string::npos);
}

TEST(ViewerSliceOptions, HelpListsTheSliceOptions)
{
  QProcess process;
  process.start(k_Viewer, {QStringLiteral("--help")});
  ASSERT_TRUE(process.waitForFinished(60000));
  const QString text =
      QString::fromLocal8Bit(process.readAllStandardOutput() + process.readAllStandardError());
  EXPECT_TRUE(text.contains(QStringLiteral("--slice-number N"))) << text.toStdString();
  EXPECT_TRUE(text.contains(QStringLiteral("--slice-axis x|y|z")));
  EXPECT_TRUE(text.contains(QStringLiteral("--view slice")));
}
