#pragma once

#include <QString>

// VTK's XML readers trust the sizes a file declares: an extent of 2^31 points, 2^31 components or a
// compressed block header that promises gigabytes make them allocate without bound, loop for minutes
// or read past their buffers. This check reads the XML head of a serial or parallel VTK XML file
// (not its data) and compares every size it declares with the bytes the file holds, before any VTK
// reader sees the file. For a parallel file it checks each piece too, and that the pieces hold the
// arrays the summary declares, of the same type and width.
class VXXmlVtkHeaderCheck
{
public:
  // True when nothing declared exceeds what the file holds; otherwise false, with the reason in
  // errorMessage. Problems a VTK reader reports by itself (malformed XML, a missing file) pass, so
  // that its own message names them.
  static bool check(const QString& path, QString* errorMessage);
};
