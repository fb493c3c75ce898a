#include "app/ViewerDataViewChoice.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

#include "data_bridge/CVVtkBridge.h"
#include "data_views/VXGlyphRepPimpl.h"
#include "data_views/VXImageSliceRepPimpl.h"
#include "data_views/VXPointsRepPimpl.h"
#include "data_views/VXVolumeRepPimpl.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "platform/ColorPresetsFile.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXVisualizationWidget.h"

#include <vtkAlgorithm.h>
#include <vtkAlgorithmOutput.h>
#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataSet.h>
#include <vtkImageData.h>
#include <vtkPointData.h>

#include <QMap>
#include <QStringList>

#include <cmath>

namespace
{
const QMap<QString, VXRepresentation::Type> k_ViewNames = {
    {QStringLiteral("outline"), VXRepresentation::Outline},
    {QStringLiteral("points"), VXRepresentation::Points},
    {QStringLiteral("wireframe"), VXRepresentation::Wireframe},
    {QStringLiteral("surface"), VXRepresentation::Surface},
    {QStringLiteral("slice"), VXRepresentation::ImageSlice},
    {QStringLiteral("volume"), VXRepresentation::Volume},
    {QStringLiteral("glyph"), VXRepresentation::Glyph}};

const QStringList k_GlyphNames = {QStringLiteral("arrow"), QStringLiteral("sphere"), QStringLiteral("cube")};

const QString k_Magnitude = QStringLiteral("magnitude");
// The scalar mapping that never maps through the colour map.
constexpr int k_DirectColours = 2;

// Calls visit with every point array, then every cell array, until it returns true.
template<class Visit>
void forEachArray(vtkDataSet* dataSet, Visit visit)
{
  for (vtkDataSetAttributes* attributes : {static_cast<vtkDataSetAttributes*>(dataSet->GetPointData()),
                                           static_cast<vtkDataSetAttributes*>(dataSet->GetCellData())})
  {
    for (int i = 0; i < attributes->GetNumberOfArrays(); ++i)
    {
      vtkDataArray* array = attributes->GetArray(i);
      if (array != nullptr && array->GetName() != nullptr && visit(array))
      {
        return;
      }
    }
  }
}

// The array a --color-by text names in a dataset: by name, or by data path when it holds a '/'.
vtkDataArray* findArray(vtkDataSet* dataSet, const QString& name)
{
  vtkDataArray* found = nullptr;
  forEachArray(dataSet,
               [&](vtkDataArray* array)
               {
                 if (QString::fromUtf8(array->GetName()) == name ||
                     QString::fromStdString(CV::VtkBridge::GetDataPath(array)) == name)
                 {
                   found = array;
                 }
                 return found != nullptr;
               });
  return found;
}

// The array a new data view is coloured by when the command line names none: the active scalars
// (cells first: they are the data of image and mesh geometries), else the first array that is not a
// normal or texture coordinate, one-component arrays before vectors. Null when there is none.
vtkDataArray* defaultColouringArray(vtkDataSet* dataSet)
{
  if (dataSet == nullptr)
  {
    return nullptr;
  }
  for (vtkDataSetAttributes* attributes : {static_cast<vtkDataSetAttributes*>(dataSet->GetCellData()),
                                           static_cast<vtkDataSetAttributes*>(dataSet->GetPointData())})
  {
    vtkDataArray* scalars = attributes->GetScalars();
    if (scalars != nullptr && scalars->GetName() != nullptr && scalars->GetNumberOfTuples() > 0)
    {
      return scalars;
    }
  }
  for (const bool scalarsOnly : {true, false})
  {
    for (vtkDataSetAttributes* attributes : {static_cast<vtkDataSetAttributes*>(dataSet->GetCellData()),
                                             static_cast<vtkDataSetAttributes*>(dataSet->GetPointData())})
    {
      for (int i = 0; i < attributes->GetNumberOfArrays(); ++i)
      {
        vtkDataArray* array = attributes->GetArray(i);
        const bool geometric = array == attributes->GetNormals() || array == attributes->GetTCoords();
        if (array != nullptr && array->GetName() != nullptr && !geometric && array->GetNumberOfTuples() > 0 &&
            (!scalarsOnly || array->GetNumberOfComponents() == 1))
        {
          return array;
        }
      }
    }
  }
  return nullptr;
}

vtkDataSet* inputDataSet(VXRepresentationPimpl* implementation)
{
  vtkAlgorithmOutput* port = implementation != nullptr ? implementation->inputPort() : nullptr;
  if (port == nullptr || port->GetProducer() == nullptr)
  {
    return nullptr;
  }
  return vtkDataSet::SafeDownCast(port->GetProducer()->GetOutputDataObject(port->GetIndex()));
}

QStringList arrayNames(vtkDataSet* dataSet)
{
  QStringList names;
  forEachArray(dataSet,
               [&](vtkDataArray* array)
               {
                 names << QString::fromUtf8(array->GetName());
                 return false;
               });
  return names;
}
} // namespace

