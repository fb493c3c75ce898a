#include "data_bridge/VXTiffHeaderCheck.h"

#include <QFile>
#include <QSet>
#include <QtEndian>

#include <cmath>
#include <map>
#include <vector>

namespace
{
// Codecs reach high ratios only on flat areas; no image of any use packs tighter than this.
constexpr qint64 k_MaxCompressionRatio = 4096;
constexpr int k_MaxDirectories = 4096;

enum Tag : quint16
{
  k_ImageWidth = 256,
  k_ImageLength = 257,
  k_BitsPerSample = 258,
  k_Compression = 259,
  k_StripOffsets = 273,
  k_SamplesPerPixel = 277,
  k_StripByteCounts = 279,
  k_PlanarConfiguration = 284,
  k_TileWidth = 322,
  k_TileLength = 323,
  k_TileOffsets = 324,
  k_TileByteCounts = 325,
  k_ExtraSamples = 338,
};

// Reads the integers of the classic and the big TIFF layout in the file's byte order.
class TiffFile
{
public:
  explicit TiffFile(const QString& path)
      : m_File(path)
  {
  }

  bool open() { return m_File.open(QIODevice::ReadOnly); }
  qint64 size() const { return m_File.size(); }

  // Reads the header; false when the file is no TIFF.
  bool readHeader(quint64& firstDirectory)
  {
    const QByteArray head = m_File.read(16);
    if (head.size() < 8 || (!head.startsWith("II") && !head.startsWith("MM")))
    {
      return false;
    }
    m_Little = head.startsWith("II");
    const quint16 version = u16(head.constData() + 2);
    if (version == 42)
    {
      firstDirectory = u32(head.constData() + 4);
      return true;
    }
    if (version == 43 && head.size() == 16)
    {
      m_Big = true;
      firstDirectory = u64(head.constData() + 8);
      return true;
    }
    return false;
  }

  // The values of each tag of one directory, and the offset of the next; false when it lies outside.
  bool readDirectory(quint64 offset, std::map<quint16, std::vector<quint64>>& tags, quint64& next)
  {
    const int countSize = m_Big ? 8 : 2;
    const int entrySize = m_Big ? 20 : 12;
    if (!m_File.seek(qint64(offset)))
    {
      return false;
    }
    const QByteArray countBytes = m_File.read(countSize);
    if (countBytes.size() != countSize)
    {
      return false;
    }
    const quint64 count = m_Big ? u64(countBytes.constData()) : u16(countBytes.constData());
    if (count > quint64(size()) / entrySize)
    {
      return false;
    }
    const QByteArray entries = m_File.read(qint64(count) * entrySize + (m_Big ? 8 : 4));
    if (entries.size() != qint64(count) * entrySize + (m_Big ? 8 : 4))
    {
      return false;
    }
    for (quint64 i = 0; i < count; ++i)
    {
      const char* entry = entries.constData() + i * entrySize;
      std::vector<quint64> values;
      if (!readValues(entry, values))
      {
        return false;
      }
      tags[u16(entry)] = std::move(values);
    }
    const char* tail = entries.constData() + count * entrySize;
    next = m_Big ? u64(tail) : u32(tail);
    return true;
  }

private:
  // Only the integer types the layout tags use: BYTE, SHORT, LONG, LONG8.
  bool readValues(const char* entry, std::vector<quint64>& values)
  {
    const quint16 type = u16(entry + 2);
    const quint64 count = m_Big ? u64(entry + 4) : u32(entry + 4);
    const int width = type == 1 ? 1 : type == 3 ? 2 : type == 4 ? 4 : type == 16 ? 8 : 0;
    if (width == 0)
    {
      return true; // a tag of another kind: nothing here needs its value
    }
    if (count > quint64(size()) / quint64(width))
    {
      return false;
    }
    const int inlineSize = m_Big ? 8 : 4;
    const char* valueField = entry + (m_Big ? 12 : 8);
    QByteArray bytes;
    if (count * width <= quint64(inlineSize))
    {
      bytes = QByteArray(valueField, int(count * width));
    }
    else
    {
      const quint64 offset = m_Big ? u64(valueField) : u32(valueField);
      const qint64 here = m_File.pos();
      if (!m_File.seek(qint64(offset)))
      {
        return false;
      }
      bytes = m_File.read(qint64(count * width));
      m_File.seek(here);
      if (quint64(bytes.size()) != count * width)
      {
        return false;
      }
    }
    values.reserve(count);
    for (quint64 i = 0; i < count; ++i)
    {
      const char* value = bytes.constData() + i * width;
      values.push_back(width == 1   ? quint8(*value)
                       : width == 2 ? u16(value)
                       : width == 4 ? u32(value)
                                    : u64(value));
    }
    return true;
  }

  quint16 u16(const char* p) const
  {
    return m_Little ? qFromLittleEndian<quint16>(p) : qFromBigEndian<quint16>(p);
  }
  quint32 u32(const char* p) const
  {
    return m_Little ? qFromLittleEndian<quint32>(p) : qFromBigEndian<quint32>(p);
  }
  quint64 u64(const char* p) const
  {
    return m_Little ? qFromLittleEndian<quint64>(p) : qFromBigEndian<quint64>(p);
  }

