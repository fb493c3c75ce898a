#include "platform/plottaro/PlotGrid.h"

#include "platform/plottaro/AxisGrid.h"

namespace plottaro
{
void PlotGrid::setXMajorPen(const Pen& pen)
{
  m_Grid->setXPen(pen.toQPen());
}

void PlotGrid::setYMajorPen(const Pen& pen)
{
  m_Grid->setYPen(pen.toQPen());
}

void PlotGrid::enableX(bool on)
{
  m_Grid->enableX(on);
}

void PlotGrid::enableY(bool on)
{
  m_Grid->enableY(on);
}

bool PlotGrid::xEnabled() const
{
  return m_Grid->xEnabled();
}

bool PlotGrid::yEnabled() const
{
  return m_Grid->yEnabled();
}
} // namespace plottaro
