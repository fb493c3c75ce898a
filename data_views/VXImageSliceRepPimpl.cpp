#include "data_views/VXImageSliceRepPimpl.h"

#include "colour/VXArrayHistogramWidget.h"
#include "colour/VXCustomRangeDialog.h"
#include "colour/VXLookupTable.h"
#include "data_views/VXImageSliceFilter.h"
#include "data_views/VXOpenGLImageSliceMapper.h"
#include "data_views/VXRepresentation.h"
#include "data_views/VXStateReading.h"
#include "data_views/VXUpdateHistogramCallback.h"
#include "data_views/ZRVtkModuleUtils.h"
#include "platform/ColorPresetsDialog.h"
#include "platform/ZRCheckBox.h"
#include "platform/ZRIconPushButton.h"
#include "platform/ZRPreferences.h"
#include "platform/ZRSlider.h"
#include "platform/ZRSpinBox.h"
#include "views/VXVisualizationWidget.h"

#include <QSignalBlocker>

#include <nlohmann/json.hpp>

#include <vtkAlgorithm.h>
#include <vtkAlgorithmOutput.h>
#include <vtkCallbackCommand.h>
#include <vtkCommand.h>
#include <vtkDataArray.h>
#include <vtkExtractVOI.h>
#include <vtkImageData.h>
#include <vtkImageProperty.h>
#include <vtkImageSlice.h>
#include <vtkLookupTable.h>
#include <vtkPointData.h>
#include <vtkProperty2D.h>
#include <vtkRenderWindowInteractor.h>
#include <vtkRenderer.h>
#include <vtkScalarBarActor.h>
#include <vtkScalarBarRepresentation.h>
#include <vtkScalarBarWidget.h>
#include <vtkTextProperty.h>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace ZRVtkModule::state;
using image_slice_utilities::VXImageSliceFilter;
using image_slice_utilities::VXOpenGLImageSliceMapper;

namespace
{
const char* const k_SliceDirection = "slice_dir";
const char* const k_SliceNumber = "slice_num";
const char* const k_SolidColor[3] = {"solid_color_r", "solid_color_g", "solid_color_b"};
const char* const k_ToggleLeft = "toggle_left_slice_num";
const char* const k_ToggleRight = "toggle_right_slice_num";
const char* const k_AnimationDuration = "animation_duration";
const char* const k_GenerateHistogramData = "generate_histogram_data";
const char* const k_OpacityPercent = "opacity_percent";

// The world axis that a slice direction steps along: XY steps in z, YZ in x, XZ in y.
int axisOf(ZRVtkModule::constants::SliceDirection direction)
{
  switch (direction)
  {
  case ZRVtkModule::constants::YZPlane:
    return 0;
  case ZRVtkModule::constants::XZPlane:
    return 1;
  default:
    return 2;
  }
}

ZRVtkModule::constants::SliceDirection directionFrom(int value)
{
  return value == 1   ? ZRVtkModule::constants::YZPlane
         : value == 2 ? ZRVtkModule::constants::XZPlane
                      : ZRVtkModule::constants::XYPlane;
}

} // namespace

VXImageSliceRepPimpl::VXImageSliceRepPimpl(VXRepresentation* owner, VXAbstractViewWidget* view)
    : VXRepresentationPimpl(owner, view)
    , m_Filter(vtkSmartPointer<VXImageSliceFilter>::New())
    , m_Mapper(vtkSmartPointer<VXOpenGLImageSliceMapper>::New())
    , m_ImageSlice(vtkSmartPointer<vtkImageSlice>::New())
    , m_SolidColorTable(vtkSmartPointer<vtkLookupTable>::New())
    , m_LookupTable(new VXLookupTable(this))
    , m_ScalarBarWidget(vtkSmartPointer<vtkScalarBarWidget>::New())
{
  m_ImageSlice->SetMapper(m_Mapper);
  m_ImageSlice->GetProperty()->SetInterpolationTypeToNearest();
  m_SolidColorTable->SetNumberOfTableValues(1);
  m_SolidColorTable->Build();

  ConfigureScalarBar(m_ScalarBarWidget);

  m_AnimatorCallback = vtkSmartPointer<vtkCallbackCommand>::New();
  m_AnimatorCallback->SetClientData(this);
  m_AnimatorCallback->SetCallback(&VXImageSliceRepPimpl::SliceAnimatorCallbackFunction);
  connectColorDialogs();
}

VXImageSliceRepPimpl::~VXImageSliceRepPimpl()
{
  stopTimer();
  if (m_Interactor != nullptr)
  {
    m_Interactor->RemoveObserver(m_TimerObserverTag);
    m_Interactor->RemoveObserver(m_DestroyTimerObserverTag);
  }
  m_AnimatorCallback->SetClientData(nullptr);
  m_ScalarBarWidget->SetEnabled(0);
  stopObservingProducer();
  if (m_HistogramCallback != nullptr)
  {
    m_HistogramCallback->setRepresentation(nullptr);
  }
  finalize();
  delete m_ColorPresetsDialog.data();
  delete m_CustomRangeDialog.data();
}

