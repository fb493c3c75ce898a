#pragma once

#include <QWidget>

#include <memory>

namespace Ui
{
class VXBuildPlateAnnotationSourceWidget;
} // namespace Ui

/**
 * The settings form of one build plate instance: shape, size, spacings, placement, opacity and
 * colours. Only the inputs of the current shape are shown.
 */
class VXBuildPlateAnnotationSourceWidget : public QWidget
{
  Q_OBJECT

public:
  // The numbers are stored in state files: keep them.
  enum Shape
  {
    Square = 0,
    Circle = 1
  };

  explicit VXBuildPlateAnnotationSourceWidget(QWidget* parent = nullptr);
  ~VXBuildPlateAnnotationSourceWidget() override;

  Ui::VXBuildPlateAnnotationSourceWidget* ui() const { return m_Ui.get(); }
  /** Shows the dimensions and origin of a square, or the radius and centre of a circle. */
  void setShapeInputsVisibility(Shape shape);

private:
  std::unique_ptr<Ui::VXBuildPlateAnnotationSourceWidget> m_Ui;
};
