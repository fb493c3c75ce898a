#pragma once

#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/Result.h"

#include <filesystem>
#include <functional>
#include <string>

namespace zr::core::KESTRIX
{
/**
 * Imports a .kestrix file through the .kestrix reader library (libzorekestrix.so, beside this
 * library), which is loaded on the first call: a program that never opens such a file never maps
 * HDF5 and what it links. When the reader library cannot be loaded the result is invalid and says why.
 */
Result<DataStructure> LoadDataStructureFromFile(const std::filesystem::path& filePath, bool preflight,
                                                const std::function<void(const std::string&)>& progress = {});
// Writes the whole structure through the same library (an existing file is replaced); invalid with the
// reason when the library cannot be loaded or the write fails.
Result<> SaveDataStructureToFile(const std::filesystem::path& filePath, const DataStructure& dataStructure,
                                 const std::function<void(const std::string&)>& progress = {});
} // namespace zr::core::KESTRIX
