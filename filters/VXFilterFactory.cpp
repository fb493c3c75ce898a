#include "filters/VXFilterFactory.h"

#include "filters/VXFClip.h"
#include "filters/VXFSlice.h"
#include "filters/VXFThreshold.h"

namespace VXFilterFactory
{
QStringList TypeNames()
{
  return {QStringLiteral("VXFClip"), QStringLiteral("VXFSlice"), QStringLiteral("VXFThreshold")};
}

VXFilter* Create(const QString& typeName, QObject* parent)
{
  if (typeName == QStringLiteral("VXFClip"))
  {
    return new VXFClip(parent);
  }
  if (typeName == QStringLiteral("VXFSlice"))
  {
    return new VXFSlice(parent);
  }
  if (typeName == QStringLiteral("VXFThreshold"))
  {
    return new VXFThreshold(parent);
  }
  return nullptr;
}

QString HumanName(const QString& typeName)
{
  VXFilter* filter = Create(typeName);
  const QString name = filter != nullptr ? filter->humanTypeName() : typeName;
  delete filter;
  return name;
}
} // namespace VXFilterFactory
