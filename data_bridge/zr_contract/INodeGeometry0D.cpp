#include "data_bridge/zr_contract/INodeGeometry0D.h"

namespace zr::core
{
INodeGeometry0D::INodeGeometry0D(DataStructure& dataStructure, std::string name)
    : IGeometry(dataStructure, std::move(name))
{
}

DataArray<float>* INodeGeometry0D::getVertices()
{
  return getMemberAs<DataArray<float>>(m_VerticesId);
}

const DataArray<float>* INodeGeometry0D::getVertices() const
{
  return getMemberAs<DataArray<float>>(m_VerticesId);
}

std::optional<IdType> INodeGeometry0D::getVerticesId() const
{
  return m_VerticesId;
}

void INodeGeometry0D::setVertices(std::optional<IdType> id)
{
  m_VerticesId = id;
}

DataArray<float>* INodeGeometry0D::createVertices(usize count, const std::string& name)
{
  DataStructure* dataStructure = getDataStructure();
  if (dataStructure == nullptr)
  {
    return nullptr;
  }
  DataArray<float>* vertices = DataArray<float>::Create(*dataStructure, name, {count}, {3}, getId(), 0.0f);
  if (vertices != nullptr)
  {
    m_VerticesId = vertices->getId();
  }
  return vertices;
}

usize INodeGeometry0D::getNumberOfVertices() const
{
  const DataArray<float>* vertices = getVertices();
  return vertices == nullptr ? 0 : vertices->getNumberOfTuples();
}

AttributeMatrix* INodeGeometry0D::getVertexAttributeMatrix()
{
  return getMemberAs<AttributeMatrix>(m_VertexAttributeMatrixId);
}

const AttributeMatrix* INodeGeometry0D::getVertexAttributeMatrix() const
{
  return getMemberAs<AttributeMatrix>(m_VertexAttributeMatrixId);
}

std::optional<IdType> INodeGeometry0D::getVertexAttributeMatrixId() const
{
  return m_VertexAttributeMatrixId;
}

void INodeGeometry0D::setVertexAttributeMatrix(std::optional<IdType> id)
{
  m_VertexAttributeMatrixId = id;
}

AttributeMatrix* INodeGeometry0D::createVertexAttributeMatrix(const std::string& name)
{
  AttributeMatrix* matrix = createElementMatrix(getNumberOfVertices(), name);
  if (matrix != nullptr)
  {
    m_VertexAttributeMatrixId = matrix->getId();
  }
  return matrix;
}

void INodeGeometry0D::remapIds(const std::map<IdType, IdType>& oldToNew)
{
  RemapId(m_VerticesId, oldToNew);
  RemapId(m_VertexAttributeMatrixId, oldToNew);
}

DataArray<std::uint64_t>* INodeGeometry0D::createConnectivity(usize count, usize verticesPerElement,
                                                              const std::string& name)
{
  DataStructure* dataStructure = getDataStructure();
  if (dataStructure == nullptr)
  {
    return nullptr;
  }
  return DataArray<std::uint64_t>::Create(*dataStructure, name, {count}, {verticesPerElement}, getId(), 0);
}

AttributeMatrix* INodeGeometry0D::createElementMatrix(usize tupleCount, const std::string& name)
{
  DataStructure* dataStructure = getDataStructure();
  if (dataStructure == nullptr)
  {
    return nullptr;
  }
  return AttributeMatrix::Create(*dataStructure, name, {tupleCount}, getId());
}
} // namespace zr::core
