#include "data_bridge/zr_contract/INodeGeometry3D.h"

namespace zr::core
{
INodeGeometry3D::INodeGeometry3D(DataStructure& dataStructure, std::string name)
    : INodeGeometry2D(dataStructure, std::move(name))
{
}

DataArray<std::uint64_t>* INodeGeometry3D::getPolyhedra()
{
  return getMemberAs<DataArray<std::uint64_t>>(m_PolyhedraId);
}

const DataArray<std::uint64_t>* INodeGeometry3D::getPolyhedra() const
{
  return getMemberAs<DataArray<std::uint64_t>>(m_PolyhedraId);
}

std::optional<IdType> INodeGeometry3D::getPolyhedraId() const
{
  return m_PolyhedraId;
}

void INodeGeometry3D::setPolyhedra(std::optional<IdType> id)
{
  m_PolyhedraId = id;
}

DataArray<std::uint64_t>* INodeGeometry3D::createPolyhedra(usize count, const std::string& name)
{
  DataArray<std::uint64_t>* array = createConnectivity(count, getNumberOfVerticesPerCell(), name);
  if (array != nullptr)
  {
    m_PolyhedraId = array->getId();
  }
  return array;
}

usize INodeGeometry3D::getNumberOfPolyhedra() const
{
  const DataArray<std::uint64_t>* array = getPolyhedra();
  return array == nullptr ? 0 : array->getNumberOfTuples();
}

AttributeMatrix* INodeGeometry3D::getPolyhedraAttributeMatrix()
{
  return getMemberAs<AttributeMatrix>(m_PolyhedraAttributeMatrixId);
}

const AttributeMatrix* INodeGeometry3D::getPolyhedraAttributeMatrix() const
{
  return getMemberAs<AttributeMatrix>(m_PolyhedraAttributeMatrixId);
}

std::optional<IdType> INodeGeometry3D::getPolyhedraAttributeMatrixId() const
{
  return m_PolyhedraAttributeMatrixId;
}

void INodeGeometry3D::setPolyhedraAttributeMatrix(std::optional<IdType> id)
{
  m_PolyhedraAttributeMatrixId = id;
}

AttributeMatrix* INodeGeometry3D::createPolyhedraAttributeMatrix(const std::string& name)
{
  AttributeMatrix* matrix = createElementMatrix(getNumberOfPolyhedra(), name);
  if (matrix != nullptr)
  {
    m_PolyhedraAttributeMatrixId = matrix->getId();
  }
  return matrix;
}

void INodeGeometry3D::remapIds(const std::map<IdType, IdType>& oldToNew)
{
  INodeGeometry2D::remapIds(oldToNew);
  RemapId(m_PolyhedraId, oldToNew);
  RemapId(m_PolyhedraAttributeMatrixId, oldToNew);
}

usize INodeGeometry3D::getNumberOfCells() const
{
  return getNumberOfPolyhedra();
}
} // namespace zr::core
