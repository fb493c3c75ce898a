#include "DataBridgeTestFiles.h"

#include "data_bridge/ZRVtkDatasetReaders.h"
#include "data_bridge/ZRVtkObjectName.h"

#include <QFile>
#include <QTemporaryDir>

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkImageData.h>
#include <vtkPointData.h>
#include <vtkPolyData.h>
#include <vtkRectilinearGrid.h>
#include <vtkStructuredGrid.h>
#include <vtkUnstructuredGrid.h>

#include <gtest/gtest.h>

using DataBridgeTestFiles::Fixture;
namespace utils = ZRVtk::utils;

namespace
{
// Keeps the dataset alive: a raw pointer from SafeDownCast of the returned temporary would dangle.
template<class T>
vtkSmartPointer<T> As(const vtkSmartPointer<vtkDataSet>& dataSet)
{
  return vtkSmartPointer<T>(T::SafeDownCast(dataSet));
}

// The fixture image: 4 x 3 x 2 points, "Density" = 1.5 * point id, "Phase" = cell id % 3.
void ExpectFixtureImage(vtkDataSet* dataSet)
{
  auto* image = vtkImageData::SafeDownCast(dataSet);
  ASSERT_NE(image, nullptr);
  int dims[3];
  image->GetDimensions(dims);
  EXPECT_EQ(dims[0], 4);
  EXPECT_EQ(dims[1], 3);
  EXPECT_EQ(dims[2], 2);
  EXPECT_DOUBLE_EQ(image->GetOrigin()[1], 2.0);
  EXPECT_DOUBLE_EQ(image->GetSpacing()[2], 2.0);
  vtkDataArray* density = image->GetPointData()->GetArray("Density");
  ASSERT_NE(density, nullptr);
  ASSERT_EQ(density->GetNumberOfTuples(), 24);
  EXPECT_DOUBLE_EQ(density->GetTuple1(23), 34.5);
  vtkDataArray* phase = image->GetCellData()->GetArray("Phase");
  ASSERT_NE(phase, nullptr);
  ASSERT_EQ(phase->GetNumberOfTuples(), 6);
  EXPECT_EQ(phase->GetTuple1(4), 1.0);
}

// One hexahedron and one tetrahedron, "FeatureIds" 7 and 9 on the cells.
void ExpectFixtureUnstructured(vtkDataSet* dataSet)
{
  auto* grid = vtkUnstructuredGrid::SafeDownCast(dataSet);
  ASSERT_NE(grid, nullptr);
  EXPECT_EQ(grid->GetNumberOfPoints(), 9);
  ASSERT_EQ(grid->GetNumberOfCells(), 2);
  EXPECT_EQ(grid->GetCellType(0), VTK_HEXAHEDRON);
  EXPECT_EQ(grid->GetCellType(1), VTK_TETRA);
  vtkDataArray* ids = grid->GetCellData()->GetArray("FeatureIds");
  ASSERT_NE(ids, nullptr);
  EXPECT_EQ(ids->GetTuple1(1), 9.0);
}

void ExpectFixtureRectilinear(vtkDataSet* dataSet)
{
  auto* grid = vtkRectilinearGrid::SafeDownCast(dataSet);
  ASSERT_NE(grid, nullptr);
  int dims[3];
  grid->GetDimensions(dims);
  EXPECT_EQ(dims[0] * dims[1] * dims[2], 3 * 4 * 2);
  EXPECT_DOUBLE_EQ(grid->GetXCoordinates()->GetTuple1(2), 3.0);
  vtkDataArray* temperature = grid->GetCellData()->GetArray("Temperature");
  ASSERT_NE(temperature, nullptr);
  EXPECT_DOUBLE_EQ(temperature->GetTuple1(5), 25.0);
}

void ExpectFixtureStructured(vtkDataSet* dataSet)
{
  auto* grid = vtkStructuredGrid::SafeDownCast(dataSet);
  ASSERT_NE(grid, nullptr);
  EXPECT_EQ(grid->GetNumberOfPoints(), 18);
  // Point (i=2, j=0, k=0) lies on the unit circle at 90 degrees.
  EXPECT_NEAR(grid->GetPoint(2)[0], 0.0, 1e-6);
  EXPECT_NEAR(grid->GetPoint(2)[1], 1.0, 1e-6);
  vtkDataArray* velocity = grid->GetPointData()->GetArray("Velocity");
  ASSERT_NE(velocity, nullptr);
  EXPECT_EQ(velocity->GetNumberOfComponents(), 3);
  EXPECT_EQ(velocity->GetComponent(17, 2), 53.0);
}

// The sphere of 8 x 6 resolution.
void ExpectFixturePoly(vtkDataSet* dataSet)
{
  auto* poly = vtkPolyData::SafeDownCast(dataSet);
  ASSERT_NE(poly, nullptr);
  EXPECT_EQ(poly->GetNumberOfPoints(), 8 * 4 + 2);
  EXPECT_EQ(poly->GetNumberOfPolys(), 2 * 8 * 4);
  EXPECT_NEAR(poly->GetBounds()[5], 2.0, 1e-3);
}
} // namespace

