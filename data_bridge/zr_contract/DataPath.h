#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

namespace zr::core
{
// The names from a top-level object down to a target; a plain value type.
class DataPath
{
public:
  DataPath() = default;
  DataPath(std::vector<std::string> path);
  DataPath(std::initializer_list<std::string> path);

  // Splits on the delimiter; empty segments ("a//b", leading or trailing delimiter) give no path.
  static std::optional<DataPath> FromString(const std::string& text, char delimiter = '/');
  static std::optional<DataPath> FromString(const std::string& text, const std::string& delimiter);

  bool empty() const;
  std::size_t getLength() const;
  const std::vector<std::string>& getPathVector() const;
  // Last name, or an empty string for an empty path.
  std::string getTargetName() const;
  std::string toString(const std::string& delimiter = "/") const;
  DataPath createChildPath(std::string name) const;
  // Path without the last name; the parent of a one-name path is empty.
  DataPath getParent() const;
  // True when this path lies strictly below other.
  bool isDescendantOf(const DataPath& other) const;

  bool operator==(const DataPath& rhs) const;
  bool operator!=(const DataPath& rhs) const;
  bool operator<(const DataPath& rhs) const;

private:
  std::vector<std::string> m_Path;
};
} // namespace zr::core
