#include "platform/plottaro/PlotHistogram.h"

#include <qwt_plot_histogram.h>

#include <algorithm>

namespace plottaro
{
namespace
{
constexpr double k_LogBaseline = 1.0e-100;
} // namespace

PlotHistogram::PlotHistogram()
    : PlotItem(new QwtPlotHistogram())
{
  histogram()->setStyle(QwtPlotHistogram::Columns);
}

QwtPlotHistogram* PlotHistogram::histogram() const
{
  return static_cast<QwtPlotHistogram*>(qwtItem());
}

void PlotHistogram::setBins(const std::vector<double>& edges, const std::vector<double>& counts)
{
  const std::size_t bins = edges.empty() ? 0 : std::min(edges.size() - 1, counts.size());
  m_Edges.assign(edges.begin(), edges.begin() + static_cast<std::ptrdiff_t>(bins == 0 ? 0 : bins + 1));
  m_Counts.assign(counts.begin(), counts.begin() + static_cast<std::ptrdiff_t>(bins));
  updateData();
}

void PlotHistogram::setPen(const Pen& pen)
{
  histogram()->setPen(pen.toQPen());
}

void PlotHistogram::setBrush(const Brush& brush)
{
  histogram()->setBrush(brush.toQBrush());
}

void PlotHistogram::setBarSpacing(int spacing)
{
  m_Spacing = std::clamp(spacing, 0, 90);
  updateData();
}

void PlotHistogram::updateData()
{
  m_SampleCount = m_Counts.size();
  QVector<QwtIntervalSample> samples;
  samples.reserve(static_cast<int>(m_Counts.size()));
  for (std::size_t i = 0; i < m_Counts.size(); ++i)
  {
    const double low = m_Edges[i];
    const double high = m_Edges[i + 1];
    if (!isShown(low, m_Counts[i]) || !isShown(high, m_Counts[i]))
    {
      continue;
    }
    const double inset = (high - low) * m_Spacing / 200.0;
    samples.append(QwtIntervalSample(m_Counts[i], low + inset, high - inset));
  }
  m_HiddenCount = m_SampleCount - static_cast<std::size_t>(samples.size());
  histogram()->setBaseline(yLogarithmic() ? k_LogBaseline : 0.0);
  histogram()->setSamples(samples);
}
} // namespace plottaro
