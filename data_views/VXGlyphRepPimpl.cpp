#include "data_views/VXGlyphRepPimpl.h"

#include "data_views/VXStateReading.h"

#include <nlohmann/json.hpp>

#include <vtkActor.h>
#include <vtkAlgorithm.h>
#include <vtkArrowSource.h>
#include <vtkCallbackCommand.h>
#include <vtkCell.h>
#include <vtkCellCenters.h>
#include <vtkCellData.h>
#include <vtkCubeSource.h>
#include <vtkDataArray.h>
#include <vtkDataSet.h>
#include <vtkEllipseArcSource.h>
#include <vtkGenericCell.h>
#include <vtkGlyph3DMapper.h>
#include <vtkImageData.h>
#include <vtkMaskPoints.h>
#include <vtkMath.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkSphereSource.h>
#include <vtkTetra.h>
#include <vtkTriangle.h>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace ZRVtkModule::state;

namespace
{
const char* const k_GlyphType = "glyph_type";
const char* const k_OrientationArray = "glyph_orientation_array";
const char* const k_ScaleArray = "glyph_scale_array";
const char* const k_ScaleFactor = "glyph_scale_factor";
const char* const k_ScaleFactorFromData = "glyph_scale_factor_from_data";
// Cells looked at for their typical size; enough for a stable median, few enough to cost nothing.
constexpr vtkIdType k_SizeSampleCells = 1000;
const char* const k_GlyphMode = "glyph_mode";
const char* const k_Stride = "glyph_stride";
const char* const k_MaxSamplePoints = "glyph_max_num_sample_pts";
const char* const k_Seed = "glyph_seed";
const char* const k_EllipseCenter[3] = {"glyph_ellipse_center_x", "glyph_ellipse_center_y",
                                        "glyph_ellipse_center_z"};
const char* const k_EllipseNormal[3] = {"glyph_ellipse_normal_x", "glyph_ellipse_normal_y",
                                        "glyph_ellipse_normal_z"};
const char* const k_EllipseRadius[3] = {"glyph_ellipse_radius_x", "glyph_ellipse_radius_y",
                                        "glyph_ellipse_radius_z"};
const char* const k_EllipseRatio = "glyph_ellipse_ratio";
const char* const k_EllipseResolution = "glyph_ellipse_resolution";

void writeVector(nlohmann::json& json, const char* const keys[3], const std::array<double, 3>& value)
{
  for (int i = 0; i < 3; ++i)
  {
    json[keys[i]] = value[i];
  }
}

void readVector(const nlohmann::json& json, const char* const keys[3], std::array<double, 3>& value)
{
  if (json.contains(keys[0]) && json.contains(keys[1]) && json.contains(keys[2]))
  {
    for (int i = 0; i < 3; ++i)
    {
      value[i] = json.at(keys[i]).get<double>();
    }
  }
}

void writeVectorSetting(QtZRSettings& settings, const char* const keys[3], const std::array<double, 3>& value)
{
  for (int i = 0; i < 3; ++i)
  {
    settings.setValue(QString::fromLatin1(keys[i]), value[i]);
  }
}

void readVectorSetting(const QtZRSettings& settings, const char* const keys[3], std::array<double, 3>& value)
{
  for (int i = 0; i < 3; ++i)
  {
    readSetting(settings, keys[i], value[i]);
  }
}

vtkDataArray* findArray(vtkDataSet* dataSet, const QString& name)
{
  if (dataSet == nullptr || name.isEmpty())
  {
    return nullptr;
  }
  const QByteArray latin = name.toUtf8();
  if (vtkDataArray* array = dataSet->GetPointData()->GetArray(latin.constData()))
  {
    return array;
  }
  return dataSet->GetCellData()->GetArray(latin.constData());
}

// Vertex cells, or no cells at all: glyphed at the points themselves.
bool IsPointSet(vtkDataSet* dataSet)
{
  return dataSet->GetNumberOfCells() == 0 || dataSet->GetCellType(0) == VTK_VERTEX ||
         dataSet->GetCellType(0) == VTK_POLY_VERTEX;
}

// The smallest spacing along the axes on which the image has neighbours.
double ImageSpacing(vtkImageData* image)
{
  int dims[3];
  image->GetDimensions(dims);
  const double* spacing = image->GetSpacing();
  double smallest = 0.0;
  for (int axis = 0; axis < 3; ++axis)
  {
    const double step = std::abs(spacing[axis]);
    if (dims[axis] > 1 && step > 0.0 && (smallest == 0.0 || step < smallest))
    {
      smallest = step;
    }
  }
  return smallest;
}

// The side of a square (or cube) of the cell's area (or volume), its length for a line: about the
// distance from its centre to the centres of its neighbours.
double CellSide(vtkCell* cell)
{
  vtkPoints* points = cell->GetPoints();
  const vtkIdType count = cell->GetNumberOfPoints();
  if (points == nullptr || count < 2)
  {
    return 0.0;
  }
  double first[3];
  double previous[3];
  double next[3];
  points->GetPoint(0, first);
  switch (cell->GetCellDimension())
  {
  case 1:
  {
    double length = 0.0;
    std::copy(first, first + 3, previous);
    for (vtkIdType i = 1; i < count; ++i)
    {
      points->GetPoint(i, next);
      length += std::sqrt(vtkMath::Distance2BetweenPoints(previous, next));
      std::copy(next, next + 3, previous);
    }
    return length;
  }
  case 2:
  {
    // A fan from the first point: exact for triangles, quads and pixels.
    double area = 0.0;
    points->GetPoint(1, previous);
    for (vtkIdType i = 2; i < count; ++i)
    {
      points->GetPoint(i, next);
      area += vtkTriangle::TriangleArea(first, previous, next);
      std::copy(next, next + 3, previous);
    }
    return std::sqrt(area);
  }
  case 3:
  {
    if (cell->GetCellType() == VTK_TETRA && count == 4)
    {
      double p[4][3];
      for (int i = 0; i < 4; ++i)
      {
        points->GetPoint(i, p[i]);
      }
      return std::cbrt(std::abs(vtkTetra::ComputeVolume(p[0], p[1], p[2], p[3])));
    }
    // Hexahedra, voxels and wedges: the box they fill.
    const double* bounds = cell->GetBounds();
    return std::cbrt((bounds[1] - bounds[0]) * (bounds[3] - bounds[2]) * (bounds[5] - bounds[4]));
  }
  default:
    return 0.0;
  }
}

// The median side of cells picked evenly through the data set.
double TypicalCellSize(vtkDataSet* dataSet)
{
  const vtkIdType cells = dataSet->GetNumberOfCells();
  const vtkIdType step = std::max<vtkIdType>(1, cells / k_SizeSampleCells);
  std::vector<double> sizes;
  sizes.reserve(static_cast<size_t>(std::min(cells, k_SizeSampleCells + 1)));
  vtkNew<vtkGenericCell> cell;
  for (vtkIdType id = 0; id < cells; id += step)
  {
    dataSet->GetCell(id, cell);
    const double side = CellSide(cell);
    if (side > 0.0 && std::isfinite(side))
    {
      sizes.push_back(side);
    }
  }
  if (sizes.empty())
  {
    return 0.0;
  }
  auto middle = sizes.begin() + static_cast<std::ptrdiff_t>(sizes.size() / 2);
  std::nth_element(sizes.begin(), middle, sizes.end());
  return *middle;
}
} // namespace

