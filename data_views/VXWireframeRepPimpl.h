#pragma once

#include "data_views/VXPointsRepPimpl.h"

/** @brief The wireframe view in one window: the points view's colouring, drawn as the edges of the cells. */
class VXWireframeRepPimpl : public VXPointsRepPimpl
{
  Q_OBJECT

public:
  VXWireframeRepPimpl(VXRepresentation* owner, VXAbstractViewWidget* view);

  void applySettings() override;
  QString levelName() const override { return QStringLiteral("wireframe"); }

protected:
  // Line size and tubes in place of the point controls.
  void addStylingControls(QVBoxLayout* layout) override;
};
