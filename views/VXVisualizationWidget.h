#pragma once

#include "views/VXGLWidget.h"
#include "views/VXGridAxesWidget.h"

#include <vtkSmartPointer.h>

#include <nlohmann/json_fwd.hpp>

#include <QColor>
#include <QImage>
#include <QStringList>

#include <array>
#include <functional>
#include <memory>
#include <set>
#include <utility>

class QAction;
class QMenu;
class vtkActor;
class vtkCamera;
class vtkCursor3D;
class vtkHoverWidget;
class vtkOrientationMarkerWidget;
class vtkProp;
class vtkRenderer;
class vtkRenderWindowInteractor;
class VXGridAxesActor;
class VXInteractorStyleCamera;
class VXPickerCallback;
class VXViewCubeWidget;
class VXVisualizationToolbarWidget;

/**
 * @brief One render window: two stacked renderers (the scene, and outlined objects drawn with a
 * glow), the camera and its operations, the axes grid, the focal point cursor, the orientation gizmo,
 * screenshots and the context menu. Data views and annotations put their props in through addActor.
 *
 * Rendering is always coalesced: render() posts one queued frame at a time, so that any number of
 * requests in one event-loop turn cost one frame.
 */
class VXVisualizationWidget : public VXGLWidget
{
  Q_OBJECT

public:
  enum CameraPosition
  {
    XPlus = 0,
    YPlus = 1,
    ZPlus = 2,
    XMinus = 3,
    YMinus = 4,
    ZMinus = 5
  };

  explicit VXVisualizationWidget(QWidget* parent = nullptr, int numRenderLayers = 2);
  ~VXVisualizationWidget() override;

  vtkRenderer* getRenderer() const;
  vtkRenderer* getOverlayRenderer() const;
  vtkRenderWindowInteractor* getRenderWindowInteractor();
  VXInteractorStyleCamera* getInteractorStyle() const { return m_InteractorStyle; }
  VXPickerCallback* getPickerCallback() const;
  VXVisualizationToolbarWidget* getToolbar() const { return m_Toolbar; }
  VXGridAxesActor* getGridAxesActor() const;
  /** The grid options dialog; made on first use, since most windows never open it. */
  VXGridAxesWidget& getGridAxesWidget();
  bool hasGridAxesWidget() const { return m_GridAxesWidget != nullptr; }
  vtkActor* getFocalPointActor() const;
  vtkCursor3D* getFocalPointSource() const;
  VXViewCubeWidget* getCameraOrientationWidget() const;
  vtkOrientationMarkerWidget* getOrientationWidget() const;

  void addActor(vtkProp* prop);
  void removeActor(vtkProp* prop);
  bool isDataViewActor(vtkProp* prop) const;
  void addOutline(vtkProp* prop);
  void removeOutline(vtkProp* prop);
  void clearOutlines();
  bool hasOutlineActor(vtkProp* prop) const;

  std::set<VXVisualizationWidget*> getLinkedWidgets() const { return m_LinkedWidgets; }
  bool isLinked() const { return !m_LinkedWidgets.empty(); }
  void linkCameraWith(VXVisualizationWidget* other);
  void removeLinkedWidget(VXVisualizationWidget* widget);
  void setAnyViewLinkedQuery(std::function<bool()> query) { m_AnyViewLinkedQuery = std::move(query); }
  static VXVisualizationWidget* getLinkingWidget() { return s_LinkingWidget; }

  void useOwnContextMenu(bool use) { m_UseOwnContextMenu = use; }
  bool usesOwnContextMenu() const { return m_UseOwnContextMenu; }
  bool getCheckContextMenu() const { return m_CheckContextMenu; }
  int getNumRenderLayers() const { return m_NumRenderLayers; }
  bool isFocalPointLocked() const { return m_FocalPointLocked; }
  /** Number of frames the coalesced render() has drawn so far. */
  int getCoalescedFrameCount() const { return m_CoalescedFrameCount; }
  bool isRenderPending() const { return m_RenderPending != 0; }

  void copy(const VXVisualizationWidget* source);
  void updateGridAxesBounds(bool propagate);
  bool hoverPointsModeOn() const;
  bool hoverCellsModeOn() const;
  bool pickFocalPointModeOn() const;
  /** Sets the focal point on the data under the widget position; false when nothing is there. */
  bool pickFocalPointAt(const QPoint& pos);
  bool areDimensionsValid(int x, int y, int z, int& maxSize);
  QImage captureViewImage(bool transparent, const QColor& color);
  void saveScreenshot(const QString& path);
  /** Stores the active camera under a new preset name; false (and a message) when the name exists. */
  bool storeCameraPreset(const QString& name);
  std::pair<std::array<double, 3>, double> getCameraFocalPointAndDistance() const;
  QColor getBackgroundColor() const;
  /** The context menu's actions, for the views that add their own entries; made on first use. */
  QAction* getParallelProjectionAction();
  QAction* getGridAxesAction();

public Q_SLOTS:
  virtual QMenu* getContextMenu();
  virtual void resetCamera();
  virtual void clearRenderWindow();
  virtual void initializeRendererAndAxes();
  virtual void setupCubeAxesActor();
  virtual void showContextMenu(const QPoint& pos);
  virtual void startLinkCameras();
  /** Ends a started link without linking anything. */
  void cancelLinkCameras();
  virtual void toggleParallelProjection();
  virtual void toggleGridAxes();
  virtual void editGridAxes();
  virtual void selectBackgroundColor();

