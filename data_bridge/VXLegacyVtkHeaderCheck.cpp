#include "data_bridge/VXLegacyVtkHeaderCheck.h"

#include "data_bridge/VXDeclaredSize.h"

#include <QFile>
#include <QHash>
#include <QList>

#include <QtEndian>

#include <array>
#include <cctype>
#include <cstring>

namespace
{
using VXDeclaredSize::SaturatingProduct;

// Bytes of one binary value of a legacy type name; 0 when unknown or of varying size (strings).
// "long" counts as 4 bytes: the smallest a writer may have used.
qint64 BytesOfLegacyType(QByteArray type)
{
  static const QHash<QByteArray, qint64> k_Bytes = {
      {"char", 1},           {"signed_char", 1},    {"unsigned_char", 1},
      {"short", 2},          {"unsigned_short", 2}, {"int", 4},
      {"unsigned_int", 4},   {"long", 4},           {"unsigned_long", 4},
      {"vtkidtype", 4},      {"float", 4},          {"double", 8},
      {"vtktypeint8", 1},    {"vtktypeuint8", 1},   {"vtktypeint16", 2},
      {"vtktypeuint16", 2},  {"vtktypeint32", 4},   {"vtktypeuint32", 4},
      {"vtktypeint64", 8},   {"vtktypeuint64", 8},  {"vtktypefloat32", 4},
      {"vtktypefloat64", 8},
  };
  return k_Bytes.value(type.toLower(), 0);
}

class LegacyWalk
{
public:
  bool run(const char* data, qint64 size)
  {
    m_Data = data;
    m_Size = size;
    const QByteArray magic = line();
    if (!magic.startsWith("# vtk DataFile Version"))
    {
      return true; // not a legacy file: the reader says so
    }
    if (!readVersion(magic))
    {
      return false;
    }
    line(); // title
    m_Binary = line().trimmed().toUpper() == "BINARY";
    while (m_Position < m_Size)
    {
      const QByteArray text = line().trimmed();
      if (!text.isEmpty() && !keyword(text.simplified().split(' ')))
      {
        return false;
      }
    }
    return true;
  }

  const QString& error() const { return m_Error; }

private:
  QByteArray line()
  {
    if (m_Position >= m_Size)
    {
      return {};
    }
    const char* start = m_Data + m_Position;
    const char* end = static_cast<const char*>(memchr(start, '\n', m_Size - m_Position));
    const qint64 length = end == nullptr ? m_Size - m_Position : end - start;
    m_Position += length + 1;
    // Keyword lines are short; a long "line" is data.
    return length > 512 ? QByteArray() : QByteArray(start, int(length));
  }

  bool fail(const QString& reason)
  {
    m_Error = reason;
    return false;
  }

  bool readVersion(const QByteArray& magic)
  {
    const QList<QByteArray> parts = magic.mid(int(strlen("# vtk DataFile Version"))).trimmed().split('.');
    bool majorOk = false;
    bool minorOk = parts.size() == 2;
    m_Major = parts.value(0).toInt(&majorOk);
    const int minor = parts.value(1).toInt(&minorOk);
    if (!majorOk || !minorOk || m_Major < 1 || m_Major > 5 || (m_Major == 5 && minor > 1))
    {
      return fail(QStringLiteral("it names the file version '%1'; the versions 1.0 to 5.1 can be read")
                      .arg(QString::fromLatin1(magic.mid(int(strlen("# vtk DataFile Version"))).trimmed())));
    }
    return true;
  }

  bool number(const QByteArray& token, const char* what, qint64* value, qint64 maximum = INT64_MAX)
  {
    bool ok = false;
    *value = token.toLongLong(&ok);
    if (!ok || *value < 0 || *value > maximum)
    {
      return fail(QStringLiteral("it declares '%1' %2").arg(QString::fromLatin1(token), QLatin1String(what)));
    }
    return true;
  }

