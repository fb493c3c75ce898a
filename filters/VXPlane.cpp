#include "filters/VXPlane.h"

#include "filters/VXPlaneCallback.h"

#include <vtkImplicitPlaneRepresentation.h>
#include <vtkImplicitPlaneWidget2.h>
#include <vtkPlane.h>
#include <vtkRenderWindowInteractor.h>

namespace
{
constexpr double k_PlaceFactor = 1.25;
}

VXPlane::VXPlane(std::array<double, 6> bounds, vtkRenderWindowInteractor* interactor, QObject* parent)
    : QObject(parent)
    , m_Plane(vtkSmartPointer<vtkPlane>::New())
    , m_Widget(vtkSmartPointer<vtkImplicitPlaneWidget2>::New())
    , m_Representation(vtkSmartPointer<vtkImplicitPlaneRepresentation>::New())
    , m_Callback(vtkSmartPointer<VXPlaneCallback>::New())
    , m_Interactor(interactor)
{
  setBounds(bounds);
  m_Plane->SetNormal(1.0, 0.0, 0.0);
  const std::array<double, 3> origin = calculateGlobalOrigin(m_Bounds);
  m_Plane->SetOrigin(origin.data());

  m_Representation->SetPlaceFactor(k_PlaceFactor);
  m_Representation->PlaceWidget(m_Bounds.data());
  m_Representation->SetPlane(m_Plane);
  m_Representation->SetScaleEnabled(false);
  m_Representation->SetOutlineTranslation(false);
  drawPlaneOff();

  m_Widget->SetInteractor(interactor);
  m_Widget->SetRepresentation(m_Representation);
  m_Callback->setPlane(this);
  m_Widget->AddObserver(vtkCommand::InteractionEvent, m_Callback);
}

VXPlane::~VXPlane()
{
  m_Callback->setPlane(nullptr);
  m_Widget->Off();
  m_Widget->SetInteractor(nullptr);
}

void VXPlane::setRenderWindowInteractor(vtkRenderWindowInteractor* interactor)
{
  const bool wasEnabled = isEnabled();
  m_Widget->Off();
  m_Interactor = interactor;
  m_Widget->SetInteractor(interactor);
  if (wasEnabled && interactor != nullptr)
  {
    m_Widget->On();
  }
}

void VXPlane::setBounds(const std::array<double, 6>& bounds)
{
  m_Bounds = bounds;
}

void VXPlane::updateBounds(const std::array<double, 6>& bounds)
{
  const std::array<double, 3> oldCentre = calculateGlobalOrigin(m_Bounds);
  const std::array<double, 3> origin = getOrigin();
  const std::array<double, 3> normal = getNormal();
  setBounds(bounds);
  const bool wasEnabled = isEnabled();
  m_Widget->Off();
  m_Representation->PlaceWidget(m_Bounds.data());
  const std::array<double, 3> newCentre = calculateGlobalOrigin(m_Bounds);
  std::array<double, 3> moved{};
  for (int i = 0; i < 3; ++i)
  {
    moved[i] = origin[i] + (newCentre[i] - oldCentre[i]);
  }
  setValues(moved, normal);
  if (wasEnabled && m_Interactor != nullptr)
  {
    m_Widget->On();
  }
}

void VXPlane::enable()
{
  if (m_Interactor != nullptr)
  {
    m_Widget->On();
  }
}

void VXPlane::disable()
{
  m_Widget->Off();
}

bool VXPlane::isEnabled() const
{
  return m_Widget->GetEnabled() != 0;
}

void VXPlane::drawPlaneOn()
{
  m_Representation->DrawPlaneOn();
}

void VXPlane::drawPlaneOff()
{
  m_Representation->DrawPlaneOff();
}

std::array<double, 3> VXPlane::getOrigin() const
{
  std::array<double, 3> origin{};
  m_Plane->GetOrigin(origin.data());
  return origin;
}

void VXPlane::setOrigin(const std::array<double, 3>& origin)
{
  setValues(origin, getNormal());
}

std::array<double, 3> VXPlane::getNormal() const
{
  std::array<double, 3> normal{};
  m_Plane->GetNormal(normal.data());
  return normal;
}

void VXPlane::setNormal(const std::array<double, 3>& normal)
{
  setValues(getOrigin(), normal);
}

void VXPlane::setValues(const std::array<double, 3>& origin, const std::array<double, 3>& normal)
{
  m_Plane->SetOrigin(origin.data());
  m_Plane->SetNormal(normal.data());
  m_Representation->SetOrigin(m_Plane->GetOrigin());
  m_Representation->SetNormal(m_Plane->GetNormal());
  Q_EMIT originChanged(origin);
  Q_EMIT normalsChanged(normal);
  Q_EMIT planeChanged();
}

void VXPlane::updateWidget()
{
  const bool wasEnabled = isEnabled();
  m_Widget->Off();
  if (wasEnabled && m_Interactor != nullptr)
  {
    m_Widget->On();
    m_Interactor->Render();
  }
}

std::array<double, 3> VXPlane::calculateGlobalOrigin(const std::array<double, 6>& bounds)
{
  return {(bounds[0] + bounds[1]) / 2.0, (bounds[2] + bounds[3]) / 2.0, (bounds[4] + bounds[5]) / 2.0};
}
