#pragma once

#include "platform/plottaro/ScaleEngine.h"

namespace plottaro
{
/** @brief Decades of the base; only positive values have a place on such an axis. */
class PLOTTARO_EXPORT LogScaleEngine : public ScaleEngine
{
public:
  explicit LogScaleEngine(double base = 10.0)
      : ScaleEngine(base)
  {
  }
  bool isLogarithmic() const override { return true; }
  QwtScaleEngine* createQwtEngine() const override;
};
} // namespace plottaro