// --- drawing chain ---------------------------------------------------------------------------------

vtkImageSlice* VXImageSliceRepPimpl::imageSlice() const
{
  return m_ImageSlice;
}

VXOpenGLImageSliceMapper* VXImageSliceRepPimpl::sliceMapper() const
{
  return m_Mapper;
}

VXImageSliceFilter* VXImageSliceRepPimpl::sliceFilter() const
{
  return m_Filter;
}

vtkImageData* VXImageSliceRepPimpl::inputImage() const
{
  if (m_InputPort == nullptr || m_InputPort->GetProducer() == nullptr)
  {
    return nullptr;
  }
  return vtkImageData::SafeDownCast(m_InputPort->GetProducer()->GetOutputDataObject(m_InputPort->GetIndex()));
}

vtkImageData* VXImageSliceRepPimpl::sliceImage() const
{
  return m_Filter->GetNumberOfInputConnections(0) > 0 ? m_Filter->GetOutput() : nullptr;
}

bool VXImageSliceRepPimpl::hasImage() const
{
  vtkImageData* image = inputImage();
  return image != nullptr && image->GetNumberOfPoints() > 0;
}

void VXImageSliceRepPimpl::initialize(vtkAlgorithmOutput* inputPort)
{
  VXVisualizationWidget* window = visualizationWidget();
  if (window == nullptr || inputPort == nullptr)
  {
    return;
  }
  if (m_InputPort != inputPort)
  {
    m_InputPort = inputPort;
    // Only images are drawn; anything else leaves the view without data.
    if (inputImage() == nullptr)
    {
      return;
    }
    m_Filter->SetInputConnection(inputPort);
    m_Mapper->SetInputConnection(m_Filter->GetOutputPort());
    m_UniqueValues.clear();
    m_NumSlicesCache = 0;
    observeProducer();
  }
  if (!hasImage())
  {
    return;
  }
  m_Filter->Update();
  if (m_Colouring.m_ActiveArray.isEmpty() && !m_Colouring.m_UsingSolidColor)
  {
    // A new view shows the image's own scalars.
    if (vtkDataArray* scalars = sliceImage()->GetPointData()->GetScalars())
    {
      m_Colouring.m_ActiveArray = QString::fromUtf8(scalars->GetName() != nullptr ? scalars->GetName() : "");
    }
  }
  if (m_Interactor != nullptr && m_TimerObserverTag == 0)
  {
    m_TimerObserverTag = m_Interactor->AddObserver(vtkCommand::TimerEvent, m_AnimatorCallback);
    m_DestroyTimerObserverTag = m_Interactor->AddObserver(vtkCommand::DestroyTimerEvent, m_AnimatorCallback);
  }
  applySettings();
  if (window->getRenderer() != nullptr && !window->getRenderer()->HasViewProp(m_ImageSlice))
  {
    window->addActor(m_ImageSlice);
  }
  m_ImageSlice->SetVisibility(isVisible());
  setScalarBarVisibility(m_Colouring.m_ScalarBarVisible);
  requestRender();
}

bool VXImageSliceRepPimpl::finalize()
{
  VXVisualizationWidget* window = visualizationWidget();
  if (window == nullptr || window->getRenderer() == nullptr ||
      !window->getRenderer()->HasViewProp(m_ImageSlice))
  {
    return false;
  }
  stopTimer();
  window->removeOutline(m_ImageSlice);
  window->removeActor(m_ImageSlice);
  m_ScalarBarWidget->SetEnabled(0);
  showDataGrid(false);
  return true;
}

vtkAlgorithmOutput* VXImageSliceRepPimpl::inputPort() const
{
  return m_InputPort;
}

vtkAlgorithmOutput* VXImageSliceRepPimpl::outputPort() const
{
  return m_InputPort != nullptr && m_InputPort->GetProducer() != nullptr
             ? m_InputPort->GetProducer()->GetOutputPort(0)
             : nullptr;
}

void VXImageSliceRepPimpl::setVisibility(bool visible)
{
  VXRepresentationPimpl::setVisibility(visible);
  m_ImageSlice->SetVisibility(visible);
  if (VXVisualizationWidget* window = visualizationWidget())
  {
    if (!visible)
    {
      window->removeOutline(m_ImageSlice);
    }
    window->render();
  }
  setScalarBarVisibility(m_Colouring.m_ScalarBarVisible);
}

std::array<double, 6> VXImageSliceRepPimpl::getModuleBounds() const
{
  std::array<double, 6> bounds = {0.0, -1.0, 0.0, -1.0, 0.0, -1.0};
  if (hasImage())
  {
    const double* slice = m_ImageSlice->GetBounds();
    if (slice != nullptr)
    {
      std::copy(slice, slice + 6, bounds.begin());
    }
  }
  return bounds;
}

