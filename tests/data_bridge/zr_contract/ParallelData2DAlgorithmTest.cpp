#include "data_bridge/zr_contract/ParallelData2DAlgorithm.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <vector>

using namespace zr::core;

namespace
{
// Records every piece it is called with, and counts visits per cell.
struct RecordingFunctor
{
  std::mutex* mutex;
  std::vector<Range2D>* pieces;
  std::vector<std::atomic<int>>* visits;
  usize numCols;

  void operator()(const Range2D& range) const
  {
    {
      std::lock_guard<std::mutex> lock(*mutex);
      pieces->push_back(range);
    }
    for (usize row = range.minRow(); row < range.maxRow(); ++row)
    {
      for (usize col = range.minCol(); col < range.maxCol(); ++col)
      {
        (*visits)[row * numCols + col]++;
      }
    }
  }
};
} // namespace

TEST(Range2DTest, ArgumentOrderAndBlockedRange)
{
  const Range2D range(1, 5, 2, 9);
  EXPECT_EQ(range.minCol(), 1u);
  EXPECT_EQ(range.maxCol(), 5u);
  EXPECT_EQ(range.minRow(), 2u);
  EXPECT_EQ(range.maxRow(), 9u);
  const Range2D fromTbb(tbb::blocked_range2d<usize>(2, 9, 1, 5));
  EXPECT_EQ(fromTbb, range);
}

TEST(ParallelData2DAlgorithmTest, SerialChunkWalkIsColumnsOutermost)
{
  std::mutex mutex;
  std::vector<Range2D> pieces;
  std::vector<std::atomic<int>> visits(10 * 7);
  ParallelData2DAlgorithm algorithm;
  algorithm.setParallelizationEnabled(false);
  algorithm.setRange(0, 7, 0, 10);
  algorithm.setChunkSize(4, 6);
  algorithm.execute(RecordingFunctor{&mutex, &pieces, &visits, 7});

  const std::vector<Range2D> expected = {Range2D(0, 4, 0, 6), Range2D(0, 4, 6, 10), Range2D(4, 7, 0, 6),
                                         Range2D(4, 7, 6, 10)};
  EXPECT_EQ(pieces, expected);
  for (const auto& count : visits)
  {
    EXPECT_EQ(count.load(), 1);
  }
}

TEST(ParallelData2DAlgorithmTest, ChunksAreAlignedToZeroAndClippedToTheRange)
{
  std::mutex mutex;
  std::vector<Range2D> pieces;
  std::vector<std::atomic<int>> visits(8 * 8);
  ParallelData2DAlgorithm algorithm;
  algorithm.setParallelizationEnabled(false);
  algorithm.setRange(3, 8, 5, 8);
  algorithm.setChunkSize(4, 4);
  algorithm.execute(RecordingFunctor{&mutex, &pieces, &visits, 8});
  const std::vector<Range2D> expected = {Range2D(3, 4, 5, 8), Range2D(4, 8, 5, 8)};
  EXPECT_EQ(pieces, expected);
}

TEST(ParallelData2DAlgorithmTest, ParallelRunVisitsEveryCellOnce)
{
  std::mutex mutex;
  std::vector<Range2D> pieces;
  std::vector<std::atomic<int>> visits(300 * 200);
  ParallelData2DAlgorithm algorithm;
  algorithm.setRange(0, 200, 0, 300);
  algorithm.execute(RecordingFunctor{&mutex, &pieces, &visits, 200});
  for (const auto& count : visits)
  {
    ASSERT_EQ(count.load(), 1);
  }
  algorithm.setChunkSize(64, 64);
  algorithm.execute(RecordingFunctor{&mutex, &pieces, &visits, 200});
  for (const auto& count : visits)
  {
    ASSERT_EQ(count.load(), 2);
  }
}

TEST(ParallelData2DAlgorithmTest, EmptyRangeRunsNothingInParallelAndOnceSerially)
{
  std::mutex mutex;
  std::vector<Range2D> pieces;
  std::vector<std::atomic<int>> visits(1);
  ParallelData2DAlgorithm algorithm;
  algorithm.setRange(0, 0, 0, 5);
  algorithm.execute(RecordingFunctor{&mutex, &pieces, &visits, 1});
  EXPECT_TRUE(pieces.empty());
  algorithm.setParallelizationEnabled(false);
  algorithm.execute(RecordingFunctor{&mutex, &pieces, &visits, 1});
  EXPECT_EQ(pieces.size(), 1u);
}
