#include "RenderWindowTestUtils.h"

#include <vtkActor.h>
#include <vtkCubeSource.h>
#include <vtkImageData.h>
#include <vtkImageDifference.h>
#include <vtkNew.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkSphereSource.h>

#include <QCoreApplication>
#include <QDir>
#include <QTest>

#include <cstdlib>
#include <cstring>

namespace zr_test
{
namespace
{
vtkSmartPointer<vtkImageData> toVtkImage(const QImage& image)
{
  const QImage rgb = image.convertToFormat(QImage::Format_RGB888);
  auto data = vtkSmartPointer<vtkImageData>::New();
  data->SetDimensions(rgb.width(), rgb.height(), 1);
  data->AllocateScalars(VTK_UNSIGNED_CHAR, 3);
  auto* out = static_cast<unsigned char*>(data->GetScalarPointer());
  for (int row = 0; row < rgb.height(); ++row)
  {
    std::memcpy(out + static_cast<std::size_t>(row) * rgb.width() * 3, rgb.constScanLine(row),
                static_cast<std::size_t>(rgb.width()) * 3);
  }
  return data;
}

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
  if (actual.size() != expected.size())
  {
    return 1e9;
  }
  vtkNew<vtkImageDifference> difference;
  difference->SetInputData(toVtkImage(actual));
  difference->SetImageData(toVtkImage(expected));
  difference->Update();
  return difference->GetThresholdedError();
}

::testing::AssertionResult matchesBaseline(const QImage& image, const std::string& name)
{
  if (image.isNull())
  {
    return ::testing::AssertionFailure() << "no image was captured for " << name;
  }
  const QString path =
      QDir(QStringLiteral(ZR_VIEWS_BASELINE_DIR)).filePath(QString::fromStdString(name) + ".png");
  const char* regenerate = std::getenv("ZR_REGENERATE_BASELINES");
  if (regenerate != nullptr && std::string(regenerate) == "1")
  {
    if (!image.convertToFormat(QImage::Format_RGB888).save(path))
    {
      return ::testing::AssertionFailure() << "could not write " << path.toStdString();
    }
    return ::testing::AssertionSuccess() << "regenerated " << path.toStdString();
  }
  const QImage expected(path);
  if (expected.isNull())
  {
    return ::testing::AssertionFailure()
           << "missing baseline " << path.toStdString() << " (run tests/views/regenerate-baselines.sh)";
  }
  const double error = imageError(image, expected);
  if (error > k_BaselineTolerance)
  {
    const QString actualPath =
        QDir(QStringLiteral(ZR_TEST_BINARY_DIR)).filePath(QString::fromStdString(name) + "-actual.png");
    image.save(actualPath);
    return ::testing::AssertionFailure()
           << name << ": image error " << error << " above " << k_BaselineTolerance << "; frame written to "
           << actualPath.toStdString();
  }
  return ::testing::AssertionSuccess();
}
} // namespace zr_test
