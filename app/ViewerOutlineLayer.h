#pragma once

#include <vtkSmartPointer.h>

#include <QList>
#include <QMap>
#include <QObject>
#include <QPointer>

#include <vector>

class vtkActor;
class vtkOutlineFilter;
class VXAbstractViewWidget;
class VXDataSource;
class VXViewGridWidget;

/**
 * @brief Shows each data source as its bounding outline, drawn by a plain actor, in the active view
 * and in views split from it. Stands in for the data views as long as no data view of the source's
 * default type is available; sources that get a real data view are left to it.
 */
class ViewerOutlineLayer : public QObject
{
  Q_OBJECT

public:
  ViewerOutlineLayer(VXViewGridWidget* grid, QObject* parent = nullptr);
  ~ViewerOutlineLayer() override;

  /** @brief Number of outline actors in a view. */
  int outlineCount(VXAbstractViewWidget* view) const;

public Q_SLOTS:
  void addDataSource(VXDataSource* dataSource);
  /** @brief A new view shows the outlines of all sources. */
  void addView(VXAbstractViewWidget* view);

private:
  struct Outline
  {
    QPointer<VXDataSource> source;
    vtkSmartPointer<vtkOutlineFilter> filter;
  };
  void addOutlineToView(const Outline& outline, VXAbstractViewWidget* view);

  QPointer<VXViewGridWidget> m_Grid;
  std::vector<Outline> m_Outlines;
  QMap<VXAbstractViewWidget*, QList<vtkSmartPointer<vtkActor>>> m_Actors;
};
