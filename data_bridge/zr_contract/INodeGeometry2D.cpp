#include "data_bridge/zr_contract/INodeGeometry2D.h"

namespace zr::core
{
INodeGeometry2D::INodeGeometry2D(DataStructure& dataStructure, std::string name)
    : INodeGeometry1D(dataStructure, std::move(name))
{
}

DataArray<std::uint64_t>* INodeGeometry2D::getFaces()
{
  return getMemberAs<DataArray<std::uint64_t>>(m_FacesId);
}

const DataArray<std::uint64_t>* INodeGeometry2D::getFaces() const
{
  return getMemberAs<DataArray<std::uint64_t>>(m_FacesId);
}

std::optional<IdType> INodeGeometry2D::getFacesId() const
{
  return m_FacesId;
}

void INodeGeometry2D::setFaces(std::optional<IdType> id)
{
  m_FacesId = id;
}

DataArray<std::uint64_t>* INodeGeometry2D::createFaces(usize count, const std::string& name)
{
  DataArray<std::uint64_t>* array = createConnectivity(count, getNumberOfVerticesPerFace(), name);
  if (array != nullptr)
  {
    m_FacesId = array->getId();
  }
  return array;
}

usize INodeGeometry2D::getNumberOfFaces() const
{
  const DataArray<std::uint64_t>* array = getFaces();
  return array == nullptr ? 0 : array->getNumberOfTuples();
}

AttributeMatrix* INodeGeometry2D::getFaceAttributeMatrix()
{
  return getMemberAs<AttributeMatrix>(m_FaceAttributeMatrixId);
}

const AttributeMatrix* INodeGeometry2D::getFaceAttributeMatrix() const
{
  return getMemberAs<AttributeMatrix>(m_FaceAttributeMatrixId);
}

std::optional<IdType> INodeGeometry2D::getFaceAttributeMatrixId() const
{
  return m_FaceAttributeMatrixId;
}

void INodeGeometry2D::setFaceAttributeMatrix(std::optional<IdType> id)
{
  m_FaceAttributeMatrixId = id;
}

AttributeMatrix* INodeGeometry2D::createFaceAttributeMatrix(const std::string& name)
{
  AttributeMatrix* matrix = createElementMatrix(getNumberOfFaces(), name);
  if (matrix != nullptr)
  {
    m_FaceAttributeMatrixId = matrix->getId();
  }
  return matrix;
}

void INodeGeometry2D::remapIds(const std::map<IdType, IdType>& oldToNew)
{
  INodeGeometry1D::remapIds(oldToNew);
  RemapId(m_FacesId, oldToNew);
  RemapId(m_FaceAttributeMatrixId, oldToNew);
}
} // namespace zr::core
