#include "data_bridge/zr_contract/HDF5FileIO.h"

#include "data_bridge/zr_contract/HDF5FileHandle.h"
#include "data_bridge/zr_contract/HDF5Utilities.h"

#include <fmt/format.h>

#include <system_error>

namespace zr::core::HDF5
{
std::recursive_mutex& GlobalMutex()
{
  static std::recursive_mutex s_Mutex;
  return s_Mutex;
}

FileHandle::FileHandle(std::int64_t fileId)
    : m_FileId(fileId)
{
}

FileHandle::~FileHandle()
{
  if (m_FileId >= 0)
  {
    LockGuard lock(GlobalMutex());
    H5Fclose(m_FileId);
  }
}

std::int64_t FileHandle::getId() const
{
  return m_FileId;
}

FileIO FileIO::ReadFile(const std::filesystem::path& filePath)
{
  SilenceErrorPrinting();
  FileIO fileIO;
  fileIO.m_FilePath = filePath;
  std::error_code error;
  if (!std::filesystem::exists(filePath, error))
  {
    fileIO.m_ErrorMessage = fmt::format("The file '{}' does not exist", filePath.string());
    return fileIO;
  }
  if (!std::filesystem::is_regular_file(filePath, error))
  {
    fileIO.m_ErrorMessage = fmt::format("'{}' is not a file", filePath.string());
    return fileIO;
  }
  LockGuard lock(GlobalMutex());
  const htri_t isHdf5 = H5Fis_hdf5(filePath.c_str());
  if (isHdf5 <= 0)
  {
    fileIO.m_ErrorMessage = fmt::format("'{}' is not an HDF5 file", filePath.string());
    return fileIO;
  }
  const hid_t fileId = H5Fopen(filePath.c_str(), H5F_ACC_RDONLY, H5P_DEFAULT);
  if (fileId < 0)
  {
    fileIO.m_ErrorMessage =
        fmt::format("HDF5 could not open '{}': the file is damaged or truncated", filePath.string());
    return fileIO;
  }
  fileIO.m_Handle = std::make_shared<FileHandle>(fileId);
  return fileIO;
}

FileIO FileIO::WriteFile(const std::filesystem::path& filePath)
{
  SilenceErrorPrinting();
  FileIO fileIO;
  fileIO.m_FilePath = filePath;
  fileIO.m_Writable = true;
  LockGuard lock(GlobalMutex());
  const hid_t fileId = H5Fcreate(filePath.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT);
  if (fileId < 0)
  {
    fileIO.m_ErrorMessage =
        fmt::format("HDF5 could not create '{}' for writing (is the folder writable, or is the "
                    "file open elsewhere?)",
                    filePath.string());
    return fileIO;
  }
  fileIO.m_Handle = std::make_shared<FileHandle>(fileId);
  return fileIO;
}

FileIO::FileIO() = default;
FileIO::FileIO(FileIO&& other) noexcept = default;
FileIO& FileIO::operator=(FileIO&& other) noexcept = default;
FileIO::~FileIO() = default;

bool FileIO::isValid() const
{
  return m_Handle != nullptr;
}

bool FileIO::isWritable() const
{
  return isValid() && m_Writable;
}

const std::filesystem::path& FileIO::getFilePath() const
{
  return m_FilePath;
}

const std::string& FileIO::getErrorMessage() const
{
  return m_ErrorMessage;
}

std::int64_t FileIO::getId() const
{
  return m_Handle == nullptr ? -1 : m_Handle->getId();
}

std::shared_ptr<FileHandle> FileIO::getSharedHandle() const
{
  return m_Handle;
}

void FileIO::close()
{
  m_Handle.reset();
}
} // namespace zr::core::HDF5
