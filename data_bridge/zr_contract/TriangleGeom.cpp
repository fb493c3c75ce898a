#include "data_bridge/zr_contract/TriangleGeom.h"

namespace zr::core
{
TriangleGeom* TriangleGeom::Create(DataStructure& dataStructure, std::string name,
                                   std::optional<IdType> parentId)
{
  std::shared_ptr<TriangleGeom> geometry(new TriangleGeom(dataStructure, std::move(name)));
  return dataStructure.insert(geometry, parentId) ? geometry.get() : nullptr;
}

TriangleGeom::TriangleGeom(DataStructure& dataStructure, std::string name)
    : INodeGeometry2D(dataStructure, std::move(name))
{
}

DataObject::Type TriangleGeom::getDataObjectType() const
{
  return Type::TriangleGeom;
}

std::string TriangleGeom::getTypeName() const
{
  return "TriangleGeom";
}

int TriangleGeom::getGeomType() const
{
  return static_cast<int>(GeomType::Triangle);
}

std::shared_ptr<DataObject> TriangleGeom::shallowCopy() const
{
  return std::shared_ptr<DataObject>(new TriangleGeom(*this));
}

usize TriangleGeom::getNumberOfCells() const
{
  return getNumberOfFaces();
}

usize TriangleGeom::getNumberOfVerticesPerFace() const
{
  return 3;
}
} // namespace zr::core
