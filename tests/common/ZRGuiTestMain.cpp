// Test entry point for tests that need a QApplication and a real OpenGL surface (run under xvfb-run).
#include <QApplication>
#include <QDir>
#include <QStandardPaths>
#include <QSurfaceFormat>
#include <QTemporaryDir>
#include <QVTKOpenGLNativeWidget.h>

#include <gtest/gtest.h>

#include <memory>

int main(int argc, char** argv)
{
  QSurfaceFormat::setDefaultFormat(QVTKOpenGLNativeWidget::defaultFormat());
  QStandardPaths::setTestModeEnabled(true); // never touch a user's settings
  QApplication app(argc, argv);
  // ctest runs the cases of one program side by side: each process gets a settings folder of its
  // own below the program's, removed when it ends.
  std::unique_ptr<QTemporaryDir> settingsDir;
  const QString settingsBase = qEnvironmentVariable("ZR_SETTINGS_DIR");
  if (!settingsBase.isEmpty() && QDir().mkpath(settingsBase))
  {
    settingsDir = std::make_unique<QTemporaryDir>(settingsBase + QStringLiteral("/run-XXXXXX"));
    qputenv("ZR_SETTINGS_DIR", settingsDir->path().toLocal8Bit());
  }
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
