#include "pipeline/FileToVXBridge.h"

#include "BridgeMessages.h"

#include "common/ZRTestStructures.h"
#include "data_bridge/zr_contract/KestrixIO.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "pipeline/VXStateFileDirectory.h"
#include "pipeline/ZRToVXBridge.h"

#include <vtkDataSet.h>

#include <nlohmann/json.hpp>

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace
{
QString fixture(const QString& relativePath)
{
  return QStringLiteral(ZR_TEST_DATA_DIR "/") + relativePath;
}

// A bridge whose questions to the user are answered by the test.
class AnsweringFileBridge : public FileToVXBridge
{
public:
  bool m_Answer = false;
  QString m_ChosenFile;
  QStringList m_Questions;

protected:
  bool askYesNo(const QString& title, const QString&) override
  {
    m_Questions << title;
    return m_Answer;
  }
  QString chooseFile(const QString&) override { return m_ChosenFile; }
};

using Messages = BridgeMessages;

bool copyFile(const QString& from, const QString& to)
{
  QFile::remove(to);
  return QFile::copy(from, to) && QFile::setPermissions(to, QFile::ReadOwner | QFile::WriteOwner);
}

bool waitFor(const std::function<bool()>& condition)
{
  for (int i = 0; i < 100 && !condition(); ++i)
  {
    QTest::qWait(20);
  }
  return condition();
}
} // namespace

TEST(FileToVXBridge, ReadsDatasetFilesWhateverTheSuffixCase)
{
  QTemporaryDir dir;
  const QString path = dir.filePath("LEGACY.VTK");
  ASSERT_TRUE(copyFile(fixture("vtk/legacy_ascii.vtk"), path));
  qRegisterMetaType<VXDataSource*>();
  FileToVXBridge bridge;
  QSignalSpy added(&bridge, &VXBridgeObject::dataSourceAdded);
  bridge.import(path);
  ASSERT_EQ(bridge.dataSources().size(), 1);
  EXPECT_EQ(added.count(), 1);
  ASSERT_NE(bridge.dataSources().front()->getOutput(), nullptr);
  EXPECT_EQ(bridge.dataSources().front()->getOutput()->GetNumberOfCells(), 2);
  EXPECT_EQ(bridge.baseName(), QStringLiteral("LEGACY.VTK"));
  EXPECT_TRUE(bridge.isWatchingFile());
  EXPECT_EQ(bridge.filePath(), path);
}

TEST(FileToVXBridge, ImagesBecomeCellData)
{
  FileToVXBridge bridge;
  bridge.import(fixture("images/gradient_100x50.png"));
  ASSERT_EQ(bridge.dataSources().size(), 1);
  vtkDataSet* image = bridge.dataSources().front()->getOutput();
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->GetNumberOfCells(), 100 * 50);
}

TEST(FileToVXBridge, ParallelAndUnknownSuffixesAreRefused)
{
  FileToVXBridge bridge;
  Messages messages(&bridge);
  const QString path = fixture("vtk/parallel_image.pvti");
  bridge.import(path);
  EXPECT_TRUE(bridge.dataSources().isEmpty());
  EXPECT_EQ(messages.m_Popups,
            QStringList{QStringLiteral(
                            "Load File Error: Invalid file type for file at '%1'. Cannot load the file for "
                            "visualization")
                            .arg(path)});
}

TEST(FileToVXBridge, UnreadableKestrixIsSilentOnImportAndReportedOnReload)
{
  QTemporaryDir dir;
  const QString path = dir.filePath("broken.kestrix");
  {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("this is not an HDF5 file");
  }
  AnsweringFileBridge bridge;
  Messages messages(&bridge);
  bridge.import(path);
  EXPECT_TRUE(bridge.dataSources().isEmpty());
  EXPECT_TRUE(messages.m_Popups.isEmpty());

  // With no sources there is nothing to reload.
  bridge.reload();
  EXPECT_EQ(messages.m_Output,
            QStringList{QStringLiteral("The pipeline object doesn't have any data defined; not a reload.")});

  // A good file first, then damaged in place: the reload reports and keeps the old data.
  auto ds = ZRTest::MakeAllKinds();
  ASSERT_TRUE(zr::core::KESTRIX::WriteDataStructureToFile(path.toStdString(), *ds).valid());
  bridge.import(path);
  ASSERT_EQ(bridge.dataSources().size(), 8);
  vtkDataSet* before = bridge.dataSources().front()->getOutput();
  {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("garbage");
  }
  bridge.setWatchFile(false);
  bridge.reload();
  ASSERT_EQ(messages.m_Popups.size(), 1);
  EXPECT_TRUE(messages.m_Popups.front().startsWith(
      QStringLiteral("Reload File Error: An error occurred while reading file %1.").arg(path)));
  EXPECT_EQ(bridge.dataSources().front()->getOutput(), before);
}