VXLookupTable* VXImageSliceRepPimpl::lookupTable() const
{
  return m_LookupTable;
}

void VXImageSliceRepPimpl::highlightInRenderWindow(bool highlight)
{
  VXVisualizationWidget* window = visualizationWidget();
  if (window == nullptr || !isVisible())
  {
    return;
  }
  window->removeOutline(m_ImageSlice);
  if (highlight)
  {
    window->addOutline(m_ImageSlice);
  }
  window->render();
}

void VXImageSliceRepPimpl::updateSpacing()
{
  // The points of the drawn image stand for cell centres but keep the cells' origin: half a cell on.
  vtkImageData* image = sliceImage();
  if (image == nullptr || !m_Filter->GetUsesCellData())
  {
    m_ImageSlice->SetPosition(0.0, 0.0, 0.0);
    return;
  }
  const double* spacing = image->GetSpacing();
  m_ImageSlice->SetPosition(spacing[0] / 2.0, spacing[1] / 2.0, spacing[2] / 2.0);
}

void VXImageSliceRepPimpl::applySettings()
{
  m_ImageSlice->GetProperty()->SetOpacity(m_Opacity);
  loadKeptRgbPreset();
  m_LookupTable->setNANColor(m_Colouring.m_NanColor);
  if (hasImage())
  {
    m_Filter->Update();
    updateSpacing();
    m_NumSlicesCache = 0;
    updateSlice(true);
  }
  updateColoring();
  updateSliceControls();
}

void VXImageSliceRepPimpl::receivePipelineOutputReloaded()
{
  m_UniqueValues.clear();
  m_NumSlicesCache = 0;
  if (!hasImage())
  {
    return;
  }
  // A view made over an empty image starts drawing once the data comes.
  VXVisualizationWidget* window = visualizationWidget();
  if (window != nullptr && window->getRenderer() != nullptr &&
      !window->getRenderer()->HasViewProp(m_ImageSlice))
  {
    initialize(m_InputPort);
    return;
  }
  m_Filter->Update();
  updateSpacing();
  updateSlice(true);
  updateColoring();
  updateSliceControls();
  generateHistogramData();
}

// --- colouring -------------------------------------------------------------------------------------

vtkDataArray* VXImageSliceRepPimpl::activeDataArray() const
{
  vtkImageData* image = sliceImage();
  if (image == nullptr || m_Colouring.m_ActiveArray.isEmpty())
  {
    return nullptr;
  }
  return image->GetPointData()->GetArray(m_Colouring.m_ActiveArray.toUtf8().constData());
}

bool VXImageSliceRepPimpl::isUsingSolidColor() const
{
  return m_Colouring.isUsingSolidColor();
}

void VXImageSliceRepPimpl::loadKeptRgbPreset()
{
  m_Colouring.loadKeptRgbPreset(*m_LookupTable);
}

std::array<double, 2> VXImageSliceRepPimpl::colorRange() const
{
  return m_Colouring.colorRange(activeDataArray());
}

const std::set<double>& VXImageSliceRepPimpl::uniqueValues()
{
  return m_Colouring.uniqueValues(activeDataArray(), m_UniqueValues);
}

void VXImageSliceRepPimpl::updateColoring()
{
  vtkImageProperty* property = m_ImageSlice->GetProperty();
  vtkDataArray* array = isUsingSolidColor() ? nullptr : activeDataArray();
  if (array == nullptr || array->GetName() == nullptr)
  {
    // One colour for every cell, whatever the scalars hold.
    m_SolidColorTable->SetTableValue(0, m_SolidColor.redF(), m_SolidColor.greenF(), m_SolidColor.blueF(),
                                     1.0);
    m_SolidColorTable->SetTableRange(-std::numeric_limits<double>::max(), std::numeric_limits<double>::max());
    m_SolidColorTable->SetVectorModeToComponent();
    property->SetLookupTable(m_SolidColorTable);
    property->UseLookupTableScalarRangeOn();
    m_ScalarBarWidget->SetEnabled(0);
    return;
  }
  m_Filter->SetActiveArrayName(array->GetName());
  const QString title = m_Colouring.applyToLookupTable(array, *m_LookupTable, m_UniqueValues);
  vtkColorTransferFunction* transferFunction = m_LookupTable->getColorTransferFunction();
  property->SetLookupTable(m_Colouring.mapsDirectly(array) ? nullptr : transferFunction);
  property->UseLookupTableScalarRangeOn();
  m_Colouring.updateScalarBar(m_ScalarBarWidget, transferFunction, title);
  setScalarBarVisibility(m_Colouring.m_ScalarBarVisible);
}

