#include "views/VXGridAxesActor.h"

#include <vtkActor.h>
#include <vtkMapper.h>
#include <vtkNew.h>
#include <vtkPolyData.h>
#include <vtkPropCollection.h>

#include <gtest/gtest.h>

#include <cmath>

TEST(VXGridAxesActorTest, AutomaticLabelsUseNiceStepsInsideTheRange)
{
  EXPECT_EQ(VXGridAxesActor::AutomaticLabelValues(0.0, 10.0), (std::vector<double>{0, 2, 4, 6, 8, 10}));
  EXPECT_EQ(VXGridAxesActor::AutomaticLabelValues(-1.0, 1.0), (std::vector<double>{-1, -0.5, 0, 0.5, 1}));
  // A range that does not start on a step begins at the first multiple inside it.
  EXPECT_EQ(VXGridAxesActor::AutomaticLabelValues(3.0, 47.0), (std::vector<double>{10, 20, 30, 40}));
  EXPECT_EQ(VXGridAxesActor::AutomaticLabelValues(5.0, 5.0), (std::vector<double>{5}));
  EXPECT_TRUE(VXGridAxesActor::AutomaticLabelValues(1.0, -1.0).empty());
  EXPECT_TRUE(VXGridAxesActor::AutomaticLabelValues(0.0, std::nan("")).empty());
}

TEST(VXGridAxesActorTest, CustomLabelsReplaceAutomaticOnesPerAxis)
{
  vtkNew<VXGridAxesActor> actor;
  const double bounds[6] = {0.0, 1.0, 0.0, 10.0, -2.0, 2.0};
  actor->SetGridBounds(bounds);
  actor->SetCustomLabels(0, {0.0, 0.3, 0.6, 0.9});
  actor->SetUseCustomLabels(0, true);

  EXPECT_EQ(actor->GetLabelTexts(0), (std::vector<std::string>{"0", "0.3", "0.6", "0.9"}));
  EXPECT_EQ(actor->GetLabelTexts(1), (std::vector<std::string>{"0", "2", "4", "6", "8", "10"}));
  actor->SetUseCustomLabels(0, false);
  EXPECT_EQ(actor->GetLabelValues(0), VXGridAxesActor::AutomaticLabelValues(0.0, 1.0));
}

TEST(VXGridAxesActorTest, PartsFollowTheBoundsAndTheSwitches)
{
  vtkNew<VXGridAxesActor> actor;
  // Uninitialized bounds (no visible props): nothing to draw, no labels.
  EXPECT_EQ(actor->GetParts()->GetNumberOfItems(), 1);
  EXPECT_TRUE(actor->GetLabelValues(0).empty());

  const double bounds[6] = {0.0, 4.0, 0.0, 4.0, 0.0, 4.0};
  actor->SetGenerateTicks(false);
  actor->SetGridBounds(bounds);
  // Line actor, 5 labels per axis (0..4 by 1), 3 titles.
  EXPECT_EQ(actor->GetParts()->GetNumberOfItems(), 1 + 15 + 3);

  auto lineCount = [&actor]()
  {
    actor->GetParts()->InitTraversal();
    auto* lines = vtkPolyData::SafeDownCast(
        static_cast<vtkActor*>(actor->GetParts()->GetNextProp())->GetMapper()->GetInput());
    return lines->GetNumberOfLines();
  };
  EXPECT_EQ(lineCount(), 12);
  actor->SetGenerateTicks(true);
  EXPECT_EQ(lineCount(), 12 + 15);
  actor->SetGenerateGrid(true);
  EXPECT_EQ(lineCount(), 12 + 15 + 30);
  actor->SetGenerateEdges(false);
  EXPECT_EQ(lineCount(), 15 + 30);
}

TEST(VXGridAxesActorTest, AHugeCustomLabelListIsCapped)
{
  vtkNew<VXGridAxesActor> actor;
  actor->SetCustomLabels(2, std::vector<double>(5000, 1.0));
  actor->SetUseCustomLabels(2, true);
  const double bounds[6] = {0.0, 1.0, 0.0, 1.0, 0.0, 1.0};
  actor->SetGridBounds(bounds);
  EXPECT_EQ(actor->GetLabelValues(2).size(), 1000u);
}