void ViewerDataViewChoice::UseViewerDefaults()
{
  setDefaultViews(VXRepresentation::Surface, VXRepresentation::Points, VXRepresentation::Wireframe);
}

void ViewerDataViewChoice::setDefaultViews(VXRepresentation::Type faces, VXRepresentation::Type vertices,
                                           VXRepresentation::Type edges)
{
  VXPipeline::setDefaultRepType(faces);
  VXPipeline::setDefaultImageGeomRepType(faces);
  VXPipeline::setDefaultRectGridRepType(faces);
  VXPipeline::setDefaultVertexRepType(vertices);
  VXPipeline::setDefaultEdgeRepType(edges);
  VXPipeline::setDefaultTriangleRepType(faces);
  VXPipeline::setDefaultQuadRepType(faces);
  VXPipeline::setDefaultHexRepType(faces);
  VXPipeline::setDefaultTetRepType(faces);
}

bool ViewerDataViewChoice::setView(const QString& name, QString* error)
{
  if (!k_ViewNames.contains(name.toLower()))
  {
    *error = QStringLiteral("unknown view '%1'; the views are: %2")
                 .arg(name, k_ViewNames.keys().join(QStringLiteral(", ")));
    return false;
  }
  m_Type = k_ViewNames.value(name.toLower());
  return true;
}

bool ViewerDataViewChoice::setGlyph(const QString& name, QString* error)
{
  if (!k_GlyphNames.contains(name.toLower()))
  {
    *error = QStringLiteral("unknown glyph '%1'; the glyphs are: %2")
                 .arg(name, k_GlyphNames.join(QStringLiteral(", ")));
    return false;
  }
  if (m_Type != VXRepresentation::None && m_Type != VXRepresentation::Glyph)
  {
    *error = QStringLiteral("--glyph draws glyph views: use it with --view glyph or without --view");
    return false;
  }
  m_Type = VXRepresentation::Glyph;
  const QString lower = name.toLower();
  m_GlyphType = lower.left(1).toUpper() + lower.mid(1);
  return true;
}

bool ViewerDataViewChoice::setGlyphOrientation(const QString& arrayName, QString* error)
{
  if (arrayName.isEmpty())
  {
    *error = QStringLiteral("--glyph-orient takes the name of a three-component array, for example Normals");
    return false;
  }
  if (m_Type != VXRepresentation::None && m_Type != VXRepresentation::Glyph)
  {
    *error = QStringLiteral("--glyph-orient turns glyph views: use it with --view glyph or without --view");
    return false;
  }
  m_Type = VXRepresentation::Glyph;
  m_GlyphOrientation = arrayName;
  return true;
}

