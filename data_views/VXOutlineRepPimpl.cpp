#include "data_views/VXOutlineRepPimpl.h"

#include "data_views/VXStateReading.h"
#include "views/VXVisualizationWidget.h"

#include <vtkActor.h>
#include <vtkAlgorithm.h>
#include <vtkAlgorithmOutput.h>
#include <vtkOutlineFilter.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkRenderer.h>

#include <algorithm>

using namespace ZRVtkModule::state;

namespace
{
const char* const k_OpacityPercent = "opacity_percent";
const char* const k_SolidColor[3] = {"solid_color_r", "solid_color_g", "solid_color_b"};
const char* const k_EdgeVisibility = "edge_visibility";
const char* const k_LineSize = "line_size";
const char* const k_LinesAsTubes = "render_lines_as_tubes";
const char* const k_Divisions[3] = {"data_source_num_of_dims_x", "data_source_num_of_dims_y",
                                    "data_source_num_of_dims_z"};
const char* const k_UseInputPoints = "data_source_use_input_points";
const char* const k_UseFeatureEdges = "data_source_use_feature_edges";
const char* const k_UseFeaturePoints = "data_source_use_feature_points";
const char* const k_UseInternalTriangles = "data_source_use_internal_triangles";
// vtkProperty's limits for line widths and point sizes.
constexpr int k_MaxLineSize = 1 << 20;
} // namespace

VXOutlineRepPimpl::VXOutlineRepPimpl(VXRepresentation* owner, VXAbstractViewWidget* view)
    : VXRepresentationPimpl(owner, view)
    , m_Actor(vtkSmartPointer<vtkActor>::New())
    , m_Mapper(vtkSmartPointer<vtkPolyDataMapper>::New())
    , m_OutlineFilter(vtkSmartPointer<vtkOutlineFilter>::New())
{
  m_Actor->SetMapper(m_Mapper);
}

VXOutlineRepPimpl::~VXOutlineRepPimpl()
{
  finalize();
}

bool VXOutlineRepPimpl::connectInput(vtkAlgorithmOutput* inputPort)
{
  if (m_InputPort == inputPort)
  {
    return false;
  }
  m_InputPort = inputPort;
  m_OutlineFilter->SetInputConnection(inputPort);
  m_Mapper->SetInputConnection(m_OutlineFilter->GetOutputPort());
  m_Mapper->ScalarVisibilityOff();
  return true;
}

bool VXOutlineRepPimpl::isInRenderer() const
{
  VXVisualizationWidget* window = visualizationWidget();
  return window != nullptr && window->getRenderer() != nullptr && window->getRenderer()->HasViewProp(m_Actor);
}

void VXOutlineRepPimpl::initialize(vtkAlgorithmOutput* inputPort)
{
  VXVisualizationWidget* window = visualizationWidget();
  if (window == nullptr || inputPort == nullptr)
  {
    return;
  }
  connectInput(inputPort);
  applySettings();
  connectParentDataSourceColorSettings();
  if (!isInRenderer())
  {
    window->addActor(m_Actor);
  }
  requestRender();
}

bool VXOutlineRepPimpl::finalize()
{
  if (!isInRenderer())
  {
    return false;
  }
  VXVisualizationWidget* window = visualizationWidget();
  window->removeOutline(m_Actor);
  window->removeActor(m_Actor);
  showDataGrid(false);
  return true;
}

vtkAlgorithmOutput* VXOutlineRepPimpl::inputPort() const
{
  return m_InputPort;
}

vtkAlgorithmOutput* VXOutlineRepPimpl::outputPort() const
{
  vtkAlgorithmOutput* input = inputPort();
  return input != nullptr && input->GetProducer() != nullptr ? input->GetProducer()->GetOutputPort(0)
                                                             : nullptr;
}

void VXOutlineRepPimpl::setVisibility(bool visible)
{
  VXRepresentationPimpl::setVisibility(visible);
  m_Actor->SetVisibility(visible);
  if (VXVisualizationWidget* window = visualizationWidget())
  {
    if (!visible)
    {
      window->removeOutline(m_Actor);
    }
    window->actorVisibilityChanged(m_Actor);
    window->render();
  }
}

