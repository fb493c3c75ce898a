#include "data_bridge/ZRVtkUtils.h"

#include <vtkCellData.h>
#include <vtkElevationFilter.h>
#include <vtkFloatArray.h>
#include <vtkImageData.h>
#include <vtkPointData.h>
#include <vtkShrinkPolyData.h>
#include <vtkSphereSource.h>
#include <vtkTransform.h>
#include <vtkUnsignedCharArray.h>

#include <gtest/gtest.h>

#include <set>

namespace utils = ZRVtk::utils;

TEST(ZRVtkConvertPointDataToCellData, PixelsBecomeCellsSharingTheArrays)
{
  auto image = vtkSmartPointer<vtkImageData>::New();
  image->SetDimensions(4, 3, 1);
  image->SetOrigin(-1.0, 2.0, 0.5);
  image->SetSpacing(0.5, 2.0, 1.0);
  auto red = vtkSmartPointer<vtkUnsignedCharArray>::New();
  red->SetName("Red");
  red->SetNumberOfTuples(12);
  red->FillValue(7);
  auto height = vtkSmartPointer<vtkFloatArray>::New();
  height->SetName("Height");
  height->SetNumberOfTuples(12);
  height->FillValue(1.5f);
  image->GetPointData()->AddArray(red);
  image->GetPointData()->AddArray(height);

  vtkSmartPointer<vtkImageData> cells = utils::ConvertPointDataToCellData(image);
  ASSERT_NE(cells, nullptr);
  ASSERT_NE(cells.Get(), image.Get());
  int dims[3];
  cells->GetDimensions(dims);
  EXPECT_EQ(dims[0], 5);
  EXPECT_EQ(dims[1], 4);
  EXPECT_EQ(dims[2], 2);
  EXPECT_EQ(cells->GetNumberOfCells(), 12);
  EXPECT_DOUBLE_EQ(cells->GetOrigin()[0], -1.0);
  EXPECT_DOUBLE_EQ(cells->GetSpacing()[1], 2.0);
  EXPECT_EQ(ZRVtk::GetObjectName(cells), "Image Data");
  // Shared, not copied: the same array objects, and the input keeps its own.
  EXPECT_EQ(cells->GetCellData()->GetAbstractArray("Red"), red.Get());
  EXPECT_EQ(cells->GetCellData()->GetAbstractArray("Height"), height.Get());
  EXPECT_EQ(cells->GetPointData()->GetNumberOfArrays(), 0);
  EXPECT_EQ(image->GetPointData()->GetAbstractArray("Red"), red.Get());
}

TEST(ZRVtkConvertPointDataToCellData, NullGivesNull)
{
  EXPECT_EQ(utils::ConvertPointDataToCellData(nullptr), nullptr);
}

TEST(ZRVtkCreateTransform, TranslatesThenRotatesZXYThenScales)
{
  vtkSmartPointer<vtkTransform> transform =
      utils::CreateTransform({1.0, 2.0, 3.0}, {90.0, 0.0, 90.0}, {2.0, 2.0, 2.0});
  double point[3] = {1.0, 0.0, 0.0};
  double out[3];
  transform->TransformPoint(point, out);
  // Scale: (2,0,0). Rotate Y by 0, X by 90: (2,0,0). Rotate Z by 90: (0,2,0). Translate: (1,4,3).
  EXPECT_NEAR(out[0], 1.0, 1e-12);
  EXPECT_NEAR(out[1], 4.0, 1e-12);
  EXPECT_NEAR(out[2], 3.0, 1e-12);

  // The order of the rotations matters: X before Z would take the point elsewhere.
  double up[3] = {0.0, 1.0, 0.0};
  transform->TransformPoint(up, out);
  // Scale: (0,2,0). Rotate X by 90: (0,0,2). Rotate Z by 90: (0,0,2). Translate: (1,2,5).
  EXPECT_NEAR(out[0], 1.0, 1e-12);
  EXPECT_NEAR(out[1], 2.0, 1e-12);
  EXPECT_NEAR(out[2], 5.0, 1e-12);
}

