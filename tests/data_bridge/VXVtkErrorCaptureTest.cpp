#include "data_bridge/VXVtkErrorCapture.h"

#include <vtkLogger.h>
#include <vtkObjectFactory.h>
#include <vtkOutputWindow.h>
#include <vtkPolyData.h>
#include <vtkSetGet.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{
// Stands in for the application's output window, to see what passes through a capture.
class RecordingOutputWindow : public vtkOutputWindow
{
public:
  static RecordingOutputWindow* New();
  vtkTypeMacro(RecordingOutputWindow, vtkOutputWindow);
  void DisplayText(const char* text) override { m_Lines.emplace_back(text); }
  std::vector<std::string> m_Lines;
};
vtkStandardNewMacro(RecordingOutputWindow);

// Installs a recording window for one test and puts the previous one back.
class VXVtkErrorCaptureTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    m_Previous = vtkOutputWindow::GetInstance();
    m_Recorder = vtkSmartPointer<RecordingOutputWindow>::New();
    vtkOutputWindow::SetInstance(m_Recorder);
  }
  void TearDown() override { vtkOutputWindow::SetInstance(m_Previous); }

  vtkSmartPointer<vtkOutputWindow> m_Previous;
  vtkSmartPointer<RecordingOutputWindow> m_Recorder;
};

// Raises errors and warnings the way VTK classes do.
class NoisyObject : public vtkObject
{
public:
  static NoisyObject* New();
  vtkTypeMacro(NoisyObject, vtkObject);
  void fail() { vtkErrorMacro("Cannot open file: missing.vti"); }
  void warn() { vtkWarningMacro("Unknown attribute ignored"); }
};
vtkStandardNewMacro(NoisyObject);
} // namespace

TEST(VXErrorObserverCleanMessage, StripsLocationAndObjectPrefix)
{
  EXPECT_EQ(VXErrorObserver::CleanMessage("ERROR: In /src/IO/XML/vtkXMLReader.cxx, line 291\n"
                                          "vtkXMLImageDataReader (0x55d1c0a0): Error opening file x.vti\n\n"),
            "Error opening file x.vti");
  EXPECT_EQ(
      VXErrorObserver::CleanMessage("Generic Warning: In vtkDataReader.cxx, line 1519\nError reading binary "
                                    "data!\n\n"),
      "Error reading binary data!");
  EXPECT_EQ(VXErrorObserver::CleanMessage("plain text"), "plain text");
  EXPECT_EQ(VXErrorObserver::CleanMessage(nullptr), "");
}

TEST_F(VXVtkErrorCaptureTest, WatchedAndUnwatchedErrorsAreCollectedAndStillShown)
{
  auto watched = vtkSmartPointer<NoisyObject>::New();
  auto unwatched = vtkSmartPointer<NoisyObject>::New();
  {
    VXVtkErrorCapture capture;
    capture.watch(watched);
    EXPECT_FALSE(capture.hasErrors());
    watched->fail();
    unwatched->fail();
    vtkGenericWarningMacro("a generic warning passes");
    EXPECT_TRUE(capture.hasErrors());
    // The same text twice is one line.
    EXPECT_EQ(capture.errorText(), "Cannot open file: missing.vti");
    capture.clear();
    EXPECT_FALSE(capture.hasErrors());
  }
  // VTK's own output is left as it is: both errors and the warning reach the application's window.
  ASSERT_EQ(m_Recorder->m_Lines.size(), 3u);
  EXPECT_NE(m_Recorder->m_Lines[0].find("Cannot open file: missing.vti"), std::string::npos);
  EXPECT_NE(m_Recorder->m_Lines[1].find("Cannot open file: missing.vti"), std::string::npos);
  EXPECT_NE(m_Recorder->m_Lines[2].find("a generic warning passes"), std::string::npos);
}

TEST_F(VXVtkErrorCaptureTest, WarningsCountAsErrorsWhenAsked)
{
  auto object = vtkSmartPointer<NoisyObject>::New();
  {
    VXVtkErrorCapture capture(true);
    capture.watch(object);
    object->warn();
    vtkGenericWarningMacro("Error reading binary data!");
    EXPECT_EQ(capture.errorText(), "Unknown attribute ignored\nError reading binary data!");
  }
  EXPECT_EQ(m_Recorder->m_Lines.size(), 2u);
}

TEST_F(VXVtkErrorCaptureTest, EverythingIsBackAfterTheCapture)
{
  auto object = vtkSmartPointer<NoisyObject>::New();
  const vtkLogger::Verbosity cutoff = vtkLogger::GetCurrentVerbosityCutoff();
  {
    VXVtkErrorCapture outer;
    {
      VXVtkErrorCapture inner;
      inner.watch(object);
      object->fail();
      EXPECT_TRUE(inner.hasErrors());
      // The inner capture passes the text on, so the enclosing one sees it too.
      EXPECT_TRUE(outer.hasErrors());
      outer.clear();
    }
    EXPECT_FALSE(object->HasObserver(vtkCommand::ErrorEvent));
    object->fail();
    EXPECT_TRUE(outer.hasErrors());
  }
  EXPECT_EQ(vtkOutputWindow::GetInstance(), m_Recorder.Get());
  EXPECT_EQ(vtkLogger::GetCurrentVerbosityCutoff(), cutoff);
  object->fail();
  // One line for each of the three failures: two passed through the captures, one after them.
  ASSERT_EQ(m_Recorder->m_Lines.size(), 3u);
  EXPECT_NE(m_Recorder->m_Lines.back().find("Cannot open file"), std::string::npos);
}

TEST(VXErrorObserverPipelineFailure, ExecutiveDumpGivesWayToTheReadersReason)
{
  const char* executive = "ERROR: In ./Common/ExecutionModel/vtkExecutive.cxx, line 752\n"
                          "vtkCompositeDataPipeline (0x55724c002c40): Algorithm "
                          "vtkXMLUnstructuredGridReader(0x55724bf27cd0) returned failure for request: "
                          "vtkInformation (0x55724c02a850)\n  Debug: Off\n  Modified Time: 53837\n\n";
  auto observer = vtkSmartPointer<VXErrorObserver>::New();
  observer->addMessage("ERROR: In ./IO/XML/vtkXMLReader.cxx, line 521\n"
                       "vtkXMLUnstructuredGridReader (0x55724bf27cd0): Error parsing input file.\n\n");
  observer->addMessage(executive);
  EXPECT_EQ(observer->errorText(), "Error parsing input file.");

  // Alone, the executive's note is all there is, and it is said in one line.
  auto alone = vtkSmartPointer<VXErrorObserver>::New();
  alone->addMessage(executive);
  EXPECT_TRUE(alone->hasErrors());
  EXPECT_EQ(alone->errorText(), "vtkXMLUnstructuredGridReader failed to produce its output.");
  alone->clear();
  EXPECT_FALSE(alone->hasErrors());
}
