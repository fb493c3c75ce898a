#include "app/ViewerOutlineLayer.h"

#include "data_views/VXRepresentation.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXViewGridWidget.h"
#include "views/VXVisualizationWidget.h"

#include <vtkActor.h>
#include <vtkOutlineFilter.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>

ViewerOutlineLayer::ViewerOutlineLayer(VXViewGridWidget* grid, QObject* parent)
    : QObject(parent)
    , m_Grid(grid)
{
}

ViewerOutlineLayer::~ViewerOutlineLayer() = default;

int ViewerOutlineLayer::outlineCount(VXAbstractViewWidget* view) const
{
  return m_Actors.value(view).size();
}

void ViewerOutlineLayer::addDataSource(VXDataSource* dataSource)
{
  if (dataSource == nullptr || dataSource->getOutput() == nullptr || dataSource->outputPort() == nullptr ||
      VXRepresentation::IsRegistered(VXPipeline::DefaultRepresentationType(dataSource)))
  {
    return;
  }
  Outline outline{dataSource, vtkSmartPointer<vtkOutlineFilter>::New()};
  outline.filter->SetInputConnection(dataSource->outputPort());
  m_Outlines.push_back(outline);
  if (m_Grid != nullptr && m_Grid->activeView() != nullptr)
  {
    addOutlineToView(outline, m_Grid->activeView());
  }
}

void ViewerOutlineLayer::addView(VXAbstractViewWidget* view)
{
  if (view == nullptr || m_Actors.contains(view))
  {
    return;
  }
  for (const Outline& outline : m_Outlines)
  {
    addOutlineToView(outline, view);
  }
}

void ViewerOutlineLayer::addOutlineToView(const Outline& outline, VXAbstractViewWidget* view)
{
  VXVisualizationWidget* window = view->getVisualizationWidget();
  if (window == nullptr || outline.source.isNull())
  {
    return;
  }
  if (!m_Actors.contains(view))
  {
    connect(view, &QObject::destroyed, this, [this, view] { m_Actors.remove(view); });
  }
  vtkNew<vtkPolyDataMapper> mapper;
  mapper->SetInputConnection(outline.filter->GetOutputPort());
  auto actor = vtkSmartPointer<vtkActor>::New();
  actor->SetMapper(mapper);
  actor->GetProperty()->SetColor(1.0, 1.0, 1.0);
  actor->GetProperty()->SetLineWidth(1.5);
  window->addActor(actor);
  m_Actors[view].push_back(actor);
  window->render();
}
