#include "colour/VXColorMapEditorWidget.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <vtkAbstractArray.h>
#include <vtkColorTransferFunction.h>
#include <vtkDataArray.h>
#include <vtkPiecewiseFunction.h>
#include <vtkTable.h>

#include <algorithm>
#include <cmath>

namespace
{
constexpr double k_Margin = 6.0;
constexpr double k_GradientHeight = 14.0;
constexpr double k_NodeRadius = 4.0;
} // namespace

VXColorMapEditorWidget::VXColorMapEditorWidget(QWidget* parent)
    : QWidget(parent)
{
  setObjectName(QStringLiteral("colorMapEditorWidget"));
  setFocusPolicy(Qt::ClickFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setMinimumHeight(minimumSizeHint().height());
  setFixedHeight(sizeHint().height());
  setToolTip(QStringLiteral("<html><head/><body><p>Opacity over the data values, drawn over the histogram "
                            "of the array (log counts) and above its colour map. Drag a node to move it, "
                            "click to add one, right-click a node or press Delete to remove it.</p></body>"
                            "</html>"));
}

VXColorMapEditorWidget::~VXColorMapEditorWidget() = default;

void VXColorMapEditorWidget::setFunctions(vtkColorTransferFunction* colors, vtkPiecewiseFunction* opacity)
{
  if (opacity != m_Opacity)
  {
    m_Selected = -1;
    m_Dragging = false;
  }
  m_Colors = colors;
  m_Opacity = opacity;
  if (m_Opacity != nullptr && m_Selected >= m_Opacity->GetSize())
  {
    m_Selected = -1;
  }
  update();
}

vtkPiecewiseFunction* VXColorMapEditorWidget::opacityFunction() const
{
  return m_Opacity;
}

vtkColorTransferFunction* VXColorMapEditorWidget::colorFunction() const
{
  return m_Colors;
}

void VXColorMapEditorWidget::updateHistogramOnly(const vtkSmartPointer<vtkTable>& table,
                                                 const std::string& columnName)
{
  m_BinCentres.clear();
  m_BinCounts.clear();
  vtkDataArray* centres = table != nullptr && table->GetNumberOfColumns() > 0
                              ? vtkDataArray::SafeDownCast(table->GetColumn(0))
                              : nullptr;
  vtkDataArray* counts =
      table != nullptr ? vtkDataArray::SafeDownCast(table->GetColumnByName(columnName.c_str())) : nullptr;
  if (centres != nullptr && counts != nullptr && centres != counts &&
      centres->GetNumberOfTuples() == counts->GetNumberOfTuples())
  {
    for (vtkIdType i = 0; i < centres->GetNumberOfTuples(); ++i)
    {
      m_BinCentres.push_back(centres->GetComponent(i, 0));
      m_BinCounts.push_back(counts->GetComponent(i, 0));
    }
  }
  update();
}

void VXColorMapEditorWidget::setLogScale(bool logScale)
{
  m_LogScale = logScale;
  update();
}

QRectF VXColorMapEditorWidget::plotRect() const
{
  return QRectF(k_Margin, k_Margin, std::max(1.0, width() - 2.0 * k_Margin),
                std::max(1.0, height() - 3.0 * k_Margin - k_GradientHeight));
}

QRectF VXColorMapEditorWidget::gradientRect() const
{
  const QRectF plot = plotRect();
  return QRectF(plot.left(), plot.bottom() + k_Margin, plot.width(), k_GradientHeight);
}

VXOpacityCurveGeometry VXColorMapEditorWidget::geometry() const
{
  VXOpacityCurveGeometry geometry;
  geometry.setPlotRect(plotRect());
  // The plot spans the colour map and the curve both, so that every node can be reached.
  double range[2] = {0.0, 1.0};
  bool known = false;
  if (m_Colors != nullptr && m_Colors->GetSize() > 0)
  {
    m_Colors->GetRange(range);
    known = true;
  }
  if (m_Opacity != nullptr && m_Opacity->GetSize() > 0)
  {
    double curve[2] = {0.0, 1.0};
    m_Opacity->GetRange(curve);
    range[0] = known ? std::min(range[0], curve[0]) : curve[0];
    range[1] = known ? std::max(range[1], curve[1]) : curve[1];
  }
  geometry.setRange(range[0], range[1]);
  return geometry;
}

void VXColorMapEditorWidget::paintEvent(QPaintEvent* /*event*/)
{
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing, true);
  const VXOpacityCurveGeometry mapping = geometry();
  const QRectF plot = mapping.plotRect();
  painter.fillRect(plot, palette().color(QPalette::Base));
  paintHistogram(painter, mapping);
  painter.setPen(palette().color(QPalette::Mid));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(plot);
  paintGradient(painter, mapping);
  paintCurve(painter, mapping);
  // The ends of the range, small, in the corners of the plot.
  QFont font = painter.font();
  font.setPointSizeF(std::max(6.0, font.pointSizeF() * 0.8));
  painter.setFont(font);
  painter.setPen(palette().color(QPalette::Text));
  const QRectF labels = plot.adjusted(3, 2, -3, -2);
  painter.drawText(labels, Qt::AlignLeft | Qt::AlignTop, QString::number(mapping.range()[0], 'g', 5));
  painter.drawText(labels, Qt::AlignRight | Qt::AlignTop, QString::number(mapping.range()[1], 'g', 5));
}

