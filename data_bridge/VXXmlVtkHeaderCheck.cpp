#include "data_bridge/VXXmlVtkHeaderCheck.h"

#include "data_bridge/VXDeclaredSize.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QXmlStreamReader>

#include <array>
#include <cstring>
#include <optional>

namespace
{
using VXDeclaredSize::Describe;

// One array as the file declares it; a parallel summary's arrays are compared with its pieces'.
struct ArrayDeclaration
{
  QString type;
  qint64 components = 1;
};
using ArrayTable = QHash<QString, ArrayDeclaration>; // by "section/name"

struct Extent
{
  std::array<qint64, 6> bounds{};
  // Points along each axis.
  qint64 points(int axis) const { return bounds[2 * axis + 1] - bounds[2 * axis] + 1; }
};

class XmlHeadCheck
{
public:
  XmlHeadCheck(const QString& path, bool pieceOfSummary)
      : m_Path(path)
      , m_PieceOfSummary(pieceOfSummary)
  {
  }

  // False with m_Error set when a declared size cannot be right.
  bool run()
  {
    QFile file(m_Path);
    if (!file.open(QIODevice::ReadOnly) || file.size() == 0)
    {
      return true; // the reader names the problem
    }
    m_Size = file.size();
    const uchar* mapped = file.map(0, m_Size);
    if (mapped == nullptr)
    {
      return true;
    }
    m_Data = reinterpret_cast<const char*>(mapped);
    const bool ok = parse();
    file.unmap(const_cast<uchar*>(mapped));
    return ok;
  }

  const QString& error() const { return m_Error; }
  const ArrayTable& arrays() const { return m_Arrays; }
  const QList<QPair<QString, Extent>>& pieces() const { return m_PieceSources; }

private:
  bool fail(const QString& reason)
  {
    m_Error = reason;
    return false;
  }

  QString where() const
  {
    return m_CurrentArray.isEmpty() ? QString() : QStringLiteral("the array '%1' ").arg(m_CurrentArray);
  }

  bool findAppendedData(qint64* headLength)
  {
    static const char k_Tag[] = "<AppendedData";
    const char* found = static_cast<const char*>(memmem(m_Data, m_Size, k_Tag, sizeof(k_Tag) - 1));
    if (found == nullptr)
    {
      *headLength = m_Size;
      return true;
    }
    *headLength = found - m_Data;
    const char* end = static_cast<const char*>(memchr(found, '>', m_Size - *headLength));
    if (end == nullptr)
    {
      return true; // malformed: VTK's parser reports it
    }
    const QByteArray tag(found, int(end - found));
    m_AppendedBase64 = !tag.contains("encoding=\"raw\"");
    const char* underscore = static_cast<const char*>(memchr(end, '_', m_Size - (end - m_Data)));
    m_AppendedStart = underscore == nullptr ? m_Size : underscore + 1 - m_Data;
    return true;
  }

  bool parse()
  {
    qint64 headLength = 0;
    findAppendedData(&headLength);
    QXmlStreamReader xml(QByteArray::fromRawData(m_Data, int(std::min<qint64>(headLength, INT_MAX))));
    QString section;
    while (!xml.atEnd())
    {
      const QXmlStreamReader::TokenType token = xml.readNext();
      if (token == QXmlStreamReader::EndElement)
      {
        if (xml.name() == QLatin1String("DataArray") || xml.name() == QLatin1String("PDataArray"))
        {
          if (!finishArray())
          {
            return false;
          }
        }
        continue;
      }
      if (token == QXmlStreamReader::Characters && !m_CurrentArray.isEmpty())
      {
        m_Text += xml.text().size();
        if (m_TextStart.isNull() && !xml.isWhitespace())
        {
          m_TextStart = xml.text().toString().trimmed().left(64).toLatin1();
        }
        continue;
      }
      if (token != QXmlStreamReader::StartElement)
      {
        continue;
      }
      const auto name = xml.name();
      const QXmlStreamAttributes attributes = xml.attributes();
      bool ok = true;
      if (name == QLatin1String("VTKFile"))
      {
        ok = readFileAttributes(attributes);
      }
      else if (attributes.hasAttribute(QLatin1String("WholeExtent")))
      {
        ok = readExtent(attributes.value(QLatin1String("WholeExtent")).toString(),
                        QStringLiteral("whole extent"), &m_WholeExtent);
        m_HasWholeExtent = ok;
      }
      if (!ok)
      {
        return false;
      }
      if (name == QLatin1String("Piece"))
      {
        ok = readPiece(attributes);
        m_Coordinate = 0;
      }
      else if (name == QLatin1String("DataArray") || name == QLatin1String("PDataArray"))
      {
        ok = startArray(section, attributes);
      }
      else if (name != QLatin1String("Array") && name != QLatin1String("InformationKey") &&
               name != QLatin1String("Value"))
      {
        section = name.toString();
      }
      if (!ok)
      {
        return false;
      }
    }
    // Readers size their output by the whole extent: the pieces must fill it.
    if (m_HasWholeExtent && m_PieceCount > 0 && m_Covered != m_WholeExtent.bounds)
    {
      bool empty = false;
      for (int axis = 0; axis < 3; ++axis)
      {
        empty = empty || m_WholeExtent.points(axis) <= 0;
      }
      if (!empty)
      {
        return fail(
            QStringLiteral("its whole extent is larger than its pieces, which cover %1 %2 %3 %4 %5 %6")
                .arg(m_Covered[0])
                .arg(m_Covered[1])
                .arg(m_Covered[2])
                .arg(m_Covered[3])
                .arg(m_Covered[4])
                .arg(m_Covered[5]));
      }
    }
    // Malformed XML is VTK's to report; what was seen so far was fine.
    return true;
  }

