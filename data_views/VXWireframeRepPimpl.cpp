#include "data_views/VXWireframeRepPimpl.h"

#include <vtkActor.h>
#include <vtkProperty.h>

VXWireframeRepPimpl::VXWireframeRepPimpl(VXRepresentation* owner, VXAbstractViewWidget* view)
    : VXPointsRepPimpl(owner, view)
{
}

void VXWireframeRepPimpl::applySettings()
{
  VXPointsRepPimpl::applySettings();
  m_Actor->GetProperty()->SetRepresentationToWireframe();
}

void VXWireframeRepPimpl::addStylingControls(QVBoxLayout* layout)
{
  addOpacityControls(layout);
  addEdgesControls(layout);
}
