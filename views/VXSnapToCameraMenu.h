#pragma once

#include <QDialog>

#include <memory>

namespace Ui
{
class VXSnapToCameraMenu;
}

/**
 * @brief Frameless pop-up with the six axis view directions. A click emits the direction and hides
 * the pop-up; so does losing the focus.
 */
class VXSnapToCameraMenu : public QDialog
{
  Q_OBJECT

public:
  explicit VXSnapToCameraMenu(QWidget* parent = nullptr);
  ~VXSnapToCameraMenu() override;

Q_SIGNALS:
  void camZMinus();
  void camXPlus();
  void camYPlus();
  void camYMinus();
  void camZPlus();
  void camXMinus();

protected:
  void focusOutEvent(QFocusEvent* event) override;

private:
  std::unique_ptr<Ui::VXSnapToCameraMenu> m_Ui;
};