QStringList VXGlyphRepPimpl::GlyphTypes()
{
  return {k_Arrow, k_Sphere, k_Cube, k_Ellipse};
}

QStringList VXGlyphRepPimpl::GlyphModes()
{
  return {k_AllPoints, k_EveryNthPoint, k_UniformBounds, k_UniformSurface, k_UniformVolume};
}

VXGlyphRepPimpl::VXGlyphRepPimpl(VXRepresentation* owner, VXAbstractViewWidget* view)
    : VXPointsRepPimpl(owner, view)
    , m_GlyphMapper(vtkSmartPointer<vtkGlyph3DMapper>::New())
    , m_CellCenters(vtkSmartPointer<vtkCellCenters>::New())
    , m_MaskPoints(vtkSmartPointer<vtkMaskPoints>::New())
    , m_ArrowSource(vtkSmartPointer<vtkArrowSource>::New())
    , m_SphereSource(vtkSmartPointer<vtkSphereSource>::New())
    , m_CubeSource(vtkSmartPointer<vtkCubeSource>::New())
    , m_EllipseSource(vtkSmartPointer<vtkEllipseArcSource>::New())
{
  // Glyphs show their faces; the edges of their facets would only darken them.
  m_EdgeVisibility = false;
  m_ArrowSource->SetTipResolution(16);
  m_ArrowSource->SetShaftResolution(16);
  m_ArrowSource->SetTipLength(0.3);
  m_ArrowSource->SetTipRadius(0.1);
  m_SphereSource->SetThetaResolution(16);
  m_SphereSource->SetPhiResolution(12);
  m_EllipseSource->SetSegmentAngle(360.0);
  m_EllipseSource->SetClose(true);
  applyEllipse();
  m_CellCenters->SetVertexCells(true);
  m_CellCenters->SetCopyArrays(true);
  m_MaskPoints->SetGenerateVertices(true);
  m_MaskPoints->SetSingleVertexPerCell(true);
  m_GlyphMapper->SetSourceConnection(currentSource()->GetOutputPort());
  m_GlyphMapper->SetScaleFactor(m_ScaleFactor);
  m_GlyphMapper->ScalingOn();
  m_GlyphMapper->SetScaleModeToNoDataScaling();
  m_GlyphMapper->OrientOff();
  m_Actor->SetMapper(m_GlyphMapper);

  // The colour controls of the points view drive its polygon mapper; the glyphs follow it.
  vtkNew<vtkCallbackCommand> follow;
  follow->SetClientData(this);
  follow->SetCallback([](vtkObject*, unsigned long, void* clientData, void*)
                      { static_cast<VXGlyphRepPimpl*>(clientData)->followColoring(); });
  m_ColoringObserverTag = m_Mapper->AddObserver(vtkCommand::ModifiedEvent, follow);
}