  void render();
  void saveScreenshotPath();
  void copyScreenshot();
  void setRenderWindowBackgroundColor(const QColor& color);
  void setOrientationMarkerText(const QStringList& faceLabels);
  void setCameraView(int position);
  void camXPlus();
  void camYPlus();
  void camZPlus();
  void camXMinus();
  void camYMinus();
  void camZMinus();
  void camImageView();
  void rotateCamClockwise();
  void rotateCamCounterClockwise();
  void toggleFocalPointVisibility(bool visible);
  void resetFocalPoint(bool shouldLink = true);
  void syncFocalPointSourceToActiveCamera();
  void toggleFocalPointPicking(bool checked);
  void unlinkCamera();
  void toggleHoverPoints(bool on);
  void toggleHoverCells(bool on);
  void enableDisableHoverFeatures(int allowHover);
  QString addCustomCameraPosPreset();
  void applyCustomCameraPosPreset(const QString& presetName);
  void applyGridAxesEdits();
  void saveState(nlohmann::json& output) const;
  void loadState(const nlohmann::json& input);
  void updateFocalPoint(double* point, bool pick1ModeOn, bool pick2ModeOn, bool shouldLink);
  void initializeOrientationWidget();

Q_SIGNALS:
  void mousePressed();
  void printOutput(const QString& message);
  void statusMessage(const QString& message);
  void copyActors(VXVisualizationWidget* source);
  void showAll();
  void hideAll();
  void actorAdded(vtkProp* prop);
  void actorRemoved(vtkProp* prop);
  void actorVisibilityChanged(vtkProp* prop);
  void pickEvent(double* pickPos, bool pick1ModeOn, bool pick2ModeOn);
  void doubleClicked(const QPoint& pos);
  void requestSplitHorizontally();
  void requestSplitVertically();
  void requestEqualizeViewWidths();
  void requestEqualizeViewHeights();
  void requestSaveAllViewsScreenshot();
  void requestCopyAllViewsToClipboard();
  void requestLinkAllCameras();
  void requestUnlinkAllCameras();
  void hideAllRepresentations();

protected:
  bool event(QEvent* e) override;
  void mousePressEvent(QMouseEvent* e) override;
  void mouseMoveEvent(QMouseEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;
  void mouseDoubleClickEvent(QMouseEvent* e) override;
  void focusInEvent(QFocusEvent* e) override;
  void keyPressEvent(QKeyEvent* e) override;
  void resizeEvent(QResizeEvent* e) override;
  void initializeGL() override;

private:
  void setupGui();
  void initializeCameraOrientationWidget();
  void recenterToolbar();
  void renderNow();
  void renderThroughInteractor();
  void visiblePropBounds(double bounds[6]) const;
  double focalPointCursorRadius() const;
  void setFocalPointCursor(const double point[3]);
  void createContextMenuActions();
  void applyGridSpacingLabels();
  std::array<double, 3> gridAxesSpacing() const;
  bool gridAxesShowGrid() const;
  QImage grabTransparentImage();
  void updateOverlayDraw();
  void beginCapture();
  void endCapture();

  vtkSmartPointer<vtkOrientationMarkerWidget> m_OrientationWidget;
  vtkSmartPointer<VXGridAxesActor> m_GridAxesActor;
  vtkSmartPointer<vtkActor> m_FocalPointActor;
  vtkSmartPointer<vtkCursor3D> m_FocalPointSource;
  vtkSmartPointer<vtkRenderer> m_Renderer;
  vtkSmartPointer<vtkRenderer> m_OverlayRenderer;
  vtkSmartPointer<vtkCamera> m_Camera;
  VXInteractorStyleCamera* m_InteractorStyle = nullptr;
  std::set<VXVisualizationWidget*> m_LinkedWidgets;
  std::function<bool()> m_AnyViewLinkedQuery;

  QMenu* m_ContextMenu = nullptr;
  QAction* m_ShowAllAction = nullptr;
  QAction* m_HideAllAction = nullptr;
  QAction* m_LinkCamerasAction = nullptr;
  QAction* m_LinkAllCamerasAction = nullptr;
  QAction* m_UnlinkCamerasAction = nullptr;
  QAction* m_UnlinkAllCamerasAction = nullptr;
  QAction* m_ParallelProjectionAction = nullptr;
  QAction* m_SplitHorizontallyAction = nullptr;
  QAction* m_SplitVerticallyAction = nullptr;
  QAction* m_SaveScreenshotAction = nullptr;
  QAction* m_CopyScreenshotAction = nullptr;
  QAction* m_SaveAllScreenshotAction = nullptr;
  QAction* m_CopyAllScreenshotAction = nullptr;
  QAction* m_EqualizeWidthsAction = nullptr;
  QAction* m_EqualizeHeightsAction = nullptr;
  QAction* m_BackgroundColorAction = nullptr;
  QAction* m_DefaultBackgroundColorAction = nullptr;
  QAction* m_GridAxesAction = nullptr;
  QAction* m_EditGridAxesAction = nullptr;

  bool m_UseOwnContextMenu = true;
  bool m_CheckContextMenu = false;
  int m_RenderPending = 0;
  int m_CoalescedFrameCount = 0;
  bool m_FocalPointLocked = false;
  int m_NumRenderLayers = 2;
  vtkSmartPointer<vtkHoverWidget> m_HoverWidget;
  vtkSmartPointer<VXPickerCallback> m_PickerCallback;
  vtkSmartPointer<VXViewCubeWidget> m_CameraOrientationWidget;
  VXVisualizationToolbarWidget* m_Toolbar = nullptr;
  std::unique_ptr<VXGridAxesWidget> m_GridAxesWidget;

  static VXVisualizationWidget* s_LinkingWidget;
};
