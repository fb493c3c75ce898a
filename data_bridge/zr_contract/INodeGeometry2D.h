#pragma once

#include "data_bridge/zr_contract/INodeGeometry1D.h"

namespace zr::core
{
// Adds a face list: uint64 vertex indices, getNumberOfVerticesPerFace() per face.
class INodeGeometry2D : public INodeGeometry1D
{
public:
  ~INodeGeometry2D() override = default;

  virtual usize getNumberOfVerticesPerFace() const = 0;

  DataArray<std::uint64_t>* getFaces();
  const DataArray<std::uint64_t>* getFaces() const;
  std::optional<IdType> getFacesId() const;
  void setFaces(std::optional<IdType> id);
  DataArray<std::uint64_t>* createFaces(usize count, const std::string& name = "SharedFaceList");
  usize getNumberOfFaces() const;

  AttributeMatrix* getFaceAttributeMatrix();
  const AttributeMatrix* getFaceAttributeMatrix() const;
  std::optional<IdType> getFaceAttributeMatrixId() const;
  void setFaceAttributeMatrix(std::optional<IdType> id);
  AttributeMatrix* createFaceAttributeMatrix(const std::string& name = "Face Data");

protected:
  INodeGeometry2D(DataStructure& dataStructure, std::string name);
  INodeGeometry2D(const INodeGeometry2D&) = default;
  void remapIds(const std::map<IdType, IdType>& oldToNew) override;

private:
  std::optional<IdType> m_FacesId;
  std::optional<IdType> m_FaceAttributeMatrixId;
};
} // namespace zr::core