VXGlyphRepPimpl::~VXGlyphRepPimpl()
{
  m_Mapper->RemoveObserver(m_ColoringObserverTag);
}

void VXGlyphRepPimpl::followColoring()
{
  m_GlyphMapper->ShallowCopy(m_Mapper);
  // The glyph input is a point set: cell arrays arrive there as point arrays of the cell centres.
  m_GlyphMapper->SetScalarModeToUsePointFieldData();
}

vtkGlyph3DMapper* VXGlyphRepPimpl::glyphMapper() const
{
  return m_GlyphMapper;
}

vtkMapper* VXGlyphRepPimpl::getMapper() const
{
  return m_GlyphMapper;
}

vtkAlgorithm* VXGlyphRepPimpl::currentSource() const
{
  if (m_GlyphType == k_Sphere)
  {
    return m_SphereSource;
  }
  if (m_GlyphType == k_Cube)
  {
    return m_CubeSource;
  }
  if (m_GlyphType == k_Ellipse)
  {
    return m_EllipseSource;
  }
  return m_ArrowSource;
}

bool VXGlyphRepPimpl::connectInput(vtkAlgorithmOutput* inputPort)
{
  if (!VXPointsRepPimpl::connectInput(inputPort))
  {
    return false;
  }
  m_CellCenters->SetInputConnection(inputPort);
  return true;
}

vtkAlgorithmOutput* VXGlyphRepPimpl::samplingInput() const
{
  vtkDataSet* dataSet = inputDataSet();
  if (dataSet == nullptr)
  {
    return nullptr;
  }
  // A point set (vertex cells, or no cells at all) is glyphed at its points; other cells at their centres.
  if (IsPointSet(dataSet))
  {
    return m_InputPort;
  }
  return m_CellCenters->GetOutputPort();
}

vtkDataSet* VXGlyphRepPimpl::glyphInput() const
{
  vtkAlgorithm* producer = m_GlyphMapper->GetInputAlgorithm();
  if (producer == nullptr)
  {
    return nullptr;
  }
  producer->Update();
  return vtkDataSet::SafeDownCast(m_GlyphMapper->GetInputDataObject(0, 0));
}

void VXGlyphRepPimpl::initialize(vtkAlgorithmOutput* inputPort)
{
  VXPointsRepPimpl::initialize(inputPort);
  applyGlyphMode();
  applyOrientation();
  applyScaling();
  followColoring();
  requestRender();
}

