#include "data_views/VXSurfaceRepPimpl.h"

#include "data_views/VXStateReading.h"
#include "data_views/ZRVtkLibDocumentation.h"
#include "data_views/ZRVtkModuleUtils.h"
#include "platform/ZRCheckBox.h"
#include "platform/ZRLineEdit.h"

#include <QSignalBlocker>
#include <QVBoxLayout>

#include <vtkActor.h>
#include <vtkProperty.h>

namespace
{
const char* const k_BackFaceCulling = "back_face_culling";
} // namespace

VXSurfaceRepPimpl::VXSurfaceRepPimpl(VXRepresentation* owner, VXAbstractViewWidget* view)
    : VXWireframeRepPimpl(owner, view)
{
  // A surface shows its faces; the mesh edges are asked for with "Show Edges".
  m_EdgeVisibility = false;
}

void VXSurfaceRepPimpl::applySettings()
{
  VXWireframeRepPimpl::applySettings();
  m_Actor->GetProperty()->SetRepresentationToSurface();
  m_Actor->GetProperty()->SetBackfaceCulling(m_BackFaceCulling);
}

void VXSurfaceRepPimpl::setBackFaceCulling(bool culling)
{
  m_BackFaceCulling = culling;
  m_Actor->GetProperty()->SetBackfaceCulling(culling);
  requestRender();
}

void VXSurfaceRepPimpl::copySettings(const VXRepresentationPimpl* other)
{
  if (const auto* surface = dynamic_cast<const VXSurfaceRepPimpl*>(other))
  {
    m_BackFaceCulling = surface->m_BackFaceCulling;
  }
  VXWireframeRepPimpl::copySettings(other);
}

void VXSurfaceRepPimpl::write(nlohmann::json& json) const
{
  VXWireframeRepPimpl::write(json);
  json[k_BackFaceCulling] = m_BackFaceCulling;
}

void VXSurfaceRepPimpl::read(const nlohmann::json& json)
{
  VXWireframeRepPimpl::read(json);
  if (json.is_object())
  {
    ZRVtkModule::state::readIfPresent(json, k_BackFaceCulling, m_BackFaceCulling);
  }
}

void VXSurfaceRepPimpl::writeSettings(QtZRSettings& settings) const
{
  VXWireframeRepPimpl::writeSettings(settings);
  settings.setValue(QString::fromLatin1(k_BackFaceCulling), m_BackFaceCulling);
}

void VXSurfaceRepPimpl::readSettings(QtZRSettings& settings)
{
  VXWireframeRepPimpl::readSettings(settings);
  ZRVtkModule::state::readSetting(settings, k_BackFaceCulling, m_BackFaceCulling);
}

void VXSurfaceRepPimpl::addStylingControls(QVBoxLayout* layout)
{
  VXWireframeRepPimpl::addStylingControls(layout);
  QWidget* parent = layout->parentWidget();
  m_ShowEdgesCheckBox =
      ZRVtkModule::utils::GenerateCheckBoxWidget(parent, layout, ZRVtkModule::constants::k_ShowEdges);
  connect(m_ShowEdgesCheckBox.data(), &QCheckBox::toggled, this,
          [this](bool visible)
          {
            setEdgeVisibility(visible);
            updateSettingsControls();
          });
  addHelpToolTip(m_ShowEdgesCheckBox, ZRVtkLib::Documentation::k_ShowEdges,
                 QStringLiteral("Draws the edges of the cells over the surface."));
  m_BackFaceCullingCheckBox =
      ZRVtkModule::utils::GenerateCheckBoxWidget(parent, layout, QStringLiteral("Back Face Culling"));
  connect(m_BackFaceCullingCheckBox.data(), &QCheckBox::toggled, this,
          &VXSurfaceRepPimpl::setBackFaceCulling);
  addHelpToolTip(m_BackFaceCullingCheckBox, ZRVtkLib::Documentation::k_BackFaceCulling,
                 QStringLiteral("Leaves out the faces that turn away from the camera."));
}

void VXSurfaceRepPimpl::updateSettingsControls()
{
  VXWireframeRepPimpl::updateSettingsControls();
  for (auto [box, checked] : {std::pair<ZRCheckBox*, bool>{m_ShowEdgesCheckBox, m_EdgeVisibility},
                              std::pair<ZRCheckBox*, bool>{m_BackFaceCullingCheckBox, m_BackFaceCulling}})
  {
    if (box != nullptr)
    {
      const QSignalBlocker blocker(box);
      box->setChecked(checked);
    }
  }
  // Line size and tubes apply to the edges, so they are offered only while edges are shown.
  if (m_LineSizeEdit)
  {
    m_LineSizeEdit->setEnabled(m_EdgeVisibility);
  }
  if (m_LinesAsTubesCheckBox)
  {
    m_LinesAsTubesCheckBox->setEnabled(m_EdgeVisibility);
  }
}
