#pragma once

#include <tbb/blocked_range.h>
#include <tbb/parallel_reduce.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <type_traits>
#include <vector>

namespace CV
{
/**
 * Body of a oneTBB parallel_reduce that finds the minimum and maximum of each component and the
 * range of the tuple magnitudes. NaN values never win a comparison, so they are passed over.
 */
template<typename T>
class ComputeRangeFunctor
{
public:
  ComputeRangeFunctor(const T* buffer, std::size_t numComponents)
      : m_Buffer(buffer)
      , m_NumComponents(numComponents)
      , m_Min(numComponents, std::numeric_limits<T>::max())
      , m_Max(numComponents, std::numeric_limits<T>::lowest())
  {
  }

  ComputeRangeFunctor(ComputeRangeFunctor& other, tbb::split)
      : ComputeRangeFunctor(other.m_Buffer, other.m_NumComponents)
  {
  }

  void operator()(const tbb::blocked_range<unsigned long>& range)
  {
    if (m_NumComponents == 1)
    {
      scanSingleComponent(range.begin(), range.end());
      return;
    }
    for (unsigned long tuple = range.begin(); tuple != range.end(); ++tuple)
    {
      const T* values = m_Buffer + tuple * m_NumComponents;
      double sumOfSquares = 0.0;
      for (std::size_t comp = 0; comp < m_NumComponents; ++comp)
      {
        const T value = values[comp];
        m_Min[comp] = value < m_Min[comp] ? value : m_Min[comp];
        m_Max[comp] = value > m_Max[comp] ? value : m_Max[comp];
        sumOfSquares += static_cast<double>(value) * static_cast<double>(value);
      }
      updateMagnitude(sumOfSquares);
    }
  }

  void join(const ComputeRangeFunctor& other)
  {
    for (std::size_t comp = 0; comp < m_NumComponents; ++comp)
    {
      m_Min[comp] = std::min(m_Min[comp], other.m_Min[comp]);
      m_Max[comp] = std::max(m_Max[comp], other.m_Max[comp]);
    }
    m_MinSquaredMagnitude = std::min(m_MinSquaredMagnitude, other.m_MinSquaredMagnitude);
    m_MaxSquaredMagnitude = std::max(m_MaxSquaredMagnitude, other.m_MaxSquaredMagnitude);
  }

  const std::vector<T>& minima() const { return m_Min; }
  const std::vector<T>& maxima() const { return m_Max; }
  // The square root is monotonic, so it is taken once on the extremes rather than per tuple.
  double minMagnitude() const { return std::sqrt(m_MinSquaredMagnitude); }
  double maxMagnitude() const { return std::sqrt(m_MaxSquaredMagnitude); }

private:
  void scanSingleComponent(unsigned long begin, unsigned long end)
  {
    // Plain select-style loops that the compiler turns into packed min/max instructions. For one
    // component the magnitude is |value|; its largest value sits at one of the two extremes.
    T lo = m_Min[0];
    T hi = m_Max[0];
    double smallestAbs = std::numeric_limits<double>::max();
    if constexpr (std::is_floating_point_v<T> || std::is_unsigned_v<T>)
    {
      // Independent lanes, each an element-wise select, so the compiler can keep them in vector
      // registers (a single running minimum is a dependency chain it will not vectorise).
      constexpr unsigned long k_Lanes = 16;
      T laneLo[k_Lanes];
      T laneHi[k_Lanes];
      T laneSmallest[k_Lanes];
      for (unsigned long lane = 0; lane < k_Lanes; ++lane)
      {
        laneLo[lane] = lo;
        laneHi[lane] = hi;
        laneSmallest[lane] = std::numeric_limits<T>::max();
      }
      unsigned long i = begin;
      for (; i + k_Lanes <= end; i += k_Lanes)
      {
        for (unsigned long lane = 0; lane < k_Lanes; ++lane)
        {
          const T value = m_Buffer[i + lane];
          laneLo[lane] = value < laneLo[lane] ? value : laneLo[lane];
          laneHi[lane] = value > laneHi[lane] ? value : laneHi[lane];
          const T magnitude = value < T(0) ? static_cast<T>(-value) : value;
          laneSmallest[lane] = magnitude < laneSmallest[lane] ? magnitude : laneSmallest[lane];
        }
      }
      T smallest = std::numeric_limits<T>::max();
      for (unsigned long lane = 0; lane < k_Lanes; ++lane)
      {
        lo = laneLo[lane] < lo ? laneLo[lane] : lo;
        hi = laneHi[lane] > hi ? laneHi[lane] : hi;
        smallest = laneSmallest[lane] < smallest ? laneSmallest[lane] : smallest;
      }
      for (; i < end; ++i)
      {
        const T value = m_Buffer[i];
        lo = value < lo ? value : lo;
        hi = value > hi ? value : hi;
        const T magnitude = value < T(0) ? static_cast<T>(-value) : value;
        smallest = magnitude < smallest ? magnitude : smallest;
      }
      smallestAbs = static_cast<double>(smallest);
    }
    else
    {
      for (unsigned long i = begin; i < end; ++i)
      {
        const T value = m_Buffer[i];
        lo = value < lo ? value : lo;
        hi = value > hi ? value : hi;
        const double magnitude = std::fabs(static_cast<double>(value));
        smallestAbs = magnitude < smallestAbs ? magnitude : smallestAbs;
      }
    }
    m_Min[0] = lo;
    m_Max[0] = hi;
    if (begin < end && lo <= hi)
    {
      const double largestAbs =
          std::max(std::fabs(static_cast<double>(lo)), std::fabs(static_cast<double>(hi)));
      updateMagnitude(smallestAbs * smallestAbs);
      updateMagnitude(largestAbs * largestAbs);
    }
  }

  void updateMagnitude(double sumOfSquares)
  {
    m_MinSquaredMagnitude = sumOfSquares < m_MinSquaredMagnitude ? sumOfSquares : m_MinSquaredMagnitude;
    m_MaxSquaredMagnitude = sumOfSquares > m_MaxSquaredMagnitude ? sumOfSquares : m_MaxSquaredMagnitude;
  }

  const T* m_Buffer;
  std::size_t m_NumComponents;
  std::vector<T> m_Min;
  std::vector<T> m_Max;
  double m_MinSquaredMagnitude = std::numeric_limits<double>::max();
  double m_MaxSquaredMagnitude = std::numeric_limits<double>::min();
};
} // namespace CV