TEST(ZRVtkXmlReaders, SerialFormatsGiveTheirDatasets)
{
  QString message;
  ExpectFixtureImage(utils::ReadImageData(Fixture("vtk/image.vti"), &message));
  ExpectFixtureRectilinear(utils::ReadRectilinearGrid(Fixture("vtk/rectilinear.vtr"), &message));
  ExpectFixtureStructured(utils::ReadStructuredGrid(Fixture("vtk/structured.vts"), &message));
  ExpectFixtureUnstructured(utils::ReadUnstructuredGrid(Fixture("vtk/unstructured.vtu"), &message));
  ExpectFixturePoly(utils::ReadPolyData(Fixture("vtk/poly.vtp"), &message));
  EXPECT_TRUE(message.isEmpty()) << message.toStdString();
}

TEST(ZRVtkXmlReaders, ParallelFormatsAssembleTheirPieces)
{
  QString message;
  ExpectFixtureImage(utils::ReadPImageData(Fixture("vtk/parallel_image.pvti"), &message));
  ExpectFixtureRectilinear(utils::ReadPRectilinearGrid(Fixture("vtk/parallel_rectilinear.pvtr"), &message));
  ExpectFixtureStructured(utils::ReadPStructuredGrid(Fixture("vtk/parallel_structured.pvts"), &message));
  ExpectFixtureUnstructured(
      utils::ReadPUnstructuredGrid(Fixture("vtk/parallel_unstructured.pvtu"), &message));
  ExpectFixturePoly(utils::ReadPPolyData(Fixture("vtk/parallel_poly.pvtp"), &message));
  EXPECT_TRUE(message.isEmpty()) << message.toStdString();
}

TEST(ZRVtkXmlReaders, WrongReaderForTheFileGivesNullAndMessage)
{
  QString message;
  EXPECT_EQ(utils::ReadImageData(Fixture("vtk/poly.vtp"), &message), nullptr);
  EXPECT_FALSE(message.isEmpty());
}

TEST(ZRVtkReadBySuffix, EachSuffixSelectsItsReader)
{
  ExpectFixtureImage(utils::Read(Fixture("vtk/image.vti")));
  ExpectFixtureImage(utils::Read(Fixture("vtk/parallel_image.pvti")));
  ExpectFixtureRectilinear(utils::Read(Fixture("vtk/rectilinear.vtr")));
  ExpectFixtureRectilinear(utils::Read(Fixture("vtk/parallel_rectilinear.pvtr")));
  ExpectFixtureStructured(utils::Read(Fixture("vtk/structured.vts")));
  ExpectFixtureStructured(utils::Read(Fixture("vtk/parallel_structured.pvts")));
  ExpectFixtureUnstructured(utils::Read(Fixture("vtk/unstructured.vtu")));
  ExpectFixtureUnstructured(utils::Read(Fixture("vtk/parallel_unstructured.pvtu")));
  ExpectFixturePoly(utils::Read(Fixture("vtk/poly.vtp")));
  ExpectFixturePoly(utils::Read(Fixture("vtk/parallel_poly.pvtp")));
  ExpectFixtureUnstructured(utils::Read(Fixture("vtk/legacy_ascii.vtk")));
  EXPECT_NE(As<vtkPolyData>(utils::Read(Fixture("vtk/tool_ascii.stl"))), nullptr);
}

