#include "spreadsheets/StringArrayToStringFunction.h"

#include "data_bridge/zr_contract/StringArray.h"

StringArrayToStringFunction::StringArrayToStringFunction(std::shared_ptr<zr::core::StringArray> array)
    : m_Array(std::move(array))
{
}

QString StringArrayToStringFunction::toString(unsigned long index, const VXSpreadsheetModel::NotationType&,
                                              int) const
{
  const std::vector<std::string>& values = m_Array->values();
  if (index >= values.size())
  {
    return {};
  }
  return QString::fromStdString(values[index]);
}

QString StringArrayToStringFunction::toString(unsigned long tuple, unsigned long component,
                                              const VXSpreadsheetModel::NotationType& notation,
                                              int precision) const
{
  const auto components = static_cast<unsigned long>(m_Array->getNumberOfComponents());
  return toString(components * tuple + component, notation, precision);
}
