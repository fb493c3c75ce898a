#include "data_bridge/zr_contract/EdgeGeom.h"

namespace zr::core
{
EdgeGeom* EdgeGeom::Create(DataStructure& dataStructure, std::string name, std::optional<IdType> parentId)
{
  std::shared_ptr<EdgeGeom> geometry(new EdgeGeom(dataStructure, std::move(name)));
  return dataStructure.insert(geometry, parentId) ? geometry.get() : nullptr;
}

EdgeGeom::EdgeGeom(DataStructure& dataStructure, std::string name)
    : INodeGeometry1D(dataStructure, std::move(name))
{
}

DataObject::Type EdgeGeom::getDataObjectType() const
{
  return Type::EdgeGeom;
}

std::string EdgeGeom::getTypeName() const
{
  return "EdgeGeom";
}

int EdgeGeom::getGeomType() const
{
  return static_cast<int>(GeomType::Edge);
}

std::shared_ptr<DataObject> EdgeGeom::shallowCopy() const
{
  return std::shared_ptr<DataObject>(new EdgeGeom(*this));
}

usize EdgeGeom::getNumberOfCells() const
{
  return getNumberOfEdges();
}
} // namespace zr::core
