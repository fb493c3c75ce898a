#pragma once

#include "platform/ZRPlatformExport.h"

#include <QPushButton>

/**
 * @brief A flat push button that shows a themed icon and takes a new one when the theme changes.
 */
class ZR_PLATFORM_EXPORT ZRIconPushButton : public QPushButton
{
  Q_OBJECT

public:
  explicit ZRIconPushButton(QWidget* parent = nullptr);
  explicit ZRIconPushButton(const QString& text, QWidget* parent = nullptr);
  ~ZRIconPushButton() override;

  /** @brief Shows the themed icon of that name; a checkable icon has its own unchecked state. */
  void setThemeIconName(const QString& iconName, bool checkableIcon = false);
  QString themeIconName() const;

private:
  void reloadIcon();

  QString m_IconName;
  bool m_CheckableIcon = false;
};