void VXGlyphRepPimpl::applySettings()
{
  VXPointsRepPimpl::applySettings();
  // The points view draws vertices; glyphs are drawn as the surfaces of their shapes.
  m_Actor->GetProperty()->SetRepresentationToSurface();
  m_Actor->GetProperty()->SetPointSize(1.0f);
  m_GlyphMapper->SetSourceConnection(currentSource()->GetOutputPort());
  m_GlyphMapper->SetScaleFactor(m_ScaleFactor);
  applyEllipse();
  if (m_InputPort != nullptr)
  {
    applyGlyphMode();
    applyOrientation();
    applyScaling();
  }
  followColoring();
}

void VXGlyphRepPimpl::receivePipelineOutputReloaded()
{
  VXPointsRepPimpl::receivePipelineOutputReloaded();
  applyGlyphMode();
  applyOrientation();
  applyScaling();
}

bool VXGlyphRepPimpl::setGlyphType(const QString& type)
{
  if (!GlyphTypes().contains(type))
  {
    return false;
  }
  m_GlyphType = type;
  m_GlyphMapper->SetSourceConnection(currentSource()->GetOutputPort());
  updateScaleFactorFromData();
  requestRender();
  return true;
}

bool VXGlyphRepPimpl::setGlyphMode(const QString& mode)
{
  if (!GlyphModes().contains(mode))
  {
    return false;
  }
  m_GlyphMode = mode;
  applyGlyphMode();
  updateGlyphModeVisibility();
  requestRender();
  return true;
}

void VXGlyphRepPimpl::applyGlyphMode()
{
  vtkAlgorithmOutput* sampling = samplingInput();
  if (sampling == nullptr)
  {
    return;
  }
  if (m_GlyphMode == k_AllPoints)
  {
    m_GlyphMapper->SetInputConnection(sampling);
    updateScaleFactorFromData();
    return;
  }
  // The surface and volume based samples are drawn over cells of two and three dimensions, which
  // the cell centres no longer have: they sample the input itself.
  const bool overCells = m_GlyphMode == k_UniformSurface || m_GlyphMode == k_UniformVolume;
  m_MaskPoints->SetInputConnection(overCells ? m_InputPort.Get() : sampling);
  if (m_GlyphMode == k_EveryNthPoint)
  {
    vtkDataSet* dataSet = inputDataSet();
    m_MaskPoints->RandomModeOff();
    m_MaskPoints->SetMaximumNumberOfPoints(
        dataSet != nullptr ? dataSet->GetNumberOfPoints() + dataSet->GetNumberOfCells() : VTK_ID_MAX);
    m_MaskPoints->SetOnRatio(std::max(m_Stride, 1));
  }
  else
  {
    const int type = m_GlyphMode == k_UniformBounds ? 3 : m_GlyphMode == k_UniformSurface ? 4 : 5;
    m_MaskPoints->RandomModeOn();
    m_MaskPoints->SetRandomModeType(type);
    m_MaskPoints->SetMaximumNumberOfPoints(std::max(m_MaxSamplePoints, 1));
    m_MaskPoints->SetRandomSeed(m_Seed);
  }
  m_MaskPoints->Update();
  m_GlyphMapper->SetInputConnection(m_MaskPoints->GetOutputPort());
  updateScaleFactorFromData();
}

double VXGlyphRepPimpl::NeighbourSpacing(vtkDataSet* dataSet, vtkIdType candidates, vtkIdType carriers)
{
  if (dataSet == nullptr || dataSet->GetNumberOfPoints() == 0 || candidates <= 0 || carriers <= 0)
  {
    return 0.0;
  }
  double bounds[6];
  dataSet->GetBounds(bounds);
  const double diagonal = dataSet->GetLength();
  // The axes along which the data spreads: a flat mesh shares its points out over an area.
  int spreadAxes = 0;
  double spreadVolume = 1.0;
  for (int axis = 0; axis < 3; ++axis)
  {
    const double extent = bounds[2 * axis + 1] - bounds[2 * axis];
    if (extent > diagonal * 1e-6)
    {
      ++spreadAxes;
      spreadVolume *= extent;
    }
  }
  if (spreadAxes == 0)
  {
    return 0.0;
  }
  double spacing = 0.0;
  if (auto* image = vtkImageData::SafeDownCast(dataSet))
  {
    spacing = ImageSpacing(image);
  }
  else if (!IsPointSet(dataSet))
  {
    spacing = TypicalCellSize(dataSet);
  }
  if (spacing <= 0.0)
  {
    spacing = std::pow(spreadVolume / static_cast<double>(candidates), 1.0 / spreadAxes);
  }
  if (carriers < candidates)
  {
    spacing *= std::pow(static_cast<double>(candidates) / static_cast<double>(carriers), 1.0 / spreadAxes);
  }
  return std::isfinite(spacing) ? spacing : 0.0;
}

