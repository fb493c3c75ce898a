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
const char* const k_ActiveArray = "active_array";
const char* const k_ActiveComponent = "active_component";
const char* const k_ScalarBarVisible = "scalar_bar_visible";
const char* const k_ScalarBarPosition[4] = {"source_position_x", "source_position_y", "source_position2_x",
                                            "source_position2_y"};
const char* const k_ColorMapInverted = "color_map_inverted";
const char* const k_ColorPreset = "color_preset";
const char* const k_UsingDefaultPreset = "using_default_preset";
const char* const k_IndexedColorPreset = "indexed_color_preset";
const char* const k_UsingDefaultIndexedPreset = "using_default_indexed_preset";
const char* const k_ScalarMapping = "scalar_mapping";
const char* const k_PointSize = "point_size";
const char* const k_PointsAsSpheres = "render_points_as_spheres";
const char* const k_UsingCustomRange = "using_custom_range";
const char* const k_CustomRangeMin = "custom_range_min";
const char* const k_CustomRangeMax = "custom_range_max";
const char* const k_NanColor[3] = {"nan_color_r", "nan_color_g", "nan_color_b"};
const char* const k_UsingSolidColor = "using_solid_color";
const char* const k_ValuesAsCategories = "values_as_categories";
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

void readPresetSetting(const QtZRSettings& settings, const char* key,
                       zr::core::ColorTableUtilities::ColorPreset& preset)
{
  const QString name = QString::fromLatin1(key);
  if (!settings.contains(name))
  {
    return;
  }
  const nlohmann::json json =
      nlohmann::json::parse(settings.value(name).toString().toStdString(), nullptr, false);
  if (json.is_object())
  {
    preset = zr::core::ColorTableUtilities::ColorPreset(json);
  }
}
} // namespace

VXPointsRepPimpl::VXPointsRepPimpl(VXRepresentation* owner, VXAbstractViewWidget* view)
    : VXOutlineRepPimpl(owner, view)
    , m_LookupTable(new VXLookupTable(this))
    , m_ScalarBarWidget(vtkSmartPointer<vtkScalarBarWidget>::New())
    , m_RgbPreset(ZRPreferences::Instance()->getDefaultColorPreset())
    , m_IndexedPreset(ZRPreferences::Instance()->getDefaultIndexedColorPreset())
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
  setScalarBarVisibility(m_ScalarBarVisible);
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
  return ZRVtkModule::utils::GetActiveDataArray(inputDataSet(), m_ActiveArray);
}

bool VXPointsRepPimpl::isUsingSolidColor() const
{
  return m_UsingSolidColor || m_ActiveArray.isEmpty() ||
         m_ActiveArray == ZRVtkModule::constants::k_SolidColor;
}

void VXPointsRepPimpl::loadKeptRgbPreset()
{
  if (m_UsingDefaultPreset)
  {
    m_LookupTable->parseRgbArray({VXLookupTable::k_DefaultPresetName});
  }
  else
  {
    m_LookupTable->parseRgbJson(m_RgbPreset);
  }
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
  m_LookupTable->setNANColor(m_NanColor);
  updateColoring();
}

std::array<double, 2> VXPointsRepPimpl::colorRange() const
{
  if (m_UsingCustomRange)
  {
    return m_CustomRange;
  }
  std::array<double, 2> range = {0.0, 1.0};
  vtkDataArray* array = activeDataArray();
  if (array == nullptr)
  {
    return range;
  }
  const int component = array->GetNumberOfComponents() == 1 ? 0 : m_ActiveComponent;
  array->GetRange(range.data(), component);
  if (!(range[0] < range[1]))
  {
    // A constant array still gets a usable map around its value.
    range = {range[0] - 0.5, range[0] + 0.5};
  }
  return range;
}