bool ViewerDataViewChoice::setOpacityCurve(const QString& text, QString* error)
{
  const QString usage =
      QStringLiteral("--opacity-curve takes VALUE:OPACITY pairs separated by commas, values "
                     "in data units and opacities from 0 to 1, at least two at different "
                     "values, for example 0:0,40:0.1,100:1");
  std::vector<std::array<double, 2>> nodes;
  for (const QString& pair : text.split(QLatin1Char(',')))
  {
    const QStringList parts = pair.trimmed().split(QLatin1Char(':'));
    bool valueOk = false;
    bool opacityOk = false;
    const double value = parts.size() == 2 ? parts[0].toDouble(&valueOk) : 0.0;
    const double opacity = parts.size() == 2 ? parts[1].toDouble(&opacityOk) : 0.0;
    if (!valueOk || !opacityOk || !std::isfinite(value) || !(opacity >= 0.0 && opacity <= 1.0))
    {
      *error = usage + QStringLiteral("; got '%1'").arg(pair);
      return false;
    }
    nodes.push_back({value, opacity});
  }
  std::sort(nodes.begin(), nodes.end());
  const bool repeated =
      std::adjacent_find(nodes.begin(), nodes.end(),
                         [](const auto& a, const auto& b) { return a[0] == b[0]; }) != nodes.end();
  if (nodes.size() < 2 || repeated)
  {
    *error = usage + QStringLiteral("; got '%1'").arg(text);
    return false;
  }
  if (m_Type != VXRepresentation::None && m_Type != VXRepresentation::Volume)
  {
    *error =
        QStringLiteral("--opacity-curve shapes volume views: use it with --view volume or without --view");
    return false;
  }
  m_Type = VXRepresentation::Volume;
  m_OpacityCurve = nodes;
  return true;
}

bool ViewerDataViewChoice::setGlyphScale(const QString& text, QString* error)
{
  bool isNumber = false;
  const double scale = text.toDouble(&isNumber);
  if (!isNumber || !std::isfinite(scale) || scale <= 0.0)
  {
    *error = QStringLiteral("--glyph-scale takes a positive number, for example 0.5, not '%1'").arg(text);
    return false;
  }
  if (m_Type != VXRepresentation::None && m_Type != VXRepresentation::Glyph)
  {
    *error = QStringLiteral("--glyph-scale sizes glyph views: use it with --view glyph or without --view");
    return false;
  }
  m_Type = VXRepresentation::Glyph;
  m_GlyphScale = scale;
  return true;
}

bool ViewerDataViewChoice::setColorBy(const QString& text, QString* error)
{
  m_SolidColour = text.compare(QStringLiteral("none"), Qt::CaseInsensitive) == 0;
  if (m_SolidColour)
  {
    m_Array.clear();
    m_Component.reset();
    return true;
  }
  m_Array = text;
  m_Component.reset();
  const int colon = text.lastIndexOf(QLatin1Char(':'));
  if (colon > 0)
  {
    const QString suffix = text.mid(colon + 1);
    bool isNumber = false;
    const int component = suffix.toInt(&isNumber);
    if (isNumber && component >= 0)
    {
      m_Component = component;
      m_Array = text.left(colon);
    }
    else if (suffix.toLower() == k_Magnitude)
    {
      m_Component = VXPointsRepPimpl::k_Magnitude;
      m_Array = text.left(colon);
    }
  }
  if (m_Array.isEmpty())
  {
    *error = QStringLiteral(
        "--color-by takes ARRAY[:COMPONENT|:Magnitude], for example FeatureIds or EulerAngles:0");
    return false;
  }
  return true;
}

bool ViewerDataViewChoice::setPreset(const QString& name, QString* error)
{
  QStringList names;
  for (const auto& preset : ColorPresetsFile::BuiltInPresets())
  {
    const QString presetName = QString::fromStdString(preset.m_Name);
    if (presetName.compare(name, Qt::CaseInsensitive) == 0)
    {
      m_Preset = preset;
      return true;
    }
    names << presetName;
  }
  *error =
      QStringLiteral("unknown preset '%1'; the presets are: %2").arg(name, names.join(QStringLiteral(", ")));
  return false;
}

