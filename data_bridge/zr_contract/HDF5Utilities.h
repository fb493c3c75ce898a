#pragma once

// Internal to the data library: only its own sources include this (it pulls in hdf5.h, whose include
// directory is private to the library).

#include "data_bridge/zr_contract/DataType.h"
#include "data_bridge/zr_contract/HDF5FileIO.h"

#include <hdf5.h>

#include <optional>
#include <string>
#include <vector>

namespace zr::core::HDF5
{
// Switches off HDF5's own printing of its error stack; our callers report errors themselves.
void SilenceErrorPrinting();

// Closes an HDF5 id under the global lock when it goes out of scope.
class ScopedId
{
public:
  using Closer = herr_t (*)(hid_t);

  ScopedId() = default;
  ScopedId(hid_t id, Closer closer);
  ~ScopedId();
  ScopedId(ScopedId&& other) noexcept;
  ScopedId& operator=(ScopedId&& other) noexcept;
  ScopedId(const ScopedId&) = delete;
  ScopedId& operator=(const ScopedId&) = delete;

  hid_t get() const;
  bool valid() const;

private:
  hid_t m_Id = -1;
  Closer m_Closer = nullptr;
};

ScopedId OpenGroup(hid_t location, const std::string& name);
ScopedId CreateGroup(hid_t location, const std::string& name);
ScopedId OpenDataset(hid_t location, const std::string& name);

// The native memory type of an element type (booleans as unsigned 8-bit).
hid_t NativeType(DataType dataType);
// The element type a dataset's stored type maps to, if it is one of ours.
std::optional<DataType> DataTypeOfH5Type(hid_t typeId);

bool HasAttribute(hid_t object, const std::string& name);
bool WriteStringAttribute(hid_t object, const std::string& name, const std::string& value);
bool WriteUInt64Attribute(hid_t object, const std::string& name, const std::vector<std::uint64_t>& values);
bool WriteInt32Attribute(hid_t object, const std::string& name, std::int32_t value);
bool WriteFloatAttribute(hid_t object, const std::string& name, const std::vector<float>& values);
std::optional<std::string> ReadStringAttribute(hid_t object, const std::string& name);
std::optional<std::vector<std::uint64_t>> ReadUInt64Attribute(hid_t object, const std::string& name);
std::optional<std::int32_t> ReadInt32Attribute(hid_t object, const std::string& name);
std::optional<std::vector<float>> ReadFloatAttribute(hid_t object, const std::string& name);

// Names of the links of a group in name order; none on an HDF5 error.
std::optional<std::vector<std::string>> ListLinks(hid_t group);

// Number of elements of a one-dimensional dataset; none when it is not one-dimensional.
std::optional<std::uint64_t> FlatDatasetSize(hid_t dataset);
// Reads or writes count elements at start of a one-dimensional dataset.
bool ReadFlat(hid_t dataset, hid_t memoryType, std::uint64_t start, std::uint64_t count, void* buffer);
bool WriteFlat(hid_t dataset, hid_t memoryType, std::uint64_t start, std::uint64_t count, const void* buffer);

// Where the values of a dataset lie in its file as plain bytes, and which file that is.
struct RawStorage
{
  std::uint64_t offset = 0;
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
};
// Set only when the stored bytes are the values as memoryType holds them: contiguous layout, no
// filters, no external files, space allocated, exactly expectedBytes, in a file that HDF5 opened
// through its POSIX driver (so that the offset is a plain file offset).
std::optional<RawStorage> FindRawStorage(hid_t dataset, hid_t memoryType, std::uint64_t expectedBytes);
} // namespace zr::core::HDF5
