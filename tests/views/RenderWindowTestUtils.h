#pragma once

// Shared helpers of the render window tests: a shown window with a small known scene, event-loop
// settling, and comparison of captured frames against the reference images in baselines/.

#include "views/VXVisualizationWidget.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QMenu>
#include <QTimer>

#include <memory>
#include <string>

class vtkActor;

namespace zr_test
{
/** Lets queued renders and paint events run. */
void settle(int rounds = 5);

/** A render window shown on screen at the given size, with its first frame drawn. */
std::unique_ptr<VXVisualizationWidget> makeShownWindow(int width = 320, int height = 240);

/** A coloured sphere (radius 1) centred at the given point, not yet in any window. */
vtkSmartPointer<vtkActor> makeSphereActor(double x, double y, double z, double r, double g, double b);
/** A coloured unit cube centred at the given point. */
vtkSmartPointer<vtkActor> makeCubeActor(double x, double y, double z, double r, double g, double b);

/** Mean thresholded pixel error between two frames of the same size (the toolkit's image difference). */
double imageError(const QImage& actual, const QImage& expected);

/**
 * Compares a frame with baselines/<name>.png. With ZR_REGENERATE_BASELINES=1 in the environment the
 * baseline is written instead (see regenerate-baselines.sh), and the test passes.
 */
::testing::AssertionResult matchesBaseline(const QImage& image, const std::string& name);

/**
 * Answers the next modal dialog of the given type as a user would, as soon as it is open: polls, so
 * that a slow machine cannot leave a dialog waiting for ever.
 */
template<typename Dialog, typename Answer>
void answerNextDialog(Answer answer)
{
  auto* timer = new QTimer(QCoreApplication::instance());
  timer->setInterval(10);
  QObject::connect(timer, &QTimer::timeout,
                   [timer, answer]()
                   {
                     if (auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget()))
                     {
                       timer->stop();
                       timer->deleteLater();
                       answer(dialog);
                     }
                   });
  timer->start();
}

/** Counts and closes every menu that pops up while it lives. */
class PopupMenuWatcher
{
public:
  PopupMenuWatcher()
  {
    m_Timer.setInterval(10);
    QObject::connect(&m_Timer, &QTimer::timeout,
                     [this]()
                     {
                       if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget()))
                       {
                         ++m_Count;
                         menu->close();
                       }
                     });
    m_Timer.start();
  }
  int count() const { return m_Count; }

private:
  QTimer m_Timer;
  int m_Count = 0;
};

/** Threshold of matchesBaseline: renderer noise stays far below, a wrong frame far above. */
constexpr double k_BaselineTolerance = 10.0;
} // namespace zr_test
