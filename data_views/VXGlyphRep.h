#pragma once

#include "data_views/VXRepresentation.h"

/** @brief Draws a small shape at sample points of its input, turned and scaled by arrays. */
class VXGlyphRep : public VXRepresentation
{
  Q_OBJECT

public:
  explicit VXGlyphRep(QObject* parent = nullptr);

  QString humanTypeName() const override;
  QString typeName() const override;
  QIcon getIcon() const override;
  Type getType() const override;

protected:
  VXRepresentationPimpl* createImplementation(VXAbstractViewWidget* view) override;
  bool isOwnImplementation(const VXRepresentationPimpl* implementation) const override;
};
