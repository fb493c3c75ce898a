#pragma once

#include "data_bridge/zr_contract/DataType.h"
#include "data_bridge/zr_contract/Result.h"

#include <memory>
#include <string>

namespace zr::core::HDF5
{
class FileHandle;

// Reads ranges of a flat (one-dimensional) dataset of a .kestrix file through hyperslabs. Keeps the
// file open for as long as it lives.
class DatasetReader
{
public:
  // Opens the dataset at the absolute HDF5 path inside the file.
  static Result<std::shared_ptr<DatasetReader>> Open(const std::shared_ptr<FileHandle>& file,
                                                     const std::string& datasetPath, DataType elementType);
  ~DatasetReader();

  DatasetReader(const DatasetReader&) = delete;
  DatasetReader& operator=(const DatasetReader&) = delete;

  usize getNumberOfElements() const;
  DataType getDataType() const;
  const std::string& getDatasetPath() const;
  // Reads count elements from start into buffer (elements of getDataType()); false on an HDF5 error.
  bool read(usize start, usize count, void* buffer) const;

private:
  DatasetReader() = default;

  std::shared_ptr<FileHandle> m_File;
  std::int64_t m_DatasetId = -1;
  usize m_NumElements = 0;
  DataType m_DataType = DataType::uint8;
  std::string m_DatasetPath;
};
} // namespace zr::core::HDF5