TEST(ZRVtkCreateTransform, YRotationIsAppliedFirstToThePoint)
{
  vtkSmartPointer<vtkTransform> transform =
      utils::CreateTransform({0.0, 0.0, 0.0}, {90.0, 90.0, 0.0}, {1.0, 1.0, 1.0});
  double point[3] = {0.0, 0.0, 1.0};
  double out[3];
  transform->TransformPoint(point, out);
  // Rotate Y by 90: (1,0,0). Rotate X by 90: (1,0,0).
  EXPECT_NEAR(out[0], 1.0, 1e-12);
  EXPECT_NEAR(out[1], 0.0, 1e-12);
  EXPECT_NEAR(out[2], 0.0, 1e-12);
}

TEST(ZRVtkFindOriginalPipelineInput, WalksUpToTheFirstAlgorithm)
{
  auto sphere = vtkSmartPointer<vtkSphereSource>::New();
  auto shrink = vtkSmartPointer<vtkShrinkPolyData>::New();
  shrink->SetInputConnection(sphere->GetOutputPort());
  auto elevation = vtkSmartPointer<vtkElevationFilter>::New();
  elevation->SetInputConnection(shrink->GetOutputPort());
  elevation->Update();
  EXPECT_EQ(utils::FindOriginalPipelineInput(elevation), sphere->GetOutputDataObject(0));
  EXPECT_EQ(utils::FindOriginalPipelineInput(sphere), sphere->GetOutputDataObject(0));
  EXPECT_EQ(utils::FindOriginalPipelineInput(nullptr), nullptr);
}

TEST(ZRVtkColors, ConversionsKeepTheColour)
{
  const QColor orange(255, 128, 0);
  const vtkColor3d asDouble = utils::GetVtkColor3dFromQColor(orange);
  EXPECT_DOUBLE_EQ(asDouble.GetRed(), 1.0);
  EXPECT_NEAR(asDouble.GetGreen(), 128.0 / 255.0, 1e-6);
  EXPECT_DOUBLE_EQ(asDouble.GetBlue(), 0.0);
  EXPECT_EQ(utils::GetQColorFromVtkColor(asDouble), orange);
  const vtkColor3ub asBytes = utils::GetVtkColor3ubFromQColor(orange);
  EXPECT_EQ(asBytes.GetRed(), 255);
  EXPECT_EQ(asBytes.GetGreen(), 128);
  EXPECT_EQ(asBytes.GetBlue(), 0);
}

TEST(ZRVtkColors, RandomColoursAreOpaqueAndVary)
{
  std::set<QRgb> seen;
  for (int i = 0; i < 50; ++i)
  {
    const QColor color = utils::GenerateRandomColor();
    EXPECT_TRUE(color.isValid());
    EXPECT_EQ(color.alpha(), 255);
    seen.insert(color.rgb());
  }
  EXPECT_GT(seen.size(), 40u);
}

TEST(ZRVtkColors, PresetPaletteHasDistinctColours)
{
  std::set<QRgb> distinct;
  for (const QColor& color : utils::k_ZRColorPreset1)
  {
    distinct.insert(color.rgb());
  }
  EXPECT_GE(utils::k_ZRColorPreset1.size(), 8u);
  EXPECT_EQ(distinct.size(), utils::k_ZRColorPreset1.size());
}

TEST(ZRVtkObjectName, DatasetsAndArraysCarryANameOtherObjectsNone)
{
  auto image = vtkSmartPointer<vtkImageData>::New();
  auto array = vtkSmartPointer<vtkFloatArray>::New();
  auto transform = vtkSmartPointer<vtkTransform>::New();
  EXPECT_EQ(ZRVtk::GetObjectName(image), "");
  ZRVtk::SetObjectName(image, "Grain Geometry");
  ZRVtk::SetObjectName(array, "Euler Angles");
  ZRVtk::SetObjectName(transform, "ignored");
  EXPECT_EQ(ZRVtk::GetObjectName(image), "Grain Geometry");
  EXPECT_EQ(ZRVtk::GetObjectName(array), "Euler Angles");
  EXPECT_EQ(ZRVtk::GetObjectName(transform), "");
  EXPECT_EQ(ZRVtk::GetObjectName(nullptr), "");
  // The array's own name is a different thing.
  EXPECT_EQ(array->GetName(), nullptr);
}
