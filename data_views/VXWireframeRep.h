#pragma once

#include "data_views/VXPointsRep.h"

/** @brief Draws the edges of the cells of its input, coloured like the points view. */
class VXWireframeRep : public VXPointsRep
{
  Q_OBJECT

public:
  explicit VXWireframeRep(QObject* parent = nullptr);

  QString humanTypeName() const override;
  QString typeName() const override;
  QIcon getIcon() const override;
  Type getType() const override;

protected:
  VXRepresentationPimpl* createImplementation(VXAbstractViewWidget* view) override;
  bool isOwnImplementation(const VXRepresentationPimpl* implementation) const override;
};
