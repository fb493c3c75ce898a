#include "data_bridge/zr_contract/IGridGeometry.h"

namespace zr::core
{
IGridGeometry::IGridGeometry(DataStructure& dataStructure, std::string name)
    : IGeometry(dataStructure, std::move(name))
{
}

usize IGridGeometry::getNumberOfCells() const
{
  // Dimensions read from a file can be anything: a count that does not fit is no count at all.
  const std::array<usize, 3> dims = getDimensions();
  return CheckedShapeProduct({dims[0], dims[1], dims[2]}).value_or(0);
}

AttributeMatrix* IGridGeometry::getCellData()
{
  return getMemberAs<AttributeMatrix>(m_CellDataId);
}

const AttributeMatrix* IGridGeometry::getCellData() const
{
  return getMemberAs<AttributeMatrix>(m_CellDataId);
}

std::optional<IdType> IGridGeometry::getCellDataId() const
{
  return m_CellDataId;
}

void IGridGeometry::setCellData(std::optional<IdType> id)
{
  m_CellDataId = id;
}

AttributeMatrix* IGridGeometry::createCellData(const std::string& name)
{
  DataStructure* dataStructure = getDataStructure();
  if (dataStructure == nullptr)
  {
    return nullptr;
  }
  const std::array<usize, 3> dims = getDimensions();
  AttributeMatrix* matrix =
      AttributeMatrix::Create(*dataStructure, name, {dims[2], dims[1], dims[0]}, getId());
  if (matrix != nullptr)
  {
    m_CellDataId = matrix->getId();
  }
  return matrix;
}

void IGridGeometry::remapIds(const std::map<IdType, IdType>& oldToNew)
{
  RemapId(m_CellDataId, oldToNew);
}
} // namespace zr::core
