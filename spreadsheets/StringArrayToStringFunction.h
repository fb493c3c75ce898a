#pragma once

#include "spreadsheets/IArrayToStringFunctor.h"

#include <memory>

namespace zr::core
{
class StringArray;
}

/**
 * @brief Elements of a string array, as UTF-8; notation and precision do not apply.
 */
class StringArrayToStringFunction : public IArrayToStringFunctor
{
public:
  explicit StringArrayToStringFunction(std::shared_ptr<zr::core::StringArray> array);

  QString toString(unsigned long index, const VXSpreadsheetModel::NotationType& notation,
                   int precision) const override;
  QString toString(unsigned long tuple, unsigned long component,
                   const VXSpreadsheetModel::NotationType& notation, int precision) const override;

private:
  std::shared_ptr<zr::core::StringArray> m_Array;
};
