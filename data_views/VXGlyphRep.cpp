#include "data_views/VXGlyphRep.h"

#include "data_views/VXGlyphRepPimpl.h"
#include "platform/ZRStyle.h"

namespace
{
const bool s_Registered = (VXRepresentation::RegisterType(VXRepresentation::Glyph, [](QObject* parent)
                                                          { return new VXGlyphRep(parent); }),
                           true);
} // namespace

VXGlyphRep::VXGlyphRep(QObject* parent)
    : VXRepresentation(parent)
{
  Q_UNUSED(s_Registered)
  setBaseName(defaultName());
}

QString VXGlyphRep::humanTypeName() const
{
  return QStringLiteral("Glyph View");
}

QString VXGlyphRep::typeName() const
{
  return QStringLiteral("VXGlyphRep");
}

QIcon VXGlyphRep::getIcon() const
{
  return ZRStyle::generateThemeIconFromName(QStringLiteral("Glyph"));
}

VXRepresentation::Type VXGlyphRep::getType() const
{
  return Glyph;
}

VXRepresentationPimpl* VXGlyphRep::createImplementation(VXAbstractViewWidget* view)
{
  return new VXGlyphRepPimpl(this, view);
}

bool VXGlyphRep::isOwnImplementation(const VXRepresentationPimpl* implementation) const
{
  return dynamic_cast<const VXGlyphRepPimpl*>(implementation) != nullptr;
}
