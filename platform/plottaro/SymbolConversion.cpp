#include "platform/plottaro/SymbolConversion.h"

#include <qwt_symbol.h>

namespace plottaro
{
QwtSymbol* CreateQwtSymbol(const Symbol& symbol)
{
  if (symbol.marker < QwtSymbol::Ellipse || symbol.marker > QwtSymbol::Hexagon)
  {
    return new QwtSymbol(QwtSymbol::NoSymbol);
  }
  auto* qwtSymbol = new QwtSymbol(static_cast<QwtSymbol::Style>(symbol.marker), symbol.brush.toQBrush(),
                                  symbol.pen.toQPen(), QSize(symbol.size, symbol.size));
  // Many equal symbols: paint one cached pixmap each time.
  qwtSymbol->setCachePolicy(QwtSymbol::Cache);
  return qwtSymbol;
}

const std::vector<std::pair<int, std::string>>& MarkerStyles()
{
  static const std::vector<std::pair<int, std::string>> s_Markers = {{QwtSymbol::Ellipse, "Circle"},
                                                                     {QwtSymbol::Rect, "Square"},
                                                                     {QwtSymbol::Diamond, "Diamond"},
                                                                     {QwtSymbol::UTriangle, "Triangle Up"},
                                                                     {QwtSymbol::DTriangle, "Triangle Down"},
                                                                     {QwtSymbol::Cross, "Cross"},
                                                                     {QwtSymbol::XCross, "X"},
                                                                     {QwtSymbol::Star1, "Star"},
                                                                     {QwtSymbol::Hexagon, "Hexagon"}};
  return s_Markers;
}

const std::vector<std::pair<int, std::string>>& LineStyles()
{
  static const std::vector<std::pair<int, std::string>> s_Lines = {{Qt::SolidLine, "Solid"},
                                                                   {Qt::DashLine, "Dash"},
                                                                   {Qt::DotLine, "Dot"},
                                                                   {Qt::DashDotLine, "Dash Dot"},
                                                                   {Qt::DashDotDotLine, "Dash Dot Dot"}};
  return s_Lines;
}
} // namespace plottaro
