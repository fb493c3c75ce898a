#include "data_bridge/CVVtkBridge.h"

#include "common/ZRTestStructures.h"
#include "data_bridge/CVArray.h"
#include "data_bridge/ZRVtkLibConstants.h"
#include "data_bridge/ZRVtkObjectName.h"
#include "data_bridge/zr_contract/DataGroup.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/EdgeGeom.h"
#include "data_bridge/zr_contract/HexahedralGeom.h"
#include "data_bridge/zr_contract/ImageGeom.h"
#include "data_bridge/zr_contract/KestrixIO.h"
#include "data_bridge/zr_contract/OutOfCoreDataStore.h"
#include "data_bridge/zr_contract/QuadGeom.h"
#include "data_bridge/zr_contract/RectGridGeom.h"
#include "data_bridge/zr_contract/TetrahedralGeom.h"
#include "data_bridge/zr_contract/TriangleGeom.h"
#include "data_bridge/zr_contract/VertexGeom.h"

#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkImageData.h>
#include <vtkPointData.h>
#include <vtkPolyData.h>
#include <vtkRectilinearGrid.h>
#include <vtkUnstructuredGrid.h>

#include <gtest/gtest.h>

using namespace zr::core;

namespace
{
using ZRTest::Fill;

// Two triangles over four vertices, with face data ("FaceLabels", "Area") and vertex data.
TriangleGeom* addTriangles(DataStructure& ds, const std::string& name, std::optional<IdType> parent)
{
  auto* triangles = ZRTest::AddTriangles(ds, name, parent);
  AttributeMatrix* faces = triangles->getFaceAttributeMatrix();
  Fill(Float32Array::Create(ds, "Area", faces->getTupleShape(), {1}, faces->getId()), {0.5f, 0.5f});
  AttributeMatrix* vertices = triangles->createVertexAttributeMatrix();
  Fill(Float64Array::Create(ds, "Curvature", vertices->getTupleShape(), {1}, vertices->getId()),
       {1, 2, 3, 4});
  return triangles;
}

std::shared_ptr<IGeometry> geometryOf(DataStructure& ds, IdType id)
{
  return std::dynamic_pointer_cast<IGeometry>(ds.getSharedData(id));
}

std::string captureStdout(const std::function<void()>& call)
{
  testing::internal::CaptureStdout();
  call();
  return testing::internal::GetCapturedStdout();
}
} // namespace

TEST(VtkBridge, ImageGeometryBecomesImageDataWithSharedCellArrays)
{
  DataStructure ds;
  auto* image = ImageGeom::Create(ds, "Grains");
  image->setDimensions({4, 3, 2});
  image->setSpacing({0.5f, 0.25f, 2.0f});
  image->setOrigin({1.0f, 2.0f, 3.0f});
  AttributeMatrix* cells = image->createCellData();
  auto* ids = Int32Array::Create(ds, "FeatureIds", cells->getTupleShape(), {1}, cells->getId());
  Float32Array::Create(ds, "Euler", cells->getTupleShape(), {3}, cells->getId());
  DataArray<bool>::Create(ds, "Mask", cells->getTupleShape(), {1}, cells->getId());
  ids->getDataStoreRef().setValue(23, 77);

  std::string output;
  std::shared_ptr<CV::VtkBridge::WrappedGeometry> wrapped;
  output = captureStdout([&]() { wrapped = CV::VtkBridge::WrapGeometry(geometryOf(ds, image->getId())); });
  EXPECT_EQ(output, ""); // the boolean mask is left out silently
  auto* imageData = vtkImageData::SafeDownCast(wrapped->m_DataSet);
  ASSERT_NE(imageData, nullptr);
  EXPECT_EQ(wrapped->m_DataPath.toString("/"), "Grains");
  EXPECT_EQ(ZRVtk::GetObjectName(imageData), "Grains");
  int dims[3];
  imageData->GetDimensions(dims);
  EXPECT_EQ(dims[0], 5);
  EXPECT_EQ(dims[1], 4);
  EXPECT_EQ(dims[2], 3);
  EXPECT_DOUBLE_EQ(imageData->GetSpacing()[1], 0.25);
  EXPECT_DOUBLE_EQ(imageData->GetOrigin()[2], 3.0);
  ASSERT_EQ(imageData->GetCellData()->GetNumberOfArrays(), 2);
  EXPECT_EQ(imageData->GetPointData()->GetNumberOfArrays(), 0);
  EXPECT_STREQ(imageData->GetCellData()->GetScalars()->GetName(), "FeatureIds");
  EXPECT_STREQ(imageData->GetCellData()->GetVectors()->GetName(), "Euler");
  EXPECT_EQ(imageData->GetCellData()->GetArray("FeatureIds")->GetComponent(23, 0), 77.0);
}