  // `values` values of `type` must follow; in a binary file they are skipped.
  bool data(const QByteArray& what, qint64 values, const QByteArray& type)
  {
    const qint64 remaining = m_Size - m_Position;
    const qint64 bytes =
        type == "bit" ? (values + 7) / 8 : SaturatingProduct(values, BytesOfLegacyType(type));
    // In text each value takes at least one character and a separator.
    const qint64 needed = m_Binary ? bytes : (values == 0 ? 0 : SaturatingProduct(values, 2) - 1);
    if (needed > remaining)
    {
      return fail(QStringLiteral("'%1' declares %2 values (%3 bytes) but the file holds %4 bytes after it")
                      .arg(QString::fromLatin1(what))
                      .arg(values)
                      .arg(needed)
                      .arg(remaining));
    }
    if (m_Binary && bytes > 0)
    {
      m_Position += bytes;
    }
    return true;
  }

  // Files before version 5 store cells as point count and point ids, one cell after another; the
  // reader follows the counts without checking them against the values the line announces.
  bool oldCells(const QByteArray& what, qint64 start, qint64 cells, qint64 values)
  {
    qint64 at = start;
    const auto next = [&](qint64* value)
    {
      if (m_Binary)
      {
        if (at + 4 > m_Size)
        {
          return false;
        }
        *value = qFromBigEndian<qint32>(m_Data + at);
        at += 4;
        return true;
      }
      while (at < m_Size && std::isspace(static_cast<unsigned char>(m_Data[at])))
      {
        ++at;
      }
      const qint64 begin = at;
      while (at < m_Size && !std::isspace(static_cast<unsigned char>(m_Data[at])))
      {
        ++at;
      }
      bool ok = false;
      *value = QByteArray::fromRawData(m_Data + begin, int(at - begin)).toLongLong(&ok);
      return ok;
    };
    qint64 used = 0;
    for (qint64 cell = 0; cell < cells; ++cell)
    {
      qint64 count = 0;
      if (!next(&count) || count < 0 || used + 1 + count > values)
      {
        return fail(
            QStringLiteral("'%1': the cells do not fit the %2 values it announces (is the version right?)")
                .arg(QString::fromLatin1(what))
                .arg(values));
      }
      used += 1 + count;
      for (qint64 i = 0; i < count; ++i)
      {
        qint64 id = 0;
        if (!next(&id) || id < 0 || (m_Points >= 0 && id >= m_Points))
        {
          return fail(QStringLiteral("'%1': a cell refers to point %2 but there are %3 points")
                          .arg(QString::fromLatin1(what))
                          .arg(id)
                          .arg(m_Points));
        }
      }
    }
    if (!m_Binary)
    {
      m_Position = std::max(m_Position, at);
    }
    return true;
  }

  bool matches(const QByteArray& what, qint64 declared, qint64 expected, const char* kind)
  {
    if (expected >= 0 && declared != expected)
    {
      return fail(QStringLiteral("'%1' declares %2 %3 but the dataset has %4")
                      .arg(QString::fromLatin1(what))
                      .arg(declared)
                      .arg(QLatin1String(kind))
                      .arg(expected));
    }
    return true;
  }

  qint64 structuredCells() const
  {
    qint64 cells = 1;
    for (qint64 d : m_Dimensions)
    {
      cells = SaturatingProduct(cells, std::max<qint64>(1, d - 1));
    }
    return cells;
  }