  bool readFileAttributes(const QXmlStreamAttributes& attributes)
  {
    m_HeaderBytes = attributes.value(QLatin1String("header_type")) == QLatin1String("UInt64") ? 8 : 4;
    m_BigEndian = attributes.value(QLatin1String("byte_order")) == QLatin1String("BigEndian");
    const QString compressor = attributes.value(QLatin1String("compressor")).toString();
    m_Compressed = !compressor.isEmpty();
    m_MaxInflation = VXDeclaredSize::MaxInflation(compressor);
    return true;
  }

  bool readExtent(const QString& text, const QString& what, Extent* extent)
  {
    const QStringList values = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (values.size() != 6)
    {
      return fail(QStringLiteral("its %1 '%2' does not have six numbers").arg(what, text));
    }
    for (int i = 0; i < 6; ++i)
    {
      bool ok = false;
      extent->bounds[i] = values[i].toLongLong(&ok);
      if (!ok || extent->bounds[i] < -VXDeclaredSize::k_MaxIndex ||
          extent->bounds[i] > VXDeclaredSize::k_MaxIndex)
      {
        return fail(QStringLiteral("its %1 '%2' holds indices beyond %3")
                        .arg(what, text)
                        .arg(VXDeclaredSize::k_MaxIndex));
      }
    }
    for (int axis = 0; axis < 3; ++axis)
    {
      if (extent->points(axis) < 0)
      {
        return fail(QStringLiteral("its %1 '%2' ends before it begins").arg(what, text));
      }
    }
    return true;
  }

  bool readCount(const QXmlStreamAttributes& attributes, const char* name, qint64* count)
  {
    const QString text = attributes.value(QLatin1String(name)).toString();
    if (text.isEmpty())
    {
      return true;
    }
    bool ok = false;
    const qint64 value = text.toLongLong(&ok);
    if (!ok || value < 0)
    {
      return fail(QStringLiteral("it declares %1 %2").arg(text, Describe(name)));
    }
    *count += value;
    return true;
  }

  bool readPiece(const QXmlStreamAttributes& attributes)
  {
    m_Points = -1;
    m_Cells = -1;
    const QString extentText = attributes.value(QLatin1String("Extent")).toString();
    Extent extent;
    if (!extentText.isEmpty())
    {
      if (!readExtent(extentText, QStringLiteral("piece extent"), &extent))
      {
        return false;
      }
      if (m_HasWholeExtent)
      {
        for (int axis = 0; axis < 3; ++axis)
        {
          if (extent.points(axis) > 0 && (extent.bounds[2 * axis] < m_WholeExtent.bounds[2 * axis] ||
                                          extent.bounds[2 * axis + 1] > m_WholeExtent.bounds[2 * axis + 1]))
          {
            return fail(
                QStringLiteral("its piece extent '%1' reaches outside the whole extent").arg(extentText));
          }
        }
      }
      m_Extent = extent;
      for (int i = 0; i < 6; ++i)
      {
        m_Covered[i] = m_PieceCount == 0 ? extent.bounds[i]
                                         : (i % 2 == 0 ? std::min(m_Covered[i], extent.bounds[i])
                                                       : std::max(m_Covered[i], extent.bounds[i]));
      }
      ++m_PieceCount;
      m_Points = 1;
      m_Cells = 1;
      for (int axis = 0; axis < 3; ++axis)
      {
        m_Points = VXDeclaredSize::SaturatingProduct(m_Points, extent.points(axis));
        m_Cells = VXDeclaredSize::SaturatingProduct(m_Cells, std::max<qint64>(1, extent.points(axis) - 1));
      }
      if (m_Points == 0)
      {
        m_Cells = 0;
      }
    }
    else
    {
      qint64 points = 0;
      qint64 cells = 0;
      bool ok = readCount(attributes, "NumberOfPoints", &points);
      m_SectionCells.clear();
      for (const char* kind :
           {"NumberOfCells", "NumberOfVerts", "NumberOfLines", "NumberOfStrips", "NumberOfPolys"})
      {
        qint64 count = 0;
        ok = ok && readCount(attributes, kind, &count);
        cells += count;
        // "NumberOfPolys" counts the cells of the section "Polys", "NumberOfCells" those of "Cells".
        m_SectionCells.insert(QString::fromLatin1(kind + strlen("NumberOf")), count);
      }
      if (!ok)
      {
        return false;
      }
      m_Points = attributes.hasAttribute(QLatin1String("NumberOfPoints")) ? points : -1;
      m_Cells = cells;
    }
    const QString source = attributes.value(QLatin1String("Source")).toString();
    if (!source.isEmpty())
    {
      m_PieceSources.append({source, extent});
    }
    return true;
  }