void VXColorMapEditorWidget::paintHistogram(QPainter& painter, const VXOpacityCurveGeometry& mapping) const
{
  if (m_BinCounts.empty())
  {
    return;
  }
  const auto scaled = [this](double count)
  { return m_LogScale ? std::log10(1.0 + std::max(count, 0.0)) : std::max(count, 0.0); };
  double tallest = 0.0;
  for (double count : m_BinCounts)
  {
    tallest = std::max(tallest, scaled(count));
  }
  if (tallest <= 0.0)
  {
    return;
  }
  const QRectF plot = mapping.plotRect();
  // Bins are evenly spaced: a bar spans from half way to its left neighbour to half way to its right.
  const double width = m_BinCentres.size() > 1 ? m_BinCentres[1] - m_BinCentres[0] : 1.0;
  QColor bar = palette().color(QPalette::Mid);
  bar.setAlpha(150);
  painter.save();
  painter.setClipRect(plot);
  painter.setPen(Qt::NoPen);
  painter.setBrush(bar);
  for (std::size_t i = 0; i < m_BinCounts.size(); ++i)
  {
    const double left = mapping.toPixel(m_BinCentres[i] - width / 2.0, 0.0).x();
    const double right = mapping.toPixel(m_BinCentres[i] + width / 2.0, 0.0).x();
    const double height = plot.height() * scaled(m_BinCounts[i]) / tallest;
    painter.drawRect(QRectF(left, plot.bottom() - height, std::max(1.0, right - left), height));
  }
  painter.restore();
}

void VXColorMapEditorWidget::paintGradient(QPainter& painter, const VXOpacityCurveGeometry& mapping) const
{
  const QRectF strip = gradientRect();
  if (m_Colors == nullptr || m_Colors->GetSize() == 0)
  {
    painter.fillRect(strip, palette().color(QPalette::Window));
    return;
  }
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, false);
  const int columns = std::max(1, static_cast<int>(std::ceil(strip.width())));
  for (int column = 0; column < columns; ++column)
  {
    const double x = strip.left() + column + 0.5;
    double rgb[3] = {0.0, 0.0, 0.0};
    m_Colors->GetColor(mapping.toValue(QPointF(x, strip.top())).x, rgb);
    painter.fillRect(QRectF(strip.left() + column, strip.top(), 1.0, strip.height()),
                     QColor::fromRgbF(rgb[0], rgb[1], rgb[2]));
  }
  painter.restore();
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(strip);
}