const std::set<double>& VXPointsRepPimpl::uniqueValues()
{
  QMap<int, std::set<double>>& byComponent = m_UniqueValues[m_ActiveArray];
  if (byComponent.contains(m_ActiveComponent))
  {
    return byComponent[m_ActiveComponent];
  }
  std::set<double>& values = byComponent[m_ActiveComponent];
  vtkDataArray* array = activeDataArray();
  if (array == nullptr)
  {
    return values;
  }
  const int components = array->GetNumberOfComponents();
  const vtkIdType tuples = array->GetNumberOfTuples();
  for (vtkIdType tuple = 0; tuple < tuples; ++tuple)
  {
    double value = 0.0;
    if (m_ActiveComponent == k_Magnitude && components > 1)
    {
      for (int c = 0; c < components; ++c)
      {
        const double v = array->GetComponent(tuple, c);
        value += v * v;
      }
      value = std::sqrt(value);
    }
    else
    {
      value = array->GetComponent(tuple, components == 1 ? 0 : m_ActiveComponent);
    }
    values.insert(value);
    // One more than a table can index is enough to know that there are too many.
    if (values.size() > static_cast<size_t>(VXLookupTable::k_MaxNumberIndexedColors))
    {
      break;
    }
  }
  return values;
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
  const bool direct =
      m_ScalarMapping == 2 || (m_ScalarMapping == 1 && ZRVtkModule::utils::IsColorArray(array));
  m_Mapper->SetColorMode(direct ? VTK_COLOR_MODE_DIRECT_SCALARS : VTK_COLOR_MODE_MAP_SCALARS);

  vtkColorTransferFunction* transferFunction = m_LookupTable->getColorTransferFunction();
  const int components = array->GetNumberOfComponents();
  if (m_ActiveComponent >= components)
  {
    m_ActiveComponent = k_Magnitude;
  }
  QString title = QString::fromUtf8(array->GetName());
  if (components == 1)
  {
    transferFunction->SetVectorModeToComponent();
    transferFunction->SetVectorComponent(0);
  }
  else if (m_ActiveComponent == k_Magnitude)
  {
    transferFunction->SetVectorModeToMagnitude();
    title += QStringLiteral("\nMagnitude");
  }
  else
  {
    transferFunction->SetVectorModeToComponent();
    transferFunction->SetVectorComponent(m_ActiveComponent);
    title += QStringLiteral("\n") + QString::number(m_ActiveComponent);
  }

  if (m_ValuesAsCategories)
  {
    m_LookupTable->parseIndexedJson<double>(m_UsingDefaultIndexedPreset
                                                ? ZRPreferences::Instance()->getDefaultIndexedColorPreset()
                                                : m_IndexedPreset,
                                            uniqueValues());
  }
  else
  {
    const std::array<double, 2> range = colorRange();
    m_LookupTable->setRange(range[0], range[1]);
  }
  if (m_ColorMapInverted != m_LookupTable->isInverted())
  {
    m_LookupTable->invert();
  }
  m_Mapper->SetLookupTable(transferFunction);
  m_Mapper->UseLookupTableScalarRangeOn();

  auto* representation = vtkScalarBarRepresentation::SafeDownCast(m_ScalarBarWidget->GetRepresentation());
  vtkScalarBarActor* bar = representation->GetScalarBarActor();
  bar->SetLookupTable(transferFunction);
  bar->SetTitle(title.toUtf8().constData());
  representation->SetPosition(m_ScalarBarPosition[0], m_ScalarBarPosition[1]);
  representation->SetPosition2(m_ScalarBarPosition[2], m_ScalarBarPosition[3]);
  setScalarBarVisibility(m_ScalarBarVisible);
}

void VXPointsRepPimpl::setActiveArray(const QString& arrayName)
{
  // Another array starts at its magnitude; the same array keeps its component.
  if (arrayName != m_ActiveArray)
  {
    m_ActiveComponent = k_Magnitude;
  }
  m_ActiveArray = arrayName;
  m_UsingSolidColor = arrayName.isEmpty() || arrayName == ZRVtkModule::constants::k_SolidColor;
  updateColoring();
  requestRender();
}

