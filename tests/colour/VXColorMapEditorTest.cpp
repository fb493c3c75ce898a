// The volume view's transfer function editor: the editing rules of the opacity curve on their own,
// then the widget driven by mouse and keys as a user drives it.
#include "colour/TomvizHistogram.h"
#include "colour/VXColorMapEditorWidget.h"
#include "colour/VXOpacityCurveGeometry.h"

#include <vtkColorTransferFunction.h>
#include <vtkFloatArray.h>
#include <vtkImageData.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkPiecewiseFunction.h>
#include <vtkPointData.h>
#include <vtkTable.h>
#include <vtkUnsignedCharArray.h>

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace
{
using Node = VXOpacityCurveGeometry::Node;

// A 200 x 100 plot at (10, 20) over the values 0..100: 2 pixels a value, 100 pixels an opacity step.
VXOpacityCurveGeometry Plot()
{
  VXOpacityCurveGeometry geometry;
  geometry.setPlotRect(QRectF(10.0, 20.0, 200.0, 100.0));
  geometry.setRange(0.0, 100.0);
  return geometry;
}

std::vector<std::array<double, 2>> Nodes(vtkPiecewiseFunction* function)
{
  std::vector<std::array<double, 2>> nodes;
  for (const Node& node : VXOpacityCurveGeometry::nodesOf(function))
  {
    nodes.push_back({node.x, node.y});
  }
  return nodes;
}

vtkSmartPointer<vtkPiecewiseFunction> Curve(std::initializer_list<std::array<double, 2>> nodes)
{
  auto function = vtkSmartPointer<vtkPiecewiseFunction>::New();
  for (const auto& node : nodes)
  {
    function->AddPoint(node[0], node[1]);
  }
  return function;
}
} // namespace

TEST(OpacityCurveGeometry, MapsValuesToPixelsAndBackWithClamping)
{
  const VXOpacityCurveGeometry geometry = Plot();
  EXPECT_EQ(geometry.toPixel(0.0, 0.0), QPointF(10.0, 120.0));
  EXPECT_EQ(geometry.toPixel(100.0, 1.0), QPointF(210.0, 20.0));
  EXPECT_EQ(geometry.toPixel(25.0, 0.5), QPointF(60.0, 70.0));
  const Node back = geometry.toValue(QPointF(60.0, 70.0));
  EXPECT_DOUBLE_EQ(back.x, 25.0);
  EXPECT_DOUBLE_EQ(back.y, 0.5);
  // Outside the plot the value and the opacity stop at its edges.
  const Node outside = geometry.toValue(QPointF(-50.0, -50.0));
  EXPECT_DOUBLE_EQ(outside.x, 0.0);
  EXPECT_DOUBLE_EQ(outside.y, 1.0);
  // An empty range does not divide by zero.
  VXOpacityCurveGeometry flat = Plot();
  flat.setRange(5.0, 5.0);
  EXPECT_EQ(flat.range(), (std::array<double, 2>{5.0, 6.0}));
}

TEST(OpacityCurveGeometry, HitTestingTakesTheNearestNodeWithinTheRadius)
{
  const VXOpacityCurveGeometry geometry = Plot();
  const std::vector<Node> nodes = {{0.0, 0.0}, {50.0, 0.5}, {52.0, 0.5}, {100.0, 1.0}};
  EXPECT_EQ(geometry.nodeAt(nodes, QPointF(110.0, 70.0)), 1);  // exactly on node 1
  EXPECT_EQ(geometry.nodeAt(nodes, QPointF(113.5, 70.0)), 2);  // nearer to node 2 (at x 114)
  EXPECT_EQ(geometry.nodeAt(nodes, QPointF(10.0, 115.0)), 0);  // 5 pixels above the first node
  EXPECT_EQ(geometry.nodeAt(nodes, QPointF(10.0, 110.0)), -1); // 10 pixels: too far
  EXPECT_EQ(geometry.nodeAt({}, QPointF(10.0, 120.0)), -1);
}

