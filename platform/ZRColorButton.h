#pragma once

#include "platform/ZRPlatformExport.h"

#include <QColor>
#include <QPushButton>

/**
 * @brief A button that shows a colour swatch; a click opens a colour dialog, and a new colour
 * chosen there is shown and emitted with colorChanged().
 */
class ZR_PLATFORM_EXPORT ZRColorButton : public QPushButton
{
  Q_OBJECT

public:
  explicit ZRColorButton(QWidget* parent = nullptr);
  explicit ZRColorButton(const QColor& color, QWidget* parent = nullptr);
  ~ZRColorButton() override;

  QColor getColor() const;
  /** @brief Sets the colour without emitting colorChanged(). */
  void setColor(const QColor& color);

  /** @brief Whether the dialog offers an alpha channel (off by default). */
  void setShowAlphaChannel(bool show);

  QSize sizeHint() const override;

public Q_SLOTS:
  /** @brief Opens the colour dialog; an accepted, different colour is applied and emitted. */
  void chooseColor();

Q_SIGNALS:
  void colorChanged(const QColor& color);

protected:
  void paintEvent(QPaintEvent* event) override;

private:
  QColor m_Color = Qt::white;
  bool m_ShowAlpha = false;
};