TEST(FileToVXBridge, FileWrittenInPlaceReloads)
{
  QTemporaryDir dir;
  const QString path = dir.filePath("data.vtu");
  ASSERT_TRUE(copyFile(fixture("vtk/unstructured.vtu"), path));
  FileToVXBridge bridge;
  bridge.import(path);
  ASSERT_EQ(bridge.dataSources().size(), 1);
  QSignalSpy reloaded(&bridge, &VXBridgeObject::pipelineOutputReloaded);
  QSignalSpy flagged(&bridge, &FileToVXBridge::autoReloadFlagChanged);

  // Rewrite the same file (same inode) in place.
  {
    QFile source(fixture("vtk/unstructured.vtu"));
    ASSERT_TRUE(source.open(QIODevice::ReadOnly));
    QFile target(path);
    ASSERT_TRUE(target.open(QIODevice::ReadWrite | QIODevice::Truncate));
    target.write(source.readAll());
  }
  ASSERT_TRUE(waitFor([&]() { return reloaded.count() > 0; }));
  EXPECT_FALSE(bridge.autoReloadFlagged());
  ASSERT_GE(flagged.count(), 1);
  EXPECT_EQ(flagged.front().at(1).toBool(), false);
  EXPECT_TRUE(bridge.isWatchingFile());
}

TEST(FileToVXBridge, SlowWriterIsReloadedOnceWhenTheFileIsComplete)
{
  QTemporaryDir dir;
  const QString path = dir.filePath("data.vtu");
  ASSERT_TRUE(copyFile(fixture("vtk/unstructured.vtu"), path));
  FileToVXBridge bridge;
  bridge.import(path);
  ASSERT_EQ(bridge.dataSources().size(), 1);
  Messages messages(&bridge);
  QSignalSpy reloaded(&bridge, &VXBridgeObject::pipelineOutputReloaded);

  QFile source(fixture("vtk/unstructured.vtu"));
  ASSERT_TRUE(source.open(QIODevice::ReadOnly));
  const QByteArray content = source.readAll();
  QFile target(path);
  // Truncate, write half, pause for less than the quiet period, write the rest.
  ASSERT_TRUE(target.open(QIODevice::ReadWrite | QIODevice::Truncate));
  target.write(content.left(content.size() / 2));
  target.flush();
  QTest::qWait(FileToVXBridge::k_QuietPeriodMs / 3);
  EXPECT_EQ(reloaded.count(), 0);
  target.write(content.mid(content.size() / 2));
  target.close();

  ASSERT_TRUE(waitFor([&]() { return reloaded.count() > 0; }));
  QTest::qWait(FileToVXBridge::k_QuietPeriodMs * 2);
  EXPECT_EQ(reloaded.count(), 1);
  EXPECT_TRUE(messages.m_Popups.isEmpty()) << messages.m_Popups.join('\n').toStdString();
  EXPECT_EQ(bridge.dataSources().front()->getOutput()->GetNumberOfCells(), 2);
}

