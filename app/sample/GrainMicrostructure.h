#pragma once

#include "data_bridge/zr_contract/DataType.h"

#include <array>
#include <cstdint>
#include <vector>

namespace zr::sample
{
using zr::core::usize;

// A synthetic polycrystal: one grain centre jittered inside each cell of a coarse lattice, every voxel
// of an edge^3 cube belonging to the nearest centre (a Voronoi tessellation). Deterministic for a
// given random start value. Feature ids run from 1; 0 is "no grain".
class GrainMicrostructure
{
public:
  GrainMicrostructure(usize edge, std::uint64_t randomStart);

  usize edge() const;
  usize voxelCount() const;
  // Grains along one edge of the coarse lattice.
  usize latticeEdge() const;
  usize grainCount() const;

  // One id per voxel, z slowest, x fastest.
  const std::vector<std::int32_t>& featureIds() const;
  // Centre of a grain in voxel units.
  std::array<float, 3> centre(std::int32_t featureId) const;
  std::int32_t phase(std::int32_t featureId) const;
  // Bunge Euler angles in radians.
  std::array<float, 3> eulerAngles(std::int32_t featureId) const;
  std::array<std::uint8_t, 3> ipfColor(std::int32_t featureId) const;
  // Voxels per grain, indexed by feature id.
  const std::vector<std::uint64_t>& voxelCounts() const;
  // Grains whose lattice cells touch (26-neighbourhood), per feature id.
  std::vector<std::vector<std::int32_t>> neighbours() const;
  // Indexing confidence of a voxel: high inside grains, low on boundaries, NaN for a few voxels.
  float confidence(usize voxelIndex) const;

private:
  void placeCentres(std::uint64_t randomStart);
  void assignVoxels();

  usize m_Edge = 0;
  usize m_LatticeEdge = 0;
  float m_LatticeSpacing = 1.0f;
  std::vector<std::array<float, 3>> m_Centres;
  std::vector<std::int32_t> m_Phases;
  std::vector<std::array<float, 3>> m_Eulers;
  std::vector<std::int32_t> m_FeatureIds;
  std::vector<std::uint64_t> m_VoxelCounts;
};
} // namespace zr::sample
