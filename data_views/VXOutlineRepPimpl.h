#pragma once

#include "data_views/VXRepresentationPimpl.h"

#include <QColor>

#include <vtkAlgorithmOutput.h>
#include <vtkSmartPointer.h>

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
  using VXRepresentationPimpl::copySettings;

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

protected:
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
};
