#include "data_bridge/zr_contract/HDF5DatasetReader.h"

#include "data_bridge/zr_contract/HDF5FileHandle.h"
#include "data_bridge/zr_contract/HDF5Utilities.h"

#include <fmt/format.h>

namespace zr::core::HDF5
{
Result<std::shared_ptr<DatasetReader>> DatasetReader::Open(const std::shared_ptr<FileHandle>& file,
                                                           const std::string& datasetPath,
                                                           DataType elementType)
{
  if (file == nullptr)
  {
    return MakeErrorResult<std::shared_ptr<DatasetReader>>(-2301, "No open file to read from");
  }
  LockGuard lock(GlobalMutex());
  const hid_t datasetId = H5Dopen2(file->getId(), datasetPath.c_str(), H5P_DEFAULT);
  if (datasetId < 0)
  {
    return MakeErrorResult<std::shared_ptr<DatasetReader>>(
        -2302, fmt::format("No dataset at '{}' in the file", datasetPath));
  }
  std::shared_ptr<DatasetReader> reader(new DatasetReader());
  reader->m_File = file;
  reader->m_DatasetId = datasetId;
  reader->m_DataType = elementType;
  reader->m_DatasetPath = datasetPath;
  const std::optional<std::uint64_t> size = FlatDatasetSize(datasetId);
  if (!size.has_value())
  {
    return MakeErrorResult<std::shared_ptr<DatasetReader>>(
        -2303, fmt::format("The dataset '{}' is not one-dimensional", datasetPath));
  }
  reader->m_NumElements = *size;
  return reader;
}

DatasetReader::~DatasetReader()
{
  if (m_DatasetId >= 0)
  {
    LockGuard lock(GlobalMutex());
    H5Dclose(m_DatasetId);
  }
}

usize DatasetReader::getNumberOfElements() const
{
  return m_NumElements;
}

DataType DatasetReader::getDataType() const
{
  return m_DataType;
}

const std::string& DatasetReader::getDatasetPath() const
{
  return m_DatasetPath;
}

bool DatasetReader::read(usize start, usize count, void* buffer) const
{
  if (start > m_NumElements || count > m_NumElements - start)
  {
    return false;
  }
  return ReadFlat(m_DatasetId, NativeType(m_DataType), start, count, buffer);
}
} // namespace zr::core::HDF5
