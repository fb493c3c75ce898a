#include "spreadsheets/VXBasicSpreadsheetModel.h"

#include "spreadsheets/DataArrayToStringFunction.h"
#include "spreadsheets/NeighborListArrayToStringFunction.h"
#include "spreadsheets/StringArrayToStringFunction.h"
#include "spreadsheets/VXSpreadsheetArrayScan.h"
#include "spreadsheets/VXSpreadsheetTypeDispatch.h"

#include "data_bridge/zr_contract/StringArray.h"

#include <algorithm>
#include <stdexcept>

namespace
{
const char k_InvalidDataType[] = "VXBasicSpreadsheetModel::addArray Error: Invalid DataType";

// Columns an array adds: one per component, one per list position for a neighbour list.
unsigned long ColumnsOf(const std::shared_ptr<zr::core::IArray>& array)
{
  if (array->getArrayType() == zr::core::IArray::ArrayType::NeighborListArray)
  {
    return VXSpreadsheetModel::GetMaxListSize(std::dynamic_pointer_cast<zr::core::INeighborList>(array));
  }
  return static_cast<unsigned long>(array->getNumberOfComponents());
}
} // namespace

VXBasicSpreadsheetModel::VXBasicSpreadsheetModel(QObject* parent)
    : VXSpreadsheetModel(parent)
{
}

VXBasicSpreadsheetModel::~VXBasicSpreadsheetModel()
{
  for (IArrayToStringFunctor* functor : m_Functors)
  {
    delete functor;
  }
}

int VXBasicSpreadsheetModel::rowCount(const QModelIndex& parent) const
{
  if (parent.isValid())
  {
    return 0;
  }
  return windowed(tableRowCount());
}

int VXBasicSpreadsheetModel::columnCount(const QModelIndex& parent) const
{
  if (parent.isValid())
  {
    return 0;
  }
  return static_cast<int>(m_Columns.size());
}

QVariant VXBasicSpreadsheetModel::headerData(int section, Qt::Orientation orientation, int role) const
{
  if (role != Qt::DisplayRole)
  {
    return {};
  }
  if (section < 0)
  {
    return QString();
  }
  if (orientation == Qt::Vertical)
  {
    return section < rowCount() ? QString::number(m_RowOffset + static_cast<quint64>(section)) : QString();
  }
  if (static_cast<std::size_t>(section) >= m_Columns.size())
  {
    return QString();
  }
  const auto& [arrayIndex, component] = m_Columns[section];
  if (arrayIndex >= m_Arrays.size())
  {
    return QString();
  }
  const std::shared_ptr<zr::core::IArray>& array = m_Arrays[arrayIndex];
  const QString name = QString::fromStdString(array->getName());
  if (array->getArrayType() == zr::core::IArray::ArrayType::NeighborListArray)
  {
    // Walks all lists each time; headers are asked for rarely.
    if (GetMaxListSize(std::dynamic_pointer_cast<zr::core::INeighborList>(array)) > 0)
    {
      return name + QStringLiteral("_elem") + QString::number(component);
    }
    return name;
  }
  if (array->getNumberOfComponents() >= 2)
  {
    return name + QStringLiteral("_comp") + QString::number(component);
  }
  return name;
}

void VXBasicSpreadsheetModel::addArray(const std::shared_ptr<zr::core::IArray>& array,
                                       const std::vector<unsigned long>&, int, int,
                                       const std::vector<unsigned long>&)
{
  addArray(array);
}

void VXBasicSpreadsheetModel::addArray(const std::shared_ptr<zr::core::IArray>& array)
{
  if (array == nullptr)
  {
    return;
  }
  const int first = columnCount();
  const unsigned long columns = ColumnsOf(array);
  const bool addsColumns = columns > 0;
  if (addsColumns)
  {
    beginInsertColumns(QModelIndex(), first, first + static_cast<int>(columns) - 1);
  }
  const quint64 tuples = array->getNumberOfTuples();
  if (tuples > m_RowCount)
  {
    const int shownBefore = windowed(std::min(m_RowCount, m_RowLimit));
    const int shownAfter = windowed(std::min(tuples, m_RowLimit));
    if (shownAfter > shownBefore)
    {
      beginInsertRows(QModelIndex(), shownBefore, shownAfter - 1);
      m_RowCount = tuples;
      endInsertRows();
    }
    m_RowCount = tuples;
  }
  const unsigned long arrayIndex = m_Arrays.size();
  m_Arrays.push_back(array);
  for (unsigned long c = 0; c < columns; ++c)
  {
    m_Columns.emplace_back(arrayIndex, c);
  }

  IArrayToStringFunctor* functor = nullptr;
  switch (array->getArrayType())
  {
  case zr::core::IArray::ArrayType::StringArray:
    functor = new StringArrayToStringFunction(std::dynamic_pointer_cast<zr::core::StringArray>(array));
    break;
  case zr::core::IArray::ArrayType::DataArray:
    if (!VXSpreadsheetTypeDispatch::Run<true>(array->getDataType(),
                                              [&](auto tag)
                                              {
                                                using T = typename decltype(tag)::type;
                                                functor = new DataArrayToStringFunction<T>(
                                                    std::dynamic_pointer_cast<zr::core::DataArray<T>>(array));
                                              }))
    {
      throw std::runtime_error(k_InvalidDataType);
    }
    break;
  case zr::core::IArray::ArrayType::NeighborListArray:
    if (!VXSpreadsheetTypeDispatch::Run<false>(array->getDataType(),
                                               [&](auto tag)
                                               {
                                                 using T = typename decltype(tag)::type;
                                                 functor = new NeighborListArrayToStringFunction<T>(
                                                     std::dynamic_pointer_cast<zr::core::NeighborList<T>>(
                                                         array));
                                               }))
    {
      throw std::runtime_error(k_InvalidDataType);
    }
    break;
  }
  m_Functors.push_back(functor);
  scanArray(array, columns);
  if (addsColumns)
  {
    endInsertColumns();
  }
}

