#include "data_bridge/VXImageHeaderCheck.h"

#include <QFile>
#include <QImageReader>
#include <QtEndian>

#include <cstdlib>

namespace
{
// zlib's deflate cannot expand by more than about 1032 to 1.
constexpr long double k_MaxDeflateRatio = 1032;
// A JPEG codes at least one bit per 8 x 8 block and component; nothing of any use packs tighter.
constexpr long double k_MaxJpegRatio = 4096;

bool Fail(QString* errorMessage, const QString& kind, const QString& path, const QString& why)
{
  if (errorMessage != nullptr)
  {
    *errorMessage = QStringLiteral("The %1 image '%2' cannot be read: %3").arg(kind, path, why);
  }
  return false;
}

// Sum of the IDAT chunk lengths, or -1 when a chunk reaches past the end of the file.
qint64 PngDataBytes(QFile& file)
{
  qint64 total = 0;
  qint64 position = 8;
  while (position + 8 <= file.size())
  {
    file.seek(position);
    const QByteArray head = file.read(8);
    const qint64 length = qFromBigEndian<quint32>(head.constData());
    if (position + 12 + length > file.size())
    {
      return -1;
    }
    if (head.mid(4, 4) == "IDAT")
    {
      total += length;
    }
    if (head.mid(4, 4) == "IEND")
    {
      break;
    }
    position += 12 + length;
  }
  return total;
}
} // namespace

bool VXImageHeaderCheck::IsReadablePng(const QString& path, QString* errorMessage)
{
  const QString kind = QStringLiteral("PNG");
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
  {
    return true; // the reader names the problem
  }
  const QByteArray head = file.read(33);
  if (head.size() < 33 || !head.startsWith("\x89PNG\r\n\x1a\n") || head.mid(12, 4) != "IHDR")
  {
    return Fail(errorMessage, kind, path, QStringLiteral("it has no PNG header."));
  }
  const quint32 width = qFromBigEndian<quint32>(head.constData() + 16);
  const quint32 height = qFromBigEndian<quint32>(head.constData() + 20);
  const int bitDepth = quint8(head.at(24));
  const int colourType = quint8(head.at(25));
  const int channels = colourType == 0   ? 1
                       : colourType == 2 ? 3
                       : colourType == 3 ? 1
                       : colourType == 4 ? 2
                                         : 4;
  if (width == 0 || height == 0 || width > 0x7fffffffu || height > 0x7fffffffu || bitDepth == 0 ||
      bitDepth > 16)
  {
    return Fail(errorMessage, kind, path, QStringLiteral("its header declares no valid image size."));
  }
  const qint64 dataBytes = PngDataBytes(file);
  if (dataBytes < 0)
  {
    return Fail(errorMessage, kind, path, QStringLiteral("the file is truncated."));
  }
  const long double rowBytes = 1 + ((long double)(width)*channels * bitDepth + 7) / 8;
  if (rowBytes * height > dataBytes * k_MaxDeflateRatio + 1024)
  {
    return Fail(errorMessage, kind, path,
                QStringLiteral("its header declares %1 x %2 pixels, more than the file holds.")
                    .arg(width)
                    .arg(height));
  }
  // vtkPNGReader crashes on image data that libpng gives up on halfway; decoding once with Qt tells.
  QImageReader reader(path, "png");
  if (reader.read().isNull())
  {
    return Fail(errorMessage, kind, path, reader.errorString());
  }
  return true;
}

bool VXImageHeaderCheck::IsReadableJpeg(const QString& path, QString* errorMessage)
{
  const QString kind = QStringLiteral("JPEG");
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
  {
    return true;
  }
  if (!file.read(2).startsWith("\xff\xd8"))
  {
    return Fail(errorMessage, kind, path, QStringLiteral("it has no JPEG header."));
  }
  // Walk the marker segments up to the frame header, which holds the size.
  qint64 position = 2;
  while (file.seek(position))
  {
    const QByteArray segment = file.read(10);
    if (segment.size() < 4 || quint8(segment.at(0)) != 0xff)
    {
      break;
    }
    const int marker = quint8(segment.at(1));
    if (marker == 0xff)
    {
      ++position; // fill byte
      continue;
    }
    const int length = qFromBigEndian<quint16>(segment.constData() + 2);
    const bool frame = marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8 && marker != 0xcc;
    if (frame)
    {
      if (segment.size() < 10)
      {
        break;
      }
      const quint16 height = qFromBigEndian<quint16>(segment.constData() + 5);
      const quint16 width = qFromBigEndian<quint16>(segment.constData() + 7);
      const int components = quint8(segment.at(9));
      if (width == 0 || height == 0 || components == 0 || components > 4)
      {
        return Fail(errorMessage, kind, path, QStringLiteral("its header declares no valid image size."));
      }
      if ((long double)(width)*height * components > (long double)(file.size()) * k_MaxJpegRatio)
      {
        return Fail(errorMessage, kind, path,
                    QStringLiteral("its header declares %1 x %2 pixels, more than the file holds.")
                        .arg(width)
                        .arg(height));
      }
      return true;
    }
    if (marker == 0xda || marker == 0xd9 || length < 2)
    {
      break;
    }
    position += 2 + length;
  }
  return Fail(errorMessage, kind, path,
              QStringLiteral("it has no frame header; the file is damaged or truncated."));
}

bool VXImageHeaderCheck::IsReadableBmp(const QString& path, QString* errorMessage)
{
  const QString kind = QStringLiteral("BMP");
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
  {
    return true;
  }
  const QByteArray head = file.read(34);
  if (head.size() < 26 || !head.startsWith("BM"))
  {
    return Fail(errorMessage, kind, path, QStringLiteral("it has no bitmap header."));
  }
  const quint32 dataOffset = qFromLittleEndian<quint32>(head.constData() + 10);
  const quint32 infoSize = qFromLittleEndian<quint32>(head.constData() + 14);
  qint64 width = 0;
  qint64 height = 0;
  qint64 bitsPerPixel = 0;
  // vtkBMPReader knows the two oldest headers only, and crashes after its error on the others.
  if (infoSize == 12)
  {
    width = qFromLittleEndian<quint16>(head.constData() + 18);
    height = qFromLittleEndian<quint16>(head.constData() + 20);
    bitsPerPixel = qFromLittleEndian<quint16>(head.constData() + 24);
  }
  else if (infoSize == 40 && head.size() == 34)
  {
    width = qFromLittleEndian<qint32>(head.constData() + 18);
    height = std::abs(qint64(qFromLittleEndian<qint32>(head.constData() + 22)));
    bitsPerPixel = qFromLittleEndian<quint16>(head.constData() + 28);
    if (qFromLittleEndian<quint32>(head.constData() + 30) != 0)
    {
      return Fail(errorMessage, kind, path,
                  QStringLiteral("it is compressed or uses bit fields, which cannot be read here."));
    }
  }
  else
  {
    return Fail(errorMessage, kind, path,
                QStringLiteral("its header is of a kind (%1 bytes) that cannot be read here; save it as a "
                               "plain Windows bitmap.")
                    .arg(infoSize));
  }
  if (width <= 0 || height <= 0 || (bitsPerPixel != 8 && bitsPerPixel != 24 && bitsPerPixel != 32))
  {
    return Fail(errorMessage, kind, path, QStringLiteral("its header is damaged or of an unsupported kind."));
  }
  const long double rowBytes = (width * bitsPerPixel + 31) / 32 * 4;
  if (dataOffset + rowBytes * height > file.size())
  {
    return Fail(errorMessage, kind, path, QStringLiteral("the file is truncated."));
  }
  return true;
}
