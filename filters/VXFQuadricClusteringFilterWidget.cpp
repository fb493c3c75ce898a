#include "filters/VXFQuadricClusteringFilterWidget.h"

#include "filters/VXFQuadricClustering.h"

#include "ui_VXFQuadricClusteringFilterWidget.h"

VXFQuadricClusteringFilterWidget::VXFQuadricClusteringFilterWidget(VXFQuadricClustering* filter,
                                                                   QWidget* parent)
    : QWidget(parent)
    , m_Ui(std::make_unique<Ui::VXFQuadricClusteringFilterWidget>())
    , m_Filter(filter)
{
  m_Ui->setupUi(this);
  const std::array<int, 3> dims = filter->numberOfDimensions();
  m_Ui->m_BinsX->setValue(dims[0]);
  m_Ui->m_BinsY->setValue(dims[1]);
  m_Ui->m_BinsZ->setValue(dims[2]);
  m_Ui->m_UseInputPoints->setChecked(filter->useInputPoints());
  m_Ui->m_UseFeatureEdges->setChecked(filter->useFeatureEdges());
  m_Ui->m_UseFeaturePoints->setChecked(filter->useFeaturePoints());
  m_Ui->m_UseInternalTriangles->setChecked(filter->useInternalTriangles());
  for (QSpinBox* spin : {m_Ui->m_BinsX, m_Ui->m_BinsY, m_Ui->m_BinsZ})
  {
    connect(spin, qOverload<int>(&QSpinBox::valueChanged), this,
            [this]()
            {
              if (m_Filter)
              {
                m_Filter->setNumberOfDimensions(
                    {m_Ui->m_BinsX->value(), m_Ui->m_BinsY->value(), m_Ui->m_BinsZ->value()});
              }
            });
  }
  connect(m_Ui->m_UseInputPoints, &QCheckBox::toggled, filter, &VXFQuadricClustering::setUseInputPoints);
  connect(m_Ui->m_UseFeatureEdges, &QCheckBox::toggled, filter, &VXFQuadricClustering::setUseFeatureEdges);
  connect(m_Ui->m_UseFeaturePoints, &QCheckBox::toggled, filter, &VXFQuadricClustering::setUseFeaturePoints);
  connect(m_Ui->m_UseInternalTriangles, &QCheckBox::toggled, filter,
          &VXFQuadricClustering::setUseInternalTriangles);
  connect(m_Ui->m_ApplyButton, &QPushButton::clicked, filter, &VXFQuadricClustering::applyFilter);
}

VXFQuadricClusteringFilterWidget::~VXFQuadricClusteringFilterWidget() = default;

QVBoxLayout* VXFQuadricClusteringFilterWidget::representationTypeLayout() const
{
  return m_Ui->m_RepTypeLayout;
}
