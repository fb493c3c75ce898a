// Opening a large .vti and .vtu through ZRVtk::utils::Read against VTK's own reader call alone. The
// wrapper (suffix table, error capture, output checks) must add no measurable cost: the ratios should
// sit at 1 within the noise of the run.
//
//   ZR_BENCH_SIZE=160 bench-dataset-read     grid edge in cells (default 128)
#include "ZRBenchRatioReporter.h"

#include "data_bridge/ZRVtkDatasetReaders.h"

#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkFloatArray.h>
#include <vtkImageData.h>
#include <vtkIntArray.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLImageDataReader.h>
#include <vtkXMLImageDataWriter.h>
#include <vtkXMLUnstructuredGridReader.h>
#include <vtkXMLUnstructuredGridWriter.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace
{
std::string s_VtiFile;
std::string s_VtuFile;

vtkSmartPointer<vtkFloatArray> MakeField(const char* name, vtkIdType count, int components)
{
  auto array = vtkSmartPointer<vtkFloatArray>::New();
  array->SetName(name);
  array->SetNumberOfComponents(components);
  array->SetNumberOfTuples(count);
  for (vtkIdType i = 0; i < count * components; ++i)
  {
    array->SetValue(i, static_cast<float>(std::sin(0.001 * static_cast<double>(i))));
  }
  return array;
}

// The XML writers without compression: reading is then bound by the reader itself, where any cost the
// wrapper adds would show most.
template<class WriterT>
void WriteRaw(vtkDataObject* data, const std::string& path)
{
  auto writer = vtkSmartPointer<WriterT>::New();
  writer->SetFileName(path.c_str());
  writer->SetInputData(data);
  writer->SetDataModeToAppended();
  writer->EncodeAppendedDataOff();
  writer->SetCompressorTypeToNone();
  if (writer->Write() == 0)
  {
    std::fprintf(stderr, "Cannot write %s\n", path.c_str());
    std::exit(1);
  }
}

void PrepareImage(int edge, const std::string& path)
{
  auto image = vtkSmartPointer<vtkImageData>::New();
  image->SetDimensions(edge + 1, edge + 1, edge + 1);
  image->SetSpacing(0.5, 0.5, 0.5);
  image->GetPointData()->AddArray(MakeField("Density", image->GetNumberOfPoints(), 1));
  image->GetCellData()->AddArray(MakeField("Euler Angles", image->GetNumberOfCells(), 3));
  WriteRaw<vtkXMLImageDataWriter>(image, path);
}

// Hexahedra on a regular lattice: the shape of a meshed sample.
void PrepareUnstructured(int edge, const std::string& path)
{
  const int n = edge + 1;
  auto points = vtkSmartPointer<vtkPoints>::New();
  points->SetNumberOfPoints(static_cast<vtkIdType>(n) * n * n);
  vtkIdType id = 0;
  for (int k = 0; k < n; ++k)
  {
    for (int j = 0; j < n; ++j)
    {
      for (int i = 0; i < n; ++i)
      {
        points->SetPoint(id++, i, j, k);
      }
    }
  }
  auto grid = vtkSmartPointer<vtkUnstructuredGrid>::New();
  grid->SetPoints(points);
  grid->Allocate(static_cast<vtkIdType>(edge) * edge * edge);
  const auto at = [n](int i, int j, int k) { return static_cast<vtkIdType>(k) * n * n + j * n + i; };
  for (int k = 0; k < edge; ++k)
  {
    for (int j = 0; j < edge; ++j)
    {
      for (int i = 0; i < edge; ++i)
      {
        const vtkIdType hex[8] = {
            at(i, j, k),     at(i + 1, j, k),     at(i + 1, j + 1, k),     at(i, j + 1, k),
            at(i, j, k + 1), at(i + 1, j, k + 1), at(i + 1, j + 1, k + 1), at(i, j + 1, k + 1)};
        grid->InsertNextCell(VTK_HEXAHEDRON, 8, hex);
      }
    }
  }
  grid->GetPointData()->AddArray(MakeField("Temperature", grid->GetNumberOfPoints(), 1));
  auto featureIds = vtkSmartPointer<vtkIntArray>::New();
  featureIds->SetName("FeatureIds");
  featureIds->SetNumberOfTuples(grid->GetNumberOfCells());
  for (vtkIdType c = 0; c < grid->GetNumberOfCells(); ++c)
  {
    featureIds->SetValue(c, static_cast<int>(c % 977));
  }
  grid->GetCellData()->AddArray(featureIds);
  WriteRaw<vtkXMLUnstructuredGridWriter>(grid, path);
}

template<class ReaderT>
void BM_VtkReader(benchmark::State& state, const std::string* path)
{
  for (auto _ : state)
  {
    auto reader = vtkSmartPointer<ReaderT>::New();
    reader->SetFileName(path->c_str());
    reader->Update();
    vtkSmartPointer<vtkDataSet> output = reader->GetOutputAsDataSet();
    benchmark::DoNotOptimize(output.Get());
    if (output == nullptr || output->GetNumberOfPoints() == 0)
    {
      state.SkipWithError("VTK's reader read nothing");
      return;
    }
  }
}

void BM_ZRRead(benchmark::State& state, const std::string* path)
{
  const QString file = QString::fromStdString(*path);
  for (auto _ : state)
  {
    QString message;
    vtkSmartPointer<vtkDataSet> output = ZRVtk::utils::Read(file, &message);
    benchmark::DoNotOptimize(output.Get());
    if (output == nullptr)
    {
      state.SkipWithError(message.toStdString().c_str());
      return;
    }
  }
}

void Register()
{
  // Each pair twice, alternating, so that a warm-up or cache effect shows as a difference between the
  // two runs of the same call rather than as a cost of either.
  for (const char* pass : {"", "/again"})
  {
    benchmark::RegisterBenchmark((std::string("BM_VtkReaderVti") + pass).c_str(),
                                 BM_VtkReader<vtkXMLImageDataReader>, &s_VtiFile);
    benchmark::RegisterBenchmark((std::string("BM_ZRReadVti") + pass).c_str(), BM_ZRRead, &s_VtiFile);
    benchmark::RegisterBenchmark((std::string("BM_VtkReaderVtu") + pass).c_str(),
                                 BM_VtkReader<vtkXMLUnstructuredGridReader>, &s_VtuFile);
    benchmark::RegisterBenchmark((std::string("BM_ZRReadVtu") + pass).c_str(), BM_ZRRead, &s_VtuFile);
  }
}
} // namespace

