#include "filters/VXFSliceFilterWidget.h"

#include "filters/VXFSlice.h"
#include "filters/VXPlaneWidget.h"

#include "ui_VXFSliceFilterWidget.h"

#include <QSignalBlocker>

VXFSliceFilterWidget::VXFSliceFilterWidget(VXFSlice* filter, QWidget* parent)
    : QWidget(parent)
    , m_Ui(std::make_unique<Ui::VXFSliceFilterWidget>())
    , m_Filter(filter)
{
  m_Ui->setupUi(this);
  m_PlaneWidget = new VXPlaneWidget(filter->plane(), this);
  m_Ui->m_ToolLayout->addWidget(m_PlaneWidget);
  updateShowTool(filter->showPlaneTool());
  connect(m_Ui->m_ShowPlaneCheckBox, &QCheckBox::toggled, filter, &VXFSlice::setShowPlaneTool);
  connect(m_Ui->m_ApplyButton, &QPushButton::clicked, filter, &VXFSlice::applyFilter);
  connect(filter, &VXFSlice::showPlaneToolChanged, this, &VXFSliceFilterWidget::updateShowTool);
}

VXFSliceFilterWidget::~VXFSliceFilterWidget() = default;

QVBoxLayout* VXFSliceFilterWidget::representationTypeLayout() const
{
  return m_Ui->m_RepTypeLayout;
}

void VXFSliceFilterWidget::updateShowTool(bool show)
{
  const QSignalBlocker block(m_Ui->m_ShowPlaneCheckBox);
  m_Ui->m_ShowPlaneCheckBox->setChecked(show);
  m_PlaneWidget->setEnabled(show);
}
