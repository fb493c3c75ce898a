#pragma once

#include "data_bridge/zr_contract/INodeGeometry0D.h"

namespace zr::core
{
// Adds an edge list: uint64 vertex indices, two per edge.
class INodeGeometry1D : public INodeGeometry0D
{
public:
  ~INodeGeometry1D() override = default;

  DataArray<std::uint64_t>* getEdges();
  const DataArray<std::uint64_t>* getEdges() const;
  std::optional<IdType> getEdgesId() const;
  void setEdges(std::optional<IdType> id);
  DataArray<std::uint64_t>* createEdges(usize count, const std::string& name = "SharedEdgeList");
  usize getNumberOfEdges() const;

  AttributeMatrix* getEdgeAttributeMatrix();
  const AttributeMatrix* getEdgeAttributeMatrix() const;
  std::optional<IdType> getEdgeAttributeMatrixId() const;
  void setEdgeAttributeMatrix(std::optional<IdType> id);
  AttributeMatrix* createEdgeAttributeMatrix(const std::string& name = "Edge Data");

protected:
  INodeGeometry1D(DataStructure& dataStructure, std::string name);
  INodeGeometry1D(const INodeGeometry1D&) = default;
  void remapIds(const std::map<IdType, IdType>& oldToNew) override;

private:
  std::optional<IdType> m_EdgesId;
  std::optional<IdType> m_EdgeAttributeMatrixId;
};
} // namespace zr::core
