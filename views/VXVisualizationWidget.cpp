#include "views/VXVisualizationWidget.h"

#include "platform/ZRPreferences.h"
#include "platform/ZRStyle.h"
#include "views/VXCameraPresetStore.h"
#include "views/VXFrameRateCallback.h"
#include "views/VXGridAxesActor.h"
#include "views/VXInteractorStyleCamera.h"
#include "views/VXPickerCallback.h"
#include "views/VXRenderBufferCapture.h"
#include "views/VXScreenshotOptionsDialog.h"
#include "views/VXViewCubeRepresentation.h"
#include "views/VXViewCubeWidget.h"
#include "views/VXVisualizationToolbarWidget.h"

#include <vtkActor.h>
#include <vtkAnnotatedCubeActor.h>
#include <vtkAxesActor.h>
#include <vtkCamera.h>
#include <vtkCaptionActor2D.h>
#include <vtkCellData.h>
#include <vtkCellPicker.h>
#include <vtkCubeSource.h>
#include <vtkCursor3D.h>
#include <vtkGenericOpenGLRenderWindow.h>
#include <vtkHoverWidget.h>
#include <vtkImageData.h>
#include <vtkMath.h>
#include <vtkNew.h>
#include <vtkOrientationMarkerWidget.h>
#include <vtkOutlineGlowPass.h>
#include <vtkPolyDataMapper.h>
#include <vtkPropAssembly.h>
#include <vtkPropCollection.h>
#include <vtkProperty.h>
#include <vtkRenderStepsPass.h>
#include <vtkRenderWindowInteractor.h>
#include <vtkRenderer.h>
#include <vtkTextProperty.h>
#include <vtkTextureObject.h>
#include <vtkUnsignedCharArray.h>

#include <nlohmann/json.hpp>

#include <QApplication>
#include <QClipboard>
#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <cstring>

VXVisualizationWidget* VXVisualizationWidget::s_LinkingWidget = nullptr;

namespace
{
namespace keys
{
const char* const k_ParallelProjection = "parallel_projection";
const char* const k_GlobalGridAxes = "global_grid_axes";
const char* const k_GridSpacing[3] = {"global_grid_axes_spacingx", "global_grid_axes_spacingy",
                                      "global_grid_axes_spacingz"};
const char* const k_GridShowLines = "global_grid_axes_show_grid_lines";
const char* const k_OwnContextMenu = "own_context_menu";
const char* const k_CheckContextMenu = "check_context_menu";
const char* const k_NumRenderLayers = "num_render_layers";
const char* const k_CameraPos[3] = {"camera_pos_x", "camera_pos_y", "camera_pos_z"};
const char* const k_CameraViewUp[3] = {"camera_view_up_x", "camera_view_up_y", "camera_view_up_z"};
const char* const k_CameraFocalPt[3] = {"camera_focal_pt_x", "camera_focal_pt_y", "camera_focal_pt_z"};
const char* const k_CameraViewAngle = "camera_view_angle";
const char* const k_CameraParallelScale = "camera_parallel_scale";
} // namespace keys

constexpr int k_MultiSamples = 8;
constexpr int k_HoverTimerMs = 250;
// Room the toolbar keeps in a short window (its collapse and overflow buttons) and its gap below.
constexpr int k_MinimumToolbarRoom = 64;
constexpr int k_ToolbarBottomGap = 4;

/** Reads a vector of three numbers only when all three keys are present. */
bool readVector(const nlohmann::json& in, const char* const names[3], double out[3])
{
  for (int i = 0; i < 3; ++i)
  {
    if (!in.contains(names[i]))
    {
      return false;
    }
  }
  for (int i = 0; i < 3; ++i)
  {
    out[i] = in.at(names[i]).get<double>();
  }
  return true;
}

/** Mesa's CPU rasterizers, where each extra sample costs a full pass of fragment work. */
bool isSoftwareRasterizer(const QString& renderer)
{
  for (const char* name : {"llvmpipe", "softpipe", "swrast", "SWR"})
  {
    if (renderer.contains(QLatin1String(name), Qt::CaseInsensitive))
    {
      return true;
    }
  }
  return false;
}

} // namespace

VXVisualizationWidget::VXVisualizationWidget(QWidget* parent, int numRenderLayers)
    : VXGLWidget(parent)
    , m_NumRenderLayers(numRenderLayers)
{
  setupGui();
}

VXVisualizationWidget::~VXVisualizationWidget()
{
  unlinkCamera();
  if (s_LinkingWidget == this)
  {
    s_LinkingWidget = nullptr;
  }
  if (m_HoverWidget != nullptr)
  {
    m_HoverWidget->SetEnabled(0);
  }
  if (m_CameraOrientationWidget != nullptr)
  {
    m_CameraOrientationWidget->SetEnabled(0);
  }
  if (m_PickerCallback != nullptr)
  {
    m_PickerCallback->setWindow(nullptr);
  }
  if (m_InteractorStyle != nullptr)
  {
    m_InteractorStyle->setRenderWindowWidget(nullptr);
  }
}

void VXVisualizationWidget::setupGui()
{
  initializeRendererAndAxes();
  if (m_InteractorStyle != nullptr)
  {
    m_InteractorStyle->SetInteractionModeToImage3D();
  }
  m_Toolbar = new VXVisualizationToolbarWidget(this);
  recenterToolbar();
  m_Toolbar->show();

  connect(this, &VXVisualizationWidget::pickEvent, this,
          [this](double* pickPos, bool pick1ModeOn, bool pick2ModeOn)
          { updateFocalPoint(pickPos, pick1ModeOn, pick2ModeOn, true); });
  connect(ZRPreferences::Instance(), &ZRPreferences::orientationMarkerTextChanged, this,
          &VXVisualizationWidget::setOrientationMarkerText);
}

void VXVisualizationWidget::initializeRendererAndAxes()
{
  if (m_Renderer == nullptr)
  {
    vtkOpenGLRenderWindow::SetGlobalMaximumNumberOfMultiSamples(k_MultiSamples);
    m_Renderer = vtkSmartPointer<vtkRenderer>::New();
    m_Renderer->SetLayer(0);
    m_OverlayRenderer = vtkSmartPointer<vtkRenderer>::New();
    m_OverlayRenderer->SetLayer(1);

    vtkNew<VXFrameRateCallback> frameRateCallback;
    frameRateCallback->setWindow(this);
    m_Renderer->AddObserver(vtkCommand::EndEvent, frameRateCallback);

    setRenderWindowBackgroundColor(ZRPreferences::Instance()->getDefaultRenderWindowBackground());

    vtkNew<vtkGenericOpenGLRenderWindow> renderWindow;
    renderWindow->SetMultiSamples(k_MultiSamples);
    setRenderWindow(renderWindow);
    renderWindow->SetMapped(1);
    renderWindow->SetSize(width(), height());
    renderWindow->SetPosition(x(), y());
    renderWindow->SetNumberOfLayers(std::max(1, m_NumRenderLayers));
    renderWindow->AddRenderer(m_OverlayRenderer);
    renderWindow->AddRenderer(m_Renderer);

    // Outlined objects sit on their own layer and glow over the scene.
    vtkNew<vtkRenderStepsPass> basicPasses;
    vtkNew<vtkOutlineGlowPass> glowPass;
    glowPass->SetDelegatePass(basicPasses);
    m_OverlayRenderer->SetPass(glowPass);
    updateOverlayDraw();

    vtkRenderWindowInteractor* interactor = getRenderWindowInteractor();
    m_HoverWidget = vtkSmartPointer<vtkHoverWidget>::New();
    m_HoverWidget->SetInteractor(interactor);
    m_HoverWidget->SetTimerDuration(k_HoverTimerMs);

    m_PickerCallback = vtkSmartPointer<VXPickerCallback>::New();
    m_PickerCallback->setRenderer(m_Renderer);
    m_PickerCallback->setWindow(this);
    m_PickerCallback->setupHighlightActors();
    m_HoverWidget->AddObserver(vtkCommand::TimerEvent, m_PickerCallback);
    m_HoverWidget->AddObserver(vtkCommand::EndInteractionEvent, m_PickerCallback);

    vtkNew<VXInteractorStyleCamera> style;
    m_InteractorStyle = style;
    m_InteractorStyle->setRenderWindowWidget(this);
    if (interactor != nullptr)
    {
      interactor->SetInteractorStyle(style);
    }
    m_InteractorStyle->SetDefaultRenderer(m_Renderer);
    m_InteractorStyle->AddObserver(vtkCommand::PickEvent, m_PickerCallback);
    m_InteractorStyle->AddObserver(VXInteractorStyleCamera::k_KeyPressedEvent, m_PickerCallback);
    m_InteractorStyle->AddObserver(VXInteractorStyleCamera::k_KeyReleasedEvent, m_PickerCallback);

    m_FocalPointActor = vtkSmartPointer<vtkActor>::New();
    m_FocalPointActor->PickableOff();
    m_FocalPointActor->GetProperty()->SetColor(0.0, 0.0, 0.0);
    m_FocalPointSource = vtkSmartPointer<vtkCursor3D>::New();
    m_FocalPointSource->AllOff();
    m_FocalPointSource->AxesOn();
    m_FocalPointSource->TranslationModeOn();
    syncFocalPointSourceToActiveCamera();

    vtkNew<vtkPolyDataMapper> focalPointMapper;
    focalPointMapper->SetInputConnection(m_FocalPointSource->GetOutputPort());
    focalPointMapper->ScalarVisibilityOff();
    m_FocalPointActor->SetMapper(focalPointMapper);
    m_FocalPointActor->VisibilityOff();
    m_FocalPointActor->UseBoundsOff();
    m_FocalPointActor->GetProperty()->SetLineWidth(2.0);
    m_Renderer->AddActor(m_FocalPointActor);
  }

  initializeCameraOrientationWidget();

  vtkCamera* activeCamera = m_Renderer->GetActiveCamera();
  activeCamera->SetParallelProjection(ZRPreferences::Instance()->getCameraParallelProjDefault());
  m_Camera = activeCamera;
  m_OverlayRenderer->SetActiveCamera(activeCamera);

  setupCubeAxesActor();
}

