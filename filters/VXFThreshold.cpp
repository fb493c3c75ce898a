#include "filters/VXFThreshold.h"

#include "filters/VXFThresholdFilterWidget.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataSet.h>
#include <vtkDataSetAttributes.h>
#include <vtkPointData.h>
#include <vtkThreshold.h>
#include <vtkUnstructuredGrid.h>

#include <nlohmann/json.hpp>

#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

#include <iostream>

namespace
{
const QString k_ThresholdName = QStringLiteral("Threshold Filter");

constexpr const char* k_ActiveArrayIndex = "threshold_active_array_index";
constexpr const char* k_DataArrayInfo = "threshold_data_array_info";
constexpr const char* k_UserRange0 = "threshold_info_user_range_0";
constexpr const char* k_UserRange1 = "threshold_info_user_range_1";

ZR::ArrayThresholdRange thresholdRange(const VXFThreshold::DataArrayNameInfo& info)
{
  return {info.displayName, info.userRange[0], info.userRange[1]};
}
} // namespace

VXFThreshold::VXFThreshold(QObject* parent)
    : VXFilter(parent)
    , m_Threshold(vtkSmartPointer<vtkThreshold>::New())
{
  m_BaseName = k_ThresholdName;
  m_DefaultName = k_ThresholdName;
}

VXFThreshold::~VXFThreshold() = default;

QString VXFThreshold::humanTypeName() const
{
  return k_ThresholdName;
}

QString VXFThreshold::typeName() const
{
  return QStringLiteral("VXFThreshold");
}

vtkAlgorithmOutput* VXFThreshold::outputPort() const
{
  return m_Threshold->GetOutputPort(0);
}

void VXFThreshold::setInputPort(vtkAlgorithmOutput* port)
{
  VXFilter::setInputPort(port);
  m_Threshold->SetInputConnection(port);
  initializeArrayNameInfos();
}

void VXFThreshold::setupFilter()
{
  readSettings();
}

void VXFThreshold::appendArrayInfos(vtkFieldData* fieldData)
{
  if (fieldData == nullptr)
  {
    return;
  }
  for (int index = 0; index < fieldData->GetNumberOfArrays(); ++index)
  {
    vtkDataArray* array = fieldData->GetArray(index);
    if (array == nullptr)
    {
      continue; // not a numeric array: nothing to threshold by
    }
    const QString name = array->GetName() != nullptr ? QString::fromUtf8(array->GetName()) : QString();
    const int components = array->GetNumberOfComponents();
    for (int component = 0; component < components; ++component)
    {
      DataArrayNameInfo info;
      info.dataSetName = name;
      info.displayName = components > 1 ? QStringLiteral("%1 (Comp %2)").arg(name).arg(component) : name;
      info.numberOfComponents = components;
      info.component = component;
      array->GetRange(info.dataRange.data(), component);
      info.userRange = info.dataRange;
      m_ArrayInfos.push_back(info);
    }
  }
}

void VXFThreshold::initializeArrayNameInfos()
{
  m_ArrayInfos.clear();
  if (m_InputPort != nullptr && m_InputPort->GetProducer() != nullptr)
  {
    m_InputPort->GetProducer()->Update(m_InputPort->GetIndex());
  }
  auto* dataSet = vtkDataSet::SafeDownCast(inputDataObject());
  if (dataSet == nullptr)
  {
    return;
  }
  // Point arrays always come first.
  appendArrayInfos(dataSet->GetPointData());
  appendArrayInfos(dataSet->GetCellData());
}

void VXFThreshold::setActiveArrayInfoIndex(size_t index)
{
  if (index < m_ArrayInfos.size())
  {
    m_ActiveIndex = index;
    return;
  }
  std::cout << "VXFThreshold::setActiveArrayInfoIndex(): Index Out of bounds" << std::endl;
  m_ActiveIndex = 0;
}

VXFThreshold::DataArrayNameInfo VXFThreshold::getActiveArrayInfo() const
{
  if (m_ActiveIndex < m_ArrayInfos.size())
  {
    return m_ArrayInfos[m_ActiveIndex];
  }
  return {};
}