void VXImageSliceRepPimpl::setActiveArray(const QString& arrayName)
{
  if (arrayName != m_Colouring.m_ActiveArray)
  {
    m_Colouring.m_ActiveComponent = k_Magnitude;
  }
  m_Colouring.m_UsingSolidColor = arrayName.isEmpty() || arrayName == ZRVtkModule::constants::k_SolidColor;
  if (!m_Colouring.m_UsingSolidColor)
  {
    m_Colouring.m_ActiveArray = arrayName;
  }
  updateColoring();
  generateHistogramData();
  requestRender();
}

void VXImageSliceRepPimpl::setActiveComponent(int component)
{
  m_Colouring.m_ActiveComponent = component < 0 ? k_Magnitude : component;
  updateColoring();
  generateHistogramData();
  requestRender();
}

void VXImageSliceRepPimpl::setUseSolidColor(bool solid)
{
  m_Colouring.m_UsingSolidColor = solid;
  updateColoring();
  if (m_HistogramWidget)
  {
    m_HistogramWidget->setPlotVisibility(!solid);
  }
  requestRender();
}

void VXImageSliceRepPimpl::setSolidColor(const QColor& color)
{
  if (!color.isValid())
  {
    return;
  }
  m_SolidColor = color;
  updateColoring();
  requestRender();
}

void VXImageSliceRepPimpl::setOpacity(int percent)
{
  m_Opacity = std::clamp(percent / 100.0, 0.0, 1.0);
  m_ImageSlice->GetProperty()->SetOpacity(m_Opacity);
  requestRender();
}

int VXImageSliceRepPimpl::getOpacity() const
{
  return static_cast<int>(std::lround(100.0 * m_Opacity));
}

void VXImageSliceRepPimpl::setScalarMapping(int index)
{
  m_Colouring.setScalarMapping(index);
  updateColoring();
  requestRender();
}

void VXImageSliceRepPimpl::loadRGBPresetColors(const ColorPreset& preset)
{
  m_Colouring.loadRgbPreset(preset, *m_LookupTable);
  updateColoring();
  requestRender();
}

void VXImageSliceRepPimpl::loadIndexedPresetColors(const ColorPreset& preset)
{
  m_Colouring.loadIndexedPreset(preset);
  updateColoring();
  requestRender();
}

void VXImageSliceRepPimpl::loadPresetColors(const ColorPreset& preset)
{
  if (VXColouringSettings::isIndexedOnly(preset))
  {
    loadIndexedPresetColors(preset);
    return;
  }
  loadRGBPresetColors(preset);
}

void VXImageSliceRepPimpl::restoreDefaultRgbPresetColors()
{
  m_Colouring.restoreDefaultRgbPreset(*m_LookupTable);
  updateColoring();
  requestRender();
}

void VXImageSliceRepPimpl::setColorMapInverted(bool inverted)
{
  m_Colouring.setColorMapInverted(inverted, *m_LookupTable);
  requestRender();
}

void VXImageSliceRepPimpl::setNanColor(const QColor& color)
{
  if (m_Colouring.setNanColor(color, *m_LookupTable))
  {
    requestRender();
  }
}

void VXImageSliceRepPimpl::setCustomRange(double min, double max)
{
  if (!m_Colouring.setCustomRange(min, max))
  {
    return;
  }
  updateColoring();
  generateHistogramData();
  requestRender();
}

void VXImageSliceRepPimpl::useDataRange()
{
  m_Colouring.m_UsingCustomRange = false;
  updateColoring();
  generateHistogramData();
  requestRender();
}

void VXImageSliceRepPimpl::setInterpretValuesAsCategories(bool categories)
{
  if (!m_Colouring.setInterpretValuesAsCategories(categories, *m_LookupTable))
  {
    return;
  }
  updateColoring();
  requestRender();
}

vtkScalarBarWidget* VXImageSliceRepPimpl::scalarBarWidget() const
{
  return m_ScalarBarWidget;
}

void VXImageSliceRepPimpl::setScalarBarVisibility(bool visible)
{
  m_Colouring.m_ScalarBarVisible = visible;
  const bool show = visible && isVisible() && !isUsingSolidColor() && activeDataArray() != nullptr;
  if (VXColouringSettings::showScalarBar(m_ScalarBarWidget, visualizationWidget(), show))
  {
    requestRender();
  }
}

// --- slicing ---------------------------------------------------------------------------------------

std::array<int, 2> VXImageSliceRepPimpl::getSliceDirectionBounds() const
{
  vtkImageData* image = hasImage() ? sliceImage() : nullptr;
  if (image == nullptr)
  {
    return {0, 0};
  }
  const int* extent = image->GetExtent();
  const int axis = axisOf(m_SliceDirection);
  return {extent[2 * axis], extent[2 * axis + 1]};
}

int VXImageSliceRepPimpl::getNumSlices()
{
  if (m_NumSlicesCache == 0)
  {
    const std::array<int, 2> bounds = getSliceDirectionBounds();
    m_NumSlicesCache = bounds[1] - bounds[0];
  }
  return m_NumSlicesCache;
}

