#pragma once

#include "data_bridge/zr_contract/DataType.h"

#include <tbb/blocked_range2d.h>

namespace zr::core
{
// A rectangle of rows and columns; maxima are exclusive.
class Range2D
{
public:
  Range2D() = default;
  // Order: minimum column, maximum column, minimum row, maximum row.
  Range2D(usize minCol, usize maxCol, usize minRow, usize maxRow)
      : m_MinCol(minCol)
      , m_MaxCol(maxCol)
      , m_MinRow(minRow)
      , m_MaxRow(maxRow)
  {
  }
  // Rows are the first dimension of the oneTBB range, columns the second.
  explicit Range2D(const tbb::blocked_range2d<usize>& range)
      : m_MinCol(range.cols().begin())
      , m_MaxCol(range.cols().end())
      , m_MinRow(range.rows().begin())
      , m_MaxRow(range.rows().end())
  {
  }

  usize minRow() const { return m_MinRow; }
  usize maxRow() const { return m_MaxRow; }
  usize minCol() const { return m_MinCol; }
  usize maxCol() const { return m_MaxCol; }
  usize numRows() const { return m_MaxRow > m_MinRow ? m_MaxRow - m_MinRow : 0; }
  usize numCols() const { return m_MaxCol > m_MinCol ? m_MaxCol - m_MinCol : 0; }
  bool empty() const { return numRows() == 0 || numCols() == 0; }
  bool operator==(const Range2D& other) const
  {
    return m_MinCol == other.m_MinCol && m_MaxCol == other.m_MaxCol && m_MinRow == other.m_MinRow &&
           m_MaxRow == other.m_MaxRow;
  }

private:
  usize m_MinCol = 0;
  usize m_MaxCol = 0;
  usize m_MinRow = 0;
  usize m_MaxRow = 0;
};
} // namespace zr::core
