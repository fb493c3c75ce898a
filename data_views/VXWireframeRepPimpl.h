#pragma once

#include "data_views/VXPointsRepPimpl.h"

/** @brief The wireframe view in one window: the points view's colouring, drawn as the edges of the cells. */
class VXWireframeRepPimpl : public VXPointsRepPimpl
{
  Q_OBJECT

public:
  VXWireframeRepPimpl(VXRepresentation* owner, VXAbstractViewWidget* view);

  void applySettings() override;
};