TEST(VtkBridge, RectilinearGridSharesItsBounds)
{
  DataStructure ds;
  auto* grid = RectGridGeom::Create(ds, "Rect");
  ASSERT_TRUE(grid->createBounds({0, 1, 3}, {0, 2}, {0, 1, 2, 5}));
  AttributeMatrix* cells = grid->createCellData();
  UInt16Array::Create(ds, "Phase", cells->getTupleShape(), {1}, cells->getId());

  auto wrapped = CV::VtkBridge::WrapGeometry(geometryOf(ds, grid->getId()));
  auto* rect = vtkRectilinearGrid::SafeDownCast(wrapped->m_DataSet);
  ASSERT_NE(rect, nullptr);
  EXPECT_EQ(rect->GetNumberOfCells(), 2 * 1 * 3);
  EXPECT_EQ(rect->GetXCoordinates()->GetComponent(2, 0), 3.0);
  EXPECT_EQ(rect->GetZCoordinates()->GetComponent(3, 0), 5.0);
  EXPECT_EQ(ZRVtk::GetObjectName(rect->GetYCoordinates()), "Y Bounds CV Array");
  EXPECT_EQ(rect->GetCellData()->GetNumberOfArrays(), 1);
}

TEST(VtkBridge, NodeGeometriesGetTheirDatasetAndCellTypes)
{
  DataStructure ds;
  auto* triangles = addTriangles(ds, "Surface", {});

  auto* quads = QuadGeom::Create(ds, "Quads");
  Fill(quads->createVertices(4), {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0});
  Fill(quads->createFaces(1), std::vector<std::uint64_t>{0, 1, 2, 3});

  auto* edges = EdgeGeom::Create(ds, "Edges");
  Fill(edges->createVertices(3), {0, 0, 0, 1, 0, 0, 2, 0, 0});
  Fill(edges->createEdges(2), std::vector<std::uint64_t>{0, 1, 1, 2});

  auto* tets = TetrahedralGeom::Create(ds, "Tets");
  Fill(tets->createVertices(4), {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1});
  Fill(tets->createPolyhedra(1), std::vector<std::uint64_t>{0, 1, 2, 3});

  auto* hexes = HexahedralGeom::Create(ds, "Hexes");
  Fill(hexes->createVertices(8), {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 0, 0, 1, 1, 0, 1, 1, 1, 1, 0, 1, 1});
  Fill(hexes->createPolyhedra(1), std::vector<std::uint64_t>{0, 1, 2, 3, 4, 5, 6, 7});

  auto* vertices = VertexGeom::Create(ds, "Centroids");
  Fill(vertices->createVertices(3), {0, 0, 0, 1, 1, 1, 2, 2, 2});

  vtkSmartPointer<vtkPolyData> surface =
      vtkPolyData::SafeDownCast(CV::VtkBridge::WrapGeometry(geometryOf(ds, triangles->getId()))->m_DataSet);
  ASSERT_NE(surface, nullptr);
  EXPECT_EQ(surface->GetNumberOfCells(), 2);
  EXPECT_EQ(surface->GetCellType(1), VTK_TRIANGLE);
  EXPECT_EQ(surface->GetNumberOfPoints(), 4);
  // Vertex coordinates are shared with the host, not copied.
  auto* coordinates = CV::Array<float>::SafeDownCast(surface->GetPoints()->GetData());
  ASSERT_NE(coordinates, nullptr);
  EXPECT_EQ(coordinates->GetDataStore().get(), triangles->getVertices()->getSharedDataStore().get());
  EXPECT_EQ(surface->GetCellData()->GetNumberOfArrays(), 2);
  EXPECT_EQ(surface->GetPointData()->GetNumberOfArrays(), 1);
  // The last one-component array in list order is the active scalars.
  EXPECT_STREQ(surface->GetCellData()->GetScalars()->GetName(), "Area");

  vtkSmartPointer<vtkPolyData> quad =
      vtkPolyData::SafeDownCast(CV::VtkBridge::WrapGeometry(geometryOf(ds, quads->getId()))->m_DataSet);
  ASSERT_NE(quad, nullptr);
  EXPECT_EQ(quad->GetCellType(0), VTK_QUAD);

  vtkSmartPointer<vtkPolyData> lines =
      vtkPolyData::SafeDownCast(CV::VtkBridge::WrapGeometry(geometryOf(ds, edges->getId()))->m_DataSet);
  ASSERT_NE(lines, nullptr);
  EXPECT_EQ(lines->GetLines()->GetNumberOfCells(), 2);

  vtkSmartPointer<vtkUnstructuredGrid> tet = vtkUnstructuredGrid::SafeDownCast(
      CV::VtkBridge::WrapGeometry(geometryOf(ds, tets->getId()))->m_DataSet);
  ASSERT_NE(tet, nullptr);
  EXPECT_EQ(tet->GetCellType(0), VTK_TETRA);

  vtkSmartPointer<vtkUnstructuredGrid> hex = vtkUnstructuredGrid::SafeDownCast(
      CV::VtkBridge::WrapGeometry(geometryOf(ds, hexes->getId()))->m_DataSet);
  ASSERT_NE(hex, nullptr);
  EXPECT_EQ(hex->GetCellType(0), VTK_HEXAHEDRON);
  EXPECT_DOUBLE_EQ(hex->GetBounds()[5], 1.0);

  // The vertex polydata has points and deliberately no cells.
  vtkSmartPointer<vtkPolyData> points =
      vtkPolyData::SafeDownCast(CV::VtkBridge::WrapGeometry(geometryOf(ds, vertices->getId()))->m_DataSet);
  ASSERT_NE(points, nullptr);
  EXPECT_EQ(points->GetNumberOfPoints(), 3);
  EXPECT_EQ(points->GetNumberOfCells(), 0);
}

