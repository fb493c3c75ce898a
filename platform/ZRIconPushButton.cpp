#include "platform/ZRIconPushButton.h"

#include "platform/ZRStyle.h"

ZRIconPushButton::ZRIconPushButton(QWidget* parent)
    : ZRIconPushButton(QString(), parent)
{
}

ZRIconPushButton::ZRIconPushButton(const QString& text, QWidget* parent)
    : QPushButton(text, parent)
{
  setFlat(true);
  setCursor(Qt::PointingHandCursor);
  const int side = ZRStyle::getItemSize(5);
  setIconSize(QSize(side, side));
  connect(ZRStyle::Instance(), &ZRStyle::styleSheetLoaded, this, &ZRIconPushButton::reloadIcon);
}

ZRIconPushButton::~ZRIconPushButton() = default;

void ZRIconPushButton::setThemeIconName(const QString& iconName, bool checkableIcon)
{
  m_IconName = iconName;
  m_CheckableIcon = checkableIcon;
  reloadIcon();
}

QString ZRIconPushButton::themeIconName() const
{
  return m_IconName;
}

void ZRIconPushButton::reloadIcon()
{
  if (m_IconName.isEmpty())
  {
    return;
  }
  setIcon(m_CheckableIcon ? ZRStyle::generateCheckableThemeIconFromName(m_IconName)
                          : ZRStyle::generateThemeIconFromName(m_IconName));
}