TEST(FileToVXBridge, FileReplacedByRenameIsFlaggedAndNotReloaded)
{
  QTemporaryDir dir;
  const QString path = dir.filePath("data.vtu");
  ASSERT_TRUE(copyFile(fixture("vtk/unstructured.vtu"), path));
  FileToVXBridge bridge;
  bridge.import(path);
  QSignalSpy reloaded(&bridge, &VXBridgeObject::pipelineOutputReloaded);
  QSignalSpy moved(&bridge, &FileToVXBridge::sendFileMovedMessage);

  // What editors do: write a new file, rename it over the old one.
  const QString temporary = dir.filePath("data.vtu.tmp");
  ASSERT_TRUE(copyFile(fixture("vtk/unstructured.vtu"), temporary));
  ASSERT_EQ(::rename(temporary.toLocal8Bit().constData(), path.toLocal8Bit().constData()), 0);

  ASSERT_TRUE(waitFor([&]() { return moved.count() > 0; }));
  EXPECT_TRUE(bridge.autoReloadFlagged());
  EXPECT_EQ(reloaded.count(), 0);
  EXPECT_TRUE(moved.front().front().toString().startsWith(
      QStringLiteral(
          "File item data.vtu is no longer auto reloading because the source file at path %1 was renamed")
          .arg(path)));

  // Watching again picks the file up and reloads it.
  bridge.setWatchFile(true);
  EXPECT_FALSE(bridge.autoReloadFlagged());
  EXPECT_TRUE(bridge.isWatchingFile());
  EXPECT_EQ(reloaded.count(), 1);
  // Asking to watch a watched file does nothing.
  bridge.setWatchFile(true);
  EXPECT_EQ(reloaded.count(), 1);
}

TEST(FileToVXBridge, MissingFileOnReloadAsksToLocateIt)
{
  QTemporaryDir dir;
  const QString path = dir.filePath("gone.vtp");
  ASSERT_TRUE(copyFile(fixture("vtk/poly.vtp"), path));
  AnsweringFileBridge bridge;
  bridge.import(path);
  ASSERT_TRUE(QFile::remove(path));
  QSignalSpy reloaded(&bridge, &VXBridgeObject::pipelineOutputReloaded);

  bridge.m_Answer = false;
  bridge.reload();
  EXPECT_EQ(bridge.m_Questions, QStringList{"Source File Missing"});
  EXPECT_EQ(reloaded.count(), 0);

  bridge.m_Answer = true;
  const QString found = dir.filePath("found.vtu");
  ASSERT_TRUE(copyFile(fixture("vtk/unstructured.vtu"), found));
  bridge.m_ChosenFile = found;
  bridge.reload();
  EXPECT_EQ(reloaded.count(), 1);
  EXPECT_EQ(bridge.filePath(), found);
  EXPECT_EQ(bridge.dataSources().front()->getOutput()->GetNumberOfCells(), 2);
  // The item follows the new file: its name and the watcher.
  EXPECT_EQ(bridge.name(), QStringLiteral("found.vtu"));
  EXPECT_TRUE(bridge.isWatchingFile());
  EXPECT_EQ(bridge.watchedFiles(), QStringList{found});
  {
    QFile file(found);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("\n");
  }
  ASSERT_TRUE(waitFor([&]() { return reloaded.count() > 1; }));

  // A name the user gave survives a relocation.
  bridge.setName(QStringLiteral("My Mesh"), 0);
  ASSERT_TRUE(QFile::remove(found));
  bridge.m_ChosenFile = fixture("vtk/unstructured.vtu");
  bridge.reload();
  EXPECT_EQ(bridge.name(), QStringLiteral("My Mesh"));
}

TEST(FileToVXBridge, StateRecordRoundTrip)
{
  FileToVXBridge bridge;
  bridge.import(fixture("vtk/image.vti"));
  bridge.setName(QStringLiteral("My Image"), 0);
  nlohmann::json json;
  bridge.write(json);
  EXPECT_EQ(json.at("bridge_object_item_name"), "My Image");

  FileToVXBridge restored;
  restored.read(json);
  EXPECT_EQ(restored.baseName(), QStringLiteral("My Image"));
  EXPECT_EQ(restored.dataSources().size(), 1);
  EXPECT_THROW(restored.read(nlohmann::json{{"bridge_object_file_path", 3}}), nlohmann::json::type_error);
}

