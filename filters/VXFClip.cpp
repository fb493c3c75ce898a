#include "filters/VXFClip.h"

#include "filters/VXBox.h"
#include "filters/VXFClipFilterWidget.h"
#include "filters/VXFilterTriples.h"
#include "filters/VXPlane.h"
#include "platform/QtZRSettings.h"
#include "views/VXAbstractViewWidget.h"

#include <vtkDataSet.h>
#include <vtkPlane.h>
#include <vtkPlanes.h>
#include <vtkTableBasedClipDataSet.h>
#include <vtkUnstructuredGrid.h>

#include <nlohmann/json.hpp>

#include <QVBoxLayout>

using namespace VXFilterTriples;

namespace
{
const QString k_ClipName = QStringLiteral("Clip Filter");

constexpr const char* k_ClipType = "clip_type";
constexpr const char* k_ShowClipTool = "show_clip_tool";
constexpr const char* k_ClipInverted = "clip_inverted";
constexpr const char* k_BoxRotate[3] = {"clip_box_rotate_x", "clip_box_rotate_y", "clip_box_rotate_z"};
constexpr const char* k_BoxTranslate[3] = {"clip_box_translate_x", "clip_box_translate_y",
                                           "clip_box_translate_z"};
constexpr const char* k_BoxScale[3] = {"clip_box_scale_x", "clip_box_scale_y", "clip_box_scale_z"};

} // namespace

VXFClip::VXFClip(QObject* parent)
    : VXFilter(parent)
    , m_Clip(vtkSmartPointer<vtkTableBasedClipDataSet>::New())
{
  m_BaseName = k_ClipName;
  m_DefaultName = k_ClipName;
}

VXFClip::~VXFClip() = default;

QString VXFClip::humanTypeName() const
{
  return k_ClipName;
}

QString VXFClip::typeName() const
{
  return QStringLiteral("VXFClip");
}

vtkAlgorithmOutput* VXFClip::outputPort() const
{
  return m_Clip->GetOutputPort(0);
}

void VXFClip::setInputPort(vtkAlgorithmOutput* port)
{
  VXFilter::setInputPort(port);
  m_Clip->SetInputConnection(port);
}

vtkRenderWindowInteractor* VXFClip::interactor() const
{
  return activeInteractor();
}

void VXFClip::setupFilter()
{
  const std::array<double, 6> dataBounds = bounds();
  m_Box = new VXBox(dataBounds, interactor(), this);
  m_Plane = new VXPlane(dataBounds, interactor(), this);
  readSettings();
  updateClipTool();
  setToolEnabled(m_ShowClipTool);
}

void VXFClip::applyFilter()
{
  if (m_Box == nullptr || m_Plane == nullptr)
  {
    return; // not set up: there is no tool to take the cut from
  }
  if (m_ClipType == Box)
  {
    m_Clip->SetClipFunction(m_Box->getPlanes());
  }
  else
  {
    // The algorithm gets a copy, so that dragging the tool changes nothing until the next Apply.
    auto plane = vtkSmartPointer<vtkPlane>::New();
    const std::array<double, 3> normal = m_Plane->getNormal();
    const std::array<double, 3> origin = m_Plane->getOrigin();
    plane->SetNormal(normal.data());
    plane->SetOrigin(origin.data());
    m_Clip->SetClipFunction(plane);
  }
  m_Clip->SetInsideOut(m_Inverted ? 1 : 0);
  m_Clip->Update();
  updateDownstreamGridAxesBounds();
  Q_EMIT requestRenderAll();
  addRepresentationIfNeeded();
}

void VXFClip::receivePipelineOutputReloaded()
{
  const std::array<double, 6> dataBounds = bounds();
  if (m_Plane != nullptr)
  {
    m_Plane->updateBounds(dataBounds);
  }
  if (m_Box != nullptr)
  {
    m_Box->updateBounds(dataBounds);
  }
  applyFilter();
}

void VXFClip::activeViewChanged(VXAbstractViewWidget* previousActiveView,
                                VXAbstractViewWidget* currentActiveView)
{
  VXFilter::activeViewChanged(previousActiveView, currentActiveView);
  if (currentActiveView == nullptr || currentActiveView->getVisualizationWidget() == nullptr)
  {
    return;
  }
  vtkRenderWindowInteractor* newInteractor = interactor();
  if (m_Box != nullptr)
  {
    m_Box->setRenderWindowInteractor(newInteractor);
  }
  if (m_Plane != nullptr)
  {
    m_Plane->setRenderWindowInteractor(newInteractor);
  }
  Q_EMIT requestRenderAll();
}

void VXFClip::setClipType(ClipType type)
{
  m_ClipType = type;
  updateClipTool();
  Q_EMIT clipTypeChanged(type);
}

void VXFClip::setInverted(bool inverted)
{
  m_Inverted = inverted;
  Q_EMIT invertedChanged(inverted);
}

void VXFClip::setToolEnabled(bool enabled)
{
  if (m_Box == nullptr || m_Plane == nullptr)
  {
    return;
  }
  if (m_ClipType == Plane)
  {
    enabled ? m_Plane->enable() : m_Plane->disable();
  }
  else
  {
    enabled ? m_Box->enable() : m_Box->disable();
  }
}

