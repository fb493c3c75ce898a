#include "data_views/VXSurfaceRepPimpl.h"

#include "data_views/VXStateReading.h"

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