void VXBasicSpreadsheetModel::scanArray(const std::shared_ptr<zr::core::IArray>& array, unsigned long columns)
{
  // Only the rows a table can show are looked at.
  const quint64 rows = std::min<quint64>(array->getNumberOfTuples(), m_RowLimit);
  VXSpreadsheetArrayScan::Result scan;
  switch (array->getArrayType())
  {
  case zr::core::IArray::ArrayType::StringArray:
  {
    const auto strings = std::dynamic_pointer_cast<zr::core::StringArray>(array);
    scan.widestValue = GetMaxStringWidthValue(strings);
    scan.ranges = {{0.0, 0.0}};
    break;
  }
  case zr::core::IArray::ArrayType::DataArray:
    VXSpreadsheetTypeDispatch::Run<true>(array->getDataType(),
                                         [&](auto tag)
                                         {
                                           using T = typename decltype(tag)::type;
                                           const auto& typed =
                                               dynamic_cast<const zr::core::DataArray<T>&>(*array);
                                           scan = VXSpreadsheetArrayScan::ScanDataArray(typed, rows);
                                         });
    break;
  case zr::core::IArray::ArrayType::NeighborListArray:
    VXSpreadsheetTypeDispatch::Run<false>(
        array->getDataType(),
        [&](auto tag)
        {
          using T = typename decltype(tag)::type;
          const auto& typed = dynamic_cast<const zr::core::NeighborList<T>&>(*array);
          scan = VXSpreadsheetArrayScan::ScanNeighborList(typed, rows, columns);
        });
    break;
  }
  m_ComponentRanges.push_back(std::move(scan.ranges));
  m_WidestValues.push_back(scan.widestValue);
}

void VXBasicSpreadsheetModel::removeColumn(int column)
{
  if (column < 0 || static_cast<std::size_t>(column) >= m_Columns.size() || m_Arrays.empty())
  {
    return;
  }
  if (m_Columns.size() == 1)
  {
    clear();
    return;
  }
  beginRemoveColumns(QModelIndex(), column, column);
  const unsigned long arrayIndex = m_Columns[column].first;
  m_Columns.erase(m_Columns.begin() + column);
  const bool stillUsed = std::any_of(m_Columns.begin(), m_Columns.end(),
                                     [arrayIndex](const auto& entry) { return entry.first == arrayIndex; });
  if (!stillUsed)
  {
    // Columns of one array are contiguous and in array order, so the later ones start here.
    for (std::size_t c = static_cast<std::size_t>(column); c < m_Columns.size(); ++c)
    {
      --m_Columns[c].first;
    }
    m_Arrays.erase(m_Arrays.begin() + static_cast<std::ptrdiff_t>(arrayIndex));
    delete m_Functors[arrayIndex];
    m_Functors.erase(m_Functors.begin() + static_cast<std::ptrdiff_t>(arrayIndex));
    m_ComponentRanges.erase(m_ComponentRanges.begin() + static_cast<std::ptrdiff_t>(arrayIndex));
    m_WidestValues.erase(m_WidestValues.begin() + static_cast<std::ptrdiff_t>(arrayIndex));
  }
  quint64 rows = 0;
  for (const auto& array : m_Arrays)
  {
    rows = std::max<quint64>(rows, array->getNumberOfTuples());
  }
  const int shownBefore = windowed(std::min(m_RowCount, m_RowLimit));
  const int shownAfter = windowed(std::min(rows, m_RowLimit));
  if (shownAfter < shownBefore)
  {
    beginRemoveRows(QModelIndex(), shownAfter, shownBefore - 1);
    m_RowCount = rows;
    endRemoveRows();
  }
  m_RowCount = rows;
  endRemoveColumns();
}

