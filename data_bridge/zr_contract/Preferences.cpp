#include "data_bridge/zr_contract/Preferences.h"

#include <limits>

namespace zr::core
{
namespace
{
constexpr usize k_DefaultLargeDataSize = usize(4) << 30;
}

Preferences::Preferences()
    : m_Values(nlohmann::json::object())
{
}

nlohmann::json Preferences::value(const std::string& key) const
{
  std::lock_guard<std::mutex> lock(m_Mutex);
  auto iter = m_Values.find(key);
  return iter == m_Values.end() ? nlohmann::json() : *iter;
}

void Preferences::setValue(const std::string& key, nlohmann::json value)
{
  std::lock_guard<std::mutex> lock(m_Mutex);
  m_Values[key] = std::move(value);
}

bool Preferences::contains(const std::string& key) const
{
  std::lock_guard<std::mutex> lock(m_Mutex);
  return m_Values.contains(key);
}

void Preferences::clear()
{
  std::lock_guard<std::mutex> lock(m_Mutex);
  m_Values = nlohmann::json::object();
}

usize Preferences::largeDataSize() const
{
  const nlohmann::json size = value(k_LargeDataSizeKey);
  return size.is_number_unsigned() ? size.get<usize>() : k_DefaultLargeDataSize;
}

void Preferences::setLargeDataSize(usize bytes)
{
  setValue(k_LargeDataSizeKey, bytes);
}

std::string Preferences::largeDataFormat() const
{
  const nlohmann::json format = value(k_LargeDataFormatKey);
  return format.is_string() ? format.get<std::string>() : std::string();
}

void Preferences::setLargeDataFormat(const std::string& format)
{
  setValue(k_LargeDataFormatKey, format);
}
} // namespace zr::core