  // Values the array must hold, from the piece it belongs to, or -1 when only its data tells.
  qint64 expectedTuples(const QString& section, const QXmlStreamAttributes& attributes)
  {
    if (section == QLatin1String("PointData") || section == QLatin1String("Points"))
    {
      return m_Points;
    }
    if (section == QLatin1String("CellData"))
    {
      return m_Cells;
    }
    if (section == QLatin1String("Coordinates") && m_Points >= 0 && m_Coordinate < 3)
    {
      return m_Extent.points(m_Coordinate++);
    }
    const QString name = attributes.value(QLatin1String("Name")).toString();
    if ((name == QLatin1String("offsets") || name == QLatin1String("types")) &&
        m_SectionCells.contains(section))
    {
      return m_SectionCells.value(section);
    }
    // Cells of a piece have at least one point id between them: a reader that finds none reads past
    // what it was given.
    if (name == QLatin1String("connectivity") && m_SectionCells.value(section, 0) > 0)
    {
      return 1;
    }
    return -1;
  }

  bool startArray(const QString& section, const QXmlStreamAttributes& attributes)
  {
    m_CurrentArray = attributes.value(QLatin1String("Name")).toString();
    if (m_CurrentArray.isEmpty())
    {
      m_CurrentArray = section;
    }
    m_Text = 0;
    m_TextStart.clear();
    const QString type = attributes.value(QLatin1String("type")).toString();
    m_ValueBytes = VXDeclaredSize::BytesOfXmlType(type);
    // Readers crash on strings where geometry or attributes need numbers; only field data holds text.
    if (m_ValueBytes == 0 && !section.endsWith(QLatin1String("FieldData")))
    {
      return fail(QStringLiteral("%1has the type '%2', where numbers are needed").arg(where(), type));
    }
    bool ok = true;
    const QString componentsText = attributes.value(QLatin1String("NumberOfComponents")).toString();
    m_Components = componentsText.isEmpty() ? 1 : componentsText.toLongLong(&ok);
    if (!ok || m_Components < 1 || m_Components > VXDeclaredSize::k_MaxIndex)
    {
      return fail(QStringLiteral("%1declares %2 components").arg(where(), componentsText));
    }
    m_Arrays.insert(section + QLatin1Char('/') + m_CurrentArray, {type, m_Components});
    m_Tuples = expectedTuples(section, attributes);
    const QString tuplesText = attributes.value(QLatin1String("NumberOfTuples")).toString();
    if (!tuplesText.isEmpty())
    {
      const qint64 tuples = tuplesText.toLongLong(&ok);
      if (!ok || tuples < 0)
      {
        return fail(QStringLiteral("%1declares %2 tuples").arg(where(), tuplesText));
      }
      m_Tuples = std::max(m_Tuples, tuples);
    }
    m_Format = attributes.value(QLatin1String("format")).toString();
    m_Offset = -1;
    if (m_Format == QLatin1String("appended"))
    {
      const QString offsetText = attributes.value(QLatin1String("offset")).toString();
      m_Offset = offsetText.toLongLong(&ok);
      if (!ok || m_Offset < 0)
      {
        return fail(QStringLiteral("%1has the offset '%2'").arg(where(), offsetText));
      }
    }
    return true;
  }

