#include "data_views/VXPointsRepPimpl.h"

#include "colour/VXCustomRangeDialog.h"
#include "colour/VXLUTEditor.h"
#include "colour/VXLookupTable.h"
#include "data_views/VXRepresentation.h"
#include "data_views/VXStateReading.h"
#include "data_views/VXUpdateHistogramCallback.h"
#include "data_views/ZRVtkModuleUtils.h"
#include "platform/ColorPresetsDialog.h"
#include "platform/ZRPreferences.h"
#include "views/VXVisualizationWidget.h"

#include <vtkActor.h>
#include <vtkAlgorithm.h>
#include <vtkCellData.h>
#include <vtkDataSet.h>
#include <vtkDataSetSurfaceFilter.h>
#include <vtkGeometryFilter.h>
#include <vtkPointData.h>
#include <vtkPolyData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkProperty2D.h>
#include <vtkQuadricClustering.h>
#include <vtkRenderer.h>
#include <vtkScalarBarActor.h>
#include <vtkScalarBarRepresentation.h>
#include <vtkScalarBarWidget.h>
#include <vtkTextProperty.h>

#include <algorithm>
#include <cmath>

using namespace ZRVtkModule::state;

namespace
{
const char* const k_PointSize = "point_size";
const char* const k_PointsAsSpheres = "render_points_as_spheres";
const char* const k_GenerateHistogramData = "generate_histogram_data";

constexpr int k_MaxPointSize = 1 << 20;

vtkPolyData* polyDataOf(vtkAlgorithmOutput* port)
{
  if (port == nullptr || port->GetProducer() == nullptr)
  {
    return nullptr;
  }
  return vtkPolyData::SafeDownCast(port->GetProducer()->GetOutputDataObject(port->GetIndex()));
}

} // namespace

VXPointsRepPimpl::VXPointsRepPimpl(VXRepresentation* owner, VXAbstractViewWidget* view)
    : VXOutlineRepPimpl(owner, view)
    , m_LookupTable(new VXLookupTable(this))
    , m_ScalarBarWidget(vtkSmartPointer<vtkScalarBarWidget>::New())
{
  ConfigureScalarBar(m_ScalarBarWidget);
  connectColorDialogs();
}

VXPointsRepPimpl::~VXPointsRepPimpl()
{
  m_ScalarBarWidget->SetEnabled(0);
  stopObservingProducerForHistogram();
  if (m_HistogramCallback != nullptr)
  {
    m_HistogramCallback->setRepresentation(nullptr);
  }
  delete m_ColorPresetsDialog.data();
  delete m_CustomRangeDialog.data();
  delete m_LUTEditor.data();
}

bool VXPointsRepPimpl::connectInput(vtkAlgorithmOutput* inputPort)
{
  if (m_InputPort == inputPort)
  {
    return false;
  }
  m_InputPort = inputPort;
  // Polygonal data is drawn as it is; other datasets through their outer surface.
  if (polyDataOf(inputPort) != nullptr)
  {
    m_GeometryFilter = nullptr;
    m_Mapper->SetInputConnection(inputPort);
  }
  else
  {
    m_GeometryFilter = vtkSmartPointer<vtkGeometryFilter>::New();
    m_GeometryFilter->SetInputConnection(inputPort);
    m_Mapper->SetInputConnection(m_GeometryFilter->GetOutputPort());
  }
  m_UniqueValues.clear();
  m_DecimationStale = true;
  observeProducerForHistogram();
  return true;
}

void VXPointsRepPimpl::initialize(vtkAlgorithmOutput* inputPort)
{
  VXOutlineRepPimpl::initialize(inputPort);
  setScalarBarVisibility(m_Colouring.m_ScalarBarVisible);
  if (m_UseDecimationOnInteraction)
  {
    decimateGeometry();
  }
}

