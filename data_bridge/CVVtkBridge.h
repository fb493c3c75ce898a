#pragma once

#include "data_bridge/CVWrappedGeometry.h"
#include "data_bridge/zr_contract/DataType.h"

#include <vtkDataArray.h>
#include <vtkDataSet.h>
#include <vtkSmartPointer.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zr::core
{
class DataObject;
class DataStructure;
class IGeometry;
} // namespace zr::core

class vtkInformationIntegerVectorKey;
class vtkInformationStringKey;

/**
 * Builds VTK datasets over the geometries of a data structure without copying attribute arrays,
 * vertex coordinates or rectilinear bounds: each VTK array shares the host array's store.
 */
namespace CV::VtkBridge
{
std::shared_ptr<WrappedGeometry> WrapGeometry(const std::shared_ptr<zr::core::IGeometry>& geometry);

vtkSmartPointer<vtkDataArray> WrapDataArray(const std::shared_ptr<zr::core::DataObject>& object);
vtkSmartPointer<vtkDataArray> WrapDataArray(zr::core::DataStructure& dataStructure, zr::core::IdType id);

std::vector<std::shared_ptr<zr::core::IGeometry>>
FindGeometry(std::shared_ptr<zr::core::DataStructure>& dataStructure);
std::shared_ptr<zr::core::IGeometry> FindGeometry(std::shared_ptr<zr::core::DataStructure>& dataStructure,
                                                  const std::string& name);

// Ids of the cell arrays (first) and point arrays (second) of a geometry.
std::pair<std::vector<zr::core::IdType>, std::vector<zr::core::IdType>>
GetCellAndPointDataIds(const std::shared_ptr<zr::core::IGeometry>& geometry);

// One body serves all eight concrete geometry classes; the kind is found at run time.
template<class GeometryT>
vtkSmartPointer<vtkDataSet> CreateFromGeom(const std::shared_ptr<GeometryT>& geometry);

// Adds the identity cell-id array (no memory per cell) to an image or rectilinear grid.
void AddOriginalCellIdsArray(vtkDataSet* dataSet);

// The information key under which every wrapped array carries its host tuple shape.
vtkInformationIntegerVectorKey* TupleShapeKey();

// The information key under which every wrapped attribute array carries its host data path
// ("Sample/Grains/Cell Data/FeatureIds"), the name by which users and scripts address it.
vtkInformationStringKey* DataPathKey();
std::string GetDataPath(vtkDataArray* array);
} // namespace CV::VtkBridge
