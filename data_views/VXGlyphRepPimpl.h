#pragma once

#include "data_views/VXPointsRepPimpl.h"

#include <QStringList>

#include <vtkType.h>

#include <array>

class QDoubleSpinBox;
class QLabel;
class QWidget;
class ZRCheckBox;
class ZRLineEdit;
class vtkAlgorithm;
class vtkArrowSource;
class vtkCellCenters;
class vtkCubeSource;
class vtkEllipseArcSource;
class vtkGlyph3DMapper;
class vtkMaskPoints;
class vtkSphereSource;

/**
 * The glyph view in one window: a small shape (arrow, sphere, cube or ellipse) at sample points of
 * the input, turned by a three-component array and scaled by a factor and optionally by an array.
 * Cells are sampled at their centres. The colouring is that of the points view: its mapper holds the
 * colour settings and the glyph mapper follows it.
 */
class VXGlyphRepPimpl : public VXPointsRepPimpl
{
  Q_OBJECT

public:
  static inline const QString k_Arrow = QStringLiteral("Arrow");
  static inline const QString k_Sphere = QStringLiteral("Sphere");
  static inline const QString k_Cube = QStringLiteral("Cube");
  static inline const QString k_Ellipse = QStringLiteral("Ellipse");
  static inline const QString k_AllPoints = QStringLiteral("All Points");
  static inline const QString k_EveryNthPoint = QStringLiteral("Every Nth Point");
  static inline const QString k_UniformBounds = QStringLiteral("Uniform Spatial Distribution (Bounds Based)");
  static inline const QString k_UniformSurface =
      QStringLiteral("Uniform Spatial Distribution (Surface Based)");
  static inline const QString k_UniformVolume = QStringLiteral("Uniform Spatial Distribution (Volume Based)");
  static QStringList GlyphTypes();
  static QStringList GlyphModes();

  VXGlyphRepPimpl(VXRepresentation* owner, VXAbstractViewWidget* view);
  ~VXGlyphRepPimpl() override;

  void initialize(vtkAlgorithmOutput* inputPort) override;
  void write(nlohmann::json& json) const override;
  void read(const nlohmann::json& json) override;
  void copySettings(const VXRepresentationPimpl* other) override;
  void applySettings() override;
  void receivePipelineOutputReloaded() override;
  void writeSettings(QtZRSettings& settings) const override;
  void readSettings(QtZRSettings& settings) override;
  void updateSettingsControls() override;
  vtkMapper* getMapper() const override;
  QString helpAnchor() const override { return QStringLiteral("#glyph-representation"); }
  QString levelName() const override { return QStringLiteral("glyph"); }
  using VXRepresentationPimpl::copySettings;
  using VXRepresentationPimpl::writeSettings;

  vtkGlyph3DMapper* glyphMapper() const;
  /** @brief The points that carry glyphs after sampling; null before an input is set. */
  vtkDataSet* glyphInput() const;

