#pragma once

#include <QWidget>

class QLabel;

/**
 * @brief A veil over a view while an item (a spreadsheet, a chart) waits to be moved: it shows a hint
 * and reports a click, which picks this view as the target. It follows its parent's size.
 */
class VXMoveOverlay : public QWidget
{
  Q_OBJECT

public:
  explicit VXMoveOverlay(QWidget* parent);
  ~VXMoveOverlay() override;

  static QString HintText();
  QString hintText() const;

Q_SIGNALS:
  void clicked();

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

private:
  QWidget* m_Background = nullptr;
  QLabel* m_Hint = nullptr;
};