TEST(FileToVXBridge, StateRecordFindsAFileThatMovedWithItsStateFile)
{
  QTemporaryDir first;
  QTemporaryDir second;
  ASSERT_TRUE(QDir().mkpath(first.filePath(QStringLiteral("data"))));
  ASSERT_TRUE(QDir().mkpath(second.filePath(QStringLiteral("data"))));
  const QString original = first.filePath(QStringLiteral("data/image.vti"));
  ASSERT_TRUE(QFile::copy(fixture("vtk/image.vti"), original));
  FileToVXBridge bridge;
  bridge.import(original);
  nlohmann::json json;
  bridge.write(json);
  EXPECT_FALSE(json.contains("bridge_object_file_relative_path")) << "no state file, no relative path";
  {
    VXStateFileDirectory directory(first.path());
    bridge.write(json);
  }
  EXPECT_EQ(json.at("bridge_object_file_path"), original.toStdString());
  EXPECT_EQ(json.at("bridge_object_file_relative_path"), "data/image.vti");
  EXPECT_TRUE(VXStateFileDirectory::Current().isEmpty());

  // The data moves along with the state file; the absolute path is gone.
  ASSERT_TRUE(QFile::rename(original, second.filePath(QStringLiteral("data/image.vti"))));
  {
    VXStateFileDirectory directory(second.path());
    FileToVXBridge moved;
    moved.read(json);
    EXPECT_EQ(moved.filePath(), second.filePath(QStringLiteral("data/image.vti")));
    EXPECT_EQ(moved.dataSources().size(), 1);
  }
  // An absolute path that still exists wins over the relative one.
  ASSERT_TRUE(QFile::copy(fixture("vtk/image.vti"), original));
  {
    VXStateFileDirectory directory(second.path());
    FileToVXBridge kept;
    kept.read(json);
    EXPECT_EQ(kept.filePath(), original);
  }
  // Without a state folder the relative path means nothing.
  ASSERT_TRUE(QFile::remove(original));
  AnsweringFileBridge lost;
  lost.read(json);
  EXPECT_EQ(lost.filePath(), original);
  EXPECT_TRUE(lost.dataSources().isEmpty());
}

TEST(ZRToVXBridge, StateReadAlwaysSendsItsErrorText)
{
  QTemporaryDir dir;
  const QString path = dir.filePath("run.kestrix");
  auto ds = ZRTest::MakeAllKinds();
  ASSERT_TRUE(zr::core::KESTRIX::WriteDataStructureToFile(path.toStdString(), *ds).valid());

  ZRToVXBridge bridge;
  Messages messages(&bridge);
  bridge.read({{"bridge_object_file_path", path.toStdString()},
               {"bridge_object_uuid", "abc"},
               {"bridge_object_item_name", "Run"}});
  ASSERT_EQ(messages.m_Output.size(), 1);
  EXPECT_TRUE(messages.m_Output.front().startsWith(QStringLiteral(
      "Error: Cannot read in state file to a visualization pipeline sourced from a KESTRIX-ZR")));
  EXPECT_EQ(bridge.dataSources().size(), 8);
  EXPECT_EQ(bridge.getPipelineUuid(), QStringLiteral("abc"));
  EXPECT_EQ(bridge.baseName(), QStringLiteral("Run"));

  bridge.read(nlohmann::json::array());
  EXPECT_EQ(messages.m_Output.size(), 2);
}

TEST(FileToVXBridge, LongReadsReportEachArray)
{
  QTemporaryDir dir;
  const QString path = dir.filePath("run.kestrix");
  auto ds = ZRTest::MakeAllKinds();
  ASSERT_TRUE(zr::core::KESTRIX::WriteDataStructureToFile(path.toStdString(), *ds).valid());
  VXPipeline pipeline;
  QStringList progress;
  QObject::connect(&pipeline, &VXPipeline::importProgress, [&](const QString& line) { progress << line; });
  pipeline.importFile(path);
  EXPECT_TRUE(progress.contains(QStringLiteral("Reading 'Scan/Grains/Cell Data/FeatureIds'")))
      << progress.join('\n').toStdString();
  EXPECT_TRUE(progress.contains(QStringLiteral("Reading 'Scan/Surface/Face Data/FaceLabels'")));
}
