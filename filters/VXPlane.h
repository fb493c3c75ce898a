#pragma once

#include <vtkImplicitPlaneRepresentation.h>
#include <vtkImplicitPlaneWidget2.h>
#include <vtkPlane.h>
#include <vtkSmartPointer.h>

#include <QObject>

#include <array>

class vtkImplicitPlaneRepresentation;
class vtkImplicitPlaneWidget2;
class vtkPlane;
class vtkRenderWindowInteractor;
class VXPlaneCallback;

/**
 * The interactive plane of the clip and slice filters: an implicit plane widget in the render window of
 * the active view. Dragging it only changes the values here; filters copy them on Apply.
 */
class VXPlane : public QObject
{
  Q_OBJECT

public:
  VXPlane(std::array<double, 6> bounds, vtkRenderWindowInteractor* interactor, QObject* parent = nullptr);
  ~VXPlane() override;

  void setRenderWindowInteractor(vtkRenderWindowInteractor* interactor);
  vtkRenderWindowInteractor* interactor() const { return m_Interactor; }
  void setBounds(const std::array<double, 6>& bounds);
  std::array<double, 6> bounds() const { return m_Bounds; }
  // Keeps the plane where it stands relative to the data that moved to the new bounds.
  void updateBounds(const std::array<double, 6>& bounds);
  void enable();
  void disable();
  bool isEnabled() const;
  void drawPlaneOn();
  void drawPlaneOff();
  std::array<double, 3> getOrigin() const;
  void setOrigin(const std::array<double, 3>& origin);
  std::array<double, 3> getNormal() const;
  void setNormal(const std::array<double, 3>& normal);
  void setValues(const std::array<double, 3>& origin, const std::array<double, 3>& normal);
  void updateWidget();
  static std::array<double, 3> calculateGlobalOrigin(const std::array<double, 6>& bounds);

  vtkImplicitPlaneWidget2* widget() const { return m_Widget; }
  vtkImplicitPlaneRepresentation* representation() const { return m_Representation; }

Q_SIGNALS:
  void planeChanged();
  void originChanged(std::array<double, 3> origin);
  void normalsChanged(std::array<double, 3> normal);

private:
  vtkSmartPointer<vtkPlane> m_Plane;
  vtkSmartPointer<vtkImplicitPlaneWidget2> m_Widget;
  vtkSmartPointer<vtkImplicitPlaneRepresentation> m_Representation;
  vtkSmartPointer<VXPlaneCallback> m_Callback;
  vtkRenderWindowInteractor* m_Interactor = nullptr;
  std::array<double, 6> m_Bounds = {0.0, 0.0, 0.0, 0.0, 0.0, 0.0};
};