vtkActor* VXOutlineRepPimpl::getActor() const
{
  return m_Actor;
}

vtkMapper* VXOutlineRepPimpl::getMapper() const
{
  return m_Mapper;
}

void VXOutlineRepPimpl::applySettings()
{
  vtkProperty* property = m_Actor->GetProperty();
  property->SetColor(m_SolidColor.redF(), m_SolidColor.greenF(), m_SolidColor.blueF());
  property->SetOpacity(m_Opacity);
  property->SetEdgeVisibility(m_EdgeVisibility);
  property->SetLineWidth(static_cast<float>(m_LineSize));
  property->SetRenderLinesAsTubes(m_RenderLinesAsTubes);
  m_Actor->SetVisibility(isVisible());
  showDataGrid(isVisible() && m_DataGridVisible);
}

void VXOutlineRepPimpl::setOpacity(int percent)
{
  m_Opacity = std::clamp(percent / 100.0, 0.0, 1.0);
  m_Actor->GetProperty()->SetOpacity(m_Opacity);
  requestRender();
}

int VXOutlineRepPimpl::getOpacity() const
{
  return static_cast<int>(100.0 * m_Opacity + 0.5);
}

void VXOutlineRepPimpl::setSolidColor(const QColor& color)
{
  if (!color.isValid())
  {
    return;
  }
  m_SolidColor = color;
  m_Actor->GetProperty()->SetColor(color.redF(), color.greenF(), color.blueF());
  requestRender();
}

void VXOutlineRepPimpl::setEdgeVisibility(bool visible)
{
  m_EdgeVisibility = visible;
  m_Actor->GetProperty()->SetEdgeVisibility(visible);
  requestRender();
}

void VXOutlineRepPimpl::setLineSize(int size)
{
  m_LineSize = std::clamp(size, 0, k_MaxLineSize);
  m_Actor->GetProperty()->SetLineWidth(static_cast<float>(m_LineSize));
  requestRender();
}

void VXOutlineRepPimpl::setRenderLinesAsTubes(bool tubes)
{
  m_RenderLinesAsTubes = tubes;
  m_Actor->GetProperty()->SetRenderLinesAsTubes(tubes);
  requestRender();
}

void VXOutlineRepPimpl::copySettings(const VXRepresentationPimpl* other)
{
  VXRepresentationPimpl::copySettings(other);
  const auto* outline = dynamic_cast<const VXOutlineRepPimpl*>(other);
  if (outline == nullptr)
  {
    return;
  }
  m_Opacity = outline->m_Opacity;
  m_SolidColor = outline->m_SolidColor;
  m_EdgeVisibility = outline->m_EdgeVisibility;
  m_LineSize = outline->m_LineSize;
  m_RenderLinesAsTubes = outline->m_RenderLinesAsTubes;
  m_DecimationDivisions = outline->m_DecimationDivisions;
  m_UseInputPoints = outline->m_UseInputPoints;
  m_UseFeatureEdges = outline->m_UseFeatureEdges;
  m_UseFeaturePoints = outline->m_UseFeaturePoints;
  m_UseInternalTriangles = outline->m_UseInternalTriangles;
  applySettings();
}

void VXOutlineRepPimpl::write(nlohmann::json& json) const
{
  VXRepresentationPimpl::write(json);
  json[k_OpacityPercent] = getOpacity();
  writeColor(json, k_SolidColor, m_SolidColor);
  json[k_EdgeVisibility] = m_EdgeVisibility;
  json[k_LineSize] = m_LineSize;
  json[k_LinesAsTubes] = m_RenderLinesAsTubes;
  for (int axis = 0; axis < 3; ++axis)
  {
    json[k_Divisions[axis]] = m_DecimationDivisions[axis];
  }
  json[k_UseInputPoints] = m_UseInputPoints;
  json[k_UseFeatureEdges] = m_UseFeatureEdges;
  json[k_UseFeaturePoints] = m_UseFeaturePoints;
  json[k_UseInternalTriangles] = m_UseInternalTriangles;
}

