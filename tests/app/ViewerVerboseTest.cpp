// VTK's own error dumps reach the viewer's standard error only with --verbose; without it, a file that
// cannot be read still gets its one line of reason.
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{
QString runViewerStderr(const QStringList& arguments, int* exitCode)
{
  QProcess process;
  process.start(QStringLiteral(ZR_TEST_BINARY_DIR "/bin/kestrix-viewer"), arguments);
  process.waitForFinished(120000);
  *exitCode = process.exitCode();
  return QString::fromUtf8(process.readAllStandardError());
}

// What VTK's messages look like, whichever way VTK prints them: "vtkXMLUnstructuredGridReader (0x55..):".
const QRegularExpression k_VtkDump(QStringLiteral("vtk\\w+ \\(0x[0-9a-fA-F]+\\)"));

class ViewerVerbose : public ::testing::Test
{
protected:
  void SetUp() override
  {
    QFile source(QStringLiteral(ZR_TEST_DATA_DIR "/vtk/unstructured.vtu"));
    ASSERT_TRUE(source.open(QIODevice::ReadOnly));
    QFile damaged(m_Dir.filePath("damaged.vtu"));
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write(source.readAll().left(400));
    QFile text(m_Dir.filePath("notapng.png"));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("plain text under the name of a picture\n");
    m_Files = QStringList{m_Dir.filePath("missing.vtp"), m_Dir.filePath("damaged.vtu"),
                          m_Dir.filePath("notapng.png")};
  }
  QTemporaryDir m_Dir;
  QStringList m_Files;
};
} // namespace

TEST_F(ViewerVerbose, UnreadableFilesGiveReasonsAndNoVtkDump)
{
  int exitCode = 0;
  const QString err = runViewerStderr(QStringList{"--list"} + m_Files, &exitCode);
  EXPECT_EQ(exitCode, 1);
  EXPECT_FALSE(err.contains(k_VtkDump)) << err.toStdString();
  EXPECT_TRUE(err.contains(QStringLiteral("The file '%1' does not exist.").arg(m_Files.at(0))))
      << err.toStdString();
  EXPECT_TRUE(err.contains(QStringLiteral("The PNG image '%1' cannot be read").arg(m_Files.at(2))))
      << err.toStdString();
  EXPECT_TRUE(err.contains(m_Files.at(1))) << err.toStdString();
}

TEST_F(ViewerVerbose, VerboseShowsVtksOwnMessages)
{
  int exitCode = 0;
  const QString err = runViewerStderr(QStringList{"--verbose", "--list"} + m_Files, &exitCode);
  EXPECT_EQ(exitCode, 1);
  EXPECT_TRUE(err.contains(k_VtkDump)) << err.toStdString();
}
