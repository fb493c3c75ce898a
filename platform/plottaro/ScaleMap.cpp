#include "platform/plottaro/ScaleMap.h"

#include <qwt_scale_map.h>
#include <qwt_transform.h>

namespace plottaro
{
ScaleMap::ScaleMap()
    : m_Map(std::make_unique<QwtScaleMap>())
{
}

ScaleMap::ScaleMap(const QwtScaleMap& map)
    : m_Map(std::make_unique<QwtScaleMap>(map))
{
}

ScaleMap::ScaleMap(const ScaleMap& other)
    : m_Map(std::make_unique<QwtScaleMap>(*other.m_Map))
{
}

ScaleMap& ScaleMap::operator=(const ScaleMap& other)
{
  *m_Map = *other.m_Map;
  return *this;
}

ScaleMap::~ScaleMap() = default;

void ScaleMap::setPaintInterval(double p1, double p2)
{
  m_Map->setPaintInterval(p1, p2);
}

void ScaleMap::setScaleInterval(double s1, double s2)
{
  m_Map->setScaleInterval(s1, s2);
}

void ScaleMap::setLogarithmic(bool logarithmic)
{
  const double s1 = m_Map->s1();
  const double s2 = m_Map->s2();
  m_Map->setTransformation(logarithmic ? new QwtLogTransform() : nullptr);
  m_Map->setScaleInterval(s1, s2);
}

double ScaleMap::transform(double value) const
{
  return m_Map->transform(value);
}

double ScaleMap::invTransform(double pixel) const
{
  return m_Map->invTransform(pixel);
}
} // namespace plottaro
