#pragma once

#include "platform/plottaro/PlottaroExport.h"

#include <memory>

class QwtScaleMap;

namespace plottaro
{
/** @brief Maps axis values to pixels and back, linearly or by decades of 10. */
class PLOTTARO_EXPORT ScaleMap
{
public:
  ScaleMap();
  explicit ScaleMap(const QwtScaleMap& map);
  ScaleMap(const ScaleMap& other);
  ScaleMap& operator=(const ScaleMap& other);
  ~ScaleMap();

  void setPaintInterval(double p1, double p2);
  void setScaleInterval(double s1, double s2);
  void setLogarithmic(bool logarithmic);
  double transform(double value) const;
  double invTransform(double pixel) const;

private:
  std::unique_ptr<QwtScaleMap> m_Map;
};
} // namespace plottaro
