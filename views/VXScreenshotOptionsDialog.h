#pragma once

#include <QColor>
#include <QDialog>

#include <memory>

namespace Ui
{
class VXScreenshotOptionsDialog;
}

/**
 * @brief Asks for the background of a screenshot: a colour, or transparent.
 */
class VXScreenshotOptionsDialog : public QDialog
{
  Q_OBJECT

public:
  explicit VXScreenshotOptionsDialog(QWidget* parent = nullptr);
  ~VXScreenshotOptionsDialog() override;

  void setDefaultColor(const QColor& color);
  bool useTransparentBackground() const;
  QColor getBackgroundColor() const { return m_Color; }

private:
  void selectColor();
  void showColor();

  std::unique_ptr<Ui::VXScreenshotOptionsDialog> m_Ui;
  QColor m_Color;
};