TEST(OpacityCurveGeometry, DraggingKeepsANodeBetweenItsNeighboursAndTheEndsInPlace)
{
  const VXOpacityCurveGeometry geometry = Plot();
  auto curve = Curve({{0.0, 0.0}, {30.0, 0.2}, {60.0, 0.4}, {100.0, 1.0}});
  // Inside its neighbours a node goes where the pointer is.
  ASSERT_TRUE(geometry.moveNode(curve, 1, geometry.toPixel(45.0, 0.7)));
  EXPECT_EQ(Nodes(curve), (std::vector<std::array<double, 2>>{{0, 0}, {45, 0.7}, {60, 0.4}, {100, 1}}));
  // Past its right neighbour it stops just short of it, and never above an opacity of 1.
  ASSERT_TRUE(geometry.moveNode(curve, 1, QPointF(400.0, -300.0)));
  std::vector<std::array<double, 2>> nodes = Nodes(curve);
  ASSERT_EQ(nodes.size(), 4u);
  EXPECT_LT(nodes[1][0], 60.0);
  EXPECT_GT(nodes[1][0], 59.0);
  EXPECT_DOUBLE_EQ(nodes[1][1], 1.0);
  EXPECT_EQ(nodes[2], (std::array<double, 2>{60.0, 0.4}));
  // Past its left neighbour likewise, and never below 0.
  ASSERT_TRUE(geometry.moveNode(curve, 2, QPointF(-100.0, 500.0)));
  nodes = Nodes(curve);
  EXPECT_GT(nodes[2][0], nodes[1][0]);
  EXPECT_LT(nodes[2][0], nodes[1][0] + 1.0);
  EXPECT_DOUBLE_EQ(nodes[2][1], 0.0);
  // The end nodes move up and down only: the curve keeps its range.
  ASSERT_TRUE(geometry.moveNode(curve, 0, geometry.toPixel(20.0, 0.3)));
  ASSERT_TRUE(geometry.moveNode(curve, 3, geometry.toPixel(80.0, 0.6)));
  nodes = Nodes(curve);
  EXPECT_EQ(nodes.front(), (std::array<double, 2>{0.0, 0.3}));
  EXPECT_EQ(nodes.back(), (std::array<double, 2>{100.0, 0.6}));
  EXPECT_FALSE(geometry.moveNode(curve, 4, QPointF(0.0, 0.0)));
  EXPECT_FALSE(geometry.moveNode(curve, -1, QPointF(0.0, 0.0)));
}

TEST(OpacityCurveGeometry, AddsInsideTheEndsAndRemovesAllButTheEnds)
{
  const VXOpacityCurveGeometry geometry = Plot();
  auto curve = Curve({{0.0, 0.0}, {100.0, 1.0}});
  EXPECT_EQ(geometry.insertNode(curve, geometry.toPixel(25.0, 0.75)), 1);
  EXPECT_EQ(geometry.insertNode(curve, geometry.toPixel(75.0, 0.25)), 2);
  EXPECT_EQ(Nodes(curve), (std::vector<std::array<double, 2>>{{0, 0}, {25, 0.75}, {75, 0.25}, {100, 1}}));
  // Not on a node, not on or beyond an end.
  EXPECT_EQ(geometry.insertNode(curve, geometry.toPixel(25.0, 0.1)), -1);
  EXPECT_EQ(geometry.insertNode(curve, geometry.toPixel(0.0, 0.5)), -1);
  EXPECT_EQ(geometry.insertNode(curve, QPointF(500.0, 50.0)), -1);
  EXPECT_EQ(curve->GetSize(), 4);

  EXPECT_FALSE(VXOpacityCurveGeometry::removeNode(curve, 0));
  EXPECT_FALSE(VXOpacityCurveGeometry::removeNode(curve, 3));
  EXPECT_FALSE(VXOpacityCurveGeometry::removeNode(curve, 7));
  EXPECT_TRUE(VXOpacityCurveGeometry::removeNode(curve, 1));
  EXPECT_EQ(Nodes(curve), (std::vector<std::array<double, 2>>{{0, 0}, {75, 0.25}, {100, 1}}));
  EXPECT_TRUE(VXOpacityCurveGeometry::removeNode(curve, 1));
  EXPECT_FALSE(VXOpacityCurveGeometry::removeNode(curve, 1));
  EXPECT_EQ(Nodes(curve), (std::vector<std::array<double, 2>>{{0, 0}, {100, 1}}));
  // The function itself gives the new opacities.
  EXPECT_DOUBLE_EQ(curve->GetValue(50.0), 0.5);
}

