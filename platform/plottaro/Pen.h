#pragma once

#include "platform/plottaro/Color.h"

#include <QPen>

namespace plottaro
{
/** @brief Line colour, width in pixels and Qt pen style (solid by default). */
struct Pen
{
  Color color = Color::Black();
  double width = 1.0;
  Qt::PenStyle style = Qt::SolidLine;

  QPen toQPen() const
  {
    QPen pen(color.toQColor(), width, style);
    pen.setCosmetic(true);
    return pen;
  }
};
} // namespace plottaro
