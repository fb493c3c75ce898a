#include "views/VXGLWidget.h"

VXGLWidget::VXGLWidget(QWidget* parent, Qt::WindowFlags flags)
    : QVTKOpenGLNativeWidget(parent, flags)
{
}

VXGLWidget::~VXGLWidget() = default;
