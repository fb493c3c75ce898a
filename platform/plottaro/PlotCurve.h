#pragma once

#include "platform/plottaro/Brush.h"
#include "platform/plottaro/CurveStyle.h"
#include "platform/plottaro/Pen.h"
#include "platform/plottaro/PlotItem.h"
#include "platform/plottaro/Symbol.h"

#include <vector>

class QwtPlotCurve;

namespace plottaro
{
/** @brief A line through (x, y) samples, with optional symbols at the samples. */
class PLOTTARO_EXPORT PlotCurve : public PlotItem
{
public:
  PlotCurve();

  void setPen(const Pen& pen);
  void setBrush(const Brush& brush);
  /** @brief A CurveStyle number; -1 draws only the symbols, 4 lines and symbols. */
  void setStyle(int style);
  int style() const { return m_Style; }
  void setSeries(const std::vector<double>& x, const std::vector<double>& y);
  void setSymbol(const Symbol& symbol);

protected:
  PlotCurve(QwtPlotCurve* curve);
  void updateData() override;
  QwtPlotCurve* curve() const;

private:
  std::vector<double> m_X;
  std::vector<double> m_Y;
  int m_Style = LinesAndSymbols;
};
} // namespace plottaro
