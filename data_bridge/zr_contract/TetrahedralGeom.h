#pragma once

#include "data_bridge/zr_contract/INodeGeometry3D.h"

namespace zr::core
{
// A tetrahedral volume mesh; its faces, when present, are triangles.
class TetrahedralGeom : public INodeGeometry3D
{
public:
  static TetrahedralGeom* Create(DataStructure& dataStructure, std::string name,
                                 std::optional<IdType> parentId = {});

  Type getDataObjectType() const override;
  std::string getTypeName() const override;
  int getGeomType() const override;
  usize getNumberOfVerticesPerFace() const override;
  usize getNumberOfVerticesPerCell() const override;

protected:
  TetrahedralGeom(DataStructure& dataStructure, std::string name);
  TetrahedralGeom(const TetrahedralGeom&) = default;
  std::shared_ptr<DataObject> shallowCopy() const override;
};
} // namespace zr::core
