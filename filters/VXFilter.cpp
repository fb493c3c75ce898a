#include "filters/VXFilter.h"

#include "data_views/ZRVtkModuleUtils.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "platform/QtZRSettings.h"
#include "platform/QtZRUtils.h"
#include "platform/ZRComboBox.h"
#include "platform/ZRIconPushButton.h"
#include "platform/ZRSettingsKeys.h"
#include "platform/ZRStyle.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXVisualizationWidget.h"

#include <vtkAlgorithm.h>
#include <vtkCellData.h>
#include <vtkDataSet.h>
#include <vtkPointData.h>

#include <nlohmann/json.hpp>

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QScrollArea>
#include <QVBoxLayout>

namespace
{
constexpr const char* k_CoreObjectName = "core_object_name";
constexpr const char* k_CoreObjectNameSuffix = "core_object_name_suffix";
constexpr const char* k_RepTypeToAdd = "filter_rep_type_to_add";
constexpr const char* k_ShouldAddRep = "filter_should_add_rep";
const QString k_FiltersPage = QStringLiteral("/html/Visualization/ApplyingFilters.html");
} // namespace

VXFilter::VXFilter(QObject* parent)
    : VXCoreObject(parent)
    , m_HelpUrl(QtZRUtils::GetHelpRootDir() + QtZRUtils::GetDocumentationFilePrefix() + k_FiltersPage)
{
}

VXFilter::~VXFilter() = default;

void VXFilter::write(nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& /*viewIndexes*/) const
{
  if (!json.is_object())
  {
    json = nlohmann::json::object();
  }
  json[k_CoreObjectName] = baseName().toStdString();
  json[k_CoreObjectNameSuffix] = getNameSuffixCounter();
  json[k_RepTypeToAdd] = static_cast<int>(m_RepType);
  json[k_ShouldAddRep] = m_ShouldAddRep;
}

void VXFilter::read(const nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& /*viewIndexes*/)
{
  if (!json.is_object())
  {
    return;
  }
  if (json.contains(k_CoreObjectName))
  {
    setBaseName(QString::fromStdString(json.at(k_CoreObjectName).get<std::string>()));
  }
  if (json.contains(k_CoreObjectNameSuffix))
  {
    setNameSuffixCounter(json.at(k_CoreObjectNameSuffix).get<int>());
  }
  if (json.contains(k_RepTypeToAdd))
  {
    m_RepType = static_cast<VXRepresentation::Type>(json.at(k_RepTypeToAdd).get<int>());
  }
  if (json.contains(k_ShouldAddRep))
  {
    setShouldAddRep(json.at(k_ShouldAddRep).get<bool>());
  }
}

QIcon VXFilter::getIcon() const
{
  return ZRStyle::generateThemeIconFromName(typeName());
}

void VXFilter::copyActiveSettings()
{
  nlohmann::json json = nlohmann::json::object();
  write(json, {});
  QGuiApplication::clipboard()->setText(QString::fromStdString(json.dump()));
}

void VXFilter::pasteToActiveSettings()
{
  const std::string text = QGuiApplication::clipboard()->text().toStdString();
  const nlohmann::json json = nlohmann::json::parse(text, nullptr, false);
  if (json.is_discarded() || !json.is_object())
  {
    return;
  }
  read(json, {});
}

void VXFilter::openSettingsGroup(QtZRSettings& settings) const
{
  settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
  settings.beginGroup(ZR::SettingsKeys::k_FilterSettings);
  settings.beginGroup(typeName());
}

void VXFilter::writeSettings()
{
  QtZRSettings settings;
  openSettingsGroup(settings);
  settings.setValue(QString::fromLatin1(k_RepTypeToAdd), static_cast<int>(m_RepType));
  settings.endGroup();
  settings.endGroup();
  settings.endGroup();
}

void VXFilter::readSettings()
{
  QtZRSettings settings;
  openSettingsGroup(settings);
  if (settings.contains(QString::fromLatin1(k_RepTypeToAdd)))
  {
    m_RepType =
        static_cast<VXRepresentation::Type>(settings.value(QString::fromLatin1(k_RepTypeToAdd)).toInt());
  }
  settings.endGroup();
  settings.endGroup();
  settings.endGroup();
}

