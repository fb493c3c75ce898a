// The out-of-core stores read their values from the .kestrix file through HDF5, so they are made
// here, beside the reader that creates them.
#include "data_bridge/zr_contract/OutOfCoreDataStore.h"

namespace zr::core
{
template class OutOfCoreDataStore<std::int8_t>;
template class OutOfCoreDataStore<std::uint8_t>;
template class OutOfCoreDataStore<std::int16_t>;
template class OutOfCoreDataStore<std::uint16_t>;
template class OutOfCoreDataStore<std::int32_t>;
template class OutOfCoreDataStore<std::uint32_t>;
template class OutOfCoreDataStore<std::int64_t>;
template class OutOfCoreDataStore<std::uint64_t>;
template class OutOfCoreDataStore<float>;
template class OutOfCoreDataStore<double>;
template class OutOfCoreDataStore<bool>;
} // namespace zr::core
