#pragma once

#include <qwt_plot_legenditem.h>

#include <QPointF>

namespace plottaro
{
/**
 * @brief A legend inside the canvas, placed by alignment or, when anchored, with its top left corner at
 * a point given in fractions of the canvas (0, 0 top left; 1, 1 bottom right), kept inside the canvas.
 */
class AnchoredLegendItem : public QwtPlotLegendItem
{
public:
  AnchoredLegendItem() = default;

  void setAnchor(const QPointF& anchor) { m_Anchor = anchor; }
  QPointF anchor() const { return m_Anchor; }
  void setAnchored(bool anchored) { m_Anchored = anchored; }
  bool isAnchored() const { return m_Anchored; }

  QRect geometry(const QRectF& canvasRect) const override;

private:
  QPointF m_Anchor = QPointF(0.7, 0.05);
  bool m_Anchored = false;
};
} // namespace plottaro
