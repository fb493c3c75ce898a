#include "spreadsheets/VXMultidimSpreadsheetModel.h"

#include "spreadsheets/DataArrayToStringFunction.h"
#include "spreadsheets/NeighborListArrayToStringFunction.h"
#include "spreadsheets/StringArrayToStringFunction.h"
#include "spreadsheets/VXSpreadsheetArrayScan.h"
#include "spreadsheets/VXSpreadsheetTypeDispatch.h"

#include "data_bridge/zr_contract/ParallelData2DAlgorithm.h"
#include "data_bridge/zr_contract/StringArray.h"

#include <algorithm>
#include <stdexcept>

namespace
{
const char k_InvalidDataType[] = "VXMultidimSpreadsheetModel::addArray Error: Invalid DataType";

// Row-major flat index of a full index vector.
unsigned long RowMajor(const std::vector<unsigned long>& dims, const std::vector<unsigned long>& index)
{
  unsigned long flat = 0;
  for (std::size_t i = 0; i < dims.size(); ++i)
  {
    flat = flat * dims[i] + (i < index.size() ? index[i] : 0);
  }
  return flat;
}
} // namespace

template<class T>
VXMultidimSpreadsheetModel::ParallelMinMaxDataArrayRangeCache<T>::ParallelMinMaxDataArrayRangeCache(
    VXMultidimSpreadsheetModel* model, const zr::core::DataArray<T>* array)
    : m_Model(model)
    , m_Array(array)
{
}

template<class T>
void VXMultidimSpreadsheetModel::ParallelMinMaxDataArrayRangeCache<T>::operator()(
    const zr::core::Range2D& range) const
{
  const auto columns = static_cast<std::size_t>(m_Model->columnCount());
  std::vector<int> longest(columns, 0);
  std::map<unsigned long, double> widest;
  double min = std::numeric_limits<double>::max();
  double max = std::numeric_limits<double>::lowest();
  const zr::core::AbstractDataStore<T>& store = m_Array->getDataStoreRef();
  for (zr::core::usize row = range.minRow(); row < range.maxRow(); ++row)
  {
    for (zr::core::usize column = range.minCol(); column < range.maxCol(); ++column)
    {
      const auto value = static_cast<double>(
          store.getValue(m_Model->flatIndex(static_cast<int>(row), static_cast<int>(column))));
      min = std::min(min, value);
      max = std::max(max, value);
      const int length = VXSpreadsheetArrayScan::FormattedLength(value);
      if (length > longest[column])
      {
        longest[column] = length;
        widest[static_cast<unsigned long>(column)] = value;
      }
    }
  }
  m_Model->sendThreadSafeUpdate(widest, min, max);
}

template<class T>
VXMultidimSpreadsheetModel::ParallelMinMaxNeighborListArrayRangeCache<
    T>::ParallelMinMaxNeighborListArrayRangeCache(VXMultidimSpreadsheetModel* model,
                                                  const zr::core::NeighborList<T>* list)
    : m_Model(model)
    , m_List(list)
{
}

template<class T>
void VXMultidimSpreadsheetModel::ParallelMinMaxNeighborListArrayRangeCache<T>::operator()(
    const zr::core::Range2D& range) const
{
  const auto columns = static_cast<std::size_t>(m_Model->columnCount());
  std::vector<int> longest(columns, 0);
  std::map<unsigned long, double> widest;
  double min = std::numeric_limits<double>::max();
  double max = std::numeric_limits<double>::lowest();
  const bool rowsAreLists = m_Model->listRowsAreTuples();
  for (zr::core::usize row = range.minRow(); row < range.maxRow(); ++row)
  {
    for (zr::core::usize column = range.minCol(); column < range.maxCol(); ++column)
    {
      bool ok = false;
      const int list = static_cast<int>(rowsAreLists ? row : column);
      const int position = static_cast<int>(rowsAreLists ? column : row);
      const T element = m_List->getValue(list, position, ok);
      if (!ok)
      {
        continue;
      }
      const auto value = static_cast<double>(element);
      min = std::min(min, value);
      max = std::max(max, value);
      const int length = VXSpreadsheetArrayScan::FormattedLength(value);
      if (length > longest[column])
      {
        longest[column] = length;
        widest[static_cast<unsigned long>(column)] = value;
      }
    }
  }
  m_Model->sendThreadSafeUpdate(widest, min, max);
}

