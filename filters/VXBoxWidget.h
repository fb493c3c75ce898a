#pragma once

#include <QPointer>
#include <QWidget>

#include <memory>

class VXBox;
namespace Ui
{
class VXBoxWidget;
}

/** Spin boxes for the translation, rotation and scale of a VXBox; they follow the box and move it. */
class VXBoxWidget : public QWidget
{
  Q_OBJECT

public:
  explicit VXBoxWidget(VXBox* box, QWidget* parent = nullptr);
  ~VXBoxWidget() override;

  void enableWidget();
  void disableWidget();

public Q_SLOTS:
  void updateSpinBoxes();

private:
  void spinBoxesChanged();

  std::unique_ptr<Ui::VXBoxWidget> m_Ui;
  QPointer<VXBox> m_Box;
};
