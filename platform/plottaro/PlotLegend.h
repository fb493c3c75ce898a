#pragma once

#include "platform/plottaro/Font.h"
#include "platform/plottaro/PlottaroExport.h"

namespace plottaro
{
class AnchoredLegendItem;

/** @brief The legend drawn inside the canvas; owned by its plot. */
class PLOTTARO_EXPORT PlotLegend
{
public:
  explicit PlotLegend(AnchoredLegendItem* item)
      : m_Item(item)
  {
  }

  void setFont(const Font& font);
  /** @brief Width in pixels of the line and symbol drawn before each title. */
  void setIconWidth(int width) { m_IconWidth = width; }
  int iconWidth() const { return m_IconWidth; }

private:
  AnchoredLegendItem* m_Item;
  int m_IconWidth = 16;
};
} // namespace plottaro