void VXGlyphRepPimpl::updateScaleFactorFromData()
{
  if (m_ScaleFactorChosen)
  {
    return;
  }
  vtkDataSet* dataSet = inputDataSet();
  if (dataSet == nullptr)
  {
    return;
  }
  const vtkIdType candidates =
      IsPointSet(dataSet) ? dataSet->GetNumberOfPoints() : dataSet->GetNumberOfCells();
  vtkIdType carriers = candidates;
  if (m_GlyphMode != k_AllPoints)
  {
    carriers = m_MaskPoints->GetOutput()->GetNumberOfPoints();
  }
  const double spacing = NeighbourSpacing(dataSet, candidates, carriers);
  // Arrows, spheres and cubes are one unit across; an ellipse twice its major radius.
  const double radius = std::sqrt(vtkMath::Dot(m_EllipseRadius.data(), m_EllipseRadius.data()));
  const double across = m_GlyphType == k_Ellipse && radius > 0.0 ? 2.0 * radius : 1.0;
  if (spacing <= 0.0)
  {
    return;
  }
  m_ScaleFactor = spacing / across;
  m_GlyphMapper->SetScaleFactor(m_ScaleFactor);
  updateScaleFactorControls();
}

void VXGlyphRepPimpl::setStride(int stride)
{
  m_Stride = std::max(stride, 1);
  applyGlyphMode();
  requestRender();
}

void VXGlyphRepPimpl::setMaxSamplePoints(int count)
{
  m_MaxSamplePoints = std::max(count, 1);
  applyGlyphMode();
  requestRender();
}

void VXGlyphRepPimpl::setSeed(int seed)
{
  m_Seed = seed;
  applyGlyphMode();
  requestRender();
}

void VXGlyphRepPimpl::setScaleFactor(double factor)
{
  m_ScaleFactor = factor;
  m_ScaleFactorChosen = true;
  m_GlyphMapper->SetScaleFactor(factor);
  updateScaleFactorControls();
  requestRender();
}

void VXGlyphRepPimpl::useScaleFactorFromData()
{
  m_ScaleFactorChosen = false;
  if (m_InputPort != nullptr)
  {
    applyGlyphMode();
  }
  updateScaleFactorControls();
  requestRender();
}

QStringList VXGlyphRepPimpl::orientationArrayChoices() const
{
  QStringList names;
  vtkDataSet* dataSet = inputDataSet();
  if (dataSet == nullptr)
  {
    return names;
  }
  for (vtkDataSetAttributes* attributes : {static_cast<vtkDataSetAttributes*>(dataSet->GetPointData()),
                                           static_cast<vtkDataSetAttributes*>(dataSet->GetCellData())})
  {
    for (int i = 0; i < attributes->GetNumberOfArrays(); ++i)
    {
      vtkDataArray* array = attributes->GetArray(i);
      if (array != nullptr && array->GetName() != nullptr && array->GetNumberOfComponents() == 3)
      {
        names << QString::fromUtf8(array->GetName());
      }
    }
  }
  return names;
}

void VXGlyphRepPimpl::setOrientationArray(const QString& arrayName)
{
  m_OrientationArray = arrayName;
  applyOrientation();
  requestRender();
}

void VXGlyphRepPimpl::applyOrientation()
{
  vtkDataArray* array = findArray(inputDataSet(), m_OrientationArray);
  // A saved array that is not there (any more) leaves the glyphs unturned.
  if (array == nullptr || array->GetNumberOfComponents() != 3)
  {
    m_GlyphMapper->OrientOff();
    return;
  }
  m_GlyphMapper->OrientOn();
  m_GlyphMapper->SetOrientationModeToDirection();
  m_GlyphMapper->SetOrientationArray(array->GetName());
}

