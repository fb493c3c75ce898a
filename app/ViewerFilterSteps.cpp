#include "app/ViewerFilterSteps.h"

#include "data_views/VXRepresentation.h"
#include "filters/VXBox.h"
#include "filters/VXFClip.h"
#include "filters/VXFImageResample.h"
#include "filters/VXFQuadricClustering.h"
#include "filters/VXFSlice.h"
#include "filters/VXFThreshold.h"
#include "filters/VXPlane.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "pipeline/VXPipelineModel.h"

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataSet.h>
#include <vtkPointData.h>

#include <cmath>

namespace
{
const QString k_ClipPlane = QStringLiteral("--clip-plane");
const QString k_ClipBox = QStringLiteral("--clip-box");
const QString k_Slice = QStringLiteral("--slice");
const QString k_Threshold = QStringLiteral("--threshold");
const QString k_Resample = QStringLiteral("--resample");
const QString k_Decimate = QStringLiteral("--decimate");

bool parseNumbers(const QString& text, int count, std::array<double, 6>& values)
{
  const QStringList parts = text.split(QLatin1Char(','));
  if (parts.size() != count)
  {
    return false;
  }
  for (int i = 0; i < count; ++i)
  {
    bool ok = false;
    values[static_cast<size_t>(i)] = parts[i].trimmed().toDouble(&ok);
    if (!ok)
    {
      return false;
    }
  }
  return true;
}

// Whether the numeric point or cell array of that name has the component.
bool hasArrayComponent(vtkDataSet* dataSet, const QString& name, int component)
{
  const QByteArray utf8 = name.toUtf8();
  for (vtkFieldData* fieldData : {static_cast<vtkFieldData*>(dataSet->GetPointData()),
                                  static_cast<vtkFieldData*>(dataSet->GetCellData())})
  {
    vtkDataArray* array = fieldData != nullptr ? fieldData->GetArray(utf8.constData()) : nullptr;
    if (array != nullptr && component < array->GetNumberOfComponents())
    {
      return true;
    }
  }
  return false;
}

// The option that asks for a step of this kind.
QString OptionOf(int kindIndex)
{
  static const QStringList options = {k_ClipPlane, k_ClipBox, k_Slice, k_Threshold, k_Resample, k_Decimate};
  return options.value(kindIndex);
}

void appendArrayNames(vtkFieldData* fieldData, QStringList& names)
{
  for (int index = 0; fieldData != nullptr && index < fieldData->GetNumberOfArrays(); ++index)
  {
    vtkDataArray* array = fieldData->GetArray(index);
    if (array != nullptr && array->GetName() != nullptr &&
        !names.contains(QString::fromUtf8(array->GetName())))
    {
      names.append(QString::fromUtf8(array->GetName()));
    }
  }
}
} // namespace

QStringList ViewerFilterSteps::OptionNames()
{
  return {k_ClipPlane, k_ClipBox, k_Slice, k_Threshold, k_Resample, k_Decimate};
}

bool ViewerFilterSteps::parse(const QStringList& arguments, QString* error)
{
  m_Steps.clear();
  for (int i = 0; i < arguments.size(); ++i)
  {
    QString option = arguments[i];
    QString value;
    const int equals = option.indexOf(QLatin1Char('='));
    if (option.startsWith(QStringLiteral("--")) && equals > 0)
    {
      value = option.mid(equals + 1);
      option = option.left(equals);
      if (!OptionNames().contains(option))
      {
        continue;
      }
    }
    else if (OptionNames().contains(option))
    {
      if (i + 1 >= arguments.size())
      {
        *error = QStringLiteral("%1 needs a value").arg(option);
        return false;
      }
      value = arguments[++i];
    }
    else
    {
      continue;
    }
    if (!parseStep(option, value, error))
    {
      return false;
    }
  }
  return true;
}

std::vector<ViewerFilterSteps::ThresholdStep> ViewerFilterSteps::thresholdSteps() const
{
  std::vector<ThresholdStep> thresholds;
  for (const Step& step : m_Steps)
  {
    if (step.kind == Kind::Threshold)
    {
      thresholds.push_back({step.array, step.component, step.values[0], step.values[1]});
    }
  }
  return thresholds;
}

bool ViewerFilterSteps::onlyThresholds() const
{
  for (const Step& step : m_Steps)
  {
    if (step.kind != Kind::Threshold)
    {
      return false;
    }
  }
  return true;
}

