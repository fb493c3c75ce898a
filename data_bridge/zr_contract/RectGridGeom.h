#pragma once

#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/IGridGeometry.h"

#include <vector>

namespace zr::core
{
// A rectilinear grid: one array of cell boundaries per axis, each with (cells along the axis + 1)
// values.
class RectGridGeom : public IGridGeometry
{
public:
  static RectGridGeom* Create(DataStructure& dataStructure, std::string name,
                              std::optional<IdType> parentId = {});

  Type getDataObjectType() const override;
  std::string getTypeName() const override;
  int getGeomType() const override;

  // Cells per axis: boundary count minus one, 0 without bounds.
  std::array<usize, 3> getDimensions() const override;

  // Creates the three bounds arrays ("X Bounds", "Y Bounds", "Z Bounds") as members and sets them.
  bool createBounds(const std::vector<float>& xBounds, const std::vector<float>& yBounds,
                    const std::vector<float>& zBounds);
  void setBounds(std::optional<IdType> xBoundsId, std::optional<IdType> yBoundsId,
                 std::optional<IdType> zBoundsId);

  DataArray<float>* getXBounds() const;
  DataArray<float>* getYBounds() const;
  DataArray<float>* getZBounds() const;
  std::shared_ptr<DataArray<float>> getSharedXBounds() const;
  std::shared_ptr<DataArray<float>> getSharedYBounds() const;
  std::shared_ptr<DataArray<float>> getSharedZBounds() const;
  std::optional<IdType> getXBoundsId() const;
  std::optional<IdType> getYBoundsId() const;
  std::optional<IdType> getZBoundsId() const;

protected:
  RectGridGeom(DataStructure& dataStructure, std::string name);
  RectGridGeom(const RectGridGeom&) = default;
  std::shared_ptr<DataObject> shallowCopy() const override;
  void remapIds(const std::map<IdType, IdType>& oldToNew) override;

private:
  std::optional<IdType> m_XBoundsId;
  std::optional<IdType> m_YBoundsId;
  std::optional<IdType> m_ZBoundsId;
};
} // namespace zr::core