void VXGlyphRepPimpl::setScaleArray(const QString& arrayName)
{
  m_ScaleArray = arrayName;
  applyScaling();
  requestRender();
}

void VXGlyphRepPimpl::applyScaling()
{
  vtkDataArray* array = findArray(inputDataSet(), m_ScaleArray);
  // Scaling stays on: without it the mapper ignores the factor too.
  m_GlyphMapper->ScalingOn();
  m_GlyphMapper->SetScaleFactor(m_ScaleFactor);
  if (array == nullptr)
  {
    m_GlyphMapper->SetScaleModeToNoDataScaling();
    return;
  }
  m_GlyphMapper->SetScaleModeToScaleByMagnitude();
  m_GlyphMapper->SetScaleArray(array->GetName());
}

void VXGlyphRepPimpl::setEllipseSource(std::array<double, 3> center, std::array<double, 3> normal,
                                       std::array<double, 3> majorRadius, double ratio, int resolution)
{
  m_EllipseCenter = center;
  m_EllipseNormal = normal;
  m_EllipseRadius = majorRadius;
  // The source itself allows ratios up to 100; an ellipse's minor axis is never the longer one.
  m_EllipseRatio = std::clamp(ratio, 0.001, 1.0);
  m_EllipseResolution = std::clamp(resolution, 1, 1000);
  applyEllipse();
  updateScaleFactorFromData();
  requestRender();
}

void VXGlyphRepPimpl::applyEllipse()
{
  m_EllipseSource->SetCenter(m_EllipseCenter.data());
  m_EllipseSource->SetNormal(m_EllipseNormal.data());
  m_EllipseSource->SetMajorRadiusVector(m_EllipseRadius.data());
  m_EllipseSource->SetRatio(std::clamp(m_EllipseRatio, 0.001, 1.0));
  m_EllipseSource->SetResolution(std::clamp(m_EllipseResolution, 1, 1000));
}

void VXGlyphRepPimpl::copySettings(const VXRepresentationPimpl* other)
{
  if (const auto* glyph = dynamic_cast<const VXGlyphRepPimpl*>(other))
  {
    m_GlyphType = glyph->m_GlyphType;
    m_OrientationArray = glyph->m_OrientationArray;
    m_ScaleArray = glyph->m_ScaleArray;
    m_ScaleFactor = glyph->m_ScaleFactor;
    m_ScaleFactorChosen = glyph->m_ScaleFactorChosen;
    m_GlyphMode = glyph->m_GlyphMode;
    m_Stride = glyph->m_Stride;
    m_MaxSamplePoints = glyph->m_MaxSamplePoints;
    m_Seed = glyph->m_Seed;
    m_EllipseCenter = glyph->m_EllipseCenter;
    m_EllipseNormal = glyph->m_EllipseNormal;
    m_EllipseRadius = glyph->m_EllipseRadius;
    m_EllipseRatio = glyph->m_EllipseRatio;
    m_EllipseResolution = glyph->m_EllipseResolution;
  }
  VXPointsRepPimpl::copySettings(other);
}

void VXGlyphRepPimpl::write(nlohmann::json& json) const
{
  VXPointsRepPimpl::write(json);
  json[k_GlyphType] = m_GlyphType.toStdString();
  json[k_OrientationArray] = m_OrientationArray.toStdString();
  json[k_ScaleArray] = m_ScaleArray.toStdString();
  json[k_ScaleFactor] = m_ScaleFactor;
  json[k_ScaleFactorFromData] = !m_ScaleFactorChosen;
  json[k_GlyphMode] = m_GlyphMode.toStdString();
  json[k_Stride] = m_Stride;
  json[k_MaxSamplePoints] = m_MaxSamplePoints;
  json[k_Seed] = m_Seed;
  writeVector(json, k_EllipseCenter, m_EllipseCenter);
  writeVector(json, k_EllipseNormal, m_EllipseNormal);
  writeVector(json, k_EllipseRadius, m_EllipseRadius);
  json[k_EllipseRatio] = m_EllipseRatio;
  json[k_EllipseResolution] = m_EllipseResolution;
}

