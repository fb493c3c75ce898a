#include "DataBridgeTestFiles.h"

#include "data_bridge/ZRVtkDatasetReaders.h"
#include "data_bridge/ZRVtkDatasetWriters.h"
#include "data_bridge/ZRVtkLibFileTypes.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkImageData.h>
#include <vtkPointData.h>
#include <vtkPolyData.h>
#include <vtkSphereSource.h>
#include <vtkStructuredPoints.h>
#include <vtkUnstructuredGrid.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using DataBridgeTestFiles::Fixture;
namespace io = ZRVtkLib::io;
namespace utils = ZRVtk::utils;

namespace
{
using Writer = bool (*)(const QString&, vtkDataSet*, QString*);
using Reader = vtkSmartPointer<vtkDataSet> (*)(const QString&, QString*);

struct RoundTrip
{
  const char* fixture;
  Writer writer;
  Reader reader;
  const char* extension;
  // Text that only the intended writer puts in the file.
  const char* marker;
};

void ExpectSameArrays(vtkFieldData* expected, vtkFieldData* actual)
{
  for (int i = 0; i < expected->GetNumberOfArrays(); ++i)
  {
    vtkDataArray* array = expected->GetArray(i);
    vtkDataArray* copy = actual->GetArray(array->GetName());
    ASSERT_NE(copy, nullptr) << array->GetName();
    ASSERT_EQ(copy->GetNumberOfValues(), array->GetNumberOfValues());
    for (vtkIdType value = 0; value < array->GetNumberOfValues(); ++value)
    {
      const int components = array->GetNumberOfComponents();
      // Legacy ASCII files keep six significant digits.
      const double original = array->GetComponent(value / components, value % components);
      ASSERT_NEAR(copy->GetComponent(value / components, value % components), original,
                  1e-5 * std::max(1.0, std::abs(original)));
    }
  }
}

// Numbers of points and cells and the values of every array must survive a write and a read.
void ExpectSameData(vtkDataSet* expected, vtkDataSet* actual)
{
  ASSERT_NE(actual, nullptr);
  EXPECT_STREQ(actual->GetClassName(), expected->GetClassName());
  EXPECT_EQ(actual->GetNumberOfPoints(), expected->GetNumberOfPoints());
  EXPECT_EQ(actual->GetNumberOfCells(), expected->GetNumberOfCells());
  ExpectSameArrays(expected->GetPointData(), actual->GetPointData());
  ExpectSameArrays(expected->GetCellData(), actual->GetCellData());
}

class ZRVtkWriterRoundTrip : public ::testing::TestWithParam<RoundTrip>
{
};
} // namespace

TEST_P(ZRVtkWriterRoundTrip, WrittenFileReadsBackTheSameData)
{
  const RoundTrip& c = GetParam();
  vtkSmartPointer<vtkDataSet> original = utils::Read(Fixture(c.fixture));
  ASSERT_NE(original, nullptr);
  QTemporaryDir dir;
  const QString path = dir.filePath(QStringLiteral("written.") + c.extension);
  QString message;
  ASSERT_TRUE(c.writer(path, original, &message)) << message.toStdString();
  EXPECT_TRUE(message.isEmpty());
  EXPECT_TRUE(DataBridgeTestFiles::Contents(path).contains(c.marker));
  ExpectSameData(original, c.reader(path, &message));
  EXPECT_TRUE(message.isEmpty()) << message.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    EveryWriter, ZRVtkWriterRoundTrip,
    ::testing::Values(
        RoundTrip{"vtk/image.vti", utils::WriteImageData, utils::ReadImageData, "vti", "type=\"ImageData\""},
        RoundTrip{"vtk/rectilinear.vtr", utils::WriteRectilinearGrid, utils::ReadRectilinearGrid, "vtr",
                  "type=\"RectilinearGrid\""},
        RoundTrip{"vtk/structured.vts", utils::WriteStructuredGrid, utils::ReadStructuredGrid, "vts",
                  "type=\"StructuredGrid\""},
        RoundTrip{"vtk/unstructured.vtu", utils::WriteUnstructuredGrid, utils::ReadUnstructuredGrid, "vtu",
                  "type=\"UnstructuredGrid\""},
        RoundTrip{"vtk/poly.vtp", utils::WritePolyData, utils::ReadPolyData, "vtp", "type=\"PolyData\""},
        RoundTrip{"vtk/image.vti", utils::WritePImageData, utils::ReadPImageData, "pvti",
                  "type=\"PImageData\""},
        RoundTrip{"vtk/rectilinear.vtr", utils::WritePRectilinearGrid, utils::ReadPRectilinearGrid, "pvtr",
                  "type=\"PRectilinearGrid\""},
        RoundTrip{"vtk/structured.vts", utils::WritePStructuredGrid, utils::ReadPStructuredGrid, "pvts",
                  "type=\"PStructuredGrid\""},
        RoundTrip{"vtk/unstructured.vtu", utils::WritePUnstructuredGrid, utils::ReadPUnstructuredGrid, "pvtu",
                  "type=\"PUnstructuredGrid\""},
        RoundTrip{"vtk/poly.vtp", utils::WritePPolyData, utils::ReadPPolyData, "pvtp", "type=\"PPolyData\""},
        RoundTrip{"vtk/unstructured.vtu", utils::WriteVtkData, utils::ReadVtkData, "vtk", "# vtk DataFile"},
        RoundTrip{"vtk/poly.vtp", utils::WriteVtkData, utils::ReadVtkData, "vtk", "DATASET POLYDATA"}),
    [](const ::testing::TestParamInfo<RoundTrip>& info)
    { return std::string(info.param.extension) + "_" + std::to_string(info.index); });

