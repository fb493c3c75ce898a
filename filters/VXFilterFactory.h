#pragma once

#include <QString>
#include <QStringList>

class QObject;
class VXFilter;

namespace VXFilterFactory
{
// The type names of the filters of this build, in menu order.
QStringList TypeNames();
// A new filter of the type name ("VXFClip", ...); null for a name of no filter here.
VXFilter* Create(const QString& typeName, QObject* parent = nullptr);
// The text a menu shows for the type name.
QString HumanName(const QString& typeName);
} // namespace VXFilterFactory
