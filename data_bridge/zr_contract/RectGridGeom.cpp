#include "data_bridge/zr_contract/RectGridGeom.h"

#include <algorithm>

namespace zr::core
{
namespace
{
usize CellsAlong(const DataArray<float>* bounds)
{
  if (bounds == nullptr)
  {
    return 0;
  }
  const usize count = bounds->getNumberOfTuples();
  return count > 0 ? count - 1 : 0;
}
} // namespace

RectGridGeom* RectGridGeom::Create(DataStructure& dataStructure, std::string name,
                                   std::optional<IdType> parentId)
{
  std::shared_ptr<RectGridGeom> geometry(new RectGridGeom(dataStructure, std::move(name)));
  return dataStructure.insert(geometry, parentId) ? geometry.get() : nullptr;
}

RectGridGeom::RectGridGeom(DataStructure& dataStructure, std::string name)
    : IGridGeometry(dataStructure, std::move(name))
{
}

DataObject::Type RectGridGeom::getDataObjectType() const
{
  return Type::RectGridGeom;
}

std::string RectGridGeom::getTypeName() const
{
  return "RectGridGeom";
}

int RectGridGeom::getGeomType() const
{
  return static_cast<int>(GeomType::RectGrid);
}

std::array<usize, 3> RectGridGeom::getDimensions() const
{
  return {CellsAlong(getXBounds()), CellsAlong(getYBounds()), CellsAlong(getZBounds())};
}

bool RectGridGeom::createBounds(const std::vector<float>& xBounds, const std::vector<float>& yBounds,
                                const std::vector<float>& zBounds)
{
  DataStructure* dataStructure = getDataStructure();
  if (dataStructure == nullptr)
  {
    return false;
  }
  const auto make = [&](const std::string& name, const std::vector<float>& values) -> std::optional<IdType>
  {
    DataArray<float>* array = DataArray<float>::Create(*dataStructure, name, {values.size()}, {1}, getId());
    if (array == nullptr)
    {
      return std::nullopt;
    }
    std::copy(values.begin(), values.end(), array->getInMemoryStore()->data());
    return array->getId();
  };
  const std::optional<IdType> x = make("X Bounds", xBounds);
  const std::optional<IdType> y = make("Y Bounds", yBounds);
  const std::optional<IdType> z = make("Z Bounds", zBounds);
  setBounds(x, y, z);
  return x.has_value() && y.has_value() && z.has_value();
}

void RectGridGeom::setBounds(std::optional<IdType> xBoundsId, std::optional<IdType> yBoundsId,
                             std::optional<IdType> zBoundsId)
{
  m_XBoundsId = xBoundsId;
  m_YBoundsId = yBoundsId;
  m_ZBoundsId = zBoundsId;
}

DataArray<float>* RectGridGeom::getXBounds() const
{
  return getMemberAs<DataArray<float>>(m_XBoundsId);
}

DataArray<float>* RectGridGeom::getYBounds() const
{
  return getMemberAs<DataArray<float>>(m_YBoundsId);
}

DataArray<float>* RectGridGeom::getZBounds() const
{
  return getMemberAs<DataArray<float>>(m_ZBoundsId);
}

std::shared_ptr<DataArray<float>> RectGridGeom::getSharedXBounds() const
{
  return getSharedMemberAs<DataArray<float>>(m_XBoundsId);
}

std::shared_ptr<DataArray<float>> RectGridGeom::getSharedYBounds() const
{
  return getSharedMemberAs<DataArray<float>>(m_YBoundsId);
}

std::shared_ptr<DataArray<float>> RectGridGeom::getSharedZBounds() const
{
  return getSharedMemberAs<DataArray<float>>(m_ZBoundsId);
}

std::optional<IdType> RectGridGeom::getXBoundsId() const
{
  return m_XBoundsId;
}

std::optional<IdType> RectGridGeom::getYBoundsId() const
{
  return m_YBoundsId;
}

std::optional<IdType> RectGridGeom::getZBoundsId() const
{
  return m_ZBoundsId;
}

std::shared_ptr<DataObject> RectGridGeom::shallowCopy() const
{
  return std::shared_ptr<DataObject>(new RectGridGeom(*this));
}

void RectGridGeom::remapIds(const std::map<IdType, IdType>& oldToNew)
{
  IGridGeometry::remapIds(oldToNew);
  RemapId(m_XBoundsId, oldToNew);
  RemapId(m_YBoundsId, oldToNew);
  RemapId(m_ZBoundsId, oldToNew);
}
} // namespace zr::core
