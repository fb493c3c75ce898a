#pragma once

#include "platform/ZRPlatformExport.h"

#include <QWidget>

class ZRHeaderLabel;
class ZRIconPushButton;

/**
 * @brief The title row of a collapsible section: an expand/collapse button and a header label.
 * The button's state is the expanded state; each click is reported with showHideButtonClicked().
 */
class ZR_PLATFORM_EXPORT ZRSectionHeader : public QWidget
{
  Q_OBJECT

public:
  explicit ZRSectionHeader(const QString& title = QString(), QWidget* parent = nullptr);
  ~ZRSectionHeader() override;

  QString text() const;
  void setText(const QString& title);

  bool isExpanded() const;
  /** @brief Sets the state without emitting showHideButtonClicked(). */
  void setExpanded(bool expanded);

  ZRIconPushButton* showHideButton() const;

Q_SIGNALS:
  void showHideButtonClicked(bool expanded);

private:
  ZRIconPushButton* m_ShowHideButton = nullptr;
  ZRHeaderLabel* m_Label = nullptr;
};
