#pragma once

// Small data structures with every geometry kind, for tests of the bridge and the pipeline.
#include "data_bridge/zr_contract/DataGroup.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/EdgeGeom.h"
#include "data_bridge/zr_contract/HexahedralGeom.h"
#include "data_bridge/zr_contract/ImageGeom.h"
#include "data_bridge/zr_contract/QuadGeom.h"
#include "data_bridge/zr_contract/RectGridGeom.h"
#include "data_bridge/zr_contract/TetrahedralGeom.h"
#include "data_bridge/zr_contract/TriangleGeom.h"
#include "data_bridge/zr_contract/VertexGeom.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ZRTest
{
template<typename T>
void Fill(zr::core::DataArray<T>* array, const std::vector<T>& values)
{
  for (zr::core::usize i = 0; i < values.size(); ++i)
  {
    array->getDataStoreRef().setValue(i, values[i]);
  }
}

inline zr::core::ImageGeom* AddImage(zr::core::DataStructure& ds, const std::string& name,
                                     std::optional<zr::core::IdType> parent = {})
{
  auto* image = zr::core::ImageGeom::Create(ds, name, parent);
  image->setDimensions({3, 2, 2});
  zr::core::AttributeMatrix* cells = image->createCellData();
  auto* ids = zr::core::Int32Array::Create(ds, "FeatureIds", cells->getTupleShape(), {1}, cells->getId());
  Fill(ids, {1, 1, 2, 2, 3, 3, 1, 2, 3, 4, 4, 4});
  zr::core::UInt8Array::Create(ds, "Colors", cells->getTupleShape(), {3}, cells->getId());
  return image;
}

inline zr::core::TriangleGeom* AddTriangles(zr::core::DataStructure& ds, const std::string& name,
                                            std::optional<zr::core::IdType> parent = {})
{
  auto* triangles = zr::core::TriangleGeom::Create(ds, name, parent);
  Fill(triangles->createVertices(4), {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0});
  Fill(triangles->createFaces(2), std::vector<std::uint64_t>{0, 1, 2, 0, 2, 3});
  zr::core::AttributeMatrix* faces = triangles->createFaceAttributeMatrix();
  Fill(zr::core::Int32Array::Create(ds, "FaceLabels", faces->getTupleShape(), {2}, faces->getId()),
       {1, 2, 2, 3});
  return triangles;
}

// One geometry of each of the eight kinds under the group "Scan", in this order: "Grains" (image),
// "Rect", "Centroids" (vertices), "Edges", "Surface" (triangles), "Quads", "Tets", "Hexes".
inline std::shared_ptr<zr::core::DataStructure> MakeAllKinds()
{
  using namespace zr::core;
  auto ds = std::make_shared<DataStructure>();
  const IdType scan = DataGroup::Create(*ds, "Scan")->getId();
  AddImage(*ds, "Grains", scan);
  RectGridGeom::Create(*ds, "Rect", scan)->createBounds({0, 1, 2}, {0, 1}, {0, 1});
  Fill(VertexGeom::Create(*ds, "Centroids", scan)->createVertices(2), {0, 0, 0, 1, 1, 1});
  auto* edges = EdgeGeom::Create(*ds, "Edges", scan);
  Fill(edges->createVertices(2), {0, 0, 0, 1, 0, 0});
  Fill(edges->createEdges(1), std::vector<std::uint64_t>{0, 1});
  AddTriangles(*ds, "Surface", scan);
  auto* quads = QuadGeom::Create(*ds, "Quads", scan);
  Fill(quads->createVertices(4), {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0});
  Fill(quads->createFaces(1), std::vector<std::uint64_t>{0, 1, 2, 3});
  auto* tets = TetrahedralGeom::Create(*ds, "Tets", scan);
  Fill(tets->createVertices(4), {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1});
  Fill(tets->createPolyhedra(1), std::vector<std::uint64_t>{0, 1, 2, 3});
  auto* hexes = HexahedralGeom::Create(*ds, "Hexes", scan);
  Fill(hexes->createVertices(8), {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 0, 0, 1, 1, 0, 1, 1, 1, 1, 0, 1, 1});
  Fill(hexes->createPolyhedra(1), std::vector<std::uint64_t>{0, 1, 2, 3, 4, 5, 6, 7});
  return ds;
}
} // namespace ZRTest
