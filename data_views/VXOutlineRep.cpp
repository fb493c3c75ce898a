#include "data_views/VXOutlineRep.h"

#include "data_views/VXOutlineRepPimpl.h"
#include "platform/ZRStyle.h"

namespace
{
const bool s_Registered = (VXRepresentation::RegisterType(VXRepresentation::Outline, [](QObject* parent)
                                                          { return new VXOutlineRep(parent); }),
                           true);
} // namespace

VXOutlineRep::VXOutlineRep(QObject* parent)
    : VXRepresentation(parent)
{
  Q_UNUSED(s_Registered)
  setBaseName(defaultName());
}

QString VXOutlineRep::humanTypeName() const
{
  return QStringLiteral("Outline Representation");
}

QString VXOutlineRep::typeName() const
{
  return QStringLiteral("VXOutlineRep");
}

QIcon VXOutlineRep::getIcon() const
{
  return ZRStyle::generateThemeIconFromName(QStringLiteral("Visualization"));
}

VXRepresentation::Type VXOutlineRep::getType() const
{
  return Outline;
}

VXRepresentationPimpl* VXOutlineRep::createImplementation(VXAbstractViewWidget* view)
{
  return new VXOutlineRepPimpl(this, view);
}

bool VXOutlineRep::isOwnImplementation(const VXRepresentationPimpl* implementation) const
{
  return dynamic_cast<const VXOutlineRepPimpl*>(implementation) != nullptr;
}
