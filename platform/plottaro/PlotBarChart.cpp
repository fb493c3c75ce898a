#include "platform/plottaro/PlotBarChart.h"

#include <qwt_column_symbol.h>
#include <qwt_plot_barchart.h>

#include <QPalette>

#include <algorithm>

namespace plottaro
{
namespace
{
// Lowest value a logarithmic axis keeps; bars start there instead of at 0.
constexpr double k_LogBaseline = 1.0e-100;
} // namespace

PlotBarChart::PlotBarChart()
    : PlotItem(new QwtPlotBarChart())
{
  chart()->setLegendMode(QwtPlotBarChart::LegendChartTitle);
  chart()->setLayoutPolicy(QwtPlotAbstractBarChart::AutoAdjustSamples);
  updateSymbol();
}

QwtPlotBarChart* PlotBarChart::chart() const
{
  return static_cast<QwtPlotBarChart*>(qwtItem());
}

void PlotBarChart::setSamples(const std::vector<double>& x, const std::vector<double>& y)
{
  const std::size_t count = std::min(x.size(), y.size());
  m_X.assign(x.begin(), x.begin() + static_cast<std::ptrdiff_t>(count));
  m_Y.assign(y.begin(), y.begin() + static_cast<std::ptrdiff_t>(count));
  updateData();
}

void PlotBarChart::setSeriesPen(int index, const Pen& pen)
{
  if (index == 0)
  {
    m_Pen = pen;
    updateSymbol();
  }
}

void PlotBarChart::setSeriesBrush(int index, const Brush& brush)
{
  if (index == 0)
  {
    m_Brush = brush;
    updateSymbol();
  }
}

void PlotBarChart::setBarSpacing(int spacing)
{
  chart()->setSpacing(std::max(0, spacing));
}

void PlotBarChart::updateSymbol()
{
  auto* symbol = new QwtColumnSymbol(QwtColumnSymbol::Box);
  symbol->setFrameStyle(QwtColumnSymbol::Plain);
  symbol->setLineWidth(static_cast<int>(m_Pen.width));
  QPalette palette;
  palette.setColor(QPalette::Window, m_Brush.color.toQColor());
  palette.setColor(QPalette::Dark, m_Pen.color.toQColor());
  symbol->setPalette(palette);
  chart()->setSymbol(symbol);
}

void PlotBarChart::updateData()
{
  m_SampleCount = m_X.size();
  QVector<QPointF> samples;
  samples.reserve(static_cast<int>(m_X.size()));
  for (std::size_t i = 0; i < m_X.size(); ++i)
  {
    if (isShown(m_X[i], m_Y[i]))
    {
      samples.append(QPointF(m_X[i], m_Y[i]));
    }
  }
  m_HiddenCount = m_SampleCount - static_cast<std::size_t>(samples.size());
  chart()->setBaseline(yLogarithmic() ? k_LogBaseline : 0.0);
  chart()->setSamples(samples);
}
} // namespace plottaro
