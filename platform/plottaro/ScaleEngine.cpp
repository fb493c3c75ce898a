#include "platform/plottaro/LinearScaleEngine.h"
#include "platform/plottaro/LogScaleEngine.h"

#include <qwt_scale_engine.h>

namespace plottaro
{
QwtScaleEngine* LinearScaleEngine::createQwtEngine() const
{
  auto* engine = new QwtLinearScaleEngine(static_cast<uint>(base()));
  return engine;
}

QwtScaleEngine* LogScaleEngine::createQwtEngine() const
{
  auto* engine = new QwtLogScaleEngine(static_cast<uint>(base()));
  return engine;
}
} // namespace plottaro
