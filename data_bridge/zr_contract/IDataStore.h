#pragma once

#include "data_bridge/zr_contract/DataType.h"
#include "data_bridge/zr_contract/Result.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

namespace zr::core
{
// Untyped face of a store of array values.
class IDataStore
{
public:
  enum class StoreType : std::int32_t
  {
    InMemory = 0,
    OutOfCore = 1,
    Empty = 2
  };

  virtual ~IDataStore() = default;

  virtual usize getNumberOfTuples() const = 0;
  virtual const ShapeType& getTupleShape() const = 0;
  virtual usize getNumberOfComponents() const = 0;
  virtual const ShapeType& getComponentShape() const = 0;
  // Shape of one chunk in tuples for chunked stores; none for contiguous memory.
  virtual std::optional<ShapeType> getChunkShape() const { return std::nullopt; }
  virtual void resizeTuples(const ShapeType& tupleShape) = 0;
  virtual DataType getDataType() const = 0;
  virtual StoreType getStoreType() const = 0;
  // Empty for a store in memory; the name of the storage format otherwise. Consumers that want raw
  // memory test this first and treat non-empty as "not available by address".
  virtual std::string getDataFormat() const = 0;
  virtual usize getTypeSize() const = 0;
  virtual std::unique_ptr<IDataStore> deepCopy() const = 0;
  // A new in-memory store of the same element type and component shape.
  virtual std::unique_ptr<IDataStore> createNewInstance() const = 0;
  virtual Result<> writeBinaryFile(const std::filesystem::path& absoluteFilePath) const = 0;
  virtual Result<> writeBinaryFile(std::ostream& outputStream) const = 0;
  virtual void flush() const {}
  // Bytes of memory the store holds right now.
  virtual usize memoryUsage() const = 0;

  usize getSize() const { return getNumberOfTuples() * getNumberOfComponents(); }
};
} // namespace zr::core
