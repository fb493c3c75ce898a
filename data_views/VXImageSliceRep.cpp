#include "data_views/VXImageSliceRep.h"

#include "data_views/VXImageSliceRepPimpl.h"
#include "platform/ZRStyle.h"

namespace
{
const bool s_Registered = (VXRepresentation::RegisterType(VXRepresentation::ImageSlice, [](QObject* parent)
                                                          { return new VXImageSliceRep(parent); }),
                           true);
} // namespace

VXImageSliceRep::VXImageSliceRep(QObject* parent)
    : VXRepresentation(parent)
{
  Q_UNUSED(s_Registered)
  qRegisterMetaType<ZRVtkModule::constants::SliceDirection>();
  setBaseName(defaultName());
}

QString VXImageSliceRep::humanTypeName() const
{
  return QStringLiteral("Image Slice Representation");
}

QString VXImageSliceRep::typeName() const
{
  return QStringLiteral("VXImageSliceRep");
}

QIcon VXImageSliceRep::getIcon() const
{
  return ZRStyle::generateThemeIconFromName(QStringLiteral("SliceView"));
}

VXRepresentation::Type VXImageSliceRep::getType() const
{
  return ImageSlice;
}

VXRepresentationPimpl* VXImageSliceRep::createImplementation(VXAbstractViewWidget* view)
{
  return new VXImageSliceRepPimpl(this, view);
}

bool VXImageSliceRep::isOwnImplementation(const VXRepresentationPimpl* implementation) const
{
  return qobject_cast<const VXImageSliceRepPimpl*>(implementation) != nullptr;
}
