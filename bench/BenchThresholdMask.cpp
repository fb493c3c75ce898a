// The viewer's multi-threshold mask (two thresholds over the cells of a 256^3 image, in parallel)
// against a plain serial loop over the same values, and against two bare vtkThreshold filters in a
// chain, which keep the same cells. ZR_BENCH_MASK_SIZE sets another edge length for a quick run.
#include "ZRBenchRatioReporter.h"

#include "app/ViewerThresholdMask.h"
#include "data_bridge/zr_contract/AttributeMatrix.h"
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/ImageGeom.h"

#include <vtkCellData.h>
#include <vtkFloatArray.h>
#include <vtkImageData.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkThreshold.h>
#include <vtkUnstructuredGrid.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace
{
const zr::core::DataPath k_Geometry({"Grains"});

zr::core::usize edge()
{
  const char* size = std::getenv("ZR_BENCH_MASK_SIZE");
  return size != nullptr && std::atoi(size) > 1 ? static_cast<zr::core::usize>(std::atoi(size)) : 256;
}

float valueA(zr::core::usize cell)
{
  return static_cast<float>(std::sin(0.001 * static_cast<double>(cell)));
}

std::int32_t valueB(zr::core::usize cell)
{
  return static_cast<std::int32_t>(cell % 7);
}

zr::core::DataStructure& structure()
{
  static zr::core::DataStructure s_Structure = []
  {
    const zr::core::usize n = edge();
    zr::core::DataStructure made;
    auto* image = zr::core::ImageGeom::Create(made, "Grains");
    image->setDimensions({n, n, n});
    zr::core::AttributeMatrix* cells = image->createCellData("Cell Data");
    auto* a = zr::core::Float32Array::Create(made, "A", cells->getTupleShape(), {1}, cells->getId());
    auto* b = zr::core::Int32Array::Create(made, "B", cells->getTupleShape(), {1}, cells->getId());
    float* aValues = a->getInMemoryStore()->data();
    std::int32_t* bValues = b->getInMemoryStore()->data();
    for (zr::core::usize cell = 0; cell < n * n * n; ++cell)
    {
      aValues[cell] = valueA(cell);
      bValues[cell] = valueB(cell);
    }
    return made;
  }();
  return s_Structure;
}

const std::vector<ZR::ArrayThresholdRange>& thresholds()
{
  static const std::vector<ZR::ArrayThresholdRange> s_Thresholds = {{QStringLiteral("A"), -0.5, 0.5},
                                                                    {QStringLiteral("B"), 2.0, 4.0}};
  return s_Thresholds;
}

void BM_ViewerMask(benchmark::State& state)
{
  zr::core::DataStructure& dataStructure = structure();
  for (auto _ : state)
  {
    const ViewerThresholdMask::Outcome outcome =
        ViewerThresholdMask::AddMask(dataStructure, k_Geometry, thresholds());
    benchmark::DoNotOptimize(outcome.passing);
    state.PauseTiming();
    dataStructure.removeData(outcome.maskPath);
    state.ResumeTiming();
  }
}

void BM_SerialLoop(benchmark::State& state)
{
  zr::core::DataStructure& dataStructure = structure();
  const auto* a =
      dataStructure.getDataAs<zr::core::Float32Array>(zr::core::DataPath({"Grains", "Cell Data", "A"}));
  const auto* b =
      dataStructure.getDataAs<zr::core::Int32Array>(zr::core::DataPath({"Grains", "Cell Data", "B"}));
  const float* aValues = a->getInMemoryStore()->data();
  const std::int32_t* bValues = b->getInMemoryStore()->data();
  const zr::core::usize count = a->getNumberOfTuples();
  for (auto _ : state)
  {
    std::vector<std::uint8_t> mask(count);
    zr::core::usize passing = 0;
    for (zr::core::usize cell = 0; cell < count; ++cell)
    {
      const bool pass =
          aValues[cell] >= -0.5f && aValues[cell] <= 0.5f && bValues[cell] >= 2 && bValues[cell] <= 4;
      mask[cell] = pass ? 1 : 0;
      passing += mask[cell];
    }
    benchmark::DoNotOptimize(passing);
  }
}

vtkImageData* vtkImage()
{
  static vtkSmartPointer<vtkImageData> s_Image = []
  {
    const zr::core::usize n = edge();
    auto image = vtkSmartPointer<vtkImageData>::New();
    image->SetDimensions(static_cast<int>(n) + 1, static_cast<int>(n) + 1, static_cast<int>(n) + 1);
    vtkNew<vtkFloatArray> a;
    a->SetName("A");
    vtkNew<vtkIntArray> b;
    b->SetName("B");
    const auto count = static_cast<vtkIdType>(n * n * n);
    a->SetNumberOfTuples(count);
    b->SetNumberOfTuples(count);
    for (vtkIdType cell = 0; cell < count; ++cell)
    {
      a->SetValue(cell, valueA(static_cast<zr::core::usize>(cell)));
      b->SetValue(cell, valueB(static_cast<zr::core::usize>(cell)));
    }
    image->GetCellData()->AddArray(a);
    image->GetCellData()->AddArray(b);
    return image;
  }();
  return s_Image;
}

void BM_VtkThresholdChain(benchmark::State& state)
{
  vtkImageData* image = vtkImage();
  for (auto _ : state)
  {
    vtkNew<vtkThreshold> first;
    first->SetInputData(image);
    first->SetLowerThreshold(-0.5);
    first->SetUpperThreshold(0.5);
    first->SetThresholdFunction(vtkThreshold::THRESHOLD_BETWEEN);
    first->SetInputArrayToProcess(0, 0, 0, vtkDataObject::FIELD_ASSOCIATION_CELLS, "A");
    vtkNew<vtkThreshold> second;
    second->SetInputConnection(first->GetOutputPort());
    second->SetLowerThreshold(2.0);
    second->SetUpperThreshold(4.0);
    second->SetThresholdFunction(vtkThreshold::THRESHOLD_BETWEEN);
    second->SetInputArrayToProcess(0, 0, 0, vtkDataObject::FIELD_ASSOCIATION_CELLS, "B");
    second->Update();
    benchmark::DoNotOptimize(second->GetOutput()->GetNumberOfCells());
  }
}
} // namespace

BENCHMARK(BM_ViewerMask)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_SerialLoop)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_VtkThresholdChain)->Unit(benchmark::kMillisecond)->Iterations(1);

int main(int argc, char** argv)
{
  benchmark::Initialize(&argc, argv);
  ZRBenchRatioReporter reporter({{"BM_ViewerMask/iterations:5", "BM_SerialLoop/iterations:5"},
                                 {"BM_ViewerMask/iterations:5", "BM_VtkThresholdChain/iterations:1"}});
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatios();
  return 0;
}
