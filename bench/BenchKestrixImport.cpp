// Import of a big .kestrix sample in seconds per GB, against reading the same array bytes with plain
// HDF5 calls (the I/O limit of this machine; after the first pass both read from the page cache).
// BM_ViewerList does what `kestrix-viewer --list` does in its process: import through the pipeline,
// wrap for VTK, print every array's component ranges. Target: at most 1.05 times the plain read.
//
//   ZR_BENCH_SIZE=512 bench-kestrix-import        sample edge in cells (default 256)
//   ZR_BENCH_KESTRIX_FILE=/path/file.kestrix ...  use an existing file instead of generating one
#include "ZRBenchRatioReporter.h"

#include "app/sample/GrainMicrostructure.h"
#include "app/sample/SampleStructureBuilder.h"

#include "app/ViewerTreePrinter.h"
#include "data_bridge/zr_contract/KestrixIO.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXPipeline.h"

#include <QCoreApplication>
#include <QString>
#include <QTextStream>

#include <hdf5.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace
{
using zr::core::usize;

std::filesystem::path s_File;
double s_ArrayBytes = 0.0;

std::filesystem::path PrepareFile()
{
  if (const char* given = std::getenv("ZR_BENCH_KESTRIX_FILE"))
  {
    return given;
  }
  usize edge = 256;
  if (const char* size = std::getenv("ZR_BENCH_SIZE"))
  {
    edge = std::strtoul(size, nullptr, 10);
  }
  const std::filesystem::path file =
      std::filesystem::temp_directory_path() / ("zr-bench-sample-" + std::to_string(edge) + ".kestrix");
  if (!std::filesystem::exists(file))
  {
    std::printf("Generating %s ...\n", file.c_str());
    auto micro = std::make_shared<zr::sample::GrainMicrostructure>(edge, 20240517);
    const zr::core::Result<> written =
        zr::core::KESTRIX::WriteDataStructureToFile(file, zr::sample::SampleStructureBuilder(micro).build());
    if (!written.valid())
    {
      std::fprintf(stderr, "%s\n", written.errors().front().message.c_str());
      std::exit(1);
    }
  }
  return file;
}

struct PlainReadState
{
  double bytes = 0.0;
  // Kept until the pass ends, as an import keeps every array it read.
  std::vector<std::unique_ptr<char[]>> buffers;
};

// Reads every numeric dataset whole into a fresh buffer, as an import has to.
herr_t ReadDataset(hid_t group, const char* name, const H5O_info_t* info, void* data)
{
  if (info->type != H5O_TYPE_DATASET)
  {
    return 0;
  }
  const hid_t dataset = H5Dopen2(group, name, H5P_DEFAULT);
  const hid_t type = H5Dget_type(dataset);
  if (H5Tget_class(type) == H5T_INTEGER || H5Tget_class(type) == H5T_FLOAT)
  {
    const hid_t space = H5Dget_space(dataset);
    const auto count = static_cast<usize>(H5Sget_simple_extent_npoints(space));
    const usize bytes = count * H5Tget_size(type);
    std::unique_ptr<char[]> buffer(new char[bytes > 0 ? bytes : 1]);
    const hid_t memoryType = H5Tget_native_type(type, H5T_DIR_DEFAULT);
    H5Dread(dataset, memoryType, H5S_ALL, H5S_ALL, H5P_DEFAULT, buffer.get());
    benchmark::DoNotOptimize(buffer.get());
    auto* read = static_cast<PlainReadState*>(data);
    read->bytes += static_cast<double>(bytes);
    read->buffers.push_back(std::move(buffer));
    H5Tclose(memoryType);
    H5Sclose(space);
  }
  H5Tclose(type);
  H5Dclose(dataset);
  return 0;
}

void BM_PlainHdf5Read(benchmark::State& state)
{
  for (auto _ : state)
  {
    PlainReadState read;
    const hid_t file = H5Fopen(s_File.c_str(), H5F_ACC_RDONLY, H5P_DEFAULT);
    H5Ovisit(file, H5_INDEX_NAME, H5_ITER_INC, ReadDataset, &read);
    H5Fclose(file);
    s_ArrayBytes = read.bytes;
  }
  state.SetBytesProcessed(static_cast<int64_t>(s_ArrayBytes) * state.iterations());
}

void BM_KestrixImport(benchmark::State& state)
{
  for (auto _ : state)
  {
    zr::core::Result<zr::core::DataStructure> imported =
        zr::core::KESTRIX::ImportDataStructureFromFile(s_File, false);
    if (!imported.valid())
    {
      state.SkipWithError(imported.errors().front().message.c_str());
      return;
    }
    benchmark::DoNotOptimize(imported);
  }
  state.SetBytesProcessed(static_cast<int64_t>(s_ArrayBytes) * state.iterations());
}

void BM_ViewerList(benchmark::State& state)
{
  const QString path = QString::fromStdString(s_File.string());
  for (auto _ : state)
  {
    QString text;
    QTextStream out(&text);
    VXPipeline pipeline;
    VXBridgeObject* bridge = pipeline.importFile(path);
    if (bridge == nullptr)
    {
      state.SkipWithError("the pipeline imported nothing");
      return;
    }
    ViewerTreePrinter(out).print(*bridge);
    benchmark::DoNotOptimize(text.size());
  }
  state.SetBytesProcessed(static_cast<int64_t>(s_ArrayBytes) * state.iterations());
}

void BM_KestrixImportOutOfCore(benchmark::State& state)
{
  zr::core::KESTRIX::ImportOptions options;
  options.outOfCoreThresholdBytes = 1 << 20;
  for (auto _ : state)
  {
    auto imported = zr::core::KESTRIX::ImportDataStructureFromFile(s_File, options);
    benchmark::DoNotOptimize(imported);
  }
}

void BM_KestrixPreflight(benchmark::State& state)
{
  for (auto _ : state)
  {
    auto imported = zr::core::KESTRIX::ImportDataStructureFromFile(s_File, true);
    benchmark::DoNotOptimize(imported);
  }
}

// The first plain read warms the page cache and counts the bytes; the ratios use the second one, which
// runs under the same conditions as the import.
BENCHMARK(BM_PlainHdf5Read)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(BM_KestrixImport)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(BM_PlainHdf5Read)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(3)
    ->Name("BM_PlainHdf5Read/again");
BENCHMARK(BM_ViewerList)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(BM_KestrixImportOutOfCore)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
BENCHMARK(BM_KestrixPreflight)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
} // namespace

