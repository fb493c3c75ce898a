#include "views/VXGridAxesActor.h"

#include <vtkActor.h>
#include <vtkCellArray.h>
#include <vtkCoordinate.h>
#include <vtkObjectFactory.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkTextActor.h>
#include <vtkTextProperty.h>
#include <vtkViewport.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

vtkStandardNewMacro(VXGridAxesActor);

namespace
{
const char* const k_AxisTitles[3] = {"X Axis", "Y Axis", "Z Axis"};
// Labels further below their tick than the user's offset: the title sits under the labels.
constexpr int k_TitleExtraOffset = 22;
// More ticks than this on one axis is a spacing error of the user, not a grid anyone can read.
constexpr std::size_t k_MaxLabelsPerAxis = 1000;

double niceStep(double range)
{
  const double raw = range / 5.0;
  const double magnitude = std::pow(10.0, std::floor(std::log10(raw)));
  const double fraction = raw / magnitude;
  double nice = 10.0;
  if (fraction <= 1.0)
  {
    nice = 1.0;
  }
  else if (fraction <= 2.0)
  {
    nice = 2.0;
  }
  else if (fraction <= 5.0)
  {
    nice = 5.0;
  }
  return nice * magnitude;
}
} // namespace

VXGridAxesActor::VXGridAxesActor()
{
  vtkNew<vtkPolyDataMapper> mapper;
  mapper->SetInputData(m_Lines);
  mapper->ScalarVisibilityOff();
  m_LineActor->SetMapper(mapper);
  m_LineActor->PickableOff();
  m_LineActor->GetProperty()->SetColor(1.0, 1.0, 1.0);
  m_LineActor->GetProperty()->SetLineWidth(1.0);
  AddPart(m_LineActor);
  for (int axis = 0; axis < 3; ++axis)
  {
    m_TitleProperties[axis]->SetFontSize(12);
    m_TitleProperties[axis]->SetJustificationToCentered();
    m_TitleProperties[axis]->SetVerticalJustificationToTop();
    m_LabelProperties[axis]->SetFontSize(12);
    m_LabelProperties[axis]->SetJustificationToCentered();
    m_LabelProperties[axis]->SetVerticalJustificationToTop();
  }
  PickableOff();
  rebuild();
}

VXGridAxesActor::~VXGridAxesActor() = default;

void VXGridAxesActor::SetGridBounds(const double bounds[6])
{
  std::copy(bounds, bounds + 6, m_Bounds.begin());
  rebuild();
}

void VXGridAxesActor::SetGenerateGrid(bool on)
{
  m_GenerateGrid = on;
  rebuildLines();
}

void VXGridAxesActor::SetGenerateEdges(bool on)
{
  m_GenerateEdges = on;
  rebuildLines();
}

void VXGridAxesActor::SetGenerateTicks(bool on)
{
  m_GenerateTicks = on;
  rebuildLines();
}

void VXGridAxesActor::SetUseCustomLabels(int axis, bool on)
{
  if (axis < 0 || axis > 2)
  {
    return;
  }
  m_UseCustomLabels[axis] = on;
  rebuild();
}

bool VXGridAxesActor::GetUseCustomLabels(int axis) const
{
  return axis >= 0 && axis < 3 && m_UseCustomLabels[axis];
}

void VXGridAxesActor::SetCustomLabels(int axis, const std::vector<double>& values)
{
  if (axis < 0 || axis > 2)
  {
    return;
  }
  m_CustomLabels[axis] = values;
  if (m_CustomLabels[axis].size() > k_MaxLabelsPerAxis)
  {
    m_CustomLabels[axis].resize(k_MaxLabelsPerAxis);
  }
  rebuild();
}

std::vector<double> VXGridAxesActor::GetLabelValues(int axis) const
{
  if (axis < 0 || axis > 2 || !boundsValid())
  {
    return {};
  }
  if (m_UseCustomLabels[axis])
  {
    return m_CustomLabels[axis];
  }
  return AutomaticLabelValues(m_Bounds[2 * axis], m_Bounds[2 * axis + 1]);
}

namespace
{
// The step between neighbouring labels, which decides how many decimals they show.
double labelStep(const std::vector<double>& values)
{
  double step = 0.0;
  for (std::size_t i = 1; i < values.size(); ++i)
  {
    const double gap = std::abs(values[i] - values[i - 1]);
    if (gap > 0.0 && (step == 0.0 || gap < step))
    {
      step = gap;
    }
  }
  return step;
}
} // namespace