TEST(VtkBridge, ArrayWithWrongTupleCountIsReportedAndSkipped)
{
  DataStructure ds;
  auto* image = ImageGeom::Create(ds, "Img");
  image->setDimensions({2, 2, 1});
  AttributeMatrix* cells = image->createCellData();
  Float32Array::Create(ds, "Good", cells->getTupleShape(), {1}, cells->getId());
  // Attribute matrices do not police their members' sizes; the bridge does.
  auto* bad = Float32Array::Create(ds, "Bad", ShapeType{3}, {1}, cells->getId());
  Int8Array::Create(ds, "After", cells->getTupleShape(), {1}, cells->getId());
  ASSERT_NE(bad, nullptr);
  std::shared_ptr<CV::VtkBridge::WrappedGeometry> wrapped;
  const std::string output =
      captureStdout([&]() { wrapped = CV::VtkBridge::WrapGeometry(geometryOf(ds, image->getId())); });
  EXPECT_EQ(output, "Cell Array 'Bad' has Tuple Count of 3 but the Geometry cell count is 4\n");
  ASSERT_NE(wrapped->m_DataSet, nullptr);
  EXPECT_EQ(wrapped->m_DataSet->GetCellData()->GetNumberOfArrays(), 2);
  EXPECT_NE(wrapped->m_DataSet->GetCellData()->GetArray("After"), nullptr);
}

TEST(VtkBridge, MultipleParentsAndNestingAreRefused)
{
  DataStructure ds;
  auto* first = DataGroup::Create(ds, "A");
  auto* second = DataGroup::Create(ds, "B");
  auto* shared = addTriangles(ds, "Shared", first->getId());
  ASSERT_TRUE(ds.addAdditionalParent(shared->getId(), second->getId()));
  std::shared_ptr<CV::VtkBridge::WrappedGeometry> wrapped;
  const std::string output =
      captureStdout([&]() { wrapped = CV::VtkBridge::WrapGeometry(geometryOf(ds, shared->getId())); });
  EXPECT_EQ(output, "Zorelib Geometry has multiple parents. This is not a supported configuration.\n");
  EXPECT_EQ(wrapped->m_DataSet, nullptr);

  // A geometry nested inside a geometry is not found; a geometry inside a group is.
  auto* outer = addTriangles(ds, "Outer", second->getId());
  addTriangles(ds, "Inner", outer->getId());
  auto structure = std::make_shared<DataStructure>(ds);
  const auto found = CV::VtkBridge::FindGeometry(structure);
  std::vector<std::string> names;
  for (const auto& geometry : found)
  {
    names.push_back(geometry->getName());
  }
  EXPECT_EQ(names, (std::vector<std::string>{"Shared", "Shared", "Outer"}));
  EXPECT_NE(CV::VtkBridge::FindGeometry(structure, "Outer"), nullptr);
  EXPECT_EQ(CV::VtkBridge::FindGeometry(structure, "Inner"), nullptr);
  EXPECT_EQ(CV::VtkBridge::FindGeometry(structure, "outer"), nullptr);
}

