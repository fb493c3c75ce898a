#include "platform/ZRLineEdit.h"

#include "platform/ZRStyle.h"

#include <QVariant>

ZRLineEdit::~ZRLineEdit() = default;

void ZRLineEdit::setMarkedEdited(bool edited)
{
  ZRStyle::ChangeBorderStyle(this, edited);
}

bool ZRLineEdit::isMarkedEdited() const
{
  return property("ZREdited").toBool();
}
