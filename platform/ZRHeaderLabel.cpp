#include "platform/ZRHeaderLabel.h"

#include "platform/ZRStyle.h"

ZRHeaderLabel::ZRHeaderLabel(QWidget* parent)
    : ZRHeaderLabel(QString(), parent)
{
}

ZRHeaderLabel::ZRHeaderLabel(const QString& text, QWidget* parent)
    : QLabel(text, parent)
{
  QFont headerFont = font();
  headerFont.setBold(true);
  headerFont.setPointSize(ZRStyle::getFontSize(4));
  setFont(headerFont);
}

ZRHeaderLabel::~ZRHeaderLabel() = default;
