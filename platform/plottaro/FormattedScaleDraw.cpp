#include "platform/plottaro/FormattedScaleDraw.h"

#include <fmt/format.h>

#include <cmath>

namespace plottaro
{
FormattedScaleDraw::FormattedScaleDraw(std::string format, std::map<double, std::string> tickLabels)
    : m_Format(std::move(format))
    , m_TickLabels(std::move(tickLabels))
{
}

QwtText FormattedScaleDraw::label(double value) const
{
  if (!m_TickLabels.empty())
  {
    // A tick carries a label only at one of the given positions (up to rounding of the scale).
    auto next = m_TickLabels.lower_bound(value - 1.0e-9);
    if (next != m_TickLabels.end() &&
        std::abs(next->first - value) <= 1.0e-9 * std::max(1.0, std::abs(value)))
    {
      return QwtText(QString::fromStdString(next->second));
    }
    return QwtText();
  }
  if (!m_Format.empty())
  {
    try
    {
      return QwtText(QString::fromStdString(fmt::format(fmt::runtime(m_Format), value)));
    }
    catch (const fmt::format_error&)
    {
      // A format that does not take a number: fall back to the plain numbers.
    }
  }
  return QwtScaleDraw::label(value);
}
} // namespace plottaro
