#pragma once

#include "data_views/VXWireframeRepPimpl.h"

/** @brief The surface view in one window: the cells' faces, with optional edges and back-face culling. */
class VXSurfaceRepPimpl : public VXWireframeRepPimpl
{
  Q_OBJECT

public:
  VXSurfaceRepPimpl(VXRepresentation* owner, VXAbstractViewWidget* view);

  void applySettings() override;
  void write(nlohmann::json& json) const override;
  void read(const nlohmann::json& json) override;
  void copySettings(const VXRepresentationPimpl* other) override;
  void writeSettings(QtZRSettings& settings) const override;
  void readSettings(QtZRSettings& settings) override;
  using VXRepresentationPimpl::copySettings;

  void setBackFaceCulling(bool culling);
  bool backFaceCulling() const { return m_BackFaceCulling; }

private:
  bool m_BackFaceCulling = false;
};
