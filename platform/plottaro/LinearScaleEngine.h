#pragma once

#include "platform/plottaro/ScaleEngine.h"

namespace plottaro
{
class PLOTTARO_EXPORT LinearScaleEngine : public ScaleEngine
{
public:
  explicit LinearScaleEngine(double base = 10.0)
      : ScaleEngine(base)
  {
  }
  bool isLogarithmic() const override { return false; }
  QwtScaleEngine* createQwtEngine() const override;
};
} // namespace plottaro
