#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

// Paths of the committed sample files (written by VTK's Python writers, a plain STL writer and PIL,
// see tests/data/make-fixtures.py; the TIFF layouts under images/tiff come from tifffile and PIL, see
// tests/data/make-tiff-fixtures.py) and helpers that spoil copies of them.
namespace DataBridgeTestFiles
{
inline QString Fixture(const QString& relativePath)
{
  return QStringLiteral(ZR_TEST_DATA_DIR "/") + relativePath;
}

inline QByteArray Contents(const QString& path)
{
  QFile file(path);
  file.open(QIODevice::ReadOnly);
  return file.readAll();
}

inline bool WriteContents(const QString& path, const QByteArray& bytes)
{
  QFile file(path);
  return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

// Keeps the first `fraction` of the file, as a copy cut off while downloading would.
inline bool WriteTruncatedCopy(const QString& source, const QString& target, double fraction)
{
  const QByteArray bytes = Contents(source);
  return !bytes.isEmpty() && WriteContents(target, bytes.left(static_cast<int>(bytes.size() * fraction)));
}

// Overwrites `count` bytes starting at `fraction` of the file with a repeated byte.
inline bool WriteOverwrittenCopy(const QString& source, const QString& target, double fraction, int count,
                                 char value = '\x7f')
{
  QByteArray bytes = Contents(source);
  const int start = static_cast<int>(bytes.size() * fraction);
  if (bytes.isEmpty() || start + count > bytes.size())
  {
    return false;
  }
  bytes.replace(start, count, QByteArray(count, value));
  return WriteContents(target, bytes);
}
} // namespace DataBridgeTestFiles
