#include "data_bridge/VXQuietOutputWindow.h"
#include "data_bridge/ZRVtkDatasetReaders.h"

#include <QFile>
#include <QTemporaryDir>

#include <vtkDataSet.h>
#include <vtkLogger.h>
#include <vtkObjectFactory.h>
#include <vtkSmartPointer.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace
{
class NoisyReaderPart : public vtkObject
{
public:
  static NoisyReaderPart* New();
  vtkTypeMacro(NoisyReaderPart, vtkObject);
  void fail() { vtkErrorMacro("Cannot parse the header"); }
  void warn() { vtkWarningMacro("Unknown key ignored"); }
};
vtkStandardNewMacro(NoisyReaderPart);

// Puts the process's output window back after each test.
class VXQuietOutputWindowTest : public ::testing::Test
{
protected:
  void SetUp() override { m_Previous = vtkOutputWindow::GetInstance(); }
  void TearDown() override
  {
    vtkOutputWindow::SetInstance(m_Previous);
    vtkLogger::SetStderrVerbosity(vtkLogger::VERBOSITY_INFO);
  }

  static std::string StderrOf(const std::function<void()>& action)
  {
    ::testing::internal::CaptureStderr();
    action();
    return ::testing::internal::GetCapturedStderr();
  }

  vtkSmartPointer<vtkOutputWindow> m_Previous;
};
} // namespace

TEST_F(VXQuietOutputWindowTest, QuietDropsVtkTextsAndVerbosePrintsThem)
{
  vtkNew<NoisyReaderPart> noisy;
  VXQuietOutputWindow::Install(false);
  EXPECT_EQ(StderrOf(
                [&]
                {
                  noisy->fail();
                  noisy->warn();
                }),
            "");
  VXQuietOutputWindow::Install(true);
  const std::string printed = StderrOf(
      [&]
      {
        noisy->fail();
        noisy->warn();
      });
  EXPECT_NE(printed.find("Cannot parse the header"), std::string::npos) << printed;
  EXPECT_NE(printed.find("Unknown key ignored"), std::string::npos) << printed;
}

TEST_F(VXQuietOutputWindowTest, FailedReadsStillGiveTheirReasonWhenQuiet)
{
  QTemporaryDir dir;
  const QString path = dir.filePath("damaged.vtu");
  {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<?xml version=\"1.0\"?>\n<VTKFile type=\"UnstructuredGrid\" version=\"1.0\">\n<Unstruct");
  }
  VXQuietOutputWindow::Install(false);
  QString message;
  vtkSmartPointer<vtkDataSet> dataSet;
  EXPECT_EQ(StderrOf([&] { dataSet = ZRVtk::utils::Read(path, &message); }), "");
  EXPECT_EQ(dataSet, nullptr);
  EXPECT_FALSE(message.trimmed().isEmpty());
}
