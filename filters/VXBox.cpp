#include "filters/VXBox.h"

#include "data_bridge/ZRVtkUtils.h"
#include "filters/VXBoxCallback.h"

#include <vtkBoxRepresentation.h>
#include <vtkBoxWidget2.h>
#include <vtkPlanes.h>
#include <vtkRenderWindowInteractor.h>
#include <vtkTransform.h>

namespace
{
constexpr double k_PlaceFactor = 1.25;

std::array<double, 3> centre(const std::array<double, 6>& bounds)
{
  return {(bounds[0] + bounds[1]) / 2.0, (bounds[2] + bounds[3]) / 2.0, (bounds[4] + bounds[5]) / 2.0};
}
} // namespace

VXBox::VXBox(std::array<double, 6> bounds, vtkRenderWindowInteractor* interactor, QObject* parent)
    : QObject(parent)
    , m_Transform(vtkSmartPointer<vtkTransform>::New())
    , m_Widget(vtkSmartPointer<vtkBoxWidget2>::New())
    , m_Representation(vtkSmartPointer<vtkBoxRepresentation>::New())
    , m_Callback(vtkSmartPointer<VXBoxCallback>::New())
    , m_Interactor(interactor)
{
  m_Transform->Identity();
  m_Callback->setTransform(m_Transform);
  m_Callback->setBox(this);
  setBounds(bounds);
  m_Representation->SetPlaceFactor(k_PlaceFactor);
  m_Representation->PlaceWidget(m_Bounds.data());
  m_Representation->SetTransform(m_Transform);
  m_Widget->SetInteractor(interactor);
  m_Widget->SetRepresentation(m_Representation);
  m_Widget->AddObserver(vtkCommand::InteractionEvent, m_Callback);
}

VXBox::~VXBox()
{
  m_Callback->setBox(nullptr);
  m_Widget->Off();
  m_Widget->SetInteractor(nullptr);
}

void VXBox::setRenderWindowInteractor(vtkRenderWindowInteractor* interactor)
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

void VXBox::setBounds(const std::array<double, 6>& bounds)
{
  m_Bounds = bounds;
  for (int axis = 0; axis < 3; ++axis)
  {
    double& low = m_Bounds[2 * axis];
    double& high = m_Bounds[2 * axis + 1];
    const double extent = high - low;
    if (extent < k_MinimumExtent)
    {
      const double widen = (k_MinimumExtent - extent) / 2.0;
      low -= widen;
      high += widen;
    }
  }
}

void VXBox::updateBounds(const std::array<double, 6>& bounds)
{
  const std::array<double, 3> oldCentre = centre(m_Bounds);
  setBounds(bounds);
  const bool wasEnabled = isEnabled();
  m_Widget->Off();
  m_Representation->PlaceWidget(m_Bounds.data());
  const std::array<double, 3> newCentre = centre(m_Bounds);
  std::array<double, 3> translation = getTranslation();
  for (int i = 0; i < 3; ++i)
  {
    translation[i] += newCentre[i] - oldCentre[i];
  }
  setValues(translation, getRotation(), getScale());
  if (wasEnabled && m_Interactor != nullptr)
  {
    m_Widget->On();
  }
}

void VXBox::enable()
{
  if (m_Interactor != nullptr)
  {
    m_Widget->On();
  }
}

void VXBox::disable()
{
  m_Widget->Off();
}

bool VXBox::isEnabled() const
{
  return m_Widget->GetEnabled() != 0;
}

std::array<double, 3> VXBox::getTranslation() const
{
  std::array<double, 3> translation{};
  m_Transform->GetPosition(translation.data());
  return translation;
}

std::array<double, 3> VXBox::getScale() const
{
  std::array<double, 3> scale{};
  m_Transform->GetScale(scale.data());
  return scale;
}

std::array<double, 3> VXBox::getRotation() const
{
  std::array<double, 3> rotation{};
  m_Transform->GetOrientation(rotation.data());
  return rotation;
}

void VXBox::setTranslation(const std::array<double, 3>& translation)
{
  setValues(translation, getRotation(), getScale());
  Q_EMIT translationChanged(translation);
}

void VXBox::setScale(const std::array<double, 3>& scale)
{
  setValues(getTranslation(), getRotation(), scale);
  Q_EMIT scaleChanged(scale);
}

void VXBox::setRotation(const std::array<double, 3>& rotation)
{
  setValues(getTranslation(), rotation, getScale());
  Q_EMIT rotationChanged(rotation);
}

void VXBox::setValues(const std::array<double, 3>& translation, const std::array<double, 3>& rotation,
                      const std::array<double, 3>& scale)
{
  vtkSmartPointer<vtkTransform> made = ZRVtk::utils::CreateTransform(translation, rotation, scale);
  m_Transform->SetInput(nullptr);
  m_Transform->Identity();
  m_Transform->Concatenate(made->GetMatrix());
  m_Representation->SetTransform(m_Transform);
  updateWidget();
  Q_EMIT translationChanged(translation);
  Q_EMIT rotationChanged(rotation);
  Q_EMIT scaleChanged(scale);
}

vtkSmartPointer<vtkPlanes> VXBox::getPlanes() const
{
  auto planes = vtkSmartPointer<vtkPlanes>::New();
  m_Representation->GetPlanes(planes);
  return planes;
}

void VXBox::updateWidget()
{
  const bool wasEnabled = isEnabled();
  m_Widget->Off();
  if (wasEnabled && m_Interactor != nullptr)
  {
    m_Widget->On();
    m_Interactor->Render();
  }
}