TEST(ZRVtkReadBySuffix, UpperCaseSuffixIsFolded)
{
  QTemporaryDir dir;
  const QString upper = dir.filePath("IMAGE.VTI");
  ASSERT_TRUE(QFile::copy(Fixture("vtk/image.vti"), upper));
  ExpectFixtureImage(utils::Read(upper));
}

TEST(ZRVtkReadBySuffix, UnknownOrMissingSuffixGivesNull)
{
  QTemporaryDir dir;
  const QString noSuffix = dir.filePath("image");
  const QString otherSuffix = dir.filePath("image.xml");
  ASSERT_TRUE(QFile::copy(Fixture("vtk/image.vti"), noSuffix));
  ASSERT_TRUE(QFile::copy(Fixture("vtk/image.vti"), otherSuffix));
  EXPECT_EQ(utils::Read(noSuffix), nullptr);
  EXPECT_EQ(utils::Read(otherSuffix), nullptr);
  // Images go through ReadImage, never through Read.
  EXPECT_EQ(utils::Read(Fixture("images/gradient_100x50.png")), nullptr);
}

TEST(ZRVtkReadBySuffix, MissingFileGivesNullAndNamesTheProblem)
{
  QString message;
  EXPECT_EQ(utils::Read(QStringLiteral("/nonexistent/dir/missing.vtu"), &message), nullptr);
  EXPECT_FALSE(message.isEmpty());
  message.clear();
  EXPECT_EQ(utils::Read(QStringLiteral("/nonexistent/dir/missing.vtk"), &message), nullptr);
  EXPECT_FALSE(message.isEmpty());
}

TEST(ZRVtkLegacyReader, AsciiAndBinaryLegacyFiles)
{
  ExpectFixtureUnstructured(utils::ReadVtkData(Fixture("vtk/legacy_ascii.vtk")));
  ExpectFixturePoly(utils::ReadVtkData(Fixture("vtk/legacy_binary.vtk")));
  ExpectFixtureImage(utils::ReadVtkData(Fixture("vtk/legacy_image.vtk")));
}

TEST(ZRVtkLegacyReader, XmlUnderTheLegacySuffixIsReadAsXml)
{
  QString message;
  ExpectFixtureUnstructured(utils::ReadVtkData(Fixture("vtk/xml_named.vtk"), &message));
  EXPECT_TRUE(message.isEmpty()) << message.toStdString();
}

TEST(ZRVtkLegacyReader, LegacyFileWithoutDatasetGivesNull)
{
  QTemporaryDir dir;
  const QString path = dir.filePath("table.vtk");
  ASSERT_TRUE(DataBridgeTestFiles::WriteContents(
      path, "# vtk DataFile Version 5.1\nvtk output\nASCII\nDATASET TABLE\nROW_DATA 2\nFIELD FieldData 1\n"
            "Weight 1 2 float\n1 2\n"));
  QString message;
  EXPECT_EQ(utils::ReadVtkData(path, &message), nullptr);
  EXPECT_FALSE(message.isEmpty());
}

TEST(ZRVtkStlReader, AsciiAndBinaryFromVtkAndFromAnotherTool)
{
  for (const char* name : {"vtk/tool_ascii.stl", "vtk/tool_binary.stl"})
  {
    SCOPED_TRACE(name);
    auto poly = As<vtkPolyData>(utils::ReadSTLData(Fixture(name)));
    ASSERT_NE(poly, nullptr);
    // Four facets of a tetrahedron; shared corners are merged to four points.
    EXPECT_EQ(poly->GetNumberOfPolys(), 4);
    EXPECT_EQ(poly->GetNumberOfPoints(), 4);
    EXPECT_DOUBLE_EQ(poly->GetBounds()[5], 1.0);
  }
  auto ascii = As<vtkPolyData>(utils::ReadSTLData(Fixture("vtk/vtk_ascii.stl")));
  auto binary = As<vtkPolyData>(utils::ReadSTLData(Fixture("vtk/vtk_binary.stl")));
  ASSERT_NE(ascii, nullptr);
  ASSERT_NE(binary, nullptr);
  EXPECT_GT(ascii->GetNumberOfPolys(), 0);
  EXPECT_EQ(ascii->GetNumberOfPolys(), binary->GetNumberOfPolys());
  EXPECT_EQ(ascii->GetNumberOfPoints(), binary->GetNumberOfPoints());
}

