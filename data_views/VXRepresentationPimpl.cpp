#include "data_views/VXRepresentationPimpl.h"

#include "data_views/VXRepresentation.h"
#include "data_views/VXStateReading.h"
#include "data_views/ZRVtkLibDocumentation.h"
#include "platform/QtZRSettings.h"
#include "platform/QtZRUtils.h"
#include "platform/ZRSettingsKeys.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXVisualizationWidget.h"

#include <nlohmann/json.hpp>

#include <QClipboard>
#include <QGuiApplication>

#include "platform/ZRPreferences.h"

#include <vtkActor.h>
#include <vtkCallbackCommand.h>
#include <vtkCommand.h>
#include <vtkNew.h>
#include <vtkProperty2D.h>
#include <vtkRenderWindowInteractor.h>
#include <vtkScalarBarActor.h>
#include <vtkScalarBarRepresentation.h>
#include <vtkScalarBarWidget.h>
#include <vtkTextProperty.h>

using ZRVtkModule::state::readIfPresent;
using ZRVtkModule::state::readSetting;

namespace
{
constexpr const char* k_DetachColorSettings = "detach_color_settings";
constexpr const char* k_DataGridVisible = "data_grid_visible";
constexpr const char* k_SpacingX = "global_grid_axes_spacingx";
constexpr const char* k_SpacingY = "global_grid_axes_spacingy";
constexpr const char* k_SpacingZ = "global_grid_axes_spacingz";
constexpr const char* k_ShowGridLines = "global_grid_axes_show_grid_lines";
constexpr const char* k_SplitId = "rep_split_id";
constexpr const char* k_Linked = "rep_linked";
constexpr const char* k_LinkPhysicalUnits = "link_physical_units";
constexpr const char* k_RepresentationVisible = "representation_visible";
constexpr const char* k_UseDecimation = "use_decimation_during_interactions";

} // namespace

VXRepresentationPimpl::VXRepresentationPimpl(VXRepresentation* owner, VXAbstractViewWidget* view)
    : QObject(owner)
    , m_View(view)
    , m_SplitId(view != nullptr ? view->getSplitId() : 1)
    , m_Owner(owner)
    , m_HelpUrl(QtZRUtils::GetHelpRootDir() + QtZRUtils::GetDocumentationFilePrefix() +
                ZRVtkLib::Documentation::k_RepresentationsPage)
{
  if (view == nullptr)
  {
    return;
  }
  connect(view, &VXAbstractViewWidget::closingView, owner,
          [owner, view]() { owner->removeModuleInstance(view); });
  if (VXVisualizationWidget* window = view->getVisualizationWidget())
  {
    connect(window, &VXVisualizationWidget::showAll, this, &VXRepresentationPimpl::show);
    connect(window, &VXVisualizationWidget::hideAll, this, &VXRepresentationPimpl::hide);
  }
  setupInteractorObserver();
}

VXRepresentationPimpl::~VXRepresentationPimpl()
{
  removeInteractorObserver();
  if (m_SettingsWidget)
  {
    m_SettingsWidget->setParent(nullptr);
    m_SettingsWidget->deleteLater();
  }
}

void VXRepresentationPimpl::removeInteractorObserver()
{
  if (m_Interactor != nullptr)
  {
    m_Interactor->RemoveObserver(m_PressObserverTag);
    m_Interactor->RemoveObserver(m_EndInteractionObserverTag);
  }
  m_PressObserverTag = 0;
  m_EndInteractionObserverTag = 0;
}

void VXRepresentationPimpl::setupInteractorObserver()
{
  removeInteractorObserver();
  VXVisualizationWidget* window = visualizationWidget();
  m_Interactor = window != nullptr ? window->getRenderWindowInteractor() : nullptr;
  if (m_Interactor == nullptr)
  {
    return;
  }
  vtkNew<vtkCallbackCommand> press;
  press->SetClientData(this);
  press->SetCallback(
      [](vtkObject*, unsigned long, void* clientData, void*)
      {
        auto* self = static_cast<VXRepresentationPimpl*>(clientData);
        if (self->m_UseDecimationOnInteraction && !ZRPreferences::Instance()->getDisableDecimation())
        {
          self->trySetDecimatedDataSet();
        }
      });
  vtkNew<vtkCallbackCommand> end;
  end->SetClientData(this);
  end->SetCallback([](vtkObject*, unsigned long, void* clientData, void*)
                   { static_cast<VXRepresentationPimpl*>(clientData)->trySetOriginalDataSet(); });
  // Ahead of the widgets, which may stop a press from reaching observers after them.
  constexpr float k_BeforeWidgets = 1.0f;
  m_PressObserverTag = m_Interactor->AddObserver(vtkCommand::LeftButtonPressEvent, press, k_BeforeWidgets);
  m_EndInteractionObserverTag =
      m_Interactor->AddObserver(vtkCommand::EndInteractionEvent, end, k_BeforeWidgets);
}