TEST(VtkBridge, DatasetOutlivesItsDataStructure)
{
  vtkSmartPointer<vtkDataSet> dataSet;
  {
    auto ds = std::make_shared<DataStructure>();
    addTriangles(*ds, "Surface", {});
    dataSet = CV::VtkBridge::WrapGeometry(CV::VtkBridge::FindGeometry(ds).front())->m_DataSet;
  }
  ASSERT_NE(dataSet, nullptr);
  EXPECT_EQ(dataSet->GetNumberOfPoints(), 4);
  EXPECT_DOUBLE_EQ(dataSet->GetPoint(2)[1], 1.0);
  EXPECT_EQ(dataSet->GetPointData()->GetArray("Curvature")->GetComponent(3, 0), 4.0);
}

TEST(VtkBridge, OriginalCellIdsOnlyForStructuredGrids)
{
  auto image = vtkSmartPointer<vtkImageData>::New();
  image->SetDimensions(101, 101, 101);
  CV::VtkBridge::AddOriginalCellIdsArray(image);
  vtkDataArray* ids = image->GetCellData()->GetArray(ZRVtkLib::ZorelibOriginCellIndexes);
  ASSERT_NE(ids, nullptr);
  EXPECT_EQ(ids->GetNumberOfTuples(), 1000000);
  EXPECT_EQ(ids->GetComponent(654321, 0), 654321.0);
  // No memory per cell: the array computes its values instead of holding a buffer.
  EXPECT_FALSE(ids->HasStandardMemoryLayout());

  auto polyData = vtkSmartPointer<vtkPolyData>::New();
  CV::VtkBridge::AddOriginalCellIdsArray(polyData);
  EXPECT_EQ(polyData->GetCellData()->GetNumberOfArrays(), 0);
  CV::VtkBridge::AddOriginalCellIdsArray(nullptr);
}

TEST(VtkBridge, CellAndPointIdsFollowMatrixMembership)
{
  DataStructure ds;
  auto* vertices = VertexGeom::Create(ds, "Points");
  Fill(vertices->createVertices(2), {0, 0, 0, 1, 1, 1});
  AttributeMatrix* vertexData = vertices->createVertexAttributeMatrix();
  auto* volumes = Float32Array::Create(ds, "Volumes", vertexData->getTupleShape(), {1}, vertexData->getId());
  const auto [cellIds, pointIds] = CV::VtkBridge::GetCellAndPointDataIds(geometryOf(ds, vertices->getId()));
  EXPECT_TRUE(cellIds.empty());
  EXPECT_EQ(pointIds, std::vector<IdType>{volumes->getId()});
}

TEST(VtkBridge, OutOfCoreArraysAreNeverReadByAddress)
{
  // Everything above 32 bytes stays in the file: the big arrays and the triangle lists, not the tiny ones.
  auto written = ZRTest::MakeAllKinds();
  const std::string path = testing::TempDir() + "/out-of-core.kestrix";
  ASSERT_TRUE(KESTRIX::WriteDataStructureToFile(path, *written).valid());
  KESTRIX::ImportOptions options;
  options.outOfCoreThresholdBytes = 32;
  Result<DataStructure> imported = KESTRIX::ImportDataStructureFromFile(path, options);
  ASSERT_TRUE(imported.valid());
  auto ds = std::make_shared<DataStructure>(std::move(imported.value()));

  auto grains = CV::VtkBridge::FindGeometry(ds, "Grains");
  auto* featureIds = ds->getDataAs<Int32Array>(DataPath({"Scan", "Grains", "Cell Data", "FeatureIds"}));
  ASSERT_NE(featureIds, nullptr);
  ASSERT_FALSE(featureIds->getDataFormat().empty());
  EXPECT_EQ(CV::VtkBridge::WrapDataArray(ds->getSharedData(featureIds->getId())), nullptr);
  // The grid itself needs no arrays: it wraps, without the out-of-core cell array.
  auto image = CV::VtkBridge::WrapGeometry(grains)->m_DataSet;
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->GetCellData()->GetArray("FeatureIds"), nullptr);

  // A mesh whose vertex list lives out of core cannot be drawn: no dataset.
  auto hexes = CV::VtkBridge::FindGeometry(ds, "Hexes");
  ASSERT_FALSE(dynamic_cast<HexahedralGeom&>(*hexes).getVertices()->getDataFormat().empty());
  EXPECT_EQ(CV::VtkBridge::WrapGeometry(hexes)->m_DataSet, nullptr);

  // The same array in memory wraps as usual.
  auto* inMemory = written->getDataAs<Int32Array>(DataPath({"Scan", "Grains", "Cell Data", "FeatureIds"}));
  EXPECT_NE(CV::VtkBridge::WrapDataArray(written->getSharedData(inMemory->getId())), nullptr);
}
