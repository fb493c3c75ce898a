#include "views/VXGridAxesWidget.h"

#include "ui_VXGridAxesWidget.h"

#include <QDoubleValidator>

#include <cmath>

VXGridAxesWidget::VXGridAxesWidget(QWidget* parent)
    : QDialog(parent)
    , m_Ui(std::make_unique<Ui::VXGridAxesWidget>())
{
  m_Ui->setupUi(this);
  for (QLineEdit* edit : {m_Ui->spacingX, m_Ui->spacingY, m_Ui->spacingZ})
  {
    auto* validator = new QDoubleValidator(edit);
    validator->setBottom(0.0);
    edit->setValidator(validator);
  }
  connect(m_Ui->applyButton, &QPushButton::clicked, this, &VXGridAxesWidget::onApplyButtonClicked);
  connect(m_Ui->okButton, &QPushButton::clicked, this, &VXGridAxesWidget::onOkButtonClicked);
  connect(m_Ui->resetButton, &QPushButton::clicked, this, &VXGridAxesWidget::onResetButtonClicked);
  connect(m_Ui->closeButton, &QPushButton::clicked, this, &VXGridAxesWidget::onCloseButtonClicked);
}

VXGridAxesWidget::~VXGridAxesWidget() = default;

void VXGridAxesWidget::setSpacing(const std::array<double, 3>& spacing)
{
  m_Spacing = spacing;
  QLineEdit* edits[3] = {m_Ui->spacingX, m_Ui->spacingY, m_Ui->spacingZ};
  for (int axis = 0; axis < 3; ++axis)
  {
    edits[axis]->setText(spacingText(axis));
    edits[axis]->setToolTip(m_Spacing[axis] == 0.0 && m_AutomaticSpacing[axis] > 0.0
                                ? QStringLiteral("Automatic spacing")
                                : QString());
  }
}

void VXGridAxesWidget::setAutomaticSpacing(const std::array<double, 3>& spacing)
{
  m_AutomaticSpacing = spacing;
}

QString VXGridAxesWidget::spacingText(int axis) const
{
  const double shown = m_Spacing[axis] == 0.0 ? m_AutomaticSpacing[axis] : m_Spacing[axis];
  return QString::number(shown, 'g', 12);
}

void VXGridAxesWidget::setShowGrid(bool show)
{
  m_ShowGrid = show;
  m_Ui->showGridCheckBox->setChecked(show);
}

void VXGridAxesWidget::readForm()
{
  const QLineEdit* edits[3] = {m_Ui->spacingX, m_Ui->spacingY, m_Ui->spacingZ};
  for (int axis = 0; axis < 3; ++axis)
  {
    if (m_Spacing[axis] == 0.0 && edits[axis]->text() == spacingText(axis))
    {
      // The automatic step shown and left untouched: the axis stays automatic.
      continue;
    }
    bool ok = false;
    const double value = edits[axis]->text().toDouble(&ok);
    // Text that is no positive number means "automatic", like 0.
    m_Spacing[axis] = ok && std::isfinite(value) && value > 0.0 ? value : 0.0;
  }
  m_ShowGrid = m_Ui->showGridCheckBox->isChecked();
}

void VXGridAxesWidget::onApplyButtonClicked()
{
  readForm();
  Q_EMIT apply();
}

void VXGridAxesWidget::onOkButtonClicked()
{
  readForm();
  done(1);
}

void VXGridAxesWidget::onResetButtonClicked()
{
  for (QLineEdit* edit : {m_Ui->spacingX, m_Ui->spacingY, m_Ui->spacingZ})
  {
    edit->setText(QStringLiteral("0"));
  }
  m_Spacing = {{0.0, 0.0, 0.0}};
  m_Ui->showGridCheckBox->setChecked(false);
}

void VXGridAxesWidget::onCloseButtonClicked()
{
  reject();
}
