#pragma once

#include "data_bridge/zr_contract/DataPath.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/HDF5FileIO.h"
#include "data_bridge/zr_contract/Result.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

// Reading and writing .kestrix files (HDF5; layout in docs/kestrix-format.md).
// No function here throws for a bad file: every failure is an invalid Result whose Error says what
// is wrong.
namespace zr::core::KESTRIX
{
// Called with one line per step of a long import or export (for example once per array).
using ProgressCallback = std::function<void(const std::string& message)>;

struct ImportOptions
{
  // Build the object tree with shapes only (EmptyDataStore); load values later with
  // FinishImportingObject.
  bool preflight = false;
  // Arrays of more bytes than this stay in the file and are read on demand (OutOfCoreDataStore).
  // Unset: taken from Application preferences (largeDataFormat() and largeDataSize()).
  std::optional<usize> outOfCoreThresholdBytes;
  ProgressCallback progress;
};

constexpr const char k_FormatTag[] = "KESTRIX";
constexpr std::int32_t k_FileVersion = 1;

// preflight false loads the data.
Result<DataStructure> ImportDataStructureFromFile(const std::filesystem::path& filePath, bool preflight);
Result<DataStructure> ImportDataStructureFromFile(const std::filesystem::path& filePath, bool preflight,
                                                  const ProgressCallback& progress);
Result<DataStructure> ImportDataStructureFromFile(const std::filesystem::path& filePath,
                                                  const ImportOptions& options);
Result<DataStructure> ImportDataStructureFromFile(const HDF5::FileIO& fileIO, bool preflight);
Result<DataStructure> ImportDataStructureFromFile(const HDF5::FileIO& fileIO, const ImportOptions& options);

// The given paths plus every ancestor of each, sorted so that a parent comes before its members,
// without duplicates.
std::vector<DataPath> ExpandSelectedPathsToAncestors(const std::vector<DataPath>& paths);

// Copies the object at path from a skeleton (source, imported with preflight) into target, under the
// object at path.getParent() in target (the top level for a one-name path), keeping its id. With
// preflight false, an array's values are read from the open file. Groups come over without their
// members: bring ancestors first (ExpandSelectedPathsToAncestors gives the order).
Result<> FinishImportingObject(DataStructure& target, const DataStructure& source, const DataPath& path,
                               const HDF5::FileIO& fileIO, bool preflight);

// Writes the whole structure; an existing file is replaced. Values of any store kind are written in
// slabs, so stores that compute or read their values on demand never need to be whole in memory.
Result<> WriteDataStructureToFile(const std::filesystem::path& filePath, const DataStructure& dataStructure,
                                  const ProgressCallback& progress = {});
Result<> WriteDataStructure(HDF5::FileIO& fileIO, const DataStructure& dataStructure,
                            const ProgressCallback& progress = {});
} // namespace zr::core::KESTRIX
