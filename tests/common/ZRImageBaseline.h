#pragma once

// Comparing rendered frames against baseline images with a tolerance, as VTK's own image tests do.
#include <QImage>
#include <QString>

#include <gtest/gtest.h>

namespace ZRTest
{
// VTK's thresholded image difference; huge when the sizes differ.
double ImageError(const QImage& actual, const QImage& expected);

// Compares with baselineDir/name.png. With ZR_REGENERATE_BASELINES=1 the frame becomes the new
// baseline instead. A failing frame is written beside the build as name-actual.png.
::testing::AssertionResult MatchesBaseline(const QImage& image, const QString& baselineDir,
                                           const QString& name, double tolerance);
} // namespace ZRTest
