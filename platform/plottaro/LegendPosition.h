#pragma once

namespace plottaro
{
/** @brief Fixed places of the legend inside the canvas; Anchored follows a free anchor point. */
enum class LegendPosition : int
{
  TopLeft = 0,
  TopRight = 1,
  BottomLeft = 2,
  BottomRight = 3,
  Top = 4,
  Bottom = 5,
  Anchored = 6
};
} // namespace plottaro
