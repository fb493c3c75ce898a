#pragma once

#include <qwt_plot_grid.h>

#include <QPen>

namespace plottaro
{
/** @brief Major grid lines with a pen of their own for each axis. */
class AxisGrid : public QwtPlotGrid
{
public:
  AxisGrid() = default;

  void setXPen(const QPen& pen) { m_XPen = pen; }
  void setYPen(const QPen& pen) { m_YPen = pen; }

  void draw(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
            const QRectF& canvasRect) const override;

private:
  QPen m_XPen = QPen(QColor(242, 242, 242));
  QPen m_YPen = QPen(QColor(242, 242, 242));
};
} // namespace plottaro
