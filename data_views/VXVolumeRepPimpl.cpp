#include "data_views/VXVolumeRepPimpl.h"

#include "data_views/VXColouringKeys.h"

#include "colour/TomvizHistogram.h"
#include "colour/VXColorMapEditorWidget.h"
#include "colour/VXCustomRangeDialog.h"
#include "colour/VXLookupTable.h"
#include "data_views/VXRepresentation.h"
#include "data_views/VXStateReading.h"
#include "pipeline/VXPipeline.h"
#include "platform/ColorPresetsDialog.h"
#include "platform/ZRComboBox.h"
#include "platform/ZRPreferences.h"
#include "views/VXVisualizationWidget.h"

#include <nlohmann/json.hpp>

#include <QOpenGLContext>
#include <QOpenGLFunctions>

#include <vtkActor.h>
#include <vtkAlgorithm.h>
#include <vtkAlgorithmOutput.h>
#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkImageData.h>
#include <vtkImageResample.h>
#include <vtkOpenGLRenderWindow.h>
#include <vtkOutlineFilter.h>
#include <vtkPiecewiseFunction.h>
#include <vtkPointData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkProperty2D.h>
#include <vtkRenderer.h>
#include <vtkScalarBarActor.h>
#include <vtkScalarBarRepresentation.h>
#include <vtkScalarBarWidget.h>
#include <vtkSmartVolumeMapper.h>
#include <vtkTable.h>
#include <vtkTextProperty.h>
#include <vtkVolume.h>
#include <vtkVolumeProperty.h>

#include <algorithm>
#include <cmath>

using namespace ZRVtkModule::state;
using namespace ZRVtkModule::state::keys;

namespace
{
const char* const k_ArrayCustomRanges = "array_custom_ranges";
const char* const k_ArrayLuts = "array_lut_fct";
const char* const k_ArrayOpacityFunctions = "array_scalar_opacity_fct";

#ifndef GL_MAX_3D_TEXTURE_SIZE
#define GL_MAX_3D_TEXTURE_SIZE 0x8073
#endif

// OpenGL 4 guarantees 3D textures of this edge; used when the context cannot be asked yet.
constexpr int k_GuaranteedTextureSize = 2048;
int s_TextureSizeLimitOverride = 0;

std::vector<std::array<double, 2>> nodesOf(vtkPiecewiseFunction* function)
{
  std::vector<std::array<double, 2>> nodes;
  double node[4] = {0.0, 0.0, 0.0, 0.0};
  for (int i = 0; i < function->GetSize(); ++i)
  {
    function->GetNodeValue(i, node);
    nodes.push_back({node[0], node[1]});
  }
  return nodes;
}
} // namespace

VXVolumeRepPimpl::VXVolumeRepPimpl(VXRepresentation* owner, VXAbstractViewWidget* view)
    : VXRepresentationPimpl(owner, view)
    , m_Mapper(vtkSmartPointer<vtkSmartVolumeMapper>::New())
    , m_Property(vtkSmartPointer<vtkVolumeProperty>::New())
    , m_Volume(vtkSmartPointer<vtkVolume>::New())
    , m_OutlineFilter(vtkSmartPointer<vtkOutlineFilter>::New())
    , m_OutlineMapper(vtkSmartPointer<vtkPolyDataMapper>::New())
    , m_OutlineActor(vtkSmartPointer<vtkActor>::New())
    , m_ScalarBarWidget(vtkSmartPointer<vtkScalarBarWidget>::New())
    , m_Preset(ZRPreferences::Instance()->getDefaultColorPreset())
{
  m_Mapper->SetBlendMode(vtkVolumeMapper::COMPOSITE_BLEND);
  m_Mapper->SetRequestedRenderModeToDefault();
  m_Mapper->SetInteractiveAdjustSampleDistances(1);
  m_Mapper->SetInteractiveUpdateRate(1000.0);
  m_Property->SetInterpolationTypeToLinear();
  m_Property->SetAmbient(0, 0.0);
  m_Property->SetDiffuse(0, 1.0);
  m_Property->SetSpecular(0, 0.0);
  m_Property->SetSpecularPower(0, 100.0);
  m_Volume->SetMapper(m_Mapper);
  m_Volume->SetProperty(m_Property);

  m_OutlineMapper->SetInputConnection(m_OutlineFilter->GetOutputPort());
  m_OutlineActor->SetMapper(m_OutlineMapper);
  m_OutlineActor->GetProperty()->SetColor(1.0, 0.0, 1.0);
  m_OutlineActor->GetProperty()->LightingOff();
  m_OutlineActor->PickableOff();

  ConfigureScalarBar(m_ScalarBarWidget);

  m_CustomRangeDialog = new VXCustomRangeDialog();
  connect(m_CustomRangeDialog.data(), &VXCustomRangeDialog::rescale, this,
          qOverload<double, double>(&VXVolumeRepPimpl::rescaleToCustomRange));
  connect(m_CustomRangeDialog.data(), &VXCustomRangeDialog::needsRangeReset, this,
          &VXVolumeRepPimpl::rescaleToDataRange);
}