void VXPointsRepPimpl::setActiveComponent(int component)
{
  m_ActiveComponent = component < 0 ? k_Magnitude : component;
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
  m_ScalarMapping = std::clamp(index, 0, 2);
  updateColoring();
  requestRender();
}

void VXPointsRepPimpl::loadRGBPresetColors(const ColorPreset& preset)
{
  m_RgbPreset = preset;
  m_UsingDefaultPreset = false;
  m_LookupTable->parseRgbJson(preset);
  updateColoring();
  requestRender();
}

void VXPointsRepPimpl::loadIndexedPresetColors(const ColorPreset& preset)
{
  m_IndexedPreset = preset;
  m_UsingDefaultIndexedPreset = false;
  m_ValuesAsCategories = true;
  updateColoring();
  requestRender();
}

void VXPointsRepPimpl::loadPresetColors(const ColorPreset& preset)
{
  if (preset.m_RGBPoints.empty() && !preset.m_IndexedColors.empty())
  {
    loadIndexedPresetColors(preset);
    return;
  }
  loadRGBPresetColors(preset);
}

void VXPointsRepPimpl::restoreDefaultRgbPresetColors()
{
  m_UsingDefaultPreset = true;
  m_RgbPreset = ZRPreferences::Instance()->getDefaultColorPreset();
  m_LookupTable->parseRgbArray({VXLookupTable::k_DefaultPresetName});
  updateColoring();
  requestRender();
}

void VXPointsRepPimpl::setColorMapInverted(bool inverted)
{
  m_ColorMapInverted = inverted;
  if (inverted != m_LookupTable->isInverted())
  {
    m_LookupTable->invert();
  }
  requestRender();
}

void VXPointsRepPimpl::setNanColor(const QColor& color)
{
  if (!color.isValid())
  {
    return;
  }
  m_NanColor = color;
  m_LookupTable->setNANColor(color);
  requestRender();
}

void VXPointsRepPimpl::setCustomRange(double min, double max)
{
  if (!(min < max))
  {
    return;
  }
  m_UsingCustomRange = true;
  m_CustomRange = {min, max};
  updateColoring();
  requestRender();
}

void VXPointsRepPimpl::useDataRange()
{
  m_UsingCustomRange = false;
  updateColoring();
  requestRender();
}

void VXPointsRepPimpl::setInterpretValuesAsCategories(bool categories)
{
  if (categories == m_ValuesAsCategories)
  {
    return;
  }
  m_ValuesAsCategories = categories;
  if (!categories)
  {
    loadKeptRgbPreset(); // back from the categorical table to the kept colour map
  }
  updateColoring();
  requestRender();
}

void VXPointsRepPimpl::setScalarBarVisibility(bool visible)
{
  m_ScalarBarVisible = visible;
  VXVisualizationWidget* window = visualizationWidget();
  const bool show = visible && isVisible() && !isUsingSolidColor() && activeDataArray() != nullptr;
  if (window == nullptr || window->getRenderWindowInteractor() == nullptr)
  {
    return;
  }
  if (m_ScalarBarWidget->GetInteractor() == nullptr)
  {
    m_ScalarBarWidget->SetInteractor(window->getRenderWindowInteractor());
    m_ScalarBarWidget->SetDefaultRenderer(window->getRenderer());
    m_ScalarBarWidget->SetCurrentRenderer(window->getRenderer());
  }
  m_ScalarBarWidget->SetEnabled(show ? 1 : 0);
  requestRender();
}

