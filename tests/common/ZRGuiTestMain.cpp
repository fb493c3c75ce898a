// Test entry point for tests that need a QApplication and a real OpenGL surface (run under xvfb-run).
#include <QApplication>
#include <QDir>
#include <QStandardPaths>
#include <QSurfaceFormat>
#include <QVTKOpenGLNativeWidget.h>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
  QSurfaceFormat::setDefaultFormat(QVTKOpenGLNativeWidget::defaultFormat());
  QStandardPaths::setTestModeEnabled(true); // never touch a user's settings
  QApplication app(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
