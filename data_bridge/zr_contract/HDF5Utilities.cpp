#include "data_bridge/zr_contract/HDF5Utilities.h"

#include <sys/stat.h>

#include <mutex>

namespace zr::core::HDF5
{
void SilenceErrorPrinting()
{
  static std::once_flag s_Once;
  std::call_once(s_Once,
                 []
                 {
                   LockGuard lock(GlobalMutex());
                   H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
                 });
}

ScopedId::ScopedId(hid_t id, Closer closer)
    : m_Id(id)
    , m_Closer(closer)
{
}

ScopedId::~ScopedId()
{
  if (m_Id >= 0 && m_Closer != nullptr)
  {
    LockGuard lock(GlobalMutex());
    m_Closer(m_Id);
  }
}

ScopedId::ScopedId(ScopedId&& other) noexcept
    : m_Id(other.m_Id)
    , m_Closer(other.m_Closer)
{
  other.m_Id = -1;
}

ScopedId& ScopedId::operator=(ScopedId&& other) noexcept
{
  if (this != &other)
  {
    if (m_Id >= 0 && m_Closer != nullptr)
    {
      LockGuard lock(GlobalMutex());
      m_Closer(m_Id);
    }
    m_Id = other.m_Id;
    m_Closer = other.m_Closer;
    other.m_Id = -1;
  }
  return *this;
}

hid_t ScopedId::get() const
{
  return m_Id;
}

bool ScopedId::valid() const
{
  return m_Id >= 0;
}

ScopedId OpenGroup(hid_t location, const std::string& name)
{
  LockGuard lock(GlobalMutex());
  return ScopedId(H5Gopen2(location, name.c_str(), H5P_DEFAULT), H5Gclose);
}

ScopedId CreateGroup(hid_t location, const std::string& name)
{
  LockGuard lock(GlobalMutex());
  return ScopedId(H5Gcreate2(location, name.c_str(), H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT), H5Gclose);
}

ScopedId OpenDataset(hid_t location, const std::string& name)
{
  LockGuard lock(GlobalMutex());
  return ScopedId(H5Dopen2(location, name.c_str(), H5P_DEFAULT), H5Dclose);
}

hid_t NativeType(DataType dataType)
{
  LockGuard lock(GlobalMutex());
  switch (dataType)
  {
  case DataType::int8:
    return H5T_NATIVE_INT8;
  case DataType::uint8:
  case DataType::boolean:
    return H5T_NATIVE_UINT8;
  case DataType::int16:
    return H5T_NATIVE_INT16;
  case DataType::uint16:
    return H5T_NATIVE_UINT16;
  case DataType::int32:
    return H5T_NATIVE_INT32;
  case DataType::uint32:
    return H5T_NATIVE_UINT32;
  case DataType::int64:
    return H5T_NATIVE_INT64;
  case DataType::uint64:
    return H5T_NATIVE_UINT64;
  case DataType::float32:
    return H5T_NATIVE_FLOAT;
  case DataType::float64:
    return H5T_NATIVE_DOUBLE;
  }
  return -1;
}

std::optional<DataType> DataTypeOfH5Type(hid_t typeId)
{
  LockGuard lock(GlobalMutex());
  const H5T_class_t typeClass = H5Tget_class(typeId);
  const size_t size = H5Tget_size(typeId);
  if (typeClass == H5T_FLOAT)
  {
    if (size == 4)
    {
      return DataType::float32;
    }
    if (size == 8)
    {
      return DataType::float64;
    }
    return std::nullopt;
  }
  if (typeClass != H5T_INTEGER)
  {
    return std::nullopt;
  }
  const bool isSigned = H5Tget_sign(typeId) == H5T_SGN_2;
  switch (size)
  {
  case 1:
    return isSigned ? DataType::int8 : DataType::uint8;
  case 2:
    return isSigned ? DataType::int16 : DataType::uint16;
  case 4:
    return isSigned ? DataType::int32 : DataType::uint32;
  case 8:
    return isSigned ? DataType::int64 : DataType::uint64;
  default:
    return std::nullopt;
  }
}

bool HasAttribute(hid_t object, const std::string& name)
{
  LockGuard lock(GlobalMutex());
  return H5Aexists(object, name.c_str()) > 0;
}

namespace
{
bool WriteAttribute(hid_t object, const std::string& name, hid_t fileType, hid_t memoryType, hsize_t count,
                    const void* values)
{
  LockGuard lock(GlobalMutex());
  if (H5Aexists(object, name.c_str()) > 0)
  {
    H5Adelete(object, name.c_str());
  }
  ScopedId space(H5Screate_simple(1, &count, nullptr), H5Sclose);
  if (!space.valid())
  {
    return false;
  }
  ScopedId attribute(H5Acreate2(object, name.c_str(), fileType, space.get(), H5P_DEFAULT, H5P_DEFAULT),
                     H5Aclose);
  return attribute.valid() && H5Awrite(attribute.get(), memoryType, values) >= 0;
}

template<class T>
std::optional<std::vector<T>> ReadAttribute(hid_t object, const std::string& name, hid_t memoryType,
                                            H5T_class_t expectedClass)
{
  LockGuard lock(GlobalMutex());
  if (H5Aexists(object, name.c_str()) <= 0)
  {
    return std::nullopt;
  }
  ScopedId attribute(H5Aopen(object, name.c_str(), H5P_DEFAULT), H5Aclose);
  if (!attribute.valid())
  {
    return std::nullopt;
  }
  ScopedId type(H5Aget_type(attribute.get()), H5Tclose);
  ScopedId space(H5Aget_space(attribute.get()), H5Sclose);
  if (!type.valid() || !space.valid() || H5Tget_class(type.get()) != expectedClass)
  {
    return std::nullopt;
  }
  const hssize_t count = H5Sget_simple_extent_npoints(space.get());
  if (count < 0 || count > (1 << 20))
  {
    return std::nullopt;
  }
  // HDF5 converts what the stored type describes without checking it: a damaged description (bits
  // beyond the value's size, more values than are stored) makes it read out of bounds.
  const std::size_t typeSize = H5Tget_size(type.get());
  if (expectedClass == H5T_INTEGER || expectedClass == H5T_FLOAT)
  {
    const std::size_t precision = H5Tget_precision(type.get());
    const int bitOffset = H5Tget_offset(type.get());
    if ((typeSize != 1 && typeSize != 2 && typeSize != 4 && typeSize != 8) || precision == 0 ||
        bitOffset < 0 || static_cast<std::size_t>(bitOffset) + precision > typeSize * 8)
    {
      return std::nullopt;
    }
  }
  if (H5Aget_storage_size(attribute.get()) < static_cast<hsize_t>(count) * typeSize)
  {
    return std::nullopt;
  }
  std::vector<T> values(static_cast<std::size_t>(count));
  if (count > 0 && H5Aread(attribute.get(), memoryType, values.data()) < 0)
  {
    return std::nullopt;
  }
  return values;
}
} // namespace

bool WriteStringAttribute(hid_t object, const std::string& name, const std::string& value)
{
  LockGuard lock(GlobalMutex());
  if (H5Aexists(object, name.c_str()) > 0)
  {
    H5Adelete(object, name.c_str());
  }
  ScopedId type(H5Tcopy(H5T_C_S1), H5Tclose);
  H5Tset_size(type.get(), value.empty() ? 1 : value.size());
  H5Tset_strpad(type.get(), H5T_STR_NULLPAD);
  ScopedId space(H5Screate(H5S_SCALAR), H5Sclose);
  ScopedId attribute(H5Acreate2(object, name.c_str(), type.get(), space.get(), H5P_DEFAULT, H5P_DEFAULT),
                     H5Aclose);
  const std::string stored = value.empty() ? std::string(1, '\0') : value;
  return attribute.valid() && H5Awrite(attribute.get(), type.get(), stored.data()) >= 0;
}

bool WriteUInt64Attribute(hid_t object, const std::string& name, const std::vector<std::uint64_t>& values)
{
  return WriteAttribute(object, name, H5T_STD_U64LE, H5T_NATIVE_UINT64, values.size(), values.data());
}

bool WriteInt32Attribute(hid_t object, const std::string& name, std::int32_t value)
{
  return WriteAttribute(object, name, H5T_STD_I32LE, H5T_NATIVE_INT32, 1, &value);
}

bool WriteFloatAttribute(hid_t object, const std::string& name, const std::vector<float>& values)
{
  return WriteAttribute(object, name, H5T_IEEE_F32LE, H5T_NATIVE_FLOAT, values.size(), values.data());
}

std::optional<std::string> ReadStringAttribute(hid_t object, const std::string& name)
{
  LockGuard lock(GlobalMutex());
  if (H5Aexists(object, name.c_str()) <= 0)
  {
    return std::nullopt;
  }
  ScopedId attribute(H5Aopen(object, name.c_str(), H5P_DEFAULT), H5Aclose);
  if (!attribute.valid())
  {
    return std::nullopt;
  }
  ScopedId type(H5Aget_type(attribute.get()), H5Tclose);
  ScopedId space(H5Aget_space(attribute.get()), H5Sclose);
  if (!type.valid() || H5Tget_class(type.get()) != H5T_STRING || H5Tis_variable_str(type.get()) > 0)
  {
    return std::nullopt;
  }
  // One string only: H5Aread fills the whole extent, and the buffer below holds one.
  if (!space.valid() || H5Sget_simple_extent_npoints(space.get()) != 1)
  {
    return std::nullopt;
  }
  const size_t size = H5Tget_size(type.get());
  if (size == 0 || size > (1 << 20))
  {
    return std::nullopt;
  }
  std::string value(size, '\0');
  if (H5Aread(attribute.get(), type.get(), value.data()) < 0)
  {
    return std::nullopt;
  }
  value.resize(value.find('\0') == std::string::npos ? value.size() : value.find('\0'));
  return value;
}

std::optional<std::vector<std::uint64_t>> ReadUInt64Attribute(hid_t object, const std::string& name)
{
  return ReadAttribute<std::uint64_t>(object, name, H5T_NATIVE_UINT64, H5T_INTEGER);
}

std::optional<std::int32_t> ReadInt32Attribute(hid_t object, const std::string& name)
{
  auto values = ReadAttribute<std::int32_t>(object, name, H5T_NATIVE_INT32, H5T_INTEGER);
  if (!values.has_value() || values->size() != 1)
  {
    return std::nullopt;
  }
  return values->front();
}

std::optional<std::vector<float>> ReadFloatAttribute(hid_t object, const std::string& name)
{
  return ReadAttribute<float>(object, name, H5T_NATIVE_FLOAT, H5T_FLOAT);
}

namespace
{
herr_t CollectLinkName(hid_t, const char* name, const H5L_info_t*, void* data)
{
  static_cast<std::vector<std::string>*>(data)->emplace_back(name);
  return 0;
}
} // namespace

std::optional<std::vector<std::string>> ListLinks(hid_t group)
{
  LockGuard lock(GlobalMutex());
  std::vector<std::string> names;
  hsize_t index = 0;
  if (H5Literate(group, H5_INDEX_NAME, H5_ITER_INC, &index, CollectLinkName, &names) < 0)
  {
    return std::nullopt;
  }
  return names;
}

std::optional<std::uint64_t> FlatDatasetSize(hid_t dataset)
{
  LockGuard lock(GlobalMutex());
  ScopedId space(H5Dget_space(dataset), H5Sclose);
  if (!space.valid() || H5Sget_simple_extent_ndims(space.get()) != 1)
  {
    return std::nullopt;
  }
  hsize_t dims = 0;
  H5Sget_simple_extent_dims(space.get(), &dims, nullptr);
  return dims;
}

namespace
{
bool TransferFlat(hid_t dataset, hid_t memoryType, std::uint64_t start, std::uint64_t count, void* readBuffer,
                  const void* writeBuffer)
{
  if (count == 0)
  {
    return true;
  }
  LockGuard lock(GlobalMutex());
  ScopedId fileSpace(H5Dget_space(dataset), H5Sclose);
  if (!fileSpace.valid())
  {
    return false;
  }
  hsize_t offset = start;
  hsize_t extent = count;
  hsize_t total = 0;
  if (H5Sget_simple_extent_dims(fileSpace.get(), &total, nullptr) == 1 && start == 0 && count == total)
  {
    // Whole dataset: no selection, so HDF5 can move the bytes straight into the caller's buffer.
    if (readBuffer != nullptr)
    {
      return H5Dread(dataset, memoryType, H5S_ALL, H5S_ALL, H5P_DEFAULT, readBuffer) >= 0;
    }
    return H5Dwrite(dataset, memoryType, H5S_ALL, H5S_ALL, H5P_DEFAULT, writeBuffer) >= 0;
  }
  if (H5Sselect_hyperslab(fileSpace.get(), H5S_SELECT_SET, &offset, nullptr, &extent, nullptr) < 0)
  {
    return false;
  }
  ScopedId memorySpace(H5Screate_simple(1, &extent, nullptr), H5Sclose);
  if (readBuffer != nullptr)
  {
    return H5Dread(dataset, memoryType, memorySpace.get(), fileSpace.get(), H5P_DEFAULT, readBuffer) >= 0;
  }
  return H5Dwrite(dataset, memoryType, memorySpace.get(), fileSpace.get(), H5P_DEFAULT, writeBuffer) >= 0;
}
} // namespace

bool ReadFlat(hid_t dataset, hid_t memoryType, std::uint64_t start, std::uint64_t count, void* buffer)
{
  return TransferFlat(dataset, memoryType, start, count, buffer, nullptr);
}

bool WriteFlat(hid_t dataset, hid_t memoryType, std::uint64_t start, std::uint64_t count, const void* buffer)
{
  return TransferFlat(dataset, memoryType, start, count, nullptr, buffer);
}

std::optional<RawStorage> FindRawStorage(hid_t dataset, hid_t memoryType, std::uint64_t expectedBytes)
{
  LockGuard lock(GlobalMutex());
  ScopedId creation(H5Dget_create_plist(dataset), H5Pclose);
  if (!creation.valid() || H5Pget_layout(creation.get()) != H5D_CONTIGUOUS ||
      H5Pget_nfilters(creation.get()) != 0 || H5Pget_external_count(creation.get()) != 0)
  {
    return std::nullopt;
  }
  ScopedId storedType(H5Dget_type(dataset), H5Tclose);
  if (!storedType.valid() || H5Tequal(storedType.get(), memoryType) <= 0)
  {
    return std::nullopt;
  }
  const haddr_t offset = H5Dget_offset(dataset);
  if (offset == HADDR_UNDEF || H5Dget_storage_size(dataset) != expectedBytes)
  {
    return std::nullopt;
  }
  ScopedId file(H5Iget_file_id(dataset), H5Fclose);
  ScopedId access(file.valid() ? H5Fget_access_plist(file.get()) : -1, H5Pclose);
  if (!access.valid() || H5Pget_driver(access.get()) != H5FD_SEC2)
  {
    return std::nullopt;
  }
  // The descriptor is only asked which file it is; the values are read through a descriptor of the
  // caller's own.
  void* handle = nullptr;
  struct stat status = {};
  if (H5Fget_vfd_handle(file.get(), access.get(), &handle) < 0 || handle == nullptr ||
      ::fstat(*static_cast<int*>(handle), &status) != 0)
  {
    return std::nullopt;
  }
  return RawStorage{offset, static_cast<std::uint64_t>(status.st_dev),
                    static_cast<std::uint64_t>(status.st_ino)};
}
} // namespace zr::core::HDF5
