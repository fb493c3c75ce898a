#pragma once

#include "data_bridge/zr_contract/DataType.h"

#include <nlohmann/json.hpp>

#include <mutex>
#include <string>

namespace zr::core
{
// Process-wide settings of the data library, as JSON values by key.
class Preferences
{
public:
  static constexpr const char k_LargeDataSizeKey[] = "large_data_size";
  static constexpr const char k_LargeDataFormatKey[] = "large_data_format";
  // Value of "large_data_format" that keeps large arrays in the .kestrix file and reads them on demand.
  static constexpr const char k_OutOfCoreFormat[] = "HDF5-OutOfCore";

  Preferences();

  nlohmann::json value(const std::string& key) const;
  void setValue(const std::string& key, nlohmann::json value);
  bool contains(const std::string& key) const;
  void clear();

  // Arrays of more bytes than this are "large" on import (default 4 GiB).
  usize largeDataSize() const;
  void setLargeDataSize(usize bytes);
  // Where large arrays go: empty keeps everything in memory, k_OutOfCoreFormat reads them on demand.
  std::string largeDataFormat() const;
  void setLargeDataFormat(const std::string& format);

private:
  mutable std::mutex m_Mutex;
  nlohmann::json m_Values;
};
} // namespace zr::core