void VXRepresentationPimpl::setUseDecimationOnInteraction(bool use)
{
  m_UseDecimationOnInteraction = use;
  // The first enabling pays for the decimation; later toggles reuse it.
  if (use && m_DecimationStale)
  {
    decimateGeometry();
  }
}

VXAbstractViewWidget* VXRepresentationPimpl::view() const
{
  return m_View;
}

VXVisualizationWidget* VXRepresentationPimpl::visualizationWidget() const
{
  return m_View ? m_View->getVisualizationWidget() : nullptr;
}

void VXRepresentationPimpl::requestRender() const
{
  if (VXVisualizationWidget* window = visualizationWidget())
  {
    window->render();
  }
}

std::array<double, 6> VXRepresentationPimpl::getModuleBounds() const
{
  std::array<double, 6> bounds = {0.0, -1.0, 0.0, -1.0, 0.0, -1.0};
  if (vtkActor* actor = getActor())
  {
    const double* actorBounds = actor->GetBounds();
    std::copy(actorBounds, actorBounds + 6, bounds.begin());
  }
  return bounds;
}

void VXRepresentationPimpl::highlightInRenderWindow(bool highlight)
{
  VXVisualizationWidget* window = visualizationWidget();
  vtkActor* actor = getActor();
  if (window == nullptr || actor == nullptr || !isVisible())
  {
    return;
  }
  window->removeOutline(actor);
  if (highlight)
  {
    window->addOutline(actor);
  }
  window->render();
}

void VXRepresentationPimpl::copySettings(const VXRepresentationPimpl* other)
{
  if (other == nullptr)
  {
    return;
  }
  m_DataGridVisible = other->m_DataGridVisible;
  m_LinkPhysicalUnits = other->m_LinkPhysicalUnits;
  m_GridSpacing = other->m_GridSpacing;
  m_ShowGridLines = other->m_ShowGridLines;
  m_UseDecimationOnInteraction = other->m_UseDecimationOnInteraction;
}

void VXRepresentationPimpl::copySettings()
{
  nlohmann::json json = nlohmann::json::object();
  write(json);
  QGuiApplication::clipboard()->setText(QString::fromStdString(json.dump(2)));
}

void VXRepresentationPimpl::pasteSettings()
{
  // Malformed text or a key of the wrong type raises the JSON library's error for the caller to
  // report; the settings are then as they were.
  const nlohmann::json json = nlohmann::json::parse(QGuiApplication::clipboard()->text().toStdString());
  nlohmann::json before = nlohmann::json::object();
  write(before);
  try
  {
    read(json);
  }
  catch (const nlohmann::json::exception&)
  {
    read(before);
    throw;
  }
  applySettings();
  if (inputPort() != nullptr)
  {
    decimateGeometry();
  }
  if (!m_SettingsWidget)
  {
    initializeSettingsWidget();
  }
  updateSettingsControls();
  requestRender();
}

void VXRepresentationPimpl::writeSettings(QtZRSettings& settings) const
{
  settings.setValue(QString::fromLatin1(k_DetachColorSettings), m_DetachColorSettings);
  settings.setValue(QString::fromLatin1(k_DataGridVisible), m_DataGridVisible);
  settings.setValue(QString::fromLatin1(k_SpacingX), m_GridSpacing[0]);
  settings.setValue(QString::fromLatin1(k_SpacingY), m_GridSpacing[1]);
  settings.setValue(QString::fromLatin1(k_SpacingZ), m_GridSpacing[2]);
  settings.setValue(QString::fromLatin1(k_ShowGridLines), m_ShowGridLines);
  settings.setValue(QString::fromLatin1(k_LinkPhysicalUnits), m_LinkPhysicalUnits);
  settings.setValue(QString::fromLatin1(k_UseDecimation), m_UseDecimationOnInteraction);
}

