#include "app/sample/SampleStructureBuilder.h"

#include "app/sample/ComputedDataStore.h"

#include "data_bridge/zr_contract/AttributeMatrix.h"
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataGroup.h"
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

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <cmath>
#include <unordered_map>

namespace zr::sample
{
using namespace zr::core;

namespace
{
// Largest block of voxels the boundary mesh covers, so that it stays small for big samples.
constexpr usize k_BoundaryBlock = 48;

template<class T>
std::shared_ptr<ComputedDataStore<T>> MakeComputed(const ShapeType& tuples, const ShapeType& components,
                                                   typename ComputedDataStore<T>::Filler filler)
{
  return std::make_shared<ComputedDataStore<T>>(tuples, components, std::move(filler));
}

// Runs body(tuple) for tuples [first, first + count) in parallel.
template<class BodyT>
void ForEachTuple(usize first, usize count, const BodyT& body)
{
  tbb::parallel_for(tbb::blocked_range<usize>(first, first + count, 1 << 14),
                    [&](const tbb::blocked_range<usize>& r)
                    {
                      for (usize tuple = r.begin(); tuple < r.end(); ++tuple)
                      {
                        body(tuple);
                      }
                    });
}
} // namespace

SampleStructureBuilder::SampleStructureBuilder(std::shared_ptr<const GrainMicrostructure> microstructure)
    : m_Microstructure(std::move(microstructure))
{
}

DataStructure SampleStructureBuilder::build() const
{
  DataStructure dataStructure;
  auto* sample = DataGroup::Create(dataStructure, "Sample");
  auto* meshes = DataGroup::Create(dataStructure, "Meshes");
  auto* surfaces = DataGroup::Create(dataStructure, "Surface Meshes", meshes->getId());
  addImage(dataStructure, sample->getId());
  auto* ensemble = DataGroup::Create(dataStructure, "Ensemble Data", sample->getId());
  StringArray::Create(dataStructure, "Phase Names", {"Unknown Phase", "Ferrite", "Austenite"},
                      ensemble->getId());
  addGrainGeometries(dataStructure, sample->getId());
  addBoundaryMesh(dataStructure, surfaces->getId());
  addTopSurface(dataStructure, surfaces->getId());
  addSpecimenHolder(dataStructure, meshes->getId());
  addCoarseGrid(dataStructure, meshes->getId());
  addThermalGrid(dataStructure);
  return dataStructure;
}

void SampleStructureBuilder::addImage(DataStructure& dataStructure, IdType parentId) const
{
  const auto micro = m_Microstructure;
  const usize n = micro->edge();
  auto* image = ImageGeom::Create(dataStructure, "Grains", parentId);
  image->setDimensions({n, n, n});
  image->setSpacing({k_VoxelSpacing, k_VoxelSpacing, k_VoxelSpacing});
  image->setOrigin({0.0f, 0.0f, 0.0f});
  AttributeMatrix* cells = image->createCellData("Cell Data");
  const ShapeType tuples = cells->getTupleShape();
  const IdType cellsId = cells->getId();

  Int32Array::Create(dataStructure, "FeatureIds",
                     MakeComputed<std::int32_t>(tuples, {1},
                                                [micro](usize first, usize count, std::int32_t* out) {
                                                  std::copy_n(micro->featureIds().data() + first, count, out);
                                                }),
                     cellsId);
  Int32Array::Create(dataStructure, "Phases",
                     MakeComputed<std::int32_t>(tuples, {1},
                                                [micro](usize first, usize count, std::int32_t* out) {
                                                  ForEachTuple(first, count,
                                                               [&](usize t) {
                                                                 out[t - first] =
                                                                     micro->phase(micro->featureIds()[t]);
                                                               });
                                                }),
                     cellsId);
  Float32Array::Create(
      dataStructure, "EulerAngles",
      MakeComputed<float>(tuples, {3},
                          [micro](usize first, usize count, float* out)
                          {
                            ForEachTuple(first, count,
                                         [&](usize t)
                                         {
                                           const auto euler = micro->eulerAngles(micro->featureIds()[t]);
                                           std::copy(euler.begin(), euler.end(), out + (t - first) * 3);
                                         });
                          }),
      cellsId);
  UInt8Array::Create(
      dataStructure, "IPFColors",
      MakeComputed<std::uint8_t>(tuples, {3},
                                 [micro](usize first, usize count, std::uint8_t* out)
                                 {
                                   ForEachTuple(first, count,
                                                [&](usize t)
                                                {
                                                  const auto rgb = micro->ipfColor(micro->featureIds()[t]);
                                                  std::copy(rgb.begin(), rgb.end(), out + (t - first) * 3);
                                                });
                                 }),
      cellsId);
  Float32Array::Create(dataStructure, "Confidence Index",
                       MakeComputed<float>(tuples, {1},
                                           [micro](usize first, usize count, float* out) {
                                             ForEachTuple(first, count,
                                                          [&](usize t)
                                                          { out[t - first] = micro->confidence(t); });
                                           }),
                       cellsId);
  BoolArray::Create(dataStructure, "Mask",
                    MakeComputed<bool>(tuples, {1},
                                       [micro](usize first, usize count, bool* out) {
                                         ForEachTuple(first, count,
                                                      [&](usize t)
                                                      { out[t - first] = micro->confidence(t) > 0.5f; });
                                       }),
                    cellsId);

  // Per grain: index 0 is the "no grain" entry.
  const usize grains = micro->grainCount() + 1;
  AttributeMatrix* grainData = AttributeMatrix::Create(dataStructure, "Grain Data", {grains}, image->getId());
  auto* phases = Int32Array::Create(dataStructure, "Phases", {grains}, {1}, grainData->getId(), 0);
  auto* volumes = Float32Array::Create(dataStructure, "Volumes", {grains}, {1}, grainData->getId(), 0.0f);
  const float voxelVolume = k_VoxelSpacing * k_VoxelSpacing * k_VoxelSpacing;
  for (usize id = 1; id < grains; ++id)
  {
    phases->setValue(id, micro->phase(static_cast<std::int32_t>(id)));
    volumes->setValue(id, static_cast<float>(micro->voxelCounts()[id]) * voxelVolume);
  }
  auto* neighbours =
      NeighborList<std::int32_t>::Create(dataStructure, "NeighborList", grains, grainData->getId());
  std::vector<std::vector<std::int32_t>> lists = micro->neighbours();
  for (usize id = 0; id < grains; ++id)
  {
    neighbours->setList(id, std::move(lists[id]));
  }
}

void SampleStructureBuilder::addGrainGeometries(DataStructure& dataStructure, IdType parentId) const
{
  const GrainMicrostructure& micro = *m_Microstructure;
  const usize grains = micro.grainCount();

  auto* centroids = VertexGeom::Create(dataStructure, "Grain Centroids", parentId);
  float* positions = centroids->createVertices(grains)->getInMemoryStore()->data();
  AttributeMatrix* vertexData = centroids->createVertexAttributeMatrix("Vertex Data");
  std::int32_t* ids = Int32Array::Create(dataStructure, "FeatureIds", {grains}, {1}, vertexData->getId())
                          ->getInMemoryStore()
                          ->data();
  float* volumes = Float32Array::Create(dataStructure, "Volumes", {grains}, {1}, vertexData->getId())
                       ->getInMemoryStore()
                       ->data();
  const float voxelVolume = k_VoxelSpacing * k_VoxelSpacing * k_VoxelSpacing;
  for (usize i = 0; i < grains; ++i)
  {
    const auto id = static_cast<std::int32_t>(i + 1);
    const auto c = micro.centre(id);
    for (int axis = 0; axis < 3; ++axis)
    {
      positions[i * 3 + static_cast<usize>(axis)] = c[static_cast<usize>(axis)] * k_VoxelSpacing;
    }
    ids[i] = id;
    volumes[i] = static_cast<float>(micro.voxelCounts()[i + 1]) * voxelVolume;
  }

  // One edge per pair of touching grains.
  const std::vector<std::vector<std::int32_t>> lists = micro.neighbours();
  std::vector<std::uint64_t> pairs;
  for (usize id = 1; id <= grains; ++id)
  {
    for (std::int32_t other : lists[id])
    {
      if (static_cast<usize>(other) > id)
      {
        pairs.push_back(id - 1);
        pairs.push_back(static_cast<usize>(other) - 1);
      }
    }
  }
  auto* links = EdgeGeom::Create(dataStructure, "Grain Neighbour Links", parentId);
  std::copy_n(positions, grains * 3, links->createVertices(grains)->getInMemoryStore()->data());
  const usize edgeCount = pairs.size() / 2;
  std::copy(pairs.begin(), pairs.end(), links->createEdges(edgeCount)->getInMemoryStore()->data());
  AttributeMatrix* edgeData = links->createEdgeAttributeMatrix("Edge Data");
  float* misorientation =
      Float32Array::Create(dataStructure, "Misorientation", {edgeCount}, {1}, edgeData->getId())
          ->getInMemoryStore()
          ->data();
  for (usize e = 0; e < edgeCount; ++e)
  {
    const auto a = micro.eulerAngles(static_cast<std::int32_t>(pairs[e * 2] + 1));
    const auto b = micro.eulerAngles(static_cast<std::int32_t>(pairs[e * 2 + 1] + 1));
    misorientation[e] = std::fabs(a[1] - b[1]) * 57.29578f;
  }
  AttributeMatrix* linkVertices = links->createVertexAttributeMatrix("Vertex Data");
  std::copy_n(ids, grains,
              Int32Array::Create(dataStructure, "FeatureIds", {grains}, {1}, linkVertices->getId())
                  ->getInMemoryStore()
                  ->data());
}

void SampleStructureBuilder::addBoundaryMesh(DataStructure& dataStructure, IdType parentId) const
{
  const GrainMicrostructure& micro = *m_Microstructure;
  const usize n = micro.edge();
  const usize b = std::min(n, k_BoundaryBlock);
  const std::vector<std::int32_t>& featureIds = micro.featureIds();
  const auto voxel = [&](usize x, usize y, usize z) { return featureIds[(z * n + y) * n + x]; };

  // Corners of the block's voxel lattice, numbered as they are first used.
  std::vector<std::int64_t> cornerIndex((b + 1) * (b + 1) * (b + 1), -1);
  std::vector<float> vertices;
  std::vector<std::uint64_t> triangles;
  std::vector<std::int32_t> labels;
  std::vector<double> normals;
  const auto corner = [&](usize x, usize y, usize z) -> std::uint64_t
  {
    std::int64_t& index = cornerIndex[(z * (b + 1) + y) * (b + 1) + x];
    if (index < 0)
    {
      index = static_cast<std::int64_t>(vertices.size() / 3);
      vertices.push_back(static_cast<float>(x) * k_VoxelSpacing);
      vertices.push_back(static_cast<float>(y) * k_VoxelSpacing);
      vertices.push_back(static_cast<float>(z) * k_VoxelSpacing);
    }
    return static_cast<std::uint64_t>(index);
  };
  // A unit square between two voxels, as two triangles wound along the normal.
  const auto addFace =
      [&](const std::array<std::uint64_t, 4>& quad, std::int32_t inside, std::int32_t outside, int axis)
  {
    for (const auto& tri : {std::array<std::uint64_t, 3>{quad[0], quad[1], quad[2]},
                            std::array<std::uint64_t, 3>{quad[0], quad[2], quad[3]}})
    {
      triangles.insert(triangles.end(), tri.begin(), tri.end());
      labels.push_back(inside);
      labels.push_back(outside);
      for (int a = 0; a < 3; ++a)
      {
        normals.push_back(a == axis ? 1.0 : 0.0);
      }
    }
  };
  for (usize z = 0; z < b; ++z)
  {
    for (usize y = 0; y < b; ++y)
    {
      for (usize x = 0; x < b; ++x)
      {
        const std::int32_t id = voxel(x, y, z);
        if (x + 1 < b && voxel(x + 1, y, z) != id)
        {
          addFace({corner(x + 1, y, z), corner(x + 1, y + 1, z), corner(x + 1, y + 1, z + 1),
                   corner(x + 1, y, z + 1)},
                  id, voxel(x + 1, y, z), 0);
        }
        if (y + 1 < b && voxel(x, y + 1, z) != id)
        {
          addFace({corner(x, y + 1, z), corner(x, y + 1, z + 1), corner(x + 1, y + 1, z + 1),
                   corner(x + 1, y + 1, z)},
                  id, voxel(x, y + 1, z), 1);
        }
        if (z + 1 < b && voxel(x, y, z + 1) != id)
        {
          addFace({corner(x, y, z + 1), corner(x + 1, y, z + 1), corner(x + 1, y + 1, z + 1),
                   corner(x, y + 1, z + 1)},
                  id, voxel(x, y, z + 1), 2);
        }
      }
    }
  }
  const usize vertexCount = vertices.size() / 3;
  const usize faceCount = triangles.size() / 3;
  auto* mesh = TriangleGeom::Create(dataStructure, "Grain Boundaries", parentId);
  std::copy(vertices.begin(), vertices.end(), mesh->createVertices(vertexCount)->getInMemoryStore()->data());
  std::copy(triangles.begin(), triangles.end(), mesh->createFaces(faceCount)->getInMemoryStore()->data());
  AttributeMatrix* faceData = mesh->createFaceAttributeMatrix("Face Data");
  std::copy(labels.begin(), labels.end(),
            Int32Array::Create(dataStructure, "FaceLabels", {faceCount}, {2}, faceData->getId())
                ->getInMemoryStore()
                ->data());
  std::copy(normals.begin(), normals.end(),
            Float64Array::Create(dataStructure, "FaceNormals", {faceCount}, {3}, faceData->getId())
                ->getInMemoryStore()
                ->data());
  AttributeMatrix* vertexData = mesh->createVertexAttributeMatrix("Vertex Data");
  std::int8_t* nodeType =
      Int8Array::Create(dataStructure, "NodeType", {vertexCount}, {1}, vertexData->getId(), std::int8_t{0})
          ->getInMemoryStore()
          ->data();
  for (std::uint64_t index : triangles)
  {
    nodeType[index] = static_cast<std::int8_t>(std::min(nodeType[index] + 1, 100));
  }
}

void SampleStructureBuilder::addTopSurface(DataStructure& dataStructure, IdType parentId) const
{
  const GrainMicrostructure& micro = *m_Microstructure;
  const usize n = micro.edge();
  const usize q = std::max<usize>(2, std::min<usize>(n, 64) / 2);
  const float step = static_cast<float>(n) / static_cast<float>(q);
  const float top = static_cast<float>(n) * k_VoxelSpacing;
  auto* surface = QuadGeom::Create(dataStructure, "Top Surface", parentId);
  float* vertices = surface->createVertices((q + 1) * (q + 1))->getInMemoryStore()->data();
  AttributeMatrix* vertexData = surface->createVertexAttributeMatrix("Vertex Data");
  float* height = Float32Array::Create(dataStructure, "Height", {(q + 1) * (q + 1)}, {1}, vertexData->getId())
                      ->getInMemoryStore()
                      ->data();
  for (usize j = 0; j <= q; ++j)
  {
    for (usize i = 0; i <= q; ++i)
    {
      const usize v = j * (q + 1) + i;
      const float x = static_cast<float>(i) * step * k_VoxelSpacing;
      const float y = static_cast<float>(j) * step * k_VoxelSpacing;
      const float bump = 0.4f * std::sin(x * 0.7f) * std::cos(y * 0.5f);
      vertices[v * 3] = x;
      vertices[v * 3 + 1] = y;
      vertices[v * 3 + 2] = top + bump;
      height[v] = bump;
    }
  }
  std::uint64_t* quads = surface->createFaces(q * q)->getInMemoryStore()->data();
  AttributeMatrix* faceData = surface->createFaceAttributeMatrix("Face Data");
  std::int32_t* faceIds = Int32Array::Create(dataStructure, "FeatureIds", {q * q}, {1}, faceData->getId())
                              ->getInMemoryStore()
                              ->data();
  for (usize j = 0; j < q; ++j)
  {
    for (usize i = 0; i < q; ++i)
    {
      const usize f = j * q + i;
      const std::uint64_t v0 = j * (q + 1) + i;
      quads[f * 4] = v0;
      quads[f * 4 + 1] = v0 + 1;
      quads[f * 4 + 2] = v0 + q + 2;
      quads[f * 4 + 3] = v0 + q + 1;
      const auto x = std::min(n - 1, static_cast<usize>((static_cast<float>(i) + 0.5f) * step));
      const auto y = std::min(n - 1, static_cast<usize>((static_cast<float>(j) + 0.5f) * step));
      faceIds[f] = micro.featureIds()[((n - 1) * n + y) * n + x];
    }
  }
}

void SampleStructureBuilder::addSpecimenHolder(DataStructure& dataStructure, IdType parentId) const
{
  // A cube beside the sample, each of k^3 blocks split into five tetrahedra.
  constexpr usize k = 4;
  const float size = static_cast<float>(m_Microstructure->edge()) * k_VoxelSpacing * 0.5f;
  const float offset = -size * 1.2f;
  const float step = size / static_cast<float>(k);
  auto* holder = TetrahedralGeom::Create(dataStructure, "Specimen Holder", parentId);
  const usize vertexCount = (k + 1) * (k + 1) * (k + 1);
  float* vertices = holder->createVertices(vertexCount)->getInMemoryStore()->data();
  AttributeMatrix* vertexData = holder->createVertexAttributeMatrix("Vertex Data");
  float* displacement =
      Float32Array::Create(dataStructure, "Displacement", {vertexCount}, {3}, vertexData->getId())
          ->getInMemoryStore()
          ->data();
  const auto vertexIndex = [&](usize i, usize j, usize l) { return (l * (k + 1) + j) * (k + 1) + i; };
  for (usize l = 0; l <= k; ++l)
  {
    for (usize j = 0; j <= k; ++j)
    {
      for (usize i = 0; i <= k; ++i)
      {
        const usize v = vertexIndex(i, j, l);
        vertices[v * 3] = offset + static_cast<float>(i) * step;
        vertices[v * 3 + 1] = static_cast<float>(j) * step;
        vertices[v * 3 + 2] = static_cast<float>(l) * step;
        displacement[v * 3] = 0.01f * static_cast<float>(l * l);
        displacement[v * 3 + 1] = 0.0f;
        displacement[v * 3 + 2] = -0.02f * static_cast<float>(l);
      }
    }
  }
  std::uint64_t* tets = holder->createPolyhedra(k * k * k * 5)->getInMemoryStore()->data();
  AttributeMatrix* cellData = holder->createPolyhedraAttributeMatrix("Cell Data");
  float* stress = Float32Array::Create(dataStructure, "Stress", {k * k * k * 5}, {1}, cellData->getId())
                      ->getInMemoryStore()
                      ->data();
  usize t = 0;
  for (usize l = 0; l < k; ++l)
  {
    for (usize j = 0; j < k; ++j)
    {
      for (usize i = 0; i < k; ++i)
      {
        const std::uint64_t c[8] = {vertexIndex(i, j, l),
                                    vertexIndex(i + 1, j, l),
                                    vertexIndex(i + 1, j + 1, l),
                                    vertexIndex(i, j + 1, l),
                                    vertexIndex(i, j, l + 1),
                                    vertexIndex(i + 1, j, l + 1),
                                    vertexIndex(i + 1, j + 1, l + 1),
                                    vertexIndex(i, j + 1, l + 1)};
        const std::uint64_t split[5][4] = {{c[0], c[1], c[3], c[4]},
                                           {c[1], c[2], c[3], c[6]},
                                           {c[1], c[4], c[5], c[6]},
                                           {c[3], c[4], c[6], c[7]},
                                           {c[1], c[3], c[4], c[6]}};
        for (const auto& tet : split)
        {
          std::copy(tet, tet + 4, tets + t * 4);
          stress[t] = 100.0f + 25.0f * static_cast<float>(l) - 3.0f * static_cast<float>(t % 5);
          ++t;
        }
      }
    }
  }
}

void SampleStructureBuilder::addCoarseGrid(DataStructure& dataStructure, IdType parentId) const
{
  const GrainMicrostructure& micro = *m_Microstructure;
  constexpr usize k = 6;
  const usize n = micro.edge();
  const float step = static_cast<float>(n) * k_VoxelSpacing / static_cast<float>(k);
  auto* grid = HexahedralGeom::Create(dataStructure, "Coarse Grid", parentId);
  const usize vertexCount = (k + 1) * (k + 1) * (k + 1);
  float* vertices = grid->createVertices(vertexCount)->getInMemoryStore()->data();
  AttributeMatrix* vertexData = grid->createVertexAttributeMatrix("Vertex Data");
  double* temperature =
      Float64Array::Create(dataStructure, "Temperature", {vertexCount}, {1}, vertexData->getId())
          ->getInMemoryStore()
          ->data();
  const auto vertexIndex = [&](usize i, usize j, usize l) { return (l * (k + 1) + j) * (k + 1) + i; };
  for (usize l = 0; l <= k; ++l)
  {
    for (usize j = 0; j <= k; ++j)
    {
      for (usize i = 0; i <= k; ++i)
      {
        const usize v = vertexIndex(i, j, l);
        vertices[v * 3] = static_cast<float>(i) * step;
        vertices[v * 3 + 1] = static_cast<float>(j) * step;
        vertices[v * 3 + 2] = static_cast<float>(l) * step;
        temperature[v] =
            293.15 + 40.0 * static_cast<double>(l) / k + 5.0 * static_cast<double>(i * j) / (k * k);
      }
    }
  }
  std::uint64_t* hexes = grid->createPolyhedra(k * k * k)->getInMemoryStore()->data();
  AttributeMatrix* cellData = grid->createPolyhedraAttributeMatrix("Cell Data");
  std::int32_t* dominant =
      Int32Array::Create(dataStructure, "Dominant FeatureId", {k * k * k}, {1}, cellData->getId())
          ->getInMemoryStore()
          ->data();
  std::int32_t* phases = Int32Array::Create(dataStructure, "Phases", {k * k * k}, {1}, cellData->getId())
                             ->getInMemoryStore()
                             ->data();
  usize h = 0;
  for (usize l = 0; l < k; ++l)
  {
    for (usize j = 0; j < k; ++j)
    {
      for (usize i = 0; i < k; ++i, ++h)
      {
        const std::uint64_t cell[8] = {vertexIndex(i, j, l),
                                       vertexIndex(i + 1, j, l),
                                       vertexIndex(i + 1, j + 1, l),
                                       vertexIndex(i, j + 1, l),
                                       vertexIndex(i, j, l + 1),
                                       vertexIndex(i + 1, j, l + 1),
                                       vertexIndex(i + 1, j + 1, l + 1),
                                       vertexIndex(i, j + 1, l + 1)};
        std::copy(cell, cell + 8, hexes + h * 8);
        const auto centre = [&](usize c)
        { return std::min(n - 1, static_cast<usize>((static_cast<float>(c) + 0.5f) * n / k)); };
        const std::int32_t id = micro.featureIds()[(centre(l) * n + centre(j)) * n + centre(i)];
        dominant[h] = id;
        phases[h] = micro.phase(id);
      }
    }
  }
}

void SampleStructureBuilder::addThermalGrid(DataStructure& dataStructure) const
{
  const usize r = std::max<usize>(4, m_Microstructure->edge() / 8);
  const float extent = static_cast<float>(m_Microstructure->edge()) * k_VoxelSpacing;
  // Boundaries packed towards the origin, where the gradient is steepest.
  std::vector<float> bounds(r + 1);
  for (usize i = 0; i <= r; ++i)
  {
    bounds[i] = extent * std::pow(static_cast<float>(i) / static_cast<float>(r), 1.5f);
  }
  std::vector<float> zBounds(r / 2 + 1);
  for (usize i = 0; i < zBounds.size(); ++i)
  {
    zBounds[i] = extent + static_cast<float>(i) * 0.75f;
  }
  auto* grid = RectGridGeom::Create(dataStructure, "Thermal Grid");
  grid->createBounds(bounds, bounds, zBounds);
  AttributeMatrix* cells = grid->createCellData("Cell Data");
  const auto dims = grid->getDimensions();
  auto* temperature =
      Float32Array::Create(dataStructure, "Temperature", cells->getTupleShape(), {1}, cells->getId());
  auto* zone = UInt8Array::Create(dataStructure, "Zone", cells->getTupleShape(), {1}, cells->getId());
  for (usize z = 0; z < dims[2]; ++z)
  {
    for (usize y = 0; y < dims[1]; ++y)
    {
      for (usize x = 0; x < dims[0]; ++x)
      {
        const usize cell = (z * dims[1] + y) * dims[0] + x;
        const float d = std::sqrt(static_cast<float>(x * x + y * y)) / static_cast<float>(r);
        temperature->setValue(cell, 1500.0f - 900.0f * d - 50.0f * static_cast<float>(z));
        zone->setValue(cell, static_cast<std::uint8_t>(std::min(3.0f, d * 3.0f)));
      }
    }
  }
}
} // namespace zr::sample
