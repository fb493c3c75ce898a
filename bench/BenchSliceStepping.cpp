// Stepping the image slice view through a 512^3 image, against a bare vtkImageSliceMapper of the same
// data in the same run. Needs a display: run it under
//   xvfb-run -a -s "-screen 0 1600x1200x24" build/bench/bench-slice-stepping
//
// Each iteration moves to the next slice and draws one frame, along z (XY planes) and along x (YZ
// planes), in the same render window and with the same colour map for both, so that the ratio is the
// cost of the view itself. Limit: ratio <= 1.10. The counters show that stepping copies nothing: the drawn
// image shares the input's array (array_shared = 1) and the resident memory does not grow (rss_growth_MiB
// near 0).
#include "ZRBenchRatioReporter.h"

#include "colour/VXLookupTable.h"
#include "data_views/VXImageSliceRep.h"
#include "data_views/VXImageSliceRepPimpl.h"
#include "data_views/VXOpenGLImageSliceMapper.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXViewGridWidget.h"
#include "views/VXVisualizationWidget.h"

#include <vtkCellData.h>
#include <vtkImageData.h>
#include <vtkImageProperty.h>
#include <vtkImageSlice.h>
#include <vtkImageSliceMapper.h>
#include <vtkLookupTable.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkRenderWindow.h>
#include <vtkRenderer.h>
#include <vtkTrivialProducer.h>
#include <vtkUnsignedCharArray.h>

#include <QApplication>
#include <QSurfaceFormat>
#include <QVTKOpenGLNativeWidget.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <memory>
#include <unistd.h>

namespace
{
constexpr int k_Cells = 512;
constexpr int k_Width = 800;
constexpr int k_Height = 600;

using Clock = std::chrono::steady_clock;

double residentMiB()
{
  std::ifstream statm("/proc/self/statm");
  long pages = 0;
  long resident = 0;
  statm >> pages >> resident;
  return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
}

// One byte per cell, made once: the view gets it as cells, the bare mapper the same array as points.
vtkUnsignedCharArray* values()
{
  static vtkSmartPointer<vtkUnsignedCharArray> s_Values;
  if (s_Values == nullptr)
  {
    s_Values = vtkSmartPointer<vtkUnsignedCharArray>::New();
    s_Values->SetName("Grey");
    const vtkIdType count = static_cast<vtkIdType>(k_Cells) * k_Cells * k_Cells;
    s_Values->SetNumberOfValues(count);
    unsigned char* data = s_Values->GetPointer(0);
    for (vtkIdType i = 0; i < count; ++i)
    {
      data[i] = static_cast<unsigned char>((i * 7 + i / 4093) & 0xFF);
    }
  }
  return s_Values;
}

struct OurScene
{
  OurScene()
  {
    image->SetDimensions(k_Cells + 1, k_Cells + 1, k_Cells + 1);
    image->GetCellData()->SetScalars(values());
    producer->SetOutput(image);
    grid.resize(k_Width, k_Height);
    grid.show();
    QApplication::processEvents();
    view = grid.activeView();
    representation = new VXImageSliceRep(&grid);
    representation->addViewWidgetSplit(nullptr, view, producer->GetOutputPort(), true);
    slice = qobject_cast<VXImageSliceRepPimpl*>(representation->implementation(view));
    if (slice == nullptr || !slice->hasImage())
    {
      std::fprintf(stderr, "the image slice view was not made\n");
      std::exit(1);
    }
    window = view->getVisualizationWidget()->getRenderer()->GetRenderWindow();
    view->getVisualizationWidget()->resetCamera();
    window->Render();
  }

  bool arrayShared() const { return slice->sliceImage()->GetPointData()->GetScalars() == values(); }

  vtkNew<vtkImageData> image;
  vtkNew<vtkTrivialProducer> producer;
  VXViewGridWidget grid;
  VXAbstractViewWidget* view = nullptr;
  VXImageSliceRep* representation = nullptr;
  VXImageSliceRepPimpl* slice = nullptr;
  vtkRenderWindow* window = nullptr;
};

// The bare toolkit in the same render window, with the same colours: an image of the same bytes as
// points, a plain vtkImageSliceMapper and the view's own colour transfer function. The view's slice
// is hidden meanwhile, so each frame draws one slice either way.
struct BareScene
{
  BareScene(OurScene& ours, int orientation)
      : ours(ours)
  {
    image->SetDimensions(k_Cells, k_Cells, k_Cells);
    image->GetPointData()->SetScalars(values());
    mapper->SetInputData(image);
    mapper->SetOrientation(orientation);
    slice->SetMapper(mapper);
    slice->GetProperty()->SetLookupTable(ours.slice->lookupTable()->getColorTransferFunction());
    slice->GetProperty()->UseLookupTableScalarRangeOn();
    slice->GetProperty()->SetInterpolationTypeToNearest();
    ours.slice->imageSlice()->SetVisibility(false);
    renderer()->AddViewProp(slice);
    ours.window->Render();
  }

