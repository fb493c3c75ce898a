#include "colour/VXCustomRangeDialog.h"

#include "ui_VXCustomRangeDialog.h"

#include <QDoubleValidator>
#include <QLocale>

VXCustomRangeDialog::VXCustomRangeDialog(QWidget* parent)
    : QDialog(parent)
    , m_Ui(std::make_unique<Ui::VXCustomRangeDialog>())
{
  m_Ui->setupUi(this);
  for (QLineEdit* edit :
       {static_cast<QLineEdit*>(m_Ui->m_MinimumEdit), static_cast<QLineEdit*>(m_Ui->m_MaximumEdit)})
  {
    auto* validator = new QDoubleValidator(edit);
    validator->setLocale(QLocale::c());
    edit->setValidator(validator);
    connect(edit, &QLineEdit::returnPressed, this, &VXCustomRangeDialog::applyTypedRange);
  }
  connect(m_Ui->m_RescaleButton, &QPushButton::clicked, this, &VXCustomRangeDialog::applyTypedRange);
  connect(m_Ui->m_ResetButton, &QPushButton::clicked, this, &VXCustomRangeDialog::needsRangeReset);
  connect(m_Ui->m_CloseButton, &QPushButton::clicked, this, &QDialog::accept);
  setRange(m_Range);
}

VXCustomRangeDialog::~VXCustomRangeDialog() = default;

void VXCustomRangeDialog::setRange(const std::array<double, 2>& range)
{
  m_Range = range;
  m_Ui->m_MinimumEdit->setText(QString::number(range[0], 'g', 10));
  m_Ui->m_MaximumEdit->setText(QString::number(range[1], 'g', 10));
  m_Ui->m_MessageLabel->clear();
}

void VXCustomRangeDialog::applyTypedRange()
{
  bool minOk = false;
  bool maxOk = false;
  const double min = QLocale::c().toDouble(m_Ui->m_MinimumEdit->text().trimmed(), &minOk);
  const double max = QLocale::c().toDouble(m_Ui->m_MaximumEdit->text().trimmed(), &maxOk);
  if (!minOk || !maxOk)
  {
    m_Ui->m_MessageLabel->setText(QStringLiteral("Both ends of the range must be numbers."));
    return;
  }
  if (!(min < max))
  {
    m_Ui->m_MessageLabel->setText(QStringLiteral("The minimum must be less than the maximum."));
    return;
  }
  m_Range = {min, max};
  m_Ui->m_MessageLabel->clear();
  Q_EMIT rescale(min, max);
}
