#include "data_bridge/ZRVtkUtils.h"

#include <QRandomGenerator>

#include <vtkAlgorithm.h>
#include <vtkTransform.h>

namespace ZRVtk
{
namespace utils
{
// Distinct, readable on light and dark backgrounds (Tableau 10).
const std::vector<QColor> k_ZRColorPreset1 = {
    QColor(31, 119, 180),  QColor(255, 127, 14), QColor(44, 160, 44),   QColor(214, 39, 40),
    QColor(148, 103, 189), QColor(140, 86, 75),  QColor(227, 119, 194), QColor(127, 127, 127),
    QColor(188, 189, 34),  QColor(23, 190, 207)};

vtkSmartPointer<vtkTransform> CreateTransform(const std::array<double, 3>& position,
                                              const std::array<double, 3>& rotation,
                                              const std::array<double, 3>& scale)
{
  auto transform = vtkSmartPointer<vtkTransform>::New();
  transform->Translate(position.data());
  transform->RotateZ(rotation[2]);
  transform->RotateX(rotation[0]);
  transform->RotateY(rotation[1]);
  transform->Scale(scale.data());
  return transform;
}

vtkDataObject* FindOriginalPipelineInput(vtkAlgorithm* algorithm)
{
  if (algorithm == nullptr)
  {
    return nullptr;
  }
  while (algorithm->GetNumberOfInputPorts() > 0 && algorithm->GetNumberOfInputConnections(0) > 0)
  {
    vtkAlgorithm* upstream = algorithm->GetInputAlgorithm(0, 0);
    if (upstream == nullptr)
    {
      break;
    }
    algorithm = upstream;
  }
  return algorithm->GetNumberOfOutputPorts() > 0 ? algorithm->GetOutputDataObject(0) : nullptr;
}

QColor GetQColorFromVtkColor(const vtkColor3d& color)
{
  return QColor::fromRgbF(color.GetRed(), color.GetGreen(), color.GetBlue());
}

vtkColor3d GetVtkColor3dFromQColor(const QColor& color)
{
  return vtkColor3d(color.redF(), color.greenF(), color.blueF());
}

vtkColor3ub GetVtkColor3ubFromQColor(const QColor& color)
{
  return vtkColor3ub(static_cast<unsigned char>(color.red()), static_cast<unsigned char>(color.green()),
                     static_cast<unsigned char>(color.blue()));
}

QColor GenerateRandomColor()
{
  QRandomGenerator* generator = QRandomGenerator::global();
  const int red = generator->bounded(256);
  const int green = generator->bounded(256);
  const int blue = generator->bounded(256);
  return QColor(red, green, blue);
}
} // namespace utils
} // namespace ZRVtk
