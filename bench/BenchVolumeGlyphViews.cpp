// The volume and glyph views as the pipeline builds them, against the bare toolkit in the same run.
// Needs a display: run it under
//   xvfb-run -a -s "-screen 0 1600x1200x24" build/bench/bench-volume-glyph-views
//
// 1. A 256^3 float image as a volume: first frame (the view is added to an imported data source and
//    drawn in a new window) and redraw, against a bare vtkSmartVolumeMapper with the same two-point
//    opacity ramp over the same image, linear interpolation and composite blending, drawn
//    - in a bare QVTKOpenGLNativeWidget of the size of our render widget, with our multisampling:
//      the kind of window the library draws in, so this ratio is our own overhead;
//    - in a plain vtkRenderWindow of the same size, for reference: a native window without Qt.
// 2. 10^6 arrow glyphs oriented by a vector array: first frame and redraw, against a bare
//    vtkGlyph3DMapper with the same arrow source and orientation.
// The process is warmed up first (GL driver, Qt platform, fonts): those one-time costs used to fall on
// whichever benchmark ran first, which was ours.
// Each view may cost no more than 10 % over the bare toolkit in the same kind of window (ratio <= 1.10).
#include "ZRBenchRatioReporter.h"

#include "data_views/VXGlyphRepPimpl.h"
#include "data_views/VXRepresentation.h"
#include "data_views/VXVolumeRepPimpl.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXViewGridWidget.h"
#include "views/VXVisualizationWidget.h"

#include <vtkActor.h>
#include <vtkArrowSource.h>
#include <vtkCamera.h>
#include <vtkCellArray.h>
#include <vtkColorTransferFunction.h>
#include <vtkFloatArray.h>
#include <vtkGlyph3DMapper.h>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPiecewiseFunction.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkRenderWindow.h>
#include <vtkRenderer.h>
#include <vtkSmartVolumeMapper.h>
#include <vtkVolume.h>
#include <vtkVolumeProperty.h>

