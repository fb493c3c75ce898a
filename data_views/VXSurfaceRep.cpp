#include "data_views/VXSurfaceRep.h"

#include "data_views/VXSurfaceRepPimpl.h"
#include "platform/ZRStyle.h"

namespace
{
const bool s_Registered = (VXRepresentation::RegisterType(VXRepresentation::Surface, [](QObject* parent)
                                                          { return new VXSurfaceRep(parent); }),
                           true);
} // namespace

VXSurfaceRep::VXSurfaceRep(QObject* parent)
    : VXWireframeRep(parent)
{
  Q_UNUSED(s_Registered)
  setBaseName(defaultName());
}

QString VXSurfaceRep::humanTypeName() const
{
  return QStringLiteral("Surface Representation");
}

QString VXSurfaceRep::typeName() const
{
  return QStringLiteral("VXSurfaceRep");
}

QIcon VXSurfaceRep::getIcon() const
{
  return ZRStyle::generateThemeIconFromName(QStringLiteral("TriangleGeometry"));
}

VXRepresentation::Type VXSurfaceRep::getType() const
{
  return Surface;
}

VXRepresentationPimpl* VXSurfaceRep::createImplementation(VXAbstractViewWidget* view)
{
  return new VXSurfaceRepPimpl(this, view);
}

bool VXSurfaceRep::isOwnImplementation(const VXRepresentationPimpl* implementation) const
{
  return dynamic_cast<const VXSurfaceRepPimpl*>(implementation) != nullptr;
}
