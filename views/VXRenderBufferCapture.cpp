#include "views/VXRenderBufferCapture.h"

#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkRenderWindow.h>
#include <vtkWindowToImageFilter.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

QImage VXRenderBufferCapture::grab(vtkRenderWindow* window, bool rgba)
{
  if (window == nullptr)
  {
    return {};
  }
  vtkNew<vtkWindowToImageFilter> grabber;
  grabber->SetInput(window);
  grabber->ReadFrontBufferOff();
  grabber->ShouldRerenderOn();
  if (rgba)
  {
    grabber->SetInputBufferTypeToRGBA();
  }
  else
  {
    grabber->SetInputBufferTypeToRGB();
  }
  grabber->Update();

  vtkImageData* pixels = grabber->GetOutput();
  int dims[3];
  pixels->GetDimensions(dims);
  const int components = pixels->GetNumberOfScalarComponents();
  QImage image(dims[0], dims[1], components == 4 ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
  const auto* data = static_cast<const unsigned char*>(pixels->GetScalarPointer());
  const int rowBytes = dims[0] * components;
  for (int row = 0; data != nullptr && row < dims[1]; ++row)
  {
    // The toolkit's origin is at the bottom.
    std::memcpy(image.scanLine(dims[1] - 1 - row), data + static_cast<std::size_t>(row) * rowBytes,
                static_cast<std::size_t>(rowBytes));
  }
  return image;
}

void VXRenderBufferCapture::mergeGlow(QImage& scene, const QImage& withGlow)
{
  if (scene.size() != withGlow.size() || scene.format() != QImage::Format_RGBA8888 ||
      withGlow.format() != QImage::Format_RGBA8888)
  {
    return;
  }
  for (int y = 0; y < scene.height(); ++y)
  {
    uchar* out = scene.scanLine(y);
    const uchar* glow = withGlow.constScanLine(y);
    for (int x = 0; x < scene.width() * 4; x += 4)
    {
      int change = 0;
      for (int c = 0; c < 3; ++c)
      {
        change = std::max(change, std::abs(int(glow[x + c]) - int(out[x + c])));
      }
      // The pass also shifts the colour of a whole region by a unit or two: that is no glow.
      if (change > k_GlowNoise)
      {
        std::copy(glow + x, glow + x + 3, out + x);
        out[x + 3] = static_cast<uchar>(std::max<int>(out[x + 3], std::min(255, change * k_GlowAlphaGain)));
      }
    }
  }
}