void VXVisualizationWidget::initializeCameraOrientationWidget()
{
  if (m_CameraOrientationWidget == nullptr)
  {
    m_CameraOrientationWidget = vtkSmartPointer<VXViewCubeWidget>::New();
    m_CameraOrientationWidget->CreateDefaultRepresentation();
    m_CameraOrientationWidget->SetParentRenderer(m_Renderer);
    // The toolkit fits the cube into its corner on window resize events only, and never before the
    // first frame, so a window that is shown at its final size would keep the cube where it was
    // placed for the size at construction. Fitting it as each frame starts (the scene renderer
    // draws before the cube's own layer) puts it right in the first frame already.
    m_Renderer->AddObserver(vtkCommand::StartEvent, m_CameraOrientationWidget.Get(),
                            &vtkCameraOrientationWidget::SquareResize);
  }
  m_CameraOrientationWidget->SetAnimate(true);
  if (getRenderWindowInteractor() != nullptr)
  {
    m_CameraOrientationWidget->SetInteractor(getRenderWindowInteractor());
    m_CameraOrientationWidget->On();
  }
  setOrientationMarkerText(ZRPreferences::Instance()->getOrientationMarkerText());
}

void VXVisualizationWidget::initializeOrientationWidget()
{
  const QStringList labels = ZRPreferences::Instance()->getOrientationMarkerText();
  auto label = [&labels](int i) { return i < labels.size() ? labels[i].toStdString() : std::string(); };

  vtkNew<vtkAnnotatedCubeActor> cube;
  cube->SetFaceTextScale(0.175);
  cube->SetXPlusFaceText(label(0).c_str());
  cube->SetXMinusFaceText(label(1).c_str());
  cube->SetYPlusFaceText(label(2).c_str());
  cube->SetYMinusFaceText(label(3).c_str());
  cube->SetZPlusFaceText(label(4).c_str());
  cube->SetZMinusFaceText(label(5).c_str());
  cube->GetTextEdgesProperty()->SetColor(0.0, 0.0, 0.0);
  cube->GetTextEdgesProperty()->SetLineWidth(1.0);
  const QColor medium = ZRStyle::getMediumBlue();
  const QColor light = ZRStyle::getLightBlue();
  for (vtkProperty* face :
       {cube->GetXPlusFaceProperty(), cube->GetYPlusFaceProperty(), cube->GetZPlusFaceProperty()})
  {
    face->SetColor(medium.redF(), medium.greenF(), medium.blueF());
  }
  for (vtkProperty* face :
       {cube->GetXMinusFaceProperty(), cube->GetYMinusFaceProperty(), cube->GetZMinusFaceProperty()})
  {
    face->SetColor(light.redF(), light.greenF(), light.blueF());
  }
  cube->GetCubeProperty()->SetOpacity(0.0);

  vtkNew<vtkCubeSource> cubeSource;
  cubeSource->Update();
  vtkNew<vtkUnsignedCharArray> faceColors;
  faceColors->SetNumberOfComponents(3);
  for (int i = 0; i < 6; ++i)
  {
    const QColor c = i % 2 == 0 ? medium : light;
    const unsigned char rgb[3] = {static_cast<unsigned char>(c.red()), static_cast<unsigned char>(c.green()),
                                  static_cast<unsigned char>(c.blue())};
    faceColors->InsertNextTypedTuple(rgb);
  }
  cubeSource->GetOutput()->GetCellData()->SetScalars(faceColors);
  vtkNew<vtkPolyDataMapper> cubeMapper;
  cubeMapper->SetInputData(cubeSource->GetOutput());
  vtkNew<vtkActor> cubeActor;
  cubeActor->SetMapper(cubeMapper);

  vtkNew<vtkAxesActor> axes;
  axes->SetShaftTypeToCylinder();
  axes->GetYAxisShaftProperty()->SetColor(1.0, 1.0, 0.0);
  axes->GetYAxisTipProperty()->SetColor(1.0, 1.0, 0.0);
  axes->GetZAxisShaftProperty()->SetColor(0.0, 1.0, 0.0);
  axes->GetZAxisTipProperty()->SetColor(0.0, 1.0, 0.0);
  axes->SetXAxisLabelText("X");
  axes->SetYAxisLabelText("Y");
  axes->SetZAxisLabelText("Z");
  axes->SetPosition(-0.5, -0.5, -0.5);
  axes->SetNormalizedLabelPosition(1.25, 1.25, 1.25);

  vtkNew<vtkPropAssembly> assembly;
  assembly->AddPart(cube);
  assembly->AddPart(cubeActor);
  assembly->AddPart(axes);

  m_OrientationWidget = vtkSmartPointer<vtkOrientationMarkerWidget>::New();
  m_OrientationWidget->SetOrientationMarker(assembly);
  m_OrientationWidget->SetOutlineColor(0.93, 0.57, 0.13);
  m_OrientationWidget->SetZoom(0.65);
  m_OrientationWidget->SetDefaultRenderer(m_Renderer);
  m_OrientationWidget->SetInteractor(getRenderWindowInteractor());
  m_OrientationWidget->SetEnabled(1);
  m_OrientationWidget->InteractiveOff();
}

void VXVisualizationWidget::setOrientationMarkerText(const QStringList& faceLabels)
{
  if (m_CameraOrientationWidget == nullptr || faceLabels.size() != 6)
  {
    return;
  }
  m_CameraOrientationWidget->SetFaceLabels(faceLabels[0].toStdString(), faceLabels[1].toStdString(),
                                           faceLabels[2].toStdString(), faceLabels[3].toStdString(),
                                           faceLabels[4].toStdString(), faceLabels[5].toStdString());
  render();
}

