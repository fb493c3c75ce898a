#pragma once

#include "data_views/VXOutlineRep.h"

/** @brief Draws the points of its input, coloured by an array or one colour. */
class VXPointsRep : public VXOutlineRep
{
  Q_OBJECT

public:
  explicit VXPointsRep(QObject* parent = nullptr);

  QString humanTypeName() const override;
  QString typeName() const override;
  QIcon getIcon() const override;
  Type getType() const override;

protected:
  VXRepresentationPimpl* createImplementation(VXAbstractViewWidget* view) override;
  bool isOwnImplementation(const VXRepresentationPimpl* implementation) const override;
};
