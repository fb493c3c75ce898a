#include "platform/plottaro/AxisGrid.h"

#include <qwt_scale_map.h>

#include <QPainter>

namespace plottaro
{
void AxisGrid::draw(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
                    const QRectF& canvasRect) const
{
  painter->save();
  if (xEnabled())
  {
    painter->setPen(m_XPen);
    for (double value : xScaleDiv().ticks(QwtScaleDiv::MajorTick))
    {
      const double x = xMap.transform(value);
      painter->drawLine(QPointF(x, canvasRect.top()), QPointF(x, canvasRect.bottom()));
    }
  }
  if (yEnabled())
  {
    painter->setPen(m_YPen);
    for (double value : yScaleDiv().ticks(QwtScaleDiv::MajorTick))
    {
      const double y = yMap.transform(value);
      painter->drawLine(QPointF(canvasRect.left(), y), QPointF(canvasRect.right(), y));
    }
  }
  painter->restore();
}
} // namespace plottaro
