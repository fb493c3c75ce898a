// The surface view as the pipeline builds it, against the bare toolkit in the same run. Needs a
// display: run it under
//   xvfb-run -a -s "-screen 0 1600x1200x24" build/bench/bench-surface-view
//
// 1. A one-million-triangle .vtp coloured by a cell array: first frame (import, colouring and drawing
//    in a new view grid) and redraw, against a plain vtkPolyDataMapper coloured by the same array over
//    the same range in a window of the same size without multisampling. Limit: ratio <= 1.10.
// 2. Switching the colour array of a 256^3 image with two cell arrays, after both were shown once,
//    against one range scan of one array (GetRange after Modified). Switching must neither copy data
//    nor rescan known ranges: the ratio should stay far below 1, and memory should not grow.
#include "ZRBenchRatioReporter.h"

#include "data_views/VXPointsRepPimpl.h"
#include "data_views/VXRepresentation.h"
#include "data_views/VXSurfaceRepPimpl.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXViewGridWidget.h"
#include "views/VXVisualizationWidget.h"

#include <vtkActor.h>
#include <vtkCallbackCommand.h>
#include <vtkCamera.h>
#include <vtkCellData.h>
#include <vtkFloatArray.h>
#include <vtkImageData.h>
#include <vtkLookupTable.h>
#include <vtkNew.h>
#include <vtkPolyData.h>
#include <vtkPolyDataMapper.h>
#include <vtkRenderWindow.h>
#include <vtkRenderer.h>
#include <vtkSphereSource.h>
#include <vtkXMLImageDataWriter.h>
#include <vtkXMLPolyDataReader.h>
#include <vtkXMLPolyDataWriter.h>

#include <QApplication>
#include <QSurfaceFormat>
#include <QTemporaryDir>
#include <QVTKOpenGLNativeWidget.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <unistd.h>

namespace
{
constexpr int k_Width = 1280;
constexpr int k_Height = 1024;
constexpr int k_MultiSamples = 0; // as our window on CPU rasterizers
constexpr int k_FramesPerIteration = 3;
constexpr int k_ImageCells = 256;
constexpr const char* k_SurfaceArray = "CellValue";
constexpr const char* k_ImageArrays[2] = {"Temperature", "Pressure"};

using Clock = std::chrono::steady_clock;

QTemporaryDir& tempDir()
{
  static QTemporaryDir s_Dir;
  return s_Dir;
}

QString surfaceFile()
{
  return tempDir().filePath(QStringLiteral("surface.vtp"));
}

QString imageFile()
{
  return tempDir().filePath(QStringLiteral("image.vti"));
}

// The size of our render area inside the view grid, which the bare window copies.
int s_RenderWidth = k_Width;
int s_RenderHeight = k_Height;

double seconds(Clock::time_point start)
{
  return std::chrono::duration<double>(Clock::now() - start).count();
}

template<typename Frame>
double fastestOf(int count, Frame frame)
{
  double fastest = 1e30;
  for (int i = 0; i < count; ++i)
  {
    const auto start = Clock::now();
    frame();
    fastest = std::min(fastest, seconds(start));
  }
  return fastest;
}

// About one million triangles (a sphere of 1000 x 502 facets) with a float cell array.
void writeSurface()
{
  vtkNew<vtkSphereSource> sphere;
  sphere->SetThetaResolution(1000);
  sphere->SetPhiResolution(502);
  sphere->Update();
  vtkPolyData* output = sphere->GetOutput();
  vtkNew<vtkFloatArray> values;
  values->SetName(k_SurfaceArray);
  values->SetNumberOfValues(output->GetNumberOfCells());
  for (vtkIdType cell = 0; cell < output->GetNumberOfCells(); ++cell)
  {
    values->SetValue(cell, static_cast<float>(cell % 997));
  }
  output->GetCellData()->AddArray(values);
  vtkNew<vtkXMLPolyDataWriter> writer;
  writer->SetInputData(output);
  writer->SetFileName(surfaceFile().toLocal8Bit().constData());
  writer->Write();
}

vtkSmartPointer<vtkImageData> makeImage()
{
  auto image = vtkSmartPointer<vtkImageData>::New();
  image->SetDimensions(k_ImageCells + 1, k_ImageCells + 1, k_ImageCells + 1);
  const vtkIdType cells = image->GetNumberOfCells();
  for (int a = 0; a < 2; ++a)
  {
    vtkNew<vtkFloatArray> values;
    values->SetName(k_ImageArrays[a]);
    values->SetNumberOfValues(cells);
    for (vtkIdType cell = 0; cell < cells; ++cell)
    {
      values->SetValue(cell, static_cast<float>((cell * (a + 3)) % 10007));
    }
    image->GetCellData()->AddArray(values);
  }
  return image;
}

void writeImage()
{
  vtkNew<vtkXMLImageDataWriter> writer;
  writer->SetInputData(makeImage());
  writer->SetFileName(imageFile().toLocal8Bit().constData());
  writer->Write();
}

double residentMiB()
{
  std::ifstream statm("/proc/self/statm");
  long pages = 0;
  long resident = 0;
  statm >> pages >> resident;
  return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
}

/** Counts finished frames of a renderer. */
struct FrameCounter
{
  explicit FrameCounter(vtkRenderer* renderer)
      : renderer(renderer)
  {
    callback->SetClientData(&frames);
    callback->SetCallback([](vtkObject*, unsigned long, void* data, void*) { ++*static_cast<int*>(data); });
    tag = renderer->AddObserver(vtkCommand::EndEvent, callback);
  }
  ~FrameCounter() { renderer->RemoveObserver(tag); }
  vtkRenderer* renderer;
  unsigned long tag = 0;
  int frames = 0;
  vtkNew<vtkCallbackCommand> callback;
};

void waitForFrame(const FrameCounter& counter, int before)
{
  while (counter.frames <= before)
  {
    QApplication::processEvents(QEventLoop::AllEvents, 5);
  }
}

/** A view grid with a pipeline whose active view shows one imported file with its default view. */
struct OurScene
{
  explicit OurScene(const QString& file)
  {
    grid.resize(k_Width, k_Height);
    visualization = grid.activeView()->getVisualizationWidget();
    counter = std::make_unique<FrameCounter>(visualization->getRenderer());
    grid.show();
    pipeline.setActiveViewWidget(grid.activeView());
    VXBridgeObject* bridge = pipeline.importFile(file);
    if (bridge != nullptr && bridge->dataSources().size() == 1)
    {
      const QList<VXRepresentation*> views = bridge->dataSources().front()->findChildren<VXRepresentation*>();
      if (views.size() == 1)
      {
        view = dynamic_cast<VXPointsRepPimpl*>(views.front()->implementation(grid.activeView()));
      }
    }
    if (view == nullptr)
    {
      std::fprintf(stderr, "no coloured data view was made for %s\n", qPrintable(file));
      std::exit(1);
    }
  }

