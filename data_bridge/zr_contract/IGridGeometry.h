#pragma once

#include "data_bridge/zr_contract/AttributeMatrix.h"
#include "data_bridge/zr_contract/IGeometry.h"

#include <array>

namespace zr::core
{
// A geometry of cells on a structured grid. Dimensions count cells in X, Y, Z; the cell attribute
// matrix has the tuple shape {Z, Y, X}.
class IGridGeometry : public IGeometry
{
public:
  ~IGridGeometry() override = default;

  virtual std::array<usize, 3> getDimensions() const = 0;
  usize getNumberOfCells() const override;

  AttributeMatrix* getCellData();
  const AttributeMatrix* getCellData() const;
  std::optional<IdType> getCellDataId() const;
  void setCellData(std::optional<IdType> id);
  // Creates the cell attribute matrix as a member, with tuple shape {Z, Y, X}, and sets it.
  AttributeMatrix* createCellData(const std::string& name = "Cell Data");

protected:
  IGridGeometry(DataStructure& dataStructure, std::string name);
  IGridGeometry(const IGridGeometry&) = default;
  void remapIds(const std::map<IdType, IdType>& oldToNew) override;

private:
  std::optional<IdType> m_CellDataId;
};
} // namespace zr::core
