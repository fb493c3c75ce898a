#pragma once

#include "data_bridge/zr_contract/AttributeMatrix.h"
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataGroup.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/DispatchHelpers.h"
#include "data_bridge/zr_contract/EdgeGeom.h"
#include "data_bridge/zr_contract/HexahedralGeom.h"
#include "data_bridge/zr_contract/ImageGeom.h"
#include "data_bridge/zr_contract/NeighborList.h"
#include "data_bridge/zr_contract/QuadGeom.h"
#include "data_bridge/zr_contract/RectGridGeom.h"
#include "data_bridge/zr_contract/StringArray.h"
#include "data_bridge/zr_contract/TetrahedralGeom.h"
#include "data_bridge/zr_contract/TriangleGeom.h"
#include "data_bridge/zr_contract/VertexGeom.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <unistd.h>

namespace zr::test
{
using namespace zr::core;

// A fresh path in the temporary folder, removed when the object goes.
class TempFile
{
public:
  explicit TempFile(const std::string& name)
      : m_Path(std::filesystem::temp_directory_path() / ("zr_" + std::to_string(::getpid()) + "_" + name))
  {
    std::filesystem::remove(m_Path);
  }
  ~TempFile()
  {
    std::error_code error;
    std::filesystem::remove(m_Path, error);
  }
  const std::filesystem::path& path() const { return m_Path; }

private:
  std::filesystem::path m_Path;
};

// Fills an array with values that differ per element and per type (so a mix-up shows).
struct FillPatternFunctor
{
  template<class T>
  void operator()(DataStructure& dataStructure, IdType id) const
  {
    auto* array = dataStructure.getDataAs<DataArray<T>>(id);
    for (usize i = 0; i < array->getSize(); ++i)
    {
      if constexpr (std::is_same_v<T, bool>)
      {
        array->setValue(i, i % 3 == 0);
      }
      else if constexpr (std::is_floating_point_v<T>)
      {
        array->setValue(i, static_cast<T>(i) * static_cast<T>(0.25) - static_cast<T>(3));
      }
      else
      {
        array->setValue(i, static_cast<T>(i * 7 + sizeof(T)));
      }
    }
  }
};

struct CreateArrayFunctor
{
  template<class T>
  IdType operator()(DataStructure& dataStructure, const std::string& name, const ShapeType& tuples,
                    const ShapeType& components, IdType parent) const
  {
    return DataArray<T>::Create(dataStructure, name, tuples, components, parent)->getId();
  }
};

// Every element type under an image's cells, every geometry kind with its arrays, a neighbour list, a
// string array, an empty array, and one geometry reachable from two groups.
inline DataStructure MakeEveryKindStructure()
{
  DataStructure ds;
  auto* scan = DataGroup::Create(ds, "Scan");
  auto* meshes = DataGroup::Create(ds, "Meshes");

  auto* image = ImageGeom::Create(ds, "Image", scan->getId());
  image->setDimensions({4, 3, 2});
  image->setSpacing({0.5f, 0.25f, 2.0f});
  image->setOrigin({-1.0f, 10.0f, 3.5f});
  AttributeMatrix* cells = image->createCellData("Cell Data");
  for (int value = 0; value <= 10; ++value)
  {
    const auto dataType = static_cast<DataType>(value);
    const ShapeType components = value % 2 == 0 ? ShapeType{1} : ShapeType{2, 3};
    const IdType id =
        ExecuteDataFunction(CreateArrayFunctor{}, dataType, ds, "Array " + DataTypeToString(dataType),
                            cells->getTupleShape(), components, cells->getId());
    ExecuteDataFunction(FillPatternFunctor{}, dataType, ds, id);
  }
  auto* neighbors = NeighborList<std::int32_t>::Create(ds, "Neighbors", 3, scan->getId());
  neighbors->setList(0, {1, 2, 3});
  neighbors->setList(2, {-7});
  auto* weights = NeighborList<double>::Create(ds, "Weights", 2, scan->getId());
  weights->setList(1, {0.5, 1.5});
  StringArray::Create(ds, "Phase Names", {"Ferrite", "", "Ni\xc3\xb1o phase"}, scan->getId());
  Float64Array::Create(ds, "Empty", {0}, {3}, scan->getId());

  auto* rect = RectGridGeom::Create(ds, "Rect", scan->getId());
  rect->createBounds({0.0f, 1.0f, 3.0f}, {0.0f, 0.5f}, {0.0f, 2.0f, 2.5f, 4.0f});
  AttributeMatrix* rectCells = rect->createCellData();
  ExecuteDataFunction(
      FillPatternFunctor{}, DataType::float32, ds,
      Float32Array::Create(ds, "Density", rectCells->getTupleShape(), {1}, rectCells->getId())->getId());

  auto* vertex = VertexGeom::Create(ds, "Centroids", meshes->getId());
  vertex->createVertices(5);
  ExecuteDataFunction(FillPatternFunctor{}, DataType::float32, ds, vertex->getVerticesId().value());
  AttributeMatrix* vertexData = vertex->createVertexAttributeMatrix();
  UInt16Array::Create(ds, "Sizes", {5}, {1}, vertexData->getId(), std::uint16_t{4});

  auto* edge = EdgeGeom::Create(ds, "Edges", meshes->getId());
  edge->createVertices(3);
  edge->createEdges(2)->setValue(1, 1);
  edge->createVertexAttributeMatrix();
  Int32Array::Create(ds, "Edge Ids", {2}, {1}, edge->createEdgeAttributeMatrix()->getId(), 9);

  auto* triangles = TriangleGeom::Create(ds, "Triangles", meshes->getId());
  triangles->createVertices(4);
  triangles->createFaces(2);
  triangles->createEdges(5);
  Int32Array::Create(ds, "FaceLabels", {2}, {2}, triangles->createFaceAttributeMatrix()->getId(), -1);
  Float64Array::Create(ds, "Curvature", {4}, {1}, triangles->createVertexAttributeMatrix()->getId(), 0.125);

  auto* quads = QuadGeom::Create(ds, "Quads", meshes->getId());
  quads->createVertices(6);
  quads->createFaces(2);
  quads->createFaceAttributeMatrix();

  auto* tets = TetrahedralGeom::Create(ds, "Tets", meshes->getId());
  tets->createVertices(5);
  tets->createPolyhedra(2)->setValue(7, 4);
  UInt8Array::Create(ds, "Quality", {2}, {1}, tets->createPolyhedraAttributeMatrix()->getId(),
                     std::uint8_t{200});

  auto* hexes = HexahedralGeom::Create(ds, "Hexes", meshes->getId());
  hexes->createVertices(8);
  hexes->createPolyhedra(1);
  hexes->createPolyhedraAttributeMatrix();
  hexes->createVertexAttributeMatrix();

  // The triangle mesh is also reachable from the scan group.
  ds.addAdditionalParent(triangles->getId(), scan->getId());
  return ds;
}

struct ExpectSameValuesFunctor
{
  template<class T>
  void operator()(const IDataArray& expected, const IDataArray& actual, const std::string& path) const
  {
    const auto& a = dynamic_cast<const DataArray<T>&>(expected);
    const auto& b = dynamic_cast<const DataArray<T>&>(actual);
    ASSERT_EQ(a.getSize(), b.getSize()) << path;
    for (usize i = 0; i < a.getSize(); ++i)
    {
      ASSERT_EQ(a.getValue(i), b.getValue(i)) << path << " element " << i;
    }
  }
};

// Same objects (ids, names, kinds, paths), same shapes, values and geometry metadata.
inline void ExpectSameStructure(const DataStructure& expected, const DataStructure& actual)
{
  ASSERT_EQ(expected.getSize(), actual.getSize());
  EXPECT_EQ(expected.getTopLevelIds(), actual.getTopLevelIds());
  EXPECT_EQ(expected.getAllDataPaths(), actual.getAllDataPaths());
  for (const DataPath& path : expected.getAllDataPaths())
  {
    const DataObject* a = expected.getData(path);
    const DataObject* b = actual.getData(path);
    ASSERT_NE(b, nullptr) << path.toString();
    EXPECT_EQ(a->getId(), b->getId()) << path.toString();
    EXPECT_EQ(a->getTypeName(), b->getTypeName()) << path.toString();
    EXPECT_EQ(a->getDataPaths().size(), b->getDataPaths().size()) << path.toString();
    if (const auto* group = dynamic_cast<const BaseGroup*>(a))
    {
      EXPECT_EQ(group->getDataMap().getKeys(), dynamic_cast<const BaseGroup*>(b)->getDataMap().getKeys());
    }
    if (const auto* array = dynamic_cast<const IArray*>(a))
    {
      const auto* other = dynamic_cast<const IArray*>(b);
      EXPECT_EQ(array->getTupleShape(), other->getTupleShape()) << path.toString();
      EXPECT_EQ(array->getComponentShape(), other->getComponentShape()) << path.toString();
    }
    if (const auto* array = dynamic_cast<const IDataArray*>(a))
    {
      ExecuteDataFunction(ExpectSameValuesFunctor{}, array->getDataType(), *array,
                          *dynamic_cast<const IDataArray*>(b), path.toString());
    }
    if (const auto* strings = dynamic_cast<const StringArray*>(a))
    {
      EXPECT_EQ(strings->values(), dynamic_cast<const StringArray*>(b)->values());
    }
    if (const auto* list = dynamic_cast<const NeighborList<std::int32_t>*>(a))
    {
      EXPECT_EQ(list->getSharedListStore()->getLists(),
                dynamic_cast<const NeighborList<std::int32_t>*>(b)->getSharedListStore()->getLists());
    }
    if (const auto* matrix = dynamic_cast<const AttributeMatrix*>(a))
    {
      EXPECT_EQ(matrix->getTupleShape(), dynamic_cast<const AttributeMatrix*>(b)->getTupleShape());
    }
    if (const auto* image = dynamic_cast<const ImageGeom*>(a))
    {
      const auto* other = dynamic_cast<const ImageGeom*>(b);
      EXPECT_EQ(image->getDimensions(), other->getDimensions());
      EXPECT_EQ(image->getSpacing(), other->getSpacing());
      EXPECT_EQ(image->getOrigin(), other->getOrigin());
      EXPECT_EQ(image->getCellDataId(), other->getCellDataId());
    }
    if (const auto* rect = dynamic_cast<const RectGridGeom*>(a))
    {
      const auto* other = dynamic_cast<const RectGridGeom*>(b);
      EXPECT_EQ(rect->getDimensions(), other->getDimensions());
      EXPECT_EQ(rect->getXBoundsId(), other->getXBoundsId());
      EXPECT_EQ(rect->getCellDataId(), other->getCellDataId());
    }
    if (const auto* node = dynamic_cast<const INodeGeometry0D*>(a))
    {
      const auto* other = dynamic_cast<const INodeGeometry0D*>(b);
      EXPECT_EQ(node->getVerticesId(), other->getVerticesId());
      EXPECT_EQ(node->getVertexAttributeMatrixId(), other->getVertexAttributeMatrixId());
      EXPECT_EQ(node->getNumberOfCells(), other->getNumberOfCells()) << path.toString();
    }
    if (const auto* node = dynamic_cast<const INodeGeometry2D*>(a))
    {
      const auto* other = dynamic_cast<const INodeGeometry2D*>(b);
      EXPECT_EQ(node->getEdgesId(), other->getEdgesId());
      EXPECT_EQ(node->getFacesId(), other->getFacesId());
      EXPECT_EQ(node->getFaceAttributeMatrixId(), other->getFaceAttributeMatrixId());
    }
    if (const auto* node = dynamic_cast<const INodeGeometry3D*>(a))
    {
      const auto* other = dynamic_cast<const INodeGeometry3D*>(b);
      EXPECT_EQ(node->getPolyhedraId(), other->getPolyhedraId());
      EXPECT_EQ(node->getPolyhedraAttributeMatrixId(), other->getPolyhedraAttributeMatrixId());
    }
  }
}
} // namespace zr::test
