#pragma once

// Dataset files and small VTK conversions: include this one header for all of ZRVtk::utils.
#include "data_bridge/ZRVtkDatasetReaders.h"
#include "data_bridge/ZRVtkDatasetWriters.h"
#include "data_bridge/ZRVtkObjectName.h"

#include <QColor>

#include <vtkColor.h>
#include <vtkSmartPointer.h>

#include <array>
#include <vector>

class vtkAlgorithm;
class vtkDataObject;
class vtkTransform;

namespace ZRVtk
{
namespace utils
{
// Translates, then rotates about Z, X and Y by rotation[2], rotation[0], rotation[1] degrees, then scales.
vtkSmartPointer<vtkTransform> CreateTransform(const std::array<double, 3>& position,
                                              const std::array<double, 3>& rotation,
                                              const std::array<double, 3>& scale);

// The output of the first algorithm up the chain of first inputs; null for null.
vtkDataObject* FindOriginalPipelineInput(vtkAlgorithm* algorithm);

QColor GetQColorFromVtkColor(const vtkColor3d& color);
vtkColor3d GetVtkColor3dFromQColor(const QColor& color);
vtkColor3ub GetVtkColor3ubFromQColor(const QColor& color);
// Opaque, each channel drawn from 0 to 255.
QColor GenerateRandomColor();

// Built-in palette for categories and chart series, taken in turn.
extern const std::vector<QColor> k_ZRColorPreset1;
} // namespace utils
} // namespace ZRVtk
