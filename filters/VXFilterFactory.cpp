#include "filters/VXFilterFactory.h"

#include "filters/VXFClip.h"
#include "filters/VXFImageResample.h"
#include "filters/VXFQuadricClustering.h"
#include "filters/VXFSlice.h"
#include "filters/VXFThreshold.h"

namespace VXFilterFactory
{
QStringList TypeNames()
{
  return {QStringLiteral("VXFClip"), QStringLiteral("VXFSlice"), QStringLiteral("VXFThreshold"),
          QStringLiteral("VXFImageResample"), QStringLiteral("VXFQuadricClustering")};
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
  if (typeName == QStringLiteral("VXFImageResample"))
  {
    return new VXFImageResample(parent);
  }
  if (typeName == QStringLiteral("VXFQuadricClustering"))
  {
    return new VXFQuadricClustering(parent);
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
