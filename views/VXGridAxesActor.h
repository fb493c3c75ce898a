#pragma once

#include <vtkNew.h>
#include <vtkPropAssembly.h>
#include <vtkSmartPointer.h>

#include <array>
#include <string>
#include <vector>

class vtkActor;
class vtkTextActor;
class vtkPolyData;
class vtkProperty;
class vtkTextProperty;
class vtkViewport;

/**
 * Labels are screen-aligned texts anchored at world points, so that they keep their pixel size at any
 * zoom and are never hidden behind the data.
 *
 * @brief The axes grid of a render window: box edges, ticks, optional grid lines on the three faces
 * through the minimum corner, and one label per tick. Labels are either chosen automatically (a "nice"
 * step of 1, 2 or 5 times a power of ten) or given per axis as exact values, so that a user's spacing
 * shows exactly the values min, min + s, min + 2s, ...
 */
class VXGridAxesActor : public vtkPropAssembly
{
public:
  static VXGridAxesActor* New();
  vtkTypeMacro(VXGridAxesActor, vtkPropAssembly);

  void SetGridBounds(const double bounds[6]);
  const double* GetGridBounds() const { return m_Bounds.data(); }

  void SetGenerateGrid(bool on);
  bool GetGenerateGrid() const { return m_GenerateGrid; }
  void SetGenerateEdges(bool on);
  bool GetGenerateEdges() const { return m_GenerateEdges; }
  void SetGenerateTicks(bool on);
  bool GetGenerateTicks() const { return m_GenerateTicks; }

  /** Custom labels of one axis (0, 1, 2) replace the automatic ones while switched on. */
  void SetUseCustomLabels(int axis, bool on);
  bool GetUseCustomLabels(int axis) const;
  void SetCustomLabels(int axis, const std::vector<double>& values);

  /** The values that carry a tick and a label on one axis, as they will be drawn. */
  std::vector<double> GetLabelValues(int axis) const;
  std::vector<std::string> GetLabelTexts(int axis) const;

  void SetLabelDisplayOffset(int x, int y);
  vtkTextProperty* GetTitleTextProperty(int axis);
  vtkTextProperty* GetLabelTextProperty(int axis);
  vtkProperty* GetProperty();

  /** The automatic label values of a range: a nice step and all its multiples inside [min, max]. */
  static std::vector<double> AutomaticLabelValues(double min, double max);
  /** The automatic step of a range, the one AutomaticLabelValues uses; 0 for an empty range. */
  static double AutomaticStep(double min, double max);
  /** Every multiple of the spacing inside [min, max] (at most 1000 of them). */
  static std::vector<double> SpacedLabelValues(double min, double max, double spacing);
  static std::string FormatLabel(double value);
  /** The value with just the decimals its step needs, so that no rounding noise shows. */
  static std::string FormatLabel(double value, double step);

  /** The labels of one axis that are drawn: neighbours that would overlap on the screen are thinned. */
  std::vector<std::string> GetVisibleLabelTexts(int axis) const;
  /** Thins the labels for the viewport; done before each frame. */
  void ThinLabels(vtkViewport* viewport);
  int RenderOpaqueGeometry(vtkViewport* viewport) override;

protected:
  VXGridAxesActor();
  ~VXGridAxesActor() override;

private:
  VXGridAxesActor(const VXGridAxesActor&) = delete;
  void operator=(const VXGridAxesActor&) = delete;

  bool boundsValid() const;
  void rebuild();
  void rebuildLines();
  void rebuildLabels();
  /** A text anchored at a world point and shifted on the screen by a pixel offset. */
  vtkSmartPointer<vtkTextActor> makeText(const std::string& text, vtkTextProperty* property,
                                         const double position[3], int offsetX, int offsetY) const;

  std::array<double, 6> m_Bounds = {{0.0, -1.0, 0.0, -1.0, 0.0, -1.0}};
  bool m_GenerateGrid = false;
  bool m_GenerateEdges = true;
  bool m_GenerateTicks = true;
  std::array<bool, 3> m_UseCustomLabels = {{false, false, false}};
  std::array<std::vector<double>, 3> m_CustomLabels;
  std::array<int, 2> m_LabelOffset = {{0, 0}};

  vtkNew<vtkPolyData> m_Lines;
  vtkNew<vtkActor> m_LineActor;
  std::array<vtkNew<vtkTextProperty>, 3> m_TitleProperties;
  std::array<vtkNew<vtkTextProperty>, 3> m_LabelProperties;
  std::array<vtkSmartPointer<vtkTextActor>, 3> m_Titles;
  std::vector<vtkSmartPointer<vtkTextActor>> m_Labels;
  std::vector<int> m_LabelAxes;
};
