#include "data_bridge/VXLegacyVtkTypeNames.h"

#include <QFile>

#include <climits>
#include <cstring>
#include <utility>

namespace
{
constexpr char k_Prefix[] = "vtktype";

// Names the legacy reader lacks, and the classic name of the same type.
const std::pair<const char*, const char*> k_Renames[] = {
    {"vtktypeint8", "char"},     {"vtktypeuint8", "unsigned_char"},
    {"vtktypeint16", "short"},   {"vtktypeuint16", "unsigned_short"},
    {"vtktypeint32", "int"},     {"vtktypeuint32", "unsigned_int"},
    {"vtktypefloat32", "float"}, {"vtktypefloat64", "double"},
};

// The classic name for the type name at `at`, when it is a whole word of a keyword line.
const char* RenameAt(const char* data, qint64 size, qint64 at, qint64* length)
{
  if (at == 0 || data[at - 1] != ' ')
  {
    return nullptr;
  }
  for (const auto& [name, classic] : k_Renames)
  {
    const qint64 n = qint64(strlen(name));
    if (at + n <= size && strncasecmp(data + at, name, size_t(n)) == 0 &&
        (at + n == size || data[at + n] == '\n' || data[at + n] == '\r' || data[at + n] == ' '))
    {
      *length = n;
      return classic;
    }
  }
  return nullptr;
}
} // namespace

QByteArray VXLegacyVtkTypeNames::renamedContent(const QString& path)
{
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly) || file.size() == 0)
  {
    return {};
  }
  const qint64 size = file.size();
  if (size >= INT_MAX)
  {
    return {}; // beyond what one array holds; the reader names the type it lacks
  }
  const uchar* mapped = file.map(0, size);
  if (mapped == nullptr)
  {
    return {};
  }
  const char* data = reinterpret_cast<const char*>(mapped);
  QByteArray renamed;
  qint64 copied = 0;
  static const char k_Magic[] = "# vtk DataFile Version";
  if (size > qint64(sizeof(k_Magic)) && strncmp(data, k_Magic, sizeof(k_Magic) - 1) == 0)
  {
    qint64 at = 0;
    while (const char* found =
               static_cast<const char*>(memmem(data + at, size_t(size - at), k_Prefix, sizeof(k_Prefix) - 1)))
    {
      at = found - data;
      qint64 length = 0;
      if (const char* classic = RenameAt(data, size, at, &length))
      {
        if (renamed.isEmpty())
        {
          renamed.reserve(int(std::min<qint64>(size, INT_MAX)));
        }
        renamed.append(data + copied, int(at - copied));
        renamed.append(classic);
        copied = at + length;
      }
      at += sizeof(k_Prefix) - 1;
    }
    if (copied > 0)
    {
      renamed.append(data + copied, int(size - copied));
    }
  }
  file.unmap(const_cast<uchar*>(mapped));
  return renamed;
}