void VXFThreshold::updateActiveArrayInfo(DataArrayNameInfo& info)
{
  if (m_ActiveIndex < m_ArrayInfos.size())
  {
    m_ArrayInfos[m_ActiveIndex] = info;
  }
}

void VXFThreshold::applyFilter()
{
  if (!checkInputHasArrays())
  {
    return;
  }
  if (m_ArrayInfos.empty())
  {
    if (m_Pipeline != nullptr)
    {
      Q_EMIT m_Pipeline->sendOutputMessage(
          QStringLiteral("%1: the input has no numeric data arrays to filter by, so Apply does nothing.")
              .arg(name()));
    }
    return;
  }
  const DataArrayNameInfo info = getActiveArrayInfo();
  m_Threshold->SetLowerThreshold(info.userRange[0]);
  m_Threshold->SetUpperThreshold(info.userRange[1]);
  m_Threshold->SetThresholdFunction(vtkThreshold::THRESHOLD_BETWEEN);
  m_Threshold->SetComponentMode(VTK_COMPONENT_MODE_USE_SELECTED);
  m_Threshold->SetSelectedComponent(info.component);
  m_Threshold->SetInputArrayToProcess(0, 0, 0, vtkDataObject::FIELD_ASSOCIATION_POINTS_THEN_CELLS,
                                      info.dataSetName.toUtf8().constData());
  m_Threshold->Update();
  addRepresentationIfNeeded();
  updateDownstreamGridAxesBounds();
  Q_EMIT requestRenderAll();
}

void VXFThreshold::receivePipelineOutputReloaded()
{
  // User ranges survive a reload for the entries that still stand for the same component.
  const std::vector<DataArrayNameInfo> old = m_ArrayInfos;
  initializeArrayNameInfos();
  for (const DataArrayNameInfo& oldInfo : old)
  {
    for (DataArrayNameInfo& newInfo : m_ArrayInfos)
    {
      if (newInfo == oldInfo)
      {
        newInfo.userRange = oldInfo.userRange;
        break;
      }
    }
  }
  if (m_ActiveIndex >= m_ArrayInfos.size())
  {
    m_ActiveIndex = 0;
  }
  if (m_SettingsForm)
  {
    m_SettingsForm->updateScalarArrays();
  }
  applyFilter();
}

void VXFThreshold::write(nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) const
{
  VXFilter::write(json, viewIndexes);
  json[k_ActiveArrayIndex] = m_ActiveIndex;
  nlohmann::json infos = nlohmann::json::object();
  for (const DataArrayNameInfo& info : m_ArrayInfos)
  {
    // The components of one array share one key: the last one written stands for all.
    infos[info.dataSetName.toStdString()] = {{k_UserRange0, info.userRange[0]},
                                             {k_UserRange1, info.userRange[1]}};
  }
  json[k_DataArrayInfo] = infos;
}

void VXFThreshold::read(const nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes)
{
  VXFilter::read(json, viewIndexes);
  if (!json.is_object())
  {
    return;
  }
  if (json.contains(k_ActiveArrayIndex))
  {
    setActiveArrayInfoIndex(json.at(k_ActiveArrayIndex).get<size_t>());
  }
  if (json.contains(k_DataArrayInfo))
  {
    const nlohmann::json& infos = json.at(k_DataArrayInfo);
    for (DataArrayNameInfo& info : m_ArrayInfos)
    {
      const std::string key = info.dataSetName.toStdString();
      if (!infos.contains(key))
      {
        continue;
      }
      const nlohmann::json& range = infos.at(key);
      if (range.contains(k_UserRange0))
      {
        info.userRange[0] = range.at(k_UserRange0).get<double>();
      }
      if (range.contains(k_UserRange1))
      {
        info.userRange[1] = range.at(k_UserRange1).get<double>();
      }
    }
  }
  if (m_SettingsForm)
  {
    m_SettingsForm->updateScalarArrays();
  }
  applyFilter();
}

