#pragma once

#include "data_views/VXRepresentation.h"

/** @brief Shows one plane of an image, cell by cell, as a picture. */
class VXImageSliceRep : public VXRepresentation
{
  Q_OBJECT

public:
  explicit VXImageSliceRep(QObject* parent = nullptr);

  QString humanTypeName() const override;
  QString typeName() const override;
  QIcon getIcon() const override;
  Type getType() const override;

protected:
  VXRepresentationPimpl* createImplementation(VXAbstractViewWidget* view) override;
  bool isOwnImplementation(const VXRepresentationPimpl* implementation) const override;
};