#include <QApplication>
#include <QSurfaceFormat>
#include <QTest>
#include <QVTKOpenGLNativeWidget.h>
#include <vtkGenericOpenGLRenderWindow.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace
{
constexpr int k_Width = 800;
constexpr int k_Height = 600;
constexpr int k_ImageSize = 256;
constexpr int k_GlyphSide = 1000; // 10^6 glyphs
constexpr int k_FramesPerIteration = 3;

using Clock = std::chrono::steady_clock;

// The size and multisampling of our render widget in a k_Width x k_Height view grid (the grid's frame
// and title bar take some pixels): the bare Qt window is made alike, so both draw as many pixels.
QSize s_RenderSize(k_Width, k_Height);
int s_MultiSamples = 0;

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

vtkImageData* image()
{
  static vtkSmartPointer<vtkImageData> s_Image;
  if (s_Image == nullptr)
  {
    s_Image = vtkSmartPointer<vtkImageData>::New();
    s_Image->SetDimensions(k_ImageSize, k_ImageSize, k_ImageSize);
    vtkNew<vtkFloatArray> values;
    values->SetName("Distance");
    values->SetNumberOfTuples(vtkIdType(k_ImageSize) * k_ImageSize * k_ImageSize);
    const double centre = (k_ImageSize - 1) / 2.0;
    vtkIdType id = 0;
    for (int z = 0; z < k_ImageSize; ++z)
      for (int y = 0; y < k_ImageSize; ++y)
        for (int x = 0; x < k_ImageSize; ++x)
        {
          const double dx = x - centre, dy = y - centre, dz = z - centre;
          values->SetValue(id++, static_cast<float>(std::sqrt(dx * dx + dy * dy + dz * dz)));
        }
    s_Image->GetPointData()->AddArray(values);
  }
  return s_Image;
}

vtkPolyData* glyphPoints()
{
  static vtkSmartPointer<vtkPolyData> s_Points;
  if (s_Points == nullptr)
  {
    s_Points = vtkSmartPointer<vtkPolyData>::New();
    vtkNew<vtkPoints> points;
    vtkNew<vtkCellArray> vertices;
    vtkNew<vtkFloatArray> direction;
    direction->SetName("Direction");
    direction->SetNumberOfComponents(3);
    for (int y = 0; y < k_GlyphSide; ++y)
      for (int x = 0; x < k_GlyphSide; ++x)
      {
        const vtkIdType id = points->InsertNextPoint(x, y, 0.0);
        vertices->InsertNextCell(1, &id);
        const double angle = 0.01 * (x + y);
        direction->InsertNextTuple3(std::cos(angle), std::sin(angle), 0.0);
      }
    s_Points->SetPoints(points);
    s_Points->SetVerts(vertices);
    s_Points->GetPointData()->AddArray(direction);
  }
  return s_Points;
}

// The data reaches our pipeline as a data source of an in-memory "file" bridge: one trivial producer.
struct OurScene
{
  explicit OurScene(vtkDataObject* data, VXRepresentation::Type type)
  {
    grid.resize(k_Width, k_Height);
    grid.show();
    QTest::qWaitForWindowExposed(&grid);
    pipeline.setActiveViewWidget(grid.activeView());
    visualization = grid.activeView()->getVisualizationWidget();
    dataSource = new VXDataSource(&pipeline);
    dataSource->setPipeline(&pipeline);
    dataSource->setDataSet(vtkDataSet::SafeDownCast(data));
    pipeline.addRepresentation(dataSource, type);
    representation = dataSource->findChildren<VXRepresentation*>().value(0);
    visualization->resetCamera();
  }

  void draw() { visualization->renderWindow()->Render(); }

  VXViewGridWidget grid;
  VXPipeline pipeline;
  VXDataSource* dataSource = nullptr;
  VXRepresentation* representation = nullptr;
  VXVisualizationWidget* visualization = nullptr;
};

struct BareScene
{
  BareScene()
  {
    window->SetSize(k_Width, k_Height);
    window->SetMultiSamples(0);
    window->AddRenderer(renderer);
  }
  vtkNew<vtkRenderWindow> window;
  vtkNew<vtkRenderer> renderer;
};

// The bare toolkit in the kind of window the library draws in.
struct BareQtScene
{
  BareQtScene()
  {
    window->SetMultiSamples(s_MultiSamples);
    widget.setRenderWindow(window);
    window->AddRenderer(renderer);
    widget.resize(s_RenderSize);
    widget.show();
    QTest::qWaitForWindowExposed(&widget);
  }
  QVTKOpenGLNativeWidget widget;
  vtkNew<vtkGenericOpenGLRenderWindow> window;
  vtkNew<vtkRenderer> renderer;
};

void addBareVolumeTo(vtkRenderer* renderer);

void addBareVolume(BareScene& scene)
{
  addBareVolumeTo(scene.renderer);
}

void addBareVolumeTo(vtkRenderer* renderer)
{
  vtkNew<vtkSmartVolumeMapper> mapper;
  mapper->SetInputData(image());
  mapper->SetScalarModeToUsePointFieldData();
  mapper->SelectScalarArray("Distance");
  double range[2];
  image()->GetPointData()->GetArray("Distance")->GetRange(range);
  vtkNew<vtkColorTransferFunction> colours;
  colours->AddRGBPoint(range[0], 0.23, 0.30, 0.75);
  colours->AddRGBPoint(range[1], 0.71, 0.02, 0.15);
  vtkNew<vtkPiecewiseFunction> opacity;
  opacity->AddPoint(range[0], 0.0);
  opacity->AddPoint(range[1], 1.0);
  vtkNew<vtkVolumeProperty> property;
  property->SetColor(colours);
  property->SetScalarOpacity(opacity);
  property->SetInterpolationTypeToLinear();
  vtkNew<vtkVolume> volume;
  volume->SetMapper(mapper);
  volume->SetProperty(property);
  renderer->AddVolume(volume);
  renderer->ResetCamera();
}

void addBareGlyphs(BareScene& scene)
{
  // The arrow of the glyph view.
  vtkNew<vtkArrowSource> arrow;
  arrow->SetTipResolution(16);
  arrow->SetShaftResolution(16);
  arrow->SetTipLength(0.3);
  arrow->SetTipRadius(0.1);
  vtkNew<vtkGlyph3DMapper> mapper;
  mapper->SetInputData(glyphPoints());
  mapper->SetSourceConnection(arrow->GetOutputPort());
  mapper->OrientOn();
  mapper->SetOrientationArray("Direction");
  mapper->SetScaleFactor(0.8);
  vtkNew<vtkActor> actor;
  actor->SetMapper(mapper);
  scene.renderer->AddActor(actor);
  scene.renderer->ResetCamera();
}

void BM_OurVolumeFirstFrame(benchmark::State& state)
{
  for (auto _ : state)
  {
    const auto start = Clock::now();
    OurScene scene(image(), VXRepresentation::Volume);
    scene.draw();
    state.SetIterationTime(seconds(start));
  }
}

void BM_BareVolumeFirstFrame(benchmark::State& state)
{
  for (auto _ : state)
  {
    const auto start = Clock::now();
    BareScene scene;
    addBareVolume(scene);
    scene.window->Render();
    state.SetIterationTime(seconds(start));
  }
}

void BM_BareQtVolumeFirstFrame(benchmark::State& state)
{
  for (auto _ : state)
  {
    const auto start = Clock::now();
    BareQtScene scene;
    addBareVolumeTo(scene.renderer);
    scene.window->Render();
    state.SetIterationTime(seconds(start));
  }
}

void BM_BareQtVolumeRedraw(benchmark::State& state)
{
  BareQtScene scene;
  addBareVolumeTo(scene.renderer);
  scene.window->Render();
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

void BM_OurVolumeRedraw(benchmark::State& state)
{
  OurScene scene(image(), VXRepresentation::Volume);
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

void BM_BareVolumeRedraw(benchmark::State& state)
{
  BareScene scene;
  addBareVolume(scene);
  scene.window->Render();
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

OurScene* orientGlyphs(OurScene* scene)
{
  if (scene->representation != nullptr)
  {
    for (VXRepresentationPimpl* implementation : scene->representation->getDataViewSplits())
    {
      if (auto* glyphs = dynamic_cast<VXGlyphRepPimpl*>(implementation))
      {
        glyphs->setOrientationArray(QStringLiteral("Direction"));
        glyphs->setScaleFactor(0.8);
      }
    }
  }
  return scene;
}

void BM_OurGlyphsFirstFrame(benchmark::State& state)
{
  for (auto _ : state)
  {
    const auto start = Clock::now();
    OurScene scene(glyphPoints(), VXRepresentation::Glyph);
    orientGlyphs(&scene)->draw();
    state.SetIterationTime(seconds(start));
  }
}

void BM_BareGlyphsFirstFrame(benchmark::State& state)
{
  for (auto _ : state)
  {
    const auto start = Clock::now();
    BareScene scene;
    addBareGlyphs(scene);
    scene.window->Render();
    state.SetIterationTime(seconds(start));
  }
}

void BM_OurGlyphsRedraw(benchmark::State& state)
{
  OurScene scene(glyphPoints(), VXRepresentation::Glyph);
  orientGlyphs(&scene)->draw();
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

void BM_BareGlyphsRedraw(benchmark::State& state)
{
  BareScene scene;
  addBareGlyphs(scene);
  scene.window->Render();
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

BENCHMARK(BM_OurVolumeFirstFrame)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_BareQtVolumeFirstFrame)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_BareVolumeFirstFrame)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_OurVolumeRedraw)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_BareQtVolumeRedraw)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_BareVolumeRedraw)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_OurGlyphsFirstFrame)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_BareGlyphsFirstFrame)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_OurGlyphsRedraw)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_BareGlyphsRedraw)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(2);
} // namespace