void VXImageSliceRepPimpl::updateSlice(bool updateToggles)
{
  if (m_Mapper->GetNumberOfInputConnections(0) == 0 || !hasImage())
  {
    return;
  }
  const int orientation = axisOf(m_SliceDirection);
  m_Mapper->SetOrientation(orientation);
  const int minimum = m_Mapper->GetSliceNumberMinValue();
  const int maximum = m_Mapper->GetSliceNumberMaxValue();
  if (maximum == -1)
  {
    m_SliceNumber = std::max(minimum, m_SliceNumber);
    if (updateToggles && m_ToggleRightSlice < minimum)
    {
      m_ToggleRightSlice = minimum;
    }
  }
  else
  {
    m_SliceNumber = std::clamp(m_SliceNumber, minimum, maximum);
    m_ToggleRightSlice = std::clamp(m_ToggleRightSlice, minimum, maximum);
    m_ToggleLeftSlice = std::clamp(m_ToggleLeftSlice, minimum, maximum);
    if (updateToggles)
    {
      for (auto [box, value] : {std::pair<ZRSpinBox*, int>{m_ToggleLeftSpinBox, m_ToggleLeftSlice},
                                std::pair<ZRSpinBox*, int>{m_ToggleRightSpinBox, m_ToggleRightSlice}})
      {
        if (box != nullptr)
        {
          const QSignalBlocker blocker(box);
          box->setValue(value);
        }
      }
    }
  }
  if (m_Mapper->GetSliceNumber() != m_SliceNumber)
  {
    m_Mapper->SetSliceNumber(m_SliceNumber);
  }
  if (isDataGridVisible() && isVisible())
  {
    showDataGrid(true); // the grid follows the bounds of the plane
  }
  Q_EMIT sliceNumberChanged(m_SliceNumber, this);
}

void VXImageSliceRepPimpl::updateSliceDirection(SliceDirection direction)
{
  m_SliceDirection = direction;
  m_NumSlicesCache = 0;
  Q_EMIT sliceDirectionChanged(direction, this);
  updateSlice(true);
  updateSliceControls();
}

void VXImageSliceRepPimpl::setSliceNumber(int number)
{
  m_SliceNumber = number;
  updateSlice(false);
  updateSliceControls();
  requestRender();
}

void VXImageSliceRepPimpl::followLinkedSlice(int number)
{
  const QSignalBlocker blocker(this);
  setSliceNumber(number);
}

double VXImageSliceRepPimpl::getSlicePosition() const
{
  vtkImageData* image = sliceImage();
  if (m_Mapper->GetNumberOfInputConnections(0) == 0 || image == nullptr || !hasImage())
  {
    return std::numeric_limits<double>::max();
  }
  const int axis = axisOf(m_SliceDirection);
  return image->GetOrigin()[axis] + image->GetSpacing()[axis] * m_SliceNumber;
}

int VXImageSliceRepPimpl::getSliceNumberAtPosition(double position) const
{
  vtkImageData* input = inputImage();
  if (input == nullptr || !hasImage())
  {
    return m_SliceNumber;
  }
  const int axis = axisOf(m_SliceDirection);
  const double* bounds = input->GetBounds();
  const double low = bounds[2 * axis];
  const double high = bounds[2 * axis + 1];
  const std::array<int, 2> range = getSliceDirectionBounds();
  if (position <= low)
  {
    return range[0];
  }
  if (position >= high)
  {
    return range[1];
  }
  const double step = (high - low) / (range[1] - range[0] + 1);
  return std::clamp(static_cast<int>(std::lround((position - low) / step)), range[0], range[1]);
}

void VXImageSliceRepPimpl::setLinkPhysicalUnits(bool link)
{
  m_LinkPhysicalUnits = link;
  if (m_LinkPhysicalUnitsCheckBox)
  {
    const QSignalBlocker blocker(m_LinkPhysicalUnitsCheckBox);
    m_LinkPhysicalUnitsCheckBox->setChecked(link);
  }
  Q_EMIT linkPhysicalUnitsChanged(link, this);
}

void VXImageSliceRepPimpl::updateLinkedSlices(const QList<VXRepresentationPimpl*>& linked, int number,
                                              VXImageSliceRepPimpl* source)
{
  if (source == nullptr)
  {
    return;
  }
  const double position = source->getSlicePosition();
  for (VXRepresentationPimpl* view : linked)
  {
    auto* slice = qobject_cast<VXImageSliceRepPimpl*>(view);
    if (slice == nullptr || slice == source)
    {
      continue;
    }
    slice->followLinkedSlice(slice->linkPhysicalUnits() ? slice->getSliceNumberAtPosition(position) : number);
  }
}

