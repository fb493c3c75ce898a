#pragma once

namespace plottaro
{
/** @brief Curve styles by number; NoCurve draws the symbols only. */
enum CurveStyle : int
{
  NoCurve = -1,
  Lines = 0,
  Sticks = 1,
  Steps = 2,
  Dots = 3,
  LinesAndSymbols = 4
};
} // namespace plottaro