VXMultidimSpreadsheetModel::VXMultidimSpreadsheetModel(QObject* parent)
    : VXSpreadsheetModel(parent)
{
}

VXMultidimSpreadsheetModel::~VXMultidimSpreadsheetModel() = default;

int VXMultidimSpreadsheetModel::rowCount(const QModelIndex& parent) const
{
  if (parent.isValid() || m_Dims.empty() || m_YDim >= m_Dims.size())
  {
    return 0;
  }
  return static_cast<int>(std::min<quint64>(m_Dims[m_YDim], k_MaxRows));
}

int VXMultidimSpreadsheetModel::columnCount(const QModelIndex& parent) const
{
  if (parent.isValid() || m_Dims.empty() || m_XDim >= m_Dims.size())
  {
    return 0;
  }
  return static_cast<int>(std::min<quint64>(m_Dims[m_XDim], k_MaxRows));
}

void VXMultidimSpreadsheetModel::removeColumn(int)
{
  // A slice has no removable columns.
}

void VXMultidimSpreadsheetModel::addArray(const std::shared_ptr<zr::core::IArray>& array,
                                          const std::vector<unsigned long>& dims, int xDim, int yDim,
                                          const std::vector<unsigned long>& indices)
{
  if (array == nullptr)
  {
    return;
  }
  if (array->getArrayType() == zr::core::IArray::ArrayType::DataArray)
  {
    // "IDataArray: Null IDataStore" for an array without values, before anything changes.
    dynamic_cast<const zr::core::IDataArray&>(*array).getIDataStoreRef();
  }
  beginResetModel();
  m_Array = array;
  m_Dims = dims;
  m_XDim = static_cast<quint64>(std::max(xDim, 0));
  m_YDim = static_cast<quint64>(std::max(yDim, 0));
  m_Indices = indices;
  m_WidestValues.assign(static_cast<std::size_t>(columnCount()), 0.0);
  m_Min = std::numeric_limits<double>::max();
  m_Max = std::numeric_limits<double>::lowest();
  m_Functor.reset();

  zr::core::ParallelData2DAlgorithm pass;
  pass.setRange(0, static_cast<zr::core::usize>(columnCount()), 0, static_cast<zr::core::usize>(rowCount()));
  switch (array->getArrayType())
  {
  case zr::core::IArray::ArrayType::NeighborListArray:
    if (!VXSpreadsheetTypeDispatch::Run<false>(
            array->getDataType(),
            [&](auto tag)
            {
              using T = typename decltype(tag)::type;
              auto list = std::dynamic_pointer_cast<zr::core::NeighborList<T>>(array);
              m_Functor = std::make_shared<NeighborListArrayToStringFunction<T>>(list);
              pass.execute(ParallelMinMaxNeighborListArrayRangeCache<T>(this, list.get()));
            }))
    {
      endResetModel();
      throw std::runtime_error(k_InvalidDataType);
    }
    break;
  case zr::core::IArray::ArrayType::DataArray:
  {
    if (!VXSpreadsheetTypeDispatch::Run<true>(
            array->getDataType(),
            [&](auto tag)
            {
              using T = typename decltype(tag)::type;
              auto typed = std::dynamic_pointer_cast<zr::core::DataArray<T>>(array);
              m_Functor = std::make_shared<DataArrayToStringFunction<T>>(typed);
              pass.execute(ParallelMinMaxDataArrayRangeCache<T>(this, typed.get()));
            }))
    {
      endResetModel();
      throw std::runtime_error(k_InvalidDataType);
    }
    break;
  }
  case zr::core::IArray::ArrayType::StringArray:
  {
    auto strings = std::dynamic_pointer_cast<zr::core::StringArray>(array);
    m_Functor = std::make_shared<StringArrayToStringFunction>(strings);
    std::fill(m_WidestValues.begin(), m_WidestValues.end(), GetMaxStringWidthValue(strings));
    break;
  }
  }
  endResetModel();
}

