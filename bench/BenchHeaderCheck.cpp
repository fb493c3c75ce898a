// What the checks of declared sizes cost before a VTK file is read: each check alone, and the whole
// read through ZRVtk::utils::Read, against VTK's reader alone on the same large file, for a raw and a
// zlib-compressed .vti and a binary legacy .vtk. The checks read the XML head and the size headers
// (or the keyword lines), not the data, so their ratios should be small fractions of 1.
//
//   ZR_BENCH_SIZE=160 bench-header-check     grid edge in cells (default 128)
#include "ZRBenchRatioReporter.h"

#include "data_bridge/VXLegacyVtkHeaderCheck.h"
#include "data_bridge/VXXmlVtkHeaderCheck.h"
#include "data_bridge/ZRVtkDatasetReaders.h"

#include <vtkCellData.h>
#include <vtkDataSetReader.h>
#include <vtkDataSetWriter.h>
#include <vtkFloatArray.h>
#include <vtkImageData.h>
#include <vtkPointData.h>
#include <vtkXMLImageDataReader.h>
#include <vtkXMLImageDataWriter.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace
{
std::string s_RawVti;
std::string s_ZlibVti;
std::string s_LegacyVtk;

vtkSmartPointer<vtkImageData> MakeImage(int edge)
{
  auto image = vtkSmartPointer<vtkImageData>::New();
  image->SetDimensions(edge + 1, edge + 1, edge + 1);
  for (auto [name, count, components] : {std::tuple("Density", image->GetNumberOfPoints(), 1),
                                         std::tuple("Euler Angles", image->GetNumberOfCells(), 3)})
  {
    auto array = vtkSmartPointer<vtkFloatArray>::New();
    array->SetName(name);
    array->SetNumberOfComponents(components);
    array->SetNumberOfTuples(count);
    for (vtkIdType i = 0; i < count * components; ++i)
    {
      array->SetValue(i, static_cast<float>(std::sin(0.001 * static_cast<double>(i))));
    }
    if (components == 1)
    {
      image->GetPointData()->AddArray(array);
    }
    else
    {
      image->GetCellData()->AddArray(array);
    }
  }
  return image;
}

void Prepare(int edge)
{
  vtkSmartPointer<vtkImageData> image = MakeImage(edge);
  for (const bool compressed : {false, true})
  {
    auto writer = vtkSmartPointer<vtkXMLImageDataWriter>::New();
    writer->SetFileName((compressed ? s_ZlibVti : s_RawVti).c_str());
    writer->SetInputData(image);
    writer->SetDataModeToAppended();
    writer->EncodeAppendedDataOff();
    if (!compressed)
    {
      writer->SetCompressorTypeToNone();
    }
    writer->Write();
  }
  auto legacy = vtkSmartPointer<vtkDataSetWriter>::New();
  legacy->SetFileName(s_LegacyVtk.c_str());
  legacy->SetInputData(image);
  legacy->SetFileTypeToBinary();
  legacy->Write();
}

template<class ReaderT>
void BM_VtkReader(benchmark::State& state, const std::string* path)
{
  for (auto _ : state)
  {
    auto reader = vtkSmartPointer<ReaderT>::New();
    reader->SetFileName(path->c_str());
    reader->Update();
    benchmark::DoNotOptimize(reader->GetOutputDataObject(0));
  }
}

template<bool (*Check)(const QString&, QString*)>
void BM_Check(benchmark::State& state, const std::string* path)
{
  const QString file = QString::fromStdString(*path);
  for (auto _ : state)
  {
    QString message;
    if (!Check(file, &message))
    {
      state.SkipWithError(message.toStdString().c_str());
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
  using benchmark::RegisterBenchmark;
  for (const auto& [name, path] : {std::pair("RawVti", &s_RawVti), std::pair("ZlibVti", &s_ZlibVti)})
  {
    RegisterBenchmark((std::string("BM_VtkReader") + name).c_str(), BM_VtkReader<vtkXMLImageDataReader>,
                      path);
    RegisterBenchmark((std::string("BM_Check") + name).c_str(), BM_Check<VXXmlVtkHeaderCheck::check>, path);
    RegisterBenchmark((std::string("BM_ZRRead") + name).c_str(), BM_ZRRead, path);
  }
  RegisterBenchmark("BM_VtkReaderLegacy", BM_VtkReader<vtkDataSetReader>, &s_LegacyVtk);
  RegisterBenchmark("BM_CheckLegacy", BM_Check<VXLegacyVtkHeaderCheck::check>, &s_LegacyVtk);
  RegisterBenchmark("BM_ZRReadLegacy", BM_ZRRead, &s_LegacyVtk);
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
  const std::string stem = (dir / ("zr-bench-check-" + std::to_string(edge))).string();
  s_RawVti = stem + "-raw.vti";
  s_ZlibVti = stem + "-zlib.vti";
  s_LegacyVtk = stem + ".vtk";
  if (!std::filesystem::exists(s_LegacyVtk))
  {
    std::printf("Generating %s-* ...\n", stem.c_str());
    Prepare(edge);
  }
  for (const std::string* file : {&s_RawVti, &s_ZlibVti, &s_LegacyVtk})
  {
    std::printf("%s: %.1f MB\n", file->c_str(), static_cast<double>(std::filesystem::file_size(*file)) / 1e6);
  }

  Register();
  ZRBenchRatioReporter reporter({{"BM_CheckRawVti", "BM_VtkReaderRawVti"},
                                 {"BM_ZRReadRawVti", "BM_VtkReaderRawVti"},
                                 {"BM_CheckZlibVti", "BM_VtkReaderZlibVti"},
                                 {"BM_ZRReadZlibVti", "BM_VtkReaderZlibVti"},
                                 {"BM_CheckLegacy", "BM_VtkReaderLegacy"},
                                 {"BM_ZRReadLegacy", "BM_VtkReaderLegacy"}});
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatios();
  return 0;
}