void ViewerDataViewChoice::applyDefaults() const
{
  if (m_Type == VXRepresentation::ImageSlice || m_Type == VXRepresentation::Volume)
  {
    // Only images are sliced or drawn as volumes; other geometries keep the viewer's own views.
    UseViewerDefaults();
    VXPipeline::setDefaultImageGeomRepType(static_cast<VXRepresentation::Type>(m_Type));
  }
  else if (m_Type != VXRepresentation::None)
  {
    setDefaultViews(m_Type, m_Type, m_Type);
  }
}

bool ViewerDataViewChoice::applyGlyphs(const VXBridgeObject& bridge, VXAbstractViewWidget* view,
                                       QString* error) const
{
  if (m_GlyphType.isEmpty() && m_GlyphOrientation.isEmpty() && !m_GlyphScale)
  {
    return true;
  }
  bool orientationFound = m_GlyphOrientation.isEmpty();
  QStringList known;
  for (VXDataSource* dataSource : bridge.dataSources())
  {
    for (VXRepresentation* representation : dataSource->findChildren<VXRepresentation*>())
    {
      auto* glyphs = dynamic_cast<VXGlyphRepPimpl*>(representation->implementation(view));
      if (glyphs == nullptr)
      {
        continue;
      }
      if (!m_GlyphType.isEmpty())
      {
        glyphs->setGlyphType(m_GlyphType);
      }
      if (m_GlyphScale)
      {
        glyphs->setScaleFactor(*m_GlyphScale);
      }
      if (m_GlyphOrientation.isEmpty())
      {
        continue;
      }
      const QStringList choices = glyphs->orientationArrayChoices();
      known << choices;
      if (choices.contains(m_GlyphOrientation))
      {
        glyphs->setOrientationArray(m_GlyphOrientation);
        orientationFound = true;
      }
    }
  }
  if (!orientationFound)
  {
    known.removeDuplicates();
    *error =
        QStringLiteral("no three-component array '%1' in '%2' to turn the glyphs; the arrays there are: %3")
            .arg(m_GlyphOrientation, bridge.name(),
                 known.isEmpty() ? QStringLiteral("(none)") : known.join(QStringLiteral(", ")));
    return false;
  }
  return true;
}

bool ViewerDataViewChoice::applyTo(const VXBridgeObject& bridge, VXAbstractViewWidget* view,
                                   QString* error) const
{
  if (!applySlice(bridge, view, error))
  {
    return false;
  }
  if (m_Type == VXRepresentation::Volume)
  {
    bool anyImage = false;
    for (VXDataSource* dataSource : bridge.dataSources())
    {
      anyImage = anyImage || vtkImageData::SafeDownCast(dataSource->getOutput()) != nullptr;
    }
    if (!anyImage)
    {
      *error = QStringLiteral("--view volume draws images, and '%1' holds none").arg(bridge.name());
      return false;
    }
  }
  if (!applyGlyphs(bridge, view, error))
  {
    return false;
  }
  if (m_Array.isEmpty() && !m_SolidColour)
  {
    colourByDefaultArrays(bridge, view);
  }
  if (m_Array.isEmpty() && !m_Preset)
  {
    applyOpacityCurve(bridge, view);
    return true;
  }
  bool found = m_Array.isEmpty();
  QStringList known;
  for (VXDataSource* dataSource : bridge.dataSources())
  {
    vtkDataSet* dataSet = dataSource->getOutput();
    if (dataSet == nullptr)
    {
      continue;
    }
    vtkDataArray* array = m_Array.isEmpty() ? nullptr : findArray(dataSet, m_Array);
    known << arrayNames(dataSet);
    if (m_Component && array != nullptr && *m_Component >= array->GetNumberOfComponents())
    {
      *error = QStringLiteral("array '%1' has %2 component(s): choose 0 to %3 or Magnitude")
                   .arg(m_Array)
                   .arg(array->GetNumberOfComponents())
                   .arg(array->GetNumberOfComponents() - 1);
      return false;
    }
    found = found || array != nullptr;
    for (VXRepresentation* representation : dataSource->findChildren<VXRepresentation*>())
    {
      VXRepresentationPimpl* implementation = representation->implementation(view);
      // Volumes and slices keep their own colouring: preset, array and component go to them directly.
      const auto colourOwn = [&](auto* own)
      {
        if (m_Preset)
        {
          own->loadPresetColors(*m_Preset);
        }
        if (array != nullptr)
        {
          own->setActiveArray(QString::fromUtf8(array->GetName()));
          own->setActiveComponent(m_Component.value_or(std::decay_t<decltype(*own)>::k_Magnitude));
        }
      };
      if (auto* volume = dynamic_cast<VXVolumeRepPimpl*>(implementation))
      {
        colourOwn(volume);
        continue;
      }
      if (auto* slice = qobject_cast<VXImageSliceRepPimpl*>(implementation))
      {
        colourOwn(slice);
        continue;
      }
      auto* colouring = dynamic_cast<VXPointsRepPimpl*>(implementation);
      if (colouring == nullptr)
      {
        continue;
      }
      if (m_Preset)
      {
        colouring->loadPresetColors(*m_Preset);
      }
      if (array != nullptr)
      {
        colouring->setActiveArray(QString::fromUtf8(array->GetName()));
        colouring->setActiveComponent(m_Component.value_or(VXPointsRepPimpl::k_Magnitude));
      }
    }
  }
  applyOpacityCurve(bridge, view);
  if (!found)
  {
    known.removeDuplicates();
    *error = QStringLiteral("no array '%1' in '%2'; its arrays are: %3")
                 .arg(m_Array, bridge.name(),
                      known.isEmpty() ? QStringLiteral("(none)") : known.join(QStringLiteral(", ")));
    return false;
  }
  return true;
}

