#pragma once

#include "data_views/VXRepresentationPimpl.h"

#include <QColor>

#include <vtkAlgorithmOutput.h>
#include <vtkSmartPointer.h>

class QLabel;
class ZRColorButton;
class ZRLineEdit;
class ZRSlider;
class vtkActor;
class vtkAlgorithmOutput;
class vtkOutlineFilter;
class vtkPolyDataMapper;

/**
 * The outline view in one window: the bounding box of the input drawn in one solid colour. The
 * levels above it (points, wireframe, surface) reuse its actor, mapper and styling.
 */
class VXOutlineRepPimpl : public VXRepresentationPimpl
{
  Q_OBJECT

public:
  VXOutlineRepPimpl(VXRepresentation* owner, VXAbstractViewWidget* view);
  ~VXOutlineRepPimpl() override;

  void initialize(vtkAlgorithmOutput* inputPort) override;
  bool finalize() override;
  void write(nlohmann::json& json) const override;
  void read(const nlohmann::json& json) override;
  vtkAlgorithmOutput* inputPort() const override;
  vtkAlgorithmOutput* outputPort() const override;
  void setVisibility(bool visible) override;
  vtkActor* getActor() const override;
  vtkMapper* getMapper() const override;
  void copySettings(const VXRepresentationPimpl* other) override;
  void applySettings() override;
  void writeSettings(QtZRSettings& settings) const override;
  void readSettings(QtZRSettings& settings) override;
  void initializeSettingsWidget() override;
  void updateSettingsControls() override;
  QString helpAnchor() const override;
  using VXRepresentationPimpl::copySettings;
  using VXRepresentationPimpl::writeSettings;

  /** @brief The level's name in help anchors: "outline", "points", "wireframe", "surface". */
  virtual QString levelName() const { return QStringLiteral("outline"); }

  /** @brief Opacity in percent, 0 to 100. */
  void setOpacity(int percent);
  int getOpacity() const;
  void setSolidColor(const QColor& color);
  QColor solidColor() const { return m_SolidColor; }
  void setEdgeVisibility(bool visible);
  bool edgeVisibility() const { return m_EdgeVisibility; }
  void setLineSize(int size);
  int lineSize() const { return m_LineSize; }
  void setRenderLinesAsTubes(bool tubes);
  bool renderLinesAsTubes() const { return m_RenderLinesAsTubes; }

  // The decimated geometry drawn while the camera moves; each change rebuilds it at once.
  void setNumberOfDimensions(std::array<int, 3> divisions);
  std::array<int, 3> numberOfDimensions() const { return m_DecimationDivisions; }
  void setUseInputPoints(bool use);
  void setUseFeatureEdges(bool use);
  void setUseFeaturePoints(bool use);
  void setUseInternalTriangles(bool use);
  bool useInputPoints() const { return m_UseInputPoints; }
  bool useFeatureEdges() const { return m_UseFeatureEdges; }
  bool useFeaturePoints() const { return m_UseFeaturePoints; }
  bool useInternalTriangles() const { return m_UseInternalTriangles; }

  /**
   * Separates this view's colours from its data source (true) or has it follow the source's solid
   * colour, and at the levels above its colour map, again (false).
   */
  void onDetachColorSettings(bool detached);
  virtual void connectParentDataSourceColorSettings();
  virtual void disconnectParentDataSourceColorSettings();
  /** @brief The source asks its views to follow it again: a separated view joins it. */
  void onSyncColorMapToParentGeometry();

protected:
  // The sections of the panel; each level adds to or replaces the pieces below it.
  virtual void addColoringControls(QVBoxLayout* layout);
  virtual void addStylingControls(QVBoxLayout* layout);
  virtual void addAnnotationControls(QVBoxLayout* layout);
  virtual void addExtraSections(QVBoxLayout* content);
  void addDataSourceControls(QVBoxLayout* layout);
  void addSolidColorControls(QVBoxLayout* layout);
  void addOpacityControls(QVBoxLayout* layout);
  void addEdgesControls(QVBoxLayout* layout);
  void addDecimationControls(QVBoxLayout* layout);
  // The view's own colour controls are active only while it is separated from its source.
  virtual void updateColorControlsEnabled();
  // Line size typed in the field: marked while edited, applied on return.
  void lineSizeEdited();
  void lineSizeChanged();

  // Connects the window's drawing chain to the input; true when it was not connected before.
  virtual bool connectInput(vtkAlgorithmOutput* inputPort);
  bool isInRenderer() const;

  vtkSmartPointer<vtkAlgorithmOutput> m_InputPort;
  vtkSmartPointer<vtkActor> m_Actor;
  vtkSmartPointer<vtkPolyDataMapper> m_Mapper;
  vtkSmartPointer<vtkOutlineFilter> m_OutlineFilter;
  double m_Opacity = 1.0;
  QColor m_SolidColor = Qt::white;
  bool m_EdgeVisibility = true;
  int m_LineSize = 1;
  bool m_RenderLinesAsTubes = false;
  std::array<int, 3> m_DecimationDivisions = {50, 50, 50};
  bool m_UseInputPoints = true;
  bool m_UseFeatureEdges = false;
  bool m_UseFeaturePoints = false;
  bool m_UseInternalTriangles = false;

  QPointer<ZRCheckBox> m_DetachCheckBox;
  QPointer<ZRIconPushButton> m_ParentSourceButton;
  QPointer<QLabel> m_SolidColorLabel;
  QPointer<ZRColorButton> m_SolidColorButton;
  QPointer<ZRSlider> m_OpacitySlider;
  QPointer<ZRLineEdit> m_LineSizeEdit;
  QPointer<ZRCheckBox> m_LinesAsTubesCheckBox;
  QPointer<ZRCheckBox> m_DecimationCheckBox;
  std::array<QPointer<ZRLineEdit>, 3> m_DivisionEdits;
  QPointer<ZRCheckBox> m_UseInputPointsCheckBox;
  QPointer<ZRCheckBox> m_UseFeatureEdgesCheckBox;
  QPointer<ZRCheckBox> m_UseFeaturePointsCheckBox;
  QPointer<ZRCheckBox> m_UseInternalTrianglesCheckBox;
};
