#include "filters/VXFImageResampleFilterWidget.h"

#include "filters/VXFImageResample.h"

#include "ui_VXFImageResampleFilterWidget.h"

#include <vtkImageData.h>

#include <algorithm>
#include <cmath>

VXFImageResampleFilterWidget::VXFImageResampleFilterWidget(VXFImageResample* filter, QWidget* parent)
    : QWidget(parent)
    , m_Ui(std::make_unique<Ui::VXFImageResampleFilterWidget>())
    , m_Filter(filter)
{
  m_Ui->setupUi(this);
  const std::array<double, 3> dims = filter->resampleDimensions();
  m_Ui->m_PercentX->setValue(dims[0]);
  m_Ui->m_PercentY->setValue(dims[1]);
  m_Ui->m_PercentZ->setValue(dims[2]);
  for (QDoubleSpinBox* spin : {m_Ui->m_PercentX, m_Ui->m_PercentY, m_Ui->m_PercentZ})
  {
    connect(spin, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            [this]()
            {
              if (m_Filter)
              {
                m_Filter->setResampleDimensions(
                    {m_Ui->m_PercentX->value(), m_Ui->m_PercentY->value(), m_Ui->m_PercentZ->value()});
              }
              updateDimensions();
            });
  }
  connect(m_Ui->m_ApplyButton, &QPushButton::clicked, filter, &VXFImageResample::applyFilter);
  updateDimensions();
}

VXFImageResampleFilterWidget::~VXFImageResampleFilterWidget() = default;

QVBoxLayout* VXFImageResampleFilterWidget::representationTypeLayout() const
{
  return m_Ui->m_RepTypeLayout;
}

void VXFImageResampleFilterWidget::updateDimensions()
{
  auto* image = m_Filter ? vtkImageData::SafeDownCast(m_Filter->inputDataObject()) : nullptr;
  if (image == nullptr)
  {
    m_Ui->m_OriginalDimensions->setText(QStringLiteral("not image data"));
    m_Ui->m_ResampledDimensions->setText(QString());
    return;
  }
  int dims[3];
  image->GetDimensions(dims);
  const std::array<double, 3> percent = m_Filter->resampleDimensions();
  QStringList original;
  QStringList resampled;
  for (int axis = 0; axis < 3; ++axis)
  {
    const int cells = std::max(dims[axis] - 1, 1);
    original.append(QString::number(dims[axis]));
    resampled.append(
        QString::number(std::max(static_cast<int>(std::lround(percent[axis] / 100.0 * cells)), 1) + 1));
  }
  m_Ui->m_OriginalDimensions->setText(original.join(QStringLiteral(" x ")));
  m_Ui->m_ResampledDimensions->setText(resampled.join(QStringLiteral(" x ")));
}