void VXPointsRepPimpl::setVisibility(bool visible)
{
  VXOutlineRepPimpl::setVisibility(visible);
  setScalarBarVisibility(m_ScalarBarVisible);
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
    m_ActiveArray = points->m_ActiveArray;
    m_ActiveComponent = points->m_ActiveComponent;
    m_PointSize = points->m_PointSize;
    m_ScalarBarVisible = points->m_ScalarBarVisible;
    m_ScalarBarPosition = points->m_ScalarBarPosition;
    m_ColorMapInverted = points->m_ColorMapInverted;
    m_RgbPreset = points->m_RgbPreset;
    m_UsingDefaultPreset = points->m_UsingDefaultPreset;
    m_IndexedPreset = points->m_IndexedPreset;
    m_UsingDefaultIndexedPreset = points->m_UsingDefaultIndexedPreset;
    m_ScalarMapping = points->m_ScalarMapping;
    m_RenderPointsAsSpheres = points->m_RenderPointsAsSpheres;
    m_UsingCustomRange = points->m_UsingCustomRange;
    m_CustomRange = points->m_CustomRange;
    m_NanColor = points->m_NanColor;
    m_UsingSolidColor = points->m_UsingSolidColor;
    m_ValuesAsCategories = points->m_ValuesAsCategories;
    m_GenerateHistogramData = points->m_GenerateHistogramData;
  }
  VXOutlineRepPimpl::copySettings(other);
}

void VXPointsRepPimpl::write(nlohmann::json& json) const
{
  VXOutlineRepPimpl::write(json);
  json[k_ActiveArray] = m_ActiveArray.toStdString();
  json[k_ActiveComponent] = m_ActiveComponent;
  json[k_ScalarBarVisible] = m_ScalarBarVisible;
  for (int i = 0; i < 4; ++i)
  {
    json[k_ScalarBarPosition[i]] = m_ScalarBarPosition[i];
  }
  json[k_ColorMapInverted] = m_ColorMapInverted;
  json[k_ColorPreset] = m_RgbPreset.toJson();
  json[k_UsingDefaultPreset] = m_UsingDefaultPreset;
  json[k_IndexedColorPreset] = m_IndexedPreset.toJson();
  json[k_UsingDefaultIndexedPreset] = m_UsingDefaultIndexedPreset;
  json[k_ScalarMapping] = m_ScalarMapping;
  json[k_PointSize] = m_PointSize;
  json[k_PointsAsSpheres] = m_RenderPointsAsSpheres;
  json[k_UsingCustomRange] = m_UsingCustomRange;
  json[k_CustomRangeMin] = m_CustomRange[0];
  json[k_CustomRangeMax] = m_CustomRange[1];
  writeColor(json, k_NanColor, m_NanColor);
  json[k_UsingSolidColor] = m_UsingSolidColor;
  json[k_ValuesAsCategories] = m_ValuesAsCategories;
  json[k_GenerateHistogramData] = m_GenerateHistogramData;
}

void VXPointsRepPimpl::read(const nlohmann::json& json)
{
  VXOutlineRepPimpl::read(json);
  if (!json.is_object())
  {
    return;
  }
  if (json.contains(k_ActiveArray))
  {
    m_ActiveArray = QString::fromStdString(json.at(k_ActiveArray).get<std::string>());
  }
  readIfPresent(json, k_ActiveComponent, m_ActiveComponent);
  readIfPresent(json, k_ScalarBarVisible, m_ScalarBarVisible);
  for (int i = 0; i < 4; ++i)
  {
    readIfPresent(json, k_ScalarBarPosition[i], m_ScalarBarPosition[i]);
  }
  readIfPresent(json, k_ColorMapInverted, m_ColorMapInverted);
  if (json.contains(k_ColorPreset))
  {
    m_RgbPreset = ColorPreset(json.at(k_ColorPreset));
  }
  readIfPresent(json, k_UsingDefaultPreset, m_UsingDefaultPreset);
  if (json.contains(k_IndexedColorPreset))
  {
    m_IndexedPreset = ColorPreset(json.at(k_IndexedColorPreset));
  }
  readIfPresent(json, k_UsingDefaultIndexedPreset, m_UsingDefaultIndexedPreset);
  readIfPresent(json, k_ScalarMapping, m_ScalarMapping);
  readIfPresent(json, k_PointSize, m_PointSize);
  readIfPresent(json, k_PointsAsSpheres, m_RenderPointsAsSpheres);
  readIfPresent(json, k_UsingCustomRange, m_UsingCustomRange);
  readIfPresent(json, k_CustomRangeMin, m_CustomRange[0]);
  readIfPresent(json, k_CustomRangeMax, m_CustomRange[1]);
  readColor(json, k_NanColor, m_NanColor);
  readIfPresent(json, k_UsingSolidColor, m_UsingSolidColor);
  readIfPresent(json, k_ValuesAsCategories, m_ValuesAsCategories);
  readIfPresent(json, k_GenerateHistogramData, m_GenerateHistogramData);
}