void VXFThreshold::createKESTRIXFilterFromVXFilter()
{
  if (m_Pipeline == nullptr)
  {
    return;
  }
  VXDataSource* dataSource = parentDataSource();
  const zr::core::DataPath path =
      dataSource != nullptr ? dataSource->importedDataPath() : zr::core::DataPath();
  if (path.empty())
  {
    Q_EMIT m_Pipeline->sendOutputMessage(QStringLiteral(
        "Cannot create Multi-Threshold Objects filter from VXFThreshold filter because no parent "
        "geometry could be found."));
    return;
  }
  const QString multiComponentText = QStringLiteral(
      "Creating Multi-Threshold Objects filter from VXFThreshold filter currently does not support multi "
      "component arrays.");
  auto refuseMultiComponent = [this, &multiComponentText]()
  {
    showWarning(QStringLiteral("Cannot Create Multi-Threshold Objects Filter"), multiComponentText);
    Q_EMIT m_Pipeline->sendOutputMessage(multiComponentText);
  };

  std::vector<ZR::ArrayThresholdRange> ranges;
  bool multiComponent = false;
  for (QObject* ancestor = parent(); ancestor != nullptr; ancestor = ancestor->parent())
  {
    if (auto* threshold = qobject_cast<VXFThreshold*>(ancestor))
    {
      const DataArrayNameInfo info = threshold->getActiveArrayInfo();
      multiComponent = multiComponent || info.numberOfComponents > 1;
      ranges.push_back(thresholdRange(info));
    }
  }
  const DataArrayNameInfo own = getActiveArrayInfo();
  if (own.numberOfComponents > 1)
  {
    refuseMultiComponent();
    return;
  }
  ranges.push_back(thresholdRange(own));
  for (QObject* child : children())
  {
    if (auto* threshold = qobject_cast<VXFThreshold*>(child))
    {
      ranges.push_back(thresholdRange(threshold->getActiveArrayInfo()));
    }
  }
  if (ranges.size() > 1)
  {
    const RelativesAnswer answer = askIncludeRelatives(
        QStringLiteral("Create Multi-Threshold Objects Filter"),
        QStringLiteral("This threshold filter has one or more parent/child threshold filters. Would you "
                       "like to include all parent/child filters when creating your Multi-Threshold "
                       "Objects filter, or just use this one?"));
    if (answer == RelativesAnswer::JustThisFilter)
    {
      ranges = {thresholdRange(own)};
    }
    else if (answer == RelativesAnswer::AllFilters)
    {
      if (multiComponent)
      {
        refuseMultiComponent();
        return;
      }
    }
    else
    {
      return;
    }
  }
  Q_EMIT m_Pipeline->createMultiThresholdObjectsFilter(path, ranges);
}

VXFThreshold::RelativesAnswer VXFThreshold::askIncludeRelatives(const QString& title, const QString& text)
{
  QMessageBox box(QMessageBox::Warning, title, text);
  QPushButton* justThis = box.addButton(QStringLiteral("Just This Filter"), QMessageBox::AcceptRole);
  QPushButton* all = box.addButton(QStringLiteral("All Filters"), QMessageBox::AcceptRole);
  box.addButton(QStringLiteral("Cancel"), QMessageBox::RejectRole);
  box.exec();
  if (box.clickedButton() == justThis)
  {
    return RelativesAnswer::JustThisFilter;
  }
  return box.clickedButton() == all ? RelativesAnswer::AllFilters : RelativesAnswer::Cancel;
}

void VXFThreshold::showWarning(const QString& title, const QString& text)
{
  QMessageBox box(QMessageBox::Warning, title, text, QMessageBox::Ok);
  box.exec();
}

void VXFThreshold::initializeSettingsWidget()
{
  QVBoxLayout* layout = initializeSettingsFrame();
  m_SettingsForm = new VXFThresholdFilterWidget(this, layout->parentWidget());
  addRepresentationTypeCombo(m_SettingsForm->representationTypeLayout(), nullptr, RepresentationTypeNames());
  setShouldAddRep(m_ShouldAddRep);
  layout->addWidget(m_SettingsForm);
  layout->addStretch(1);
}