ColorPresetsDialog* VXVolumeRepPimpl::colorPresetsDialog()
{
  // Made when first asked for: it reads and draws every preset, which a view that is only drawn
  // does not need.
  if (!m_ColorPresetsDialog)
  {
    m_ColorPresetsDialog = new ColorPresetsDialog();
    connect(m_ColorPresetsDialog.data(), &ColorPresetsDialog::applyPreset, this,
            [this](const ColorPreset& preset, const QPixmap&) { loadPresetColors(preset); });
    connect(m_ColorPresetsDialog.data(), &ColorPresetsDialog::restoreDefaultPreset, this,
            &VXVolumeRepPimpl::restoreDefaultPresetColors);
  }
  return m_ColorPresetsDialog;
}

VXVolumeRepPimpl::~VXVolumeRepPimpl()
{
  m_ScalarBarWidget->SetEnabled(0);
  finalize();
  delete m_CustomRangeDialog.data();
  delete m_ColorPresetsDialog.data();
}

void VXVolumeRepPimpl::setTextureSizeLimitOverride(int limit)
{
  s_TextureSizeLimitOverride = std::max(limit, 0);
}

int VXVolumeRepPimpl::textureSizeLimit() const
{
  if (s_TextureSizeLimitOverride > 0)
  {
    return s_TextureSizeLimitOverride;
  }
  VXVisualizationWidget* window = visualizationWidget();
  auto* context = window != nullptr ? vtkOpenGLRenderWindow::SafeDownCast(window->renderWindow()) : nullptr;
  if (context == nullptr)
  {
    return k_GuaranteedTextureSize;
  }
  context->MakeCurrent();
  // Before the window has its context there is nothing to ask.
  QOpenGLContext* current = QOpenGLContext::currentContext();
  if (!context->IsCurrent() || current == nullptr)
  {
    return k_GuaranteedTextureSize;
  }
  GLint size = 0;
  current->functions()->glGetIntegerv(GL_MAX_3D_TEXTURE_SIZE, &size);
  return size > 0 ? static_cast<int>(size) : k_GuaranteedTextureSize;
}

void VXVolumeRepPimpl::sendOutputMessage(const QString& message) const
{
  if (m_Owner != nullptr && m_Owner->pipeline() != nullptr)
  {
    Q_EMIT m_Owner->pipeline()->sendOutputMessage(message);
  }
}

void VXVolumeRepPimpl::connectParentDataSourceColorSettings()
{
  sendOutputMessage(
      QStringLiteral("Error: Cannot connect parent data source color settings for volume representations"));
}

void VXVolumeRepPimpl::disconnectParentDataSourceColorSettings()
{
  sendOutputMessage(QStringLiteral(
      "Error: Cannot disconnect parent data source color settings for volume representations"));
}

vtkSmartVolumeMapper* VXVolumeRepPimpl::volumeMapper() const
{
  return m_Mapper;
}

VXCustomRangeDialog* VXVolumeRepPimpl::customRangeDialog() const
{
  return m_CustomRangeDialog;
}

VXColorMapEditorWidget* VXVolumeRepPimpl::colorMapEditor() const
{
  return m_ColorMapEditor;
}

vtkTable* VXVolumeRepPimpl::histogramTable() const
{
  return m_HistogramTable;
}

void VXVolumeRepPimpl::generateHistogramData()
{
  // Binning a large volume takes a while: it is done for the editor alone, once per array shown.
  if (!m_ColorMapEditor)
  {
    return;
  }
  vtkImageData* image = inputImage();
  if (image == nullptr || arrayOf(m_ActiveArray) == nullptr)
  {
    m_HistogramKey.clear();
    m_ColorMapEditor->updateHistogramOnly(nullptr, "image_pops");
    return;
  }
  const QString key = QStringLiteral("%1\n%2\n%3")
                          .arg(m_ActiveArray)
                          .arg(m_ActiveComponent)
                          .arg(static_cast<qulonglong>(arrayOf(m_ActiveArray)->GetMTime()));
  if (key != m_HistogramKey || m_HistogramTable == nullptr)
  {
    m_HistogramTable = vtkSmartPointer<vtkTable>::New();
    tomviz::PopulateHistogram(image, m_ActiveArray.toStdString(), "image_pops", m_HistogramTable,
                              m_ActiveComponent);
    m_HistogramKey = key;
  }
  m_ColorMapEditor->updateHistogramOnly(m_HistogramTable, "image_pops");
}