void ViewerDataViewChoice::colourByDefaultArrays(const VXBridgeObject& bridge, VXAbstractViewWidget* view)
{
  for (VXDataSource* dataSource : bridge.dataSources())
  {
    for (VXRepresentation* representation : dataSource->findChildren<VXRepresentation*>())
    {
      VXRepresentationPimpl* implementation = representation->implementation(view);
      vtkDataArray* array = defaultColouringArray(inputDataSet(implementation));
      if (array == nullptr)
      {
        continue;
      }
      const QString name = QString::fromUtf8(array->GetName());
      // Bytes of three or four components are the colours of a photograph or a scan: shown as they are.
      const bool colours = array->GetDataType() == VTK_UNSIGNED_CHAR &&
                           (array->GetNumberOfComponents() == 3 || array->GetNumberOfComponents() == 4);
      // Views that already colour by an array (a volume picks its own) keep it.
      const auto colourIfSolid = [&](auto* own)
      {
        if (!own->activeArray().isEmpty())
        {
          return false;
        }
        own->setActiveArray(name);
        own->setActiveComponent(std::decay_t<decltype(*own)>::k_Magnitude);
        return true;
      };
      if (auto* volume = dynamic_cast<VXVolumeRepPimpl*>(implementation))
      {
        colourIfSolid(volume);
      }
      else if (auto* slice = qobject_cast<VXImageSliceRepPimpl*>(implementation))
      {
        if (colourIfSolid(slice) && colours)
        {
          slice->setScalarMapping(k_DirectColours);
        }
      }
      else if (auto* points = dynamic_cast<VXPointsRepPimpl*>(implementation))
      {
        if (colourIfSolid(points) && colours)
        {
          points->setScalarMapping(k_DirectColours);
        }
      }
    }
  }
}

void ViewerDataViewChoice::applyOpacityCurve(const VXBridgeObject& bridge, VXAbstractViewWidget* view) const
{
  if (m_OpacityCurve.empty())
  {
    return;
  }
  for (VXDataSource* dataSource : bridge.dataSources())
  {
    for (VXRepresentation* representation : dataSource->findChildren<VXRepresentation*>())
    {
      if (auto* volume = dynamic_cast<VXVolumeRepPimpl*>(representation->implementation(view)))
      {
        volume->setOpacityCurve(m_OpacityCurve);
      }
    }
  }
}

