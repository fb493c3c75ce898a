#pragma once

#include <QString>

// Looks at the header of a PNG, JPEG or BMP file before VTK's reader does. Those readers trust the
// sizes a header declares: they allocate the whole image first and read blindly after, so a damaged or
// hostile header asks for gigabytes or crashes the process. Every declared size is held against the
// bytes the file has; a file that cannot hold its image is refused with a message.
class VXImageHeaderCheck
{
public:
  // Each: true when the reader may go ahead; otherwise false and the reason in errorMessage.
  static bool IsReadablePng(const QString& path, QString* errorMessage);
  static bool IsReadableJpeg(const QString& path, QString* errorMessage);
  static bool IsReadableBmp(const QString& path, QString* errorMessage);
};
