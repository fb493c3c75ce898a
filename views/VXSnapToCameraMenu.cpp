#include "views/VXSnapToCameraMenu.h"

#include "ui_VXSnapToCameraMenu.h"

VXSnapToCameraMenu::VXSnapToCameraMenu(QWidget* parent)
    : QDialog(parent)
    , m_Ui(std::make_unique<Ui::VXSnapToCameraMenu>())
{
  m_Ui->setupUi(this);
  setWindowFlag(Qt::FramelessWindowHint);
  const std::pair<QPushButton*, void (VXSnapToCameraMenu::*)()> buttons[] = {
      {m_Ui->cameraZmBtn, &VXSnapToCameraMenu::camZMinus},
      {m_Ui->cameraXpBtn, &VXSnapToCameraMenu::camXPlus},
      {m_Ui->cameraYpBtn, &VXSnapToCameraMenu::camYPlus},
      {m_Ui->cameraYmBtn, &VXSnapToCameraMenu::camYMinus},
      {m_Ui->cameraZpBtn, &VXSnapToCameraMenu::camZPlus},
      {m_Ui->cameraXmBtn, &VXSnapToCameraMenu::camXMinus}};
  for (const auto& [button, signal] : buttons)
  {
    // A button that took the focus would hide the pop-up before its click lands.
    button->setFocusPolicy(Qt::NoFocus);
    connect(button, &QPushButton::clicked, this, signal);
    connect(button, &QPushButton::clicked, this, &QWidget::hide);
  }
}

VXSnapToCameraMenu::~VXSnapToCameraMenu() = default;

void VXSnapToCameraMenu::focusOutEvent(QFocusEvent* event)
{
  QDialog::focusOutEvent(event);
  hide();
}
