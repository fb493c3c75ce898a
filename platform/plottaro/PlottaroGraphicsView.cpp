#include "platform/plottaro/PlottaroGraphicsView.h"

#include "platform/plottaro/Plot.h"

#include <qwt_plot.h>
#include <qwt_plot_magnifier.h>
#include <qwt_plot_panner.h>

#include <QMouseEvent>
#include <QVBoxLayout>

namespace plottaro
{
namespace
{
// A press and release closer than this is a click, not a pan.
constexpr int k_ClickDistance = 4;
} // namespace

PlottaroGraphicsView::PlottaroGraphicsView(QWidget* parent)
    : QWidget(parent)
{
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
}

PlottaroGraphicsView::~PlottaroGraphicsView()
{
  // The plot outlives its view: take its widget back before Qt deletes the children.
  releasePlotWidget();
}

void PlottaroGraphicsView::releasePlotWidget()
{
  if (m_Plot == nullptr || m_Plot->qwtPlot() == nullptr)
  {
    return;
  }
  QwtPlot* qwtPlot = m_Plot->qwtPlot();
  qwtPlot->canvas()->removeEventFilter(this);
  delete m_Magnifier.data();
  delete m_Panner.data();
  layout()->removeWidget(qwtPlot);
  qwtPlot->hide();
  qwtPlot->setParent(nullptr);
}

void PlottaroGraphicsView::setPlot(const std::shared_ptr<Plot>& plot)
{
  releasePlotWidget();
  m_Plot = plot;
  if (m_Plot == nullptr)
  {
    return;
  }
  QwtPlot* qwtPlot = m_Plot->qwtPlot();
  layout()->addWidget(qwtPlot);
  qwtPlot->show();
  m_Panner = new QwtPlotPanner(qwtPlot->canvas());
  m_Panner->setMouseButton(Qt::LeftButton);
  m_Magnifier = new QwtPlotMagnifier(qwtPlot->canvas());
  m_Magnifier->setMouseButton(Qt::NoButton);
  m_Magnifier->setEnabled(m_WheelZoom);
  // Installed after the panner's, so this filter sees presses first and can claim legend drags.
  qwtPlot->canvas()->installEventFilter(this);
  m_Plot->replot();
}

void PlottaroGraphicsView::replot()
{
  if (m_Plot != nullptr)
  {
    m_Plot->replot();
  }
}

void PlottaroGraphicsView::setWheelZoomEnabled(bool enabled)
{
  m_WheelZoom = enabled;
  if (m_Magnifier != nullptr)
  {
    m_Magnifier->setEnabled(enabled);
  }
}

bool PlottaroGraphicsView::eventFilter(QObject* watched, QEvent* event)
{
  if (m_Plot == nullptr || m_Plot->qwtPlot() == nullptr || watched != m_Plot->qwtPlot()->canvas())
  {
    return QWidget::eventFilter(watched, event);
  }
  auto* canvas = m_Plot->qwtPlot()->canvas();
  switch (event->type())
  {
  case QEvent::MouseButtonPress:
  {
    auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() != Qt::LeftButton)
    {
      break;
    }
    m_Pressed = true;
    m_PressPosition = mouse->pos();
    const QRect legend = m_Plot->legendGeometry();
    if (m_Plot->legendVisible() && legend.contains(mouse->pos()))
    {
      m_DraggingLegend = true;
      m_LegendOffset = mouse->pos() - legend.topLeft();
      return true;
    }
    break;
  }
  case QEvent::MouseMove:
    if (m_DraggingLegend)
    {
      auto* mouse = static_cast<QMouseEvent*>(event);
      const QRect area = canvas->contentsRect();
      const QPoint topLeft = mouse->pos() - m_LegendOffset - area.topLeft();
      m_Plot->setLegendPosition(static_cast<double>(topLeft.x()) / std::max(1, area.width()),
                                static_cast<double>(topLeft.y()) / std::max(1, area.height()));
      m_Plot->replot();
      return true;
    }
    break;
  case QEvent::MouseButtonRelease:
  {
    auto* mouse = static_cast<QMouseEvent*>(event);
    const bool wasClick = m_Pressed && (mouse->pos() - m_PressPosition).manhattanLength() <= k_ClickDistance;
    const bool wasLegendDrag = m_DraggingLegend;
    m_Pressed = false;
    m_DraggingLegend = false;
    if (wasLegendDrag && !wasClick)
    {
      const auto anchor = m_Plot->legendAnchor();
      Q_EMIT legendMoved(anchor[0], anchor[1]);
      return true;
    }
    if (wasClick)
    {
      Q_EMIT clicked();
    }
    if (wasLegendDrag)
    {
      return true;
    }
    break;
  }
  default:
    break;
  }
  return QWidget::eventFilter(watched, event);
}
} // namespace plottaro
