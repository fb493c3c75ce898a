#include "platform/plottaro/Plot.h"

#include "platform/plottaro/AnchoredLegendItem.h"
#include "platform/plottaro/AxisGrid.h"
#include "platform/plottaro/FormattedScaleDraw.h"

#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_renderer.h>
#include <qwt_scale_engine.h>
#include <qwt_scale_widget.h>

#include <QPainter>

#include <algorithm>

namespace plottaro
{
namespace
{
bool ValidAxis(int axis)
{
  return axis >= 0 && axis < Plot::k_AxisCount;
}

QwtText ToQwtText(const Text& text)
{
  QwtText qwtText(QString::fromStdString(text.text));
  qwtText.setFont(text.font.toQFont());
  qwtText.setColor(text.color.toQColor());
  return qwtText;
}

Qt::Alignment AlignmentOf(LegendPosition position)
{
  switch (position)
  {
  case LegendPosition::TopLeft:
    return Qt::AlignTop | Qt::AlignLeft;
  case LegendPosition::BottomLeft:
    return Qt::AlignBottom | Qt::AlignLeft;
  case LegendPosition::BottomRight:
    return Qt::AlignBottom | Qt::AlignRight;
  case LegendPosition::Top:
    return Qt::AlignTop | Qt::AlignHCenter;
  case LegendPosition::Bottom:
    return Qt::AlignBottom | Qt::AlignHCenter;
  case LegendPosition::TopRight:
  case LegendPosition::Anchored:
    break;
  }
  return Qt::AlignTop | Qt::AlignRight;
}
} // namespace

Plot::Plot(int width, int height)
    : m_QwtPlot(new QwtPlot())
    , m_AxisGrid(new AxisGrid())
    , m_LegendItem(new AnchoredLegendItem())
    , m_Grid(m_AxisGrid)
    , m_Legend(m_LegendItem)
{
  // Items belong to their PlotItem objects, grid and legend to this plot: Qwt deletes none of them.
  m_QwtPlot->setAutoDelete(false);
  m_QwtPlot->setAutoReplot(false);
  m_QwtPlot->resize(width, height);
  m_QwtPlot->setAutoFillBackground(true);
  auto* canvas = new QwtPlotCanvas();
  canvas->setPaintAttribute(QwtPlotCanvas::BackingStore, true);
  m_QwtPlot->setCanvas(canvas);
  for (int axis = 0; axis < k_AxisCount; ++axis)
  {
    m_QwtPlot->enableAxis(axis, false);
    applyScaleDraw(axis);
  }
  m_AxisGrid->enableX(true);
  m_AxisGrid->enableY(true);
  m_AxisGrid->attach(m_QwtPlot);
  m_LegendItem->setMaxColumns(1);
  m_LegendItem->setRenderHint(QwtPlotItem::RenderAntialiased, true);
  m_LegendItem->setBackgroundMode(QwtPlotLegendItem::LegendBackground);
  m_LegendItem->setBackgroundBrush(QColor(255, 255, 255, 220));
  m_LegendItem->setBorderPen(QPen(QColor(160, 160, 160)));
  m_LegendItem->setAlignment(AlignmentOf(m_LegendPosition));
  m_LegendItem->attach(m_QwtPlot);
  setCanvasBackground(Color::White());
  setPlotBackground(Color::White());
}

Plot::~Plot()
{
  for (const auto& item : m_Items)
  {
    item->qwtItem()->detach();
  }
  if (m_QwtPlot != nullptr)
  {
    m_AxisGrid->detach();
    m_LegendItem->detach();
  }
  delete m_AxisGrid;
  delete m_LegendItem;
  delete m_QwtPlot.data();
}

QwtPlot* Plot::qwtPlot() const
{
  return m_QwtPlot.data();
}

void Plot::enableAxis(int axis, bool on)
{
  if (ValidAxis(axis))
  {
    m_QwtPlot->enableAxis(axis, on);
  }
}

void Plot::setAxisScale(int axis, double min, double max, double step)
{
  if (ValidAxis(axis))
  {
    m_QwtPlot->setAxisScale(axis, min, max, step);
  }
}

void Plot::setAxisAutoScale(int axis, bool on)
{
  if (ValidAxis(axis))
  {
    m_QwtPlot->setAxisAutoScale(axis, on);
  }
}

bool Plot::axisAutoScale(int axis) const
{
  return ValidAxis(axis) && m_QwtPlot->axisAutoScale(axis);
}

std::array<double, 2> Plot::axisInterval(int axis) const
{
  if (!ValidAxis(axis))
  {
    return {0.0, 0.0};
  }
  m_QwtPlot->updateAxes();
  const QwtInterval interval = m_QwtPlot->axisInterval(axis);
  return {interval.minValue(), interval.maxValue()};
}

void Plot::setAxisScaleEngine(int axis, std::unique_ptr<ScaleEngine> engine)
{
  if (!ValidAxis(axis) || engine == nullptr)
  {
    return;
  }
  m_Axes[axis].logarithmic = engine->isLogarithmic();
  m_QwtPlot->setAxisScaleEngine(axis, engine->createQwtEngine());
  for (const auto& item : m_Items)
  {
    updateItemAxes(*item);
  }
}

bool Plot::axisIsLogarithmic(int axis) const
{
  return ValidAxis(axis) && m_Axes[axis].logarithmic;
}

void Plot::setAxisTitle(int axis, const Text& title)
{
  if (ValidAxis(axis))
  {
    m_AxisTitles[axis] = title;
    m_QwtPlot->setAxisTitle(axis, ToQwtText(title));
  }
}

Text Plot::axisTitle(int axis) const
{
  return ValidAxis(axis) ? m_AxisTitles[axis] : Text{};
}

void Plot::setAxisFont(int axis, const Font& font)
{
  if (ValidAxis(axis))
  {
    m_QwtPlot->setAxisFont(axis, font.toQFont());
  }
}

void Plot::setAxisPen(int axis, const Pen& pen)
{
  if (!ValidAxis(axis))
  {
    return;
  }
  QwtScaleWidget* widget = m_QwtPlot->axisWidget(axis);
  QPalette palette = widget->palette();
  palette.setColor(QPalette::WindowText, pen.color.toQColor());
  palette.setColor(QPalette::Text, pen.color.toQColor());
  widget->setPalette(palette);
}

void Plot::setAxisTicksVisible(int axis, bool visible)
{
  if (ValidAxis(axis))
  {
    m_Axes[axis].ticksVisible = visible;
    applyScaleDraw(axis);
  }
}

void Plot::setAxisTickLabels(int axis, const std::map<double, std::string>& labels)
{
  if (!ValidAxis(axis))
  {
    return;
  }
  m_Axes[axis].tickLabels = labels;
  applyScaleDraw(axis);
  if (!labels.empty())
  {
    // One tick for each label, half a step of room at both ends.
    QList<double> ticks;
    for (const auto& entry : labels)
    {
      ticks.append(entry.first);
    }
    const double first = labels.begin()->first;
    const double last = labels.rbegin()->first;
    const double pad =
        labels.size() > 1 ? (last - first) / (2.0 * static_cast<double>(labels.size() - 1)) : 0.5;
    QList<double> tickLists[QwtScaleDiv::NTickTypes];
    tickLists[QwtScaleDiv::MajorTick] = ticks;
    m_QwtPlot->setAxisScaleDiv(axis, QwtScaleDiv(first - pad, last + pad, tickLists));
  }
}

void Plot::setAxisTickLabels(int axis, const std::vector<std::string>& labels)
{
  std::map<double, std::string> positioned;
  for (std::size_t i = 0; i < labels.size(); ++i)
  {
    positioned.emplace(static_cast<double>(i), labels[i]);
  }
  setAxisTickLabels(axis, positioned);
}

void Plot::setAxisLabelFormat(int axis, const std::string& format)
{
  if (ValidAxis(axis))
  {
    m_Axes[axis].format = format;
    applyScaleDraw(axis);
  }
}

std::string Plot::axisLabelFormat(int axis) const
{
  return ValidAxis(axis) ? m_Axes[axis].format : std::string();
}

void Plot::setAxisLabelRotation(int axis, double degrees)
{
  if (ValidAxis(axis))
  {
    m_Axes[axis].rotation = degrees;
    applyScaleDraw(axis);
  }
}

void Plot::setAxisLabelOffset(int axis, int pixels)
{
  if (ValidAxis(axis))
  {
    m_Axes[axis].offset = std::max(0, pixels);
    applyScaleDraw(axis);
  }
}

ScaleMap Plot::canvasMap(int axis) const
{
  return ValidAxis(axis) ? ScaleMap(m_QwtPlot->canvasMap(axis)) : ScaleMap();
}

void Plot::applyScaleDraw(int axis)
{
  const AxisLabels& labels = m_Axes[axis];
  auto* draw = new FormattedScaleDraw(labels.format, labels.tickLabels);
  draw->enableComponent(QwtAbstractScaleDraw::Ticks, labels.ticksVisible);
  draw->setSpacing(labels.offset);
  draw->setLabelRotation(labels.rotation);
  if (labels.rotation != 0.0 && (axis == QwtPlot::xBottom || axis == QwtPlot::xTop))
  {
    draw->setLabelAlignment(Qt::AlignLeft | Qt::AlignBottom);
  }
  m_QwtPlot->setAxisScaleDraw(axis, draw); // the scale widget deletes the previous one
}

void Plot::setTitle(const Text& title)
{
  m_Title = title;
  m_QwtPlot->setTitle(ToQwtText(title));
}

Text Plot::title() const
{
  return m_Title;
}

void Plot::setBorderPen(const Pen& pen)
{
  if (auto* canvas = qobject_cast<QwtPlotCanvas*>(m_QwtPlot->canvas()))
  {
    canvas->setFrameStyle(QFrame::Box | QFrame::Plain);
    canvas->setLineWidth(std::max(0, static_cast<int>(pen.width)));
    QPalette palette = canvas->palette();
    palette.setColor(QPalette::WindowText, pen.color.toQColor());
    canvas->setPalette(palette);
  }
}

void Plot::setCanvasBackground(const Color& color)
{
  m_CanvasBackground = color;
  m_QwtPlot->setCanvasBackground(QBrush(color.toQColor()));
  if (m_CanvasFillsPlot)
  {
    setPlotBackground(color);
  }
}

void Plot::setPlotBackground(const Color& color)
{
  m_PlotBackground = m_CanvasFillsPlot ? m_CanvasBackground : color;
  QPalette palette = m_QwtPlot->palette();
  palette.setColor(QPalette::Window, m_PlotBackground.toQColor());
  m_QwtPlot->setPalette(palette);
}

void Plot::setCanvasFillsPlot(bool fills)
{
  m_CanvasFillsPlot = fills;
  setPlotBackground(m_PlotBackground);
}

void Plot::setMargin(int pixels)
{
  m_QwtPlot->setContentsMargins(pixels, pixels, pixels, pixels);
}

void Plot::setGridVisible(bool visible)
{
  m_AxisGrid->setVisible(visible);
}

void Plot::setLegendVisible(bool visible)
{
  m_LegendItem->setVisible(visible);
}

bool Plot::legendVisible() const
{
  return m_LegendItem->isVisible();
}

void Plot::setLegendPosition(LegendPosition position)
{
  m_LegendPosition = position;
  m_LegendItem->setAnchored(position == LegendPosition::Anchored);
  m_LegendItem->setAlignment(AlignmentOf(position));
}

void Plot::setLegendPosition(double x, double y)
{
  m_LegendItem->setAnchor(QPointF(std::clamp(x, 0.0, 1.0), std::clamp(y, 0.0, 1.0)));
  setLegendPosition(LegendPosition::Anchored);
}

std::array<double, 2> Plot::legendAnchor() const
{
  return {m_LegendItem->anchor().x(), m_LegendItem->anchor().y()};
}

QRect Plot::legendGeometry() const
{
  return m_LegendItem->geometry(m_QwtPlot->canvas()->contentsRect());
}

void Plot::addItem(const std::shared_ptr<PlotItem>& item)
{
  if (item == nullptr || std::find(m_Items.begin(), m_Items.end(), item) != m_Items.end())
  {
    return;
  }
  m_Items.push_back(item);
  updateItemAxes(*item);
  item->qwtItem()->setLegendIconSize(QSize(m_Legend.iconWidth(), std::max(8, m_Legend.iconWidth() / 2)));
  item->qwtItem()->attach(m_QwtPlot);
}

void Plot::removeItem(const std::shared_ptr<PlotItem>& item)
{
  auto found = std::find(m_Items.begin(), m_Items.end(), item);
  if (found != m_Items.end())
  {
    (*found)->qwtItem()->detach();
    m_Items.erase(found);
  }
}

void Plot::updateItemAxes(PlotItem& item) const
{
  item.setLogarithmicAxes(m_Axes[QwtPlot::xBottom].logarithmic, m_Axes[QwtPlot::yLeft].logarithmic);
}

void Plot::applyLegendIconSize()
{
  const QSize size(m_Legend.iconWidth(), std::max(8, m_Legend.iconWidth() / 2));
  for (const auto& item : m_Items)
  {
    if (item->qwtItem()->legendIconSize() != size)
    {
      item->qwtItem()->setLegendIconSize(size);
    }
  }
}

void Plot::resize(int width, int height)
{
  m_QwtPlot->resize(width, height);
}

int Plot::width() const
{
  return m_QwtPlot->width();
}

int Plot::height() const
{
  return m_QwtPlot->height();
}

void Plot::replot()
{
  applyLegendIconSize();
  m_QwtPlot->replot();
}

void Plot::renderInto(QPainter& painter, int width, int height)
{
  applyLegendIconSize();
  m_QwtPlot->updateAxes();
  QwtPlotRenderer renderer;
  renderer.render(m_QwtPlot, &painter, QRectF(0.0, 0.0, width, height));
}

QImage Plot::renderToImage(int width, int height, bool transparent)
{
  QImage image(std::max(1, width), std::max(1, height), QImage::Format_ARGB32_Premultiplied);
  image.fill(transparent ? QColor(Qt::transparent) : m_PlotBackground.toQColor());
  applyLegendIconSize();
  m_QwtPlot->updateAxes();
  QwtPlotRenderer renderer;
  if (transparent)
  {
    renderer.setDiscardFlags(QwtPlotRenderer::DiscardBackground | QwtPlotRenderer::DiscardCanvasBackground);
  }
  QPainter painter(&image);
  renderer.render(m_QwtPlot, &painter, QRectF(0.0, 0.0, image.width(), image.height()));
  painter.end();
  return image;
}
} // namespace plottaro