void VXImageSliceRepPimpl::updateLinkedSliceDirections(const QList<VXRepresentationPimpl*>& linked,
                                                       SliceDirection direction, VXImageSliceRepPimpl* source)
{
  for (VXRepresentationPimpl* view : linked)
  {
    auto* slice = qobject_cast<VXImageSliceRepPimpl*>(view);
    if (slice == nullptr || slice == source || slice->sliceDirection() == direction)
    {
      continue;
    }
    const QSignalBlocker blocker(slice);
    slice->updateSliceDirection(direction);
    slice->requestRender();
  }
}

void VXImageSliceRepPimpl::updateLinkedPhysicalUnits(const QList<VXRepresentationPimpl*>& linked, bool link,
                                                     VXImageSliceRepPimpl* source)
{
  for (VXRepresentationPimpl* view : linked)
  {
    auto* slice = qobject_cast<VXImageSliceRepPimpl*>(view);
    if (slice == nullptr || slice == source)
    {
      continue;
    }
    const QSignalBlocker blocker(slice);
    slice->setLinkPhysicalUnits(link);
  }
}

void VXImageSliceRepPimpl::setLinkedSlices(bool linked)
{
  if (m_LinkSlicesButton)
  {
    const QSignalBlocker blocker(m_LinkSlicesButton);
    m_LinkSlicesButton->setChecked(linked);
    m_LinkSlicesButton->setText(linked ? QStringLiteral("Unlink Slices") : QStringLiteral("Link Slices"));
  }
  if (m_Owner == nullptr)
  {
    return;
  }
  if (linked)
  {
    Q_EMIT m_Owner->requestLinkViews(this);
  }
  else
  {
    Q_EMIT m_Owner->requestUnlinkViews(this);
  }
}

// --- slots of the slicing controls -----------------------------------------------------------------

void VXImageSliceRepPimpl::sliceDirectionComboChanged(int index)
{
  updateSliceDirection(directionFrom(index));
  requestRender();
}

void VXImageSliceRepPimpl::sliceSliderValueChanged(int value)
{
  sliceControlChanged(value);
}

void VXImageSliceRepPimpl::sliceSpinBoxValueChanged(int value)
{
  sliceControlChanged(value);
}

void VXImageSliceRepPimpl::sliceControlChanged(int value)
{
  m_SliceNumber = value;
  // The slider and the spin box show the same number; the one that did not change follows quietly.
  if (m_SliceSlider && m_SliceSlider->value() != value)
  {
    const QSignalBlocker blocker(m_SliceSlider);
    m_SliceSlider->setValue(value);
  }
  if (m_SliceSpinBox && m_SliceSpinBox->value() != value)
  {
    const QSignalBlocker blocker(m_SliceSpinBox);
    m_SliceSpinBox->setValue(value);
  }
  updateSlice(false);
  if (m_HistogramMode == HistogramVisible)
  {
    generateHistogramData();
  }
  requestRender();
}

void VXImageSliceRepPimpl::toggleRightSpinBoxValueChanged(int value)
{
  m_ToggleRightSlice = value;
}

void VXImageSliceRepPimpl::toggleLeftSpinBoxValueChanged(int value)
{
  m_ToggleLeftSlice = value;
}

void VXImageSliceRepPimpl::toggleSlices()
{
  m_ToggleState = !m_ToggleState;
  const int next = m_ToggleState ? m_ToggleLeftSlice : m_ToggleRightSlice;
  if (m_SliceSpinBox)
  {
    m_SliceSpinBox->setValue(next); // moves the slider and the slice through the box's signal
    if (m_SliceSpinBox->value() == next && m_SliceNumber != next)
    {
      sliceSpinBoxValueChanged(next);
    }
  }
  else
  {
    sliceSpinBoxValueChanged(next);
  }
}

bool VXImageSliceRepPimpl::isFlickering() const
{
  return m_Flickering;
}

bool VXImageSliceRepPimpl::isPlayingAll() const
{
  return m_PlayingAll;
}

void VXImageSliceRepPimpl::animationDurationChanged(double seconds)
{
  m_AnimationDuration = std::max(0.0, seconds);
}

void VXImageSliceRepPimpl::startTimer()
{
  if (m_Interactor == nullptr)
  {
    return;
  }
  stopTimer();
  m_TimerId = m_Interactor->CreateRepeatingTimer(static_cast<unsigned long>(1000 * m_AnimationDuration));
}

void VXImageSliceRepPimpl::stopTimer()
{
  if (m_Interactor != nullptr && m_TimerId >= 0)
  {
    m_Interactor->DestroyTimer(m_TimerId);
  }
  m_TimerId = -1;
}

void VXImageSliceRepPimpl::startStopFlicker(bool start)
{
  if (m_Interactor == nullptr)
  {
    return;
  }
  if (start)
  {
    m_PlayingAll = false;
    m_Flickering = true;
    setSliceControlsEnabled(false);
    startTimer();
    int id = m_TimerId;
    m_Interactor->InvokeEvent(vtkCommand::TimerEvent, &id);
  }
  else
  {
    int id = m_TimerId;
    m_Flickering = false;
    m_Interactor->InvokeEvent(vtkCommand::DestroyTimerEvent, &id);
    stopTimer();
    setSliceControlsEnabled(true);
  }
}