TEST(TomvizHistogram, TwoHundredBinsWhoseLastStartsAtTheMaximum)
{
  vtkNew<vtkImageData> image;
  image->SetDimensions(200, 1, 1);
  vtkNew<vtkFloatArray> values;
  values->SetName("Values");
  for (int i = 0; i < 200; ++i)
  {
    values->InsertNextValue(static_cast<float>(i)); // 0..199: one value per bin
  }
  image->GetPointData()->AddArray(values);
  vtkNew<vtkTable> table;
  ASSERT_TRUE(tomviz::PopulateHistogram(image, "Values", "image_pops", table));
  auto* centres = vtkFloatArray::SafeDownCast(table->GetColumn(0));
  auto* counts = vtkIntArray::SafeDownCast(table->GetColumnByName("image_pops"));
  ASSERT_NE(centres, nullptr);
  ASSERT_NE(counts, nullptr);
  ASSERT_EQ(counts->GetNumberOfTuples(), 200);
  for (int bin = 0; bin < 200; ++bin)
  {
    EXPECT_EQ(counts->GetValue(bin), 1) << bin;
  }
  EXPECT_FLOAT_EQ(centres->GetValue(0), 0.5f);
  EXPECT_FLOAT_EQ(centres->GetValue(199), 199.5f);
  // The table's columns are reused by the next array.
  vtkNew<vtkUnsignedCharArray> bytes;
  bytes->SetName("Bytes");
  for (int i = 0; i < 200; ++i)
  {
    bytes->InsertNextValue(static_cast<unsigned char>(i < 150 ? 10 : 209));
  }
  image->GetPointData()->AddArray(bytes);
  ASSERT_TRUE(tomviz::PopulateHistogram(image, "Bytes", "image_pops", table));
  EXPECT_EQ(table->GetNumberOfColumns(), 2);
  counts = vtkIntArray::SafeDownCast(table->GetColumnByName("image_pops"));
  EXPECT_EQ(counts->GetValue(0), 150);
  EXPECT_EQ(counts->GetValue(199), 50);
  EXPECT_FALSE(tomviz::PopulateHistogram(image, "Missing", "image_pops", table));
}

class ColorMapEditorTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    m_Colors->AddRGBPoint(0.0, 0.0, 0.0, 1.0);
    m_Colors->AddRGBPoint(100.0, 1.0, 0.0, 0.0);
    m_Opacity->AddPoint(0.0, 0.0);
    m_Opacity->AddPoint(100.0, 1.0);
    m_Editor.resize(320, 170);
    m_Editor.setFunctions(m_Colors, m_Opacity);
    m_Editor.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_Editor));
  }

  QPoint pixel(double x, double y) const { return m_Editor.geometry().toPixel(x, y).toPoint(); }

  vtkNew<vtkColorTransferFunction> m_Colors;
  vtkNew<vtkPiecewiseFunction> m_Opacity;
  VXColorMapEditorWidget m_Editor;
};