void VXVolumeRepPimpl::updateColorMapEditor()
{
  if (!m_ColorMapEditor)
  {
    return;
  }
  VXLookupTable* table = lookupTable();
  m_ColorMapEditor->setFunctions(table != nullptr ? table->getColorTransferFunction() : nullptr,
                                 arrayOf(m_ActiveArray) != nullptr ? opacityFunctionOf(m_ActiveArray)
                                                                   : nullptr);
}

bool VXVolumeRepPimpl::setOpacityCurve(const std::vector<std::array<double, 2>>& nodes)
{
  if (m_ActiveArray.isEmpty() || arrayOf(m_ActiveArray) == nullptr || nodes.empty())
  {
    return false;
  }
  if (opacityFunctionOf(m_ActiveArray) == nullptr)
  {
    initializeScalarOpacityFunction(m_ActiveArray);
  }
  vtkPiecewiseFunction* function = opacityFunctionOf(m_ActiveArray);
  function->RemoveAllPoints();
  for (const auto& node : nodes)
  {
    function->AddPoint(node[0], node[1]);
  }
  updateActiveComponent();
  requestRender();
  return true;
}

vtkVolume* VXVolumeRepPimpl::volume() const
{
  return m_Volume;
}

vtkImageData* VXVolumeRepPimpl::inputImage() const
{
  if (m_InputPort == nullptr || m_InputPort->GetProducer() == nullptr)
  {
    return nullptr;
  }
  return vtkImageData::SafeDownCast(m_InputPort->GetProducer()->GetOutputDataObject(m_InputPort->GetIndex()));
}

vtkImageData* VXVolumeRepPimpl::renderedImage() const
{
  if (m_Resampled)
  {
    m_Resample->Update();
    return m_Resample->GetOutput();
  }
  return inputImage();
}

vtkAlgorithmOutput* VXVolumeRepPimpl::inputPort() const
{
  return m_InputPort;
}

vtkAlgorithmOutput* VXVolumeRepPimpl::outputPort() const
{
  return m_InputPort != nullptr && m_InputPort->GetProducer() != nullptr
             ? m_InputPort->GetProducer()->GetOutputPort(0)
             : nullptr;
}

bool VXVolumeRepPimpl::isInRenderer() const
{
  VXVisualizationWidget* window = visualizationWidget();
  return window != nullptr && window->getRenderer() != nullptr &&
         window->getRenderer()->HasViewProp(m_Volume);
}

void VXVolumeRepPimpl::connectInput(vtkAlgorithmOutput* inputPort)
{
  m_InputPort = inputPort;
  m_OutlineFilter->SetInputConnection(inputPort);
  updateResampling();
}

void VXVolumeRepPimpl::updateResampling()
{
  vtkImageData* image = inputImage();
  if (image == nullptr)
  {
    return;
  }
  int dims[3] = {0, 0, 0};
  image->GetDimensions(dims);
  const int limit = textureSizeLimit();
  const bool tooLarge = std::max({dims[0], dims[1], dims[2]}) > limit;
  if (!tooLarge)
  {
    m_Resampled = false;
    m_ResampleNote.clear();
    m_Mapper->SetInputConnection(m_InputPort);
    return;
  }
  // A texture over the limit draws nothing (or worse): draw a copy coarse enough to fit instead.
  // The resampler works on scalars, so it gets the drawn array alone as the scalars of an image over
  // the same box; a cell array becomes the point array of the image of the cell centres.
  vtkDataArray* array = arrayOf(m_ActiveArray);
  if (m_Resample == nullptr)
  {
    m_Resample = vtkSmartPointer<vtkImageResample>::New();
    m_Resample->SetInterpolationModeToLinear();
  }
  auto source = vtkSmartPointer<vtkImageData>::New();
  double spacing[3] = {1.0, 1.0, 1.0};
  double origin[3] = {0.0, 0.0, 0.0};
  image->GetSpacing(spacing);
  image->GetOrigin(origin);
  int sourceDims[3] = {dims[0], dims[1], dims[2]};
  const bool onCells = array != nullptr && image->GetPointData()->GetArray(array->GetName()) != array;
  if (onCells)
  {
    for (int axis = 0; axis < 3; ++axis)
    {
      sourceDims[axis] = std::max(dims[axis] - 1, 1);
      origin[axis] += dims[axis] > 1 ? spacing[axis] / 2.0 : 0.0;
    }
  }
  source->SetDimensions(sourceDims);
  source->SetSpacing(spacing);
  source->SetOrigin(origin);
  if (array != nullptr)
  {
    source->GetPointData()->SetScalars(array);
  }
  m_Resample->SetInputData(source);
  for (int axis = 0; axis < 3; ++axis)
  {
    if (sourceDims[axis] > limit)
    {
      m_Resample->SetAxisOutputSpacing(axis, spacing[axis] * (sourceDims[axis] - 1) / std::max(limit - 1, 1));
    }
    else
    {
      m_Resample->SetAxisMagnificationFactor(axis, 1.0);
    }
  }
  if (array == nullptr)
  {
    // Nothing to draw yet: the note still tells the user what will happen.
    m_Resampled = true;
    m_ResampleNote = QStringLiteral("The image (%1 x %2 x %3) exceeds the largest 3D texture of this display "
                                    "(%4); it is drawn resampled.")
                         .arg(dims[0])
                         .arg(dims[1])
                         .arg(dims[2])
                         .arg(limit);
    return;
  }
  m_Resample->Update();
  int resampled[3] = {0, 0, 0};
  m_Resample->GetOutput()->GetDimensions(resampled);
  m_Resampled = true;
  m_Mapper->SetInputConnection(m_Resample->GetOutputPort());
  m_ResampleNote = QStringLiteral("The image (%1 x %2 x %3) exceeds the largest 3D texture of this "
                                  "display (%4); it is drawn resampled to %5 x %6 x %7.")
                       .arg(dims[0])
                       .arg(dims[1])
                       .arg(dims[2])
                       .arg(limit)
                       .arg(resampled[0])
                       .arg(resampled[1])
                       .arg(resampled[2]);
  if (!m_OversizeReported)
  {
    m_OversizeReported = true;
    sendOutputMessage(QStringLiteral("Warning: ") + m_ResampleNote);
  }
}