void VXVisualizationWidget::setupCubeAxesActor()
{
  if (m_GridAxesActor == nullptr)
  {
    m_GridAxesActor = vtkSmartPointer<VXGridAxesActor>::New();
    m_GridAxesActor->SetGenerateTicks(true);
    m_GridAxesActor->SetGenerateGrid(false);
    m_GridAxesActor->SetGenerateEdges(true);
    m_GridAxesActor->SetLabelDisplayOffset(0, -10);
    for (int axis = 0; axis < 3; ++axis)
    {
      vtkTextProperty* title = m_GridAxesActor->GetTitleTextProperty(axis);
      title->SetFontSize(static_cast<int>(title->GetFontSize() * 1.5));
    }
    if (m_Renderer != nullptr)
    {
      m_Renderer->AddActor(m_GridAxesActor);
    }
  }
  updateGridAxesBounds(true);
  if (m_GridAxesWidget != nullptr)
  {
    m_GridAxesWidget->setShowGrid(m_GridAxesActor->GetGenerateGrid());
  }
}

VXGridAxesWidget& VXVisualizationWidget::getGridAxesWidget()
{
  if (m_GridAxesWidget == nullptr)
  {
    m_GridAxesWidget = std::make_unique<VXGridAxesWidget>(nullptr);
    m_GridAxesWidget->setShowGrid(m_GridAxesActor != nullptr && m_GridAxesActor->GetGenerateGrid());
    connect(m_GridAxesWidget.get(), &VXGridAxesWidget::apply, this,
            &VXVisualizationWidget::applyGridAxesEdits, Qt::UniqueConnection);
  }
  return *m_GridAxesWidget;
}

std::array<double, 3> VXVisualizationWidget::gridAxesSpacing() const
{
  return m_GridAxesWidget != nullptr ? m_GridAxesWidget->getSpacing()
                                     : std::array<double, 3>{{0.0, 0.0, 0.0}};
}

bool VXVisualizationWidget::gridAxesShowGrid() const
{
  if (m_GridAxesWidget != nullptr)
  {
    return m_GridAxesWidget->getShowGrid();
  }
  return m_GridAxesActor != nullptr && m_GridAxesActor->GetGenerateGrid();
}

// ---------------------------------------------------------------------------------------------------
// Accessors

vtkRenderer* VXVisualizationWidget::getRenderer() const
{
  return m_Renderer;
}

vtkRenderer* VXVisualizationWidget::getOverlayRenderer() const
{
  return m_OverlayRenderer;
}

vtkRenderWindowInteractor* VXVisualizationWidget::getRenderWindowInteractor()
{
  return renderWindow() != nullptr ? renderWindow()->GetInteractor() : nullptr;
}

VXPickerCallback* VXVisualizationWidget::getPickerCallback() const
{
  return m_PickerCallback;
}

VXGridAxesActor* VXVisualizationWidget::getGridAxesActor() const
{
  return m_GridAxesActor;
}

vtkActor* VXVisualizationWidget::getFocalPointActor() const
{
  return m_FocalPointActor;
}

vtkCursor3D* VXVisualizationWidget::getFocalPointSource() const
{
  return m_FocalPointSource;
}

VXViewCubeWidget* VXVisualizationWidget::getCameraOrientationWidget() const
{
  return m_CameraOrientationWidget;
}

vtkOrientationMarkerWidget* VXVisualizationWidget::getOrientationWidget() const
{
  return m_OrientationWidget;
}

// ---------------------------------------------------------------------------------------------------
// Rendering

void VXVisualizationWidget::render()
{
  if (m_RenderPending != 0)
  {
    return;
  }
  m_RenderPending = 1;
  QMetaObject::invokeMethod(
      this, [this]() { renderNow(); }, Qt::QueuedConnection);
}

void VXVisualizationWidget::renderNow()
{
  m_RenderPending = 0;
  ++m_CoalescedFrameCount;
  renderThroughInteractor();
  update();
}

void VXVisualizationWidget::renderThroughInteractor()
{
  if (vtkRenderWindowInteractor* interactor = getRenderWindowInteractor())
  {
    interactor->Render();
  }
}

void VXVisualizationWidget::resizeEvent(QResizeEvent* e)
{
  VXGLWidget::resizeEvent(e);
  recenterToolbar();
}

void VXVisualizationWidget::initializeGL()
{
  VXGLWidget::initializeGL();
  // Multisampling is cheap on a GPU, but on a CPU rasterizer it multiplies the cost of every frame
  // and of the first one most (resolve shaders are compiled on first use). There the lines are
  // drawn aliased instead. The render buffers are made on the first frame, which comes after this.
  QOpenGLContext* context = QOpenGLContext::currentContext();
  if (context != nullptr && renderWindow() != nullptr)
  {
    const auto* renderer = reinterpret_cast<const char*>(context->functions()->glGetString(GL_RENDERER));
    if (renderer != nullptr && isSoftwareRasterizer(QString::fromLatin1(renderer)))
    {
      renderWindow()->SetMultiSamples(0);
    }
  }
}

void VXVisualizationWidget::recenterToolbar()
{
  if (m_Toolbar == nullptr)
  {
    return;
  }
  const int parentHeight = height();
  // Placed by its full height, so that collapsing it never moves the collapse button away from the
  // pointer that clicked it.
  const int toolbarHeight = m_Toolbar->fullHeight();
  int y = 20;
  if (parentHeight / 2 > toolbarHeight)
  {
    y = parentHeight / 4;
  }
  y = std::max(0, std::min(y, parentHeight - k_MinimumToolbarRoom));
  // In a short window the buttons that do not fit go to the overflow menu: the toolbar is never cut off.
  const int available = parentHeight - y - k_ToolbarBottomGap;
  m_Toolbar->fitToHeight(toolbarHeight <= available ? 0 : std::max(available, 1));
  m_Toolbar->move(0, y);
  m_Toolbar->raise();
}

// ---------------------------------------------------------------------------------------------------
// Props

void VXVisualizationWidget::addActor(vtkProp* prop)
{
  if (m_Renderer == nullptr || prop == nullptr)
  {
    return;
  }
  m_Renderer->AddActor(prop);
  Q_EMIT actorAdded(prop);
}

void VXVisualizationWidget::removeActor(vtkProp* prop)
{
  if (m_Renderer == nullptr || prop == nullptr)
  {
    return;
  }
  Q_EMIT actorRemoved(prop);
  m_Renderer->RemoveActor(prop);
}

bool VXVisualizationWidget::isDataViewActor(vtkProp* prop) const
{
  if (prop == nullptr || m_Renderer == nullptr || prop->GetVisibility() == 0 ||
      !m_Renderer->HasViewProp(prop))
  {
    return false;
  }
  if (prop == m_GridAxesActor.GetPointer())
  {
    return false;
  }
  if (m_PickerCallback != nullptr && (prop == m_PickerCallback->getPointHighlightActor() ||
                                      prop == m_PickerCallback->getCellHighlightActor()))
  {
    return false;
  }
  return true;
}

void VXVisualizationWidget::addOutline(vtkProp* prop)
{
  if (m_OverlayRenderer != nullptr && prop != nullptr && !m_OverlayRenderer->HasViewProp(prop))
  {
    m_OverlayRenderer->AddActor(prop);
    updateOverlayDraw();
  }
}

void VXVisualizationWidget::updateOverlayDraw()
{
  // The glow pass costs full-window passes each frame: an empty outline layer is not drawn at all.
  const bool hasOutlines = m_OverlayRenderer->GetViewProps()->GetNumberOfItems() > 0;
  m_OverlayRenderer->SetDraw(hasOutlines);
}

void VXVisualizationWidget::removeOutline(vtkProp* prop)
{
  if (hasOutlineActor(prop))
  {
    m_OverlayRenderer->RemoveActor(prop);
    updateOverlayDraw();
  }
}

void VXVisualizationWidget::clearOutlines()
{
  if (m_OverlayRenderer != nullptr)
  {
    m_OverlayRenderer->RemoveAllViewProps();
    updateOverlayDraw();
  }
}

bool VXVisualizationWidget::hasOutlineActor(vtkProp* prop) const
{
  return m_OverlayRenderer != nullptr && prop != nullptr && m_OverlayRenderer->HasViewProp(prop);
}

