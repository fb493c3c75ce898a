#pragma once

#include "platform/plottaro/Pen.h"
#include "platform/plottaro/PlottaroExport.h"

namespace plottaro
{
class AxisGrid;

/** @brief Major grid lines of the two axes; owned by its plot. */
class PLOTTARO_EXPORT PlotGrid
{
public:
  explicit PlotGrid(AxisGrid* grid)
      : m_Grid(grid)
  {
  }

  /** @brief Pen of the lines at the x ticks (the vertical ones). */
  void setXMajorPen(const Pen& pen);
  void setYMajorPen(const Pen& pen);
  void enableX(bool on);
  void enableY(bool on);
  bool xEnabled() const;
  bool yEnabled() const;

private:
  AxisGrid* m_Grid;
};
} // namespace plottaro
