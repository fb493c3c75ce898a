#pragma once

#include "data_bridge/zr_contract/AbstractDataStore.h"
#include "data_bridge/zr_contract/DataStore.h"
#include "data_bridge/zr_contract/HDF5DatasetReader.h"

#include <fmt/format.h>

#include <algorithm>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <vector>

namespace zr::core
{
// A store that leaves its values in the .kestrix file and reads them on demand, one chunk of
// k_ChunkElements elements at a time, keeping the k_CacheChunks most recently used chunks.
// Written values stay in memory (the file is opened read-only), chunk by chunk.
// getDataFormat() is non-empty: consumers must not look for a buffer.
template<class T>
class OutOfCoreDataStore : public AbstractDataStore<T>
{
public:
  static constexpr const char k_Format[] = "HDF5-OutOfCore";
  static constexpr usize k_ChunkElements = usize(1) << 16;
  static constexpr usize k_CacheChunks = 8;

  OutOfCoreDataStore(std::shared_ptr<HDF5::DatasetReader> reader, const ShapeType& tupleShape,
                     const ShapeType& componentShape)
      : m_Reader(std::move(reader))
      , m_TupleShape(tupleShape)
      , m_ComponentShape(componentShape)
  {
    if (m_Reader == nullptr || m_Reader->getDataType() != GetDataType<T>() ||
        m_Reader->getNumberOfElements() != ShapeProduct(tupleShape) * ShapeProduct(componentShape))
    {
      throw std::invalid_argument("OutOfCoreDataStore: the dataset does not match the array's type or shape");
    }
  }

  OutOfCoreDataStore(const OutOfCoreDataStore& other)
      : AbstractDataStore<T>(other)
      , m_Reader(other.m_Reader)
      , m_TupleShape(other.m_TupleShape)
      , m_ComponentShape(other.m_ComponentShape)
  {
    std::lock_guard<std::mutex> lock(other.m_Mutex);
    for (const auto& [chunkIndex, chunk] : other.m_Modified)
    {
      m_Modified.emplace(chunkIndex, CopyChunk(chunk));
    }
  }

  usize getNumberOfTuples() const override { return ShapeProduct(m_TupleShape); }
  const ShapeType& getTupleShape() const override { return m_TupleShape; }
  usize getNumberOfComponents() const override { return ShapeProduct(m_ComponentShape); }
  const ShapeType& getComponentShape() const override { return m_ComponentShape; }
  std::optional<ShapeType> getChunkShape() const override
  {
    const usize components = std::max<usize>(1, getNumberOfComponents());
    return ShapeType{std::max<usize>(1, k_ChunkElements / components)};
  }
  void resizeTuples(const ShapeType&) override
  {
    throw std::runtime_error("OutOfCoreDataStore: an array read from a file on demand cannot be resized");
  }
  IDataStore::StoreType getStoreType() const override { return IDataStore::StoreType::OutOfCore; }
  std::string getDataFormat() const override { return k_Format; }
  usize memoryUsage() const override
  {
    std::lock_guard<std::mutex> lock(m_Mutex);
    return (m_Cache.size() + m_Modified.size()) * k_ChunkElements * sizeof(T);
  }

  T getValue(usize index) const override
  {
    std::lock_guard<std::mutex> lock(m_Mutex);
    const Chunk& chunk = chunkFor(index / k_ChunkElements);
    return chunk[index % k_ChunkElements];
  }
  void setValue(usize index, T value) override
  {
    std::lock_guard<std::mutex> lock(m_Mutex);
    const usize chunkIndex = index / k_ChunkElements;
    auto iter = m_Modified.find(chunkIndex);
    if (iter == m_Modified.end())
    {
      iter = m_Modified.emplace(chunkIndex, CopyChunk(chunkFor(chunkIndex))).first;
      dropFromCache(chunkIndex);
    }
    iter->second[index % k_ChunkElements] = value;
  }
  void copyIntoBuffer(usize start, T* buffer, usize count) const override
  {
    std::lock_guard<std::mutex> lock(m_Mutex);
    usize done = 0;
    while (done < count)
    {
      const usize index = start + done;
      const usize chunkIndex = index / k_ChunkElements;
      const usize offset = index % k_ChunkElements;
      const usize n = std::min(count - done, k_ChunkElements - offset);
      auto modified = m_Modified.find(chunkIndex);
      if (modified != m_Modified.end())
      {
        std::copy_n(modified->second.get() + offset, n, buffer + done);
      }
      else
      {
        readFromFile(index, n, buffer + done);
      }
      done += n;
    }
  }