void VXVisualizationWidget::clearRenderWindow()
{
  if (m_CameraOrientationWidget != nullptr)
  {
    m_CameraOrientationWidget->Off();
    m_CameraOrientationWidget = nullptr;
  }
  if (m_Renderer != nullptr)
  {
    m_Renderer->RemoveAllViewProps();
  }
  renderThroughInteractor();
  resetCamera();
}

bool VXVisualizationWidget::areDimensionsValid(int x, int y, int z, int& maxSize)
{
  auto* openGLWindow = vtkOpenGLRenderWindow::SafeDownCast(renderWindow());
  maxSize = vtkTextureObject::GetMaximumTextureSize(openGLWindow);
  return std::max({x, y, z}) <= maxSize;
}

// ---------------------------------------------------------------------------------------------------
// Camera

void VXVisualizationWidget::resetCamera()
{
  if (m_Renderer == nullptr)
  {
    return;
  }
  m_Renderer->ResetCamera();
  render();
}

std::pair<std::array<double, 3>, double> VXVisualizationWidget::getCameraFocalPointAndDistance() const
{
  std::array<double, 3> focalPoint = {{0.0, 0.0, 0.0}};
  if (m_Renderer == nullptr)
  {
    return {focalPoint, 0.0};
  }
  vtkCamera* camera = m_Renderer->GetActiveCamera();
  camera->GetFocalPoint(focalPoint.data());
  const double distance =
      std::sqrt(vtkMath::Distance2BetweenPoints(camera->GetPosition(), focalPoint.data()));
  return {focalPoint, distance};
}

void VXVisualizationWidget::setCameraView(int position)
{
  if (m_Renderer == nullptr)
  {
    return;
  }
  resetCamera();
  const auto [f, d] = getCameraFocalPointAndDistance();
  vtkCamera* camera = m_Renderer->GetActiveCamera();
  switch (position)
  {
  case XPlus:
    camera->SetPosition(f[0] - d, f[1], f[2]);
    camera->SetViewUp(0.0, 0.0, 1.0);
    break;
  case YPlus:
    camera->SetPosition(f[0], f[1] - d, f[2]);
    camera->SetViewUp(0.0, 0.0, 1.0);
    break;
  case ZPlus:
    camera->SetPosition(f[0], f[1], f[2] - d);
    camera->SetViewUp(0.0, 1.0, 0.0);
    break;
  case XMinus:
    camera->SetPosition(f[0] + d, f[1], f[2]);
    camera->SetViewUp(0.0, 0.0, 1.0);
    break;
  case YMinus:
    camera->SetPosition(f[0], f[1] + d, f[2]);
    camera->SetViewUp(0.0, 0.0, 1.0);
    break;
  case ZMinus:
    camera->SetPosition(f[0], f[1], f[2] + d);
    camera->SetViewUp(0.0, 1.0, 0.0);
    break;
  default:
    return;
  }
  renderThroughInteractor();
}

void VXVisualizationWidget::camXPlus()
{
  setCameraView(XPlus);
}

void VXVisualizationWidget::camYPlus()
{
  setCameraView(YPlus);
}

void VXVisualizationWidget::camZPlus()
{
  setCameraView(ZPlus);
}

void VXVisualizationWidget::camXMinus()
{
  setCameraView(XMinus);
}

void VXVisualizationWidget::camYMinus()
{
  setCameraView(YMinus);
}

void VXVisualizationWidget::camZMinus()
{
  setCameraView(ZMinus);
}

void VXVisualizationWidget::camImageView()
{
  if (m_Renderer == nullptr)
  {
    return;
  }
  resetCamera();
  const auto [f, d] = getCameraFocalPointAndDistance();
  vtkCamera* camera = m_Renderer->GetActiveCamera();
  camera->SetPosition(f[0], f[1], f[2] - d);
  // Image convention: the origin shows in the upper left corner.
  camera->SetViewUp(0.0, -1.0, 0.0);
  renderThroughInteractor();
}

void VXVisualizationWidget::rotateCamClockwise()
{
  if (m_Renderer == nullptr)
  {
    return;
  }
  m_Renderer->GetActiveCamera()->Roll(-90.0);
  renderThroughInteractor();
}

void VXVisualizationWidget::rotateCamCounterClockwise()
{
  if (m_Renderer == nullptr)
  {
    return;
  }
  m_Renderer->GetActiveCamera()->Roll(90.0);
  renderThroughInteractor();
}

void VXVisualizationWidget::toggleParallelProjection()
{
  if (m_Renderer == nullptr)
  {
    return;
  }
  vtkCamera* camera = m_Renderer->GetActiveCamera();
  camera->SetParallelProjection(!camera->GetParallelProjection());
  getParallelProjectionAction()->setChecked(camera->GetParallelProjection() != 0);
  render();
}

void VXVisualizationWidget::copy(const VXVisualizationWidget* source)
{
  if (source == nullptr || source->m_Renderer == nullptr || m_Renderer == nullptr)
  {
    return;
  }
  vtkCamera* from = source->m_Renderer->GetActiveCamera();
  vtkCamera* to = m_Renderer->GetActiveCamera();
  to->SetPosition(from->GetPosition());
  to->SetFocalPoint(from->GetFocalPoint());
  to->SetViewUp(from->GetViewUp());
  render();
}

// ---------------------------------------------------------------------------------------------------
// Camera linking

void VXVisualizationWidget::startLinkCameras()
{
  s_LinkingWidget = this;
  Q_EMIT printOutput(
      QStringLiteral("Click the view whose camera should be linked to this one (Escape cancels)."));
  Q_EMIT statusMessage(QStringLiteral("Linking cameras: click another view"));
}

void VXVisualizationWidget::cancelLinkCameras()
{
  if (s_LinkingWidget == nullptr)
  {
    return;
  }
  VXVisualizationWidget* linking = s_LinkingWidget;
  s_LinkingWidget = nullptr;
  Q_EMIT linking->printOutput(QStringLiteral("Camera linking cancelled."));
  Q_EMIT linking->statusMessage(QString());
}

void VXVisualizationWidget::focusInEvent(QFocusEvent* e)
{
  VXGLWidget::focusInEvent(e);
  if (s_LinkingWidget != nullptr)
  {
    VXVisualizationWidget* other = s_LinkingWidget;
    s_LinkingWidget = nullptr;
    if (other != this)
    {
      linkCameraWith(other);
      // The view that asked is still the one that speaks in the output.
      Q_EMIT other->printOutput(QStringLiteral("Cameras linked: %1 views share one camera.")
                                    .arg(static_cast<int>(m_LinkedWidgets.size())));
      Q_EMIT other->statusMessage(QString());
    }
  }
}

void VXVisualizationWidget::keyPressEvent(QKeyEvent* e)
{
  if (e->key() == Qt::Key_Escape && s_LinkingWidget != nullptr)
  {
    cancelLinkCameras();
    e->accept();
    return;
  }
  VXGLWidget::keyPressEvent(e);
}

void VXVisualizationWidget::linkCameraWith(VXVisualizationWidget* other)
{
  if (other == nullptr || other == this || other->m_Renderer == nullptr || m_Renderer == nullptr)
  {
    s_LinkingWidget = nullptr;
    return;
  }
  vtkCamera* groupCamera = other->m_Renderer->GetActiveCamera();
  std::set<VXVisualizationWidget*> members = m_LinkedWidgets;
  members.insert(other->m_LinkedWidgets.begin(), other->m_LinkedWidgets.end());
  members.insert(other);
  members.insert(this);
  for (VXVisualizationWidget* member : members)
  {
    member->m_LinkedWidgets = members;
  }
  for (VXVisualizationWidget* member : members)
  {
    if (member == other)
    {
      continue;
    }
    member->m_Renderer->SetActiveCamera(groupCamera);
    member->m_OverlayRenderer->SetActiveCamera(groupCamera);
    member->syncFocalPointSourceToActiveCamera();
    member->render();
  }
  s_LinkingWidget = nullptr;
}

