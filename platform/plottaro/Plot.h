#pragma once

#include "platform/plottaro/Color.h"
#include "platform/plottaro/Font.h"
#include "platform/plottaro/LegendPosition.h"
#include "platform/plottaro/Pen.h"
#include "platform/plottaro/PlotGrid.h"
#include "platform/plottaro/PlotItem.h"
#include "platform/plottaro/PlotLegend.h"
#include "platform/plottaro/PlottaroExport.h"
#include "platform/plottaro/ScaleEngine.h"
#include "platform/plottaro/ScaleMap.h"
#include "platform/plottaro/Text.h"

#include <QImage>
#include <QPointer>

#include <array>
#include <map>
#include <memory>
#include <string>
#include <vector>

class QPainter;
class QwtPlot;

namespace plottaro
{
class AnchoredLegendItem;
class AxisGrid;

/**
 * @brief A 2D plot: four axes (0 left, 1 right, 2 bottom, 3 top), a grid, a legend inside the canvas
 * and the items drawn from data. It renders to images and painters without a window; a
 * PlottaroGraphicsView shows it on screen.
 */
class PLOTTARO_EXPORT Plot
{
public:
  static constexpr int k_AxisCount = 4;

  Plot(int width, int height);
  ~Plot();
  Plot(const Plot&) = delete;
  Plot& operator=(const Plot&) = delete;

  void enableAxis(int axis, bool on = true);
  /** @brief Fixed range of an axis; a step of 0 lets the scale engine choose the ticks. */
  void setAxisScale(int axis, double min, double max, double step = 0.0);
  void setAxisAutoScale(int axis, bool on);
  bool axisAutoScale(int axis) const;
  /** @brief The range the axis shows now (after autoscaling, when it is on). */
  std::array<double, 2> axisInterval(int axis) const;
  void setAxisScaleEngine(int axis, std::unique_ptr<ScaleEngine> engine);
  bool axisIsLogarithmic(int axis) const;
  void setAxisTitle(int axis, const Text& title);
  Text axisTitle(int axis) const;
  void setAxisFont(int axis, const Font& font);
  /** @brief Colour of the axis line, its ticks and its labels. */
  void setAxisPen(int axis, const Pen& pen);
  void setAxisTicksVisible(int axis, bool visible);
  void setAxisTickLabels(int axis, const std::map<double, std::string>& labels);
  /** @brief Labels at 0, 1, 2, ...; an empty list returns to numbers. */
  void setAxisTickLabels(int axis, const std::vector<std::string>& labels);
  /** @brief An fmt format of one number ("{:.3e}"); empty for Qwt's own numbers. */
  void setAxisLabelFormat(int axis, const std::string& format);
  std::string axisLabelFormat(int axis) const;
  void setAxisLabelRotation(int axis, double degrees);
  /** @brief Pixels between the tick marks and the labels. */
  void setAxisLabelOffset(int axis, int pixels);
  ScaleMap canvasMap(int axis) const;

  void setTitle(const Text& title);
  Text title() const;
  void setBorderPen(const Pen& pen);
  void setCanvasBackground(const Color& color);
  void setPlotBackground(const Color& color);
  void setCanvasFillsPlot(bool fills);
  void setMargin(int pixels);

  void setGridVisible(bool visible);
  PlotGrid& grid() { return m_Grid; }
  PlotLegend& legend() { return m_Legend; }
  void setLegendVisible(bool visible);
  bool legendVisible() const;
  void setLegendPosition(LegendPosition position);
  /** @brief Anchors the legend's top left corner at (x, y) in fractions of the canvas. */
  void setLegendPosition(double x, double y);
  LegendPosition legendPosition() const { return m_LegendPosition; }
  std::array<double, 2> legendAnchor() const;
  /** @brief The legend's rectangle in canvas pixels, as last laid out. */
  QRect legendGeometry() const;

  void addItem(const std::shared_ptr<PlotItem>& item);
  void removeItem(const std::shared_ptr<PlotItem>& item);
  const std::vector<std::shared_ptr<PlotItem>>& items() const { return m_Items; }

  void resize(int width, int height);
  int width() const;
  int height() const;
  /** @brief Lays out the axes again and repaints the widget (when shown). */
  void replot();
  void renderInto(QPainter& painter, int width, int height);
  /** @brief A picture of the plot; transparent leaves out the plot's and the canvas's backgrounds. */
  QImage renderToImage(int width, int height, bool transparent = false);

  QwtPlot* qwtPlot() const;

private:
  struct AxisLabels
  {
    std::string format;
    std::map<double, std::string> tickLabels;
    double rotation = 0.0;
    int offset = 2;
    bool ticksVisible = true;
    bool logarithmic = false;
  };

  void applyScaleDraw(int axis);
  void updateItemAxes(PlotItem& item) const;
  void applyLegendIconSize();

  QPointer<QwtPlot> m_QwtPlot;
  AxisGrid* m_AxisGrid = nullptr;
  AnchoredLegendItem* m_LegendItem = nullptr;
  PlotGrid m_Grid;
  PlotLegend m_Legend;
  LegendPosition m_LegendPosition = LegendPosition::TopRight;
  std::array<AxisLabels, k_AxisCount> m_Axes;
  std::array<Text, k_AxisCount> m_AxisTitles;
  Text m_Title;
  bool m_CanvasFillsPlot = false;
  Color m_CanvasBackground = Color::White();
  Color m_PlotBackground = Color::White();
  std::vector<std::shared_ptr<PlotItem>> m_Items;
};
} // namespace plottaro
