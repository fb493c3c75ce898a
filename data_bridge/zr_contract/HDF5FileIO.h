#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>

namespace zr::core::HDF5
{
// HDF5 is not thread-safe: every call into the library runs under this one lock.
std::recursive_mutex& GlobalMutex();
using LockGuard = std::lock_guard<std::recursive_mutex>;

class FileHandle;

// An open HDF5 file. Opening never throws: check isValid() and getErrorMessage().
// The underlying handle is shared, so stores that read on demand keep the file open after the
// FileIO is gone.
class FileIO
{
public:
  // Opens an existing file read-only.
  static FileIO ReadFile(const std::filesystem::path& filePath);
  // Creates (or truncates) a file for writing.
  static FileIO WriteFile(const std::filesystem::path& filePath);

  FileIO();
  FileIO(FileIO&& other) noexcept;
  FileIO& operator=(FileIO&& other) noexcept;
  FileIO(const FileIO&) = delete;
  FileIO& operator=(const FileIO&) = delete;
  ~FileIO();

  bool isValid() const;
  bool isWritable() const;
  const std::filesystem::path& getFilePath() const;
  // Why opening failed; empty for a valid file.
  const std::string& getErrorMessage() const;
  // The hid_t of the file, or -1.
  std::int64_t getId() const;
  std::shared_ptr<FileHandle> getSharedHandle() const;
  void close();

private:
  std::filesystem::path m_FilePath;
  std::shared_ptr<FileHandle> m_Handle;
  std::string m_ErrorMessage;
  bool m_Writable = false;
};
} // namespace zr::core::HDF5
