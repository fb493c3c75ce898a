#include "RenderWindowTestUtils.h"

#include "common/ZRImageBaseline.h"

#include <vtkActor.h>
#include <vtkCubeSource.h>
#include <vtkNew.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkSphereSource.h>

#include <QCoreApplication>
#include <QDir>
#include <QTest>

namespace zr_test
{
namespace
{
vtkSmartPointer<vtkActor> makeActor(vtkAlgorithm* source, double r, double g, double b)
{
  vtkNew<vtkPolyDataMapper> mapper;
  mapper->SetInputConnection(source->GetOutputPort());
  auto actor = vtkSmartPointer<vtkActor>::New();
  actor->SetMapper(mapper);
  actor->GetProperty()->SetColor(r, g, b);
  return actor;
}
} // namespace

void settle(int rounds)
{
  for (int i = 0; i < rounds; ++i)
  {
    QCoreApplication::processEvents();
    QTest::qWait(5);
  }
}

std::unique_ptr<VXVisualizationWidget> makeShownWindow(int width, int height)
{
  auto window = std::make_unique<VXVisualizationWidget>(nullptr, 2);
  window->resize(width, height);
  window->show();
  EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
  settle();
  return window;
}

vtkSmartPointer<vtkActor> makeSphereActor(double x, double y, double z, double r, double g, double b)
{
  vtkNew<vtkSphereSource> sphere;
  sphere->SetCenter(x, y, z);
  sphere->SetRadius(1.0);
  sphere->SetThetaResolution(32);
  sphere->SetPhiResolution(32);
  return makeActor(sphere, r, g, b);
}

vtkSmartPointer<vtkActor> makeCubeActor(double x, double y, double z, double r, double g, double b)
{
  vtkNew<vtkCubeSource> cube;
  cube->SetCenter(x, y, z);
  return makeActor(cube, r, g, b);
}

double imageError(const QImage& actual, const QImage& expected)
{
  return ZRTest::ImageError(actual, expected);
}

::testing::AssertionResult matchesBaseline(const QImage& image, const std::string& name)
{
  return ZRTest::MatchesBaseline(image, QStringLiteral(ZR_VIEWS_BASELINE_DIR), QString::fromStdString(name),
                                 k_BaselineTolerance);
}
} // namespace zr_test