void VXPointsRepPimpl::writeSettings(QtZRSettings& settings) const
{
  VXOutlineRepPimpl::writeSettings(settings);
  settings.setValue(QString::fromLatin1(k_ScalarBarVisible), m_ScalarBarVisible);
  settings.setValue(QString::fromLatin1(k_ColorMapInverted), m_ColorMapInverted);
  settings.setValue(QString::fromLatin1(k_UsingDefaultPreset), m_UsingDefaultPreset);
  if (!m_UsingDefaultPreset)
  {
    settings.setValue(QString::fromLatin1(k_ColorPreset), QString::fromStdString(m_RgbPreset.toJsonString()));
  }
  settings.setValue(QString::fromLatin1(k_UsingDefaultIndexedPreset), m_UsingDefaultIndexedPreset);
  if (!m_UsingDefaultIndexedPreset)
  {
    settings.setValue(QString::fromLatin1(k_IndexedColorPreset),
                      QString::fromStdString(m_IndexedPreset.toJsonString()));
  }
  settings.setValue(QString::fromLatin1(k_ScalarMapping), m_ScalarMapping);
  settings.setValue(QString::fromLatin1(k_PointSize), m_PointSize);
  settings.setValue(QString::fromLatin1(k_PointsAsSpheres), m_RenderPointsAsSpheres);
  settings.setValue(QString::fromLatin1(k_UsingCustomRange), m_UsingCustomRange);
  settings.setValue(QString::fromLatin1(k_CustomRangeMin), m_CustomRange[0]);
  settings.setValue(QString::fromLatin1(k_CustomRangeMax), m_CustomRange[1]);
  writeColorSetting(settings, k_NanColor, m_NanColor);
  settings.setValue(QString::fromLatin1(k_UsingSolidColor), m_UsingSolidColor);
  settings.setValue(QString::fromLatin1(k_ValuesAsCategories), m_ValuesAsCategories);
  settings.setValue(QString::fromLatin1(k_GenerateHistogramData), m_GenerateHistogramData);
}

void VXPointsRepPimpl::readSettings(QtZRSettings& settings)
{
  VXOutlineRepPimpl::readSettings(settings);
  readSetting(settings, k_ScalarBarVisible, m_ScalarBarVisible);
  readSetting(settings, k_ColorMapInverted, m_ColorMapInverted);
  readSetting(settings, k_UsingDefaultPreset, m_UsingDefaultPreset);
  readPresetSetting(settings, k_ColorPreset, m_RgbPreset);
  readSetting(settings, k_UsingDefaultIndexedPreset, m_UsingDefaultIndexedPreset);
  readPresetSetting(settings, k_IndexedColorPreset, m_IndexedPreset);
  readSetting(settings, k_ScalarMapping, m_ScalarMapping);
  readSetting(settings, k_PointSize, m_PointSize);
  readSetting(settings, k_PointsAsSpheres, m_RenderPointsAsSpheres);
  readSetting(settings, k_UsingCustomRange, m_UsingCustomRange);
  readSetting(settings, k_CustomRangeMin, m_CustomRange[0]);
  readSetting(settings, k_CustomRangeMax, m_CustomRange[1]);
  readColorSetting(settings, k_NanColor, m_NanColor);
  readSetting(settings, k_UsingSolidColor, m_UsingSolidColor);
  readSetting(settings, k_ValuesAsCategories, m_ValuesAsCategories);
  readSetting(settings, k_GenerateHistogramData, m_GenerateHistogramData);
}
