#pragma once

#include "platform/plottaro/Brush.h"
#include "platform/plottaro/Pen.h"
#include "platform/plottaro/PlotItem.h"

#include <vector>

class QwtPlotBarChart;

namespace plottaro
{
/** @brief One bar per (x, y) sample, from the baseline 0 (or the bottom of a logarithmic axis). */
class PLOTTARO_EXPORT PlotBarChart : public PlotItem
{
public:
  PlotBarChart();

  void setSamples(const std::vector<double>& x, const std::vector<double>& y);
  /** @brief Style of a series; this chart has one series, index 0. */
  void setSeriesPen(int index, const Pen& pen);
  void setSeriesBrush(int index, const Brush& brush);
  /** @brief Pixels between neighbouring bars. */
  void setBarSpacing(int spacing);

protected:
  void updateData() override;

private:
  QwtPlotBarChart* chart() const;
  void updateSymbol();

  std::vector<double> m_X;
  std::vector<double> m_Y;
  Pen m_Pen;
  Brush m_Brush;
};
} // namespace plottaro
