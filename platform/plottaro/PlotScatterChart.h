#pragma once

#include "platform/plottaro/PlotCurve.h"

namespace plottaro
{
/** @brief Symbols at (x, y) samples, no line; stays fast for millions of samples. */
class PLOTTARO_EXPORT PlotScatterChart : public PlotCurve
{
public:
  PlotScatterChart();

  void setSamples(const std::vector<double>& x, const std::vector<double>& y) { setSeries(x, y); }
  void setSymbol(const Symbol& symbol);
};
} // namespace plottaro
