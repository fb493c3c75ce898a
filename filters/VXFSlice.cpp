#include "filters/VXFSlice.h"

#include "filters/VXFSliceFilterWidget.h"
#include "filters/VXFilterTriples.h"
#include "filters/VXPlane.h"
#include "platform/QtZRSettings.h"
#include "views/VXAbstractViewWidget.h"

#include <vtkCutter.h>
#include <vtkPlane.h>
#include <vtkPolyData.h>

#include <nlohmann/json.hpp>

#include <QVBoxLayout>

using namespace VXFilterTriples;

namespace
{
const QString k_SliceName = QStringLiteral("Slice Filter");

constexpr const char* k_ShowSliceTool = "show_slice_tool";
} // namespace

VXFSlice::VXFSlice(QObject* parent)
    : VXFilter(parent)
    , m_Cutter(vtkSmartPointer<vtkCutter>::New())
{
  m_BaseName = k_SliceName;
  m_DefaultName = k_SliceName;
}

VXFSlice::~VXFSlice() = default;

QString VXFSlice::humanTypeName() const
{
  return k_SliceName;
}

QString VXFSlice::typeName() const
{
  return QStringLiteral("VXFSlice");
}

vtkAlgorithmOutput* VXFSlice::outputPort() const
{
  return m_Cutter->GetOutputPort(0);
}

void VXFSlice::setInputPort(vtkAlgorithmOutput* port)
{
  VXFilter::setInputPort(port);
  m_Cutter->SetInputConnection(port);
}

vtkRenderWindowInteractor* VXFSlice::interactor() const
{
  return activeInteractor();
}

void VXFSlice::setupFilter()
{
  m_Plane = new VXPlane(bounds(), interactor(), this);
  readSettings();
  if (m_ShowPlaneTool)
  {
    m_Plane->enable();
  }
}

void VXFSlice::applyFilter()
{
  if (m_Plane == nullptr)
  {
    return;
  }
  auto plane = vtkSmartPointer<vtkPlane>::New();
  const std::array<double, 3> normal = m_Plane->getNormal();
  const std::array<double, 3> origin = m_Plane->getOrigin();
  plane->SetNormal(normal.data());
  plane->SetOrigin(origin.data());
  m_Cutter->SetCutFunction(plane);
  m_Cutter->Update();
  updateDownstreamGridAxesBounds();
  Q_EMIT requestRenderAll();
  addRepresentationIfNeeded();
}

void VXFSlice::receivePipelineOutputReloaded()
{
  if (m_Plane != nullptr)
  {
    m_Plane->updateBounds(bounds());
  }
  applyFilter();
}

void VXFSlice::activeViewChanged(VXAbstractViewWidget* previousActiveView,
                                 VXAbstractViewWidget* currentActiveView)
{
  VXFilter::activeViewChanged(previousActiveView, currentActiveView);
  if (currentActiveView == nullptr || currentActiveView->getVisualizationWidget() == nullptr ||
      m_Plane == nullptr)
  {
    return;
  }
  m_Plane->setRenderWindowInteractor(interactor());
  Q_EMIT requestRenderAll();
}

void VXFSlice::setShowPlaneTool(bool show)
{
  m_ShowPlaneTool = show;
  if (m_Plane != nullptr)
  {
    show ? m_Plane->enable() : m_Plane->disable();
  }
  Q_EMIT showPlaneToolChanged(show);
}

void VXFSlice::setVisibility(bool visible)
{
  if (isVisible() && !visible)
  {
    Q_EMIT requestClear();
    VXCoreObject::setVisibility(false);
  }
  else
  {
    VXCoreObject::setVisibility(visible);
  }
  if (m_Plane != nullptr)
  {
    (visible && m_ShowPlaneTool) ? m_Plane->enable() : m_Plane->disable();
  }
  if (visible && m_Cutter->GetOutput() != nullptr)
  {
    Q_EMIT requestPolyDataUpdate(pathName(), m_Cutter->GetOutput());
  }
}

void VXFSlice::write(nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) const
{
  VXFilter::write(json, viewIndexes);
  json[k_ShowSliceTool] = m_ShowPlaneTool;
  if (m_Plane != nullptr)
  {
    Write(json, k_PlaneNormal, m_Plane->getNormal());
    Write(json, k_PlaneOrigin, m_Plane->getOrigin());
  }
}

void VXFSlice::read(const nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes)
{
  VXFilter::read(json, viewIndexes);
  if (!json.is_object())
  {
    return;
  }
  if (m_Plane != nullptr)
  {
    m_Plane->setValues(Read(json, k_PlaneOrigin, m_Plane->getOrigin()),
                       Read(json, k_PlaneNormal, m_Plane->getNormal()));
  }
  if (json.contains(k_ShowSliceTool))
  {
    setShowPlaneTool(json.at(k_ShowSliceTool).get<bool>());
  }
}

void VXFSlice::writeSettings()
{
  VXFilter::writeSettings();
  QtZRSettings settings;
  openSettingsGroup(settings);
  settings.setValue(QString::fromLatin1(k_ShowSliceTool), m_ShowPlaneTool);
  if (m_Plane != nullptr)
  {
    Store(settings, k_PlaneNormal, m_Plane->getNormal());
  }
  settings.endGroup();
  settings.endGroup();
  settings.endGroup();
}

void VXFSlice::readSettings()
{
  VXFilter::readSettings();
  QtZRSettings settings;
  openSettingsGroup(settings);
  if (settings.contains(QString::fromLatin1(k_ShowSliceTool)))
  {
    m_ShowPlaneTool = settings.value(QString::fromLatin1(k_ShowSliceTool)).toBool();
  }
  if (m_Plane != nullptr)
  {
    m_Plane->setNormal(Load(settings, k_PlaneNormal, m_Plane->getNormal()));
  }
  settings.endGroup();
  settings.endGroup();
  settings.endGroup();
}

void VXFSlice::initializeSettingsWidget()
{
  QVBoxLayout* layout = initializeSettingsFrame();
  m_SettingsForm = new VXFSliceFilterWidget(this, layout->parentWidget());
  addRepresentationTypeCombo(m_SettingsForm->representationTypeLayout(), nullptr, RepresentationTypeNames());
  setShouldAddRep(m_ShouldAddRep);
  layout->addWidget(m_SettingsForm);
  layout->addStretch(1);
}
