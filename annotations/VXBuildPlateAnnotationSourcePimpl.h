#pragma once

#include "annotations/VXBuildPlateAnnotationSourceWidget.h"
#include "annotations/VXGlobalSourcePimpl.h"

#include <vtkSmartPointer.h>

#include <QColor>
#include <QPointer>

#include <array>

class vtkActor;
class vtkPolyData;
class vtkPolyDataMapper;
class vtkTransformFilter;

/**
 * One render view's build plate: the plate of an additive-manufacturing machine drawn as a grid of
 * major and minor lines, square (dimensions from an origin) or circular (a radius about a centre),
 * turned to face its normal. Each setter redraws the grid at once.
 */
class VXBuildPlateAnnotationSourcePimpl : public VXGlobalSourcePimpl
{
  Q_OBJECT

public:
  static inline const char* k_ColorArrayName = "BuildPlateLineColors";

  VXBuildPlateAnnotationSourcePimpl(VXGlobalSource* source, VXAbstractViewWidget* view);
  ~VXBuildPlateAnnotationSourcePimpl() override;

  void write(nlohmann::json& json) const override;
  void read(const nlohmann::json& json) override;
  void addToScene() override;
  void removeFromScene() override;
  void setVisibility(bool visible) override;
  QWidget* settingsForm() override;
  void syncSettingsWidget() override;

  void generateSquareBuildPlateGrid();
  void generateCircleBuildPlateGrid();
  /** Takes every setting of another instance (a split view starts as its source view). */
  void copySettings(const VXBuildPlateAnnotationSourcePimpl* other);
  /** Puts the settings on the clipboard as JSON text. */
  void copySettingsToClipboard() const;
  /** Takes settings from JSON text on the clipboard; false when there is none. */
  bool pasteSettings();
  /** Draws the plate with the glow of selected objects, or without. */
  void highlightInRenderWindow(bool highlight);

  int plateShape() const { return m_PlateShape; }
  int xDimension() const { return m_XDimension; }
  int yDimension() const { return m_YDimension; }
  float xSpacing() const { return m_XSpacing; }
  float ySpacing() const { return m_YSpacing; }
  float xMinorSpacing() const { return m_XMinorSpacing; }
  float yMinorSpacing() const { return m_YMinorSpacing; }
  std::array<float, 3> origin() const { return m_Origin; }
  std::array<float, 3> normal() const { return m_Normal; }
  std::array<float, 3> center() const { return m_Center; }
  int radius() const { return m_Radius; }
  double opacity() const { return m_Opacity; }
  QColor buildPlateColor() const { return m_Color; }
  QColor buildPlateMinorColor() const { return m_MinorColor; }
  vtkActor* actor() const;
  /** The grid as drawn: turned and placed, one line cell per grid line (and the rim of a circle). */
  vtkPolyData* plateOutput() const;

public Q_SLOTS:
  virtual void applySource();
  void setPlateShape(int shape);
  void setXDimension(int value);
  void setYDimension(int value);
  void setXSpacing(double value);
  void setYSpacing(double value);
  void setXMinorSpacing(double value);
  void setYMinorSpacing(double value);
  void setXOrigin(double value);
  void setYOrigin(double value);
  void setZOrigin(double value);
  void setXNormal(double value);
  void setYNormal(double value);
  void setZNormal(double value);
  /** A percentage, clamped to 0..100. */
  void setOpacity(int percent);
  void setBuildPlateColor(const QColor& color);
  void setBuildPlateMinorColor(const QColor& color);
  void setXCenter(double value);
  void setYCenter(double value);
  void setZCenter(double value);
  void setRadius(int value);

protected:
  void writeSettingValues(QtZRSettings& settings) const override;
  void readSettingValues(QtZRSettings& settings) override;

private:
  void orientAndPlace(const std::array<float, 3>& translation);
  void gridBoundsChanged();
  void connectForm();

  int m_PlateShape = VXBuildPlateAnnotationSourceWidget::Square;
  int m_XDimension = 100;
  int m_YDimension = 100;
  float m_XSpacing = 10.0f;
  float m_YSpacing = 10.0f;
  float m_XMinorSpacing = 2.0f;
  float m_YMinorSpacing = 2.0f;
  std::array<float, 3> m_Origin = {{0.0f, 0.0f, 0.0f}};
  std::array<float, 3> m_Normal = {{0.0f, 0.0f, 1.0f}};
  std::array<float, 3> m_Center = {{50.0f, 50.0f, 0.0f}};
  int m_Radius = 50;
  double m_Opacity = 1.0;
  QColor m_Color = Qt::white;
  QColor m_MinorColor = Qt::gray;

  vtkSmartPointer<vtkPolyData> m_Grid;
  vtkSmartPointer<vtkTransformFilter> m_RotateFilter;
  vtkSmartPointer<vtkTransformFilter> m_TranslateFilter;
  vtkSmartPointer<vtkPolyDataMapper> m_Mapper;
  vtkSmartPointer<vtkActor> m_Actor;
  QPointer<QWidget> m_SettingsForm;
  QPointer<VXBuildPlateAnnotationSourceWidget> m_Form;
  bool m_InScene = false;
};