namespace
{
// The fewest decimals (up to 6) that write the value to single precision, as bounds come.
int decimalsOf(double value)
{
  int decimals = 0;
  while (decimals < 6)
  {
    const double scaled = std::abs(value) * std::pow(10.0, decimals);
    if (std::abs(scaled - std::round(scaled)) <= 1e-6 * std::max(scaled, 1.0))
    {
      break;
    }
    ++decimals;
  }
  return decimals;
}
} // namespace

std::vector<std::string> VXGridAxesActor::GetLabelTexts(int axis) const
{
  const std::vector<double> values = GetLabelValues(axis);
  double step = labelStep(values);
  if (step > 0.0 && !values.empty())
  {
    // Spaced labels start at the grid's minimum, which need not be a multiple of the step: the
    // texts show the decimals of both, as -19.2 -14.2 ... for a step of 5 from -19.2.
    step = std::min(step, std::pow(10.0, -decimalsOf(values.front())));
  }
  std::vector<std::string> texts;
  for (double value : values)
  {
    texts.push_back(step > 0.0 ? FormatLabel(value, step) : FormatLabel(value));
  }
  return texts;
}

std::vector<std::string> VXGridAxesActor::GetVisibleLabelTexts(int axis) const
{
  std::vector<std::string> texts;
  for (std::size_t i = 0; i < m_Labels.size(); ++i)
  {
    if (m_LabelAxes[i] == axis && m_Labels[i]->GetVisibility() != 0)
    {
      texts.emplace_back(m_Labels[i]->GetInput() != nullptr ? m_Labels[i]->GetInput() : "");
    }
  }
  return texts;
}

void VXGridAxesActor::ThinLabels(vtkViewport* viewport)
{
  if (viewport == nullptr)
  {
    return;
  }
  constexpr double k_Gap = 4.0;
  for (int axis = 0; axis < 3; ++axis)
  {
    // The screen boxes of this axis' labels, in the order of their values.
    std::vector<std::size_t> indices;
    std::vector<std::array<double, 4>> boxes;
    for (std::size_t i = 0; i < m_Labels.size(); ++i)
    {
      if (m_LabelAxes[i] != axis)
      {
        continue;
      }
      std::array<double, 4> box{};
      m_Labels[i]->GetBoundingBox(viewport, box.data());
      int* anchor = m_Labels[i]->GetPositionCoordinate()->GetComputedDisplayValue(viewport);
      box[0] += anchor[0];
      box[1] += anchor[0];
      box[2] += anchor[1];
      box[3] += anchor[1];
      indices.push_back(i);
      boxes.push_back(box);
    }
    auto overlap = [&boxes](std::size_t a, std::size_t b)
    {
      return boxes[a][0] < boxes[b][1] + k_Gap && boxes[b][0] < boxes[a][1] + k_Gap &&
             boxes[a][2] < boxes[b][3] + k_Gap && boxes[b][2] < boxes[a][3] + k_Gap;
    };
    // The smallest stride at which every shown label stands clear of the next shown one, so that the
    // labels left keep an even spacing.
    std::size_t stride = 1;
    for (; stride < boxes.size(); ++stride)
    {
      bool clear = true;
      for (std::size_t k = 0; clear && k + stride < boxes.size(); k += stride)
      {
        clear = !overlap(k, k + stride);
      }
      if (clear)
      {
        break;
      }
    }
    for (std::size_t k = 0; k < indices.size(); ++k)
    {
      m_Labels[indices[k]]->SetVisibility(k % stride == 0 ? 1 : 0);
    }
  }
}

int VXGridAxesActor::RenderOpaqueGeometry(vtkViewport* viewport)
{
  ThinLabels(viewport);
  return vtkPropAssembly::RenderOpaqueGeometry(viewport);
}

void VXGridAxesActor::SetLabelDisplayOffset(int x, int y)
{
  m_LabelOffset = {{x, y}};
  rebuildLabels();
}

vtkTextProperty* VXGridAxesActor::GetTitleTextProperty(int axis)
{
  return m_TitleProperties[std::clamp(axis, 0, 2)];
}

