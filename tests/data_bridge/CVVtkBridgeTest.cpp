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

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <map>

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

namespace
{
std::string joined(const std::vector<std::string>& messages)
{
  std::string text;
  for (const std::string& message : messages)
  {
    text += message + "\n";
  }
  return text;
}
} // namespace

TEST(VtkBridgeDamagedGeometry, VertexIdsPastTheVertexCountGiveNoDataset)
{
  // Every connectivity kind, with a far id and with a negative one from a signed writer.
  for (std::uint64_t badId : {std::uint64_t(4), std::uint64_t(1) << 40, ~std::uint64_t(0)})
  {
    auto ds = ZRTest::MakeAllKinds();
    for (const char* path : {"Scan/Edges/SharedEdgeList", "Scan/Surface/SharedFaceList",
                             "Scan/Quads/SharedFaceList", "Scan/Tets/SharedPolyhedronList"})
    {
      ds->getDataAs<UInt64Array>(DataPath::FromString(path, '/').value())->setValue(1, badId);
    }
    auto hexes = ds->getDataAs<UInt64Array>(DataPath({"Scan", "Hexes", "SharedPolyhedronList"}));
    hexes->setValue(7, 8); // one past the last of eight vertices

    const std::string shown = badId == ~std::uint64_t(0) ? "-1" : std::to_string(badId);
    for (const char* name : {"Edges", "Surface", "Quads", "Tets"})
    {
      auto wrapped = CV::VtkBridge::WrapGeometry(CV::VtkBridge::FindGeometry(ds, name));
      EXPECT_EQ(wrapped->m_DataSet, nullptr) << name;
      EXPECT_EQ(wrapped->m_DataPath.getTargetName(), name);
      ASSERT_EQ(wrapped->m_Messages.size(), 1u) << joined(wrapped->m_Messages);
      EXPECT_NE(wrapped->m_Messages.front().find(fmt::format("The geometry '{}' has no dataset: ", name)),
                std::string::npos)
          << wrapped->m_Messages.front();
      EXPECT_NE(wrapped->m_Messages.front().find("vertex id " + shown + " (cell 0)"), std::string::npos)
          << wrapped->m_Messages.front();
    }
    auto wrappedHexes = CV::VtkBridge::WrapGeometry(CV::VtkBridge::FindGeometry(ds, "Hexes"));
    EXPECT_EQ(wrappedHexes->m_DataSet, nullptr);
    ASSERT_EQ(wrappedHexes->m_Messages.size(), 1u);
    EXPECT_EQ(wrappedHexes->m_Messages.front(), "The geometry 'Hexes' has no dataset: its polyhedron list "
                                                "holds the vertex id 8 (cell 0), but there are "
                                                "only 8 vertices");
    // The geometries with good ids are untouched by the others.
    EXPECT_NE(CV::VtkBridge::WrapGeometry(CV::VtkBridge::FindGeometry(ds, "Grains"))->m_DataSet, nullptr);
  }
}

