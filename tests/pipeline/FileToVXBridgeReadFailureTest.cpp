// A file bridge whose file cannot be read says why, and leaves no empty data source behind.
#include "pipeline/FileToVXBridge.h"

#include "BridgeMessages.h"

#include "pipeline/VXDataSource.h"

#include <vtkDataSet.h>

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{
QString fixture(const QString& relativePath)
{
  return QStringLiteral(ZR_TEST_DATA_DIR "/") + relativePath;
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
  QFile file(path);
  return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

QString loadError(const QString& path, const QString& why)
{
  return QStringLiteral("Load File Error: An error occurred while reading file %1. Cannot load the file for "
                        "visualization\n%2")
      .arg(path, why);
}
} // namespace

TEST(FileToVXBridgeReadFailure, MissingFileIsReportedAndGivesNoSource)
{
  QTemporaryDir dir;
  const QString path = dir.filePath("missing.vtp");
  FileToVXBridge bridge;
  BridgeMessages messages(&bridge);
  bridge.import(path);
  EXPECT_TRUE(bridge.dataSources().isEmpty());
  EXPECT_EQ(messages.m_Popups,
            QStringList{loadError(path, QStringLiteral("The file '%1' does not exist.").arg(path))});
}

TEST(FileToVXBridgeReadFailure, DamagedDatasetAndFakeImageCarryTheReadersReason)
{
  QTemporaryDir dir;
  const QString vtu = dir.filePath("damaged.vtu");
  QFile::copy(fixture("vtk/unstructured.vtu"), vtu);
  QFile original(fixture("vtk/unstructured.vtu"));
  ASSERT_TRUE(original.open(QIODevice::ReadOnly));
  ASSERT_TRUE(writeFile(vtu, original.readAll().left(300)));
  const QString png = dir.filePath("photo.png");
  ASSERT_TRUE(writeFile(png, "This is plain text, saved under the name of a picture.\n"));

  for (const QString& path : {vtu, png})
  {
    FileToVXBridge bridge;
    BridgeMessages messages(&bridge);
    bridge.import(path);
    EXPECT_TRUE(bridge.dataSources().isEmpty()) << path.toStdString();
    ASSERT_EQ(messages.m_Popups.size(), 1) << path.toStdString();
    const QString prefix = loadError(path, QString());
    EXPECT_TRUE(messages.m_Popups.front().startsWith(prefix)) << messages.m_Popups.front().toStdString();
    // The reader's own reason follows, not VTK's dump of the pipeline request.
    const QString reason = messages.m_Popups.front().mid(prefix.size());
    EXPECT_FALSE(reason.trimmed().isEmpty());
    EXPECT_FALSE(reason.contains(QStringLiteral("(0x"))) << reason.toStdString();
  }
}

TEST(FileToVXBridgeReadFailure, FailedReloadGivesTheReasonAndKeepsTheData)
{
  QTemporaryDir dir;
  const QString path = dir.filePath("data.vtu");
  ASSERT_TRUE(QFile::copy(fixture("vtk/unstructured.vtu"), path));
  FileToVXBridge bridge;
  BridgeMessages messages(&bridge);
  bridge.import(path);
  ASSERT_EQ(bridge.dataSources().size(), 1);
  vtkDataSet* before = bridge.dataSources().front()->getOutput();
  ASSERT_NE(before, nullptr);
  bridge.setWatchFile(false);
  ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
  ASSERT_TRUE(writeFile(path, QByteArray()));

  bridge.reload();
  EXPECT_EQ(messages.m_Output, QStringList{QStringLiteral("The file '%1' is empty.").arg(path)});
  EXPECT_EQ(messages.m_Popups,
            QStringList{QStringLiteral("Reload File Error: An error occurred while reading file %1. Cannot "
                                       "reload the file for visualization")
                            .arg(path)});
  EXPECT_EQ(bridge.dataSources().front()->getOutput(), before);
}
