#pragma once

// Shared helpers of the render window tests: a shown window with a small known scene, event-loop
// settling, and comparison of captured frames against the reference images in baselines/.

#include "views/VXVisualizationWidget.h"

#include <gtest/gtest.h>

#include <QImage>

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

/** Threshold of matchesBaseline: renderer noise stays far below, a wrong frame far above. */
constexpr double k_BaselineTolerance = 10.0;
} // namespace zr_test