void VXVolumeRepPimpl::initialize(vtkAlgorithmOutput* inputPort)
{
  VXVisualizationWidget* window = visualizationWidget();
  if (window == nullptr || inputPort == nullptr || inputPort->GetProducer() == nullptr)
  {
    return;
  }
  m_InputPort = inputPort;
  if (inputImage() == nullptr)
  {
    // Only images are drawn as volumes; the view stays in the tree, empty.
    m_InputPort = nullptr;
    return;
  }
  if (m_ActiveArray.isEmpty() || arrayOf(m_ActiveArray) == nullptr)
  {
    const QStringList names = arrayNames();
    m_ActiveArray = names.isEmpty() ? QString() : names.front();
  }
  connectInput(inputPort);
  applySettings();
  if (!isInRenderer())
  {
    window->addActor(m_Volume);
  }
  decimateGeometry();
  requestRender();
}

bool VXVolumeRepPimpl::finalize()
{
  if (!isInRenderer())
  {
    return false;
  }
  VXVisualizationWidget* window = visualizationWidget();
  window->removeActor(m_OutlineActor);
  window->removeActor(m_Volume);
  m_ScalarBarWidget->SetEnabled(0);
  showDataGrid(false);
  return true;
}

void VXVolumeRepPimpl::applySettings()
{
  m_Volume->SetVisibility(isVisible());
  if (inputImage() != nullptr)
  {
    updateActiveComponent();
  }
  showDataGrid(isVisible() && m_DataGridVisible);
}

void VXVolumeRepPimpl::decimateGeometry()
{
  // Nothing to build: VTK lowers the sampling while the camera moves, when asked to.
  m_Mapper->SetInteractiveUpdateRate(m_UseDecimationOnInteraction ? 1.0 : 1000.0);
  m_DecimationStale = false;
}

QStringList VXVolumeRepPimpl::arrayNames() const
{
  QStringList names;
  vtkImageData* image = inputImage();
  if (image == nullptr)
  {
    return names;
  }
  for (vtkDataSetAttributes* attributes : {static_cast<vtkDataSetAttributes*>(image->GetPointData()),
                                           static_cast<vtkDataSetAttributes*>(image->GetCellData())})
  {
    for (int i = 0; i < attributes->GetNumberOfArrays(); ++i)
    {
      vtkDataArray* array = attributes->GetArray(i);
      if (array != nullptr && array->GetName() != nullptr)
      {
        names << QString::fromUtf8(array->GetName());
      }
    }
  }
  return names;
}

vtkDataArray* VXVolumeRepPimpl::arrayOf(const QString& arrayName) const
{
  vtkImageData* image = inputImage();
  if (image == nullptr || arrayName.isEmpty())
  {
    return nullptr;
  }
  const QByteArray name = arrayName.toUtf8();
  if (vtkDataArray* array = image->GetPointData()->GetArray(name.constData()))
  {
    return array;
  }
  return image->GetCellData()->GetArray(name.constData());
}

std::array<double, 2> VXVolumeRepPimpl::dataRange(const QString& arrayName) const
{
  std::array<double, 2> range = {0.0, 1.0};
  vtkDataArray* array = arrayOf(arrayName);
  if (array == nullptr)
  {
    return range;
  }
  // Another array than the active one is ranged over its magnitude.
  int component = arrayName == m_ActiveArray ? m_ActiveComponent : k_Magnitude;
  if (array->GetNumberOfComponents() == 1)
  {
    component = 0;
  }
  array->GetRange(range.data(), component);
  if (!(range[0] < range[1]))
  {
    range = {range[0] - 0.5, range[0] + 0.5};
  }
  return range;
}

