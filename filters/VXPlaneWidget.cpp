#include "filters/VXPlaneWidget.h"

#include "filters/VXPlane.h"

#include "ui_VXPlaneWidget.h"

#include <QSignalBlocker>

VXPlaneWidget::VXPlaneWidget(VXPlane* plane, QWidget* parent)
    : QWidget(parent)
    , m_Ui(std::make_unique<Ui::VXPlaneWidget>())
    , m_Plane(plane)
{
  m_Ui->setupUi(this);
  updateSpinBoxes();
  for (QDoubleSpinBox* spin :
       {m_Ui->m_OriginX, m_Ui->m_OriginY, m_Ui->m_OriginZ, m_Ui->m_NormalX, m_Ui->m_NormalY, m_Ui->m_NormalZ})
  {
    connect(spin, &QDoubleSpinBox::editingFinished, this, &VXPlaneWidget::spinBoxesChanged);
  }
  if (m_Plane)
  {
    connect(m_Plane.data(), &VXPlane::planeChanged, this, &VXPlaneWidget::updateSpinBoxes);
  }
}

VXPlaneWidget::~VXPlaneWidget() = default;

void VXPlaneWidget::enableWidget()
{
  setEnabled(true);
}

void VXPlaneWidget::disableWidget()
{
  setEnabled(false);
}

void VXPlaneWidget::updateSpinBoxes()
{
  if (!m_Plane)
  {
    return;
  }
  const std::array<double, 3> origin = m_Plane->getOrigin();
  const std::array<double, 3> normal = m_Plane->getNormal();
  QDoubleSpinBox* origins[3] = {m_Ui->m_OriginX, m_Ui->m_OriginY, m_Ui->m_OriginZ};
  QDoubleSpinBox* normals[3] = {m_Ui->m_NormalX, m_Ui->m_NormalY, m_Ui->m_NormalZ};
  for (int i = 0; i < 3; ++i)
  {
    const QSignalBlocker blockOrigin(origins[i]);
    const QSignalBlocker blockNormal(normals[i]);
    origins[i]->setValue(origin[i]);
    normals[i]->setValue(normal[i]);
  }
}

void VXPlaneWidget::spinBoxesChanged()
{
  if (!m_Plane)
  {
    return;
  }
  const std::array<double, 3> origin = {m_Ui->m_OriginX->value(), m_Ui->m_OriginY->value(),
                                        m_Ui->m_OriginZ->value()};
  const std::array<double, 3> normal = {m_Ui->m_NormalX->value(), m_Ui->m_NormalY->value(),
                                        m_Ui->m_NormalZ->value()};
  if (normal[0] == 0.0 && normal[1] == 0.0 && normal[2] == 0.0)
  {
    updateSpinBoxes(); // a zero normal is no plane
    return;
  }
  m_Plane->setValues(origin, normal);
  m_Plane->updateWidget();
}
