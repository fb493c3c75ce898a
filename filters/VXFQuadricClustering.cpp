#include "filters/VXFQuadricClustering.h"

#include "filters/VXFQuadricClusteringFilterWidget.h"
#include "platform/QtZRSettings.h"

#include <vtkDataSet.h>
#include <vtkDataSetSurfaceFilter.h>
#include <vtkPolyData.h>

#include <nlohmann/json.hpp>

#include <QVBoxLayout>

namespace
{
const QString k_ClusteringName = QStringLiteral("Quadric Clustering Filter");
constexpr const char* k_Dims[3] = {"data_source_num_of_dims_x", "data_source_num_of_dims_y",
                                   "data_source_num_of_dims_z"};
constexpr const char* k_UseInputPoints = "data_source_use_input_points";
constexpr const char* k_UseFeatureEdges = "data_source_use_feature_edges";
constexpr const char* k_UseFeaturePoints = "data_source_use_feature_points";
constexpr const char* k_UseInternalTriangles = "data_source_use_internal_triangles";
} // namespace

VXFQuadricClustering::VXFQuadricClustering(QObject* parent)
    : VXFilter(parent)
    , m_Clustering(vtkSmartPointer<vtkQuadricClustering>::New())
{
  m_BaseName = k_ClusteringName;
  m_DefaultName = k_ClusteringName;
}

VXFQuadricClustering::~VXFQuadricClustering() = default;

QString VXFQuadricClustering::humanTypeName() const
{
  return k_ClusteringName;
}

QString VXFQuadricClustering::typeName() const
{
  return QStringLiteral("VXFQuadricClustering");
}

vtkAlgorithmOutput* VXFQuadricClustering::outputPort() const
{
  return m_Clustering->GetOutputPort(0);
}

void VXFQuadricClustering::setInputPort(vtkAlgorithmOutput* port)
{
  VXFilter::setInputPort(port);
  m_Clustering->SetInputConnection(port);
}

void VXFQuadricClustering::setupFilter()
{
  readSettings();
}

void VXFQuadricClustering::applyFilter()
{
  if (m_InputPort != nullptr && m_InputPort->GetProducer() != nullptr)
  {
    m_InputPort->GetProducer()->Update(m_InputPort->GetIndex());
  }
  auto* input = vtkDataSet::SafeDownCast(inputDataObject());
  if (input == nullptr || input->GetNumberOfCells() == 0 || input->GetNumberOfPoints() == 0)
  {
    return;
  }
  if (vtkPolyData::SafeDownCast(input) == nullptr)
  {
    if (m_Surface == nullptr)
    {
      m_Surface = vtkSmartPointer<vtkDataSetSurfaceFilter>::New();
    }
    m_Surface->SetInputConnection(m_InputPort);
    m_Clustering->SetInputConnection(m_Surface->GetOutputPort());
  }
  else
  {
    m_Clustering->SetInputConnection(m_InputPort);
  }
  m_Clustering->SetCopyCellData(1);
  m_Clustering->SetNumberOfDivisions(m_Dimensions[0], m_Dimensions[1], m_Dimensions[2]);
  m_Clustering->SetUseInputPoints(m_UseInputPoints ? 1 : 0);
  m_Clustering->SetUseFeatureEdges(m_UseFeatureEdges ? 1 : 0);
  m_Clustering->SetUseFeaturePoints(m_UseFeaturePoints ? 1 : 0);
  m_Clustering->SetUseInternalTriangles(m_UseInternalTriangles ? 1 : 0);
  m_Clustering->Update();
  addRepresentationIfNeeded();
  updateDownstreamGridAxesBounds();
  Q_EMIT requestRenderAll();
}

void VXFQuadricClustering::receivePipelineOutputReloaded()
{
  applyFilter();
}

void VXFQuadricClustering::write(nlohmann::json& json,
                                 const QMap<VXAbstractViewWidget*, int>& viewIndexes) const
{
  VXFilter::write(json, viewIndexes);
  for (int i = 0; i < 3; ++i)
  {
    json[k_Dims[i]] = m_Dimensions[i];
  }
  json[k_UseInputPoints] = m_UseInputPoints;
  json[k_UseFeatureEdges] = m_UseFeatureEdges;
  json[k_UseFeaturePoints] = m_UseFeaturePoints;
  json[k_UseInternalTriangles] = m_UseInternalTriangles;
}

void VXFQuadricClustering::read(const nlohmann::json& json,
                                const QMap<VXAbstractViewWidget*, int>& viewIndexes)
{
  VXFilter::read(json, viewIndexes);
  if (!json.is_object())
  {
    return;
  }
  for (int i = 0; i < 3; ++i)
  {
    if (json.contains(k_Dims[i]))
    {
      m_Dimensions[i] = json.at(k_Dims[i]).get<int>();
    }
  }
  for (auto [key, flag] : {std::pair<const char*, bool*>{k_UseInputPoints, &m_UseInputPoints},
                           {k_UseFeatureEdges, &m_UseFeatureEdges},
                           {k_UseFeaturePoints, &m_UseFeaturePoints},
                           {k_UseInternalTriangles, &m_UseInternalTriangles}})
  {
    if (json.contains(key))
    {
      *flag = json.at(key).get<bool>();
    }
  }
}

void VXFQuadricClustering::writeSettings()
{
  VXFilter::writeSettings();
  QtZRSettings settings;
  openSettingsGroup(settings);
  for (int i = 0; i < 3; ++i)
  {
    settings.setValue(QString::fromLatin1(k_Dims[i]), m_Dimensions[i]);
  }
  settings.setValue(QString::fromLatin1(k_UseInputPoints), m_UseInputPoints);
  settings.setValue(QString::fromLatin1(k_UseFeatureEdges), m_UseFeatureEdges);
  settings.setValue(QString::fromLatin1(k_UseFeaturePoints), m_UseFeaturePoints);
  settings.setValue(QString::fromLatin1(k_UseInternalTriangles), m_UseInternalTriangles);
  settings.endGroup();
  settings.endGroup();
  settings.endGroup();
}

void VXFQuadricClustering::readSettings()
{
  VXFilter::readSettings();
  QtZRSettings settings;
  openSettingsGroup(settings);
  for (int i = 0; i < 3; ++i)
  {
    if (settings.contains(QString::fromLatin1(k_Dims[i])))
    {
      m_Dimensions[i] = settings.value(QString::fromLatin1(k_Dims[i])).toInt();
    }
  }
  for (auto [key, flag] : {std::pair<const char*, bool*>{k_UseInputPoints, &m_UseInputPoints},
                           {k_UseFeatureEdges, &m_UseFeatureEdges},
                           {k_UseFeaturePoints, &m_UseFeaturePoints},
                           {k_UseInternalTriangles, &m_UseInternalTriangles}})
  {
    if (settings.contains(QString::fromLatin1(key)))
    {
      *flag = settings.value(QString::fromLatin1(key)).toBool();
    }
  }
  settings.endGroup();
  settings.endGroup();
  settings.endGroup();
}

void VXFQuadricClustering::initializeSettingsWidget()
{
  QVBoxLayout* layout = initializeSettingsFrame();
  m_SettingsForm = new VXFQuadricClusteringFilterWidget(this, layout->parentWidget());
  addRepresentationTypeCombo(m_SettingsForm->representationTypeLayout(), nullptr, RepresentationTypeNames());
  setShouldAddRep(m_ShouldAddRep);
  layout->addWidget(m_SettingsForm);
  layout->addStretch(1);
}
