#include "common/ZRImageBaseline.h"

#include <vtkImageData.h>
#include <vtkImageDifference.h>
#include <vtkNew.h>
#include <vtkSmartPointer.h>

#include <QDir>

#include <cstdlib>
#include <cstring>

namespace ZRTest
{
namespace
{
constexpr int k_PixelThreshold = 16;

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
} // namespace

double ImageError(const QImage& actual, const QImage& expected)
{
  if (actual.size() != expected.size())
  {
    return 1e9;
  }
  vtkNew<vtkImageDifference> difference;
  difference->SetInputData(toVtkImage(actual));
  difference->SetImageData(toVtkImage(expected));
  // The toolkit's default lets each pixel differ by about 35 a channel unseen, which hides a changed
  // opacity or a shifted colour map; the older, strict threshold still forgives one-pixel shifts.
  difference->SetThreshold(k_PixelThreshold);
  difference->Update();
  return difference->GetThresholdedError();
}

::testing::AssertionResult MatchesBaseline(const QImage& image, const QString& baselineDir,
                                           const QString& name, double tolerance)
{
  if (image.isNull())
  {
    return ::testing::AssertionFailure() << "no image was captured for " << name.toStdString();
  }
  const QString path = QDir(baselineDir).filePath(name + QStringLiteral(".png"));
  const char* regenerate = std::getenv("ZR_REGENERATE_BASELINES");
  if (regenerate != nullptr && std::strcmp(regenerate, "1") == 0)
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
           << "missing baseline " << path.toStdString() << " (regenerate with ZR_REGENERATE_BASELINES=1)";
  }
  const double error = ImageError(image, expected);
  if (error > tolerance)
  {
    const QString actualPath =
        QDir(QStringLiteral(ZR_TEST_BINARY_DIR)).filePath(name + QStringLiteral("-actual.png"));
    image.save(actualPath);
    return ::testing::AssertionFailure() << name.toStdString() << ": image error " << error << " above "
                                         << tolerance << "; frame written to " << actualPath.toStdString();
  }
  return ::testing::AssertionSuccess();
}
} // namespace ZRTest
