#include "colour/VXOpacityCurveGeometry.h"

#include <vtkPiecewiseFunction.h>

#include <algorithm>
#include <cmath>
#include <limits>

void VXOpacityCurveGeometry::setRange(double min, double max)
{
  if (!std::isfinite(min) || !std::isfinite(max))
  {
    return;
  }
  if (!(min < max))
  {
    max = min + 1.0;
  }
  m_Range = {min, max};
}

QPointF VXOpacityCurveGeometry::toPixel(double x, double y) const
{
  const double u = (x - m_Range[0]) / (m_Range[1] - m_Range[0]);
  return {m_Plot.left() + u * m_Plot.width(), m_Plot.bottom() - y * m_Plot.height()};
}

VXOpacityCurveGeometry::Node VXOpacityCurveGeometry::toValue(const QPointF& pixel) const
{
  const double u = m_Plot.width() > 0.0 ? (pixel.x() - m_Plot.left()) / m_Plot.width() : 0.0;
  const double v = m_Plot.height() > 0.0 ? (m_Plot.bottom() - pixel.y()) / m_Plot.height() : 0.0;
  return {m_Range[0] + std::clamp(u, 0.0, 1.0) * (m_Range[1] - m_Range[0]), std::clamp(v, 0.0, 1.0)};
}

int VXOpacityCurveGeometry::nodeAt(const std::vector<Node>& nodes, const QPointF& pixel) const
{
  int nearest = -1;
  double nearestDistance = k_HitRadius * k_HitRadius;
  for (std::size_t i = 0; i < nodes.size(); ++i)
  {
    const QPointF offset = toPixel(nodes[i].x, nodes[i].y) - pixel;
    const double distance = QPointF::dotProduct(offset, offset);
    if (distance <= nearestDistance)
    {
      nearest = static_cast<int>(i);
      nearestDistance = distance;
    }
  }
  return nearest;
}

std::vector<VXOpacityCurveGeometry::Node> VXOpacityCurveGeometry::nodesOf(vtkPiecewiseFunction* function)
{
  std::vector<Node> nodes;
  if (function == nullptr)
  {
    return nodes;
  }
  double node[4] = {0.0, 0.0, 0.5, 0.0};
  for (int i = 0; i < function->GetSize(); ++i)
  {
    function->GetNodeValue(i, node);
    nodes.push_back({node[0], node[1]});
  }
  return nodes;
}

double VXOpacityCurveGeometry::minimumGap() const
{
  // A thousandth of the plot's span, but never below what doubles can tell apart there.
  const double span = m_Range[1] - m_Range[0];
  const double scale = std::max(std::abs(m_Range[0]), std::abs(m_Range[1]));
  return std::max(span * 1e-3, scale * 8.0 * std::numeric_limits<double>::epsilon());
}

bool VXOpacityCurveGeometry::moveNode(vtkPiecewiseFunction* function, int index, const QPointF& pixel) const
{
  if (function == nullptr || index < 0 || index >= function->GetSize())
  {
    return false;
  }
  double node[4] = {0.0, 0.0, 0.5, 0.0};
  function->GetNodeValue(index, node);
  const Node target = toValue(pixel);
  const int last = function->GetSize() - 1;
  if (index > 0 && index < last)
  {
    double left[4] = {0.0, 0.0, 0.5, 0.0};
    double right[4] = {0.0, 0.0, 0.5, 0.0};
    function->GetNodeValue(index - 1, left);
    function->GetNodeValue(index + 1, right);
    const double gap = std::min(minimumGap(), (right[0] - left[0]) / 3.0);
    node[0] = std::clamp(target.x, left[0] + gap, right[0] - gap);
  }
  node[1] = target.y;
  function->SetNodeValue(index, node);
  return true;
}

int VXOpacityCurveGeometry::insertNode(vtkPiecewiseFunction* function, const QPointF& pixel) const
{
  if (function == nullptr || function->GetSize() < 2)
  {
    return -1;
  }
  const Node target = toValue(pixel);
  const std::vector<Node> nodes = nodesOf(function);
  const double gap = minimumGap();
  if (!(target.x > nodes.front().x + gap && target.x < nodes.back().x - gap))
  {
    return -1;
  }
  for (const Node& node : nodes)
  {
    if (std::abs(node.x - target.x) < gap)
    {
      return -1;
    }
  }
  return function->AddPoint(target.x, target.y);
}

bool VXOpacityCurveGeometry::removeNode(vtkPiecewiseFunction* function, int index)
{
  if (function == nullptr || index <= 0 || index >= function->GetSize() - 1)
  {
    return false;
  }
  return function->RemovePointByIndex(static_cast<std::size_t>(index));
}
