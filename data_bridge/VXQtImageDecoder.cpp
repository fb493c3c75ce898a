#include "data_bridge/VXQtImageDecoder.h"

#include <vtkImageData.h>
#include <vtkPointData.h>
#include <vtkUnsignedCharArray.h>
#include <vtkUnsignedShortArray.h>

#include <QImage>
#include <QImageReader>

#include <algorithm>
#include <cstring>
#include <vector>

namespace
{
// A stack deeper than this is not a picture but a damaged page count.
constexpr int k_MaxPages = 4096;

struct PixelLayout
{
  QImage::Format format = QImage::Format_RGB888;
  int components = 3;
  bool wide = false; // 16 bits a component
};

PixelLayout LayoutOf(const std::vector<QImage>& pages)
{
  const auto all = [&pages](auto test) { return std::all_of(pages.begin(), pages.end(), test); };
  const auto any = [&pages](auto test) { return std::any_of(pages.begin(), pages.end(), test); };
  const bool alpha = any([](const QImage& page) { return page.hasAlphaChannel(); });
  if (!alpha && all([](const QImage& page) { return page.format() == QImage::Format_Grayscale16; }))
  {
    return {QImage::Format_Grayscale16, 1, true};
  }
  if (!alpha && all([](const QImage& page) { return page.format() == QImage::Format_Grayscale8; }))
  {
    return {QImage::Format_Grayscale8, 1, false};
  }
  const bool wide = all(
      [](const QImage& page)
      {
        return page.format() == QImage::Format_RGBX64 || page.format() == QImage::Format_RGBA64 ||
               page.format() == QImage::Format_RGBA64_Premultiplied;
      });
  if (wide)
  {
    return {alpha ? QImage::Format_RGBA64 : QImage::Format_RGBX64, alpha ? 4 : 3, true};
  }
  return {alpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888, alpha ? 4 : 3, false};
}

// Copies each row's components, bottom row first as VTK's images go, leaving out the padding of RGBX64.
template<class T>
void CopyPages(const std::vector<QImage>& pages, const PixelLayout& layout, T* out)
{
  const int stored = layout.format == QImage::Format_RGBX64 ? 4 : layout.components;
  for (const QImage& source : pages)
  {
    const QImage page = source.convertToFormat(layout.format);
    for (int y = page.height() - 1; y >= 0; --y)
    {
      const T* row = reinterpret_cast<const T*>(page.constScanLine(y));
      if (stored == layout.components)
      {
        std::memcpy(out, row, sizeof(T) * page.width() * layout.components);
        out += page.width() * layout.components;
        continue;
      }
      for (int x = 0; x < page.width(); ++x)
      {
        std::copy(row + x * stored, row + x * stored + layout.components, out);
        out += layout.components;
      }
    }
  }
}
} // namespace

vtkSmartPointer<vtkImageData> VXQtImageDecoder::Read(const QString& path, const char* arrayName,
                                                     QString* errorMessage)
{
  const auto fail = [&](const QString& why)
  {
    if (errorMessage != nullptr)
    {
      *errorMessage = QStringLiteral("The image '%1' cannot be decoded: %2").arg(path, why);
    }
    return nullptr;
  };
  QImageReader reader(path);
  reader.setAutoTransform(false);
  const int count = std::max(1, reader.imageCount());
  if (count > k_MaxPages)
  {
    return fail(QStringLiteral("it claims %1 pages.").arg(count));
  }
  std::vector<QImage> pages;
  for (int i = 0; i < count; ++i)
  {
    if (i > 0 && !reader.jumpToNextImage())
    {
      break;
    }
    QImage page = reader.read();
    if (page.isNull())
    {
      return fail(reader.errorString() + QLatin1Char('.'));
    }
    if (!pages.empty() && page.size() != pages.front().size())
    {
      return fail(QStringLiteral("its pages differ in size (%1 x %2 after %3 x %4).")
                      .arg(page.width())
                      .arg(page.height())
                      .arg(pages.front().width())
                      .arg(pages.front().height()));
    }
    pages.push_back(std::move(page));
  }
  const PixelLayout layout = LayoutOf(pages);
  const int width = pages.front().width();
  const int height = pages.front().height();
  const vtkIdType tuples = vtkIdType(width) * height * vtkIdType(pages.size());

  vtkSmartPointer<vtkDataArray> scalars;
  if (layout.wide)
  {
    auto values = vtkSmartPointer<vtkUnsignedShortArray>::New();
    values->SetNumberOfComponents(layout.components);
    values->SetNumberOfTuples(tuples);
    CopyPages(pages, layout, values->GetPointer(0));
    scalars = values;
  }
  else
  {
    auto values = vtkSmartPointer<vtkUnsignedCharArray>::New();
    values->SetNumberOfComponents(layout.components);
    values->SetNumberOfTuples(tuples);
    CopyPages(pages, layout, values->GetPointer(0));
    scalars = values;
  }
  scalars->SetName(arrayName);
  auto image = vtkSmartPointer<vtkImageData>::New();
  image->SetDimensions(width, height, static_cast<int>(pages.size()));
  image->GetPointData()->SetScalars(scalars);
  return image;
}