TEST(ZRVtkImageReader, PixelsBecomeCellsWithTheFlag)
{
  auto image = As<vtkImageData>(utils::ReadImage(Fixture("images/gradient_100x50.png"), true));
  ASSERT_NE(image, nullptr);
  int dims[3];
  image->GetDimensions(dims);
  EXPECT_EQ(dims[0], 101);
  EXPECT_EQ(dims[1], 51);
  EXPECT_EQ(dims[2], 2);
  ASSERT_EQ(image->GetCellData()->GetNumberOfArrays(), 1);
  EXPECT_EQ(image->GetCellData()->GetArray(0)->GetNumberOfTuples(), 5000);
  EXPECT_EQ(image->GetPointData()->GetNumberOfArrays(), 0);
  EXPECT_EQ(ZRVtk::GetObjectName(image), "Image Data");
}

TEST(ZRVtkImageReader, PixelsStayOnPointsWithoutTheFlag)
{
  auto image = As<vtkImageData>(utils::ReadImage(Fixture("images/gradient_100x50.png"), false));
  ASSERT_NE(image, nullptr);
  int dims[3];
  image->GetDimensions(dims);
  EXPECT_EQ(dims[0], 100);
  EXPECT_EQ(dims[1], 50);
  EXPECT_EQ(dims[2], 1);
  vtkDataArray* pixels = image->GetPointData()->GetScalars();
  ASSERT_NE(pixels, nullptr);
  EXPECT_EQ(pixels->GetNumberOfComponents(), 3);
  // The gradient: red grows along x, green along y. VTK puts the first row of the file at the top (y = 49).
  int topMiddle[3] = {50, 49, 0};
  EXPECT_EQ(pixels->GetComponent(image->ComputePointId(topMiddle), 0), 50 * 255 / 100);
  int bottomLeft[3] = {0, 0, 0};
  EXPECT_EQ(pixels->GetComponent(image->ComputePointId(bottomLeft), 1), 49 * 255 / 50);
}

TEST(ZRVtkImageReader, EveryImageFormatIsRead)
{
  struct Case
  {
    const char* file;
    int width;
    int height;
    bool lossless;
  };
  for (const Case& c :
       {Case{"images/gradient_100x50.jpg", 100, 50, false}, Case{"images/gradient_100x50.tif", 100, 50, true},
        Case{"images/gradient_40x20.bmp", 40, 20, true}})
  {
    SCOPED_TRACE(c.file);
    QString message;
    auto image = As<vtkImageData>(utils::ReadImage(Fixture(c.file), false, &message));
    ASSERT_NE(image, nullptr) << message.toStdString();
    int dims[3];
    image->GetDimensions(dims);
    EXPECT_EQ(dims[0], c.width);
    EXPECT_EQ(dims[1], c.height);
    vtkDataArray* pixels = image->GetPointData()->GetScalars();
    ASSERT_NE(pixels, nullptr);
    // Blue is 128 everywhere in the gradient.
    int corner[3] = {c.width - 1, 0, 0};
    const double blue = pixels->GetComponent(image->ComputePointId(corner), 2);
    EXPECT_NEAR(blue, 128.0, c.lossless ? 0.0 : 6.0);
  }
}

TEST(ZRVtkImageReader, ContentDecidesTheReaderNotTheName)
{
  // A PNG named .jpg: the JPEG reader would fail on it.
  QString message;
  auto image = As<vtkImageData>(utils::ReadImage(Fixture("images/png_content.jpg"), false, &message));
  ASSERT_NE(image, nullptr) << message.toStdString();
  int dims[3];
  image->GetDimensions(dims);
  EXPECT_EQ(dims[0], 30);
  EXPECT_EQ(dims[1], 10);
}

TEST(ZRVtkImageReader, NonImagesGiveNull)
{
  EXPECT_EQ(utils::ReadImage(Fixture("vtk/image.vti"), true), nullptr);
  EXPECT_EQ(utils::ReadImage(Fixture("vtk/tool_ascii.stl"), false), nullptr);
}
