#include "platform/plottaro/PlotItem.h"

#include <qwt_plot_item.h>

#include <cmath>

namespace plottaro
{
PlotItem::PlotItem(QwtPlotItem* item)
    : m_Item(item)
{
  m_Item->setItemAttribute(QwtPlotItem::Legend, true);
  m_Item->setItemAttribute(QwtPlotItem::AutoScale, true);
}

PlotItem::~PlotItem()
{
  m_Item->detach();
}

void PlotItem::setTitle(const std::string& title)
{
  m_Item->setTitle(QString::fromStdString(title));
}

std::string PlotItem::title() const
{
  return m_Item->title().text().toStdString();
}

void PlotItem::setVisible(bool visible)
{
  m_Item->setVisible(visible);
}

bool PlotItem::isVisible() const
{
  return m_Item->isVisible();
}

void PlotItem::setLogarithmicAxes(bool xLogarithmic, bool yLogarithmic)
{
  if (xLogarithmic == m_XLogarithmic && yLogarithmic == m_YLogarithmic)
  {
    return;
  }
  m_XLogarithmic = xLogarithmic;
  m_YLogarithmic = yLogarithmic;
  updateData();
}

bool PlotItem::isShown(double x, double y) const
{
  return std::isfinite(x) && std::isfinite(y) && (!m_XLogarithmic || x > 0.0) && (!m_YLogarithmic || y > 0.0);
}
} // namespace plottaro