void VXRepresentationPimpl::readSettings(QtZRSettings& settings)
{
  readSetting(settings, k_DetachColorSettings, m_DetachColorSettings);
  readSetting(settings, k_DataGridVisible, m_DataGridVisible);
  if (settings.contains(QString::fromLatin1(k_SpacingX)) &&
      settings.contains(QString::fromLatin1(k_SpacingY)) &&
      settings.contains(QString::fromLatin1(k_SpacingZ)))
  {
    readSetting(settings, k_SpacingX, m_GridSpacing[0]);
    readSetting(settings, k_SpacingY, m_GridSpacing[1]);
    readSetting(settings, k_SpacingZ, m_GridSpacing[2]);
  }
  readSetting(settings, k_ShowGridLines, m_ShowGridLines);
  readSetting(settings, k_LinkPhysicalUnits, m_LinkPhysicalUnits);
  readSetting(settings, k_UseDecimation, m_UseDecimationOnInteraction);
}

void VXRepresentationPimpl::readDefaultSettings()
{
  if (m_Owner == nullptr)
  {
    return;
  }
  QtZRSettings settings;
  settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
  settings.beginGroup(ZR::SettingsKeys::k_RepresentationSettings);
  settings.beginGroup(m_Owner->typeName());
  readSettings(settings);
}

void VXRepresentationPimpl::write(nlohmann::json& json) const
{
  json[k_DetachColorSettings] = m_DetachColorSettings;
  json[k_DataGridVisible] = m_DataGridVisible;
  json[k_SpacingX] = m_GridSpacing[0];
  json[k_SpacingY] = m_GridSpacing[1];
  json[k_SpacingZ] = m_GridSpacing[2];
  json[k_ShowGridLines] = m_ShowGridLines;
  json[k_SplitId] = m_SplitId;
  json[k_Linked] = m_Linked;
  json[k_LinkPhysicalUnits] = m_LinkPhysicalUnits;
  json[k_RepresentationVisible] = isVisible();
  json[k_UseDecimation] = m_UseDecimationOnInteraction;
}

void VXRepresentationPimpl::read(const nlohmann::json& json)
{
  if (!json.is_object())
  {
    return;
  }
  readIfPresent(json, k_DetachColorSettings, m_DetachColorSettings);
  readIfPresent(json, k_DataGridVisible, m_DataGridVisible);
  if (json.contains(k_SpacingX) && json.contains(k_SpacingY) && json.contains(k_SpacingZ))
  {
    m_GridSpacing = {json.at(k_SpacingX).get<double>(), json.at(k_SpacingY).get<double>(),
                     json.at(k_SpacingZ).get<double>()};
  }
  readIfPresent(json, k_ShowGridLines, m_ShowGridLines);
  if (json.contains(k_SplitId))
  {
    // Older records stored the id as a boolean or a floating-point number.
    const nlohmann::json& id = json.at(k_SplitId);
    m_SplitId = id.is_boolean() ? static_cast<int>(id.get<bool>()) : static_cast<int>(id.get<double>());
  }
  readIfPresent(json, k_Linked, m_Linked);
  readIfPresent(json, k_LinkPhysicalUnits, m_LinkPhysicalUnits);
  if (json.contains(k_RepresentationVisible))
  {
    setVisibility(json.at(k_RepresentationVisible).get<bool>());
  }
  readIfPresent(json, k_UseDecimation, m_UseDecimationOnInteraction);
}

QString VXRepresentationPimpl::pathName() const
{
  if (m_Owner == nullptr)
  {
    return QStringLiteral("Split View %1").arg(m_SplitId);
  }
  return m_Owner->pathName() + m_Owner->getPathDelimeter() + QStringLiteral("Split View ") +
         QString::number(m_SplitId);
}

void VXRepresentationPimpl::ConfigureScalarBar(vtkScalarBarWidget* widget)
{
  vtkNew<vtkScalarBarRepresentation> representation;
  representation->SetAutoOrient(false);
  representation->SetEnforceNormalizedViewportBounds(true);
  widget->SetRepresentation(representation);
  vtkScalarBarActor* bar = representation->GetScalarBarActor();
  bar->SetNumberOfLabels(5);
  bar->SetTextPositionToSucceedScalarBar();
  bar->SetDrawNanAnnotation(1);
  bar->SetBarRatio(0.15);
  bar->SetUnconstrainedFontSize(true);
  bar->SetTitleRatio(0.4);
  for (vtkTextProperty* text : {bar->GetLabelTextProperty(), bar->GetTitleTextProperty()})
  {
    text->SetFontSize(15);
    text->SetJustificationToCentered();
  }
  bar->GetFrameProperty()->SetColor(0.5, 0.5, 0.5);
}