TEST(ZRVtkParallelWriters, PieceFileIsWrittenBesideTheSummary)
{
  vtkSmartPointer<vtkDataSet> grid = utils::Read(Fixture("vtk/unstructured.vtu"));
  QTemporaryDir dir;
  ASSERT_TRUE(utils::WritePUnstructuredGrid(dir.filePath("cells.pvtu"), grid));
  const QStringList files = QDir(dir.path()).entryList(QDir::Files, QDir::Name);
  EXPECT_EQ(files, QStringList({"cells.pvtu", "cells_0.vtu"}));
  // The piece alone is a serial file of the same data.
  EXPECT_EQ(utils::ReadUnstructuredGrid(dir.filePath("cells_0.vtu"))->GetNumberOfCells(), 2);
}

TEST(ZRVtkParallelWriters, ParallelLegacyOfOnePieceReadsBackBySuffix)
{
  vtkSmartPointer<vtkDataSet> poly = utils::Read(Fixture("vtk/poly.vtp"));
  QTemporaryDir dir;
  const QString path = dir.filePath("sphere.pvtk");
  QString message;
  ASSERT_TRUE(utils::WritePVtkData(path, poly, &message)) << message.toStdString();
  // One piece needs no summary: the file is the legacy data set itself.
  EXPECT_TRUE(DataBridgeTestFiles::Contents(path).startsWith("# vtk DataFile"));
  EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files).size(), 1);
  ExpectSameData(poly, utils::Read(path, &message));
  EXPECT_TRUE(message.isEmpty()) << message.toStdString();
}

TEST(ZRVtkWriterFailures, WrongDatasetTypeForTheWriterGivesMessage)
{
  vtkSmartPointer<vtkDataSet> poly = utils::Read(Fixture("vtk/poly.vtp"));
  QTemporaryDir dir;
  QString message;
  EXPECT_FALSE(utils::WriteImageData(dir.filePath("poly.vti"), poly, &message));
  EXPECT_FALSE(message.isEmpty());
}

TEST(ZRVtkWriterFailures, UnwritablePlaceGivesMessage)
{
  vtkSmartPointer<vtkDataSet> image = utils::Read(Fixture("vtk/image.vti"));
  QString message;
  EXPECT_FALSE(utils::WriteImageData(QStringLiteral("/nonexistent/dir/image.vti"), image, &message));
  EXPECT_FALSE(message.isEmpty());
  message.clear();
  EXPECT_FALSE(utils::WriteVtkData(QStringLiteral("/nonexistent/dir/image.vtk"), image, &message));
  EXPECT_FALSE(message.isEmpty());
}

TEST(ZRVtkWriterFailures, NoDatasetWritesNothing)
{
  QTemporaryDir dir;
  QString message;
  EXPECT_FALSE(utils::WritePolyData(dir.filePath("none.vtp"), nullptr, &message));
  EXPECT_FALSE(message.isEmpty());
  EXPECT_FALSE(QFileInfo::exists(dir.filePath("none.vtp")));
}

TEST(ZRVtkSaveFilters, PairFollowsTheDatasetType)
{
  EXPECT_EQ(utils::SaveFilterPairFor(utils::Read(Fixture("vtk/image.vti"))),
            "Image Data (*.vti);;Parallel Image Data (*.pvti)");
  EXPECT_EQ(utils::SaveFilterPairFor(utils::Read(Fixture("vtk/rectilinear.vtr"))),
            "Rectilinear Grid (*.vtr);;Parallel Rectilinear Grid (*.pvtr)");
  EXPECT_EQ(utils::SaveFilterPairFor(utils::Read(Fixture("vtk/structured.vts"))),
            "Structured Grid (*.vts);;Parallel Structured Grid (*.pvts)");
  EXPECT_EQ(utils::SaveFilterPairFor(utils::Read(Fixture("vtk/unstructured.vtu"))),
            "Unstructured Grid (*.vtu);;Parallel Unstructured Grid (*.pvtu)");
  EXPECT_EQ(utils::SaveFilterPairFor(utils::Read(Fixture("vtk/poly.vtp"))),
            "Poly Data (*.vtp);;Parallel Poly Data (*.pvtp)");
  // Structured points are image data by class but a type of their own: the generic pair.
  auto points = vtkSmartPointer<vtkStructuredPoints>::New();
  EXPECT_EQ(utils::SaveFilterPairFor(points), "VTK Data Set (*.vtk);;Parallel VTK Data Set (*.pvtk)");
}

TEST(ZRVtkSaveFilters, EachFilterWritesWithItsWriter)
{
  vtkSmartPointer<vtkDataSet> image = utils::Read(Fixture("vtk/image.vti"));
  QTemporaryDir dir;
  ASSERT_TRUE(utils::WriteWithFilter(dir.filePath("a.pvti"), image, io::PVTI_FILE_FILTER));
  EXPECT_TRUE(DataBridgeTestFiles::Contents(dir.filePath("a.pvti")).contains("PImageData"));
  ASSERT_TRUE(utils::WriteWithFilter(dir.filePath("b.vtk"), image, io::VTK_FILE_FILTER));
  EXPECT_TRUE(DataBridgeTestFiles::Contents(dir.filePath("b.vtk")).startsWith("# vtk DataFile"));
  QString message;
  EXPECT_FALSE(utils::WriteWithFilter(dir.filePath("c.stl"), image, io::STL_FILE_FILTER, &message));
  EXPECT_FALSE(message.isEmpty());
  EXPECT_FALSE(QFileInfo::exists(dir.filePath("c.stl")));
}