void VXFClip::setShowClipTool(bool show)
{
  m_ShowClipTool = show;
  setToolEnabled(show);
  Q_EMIT showClipToolChanged(show);
}

void VXFClip::updateClipTool()
{
  if (m_Box == nullptr || m_Plane == nullptr)
  {
    return;
  }
  if (interactor() == nullptr)
  {
    m_Box->disable();
    m_Plane->disable();
    return;
  }
  if (m_ClipType == Plane)
  {
    m_Plane->updateWidget();
    m_Box->disable();
    m_Plane->enable();
  }
  else
  {
    m_Box->updateWidget();
    m_Box->enable();
    m_Plane->disable();
  }
}

void VXFClip::setVisibility(bool visible)
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
  setToolEnabled(visible && m_ShowClipTool);
  if (visible && m_Clip->GetOutput() != nullptr)
  {
    Q_EMIT requestUnstructuredGridUpdate(pathName(), m_Clip->GetOutput());
  }
}

void VXFClip::write(nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) const
{
  VXFilter::write(json, viewIndexes);
  json[k_ClipType] = static_cast<int>(m_ClipType);
  json[k_ClipInverted] = m_Inverted;
  json[k_ShowClipTool] = m_ShowClipTool;
  if (m_Box != nullptr)
  {
    Write(json, k_BoxTranslate, m_Box->getTranslation());
    Write(json, k_BoxRotate, m_Box->getRotation());
    Write(json, k_BoxScale, m_Box->getScale());
  }
  if (m_Plane != nullptr)
  {
    Write(json, k_PlaneNormal, m_Plane->getNormal());
    Write(json, k_PlaneOrigin, m_Plane->getOrigin());
  }
}

void VXFClip::read(const nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes)
{
  VXFilter::read(json, viewIndexes);
  if (!json.is_object())
  {
    return;
  }
  if (json.contains(k_ClipInverted))
  {
    setInverted(json.at(k_ClipInverted).get<bool>());
  }
  if (m_Box != nullptr)
  {
    m_Box->setValues(Read(json, k_BoxTranslate, m_Box->getTranslation()),
                     Read(json, k_BoxRotate, m_Box->getRotation()),
                     Read(json, k_BoxScale, m_Box->getScale()));
  }
  if (m_Plane != nullptr)
  {
    m_Plane->setValues(Read(json, k_PlaneOrigin, m_Plane->getOrigin()),
                       Read(json, k_PlaneNormal, m_Plane->getNormal()));
  }
  if (json.contains(k_ClipType))
  {
    setClipType(static_cast<ClipType>(json.at(k_ClipType).get<int>()));
  }
  if (json.contains(k_ShowClipTool))
  {
    setShowClipTool(json.at(k_ShowClipTool).get<bool>());
  }
}

void VXFClip::writeSettings()
{
  VXFilter::writeSettings();
  QtZRSettings settings;
  openSettingsGroup(settings);
  settings.setValue(QString::fromLatin1(k_ClipType), static_cast<int>(m_ClipType));
  settings.setValue(QString::fromLatin1(k_ShowClipTool), m_ShowClipTool);
  settings.setValue(QString::fromLatin1(k_ClipInverted), m_Inverted);
  if (m_Plane != nullptr)
  {
    Store(settings, k_PlaneNormal, m_Plane->getNormal());
  }
  if (m_Box != nullptr)
  {
    Store(settings, k_BoxRotate, m_Box->getRotation());
    Store(settings, k_BoxTranslate, m_Box->getTranslation());
    Store(settings, k_BoxScale, m_Box->getScale());
  }
  settings.endGroup();
  settings.endGroup();
  settings.endGroup();
}

void VXFClip::readSettings()
{
  VXFilter::readSettings();
  QtZRSettings settings;
  openSettingsGroup(settings);
  if (settings.contains(QString::fromLatin1(k_ClipType)))
  {
    m_ClipType = static_cast<ClipType>(settings.value(QString::fromLatin1(k_ClipType)).toInt());
  }
  if (settings.contains(QString::fromLatin1(k_ShowClipTool)))
  {
    m_ShowClipTool = settings.value(QString::fromLatin1(k_ShowClipTool)).toBool();
  }
  if (settings.contains(QString::fromLatin1(k_ClipInverted)))
  {
    m_Inverted = settings.value(QString::fromLatin1(k_ClipInverted)).toBool();
  }
  // The plane's origin depends on the data and is no default.
  if (m_Plane != nullptr)
  {
    m_Plane->setNormal(Load(settings, k_PlaneNormal, m_Plane->getNormal()));
  }
  if (m_Box != nullptr)
  {
    m_Box->setValues(Load(settings, k_BoxTranslate, m_Box->getTranslation()),
                     Load(settings, k_BoxRotate, m_Box->getRotation()),
                     Load(settings, k_BoxScale, m_Box->getScale()));
  }
  settings.endGroup();
  settings.endGroup();
  settings.endGroup();
}

void VXFClip::initializeSettingsWidget()
{
  QVBoxLayout* layout = initializeSettingsFrame();
  m_SettingsForm = new VXFClipFilterWidget(this, layout->parentWidget());
  addRepresentationTypeCombo(m_SettingsForm->representationTypeLayout(), nullptr, RepresentationTypeNames());
  setShouldAddRep(m_ShouldAddRep);
  layout->addWidget(m_SettingsForm);
  layout->addStretch(1);
}
