#include "views/VXScreenshotOptionsDialog.h"

#include "ui_VXScreenshotOptionsDialog.h"

#include <QColorDialog>

VXScreenshotOptionsDialog::VXScreenshotOptionsDialog(QWidget* parent)
    : QDialog(parent)
    , m_Ui(std::make_unique<Ui::VXScreenshotOptionsDialog>())
{
  m_Ui->setupUi(this);
  connect(m_Ui->buttonBox, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(m_Ui->buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(m_Ui->bgColorButton, &QPushButton::clicked, this, &VXScreenshotOptionsDialog::selectColor);
  // A transparent background has no colour to choose.
  connect(m_Ui->transparentBGCheckBox, &QCheckBox::toggled, m_Ui->bgColorButton, &QWidget::setDisabled);
}

VXScreenshotOptionsDialog::~VXScreenshotOptionsDialog() = default;

void VXScreenshotOptionsDialog::setDefaultColor(const QColor& color)
{
  m_Color = color;
  showColor();
}

bool VXScreenshotOptionsDialog::useTransparentBackground() const
{
  return m_Ui->transparentBGCheckBox->isChecked();
}

void VXScreenshotOptionsDialog::selectColor()
{
  const QColor color = QColorDialog::getColor(m_Color, this, QStringLiteral("Select Color"),
                                              QColorDialog::DontUseNativeDialog);
  if (color.isValid())
  {
    m_Color = color;
    showColor();
  }
}

void VXScreenshotOptionsDialog::showColor()
{
  m_Ui->bgColorButton->setStyleSheet(
      QStringLiteral("background-color: %1; min-width: 48px;").arg(m_Color.name()));
}
