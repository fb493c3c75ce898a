#pragma once

#include "platform/plottaro/Color.h"

/**
 * @brief The style of one chart series. Its type selects the plot item: a line curve, a scatter of points,
 * bars or a histogram.
 */
struct PlotProperties
{
  enum Type : int
  {
    Line = 0,
    Points = 1,
    Bar = 2,
    Histogram = 3
  };

  int type = Line;
  plottaro::Color color = plottaro::Color::Black();
  bool visible = true;
  int pointMarker = 0;
  int pointSize = 6;
  int lineStyle = 1; // Qt::SolidLine
  int lineThickness = 2;
  int barSpacing = 0;
};
