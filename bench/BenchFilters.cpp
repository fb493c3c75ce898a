// Clip, slice and threshold filters on a 256^3 image with a float cell array, against the bare VTK
// algorithm on the same data; the slice also against vtkPlaneCutter, VTK's multi-threaded cutter.
// ZR_BENCH_FILTER_SIZE sets another edge length for a quick run.
#include "ZRBenchRatioReporter.h"

#include "filters/VXFClip.h"
#include "filters/VXFSlice.h"
#include "filters/VXFThreshold.h"
#include "filters/VXPlane.h"

#include <vtkCellData.h>
#include <vtkCutter.h>
#include <vtkFloatArray.h>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPlane.h>
#include <vtkPlaneCutter.h>
#include <vtkPolyData.h>
#include <vtkSmartPointer.h>
#include <vtkTableBasedClipDataSet.h>
#include <vtkThreshold.h>
#include <vtkTrivialProducer.h>
#include <vtkUnstructuredGrid.h>

#include <QCoreApplication>

#include <cmath>
#include <cstdlib>

namespace
{
int edge()
{
  const char* size = std::getenv("ZR_BENCH_FILTER_SIZE");
  return size != nullptr && std::atoi(size) > 1 ? std::atoi(size) : 256;
}

vtkTrivialProducer* producer()
{
  static vtkSmartPointer<vtkTrivialProducer> s_Producer = []
  {
    const int n = edge();
    vtkNew<vtkImageData> image;
    image->SetDimensions(n + 1, n + 1, n + 1);
    vtkNew<vtkFloatArray> values;
    values->SetName("Values");
    values->SetNumberOfTuples(static_cast<vtkIdType>(n) * n * n);
    for (vtkIdType id = 0; id < values->GetNumberOfTuples(); ++id)
    {
      values->SetValue(id, static_cast<float>(std::sin(0.001 * static_cast<double>(id))));
    }
    image->GetCellData()->SetScalars(values);
    auto made = vtkSmartPointer<vtkTrivialProducer>::New();
    made->SetOutput(image);
    return made;
  }();
  return s_Producer;
}

// A plane through the middle, slanted so that no axis is favoured.
void middlePlane(vtkPlane* plane)
{
  const double middle = edge() / 2.0;
  plane->SetOrigin(middle, middle, middle);
  plane->SetNormal(0.6, 0.8, 0.0);
}

void BM_VXClip(benchmark::State& state)
{
  VXFClip clip;
  clip.setInputPort(producer()->GetOutputPort());
  clip.setupFilter();
  vtkNew<vtkPlane> plane;
  middlePlane(plane);
  clip.plane()->setValues({plane->GetOrigin()[0], plane->GetOrigin()[1], plane->GetOrigin()[2]},
                          {0.6, 0.8, 0.0});
  for (auto _ : state)
  {
    clip.algorithm()->Modified();
    clip.applyFilter();
  }
  state.counters["cells"] = static_cast<double>(clip.algorithm()->GetOutput()->GetNumberOfCells());
}

void BM_VtkClip(benchmark::State& state)
{
  vtkNew<vtkTableBasedClipDataSet> clip;
  clip->SetInputConnection(producer()->GetOutputPort());
  vtkNew<vtkPlane> plane;
  middlePlane(plane);
  clip->SetClipFunction(plane);
  clip->SetInsideOut(1);
  for (auto _ : state)
  {
    clip->Modified();
    clip->Update();
  }
  state.counters["cells"] = static_cast<double>(clip->GetOutput()->GetNumberOfCells());
}

void BM_VXSlice(benchmark::State& state)
{
  VXFSlice slice;
  slice.setInputPort(producer()->GetOutputPort());
  slice.setupFilter();
  const double middle = edge() / 2.0;
  slice.plane()->setValues({middle, middle, middle}, {0.6, 0.8, 0.0});
  for (auto _ : state)
  {
    slice.algorithm()->Modified();
    slice.applyFilter();
  }
  state.counters["cells"] = static_cast<double>(slice.algorithm()->GetOutput()->GetNumberOfCells());
}

void BM_VtkCutter(benchmark::State& state)
{
  vtkNew<vtkCutter> cutter;
  cutter->SetInputConnection(producer()->GetOutputPort());
  vtkNew<vtkPlane> plane;
  middlePlane(plane);
  cutter->SetCutFunction(plane);
  for (auto _ : state)
  {
    cutter->Modified();
    cutter->Update();
  }
  state.counters["cells"] = static_cast<double>(cutter->GetOutput()->GetNumberOfCells());
}

void BM_VtkPlaneCutter(benchmark::State& state)
{
  vtkNew<vtkPlaneCutter> cutter;
  cutter->SetInputConnection(producer()->GetOutputPort());
  vtkNew<vtkPlane> plane;
  middlePlane(plane);
  cutter->SetPlane(plane);
  for (auto _ : state)
  {
    cutter->Modified();
    cutter->Update();
  }
}

void BM_VXThreshold(benchmark::State& state)
{
  VXFThreshold threshold;
  threshold.setInputPort(producer()->GetOutputPort());
  threshold.setupFilter();
  VXFThreshold::DataArrayNameInfo info = threshold.getActiveArrayInfo();
  info.userRange = {-0.25, 0.5};
  threshold.updateActiveArrayInfo(info);
  for (auto _ : state)
  {
    threshold.algorithm()->Modified();
    threshold.applyFilter();
  }
  state.counters["cells"] = static_cast<double>(threshold.algorithm()->GetOutput()->GetNumberOfCells());
}

void BM_VtkThreshold(benchmark::State& state)
{
  vtkNew<vtkThreshold> threshold;
  threshold->SetInputConnection(producer()->GetOutputPort());
  threshold->SetLowerThreshold(-0.25);
  threshold->SetUpperThreshold(0.5);
  threshold->SetThresholdFunction(vtkThreshold::THRESHOLD_BETWEEN);
  threshold->SetInputArrayToProcess(0, 0, 0, vtkDataObject::FIELD_ASSOCIATION_POINTS_THEN_CELLS, "Values");
  for (auto _ : state)
  {
    threshold->Modified();
    threshold->Update();
  }
  state.counters["cells"] = static_cast<double>(threshold->GetOutput()->GetNumberOfCells());
}

BENCHMARK(BM_VXClip)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_VtkClip)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_VXSlice)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_VtkCutter)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_VtkPlaneCutter)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_VXThreshold)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_VtkThreshold)->Unit(benchmark::kMillisecond)->Iterations(2);
} // namespace

int main(int argc, char** argv)
{
  QCoreApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  ZRBenchRatioReporter reporter({{"BM_VXClip/iterations:2", "BM_VtkClip/iterations:2"},
                                 {"BM_VXSlice/iterations:3", "BM_VtkCutter/iterations:3"},
                                 {"BM_VtkPlaneCutter/iterations:3", "BM_VtkCutter/iterations:3"},
                                 {"BM_VXThreshold/iterations:2", "BM_VtkThreshold/iterations:2"}});
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatios();
  return 0;
}
