#pragma once

#include "platform/plottaro/Brush.h"
#include "platform/plottaro/Pen.h"

namespace plottaro
{
/**
 * @brief A point marker. Marker numbers are those of MarkerNames(): -1 none, 0 ellipse, 1 rectangle,
 * 2 diamond, 3 triangle, 4 down triangle, 5 up triangle, 6 left triangle, 7 right triangle, 8 cross,
 * 9 x-cross, 10 horizontal line, 11 vertical line, 12 star, 13 six-pointed star, 14 hexagon.
 */
struct Symbol
{
  int marker = 0;
  Brush brush;
  Pen pen;
  int size = 6;
};
} // namespace plottaro
