#include "platform/plottaro/ScatterCurve.h"

#include <qwt_scale_map.h>
#include <qwt_series_data.h>
#include <qwt_symbol.h>

#include <QPainter>

#include <cmath>
#include <vector>

namespace plottaro
{
void ScatterCurve::drawSymbols(QPainter* painter, const QwtSymbol& symbol, const QwtScaleMap& xMap,
                               const QwtScaleMap& yMap, const QRectF& canvasRect, int from, int to) const
{
  // Symbols reaching into the canvas from outside still show: pad the pixel grid by one symbol.
  const double pad = std::ceil(std::max(symbol.size().width(), symbol.size().height()) / 2.0) + 1.0;
  const double left = canvasRect.left() - pad;
  const double top = canvasRect.top() - pad;
  const auto columns = static_cast<long>(std::ceil(canvasRect.width() + 2.0 * pad)) + 1;
  const auto rows = static_cast<long>(std::ceil(canvasRect.height() + 2.0 * pad)) + 1;
  if (columns <= 0 || rows <= 0)
  {
    return;
  }
  std::vector<bool> occupied(static_cast<std::size_t>(columns * rows), false);
  QPolygonF points;
  const QwtSeriesData<QPointF>* samples = data();
  for (int i = from; i <= to; ++i)
  {
    const QPointF sample = samples->sample(static_cast<size_t>(i));
    const double x = xMap.transform(sample.x());
    const double y = yMap.transform(sample.y());
    const double column = std::floor(x - left);
    const double row = std::floor(y - top);
    if (!(column >= 0.0 && row >= 0.0 && column < columns && row < rows))
    {
      continue; // outside the canvas, or not finite
    }
    const auto cell = static_cast<std::size_t>(static_cast<long>(row) * columns + static_cast<long>(column));
    if (occupied[cell])
    {
      continue;
    }
    occupied[cell] = true;
    points.append(QPointF(x, y));
  }
  symbol.drawSymbols(painter, points);
}
} // namespace plottaro
