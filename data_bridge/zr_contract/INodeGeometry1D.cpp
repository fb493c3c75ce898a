#include "data_bridge/zr_contract/INodeGeometry1D.h"

namespace zr::core
{
INodeGeometry1D::INodeGeometry1D(DataStructure& dataStructure, std::string name)
    : INodeGeometry0D(dataStructure, std::move(name))
{
}

DataArray<std::uint64_t>* INodeGeometry1D::getEdges()
{
  return getMemberAs<DataArray<std::uint64_t>>(m_EdgesId);
}

const DataArray<std::uint64_t>* INodeGeometry1D::getEdges() const
{
  return getMemberAs<DataArray<std::uint64_t>>(m_EdgesId);
}

std::optional<IdType> INodeGeometry1D::getEdgesId() const
{
  return m_EdgesId;
}

void INodeGeometry1D::setEdges(std::optional<IdType> id)
{
  m_EdgesId = id;
}

DataArray<std::uint64_t>* INodeGeometry1D::createEdges(usize count, const std::string& name)
{
  DataArray<std::uint64_t>* array = createConnectivity(count, 2, name);
  if (array != nullptr)
  {
    m_EdgesId = array->getId();
  }
  return array;
}

usize INodeGeometry1D::getNumberOfEdges() const
{
  const DataArray<std::uint64_t>* array = getEdges();
  return array == nullptr ? 0 : array->getNumberOfTuples();
}

AttributeMatrix* INodeGeometry1D::getEdgeAttributeMatrix()
{
  return getMemberAs<AttributeMatrix>(m_EdgeAttributeMatrixId);
}

const AttributeMatrix* INodeGeometry1D::getEdgeAttributeMatrix() const
{
  return getMemberAs<AttributeMatrix>(m_EdgeAttributeMatrixId);
}

std::optional<IdType> INodeGeometry1D::getEdgeAttributeMatrixId() const
{
  return m_EdgeAttributeMatrixId;
}

void INodeGeometry1D::setEdgeAttributeMatrix(std::optional<IdType> id)
{
  m_EdgeAttributeMatrixId = id;
}

AttributeMatrix* INodeGeometry1D::createEdgeAttributeMatrix(const std::string& name)
{
  AttributeMatrix* matrix = createElementMatrix(getNumberOfEdges(), name);
  if (matrix != nullptr)
  {
    m_EdgeAttributeMatrixId = matrix->getId();
  }
  return matrix;
}

void INodeGeometry1D::remapIds(const std::map<IdType, IdType>& oldToNew)
{
  INodeGeometry0D::remapIds(oldToNew);
  RemapId(m_EdgesId, oldToNew);
  RemapId(m_EdgeAttributeMatrixId, oldToNew);
}
} // namespace zr::core
