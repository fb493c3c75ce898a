#include "data_bridge/CVVtkBridge.h"

#include "data_bridge/CVArray.h"
#include "data_bridge/CVImplicitArray.h"
#include "data_bridge/StructuredGridCellIdFunctor.h"
#include "data_bridge/ZRVtkLibConstants.h"
#include "data_bridge/ZRVtkObjectName.h"

#include "data_bridge/zr_contract/AttributeMatrix.h"
#include "data_bridge/zr_contract/BaseGroup.h"
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/EdgeGeom.h"
#include "data_bridge/zr_contract/GeometryReferenceCheck.h"
#include "data_bridge/zr_contract/HexahedralGeom.h"
#include "data_bridge/zr_contract/IArray.h"
#include "data_bridge/zr_contract/IGeometry.h"
#include "data_bridge/zr_contract/ImageGeom.h"
#include "data_bridge/zr_contract/QuadGeom.h"
#include "data_bridge/zr_contract/RectGridGeom.h"
#include "data_bridge/zr_contract/TetrahedralGeom.h"
#include "data_bridge/zr_contract/TriangleGeom.h"
#include "data_bridge/zr_contract/VertexGeom.h"

#include <vtkAOSDataArrayTemplate.h>
#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkImageData.h>
#include <vtkInformation.h>
#include <vtkInformationIntegerVectorKey.h>
#include <vtkInformationStringKey.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkRectilinearGrid.h>
#include <vtkUnstructuredGrid.h>

#include <fmt/format.h>

#include <iostream>
#include <limits>

namespace CV::VtkBridge
{
using namespace zr::core;

namespace
{
template<typename T>
vtkSmartPointer<vtkDataArray> wrapTyped(const std::shared_ptr<DataObject>& object,
                                        const std::vector<int>& tupleShape)
{
  auto* dataArray = dynamic_cast<DataArray<T>*>(object.get());
  if (dataArray == nullptr)
  {
    return nullptr;
  }
  if (!dataArray->getDataFormat().empty())
  {
    return nullptr; // out of core: not available by address
  }
  auto array = vtkSmartPointer<CV::Array<T>>::New();
  array->MoveDataStoreFromZorelibDataArray(dataArray);
  if (!array->GetDataStore())
  {
    return nullptr;
  }
  array->GetInformation()->Set(TupleShapeKey(), tupleShape.data(), static_cast<int>(tupleShape.size()));
  return array;
}

void findGeometries(BaseGroup* group, std::vector<std::shared_ptr<IGeometry>>& found)
{
  if (group == nullptr)
  {
    return;
  }
  for (const auto& [id, object] : *group)
  {
    if (auto geometry = std::dynamic_pointer_cast<IGeometry>(object))
    {
      found.push_back(geometry); // geometries nested inside a geometry are not looked for
    }
    else if (auto* childGroup = dynamic_cast<BaseGroup*>(object.get()))
    {
      findGeometries(childGroup, found);
    }
  }
}

std::vector<IdType> keysOf(const AttributeMatrix* matrix)
{
  return matrix == nullptr ? std::vector<IdType>{} : matrix->getDataMap().getKeys();
}

// Why a geometry has no dataset, or what of it is left out. The bridge passes the collected lines on
// to the output pane; without a collector they go to standard output. The two lines of long standing
// (multiple parents, wrong tuple counts) go to standard output in any case.
class WrapMessages
{
public:
  explicit WrapMessages(std::vector<std::string>* messages)
      : m_Messages(messages)
  {
  }
  void add(const std::string& message)
  {
    std::cout << message << std::endl;
    collect(message);
  }
  void report(const std::string& message)
  {
    if (m_Messages == nullptr)
    {
      std::cout << message << std::endl;
    }
    collect(message);
  }
  void noDataSet(const std::string& geometryName, const std::string& reason)
  {
    report(fmt::format("The geometry '{}' has no dataset: {}", geometryName, reason));
  }

private:
  void collect(const std::string& message)
  {
    if (m_Messages != nullptr)
    {
      m_Messages->push_back(message);
    }
  }

