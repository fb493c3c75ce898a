#pragma once

#include <QVTKOpenGLNativeWidget.h>

/**
 * @brief The Qt OpenGL widget with the rendering toolkit inside. Stays empty: it only gives render
 * windows a meta-object of their own between them and the toolkit's widget.
 */
class VXGLWidget : public QVTKOpenGLNativeWidget
{
  Q_OBJECT

public:
  explicit VXGLWidget(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
  ~VXGLWidget() override;
};