TEST(VtkBridgeDamagedGeometry, ReferencesToObjectsOfTheWrongKindGiveNoDataset)
{
  auto ds = ZRTest::MakeAllKinds();
  // A vertex list of the wrong element type.
  auto* centroids = ds->getDataAs<VertexGeom>(DataPath({"Scan", "Centroids"}));
  auto* intVertices = Int32Array::Create(*ds, "IntVertices", {2}, {3}, centroids->getId(), 0);
  centroids->setVertices(intVertices->getId());
  // An edge list of the wrong type: float values where vertex ids belong.
  auto* edges = ds->getDataAs<EdgeGeom>(DataPath({"Scan", "Edges"}));
  auto* floatEdges = Float32Array::Create(*ds, "FloatEdges", {1}, {2}, edges->getId(), 0.0f);
  edges->setEdges(floatEdges->getId());
  // Rectilinear bounds that name a group.
  auto* rect = ds->getDataAs<RectGridGeom>(DataPath({"Scan", "Rect"}));
  auto* group = DataGroup::Create(*ds, "NotBounds", rect->getId());
  rect->setBounds(rect->getXBoundsId(), group->getId(), rect->getZBoundsId());

  const std::map<std::string, std::string> expected = {
      {"Centroids",
       fmt::format("The geometry 'Centroids' has no dataset: its vertex list 'IntVertices' (object {}) is "
                   "a DataArray<int32> of 3 components, where a DataArray<float32> of 3 components is "
                   "needed",
                   intVertices->getId())},
      {"Edges",
       fmt::format("The geometry 'Edges' has no dataset: its edge list 'FloatEdges' (object {}) is a "
                   "DataArray<float32> of 2 components, where a DataArray<uint64> of 2 components is needed",
                   floatEdges->getId())},
      {"Rect",
       fmt::format("The geometry 'Rect' has no dataset: its Y bounds 'NotBounds' (object {}) is a DataGroup, "
                   "where a DataArray<float32> of 1 component is needed",
                   group->getId())}};
  for (const auto& [name, message] : expected)
  {
    auto wrapped = CV::VtkBridge::WrapGeometry(CV::VtkBridge::FindGeometry(ds, name));
    EXPECT_EQ(wrapped->m_DataSet, nullptr) << name;
    EXPECT_EQ(wrapped->m_Messages, std::vector<std::string>{message});
  }
}

TEST(VtkBridgeDamagedGeometry, MissingPartsAreSaid)
{
  auto ds = std::make_shared<DataStructure>();
  // An edge geometry without edges is drawn through its vertices, and says so.
  auto* edges = EdgeGeom::Create(*ds, "Edges");
  edges->createVertices(2);
  auto wrapped = CV::VtkBridge::WrapGeometry(CV::VtkBridge::FindGeometry(ds, "Edges"));
  ASSERT_NE(wrapped->m_DataSet, nullptr);
  EXPECT_EQ(wrapped->m_DataSet->GetNumberOfPoints(), 2);
  EXPECT_EQ(wrapped->m_DataSet->GetNumberOfCells(), 0);
  EXPECT_EQ(wrapped->m_Messages,
            std::vector<std::string>{"The geometry 'Edges' is drawn without its cells: it has no edge list"});

  // A triangle mesh with faces but no vertices would index points that are not there.
  auto* triangles = TriangleGeom::Create(*ds, "NoVertices");
  triangles->createFaces(1);
  wrapped = CV::VtkBridge::WrapGeometry(CV::VtkBridge::FindGeometry(ds, "NoVertices"));
  EXPECT_EQ(wrapped->m_DataSet, nullptr);
  EXPECT_EQ(wrapped->m_Messages,
            std::vector<std::string>{"The geometry 'NoVertices' has no dataset: it has no vertex list"});

  // A rectilinear grid without bounds, and an image too large for VTK's int dimensions.
  RectGridGeom::Create(*ds, "NoBounds");
  wrapped = CV::VtkBridge::WrapGeometry(CV::VtkBridge::FindGeometry(ds, "NoBounds"));
  EXPECT_EQ(wrapped->m_DataSet, nullptr);
  EXPECT_EQ(wrapped->m_Messages,
            std::vector<std::string>{"The geometry 'NoBounds' has no dataset: it has no X bounds"});
  ImageGeom::Create(*ds, "Huge")->setDimensions({std::uint64_t(1) << 31, 1, 1});
  wrapped = CV::VtkBridge::WrapGeometry(CV::VtkBridge::FindGeometry(ds, "Huge"));
  EXPECT_EQ(wrapped->m_DataSet, nullptr);
  EXPECT_EQ(
      wrapped->m_Messages,
      std::vector<std::string>{"The geometry 'Huge' has no dataset: its dimensions 2147483648 x 1 x 1 are "
                               "too large to draw"});
}