VXLookupTable* VXVolumeRepPimpl::colorMapOf(const QString& arrayName) const
{
  const auto found = m_ArrayLuts.find(arrayName);
  return found != m_ArrayLuts.end() ? found->second.data() : nullptr;
}

vtkPiecewiseFunction* VXVolumeRepPimpl::opacityFunctionOf(const QString& arrayName) const
{
  const auto found = m_ArrayOpacityFunctions.find(arrayName);
  return found != m_ArrayOpacityFunctions.end() ? found->second.Get() : nullptr;
}

VXLookupTable* VXVolumeRepPimpl::lookupTable() const
{
  return colorMapOf(m_ActiveArray);
}

void VXVolumeRepPimpl::initializeColorTransferFunction(const QString& arrayName)
{
  QSharedPointer<VXLookupTable>& table = m_ArrayLuts[arrayName];
  if (table.isNull())
  {
    table.reset(new VXLookupTable());
  }
  if (m_UsingDefaultPreset)
  {
    table->parseRgbArray({VXLookupTable::k_DefaultPresetName});
  }
  else
  {
    table->parseRgbJson(m_Preset);
  }
  if (m_ColorMapInverted != table->isInverted())
  {
    table->invert();
  }
  std::array<double, 2> range = dataRange(arrayName);
  if (arrayName == m_ActiveArray && m_UsingCustomRange)
  {
    range = m_CustomRange;
  }
  table->setRange(range[0], range[1]);
  m_ArrayCustomRanges[arrayName] = {range[0], range[1]};
  if (arrayName == m_ActiveArray)
  {
    m_CustomRangeDialog->setRange(range);
  }
}

void VXVolumeRepPimpl::initializeScalarOpacityFunction(const QString& arrayName)
{
  vtkSmartPointer<vtkPiecewiseFunction>& function = m_ArrayOpacityFunctions[arrayName];
  if (function == nullptr)
  {
    function = vtkSmartPointer<vtkPiecewiseFunction>::New();
  }
  const auto known = m_ArrayCustomRanges.find(arrayName);
  const std::array<double, 2> range = known != m_ArrayCustomRanges.end()
                                          ? std::array<double, 2>{known->second.min, known->second.max}
                                          : dataRange(arrayName);
  // A linear ramp from transparent to opaque over the range.
  function->RemoveAllPoints();
  function->AddPoint(range[0], 0.0);
  function->AddPoint(range[1], 1.0);
}

void VXVolumeRepPimpl::updateActiveComponent()
{
  vtkDataArray* array = arrayOf(m_ActiveArray);
  if (array == nullptr)
  {
    m_Volume->SetVisibility(false);
    m_ScalarBarWidget->SetEnabled(0);
    return;
  }
  m_Volume->SetVisibility(isVisible());
  if (m_ArrayLuts.count(m_ActiveArray) == 0 || m_ArrayLuts[m_ActiveArray].isNull())
  {
    initializeColorTransferFunction(m_ActiveArray);
  }
  if (m_ArrayOpacityFunctions.count(m_ActiveArray) == 0 || m_ArrayOpacityFunctions[m_ActiveArray] == nullptr)
  {
    initializeScalarOpacityFunction(m_ActiveArray);
  }
  VXLookupTable* table = m_ArrayLuts[m_ActiveArray].data();
  vtkColorTransferFunction* colors = table->getColorTransferFunction();
  m_Property->SetColor(0, colors);
  m_Property->SetScalarOpacity(0, m_ArrayOpacityFunctions[m_ActiveArray]);

  vtkImageData* image = inputImage();
  const QByteArray name = m_ActiveArray.toUtf8();
  // The resampled copy holds the array as point scalars.
  const bool onPoints = m_Resampled || image->GetPointData()->GetArray(name.constData()) == array;
  if (onPoints)
  {
    m_Mapper->SetScalarModeToUsePointFieldData();
  }
  else
  {
    m_Mapper->SetScalarModeToUseCellFieldData();
  }
  m_Mapper->SelectScalarArray(name.constData());

  const int components = array->GetNumberOfComponents();
  if (m_ActiveComponent >= components)
  {
    m_ActiveComponent = k_Magnitude;
  }
  QString title = m_ActiveArray;
  if (components == 1)
  {
    m_Mapper->SetVectorMode(vtkSmartVolumeMapper::DISABLED);
  }
  else if (m_ActiveComponent == k_Magnitude)
  {
    m_Mapper->SetVectorMode(vtkSmartVolumeMapper::MAGNITUDE);
    title += QStringLiteral("\nMagnitude");
  }
  else
  {
    m_Mapper->SetVectorMode(vtkSmartVolumeMapper::COMPONENT);
    m_Mapper->SetVectorComponent(m_ActiveComponent);
    title += QStringLiteral("\n") + QString::number(m_ActiveComponent);
  }
  const auto known = m_ArrayCustomRanges.find(m_ActiveArray);
  if (known != m_ArrayCustomRanges.end())
  {
    m_CustomRangeDialog->setRange({known->second.min, known->second.max});
  }
  updateColorLegend(title);
  updateColorMapEditor();
  generateHistogramData();
}

