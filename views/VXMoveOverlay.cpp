#include "views/VXMoveOverlay.h"

#include <QEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>

VXMoveOverlay::VXMoveOverlay(QWidget* parent)
    : QWidget(parent)
    , m_Background(new QWidget(this))
    , m_Hint(new QLabel(HintText(), this))
{
  m_Background->setObjectName(QStringLiteral("m_MoveChartOverlayBackground"));
  m_Background->setAttribute(Qt::WA_TransparentForMouseEvents);
  m_Hint->setObjectName(QStringLiteral("m_MoveChartOverlayHint"));
  m_Hint->setAlignment(Qt::AlignCenter);
  m_Hint->setWordWrap(true);
  m_Hint->setAttribute(Qt::WA_TransparentForMouseEvents);
  QFont font = m_Hint->font();
  font.setBold(true);
  font.setPointSizeF(font.pointSizeF() * 1.2);
  m_Hint->setFont(font);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_Hint);
  setCursor(Qt::PointingHandCursor);
  parent->installEventFilter(this);
  setGeometry(parent->rect());
  hide();
}

VXMoveOverlay::~VXMoveOverlay() = default;

QString VXMoveOverlay::HintText()
{
  return QStringLiteral("Click here to move the chart to this view or press Esc to cancel");
}

QString VXMoveOverlay::hintText() const
{
  return m_Hint->text();
}

bool VXMoveOverlay::eventFilter(QObject* watched, QEvent* event)
{
  if (watched == parentWidget() && event->type() == QEvent::Resize)
  {
    setGeometry(parentWidget()->rect());
    m_Background->setGeometry(rect());
  }
  return QWidget::eventFilter(watched, event);
}

void VXMoveOverlay::mouseReleaseEvent(QMouseEvent* event)
{
  if (event->button() == Qt::LeftButton)
  {
    Q_EMIT clicked();
  }
  QWidget::mouseReleaseEvent(event);
}

void VXMoveOverlay::paintEvent(QPaintEvent*)
{
  QPainter painter(this);
  QColor veil = palette().color(QPalette::Window);
  veil.setAlpha(200);
  painter.fillRect(rect(), veil);
  QPen pen(palette().color(QPalette::Highlight));
  pen.setWidth(3);
  pen.setStyle(Qt::DashLine);
  painter.setPen(pen);
  painter.drawRect(rect().adjusted(1, 1, -2, -2));
}
