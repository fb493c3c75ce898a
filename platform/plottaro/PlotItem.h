#pragma once

#include "platform/plottaro/PlottaroExport.h"

#include <cstddef>
#include <memory>
#include <string>

class QwtPlotItem;

namespace plottaro
{
/**
 * @brief Base of everything a plot draws from data. Samples that an axis cannot show (not finite, or not
 * positive on a logarithmic axis) are left out of the drawing and counted in hiddenSampleCount().
 */
class PLOTTARO_EXPORT PlotItem
{
public:
  virtual ~PlotItem();
  PlotItem(const PlotItem&) = delete;
  PlotItem& operator=(const PlotItem&) = delete;

  void setTitle(const std::string& title);
  std::string title() const;
  void setVisible(bool visible);
  bool isVisible() const;

  std::size_t sampleCount() const { return m_SampleCount; }
  std::size_t hiddenSampleCount() const { return m_HiddenCount; }
  /** @brief Called by the plot when an axis changes between linear and logarithmic. */
  void setLogarithmicAxes(bool xLogarithmic, bool yLogarithmic);

  QwtPlotItem* qwtItem() const { return m_Item.get(); }

protected:
  explicit PlotItem(QwtPlotItem* item);
  /** @brief Hands the kept samples to the Qwt item; sets m_SampleCount and m_HiddenCount. */
  virtual void updateData() = 0;
  bool isShown(double x, double y) const;
  bool xLogarithmic() const { return m_XLogarithmic; }
  bool yLogarithmic() const { return m_YLogarithmic; }

  std::size_t m_SampleCount = 0;
  std::size_t m_HiddenCount = 0;

private:
  std::unique_ptr<QwtPlotItem> m_Item;
  bool m_XLogarithmic = false;
  bool m_YLogarithmic = false;
};
} // namespace plottaro