void VXColorMapEditorWidget::paintCurve(QPainter& painter, const VXOpacityCurveGeometry& mapping) const
{
  const std::vector<VXOpacityCurveGeometry::Node> nodes = VXOpacityCurveGeometry::nodesOf(m_Opacity);
  if (nodes.empty())
  {
    return;
  }
  const QRectF plot = mapping.plotRect();
  // Beyond its end nodes the function keeps their opacities.
  QPainterPath curve;
  curve.moveTo(plot.left(), mapping.toPixel(nodes.front().x, nodes.front().y).y());
  for (const auto& node : nodes)
  {
    curve.lineTo(mapping.toPixel(node.x, node.y));
  }
  curve.lineTo(plot.right(), mapping.toPixel(nodes.back().x, nodes.back().y).y());
  QPainterPath filled = curve;
  filled.lineTo(plot.bottomRight());
  filled.lineTo(plot.bottomLeft());
  filled.closeSubpath();
  QColor fill = palette().color(QPalette::Highlight);
  fill.setAlpha(50);
  painter.fillPath(filled, fill);
  painter.setPen(QPen(palette().color(QPalette::Text), 1.5));
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(curve);
  for (std::size_t i = 0; i < nodes.size(); ++i)
  {
    const bool selected = static_cast<int>(i) == m_Selected;
    painter.setPen(QPen(palette().color(QPalette::Text), 1.0));
    painter.setBrush(selected ? palette().color(QPalette::Highlight) : palette().color(QPalette::Base));
    const double radius = selected ? k_NodeRadius + 1.0 : k_NodeRadius;
    painter.drawEllipse(mapping.toPixel(nodes[i].x, nodes[i].y), radius, radius);
  }
}

void VXColorMapEditorWidget::edited()
{
  update();
  Q_EMIT opacityFunctionEdited();
}

void VXColorMapEditorWidget::mousePressEvent(QMouseEvent* event)
{
  if (m_Opacity == nullptr)
  {
    QWidget::mousePressEvent(event);
    return;
  }
  const VXOpacityCurveGeometry mapping = geometry();
  const QPointF position = event->pos();
  const int node = mapping.nodeAt(VXOpacityCurveGeometry::nodesOf(m_Opacity), position);
  if (event->button() == Qt::RightButton)
  {
    if (VXOpacityCurveGeometry::removeNode(m_Opacity, node))
    {
      m_Selected = -1;
      edited();
    }
    return;
  }
  if (event->button() != Qt::LeftButton)
  {
    return;
  }
  if (node >= 0)
  {
    m_Selected = node;
    m_Dragging = true;
    update();
    return;
  }
  const int added = mapping.insertNode(m_Opacity, position);
  if (added >= 0)
  {
    m_Selected = added;
    m_Dragging = true;
    edited();
  }
}

void VXColorMapEditorWidget::mouseMoveEvent(QMouseEvent* event)
{
  if (!m_Dragging || m_Opacity == nullptr || !(event->buttons() & Qt::LeftButton))
  {
    QWidget::mouseMoveEvent(event);
    return;
  }
  if (geometry().moveNode(m_Opacity, m_Selected, event->pos()))
  {
    edited();
  }
}

void VXColorMapEditorWidget::mouseReleaseEvent(QMouseEvent* event)
{
  m_Dragging = false;
  QWidget::mouseReleaseEvent(event);
}

void VXColorMapEditorWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
  // The press before a double-click has usually added the node already; add one only if it did not.
  if (m_Opacity == nullptr || event->button() != Qt::LeftButton)
  {
    return;
  }
  const VXOpacityCurveGeometry mapping = geometry();
  if (mapping.nodeAt(VXOpacityCurveGeometry::nodesOf(m_Opacity), event->pos()) >= 0)
  {
    return;
  }
  const int added = mapping.insertNode(m_Opacity, event->pos());
  if (added >= 0)
  {
    m_Selected = added;
    edited();
  }
}

void VXColorMapEditorWidget::keyPressEvent(QKeyEvent* event)
{
  if ((event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace) && m_Opacity != nullptr)
  {
    if (VXOpacityCurveGeometry::removeNode(m_Opacity, m_Selected))
    {
      m_Selected = -1;
      m_Dragging = false;
      edited();
    }
    event->accept();
    return;
  }
  QWidget::keyPressEvent(event);
}
