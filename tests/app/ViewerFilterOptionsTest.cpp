// The viewer's filter options run as a user's script runs them: values that do not parse, an array that
// does not exist, and a chain of filters that lands in the saved state in the order given.
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <string>

namespace
{
const QString k_Viewer = QStringLiteral(ZR_TEST_BINARY_DIR "/bin/kestrix-viewer");
const QString k_Image = QStringLiteral(ZR_TEST_DATA_DIR "/vtk/image.vti");

struct ViewerRun
{
  int exitCode = -1;
  QString errors;
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
  EXPECT_TRUE(run.errors.contains(QStringLiteral("no array 'Nope'"))) << run.errors.toStdString();
  EXPECT_TRUE(run.errors.contains(QStringLiteral("Density"))) << run.errors.toStdString();
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
      QString::fromLocal8Bit(missing.readAllStandardError()).contains(QStringLiteral("no array 'Nope'")));
}
} // namespace