void VXVolumeRepPimpl::updateColorLegend(const QString& title)
{
  VXLookupTable* table = lookupTable();
  auto* representation = vtkScalarBarRepresentation::SafeDownCast(m_ScalarBarWidget->GetRepresentation());
  vtkScalarBarActor* bar = representation->GetScalarBarActor();
  if (table != nullptr)
  {
    bar->SetLookupTable(table->getColorTransferFunction());
  }
  bar->SetTitle(title.toUtf8().constData());
  representation->SetPosition(m_ScalarBarPosition[0], m_ScalarBarPosition[1]);
  representation->SetPosition2(m_ScalarBarPosition[2], m_ScalarBarPosition[3]);
  setScalarBarVisibility(m_ScalarBarVisible);
}

void VXVolumeRepPimpl::setActiveArray(const QString& arrayName)
{
  if (arrayName != m_ActiveArray)
  {
    m_ActiveComponent = k_Magnitude;
    // A custom range belongs to the array it was set on.
    m_UsingCustomRange = false;
  }
  const bool changed = arrayName != m_ActiveArray;
  m_ActiveArray = arrayName;
  if (changed && m_Resampled)
  {
    updateResampling();
  }
  updateActiveComponent();
  requestRender();
}

void VXVolumeRepPimpl::setActiveComponent(int component)
{
  m_ActiveComponent = component < 0 ? k_Magnitude : component;
  updateActiveComponent();
  requestRender();
}

void VXVolumeRepPimpl::setOpacityFunctionRange(const QString& arrayName, double min, double max)
{
  vtkPiecewiseFunction* function = opacityFunctionOf(arrayName);
  if (function == nullptr)
  {
    return;
  }
  double oldRange[2] = {0.0, 1.0};
  function->GetRange(oldRange);
  double span = oldRange[1] - oldRange[0];
  if (span == 0.0)
  {
    span = 1.0;
  }
  const std::vector<std::array<double, 2>> nodes = nodesOf(function);
  function->RemoveAllPoints();
  for (const auto& node : nodes)
  {
    function->AddPoint(min + (node[0] - oldRange[0]) / span * (max - min), node[1]);
  }
}

void VXVolumeRepPimpl::rescaleToCustomRange(double min, double max)
{
  if (m_ActiveArray.isEmpty() || arrayOf(m_ActiveArray) == nullptr)
  {
    return;
  }
  if (colorMapOf(m_ActiveArray) == nullptr)
  {
    initializeColorTransferFunction(m_ActiveArray);
  }
  if (opacityFunctionOf(m_ActiveArray) == nullptr)
  {
    initializeScalarOpacityFunction(m_ActiveArray);
  }
  m_UsingCustomRange = true;
  m_CustomRange = {min, max};
  colorMapOf(m_ActiveArray)->setRange(min, max);
  setOpacityFunctionRange(m_ActiveArray, min, max);
  m_ArrayCustomRanges[m_ActiveArray] = {min, max};
  m_CustomRangeDialog->setRange(m_CustomRange);
  updateActiveComponent();
  requestRender();
}

void VXVolumeRepPimpl::rescaleToDataRange()
{
  const std::array<double, 2> range = dataRange(m_ActiveArray);
  rescaleToCustomRange(range[0], range[1]);
  m_UsingCustomRange = false;
}

void VXVolumeRepPimpl::resetColorMap()
{
  if (m_ActiveArray.isEmpty() || arrayOf(m_ActiveArray) == nullptr)
  {
    return;
  }
  m_UsingCustomRange = false;
  m_ArrayCustomRanges.erase(m_ActiveArray);
  initializeColorTransferFunction(m_ActiveArray);
  initializeScalarOpacityFunction(m_ActiveArray);
  updateActiveComponent();
  requestRender();
}

void VXVolumeRepPimpl::loadPresetColors(const ColorPreset& preset)
{
  m_Preset = preset;
  m_UsingDefaultPreset = false;
  if (VXLookupTable* table = lookupTable())
  {
    const std::array<double, 2> range = table->getRange();
    table->parseRgbJson(preset);
    if (m_ColorMapInverted != table->isInverted())
    {
      table->invert();
    }
    table->setRange(range[0], range[1]);
  }
  updateActiveComponent();
  requestRender();
}

