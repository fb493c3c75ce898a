#include "platform/plottaro/PlotScatterChart.h"

#include "platform/plottaro/ScatterCurve.h"
#include "platform/plottaro/SymbolConversion.h"

namespace plottaro
{
PlotScatterChart::PlotScatterChart()
    : PlotCurve(new ScatterCurve())
{
  setStyle(NoCurve);
  curve()->setLegendAttribute(QwtPlotCurve::LegendShowLine, false);
  curve()->setPaintAttribute(QwtPlotCurve::FilterPoints, false);
  setSymbol(Symbol{});
}

void PlotScatterChart::setSymbol(const Symbol& symbol)
{
  Symbol shown = symbol;
  if (shown.marker < 0)
  {
    shown.marker = 0; // a scatter chart without markers would show nothing
  }
  curve()->setSymbol(CreateQwtSymbol(shown));
}
} // namespace plottaro
