#include "platform/plottaro/PlotCurve.h"

#include "platform/plottaro/SymbolConversion.h"

#include <qwt_plot_curve.h>

#include <algorithm>

namespace plottaro
{
PlotCurve::PlotCurve()
    : PlotCurve(new QwtPlotCurve())
{
}

PlotCurve::PlotCurve(QwtPlotCurve* curve)
    : PlotItem(curve)
{
  curve->setRenderHint(QwtPlotItem::RenderAntialiased, true);
  curve->setLegendAttribute(QwtPlotCurve::LegendShowLine, true);
  curve->setLegendAttribute(QwtPlotCurve::LegendShowSymbol, true);
  curve->setPaintAttribute(QwtPlotCurve::ClipPolygons, true);
  curve->setPaintAttribute(QwtPlotCurve::FilterPoints, true);
}

QwtPlotCurve* PlotCurve::curve() const
{
  return static_cast<QwtPlotCurve*>(qwtItem());
}

void PlotCurve::setPen(const Pen& pen)
{
  curve()->setPen(pen.toQPen());
}

void PlotCurve::setBrush(const Brush& brush)
{
  curve()->setBrush(brush.toQBrush());
}

void PlotCurve::setStyle(int style)
{
  m_Style = style;
  switch (style)
  {
  case NoCurve:
    curve()->setStyle(QwtPlotCurve::NoCurve);
    break;
  case Sticks:
    curve()->setStyle(QwtPlotCurve::Sticks);
    break;
  case Steps:
    curve()->setStyle(QwtPlotCurve::Steps);
    break;
  case Dots:
    curve()->setStyle(QwtPlotCurve::Dots);
    break;
  default: // lines, with or without symbols (the symbol decides)
    curve()->setStyle(QwtPlotCurve::Lines);
    break;
  }
  if (style == Lines)
  {
    curve()->setSymbol(nullptr);
  }
}

void PlotCurve::setSeries(const std::vector<double>& x, const std::vector<double>& y)
{
  const std::size_t count = std::min(x.size(), y.size());
  m_X.assign(x.begin(), x.begin() + static_cast<std::ptrdiff_t>(count));
  m_Y.assign(y.begin(), y.begin() + static_cast<std::ptrdiff_t>(count));
  updateData();
}

void PlotCurve::setSymbol(const Symbol& symbol)
{
  if (m_Style == Lines)
  {
    return;
  }
  curve()->setSymbol(CreateQwtSymbol(symbol));
}

void PlotCurve::updateData()
{
  m_SampleCount = m_X.size();
  QVector<double> x;
  QVector<double> y;
  x.reserve(static_cast<int>(m_X.size()));
  y.reserve(static_cast<int>(m_Y.size()));
  for (std::size_t i = 0; i < m_X.size(); ++i)
  {
    if (isShown(m_X[i], m_Y[i]))
    {
      x.append(m_X[i]);
      y.append(m_Y[i]);
    }
  }
  m_HiddenCount = m_SampleCount - static_cast<std::size_t>(x.size());
  curve()->setSamples(x, y);
}
} // namespace plottaro
