#include "charts/VXChartArrayValues.h"

#include "data_bridge/zr_contract/DataStore.h"
#include "data_bridge/zr_contract/DispatchHelpers.h"

namespace
{
struct ReadFunctor
{
  template<class T>
  void operator()(const zr::core::IDataStore& untyped, std::size_t component,
                  std::vector<double>& values) const
  {
    const auto& store = static_cast<const zr::core::AbstractDataStore<T>&>(untyped);
    const std::size_t stride = store.getNumberOfComponents();
    const std::size_t tuples = store.getNumberOfTuples();
    values.resize(tuples);
    if (const auto* inMemory = dynamic_cast<const zr::core::DataStore<T>*>(&store))
    {
      const T* data = inMemory->data() + component;
      for (std::size_t tuple = 0; tuple < tuples; ++tuple)
      {
        values[tuple] = static_cast<double>(data[tuple * stride]);
      }
      return;
    }
    for (std::size_t tuple = 0; tuple < tuples; ++tuple)
    {
      values[tuple] = static_cast<double>(store.getValue(tuple * stride + component));
    }
  }
};
} // namespace

std::size_t VXChartArrayValues::ComponentCount(const zr::core::IDataArray& array)
{
  const zr::core::IDataStore* store = array.getIDataStore();
  return store == nullptr ? 0 : static_cast<std::size_t>(store->getNumberOfComponents());
}

std::vector<double> VXChartArrayValues::Read(const zr::core::IDataArray& array, std::size_t component)
{
  std::vector<double> values;
  const zr::core::IDataStore* store = array.getIDataStore();
  if (store == nullptr || component >= store->getNumberOfComponents())
  {
    return values;
  }
  zr::core::ExecuteDataFunction(ReadFunctor{}, store->getDataType(), *store, component, values);
  return values;
}