TEST(VXGridAxesActorTest, SpacedLabelsRunFromTheMinimumAndReadWithoutNoise)
{
  // Bounds as single-precision data gives them; floor(30 / 5) + 1 labels from the minimum.
  const double min = static_cast<float>(-19.2);
  const double max = static_cast<float>(10.8);
  const std::vector<double> values = VXGridAxesActor::SpacedLabelValues(min, max, 5.0);
  ASSERT_EQ(values.size(), 7u);
  EXPECT_DOUBLE_EQ(values.front(), min);
  EXPECT_NEAR(values.back(), 10.8, 1e-5);
  EXPECT_EQ(VXGridAxesActor::SpacedLabelValues(0.0, 10.0, 2.5), (std::vector<double>{0, 2.5, 5, 7.5, 10}));
  EXPECT_EQ(VXGridAxesActor::SpacedLabelValues(1.0, 1.9, 0.5), (std::vector<double>{1.0, 1.5}));
  EXPECT_TRUE(VXGridAxesActor::SpacedLabelValues(0.0, 1.0, 0.0).empty());
  EXPECT_TRUE(VXGridAxesActor::SpacedLabelValues(0.0, 1.0, -1.0).empty());
  EXPECT_TRUE(VXGridAxesActor::SpacedLabelValues(1.0, 0.0, 0.5).empty());
  EXPECT_EQ(VXGridAxesActor::SpacedLabelValues(0.0, 1e9, 1e-3).size(), 1000u) << "capped";
  EXPECT_DOUBLE_EQ(VXGridAxesActor::AutomaticStep(0.0, 10.0), 2.0);
  EXPECT_DOUBLE_EQ(VXGridAxesActor::AutomaticStep(-19.2, 10.8), 10.0);
  EXPECT_EQ(VXGridAxesActor::AutomaticStep(1.0, 1.0), 0.0);
}

TEST(VXGridAxesActorTest, LabelsShowTheDecimalsOfTheirStepAndNoRoundingNoise)
{
  EXPECT_EQ(VXGridAxesActor::FormatLabel(0.7999999999999972, 5.0), "1");
  EXPECT_EQ(VXGridAxesActor::FormatLabel(0.30000000000000004, 0.1), "0.3");
  EXPECT_EQ(VXGridAxesActor::FormatLabel(0.75, 0.25), "0.75");
  EXPECT_EQ(VXGridAxesActor::FormatLabel(1.0000000001, 0.25), "1");
  EXPECT_EQ(VXGridAxesActor::FormatLabel(-1e-17, 0.1), "0");
  EXPECT_EQ(VXGridAxesActor::FormatLabel(-2.5, 0.5), "-2.5");
  EXPECT_EQ(VXGridAxesActor::FormatLabel(123456.0, 1000.0), "123456");
  EXPECT_EQ(VXGridAxesActor::FormatLabel(3.0000001e-7, 1e-7), "3e-07");
  EXPECT_EQ(VXGridAxesActor::FormatLabel(2.5e9, 5e8), "2.5e+09");

  // A running sum from an odd minimum gave "0.799999": the labels read clean, with the minimum's decimal.
  vtkNew<VXGridAxesActor> actor;
  const double bounds[6] = {static_cast<float>(-19.2), static_cast<float>(10.8), 0.0, 1.0, 0.0, 1.0};
  actor->SetGridBounds(bounds);
  actor->SetCustomLabels(0, VXGridAxesActor::SpacedLabelValues(bounds[0], bounds[1], 5.0));
  actor->SetUseCustomLabels(0, true);
  EXPECT_EQ(actor->GetLabelTexts(0),
            (std::vector<std::string>{"-19.2", "-14.2", "-9.2", "-4.2", "0.8", "5.8", "10.8"}));
  actor->SetCustomLabels(0, VXGridAxesActor::SpacedLabelValues(bounds[0], bounds[1], 0.1));
  for (const std::string& text : actor->GetLabelTexts(0))
  {
    EXPECT_LE(text.size(), 5u) << text << ": one decimal for a step of 0.1 from -19.2";
  }
}