  std::unique_ptr<IDataStore> deepCopy() const override
  {
    return std::make_unique<OutOfCoreDataStore<T>>(*this);
  }
  std::unique_ptr<IDataStore> createNewInstance() const override
  {
    return std::make_unique<DataStore<T>>(ShapeType{0}, m_ComponentShape, T{});
  }

  // Reads every value into a new in-memory store.
  std::shared_ptr<DataStore<T>> loadIntoMemory() const
  {
    auto store = std::make_shared<DataStore<T>>(m_TupleShape, m_ComponentShape, std::nullopt);
    copyIntoBuffer(0, store->data(), store->getSize());
    return store;
  }

  const std::string& getDatasetPath() const { return m_Reader->getDatasetPath(); }

private:
  // unique_ptr, not vector: std::vector<bool> has no data().
  using Chunk = std::unique_ptr<T[]>;

  static Chunk CopyChunk(const Chunk& chunk)
  {
    Chunk copy(new T[k_ChunkElements]);
    std::copy_n(chunk.get(), k_ChunkElements, copy.get());
    return copy;
  }

  void readFromFile(usize start, usize count, T* buffer) const
  {
    if constexpr (std::is_same_v<T, bool>)
    {
      std::vector<std::uint8_t> bytes(count);
      if (!m_Reader->read(start, count, bytes.data()))
      {
        throwReadError(start);
      }
      std::transform(bytes.begin(), bytes.end(), buffer, [](std::uint8_t v) { return v != 0; });
    }
    else
    {
      if (!m_Reader->read(start, count, buffer))
      {
        throwReadError(start);
      }
    }
  }

  [[noreturn]] void throwReadError(usize start) const
  {
    throw std::runtime_error(
        fmt::format("OutOfCoreDataStore: reading element {} of '{}' from the file failed", start,
                    m_Reader->getDatasetPath()));
  }

  // Called with m_Mutex held.
  const Chunk& chunkFor(usize chunkIndex) const
  {
    auto modified = m_Modified.find(chunkIndex);
    if (modified != m_Modified.end())
    {
      return modified->second;
    }
    for (auto iter = m_Cache.begin(); iter != m_Cache.end(); ++iter)
    {
      if (iter->first == chunkIndex)
      {
        m_Cache.splice(m_Cache.begin(), m_Cache, iter);
        return m_Cache.front().second;
      }
    }
    const usize size = this->getSize();
    const usize start = chunkIndex * k_ChunkElements;
    const usize count = start < size ? std::min(k_ChunkElements, size - start) : 0;
    Chunk chunk(new T[k_ChunkElements]());
    readFromFile(start, count, chunk.get());
    m_Cache.emplace_front(chunkIndex, std::move(chunk));
    if (m_Cache.size() > k_CacheChunks)
    {
      m_Cache.pop_back();
    }
    return m_Cache.front().second;
  }

  void dropFromCache(usize chunkIndex) const
  {
    m_Cache.remove_if([chunkIndex](const auto& entry) { return entry.first == chunkIndex; });
  }

  std::shared_ptr<HDF5::DatasetReader> m_Reader;
  ShapeType m_TupleShape;
  ShapeType m_ComponentShape;
  mutable std::mutex m_Mutex;
  mutable std::list<std::pair<usize, Chunk>> m_Cache;
  std::map<usize, Chunk> m_Modified;
};
} // namespace zr::core
