#pragma once

#include "data_bridge/zr_contract/INodeGeometry2D.h"

namespace zr::core
{
// A quadrilateral surface mesh.
class QuadGeom : public INodeGeometry2D
{
public:
  static QuadGeom* Create(DataStructure& dataStructure, std::string name,
                          std::optional<IdType> parentId = {});

  Type getDataObjectType() const override;
  std::string getTypeName() const override;
  int getGeomType() const override;
  // One cell per face.
  usize getNumberOfCells() const override;
  usize getNumberOfVerticesPerFace() const override;

protected:
  QuadGeom(DataStructure& dataStructure, std::string name);
  QuadGeom(const QuadGeom&) = default;
  std::shared_ptr<DataObject> shallowCopy() const override;
};
} // namespace zr::core
