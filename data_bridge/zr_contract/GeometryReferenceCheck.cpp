#include "data_bridge/zr_contract/GeometryReferenceCheck.h"

#include "data_bridge/zr_contract/AttributeMatrix.h"
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/IGridGeometry.h"
#include "data_bridge/zr_contract/INodeGeometry3D.h"
#include "data_bridge/zr_contract/RectGridGeom.h"

#include <fmt/format.h>

namespace zr::core
{
namespace
{
// The kind of object one part of a geometry needs.
struct Expected
{
  bool attributeMatrix = false;
  DataType dataType = DataType::float32;
  usize components = 0;

  std::string describe() const
  {
    if (attributeMatrix)
    {
      return "an AttributeMatrix";
    }
    return fmt::format("a DataArray<{}> of {} component{}", DataTypeToString(dataType), components,
                       components == 1 ? "" : "s");
  }
};

Expected ArrayOf(DataType dataType, usize components)
{
  return {false, dataType, components};
}

Expected Matrix()
{
  return {true, DataType::float32, 0};
}

std::string WithArticle(const std::string& typeName)
{
  const bool vowel = !typeName.empty() && std::string("AEIOU").find(typeName.front()) != std::string::npos;
  return (vowel ? "an " : "a ") + typeName;
}

std::string Describe(const DataObject& object)
{
  if (const auto* array = dynamic_cast<const IDataArray*>(&object))
  {
    if (array->getIDataStore() == nullptr)
    {
      return fmt::format("{} without a store", WithArticle(array->getTypeName()));
    }
    const usize components = array->getNumberOfComponents();
    return fmt::format("{} of {} component{}", WithArticle(array->getTypeName()), components,
                       components == 1 ? "" : "s");
  }
  return WithArticle(object.getTypeName());
}

bool Matches(const DataObject& object, const Expected& expected)
{
  if (expected.attributeMatrix)
  {
    return dynamic_cast<const AttributeMatrix*>(&object) != nullptr;
  }
  const auto* array = dynamic_cast<const IDataArray*>(&object);
  return array != nullptr && array->getIDataStore() != nullptr && array->getDataType() == expected.dataType &&
         array->getNumberOfComponents() == expected.components;
}

void Check(const IGeometry& geometry, const char* part, const std::optional<IdType>& id,
           const Expected& expected, std::vector<std::string>& problems)
{
  if (!id.has_value())
  {
    return;
  }
  const DataStructure* dataStructure = geometry.getDataStructure();
  const DataObject* object = dataStructure == nullptr ? nullptr : dataStructure->getData(*id);
  if (object == nullptr)
  {
    problems.push_back(fmt::format("its {} refers to object {}, which does not exist", part, *id));
    return;
  }
  if (!Matches(*object, expected))
  {
    problems.push_back(fmt::format("its {} '{}' (object {}) is {}, where {} is needed", part,
                                   object->getName(), *id, Describe(*object), expected.describe()));
  }
}
} // namespace

std::vector<std::string> CheckGeometryReferences(const IGeometry& geometry)
{
  std::vector<std::string> problems;
  if (const auto* grid = dynamic_cast<const IGridGeometry*>(&geometry))
  {
    Check(geometry, "cell data", grid->getCellDataId(), Matrix(), problems);
  }
  if (const auto* rect = dynamic_cast<const RectGridGeom*>(&geometry))
  {
    Check(geometry, "X bounds", rect->getXBoundsId(), ArrayOf(DataType::float32, 1), problems);
    Check(geometry, "Y bounds", rect->getYBoundsId(), ArrayOf(DataType::float32, 1), problems);
    Check(geometry, "Z bounds", rect->getZBoundsId(), ArrayOf(DataType::float32, 1), problems);
  }
  if (const auto* node0 = dynamic_cast<const INodeGeometry0D*>(&geometry))
  {
    Check(geometry, "vertex list", node0->getVerticesId(), ArrayOf(DataType::float32, 3), problems);
    Check(geometry, "vertex data", node0->getVertexAttributeMatrixId(), Matrix(), problems);
  }
  if (const auto* node1 = dynamic_cast<const INodeGeometry1D*>(&geometry))
  {
    Check(geometry, "edge list", node1->getEdgesId(), ArrayOf(DataType::uint64, 2), problems);
    Check(geometry, "edge data", node1->getEdgeAttributeMatrixId(), Matrix(), problems);
  }
  if (const auto* node2 = dynamic_cast<const INodeGeometry2D*>(&geometry))
  {
    Check(geometry, "face list", node2->getFacesId(),
          ArrayOf(DataType::uint64, node2->getNumberOfVerticesPerFace()), problems);
    Check(geometry, "face data", node2->getFaceAttributeMatrixId(), Matrix(), problems);
  }
  if (const auto* node3 = dynamic_cast<const INodeGeometry3D*>(&geometry))
  {
    Check(geometry, "polyhedron list", node3->getPolyhedraId(),
          ArrayOf(DataType::uint64, node3->getNumberOfVerticesPerCell()), problems);
    Check(geometry, "polyhedron data", node3->getPolyhedraAttributeMatrixId(), Matrix(), problems);
  }
  return problems;
}
} // namespace zr::core
