#pragma once

#include "spreadsheets/IArrayToStringFunctor.h"

#include "data_bridge/zr_contract/NeighborList.h"

#include <QStringLiteral>

#include <memory>

/**
 * @brief Elements of a neighbour list: a tuple is a list, a component a position in it. Positions
 * past the end of a shorter list are blank cells.
 */
template<class T>
class NeighborListArrayToStringFunction : public IArrayToStringFunctor
{
public:
  explicit NeighborListArrayToStringFunction(std::shared_ptr<zr::core::NeighborList<T>> list)
      : m_List(std::move(list))
      , m_MaxListSize(VXSpreadsheetModel::GetMaxListSize(m_List))
  {
  }

  // A flat index means nothing for lists of different lengths.
  QString toString(unsigned long, const VXSpreadsheetModel::NotationType&, int) const override
  {
    return QStringLiteral("INVALID");
  }

  QString toString(unsigned long tuple, unsigned long component,
                   const VXSpreadsheetModel::NotationType& notation, int precision) const override
  {
    bool ok = false;
    const T value = m_List->getValue(static_cast<int>(tuple), static_cast<int>(component), ok);
    if (!ok)
    {
      return {};
    }
    return QString::number(static_cast<double>(value), VXSpreadsheetModel::FormatCharacter(notation),
                           precision);
  }

  unsigned long maxListSize() const { return m_MaxListSize; }

private:
  std::shared_ptr<zr::core::NeighborList<T>> m_List;
  unsigned long m_MaxListSize = 0;
};