  // Asks for a frame and waits until it is drawn.
  void draw()
  {
    const int before = counter->frames;
    visualization->render();
    waitForFrame(*counter, before);
  }

  VXViewGridWidget grid;
  VXPipeline pipeline;
  VXVisualizationWidget* visualization = nullptr;
  std::unique_ptr<FrameCounter> counter;
  VXPointsRepPimpl* view = nullptr;
};

// Where a first frame's time goes, for the counters of the first-frame benchmarks (milliseconds).
struct Phases
{
  double load = 0.0;   // window, import (ours) or reading (bare)
  double colour = 0.0; // choosing the array (ours)
  double draw = 0.0;   // up to the end of the first coloured frame
};

double ourFirstFrame(Phases& phases)
{
  const auto start = Clock::now();
  OurScene scene(surfaceFile());
  const auto loaded = Clock::now();
  scene.view->setActiveArray(QString::fromLatin1(k_SurfaceArray));
  scene.visualization->resetCamera();
  const auto coloured = Clock::now();
  scene.draw();
  const double elapsed = seconds(start);
  phases.load += std::chrono::duration<double, std::milli>(loaded - start).count();
  phases.colour += std::chrono::duration<double, std::milli>(coloured - loaded).count();
  phases.draw += std::chrono::duration<double, std::milli>(Clock::now() - coloured).count();
  s_RenderWidth = scene.visualization->width();
  s_RenderHeight = scene.visualization->height();
  return elapsed;
}

/** The bare toolkit: reader, mapper coloured by the cell array over its range, window, renderer. */
struct BareScene
{
  BareScene()
  {
    const auto start = Clock::now();
    reader->SetFileName(surfaceFile().toLocal8Bit().constData());
    reader->Update();
    readMs = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    double range[2];
    reader->GetOutput()->GetCellData()->GetArray(k_SurfaceArray)->GetRange(range, -1);
    table->SetNumberOfTableValues(256);
    table->SetRange(range);
    table->Build();
    mapper->SetInputConnection(reader->GetOutputPort());
    mapper->SetScalarModeToUseCellFieldData();
    mapper->SelectColorArray(k_SurfaceArray);
    mapper->SetLookupTable(table);
    mapper->SetUseLookupTableScalarRange(true);
    mapper->ScalarVisibilityOn();
    actor->SetMapper(mapper);
    window->SetSize(s_RenderWidth, s_RenderHeight);
    window->SetMultiSamples(k_MultiSamples);
    window->AddRenderer(renderer);
    renderer->AddActor(actor);
    renderer->ResetCamera();
    window->Render();
  }

