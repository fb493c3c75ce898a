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
