#pragma once

#include "spreadsheets/IArrayToStringFunctor.h"

#include "data_bridge/zr_contract/DataArray.h"

#include <memory>

/**
 * @brief Elements of a numeric or boolean array. Every type goes through a double, so all types
 * share one format path (an int of 1234567 reads "1.23457e+06" with Auto and precision 6).
 */
template<class T>
class DataArrayToStringFunction : public IArrayToStringFunctor
{
public:
  explicit DataArrayToStringFunction(std::shared_ptr<zr::core::DataArray<T>> array)
      : m_Array(std::move(array))
  {
  }

  QString toString(unsigned long index, const VXSpreadsheetModel::NotationType& notation,
                   int precision) const override
  {
    const zr::core::DataArray<T>& array = *m_Array;
    // operator[] const reads through the store and throws when the array has none.
    const double value = static_cast<double>(array[index]);
    return QString::number(value, VXSpreadsheetModel::FormatCharacter(notation), precision);
  }

  QString toString(unsigned long tuple, unsigned long component,
                   const VXSpreadsheetModel::NotationType& notation, int precision) const override
  {
    const auto components = static_cast<unsigned long>(m_Array->getNumberOfComponents());
    return toString(components * tuple + component, notation, precision);
  }

private:
  std::shared_ptr<zr::core::DataArray<T>> m_Array;
};
