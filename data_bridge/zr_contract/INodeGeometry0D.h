#pragma once

#include "data_bridge/zr_contract/AttributeMatrix.h"
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/IGeometry.h"

namespace zr::core
{
// A geometry with an explicit vertex list: float32 coordinates, three components per vertex.
class INodeGeometry0D : public IGeometry
{
public:
  ~INodeGeometry0D() override = default;

  DataArray<float>* getVertices();
  const DataArray<float>* getVertices() const;
  std::optional<IdType> getVerticesId() const;
  void setVertices(std::optional<IdType> id);
  // Creates a {count} x {3} vertex array as a member and sets it.
  DataArray<float>* createVertices(usize count, const std::string& name = "SharedVertexList");
  usize getNumberOfVertices() const;

  AttributeMatrix* getVertexAttributeMatrix();
  const AttributeMatrix* getVertexAttributeMatrix() const;
  std::optional<IdType> getVertexAttributeMatrixId() const;
  void setVertexAttributeMatrix(std::optional<IdType> id);
  // Creates the vertex attribute matrix (tuple shape {vertex count}) as a member and sets it.
  AttributeMatrix* createVertexAttributeMatrix(const std::string& name = "Vertex Data");

protected:
  INodeGeometry0D(DataStructure& dataStructure, std::string name);
  INodeGeometry0D(const INodeGeometry0D&) = default;
  void remapIds(const std::map<IdType, IdType>& oldToNew) override;

  // Creates a uint64 connectivity array {count} x {verticesPerElement} as a member.
  DataArray<std::uint64_t>* createConnectivity(usize count, usize verticesPerElement,
                                               const std::string& name);
  AttributeMatrix* createElementMatrix(usize tupleCount, const std::string& name);

private:
  std::optional<IdType> m_VerticesId;
  std::optional<IdType> m_VertexAttributeMatrixId;
};
} // namespace zr::core
