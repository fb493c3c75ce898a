#pragma once

#include <QPointer>
#include <QWidget>

#include <memory>

class QVBoxLayout;
class VXFSlice;
class VXPlaneWidget;
namespace Ui
{
class VXFSliceFilterWidget;
}

/** Settings of a slice filter: whether the plane shows, its spin boxes, and Apply. */
class VXFSliceFilterWidget : public QWidget
{
  Q_OBJECT

public:
  explicit VXFSliceFilterWidget(VXFSlice* filter, QWidget* parent = nullptr);
  ~VXFSliceFilterWidget() override;

  QVBoxLayout* representationTypeLayout() const;
  VXPlaneWidget* planeWidget() const { return m_PlaneWidget; }

private:
  void updateShowTool(bool show);

  std::unique_ptr<Ui::VXFSliceFilterWidget> m_Ui;
  QPointer<VXFSlice> m_Filter;
  VXPlaneWidget* m_PlaneWidget = nullptr;
};
