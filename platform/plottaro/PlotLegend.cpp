#include "platform/plottaro/PlotLegend.h"

#include "platform/plottaro/AnchoredLegendItem.h"

namespace plottaro
{
void PlotLegend::setFont(const Font& font)
{
  m_Item->setFont(font.toQFont());
}
} // namespace plottaro
