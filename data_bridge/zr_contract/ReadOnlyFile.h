#pragma once

#include <cstdint>
#include <filesystem>

namespace zr::core
{
/**
 * A file opened read-only through its own POSIX descriptor, for reading byte ranges at known
 * offsets. Reads never go past the size the file had when it was opened, and several threads may
 * read at once.
 */
class ReadOnlyFile
{
public:
  explicit ReadOnlyFile(const std::filesystem::path& path);
  ~ReadOnlyFile();

  ReadOnlyFile(const ReadOnlyFile&) = delete;
  ReadOnlyFile& operator=(const ReadOnlyFile&) = delete;

  bool isOpen() const;
  std::uint64_t getSize() const;
  // Whether this is the file with that device and inode number.
  bool isSameFile(std::uint64_t device, std::uint64_t inode) const;
  // Whether byteCount bytes at offset lie inside the file.
  bool contains(std::uint64_t offset, std::uint64_t byteCount) const;
  // Reads exactly byteCount bytes at offset; false on an error, or when the range is not contained.
  bool readAt(std::uint64_t offset, void* buffer, std::uint64_t byteCount) const;

private:
  int m_Descriptor = -1;
  std::uint64_t m_Size = 0;
  std::uint64_t m_Device = 0;
  std::uint64_t m_Inode = 0;
};
} // namespace zr::core