int main(int argc, char** argv)
{
  QSurfaceFormat::setDefaultFormat(QVTKOpenGLNativeWidget::defaultFormat());
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  // Data made once, outside every measurement.
  image();
  glyphPoints();
  {
    // One frame of each kind of window before any measurement, and the size of our render widget.
    OurScene probe(image(), VXRepresentation::Volume);
    probe.draw();
    s_RenderSize = probe.visualization->size();
    s_MultiSamples = probe.visualization->renderWindow()->GetMultiSamples();
    BareScene bare;
    addBareVolume(bare);
    bare.window->Render();
  }
  ZRBenchRatioReporter reporter(
      {{"BM_OurVolumeFirstFrame/iterations:3/manual_time",
        "BM_BareQtVolumeFirstFrame/iterations:3/manual_time"},
       {"BM_OurVolumeRedraw/iterations:5/manual_time", "BM_BareQtVolumeRedraw/iterations:5/manual_time"},
       {"BM_OurVolumeFirstFrame/iterations:3/manual_time",
        "BM_BareVolumeFirstFrame/iterations:3/manual_time"},
       {"BM_OurVolumeRedraw/iterations:5/manual_time", "BM_BareVolumeRedraw/iterations:5/manual_time"},
       {"BM_OurGlyphsFirstFrame/iterations:2/manual_time",
        "BM_BareGlyphsFirstFrame/iterations:2/manual_time"},
       {"BM_OurGlyphsRedraw/iterations:2/manual_time", "BM_BareGlyphsRedraw/iterations:2/manual_time"}});
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatios();
  std::printf(
      "Volume baselines: BareQt is a bare vtkSmartVolumeMapper in a QVTKOpenGLNativeWidget of %dx%d\n"
      "pixels (our render widget's size) with %d multisamples, the kind of window the library draws\n"
      "in; Bare is the same mapper in a plain %dx%d vtkRenderWindow, for reference. Against Bare, the\n"
      "first frame also pays for Qt's window and GL context (an OpenGL widget renders into a frame\n"
      "buffer that Qt then composes), which is the host's choice of window, not the view's. Against\n"
      "BareQt what remains is the view frame drawn with every view: the grid cell with its title bar\n"
      "and toolbar, the orientation marker and the focal point cursor, which are the intended picture.\n",
      s_RenderSize.width(), s_RenderSize.height(), s_MultiSamples, k_Width, k_Height);
  std::printf("Limit: ratio <= 1.10 against the bare toolkit in the same kind of window for first frames and "
              "redraws.\n");
  return 0;
}
