#pragma once

#include "filters/VXFClip.h"

#include <QPointer>
#include <QWidget>

#include <memory>

class QVBoxLayout;
class VXBoxWidget;
class VXPlaneWidget;
namespace Ui
{
class VXFClipFilterWidget;
}

/** Settings of a clip filter: the clip type, inversion, the tool and its spin boxes, and Apply. */
class VXFClipFilterWidget : public QWidget
{
  Q_OBJECT

public:
  explicit VXFClipFilterWidget(VXFClip* filter, QWidget* parent = nullptr);
  ~VXFClipFilterWidget() override;

  QVBoxLayout* representationTypeLayout() const;
  VXPlaneWidget* planeWidget() const { return m_PlaneWidget; }
  VXBoxWidget* boxWidget() const { return m_BoxWidget; }

public Q_SLOTS:
  void updateClipType(VXFClip::ClipType type);
  void updateShowTool(bool show);

private:
  std::unique_ptr<Ui::VXFClipFilterWidget> m_Ui;
  QPointer<VXFClip> m_Filter;
  VXPlaneWidget* m_PlaneWidget = nullptr;
  VXBoxWidget* m_BoxWidget = nullptr;
};
