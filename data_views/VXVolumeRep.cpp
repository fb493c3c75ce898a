#include "data_views/VXVolumeRep.h"

#include "data_views/VXVolumeRepPimpl.h"
#include "platform/ZRStyle.h"

namespace
{
const bool s_Registered = (VXRepresentation::RegisterType(VXRepresentation::Volume, [](QObject* parent)
                                                          { return new VXVolumeRep(parent); }),
                           true);
} // namespace

VXVolumeRep::VXVolumeRep(QObject* parent)
    : VXRepresentation(parent)
{
  Q_UNUSED(s_Registered)
  setBaseName(defaultName());
}

QString VXVolumeRep::humanTypeName() const
{
  return QStringLiteral("Volume Representation");
}

QString VXVolumeRep::typeName() const
{
  return QStringLiteral("VXVolumeRep");
}

QIcon VXVolumeRep::getIcon() const
{
  return ZRStyle::generateThemeIconFromName(QStringLiteral("VolumeView"));
}

VXRepresentation::Type VXVolumeRep::getType() const
{
  return Volume;
}

VXRepresentationPimpl* VXVolumeRep::createImplementation(VXAbstractViewWidget* view)
{
  return new VXVolumeRepPimpl(this, view);
}

bool VXVolumeRep::isOwnImplementation(const VXRepresentationPimpl* implementation) const
{
  return dynamic_cast<const VXVolumeRepPimpl*>(implementation) != nullptr;
}