bool ViewerFilterSteps::parseStep(const QString& option, const QString& value, QString* error)
{
  Step step;
  if (option == k_ClipPlane || option == k_Slice)
  {
    step.kind = option == k_Slice ? Kind::Slice : Kind::ClipPlane;
    if (!parseNumbers(value, 6, step.values) ||
        (step.values[3] == 0.0 && step.values[4] == 0.0 && step.values[5] == 0.0))
    {
      *error = QStringLiteral("%1 takes OX,OY,OZ,NX,NY,NZ with a normal that is not zero, not '%2'")
                   .arg(option, value);
      return false;
    }
  }
  else if (option == k_Resample || option == k_Decimate)
  {
    step.kind = option == k_Resample ? Kind::Resample : Kind::Decimate;
    const bool numbers = parseNumbers(value, 3, step.values);
    const bool valid = numbers && step.values[0] > 0.0 && step.values[1] > 0.0 && step.values[2] > 0.0 &&
                       (step.kind == Kind::Resample || (step.values[0] == std::floor(step.values[0]) &&
                                                        step.values[1] == std::floor(step.values[1]) &&
                                                        step.values[2] == std::floor(step.values[2])));
    if (!valid)
    {
      *error =
          step.kind == Kind::Resample
              ? QStringLiteral("--resample takes three percentages above 0, PX,PY,PZ, not '%1'").arg(value)
              : QStringLiteral("--decimate takes three whole numbers of bins above 0, NX,NY,NZ, not '%1'")
                    .arg(value);
      return false;
    }
  }
  else if (option == k_ClipBox)
  {
    step.kind = Kind::ClipBox;
    if (!parseNumbers(value, 6, step.values) || step.values[0] > step.values[1] ||
        step.values[2] > step.values[3] || step.values[4] > step.values[5])
    {
      *error = QStringLiteral("--clip-box takes XMIN,XMAX,YMIN,YMAX,ZMIN,ZMAX, not '%1'").arg(value);
      return false;
    }
  }
  else
  {
    step.kind = Kind::Threshold;
    // The array name may hold colons itself: the range is always the last two fields.
    QStringList parts = value.split(QLatin1Char(':'));
    bool minOk = false;
    bool maxOk = false;
    if (parts.size() >= 3)
    {
      step.values[1] = parts.takeLast().toDouble(&maxOk);
      step.values[0] = parts.takeLast().toDouble(&minOk);
    }
    if (!minOk || !maxOk || step.values[0] > step.values[1])
    {
      *error = QStringLiteral("--threshold takes ARRAY[:COMPONENT]:MIN:MAX, not '%1'").arg(value);
      return false;
    }
    bool componentOk = false;
    const int component = parts.size() > 1 ? parts.last().toInt(&componentOk) : 0;
    if (componentOk && component >= 0)
    {
      parts.removeLast();
      step.component = component;
    }
    step.array = parts.join(QLatin1Char(':'));
    if (step.array.isEmpty())
    {
      *error = QStringLiteral("--threshold takes ARRAY[:COMPONENT]:MIN:MAX, not '%1'").arg(value);
      return false;
    }
  }
  m_Steps.push_back(step);
  return true;
}

VXFilter* ViewerFilterSteps::makeFilter(const Step& step)
{
  VXFilter* filter = nullptr;
  if (step.kind == Kind::Slice)
  {
    filter = new VXFSlice();
  }
  else if (step.kind == Kind::Threshold)
  {
    filter = new VXFThreshold();
  }
  else if (step.kind == Kind::Resample)
  {
    filter = new VXFImageResample();
  }
  else if (step.kind == Kind::Decimate)
  {
    filter = new VXFQuadricClustering();
  }
  else
  {
    filter = new VXFClip();
  }
  return filter;
}

QString ViewerFilterSteps::inputName(size_t index, const QString& sourceName) const
{
  if (index == 0 || index > m_Steps.size())
  {
    return QStringLiteral("'%1'").arg(sourceName);
  }
  return QStringLiteral("the output of %1 under '%2'")
      .arg(OptionOf(static_cast<int>(m_Steps[index - 1].kind)), sourceName);
}

