// Loading a state file against importing the same files without one, in the same run. Needs a
// display: run it under
//   xvfb-run -a -s "-screen 0 1600x1200x24" build/bench/bench-state-load
//
// The state holds 8 data sources (one .vti image file each, 64^3 points with a float array) shown in
// a grid of 4 split windows. BM_LoadState loads it into a new main widget; BM_ImportFiles imports the
// same 8 files into a new main widget already split into 4 windows; BM_SplitAndImportFiles also times
// the splits, as a user rebuilding the scene by hand would. All end with all views drawn. A loaded
// state also makes each data view (hidden) in every window and the windows themselves, which the
// plain import does not.
#include "ZRBenchRatioReporter.h"

#include "main/VXMainWidget.h"
#include "pipeline/VXPipeline.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXViewWidget.h"

#include <vtkFloatArray.h>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkXMLImageDataWriter.h>

#include <QApplication>
#include <QSurfaceFormat>
#include <QTemporaryDir>
#include <QVTKOpenGLNativeWidget.h>

#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace
{
constexpr int k_Sources = 8;
constexpr int k_Edge = 64;
constexpr int k_Windows = 4;

using Clock = std::chrono::steady_clock;

QTemporaryDir& tempDir()
{
  static QTemporaryDir s_Dir;
  return s_Dir;
}

QString dataFile(int index)
{
  return tempDir().filePath(QStringLiteral("source_%1.vti").arg(index));
}

QString stateFile()
{
  return tempDir().filePath(QStringLiteral("scene.ksxstate"));
}

void writeFiles()
{
  for (int index = 0; index < k_Sources; ++index)
  {
    vtkNew<vtkImageData> image;
    image->SetDimensions(k_Edge, k_Edge, k_Edge);
    image->SetOrigin(index * k_Edge, 0.0, 0.0);
    vtkNew<vtkFloatArray> values;
    values->SetName("Value");
    values->SetNumberOfTuples(image->GetNumberOfPoints());
    for (vtkIdType i = 0; i < image->GetNumberOfPoints(); ++i)
    {
      values->SetValue(i, static_cast<float>((i * (index + 3)) % 1000));
    }
    image->GetPointData()->SetScalars(values);
    vtkNew<vtkXMLImageDataWriter> writer;
    writer->SetInputData(image);
    writer->SetFileName(dataFile(index).toLocal8Bit().constData());
    writer->Write();
  }
}

void settle()
{
  for (int i = 0; i < 5; ++i)
  {
    QCoreApplication::processEvents();
  }
}

std::unique_ptr<VXMainWidget> newWidget()
{
  auto widget = std::make_unique<VXMainWidget>();
  widget->resize(1200, 800);
  widget->show();
  settle();
  return widget;
}

void splitIntoWindows(VXMainWidget& widget)
{
  for (int split = 1; split < k_Windows; ++split)
  {
    auto* view = qobject_cast<VXViewWidget*>(widget.getAllViewWidgets().back());
    split % 2 == 1 ? view->splitHorizontally() : view->splitVertically();
    settle();
  }
}

void importAll(VXMainWidget& widget)
{
  for (int index = 0; index < k_Sources; ++index)
  {
    widget.pipeline()->importFile(dataFile(index));
  }
}

void writeState()
{
  auto widget = newWidget();
  importAll(*widget);
  splitIntoWindows(*widget);
  if (!widget->saveStateToFile(stateFile()))
  {
    std::fprintf(stderr, "Could not write the state file\n");
    std::exit(1);
  }
}

void BM_LoadState(benchmark::State& state)
{
  for (auto _ : state)
  {
    auto widget = newWidget();
    const auto start = Clock::now();
    widget->loadState(stateFile());
    widget->renderAllViews();
    settle();
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
    if (widget->getAllViewWidgets().size() != k_Windows || widget->pipeline()->bridges().size() != k_Sources)
    {
      state.SkipWithError("the state did not load whole");
      break;
    }
  }
}
BENCHMARK(BM_LoadState)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

void BM_ImportFiles(benchmark::State& state)
{
  for (auto _ : state)
  {
    auto widget = newWidget();
    splitIntoWindows(*widget);
    const auto start = Clock::now();
    importAll(*widget);
    widget->renderAllViews();
    settle();
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
  }
}
BENCHMARK(BM_ImportFiles)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

// What a user does to rebuild the scene by hand: split the windows, then import.
void BM_SplitAndImportFiles(benchmark::State& state)
{
  for (auto _ : state)
  {
    auto widget = newWidget();
    const auto start = Clock::now();
    splitIntoWindows(*widget);
    importAll(*widget);
    widget->renderAllViews();
    settle();
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
  }
}
BENCHMARK(BM_SplitAndImportFiles)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char** argv)
{
  QSurfaceFormat::setDefaultFormat(QVTKOpenGLNativeWidget::defaultFormat());
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  // Files and the state made once, outside every measurement.
  writeFiles();
  writeState();
  ZRBenchRatioReporter reporter(std::vector<std::pair<std::string, std::string>>{
      {"BM_LoadState/iterations:5/manual_time", "BM_ImportFiles/iterations:5/manual_time"},
      {"BM_LoadState/iterations:5/manual_time", "BM_SplitAndImportFiles/iterations:5/manual_time"}});
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatios();
  std::printf("%d sources of %d^3 points in %d windows.\n", k_Sources, k_Edge, k_Windows);
  return 0;
}