  /** @brief "Arrow", "Sphere", "Cube" or "Ellipse"; other texts are refused. */
  bool setGlyphType(const QString& type);
  QString glyphType() const { return m_GlyphType; }
  /** @brief A three-component array that turns the glyphs; empty or unknown leaves them unturned. */
  void setOrientationArray(const QString& arrayName);
  QString orientationArray() const { return m_OrientationArray; }
  /** @brief An array whose values (or magnitudes) scale the glyphs; empty scales by the factor only. */
  void setScaleArray(const QString& arrayName);
  QString scaleArray() const { return m_ScaleArray; }
  /** @brief A factor chosen by the user: it is kept, and saved, whatever the data. */
  void setScaleFactor(double factor);
  double scaleFactor() const { return m_ScaleFactor; }
  /** @brief True while no factor was chosen: the factor then follows the spacing of the glyph points. */
  bool scaleFactorFromData() const { return !m_ScaleFactorChosen; }
  /** @brief Forgets the chosen factor and takes the one the data gives again. */
  void useScaleFactorFromData();
  /**
   * @brief About the distance between neighbouring glyph points of the data set, so that glyphs of
   * unit size about touch: the smallest spacing of an image, the typical side of other cells, or
   * for a point cloud its bounds shared out among its points. @p carriers of the @p candidates points
   * carry glyphs after sampling; fewer carriers stand further apart. Zero when the data gives no size.
   */
  static double NeighbourSpacing(vtkDataSet* dataSet, vtkIdType candidates, vtkIdType carriers);
  /** @brief One of GlyphModes(); other texts are refused. */
  bool setGlyphMode(const QString& mode);
  QString glyphMode() const { return m_GlyphMode; }
  void setStride(int stride);
  int stride() const { return m_Stride; }
  void setMaxSamplePoints(int count);
  int maxSamplePoints() const { return m_MaxSamplePoints; }
  void setSeed(int seed);
  int seed() const { return m_Seed; }
  void setEllipseSource(std::array<double, 3> center, std::array<double, 3> normal,
                        std::array<double, 3> majorRadius, double ratio, int resolution);
  std::array<double, 3> ellipseCenter() const { return m_EllipseCenter; }
  std::array<double, 3> ellipseNormal() const { return m_EllipseNormal; }
  std::array<double, 3> ellipseMajorRadius() const { return m_EllipseRadius; }
  double ellipseRatio() const { return m_EllipseRatio; }
  int ellipseResolution() const { return m_EllipseResolution; }
  /** @brief The three-component arrays of the input that can turn glyphs. */
  QStringList orientationArrayChoices() const;

protected:
  void addStylingControls(QVBoxLayout* layout) override;
  void addExtraSections(QVBoxLayout* content) override;
  bool connectInput(vtkAlgorithmOutput* inputPort) override;

private:
  vtkAlgorithm* currentSource() const;
  // Cells are glyphed at their centres, vertices at their points.
  vtkAlgorithmOutput* samplingInput() const;
  void applyGlyphMode();
  void applyOrientation();
  void applyScaling();
  // While no factor was chosen, takes the one the current glyph points give.
  void updateScaleFactorFromData();
  void applyEllipse();
  // The glyph mapper takes the colour settings of the points view's mapper.
  void followColoring();
  void updateGlyphModeVisibility();
  void updateScaleFactorControls();

  vtkSmartPointer<vtkGlyph3DMapper> m_GlyphMapper;
  vtkSmartPointer<vtkCellCenters> m_CellCenters;
  vtkSmartPointer<vtkMaskPoints> m_MaskPoints;
  vtkSmartPointer<vtkArrowSource> m_ArrowSource;
  vtkSmartPointer<vtkSphereSource> m_SphereSource;
  vtkSmartPointer<vtkCubeSource> m_CubeSource;
  vtkSmartPointer<vtkEllipseArcSource> m_EllipseSource;
  unsigned long m_ColoringObserverTag = 0;

  QString m_GlyphType = k_Arrow;
  QString m_OrientationArray;
  QString m_ScaleArray;
  double m_ScaleFactor = 1.0;
  bool m_ScaleFactorChosen = false;
  QString m_GlyphMode = k_AllPoints;
  int m_Stride = 2;
  int m_MaxSamplePoints = 5000;
  int m_Seed = 10339;
  std::array<double, 3> m_EllipseCenter = {0.0, 0.0, 0.0};
  std::array<double, 3> m_EllipseNormal = {0.0, 0.0, 1.0};
  std::array<double, 3> m_EllipseRadius = {1.0, 0.0, 0.0};
  double m_EllipseRatio = 1.0;
  int m_EllipseResolution = 100;

  QPointer<ZRComboBox> m_GlyphTypeComboBox;
  QPointer<ZRIconPushButton> m_EllipseEditButton;
  QPointer<ZRComboBox> m_OrientationComboBox;
  QPointer<ZRComboBox> m_ScaleArrayComboBox;
  QPointer<ZRLineEdit> m_ScaleFactorEdit;
  QPointer<ZRCheckBox> m_ScaleFromDataCheckBox;
  QPointer<ZRComboBox> m_GlyphModeComboBox;
  QPointer<QWidget> m_StrideRow;
  QPointer<ZRLineEdit> m_StrideEdit;
  QPointer<QWidget> m_MaxSamplesRow;
  QPointer<ZRLineEdit> m_MaxSamplesEdit;
  QPointer<QWidget> m_SeedRow;
  QPointer<ZRLineEdit> m_SeedEdit;
};
