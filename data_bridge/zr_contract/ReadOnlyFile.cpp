#include "data_bridge/zr_contract/ReadOnlyFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>

namespace zr::core
{
ReadOnlyFile::ReadOnlyFile(const std::filesystem::path& path)
{
  int descriptor = -1;
  do
  {
    descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  } while (descriptor < 0 && errno == EINTR);
  if (descriptor < 0)
  {
    return;
  }
  struct stat status = {};
  if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
  {
    ::close(descriptor);
    return;
  }
  m_Descriptor = descriptor;
  m_Size = static_cast<std::uint64_t>(status.st_size);
  m_Device = static_cast<std::uint64_t>(status.st_dev);
  m_Inode = static_cast<std::uint64_t>(status.st_ino);
}

ReadOnlyFile::~ReadOnlyFile()
{
  if (m_Descriptor >= 0)
  {
    ::close(m_Descriptor);
  }
}

bool ReadOnlyFile::isOpen() const
{
  return m_Descriptor >= 0;
}

std::uint64_t ReadOnlyFile::getSize() const
{
  return m_Size;
}

bool ReadOnlyFile::isSameFile(std::uint64_t device, std::uint64_t inode) const
{
  return isOpen() && m_Device == device && m_Inode == inode;
}

bool ReadOnlyFile::contains(std::uint64_t offset, std::uint64_t byteCount) const
{
  return offset <= m_Size && byteCount <= m_Size - offset;
}

bool ReadOnlyFile::readAt(std::uint64_t offset, void* buffer, std::uint64_t byteCount) const
{
  if (!isOpen() || !contains(offset, byteCount) ||
      offset + byteCount > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max()))
  {
    return false;
  }
  auto* target = static_cast<char*>(buffer);
  while (byteCount > 0)
  {
    // pread moves at most about 2 GiB per call on Linux.
    const std::size_t request = static_cast<std::size_t>(std::min<std::uint64_t>(byteCount, 1u << 30));
    const ssize_t received = ::pread(m_Descriptor, target, request, static_cast<off_t>(offset));
    if (received < 0 && errno == EINTR)
    {
      continue;
    }
    if (received <= 0)
    {
      // An error, or the file became shorter since it was opened.
      return false;
    }
    target += received;
    offset += static_cast<std::uint64_t>(received);
    byteCount -= static_cast<std::uint64_t>(received);
  }
  return true;
}
} // namespace zr::core
