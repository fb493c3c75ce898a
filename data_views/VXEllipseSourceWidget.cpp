#include "data_views/VXEllipseSourceWidget.h"

#include "data_views/VXGlyphRepPimpl.h"

#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QVBoxLayout>

namespace
{
QString vectorText(const std::array<double, 3>& value)
{
  return QStringLiteral("%1, %2, %3").arg(value[0]).arg(value[1]).arg(value[2]);
}
} // namespace

VXEllipseSourceWidget::VXEllipseSourceWidget(VXGlyphRepPimpl* glyphs, QWidget* parent)
    : QDialog(parent)
    , m_Glyphs(glyphs)
{
  setWindowTitle(QStringLiteral("Ellipse Source Widget"));
  auto* layout = new QVBoxLayout(this);
  auto* form = new QFormLayout();
  m_CenterEdit = new QLineEdit(this);
  m_NormalEdit = new QLineEdit(this);
  m_RadiusEdit = new QLineEdit(this);
  m_RatioBox = new QDoubleSpinBox(this);
  m_RatioBox->setDecimals(3);
  m_RatioBox->setRange(0.001, 1.0);
  m_RatioBox->setSingleStep(0.05);
  m_ResolutionBox = new QSpinBox(this);
  m_ResolutionBox->setRange(1, 1000);
  form->addRow(QStringLiteral("Center: "), m_CenterEdit);
  form->addRow(QStringLiteral("Normal: "), m_NormalEdit);
  form->addRow(QStringLiteral("Major Radius Vector: "), m_RadiusEdit);
  form->addRow(QStringLiteral("Ratio: "), m_RatioBox);
  form->addRow(QStringLiteral("Resolution: "), m_ResolutionBox);
  layout->addLayout(form);
  auto* buttons =
      new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Reset, this);
  connect(buttons->button(QDialogButtonBox::Ok), &QPushButton::clicked, this,
          &VXEllipseSourceWidget::onOkButtonClicked);
  connect(buttons->button(QDialogButtonBox::Cancel), &QPushButton::clicked, this,
          &VXEllipseSourceWidget::onCancelButtonClicked);
  connect(buttons->button(QDialogButtonBox::Reset), &QPushButton::clicked, this,
          &VXEllipseSourceWidget::onResetButtonClicked);
  layout->addWidget(buttons);
  syncWithSourceCache();
}

std::array<double, 3> VXEllipseSourceWidget::ParseVector(const QString& text)
{
  static const QRegularExpression k_Separators(QStringLiteral("[ ,;\t]"));
  const QStringList parts = text.split(k_Separators, Qt::SkipEmptyParts);
  std::array<double, 3> value = {0.0, 0.0, 0.0};
  for (int i = 0; i < 3 && i < parts.size(); ++i)
  {
    value[i] = parts[i].toDouble();
  }
  return value;
}

void VXEllipseSourceWidget::showValues(const std::array<double, 3>& center,
                                       const std::array<double, 3>& normal,
                                       const std::array<double, 3>& radius, double ratio, int resolution)
{
  m_CenterEdit->setText(vectorText(center));
  m_NormalEdit->setText(vectorText(normal));
  m_RadiusEdit->setText(vectorText(radius));
  m_RatioBox->setValue(ratio);
  m_ResolutionBox->setValue(resolution);
}

void VXEllipseSourceWidget::syncWithSourceCache()
{
  if (m_Glyphs)
  {
    showValues(m_Glyphs->ellipseCenter(), m_Glyphs->ellipseNormal(), m_Glyphs->ellipseMajorRadius(),
               m_Glyphs->ellipseRatio(), m_Glyphs->ellipseResolution());
  }
}

void VXEllipseSourceWidget::onOkButtonClicked()
{
  if (m_Glyphs)
  {
    m_Glyphs->setEllipseSource(ParseVector(m_CenterEdit->text()), ParseVector(m_NormalEdit->text()),
                               ParseVector(m_RadiusEdit->text()), m_RatioBox->value(),
                               m_ResolutionBox->value());
  }
  Q_EMIT apply();
  accept();
}

void VXEllipseSourceWidget::onCancelButtonClicked()
{
  reject();
}

void VXEllipseSourceWidget::onResetButtonClicked()
{
  showValues({0.0, 0.0, 0.0}, {0.0, 0.0, 1.0}, {1.0, 0.0, 0.0}, 1.0, 100);
}
