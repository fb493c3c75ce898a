#pragma once

#include <cstdint>

namespace zr::core::HDF5
{
// Owns one open HDF5 file id and closes it, under the global HDF5 lock, when the last owner lets go.
class FileHandle
{
public:
  explicit FileHandle(std::int64_t fileId);
  ~FileHandle();

  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;

  std::int64_t getId() const;

private:
  std::int64_t m_FileId = -1;
};
} // namespace zr::core::HDF5