void VXOutlineRepPimpl::read(const nlohmann::json& json)
{
  VXRepresentationPimpl::read(json);
  if (!json.is_object())
  {
    return;
  }
  if (json.contains(k_OpacityPercent))
  {
    m_Opacity = std::clamp(json.at(k_OpacityPercent).get<double>() / 100.0, 0.0, 1.0);
  }
  readColor(json, k_SolidColor, m_SolidColor);
  readIfPresent(json, k_EdgeVisibility, m_EdgeVisibility);
  readIfPresent(json, k_LineSize, m_LineSize);
  readIfPresent(json, k_LinesAsTubes, m_RenderLinesAsTubes);
  if (json.contains(k_Divisions[0]) && json.contains(k_Divisions[1]) && json.contains(k_Divisions[2]))
  {
    for (int axis = 0; axis < 3; ++axis)
    {
      m_DecimationDivisions[axis] = json.at(k_Divisions[axis]).get<int>();
    }
  }
  readIfPresent(json, k_UseInputPoints, m_UseInputPoints);
  readIfPresent(json, k_UseFeatureEdges, m_UseFeatureEdges);
  readIfPresent(json, k_UseFeaturePoints, m_UseFeaturePoints);
  readIfPresent(json, k_UseInternalTriangles, m_UseInternalTriangles);
}

void VXOutlineRepPimpl::writeSettings(QtZRSettings& settings) const
{
  VXRepresentationPimpl::writeSettings(settings);
  settings.setValue(QString::fromLatin1(k_OpacityPercent), getOpacity());
  writeColorSetting(settings, k_SolidColor, m_SolidColor);
  settings.setValue(QString::fromLatin1(k_EdgeVisibility), m_EdgeVisibility);
  settings.setValue(QString::fromLatin1(k_LineSize), m_LineSize);
  settings.setValue(QString::fromLatin1(k_LinesAsTubes), m_RenderLinesAsTubes);
  for (int axis = 0; axis < 3; ++axis)
  {
    settings.setValue(QString::fromLatin1(k_Divisions[axis]), m_DecimationDivisions[axis]);
  }
  settings.setValue(QString::fromLatin1(k_UseInputPoints), m_UseInputPoints);
  settings.setValue(QString::fromLatin1(k_UseFeatureEdges), m_UseFeatureEdges);
  settings.setValue(QString::fromLatin1(k_UseFeaturePoints), m_UseFeaturePoints);
  settings.setValue(QString::fromLatin1(k_UseInternalTriangles), m_UseInternalTriangles);
}

void VXOutlineRepPimpl::readSettings(QtZRSettings& settings)
{
  VXRepresentationPimpl::readSettings(settings);
  int percent = getOpacity();
  readSetting(settings, k_OpacityPercent, percent);
  m_Opacity = std::clamp(percent / 100.0, 0.0, 1.0);
  readColorSetting(settings, k_SolidColor, m_SolidColor);
  readSetting(settings, k_EdgeVisibility, m_EdgeVisibility);
  readSetting(settings, k_LineSize, m_LineSize);
  readSetting(settings, k_LinesAsTubes, m_RenderLinesAsTubes);
  if (settings.contains(QString::fromLatin1(k_Divisions[0])) &&
      settings.contains(QString::fromLatin1(k_Divisions[1])) &&
      settings.contains(QString::fromLatin1(k_Divisions[2])))
  {
    for (int axis = 0; axis < 3; ++axis)
    {
      readSetting(settings, k_Divisions[axis], m_DecimationDivisions[axis]);
    }
  }
  readSetting(settings, k_UseInputPoints, m_UseInputPoints);
  readSetting(settings, k_UseFeatureEdges, m_UseFeatureEdges);
  readSetting(settings, k_UseFeaturePoints, m_UseFeaturePoints);
  readSetting(settings, k_UseInternalTriangles, m_UseInternalTriangles);
}
