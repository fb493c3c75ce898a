// Wrapping a host array for VTK against VTK's own deep copy, and the wrap-time range computation
// against VTK's GetRange and against a plain parallel read of the buffer (the bandwidth limit).
#include "ZRBenchRatioReporter.h"

#include "data_bridge/CVArray.h"
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataStructure.h"

#include <vtkFloatArray.h>
#include <vtkSmartPointer.h>

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/parallel_reduce.h>

#include <fstream>
#include <map>
#include <memory>
#include <unistd.h>

namespace
{
using zr::core::usize;

long residentBytes()
{
  std::ifstream statm("/proc/self/statm");
  long pages = 0;
  long resident = 0;
  statm >> pages >> resident;
  return resident * sysconf(_SC_PAGESIZE);
}

// One host float array of edge^3 values, made once per size and shared by all benchmarks.
zr::core::DataArray<float>* hostArray(usize edge)
{
  static std::map<usize, std::unique_ptr<zr::core::DataStructure>> s_Structures;
  static std::map<usize, zr::core::DataArray<float>*> s_Arrays;
  if (s_Arrays.count(edge) == 0)
  {
    auto ds = std::make_unique<zr::core::DataStructure>();
    const usize count = edge * edge * edge;
    auto* array = zr::core::Float32Array::Create(*ds, "Values", {edge, edge, edge}, {1}, {}, std::nullopt);
    float* data = dynamic_cast<zr::core::DataStore<float>*>(array->getDataStore())->data();
    tbb::parallel_for(tbb::blocked_range<usize>(0, count),
                      [data](const tbb::blocked_range<usize>& range)
                      {
                        for (usize i = range.begin(); i < range.end(); ++i)
                        {
                          data[i] = static_cast<float>((i * 2654435761u) % 100000) * 0.01f - 250.0f;
                        }
                      });
    s_Arrays[edge] = array;
    s_Structures[edge] = std::move(ds);
  }
  return s_Arrays[edge];
}

float* bufferOf(zr::core::DataArray<float>* array)
{
  return dynamic_cast<zr::core::DataStore<float>*>(array->getDataStore())->data();
}

void BM_WrapCVArray(benchmark::State& state)
{
  auto* host = hostArray(static_cast<usize>(state.range(0)));
  const double bytes = static_cast<double>(host->getSize() * sizeof(float));
  double extra = 0;
  for (auto _ : state)
  {
    const long before = residentBytes();
    auto array = vtkSmartPointer<CV::Array<float>>::New();
    array->MoveDataStoreFromZorelibDataArray(host);
    extra = static_cast<double>(residentBytes() - before);
    benchmark::DoNotOptimize(array.Get());
  }
  state.counters["extra_MiB"] = extra / (1024.0 * 1024.0);
  state.counters["extra_pct_of_array"] = 100.0 * extra / bytes;
}

void BM_DeepCopyVtkFloatArray(benchmark::State& state)
{
  auto* host = hostArray(static_cast<usize>(state.range(0)));
  const double bytes = static_cast<double>(host->getSize() * sizeof(float));
  auto source = vtkSmartPointer<vtkFloatArray>::New();
  source->SetArray(bufferOf(host), static_cast<vtkIdType>(host->getSize()), 1); // borrowed, not copied
  double extra = 0;
  for (auto _ : state)
  {
    const long before = residentBytes();
    auto copy = vtkSmartPointer<vtkFloatArray>::New();
    copy->DeepCopy(source);
    extra = static_cast<double>(residentBytes() - before);
    benchmark::DoNotOptimize(copy.Get());
  }
  state.counters["extra_MiB"] = extra / (1024.0 * 1024.0);
  state.counters["extra_pct_of_array"] = 100.0 * extra / bytes;
}

void BM_RangeCVArray(benchmark::State& state)
{
  auto* host = hostArray(static_cast<usize>(state.range(0)));
  auto array = vtkSmartPointer<CV::Array<float>>::New();
  array->MoveDataStoreFromZorelibDataArray(host);
  for (auto _ : state)
  {
    array->ComputeMinMaxValuesInternal();
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * host->getSize() * sizeof(float)));
}

void BM_RangeVtkGetRange(benchmark::State& state)
{
  auto* host = hostArray(static_cast<usize>(state.range(0)));
  auto array = vtkSmartPointer<vtkFloatArray>::New();
  array->SetArray(bufferOf(host), static_cast<vtkIdType>(host->getSize()), 1);
  double range[2];
  for (auto _ : state)
  {
    array->Modified(); // drop VTK's cached range so it scans again
    array->GetRange(range, 0);
    benchmark::DoNotOptimize(range);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * host->getSize() * sizeof(float)));
}

void BM_ParallelReadLimit(benchmark::State& state)
{
  auto* host = hostArray(static_cast<usize>(state.range(0)));
  // The cheapest full read: XOR of the raw 32-bit words, which vectorises without reordering concerns.
  const auto* data = reinterpret_cast<const std::uint32_t*>(bufferOf(host));
  const usize count = host->getSize();
  for (auto _ : state)
  {
    const std::uint32_t folded = tbb::parallel_reduce(
        tbb::blocked_range<usize>(0, count), std::uint32_t(0),
        [data](const tbb::blocked_range<usize>& range, std::uint32_t partial)
        {
          for (usize i = range.begin(); i < range.end(); ++i)
          {
            partial ^= data[i];
          }
          return partial;
        },
        [](std::uint32_t a, std::uint32_t b) { return a ^ b; });
    benchmark::DoNotOptimize(folded);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * count * sizeof(float)));
}

constexpr int k_Edges[] = {256, 512};
} // namespace

int main(int argc, char** argv)
{
  for (int edge : k_Edges)
  {
    benchmark::RegisterBenchmark("BM_WrapCVArray", BM_WrapCVArray)
        ->Arg(edge)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(3);
    benchmark::RegisterBenchmark("BM_DeepCopyVtkFloatArray", BM_DeepCopyVtkFloatArray)
        ->Arg(edge)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(3);
    benchmark::RegisterBenchmark("BM_RangeCVArray", BM_RangeCVArray)
        ->Arg(edge)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("BM_RangeVtkGetRange", BM_RangeVtkGetRange)
        ->Arg(edge)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("BM_ParallelReadLimit", BM_ParallelReadLimit)
        ->Arg(edge)
        ->Unit(benchmark::kMillisecond);
  }
  benchmark::Initialize(&argc, argv);
  std::vector<std::pair<std::string, std::string>> pairs;
  for (int edge : k_Edges)
  {
    const std::string arg = "/" + std::to_string(edge);
    pairs.push_back(
        {"BM_WrapCVArray" + arg + "/iterations:3", "BM_DeepCopyVtkFloatArray" + arg + "/iterations:3"});
    pairs.push_back({"BM_RangeCVArray" + arg, "BM_RangeVtkGetRange" + arg});
    pairs.push_back({"BM_ParallelReadLimit" + arg, "BM_RangeCVArray" + arg});
  }
  ZRBenchRatioReporter reporter(pairs);
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatios();
  std::printf(
      "(The last ratio of each size is the range scan's share of the bandwidth limit: target >= 0.8.)\n");
  benchmark::Shutdown();
  return 0;
}
