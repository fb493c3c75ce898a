#pragma once

#include "data_bridge/zr_contract/INodeGeometry2D.h"

namespace zr::core
{
// A triangle surface mesh.
class TriangleGeom : public INodeGeometry2D
{
public:
  static TriangleGeom* Create(DataStructure& dataStructure, std::string name,
                              std::optional<IdType> parentId = {});

  Type getDataObjectType() const override;
  std::string getTypeName() const override;
  int getGeomType() const override;
  // One cell per face.
  usize getNumberOfCells() const override;
  usize getNumberOfVerticesPerFace() const override;

protected:
  TriangleGeom(DataStructure& dataStructure, std::string name);
  TriangleGeom(const TriangleGeom&) = default;
  std::shared_ptr<DataObject> shallowCopy() const override;
};
} // namespace zr::core
