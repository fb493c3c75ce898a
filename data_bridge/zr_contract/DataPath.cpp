#include "data_bridge/zr_contract/DataPath.h"

namespace zr::core
{
DataPath::DataPath(std::vector<std::string> path)
    : m_Path(std::move(path))
{
}

DataPath::DataPath(std::initializer_list<std::string> path)
    : m_Path(path)
{
}

std::optional<DataPath> DataPath::FromString(const std::string& text, char delimiter)
{
  return FromString(text, std::string(1, delimiter));
}

std::optional<DataPath> DataPath::FromString(const std::string& text, const std::string& delimiter)
{
  if (text.empty())
  {
    return DataPath();
  }
  if (delimiter.empty())
  {
    return DataPath({text});
  }
  std::vector<std::string> names;
  std::string::size_type start = 0;
  while (true)
  {
    const std::string::size_type end = text.find(delimiter, start);
    std::string name = text.substr(start, end == std::string::npos ? std::string::npos : end - start);
    if (name.empty())
    {
      return std::nullopt;
    }
    names.push_back(std::move(name));
    if (end == std::string::npos)
    {
      break;
    }
    start = end + delimiter.size();
  }
  return DataPath(std::move(names));
}

bool DataPath::empty() const
{
  return m_Path.empty();
}

std::size_t DataPath::getLength() const
{
  return m_Path.size();
}

const std::vector<std::string>& DataPath::getPathVector() const
{
  return m_Path;
}

std::string DataPath::getTargetName() const
{
  return m_Path.empty() ? std::string() : m_Path.back();
}

std::string DataPath::toString(const std::string& delimiter) const
{
  std::string text;
  for (std::size_t i = 0; i < m_Path.size(); ++i)
  {
    if (i > 0)
    {
      text += delimiter;
    }
    text += m_Path[i];
  }
  return text;
}

DataPath DataPath::createChildPath(std::string name) const
{
  std::vector<std::string> path = m_Path;
  path.push_back(std::move(name));
  return DataPath(std::move(path));
}

DataPath DataPath::getParent() const
{
  if (m_Path.empty())
  {
    return {};
  }
  return DataPath(std::vector<std::string>(m_Path.begin(), m_Path.end() - 1));
}

bool DataPath::isDescendantOf(const DataPath& other) const
{
  if (m_Path.size() <= other.m_Path.size())
  {
    return false;
  }
  return std::equal(other.m_Path.begin(), other.m_Path.end(), m_Path.begin());
}

bool DataPath::operator==(const DataPath& rhs) const
{
  return m_Path == rhs.m_Path;
}

bool DataPath::operator!=(const DataPath& rhs) const
{
  return m_Path != rhs.m_Path;
}

bool DataPath::operator<(const DataPath& rhs) const
{
  return m_Path < rhs.m_Path;
}
} // namespace zr::core
