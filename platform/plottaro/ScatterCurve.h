#pragma once

#include <qwt_plot_curve.h>

namespace plottaro
{
/**
 * @brief A curve of symbols only that paints at most one symbol per device pixel: a million samples
 * cost one pass of mapping, and only the occupied pixels are painted.
 */
class ScatterCurve : public QwtPlotCurve
{
public:
  ScatterCurve() = default;

protected:
  void drawSymbols(QPainter* painter, const QwtSymbol& symbol, const QwtScaleMap& xMap,
                   const QwtScaleMap& yMap, const QRectF& canvasRect, int from, int to) const override;
};
} // namespace plottaro
