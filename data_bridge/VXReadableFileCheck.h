#pragma once

#include <QString>

// Tells before any VTK reader runs whether a path names a file that can be read at all. VTK's readers
// answer a missing or unreadable file with screens of errors and, through some of them, with an empty
// dataset; this gives one line that says what is wrong.
class VXReadableFileCheck
{
public:
  // True for an existing, readable, non-empty regular file; otherwise false and the reason.
  static bool IsReadable(const QString& path, QString* errorMessage);
};