void VXVolumeRepPimpl::restoreDefaultPresetColors()
{
  m_UsingDefaultPreset = true;
  m_Preset = ZRPreferences::Instance()->getDefaultColorPreset();
  if (VXLookupTable* table = lookupTable())
  {
    const std::array<double, 2> range = table->getRange();
    table->parseRgbArray({VXLookupTable::k_DefaultPresetName});
    if (m_ColorMapInverted != table->isInverted())
    {
      table->invert();
    }
    table->setRange(range[0], range[1]);
  }
  updateColorMapEditor();
  requestRender();
}

void VXVolumeRepPimpl::setColorMapInverted(bool inverted)
{
  m_ColorMapInverted = inverted;
  VXLookupTable* table = lookupTable();
  if (table != nullptr && table->isInverted() != inverted)
  {
    table->invert();
  }
  updateColorMapEditor();
  requestRender();
}

void VXVolumeRepPimpl::setScalarBarVisibility(bool visible)
{
  m_ScalarBarVisible = visible;
  VXVisualizationWidget* window = visualizationWidget();
  vtkRenderWindowInteractor* interactor = window != nullptr ? window->getRenderWindowInteractor() : nullptr;
  if (interactor == nullptr)
  {
    return;
  }
  m_ScalarBarWidget->SetInteractor(interactor);
  m_ScalarBarWidget->SetEnabled(visible && isVisible() && lookupTable() != nullptr ? 1 : 0);
  requestRender();
}

void VXVolumeRepPimpl::setVisibility(bool visible)
{
  VXRepresentationPimpl::setVisibility(visible);
  m_Volume->SetVisibility(visible && arrayOf(m_ActiveArray) != nullptr);
  if (VXVisualizationWidget* window = visualizationWidget())
  {
    if (!visible)
    {
      window->removeActor(m_OutlineActor);
    }
    setScalarBarVisibility(m_ScalarBarVisible);
    window->render();
  }
}

std::array<double, 6> VXVolumeRepPimpl::getModuleBounds() const
{
  std::array<double, 6> bounds = {0.0, -1.0, 0.0, -1.0, 0.0, -1.0};
  if (vtkImageData* image = inputImage())
  {
    image->GetBounds(bounds.data());
  }
  return bounds;
}

void VXVolumeRepPimpl::highlightInRenderWindow(bool highlight)
{
  VXVisualizationWidget* window = visualizationWidget();
  if (window == nullptr || !isVisible() || inputImage() == nullptr)
  {
    return;
  }
  window->removeActor(m_OutlineActor);
  if (highlight)
  {
    window->addActor(m_OutlineActor);
  }
  window->render();
}

void VXVolumeRepPimpl::receivePipelineOutputReloaded()
{
  if (inputImage() == nullptr)
  {
    return;
  }
  updateResampling();
  m_HistogramKey.clear();
  // The data range follows the new data unless a custom range is kept.
  if (!m_UsingCustomRange && arrayOf(m_ActiveArray) != nullptr && colorMapOf(m_ActiveArray) != nullptr)
  {
    const std::array<double, 2> range = dataRange(m_ActiveArray);
    colorMapOf(m_ActiveArray)->setRange(range[0], range[1]);
    setOpacityFunctionRange(m_ActiveArray, range[0], range[1]);
    m_ArrayCustomRanges[m_ActiveArray] = {range[0], range[1]};
  }
  applySettings();
  if (m_ArrayComboBox)
  {
    updateSettingsControls();
  }
  requestRender();
}

void VXVolumeRepPimpl::copySettings(const VXRepresentationPimpl* other)
{
  VXRepresentationPimpl::copySettings(other);
  const auto* volume = dynamic_cast<const VXVolumeRepPimpl*>(other);
  if (volume == nullptr)
  {
    return;
  }
  m_ActiveArray = volume->m_ActiveArray;
  m_ActiveComponent = volume->m_ActiveComponent;
  m_ScalarBarVisible = volume->m_ScalarBarVisible;
  m_ScalarBarPosition = volume->m_ScalarBarPosition;
  m_ColorMapInverted = volume->m_ColorMapInverted;
  m_Preset = volume->m_Preset;
  m_UsingDefaultPreset = volume->m_UsingDefaultPreset;
  m_UsingCustomRange = volume->m_UsingCustomRange;
  m_CustomRange = volume->m_CustomRange;
  m_ArrayCustomRanges = volume->m_ArrayCustomRanges;
  // Each window edits its own copies.
  m_ArrayLuts.clear();
  for (const auto& [name, table] : volume->m_ArrayLuts)
  {
    m_ArrayLuts[name].reset(table->deepCopy());
  }
  m_ArrayOpacityFunctions.clear();
  for (const auto& [name, function] : volume->m_ArrayOpacityFunctions)
  {
    auto copy = vtkSmartPointer<vtkPiecewiseFunction>::New();
    copy->DeepCopy(function);
    m_ArrayOpacityFunctions[name] = copy;
  }
  applySettings();
}

