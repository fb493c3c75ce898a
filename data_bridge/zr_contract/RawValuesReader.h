#pragma once

#include "data_bridge/zr_contract/ComponentRanges.h"
#include "data_bridge/zr_contract/DataStore.h"
#include "data_bridge/zr_contract/ReadOnlyFile.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_reduce.h>
#include <tbb/partitioner.h>

#include <algorithm>
#include <atomic>
#include <cstdint>

namespace zr::core
{
// Bytes per read: small enough that a block is still in the core's cache when it is scanned, large
// enough that the cost of one call does not show.
constexpr std::uint64_t k_RawValueBlockBytes = std::uint64_t(1) << 20;

/**
 * Fills the store with values that lie in the file at offset exactly as the store holds them, and
 * leaves the per-component ranges on the store. Blocks of whole tuples are read in parallel, and
 * each is scanned right after it arrived, while it is still in cache, so the values are touched
 * once. False when the file does not hold the whole range or a read fails; the values are then
 * undefined and the store carries no ranges.
 */
template<class T>
bool ReadRawValuesWithRanges(const ReadOnlyFile& file, std::uint64_t offset, DataStore<T>& store)
{
  const usize numComponents = store.getNumberOfComponents();
  const usize numTuples = store.getNumberOfTuples();
  const std::uint64_t tupleBytes = numComponents * sizeof(T);
  if (!file.contains(offset, numTuples * tupleBytes))
  {
    return false;
  }
  if (numComponents == 0 || numTuples == 0)
  {
    store.setComponentRanges(ComponentRanges<T>(numComponents));
    return true;
  }
  const usize tuplesPerBlock = std::max<usize>(1, k_RawValueBlockBytes / tupleBytes);
  const usize numBlocks = (numTuples - 1) / tuplesPerBlock + 1;
  T* values = store.data();
  std::atomic<bool> failed{false};
  ComponentRanges<T> ranges = tbb::parallel_reduce(
      tbb::blocked_range<usize>(0, numBlocks, 1), ComponentRanges<T>(numComponents),
      [&](const tbb::blocked_range<usize>& blocks, ComponentRanges<T> partial)
      {
        for (usize block = blocks.begin(); block != blocks.end(); ++block)
        {
          const usize firstTuple = block * tuplesPerBlock;
          const usize count = std::min(tuplesPerBlock, numTuples - firstTuple);
          T* target = values + firstTuple * numComponents;
          if (failed.load(std::memory_order_relaxed) ||
              !file.readAt(offset + firstTuple * tupleBytes, target, count * tupleBytes))
          {
            failed.store(true, std::memory_order_relaxed);
            break;
          }
          partial.scan(target, count);
        }
        return partial;
      },
      [](ComponentRanges<T> left, const ComponentRanges<T>& right)
      {
        left.join(right);
        return left;
      },
      tbb::simple_partitioner());
  if (failed.load())
  {
    return false;
  }
  store.setComponentRanges(std::move(ranges));
  return true;
}
} // namespace zr::core