void VXImageSliceRepPimpl::startStopAnimation(bool start)
{
  if (m_Interactor == nullptr)
  {
    return;
  }
  if (start)
  {
    m_Flickering = false;
    m_PlayingAll = true;
    setSliceControlsEnabled(false);
    startTimer();
    int id = m_TimerId;
    m_Interactor->InvokeEvent(vtkCommand::TimerEvent, &id);
  }
  else
  {
    int id = m_TimerId;
    m_PlayingAll = false;
    m_Interactor->InvokeEvent(vtkCommand::DestroyTimerEvent, &id);
    stopTimer();
    setSliceControlsEnabled(true);
  }
}

void VXImageSliceRepPimpl::animationStep()
{
  if (m_PlayingAll)
  {
    const int next = (m_SliceNumber + 1) % (getNumSlices() + 1);
    if (m_SliceSpinBox)
    {
      const QSignalBlocker blocker(m_SliceSpinBox);
      m_SliceSpinBox->setValue(next);
    }
    sliceSpinBoxValueChanged(next);
  }
  else if (m_Flickering)
  {
    toggleSlices();
  }
  if (VXVisualizationWidget* window = visualizationWidget())
  {
    window->render();
  }
}

void VXImageSliceRepPimpl::SliceAnimatorCallbackFunction(vtkObject* caller, unsigned long eventId,
                                                         void* clientData, void* callData)
{
  auto* self = static_cast<VXImageSliceRepPimpl*>(clientData);
  auto* interactor = vtkRenderWindowInteractor::SafeDownCast(caller);
  if (self == nullptr || interactor == nullptr || self->m_TimerId < 0)
  {
    return;
  }
  // Other widgets run timers on the same interactor: only this view's timer steps it.
  const int id = callData != nullptr ? *static_cast<int*>(callData) : -1;
  if (id != self->m_TimerId && interactor->GetVTKTimerId(id) != self->m_TimerId)
  {
    return;
  }
  if (eventId == vtkCommand::TimerEvent)
  {
    self->animationStep();
  }
  else if (eventId == vtkCommand::DestroyTimerEvent)
  {
    self->stopTimer();
  }
}

// --- histogram -------------------------------------------------------------------------------------

void VXImageSliceRepPimpl::setHistogramMode(int mode)
{
  m_HistogramMode = std::clamp(mode, 0, 2);
  if (m_HistogramWidget)
  {
    m_HistogramWidget->setVisible(m_HistogramMode != HistogramOff);
  }
  generateHistogramData();
}

void VXImageSliceRepPimpl::generateHistogramData()
{
  if (m_HistogramMode == HistogramOff || !m_HistogramWidget)
  {
    return;
  }
  vtkDataArray* array = isUsingSolidColor() ? nullptr : activeDataArray();
  if (array == nullptr || m_HistogramMode == HistogramFull)
  {
    m_HistogramWidget->setArray(array, m_Colouring.m_ActiveComponent, m_Colouring.m_UsingCustomRange,
                                m_Colouring.m_CustomRange);
    m_HistogramWidget->setPlotVisibility(array != nullptr);
    return;
  }
  // Only the plane on screen: one layer of the drawn image, cut out without touching the rest.
  vtkImageData* image = sliceImage();
  int voi[6];
  image->GetExtent(voi);
  const int axis = axisOf(m_SliceDirection);
  voi[2 * axis] = m_SliceNumber;
  voi[2 * axis + 1] = m_SliceNumber;
  vtkNew<vtkExtractVOI> extract;
  extract->SetInputData(image);
  extract->SetVOI(voi);
  extract->Update();
  vtkDataArray* visible = extract->GetOutput()->GetPointData()->GetArray(array->GetName());
  m_HistogramWidget->setArray(visible, m_Colouring.m_ActiveComponent, m_Colouring.m_UsingCustomRange,
                              m_Colouring.m_CustomRange);
  m_HistogramWidget->setPlotVisibility(visible != nullptr);
}

void VXImageSliceRepPimpl::observeProducer()
{
  stopObservingProducer();
  vtkAlgorithm* producer = m_InputPort != nullptr ? m_InputPort->GetProducer() : nullptr;
  if (producer == nullptr)
  {
    return;
  }
  if (m_HistogramCallback == nullptr)
  {
    m_HistogramCallback = vtkSmartPointer<VXUpdateHistogramCallback>::New();
    m_HistogramCallback->setRepresentation(this);
  }
  m_ObservedProducer = producer;
  m_HistogramObserverTag = producer->AddObserver(vtkCommand::EndEvent, m_HistogramCallback);
}

