#include "charts/VXChartSeriesInputWidget.h"

#include "data_bridge/ZRVtkUtils.h"
#include "platform/plottaro/SymbolConversion.h"

int VXChartSeriesInputWidget::m_InitialColorIndex = 0;
int VXChartSeriesInputWidget::m_InitialMarkerIndex = 0;

VXChartSeriesInputWidget::VXChartSeriesInputWidget(QWidget* parent)
    : QWidget(parent)
{
}

VXChartSeriesInputWidget::~VXChartSeriesInputWidget() = default;

std::pair<QColor, int> VXChartSeriesInputWidget::NextSeriesColorAndMarker()
{
  const auto& colors = ZRVtk::utils::k_ZRColorPreset1;
  const auto& markers = plottaro::MarkerStyles();
  const std::pair<QColor, int> next = {
      colors[static_cast<std::size_t>(m_InitialColorIndex) % colors.size()],
      markers[static_cast<std::size_t>(m_InitialMarkerIndex) % markers.size()].first};
  IncrementInitSeriesMarkerIndexes();
  return next;
}

void VXChartSeriesInputWidget::IncrementInitSeriesMarkerIndexes()
{
  // A full pass of the colours moves on to the next marker.
  const auto colorCount = static_cast<int>(ZRVtk::utils::k_ZRColorPreset1.size());
  const auto markerCount = static_cast<int>(plottaro::MarkerStyles().size());
  m_InitialColorIndex = (m_InitialColorIndex + 1) % colorCount;
  if (m_InitialColorIndex == 0)
  {
    m_InitialMarkerIndex = (m_InitialMarkerIndex + 1) % markerCount;
  }
}

void VXChartSeriesInputWidget::ResetInitSeriesMarkerIndexes()
{
  m_InitialColorIndex = 0;
  m_InitialMarkerIndex = 0;
}