bool ViewerFilterSteps::configure(VXFilter* filter, const Step& step, const QString& inputName,
                                  QString* error)
{
  if (auto* clip = qobject_cast<VXFClip*>(filter))
  {
    if (step.kind == Kind::ClipBox)
    {
      // The box placed on the data (a quarter larger than its bounds) is moved and scaled onto the
      // asked bounds.
      const std::array<double, 6> placed = clip->box()->bounds();
      std::array<double, 3> scale{};
      std::array<double, 3> translation{};
      for (int axis = 0; axis < 3; ++axis)
      {
        const double centre = (placed[2 * axis] + placed[2 * axis + 1]) / 2.0;
        const double placedExtent = 1.25 * (placed[2 * axis + 1] - placed[2 * axis]);
        const double placedLow = centre - placedExtent / 2.0;
        scale[axis] =
            placedExtent > 0.0 ? (step.values[2 * axis + 1] - step.values[2 * axis]) / placedExtent : 1.0;
        translation[axis] = step.values[2 * axis] - scale[axis] * placedLow;
      }
      clip->setClipType(VXFClip::Box);
      clip->box()->setValues(translation, {0.0, 0.0, 0.0}, scale);
      clip->setInverted(true); // keeps what is inside the box
    }
    else
    {
      clip->setClipType(VXFClip::Plane);
      clip->plane()->setValues({step.values[0], step.values[1], step.values[2]},
                               {step.values[3], step.values[4], step.values[5]});
      clip->setInverted(false); // keeps the side the normal points to
    }
  }
  else if (auto* slice = qobject_cast<VXFSlice*>(filter))
  {
    slice->plane()->setValues({step.values[0], step.values[1], step.values[2]},
                              {step.values[3], step.values[4], step.values[5]});
  }
  else if (auto* resample = qobject_cast<VXFImageResample*>(filter))
  {
    // Set after addFilter, so that the command line wins over the user's stored defaults.
    resample->setResampleDimensions({step.values[0], step.values[1], step.values[2]});
  }
  else if (auto* clustering = qobject_cast<VXFQuadricClustering*>(filter))
  {
    clustering->setNumberOfDimensions({static_cast<int>(step.values[0]), static_cast<int>(step.values[1]),
                                       static_cast<int>(step.values[2])});
  }
  else if (auto* threshold = qobject_cast<VXFThreshold*>(filter))
  {
    const auto& infos = threshold->getDataArrayNameInfos();
    size_t found = infos.size();
    QStringList names;
    for (size_t i = 0; i < infos.size(); ++i)
    {
      if (!names.contains(infos[i].dataSetName))
      {
        names.append(infos[i].dataSetName);
      }
      if (found == infos.size() && infos[i].dataSetName == step.array && infos[i].component == step.component)
      {
        found = i;
      }
    }
    if (found == infos.size())
    {
      *error = QStringLiteral("--threshold: %1 has no array '%2' with component %3; arrays: %4")
                   .arg(inputName, step.array)
                   .arg(step.component)
                   .arg(names.isEmpty() ? QStringLiteral("none") : names.join(QStringLiteral(", ")));
      return false;
    }
    threshold->setActiveArrayInfoIndex(found);
    VXFThreshold::DataArrayNameInfo info = threshold->getActiveArrayInfo();
    info.userRange = {step.values[0], step.values[1]};
    threshold->updateActiveArrayInfo(info);
  }
  // A picture of the result has no use for the tools.
  if (auto* clip = qobject_cast<VXFClip*>(filter))
  {
    clip->setShowClipTool(false);
  }
  if (auto* slice = qobject_cast<VXFSlice*>(filter))
  {
    slice->setShowPlaneTool(false);
  }
  return true;
}

QList<VXDataSource*> ViewerFilterSteps::sourcesWithThresholdArrays(const QList<VXDataSource*>& sources,
                                                                   QString* error, QString* note) const
{
  QList<VXDataSource*> chosen;
  QStringList leftOut;
  QStringList lacking;
  QStringList arrays;
  for (VXDataSource* source : sources)
  {
    vtkDataSet* output = source->getOutput();
    if (output == nullptr)
    {
      continue;
    }
    appendArrayNames(output->GetPointData(), arrays);
    appendArrayNames(output->GetCellData(), arrays);
    QStringList missing;
    for (const Step& step : m_Steps)
    {
      if (step.kind == Kind::Threshold && !hasArrayComponent(output, step.array, step.component))
      {
        const QString name = QStringLiteral("'%1' with component %2").arg(step.array).arg(step.component);
        missing.append(name);
        if (!lacking.contains(name))
        {
          lacking.append(name);
        }
      }
    }
    if (missing.isEmpty())
    {
      chosen.append(source);
    }
    else
    {
      leftOut.append(source->name());
    }
  }
  if (chosen.isEmpty() && !leftOut.isEmpty())
  {
    *error = QStringLiteral("--threshold: no data source has an array %1; arrays: %2")
                 .arg(lacking.join(QStringLiteral(" and ")),
                      arrays.isEmpty() ? QStringLiteral("none") : arrays.join(QStringLiteral(", ")));
  }
  else if (!leftOut.isEmpty())
  {
    *note = QStringLiteral("--threshold: the filters are not added under %1, which lack the array %2")
                .arg(leftOut.join(QStringLiteral(", ")), lacking.join(QStringLiteral(" or ")));
  }
  return chosen;
}

