#include "data_bridge/zr_contract/QuadGeom.h"

namespace zr::core
{
QuadGeom* QuadGeom::Create(DataStructure& dataStructure, std::string name, std::optional<IdType> parentId)
{
  std::shared_ptr<QuadGeom> geometry(new QuadGeom(dataStructure, std::move(name)));
  return dataStructure.insert(geometry, parentId) ? geometry.get() : nullptr;
}

QuadGeom::QuadGeom(DataStructure& dataStructure, std::string name)
    : INodeGeometry2D(dataStructure, std::move(name))
{
}

DataObject::Type QuadGeom::getDataObjectType() const
{
  return Type::QuadGeom;
}

std::string QuadGeom::getTypeName() const
{
  return "QuadGeom";
}

int QuadGeom::getGeomType() const
{
  return static_cast<int>(GeomType::Quad);
}

std::shared_ptr<DataObject> QuadGeom::shallowCopy() const
{
  return std::shared_ptr<DataObject>(new QuadGeom(*this));
}

usize QuadGeom::getNumberOfCells() const
{
  return getNumberOfFaces();
}

usize QuadGeom::getNumberOfVerticesPerFace() const
{
  return 4;
}
} // namespace zr::core