void VXFilter::setInputPort(vtkAlgorithmOutput* port)
{
  m_InputPort = port;
}

vtkAlgorithmOutput* VXFilter::inputPort() const
{
  return m_InputPort;
}

void VXFilter::openHelpLink()
{
  QDesktopServices::openUrl(m_HelpUrl);
}

void VXFilter::setShouldAddRep(bool shouldAdd)
{
  m_ShouldAddRep = shouldAdd;
  if (m_RepTypeCombo)
  {
    m_RepTypeCombo->setVisible(shouldAdd);
  }
  if (m_RepTypeLabel)
  {
    m_RepTypeLabel->setVisible(shouldAdd);
  }
}

void VXFilter::setRepTypeToAdd(const QString& repTypeString)
{
  const auto found = VXRepresentation::k_RepresentationStringToType.constFind(repTypeString);
  if (found != VXRepresentation::k_RepresentationStringToType.constEnd())
  {
    m_RepType = found.value();
    if (m_Pipeline != nullptr && !m_ShouldAddRep)
    {
      Q_EMIT m_Pipeline->sendPopupMessage(
          QStringLiteral("Representation already added"),
          QStringLiteral("A representation has already been added for viewing this filter. To add another "
                         "representation for viewing this filter right click the filter item and select the "
                         "representation type you'd like to add."));
    }
    return;
  }
  if (m_Pipeline != nullptr)
  {
    Q_EMIT m_Pipeline->sendOutputMessage(
        QStringLiteral(
            "%1 is not a valid representation type. Using %2 as the initial representation type to "
            "add for viewing the filtered results.")
            .arg(repTypeString, VXRepresentation::k_RepresentationTypeToString.value(m_RepType)));
  }
}

void VXFilter::addViewWidgetCopy(VXAbstractViewWidget* /*sourceViewWidget*/,
                                 VXAbstractViewWidget* /*splitViewWidget*/)
{
  // A filter has one tool, not one per view.
}

void VXFilter::updateDownstreamGridAxesBounds()
{
  updateDownstreamGridAxesBounds(this);
}

void VXFilter::updateDownstreamGridAxesBounds(QObject* object)
{
  if (object == nullptr)
  {
    return;
  }
  for (QObject* child : object->children())
  {
    if (auto* representation = qobject_cast<VXRepresentation*>(child))
    {
      representation->updateGridAxesBounds();
    }
    updateDownstreamGridAxesBounds(child);
  }
}

VXDataSource* VXFilter::parentDataSource() const
{
  for (QObject* ancestor = parent(); ancestor != nullptr; ancestor = ancestor->parent())
  {
    if (auto* dataSource = qobject_cast<VXDataSource*>(ancestor))
    {
      return dataSource;
    }
  }
  return nullptr;
}

void VXFilter::addRepresentationTypeCombo(QVBoxLayout* layout, QHBoxLayout* row, const QList<QString>& types)
{
  QWidget* parentWidget = layout != nullptr ? layout->parentWidget() : nullptr;
  m_RepTypeLabel = new QLabel(QStringLiteral("Add Representation:"), parentWidget);
  m_RepTypeCombo = new ZRComboBox(parentWidget);
  m_RepTypeCombo->setObjectName(QStringLiteral("m_RepTypeCombo"));
  m_RepTypeCombo->addItems(types);
  m_RepTypeCombo->setToolTip(QStringLiteral(
      "The representation type to add for viewing the filtered results IF there are none already."));
  m_RepTypeCombo->setCurrentText(VXRepresentation::k_RepresentationTypeToString.value(m_RepType));
  m_RepTypeCombo->setEnabled(m_ShouldAddRep);
  connect(m_RepTypeCombo.data(), &QComboBox::currentTextChanged, this, &VXFilter::setRepTypeToAdd);
  if (row != nullptr)
  {
    row->addWidget(m_RepTypeLabel);
    row->addWidget(m_RepTypeCombo, 1);
  }
  else if (layout != nullptr)
  {
    layout->addWidget(m_RepTypeLabel);
    layout->addWidget(m_RepTypeCombo);
  }
}

