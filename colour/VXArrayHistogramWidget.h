#pragma once

#include <QPointer>
#include <QWidget>

#include <vtkSmartPointer.h>

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

class vtkDataArray;

namespace Ui
{
class VXArrayHistogramWidget;
}

/**
 * A histogram of one array of a data view: one component, or the magnitude of all of them, over the
 * data range or the view's custom range. Values outside the range and NaN are counted apart.
 */
class VXArrayHistogramWidget : public QWidget
{
  Q_OBJECT

public:
  explicit VXArrayHistogramWidget(QWidget* parent = nullptr);
  ~VXArrayHistogramWidget() override;

  /** @brief Component -1 is the magnitude; a null array clears the plot. */
  void setArray(vtkDataArray* array, int component, bool useCustomRange, const std::array<double, 2>& range);
  void setPlotVisibility(bool visible);
  bool isPlotVisible() const { return m_PlotVisible; }
  void setBinCount(int bins);

  const std::vector<std::uint64_t>& counts() const { return m_Counts; }
  std::array<double, 2> range() const { return m_Range; }
  std::uint64_t skippedValues() const { return m_Skipped; }

private:
  void recompute();

  std::unique_ptr<Ui::VXArrayHistogramWidget> m_Ui;
  vtkSmartPointer<vtkDataArray> m_Array;
  int m_Component = -1;
  bool m_UseCustomRange = false;
  std::array<double, 2> m_CustomRange = {0.0, 0.0};
  std::array<double, 2> m_Range = {0.0, 0.0};
  std::vector<std::uint64_t> m_Counts;
  std::uint64_t m_Skipped = 0;
  bool m_PlotVisible = true;
};
