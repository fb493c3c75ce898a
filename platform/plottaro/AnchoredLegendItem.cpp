#include "platform/plottaro/AnchoredLegendItem.h"

#include <algorithm>

namespace plottaro
{
QRect AnchoredLegendItem::geometry(const QRectF& canvasRect) const
{
  const QRect aligned = QwtPlotLegendItem::geometry(canvasRect);
  if (!m_Anchored)
  {
    return aligned;
  }
  const QSize size = aligned.size();
  const double maxLeft = std::max(canvasRect.left(), canvasRect.right() - size.width());
  const double maxTop = std::max(canvasRect.top(), canvasRect.bottom() - size.height());
  const double left =
      std::clamp(canvasRect.left() + m_Anchor.x() * canvasRect.width(), canvasRect.left(), maxLeft);
  const double top =
      std::clamp(canvasRect.top() + m_Anchor.y() * canvasRect.height(), canvasRect.top(), maxTop);
  return QRect(QPoint(static_cast<int>(left), static_cast<int>(top)), size);
}
} // namespace plottaro
