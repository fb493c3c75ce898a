#pragma once

#include "colour/VXOpacityCurveGeometry.h"

#include <QWidget>

#include <vtkSmartPointer.h>

#include <string>
#include <vector>

class vtkColorTransferFunction;
class vtkPiecewiseFunction;
class vtkTable;

/**
 * The transfer function editor of the volume view: the histogram of the active array behind the
 * opacity curve (counts on a log scale, as volumes are mostly background), the colour map as a
 * gradient under it, and the curve with its nodes. Drag a node to move it, click on empty space (or
 * double-click) to add one, right-click a node or press Delete to remove it; the end nodes stay.
 * Every edit changes the opacity function at once and is announced with opacityFunctionEdited().
 */
class VXColorMapEditorWidget : public QWidget
{
  Q_OBJECT

public:
  explicit VXColorMapEditorWidget(QWidget* parent = nullptr);
  ~VXColorMapEditorWidget() override;

  /** @brief The functions of the array shown; either may be null, which shows nothing to edit. */
  void setFunctions(vtkColorTransferFunction* colors, vtkPiecewiseFunction* opacity);
  vtkPiecewiseFunction* opacityFunction() const;
  vtkColorTransferFunction* colorFunction() const;

  /**
   * @brief Takes the histogram behind the curve from a table: the first column holds the bin centres,
   * the column named columnName the populations. A table without them clears the histogram.
   */
  void updateHistogramOnly(const vtkSmartPointer<vtkTable>& table, const std::string& columnName);
  const std::vector<double>& histogramCentres() const { return m_BinCentres; }
  const std::vector<double>& histogramCounts() const { return m_BinCounts; }

  void setLogScale(bool logScale);
  bool isLogScale() const { return m_LogScale; }

  /** @brief The mapping of the current size and range, as painting and the mouse use it. */
  VXOpacityCurveGeometry geometry() const;
  int selectedNode() const { return m_Selected; }

  QSize sizeHint() const override { return {300, 170}; }
  QSize minimumSizeHint() const override { return {160, 110}; }

Q_SIGNALS:
  void opacityFunctionEdited();

protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

private:
  QRectF plotRect() const;
  QRectF gradientRect() const;
  void paintHistogram(QPainter& painter, const VXOpacityCurveGeometry& geometry) const;
  void paintGradient(QPainter& painter, const VXOpacityCurveGeometry& geometry) const;
  void paintCurve(QPainter& painter, const VXOpacityCurveGeometry& geometry) const;
  void edited();

  vtkSmartPointer<vtkColorTransferFunction> m_Colors;
  vtkSmartPointer<vtkPiecewiseFunction> m_Opacity;
  std::vector<double> m_BinCentres;
  std::vector<double> m_BinCounts;
  bool m_LogScale = true;
  int m_Selected = -1;
  bool m_Dragging = false;
};
