#pragma once

#include "data_bridge/zr_contract/IParallelAlgorithm.h"
#include "data_bridge/zr_contract/Range2D.h"

#include <tbb/blocked_range2d.h>
#include <tbb/parallel_for.h>

#include <algorithm>
#include <optional>

namespace zr::core
{
// Runs a functor taking `const Range2D&` over a rectangle of rows and columns.
// With a chunk size the rectangle is walked chunk by chunk, columns outermost and rows innermost;
// chunk c of an axis covers [(c - 1) * extent, c * extent) clipped to the range. Each piece runs in
// parallel (oneTBB, empty pieces run nothing) or as one direct call, per getParallelizationEnabled().
class ParallelData2DAlgorithm : public IParallelAlgorithm
{
public:
  ParallelData2DAlgorithm() = default;

  void setRange(usize minCol, usize maxCol, usize minRow, usize maxRow)
  {
    m_Range = Range2D(minCol, maxCol, minRow, maxRow);
  }
  void setRange(const Range2D& range) { m_Range = range; }
  Range2D getRange() const { return m_Range; }
  // Chunk extents: numCols() columns by numRows() rows. A zero extent switches chunking off.
  void setChunkSize(const Range2D& chunkSize) { m_ChunkSize = chunkSize; }
  void setChunkSize(usize numCols, usize numRows) { m_ChunkSize = Range2D(0, numCols, 0, numRows); }
  void clearChunkSize() { m_ChunkSize.reset(); }
  std::optional<Range2D> getChunkSize() const { return m_ChunkSize; }

  template<class FunctorT>
  void execute(const FunctorT& functor) const
  {
    if (!m_ChunkSize.has_value() || m_ChunkSize->numCols() == 0 || m_ChunkSize->numRows() == 0)
    {
      executePiece(m_Range, functor);
      return;
    }
    const usize colExtent = m_ChunkSize->numCols();
    const usize rowExtent = m_ChunkSize->numRows();
    for (usize colChunk = 1; (colChunk - 1) * colExtent < m_Range.maxCol(); ++colChunk)
    {
      const usize minCol = std::max(m_Range.minCol(), (colChunk - 1) * colExtent);
      const usize maxCol = std::min(m_Range.maxCol(), colChunk * colExtent);
      if (minCol >= maxCol)
      {
        continue;
      }
      for (usize rowChunk = 1; (rowChunk - 1) * rowExtent < m_Range.maxRow(); ++rowChunk)
      {
        const usize minRow = std::max(m_Range.minRow(), (rowChunk - 1) * rowExtent);
        const usize maxRow = std::min(m_Range.maxRow(), rowChunk * rowExtent);
        if (minRow >= maxRow)
        {
          continue;
        }
        executePiece(Range2D(minCol, maxCol, minRow, maxRow), functor);
      }
    }
  }

private:
  template<class FunctorT>
  void executePiece(const Range2D& piece, const FunctorT& functor) const
  {
    if (getParallelizationEnabled())
    {
      if (piece.empty())
      {
        return;
      }
      tbb::blocked_range2d<usize> range(piece.minRow(), piece.maxRow(), piece.minCol(), piece.maxCol());
      tbb::parallel_for(range, [&functor](const tbb::blocked_range2d<usize>& r) { functor(Range2D(r)); });
    }
    else
    {
      functor(piece);
    }
  }

  Range2D m_Range;
  std::optional<Range2D> m_ChunkSize;
};
} // namespace zr::core