void VXVisualizationWidget::unlinkCamera()
{
  if (m_LinkedWidgets.empty())
  {
    return;
  }
  std::set<VXVisualizationWidget*> others = m_LinkedWidgets;
  others.erase(this);
  m_LinkedWidgets.clear();
  for (VXVisualizationWidget* member : others)
  {
    member->m_LinkedWidgets.erase(this);
    // A group of one is no group.
    if (member->m_LinkedWidgets.size() == 1)
    {
      member->m_LinkedWidgets.clear();
    }
  }
  if (m_Renderer == nullptr)
  {
    return;
  }
  // When the group was looking through our own camera it keeps that one; we take a copy of it.
  const bool cameraShared = std::any_of(others.begin(), others.end(),
                                        [this](VXVisualizationWidget* w) {
                                          return w->m_Renderer != nullptr &&
                                                 w->m_Renderer->GetActiveCamera() == m_Camera.GetPointer();
                                        });
  if (m_Camera == nullptr || cameraShared)
  {
    auto own = vtkSmartPointer<vtkCamera>::New();
    if (m_Camera != nullptr)
    {
      own->DeepCopy(m_Camera);
    }
    m_Camera = own;
  }
  m_Renderer->SetActiveCamera(m_Camera);
  m_OverlayRenderer->SetActiveCamera(m_Camera);
  syncFocalPointSourceToActiveCamera();
  render();
}

void VXVisualizationWidget::removeLinkedWidget(VXVisualizationWidget* widget)
{
  m_LinkedWidgets.erase(widget);
}

// ---------------------------------------------------------------------------------------------------
// Focal point

void VXVisualizationWidget::visiblePropBounds(double bounds[6]) const
{
  vtkMath::UninitializeBounds(bounds);
  if (m_Renderer != nullptr)
  {
    m_Renderer->ComputeVisiblePropBounds(bounds);
  }
}

double VXVisualizationWidget::focalPointCursorRadius() const
{
  double bounds[6];
  visiblePropBounds(bounds);
  const double extent = std::max({bounds[1] - bounds[0], bounds[3] - bounds[2], bounds[5] - bounds[4]});
  const double radius = 0.25 * extent;
  return radius < 0.0 ? 1.0 : radius;
}

void VXVisualizationWidget::setFocalPointCursor(const double point[3])
{
  if (m_FocalPointSource == nullptr)
  {
    return;
  }
  const double r = focalPointCursorRadius();
  m_FocalPointSource->SetFocalPoint(point[0], point[1], point[2]);
  m_FocalPointSource->SetModelBounds(point[0] - r, point[0] + r, point[1] - r, point[1] + r, point[2] - r,
                                     point[2] + r);
  m_FocalPointSource->Update();
}

void VXVisualizationWidget::syncFocalPointSourceToActiveCamera()
{
  if (m_Renderer == nullptr)
  {
    return;
  }
  setFocalPointCursor(m_Renderer->GetActiveCamera()->GetFocalPoint());
}

void VXVisualizationWidget::updateFocalPoint(double* point, bool pick1ModeOn, bool pick2ModeOn,
                                             bool shouldLink)
{
  if (m_Renderer == nullptr || m_FocalPointSource == nullptr || m_FocalPointActor == nullptr ||
      point == nullptr)
  {
    return;
  }
  m_FocalPointLocked = pick1ModeOn || pick2ModeOn;
  m_Renderer->GetActiveCamera()->SetFocalPoint(point);
  syncFocalPointSourceToActiveCamera();
  render();
  if (shouldLink)
  {
    for (VXVisualizationWidget* linked : m_LinkedWidgets)
    {
      if (linked != this)
      {
        linked->updateFocalPoint(point, pick1ModeOn, pick2ModeOn, false);
      }
    }
  }
}

void VXVisualizationWidget::resetFocalPoint(bool shouldLink)
{
  if (m_Renderer == nullptr || m_FocalPointSource == nullptr || m_FocalPointActor == nullptr)
  {
    return;
  }
  double bounds[6];
  visiblePropBounds(bounds);
  double middle[3] = {0.0, 0.0, 0.0};
  if (vtkMath::AreBoundsInitialized(bounds))
  {
    for (int i = 0; i < 3; ++i)
    {
      middle[i] = 0.5 * (bounds[2 * i] + bounds[2 * i + 1]);
    }
  }
  m_FocalPointLocked = false;
  m_Renderer->GetActiveCamera()->SetFocalPoint(middle);
  syncFocalPointSourceToActiveCamera();
  render();
  if (shouldLink)
  {
    for (VXVisualizationWidget* linked : m_LinkedWidgets)
    {
      if (linked != this)
      {
        linked->updateFocalPoint(middle, false, false, false);
      }
    }
  }
}

void VXVisualizationWidget::toggleFocalPointVisibility(bool visible)
{
  if (m_FocalPointActor == nullptr)
  {
    return;
  }
  m_FocalPointActor->SetVisibility(visible);
  renderThroughInteractor();
}

void VXVisualizationWidget::toggleFocalPointPicking(bool checked)
{
  if (m_InteractorStyle != nullptr)
  {
    m_InteractorStyle->setCellPickMode(checked);
  }
  // Picking a focal point shares the cell hover machinery.
  toggleHoverCells(checked);
  if (checked)
  {
    Q_EMIT printOutput(QStringLiteral("Click on the data to set the camera's focal point."));
  }
}

// ---------------------------------------------------------------------------------------------------
// Hover

void VXVisualizationWidget::toggleHoverPoints(bool on)
{
  if (m_HoverWidget == nullptr || m_PickerCallback == nullptr)
  {
    return;
  }
  m_PickerCallback->setHoverPointsOn(on);
  // Both modes share the one hover widget.
  m_HoverWidget->SetEnabled(m_PickerCallback->hoverPointsOn() || m_PickerCallback->hoverCellsOn());
  if (!on)
  {
    m_PickerCallback->toggleHighlightersVisibility(false);
    render();
  }
}

void VXVisualizationWidget::toggleHoverCells(bool on)
{
  if (m_HoverWidget == nullptr || m_PickerCallback == nullptr)
  {
    return;
  }
  m_PickerCallback->setHoverCellsOn(on);
  // Both modes share the one hover widget.
  m_HoverWidget->SetEnabled(m_PickerCallback->hoverPointsOn() || m_PickerCallback->hoverCellsOn());
  if (!on)
  {
    m_PickerCallback->toggleHighlightersVisibility(false);
    render();
  }
}

bool VXVisualizationWidget::hoverPointsModeOn() const
{
  return m_PickerCallback != nullptr && m_PickerCallback->hoverPointsOn();
}

bool VXVisualizationWidget::hoverCellsModeOn() const
{
  return m_PickerCallback != nullptr && m_PickerCallback->hoverCellsOn();
}

bool VXVisualizationWidget::pickFocalPointModeOn() const
{
  return m_InteractorStyle != nullptr && m_InteractorStyle->cellPickModeOn();
}

void VXVisualizationWidget::enableDisableHoverFeatures(int allowHover)
{
  if (m_Toolbar != nullptr)
  {
    m_Toolbar->enableDisableHoverFeatures(allowHover);
  }
}

// ---------------------------------------------------------------------------------------------------
// Axes grid

void VXVisualizationWidget::toggleGridAxes()
{
  if (m_GridAxesActor == nullptr)
  {
    return;
  }
  updateGridAxesBounds(true);
  renderThroughInteractor();
}

void VXVisualizationWidget::editGridAxes()
{
  VXGridAxesWidget& dialog = getGridAxesWidget();
  dialog.setShowGrid(m_GridAxesActor != nullptr && m_GridAxesActor->GetGenerateGrid());
  // An automatic axis shows the step it uses now, not a bare 0.
  std::array<double, 3> automatic = {{0.0, 0.0, 0.0}};
  if (m_GridAxesActor != nullptr)
  {
    const double* bounds = m_GridAxesActor->GetGridBounds();
    for (int axis = 0; axis < 3; ++axis)
    {
      automatic[axis] = VXGridAxesActor::AutomaticStep(bounds[2 * axis], bounds[2 * axis + 1]);
    }
  }
  dialog.setAutomaticSpacing(automatic);
  dialog.setSpacing(dialog.getSpacing());
  if (dialog.exec() == 1)
  {
    applyGridAxesEdits();
  }
}

