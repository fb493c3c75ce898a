#pragma once

#include <QPointF>
#include <QRectF>

#include <array>
#include <vector>

class vtkPiecewiseFunction;

/**
 * The arithmetic of the opacity curve editor, apart from its painting: where a node of the curve lies
 * in the plot and back, which node a pointer touches, and the editing rules. A node keeps its x
 * between its neighbours while dragged; the two end nodes keep their x, so the curve spans the same
 * range, and can be neither moved sideways nor removed; opacities stay in 0..1.
 */
class VXOpacityCurveGeometry
{
public:
  struct Node
  {
    double x = 0.0; // data value
    double y = 0.0; // opacity
  };

  /** @brief How close, in pixels, a pointer must come to a node to take it. */
  static constexpr double k_HitRadius = 6.0;

  void setPlotRect(const QRectF& rect) { m_Plot = rect; }
  QRectF plotRect() const { return m_Plot; }
  /** @brief The data values at the left and right edges of the plot; an empty span becomes 1 wide. */
  void setRange(double min, double max);
  std::array<double, 2> range() const { return m_Range; }

  QPointF toPixel(double x, double y) const;
  /** @brief The value and opacity under a pixel, each clamped to the plot. */
  Node toValue(const QPointF& pixel) const;

  /** @brief The node nearest to the pixel within k_HitRadius, else -1. */
  int nodeAt(const std::vector<Node>& nodes, const QPointF& pixel) const;

  static std::vector<Node> nodesOf(vtkPiecewiseFunction* function);

  /**
   * @brief Moves node index to the value under the pixel: x strictly between its neighbours (end nodes
   * keep theirs), y in 0..1. False when there is no such node.
   */
  bool moveNode(vtkPiecewiseFunction* function, int index, const QPointF& pixel) const;
  /**
   * @brief Adds a node at the value under the pixel when it falls strictly between the end nodes and
   * on no node; returns its index, or -1.
   */
  int insertNode(vtkPiecewiseFunction* function, const QPointF& pixel) const;
  /** @brief Removes an inner node; the end nodes stay. */
  static bool removeNode(vtkPiecewiseFunction* function, int index);

private:
  // The smallest gap kept between two nodes: a node must not land on its neighbour.
  double minimumGap() const;

  QRectF m_Plot = QRectF(0.0, 0.0, 100.0, 100.0);
  std::array<double, 2> m_Range = {0.0, 1.0};
};
