#include "data_views/VXWireframeRep.h"

#include "data_views/VXWireframeRepPimpl.h"
#include "platform/ZRStyle.h"

namespace
{
const bool s_Registered = (VXRepresentation::RegisterType(VXRepresentation::Wireframe, [](QObject* parent)
                                                          { return new VXWireframeRep(parent); }),
                           true);
} // namespace

VXWireframeRep::VXWireframeRep(QObject* parent)
    : VXPointsRep(parent)
{
  Q_UNUSED(s_Registered)
  setBaseName(defaultName());
}

QString VXWireframeRep::humanTypeName() const
{
  return QStringLiteral("Wireframe Representation");
}

QString VXWireframeRep::typeName() const
{
  return QStringLiteral("VXWireframeRep");
}

QIcon VXWireframeRep::getIcon() const
{
  return ZRStyle::generateThemeIconFromName(QStringLiteral("EdgeGeometry"));
}

VXRepresentation::Type VXWireframeRep::getType() const
{
  return Wireframe;
}

VXRepresentationPimpl* VXWireframeRep::createImplementation(VXAbstractViewWidget* view)
{
  return new VXWireframeRepPimpl(this, view);
}

bool VXWireframeRep::isOwnImplementation(const VXRepresentationPimpl* implementation) const
{
  return dynamic_cast<const VXWireframeRepPimpl*>(implementation) != nullptr;
}
