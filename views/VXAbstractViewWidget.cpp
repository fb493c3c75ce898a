#include "views/VXAbstractViewWidget.h"

#include "views/VXVisualizationWidget.h"

#include <nlohmann/json.hpp>

#include <vtkRenderer.h>

#include <QStyle>

VXAbstractViewWidget::VXAbstractViewWidget(QWidget* parent, Qt::WindowFlags flags)
    : QFrame(parent, flags)
{
}

VXAbstractViewWidget::~VXAbstractViewWidget() = default;

VXVisualizationWidget* VXAbstractViewWidget::getVisualizationWidget() const
{
  return m_VisualizationWidget;
}

bool VXAbstractViewWidget::isClosable() const
{
  return m_Closable;
}

bool VXAbstractViewWidget::isRenderBlocked() const
{
  return m_BlockRender;
}

bool VXAbstractViewWidget::isActive() const
{
  return m_Active;
}

void VXAbstractViewWidget::setActive(bool active)
{
  m_Active = active;
  style()->unpolish(this);
  style()->polish(this);
  repaint();
}

void VXAbstractViewWidget::mousePressed()
{
  m_Active = true;
  Q_EMIT markActive(this);
}

void VXAbstractViewWidget::mousePressEvent(QMouseEvent* event)
{
  QFrame::mousePressEvent(event);
  mousePressed();
}

void VXAbstractViewWidget::setClosable(bool closable)
{
  m_Closable = closable;
  updateClosable();
}

void VXAbstractViewWidget::notifyClosingView()
{
  Q_EMIT closingView();
}

void VXAbstractViewWidget::notifyViewWidgetCreated(VXAbstractViewWidget* splitView)
{
  Q_EMIT viewWidgetCreated(this, splitView);
}

void VXAbstractViewWidget::renderView()
{
  if (m_BlockRender || m_VisualizationWidget == nullptr)
  {
    return;
  }
  m_VisualizationWidget->render();
}

void VXAbstractViewWidget::resetCamera()
{
  if (m_BlockRender || m_VisualizationWidget == nullptr || m_VisualizationWidget->getRenderer() == nullptr)
  {
    return;
  }
  m_VisualizationWidget->getRenderer()->ResetCamera();
  m_VisualizationWidget->render();
}

void VXAbstractViewWidget::unlinkCamera()
{
  if (m_BlockRender || m_VisualizationWidget == nullptr)
  {
    return;
  }
  m_VisualizationWidget->unlinkCamera();
}

void VXAbstractViewWidget::updateScene()
{
  renderView();
  resetCamera();
}

void VXAbstractViewWidget::setBlockRender(bool block)
{
  m_BlockRender = block;
  vtkRenderer* renderer = m_VisualizationWidget != nullptr ? m_VisualizationWidget->getRenderer() : nullptr;
  if (renderer == nullptr)
  {
    return;
  }
  if (block)
  {
    renderer->DrawOff();
  }
  else
  {
    renderer->DrawOn();
  }
  renderView(); // frames were skipped while blocked
}

void VXAbstractViewWidget::onPipelineOutputReloaded()
{
  if (m_VisualizationWidget != nullptr)
  {
    m_VisualizationWidget->updateGridAxesBounds(true);
  }
}

void VXAbstractViewWidget::saveState(nlohmann::json& output)
{
  output["block_render"] = m_BlockRender;
  output["active_view"] = m_Active;
  if (m_VisualizationWidget != nullptr)
  {
    m_VisualizationWidget->saveState(output);
  }
}

void VXAbstractViewWidget::loadState(const nlohmann::json& input)
{
  if (input.is_object() && input.contains("block_render"))
  {
    setBlockRender(input["block_render"].get<bool>());
  }
  if (input.is_object() && input.contains("active_view"))
  {
    setActive(input["active_view"].get<bool>()); // a non-boolean raises the type error
    if (m_Active)
    {
      Q_EMIT markActive(this);
    }
  }
  if (m_VisualizationWidget != nullptr)
  {
    m_VisualizationWidget->loadState(input);
  }
}