int main(int argc, char** argv)
{
  QCoreApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
  s_File = PrepareFile();
  std::printf("File: %s (%.1f MB)\n", s_File.c_str(),
              static_cast<double>(std::filesystem::file_size(s_File)) / 1e6);
  ZRBenchRatioReporter reporter(
      {{"BM_KestrixImport/iterations:3/real_time", "BM_PlainHdf5Read/again/iterations:3/real_time"},
       {"BM_ViewerList/iterations:3/real_time", "BM_PlainHdf5Read/again/iterations:3/real_time"},
       {"BM_KestrixImportOutOfCore/iterations:3/real_time", "BM_PlainHdf5Read/again/iterations:3/real_time"},
       {"BM_KestrixPreflight/iterations:3/real_time", "BM_PlainHdf5Read/again/iterations:3/real_time"}});
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatios();
  const double gigabytes = s_ArrayBytes / 1e9;
  if (gigabytes > 0.0)
  {
    std::printf("\nArray bytes: %.3f GB\n", gigabytes);
    for (const char* name :
         {"BM_PlainHdf5Read/again/iterations:3/real_time", "BM_KestrixImport/iterations:3/real_time",
          "BM_ViewerList/iterations:3/real_time"})
    {
      std::printf("  %-45s : %.3f s/GB\n", name, reporter.seconds(name) / gigabytes);
    }
  }
  benchmark::Shutdown();
  return 0;
}
