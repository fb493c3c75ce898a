#include "platform/ZRColorButton.h"

#include <QColorDialog>
#include <QPainter>

ZRColorButton::ZRColorButton(QWidget* parent)
    : ZRColorButton(Qt::white, parent)
{
}

ZRColorButton::ZRColorButton(const QColor& color, QWidget* parent)
    : QPushButton(parent)
    , m_Color(color)
{
  connect(this, &QPushButton::clicked, this, &ZRColorButton::chooseColor);
}

ZRColorButton::~ZRColorButton() = default;

QColor ZRColorButton::getColor() const
{
  return m_Color;
}

void ZRColorButton::setColor(const QColor& color)
{
  if (!color.isValid())
  {
    return;
  }
  m_Color = color;
  setToolTip(color.name(m_ShowAlpha ? QColor::HexArgb : QColor::HexRgb));
  update();
}

void ZRColorButton::setShowAlphaChannel(bool show)
{
  m_ShowAlpha = show;
}

QSize ZRColorButton::sizeHint() const
{
  return QSize(48, 22);
}

void ZRColorButton::chooseColor()
{
  QColorDialog dialog(m_Color, this);
  dialog.setWindowTitle(QStringLiteral("Select Color"));
  QColorDialog::ColorDialogOptions options = QColorDialog::DontUseNativeDialog;
  if (m_ShowAlpha)
  {
    options |= QColorDialog::ShowAlphaChannel;
  }
  dialog.setOptions(options);
  if (dialog.exec() != QDialog::Accepted)
  {
    return;
  }
  const QColor chosen = dialog.selectedColor();
  if (!chosen.isValid() || chosen == m_Color)
  {
    return;
  }
  setColor(chosen);
  Q_EMIT colorChanged(chosen);
}

void ZRColorButton::paintEvent(QPaintEvent* event)
{
  QPushButton::paintEvent(event);
  QPainter painter(this);
  const QRect swatch = rect().adjusted(4, 4, -4, -4);
  painter.setPen(isEnabled() ? palette().color(QPalette::WindowText) : palette().color(QPalette::Mid));
  painter.setBrush(isEnabled() ? m_Color : m_Color.lighter(150));
  painter.drawRect(swatch);
}