vtkTextProperty* VXGridAxesActor::GetLabelTextProperty(int axis)
{
  return m_LabelProperties[std::clamp(axis, 0, 2)];
}

vtkProperty* VXGridAxesActor::GetProperty()
{
  return m_LineActor->GetProperty();
}

std::vector<double> VXGridAxesActor::AutomaticLabelValues(double min, double max)
{
  if (!(min <= max) || !std::isfinite(min) || !std::isfinite(max))
  {
    return {};
  }
  if (min == max)
  {
    return {min};
  }
  const double step = niceStep(max - min);
  const double tolerance = step * 1e-9;
  std::vector<double> values;
  for (double k = std::ceil((min - tolerance) / step); values.size() < k_MaxLabelsPerAxis; k += 1.0)
  {
    const double value = k * step;
    if (value > max + tolerance)
    {
      break;
    }
    values.push_back(std::abs(value) < tolerance ? 0.0 : value);
  }
  return values;
}

double VXGridAxesActor::AutomaticStep(double min, double max)
{
  if (!(min < max) || !std::isfinite(min) || !std::isfinite(max))
  {
    return 0.0;
  }
  return niceStep(max - min);
}

std::vector<double> VXGridAxesActor::SpacedLabelValues(double min, double max, double spacing)
{
  if (!(min <= max) || !std::isfinite(min) || !std::isfinite(max) || !(spacing > 0.0) ||
      !std::isfinite(spacing))
  {
    return {};
  }
  // From the minimum, one label per spacing up to the maximum, by running addition; the labels'
  // texts hide the rounding noise that the sum gathers.
  const double count = std::floor((max - min) / spacing) + 1.0;
  std::vector<double> values;
  double value = min;
  for (double k = 0.0; k < count && values.size() < k_MaxLabelsPerAxis; k += 1.0)
  {
    values.push_back(value);
    value += spacing;
  }
  return values;
}

std::string VXGridAxesActor::FormatLabel(double value)
{
  return fmt::format("{:g}", value);
}

std::string VXGridAxesActor::FormatLabel(double value, double step)
{
  step = std::abs(step);
  if (!(step > 0.0) || !std::isfinite(step) || !std::isfinite(value))
  {
    return FormatLabel(value);
  }
  const double magnitude = std::max(std::abs(value), step);
  if (magnitude >= 1e7 || magnitude < 1e-5)
  {
    // Far from 1 the exponent form reads better; the step's digits are what matter.
    const int digits = std::clamp(static_cast<int>(std::ceil(std::log10(magnitude / step))) + 2, 1, 15);
    return fmt::format("{:.{}g}", value, digits);
  }
  // The fewest decimals that write the step exactly, such as 1 for 0.5 and 2 for 0.25.
  int decimals = 0;
  while (decimals < 10)
  {
    const double scaled = step * std::pow(10.0, decimals);
    if (std::abs(scaled - std::round(scaled)) <= 1e-6 * scaled)
    {
      break;
    }
    ++decimals;
  }
  std::string text = fmt::format("{:.{}f}", value, decimals);
  if (text.find('.') != std::string::npos)
  {
    // Written like the automatic labels: 0.5, 1, 1.5 rather than 0.5, 1.0, 1.5.
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.')
    {
      text.pop_back();
    }
  }
  return text == "-0" ? std::string("0") : text;
}

bool VXGridAxesActor::boundsValid() const
{
  return m_Bounds[0] <= m_Bounds[1] && m_Bounds[2] <= m_Bounds[3] && m_Bounds[4] <= m_Bounds[5];
}

void VXGridAxesActor::rebuild()
{
  rebuildLines();
  rebuildLabels();
}

