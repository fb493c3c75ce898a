#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace zr::core
{
struct Error
{
  std::int32_t code = 0;
  std::string message;
};

struct Warning
{
  std::int32_t code = 0;
  std::string message;
};

// Either a value or a list of errors, and always a list of warnings.
// Reading the value of an invalid result is a programming fault and throws std::logic_error.
template<class T = void>
class Result
{
public:
  Result(T value)
      : m_Value(std::move(value))
  {
  }
  Result(T value, std::vector<Warning> warnings)
      : m_Value(std::move(value))
      , m_Warnings(std::move(warnings))
  {
  }
  Result(std::vector<Error> errors, std::vector<Warning> warnings = {})
      : m_Errors(std::move(errors))
      , m_Warnings(std::move(warnings))
  {
  }

  bool valid() const { return m_Errors.empty() && m_Value.has_value(); }
  bool invalid() const { return !valid(); }

  T& value()
  {
    if (!m_Value.has_value())
    {
      throw std::logic_error("Result::value() called on an invalid Result");
    }
    return *m_Value;
  }
  const T& value() const
  {
    if (!m_Value.has_value())
    {
      throw std::logic_error("Result::value() called on an invalid Result");
    }
    return *m_Value;
  }

  const std::vector<Error>& errors() const { return m_Errors; }
  std::vector<Error>& errors() { return m_Errors; }
  const std::vector<Warning>& warnings() const { return m_Warnings; }
  std::vector<Warning>& warnings() { return m_Warnings; }

private:
  std::optional<T> m_Value;
  std::vector<Error> m_Errors;
  std::vector<Warning> m_Warnings;
};

template<>
class Result<void>
{
public:
  Result() = default;
  explicit Result(std::vector<Warning> warnings)
      : m_Warnings(std::move(warnings))
  {
  }
  Result(std::vector<Error> errors, std::vector<Warning> warnings)
      : m_Errors(std::move(errors))
      , m_Warnings(std::move(warnings))
  {
  }

  bool valid() const { return m_Errors.empty(); }
  bool invalid() const { return !valid(); }

  const std::vector<Error>& errors() const { return m_Errors; }
  std::vector<Error>& errors() { return m_Errors; }
  const std::vector<Warning>& warnings() const { return m_Warnings; }
  std::vector<Warning>& warnings() { return m_Warnings; }

private:
  std::vector<Error> m_Errors;
  std::vector<Warning> m_Warnings;
};

template<class T = void>
Result<T> MakeErrorResult(int code, std::string message)
{
  return Result<T>(std::vector<Error>{Error{static_cast<std::int32_t>(code), std::move(message)}}, {});
}

// Carries the errors and warnings of one result over into a result of another value type.
template<class T, class U>
Result<T> ConvertInvalidResult(Result<U>&& source)
{
  return Result<T>(std::move(source.errors()), std::move(source.warnings()));
}

// Merges the errors and warnings of the second result into the first.
inline void MergeResults(Result<>& target, const Result<>& other)
{
  target.errors().insert(target.errors().end(), other.errors().begin(), other.errors().end());
  target.warnings().insert(target.warnings().end(), other.warnings().begin(), other.warnings().end());
}
} // namespace zr::core
