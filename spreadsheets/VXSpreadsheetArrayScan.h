#pragma once

#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/NeighborList.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_reduce.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>
#include <type_traits>
#include <vector>

/**
 * @brief The one pass over an array's values when it enters a table: per-component ranges and the
 * value whose text ('g', precision 6) is longest, the first of the greatest length winning. It runs
 * in parallel and reads the values block by block, so an array is never copied or converted.
 */
class VXSpreadsheetArrayScan
{
public:
  struct Result
  {
    double widestValue = 0.0;
    std::vector<std::array<double, 2>> ranges;
  };

  /** @brief Length of QString::number(value, 'g', 6), without building the string. */
  static int FormattedLength(double value)
  {
    if (std::isnan(value))
    {
      return 3; // "nan"
    }
    if (std::abs(value) < 1.0e6 && value == std::trunc(value))
    {
      // Whole numbers below a million are printed digit by digit.
      auto whole = static_cast<long long>(std::abs(value));
      int digits = 1;
      while (whole >= 10)
      {
        whole /= 10;
        ++digits;
      }
      return digits + (std::signbit(value) && value != 0.0 ? 1 : 0);
    }
    char buffer[64];
    const std::to_chars_result result =
        std::to_chars(buffer, buffer + sizeof(buffer), value, std::chars_format::general, 6);
    return static_cast<int>(result.ptr - buffer);
  }

  /** @brief Ranges per component and the widest value over the first `tuples` tuples. */
  template<class T>
  static Result ScanDataArray(const zr::core::DataArray<T>& array, zr::core::usize tuples)
  {
    const zr::core::AbstractDataStore<T>& store = array.getDataStoreRef();
    const zr::core::usize components = store.getNumberOfComponents();
    tuples = std::min<zr::core::usize>(tuples, store.getNumberOfTuples());
    DataBody<T> body(store, components);
    if (tuples > 0 && components > 0)
    {
      tbb::parallel_reduce(tbb::blocked_range<zr::core::usize>(0, tuples, k_GrainTuples), body);
    }
    return body.result();
  }

  /** @brief Ranges per list position and the widest value over the first `lists` lists. */
  template<class T>
  static Result ScanNeighborList(const zr::core::NeighborList<T>& list, zr::core::usize lists,
                                 zr::core::usize positions)
  {
    lists = std::min<zr::core::usize>(lists, list.getNumberOfLists());
    ListBody<T> body(list, positions);
    if (lists > 0 && positions > 0)
    {
      tbb::parallel_reduce(tbb::blocked_range<zr::core::usize>(0, lists, k_GrainTuples), body);
    }
    return body.result();
  }

private:
  static constexpr zr::core::usize k_GrainTuples = 1 << 14;
  static constexpr zr::core::usize k_BlockElements = 1 << 15;

  // Widest value and ranges of the part of the array one task has seen.
  template<class T>
  struct Partial
  {
    explicit Partial(zr::core::usize components)
        : minimum(components, std::numeric_limits<T>::max())
        , maximum(components, std::numeric_limits<T>::lowest())
    {
    }

    void see(T value, zr::core::usize component)
    {
      const auto asDouble = static_cast<double>(value);
      const int length = FormattedLength(asDouble);
      if (length > widestLength)
      {
        widestLength = length;
        widestValue = asDouble;
      }
      if (value < minimum[component])
      {
        minimum[component] = value;
      }
      if (maximum[component] < value)
      {
        maximum[component] = value;
      }
    }

    // rhs saw the values after ours: on a tie in length our earlier value stays.
    void join(const Partial& rhs)
    {
      if (rhs.widestLength > widestLength)
      {
        widestLength = rhs.widestLength;
        widestValue = rhs.widestValue;
      }
      for (zr::core::usize c = 0; c < minimum.size(); ++c)
      {
        minimum[c] = std::min<T>(minimum[c], rhs.minimum[c]);
        maximum[c] = std::max<T>(maximum[c], rhs.maximum[c]);
      }
    }

    Result result() const
    {
      Result out;
      out.widestValue = widestValue;
      out.ranges.reserve(minimum.size());
      for (zr::core::usize c = 0; c < minimum.size(); ++c)
      {
        out.ranges.push_back({static_cast<double>(minimum[c]), static_cast<double>(maximum[c])});
      }
      return out;
    }

    int widestLength = 0;
    double widestValue = 0.0;
    std::vector<T> minimum;
    std::vector<T> maximum;
  };

  template<class T>
  class DataBody
  {
  public:
    DataBody(const zr::core::AbstractDataStore<T>& store, zr::core::usize components)
        : m_Store(store)
        , m_Components(components)
        , m_Partial(components)
    {
    }
    DataBody(DataBody& other, tbb::split)
        : m_Store(other.m_Store)
        , m_Components(other.m_Components)
        , m_Partial(other.m_Components)
    {
    }

    void operator()(const tbb::blocked_range<zr::core::usize>& tuples)
    {
      const zr::core::usize first = tuples.begin() * m_Components;
      const zr::core::usize last = tuples.end() * m_Components;
      const auto* inMemory = dynamic_cast<const zr::core::DataStore<T>*>(&m_Store);
      if (inMemory != nullptr)
      {
        const T* values = inMemory->data();
        for (zr::core::usize i = first; i < last; ++i)
        {
          m_Partial.see(values[i], i % m_Components);
        }
        return;
      }
      // Stores elsewhere (on disk) hand out blocks; one small buffer per task.
      std::unique_ptr<T[]> block(new T[std::min(k_BlockElements, last - first)]);
      for (zr::core::usize start = first; start < last; start += k_BlockElements)
      {
        const zr::core::usize count = std::min(k_BlockElements, last - start);
        m_Store.copyIntoBuffer(start, block.get(), count);
        for (zr::core::usize i = 0; i < count; ++i)
        {
          m_Partial.see(block[i], (start + i) % m_Components);
        }
      }
    }

    void join(const DataBody& rhs) { m_Partial.join(rhs.m_Partial); }
    Result result() const { return m_Partial.result(); }

  private:
    const zr::core::AbstractDataStore<T>& m_Store;
    zr::core::usize m_Components = 0;
    Partial<T> m_Partial;
  };

  template<class T>
  class ListBody
  {
  public:
    ListBody(const zr::core::NeighborList<T>& list, zr::core::usize positions)
        : m_List(list)
        , m_Positions(positions)
        , m_Partial(positions)
    {
    }
    ListBody(ListBody& other, tbb::split)
        : m_List(other.m_List)
        , m_Positions(other.m_Positions)
        , m_Partial(other.m_Positions)
    {
    }

    void operator()(const tbb::blocked_range<zr::core::usize>& lists)
    {
      for (zr::core::usize l = lists.begin(); l < lists.end(); ++l)
      {
        const std::vector<T>& values = m_List.getList(l);
        const zr::core::usize count = std::min<zr::core::usize>(values.size(), m_Positions);
        for (zr::core::usize p = 0; p < count; ++p)
        {
          m_Partial.see(values[p], p);
        }
      }
    }

    void join(const ListBody& rhs) { m_Partial.join(rhs.m_Partial); }
    Result result() const { return m_Partial.result(); }

  private:
    const zr::core::NeighborList<T>& m_List;
    zr::core::usize m_Positions = 0;
    Partial<T> m_Partial;
  };
};
