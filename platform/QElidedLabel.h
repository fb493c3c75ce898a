#pragma once

#include "platform/ZRPlatformExport.h"

#include <QLabel>

/**
 * @brief A one-line label that shortens its text with an ellipsis when it does not fit;
 * text() keeps the whole text.
 */
class ZR_PLATFORM_EXPORT QElidedLabel : public QLabel
{
  Q_OBJECT

public:
  explicit QElidedLabel(QWidget* parent = nullptr);
  explicit QElidedLabel(const QString& text, QWidget* parent = nullptr);
  ~QElidedLabel() override;

  void setText(const QString& text);
  QString text() const;
  /** @brief What is shown at the current width. */
  QString displayedText() const;

  void setElideMode(Qt::TextElideMode mode);
  Qt::TextElideMode elideMode() const;

  QSize minimumSizeHint() const override;
  QSize sizeHint() const override;

protected:
  void resizeEvent(QResizeEvent* event) override;

private:
  void updateDisplayedText();

  QString m_FullText;
  Qt::TextElideMode m_ElideMode = Qt::ElideRight;
};
