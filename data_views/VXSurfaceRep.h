#pragma once

#include "data_views/VXWireframeRep.h"

/** @brief Draws the outer faces of its input, coloured like the points view. */
class VXSurfaceRep : public VXWireframeRep
{
  Q_OBJECT

public:
  explicit VXSurfaceRep(QObject* parent = nullptr);

  QString humanTypeName() const override;
  QString typeName() const override;
  QIcon getIcon() const override;
  Type getType() const override;

protected:
  VXRepresentationPimpl* createImplementation(VXAbstractViewWidget* view) override;
  bool isOwnImplementation(const VXRepresentationPimpl* implementation) const override;
};
