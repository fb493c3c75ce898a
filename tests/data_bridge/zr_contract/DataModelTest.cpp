#include "data_bridge/zr_contract/AttributeMatrix.h"
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataGroup.h"
#include "data_bridge/zr_contract/DataPath.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/EdgeGeom.h"
#include "data_bridge/zr_contract/HexahedralGeom.h"
#include "data_bridge/zr_contract/ImageGeom.h"
#include "data_bridge/zr_contract/QuadGeom.h"
#include "data_bridge/zr_contract/RectGridGeom.h"
#include "data_bridge/zr_contract/TetrahedralGeom.h"
#include "data_bridge/zr_contract/TriangleGeom.h"
#include "data_bridge/zr_contract/VertexGeom.h"

#include <gtest/gtest.h>

#include <memory>

using namespace zr::core;

TEST(DataPathTest, StringConversionAndRelations)
{
  const std::optional<DataPath> path = DataPath::FromString("Scan/Grains/Cell Data/FeatureIds");
  ASSERT_TRUE(path.has_value());
  EXPECT_EQ(path->getLength(), 4u);
  EXPECT_EQ(path->getTargetName(), "FeatureIds");
  EXPECT_EQ(path->toString(), "Scan/Grains/Cell Data/FeatureIds");
  EXPECT_EQ(path->toString(" | "), "Scan | Grains | Cell Data | FeatureIds");
  EXPECT_EQ(path->getParent(), DataPath({"Scan", "Grains", "Cell Data"}));
  EXPECT_EQ(path->getParent().createChildPath("Phases").toString(), "Scan/Grains/Cell Data/Phases");
  EXPECT_TRUE(path->isDescendantOf(DataPath({"Scan"})));
  EXPECT_FALSE(DataPath({"Scan"}).isDescendantOf(*path));
  EXPECT_TRUE(DataPath({"A"}) < DataPath({"A", "B"}));
  EXPECT_TRUE(DataPath({"A", "B"}) < DataPath({"B"}));

  EXPECT_FALSE(DataPath::FromString("a//b").has_value());
  EXPECT_FALSE(DataPath::FromString("/a").has_value());
  EXPECT_TRUE(DataPath::FromString("")->empty());
  EXPECT_EQ(DataPath::FromString("a::b", "::")->getPathVector(), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(DataPath().getTargetName(), "");
  EXPECT_TRUE(DataPath().getParent().empty());
}

TEST(DataStructureTest, EmptyStructureIteratesNothing)
{
  DataStructure dataStructure;
  EXPECT_EQ(dataStructure.begin(), dataStructure.end());
  EXPECT_EQ(dataStructure.getSharedData(0), nullptr);
  EXPECT_EQ(dataStructure.getSharedData(1), nullptr);
  EXPECT_EQ(dataStructure.getData(DataPath({"x"})), nullptr);
  EXPECT_EQ(dataStructure.getData(DataPath()), nullptr);
}

TEST(DataStructureTest, TopLevelIteratesInAscendingIdOrder)
{
  DataStructure dataStructure;
  DataGroup::Create(dataStructure, "Zeta");
  auto* alpha = DataGroup::Create(dataStructure, "Alpha");
  DataGroup::Create(dataStructure, "Nested", alpha->getId());
  Float32Array::Create(dataStructure, "Middle", {2}, {1});

  std::vector<std::string> names;
  std::vector<IdType> ids;
  for (const auto& [id, object] : dataStructure)
  {
    names.push_back(object->getName());
    ids.push_back(id);
    EXPECT_EQ(object->getId(), id);
  }
  EXPECT_EQ(names, (std::vector<std::string>{"Zeta", "Alpha", "Middle"}));
  EXPECT_TRUE(std::is_sorted(ids.begin(), ids.end()));
  EXPECT_EQ(dataStructure.getSize(), 4u);
  EXPECT_EQ(dataStructure.getNextId(), ids.back() + 1);
}

TEST(DataStructureTest, InsertRefusesDuplicatesAndMissingParents)
{
  DataStructure dataStructure;
  auto* group = DataGroup::Create(dataStructure, "Group");
  ASSERT_NE(group, nullptr);
  EXPECT_EQ(DataGroup::Create(dataStructure, "Group"), nullptr);
  EXPECT_NE(DataGroup::Create(dataStructure, "Group", group->getId()), nullptr);
  EXPECT_EQ(DataGroup::Create(dataStructure, "Orphan", 999), nullptr);
  auto* array = Int32Array::Create(dataStructure, "Values", {3}, {1}, group->getId());
  ASSERT_NE(array, nullptr);
  // An array has no members.
  EXPECT_EQ(DataGroup::Create(dataStructure, "Inside", array->getId()), nullptr);
  // An attribute matrix takes arrays only.
  auto* matrix = AttributeMatrix::Create(dataStructure, "Cells", {3}, group->getId());
  ASSERT_NE(matrix, nullptr);
  EXPECT_EQ(DataGroup::Create(dataStructure, "Sub", matrix->getId()), nullptr);
  EXPECT_NE(Int32Array::Create(dataStructure, "Ids", {3}, {1}, matrix->getId()), nullptr);
}

TEST(DataStructureTest, ObjectWithTwoParentsHasTwoPaths)
{
  DataStructure dataStructure;
  auto* left = DataGroup::Create(dataStructure, "Left");
  auto* right = DataGroup::Create(dataStructure, "Right");
  auto* geometry = ImageGeom::Create(dataStructure, "Image", left->getId());
  ASSERT_EQ(geometry->getDataPaths().size(), 1u);

  ASSERT_TRUE(dataStructure.addAdditionalParent(geometry->getId(), right->getId()));
  std::vector<DataPath> paths = geometry->getDataPaths();
  std::sort(paths.begin(), paths.end());
  ASSERT_EQ(paths.size(), 2u);
  EXPECT_EQ(paths[0].toString(), "Left/Image");
  EXPECT_EQ(paths[1].toString(), "Right/Image");
  EXPECT_EQ(dataStructure.getData(DataPath({"Right", "Image"})), geometry);

  // Linking twice, or making a group its own ancestor, is refused.
  EXPECT_FALSE(dataStructure.addAdditionalParent(geometry->getId(), right->getId()));
  auto* inner = DataGroup::Create(dataStructure, "Inner", left->getId());
  EXPECT_FALSE(dataStructure.addAdditionalParent(left->getId(), inner->getId()));
}

TEST(DataStructureTest, CopyIsDeepAndOutlivesTheSource)
{
  auto source = std::make_unique<DataStructure>();
  auto* group = DataGroup::Create(*source, "Group");
  auto* image = ImageGeom::Create(*source, "Image", group->getId());
  image->setDimensions({4, 3, 2});
  AttributeMatrix* cells = image->createCellData();
  auto* values = Float32Array::Create(*source, "Values", cells->getTupleShape(), {1}, cells->getId(), 2.5f);
  const IdType valuesId = values->getId();

  DataStructure copy(*source);
  source.reset();

  ASSERT_EQ(copy.getSize(), 4u);
  auto* copiedImage = copy.getDataAs<ImageGeom>(DataPath({"Group", "Image"}));
  ASSERT_NE(copiedImage, nullptr);
  EXPECT_EQ(copiedImage->getDataStructure(), &copy);
  EXPECT_EQ(copiedImage->getDimensions(), (std::array<usize, 3>{4, 3, 2}));
  ASSERT_NE(copiedImage->getCellData(), nullptr);
  EXPECT_EQ(copiedImage->getCellData()->getDataMap().getKeys(), std::vector<IdType>{valuesId});
  auto* copiedValues = copy.getDataAs<Float32Array>(valuesId);
  ASSERT_NE(copiedValues, nullptr);
  EXPECT_EQ(copiedValues->getNumberOfTuples(), 24u);
  EXPECT_FLOAT_EQ(copiedValues->at(23), 2.5f);
  EXPECT_EQ(copiedValues->getDataPaths().front().toString(), "Group/Image/Cell Data/Values");
}

TEST(DataStructureTest, CopyGetsItsOwnObjectsButSharesStores)
{
  DataStructure source;
  auto* values = Int32Array::Create(source, "Values", {2}, {1}, std::nullopt, 1);
  DataStructure copy = source;
  auto* copied = copy.getDataAs<Int32Array>(values->getId());
  ASSERT_NE(copied, values);
  EXPECT_EQ(copied->getSharedDataStore(), values->getSharedDataStore());

  ASSERT_TRUE(copied->rename("Renamed"));
  EXPECT_EQ(values->getName(), "Values");
  EXPECT_EQ(source.getData(DataPath({"Renamed"})), nullptr);
  EXPECT_NE(copy.getData(DataPath({"Renamed"})), nullptr);
}

TEST(DataStructureTest, MovedStructureRepointsItsObjects)
{
  DataStructure source;
  auto* group = DataGroup::Create(source, "Group");
  DataStructure moved(std::move(source));
  EXPECT_EQ(group->getDataStructure(), &moved);
  EXPECT_EQ(moved.getData(DataPath({"Group"})), group);
}

TEST(DataStructureTest, AssignmentReplacesContentsAndReleasesOldObjects)
{
  DataStructure target;
  auto* old = DataGroup::Create(target, "Old");
  std::shared_ptr<DataObject> kept = target.getSharedData(old->getId());
  DataStructure source;
  DataGroup::Create(source, "New");
  target = source;
  EXPECT_EQ(kept->getDataStructure(), nullptr);
  EXPECT_EQ(target.getData(DataPath({"Old"})), nullptr);
  ASSERT_NE(target.getData(DataPath({"New"})), nullptr);
  EXPECT_EQ(target.getData(DataPath({"New"}))->getDataStructure(), &target);
  EXPECT_NE(target.getData(DataPath({"New"})), source.getData(DataPath({"New"})));
  // The same object cannot be inserted twice.
  EXPECT_FALSE(target.insert(target.getSharedData(DataPath({"New"})), std::nullopt));
}

TEST(DataStructureTest, ResetIdsRenumbersReferencesToo)
{
  DataStructure dataStructure;
  DataGroup::Create(dataStructure, "Spacer");
  auto* triangles = TriangleGeom::Create(dataStructure, "Mesh");
  triangles->createVertices(3);
  triangles->createFaces(1);
  triangles->createFaceAttributeMatrix();
  dataStructure.resetIds(100);

  std::vector<IdType> ids = dataStructure.getTopLevelIds();
  EXPECT_EQ(ids, (std::vector<IdType>{100, 101}));
  auto* mesh = dataStructure.getDataAs<TriangleGeom>(DataPath({"Mesh"}));
  ASSERT_NE(mesh, nullptr);
  ASSERT_NE(mesh->getVertices(), nullptr);
  EXPECT_EQ(mesh->getVertices()->getName(), "SharedVertexList");
  ASSERT_NE(mesh->getFaces(), nullptr);
  ASSERT_NE(mesh->getFaceAttributeMatrix(), nullptr);
  EXPECT_EQ(mesh->getFaceAttributeMatrix()->getParentIds(), std::vector<IdType>{101});
  EXPECT_EQ(dataStructure.getNextId(), 105u);
}

TEST(DataStructureTest, RemoveTakesOrphanedMembersAlong)
{
  DataStructure dataStructure;
  auto* a = DataGroup::Create(dataStructure, "A");
  auto* b = DataGroup::Create(dataStructure, "B");
  auto* shared = Int8Array::Create(dataStructure, "Shared", {1}, {1}, a->getId());
  auto* only = Int8Array::Create(dataStructure, "Only", {1}, {1}, a->getId());
  const IdType sharedId = shared->getId();
  const IdType onlyId = only->getId();
  dataStructure.addAdditionalParent(sharedId, b->getId());

  ASSERT_TRUE(dataStructure.removeData(DataPath({"A"})));
  EXPECT_FALSE(dataStructure.containsData(onlyId));
  ASSERT_TRUE(dataStructure.containsData(sharedId));
  EXPECT_EQ(dataStructure.getData(sharedId)->getDataPaths().size(), 1u);
  EXPECT_EQ(dataStructure.getData(sharedId)->getDataPaths().front().toString(), "B/Shared");
}

TEST(GeometryTest, KindsCastsAndCounts)
{
  DataStructure dataStructure;
  auto* image = ImageGeom::Create(dataStructure, "Image");
  auto* rect = RectGridGeom::Create(dataStructure, "Rect");
  auto* vertex = VertexGeom::Create(dataStructure, "Vertex");
  auto* edge = EdgeGeom::Create(dataStructure, "Edge");
  auto* triangle = TriangleGeom::Create(dataStructure, "Triangle");
  auto* quad = QuadGeom::Create(dataStructure, "Quad");
  auto* tet = TetrahedralGeom::Create(dataStructure, "Tet");
  auto* hex = HexahedralGeom::Create(dataStructure, "Hex");

  const std::vector<std::pair<IGeometry*, int>> kinds = {{image, 0},    {rect, 1}, {vertex, 2}, {edge, 3},
                                                         {triangle, 4}, {quad, 5}, {tet, 6},    {hex, 7}};
  for (const auto& [geometry, kind] : kinds)
  {
    EXPECT_EQ(geometry->getGeomType(), kind) << geometry->getName();
  }
  DataObject* object = triangle;
  EXPECT_NE(dynamic_cast<INodeGeometry0D*>(object), nullptr);
  EXPECT_NE(dynamic_cast<INodeGeometry1D*>(object), nullptr);
  EXPECT_NE(dynamic_cast<INodeGeometry2D*>(object), nullptr);
  EXPECT_EQ(dynamic_cast<INodeGeometry3D*>(object), nullptr);
  EXPECT_NE(dynamic_cast<IGridGeometry*>(static_cast<DataObject*>(rect)), nullptr);

  image->setDimensions({5, 4, 3});
  EXPECT_EQ(image->getNumberOfCells(), 60u);
  EXPECT_EQ(image->createCellData()->getTupleShape(), (ShapeType{3, 4, 5}));

  ASSERT_TRUE(rect->createBounds({0, 1, 3}, {0, 2}, {0, 1, 2, 4}));
  EXPECT_EQ(rect->getDimensions(), (std::array<usize, 3>{2, 1, 3}));
  EXPECT_EQ(rect->getSharedZBounds()->getNumberOfTuples(), 4u);
  EXPECT_FLOAT_EQ(rect->getSharedZBounds()->at(3), 4.0f);

  vertex->createVertices(7);
  EXPECT_EQ(vertex->getNumberOfCells(), 7u);
  EXPECT_EQ(vertex->createVertexAttributeMatrix()->getNumberOfTuples(), 7u);
  edge->createEdges(5);
  EXPECT_EQ(edge->getEdges()->getComponentShape(), ShapeType{2});
  EXPECT_EQ(edge->getNumberOfCells(), 5u);
  quad->createFaces(2);
  EXPECT_EQ(quad->getFaces()->getNumberOfComponents(), 4u);
  EXPECT_EQ(quad->getNumberOfVerticesPerFace(), 4u);
  tet->createPolyhedra(6);
  EXPECT_EQ(tet->getPolyhedra()->getNumberOfComponents(), 4u);
  EXPECT_EQ(tet->getNumberOfCells(), 6u);
  hex->createPolyhedra(1);
  EXPECT_EQ(hex->getPolyhedra()->getNumberOfComponents(), 8u);
  EXPECT_EQ(hex->getNumberOfVerticesPerCell(), 8u);
  EXPECT_EQ(hex->getPolyhedraAttributeMatrix(), nullptr);
}

TEST(GeometryTest, GeometryKeepsWorkingAfterStructureIsGoneOnlyThroughStores)
{
  std::shared_ptr<AbstractDataStore<float>> store;
  std::shared_ptr<DataObject> geometry;
  {
    DataStructure dataStructure;
    auto* vertex = VertexGeom::Create(dataStructure, "Points");
    vertex->createVertices(2)->getInMemoryStore()->data()[5] = 9.0f;
    store = vertex->getVertices()->getSharedDataStore();
    geometry = dataStructure.getSharedData(vertex->getId());
  }
  // The object no longer has a structure to look its members up in; the store itself lives on.
  EXPECT_EQ(geometry->getDataStructure(), nullptr);
  EXPECT_EQ(dynamic_cast<VertexGeom*>(geometry.get())->getVertices(), nullptr);
  EXPECT_FLOAT_EQ(store->getValue(5), 9.0f);
}