  ~BareScene()
  {
    renderer()->RemoveViewProp(slice);
    ours.slice->imageSlice()->SetVisibility(true);
  }

  vtkRenderer* renderer() const { return ours.view->getVisualizationWidget()->getRenderer(); }

  OurScene& ours;
  vtkNew<vtkImageData> image;
  vtkNew<vtkImageSliceMapper> mapper;
  vtkNew<vtkImageSlice> slice;
};

std::unique_ptr<OurScene> s_Ours;

void BM_OurSliceStep(benchmark::State& state)
{
  const auto direction = static_cast<ZRVtkModule::constants::SliceDirection>(state.range(0));
  OurScene& scene = *s_Ours;
  scene.slice->updateSliceDirection(direction);
  scene.view->getVisualizationWidget()->resetCamera();
  scene.window->Render();
  int next = 0;
  for (int warmUp = 0; warmUp < 10; ++warmUp)
  {
    next = (next + 1) % k_Cells;
    scene.slice->setSliceNumber(next);
    scene.window->Render();
  }
  const double before = residentMiB();
  for (auto _ : state)
  {
    next = (next + 1) % k_Cells;
    scene.slice->setSliceNumber(next);
    scene.window->Render();
  }
  state.counters["rss_growth_MiB"] = residentMiB() - before;
  state.counters["array_shared"] = scene.arrayShared() ? 1.0 : 0.0;
}

// The view's own mapper and filter stepped directly, without the view's bookkeeping: where the time
// goes when the view is slower than the bare mapper.
void BM_OurMapperStep(benchmark::State& state)
{
  const auto direction = static_cast<ZRVtkModule::constants::SliceDirection>(state.range(0));
  OurScene& scene = *s_Ours;
  scene.slice->updateSliceDirection(direction);
  scene.window->Render();
  int next = 0;
  for (auto _ : state)
  {
    next = (next + 1) % k_Cells;
    scene.slice->sliceMapper()->SetSliceNumber(next);
    scene.window->Render();
  }
}

void BM_BareSliceStep(benchmark::State& state)
{
  // The slice view's direction 0 steps in z (orientation 2), direction 1 in x (orientation 0).
  const int orientation = state.range(0) == 0 ? 2 : 0;
  BareScene scene(*s_Ours, orientation);
  int next = 0;
  for (int warmUp = 0; warmUp < 10; ++warmUp)
  {
    next = (next + 1) % k_Cells;
    scene.mapper->SetSliceNumber(next);
    scene.ours.window->Render();
  }
  const double before = residentMiB();
  for (auto _ : state)
  {
    next = (next + 1) % k_Cells;
    scene.mapper->SetSliceNumber(next);
    scene.ours.window->Render();
  }
  state.counters["rss_growth_MiB"] = residentMiB() - before;
}

// Ours and the bare mapper take turns per axis, so that both meet the machine in the same state.
BENCHMARK(BM_OurSliceStep)->Arg(0)->Unit(benchmark::kMillisecond)->Iterations(60);
BENCHMARK(BM_BareSliceStep)->Arg(0)->Unit(benchmark::kMillisecond)->Iterations(60);
BENCHMARK(BM_OurMapperStep)->Arg(0)->Unit(benchmark::kMillisecond)->Iterations(60);
BENCHMARK(BM_OurSliceStep)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(60);
BENCHMARK(BM_BareSliceStep)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(60);
BENCHMARK(BM_OurMapperStep)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(60);
} // namespace

int main(int argc, char** argv)
{
  QSurfaceFormat::setDefaultFormat(QVTKOpenGLNativeWidget::defaultFormat());
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  values(); // made once, outside every measurement
  s_Ours = std::make_unique<OurScene>();
  ZRBenchRatioReporter reporter({{"BM_OurSliceStep/0/iterations:60", "BM_BareSliceStep/0/iterations:60"},
                                 {"BM_OurMapperStep/0/iterations:60", "BM_BareSliceStep/0/iterations:60"},
                                 {"BM_OurSliceStep/1/iterations:60", "BM_BareSliceStep/1/iterations:60"},
                                 {"BM_OurMapperStep/1/iterations:60", "BM_BareSliceStep/1/iterations:60"}});
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatios();
  std::printf("Limit for the slice view: ratio <= 1.10 against the bare mapper. The drawn image shares the "
              "input's array: %s.\n",
              reporter.counter("BM_OurSliceStep/0/iterations:60", "array_shared") == 1.0 ? "yes" : "NO");
  s_Ours.reset();
  return 0;
}
