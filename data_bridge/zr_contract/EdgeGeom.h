#pragma once

#include "data_bridge/zr_contract/INodeGeometry1D.h"

namespace zr::core
{
// Line segments between vertices.
class EdgeGeom : public INodeGeometry1D
{
public:
  static EdgeGeom* Create(DataStructure& dataStructure, std::string name,
                          std::optional<IdType> parentId = {});

  Type getDataObjectType() const override;
  std::string getTypeName() const override;
  int getGeomType() const override;
  // One cell per edge.
  usize getNumberOfCells() const override;

protected:
  EdgeGeom(DataStructure& dataStructure, std::string name);
  EdgeGeom(const EdgeGeom&) = default;
  std::shared_ptr<DataObject> shallowCopy() const override;
};
} // namespace zr::core