void VXPointsRepPimpl::decimateGeometry()
{
  vtkDataSet* dataSet = inputDataSet();
  if (dataSet == nullptr)
  {
    return;
  }
  if (m_QuadricClustering == nullptr)
  {
    m_QuadricClustering = vtkSmartPointer<vtkQuadricClustering>::New();
  }
  if (vtkPolyData::SafeDownCast(dataSet) != nullptr)
  {
    m_QuadricClustering->SetInputConnection(m_InputPort);
  }
  else
  {
    // Other datasets are clustered from their outer surface, taken once here.
    vtkNew<vtkDataSetSurfaceFilter> surface;
    surface->SetInputData(dataSet);
    surface->Update();
    m_QuadricClustering->SetInputData(surface->GetOutput());
  }
  m_QuadricClustering->SetCopyCellData(1);
  m_QuadricClustering->SetNumberOfDivisions(m_DecimationDivisions[0], m_DecimationDivisions[1],
                                            m_DecimationDivisions[2]);
  m_QuadricClustering->SetUseInputPoints(m_UseInputPoints);
  m_QuadricClustering->SetUseFeatureEdges(m_UseFeatureEdges);
  m_QuadricClustering->SetUseFeaturePoints(m_UseFeaturePoints);
  m_QuadricClustering->SetUseInternalTriangles(m_UseInternalTriangles);
  m_QuadricClustering->Update();
  m_DecimationStale = false;
}

void VXPointsRepPimpl::trySetDecimatedDataSet()
{
  if (m_QuadricClustering == nullptr || m_DecimationStale)
  {
    return;
  }
  m_Mapper->SetInputConnection(m_QuadricClustering->GetOutputPort());
}

void VXPointsRepPimpl::trySetOriginalDataSet()
{
  if (m_InputPort == nullptr)
  {
    return;
  }
  m_Mapper->SetInputConnection(m_GeometryFilter != nullptr ? m_GeometryFilter->GetOutputPort()
                                                           : m_InputPort.Get());
}

vtkDataSet* VXPointsRepPimpl::inputDataSet() const
{
  if (m_InputPort == nullptr || m_InputPort->GetProducer() == nullptr)
  {
    return nullptr;
  }
  return vtkDataSet::SafeDownCast(m_InputPort->GetProducer()->GetOutputDataObject(m_InputPort->GetIndex()));
}

VXLookupTable* VXPointsRepPimpl::lookupTable() const
{
  return m_LookupTable;
}

vtkScalarBarWidget* VXPointsRepPimpl::scalarBarWidget() const
{
  return m_ScalarBarWidget;
}

vtkDataArray* VXPointsRepPimpl::activeDataArray() const
{
  return ZRVtkModule::utils::GetActiveDataArray(inputDataSet(), m_Colouring.m_ActiveArray);
}

bool VXPointsRepPimpl::isUsingSolidColor() const
{
  return m_Colouring.isUsingSolidColor();
}

void VXPointsRepPimpl::loadKeptRgbPreset()
{
  m_Colouring.loadKeptRgbPreset(*m_LookupTable);
}

void VXPointsRepPimpl::applySettings()
{
  VXOutlineRepPimpl::applySettings();
  vtkProperty* property = m_Actor->GetProperty();
  property->SetRepresentationToPoints();
  property->SetPointSize(static_cast<float>(m_PointSize));
  property->SetRenderPointsAsSpheres(m_RenderPointsAsSpheres);
  // The table starts from the kept preset; inversion and categories are applied on top.
  loadKeptRgbPreset();
  m_LookupTable->setNANColor(m_Colouring.m_NanColor);
  updateColoring();
}

std::array<double, 2> VXPointsRepPimpl::colorRange() const
{
  return m_Colouring.colorRange(activeDataArray());
}

const std::set<double>& VXPointsRepPimpl::uniqueValues()
{
  return m_Colouring.uniqueValues(activeDataArray(), m_UniqueValues);
}

