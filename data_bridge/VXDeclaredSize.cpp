#include "data_bridge/VXDeclaredSize.h"

#include <QHash>
#include <QtEndian>

#include <algorithm>
#include <limits>

namespace VXDeclaredSize
{
namespace
{
constexpr qint64 k_Max = std::numeric_limits<qint64>::max();

qint64 SaturatingSum(qint64 a, qint64 b)
{
  qint64 sum = 0;
  return __builtin_add_overflow(a, b, &sum) ? k_Max : sum;
}

// Characters of the base64 text of `bytes` bytes.
qint64 Base64Characters(qint64 bytes)
{
  return SaturatingProduct((bytes + 2) / 3, 4);
}

// The first `count` bytes of the stream's decoded content, fewer if it ends earlier.
QByteArray Decoded(const Stream& stream, qint64 characterOffset, qint64 count)
{
  if (!stream.base64)
  {
    if (stream.data == nullptr || characterOffset >= stream.length)
    {
      return {};
    }
    return QByteArray(stream.data + characterOffset, int(std::min(count, stream.length - characterOffset)));
  }
  const qint64 characters = std::min(Base64Characters(count), stream.length - characterOffset);
  if (characters <= 0)
  {
    return {};
  }
  QByteArray text = stream.data != nullptr ? QByteArray(stream.data + characterOffset, int(characters))
                                           : stream.prefix.mid(int(characterOffset), int(characters));
  return QByteArray::fromBase64(text).left(int(count));
}

quint64 Word(const QByteArray& bytes, int index, const Stream& stream)
{
  const uchar* at = reinterpret_cast<const uchar*>(bytes.constData()) + index * stream.headerBytes;
  if (stream.headerBytes == 8)
  {
    return stream.bigEndian ? qFromBigEndian<quint64>(at) : qFromLittleEndian<quint64>(at);
  }
  return stream.bigEndian ? qFromBigEndian<quint32>(at) : qFromLittleEndian<quint32>(at);
}

qint64 Clamped(quint64 value)
{
  return value > quint64(k_Max) ? k_Max : qint64(value);
}

// Bytes the stream can hold at most.
qint64 Capacity(const Stream& stream)
{
  return stream.base64 ? stream.length / 4 * 3 + 2 : stream.length;
}

QString Needs(qint64 neededBytes, qint64 tuples, qint64 components)
{
  return QStringLiteral("declares %1 (%2 bytes)").arg(DescribeValues(tuples, components)).arg(neededBytes);
}

bool CheckPlain(const Stream& stream, qint64 neededBytes, qint64 tuples, qint64 components, QString* reason)
{
  const QByteArray header = Decoded(stream, 0, stream.headerBytes);
  if (header.size() < stream.headerBytes)
  {
    *reason = QStringLiteral("its data ends before its size header");
    return false;
  }
  const qint64 count = Clamped(Word(header, 0, stream));
  const qint64 capacity = Capacity(stream) - stream.headerBytes;
  if (count > capacity)
  {
    *reason =
        QStringLiteral("announces %1 bytes of data but the file holds %2 after it").arg(count).arg(capacity);
    return false;
  }
  if (neededBytes > count)
  {
    *reason = QStringLiteral("%1 but its data holds %2 bytes")
                  .arg(Needs(neededBytes, tuples, components))
                  .arg(count);
    return false;
  }
  if (count > 0 && stream.tupleBytes > count)
  {
    *reason = QStringLiteral("has tuples of %1 bytes but its data holds %2 bytes")
                  .arg(stream.tupleBytes)
                  .arg(count);
    return false;
  }
  return true;
}

bool CheckCompressed(const Stream& stream, qint64 neededBytes, qint64 tuples, qint64 components,
                     QString* reason)
{
  const int word = stream.headerBytes;
  QByteArray header = Decoded(stream, 0, 3 * word);
  if (header.size() < 3 * word)
  {
    *reason = QStringLiteral("its data ends inside its compression header");
    return false;
  }
  const qint64 blocks = Clamped(Word(header, 0, stream));
  const qint64 blockSize = Clamped(Word(header, 1, stream));
  const qint64 lastSize = Clamped(Word(header, 2, stream));
  const qint64 capacity = Capacity(stream);
  const qint64 headerLength = SaturatingProduct(SaturatingSum(blocks, 3), word);
  if (headerLength > capacity)
  {
    *reason = QStringLiteral(
                  "announces %1 compressed blocks, whose sizes alone need %2 bytes, but the file holds %3")
                  .arg(blocks)
                  .arg(headerLength)
                  .arg(capacity);
    return false;
  }
  if (blocks > 0 && (blockSize == 0 || lastSize > blockSize))
  {
    *reason = QStringLiteral("announces compressed blocks of %1 bytes with a last one of %2")
                  .arg(blockSize)
                  .arg(lastSize);
    return false;
  }
  const qint64 uncompressed = blocks == 0 ? 0
                                          : SaturatingSum(SaturatingProduct(blocks - 1, blockSize),
                                                          lastSize == 0 ? blockSize : lastSize);
  // The block sizes follow the first three words; inline text only shows its beginning.
  qint64 compressed = -1;
  if (stream.data != nullptr || stream.prefix.size() >= Base64Characters(headerLength))
  {
    header = Decoded(stream, 0, headerLength);
    if (header.size() < headerLength)
    {
      *reason = QStringLiteral("its data ends inside its compression header");
      return false;
    }
    compressed = 0;
    for (int i = 0; i < blocks; ++i)
    {
      compressed = SaturatingSum(compressed, Clamped(Word(header, 3 + i, stream)));
    }
    const qint64 dataStart = stream.base64 ? Base64Characters(headerLength) : headerLength;
    const qint64 available =
        stream.base64 ? (stream.length - dataStart) / 4 * 3 + 2 : stream.length - dataStart;
    if (compressed > available)
    {
      *reason = QStringLiteral("announces %1 bytes of compressed data but the file holds %2 after its header")
                    .arg(compressed)
                    .arg(std::max<qint64>(0, available));
      return false;
    }
  }
  const qint64 bound =
      SaturatingSum(SaturatingProduct(compressed < 0 ? capacity : compressed, stream.maxInflation), 1 << 16);
  if (uncompressed > bound || std::max(blockSize, lastSize) > bound)
  {
    *reason =
        QStringLiteral(
            "announces %1 compressed blocks of %2 bytes, more than the %3 compressed bytes can expand to")
            .arg(blocks)
            .arg(blockSize)
            .arg(compressed < 0 ? capacity : compressed);
    return false;
  }
  if (neededBytes > uncompressed)
  {
    *reason = QStringLiteral("%1 but its compressed blocks expand to %2 bytes")
                  .arg(Needs(neededBytes, tuples, components))
                  .arg(uncompressed);
    return false;
  }
  if (uncompressed > 0 && stream.tupleBytes > uncompressed)
  {
    *reason = QStringLiteral("has tuples of %1 bytes but its compressed blocks expand to %2 bytes")
                  .arg(stream.tupleBytes)
                  .arg(uncompressed);
    return false;
  }
  return true;
}
} // namespace

qint64 SaturatingProduct(qint64 a, qint64 b)
{
  qint64 product = 0;
  return __builtin_mul_overflow(a, b, &product) ? k_Max : product;
}

qint64 BytesOfXmlType(const QString& type)
{
  static const QHash<QString, qint64> k_Bytes = {
      {QStringLiteral("Int8"), 1},   {QStringLiteral("UInt8"), 1},   {QStringLiteral("Char"), 1},
      {QStringLiteral("Int16"), 2},  {QStringLiteral("UInt16"), 2},  {QStringLiteral("Int32"), 4},
      {QStringLiteral("UInt32"), 4}, {QStringLiteral("Float32"), 4}, {QStringLiteral("Int64"), 8},
      {QStringLiteral("UInt64"), 8}, {QStringLiteral("Float64"), 8}, {QStringLiteral("IdType"), 8},
  };
  return k_Bytes.value(type, 0);
}

qint64 MaxInflation(const QString& compressor)
{
  // zlib expands at most about 1032 times, LZ4 about 255 times; LZMA can go further.
  if (compressor == QLatin1String("vtkZLibDataCompressor"))
  {
    return 1100;
  }
  if (compressor == QLatin1String("vtkLZ4DataCompressor"))
  {
    return 300;
  }
  return 10000;
}

QString Describe(const char* attribute)
{
  QString text = QString::fromLatin1(attribute);
  text.remove(QStringLiteral("NumberOf"));
  return text.toLower();
}

QString DescribeValues(qint64 tuples, qint64 components)
{
  if (tuples < 0)
  {
    return QStringLiteral("values of %1 components").arg(components);
  }
  return QStringLiteral("%1 tuples of %2 component%3")
      .arg(tuples)
      .arg(components)
      .arg(components == 1 ? QString() : QStringLiteral("s"));
}

bool CheckStream(const Stream& stream, qint64 neededBytes, qint64 tuples, qint64 components, QString* reason)
{
  return stream.compressed ? CheckCompressed(stream, neededBytes, tuples, components, reason)
                           : CheckPlain(stream, neededBytes, tuples, components, reason);
}
} // namespace VXDeclaredSize
