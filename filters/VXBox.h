#pragma once

#include <vtkBoxRepresentation.h>
#include <vtkBoxWidget2.h>
#include <vtkPlanes.h>
#include <vtkSmartPointer.h>
#include <vtkTransform.h>

#include <QObject>

#include <array>

class vtkBoxRepresentation;
class vtkBoxWidget2;
class vtkPlanes;
class vtkRenderWindowInteractor;
class vtkTransform;
class VXBoxCallback;

/**
 * The interactive box of the clip filter: a box widget in the render window of the active view, with
 * its placement as a transform (translation, rotation in degrees, scale) of the box placed on the data.
 */
class VXBox : public QObject
{
  Q_OBJECT

public:
  // Thin axes are widened to this extent, in data units, so that the box can still be grabbed.
  static constexpr double k_MinimumExtent = 6.0;

  VXBox(std::array<double, 6> bounds, vtkRenderWindowInteractor* interactor, QObject* parent = nullptr);
  ~VXBox() override;

  void setRenderWindowInteractor(vtkRenderWindowInteractor* interactor);
  vtkRenderWindowInteractor* interactor() const { return m_Interactor; }
  void setBounds(const std::array<double, 6>& bounds);
  std::array<double, 6> bounds() const { return m_Bounds; }
  void updateBounds(const std::array<double, 6>& bounds);
  void enable();
  void disable();
  bool isEnabled() const;
  std::array<double, 3> getTranslation() const;
  std::array<double, 3> getScale() const;
  std::array<double, 3> getRotation() const;
  void setTranslation(const std::array<double, 3>& translation);
  void setScale(const std::array<double, 3>& scale);
  void setRotation(const std::array<double, 3>& rotation);
  void setValues(const std::array<double, 3>& translation, const std::array<double, 3>& rotation,
                 const std::array<double, 3>& scale);
  vtkTransform* getTransform() const { return m_Transform; }
  // The six planes of the box as the widget shows it.
  vtkSmartPointer<vtkPlanes> getPlanes() const;

  vtkBoxWidget2* widget() const { return m_Widget; }

public Q_SLOTS:
  void updateWidget();

Q_SIGNALS:
  void transformChanged();
  void scaleChanged(std::array<double, 3> scale);
  void translationChanged(std::array<double, 3> translation);
  void rotationChanged(std::array<double, 3> rotation);

private:
  vtkSmartPointer<vtkTransform> m_Transform;
  vtkSmartPointer<vtkBoxWidget2> m_Widget;
  vtkSmartPointer<vtkBoxRepresentation> m_Representation;
  vtkSmartPointer<VXBoxCallback> m_Callback;
  vtkRenderWindowInteractor* m_Interactor = nullptr;
  std::array<double, 6> m_Bounds = {0.0, 0.0, 0.0, 0.0, 0.0, 0.0};
};