void VXImageSliceRepPimpl::stopObservingProducer()
{
  if (m_ObservedProducer != nullptr)
  {
    m_ObservedProducer->RemoveObserver(m_HistogramObserverTag);
  }
  m_ObservedProducer = nullptr;
  m_HistogramObserverTag = 0;
}

// --- settings --------------------------------------------------------------------------------------

void VXImageSliceRepPimpl::copySettings(const VXRepresentationPimpl* other)
{
  VXRepresentationPimpl::copySettings(other);
  const auto* slice = qobject_cast<const VXImageSliceRepPimpl*>(other);
  if (slice == nullptr)
  {
    return;
  }
  m_Colouring = slice->m_Colouring;
  m_SliceDirection = slice->m_SliceDirection;
  m_SliceNumber = slice->m_SliceNumber;
  m_SolidColor = slice->m_SolidColor;
  m_ToggleLeftSlice = slice->m_ToggleLeftSlice;
  m_ToggleRightSlice = slice->m_ToggleRightSlice;
  m_AnimationDuration = slice->m_AnimationDuration;
  m_HistogramMode = slice->m_HistogramMode;
  m_Opacity = slice->m_Opacity;
}

void VXImageSliceRepPimpl::write(nlohmann::json& json) const
{
  VXRepresentationPimpl::write(json);
  m_Colouring.write(json);
  json[k_SliceDirection] = static_cast<int>(m_SliceDirection);
  json[k_SliceNumber] = m_SliceNumber;
  writeColor(json, k_SolidColor, m_SolidColor);
  json[k_ToggleLeft] = m_ToggleLeftSlice;
  json[k_ToggleRight] = m_ToggleRightSlice;
  json[k_AnimationDuration] = m_AnimationDuration;
  json[k_GenerateHistogramData] = m_HistogramMode;
}

void VXImageSliceRepPimpl::read(const nlohmann::json& json)
{
  VXRepresentationPimpl::read(json);
  if (!json.is_object())
  {
    return;
  }
  m_Colouring.read(json);
  if (json.contains(k_SliceDirection))
  {
    m_SliceDirection = directionFrom(json.at(k_SliceDirection).get<int>());
  }
  readIfPresent(json, k_SliceNumber, m_SliceNumber);
  readColor(json, k_SolidColor, m_SolidColor);
  readIfPresent(json, k_ToggleLeft, m_ToggleLeftSlice);
  readIfPresent(json, k_ToggleRight, m_ToggleRightSlice);
  readIfPresent(json, k_AnimationDuration, m_AnimationDuration);
  if (json.contains(k_GenerateHistogramData))
  {
    // Older records kept a flag: true asks for the whole array.
    const nlohmann::json& mode = json.at(k_GenerateHistogramData);
    m_HistogramMode = mode.is_boolean() ? (mode.get<bool>() ? HistogramFull : HistogramOff)
                                        : std::clamp(mode.get<int>(), 0, 2);
  }
  if (hasImage())
  {
    applySettings();
  }
}

void VXImageSliceRepPimpl::writeSettings(QtZRSettings& settings) const
{
  VXRepresentationPimpl::writeSettings(settings);
  m_Colouring.writeSettings(settings);
  settings.setValue(QString::fromLatin1(k_SliceDirection), static_cast<int>(m_SliceDirection));
  settings.setValue(QString::fromLatin1(k_SliceNumber), m_SliceNumber);
  writeColorSetting(settings, k_SolidColor, m_SolidColor);
  settings.setValue(QString::fromLatin1(k_ToggleLeft), m_ToggleLeftSlice);
  settings.setValue(QString::fromLatin1(k_ToggleRight), m_ToggleRightSlice);
  settings.setValue(QString::fromLatin1(k_AnimationDuration), m_AnimationDuration);
  settings.setValue(QString::fromLatin1(k_GenerateHistogramData), m_HistogramMode);
  settings.setValue(QString::fromLatin1(k_OpacityPercent), getOpacity());
}

void VXImageSliceRepPimpl::readSettings(QtZRSettings& settings)
{
  VXRepresentationPimpl::readSettings(settings);
  m_Colouring.readSettings(settings);
  int direction = static_cast<int>(m_SliceDirection);
  readSetting(settings, k_SliceDirection, direction);
  m_SliceDirection = directionFrom(direction);
  readSetting(settings, k_SliceNumber, m_SliceNumber);
  readColorSetting(settings, k_SolidColor, m_SolidColor);
  readSetting(settings, k_ToggleLeft, m_ToggleLeftSlice);
  readSetting(settings, k_ToggleRight, m_ToggleRightSlice);
  readSetting(settings, k_AnimationDuration, m_AnimationDuration);
  readSetting(settings, k_GenerateHistogramData, m_HistogramMode);
  int opacity = getOpacity();
  readSetting(settings, k_OpacityPercent, opacity);
  m_Opacity = std::clamp(opacity / 100.0, 0.0, 1.0);
}