int main(int argc, char** argv)
{
  benchmark::Initialize(&argc, argv);
  int edge = 128;
  if (const char* size = std::getenv("ZR_BENCH_SIZE"))
  {
    edge = std::atoi(size);
  }
  const std::filesystem::path dir = std::filesystem::temp_directory_path();
  s_VtiFile = (dir / ("zr-bench-read-" + std::to_string(edge) + ".vti")).string();
  s_VtuFile = (dir / ("zr-bench-read-" + std::to_string(edge) + ".vtu")).string();
  if (!std::filesystem::exists(s_VtiFile))
  {
    std::printf("Generating %s ...\n", s_VtiFile.c_str());
    PrepareImage(edge, s_VtiFile);
  }
  if (!std::filesystem::exists(s_VtuFile))
  {
    std::printf("Generating %s ...\n", s_VtuFile.c_str());
    PrepareUnstructured(edge, s_VtuFile);
  }
  std::printf("Files: %s (%.1f MB), %s (%.1f MB)\n", s_VtiFile.c_str(),
              static_cast<double>(std::filesystem::file_size(s_VtiFile)) / 1e6, s_VtuFile.c_str(),
              static_cast<double>(std::filesystem::file_size(s_VtuFile)) / 1e6);

  Register();
  ZRBenchRatioReporter reporter({{"BM_ZRReadVti", "BM_VtkReaderVti"},
                                 {"BM_ZRReadVti/again", "BM_VtkReaderVti/again"},
                                 {"BM_ZRReadVtu", "BM_VtkReaderVtu"},
                                 {"BM_ZRReadVtu/again", "BM_VtkReaderVtu/again"},
                                 {"BM_VtkReaderVti/again", "BM_VtkReaderVti"},
                                 {"BM_VtkReaderVtu/again", "BM_VtkReaderVtu"}});
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatios();
  std::printf("\nThe last two lines compare VTK's reader with itself: their distance from 1 is the noise.\n");
  benchmark::Shutdown();
  return 0;
}