  QFile m_File;
  bool m_Little = true;
  bool m_Big = false;
};

quint64 First(const std::map<quint16, std::vector<quint64>>& tags, quint16 tag, quint64 fallback)
{
  const auto found = tags.find(tag);
  return found == tags.end() || found->second.empty() ? fallback : found->second.front();
}

// Why the directory's image data cannot be where the header says, or an empty text.
QString DamageProblem(const std::map<quint16, std::vector<quint64>>& tags, qint64 fileSize)
{
  const quint64 width = First(tags, k_ImageWidth, 0);
  const quint64 height = First(tags, k_ImageLength, 0);
  const quint64 samples = First(tags, k_SamplesPerPixel, 1);
  const quint64 bits = First(tags, k_BitsPerSample, 1);
  const bool tiled = tags.count(k_TileWidth) != 0 || tags.count(k_TileOffsets) != 0;
  if (width == 0 || height == 0 || samples == 0 || bits == 0 || bits > 64 || samples > 64)
  {
    return QStringLiteral("its header declares no valid image size or sample format.");
  }
  const auto& offsets = tags.count(tiled ? k_TileOffsets : k_StripOffsets) != 0
                            ? tags.at(tiled ? k_TileOffsets : k_StripOffsets)
                            : std::vector<quint64>();
  if (offsets.empty())
  {
    return QStringLiteral("its header says nowhere where the image data is.");
  }
  const quint16 countsTag = tiled ? k_TileByteCounts : k_StripByteCounts;
  quint64 held = 0;
  if (tags.count(countsTag) != 0)
  {
    const auto& counts = tags.at(countsTag);
    for (std::size_t i = 0; i < counts.size() && i < offsets.size(); ++i)
    {
      if (offsets[i] > quint64(fileSize) || counts[i] > quint64(fileSize) - offsets[i])
      {
        return QStringLiteral("its image data reaches past the end of the file; the file is truncated.");
      }
      held += counts[i];
    }
  }
  else
  {
    held = quint64(fileSize);
  }
  // Bytes of the decoded image, in floating point as the header's numbers may be absurd.
  const long double rowBytes = std::floor(((long double)(width)*samples * bits + 7) / 8);
  const long double declared = rowBytes * height;
  const bool compressed = First(tags, k_Compression, 1) != 1;
  if (declared > (long double)(held) * (compressed ? k_MaxCompressionRatio : 1) + 1)
  {
    return QStringLiteral("its header declares %1 x %2 pixels, more than the file holds.")
        .arg(width)
        .arg(height);
  }
  return {};
}

// Why vtkTIFFReader would read a sound directory wrongly, or an empty text. decodable tells whether
// Qt's decoder reads that layout right instead.
QString LayoutProblem(const std::map<quint16, std::vector<quint64>>& tags, bool& decodable)
{
  const quint64 samples = First(tags, k_SamplesPerPixel, 1);
  const quint64 bits = First(tags, k_BitsPerSample, 1);
  const bool tiled = tags.count(k_TileWidth) != 0 || tags.count(k_TileOffsets) != 0;
  decodable = bits == 8 || bits == 16;
  if (samples > 1 && First(tags, k_PlanarConfiguration, 1) == 2)
  {
    // Qt takes the planes of wide samples for one another.
    decodable = bits == 8;
    return QStringLiteral("it stores its %1 colour channels in separate planes, which cannot be read here.")
        .arg(samples);
  }
  if (samples > 1 && bits != 8)
  {
    return QStringLiteral("it has %1 channels of %2 bits; colour images can be read with 8 bits per channel "
                          "only.")
        .arg(samples)
        .arg(bits);
  }
  if (tags.count(k_ExtraSamples) != 0 || samples > 3)
  {
    decodable = decodable && samples <= 4;
    return QStringLiteral("it has an alpha or extra channel, which cannot be read here.");
  }
  if (tiled && bits != 8)
  {
    decodable = bits == 16 && samples == 1;
    return QStringLiteral("it is stored in tiles with %1 bits per sample; tiled images can be read with 8 "
                          "bits per sample only.")
        .arg(bits);
  }
  decodable = false;
  return {};
}
} // namespace

bool VXTiffHeaderCheck::IsReadable(const QString& path, QString* errorMessage, bool* otherDecoderReads)
{
  if (otherDecoderReads != nullptr)
  {
    *otherDecoderReads = false;
  }
  bool layoutOnly = true;
  QString layoutProblem;
  const auto fail = [&](const QString& why)
  {
    if (errorMessage != nullptr)
    {
      *errorMessage = QStringLiteral("The TIFF image '%1' cannot be read: %2").arg(path, why);
    }
    return false;
  };
  TiffFile file(path);
  if (!file.open())
  {
    return true;
  }
  quint64 offset = 0;
  if (!file.readHeader(offset))
  {
    return fail(QStringLiteral("it has no TIFF header."));
  }
  QSet<quint64> seen;
  while (offset != 0)
  {
    if (seen.contains(offset) || seen.size() >= k_MaxDirectories)
    {
      return fail(QStringLiteral("its image directories run in a loop."));
    }
    seen.insert(offset);
    std::map<quint16, std::vector<quint64>> tags;
    if (!file.readDirectory(offset, tags, offset))
    {
      return fail(
          QStringLiteral("an image directory lies outside the file; the file is damaged or truncated."));
    }
    const QString damage = DamageProblem(tags, file.size());
    if (!damage.isEmpty())
    {
      return fail(damage);
    }
    bool decodable = false;
    const QString layout = LayoutProblem(tags, decodable);
    if (!layout.isEmpty())
    {
      layoutOnly = layoutOnly && decodable;
      layoutProblem = layoutProblem.isEmpty() ? layout : layoutProblem;
    }
  }
  if (layoutProblem.isEmpty())
  {
    return true;
  }
  if (otherDecoderReads != nullptr)
  {
    *otherDecoderReads = layoutOnly;
  }
  return fail(layoutProblem);
}
