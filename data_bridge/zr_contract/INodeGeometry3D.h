#pragma once

#include "data_bridge/zr_contract/INodeGeometry2D.h"

namespace zr::core
{
// Adds a polyhedra list: uint64 vertex indices, getNumberOfVerticesPerCell() per cell.
class INodeGeometry3D : public INodeGeometry2D
{
public:
  ~INodeGeometry3D() override = default;

  virtual usize getNumberOfVerticesPerCell() const = 0;

  DataArray<std::uint64_t>* getPolyhedra();
  const DataArray<std::uint64_t>* getPolyhedra() const;
  std::optional<IdType> getPolyhedraId() const;
  void setPolyhedra(std::optional<IdType> id);
  DataArray<std::uint64_t>* createPolyhedra(usize count, const std::string& name = "SharedPolyhedronList");
  usize getNumberOfPolyhedra() const;

  AttributeMatrix* getPolyhedraAttributeMatrix();
  const AttributeMatrix* getPolyhedraAttributeMatrix() const;
  std::optional<IdType> getPolyhedraAttributeMatrixId() const;
  void setPolyhedraAttributeMatrix(std::optional<IdType> id);
  AttributeMatrix* createPolyhedraAttributeMatrix(const std::string& name = "Cell Data");

  usize getNumberOfCells() const override;

protected:
  INodeGeometry3D(DataStructure& dataStructure, std::string name);
  INodeGeometry3D(const INodeGeometry3D&) = default;
  void remapIds(const std::map<IdType, IdType>& oldToNew) override;

private:
  std::optional<IdType> m_PolyhedraId;
  std::optional<IdType> m_PolyhedraAttributeMatrixId;
};
} // namespace zr::core