void VXGlyphRepPimpl::read(const nlohmann::json& json)
{
  VXPointsRepPimpl::read(json);
  if (!json.is_object())
  {
    return;
  }
  auto readText = [&json](const char* key, QString& value)
  {
    if (json.contains(key))
    {
      value = QString::fromStdString(json.at(key).get<std::string>());
    }
  };
  QString type = m_GlyphType;
  readText(k_GlyphType, type);
  if (GlyphTypes().contains(type))
  {
    m_GlyphType = type;
  }
  readText(k_OrientationArray, m_OrientationArray);
  readText(k_ScaleArray, m_ScaleArray);
  // A factor in a state file was chosen, unless the file says it came from the data (files written
  // before factors followed the data say nothing, and keep theirs).
  if (json.contains(k_ScaleFactor))
  {
    readIfPresent(json, k_ScaleFactor, m_ScaleFactor);
    m_ScaleFactorChosen = true;
  }
  if (json.contains(k_ScaleFactorFromData))
  {
    m_ScaleFactorChosen = !json.at(k_ScaleFactorFromData).get<bool>();
  }
  QString mode = m_GlyphMode;
  readText(k_GlyphMode, mode);
  if (GlyphModes().contains(mode))
  {
    m_GlyphMode = mode;
  }
  readIfPresent(json, k_Stride, m_Stride);
  m_Stride = std::max(m_Stride, 1);
  readIfPresent(json, k_MaxSamplePoints, m_MaxSamplePoints);
  readIfPresent(json, k_Seed, m_Seed);
  readVector(json, k_EllipseCenter, m_EllipseCenter);
  readVector(json, k_EllipseNormal, m_EllipseNormal);
  readVector(json, k_EllipseRadius, m_EllipseRadius);
  readIfPresent(json, k_EllipseRatio, m_EllipseRatio);
  readIfPresent(json, k_EllipseResolution, m_EllipseResolution);
}

void VXGlyphRepPimpl::writeSettings(QtZRSettings& settings) const
{
  VXPointsRepPimpl::writeSettings(settings);
  settings.setValue(QString::fromLatin1(k_GlyphType), m_GlyphType);
  // Only a chosen factor becomes a default; one taken from this data would not fit other data.
  if (m_ScaleFactorChosen)
  {
    settings.setValue(QString::fromLatin1(k_ScaleFactor), m_ScaleFactor);
  }
  else
  {
    settings.remove(QString::fromLatin1(k_ScaleFactor));
  }
  settings.setValue(QString::fromLatin1(k_GlyphMode), m_GlyphMode);
  settings.setValue(QString::fromLatin1(k_Stride), m_Stride);
  settings.setValue(QString::fromLatin1(k_MaxSamplePoints), m_MaxSamplePoints);
  settings.setValue(QString::fromLatin1(k_Seed), m_Seed);
  writeVectorSetting(settings, k_EllipseCenter, m_EllipseCenter);
  writeVectorSetting(settings, k_EllipseNormal, m_EllipseNormal);
  writeVectorSetting(settings, k_EllipseRadius, m_EllipseRadius);
  settings.setValue(QString::fromLatin1(k_EllipseRatio), m_EllipseRatio);
  settings.setValue(QString::fromLatin1(k_EllipseResolution), m_EllipseResolution);
}

void VXGlyphRepPimpl::readSettings(QtZRSettings& settings)
{
  VXPointsRepPimpl::readSettings(settings);
  readSetting(settings, k_GlyphType, m_GlyphType);
  if (settings.contains(QString::fromLatin1(k_ScaleFactor)))
  {
    readSetting(settings, k_ScaleFactor, m_ScaleFactor);
    m_ScaleFactorChosen = true;
  }
  readSetting(settings, k_GlyphMode, m_GlyphMode);
  readSetting(settings, k_Stride, m_Stride);
  readSetting(settings, k_MaxSamplePoints, m_MaxSamplePoints);
  readSetting(settings, k_Seed, m_Seed);
  readVectorSetting(settings, k_EllipseCenter, m_EllipseCenter);
  readVectorSetting(settings, k_EllipseNormal, m_EllipseNormal);
  readVectorSetting(settings, k_EllipseRadius, m_EllipseRadius);
  readSetting(settings, k_EllipseRatio, m_EllipseRatio);
  readSetting(settings, k_EllipseResolution, m_EllipseResolution);
}
