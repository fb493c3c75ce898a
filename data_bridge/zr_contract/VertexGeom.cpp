#include "data_bridge/zr_contract/VertexGeom.h"

namespace zr::core
{
VertexGeom* VertexGeom::Create(DataStructure& dataStructure, std::string name, std::optional<IdType> parentId)
{
  std::shared_ptr<VertexGeom> geometry(new VertexGeom(dataStructure, std::move(name)));
  return dataStructure.insert(geometry, parentId) ? geometry.get() : nullptr;
}

VertexGeom::VertexGeom(DataStructure& dataStructure, std::string name)
    : INodeGeometry0D(dataStructure, std::move(name))
{
}

DataObject::Type VertexGeom::getDataObjectType() const
{
  return Type::VertexGeom;
}

std::string VertexGeom::getTypeName() const
{
  return "VertexGeom";
}

int VertexGeom::getGeomType() const
{
  return static_cast<int>(GeomType::Vertex);
}

std::shared_ptr<DataObject> VertexGeom::shallowCopy() const
{
  return std::shared_ptr<DataObject>(new VertexGeom(*this));
}

usize VertexGeom::getNumberOfCells() const
{
  return getNumberOfVertices();
}
} // namespace zr::core
