#pragma once

#include "spreadsheets/VXSpreadsheetModel.h"

#include <QString>

/**
 * @brief Turns one element of a host array into the text a cell shows.
 */
class IArrayToStringFunctor
{
public:
  virtual ~IArrayToStringFunctor() = default;

  /** @brief The element at a flat index. */
  virtual QString toString(unsigned long index, const VXSpreadsheetModel::NotationType& notation,
                           int precision) const = 0;
  /** @brief The element at (tuple, component); for a neighbour list (list, position). */
  virtual QString toString(unsigned long tuple, unsigned long component,
                           const VXSpreadsheetModel::NotationType& notation, int precision) const = 0;
};
