#pragma once

#include <vtkSmartPointer.h>

#include <QString>

class vtkImageData;

/**
 * Decodes image files through Qt's image plugins, for the layouts VTK's readers would garble (an alpha
 * channel, colour planes stored apart, 16-bit colour). Every page of the file becomes one z slice.
 * Grey and colour keep 16 bits where the file has them; other pages come out as 8-bit RGB, or RGBA
 * when they have an alpha channel. The bottom row of the picture comes first, at y = 0, as in every image
 * the viewer reads.
 */
class VXQtImageDecoder
{
public:
  /** Null, with the reason in errorMessage, when Qt cannot decode the file or its pages differ in size. */
  static vtkSmartPointer<vtkImageData> Read(const QString& path, const char* arrayName,
                                            QString* errorMessage);
};
