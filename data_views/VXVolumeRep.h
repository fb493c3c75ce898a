#pragma once

#include "data_views/VXRepresentation.h"

/** @brief Renders an image as a volume through per-array colour and opacity maps. */
class VXVolumeRep : public VXRepresentation
{
  Q_OBJECT

public:
  explicit VXVolumeRep(QObject* parent = nullptr);

  QString humanTypeName() const override;
  QString typeName() const override;
  QIcon getIcon() const override;
  Type getType() const override;

protected:
  VXRepresentationPimpl* createImplementation(VXAbstractViewWidget* view) override;
  bool isOwnImplementation(const VXRepresentationPimpl* implementation) const override;
};