void VXMultidimSpreadsheetModel::sendThreadSafeUpdate(std::map<unsigned long, double>& widest, double min,
                                                      double max)
{
  std::lock_guard<std::mutex> lock(m_Mutex);
  for (const auto& [column, value] : widest)
  {
    // Values, not text lengths, are compared here: the stored value is the largest chunk winner.
    if (column < m_WidestValues.size())
    {
      m_WidestValues[column] = std::max(m_WidestValues[column], value);
    }
  }
  m_Min = std::min(m_Min, min);
  m_Max = std::max(m_Max, max);
}

void VXMultidimSpreadsheetModel::clear()
{
  beginResetModel();
  m_Array.reset();
  m_Functor.reset();
  m_Dims.clear();
  m_Indices.clear();
  m_XDim = 0;
  m_YDim = 0;
  m_WidestValues.clear();
  endResetModel();
}

bool VXMultidimSpreadsheetModel::validIndex(const QModelIndex& index) const
{
  return index.row() >= 0 && index.row() < rowCount() && index.column() >= 0 &&
         index.column() < columnCount();
}

unsigned long VXMultidimSpreadsheetModel::flatIndex(int row, int column) const
{
  std::vector<unsigned long> index = m_Indices;
  index.resize(m_Dims.size(), 0);
  if (m_XDim < index.size())
  {
    index[m_XDim] = static_cast<unsigned long>(column);
  }
  if (m_YDim < index.size())
  {
    index[m_YDim] = static_cast<unsigned long>(row);
  }
  return RowMajor(m_Dims, index);
}

bool VXMultidimSpreadsheetModel::listRowsAreTuples() const
{
  return m_Array != nullptr && m_Array->getNumberOfTuples() == static_cast<zr::core::usize>(rowCount());
}

QString VXMultidimSpreadsheetModel::getValue(const QModelIndex& index) const
{
  if (m_Array == nullptr || m_Functor == nullptr || !validIndex(index))
  {
    return {};
  }
  if (m_Array->getArrayType() == zr::core::IArray::ArrayType::NeighborListArray)
  {
    // The two dims are (lists, largest list): which of them runs down the rows decides the order.
    if (listRowsAreTuples())
    {
      return m_Functor->toString(static_cast<unsigned long>(index.row()),
                                 static_cast<unsigned long>(index.column()), m_Notation, m_Precision);
    }
    return m_Functor->toString(static_cast<unsigned long>(index.column()),
                               static_cast<unsigned long>(index.row()), m_Notation, m_Precision);
  }
  return m_Functor->toString(flatIndex(index.row(), index.column()), m_Notation, m_Precision);
}

double VXMultidimSpreadsheetModel::minimum() const
{
  return m_Min;
}

double VXMultidimSpreadsheetModel::maximum() const
{
  return m_Max;
}

const std::vector<double>& VXMultidimSpreadsheetModel::widestValues() const
{
  return m_WidestValues;
}

bool VXMultidimSpreadsheetModel::rangesForEveryIndex() const
{
  return true;
}

double VXMultidimSpreadsheetModel::columnMinimum(int) const
{
  return m_Min;
}

double VXMultidimSpreadsheetModel::columnMaximum(int) const
{
  return m_Max;
}

double VXMultidimSpreadsheetModel::widestMeasure(const QModelIndex& index) const
{
  if (!index.isValid() || static_cast<std::size_t>(index.column()) >= m_WidestValues.size())
  {
    return MeasureText(headerData(index.column(), Qt::Horizontal).toString());
  }
  if (m_Array != nullptr && m_Array->getArrayType() == zr::core::IArray::ArrayType::StringArray)
  {
    return m_WidestValues[index.column()];
  }
  return measureNumbers(m_WidestValues[index.column()], &m_Min, &m_Max);
}