void VXPointsRepPimpl::updateColoring()
{
  vtkDataSet* dataSet = inputDataSet();
  vtkDataArray* array = activeDataArray();
  if (isUsingSolidColor() || array == nullptr || array->GetName() == nullptr)
  {
    m_Mapper->ScalarVisibilityOff();
    m_ScalarBarWidget->SetEnabled(0);
    return;
  }
  const bool onPoints = dataSet->GetPointData()->GetArray(array->GetName()) == array;
  m_Mapper->ScalarVisibilityOn();
  m_Mapper->SetScalarMode(onPoints ? VTK_SCALAR_MODE_USE_POINT_FIELD_DATA
                                   : VTK_SCALAR_MODE_USE_CELL_FIELD_DATA);
  m_Mapper->SelectColorArray(array->GetName());
  const bool direct = m_Colouring.mapsDirectly(array);
  m_Mapper->SetColorMode(direct ? VTK_COLOR_MODE_DIRECT_SCALARS : VTK_COLOR_MODE_MAP_SCALARS);

  const QString title = m_Colouring.applyToLookupTable(array, *m_LookupTable, m_UniqueValues);
  vtkColorTransferFunction* transferFunction = m_LookupTable->getColorTransferFunction();
  m_Mapper->SetLookupTable(transferFunction);
  m_Mapper->UseLookupTableScalarRangeOn();
  m_Colouring.updateScalarBar(m_ScalarBarWidget, transferFunction, title);
  setScalarBarVisibility(m_Colouring.m_ScalarBarVisible);
}

void VXPointsRepPimpl::setActiveArray(const QString& arrayName)
{
  // Another array starts at its magnitude; the same array keeps its component.
  if (arrayName != m_Colouring.m_ActiveArray)
  {
    m_Colouring.m_ActiveComponent = k_Magnitude;
  }
  m_Colouring.m_ActiveArray = arrayName;
  m_Colouring.m_UsingSolidColor = arrayName.isEmpty() || arrayName == ZRVtkModule::constants::k_SolidColor;
  updateColoring();
  requestRender();
}

void VXPointsRepPimpl::setActiveComponent(int component)
{
  m_Colouring.m_ActiveComponent = component < 0 ? k_Magnitude : component;
  updateColoring();
  requestRender();
}

void VXPointsRepPimpl::setPointSize(int size)
{
  m_PointSize = std::clamp(size, 0, k_MaxPointSize);
  m_Actor->GetProperty()->SetPointSize(static_cast<float>(m_PointSize));
  requestRender();
}

void VXPointsRepPimpl::setRenderPointsAsSpheres(bool spheres)
{
  m_RenderPointsAsSpheres = spheres;
  m_Actor->GetProperty()->SetRenderPointsAsSpheres(spheres);
  requestRender();
}

void VXPointsRepPimpl::setScalarMapping(int index)
{
  m_Colouring.setScalarMapping(index);
  updateColoring();
  requestRender();
}

void VXPointsRepPimpl::loadRGBPresetColors(const ColorPreset& preset)
{
  m_Colouring.loadRgbPreset(preset, *m_LookupTable);
  updateColoring();
  requestRender();
}

void VXPointsRepPimpl::loadIndexedPresetColors(const ColorPreset& preset)
{
  m_Colouring.loadIndexedPreset(preset);
  updateColoring();
  requestRender();
}

void VXPointsRepPimpl::loadPresetColors(const ColorPreset& preset)
{
  if (VXColouringSettings::isIndexedOnly(preset))
  {
    loadIndexedPresetColors(preset);
    return;
  }
  loadRGBPresetColors(preset);
}

void VXPointsRepPimpl::restoreDefaultRgbPresetColors()
{
  m_Colouring.restoreDefaultRgbPreset(*m_LookupTable);
  updateColoring();
  requestRender();
}

void VXPointsRepPimpl::setColorMapInverted(bool inverted)
{
  m_Colouring.setColorMapInverted(inverted, *m_LookupTable);
  requestRender();
}

