#pragma once

#include <QByteArray>
#include <QString>

// Legacy .vtk files of version 5.1 may name value types by their size, as meshio writes them
// ("vtktypeint32", "vtktypeuint8", "vtktypefloat64"); VTK 9.1's legacy reader knows only
// "vtktypeint64" and "vtktypeuint64" of these and refuses the rest. This gives the file's content
// with those names replaced by the classic ones of the same type ("int", "unsigned_char", "double").
class VXLegacyVtkTypeNames
{
public:
  // The renamed content, or an empty array when the file names no type the reader lacks (or is no
  // legacy file), so that it can be read from disk as it is.
  static QByteArray renamedContent(const QString& path);
};
