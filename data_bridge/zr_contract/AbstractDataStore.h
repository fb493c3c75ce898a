#pragma once

#include "data_bridge/zr_contract/IDataStore.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <vector>

namespace zr::core
{
// Typed store of array values addressed by flat element index (tuple * components + component).
// getValue and setValue do no bounds check; at() does.
template<class T>
class AbstractDataStore : public IDataStore
{
public:
  using value_type = T;

  ~AbstractDataStore() override = default;

  DataType getDataType() const override { return GetDataType<T>(); }
  usize getTypeSize() const override { return sizeof(T); }

  virtual T getValue(usize index) const = 0;
  virtual void setValue(usize index, T value) = 0;

  virtual T at(usize index) const
  {
    if (index >= getSize())
    {
      throw std::out_of_range(fmt::format("DataStore::at({}) is out of bounds. Size={}", index, getSize()));
    }
    return getValue(index);
  }

  virtual void add(usize index, T value)
  {
    requireArithmetic("add");
    setValue(index, static_cast<T>(getValue(index) + value));
  }
  virtual void sub(usize index, T value)
  {
    requireArithmetic("sub");
    setValue(index, static_cast<T>(getValue(index) - value));
  }
  virtual void mul(usize index, T value)
  {
    requireArithmetic("mul");
    setValue(index, static_cast<T>(getValue(index) * value));
  }
  virtual void div(usize index, T value)
  {
    requireArithmetic("div");
    setValue(index, static_cast<T>(getValue(index) / value));
  }
  virtual void rem(usize index, T value)
  {
    if constexpr (k_IsInteger)
    {
      setValue(index, static_cast<T>(getValue(index) % value));
    }
    else
    {
      throwInvalidIntegerOperator("rem");
    }
  }
  virtual void bitwiseAND(usize index, T value)
  {
    if constexpr (k_IsInteger)
    {
      setValue(index, static_cast<T>(getValue(index) & value));
    }
    else
    {
      throwInvalidIntegerOperator("bitwiseAND");
    }
  }
  virtual void bitwiseOR(usize index, T value)
  {
    if constexpr (k_IsInteger)
    {
      setValue(index, static_cast<T>(getValue(index) | value));
    }
    else
    {
      throwInvalidIntegerOperator("bitwiseOR");
    }
  }
  virtual void bitwiseXOR(usize index, T value)
  {
    if constexpr (k_IsInteger)
    {
      setValue(index, static_cast<T>(getValue(index) ^ value));
    }
    else
    {
      throwInvalidIntegerOperator("bitwiseXOR");
    }
  }
  virtual void bitwiseLShift(usize index, T value)
  {
    if constexpr (k_IsInteger)
    {
      setValue(index, static_cast<T>(getValue(index) << value));
    }
    else
    {
      throwInvalidIntegerOperator("bitwiseLShift");
    }
  }
  virtual void bitwiseRShift(usize index, T value)
  {
    if constexpr (k_IsInteger)
    {
      setValue(index, static_cast<T>(getValue(index) >> value));
    }
    else
    {
      throwInvalidIntegerOperator("bitwiseRShift");
    }
  }

  virtual void byteSwap(usize index)
  {
    T value = getValue(index);
    auto* bytes = reinterpret_cast<unsigned char*>(&value);
    std::reverse(bytes, bytes + sizeof(T));
    setValue(index, value);
  }
  virtual void swap(usize index0, usize index1)
  {
    const T first = getValue(index0);
    setValue(index0, getValue(index1));
    setValue(index1, first);
  }
  virtual void fill(T value)
  {
    const usize size = getSize();
    for (usize i = 0; i < size; ++i)
    {
      setValue(i, value);
    }
  }
  // Copies min(size, other size) elements from the start of other.
  virtual void copy(const AbstractDataStore<T>& other)
  {
    const usize count = std::min(getSize(), other.getSize());
    for (usize i = 0; i < count; ++i)
    {
      setValue(i, other.getValue(i));
    }
  }

  // Reads count elements starting at start into buffer; stores override this for bulk access.
  virtual void copyIntoBuffer(usize start, T* buffer, usize count) const
  {
    for (usize i = 0; i < count; ++i)
    {
      buffer[i] = getValue(start + i);
    }
  }

  Result<> writeBinaryFile(const std::filesystem::path& absoluteFilePath) const override
  {
    std::ofstream stream(absoluteFilePath, std::ios::out | std::ios::binary);
    if (!stream.is_open())
    {
      return MakeErrorResult(
          -11020, fmt::format("File could not be opened for writing:\n  '{}'", absoluteFilePath.string()));
    }
    return writeBinaryFile(stream);
  }

  Result<> writeBinaryFile(std::ostream& outputStream) const override
  {
    constexpr usize k_BlockElements = 1 << 16;
    // unique_ptr, not vector: std::vector<bool> has no data().
    std::unique_ptr<T[]> block(new T[k_BlockElements]);
    const usize size = getSize();
    for (usize start = 0; start < size; start += k_BlockElements)
    {
      const usize count = std::min(k_BlockElements, size - start);
      copyIntoBuffer(start, block.get(), count);
      outputStream.write(reinterpret_cast<const char*>(block.get()),
                         static_cast<std::streamsize>(count * sizeof(T)));
      if (!outputStream.good())
      {
        return MakeErrorResult(-11021,
                               fmt::format("Error writing binary file:\n  Total Elements:'{}'\n", size));
      }
    }
    return {};
  }

protected:
  AbstractDataStore() = default;
  AbstractDataStore(const AbstractDataStore&) = default;

private:
  static constexpr bool k_IsInteger = std::is_integral_v<T> && !std::is_same_v<T, bool>;

  static void requireArithmetic(const char* operation)
  {
    if constexpr (std::is_same_v<T, bool>)
    {
      throw std::runtime_error(fmt::format("DataStore::{}() invalid operator for bool", operation));
    }
  }
  [[noreturn]] static void throwInvalidIntegerOperator(const char* operation)
  {
    throw std::runtime_error(
        fmt::format("DataStore::{}() invalid operator for bool or floating point", operation));
  }
};
} // namespace zr::core