void VXBasicSpreadsheetModel::clear()
{
  beginResetModel();
  m_WidestValues.clear();
  m_RowCount = 0;
  m_Columns.clear();
  m_Arrays.clear();
  for (IArrayToStringFunctor* functor : m_Functors)
  {
    delete functor;
  }
  m_Functors.clear();
  m_ComponentRanges.clear();
  endResetModel();
}

bool VXBasicSpreadsheetModel::validIndex(const QModelIndex& index) const
{
  return index.isValid() && index.row() >= 0 && index.row() < rowCount() && index.column() >= 0 &&
         index.column() < columnCount();
}

QString VXBasicSpreadsheetModel::getValue(const QModelIndex& index) const
{
  if (!validIndex(index))
  {
    return {};
  }
  return textAt(m_RowOffset + static_cast<quint64>(index.row()), index.column());
}

QString VXBasicSpreadsheetModel::textAt(quint64 row, int column) const
{
  if (column < 0 || static_cast<std::size_t>(column) >= m_Columns.size() ||
      m_Arrays.size() != m_Functors.size())
  {
    return {};
  }
  const auto& [arrayIndex, component] = m_Columns[column];
  // Shorter arrays leave blank cells below their last tuple.
  if (arrayIndex >= m_Arrays.size() || row >= m_Arrays[arrayIndex]->getNumberOfTuples())
  {
    return {};
  }
  return m_Functors[arrayIndex]->toString(static_cast<unsigned long>(row), component, m_Notation,
                                          m_Precision);
}

quint64 VXBasicSpreadsheetModel::tableRowCount() const
{
  return std::min(m_RowCount, m_RowLimit);
}

quint64 VXBasicSpreadsheetModel::totalRowCount() const
{
  return m_RowCount;
}

quint64 VXBasicSpreadsheetModel::rowLimit() const
{
  return m_RowLimit;
}

void VXBasicSpreadsheetModel::setRowLimit(quint64 limit)
{
  beginResetModel();
  m_RowLimit = std::min<quint64>(std::max<quint64>(limit, 1), k_MaxRows);
  endResetModel();
}

std::size_t VXBasicSpreadsheetModel::arrayCount() const
{
  return m_Arrays.size();
}

const std::vector<std::array<double, 2>>&
VXBasicSpreadsheetModel::componentRanges(std::size_t arrayIndex) const
{
  static const std::vector<std::array<double, 2>> s_None;
  return arrayIndex < m_ComponentRanges.size() ? m_ComponentRanges[arrayIndex] : s_None;
}

double VXBasicSpreadsheetModel::widestValue(std::size_t arrayIndex) const
{
  return arrayIndex < m_WidestValues.size() ? m_WidestValues[arrayIndex] : 0.0;
}

double VXBasicSpreadsheetModel::columnMinimum(int column) const
{
  if (column < 0 || static_cast<std::size_t>(column) >= m_Columns.size())
  {
    return 0.0;
  }
  const auto& [arrayIndex, component] = m_Columns[column];
  const auto& ranges = componentRanges(arrayIndex);
  return component < ranges.size() ? ranges[component][0] : 0.0;
}

double VXBasicSpreadsheetModel::columnMaximum(int column) const
{
  if (column < 0 || static_cast<std::size_t>(column) >= m_Columns.size())
  {
    return 0.0;
  }
  const auto& [arrayIndex, component] = m_Columns[column];
  const auto& ranges = componentRanges(arrayIndex);
  return component < ranges.size() ? ranges[component][1] : 0.0;
}

double VXBasicSpreadsheetModel::widestMeasure(const QModelIndex& index) const
{
  const auto headerWidth = [this, &index]()
  { return static_cast<double>(MeasureText(headerData(index.column(), Qt::Horizontal).toString())); };
  if (!index.isValid() || m_Arrays.size() != m_ComponentRanges.size() ||
      static_cast<std::size_t>(index.column()) >= m_Columns.size())
  {
    return headerWidth();
  }
  const auto& [arrayIndex, component] = m_Columns[index.column()];
  if (arrayIndex >= m_WidestValues.size())
  {
    return headerWidth();
  }
  if (m_Arrays[arrayIndex]->getArrayType() == zr::core::IArray::ArrayType::StringArray)
  {
    return m_WidestValues[arrayIndex];
  }
  const std::vector<std::array<double, 2>>& ranges = m_ComponentRanges[arrayIndex];
  if (component < ranges.size())
  {
    return measureNumbers(m_WidestValues[arrayIndex], &ranges[component][0], &ranges[component][1]);
  }
  return measureNumbers(m_WidestValues[arrayIndex], nullptr, nullptr);
}
