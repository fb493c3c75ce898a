// The entries that KestrixReaderLoader looks up by name after loading this library.
#include "data_bridge/zr_contract/KestrixIO.h"

extern "C" __attribute__((visibility("default"))) void
zr_kestrix_import(const std::filesystem::path* filePath, bool preflight,
                  const std::function<void(const std::string&)>* progress,
                  zr::core::Result<zr::core::DataStructure>* result)
{
  *result = zr::core::KESTRIX::ImportDataStructureFromFile(*filePath, preflight, *progress);
}

extern "C" __attribute__((visibility("default"))) void
zr_kestrix_write(const std::filesystem::path* filePath, const zr::core::DataStructure* dataStructure,
                 const std::function<void(const std::string&)>* progress, zr::core::Result<>* result)
{
  *result = zr::core::KESTRIX::WriteDataStructureToFile(*filePath, *dataStructure, *progress);
}