  // The next line of the form NAME COMPONENTS TUPLES TYPE; in a text file the values of the previous
  // array come first.
  QList<QByteArray> nextArrayLine()
  {
    static const QList<QByteArray> k_Sections = {"POINT_DATA", "CELL_DATA",     "FIELD",
                                                 "SCALARS",    "VECTORS",       "NORMALS",
                                                 "TENSORS",    "COLOR_SCALARS", "TEXTURE_COORDINATES"};
    while (m_Position < m_Size)
    {
      const qint64 start = m_Position;
      const QList<QByteArray> tokens = line().simplified().split(' ');
      if (k_Sections.contains(tokens.front()))
      {
        m_Position = start; // fewer arrays than announced: the next section begins
        return {};
      }
      if (tokens.size() == 4 &&
          (BytesOfLegacyType(tokens[3]) > 0 || tokens[3] == "bit" || tokens[3] == "string"))
      {
        return tokens;
      }
      if (m_Binary || tokens.front() == "NULL_ARRAY" || tokens.front() == "METADATA")
      {
        if (tokens.front().isEmpty())
        {
          continue;
        }
        return {};
      }
    }
    return {};
  }

  bool keyword(const QList<QByteArray>& t)
  {
    const QByteArray& key = t.front();
    const QByteArray text = t.join(' ');
    qint64 a = 0;
    qint64 b = 0;
    if (key == "DATASET")
    {
      m_Structured = t.value(1) == "STRUCTURED_POINTS" || t.value(1) == "STRUCTURED_GRID" ||
                     t.value(1) == "RECTILINEAR_GRID";
      m_StructuredGrid = t.value(1) == "STRUCTURED_GRID";
      return true;
    }
    if (key == "DIMENSIONS" && t.size() >= 4)
    {
      m_Points = 1;
      for (int i = 0; i < 3; ++i)
      {
        if (!number(t[i + 1], "grid points along an axis", &m_Dimensions[i], VXDeclaredSize::k_MaxIndex))
        {
          return false;
        }
        m_Points = SaturatingProduct(m_Points, m_Dimensions[i]);
      }
      m_Cells = m_Points == 0 ? 0 : structuredCells();
      return true;
    }
    if (key == "POINTS" && t.size() >= 3)
    {
      if (!number(t[1], "points", &a) || (m_StructuredGrid && !matches(text, a, m_Points, "points")))
      {
        return false;
      }
      m_Points = a;
      return data(text, SaturatingProduct(a, 3), t[2]);
    }
    if ((key == "X_COORDINATES" || key == "Y_COORDINATES" || key == "Z_COORDINATES") && t.size() >= 3)
    {
      const int axis = key[0] - 'X';
      return number(t[1], "coordinates", &a) && matches(text, a, m_Dimensions[axis], "coordinates") &&
             data(text, a, t[2]);
    }
    if ((key == "CELLS" || key == "POLYGONS" || key == "LINES" || key == "VERTICES" ||
         key == "TRIANGLE_STRIPS") &&
        t.size() >= 3)
    {
      if (!number(t[1], "cells", &a) || !number(t[2], "cell values", &b))
      {
        return false;
      }
      if (m_Major >= 5)
      {
        m_Offsets = a;
        m_Connectivity = b;
        m_CellsSeen += std::max<qint64>(0, a - 1);
        return true;
      }
      m_CellsSeen += a;
      const qint64 start = m_Position;
      if (!data(text, b, "int"))
      {
        return false;
      }
      return oldCells(text, start, a, b);
    }
    if (key == "OFFSETS" && t.size() >= 2)
    {
      return data(text, m_Offsets, t[1]);
    }
    if (key == "CONNECTIVITY" && t.size() >= 2)
    {
      return data(text, m_Connectivity, t[1]);
    }
    if (key == "CELL_TYPES" && t.size() >= 2)
    {
      return number(t[1], "cell types", &a) && data(text, a, "int");
    }
    if ((key == "POINT_DATA" || key == "CELL_DATA") && t.size() >= 2)
    {
      const bool points = key == "POINT_DATA";
      const qint64 expected =
          points ? m_Points : (m_Structured ? m_Cells : (m_CellsSeen > 0 ? m_CellsSeen : -1));
      if (!number(t[1], points ? "points" : "cells", &a) ||
          !matches(text, a, expected, points ? "points" : "cells"))
      {
        return false;
      }
      m_Tuples = a;
      return true;
    }
    if (key == "SCALARS" && t.size() >= 3)
    {
      if (t.size() >= 4 && !number(t[3], "components", &b, VXDeclaredSize::k_MaxIndex))
      {
        return false;
      }
      // The lookup table line comes first in the data.
      m_PendingScalars = {SaturatingProduct(m_Tuples, t.size() >= 4 ? b : 1), t[2]};
      m_PendingText = text;
      return true;
    }
    if (key == "LOOKUP_TABLE" && t.size() >= 2)
    {
      if (t.size() >= 3)
      {
        return number(t[2], "table entries", &a) &&
               data(text, SaturatingProduct(a, 4), m_Binary ? "unsigned_char" : "float");
      }
      const auto pending = m_PendingScalars;
      m_PendingScalars = {0, {}};
      return data(m_PendingText, pending.first, pending.second);
    }
    if (key == "COLOR_SCALARS" && t.size() >= 3)
    {
      return number(t[2], "colour components", &b, VXDeclaredSize::k_MaxIndex) &&
             data(text, SaturatingProduct(m_Tuples, b), m_Binary ? "unsigned_char" : "float");
    }
    if ((key == "VECTORS" || key == "NORMALS") && t.size() >= 3)
    {
      return data(text, SaturatingProduct(m_Tuples, 3), t[2]);
    }
    if ((key == "TENSORS" || key == "TENSORS6") && t.size() >= 3)
    {
      return data(text, SaturatingProduct(m_Tuples, key == "TENSORS" ? 9 : 6), t[2]);
    }
    if (key == "TEXTURE_COORDINATES" && t.size() >= 4)
    {
      return number(t[2], "texture dimensions", &b, 3) && data(text, SaturatingProduct(m_Tuples, b), t[3]);
    }
    if (key == "FIELD" && t.size() >= 3)
    {
      if (!number(t[2], "arrays", &a))
      {
        return false;
      }
      const qint64 arrays = a;
      for (qint64 i = 0; i < arrays && m_Position < m_Size; ++i)
      {
        const QList<QByteArray> array = nextArrayLine();
        if (array.isEmpty())
        {
          break; // NULL_ARRAY, METADATA or a form VTK judges by itself
        }
        const QByteArray arrayText = array.join(' ');
        if (!number(array[1], "components", &b, VXDeclaredSize::k_MaxIndex) ||
            !number(array[2], "tuples", &a) || !data(arrayText, SaturatingProduct(a, b), array[3]))
        {
          return false;
        }
      }
      return true;
    }
    return true;
  }