void VXPointsRepPimpl::setNanColor(const QColor& color)
{
  if (m_Colouring.setNanColor(color, *m_LookupTable))
  {
    requestRender();
  }
}

void VXPointsRepPimpl::setCustomRange(double min, double max)
{
  if (!m_Colouring.setCustomRange(min, max))
  {
    return;
  }
  updateColoring();
  requestRender();
}

void VXPointsRepPimpl::useDataRange()
{
  m_Colouring.m_UsingCustomRange = false;
  updateColoring();
  requestRender();
}

void VXPointsRepPimpl::setInterpretValuesAsCategories(bool categories)
{
  if (!m_Colouring.setInterpretValuesAsCategories(categories, *m_LookupTable))
  {
    return;
  }
  updateColoring();
  requestRender();
}

void VXPointsRepPimpl::setScalarBarVisibility(bool visible)
{
  m_Colouring.m_ScalarBarVisible = visible;
  const bool show = visible && isVisible() && !isUsingSolidColor() && activeDataArray() != nullptr;
  if (VXColouringSettings::showScalarBar(m_ScalarBarWidget, visualizationWidget(), show))
  {
    requestRender();
  }
}

void VXPointsRepPimpl::setVisibility(bool visible)
{
  VXOutlineRepPimpl::setVisibility(visible);
  setScalarBarVisibility(m_Colouring.m_ScalarBarVisible);
}

void VXPointsRepPimpl::receivePipelineOutputReloaded()
{
  // New data, new categories and (without a custom range) a new data range.
  m_UniqueValues.clear();
  m_DecimationStale = true;
  if (m_UseDecimationOnInteraction)
  {
    decimateGeometry();
  }
  updateColoring();
  generateHistogramData();
}

void VXPointsRepPimpl::copySettings(const VXRepresentationPimpl* other)
{
  const auto* points = dynamic_cast<const VXPointsRepPimpl*>(other);
  if (points != nullptr)
  {
    m_Colouring = points->m_Colouring;
    m_PointSize = points->m_PointSize;
    m_RenderPointsAsSpheres = points->m_RenderPointsAsSpheres;
    m_GenerateHistogramData = points->m_GenerateHistogramData;
  }
  VXOutlineRepPimpl::copySettings(other);
}

void VXPointsRepPimpl::write(nlohmann::json& json) const
{
  VXOutlineRepPimpl::write(json);
  m_Colouring.write(json);
  json[k_PointSize] = m_PointSize;
  json[k_PointsAsSpheres] = m_RenderPointsAsSpheres;
  json[k_GenerateHistogramData] = m_GenerateHistogramData;
}

void VXPointsRepPimpl::read(const nlohmann::json& json)
{
  VXOutlineRepPimpl::read(json);
  if (!json.is_object())
  {
    return;
  }
  m_Colouring.read(json);
  readIfPresent(json, k_PointSize, m_PointSize);
  readIfPresent(json, k_PointsAsSpheres, m_RenderPointsAsSpheres);
  readIfPresent(json, k_GenerateHistogramData, m_GenerateHistogramData);
}

void VXPointsRepPimpl::writeSettings(QtZRSettings& settings) const
{
  VXOutlineRepPimpl::writeSettings(settings);
  m_Colouring.writeSettings(settings);
  settings.setValue(QString::fromLatin1(k_PointSize), m_PointSize);
  settings.setValue(QString::fromLatin1(k_PointsAsSpheres), m_RenderPointsAsSpheres);
  settings.setValue(QString::fromLatin1(k_GenerateHistogramData), m_GenerateHistogramData);
}

void VXPointsRepPimpl::readSettings(QtZRSettings& settings)
{
  VXOutlineRepPimpl::readSettings(settings);
  m_Colouring.readSettings(settings);
  readSetting(settings, k_PointSize, m_PointSize);
  readSetting(settings, k_PointsAsSpheres, m_RenderPointsAsSpheres);
  readSetting(settings, k_GenerateHistogramData, m_GenerateHistogramData);
}
