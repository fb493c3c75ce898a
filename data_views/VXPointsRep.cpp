#include "data_views/VXPointsRep.h"

#include "data_views/VXPointsRepPimpl.h"
#include "platform/ZRStyle.h"

namespace
{
const bool s_Registered = (VXRepresentation::RegisterType(VXRepresentation::Points, [](QObject* parent)
                                                          { return new VXPointsRep(parent); }),
                           true);
} // namespace

VXPointsRep::VXPointsRep(QObject* parent)
    : VXOutlineRep(parent)
{
  Q_UNUSED(s_Registered)
  setBaseName(defaultName());
}

QString VXPointsRep::humanTypeName() const
{
  return QStringLiteral("Point Representation");
}

QString VXPointsRep::typeName() const
{
  return QStringLiteral("VXPointsRep");
}

QIcon VXPointsRep::getIcon() const
{
  return ZRStyle::generateThemeIconFromName(QStringLiteral("VertexGeometry"));
}

VXRepresentation::Type VXPointsRep::getType() const
{
  return Points;
}

VXRepresentationPimpl* VXPointsRep::createImplementation(VXAbstractViewWidget* view)
{
  return new VXPointsRepPimpl(this, view);
}

bool VXPointsRep::isOwnImplementation(const VXRepresentationPimpl* implementation) const
{
  return dynamic_cast<const VXPointsRepPimpl*>(implementation) != nullptr;
}