  double readMs = 0.0;
  vtkNew<vtkXMLPolyDataReader> reader;
  vtkNew<vtkLookupTable> table;
  vtkNew<vtkPolyDataMapper> mapper;
  vtkNew<vtkActor> actor;
  vtkNew<vtkRenderWindow> window;
  vtkNew<vtkRenderer> renderer;
};

double bareFirstFrame(Phases& phases)
{
  const auto start = Clock::now();
  BareScene scene;
  const double elapsed = seconds(start);
  phases.load += scene.readMs;
  phases.draw += elapsed * 1000.0 - scene.readMs;
  return elapsed;
}

void reportPhases(benchmark::State& state, const Phases& phases)
{
  const double n = static_cast<double>(state.iterations());
  state.counters["load_ms"] = phases.load / n;
  state.counters["colour_ms"] = phases.colour / n;
  state.counters["draw_ms"] = phases.draw / n;
}

// One untimed round first: the first window of a process also loads fonts, icons and the driver.
void BM_OurSurfaceFirstFrame(benchmark::State& state)
{
  Phases warmUp;
  ourFirstFrame(warmUp);
  Phases phases;
  for (auto _ : state)
  {
    state.SetIterationTime(ourFirstFrame(phases));
  }
  reportPhases(state, phases);
}

void BM_BareSurfaceFirstFrame(benchmark::State& state)
{
  Phases warmUp;
  bareFirstFrame(warmUp);
  Phases phases;
  for (auto _ : state)
  {
    state.SetIterationTime(bareFirstFrame(phases));
  }
  reportPhases(state, phases);
}

void BM_OurSurfaceRedraw(benchmark::State& state)
{
  OurScene scene(surfaceFile());
  scene.view->setActiveArray(QString::fromLatin1(k_SurfaceArray));
  scene.visualization->resetCamera();
  scene.draw();
  for (auto _ : state)
  {
    state.SetIterationTime(fastestOf(k_FramesPerIteration,
                                     [&scene]()
                                     {
                                       scene.visualization->getRenderer()->GetActiveCamera()->Azimuth(1.0);
                                       scene.draw();
                                     }));
  }
}

void BM_BareSurfaceRedraw(benchmark::State& state)
{
  BareScene scene;
  for (auto _ : state)
  {
    state.SetIterationTime(fastestOf(k_FramesPerIteration,
                                     [&scene]()
                                     {
                                       scene.renderer->GetActiveCamera()->Azimuth(1.0);
                                       scene.window->Render();
                                     }));
  }
}

// Switching between two arrays that were both shown once: the colouring only, no frame.
void BM_SwitchImageArray(benchmark::State& state)
{
  OurScene scene(imageFile());
  for (const char* name : k_ImageArrays)
  {
    scene.view->setActiveArray(QString::fromLatin1(name));
    scene.draw();
  }
  int next = 0;
  const double before = residentMiB();
  for (auto _ : state)
  {
    const auto start = Clock::now();
    scene.view->setActiveArray(QString::fromLatin1(k_ImageArrays[next]));
    state.SetIterationTime(seconds(start));
    next = 1 - next;
  }
  state.counters["rss_growth_MiB"] = residentMiB() - before;
}

// One range scan of one array of the same image, after Modified() dropped the cached range.
void BM_ScanImageArrayRange(benchmark::State& state)
{
  vtkSmartPointer<vtkImageData> image = makeImage();
  vtkDataArray* array = image->GetCellData()->GetArray(k_ImageArrays[0]);
  for (auto _ : state)
  {
    array->Modified();
    const auto start = Clock::now();
    double range[2];
    array->GetRange(range, 0);
    state.SetIterationTime(seconds(start));
    benchmark::DoNotOptimize(range);
  }
}

BENCHMARK(BM_OurSurfaceFirstFrame)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_BareSurfaceFirstFrame)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_OurSurfaceRedraw)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_BareSurfaceRedraw)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_SwitchImageArray)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_ScanImageArrayRange)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
} // namespace

int main(int argc, char** argv)
{
  QSurfaceFormat::setDefaultFormat(QVTKOpenGLNativeWidget::defaultFormat());
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  VXPipeline::setDefaultTriangleRepType(VXRepresentation::Surface);
  VXPipeline::setDefaultImageGeomRepType(VXRepresentation::Surface);
  // Files made once, outside every measurement.
  writeSurface();
  writeImage();
  ZRBenchRatioReporter reporter(
      {{"BM_OurSurfaceFirstFrame/iterations:5/manual_time",
        "BM_BareSurfaceFirstFrame/iterations:5/manual_time"},
       {"BM_OurSurfaceRedraw/iterations:10/manual_time", "BM_BareSurfaceRedraw/iterations:10/manual_time"},
       {"BM_SwitchImageArray/iterations:20/manual_time", "BM_ScanImageArrayRange/iterations:5/manual_time"}});
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatios();
  std::printf("Render area %d x %d. Limit for the surface view: ratio <= 1.10 against the bare toolkit.\n",
              s_RenderWidth, s_RenderHeight);
  const double growth = reporter.counter("BM_SwitchImageArray/iterations:20/manual_time", "rss_growth_MiB");
  std::printf("Array switch on a %d^3 image: resident memory %+.1f MiB across 20 switches%s.\n", k_ImageCells,
              growth, growth > 8.0 ? " (grows)" : " (no growth)");
  return 0;
}
