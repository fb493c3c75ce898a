#pragma once

#include "platform/plottaro/Color.h"

#include <QBrush>

namespace plottaro
{
/** @brief A solid fill; a brush with no fill paints nothing. */
struct Brush
{
  Color color = Color::Black();
  bool filled = true;

  QBrush toQBrush() const { return filled ? QBrush(color.toQColor()) : QBrush(Qt::NoBrush); }
};
} // namespace plottaro
