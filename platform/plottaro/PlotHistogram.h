#pragma once

#include "platform/plottaro/Brush.h"
#include "platform/plottaro/Pen.h"
#include "platform/plottaro/PlotItem.h"

#include <vector>

class QwtPlotHistogram;

namespace plottaro
{
/** @brief Columns over bins: bin i spans edges[i] to edges[i + 1] and is counts[i] high. */
class PLOTTARO_EXPORT PlotHistogram : public PlotItem
{
public:
  PlotHistogram();

  /** @brief edges has one entry more than counts; extra entries of either are ignored. */
  void setBins(const std::vector<double>& edges, const std::vector<double>& counts);
  void setPen(const Pen& pen);
  void setBrush(const Brush& brush);
  /** @brief Gap between columns, in percent of a bin's width (0 lets them touch). */
  void setBarSpacing(int spacing);

protected:
  void updateData() override;

private:
  QwtPlotHistogram* histogram() const;

  std::vector<double> m_Edges;
  std::vector<double> m_Counts;
  int m_Spacing = 0;
};
} // namespace plottaro
