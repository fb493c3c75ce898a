#include "platform/QElidedLabel.h"

#include <QFontMetrics>

QElidedLabel::QElidedLabel(QWidget* parent)
    : QElidedLabel(QString(), parent)
{
}

QElidedLabel::QElidedLabel(const QString& text, QWidget* parent)
    : QLabel(parent)
{
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  setText(text);
}

QElidedLabel::~QElidedLabel() = default;

void QElidedLabel::setText(const QString& text)
{
  m_FullText = text;
  updateDisplayedText();
  updateGeometry();
}

QString QElidedLabel::text() const
{
  return m_FullText;
}

QString QElidedLabel::displayedText() const
{
  return QLabel::text();
}

void QElidedLabel::setElideMode(Qt::TextElideMode mode)
{
  m_ElideMode = mode;
  updateDisplayedText();
}

Qt::TextElideMode QElidedLabel::elideMode() const
{
  return m_ElideMode;
}

QSize QElidedLabel::minimumSizeHint() const
{
  const QFontMetrics metrics(font());
  return QSize(metrics.horizontalAdvance(QStringLiteral("...")), metrics.height());
}

QSize QElidedLabel::sizeHint() const
{
  const QFontMetrics metrics(font());
  const int margins = contentsMargins().left() + contentsMargins().right() + 2 * margin();
  return QSize(metrics.horizontalAdvance(m_FullText) + margins, QLabel::sizeHint().height());
}

void QElidedLabel::resizeEvent(QResizeEvent* event)
{
  QLabel::resizeEvent(event);
  updateDisplayedText();
}

void QElidedLabel::updateDisplayedText()
{
  const int width = contentsRect().width() - 2 * margin();
  const QString shown = QFontMetrics(font()).elidedText(m_FullText, m_ElideMode, qMax(0, width));
  QLabel::setText(shown);
}
