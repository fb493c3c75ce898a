#pragma once

#include "data_bridge/zr_contract/INodeGeometry3D.h"

namespace zr::core
{
// A hexahedral volume mesh; its faces, when present, are quads.
class HexahedralGeom : public INodeGeometry3D
{
public:
  static HexahedralGeom* Create(DataStructure& dataStructure, std::string name,
                                std::optional<IdType> parentId = {});

  Type getDataObjectType() const override;
  std::string getTypeName() const override;
  int getGeomType() const override;
  usize getNumberOfVerticesPerFace() const override;
  usize getNumberOfVerticesPerCell() const override;

protected:
  HexahedralGeom(DataStructure& dataStructure, std::string name);
  HexahedralGeom(const HexahedralGeom&) = default;
  std::shared_ptr<DataObject> shallowCopy() const override;
};
} // namespace zr::core
