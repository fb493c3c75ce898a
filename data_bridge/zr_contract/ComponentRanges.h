#pragma once

#include "data_bridge/zr_contract/DataType.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

namespace zr::core
{
/**
 * The minimum and maximum of each component of an array, gathered block by block while the values
 * are still in cache. A comparison with NaN is never true, so NaN is passed over; a component that
 * has seen no other value keeps the starting pair (largest finite value, lowest finite value).
 */
template<class T>
class ComponentRanges
{
public:
  explicit ComponentRanges(usize numComponents)
      : m_Min(numComponents, std::numeric_limits<T>::max())
      , m_Max(numComponents, std::numeric_limits<T>::lowest())
  {
  }

  usize getNumberOfComponents() const { return m_Min.size(); }
  const std::vector<T>& minima() const { return m_Min; }
  const std::vector<T>& maxima() const { return m_Max; }

  // Takes numTuples whole tuples, tuple-major.
  void scan(const T* values, usize numTuples)
  {
    switch (m_Min.size())
    {
    case 0:
      return;
    case 1:
      scanInLanes<1>(values, numTuples);
      return;
    case 2:
      scanInLanes<2>(values, numTuples);
      return;
    case 3:
      scanInLanes<3>(values, numTuples);
      return;
    case 4:
      scanInLanes<4>(values, numTuples);
      return;
    default:
      scanTuples(values, 0, numTuples);
    }
  }

  // Merges the ranges of another part of the same array.
  void join(const ComponentRanges& other)
  {
    for (std::size_t comp = 0; comp < m_Min.size(); ++comp)
    {
      m_Min[comp] = std::min(m_Min[comp], other.m_Min[comp]);
      m_Max[comp] = std::max(m_Max[comp], other.m_Max[comp]);
    }
  }

private:
  static constexpr std::size_t Gcd(std::size_t a, std::size_t b) { return b == 0 ? a : Gcd(b, a % b); }

  // Independent lanes, each an element-wise select over a fixed count, so the compiler keeps them in
  // vector registers (one running minimum is a dependency chain it will not vectorise). The lane
  // count is a multiple of the component count, so lane l always sees component l % NumComps.
  template<std::size_t NumComps>
  void scanInLanes(const T* values, usize numTuples)
  {
    constexpr std::size_t k_VectorWidth = sizeof(T) >= 16 ? 1 : 16 / sizeof(T);
    constexpr std::size_t k_Period = NumComps / Gcd(NumComps, k_VectorWidth) * k_VectorWidth;
    // A few vectors per accumulator hide the latency of the compare and select.
    constexpr std::size_t k_Unroll = k_Period / k_VectorWidth >= 4 ? 1 : 4 / (k_Period / k_VectorWidth);
    constexpr std::size_t k_Lanes = k_Period * k_Unroll;
    constexpr std::size_t k_TuplesPerStep = k_Lanes / NumComps;

    T laneLo[k_Lanes];
    T laneHi[k_Lanes];
    for (std::size_t lane = 0; lane < k_Lanes; ++lane)
    {
      laneLo[lane] = m_Min[lane % NumComps];
      laneHi[lane] = m_Max[lane % NumComps];
    }
    usize tuple = 0;
    for (; tuple + k_TuplesPerStep <= numTuples; tuple += k_TuplesPerStep)
    {
      const T* step = values + tuple * NumComps;
      for (std::size_t lane = 0; lane < k_Lanes; ++lane)
      {
        const T value = step[lane];
        laneLo[lane] = value < laneLo[lane] ? value : laneLo[lane];
        laneHi[lane] = value > laneHi[lane] ? value : laneHi[lane];
      }
    }
    for (std::size_t lane = 0; lane < k_Lanes; ++lane)
    {
      const std::size_t comp = lane % NumComps;
      m_Min[comp] = laneLo[lane] < m_Min[comp] ? laneLo[lane] : m_Min[comp];
      m_Max[comp] = laneHi[lane] > m_Max[comp] ? laneHi[lane] : m_Max[comp];
    }
    scanTuples(values, tuple, numTuples);
  }

  void scanTuples(const T* values, usize firstTuple, usize endTuple)
  {
    const std::size_t numComps = m_Min.size();
    for (usize tuple = firstTuple; tuple < endTuple; ++tuple)
    {
      const T* tupleValues = values + tuple * numComps;
      for (std::size_t comp = 0; comp < numComps; ++comp)
      {
        const T value = tupleValues[comp];
        m_Min[comp] = value < m_Min[comp] ? value : m_Min[comp];
        m_Max[comp] = value > m_Max[comp] ? value : m_Max[comp];
      }
    }
  }

  std::vector<T> m_Min;
  std::vector<T> m_Max;
};
} // namespace zr::core