void VXVisualizationWidget::updateGridAxesBounds(bool propagate)
{
  if (m_Renderer == nullptr)
  {
    return;
  }
  if (m_GridAxesActor != nullptr)
  {
    // The grid must not count in the bounds it is fitted to.
    m_Renderer->RemoveActor(m_GridAxesActor);
  }
  double bounds[6];
  visiblePropBounds(bounds);
  if (m_GridAxesActor != nullptr)
  {
    m_GridAxesActor->SetGridBounds(bounds);
    // Exact labels follow the new bounds.
    applyGridSpacingLabels();
  }
  if (!m_FocalPointLocked && m_FocalPointActor != nullptr)
  {
    m_Renderer->RemoveActor(m_FocalPointActor);
    syncFocalPointSourceToActiveCamera();
    m_Renderer->AddActor(m_FocalPointActor);
  }
  if (m_GridAxesActor != nullptr && getGridAxesAction()->isChecked())
  {
    m_Renderer->AddActor(m_GridAxesActor);
  }
  render();
  if (propagate)
  {
    for (VXVisualizationWidget* linked : m_LinkedWidgets)
    {
      if (linked != this)
      {
        linked->updateGridAxesBounds(false);
      }
    }
  }
}

void VXVisualizationWidget::applyGridAxesEdits()
{
  if (m_GridAxesActor == nullptr)
  {
    return;
  }
  applyGridSpacingLabels();
  m_GridAxesActor->SetGenerateGrid(gridAxesShowGrid());
  renderThroughInteractor();
}

void VXVisualizationWidget::applyGridSpacingLabels()
{
  if (m_GridAxesActor == nullptr)
  {
    return;
  }
  const std::array<double, 3> spacing = gridAxesSpacing();
  const double* bounds = m_GridAxesActor->GetGridBounds();
  for (int axis = 0; axis < 3; ++axis)
  {
    const double s = spacing[axis];
    const double min = bounds[2 * axis];
    const double max = bounds[2 * axis + 1];
    if (s != 0.0 && min <= max)
    {
      // Ticks stand on the multiples of the spacing, so that their values read as round numbers.
      m_GridAxesActor->SetCustomLabels(axis, VXGridAxesActor::SpacedLabelValues(min, max, s));
    }
    m_GridAxesActor->SetUseCustomLabels(axis, s != 0.0);
  }
}

// ---------------------------------------------------------------------------------------------------
// Background

void VXVisualizationWidget::setRenderWindowBackgroundColor(const QColor& color)
{
  if (!color.isValid())
  {
    return;
  }
  const double rgb[3] = {color.redF(), color.greenF(), color.blueF()};
  if (m_Renderer != nullptr)
  {
    m_Renderer->SetBackground(rgb);
  }
  if (m_OverlayRenderer != nullptr)
  {
    m_OverlayRenderer->SetBackground(rgb);
  }
  render();
}

QColor VXVisualizationWidget::getBackgroundColor() const
{
  if (m_Renderer == nullptr)
  {
    return {};
  }
  const double* rgb = m_Renderer->GetBackground();
  return QColor::fromRgbF(rgb[0], rgb[1], rgb[2]);
}

void VXVisualizationWidget::selectBackgroundColor()
{
  const QColor color = QColorDialog::getColor(getBackgroundColor(), this, QStringLiteral("Select Color"),
                                              QColorDialog::DontUseNativeDialog);
  if (color.isValid())
  {
    setRenderWindowBackgroundColor(color);
  }
}

// ---------------------------------------------------------------------------------------------------
// Screenshots

void VXVisualizationWidget::beginCapture()
{
  // The outline layer is part of the window's frame already: the image filter re-renders all layers,
  // so only the toolbar has to leave the picture.
  if (m_Toolbar != nullptr)
  {
    m_Toolbar->hide();
  }
}

void VXVisualizationWidget::endCapture()
{
  if (m_Toolbar != nullptr)
  {
    m_Toolbar->show();
  }
}

QImage VXVisualizationWidget::grabTransparentImage()
{
  // The outline layer would wipe the scene's alpha: see VXRenderBufferCapture::mergeGlow.
  const bool overlayDraws = m_OverlayRenderer->GetDraw() != 0;
  m_OverlayRenderer->DrawOff();
  QImage image = VXRenderBufferCapture::grab(renderWindow(), true);
  if (overlayDraws)
  {
    m_OverlayRenderer->DrawOn();
    VXRenderBufferCapture::mergeGlow(image, VXRenderBufferCapture::grab(renderWindow(), true));
  }
  m_OverlayRenderer->SetDraw(overlayDraws);
  return image;
}

QImage VXVisualizationWidget::captureViewImage(bool transparent, const QColor& color)
{
  if (renderWindow() == nullptr || m_Renderer == nullptr)
  {
    return {};
  }
  beginCapture();
  double background[3];
  m_Renderer->GetBackground(background);
  QImage image;
  if (transparent)
  {
    image = grabTransparentImage();
  }
  else
  {
    if (color.isValid())
    {
      const double rgb[3] = {color.redF(), color.greenF(), color.blueF()};
      // Exact comparison on purpose: an unchanged colour must not touch the modified time.
      if (rgb[0] != background[0] || rgb[1] != background[1] || rgb[2] != background[2])
      {
        m_Renderer->SetBackground(rgb);
      }
    }
    image = VXRenderBufferCapture::grab(renderWindow(), false);
  }
  const double* current = m_Renderer->GetBackground();
  if (current[0] != background[0] || current[1] != background[1] || current[2] != background[2])
  {
    m_Renderer->SetBackground(background);
  }
  endCapture();
  render();
  return image;
}

void VXVisualizationWidget::saveScreenshot(const QString& path)
{
  VXScreenshotOptionsDialog dialog(this);
  dialog.setDefaultColor(getBackgroundColor());
  if (dialog.exec() != QDialog::Accepted)
  {
    return;
  }
  const QImage image = captureViewImage(dialog.useTransparentBackground(), dialog.getBackgroundColor());
  if (path.isNull())
  {
    return;
  }
  if (image.save(path))
  {
    Q_EMIT printOutput(QStringLiteral("Screenshot saved to %1").arg(QDir::toNativeSeparators(path)));
  }
  else
  {
    Q_EMIT printOutput(QStringLiteral("Could not save the screenshot to %1.").arg(path));
  }
}

void VXVisualizationWidget::saveScreenshotPath()
{
  const QString path = QFileDialog::getSaveFileName(
      this, QStringLiteral("Save Screenshot"), QDir::currentPath(),
      QStringLiteral("PNG Image (*.png);;JPEG Image (*.jpg *.jpeg);;Bitmap Image (*.bmp)"));
  if (path.isEmpty())
  {
    return;
  }
  saveScreenshot(path);
}

void VXVisualizationWidget::copyScreenshot()
{
  beginCapture();
  const QImage image = grabFramebuffer();
  QApplication::clipboard()->setImage(image);
  endCapture();
  render();
}

// ---------------------------------------------------------------------------------------------------
// Camera presets

QString VXVisualizationWidget::addCustomCameraPosPreset()
{
  bool ok = false;
  const QString name = QInputDialog::getText(this, QStringLiteral("Visualization Camera Preset Name"),
                                             QStringLiteral("Preset Name:"), QLineEdit::Normal,
                                             QStringLiteral("Untitled Preset"), &ok);
  if (!ok || name.isEmpty())
  {
    return {};
  }
  return storeCameraPreset(name) ? name : QString();
}