void VXVolumeRepPimpl::write(nlohmann::json& json) const
{
  VXRepresentationPimpl::write(json);
  json[k_ActiveArray] = m_ActiveArray.toStdString();
  json[k_ActiveComponent] = m_ActiveComponent;
  json[k_ScalarBarVisible] = m_ScalarBarVisible;
  for (int i = 0; i < 4; ++i)
  {
    json[k_ScalarBarPosition[i]] = m_ScalarBarPosition[i];
  }
  json[k_ColorMapInverted] = m_ColorMapInverted;
  json[k_ColorPreset] = m_Preset.toJson();
  json[k_UsingDefaultPreset] = m_UsingDefaultPreset;
  json[k_UsingCustomRange] = m_UsingCustomRange;
  json[k_CustomRangeMin] = m_CustomRange[0];
  json[k_CustomRangeMax] = m_CustomRange[1];
  nlohmann::json ranges = nlohmann::json::object();
  for (const auto& [name, range] : m_ArrayCustomRanges)
  {
    ranges[name.toStdString()] = {{k_CustomRangeMin, range.min}, {k_CustomRangeMax, range.max}};
  }
  json[k_ArrayCustomRanges] = ranges;
  nlohmann::json tables = nlohmann::json::object();
  for (const auto& [name, table] : m_ArrayLuts)
  {
    nlohmann::json tableJson = nlohmann::json::object();
    table->write(tableJson);
    tables[name.toStdString()] = tableJson;
  }
  json[k_ArrayLuts] = tables;
  nlohmann::json functions = nlohmann::json::object();
  for (const auto& [name, function] : m_ArrayOpacityFunctions)
  {
    nlohmann::json nodes = nlohmann::json::array();
    for (const auto& node : nodesOf(function))
    {
      nodes.push_back({node[0], node[1]});
    }
    functions[name.toStdString()] = nodes;
  }
  json[k_ArrayOpacityFunctions] = functions;
}

void VXVolumeRepPimpl::read(const nlohmann::json& json)
{
  VXRepresentationPimpl::read(json);
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
  if (json.contains(k_ScalarBarPosition[0]) && json.contains(k_ScalarBarPosition[1]) &&
      json.contains(k_ScalarBarPosition[2]) && json.contains(k_ScalarBarPosition[3]))
  {
    for (int i = 0; i < 4; ++i)
    {
      m_ScalarBarPosition[i] = json.at(k_ScalarBarPosition[i]).get<double>();
    }
  }
  readIfPresent(json, k_ColorMapInverted, m_ColorMapInverted);
  if (json.contains(k_ColorPreset))
  {
    m_Preset = ColorPreset(json.at(k_ColorPreset));
  }
  readIfPresent(json, k_UsingDefaultPreset, m_UsingDefaultPreset);
  readIfPresent(json, k_UsingCustomRange, m_UsingCustomRange);
  readIfPresent(json, k_CustomRangeMin, m_CustomRange[0]);
  readIfPresent(json, k_CustomRangeMax, m_CustomRange[1]);
  if (json.contains(k_ArrayCustomRanges))
  {
    m_ArrayCustomRanges.clear();
    for (const auto& [name, range] : json.at(k_ArrayCustomRanges).items())
    {
      m_ArrayCustomRanges[QString::fromStdString(name)] = {range.at(k_CustomRangeMin).get<double>(),
                                                           range.at(k_CustomRangeMax).get<double>()};
    }
  }
  if (json.contains(k_ArrayLuts))
  {
    m_ArrayLuts.clear();
    for (const auto& [name, tableJson] : json.at(k_ArrayLuts).items())
    {
      QSharedPointer<VXLookupTable> table(new VXLookupTable());
      table->read(tableJson);
      m_ArrayLuts[QString::fromStdString(name)] = table;
    }
  }
  if (json.contains(k_ArrayOpacityFunctions))
  {
    m_ArrayOpacityFunctions.clear();
    for (const auto& [name, nodes] : json.at(k_ArrayOpacityFunctions).items())
    {
      auto function = vtkSmartPointer<vtkPiecewiseFunction>::New();
      for (const auto& node : nodes)
      {
        function->AddPoint(node.at(0).get<double>(), node.at(1).get<double>());
      }
      m_ArrayOpacityFunctions[QString::fromStdString(name)] = function;
    }
  }
  if (m_UsingCustomRange)
  {
    m_CustomRangeDialog->setRange(m_CustomRange);
  }
}
