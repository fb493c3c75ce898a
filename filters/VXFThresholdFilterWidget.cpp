#include "filters/VXFThresholdFilterWidget.h"

#include "filters/VXFThreshold.h"

#include "ui_VXFThresholdFilterWidget.h"

#include <QSignalBlocker>

VXFThresholdFilterWidget::VXFThresholdFilterWidget(VXFThreshold* filter, QWidget* parent)
    : QWidget(parent)
    , m_Ui(std::make_unique<Ui::VXFThresholdFilterWidget>())
    , m_Filter(filter)
{
  m_Ui->setupUi(this);
  updateScalarArrays();
  resetRange();
  connect(m_Ui->m_ScalarsCombo, qOverload<int>(&QComboBox::currentIndexChanged), this,
          &VXFThresholdFilterWidget::arrayNameComboIndexChanged);
  auto rangeEdited = [this]()
  { customRangeChanged(m_Ui->m_MinimumSpin->value(), m_Ui->m_MaximumSpin->value()); };
  connect(m_Ui->m_MinimumSpin, &QDoubleSpinBox::editingFinished, this, rangeEdited);
  connect(m_Ui->m_MaximumSpin, &QDoubleSpinBox::editingFinished, this, rangeEdited);
  connect(m_Ui->m_ApplyButton, &QPushButton::clicked, filter, &VXFThreshold::applyFilter);
  connect(m_Ui->m_CreateFilterButton, &QPushButton::clicked, filter,
          &VXFThreshold::createKESTRIXFilterFromVXFilter);
}

VXFThresholdFilterWidget::~VXFThresholdFilterWidget() = default;

QVBoxLayout* VXFThresholdFilterWidget::representationTypeLayout() const
{
  return m_Ui->m_RepTypeLayout;
}

void VXFThresholdFilterWidget::updateScalarArrays()
{
  if (!m_Filter)
  {
    return;
  }
  {
    const QSignalBlocker block(m_Ui->m_ScalarsCombo);
    m_Ui->m_ScalarsCombo->clear();
    for (const VXFThreshold::DataArrayNameInfo& info : m_Filter->getDataArrayNameInfos())
    {
      m_Ui->m_ScalarsCombo->addItem(info.displayName);
    }
  }
  m_Ui->m_ScalarsCombo->setCurrentIndex(static_cast<int>(m_Filter->getActiveArrayInfoIndex()));
  resetRange();
}

void VXFThresholdFilterWidget::arrayNameComboIndexChanged(int index)
{
  if (!m_Filter || index < 0)
  {
    return;
  }
  m_Filter->setActiveArrayInfoIndex(static_cast<size_t>(index));
  resetRange();
}

void VXFThresholdFilterWidget::customRangeChanged(double minimum, double maximum)
{
  if (!m_Filter || m_Filter->getDataArrayNameInfos().empty())
  {
    return;
  }
  VXFThreshold::DataArrayNameInfo info = m_Filter->getActiveArrayInfo();
  info.userRange = {minimum, maximum};
  m_Filter->updateActiveArrayInfo(info);
}

void VXFThresholdFilterWidget::resetRange()
{
  const bool hasArrays = m_Filter && !m_Filter->getDataArrayNameInfos().empty();
  m_Ui->m_MinimumSpin->setEnabled(hasArrays);
  m_Ui->m_MaximumSpin->setEnabled(hasArrays);
  if (!hasArrays)
  {
    m_Ui->m_DataRangeValue->setText(QStringLiteral("No data arrays"));
    return;
  }
  const VXFThreshold::DataArrayNameInfo info = m_Filter->getActiveArrayInfo();
  m_Ui->m_DataRangeValue->setText(QStringLiteral("[%1, %2]").arg(info.dataRange[0]).arg(info.dataRange[1]));
  const QSignalBlocker blockMinimum(m_Ui->m_MinimumSpin);
  const QSignalBlocker blockMaximum(m_Ui->m_MaximumSpin);
  m_Ui->m_MinimumSpin->setValue(info.userRange[0]);
  m_Ui->m_MaximumSpin->setValue(info.userRange[1]);
}