bool VXVisualizationWidget::storeCameraPreset(const QString& name)
{
  if (m_Renderer == nullptr || name.isEmpty())
  {
    return false;
  }
  switch (VXCameraPresetStore::store(name, m_Renderer->GetActiveCamera()))
  {
  case VXCameraPresetStore::StoreResult::Stored:
    return true;
  case VXCameraPresetStore::StoreResult::NameExists:
    Q_EMIT printOutput(
        QStringLiteral("Cannot save camera preset because preset name %1 already exists.").arg(name));
    return false;
  case VXCameraPresetStore::StoreResult::WriteFailed:
    // The preset is kept for this session; only the file could not be written.
    Q_EMIT printOutput(
        QStringLiteral("Could not write the camera preset %1 to the settings file.").arg(name));
    return true;
  default:
    return false;
  }
}

void VXVisualizationWidget::applyCustomCameraPosPreset(const QString& presetName)
{
  if (m_Renderer == nullptr || presetName.isEmpty())
  {
    return;
  }
  if (!VXCameraPresetStore::apply(presetName, m_Renderer->GetActiveCamera()))
  {
    Q_EMIT printOutput(QStringLiteral("The camera preset %1 is not in the settings.").arg(presetName));
    return;
  }
  syncFocalPointSourceToActiveCamera();
  render();
}

// ---------------------------------------------------------------------------------------------------
// Saved state

void VXVisualizationWidget::saveState(nlohmann::json& output) const
{
  if (m_Renderer == nullptr)
  {
    return;
  }
  vtkCamera* camera = m_Renderer->GetActiveCamera();
  output[keys::k_ParallelProjection] = camera->GetParallelProjection();
  output[keys::k_GlobalGridAxes] = m_GridAxesAction != nullptr && m_GridAxesAction->isChecked();
  const auto spacing = gridAxesSpacing();
  for (int i = 0; i < 3; ++i)
  {
    output[keys::k_GridSpacing[i]] = spacing[i];
  }
  output[keys::k_GridShowLines] = gridAxesShowGrid();
  output[keys::k_OwnContextMenu] = m_UseOwnContextMenu;
  output[keys::k_CheckContextMenu] = m_CheckContextMenu;
  output[keys::k_NumRenderLayers] = m_NumRenderLayers;
  const double* position = camera->GetPosition();
  const double* viewUp = camera->GetViewUp();
  const double* focalPoint = camera->GetFocalPoint();
  for (int i = 0; i < 3; ++i)
  {
    output[keys::k_CameraPos[i]] = position[i];
  }
  for (int i = 0; i < 3; ++i)
  {
    output[keys::k_CameraViewUp[i]] = viewUp[i];
  }
  for (int i = 0; i < 3; ++i)
  {
    output[keys::k_CameraFocalPt[i]] = focalPoint[i];
  }
  output[keys::k_CameraViewAngle] = camera->GetViewAngle();
  output[keys::k_CameraParallelScale] = camera->GetParallelScale();
}

void VXVisualizationWidget::loadState(const nlohmann::json& input)
{
  if (!input.is_object() || m_Renderer == nullptr)
  {
    return;
  }
  vtkCamera* camera = m_Renderer->GetActiveCamera();
  if (input.contains(keys::k_ParallelProjection))
  {
    const int parallel = input.at(keys::k_ParallelProjection).get<int>();
    camera->SetParallelProjection(parallel);
    getParallelProjectionAction()->setChecked(parallel != 0);
  }
  if (input.contains(keys::k_GlobalGridAxes))
  {
    getGridAxesAction()->setChecked(input.at(keys::k_GlobalGridAxes).get<bool>());
  }
  double spacing[3];
  if (readVector(input, keys::k_GridSpacing, spacing))
  {
    getGridAxesWidget().setSpacing({{spacing[0], spacing[1], spacing[2]}});
  }
  if (input.contains(keys::k_GridShowLines))
  {
    getGridAxesWidget().setShowGrid(input.at(keys::k_GridShowLines).get<bool>());
  }
  if (input.contains(keys::k_OwnContextMenu))
  {
    m_UseOwnContextMenu = input.at(keys::k_OwnContextMenu).get<bool>();
  }
  if (input.contains(keys::k_CheckContextMenu))
  {
    m_CheckContextMenu = input.at(keys::k_CheckContextMenu).get<bool>();
  }
  if (input.contains(keys::k_NumRenderLayers))
  {
    m_NumRenderLayers = input.at(keys::k_NumRenderLayers).get<int>();
  }
  double vector[3];
  if (readVector(input, keys::k_CameraPos, vector))
  {
    camera->SetPosition(vector);
  }
  if (readVector(input, keys::k_CameraViewUp, vector))
  {
    camera->SetViewUp(vector);
  }
  if (readVector(input, keys::k_CameraFocalPt, vector))
  {
    camera->SetFocalPoint(vector);
  }
  if (input.contains(keys::k_CameraViewAngle))
  {
    camera->SetViewAngle(input.at(keys::k_CameraViewAngle).get<double>());
  }
  if (input.contains(keys::k_CameraParallelScale))
  {
    camera->SetParallelScale(input.at(keys::k_CameraParallelScale).get<double>());
  }
  updateGridAxesBounds(true);
  applyGridAxesEdits();
  render();
}

// ---------------------------------------------------------------------------------------------------
// Context menu and mouse

QAction* VXVisualizationWidget::getParallelProjectionAction()
{
  createContextMenuActions();
  return m_ParallelProjectionAction;
}

QAction* VXVisualizationWidget::getGridAxesAction()
{
  createContextMenuActions();
  return m_GridAxesAction;
}

void VXVisualizationWidget::createContextMenuActions()
{
  if (m_ShowAllAction != nullptr)
  {
    return;
  }
  auto makeAction = [this](const QString& text) { return new QAction(text, this); };
  m_ShowAllAction = makeAction(QStringLiteral("Show All Geometries"));
  connect(m_ShowAllAction, &QAction::triggered, this, &VXVisualizationWidget::showAll);
  m_HideAllAction = makeAction(QStringLiteral("Hide All Geometries"));
  connect(m_HideAllAction, &QAction::triggered, this, &VXVisualizationWidget::hideAll);
  m_LinkCamerasAction = makeAction(QStringLiteral("Link Cameras"));
  connect(m_LinkCamerasAction, &QAction::triggered, this, &VXVisualizationWidget::startLinkCameras);
  m_LinkAllCamerasAction = makeAction(QStringLiteral("Link All Cameras"));
  connect(m_LinkAllCamerasAction, &QAction::triggered, this, &VXVisualizationWidget::requestLinkAllCameras);
  m_UnlinkCamerasAction = makeAction(QStringLiteral("Unlink Cameras"));
  connect(m_UnlinkCamerasAction, &QAction::triggered, this, &VXVisualizationWidget::unlinkCamera);
  m_UnlinkAllCamerasAction = makeAction(QStringLiteral("Unlink All Cameras"));
  connect(m_UnlinkAllCamerasAction, &QAction::triggered, this,
          &VXVisualizationWidget::requestUnlinkAllCameras);
  m_ParallelProjectionAction = makeAction(QStringLiteral("Camera Parallel Projection"));
  m_ParallelProjectionAction->setCheckable(true);
  if (m_Renderer != nullptr)
  {
    m_ParallelProjectionAction->setChecked(m_Renderer->GetActiveCamera()->GetParallelProjection() != 0);
  }
  connect(m_ParallelProjectionAction, &QAction::triggered, this,
          &VXVisualizationWidget::toggleParallelProjection);
  m_SplitHorizontallyAction = makeAction(QStringLiteral("Split View Horizontally"));
  connect(m_SplitHorizontallyAction, &QAction::triggered, this,
          &VXVisualizationWidget::requestSplitHorizontally);
  m_SplitVerticallyAction = makeAction(QStringLiteral("Split View Vertically"));
  connect(m_SplitVerticallyAction, &QAction::triggered, this, &VXVisualizationWidget::requestSplitVertically);
  m_SaveScreenshotAction = makeAction(QStringLiteral("Save Screenshot ..."));
  connect(m_SaveScreenshotAction, &QAction::triggered, this, &VXVisualizationWidget::saveScreenshotPath);
  m_CopyScreenshotAction = makeAction(QStringLiteral("Copy Screenshot"));
  connect(m_CopyScreenshotAction, &QAction::triggered, this, &VXVisualizationWidget::copyScreenshot);
  m_SaveAllScreenshotAction = makeAction(QStringLiteral("Save Screenshot ..."));
  connect(m_SaveAllScreenshotAction, &QAction::triggered, this,
          &VXVisualizationWidget::requestSaveAllViewsScreenshot);
  m_CopyAllScreenshotAction = makeAction(QStringLiteral("Copy to Clipboard"));
  connect(m_CopyAllScreenshotAction, &QAction::triggered, this,
          &VXVisualizationWidget::requestCopyAllViewsToClipboard);
  m_EqualizeWidthsAction = makeAction(QStringLiteral("Equalize View Widths"));
  connect(m_EqualizeWidthsAction, &QAction::triggered, this,
          &VXVisualizationWidget::requestEqualizeViewWidths);
  m_EqualizeHeightsAction = makeAction(QStringLiteral("Equalize View Heights"));
  connect(m_EqualizeHeightsAction, &QAction::triggered, this,
          &VXVisualizationWidget::requestEqualizeViewHeights);
  m_BackgroundColorAction = makeAction(QStringLiteral("Change Background Color"));
  connect(m_BackgroundColorAction, &QAction::triggered, this, &VXVisualizationWidget::selectBackgroundColor);
  m_DefaultBackgroundColorAction = makeAction(QStringLiteral("Restore Default Background Color"));
  connect(m_DefaultBackgroundColorAction, &QAction::triggered, this,
          [this]()
          { setRenderWindowBackgroundColor(ZRPreferences::Instance()->getDefaultRenderWindowBackground()); });
  m_GridAxesAction = makeAction(QStringLiteral("Axes Grid"));
  m_GridAxesAction->setCheckable(true);
  connect(m_GridAxesAction, &QAction::triggered, this, &VXVisualizationWidget::toggleGridAxes);
  m_EditGridAxesAction = makeAction(QStringLiteral("Edit Axes Grid"));
  connect(m_EditGridAxesAction, &QAction::triggered, this, &VXVisualizationWidget::editGridAxes);
}

