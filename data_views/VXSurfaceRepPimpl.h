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
  void updateSettingsControls() override;
  QString levelName() const override { return QStringLiteral("surface"); }
  using VXRepresentationPimpl::copySettings;
  using VXRepresentationPimpl::writeSettings;

  void setBackFaceCulling(bool culling);
  bool backFaceCulling() const { return m_BackFaceCulling; }

protected:
  // The wireframe's line controls, then "Show Edges" and "Back Face Culling".
  void addStylingControls(QVBoxLayout* layout) override;

private:
  bool m_BackFaceCulling = false;
  QPointer<ZRCheckBox> m_ShowEdgesCheckBox;
  QPointer<ZRCheckBox> m_BackFaceCullingCheckBox;
};
