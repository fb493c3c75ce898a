#include "data_bridge/zr_contract/TetrahedralGeom.h"

namespace zr::core
{
TetrahedralGeom* TetrahedralGeom::Create(DataStructure& dataStructure, std::string name,
                                         std::optional<IdType> parentId)
{
  std::shared_ptr<TetrahedralGeom> geometry(new TetrahedralGeom(dataStructure, std::move(name)));
  return dataStructure.insert(geometry, parentId) ? geometry.get() : nullptr;
}

TetrahedralGeom::TetrahedralGeom(DataStructure& dataStructure, std::string name)
    : INodeGeometry3D(dataStructure, std::move(name))
{
}

DataObject::Type TetrahedralGeom::getDataObjectType() const
{
  return Type::TetrahedralGeom;
}

std::string TetrahedralGeom::getTypeName() const
{
  return "TetrahedralGeom";
}

int TetrahedralGeom::getGeomType() const
{
  return static_cast<int>(GeomType::Tetrahedral);
}

std::shared_ptr<DataObject> TetrahedralGeom::shallowCopy() const
{
  return std::shared_ptr<DataObject>(new TetrahedralGeom(*this));
}

usize TetrahedralGeom::getNumberOfVerticesPerFace() const
{
  return 3;
}

usize TetrahedralGeom::getNumberOfVerticesPerCell() const
{
  return 4;
}
} // namespace zr::core