QMenu* VXVisualizationWidget::getContextMenu()
{
  createContextMenuActions();
  auto* menu = new QMenu(QString(), this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->addAction(m_ShowAllAction);
  menu->addAction(m_HideAllAction);
  menu->addSeparator();
  menu->addAction(m_LinkCamerasAction);
  menu->addAction(m_LinkAllCamerasAction);
  if (!m_LinkedWidgets.empty())
  {
    menu->addAction(m_UnlinkCamerasAction);
  }
  if (!m_LinkedWidgets.empty() || (m_AnyViewLinkedQuery && m_AnyViewLinkedQuery()))
  {
    menu->addAction(m_UnlinkAllCamerasAction);
  }
  if (m_Renderer != nullptr)
  {
    m_ParallelProjectionAction->setChecked(m_Renderer->GetActiveCamera()->GetParallelProjection() != 0);
  }
  menu->addAction(m_ParallelProjectionAction);
  menu->addSeparator();
  QMenu* currentView = menu->addMenu(QStringLiteral("Current View"));
  currentView->addAction(m_SplitHorizontallyAction);
  currentView->addAction(m_SplitVerticallyAction);
  currentView->addAction(m_SaveScreenshotAction);
  currentView->addAction(m_CopyScreenshotAction);
  QMenu* allViews = menu->addMenu(QStringLiteral("All Views"));
  allViews->addAction(m_SaveAllScreenshotAction);
  allViews->addAction(m_CopyAllScreenshotAction);
  QMenu* equalize = menu->addMenu(QStringLiteral("Equalize Views"));
  equalize->addAction(m_EqualizeWidthsAction);
  equalize->addAction(m_EqualizeHeightsAction);
  menu->addSeparator();
  menu->addAction(m_BackgroundColorAction);
  menu->addAction(m_DefaultBackgroundColorAction);
  menu->addSeparator();
  menu->addAction(m_GridAxesAction);
  menu->addAction(m_EditGridAxesAction);
  return menu;
}

void VXVisualizationWidget::showContextMenu(const QPoint& pos)
{
  if (!m_UseOwnContextMenu)
  {
    return;
  }
  QMenu* menu = getContextMenu();
  menu->exec(mapToGlobal(pos));
}

void VXVisualizationWidget::mousePressEvent(QMouseEvent* e)
{
  VXGLWidget::mousePressEvent(e);
  m_CheckContextMenu = e->button() == Qt::RightButton;
  if (pickFocalPointModeOn())
  {
    // The focal point pick shares the cell hover machinery, but it never copies anything.
    if (e->button() == Qt::LeftButton)
    {
      pickFocalPointAt(e->pos());
    }
  }
  else if (hoverPointsModeOn() || hoverCellsModeOn())
  {
    QString text = m_PickerCallback->getHoverText();
    text.remove(QStringLiteral("    "));
    // A click on nothing leaves the clipboard as it was.
    if (!text.trimmed().isEmpty())
    {
      QApplication::clipboard()->setText(text);
      Q_EMIT printOutput(QStringLiteral("Picked item data copied to clipboard"));
    }
  }
  Q_EMIT mousePressed();
}

bool VXVisualizationWidget::pickFocalPointAt(const QPoint& pos)
{
  if (m_Renderer == nullptr || m_FocalPointActor == nullptr)
  {
    return false;
  }
  // Only data counts: the cursor, the grid and the highlights are no place to look at.
  vtkNew<vtkCellPicker> picker;
  picker->SetTolerance(0.002);
  picker->PickFromListOn();
  vtkPropCollection* props = m_Renderer->GetViewProps();
  props->InitTraversal();
  for (vtkProp* prop = props->GetNextProp(); prop != nullptr; prop = props->GetNextProp())
  {
    if (prop != m_FocalPointActor.GetPointer() && isDataViewActor(prop))
    {
      picker->AddPickList(prop);
    }
  }
  const qreal ratio = devicePixelRatioF();
  const double x = pos.x() * ratio;
  const double y = (height() - pos.y() - 1) * ratio;
  if (picker->Pick(x, y, 0.0, m_Renderer) == 0)
  {
    return false;
  }
  double point[3];
  picker->GetPickPosition(point);
  Q_EMIT pickEvent(point, true, false);
  Q_EMIT printOutput(QStringLiteral("Focal point set to (%1, %2, %3)")
                         .arg(point[0], 0, 'g', 6)
                         .arg(point[1], 0, 'g', 6)
                         .arg(point[2], 0, 'g', 6));
  return true;
}

void VXVisualizationWidget::mouseMoveEvent(QMouseEvent* e)
{
  VXGLWidget::mouseMoveEvent(e);
  // A right drag moves the camera; only a right click without a move opens the menu.
  m_CheckContextMenu = false;
}

void VXVisualizationWidget::mouseReleaseEvent(QMouseEvent* e)
{
  VXGLWidget::mouseReleaseEvent(e);
  if (m_CheckContextMenu)
  {
    showContextMenu(e->pos());
  }
}

void VXVisualizationWidget::mouseDoubleClickEvent(QMouseEvent* e)
{
  VXGLWidget::mouseDoubleClickEvent(e);
  Q_EMIT doubleClicked(e->pos());
}

bool VXVisualizationWidget::event(QEvent* e)
{
  switch (e->type())
  {
  case QEvent::TouchBegin:
  case QEvent::TouchUpdate:
  case QEvent::TouchEnd:
    // Touch must never reach the toolkit's interactor, which would move the camera.
    return true;
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
  case QEvent::DevicePixelRatioChange:
#else
  case QEvent::ScreenChangeInternal:
#endif
    // Render once the new ratio has settled.
    QTimer::singleShot(0, this, &VXVisualizationWidget::render);
    break;
  default:
    break;
  }
  return VXGLWidget::event(e);
}
