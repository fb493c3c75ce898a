#pragma once

#include "platform/plottaro/PlottaroExport.h"

class QwtScaleEngine;

namespace plottaro
{
/** @brief How an axis divides its range into ticks; the plot takes ownership. */
class PLOTTARO_EXPORT ScaleEngine
{
public:
  virtual ~ScaleEngine() = default;
  virtual bool isLogarithmic() const = 0;
  double base() const { return m_Base; }
  /** @brief A new Qwt engine of this kind, owned by the caller. */
  virtual QwtScaleEngine* createQwtEngine() const = 0;

protected:
  explicit ScaleEngine(double base)
      : m_Base(base)
  {
  }

private:
  double m_Base = 10.0;
};
} // namespace plottaro
