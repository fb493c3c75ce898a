// Instantiates the class templates once in the library, so that template errors show up when the
// library builds rather than in the first consumer that touches a member.
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataStore.h"
#include "data_bridge/zr_contract/EmptyDataStore.h"
#include "data_bridge/zr_contract/NeighborList.h"

namespace zr::core
{
#define ZR_INSTANTIATE_STORES(TYPE)                                                                          \
  template class DataStore<TYPE>;                                                                            \
  template class EmptyDataStore<TYPE>;                                                                       \
  template class DataArray<TYPE>;

ZR_INSTANTIATE_STORES(std::int8_t)
ZR_INSTANTIATE_STORES(std::uint8_t)
ZR_INSTANTIATE_STORES(std::int16_t)
ZR_INSTANTIATE_STORES(std::uint16_t)
ZR_INSTANTIATE_STORES(std::int32_t)
ZR_INSTANTIATE_STORES(std::uint32_t)
ZR_INSTANTIATE_STORES(std::int64_t)
ZR_INSTANTIATE_STORES(std::uint64_t)
ZR_INSTANTIATE_STORES(float)
ZR_INSTANTIATE_STORES(double)
ZR_INSTANTIATE_STORES(bool)
#undef ZR_INSTANTIATE_STORES

template class NeighborList<std::int8_t>;
template class NeighborList<std::uint8_t>;
template class NeighborList<std::int16_t>;
template class NeighborList<std::uint16_t>;
template class NeighborList<std::int32_t>;
template class NeighborList<std::uint32_t>;
template class NeighborList<std::int64_t>;
template class NeighborList<std::uint64_t>;
template class NeighborList<float>;
template class NeighborList<double>;
} // namespace zr::core