  const char* m_Data = nullptr;
  qint64 m_Size = 0;
  qint64 m_Position = 0;
  int m_Major = 0;
  bool m_Binary = false;
  bool m_Structured = false;
  bool m_StructuredGrid = false;
  std::array<qint64, 3> m_Dimensions{-1, -1, -1};
  qint64 m_Points = -1;
  qint64 m_Cells = -1;
  qint64 m_CellsSeen = 0;
  qint64 m_Offsets = 0;
  qint64 m_Connectivity = 0;
  qint64 m_Tuples = 0;
  std::pair<qint64, QByteArray> m_PendingScalars{0, {}};
  QByteArray m_PendingText;
  QString m_Error;
};
} // namespace

bool VXLegacyVtkHeaderCheck::check(const QString& path, QString* errorMessage)
{
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly) || file.size() == 0)
  {
    return true; // the reader names the problem
  }
  const uchar* mapped = file.map(0, file.size());
  if (mapped == nullptr)
  {
    return true;
  }
  LegacyWalk walk;
  const bool ok = walk.run(reinterpret_cast<const char*>(mapped), file.size());
  file.unmap(const_cast<uchar*>(mapped));
  if (!ok && errorMessage != nullptr)
  {
    *errorMessage = QStringLiteral("The file '%1' is damaged: %2.").arg(path, walk.error());
  }
  return ok;
}
