#pragma once

#include "platform/plottaro/PlottaroExport.h"

#include <QPoint>
#include <QPointer>
#include <QWidget>

#include <memory>

class QwtPlotMagnifier;
class QwtPlotPanner;

namespace plottaro
{
class Plot;

/**
 * @brief Shows a Plot on screen. Dragging pans, the wheel zooms (when enabled), a click without a drag
 * emits clicked(), and dragging the legend anchors it where it is dropped (legendMoved()).
 */
class PLOTTARO_EXPORT PlottaroGraphicsView : public QWidget
{
  Q_OBJECT

public:
  explicit PlottaroGraphicsView(QWidget* parent = nullptr);
  ~PlottaroGraphicsView() override;

  void setPlot(const std::shared_ptr<Plot>& plot);
  std::shared_ptr<Plot> plot() const { return m_Plot; }
  void replot();
  void setWheelZoomEnabled(bool enabled);
  bool wheelZoomEnabled() const { return m_WheelZoom; }

Q_SIGNALS:
  void clicked();
  /** @brief The legend was dragged; its anchor in fractions of the canvas. */
  void legendMoved(double x, double y);

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void releasePlotWidget();

  std::shared_ptr<Plot> m_Plot;
  QPointer<QwtPlotMagnifier> m_Magnifier;
  QPointer<QwtPlotPanner> m_Panner;
  bool m_WheelZoom = true;
  bool m_Pressed = false;
  bool m_DraggingLegend = false;
  QPoint m_PressPosition;
  QPoint m_LegendOffset;
};
} // namespace plottaro
