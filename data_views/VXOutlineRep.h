#pragma once

#include "data_views/VXRepresentation.h"

/** @brief Draws the bounding box of its input in one colour. */
class VXOutlineRep : public VXRepresentation
{
  Q_OBJECT

public:
  explicit VXOutlineRep(QObject* parent = nullptr);

  QString humanTypeName() const override;
  QString typeName() const override;
  QIcon getIcon() const override;
  Type getType() const override;

protected:
  VXRepresentationPimpl* createImplementation(VXAbstractViewWidget* view) override;
  bool isOwnImplementation(const VXRepresentationPimpl* implementation) const override;
};
