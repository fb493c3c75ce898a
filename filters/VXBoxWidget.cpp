#include "filters/VXBoxWidget.h"

#include "filters/VXBox.h"

#include "ui_VXBoxWidget.h"

#include <QSignalBlocker>

VXBoxWidget::VXBoxWidget(VXBox* box, QWidget* parent)
    : QWidget(parent)
    , m_Ui(std::make_unique<Ui::VXBoxWidget>())
    , m_Box(box)
{
  m_Ui->setupUi(this);
  updateSpinBoxes();
  for (QDoubleSpinBox* spin :
       {m_Ui->m_TranslateX, m_Ui->m_TranslateY, m_Ui->m_TranslateZ, m_Ui->m_RotateX, m_Ui->m_RotateY,
        m_Ui->m_RotateZ, m_Ui->m_ScaleX, m_Ui->m_ScaleY, m_Ui->m_ScaleZ})
  {
    connect(spin, &QDoubleSpinBox::editingFinished, this, &VXBoxWidget::spinBoxesChanged);
  }
  if (m_Box)
  {
    connect(m_Box.data(), &VXBox::transformChanged, this, &VXBoxWidget::updateSpinBoxes);
    connect(m_Box.data(), &VXBox::scaleChanged, this, &VXBoxWidget::updateSpinBoxes);
  }
}

VXBoxWidget::~VXBoxWidget() = default;

void VXBoxWidget::enableWidget()
{
  setEnabled(true);
}

void VXBoxWidget::disableWidget()
{
  setEnabled(false);
}

void VXBoxWidget::updateSpinBoxes()
{
  if (!m_Box)
  {
    return;
  }
  const std::array<double, 3> values[3] = {m_Box->getTranslation(), m_Box->getRotation(), m_Box->getScale()};
  QDoubleSpinBox* spins[3][3] = {{m_Ui->m_TranslateX, m_Ui->m_TranslateY, m_Ui->m_TranslateZ},
                                 {m_Ui->m_RotateX, m_Ui->m_RotateY, m_Ui->m_RotateZ},
                                 {m_Ui->m_ScaleX, m_Ui->m_ScaleY, m_Ui->m_ScaleZ}};
  for (int row = 0; row < 3; ++row)
  {
    for (int axis = 0; axis < 3; ++axis)
    {
      const QSignalBlocker block(spins[row][axis]);
      spins[row][axis]->setValue(values[row][axis]);
    }
  }
}

void VXBoxWidget::spinBoxesChanged()
{
  if (!m_Box)
  {
    return;
  }
  m_Box->setValues({m_Ui->m_TranslateX->value(), m_Ui->m_TranslateY->value(), m_Ui->m_TranslateZ->value()},
                   {m_Ui->m_RotateX->value(), m_Ui->m_RotateY->value(), m_Ui->m_RotateZ->value()},
                   {m_Ui->m_ScaleX->value(), m_Ui->m_ScaleY->value(), m_Ui->m_ScaleZ->value()});
}