TEST_F(ColorMapEditorTest, ClickAddsDragMovesRightClickAndDeleteRemove)
{
  QSignalSpy edits(&m_Editor, &VXColorMapEditorWidget::opacityFunctionEdited);
  // A click on empty space adds a node there.
  QTest::mouseClick(&m_Editor, Qt::LeftButton, Qt::NoModifier, pixel(50.0, 0.2));
  ASSERT_EQ(m_Opacity->GetSize(), 3);
  EXPECT_EQ(m_Editor.selectedNode(), 1);
  EXPECT_EQ(edits.count(), 1);
  double node[4];
  m_Opacity->GetNodeValue(1, node);
  EXPECT_NEAR(node[0], 50.0, 1.0);
  EXPECT_NEAR(node[1], 0.2, 0.02);

  // Dragging it up and to the right moves it in the function itself.
  QTest::mousePress(&m_Editor, Qt::LeftButton, Qt::NoModifier, pixel(node[0], node[1]));
  QMouseEvent move(QEvent::MouseMove, pixel(70.0, 0.9), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&m_Editor, &move);
  QTest::mouseRelease(&m_Editor, Qt::LeftButton, Qt::NoModifier, pixel(70.0, 0.9));
  m_Opacity->GetNodeValue(1, node);
  EXPECT_NEAR(node[0], 70.0, 1.0);
  EXPECT_NEAR(node[1], 0.9, 0.02);
  EXPECT_NEAR(m_Opacity->GetValue(node[0]), node[1], 1e-9);
  EXPECT_EQ(edits.count(), 2);

  // A right-click on an end node leaves it; on the inner node removes it.
  QTest::mouseClick(&m_Editor, Qt::RightButton, Qt::NoModifier, pixel(100.0, 1.0));
  EXPECT_EQ(m_Opacity->GetSize(), 3);
  QTest::mouseClick(&m_Editor, Qt::RightButton, Qt::NoModifier, pixel(node[0], node[1]));
  EXPECT_EQ(m_Opacity->GetSize(), 2);
  EXPECT_EQ(edits.count(), 3);

  // Delete removes the selected node, but never an end.
  QTest::mouseClick(&m_Editor, Qt::LeftButton, Qt::NoModifier, pixel(30.0, 0.5));
  ASSERT_EQ(m_Opacity->GetSize(), 3);
  QTest::keyClick(&m_Editor, Qt::Key_Delete);
  EXPECT_EQ(m_Opacity->GetSize(), 2);
  QTest::mouseClick(&m_Editor, Qt::LeftButton, Qt::NoModifier, pixel(0.0, 0.0));
  EXPECT_EQ(m_Editor.selectedNode(), 0);
  QTest::keyClick(&m_Editor, Qt::Key_Delete);
  EXPECT_EQ(m_Opacity->GetSize(), 2);
}

TEST_F(ColorMapEditorTest, ShowsTheHistogramOfATableAndFollowsNewFunctions)
{
  vtkNew<vtkImageData> image;
  image->SetDimensions(10, 10, 1);
  vtkNew<vtkFloatArray> values;
  values->SetName("Values");
  for (int i = 0; i < 100; ++i)
  {
    values->InsertNextValue(static_cast<float>(i % 7));
  }
  image->GetPointData()->AddArray(values);
  auto table = vtkSmartPointer<vtkTable>::New();
  ASSERT_TRUE(tomviz::PopulateHistogram(image, "Values", "image_pops", table));
  m_Editor.updateHistogramOnly(table, "image_pops");
  ASSERT_EQ(m_Editor.histogramCounts().size(), 200u);
  double total = 0.0;
  for (double count : m_Editor.histogramCounts())
  {
    total += count;
  }
  EXPECT_EQ(total, 100.0);
  EXPECT_TRUE(m_Editor.isLogScale());
  // A table without the column clears it.
  m_Editor.updateHistogramOnly(table, "other");
  EXPECT_TRUE(m_Editor.histogramCounts().empty());

  // Another function: the plot spans its range and edits go to it.
  vtkNew<vtkPiecewiseFunction> other;
  other->AddPoint(-10.0, 0.5);
  other->AddPoint(10.0, 0.5);
  vtkNew<vtkColorTransferFunction> otherColors;
  otherColors->AddRGBPoint(-10.0, 1.0, 1.0, 1.0);
  otherColors->AddRGBPoint(10.0, 0.0, 0.0, 0.0);
  m_Editor.setFunctions(otherColors, other);
  EXPECT_EQ(m_Editor.geometry().range(), (std::array<double, 2>{-10.0, 10.0}));
  QTest::mouseClick(&m_Editor, Qt::LeftButton, Qt::NoModifier, pixel(0.0, 0.8));
  EXPECT_EQ(other->GetSize(), 3);
  EXPECT_EQ(m_Opacity->GetSize(), 2);
  // Without a function there is nothing to edit.
  m_Editor.setFunctions(nullptr, nullptr);
  QTest::mouseClick(&m_Editor, Qt::LeftButton, Qt::NoModifier, QPoint(100, 50));
  EXPECT_EQ(m_Editor.opacityFunction(), nullptr);
}
