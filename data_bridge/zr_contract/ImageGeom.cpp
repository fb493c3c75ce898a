#include "data_bridge/zr_contract/ImageGeom.h"

namespace zr::core
{
ImageGeom* ImageGeom::Create(DataStructure& dataStructure, std::string name, std::optional<IdType> parentId)
{
  std::shared_ptr<ImageGeom> geometry(new ImageGeom(dataStructure, std::move(name)));
  return dataStructure.insert(geometry, parentId) ? geometry.get() : nullptr;
}

ImageGeom::ImageGeom(DataStructure& dataStructure, std::string name)
    : IGridGeometry(dataStructure, std::move(name))
{
}

DataObject::Type ImageGeom::getDataObjectType() const
{
  return Type::ImageGeom;
}

std::string ImageGeom::getTypeName() const
{
  return "ImageGeom";
}

int ImageGeom::getGeomType() const
{
  return static_cast<int>(GeomType::Image);
}

std::array<usize, 3> ImageGeom::getDimensions() const
{
  return m_Dimensions;
}

void ImageGeom::setDimensions(const std::array<usize, 3>& dimensions)
{
  m_Dimensions = dimensions;
}

std::array<float, 3> ImageGeom::getSpacing() const
{
  return m_Spacing;
}

void ImageGeom::setSpacing(const std::array<float, 3>& spacing)
{
  m_Spacing = spacing;
}

std::array<float, 3> ImageGeom::getOrigin() const
{
  return m_Origin;
}

void ImageGeom::setOrigin(const std::array<float, 3>& origin)
{
  m_Origin = origin;
}

std::shared_ptr<DataObject> ImageGeom::shallowCopy() const
{
  return std::shared_ptr<DataObject>(new ImageGeom(*this));
}
} // namespace zr::core