  std::vector<std::string>* m_Messages;
};

// Connectivity is copied: the host stores unsigned indices and VTK wants its own signed ids. Every id
// is checked against the vertex count in the same pass, so that no filter reads past the points; the
// first one out of range is named in `problem` and no cells are returned.
vtkSmartPointer<vtkCellArray> copyConnectivity(DataArray<std::uint64_t>* list, int verticesPerCell,
                                               usize vertexCount, const char* listName, std::string& problem)
{
  auto* store = list->getDataStore();
  const usize count = store->getNumberOfTuples() * store->getNumberOfComponents();
  vtkNew<vtkAOSDataArrayTemplate<long long>> connectivity;
  connectivity->SetNumberOfComponents(1);
  connectivity->SetNumberOfTuples(static_cast<vtkIdType>(count));
  long long* out = connectivity->GetPointer(0);
  usize badIndex = count;
  if (auto* plain = dynamic_cast<DataStore<std::uint64_t>*>(store))
  {
    const std::uint64_t* in = plain->data();
    for (usize i = 0; i < count; ++i)
    {
      out[i] = static_cast<long long>(in[i]);
      badIndex = in[i] >= vertexCount && badIndex == count ? i : badIndex;
    }
  }
  else
  {
    for (usize i = 0; i < count; ++i)
    {
      const std::uint64_t value = store->getValue(i);
      out[i] = static_cast<long long>(value);
      badIndex = value >= vertexCount && badIndex == count ? i : badIndex;
    }
  }
  if (badIndex != count)
  {
    // Ids at or above 2^63 are negative ones of a signed writer, and are shown as such.
    problem = fmt::format("its {} holds the vertex id {} (cell {}), but there are only {} vertices", listName,
                          out[badIndex], badIndex / static_cast<usize>(verticesPerCell), vertexCount);
    return nullptr;
  }
  auto cells = vtkSmartPointer<vtkCellArray>::New();
  cells->Use64BitStorage();
  cells->SetData(verticesPerCell, connectivity);
  return cells;
}

bool usableList(IDataArray* list)
{
  return list != nullptr && list->getDataFormat().empty() && list->getIDataStore() != nullptr;
}

void addAttributeArrays(WrapMessages& messages, DataStructure& dataStructure, const std::vector<IdType>& ids,
                        vtkDataSetAttributes* attributes, vtkIdType expectedTuples, const char* arrayKind,
                        const char* countKind)
{
  for (IdType id : ids)
  {
    vtkSmartPointer<vtkDataArray> array = WrapDataArray(dataStructure, id);
    if (array == nullptr)
    {
      continue;
    }
    const int numComponents = array->GetNumberOfComponents();
    const vtkIdType tupleCount = numComponents == 0 ? 0 : (array->GetMaxId() + 1) / numComponents;
    if (tupleCount != expectedTuples)
    {
      messages.add(fmt::format("{} Array '{}' has Tuple Count of {} but the Geometry {} count is {}",
                               arrayKind, array->GetName(), tupleCount, countKind, expectedTuples));
      continue;
    }
    if (const std::shared_ptr<DataObject> object = dataStructure.getSharedData(id))
    {
      const std::vector<DataPath> paths = object->getDataPaths();
      if (!paths.empty())
      {
        array->GetInformation()->Set(DataPathKey(), paths.front().toString("/").c_str());
      }
    }
    attributes->AddArray(array);
    if (numComponents == 1)
    {
      attributes->SetActiveScalars(array->GetName());
    }
    else if (numComponents == 3)
    {
      attributes->SetActiveVectors(array->GetName());
    }
  }
}

// A structured grid of these many cells per axis fits VTK's int dimensions and vtkIdType counts.
bool fitsVtkGrid(const std::array<usize, 3>& cells)
{
  usize points = 1;
  for (usize extent : cells)
  {
    if (extent >= static_cast<usize>(std::numeric_limits<int>::max()) ||
        __builtin_mul_overflow(points, extent + 1, &points))
    {
      return false;
    }
  }
  return points <= static_cast<usize>(std::numeric_limits<vtkIdType>::max());
}

std::string dimensionsText(const std::array<usize, 3>& dims)
{
  return fmt::format("{} x {} x {}", dims[0], dims[1], dims[2]);
}

// Why a connectivity list of the geometry's own kind cannot give cells; empty when it can.
std::string unusableListReason(IDataArray* list, const char* listName)
{
  if (list == nullptr)
  {
    return fmt::format("it has no {}", listName);
  }
  return fmt::format("its {} is not in memory", listName);
}

vtkSmartPointer<vtkDataSet> createDataSet(const std::shared_ptr<IGeometry>& geometry, WrapMessages& messages)
{
  if (geometry == nullptr)
  {
    return nullptr;
  }
  const std::string& name = geometry->getName();
  // A reference to an object of the wrong kind would be read as something it is not.
  const std::vector<std::string> problems = CheckGeometryReferences(*geometry);
  if (!problems.empty())
  {
    for (const std::string& problem : problems)
    {
      messages.noDataSet(name, problem);
    }
    return nullptr;
  }
  vtkSmartPointer<vtkDataSet> result;
  vtkIdType cellCount = 0;
  vtkIdType pointCount = 0;

  if (auto* image = dynamic_cast<ImageGeom*>(geometry.get()))
  {
    const auto dims = image->getDimensions();
    if (!fitsVtkGrid(dims))
    {
      messages.noDataSet(name, fmt::format("its dimensions {} are too large to draw", dimensionsText(dims)));
      return nullptr;
    }
    auto imageData = vtkSmartPointer<vtkImageData>::New();
    ZRVtk::SetObjectName(imageData, name);
    imageData->SetDimensions(static_cast<int>(dims[0] + 1), static_cast<int>(dims[1] + 1),
                             static_cast<int>(dims[2] + 1));
    cellCount = static_cast<vtkIdType>(image->getNumberOfCells());
    const auto spacing = image->getSpacing();
    const auto origin = image->getOrigin();
    imageData->SetSpacing(spacing[0], spacing[1], spacing[2]);
    imageData->SetOrigin(origin[0], origin[1], origin[2]);
    result = imageData;
  }
  else if (auto* rectGrid = dynamic_cast<RectGridGeom*>(geometry.get()))
  {
    const std::shared_ptr<DataArray<float>> bounds[3] = {
        rectGrid->getSharedXBounds(), rectGrid->getSharedYBounds(), rectGrid->getSharedZBounds()};
    const char* axisNames[3] = {"X", "Y", "Z"};
    for (int axis = 0; axis < 3; ++axis)
    {
      if (!usableList(bounds[axis].get()) || bounds[axis]->getNumberOfTuples() == 0)
      {
        const std::string what = fmt::format("{} bounds", axisNames[axis]);
        messages.noDataSet(name, bounds[axis] != nullptr && bounds[axis]->getNumberOfTuples() == 0
                                     ? fmt::format("its {} are empty", what)
                                     : unusableListReason(bounds[axis].get(), what.c_str()));
        return nullptr;
      }
    }
    const auto dims = rectGrid->getDimensions();
    if (!fitsVtkGrid(dims))
    {
      messages.noDataSet(name, fmt::format("its dimensions {} are too large to draw", dimensionsText(dims)));
      return nullptr;
    }
    auto grid = vtkSmartPointer<vtkRectilinearGrid>::New();
    ZRVtk::SetObjectName(grid, name);
    grid->SetDimensions(static_cast<int>(dims[0] + 1), static_cast<int>(dims[1] + 1),
                        static_cast<int>(dims[2] + 1));
    cellCount = static_cast<vtkIdType>(rectGrid->getNumberOfCells());
    const char* boundNames[3] = {"X Bounds CV Array", "Y Bounds CV Array", "Z Bounds CV Array"};
    vtkSmartPointer<vtkDataArray> coordinates[3];
    for (int axis = 0; axis < 3; ++axis)
    {
      auto array = vtkSmartPointer<CV::Array<float>>::New();
      array->MoveDataStoreFromZorelibDataArray(bounds[axis].get());
      ZRVtk::SetObjectName(array, boundNames[axis]);
      coordinates[axis] = array;
    }
    grid->SetXCoordinates(coordinates[0]);
    grid->SetYCoordinates(coordinates[1]);
    grid->SetZCoordinates(coordinates[2]);
    result = grid;
  }

  // Node geometries: every level of the class chain contributes, and the deepest that succeeds wins.
  auto unstructuredGrid = vtkSmartPointer<vtkUnstructuredGrid>::New();
  auto polyData = vtkSmartPointer<vtkPolyData>::New();
  ZRVtk::SetObjectName(unstructuredGrid, name);
  ZRVtk::SetObjectName(polyData, name);

  auto* node0D = dynamic_cast<INodeGeometry0D*>(geometry.get());
  // Connectivity is only read over points it can index.
  usize vertexCount = 0;
  if (node0D != nullptr)
  {
    DataArray<float>* vertices = node0D->getVertices();
    if (!usableList(vertices))
    {
      messages.noDataSet(name, unusableListReason(vertices, "vertex list"));
      return nullptr;
    }
    auto coordinates = vtkSmartPointer<CV::Array<float>>::New();
    coordinates->MoveDataStoreFromZorelibDataArray(vertices);
    vtkNew<vtkPoints> points;
    points->SetData(coordinates);
    unstructuredGrid->SetPoints(points);
    polyData->SetPoints(points);

    vertexCount = vertices->getNumberOfTuples();
    pointCount = static_cast<vtkIdType>(vertexCount);
    vtkNew<vtkAOSDataArrayTemplate<long long>> ids;
    ids->SetNumberOfComponents(1);
    ids->SetNumberOfTuples(pointCount);
    for (vtkIdType i = 0; i < pointCount; ++i)
    {
      ids->SetValue(i, i);
    }
    vtkNew<vtkCellArray> cells;
    cells->Use64BitStorage();
    cells->SetData(1, ids);
    // Vertex cells go on the grid only: the vertex polydata is drawn through its points.
    unstructuredGrid->SetCells(VTK_VERTEX, cells);
    result = polyData;
  }
  // The connectivity list that gives a kind its cells (edges, faces or polyhedra, by the depth of the
  // geometry's class); without it the kind's cells are missing from the dataset.
  const int depth = dynamic_cast<INodeGeometry3D*>(geometry.get()) != nullptr   ? 3
                    : dynamic_cast<INodeGeometry2D*>(geometry.get()) != nullptr ? 2
                    : dynamic_cast<INodeGeometry1D*>(geometry.get()) != nullptr ? 1
                                                                                : 0;
  const auto ownList = [&](int listDepth, IDataArray* list, const char* listName)
  {
    if (depth == listDepth && !usableList(list))
    {
      messages.report(fmt::format("The geometry '{}' is drawn without its cells: {}", name,
                                  unusableListReason(list, listName)));
    }
  };
  std::string problem;
  if (auto* node1D = dynamic_cast<INodeGeometry1D*>(geometry.get()))
  {
    DataArray<std::uint64_t>* edges = node1D->getEdges();
    ownList(1, edges, "edge list");
    if (usableList(edges))
    {
      auto cells = copyConnectivity(edges, 2, vertexCount, "edge list", problem);
      if (cells == nullptr)
      {
        messages.noDataSet(name, problem);
        return nullptr;
      }
      unstructuredGrid->SetCells(VTK_LINE, cells);
      polyData->SetLines(cells);
      cellCount = static_cast<vtkIdType>(edges->getNumberOfTuples());
      result = polyData;
    }
  }
  if (auto* node2D = dynamic_cast<INodeGeometry2D*>(geometry.get()))
  {
    DataArray<std::uint64_t>* faces = node2D->getFaces();
    const usize perFace = node2D->getNumberOfVerticesPerFace();
    ownList(2, faces, "face list");
    if (usableList(faces) && (perFace == 3 || perFace == 4))
    {
      auto cells = copyConnectivity(faces, static_cast<int>(perFace), vertexCount, "face list", problem);
      if (cells == nullptr)
      {
        messages.noDataSet(name, problem);
        return nullptr;
      }
      unstructuredGrid->SetCells(perFace == 3 ? VTK_TRIANGLE : VTK_QUAD, cells);
      polyData->SetPolys(cells);
      cellCount = static_cast<vtkIdType>(faces->getNumberOfTuples());
      result = polyData;
    }
  }
  if (auto* node3D = dynamic_cast<INodeGeometry3D*>(geometry.get()))
  {
    DataArray<std::uint64_t>* polyhedra = node3D->getPolyhedra();
    const usize perCell = node3D->getNumberOfVerticesPerCell();
    ownList(3, polyhedra, "polyhedron list");
    if (usableList(polyhedra) && (perCell == 4 || perCell == 8))
    {
      auto cells =
          copyConnectivity(polyhedra, static_cast<int>(perCell), vertexCount, "polyhedron list", problem);
      if (cells == nullptr)
      {
        messages.noDataSet(name, problem);
        return nullptr;
      }
      unstructuredGrid->SetCells(perCell == 4 ? VTK_TETRA : VTK_HEXAHEDRON, cells);
      cellCount = static_cast<vtkIdType>(polyhedra->getNumberOfTuples());
      result = unstructuredGrid;
    }
  }

  if (result == nullptr)
  {
    return nullptr;
  }
  if (pointCount == 0)
  {
    pointCount = result->GetNumberOfPoints();
  }

  DataStructure* dataStructure = geometry->getDataStructure();
  if (dataStructure == nullptr)
  {
    return result;
  }
  const auto [cellIds, pointIds] = GetCellAndPointDataIds(geometry);
  addAttributeArrays(messages, *dataStructure, cellIds, result->GetCellData(), cellCount, "Cell", "cell");
  addAttributeArrays(messages, *dataStructure, pointIds, result->GetPointData(), pointCount, "Point",
                     "Point");
  return result;
}
} // namespace

vtkInformationIntegerVectorKey* TupleShapeKey()
{
  static vtkInformationIntegerVectorKey* s_Key =
      vtkInformationIntegerVectorKey::MakeKey("IntegerVector", "TupleShape", -1);
  return s_Key;
}

vtkInformationStringKey* DataPathKey()
{
  static vtkInformationStringKey* s_Key = vtkInformationStringKey::MakeKey("DataPath", "ZRVtkBridge");
  return s_Key;
}

std::string GetDataPath(vtkDataArray* array)
{
  vtkInformation* info = array != nullptr ? array->GetInformation() : nullptr;
  if (info == nullptr || !info->Has(DataPathKey()))
  {
    return {};
  }
  return info->Get(DataPathKey());
}

vtkSmartPointer<vtkDataArray> WrapDataArray(const std::shared_ptr<DataObject>& object)
{
  auto* array = dynamic_cast<IArray*>(object.get());
  if (array == nullptr)
  {
    return nullptr;
  }
  std::vector<int> tupleShape;
  for (usize extent : array->getTupleShape())
  {
    tupleShape.push_back(static_cast<int>(extent));
  }
  vtkSmartPointer<vtkDataArray> wrapped;
  // Signed types first, then unsigned, then floating point; the first cast that holds decides.
  (wrapped = wrapTyped<std::int8_t>(object, tupleShape)) ||
      (wrapped = wrapTyped<std::int16_t>(object, tupleShape)) ||
      (wrapped = wrapTyped<std::int32_t>(object, tupleShape)) ||
      (wrapped = wrapTyped<std::int64_t>(object, tupleShape)) ||
      (wrapped = wrapTyped<std::uint8_t>(object, tupleShape)) ||
      (wrapped = wrapTyped<std::uint16_t>(object, tupleShape)) ||
      (wrapped = wrapTyped<std::uint32_t>(object, tupleShape)) ||
      (wrapped = wrapTyped<std::uint64_t>(object, tupleShape)) ||
      (wrapped = wrapTyped<float>(object, tupleShape)) || (wrapped = wrapTyped<double>(object, tupleShape));
  return wrapped;
}

vtkSmartPointer<vtkDataArray> WrapDataArray(DataStructure& dataStructure, IdType id)
{
  return WrapDataArray(dataStructure.getSharedData(id));
}

std::vector<std::shared_ptr<IGeometry>> FindGeometry(std::shared_ptr<DataStructure>& dataStructure)
{
  std::vector<std::shared_ptr<IGeometry>> found;
  if (dataStructure == nullptr)
  {
    return found;
  }
  for (const auto& [id, object] : *dataStructure)
  {
    if (auto geometry = std::dynamic_pointer_cast<IGeometry>(object))
    {
      found.push_back(geometry);
    }
    else if (auto* group = dynamic_cast<BaseGroup*>(object.get()))
    {
      findGeometries(group, found);
    }
  }
  return found;
}

std::shared_ptr<IGeometry> FindGeometry(std::shared_ptr<DataStructure>& dataStructure,
                                        const std::string& name)
{
  for (const auto& geometry : FindGeometry(dataStructure))
  {
    if (geometry->getName() == name)
    {
      return geometry;
    }
  }
  return nullptr;
}

std::pair<std::vector<IdType>, std::vector<IdType>>
GetCellAndPointDataIds(const std::shared_ptr<IGeometry>& geometry)
{
  std::pair<std::vector<IdType>, std::vector<IdType>> ids;
  if (geometry == nullptr)
  {
    return ids;
  }
  // Membership of an attribute matrix decides between point and cell data, never the tuple count.
  switch (geometry->getGeomType())
  {
  case 0:
  case 1:
    ids.first = keysOf(dynamic_cast<IGridGeometry&>(*geometry).getCellData());
    break;
  case 2:
    ids.second = keysOf(dynamic_cast<INodeGeometry0D&>(*geometry).getVertexAttributeMatrix());
    break;
  case 3:
  {
    auto& edges = dynamic_cast<INodeGeometry1D&>(*geometry);
    ids.first = keysOf(edges.getEdgeAttributeMatrix());
    ids.second = keysOf(edges.getVertexAttributeMatrix());
    break;
  }
  case 4:
  case 5:
  {
    auto& faces = dynamic_cast<INodeGeometry2D&>(*geometry);
    ids.first = keysOf(faces.getFaceAttributeMatrix());
    ids.second = keysOf(faces.getVertexAttributeMatrix());
    break;
  }
  case 6:
  case 7:
  {
    auto& cells = dynamic_cast<INodeGeometry3D&>(*geometry);
    ids.first = keysOf(cells.getPolyhedraAttributeMatrix());
    ids.second = keysOf(cells.getVertexAttributeMatrix());
    break;
  }
  default:
    break; // unknown kinds have no attribute arrays
  }
  return ids;
}

template<class GeometryT>
vtkSmartPointer<vtkDataSet> CreateFromGeom(const std::shared_ptr<GeometryT>& geometry)
{
  WrapMessages messages(nullptr);
  return createDataSet(std::static_pointer_cast<IGeometry>(geometry), messages);
}

template vtkSmartPointer<vtkDataSet> CreateFromGeom<ImageGeom>(const std::shared_ptr<ImageGeom>&);
template vtkSmartPointer<vtkDataSet> CreateFromGeom<RectGridGeom>(const std::shared_ptr<RectGridGeom>&);
template vtkSmartPointer<vtkDataSet> CreateFromGeom<VertexGeom>(const std::shared_ptr<VertexGeom>&);
template vtkSmartPointer<vtkDataSet> CreateFromGeom<EdgeGeom>(const std::shared_ptr<EdgeGeom>&);
template vtkSmartPointer<vtkDataSet> CreateFromGeom<TriangleGeom>(const std::shared_ptr<TriangleGeom>&);
template vtkSmartPointer<vtkDataSet> CreateFromGeom<QuadGeom>(const std::shared_ptr<QuadGeom>&);
template vtkSmartPointer<vtkDataSet> CreateFromGeom<TetrahedralGeom>(const std::shared_ptr<TetrahedralGeom>&);
template vtkSmartPointer<vtkDataSet> CreateFromGeom<HexahedralGeom>(const std::shared_ptr<HexahedralGeom>&);

std::shared_ptr<WrappedGeometry> WrapGeometry(const std::shared_ptr<IGeometry>& geometry)
{
  auto wrapped = std::make_shared<WrappedGeometry>();
  WrapMessages messages(&wrapped->m_Messages);
  if (geometry == nullptr)
  {
    return wrapped;
  }
  const std::vector<DataPath> paths = geometry->getDataPaths();
  if (paths.size() > 1)
  {
    messages.add("Zorelib Geometry has multiple parents. This is not a supported configuration.");
    return wrapped;
  }
  if (paths.empty())
  {
    messages.add("Zorelib Geometry does not have a parent path? This cannot be good.");
    return wrapped;
  }
  wrapped->m_DataPath = paths.front();

  if (auto image = std::dynamic_pointer_cast<ImageGeom>(geometry))
  {
    wrapped->m_DataSet = createDataSet(image, messages);
  }
  else if (auto rectGrid = std::dynamic_pointer_cast<RectGridGeom>(geometry))
  {
    wrapped->m_DataSet = createDataSet(rectGrid, messages);
  }
  else if (auto vertex = std::dynamic_pointer_cast<VertexGeom>(geometry))
  {
    wrapped->m_DataSet = createDataSet(vertex, messages);
  }
  else if (auto edge = std::dynamic_pointer_cast<EdgeGeom>(geometry))
  {
    wrapped->m_DataSet = createDataSet(edge, messages);
  }
  else if (auto triangle = std::dynamic_pointer_cast<TriangleGeom>(geometry))
  {
    wrapped->m_DataSet = createDataSet(triangle, messages);
  }
  else if (auto quad = std::dynamic_pointer_cast<QuadGeom>(geometry))
  {
    wrapped->m_DataSet = createDataSet(quad, messages);
  }
  else if (auto tetrahedral = std::dynamic_pointer_cast<TetrahedralGeom>(geometry))
  {
    wrapped->m_DataSet = createDataSet(tetrahedral, messages);
  }
  else if (auto hexahedral = std::dynamic_pointer_cast<HexahedralGeom>(geometry))
  {
    wrapped->m_DataSet = createDataSet(hexahedral, messages);
  }
  return wrapped;
}

void AddOriginalCellIdsArray(vtkDataSet* dataSet)
{
  if (dataSet == nullptr || !(dataSet->IsA("vtkImageData") || dataSet->IsA("vtkRectilinearGrid")))
  {
    return;
  }
  const vtkIdType cellCount = dataSet->GetNumberOfCells();
  StructuredGridCellIdFunctor functor;
  if (auto* image = vtkImageData::SafeDownCast(dataSet))
  {
    image->GetDimensions(functor.m_Dimensions.data());
  }
  else if (auto* grid = vtkRectilinearGrid::SafeDownCast(dataSet))
  {
    grid->GetDimensions(functor.m_Dimensions.data());
  }
  auto array = vtkSmartPointer<ImplicitArray<StructuredGridCellIdFunctor>>::New();
  array->SetBackend(functor);
  array->SetShape(1, cellCount);
  array->SetName(ZRVtkLib::ZorelibOriginCellIndexes);
  dataSet->GetCellData()->AddArray(array);
}
} // namespace CV::VtkBridge