bool VXFilter::shouldSaveAsDefaultSettings()
{
  const QMessageBox::StandardButton answer = QMessageBox::question(
      nullptr, QStringLiteral("Save Default %1 Settings").arg(humanTypeName()),
      QStringLiteral("Do you want to save the current setting values as the default values for all %1 types? "
                     "(Data specific settings will not be saved)")
          .arg(humanTypeName()));
  return answer == QMessageBox::Yes;
}

vtkDataObject* VXFilter::inputDataObject() const
{
  if (m_InputPort == nullptr || m_InputPort->GetProducer() == nullptr)
  {
    return nullptr;
  }
  return m_InputPort->GetProducer()->GetOutputDataObject(m_InputPort->GetIndex());
}

std::array<double, 6> VXFilter::inputBounds() const
{
  std::array<double, 6> bounds = {0.0, 0.0, 0.0, 0.0, 0.0, 0.0};
  if (m_InputPort != nullptr && m_InputPort->GetProducer() != nullptr)
  {
    m_InputPort->GetProducer()->Update(m_InputPort->GetIndex());
  }
  auto* dataSet = vtkDataSet::SafeDownCast(inputDataObject());
  if (dataSet != nullptr && dataSet->GetNumberOfPoints() > 0)
  {
    dataSet->GetBounds(bounds.data());
  }
  return bounds;
}

bool VXFilter::inputHasArrays() const
{
  auto* dataSet = vtkDataSet::SafeDownCast(inputDataObject());
  if (dataSet == nullptr)
  {
    return false;
  }
  return dataSet->GetPointData()->GetNumberOfArrays() > 0 || dataSet->GetCellData()->GetNumberOfArrays() > 0;
}

bool VXFilter::checkInputHasArrays()
{
  if (inputHasArrays())
  {
    return true;
  }
  if (m_Pipeline != nullptr)
  {
    Q_EMIT m_Pipeline->sendOutputMessage(
        QStringLiteral("%1: the input has no data arrays to filter by, so Apply does nothing.").arg(name()));
  }
  return false;
}

void VXFilter::addRepresentationIfNeeded()
{
  if (m_Pipeline != nullptr && m_ShouldAddRep)
  {
    m_Pipeline->addRepresentation(this, m_RepType);
  }
}

QVBoxLayout* VXFilter::initializeSettingsFrame()
{
  auto* helpButton = ZRVtkModule::utils::GenerateHelpButton(
      nullptr, QStringLiteral("Open the user manual help documentation for %1 types").arg(humanTypeName()));
  connect(helpButton, &QPushButton::clicked, this, &VXFilter::openHelpLink);
  auto* saveButton = ZRVtkModule::utils::GenerateSettingsToolButton(
      nullptr, QStringLiteral("Save the current settings as the default settings for all %1 types")
                   .arg(humanTypeName()));
  saveButton->setObjectName(QStringLiteral("m_SaveDefaultsButton"));
  connect(saveButton, &QPushButton::clicked, this,
          [this]()
          {
            if (shouldSaveAsDefaultSettings())
            {
              writeSettings();
            }
          });
  addSettingsWidgetTitle(helpButton, saveButton);
  QWidget* content = m_SettingsScrollArea->widget();
  return qobject_cast<QVBoxLayout*>(content->layout());
}

vtkRenderWindowInteractor* VXFilter::activeInteractor() const
{
  VXAbstractViewWidget* view = activeView();
  VXVisualizationWidget* window = view != nullptr ? view->getVisualizationWidget() : nullptr;
  return window != nullptr ? window->getRenderWindowInteractor() : nullptr;
}

QList<QString> VXFilter::RepresentationTypeNames()
{
  QList<QString> names;
  for (auto it = VXRepresentation::k_RepresentationTypeToString.cbegin();
       it != VXRepresentation::k_RepresentationTypeToString.cend(); ++it)
  {
    if (it.key() != VXRepresentation::None && VXRepresentation::IsRegistered(it.key()))
    {
      names.append(it.value());
    }
  }
  return names;
}