bool ViewerFilterSteps::applyTo(VXPipeline* pipeline, const VXBridgeObject& bridge, int viewType,
                                QString* error, QString* note, VXPipelineModel* model) const
{
  if (m_Steps.empty())
  {
    return true;
  }
  // Checked before any filter is made, so that a data source without the arrays gets none at all.
  const QList<VXDataSource*> sources = sourcesWithThresholdArrays(bridge.dataSources(), error, note);
  if (sources.isEmpty() && !error->isEmpty())
  {
    return false;
  }
  QStringList failures;
  int chains = 0;
  for (VXDataSource* source : sources)
  {
    // Only the last output is shown.
    QList<VXRepresentation*> hidden;
    for (QObject* child : source->children())
    {
      auto* representation = qobject_cast<VXRepresentation*>(child);
      if (representation != nullptr && representation->isVisible())
      {
        representation->setVisibility(false);
        hidden.append(representation);
      }
    }
    VXCoreObject* parent = source;
    VXFilter* first = nullptr;
    QString stepError;
    for (size_t index = 0; index < m_Steps.size() && stepError.isEmpty(); ++index)
    {
      VXFilter* filter = makeFilter(m_Steps[index]);
      if (!pipeline->addFilter(parent, filter))
      {
        delete filter;
        stepError = QStringLiteral("cannot add the filters: no render window is active");
        break;
      }
      first = first != nullptr ? first : filter;
      // The type first: on a filter that adds no data view, setting it says that one was added already.
      if (viewType != VXRepresentation::None)
      {
        filter->setRepTypeToAdd(VXRepresentation::k_RepresentationTypeToString.value(
            static_cast<VXRepresentation::Type>(viewType)));
      }
      filter->setShouldAddRep(index + 1 == m_Steps.size());
      if (configure(filter, m_Steps[index], inputName(index, source->name()), &stepError))
      {
        filter->applyFilter();
        parent = filter;
      }
    }
    if (stepError.isEmpty())
    {
      ++chains;
      continue;
    }
    // A chain that cannot be finished is not left half made: its filters leave the pipeline tree (and so
    // any state saved after), and the data source shows as it did.
    if (first != nullptr)
    {
      if (model != nullptr)
      {
        model->removeLeafItem(first);
        // Deleted later: until then, nothing that walks the data source's children should meet it.
        first->setParent(nullptr);
      }
      else
      {
        delete first;
      }
    }
    for (VXRepresentation* representation : hidden)
    {
      representation->setVisibility(true);
    }
    failures.append(stepError + QStringLiteral("; no filter is added under '%1'").arg(source->name()));
  }
  if (chains == 0 && !failures.isEmpty())
  {
    *error = failures.join(QStringLiteral("\n"));
    return false;
  }
  if (!failures.isEmpty())
  {
    *note = note->isEmpty() ? failures.join(QStringLiteral("\n"))
                            : *note + QLatin1Char('\n') + failures.join(QStringLiteral("\n"));
  }
  return true;
}

QList<VXFilter*> ViewerFilterSteps::runWithoutView(VXDataSource* source, QString* error) const
{
  // No pipeline and no window: each filter only runs its algorithm, and the chain hangs under the source.
  QList<VXFilter*> chain;
  VXCoreObject* parent = source;
  for (size_t index = 0; index < m_Steps.size(); ++index)
  {
    const Step& step = m_Steps[index];
    VXFilter* filter = makeFilter(step);
    filter->setParent(parent);
    filter->setInputPort(parent->outputPort());
    filter->setupFilter();
    if (!configure(filter, step, inputName(index, source->name()), error))
    {
      // Each filter is the child of the one before: the first takes the whole chain with it.
      VXFilter* first = chain.isEmpty() ? filter : chain.front();
      delete first;
      return {};
    }
    filter->applyFilter();
    chain.append(filter);
    parent = filter;
  }
  return chain;
}

QStringList ViewerFilterSteps::WithoutFilterOptions(const QStringList& arguments)
{
  QStringList rest;
  for (int i = 0; i < arguments.size(); ++i)
  {
    if (OptionNames().contains(arguments[i]))
    {
      ++i; // its value
      continue;
    }
    const int equals = arguments[i].indexOf(QLatin1Char('='));
    if (equals > 0 && OptionNames().contains(arguments[i].left(equals)))
    {
      continue;
    }
    rest.append(arguments[i]);
  }
  return rest;
}
