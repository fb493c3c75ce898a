#include "filters/VXFImageResample.h"

#include "filters/VXFImageResampleFilterWidget.h"
#include "platform/QtZRSettings.h"

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkImageData.h>

#include <nlohmann/json.hpp>

#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace
{
const QString k_ResampleName = QStringLiteral("Image Resample Filter");
constexpr const char* k_Dims[3] = {"data_source_num_of_dims_x", "data_source_num_of_dims_y",
                                   "data_source_num_of_dims_z"};
} // namespace

VXFImageResample::VXFImageResample(QObject* parent)
    : VXFilter(parent)
    , m_PassThrough(vtkSmartPointer<vtkPassThrough>::New())
{
  m_BaseName = k_ResampleName;
  m_DefaultName = k_ResampleName;
}

VXFImageResample::~VXFImageResample() = default;

QString VXFImageResample::humanTypeName() const
{
  return k_ResampleName;
}

QString VXFImageResample::typeName() const
{
  return QStringLiteral("VXFImageResample");
}

vtkAlgorithmOutput* VXFImageResample::outputPort() const
{
  return m_PassThrough->GetOutputPort(0);
}

void VXFImageResample::setInputPort(vtkAlgorithmOutput* port)
{
  VXFilter::setInputPort(port);
  m_PassThrough->SetInputConnection(port);
}

void VXFImageResample::setupFilter()
{
  readSettings();
}

void VXFImageResample::setResampleDimensions(std::array<double, 3> dimensions)
{
  m_Dimensions = dimensions;
}

void VXFImageResample::applyFilter()
{
  if (m_InputPort != nullptr && m_InputPort->GetProducer() != nullptr)
  {
    m_InputPort->GetProducer()->Update(m_InputPort->GetIndex());
  }
  auto* input = vtkImageData::SafeDownCast(inputDataObject());
  const bool positive =
      std::all_of(m_Dimensions.cbegin(), m_Dimensions.cend(), [](double p) { return p > 0.0; });
  bool resampled = false;
  if (input != nullptr && input->GetNumberOfCells() > 0 && input->GetNumberOfPoints() > 0 && positive)
  {
    m_PassThrough->RemoveAllInputs();
    const bool unchanged =
        std::all_of(m_Dimensions.cbegin(), m_Dimensions.cend(), [](double p) { return p == 100.0; });
    if (!unchanged)
    {
      int dims[3];
      input->GetDimensions(dims);
      double spacing[3];
      input->GetSpacing(spacing);
      std::array<int, 3> oldCount{};
      std::array<int, 3> newCount{};
      double newSpacing[3];
      for (int axis = 0; axis < 3; ++axis)
      {
        oldCount[axis] = std::max(dims[axis] - 1, 1);
        newCount[axis] =
            std::max(static_cast<int>(std::lround(m_Dimensions[axis] / 100.0 * oldCount[axis])), 1);
        newSpacing[axis] = spacing[axis] * oldCount[axis] / newCount[axis];
      }
      auto image = vtkSmartPointer<vtkImageData>::New();
      image->SetDimensions(newCount[0] + 1, newCount[1] + 1, newCount[2] + 1);
      image->SetOrigin(input->GetOrigin());
      image->SetSpacing(newSpacing);
      const vtkIdType cells = static_cast<vtkIdType>(newCount[0]) * newCount[1] * newCount[2];
      vtkCellData* inCells = input->GetCellData();
      std::vector<std::pair<vtkDataArray*, vtkDataArray*>> arrays;
      for (int a = 0; a < inCells->GetNumberOfArrays(); ++a)
      {
        vtkDataArray* source = inCells->GetArray(a);
        if (source == nullptr)
        {
          continue; // only data arrays are sampled
        }
        vtkDataArray* target = vtkDataArray::CreateDataArray(source->GetDataType());
        target->SetName(source->GetName());
        target->SetNumberOfComponents(source->GetNumberOfComponents());
        target->SetNumberOfTuples(cells);
        image->GetCellData()->AddArray(target);
        target->Delete();
        arrays.emplace_back(source, target);
      }
      if (vtkDataArray* scalars = inCells->GetScalars(); scalars != nullptr && scalars->GetName() != nullptr)
      {
        image->GetCellData()->SetActiveScalars(scalars->GetName());
      }
      // Nearest cell, in integer arithmetic: no averaging, so ids stay ids.
      auto sourceIndex = [&](int index, int axis)
      {
        return std::min(static_cast<int>(static_cast<long long>(index) * oldCount[axis] / newCount[axis]),
                        oldCount[axis] - 1);
      };
      vtkIdType target = 0;
      for (int k = 0; k < newCount[2]; ++k)
      {
        const int sk = sourceIndex(k, 2);
        for (int j = 0; j < newCount[1]; ++j)
        {
          const int sj = sourceIndex(j, 1);
          for (int i = 0; i < newCount[0]; ++i, ++target)
          {
            const vtkIdType source =
                (static_cast<vtkIdType>(sk) * oldCount[1] + sj) * oldCount[0] + sourceIndex(i, 0);
            for (auto& [from, to] : arrays)
            {
              to->SetTuple(target, source, from);
            }
          }
        }
      }
      m_PassThrough->SetInputData(image);
      m_PassThrough->Update();
      resampled = true;
    }
  }
  if (!resampled)
  {
    m_PassThrough->SetInputConnection(m_InputPort);
    m_PassThrough->Update();
  }
  addRepresentationIfNeeded();
  updateDownstreamGridAxesBounds();
  Q_EMIT requestRenderAll();
}

void VXFImageResample::receivePipelineOutputReloaded()
{
  applyFilter();
}

void VXFImageResample::write(nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) const
{
  VXFilter::write(json, viewIndexes);
  for (int i = 0; i < 3; ++i)
  {
    json[k_Dims[i]] = m_Dimensions[i];
  }
}

void VXFImageResample::read(const nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes)
{
  VXFilter::read(json, viewIndexes);
  for (int i = 0; i < 3; ++i)
  {
    if (json.is_object() && json.contains(k_Dims[i]))
    {
      m_Dimensions[i] = json.at(k_Dims[i]).get<double>();
    }
  }
}

void VXFImageResample::writeSettings()
{
  VXFilter::writeSettings();
  QtZRSettings settings;
  openSettingsGroup(settings);
  for (int i = 0; i < 3; ++i)
  {
    settings.setValue(QString::fromLatin1(k_Dims[i]), m_Dimensions[i]);
  }
  settings.endGroup();
  settings.endGroup();
  settings.endGroup();
}

void VXFImageResample::readSettings()
{
  VXFilter::readSettings();
  QtZRSettings settings;
  openSettingsGroup(settings);
  for (int i = 0; i < 3; ++i)
  {
    if (settings.contains(QString::fromLatin1(k_Dims[i])))
    {
      m_Dimensions[i] = settings.value(QString::fromLatin1(k_Dims[i])).toDouble();
    }
  }
  settings.endGroup();
  settings.endGroup();
  settings.endGroup();
}

void VXFImageResample::initializeSettingsWidget()
{
  QVBoxLayout* layout = initializeSettingsFrame();
  m_SettingsForm = new VXFImageResampleFilterWidget(this, layout->parentWidget());
  addRepresentationTypeCombo(m_SettingsForm->representationTypeLayout(), nullptr, RepresentationTypeNames());
  setShouldAddRep(m_ShouldAddRep);
  layout->addWidget(m_SettingsForm);
  layout->addStretch(1);
}