  bool finishArray()
  {
    const QString name = m_CurrentArray;
    m_CurrentArray.clear();
    const qint64 values = m_Tuples < 0 ? -1 : VXDeclaredSize::SaturatingProduct(m_Tuples, m_Components);
    // Without a known tuple count, data that is there must still hold one whole tuple.
    const qint64 needed =
        values < 0 || m_ValueBytes == 0 ? -1 : VXDeclaredSize::SaturatingProduct(values, m_ValueBytes);
    const QString label = QStringLiteral("the array '%1' ").arg(name);
    VXDeclaredSize::Stream stream;
    stream.bigEndian = m_BigEndian;
    stream.headerBytes = m_HeaderBytes;
    stream.compressed = m_Compressed;
    stream.maxInflation = m_MaxInflation;
    stream.tupleBytes = VXDeclaredSize::SaturatingProduct(m_Components, std::max<qint64>(1, m_ValueBytes));
    QString reason;
    if (m_Format == QLatin1String("appended"))
    {
      if (m_AppendedStart < 0 || m_AppendedStart + m_Offset >= m_Size)
      {
        return fail(
            label +
            QStringLiteral("starts at offset %1 of the appended data, past the end of the file (%2 bytes)")
                .arg(m_Offset)
                .arg(m_Size));
      }
      stream.data = m_Data + m_AppendedStart + m_Offset;
      stream.length = m_Size - m_AppendedStart - m_Offset;
      stream.base64 = m_AppendedBase64;
      if (!VXDeclaredSize::CheckStream(stream, needed, m_Tuples, m_Components, &reason))
      {
        return fail(label + reason);
      }
      return true;
    }
    if (m_Format == QLatin1String("ascii"))
    {
      // Each value takes at least one character and a separator.
      if (values > 0 && values > (m_Text + 1) / 2)
      {
        return fail(label + QStringLiteral("declares %1 but its text holds %2 characters")
                                .arg(VXDeclaredSize::DescribeValues(m_Tuples, m_Components))
                                .arg(m_Text));
      }
      return true;
    }
    if (m_Format == QLatin1String("binary") && m_Text > 0)
    {
      // Only the length matters here: inline base64 is checked against its own text.
      stream.base64 = true;
      stream.length = m_Text;
      stream.prefix = m_TextStart;
      if (!VXDeclaredSize::CheckStream(stream, needed, m_Tuples, m_Components, &reason))
      {
        return fail(label + reason);
      }
    }
    return true;
  }

  QString m_Path;
  bool m_PieceOfSummary = false;
  const char* m_Data = nullptr;
  qint64 m_Size = 0;
  qint64 m_AppendedStart = -1;
  bool m_AppendedBase64 = true;
  int m_HeaderBytes = 4;
  bool m_BigEndian = false;
  bool m_Compressed = false;
  qint64 m_MaxInflation = 1;
  Extent m_WholeExtent;
  bool m_HasWholeExtent = false;
  Extent m_Extent;
  std::array<qint64, 6> m_Covered{};
  int m_PieceCount = 0;
  int m_Coordinate = 0;
  qint64 m_Points = -1;
  qint64 m_Cells = -1;
  QString m_CurrentArray;
  qint64 m_Components = 1;
  qint64 m_Tuples = -1;
  qint64 m_ValueBytes = 0;
  QString m_Format;
  qint64 m_Offset = -1;
  qint64 m_Text = 0;
  QByteArray m_TextStart;
  QHash<QString, qint64> m_SectionCells;
  QString m_Error;
  ArrayTable m_Arrays;
  QList<QPair<QString, Extent>> m_PieceSources;
};

// Parallel files: each piece must hold the arrays the summary declares, with the same type and width,
// or VTK's parallel readers copy the piece's values into arrays of another size.
bool CheckPieces(const QString& summaryPath, const XmlHeadCheck& summary, QString* reason)
{
  const QDir directory = QFileInfo(summaryPath).absoluteDir();
  for (const auto& [source, extent] : summary.pieces())
  {
    const QString piecePath = directory.filePath(source);
    if (!QFileInfo::exists(piecePath))
    {
      continue; // the reader names the missing piece
    }
    XmlHeadCheck piece(piecePath, true);
    if (!piece.run())
    {
      *reason = QStringLiteral("its piece '%1' cannot be read: %2").arg(source, piece.error());
      return false;
    }
    for (auto it = summary.arrays().cbegin(); it != summary.arrays().cend(); ++it)
    {
      QString key = it.key();
      key.remove(0, 1); // PPointData -> PointData
      const auto found = piece.arrays().constFind(key);
      if (found == piece.arrays().cend())
      {
        continue;
      }
      if (found->type != it->type || found->components != it->components)
      {
        *reason = QStringLiteral(
                      "it declares the array '%1' as %2 of %3 components, but the piece '%4' holds %5 of %6")
                      .arg(key.section(QLatin1Char('/'), 1), it->type)
                      .arg(it->components)
                      .arg(source, found->type)
                      .arg(found->components);
        return false;
      }
    }
  }
  return true;
}
} // namespace

bool VXXmlVtkHeaderCheck::check(const QString& path, QString* errorMessage)
{
  XmlHeadCheck head(path, false);
  QString reason;
  bool ok = head.run();
  if (!ok)
  {
    reason = head.error();
  }
  else if (!head.pieces().isEmpty())
  {
    ok = CheckPieces(path, head, &reason);
  }
  if (!ok && errorMessage != nullptr)
  {
    *errorMessage = QStringLiteral("The file '%1' is damaged: %2.").arg(path, reason);
  }
  return ok;
}
