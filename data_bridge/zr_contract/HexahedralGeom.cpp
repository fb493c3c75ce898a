#include "data_bridge/zr_contract/HexahedralGeom.h"

namespace zr::core
{
HexahedralGeom* HexahedralGeom::Create(DataStructure& dataStructure, std::string name,
                                       std::optional<IdType> parentId)
{
  std::shared_ptr<HexahedralGeom> geometry(new HexahedralGeom(dataStructure, std::move(name)));
  return dataStructure.insert(geometry, parentId) ? geometry.get() : nullptr;
}

HexahedralGeom::HexahedralGeom(DataStructure& dataStructure, std::string name)
    : INodeGeometry3D(dataStructure, std::move(name))
{
}

DataObject::Type HexahedralGeom::getDataObjectType() const
{
  return Type::HexahedralGeom;
}

std::string HexahedralGeom::getTypeName() const
{
  return "HexahedralGeom";
}

int HexahedralGeom::getGeomType() const
{
  return static_cast<int>(GeomType::Hexahedral);
}

std::shared_ptr<DataObject> HexahedralGeom::shallowCopy() const
{
  return std::shared_ptr<DataObject>(new HexahedralGeom(*this));
}

usize HexahedralGeom::getNumberOfVerticesPerFace() const
{
  return 4;
}

usize HexahedralGeom::getNumberOfVerticesPerCell() const
{
  return 8;
}
} // namespace zr::core
