#pragma once

#include "data_bridge/zr_contract/INodeGeometry0D.h"

namespace zr::core
{
// A cloud of points; its vertex attribute matrix is its point data.
class VertexGeom : public INodeGeometry0D
{
public:
  static VertexGeom* Create(DataStructure& dataStructure, std::string name,
                            std::optional<IdType> parentId = {});

  Type getDataObjectType() const override;
  std::string getTypeName() const override;
  int getGeomType() const override;
  // One cell per vertex.
  usize getNumberOfCells() const override;

protected:
  VertexGeom(DataStructure& dataStructure, std::string name);
  VertexGeom(const VertexGeom&) = default;
  std::shared_ptr<DataObject> shallowCopy() const override;
};
} // namespace zr::core
