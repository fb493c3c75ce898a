#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>

// Arithmetic on the sizes a file declares, shared by the header checks of the VTK file formats:
// products that cannot overflow, the width of each value type, and the comparison of one binary data
// stream's size header (plain or compressed blocks, raw or base64) with the bytes that follow it.
namespace VXDeclaredSize
{
// Larger indices, extents or component counts do not fit VTK's int and are never written by it.
constexpr qint64 k_MaxIndex = INT32_MAX;

// a * b, or INT64_MAX when that overflows; both non-negative.
qint64 SaturatingProduct(qint64 a, qint64 b);

// Bytes of one value of a VTK XML type ("Float32", "UInt8", ...); 0 for strings and unknown types.
qint64 BytesOfXmlType(const QString& type);

// How much larger than its compressed form a block can be, for a VTK XML compressor name.
qint64 MaxInflation(const QString& compressor);

// "points" for "NumberOfPoints" and so on.
QString Describe(const char* attribute);

// "2147483648 tuples of 3 components", or "N values" when the tuple count is unknown.
QString DescribeValues(qint64 tuples, qint64 components);

// One array's binary data: a size header (a byte count, or a block count, block sizes and compressed
// sizes) and the data after it.
struct Stream
{
  const char* data = nullptr; // null when only `prefix` is known (inline base64 text)
  qint64 length = 0;          // bytes (raw) or characters (base64) from the header to the end
  QByteArray prefix;          // the first characters, when `data` is null
  bool base64 = false;
  bool compressed = false;
  bool bigEndian = false;
  int headerBytes = 4;
  qint64 maxInflation = 1;
  qint64 tupleBytes = 1; // bytes of one tuple: data that is not empty holds at least one
};

// False, with the reason, when the stream's header declares more than the stream holds, or less than
// the `neededBytes` its array must fill (-1: unknown).
bool CheckStream(const Stream& stream, qint64 neededBytes, qint64 tuples, qint64 components, QString* reason);
} // namespace VXDeclaredSize