void VXGridAxesActor::rebuildLines()
{
  vtkNew<vtkPoints> points;
  vtkNew<vtkCellArray> lines;
  m_Lines->Initialize();
  if (!boundsValid())
  {
    m_Lines->SetPoints(points);
    m_Lines->SetLines(lines);
    m_Lines->Modified();
    return;
  }
  const auto& b = m_Bounds;
  auto addLine = [&](double x0, double y0, double z0, double x1, double y1, double z1)
  {
    const vtkIdType a = points->InsertNextPoint(x0, y0, z0);
    const vtkIdType c = points->InsertNextPoint(x1, y1, z1);
    const vtkIdType ids[2] = {a, c};
    lines->InsertNextCell(2, ids);
  };
  if (m_GenerateEdges)
  {
    for (int i = 0; i < 2; ++i)
    {
      for (int j = 0; j < 2; ++j)
      {
        addLine(b[0], b[2 + i], b[4 + j], b[1], b[2 + i], b[4 + j]);
        addLine(b[i], b[2], b[4 + j], b[i], b[3], b[4 + j]);
        addLine(b[i], b[2 + j], b[4], b[i], b[2 + j], b[5]);
      }
    }
  }
  const double extent = std::max({b[1] - b[0], b[3] - b[2], b[5] - b[4]});
  const double tick = extent > 0.0 ? extent * 0.02 : 0.0;
  const auto xs = GetLabelValues(0);
  const auto ys = GetLabelValues(1);
  const auto zs = GetLabelValues(2);
  if (m_GenerateTicks)
  {
    for (double x : xs)
    {
      addLine(x, b[2], b[4], x, b[2] - tick, b[4]);
    }
    for (double y : ys)
    {
      addLine(b[0], y, b[4], b[0] - tick, y, b[4]);
    }
    for (double z : zs)
    {
      addLine(b[0], b[2], z, b[0] - tick, b[2], z);
    }
  }
  if (m_GenerateGrid)
  {
    // The three faces through the minimum corner, so the grid stands behind the data from the usual
    // viewpoints and never hides it.
    for (double x : xs)
    {
      addLine(x, b[2], b[4], x, b[3], b[4]);
      addLine(x, b[2], b[4], x, b[2], b[5]);
    }
    for (double y : ys)
    {
      addLine(b[0], y, b[4], b[1], y, b[4]);
      addLine(b[0], y, b[4], b[0], y, b[5]);
    }
    for (double z : zs)
    {
      addLine(b[0], b[2], z, b[1], b[2], z);
      addLine(b[0], b[2], z, b[0], b[3], z);
    }
  }
  m_Lines->SetPoints(points);
  m_Lines->SetLines(lines);
  m_Lines->Modified();
}

vtkSmartPointer<vtkTextActor> VXGridAxesActor::makeText(const std::string& text, vtkTextProperty* property,
                                                        const double position[3], int offsetX,
                                                        int offsetY) const
{
  vtkNew<vtkCoordinate> anchor;
  anchor->SetCoordinateSystemToWorld();
  anchor->SetValue(position[0], position[1], position[2]);
  auto actor = vtkSmartPointer<vtkTextActor>::New();
  actor->SetInput(text.c_str());
  actor->SetTextProperty(property);
  actor->GetPositionCoordinate()->SetCoordinateSystemToDisplay();
  actor->GetPositionCoordinate()->SetReferenceCoordinate(anchor);
  actor->GetPositionCoordinate()->SetValue(offsetX, offsetY);
  actor->PickableOff();
  return actor;
}

void VXGridAxesActor::rebuildLabels()
{
  for (auto& label : m_Labels)
  {
    RemovePart(label);
  }
  m_Labels.clear();
  m_LabelAxes.clear();
  for (auto& title : m_Titles)
  {
    RemovePart(title);
    title = nullptr;
  }
  if (!boundsValid())
  {
    return;
  }
  const auto& b = m_Bounds;
  for (int axis = 0; axis < 3; ++axis)
  {
    const std::vector<double> values = GetLabelValues(axis);
    const std::vector<std::string> texts = GetLabelTexts(axis);
    for (std::size_t i = 0; i < values.size(); ++i)
    {
      double position[3] = {b[0], b[2], b[4]};
      position[axis] = values[i];
      m_Labels.push_back(
          makeText(texts[i], m_LabelProperties[axis], position, m_LabelOffset[0], m_LabelOffset[1]));
      m_LabelAxes.push_back(axis);
      AddPart(m_Labels.back());
    }
    double middle[3] = {b[0], b[2], b[4]};
    middle[axis] = 0.5 * (b[2 * axis] + b[2 * axis + 1]);
    m_Titles[axis] = makeText(k_AxisTitles[axis], m_TitleProperties[axis], middle, m_LabelOffset[0],
                              m_LabelOffset[1] - k_TitleExtraOffset);
    AddPart(m_Titles[axis]);
  }
}
