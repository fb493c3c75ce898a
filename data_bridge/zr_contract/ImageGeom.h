#pragma once

#include "data_bridge/zr_contract/IGridGeometry.h"

namespace zr::core
{
// A regular grid: dimensions in cells, spacing and origin.
class ImageGeom : public IGridGeometry
{
public:
  static ImageGeom* Create(DataStructure& dataStructure, std::string name,
                           std::optional<IdType> parentId = {});

  Type getDataObjectType() const override;
  std::string getTypeName() const override;
  int getGeomType() const override;

  std::array<usize, 3> getDimensions() const override;
  void setDimensions(const std::array<usize, 3>& dimensions);
  std::array<float, 3> getSpacing() const;
  void setSpacing(const std::array<float, 3>& spacing);
  std::array<float, 3> getOrigin() const;
  void setOrigin(const std::array<float, 3>& origin);

protected:
  ImageGeom(DataStructure& dataStructure, std::string name);
  ImageGeom(const ImageGeom&) = default;
  std::shared_ptr<DataObject> shallowCopy() const override;

private:
  std::array<usize, 3> m_Dimensions = {0, 0, 0};
  std::array<float, 3> m_Spacing = {1.0f, 1.0f, 1.0f};
  std::array<float, 3> m_Origin = {0.0f, 0.0f, 0.0f};
};
} // namespace zr::core
