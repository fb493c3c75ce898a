#include "app/sample/GrainMicrostructure.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace zr::sample
{
namespace
{
constexpr float k_Pi = 3.14159265358979f;
// Mean grain diameter in voxels.
constexpr usize k_GrainSize = 8;

// A cheap, well-mixed hash of a voxel index (splitmix64), as a value in [0, 1).
float UnitHash(std::uint64_t value)
{
  value += 0x9E3779B97F4A7C15ull;
  value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9ull;
  value = (value ^ (value >> 27)) * 0x94D049BB133111EBull;
  value ^= value >> 31;
  return static_cast<float>(value >> 40) / static_cast<float>(1ull << 24);
}
} // namespace

GrainMicrostructure::GrainMicrostructure(usize edge, std::uint64_t randomStart)
    : m_Edge(std::max<usize>(edge, 2))
    , m_LatticeEdge(std::max<usize>(2, m_Edge / k_GrainSize))
    , m_LatticeSpacing(static_cast<float>(m_Edge) / static_cast<float>(m_LatticeEdge))
{
  placeCentres(randomStart);
  assignVoxels();
}

void GrainMicrostructure::placeCentres(std::uint64_t randomStart)
{
  std::mt19937_64 random(randomStart);
  std::uniform_real_distribution<float> jitter(0.15f, 0.85f);
  std::uniform_real_distribution<float> unit(0.0f, 1.0f);
  const usize count = grainCount();
  m_Centres.resize(count + 1);
  m_Phases.resize(count + 1, 0);
  m_Eulers.resize(count + 1, {0.0f, 0.0f, 0.0f});
  usize featureId = 1;
  for (usize k = 0; k < m_LatticeEdge; ++k)
  {
    for (usize j = 0; j < m_LatticeEdge; ++j)
    {
      for (usize i = 0; i < m_LatticeEdge; ++i, ++featureId)
      {
        m_Centres[featureId] = {(static_cast<float>(i) + jitter(random)) * m_LatticeSpacing,
                                (static_cast<float>(j) + jitter(random)) * m_LatticeSpacing,
                                (static_cast<float>(k) + jitter(random)) * m_LatticeSpacing};
        m_Phases[featureId] = unit(random) < 0.3f ? 2 : 1;
        m_Eulers[featureId] = {unit(random) * 2.0f * k_Pi, std::acos(1.0f - 2.0f * unit(random)),
                               unit(random) * 2.0f * k_Pi};
      }
    }
  }
}

void GrainMicrostructure::assignVoxels()
{
  const usize n = m_Edge;
  const auto lattice = static_cast<long>(m_LatticeEdge);
  m_FeatureIds.resize(n * n * n);
  tbb::parallel_for(tbb::blocked_range<usize>(0, n),
                    [&](const tbb::blocked_range<usize>& zs)
                    {
                      for (usize z = zs.begin(); z < zs.end(); ++z)
                      {
                        for (usize y = 0; y < n; ++y)
                        {
                          for (usize x = 0; x < n; ++x)
                          {
                            const float p[3] = {static_cast<float>(x) + 0.5f, static_cast<float>(y) + 0.5f,
                                                static_cast<float>(z) + 0.5f};
                            const long cell[3] = {static_cast<long>(p[0] / m_LatticeSpacing),
                                                  static_cast<long>(p[1] / m_LatticeSpacing),
                                                  static_cast<long>(p[2] / m_LatticeSpacing)};
                            float best = std::numeric_limits<float>::max();
                            std::int32_t bestId = 0;
                            for (long dk = -1; dk <= 1; ++dk)
                            {
                              const long k = cell[2] + dk;
                              if (k < 0 || k >= lattice)
                              {
                                continue;
                              }
                              for (long dj = -1; dj <= 1; ++dj)
                              {
                                const long j = cell[1] + dj;
                                if (j < 0 || j >= lattice)
                                {
                                  continue;
                                }
                                for (long di = -1; di <= 1; ++di)
                                {
                                  const long i = cell[0] + di;
                                  if (i < 0 || i >= lattice)
                                  {
                                    continue;
                                  }
                                  const auto id =
                                      static_cast<std::int32_t>((k * lattice + j) * lattice + i + 1);
                                  const auto& c = m_Centres[static_cast<usize>(id)];
                                  const float dx = c[0] - p[0];
                                  const float dy = c[1] - p[1];
                                  const float dz = c[2] - p[2];
                                  const float distance = dx * dx + dy * dy + dz * dz;
                                  if (distance < best)
                                  {
                                    best = distance;
                                    bestId = id;
                                  }
                                }
                              }
                            }
                            m_FeatureIds[(z * n + y) * n + x] = bestId;
                          }
                        }
                      }
                    });
  m_VoxelCounts.assign(grainCount() + 1, 0);
  for (std::int32_t id : m_FeatureIds)
  {
    m_VoxelCounts[static_cast<usize>(id)]++;
  }
}

usize GrainMicrostructure::edge() const
{
  return m_Edge;
}

usize GrainMicrostructure::voxelCount() const
{
  return m_Edge * m_Edge * m_Edge;
}

usize GrainMicrostructure::latticeEdge() const
{
  return m_LatticeEdge;
}

usize GrainMicrostructure::grainCount() const
{
  return m_LatticeEdge * m_LatticeEdge * m_LatticeEdge;
}

const std::vector<std::int32_t>& GrainMicrostructure::featureIds() const
{
  return m_FeatureIds;
}

std::array<float, 3> GrainMicrostructure::centre(std::int32_t featureId) const
{
  return m_Centres.at(static_cast<usize>(featureId));
}

std::int32_t GrainMicrostructure::phase(std::int32_t featureId) const
{
  return m_Phases.at(static_cast<usize>(featureId));
}

std::array<float, 3> GrainMicrostructure::eulerAngles(std::int32_t featureId) const
{
  return m_Eulers.at(static_cast<usize>(featureId));
}

std::array<std::uint8_t, 3> GrainMicrostructure::ipfColor(std::int32_t featureId) const
{
  // The sample direction [001] in the crystal frame, folded into the standard triangle of a cubic crystal.
  const auto& e = m_Eulers.at(static_cast<usize>(featureId));
  float direction[3] = {std::fabs(std::sin(e[1]) * std::sin(e[2])),
                        std::fabs(std::sin(e[1]) * std::cos(e[2])), std::fabs(std::cos(e[1]))};
  std::sort(direction, direction + 3);
  // direction[2] >= direction[1] >= direction[0]: red for <001>, green for <101>, blue for <111>.
  float rgb[3] = {direction[2] - direction[1], direction[1] - direction[0], direction[0]};
  const float maximum = std::max({rgb[0], rgb[1], rgb[2], 1e-6f});
  return {static_cast<std::uint8_t>(std::sqrt(rgb[0] / maximum) * 255.0f),
          static_cast<std::uint8_t>(std::sqrt(rgb[1] / maximum) * 255.0f),
          static_cast<std::uint8_t>(std::sqrt(rgb[2] / maximum) * 255.0f)};
}

const std::vector<std::uint64_t>& GrainMicrostructure::voxelCounts() const
{
  return m_VoxelCounts;
}

std::vector<std::vector<std::int32_t>> GrainMicrostructure::neighbours() const
{
  const auto lattice = static_cast<long>(m_LatticeEdge);
  std::vector<std::vector<std::int32_t>> lists(grainCount() + 1);
  for (long k = 0; k < lattice; ++k)
  {
    for (long j = 0; j < lattice; ++j)
    {
      for (long i = 0; i < lattice; ++i)
      {
        auto& list = lists[static_cast<usize>((k * lattice + j) * lattice + i + 1)];
        for (long dk = -1; dk <= 1; ++dk)
        {
          for (long dj = -1; dj <= 1; ++dj)
          {
            for (long di = -1; di <= 1; ++di)
            {
              const long ni = i + di;
              const long nj = j + dj;
              const long nk = k + dk;
              if ((di == 0 && dj == 0 && dk == 0) || ni < 0 || nj < 0 || nk < 0 || ni >= lattice ||
                  nj >= lattice || nk >= lattice)
              {
                continue;
              }
              list.push_back(static_cast<std::int32_t>((nk * lattice + nj) * lattice + ni + 1));
            }
          }
        }
      }
    }
  }
  return lists;
}

float GrainMicrostructure::confidence(usize voxelIndex) const
{
  const float noise = UnitHash(voxelIndex);
  if (noise < 0.004f)
  {
    return std::numeric_limits<float>::quiet_NaN();
  }
  const usize n = m_Edge;
  const usize x = voxelIndex % n;
  const usize y = (voxelIndex / n) % n;
  const usize z = voxelIndex / (n * n);
  const std::int32_t id = m_FeatureIds[voxelIndex];
  const bool boundary = (x + 1 < n && m_FeatureIds[voxelIndex + 1] != id) ||
                        (y + 1 < n && m_FeatureIds[voxelIndex + n] != id) ||
                        (z + 1 < n && m_FeatureIds[voxelIndex + n * n] != id);
  return boundary ? 0.25f + 0.3f * noise : 0.75f + 0.25f * noise;
}
} // namespace zr::sample
