#pragma once

#include "filters/VXFilter.h"

#include <vtkQuadricClustering.h>
#include <vtkSmartPointer.h>

#include <QPointer>

#include <array>

class vtkDataSetSurfaceFilter;
class VXFQuadricClusteringFilterWidget;

/** Decimates a surface into bins; a dataset that is no polydata is surfaced first. */
class VXFQuadricClustering : public VXFilter
{
  Q_OBJECT

public:
  explicit VXFQuadricClustering(QObject* parent = nullptr);
  ~VXFQuadricClustering() override;

  void write(nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) const override;
  void read(const nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) override;
  QString humanTypeName() const override;
  QString typeName() const override;
  vtkAlgorithmOutput* outputPort() const override;
  void initializeSettingsWidget() override;
  void writeSettings() override;
  void readSettings() override;
  void setupFilter() override;
  void setInputPort(vtkAlgorithmOutput* port) override;

  std::array<int, 3> numberOfDimensions() const { return m_Dimensions; }
  bool useInputPoints() const { return m_UseInputPoints; }
  bool useFeatureEdges() const { return m_UseFeatureEdges; }
  bool useFeaturePoints() const { return m_UseFeaturePoints; }
  bool useInternalTriangles() const { return m_UseInternalTriangles; }
  vtkQuadricClustering* algorithm() const { return m_Clustering; }

public Q_SLOTS:
  void applyFilter() override;
  void receivePipelineOutputReloaded() override;
  void setNumberOfDimensions(std::array<int, 3> dimensions) { m_Dimensions = dimensions; }
  void setUseInputPoints(bool use) { m_UseInputPoints = use; }
  void setUseFeatureEdges(bool use) { m_UseFeatureEdges = use; }
  void setUseFeaturePoints(bool use) { m_UseFeaturePoints = use; }
  void setUseInternalTriangles(bool use) { m_UseInternalTriangles = use; }

private:
  vtkSmartPointer<vtkQuadricClustering> m_Clustering;
  vtkSmartPointer<vtkDataSetSurfaceFilter> m_Surface;
  QPointer<VXFQuadricClusteringFilterWidget> m_SettingsForm;
  std::array<int, 3> m_Dimensions = {50, 50, 50};
  bool m_UseInputPoints = true;
  bool m_UseFeatureEdges = false;
  bool m_UseFeaturePoints = false;
  bool m_UseInternalTriangles = false;
};
