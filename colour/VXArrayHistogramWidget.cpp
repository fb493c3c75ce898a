#include "colour/VXArrayHistogramWidget.h"

#include "ui_VXArrayHistogramWidget.h"

#include <vtkDataArray.h>

#include <algorithm>
#include <cmath>

VXArrayHistogramWidget::VXArrayHistogramWidget(QWidget* parent)
    : QWidget(parent)
    , m_Ui(std::make_unique<Ui::VXArrayHistogramWidget>())
{
  m_Ui->setupUi(this);
  connect(m_Ui->m_BinsSpinBox, qOverload<int>(&QSpinBox::valueChanged), this, [this](int) { recompute(); });
}

VXArrayHistogramWidget::~VXArrayHistogramWidget() = default;

void VXArrayHistogramWidget::setArray(vtkDataArray* array, int component, bool useCustomRange,
                                      const std::array<double, 2>& range)
{
  m_Array = array;
  m_Component = array != nullptr && array->GetNumberOfComponents() == 1 ? 0 : component;
  m_UseCustomRange = useCustomRange;
  m_CustomRange = range;
  recompute();
}

void VXArrayHistogramWidget::setPlotVisibility(bool visible)
{
  m_PlotVisible = visible;
  m_Ui->m_Plot->setVisible(visible);
  m_Ui->m_RangeLabel->setVisible(visible);
}

void VXArrayHistogramWidget::setBinCount(int bins)
{
  m_Ui->m_BinsSpinBox->setValue(bins);
}

void VXArrayHistogramWidget::recompute()
{
  m_Counts.clear();
  m_Skipped = 0;
  if (m_Array == nullptr)
  {
    m_Ui->m_TitleLabel->setText(QStringLiteral("No array"));
    m_Ui->m_RangeLabel->clear();
    m_Ui->m_Plot->setCounts(m_Counts);
    return;
  }
  const int components = m_Array->GetNumberOfComponents();
  const bool magnitude = m_Component < 0 && components > 1;
  const int component = std::clamp(m_Component, 0, components - 1);
  if (m_UseCustomRange && m_CustomRange[0] < m_CustomRange[1])
  {
    m_Range = m_CustomRange;
  }
  else
  {
    m_Array->GetRange(m_Range.data(), magnitude ? -1 : component);
  }
  const auto bins = static_cast<std::size_t>(m_Ui->m_BinsSpinBox->value());
  m_Counts.assign(bins, 0);
  const double span = m_Range[1] - m_Range[0];
  for (vtkIdType tuple = 0; tuple < m_Array->GetNumberOfTuples(); ++tuple)
  {
    double value = 0.0;
    if (magnitude)
    {
      for (int c = 0; c < components; ++c)
      {
        const double v = m_Array->GetComponent(tuple, c);
        value += v * v;
      }
      value = std::sqrt(value);
    }
    else
    {
      value = m_Array->GetComponent(tuple, component);
    }
    if (std::isnan(value) || value < m_Range[0] || value > m_Range[1])
    {
      ++m_Skipped;
      continue;
    }
    // A constant array puts every value in the first bin; the top edge belongs to the last bin.
    const auto bin =
        span > 0.0 ? static_cast<std::size_t>((value - m_Range[0]) / span * static_cast<double>(bins)) : 0;
    ++m_Counts[std::min(bin, bins - 1)];
  }
  QString title = QString::fromUtf8(m_Array->GetName() != nullptr ? m_Array->GetName() : "");
  if (components > 1)
  {
    title += magnitude ? QStringLiteral(" (Magnitude)") : QStringLiteral(" (%1)").arg(component);
  }
  m_Ui->m_TitleLabel->setText(title);
  m_Ui->m_RangeLabel->setText(QStringLiteral("%1 to %2, %3 values outside")
                                  .arg(m_Range[0], 0, 'g', 6)
                                  .arg(m_Range[1], 0, 'g', 6)
                                  .arg(m_Skipped));
  m_Ui->m_Plot->setCounts(m_Counts);
}
