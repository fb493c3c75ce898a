#include "colour/VXHistogramPlotWidget.h"

#include <QPainter>

#include <algorithm>

VXHistogramPlotWidget::VXHistogramPlotWidget(QWidget* parent)
    : QWidget(parent)
{
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void VXHistogramPlotWidget::setCounts(const std::vector<std::uint64_t>& counts)
{
  m_Counts = counts;
  update();
}

void VXHistogramPlotWidget::paintEvent(QPaintEvent* /*event*/)
{
  QPainter painter(this);
  const QRectF area = QRectF(rect()).adjusted(1, 1, -1, -1);
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(area);
  if (m_Counts.empty())
  {
    return;
  }
  const std::uint64_t tallest = *std::max_element(m_Counts.begin(), m_Counts.end());
  if (tallest == 0)
  {
    return;
  }
  const double barWidth = area.width() / static_cast<double>(m_Counts.size());
  painter.setPen(Qt::NoPen);
  painter.setBrush(palette().color(QPalette::Highlight));
  for (std::size_t i = 0; i < m_Counts.size(); ++i)
  {
    const double height = area.height() * static_cast<double>(m_Counts[i]) / static_cast<double>(tallest);
    painter.drawRect(QRectF(area.left() + barWidth * static_cast<double>(i), area.bottom() - height,
                            std::max(1.0, barWidth - 1.0), height));
  }
}
