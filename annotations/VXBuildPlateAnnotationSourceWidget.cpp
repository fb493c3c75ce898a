#include "annotations/VXBuildPlateAnnotationSourceWidget.h"

#include "ui_VXBuildPlateAnnotationSourceWidget.h"

VXBuildPlateAnnotationSourceWidget::VXBuildPlateAnnotationSourceWidget(QWidget* parent)
    : QWidget(parent)
    , m_Ui(std::make_unique<Ui::VXBuildPlateAnnotationSourceWidget>())
{
  m_Ui->setupUi(this);
  m_Ui->plateShape->addItem(QStringLiteral("Square"), Square);
  m_Ui->plateShape->addItem(QStringLiteral("Circle"), Circle);
  setShapeInputsVisibility(Square);
}

VXBuildPlateAnnotationSourceWidget::~VXBuildPlateAnnotationSourceWidget() = default;

void VXBuildPlateAnnotationSourceWidget::setShapeInputsVisibility(Shape shape)
{
  const bool square = shape == Square;
  for (QWidget* input : {static_cast<QWidget*>(m_Ui->dimensionsLabel),
                         static_cast<QWidget*>(m_Ui->xDimension), static_cast<QWidget*>(m_Ui->yDimension),
                         static_cast<QWidget*>(m_Ui->originLabel), static_cast<QWidget*>(m_Ui->xOrigin),
                         static_cast<QWidget*>(m_Ui->yOrigin), static_cast<QWidget*>(m_Ui->zOrigin)})
  {
    input->setVisible(square);
  }
  for (QWidget* input : {static_cast<QWidget*>(m_Ui->radiusLabel), static_cast<QWidget*>(m_Ui->radius),
                         static_cast<QWidget*>(m_Ui->centerLabel), static_cast<QWidget*>(m_Ui->xCenter),
                         static_cast<QWidget*>(m_Ui->yCenter), static_cast<QWidget*>(m_Ui->zCenter)})
  {
    input->setVisible(!square);
  }
}
