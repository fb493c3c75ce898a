#pragma once

#include <qwt_scale_draw.h>

#include <map>
#include <string>

namespace plottaro
{
/**
 * @brief Axis labels by an fmt format ("{:.3e}"), or texts at chosen positions; with neither, Qwt's
 * own numbers.
 */
class FormattedScaleDraw : public QwtScaleDraw
{
public:
  FormattedScaleDraw(std::string format, std::map<double, std::string> tickLabels);

  QwtText label(double value) const override;

private:
  std::string m_Format;
  std::map<double, std::string> m_TickLabels;
};
} // namespace plottaro