bool ViewerDataViewChoice::setSliceNumber(const QString& text, QString* error)
{
  bool isNumber = false;
  const int number = text.toInt(&isNumber);
  if (!isNumber)
  {
    *error = QStringLiteral("--slice-number takes a whole number, for example 12; got '%1'").arg(text);
    return false;
  }
  m_SliceNumber = number;
  if (m_Type == VXRepresentation::None)
  {
    m_Type = VXRepresentation::ImageSlice;
  }
  if (m_Type != VXRepresentation::ImageSlice)
  {
    *error = QStringLiteral("--slice-number and --slice-axis need --view slice");
    return false;
  }
  return true;
}

bool ViewerDataViewChoice::setSliceAxis(const QString& text, QString* error)
{
  const QString axis = text.toLower();
  if (axis != QStringLiteral("x") && axis != QStringLiteral("y") && axis != QStringLiteral("z"))
  {
    *error = QStringLiteral("--slice-axis takes x, y or z; got '%1'").arg(text);
    return false;
  }
  m_SliceAxis = axis.at(0).unicode() - QLatin1Char('x').unicode();
  if (m_Type == VXRepresentation::None)
  {
    m_Type = VXRepresentation::ImageSlice;
  }
  if (m_Type != VXRepresentation::ImageSlice)
  {
    *error = QStringLiteral("--slice-number and --slice-axis need --view slice");
    return false;
  }
  return true;
}

bool ViewerDataViewChoice::applySlice(const VXBridgeObject& bridge, VXAbstractViewWidget* view,
                                      QString* error) const
{
  if (m_Type != VXRepresentation::ImageSlice)
  {
    return true;
  }
  using ZRVtkModule::constants::SliceDirection;
  // x steps through YZ planes, y through XZ planes, z through XY planes.
  static const SliceDirection k_Directions[3] = {
      ZRVtkModule::constants::YZPlane, ZRVtkModule::constants::XZPlane, ZRVtkModule::constants::XYPlane};
  static const char k_AxisNames[3] = {'x', 'y', 'z'};
  bool sliced = false;
  for (VXDataSource* dataSource : bridge.dataSources())
  {
    for (VXRepresentation* representation : dataSource->findChildren<VXRepresentation*>())
    {
      auto* slice = qobject_cast<VXImageSliceRepPimpl*>(representation->implementation(view));
      if (slice == nullptr)
      {
        continue;
      }
      if (!slice->hasImage())
      {
        *error = QStringLiteral("image '%1' in '%2' is empty: it has no slice to show")
                     .arg(dataSource->name(), bridge.name());
        return false;
      }
      const int axis = m_SliceAxis.value_or(2);
      slice->updateSliceDirection(k_Directions[axis]);
      if (m_SliceNumber)
      {
        const std::array<int, 2> range = slice->getSliceDirectionBounds();
        if (*m_SliceNumber < range[0] || *m_SliceNumber > range[1])
        {
          *error = QStringLiteral("slice number %1 is out of range for '%2' in '%3': its slices along %4 "
                                  "run from %5 to %6")
                       .arg(*m_SliceNumber)
                       .arg(dataSource->name(), bridge.name())
                       .arg(QLatin1Char(k_AxisNames[axis]))
                       .arg(range[0])
                       .arg(range[1]);
          return false;
        }
        slice->setSliceNumber(*m_SliceNumber);
      }
      sliced = true;
    }
  }
  if (sliced && view != nullptr && view->getVisualizationWidget() != nullptr)
  {
    // Look straight at the planes from the positive side of the axis the slices step in.
    VXVisualizationWidget* window = view->getVisualizationWidget();
    const int axis = m_SliceAxis.value_or(2);
    if (axis == 0)
    {
      window->camXMinus();
    }
    else if (axis == 1)
    {
      window->camYMinus();
    }
    else
    {
      window->camZMinus();
    }
  }
  if (!sliced && (m_SliceNumber || m_SliceAxis))
  {
    *error = QStringLiteral("'%1' holds no image to slice; --slice-number and --slice-axis apply to images")
                 .arg(bridge.name());
    return false;
  }
  return true;
}
