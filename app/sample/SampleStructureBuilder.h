#pragma once

#include "app/sample/GrainMicrostructure.h"

#include "data_bridge/zr_contract/DataStructure.h"

#include <memory>

namespace zr::sample
{
// Builds the sample data structure over a grain microstructure:
//   Sample/                     group
//     Grains                    ImageGeom (edge^3 cells) with "Cell Data" (FeatureIds, Phases, EulerAngles,
//                               IPFColors, Confidence Index, Mask) and "Grain Data" (Phases, Volumes,
//                               NeighborList)
//     Ensemble Data/            group with "Phase Names" (StringArray)
//     Grain Centroids           VertexGeom (vertex data FeatureIds, Volumes)
//     Grain Neighbour Links     EdgeGeom (edge data Misorientation, vertex data FeatureIds)
//   Meshes/
//     Surface Meshes/
//       Grain Boundaries        TriangleGeom of a corner block (face data FaceLabels, FaceNormals; vertex
//       data NodeType) Top Surface             QuadGeom (face data FeatureIds, vertex data Height)
//     Specimen Holder           TetrahedralGeom (cell data Stress, vertex data Displacement)
//     Coarse Grid               HexahedralGeom (cell data Dominant FeatureId, Phases; vertex data
//     Temperature)
//   Thermal Grid                RectGridGeom (cell data Temperature, Zone)
// The big per-voxel arrays other than FeatureIds are computed when they are written.
class SampleStructureBuilder
{
public:
  explicit SampleStructureBuilder(std::shared_ptr<const GrainMicrostructure> microstructure);

  zr::core::DataStructure build() const;

  static constexpr float k_VoxelSpacing = 0.5f;

private:
  void addImage(zr::core::DataStructure& dataStructure, zr::core::IdType parentId) const;
  void addGrainGeometries(zr::core::DataStructure& dataStructure, zr::core::IdType parentId) const;
  void addBoundaryMesh(zr::core::DataStructure& dataStructure, zr::core::IdType parentId) const;
  void addTopSurface(zr::core::DataStructure& dataStructure, zr::core::IdType parentId) const;
  void addSpecimenHolder(zr::core::DataStructure& dataStructure, zr::core::IdType parentId) const;
  void addCoarseGrid(zr::core::DataStructure& dataStructure, zr::core::IdType parentId) const;
  void addThermalGrid(zr::core::DataStructure& dataStructure) const;

  std::shared_ptr<const GrainMicrostructure> m_Microstructure;
};
} // namespace zr::sample
