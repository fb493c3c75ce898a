#pragma once

#include <QPointer>
#include <QWidget>

#include <array>
#include <memory>

class VXPlane;
namespace Ui
{
class VXPlaneWidget;
}

/** Spin boxes for the origin and normal of a VXPlane; they follow the plane and move it. */
class VXPlaneWidget : public QWidget
{
  Q_OBJECT

public:
  explicit VXPlaneWidget(VXPlane* plane, QWidget* parent = nullptr);
  ~VXPlaneWidget() override;

  void enableWidget();
  void disableWidget();

public Q_SLOTS:
  void updateSpinBoxes();

private:
  void spinBoxesChanged();

  std::unique_ptr<Ui::VXPlaneWidget> m_Ui;
  QPointer<VXPlane> m_Plane;
};
