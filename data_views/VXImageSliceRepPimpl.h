#pragma once

#include "data_bridge/zr_contract/ColorPreset.h"
#include "data_views/VXColouringControls.h"
#include "data_views/VXColouringSettings.h"
#include "data_views/VXRepresentationPimpl.h"
#include "data_views/ZRVtkModuleConstants.h"

#include <QColor>
#include <QList>
#include <QMap>
#include <QPointer>
#include <QString>

#include <vtkSmartPointer.h>
#include <vtkWeakPointer.h>

#include <array>
#include <set>

class ColorPresetsDialog;
class QDoubleSpinBox;
class QLabel;
class VXArrayHistogramWidget;
class VXCustomRangeDialog;
class VXLookupTable;
class VXUpdateHistogramCallback;
class ZRColorButton;
class ZRComboBox;
class ZRSlider;
class ZRSpinBox;
class vtkAlgorithm;
class vtkCallbackCommand;
class vtkDataArray;
class vtkImageData;
class vtkImageSlice;
class vtkLookupTable;
class vtkScalarBarWidget;

namespace image_slice_utilities
{
class VXImageSliceFilter;
class VXOpenGLImageSliceMapper;
} // namespace image_slice_utilities

/**
 * The image slice view in one window: one plane of an image drawn as a picture, cell by cell, with
 * its own colouring (array and component, presets, categories, custom range, scalar bar, NaN and
 * solid colours). The plane is chosen by direction and number; slices can be linked across windows
 * and views (by number or by physical position), flicked between two numbers or played through.
 */
class VXImageSliceRepPimpl : public VXRepresentationPimpl
{
  Q_OBJECT

public:
  using ColorPreset = zr::core::ColorTableUtilities::ColorPreset;
  using SliceDirection = ZRVtkModule::constants::SliceDirection;

  static constexpr int k_Magnitude = -1;

  /** @brief What the histogram counts: nothing, the whole array, or the slice on screen. */
  enum HistogramMode
  {
    HistogramOff = 0,
    HistogramFull = 1,
    HistogramVisible = 2
  };

  VXImageSliceRepPimpl(VXRepresentation* owner, VXAbstractViewWidget* view);
  ~VXImageSliceRepPimpl() override;

  void initialize(vtkAlgorithmOutput* inputPort) override;
  bool finalize() override;
  void write(nlohmann::json& json) const override;
  void read(const nlohmann::json& json) override;
  vtkAlgorithmOutput* inputPort() const override;
  vtkAlgorithmOutput* outputPort() const override;
  void setVisibility(bool visible) override;
  std::array<double, 6> getModuleBounds() const override;
  VXLookupTable* lookupTable() const override;
  void highlightInRenderWindow(bool highlight) override;
  void receivePipelineOutputReloaded() override;
  void applySettings() override;
  void copySettings(const VXRepresentationPimpl* other) override;
  void writeSettings(QtZRSettings& settings) const override;
  void readSettings(QtZRSettings& settings) override;
  void initializeSettingsWidget() override;
  void updateSettingsControls() override;
  QString helpAnchor() const override;
  void generateHistogramData() override;
  using VXRepresentationPimpl::copySettings;
  using VXRepresentationPimpl::writeSettings;

  // The drawing chain of this window.
  vtkImageSlice* imageSlice() const;
  image_slice_utilities::VXOpenGLImageSliceMapper* sliceMapper() const;
  image_slice_utilities::VXImageSliceFilter* sliceFilter() const;
  /** @brief The image the mapper draws (one point per cell of the input), or null. */
  vtkImageData* sliceImage() const;
  /** @brief The dataset given to the view. */
  vtkImageData* inputImage() const;
  /** @brief True when the input is an image with at least one point. */
  bool hasImage() const;

  // Colouring.
  void setActiveArray(const QString& arrayName);
  QString activeArray() const { return m_Colouring.m_ActiveArray; }
  void setActiveComponent(int component);
  int activeComponent() const { return m_Colouring.m_ActiveComponent; }
  bool isUsingSolidColor() const;
  void setUseSolidColor(bool solid);
  void setSolidColor(const QColor& color);
  QColor solidColor() const { return m_SolidColor; }
  void setOpacity(int percent);
  int getOpacity() const;
  void setScalarMapping(int index);
  int scalarMapping() const { return m_Colouring.m_ScalarMapping; }
  void loadRGBPresetColors(const ColorPreset& preset);
  void loadIndexedPresetColors(const ColorPreset& preset);
  void loadPresetColors(const ColorPreset& preset);
  void restoreDefaultRgbPresetColors();
  void setColorMapInverted(bool inverted);
  bool isColorMapInverted() const { return m_Colouring.m_ColorMapInverted; }
  void setNanColor(const QColor& color);
  QColor nanColor() const { return m_Colouring.m_NanColor; }
  void setCustomRange(double min, double max);
  void useDataRange();
  bool isUsingCustomRange() const { return m_Colouring.m_UsingCustomRange; }
  std::array<double, 2> colorRange() const;
  void setInterpretValuesAsCategories(bool categories);
  bool interpretValuesAsCategories() const { return m_Colouring.m_ValuesAsCategories; }
  void setScalarBarVisibility(bool visible);
  bool isScalarBarVisible() const { return m_Colouring.m_ScalarBarVisible; }
  vtkScalarBarWidget* scalarBarWidget() const;
  vtkDataArray* activeDataArray() const;

  // Slicing.
  void updateSliceDirection(SliceDirection direction);
  SliceDirection sliceDirection() const { return m_SliceDirection; }
  /** @brief Moves to a slice number (clamped into the data) and tells the linked views. */
  void setSliceNumber(int number);
  int sliceNumber() const { return m_SliceNumber; }
  /** @brief Clamps the stored numbers into the data and moves the mapper there. */
  void updateSlice(bool updateToggles);
  /** @brief The lowest and highest slice number of the current direction. */
  std::array<int, 2> getSliceDirectionBounds() const;
  int getNumSlices();
  /** @brief The world position of the slice plane along the direction's axis. */
  double getSlicePosition() const;
  /** @brief The slice number nearest to a world position along the direction's axis. */
  int getSliceNumberAtPosition(double position) const;
  /** @brief Sets a number from a linked view: no signal goes out again. */
  void followLinkedSlice(int number);
  void setLinkPhysicalUnits(bool link);
  int toggleLeftSlice() const { return m_ToggleLeftSlice; }
  int toggleRightSlice() const { return m_ToggleRightSlice; }
  double animationDuration() const { return m_AnimationDuration; }
  bool isFlickering() const;
  bool isPlayingAll() const;
  int histogramMode() const { return m_HistogramMode; }
  void setHistogramMode(int mode);
  VXArrayHistogramWidget* histogramWidget() const;
  VXCustomRangeDialog* customRangeDialog() const;

  /**
   * Moves every other linked slice view to the slice of `source`: by number, or with linked physical
   * units by the position of its plane, so images of different spacing stay at the same height.
   */
  static void updateLinkedSlices(const QList<VXRepresentationPimpl*>& linked, int number,
                                 VXImageSliceRepPimpl* source);
  static void updateLinkedSliceDirections(const QList<VXRepresentationPimpl*>& linked,
                                          SliceDirection direction, VXImageSliceRepPimpl* source);
  static void updateLinkedPhysicalUnits(const QList<VXRepresentationPimpl*>& linked, bool link,
                                        VXImageSliceRepPimpl* source);

  /** @brief One step of the running timer: the next slice (play all) or the other slice (flicker). */
  void animationStep();

public Q_SLOTS:
  void sliceDirectionComboChanged(int index);
  void sliceSliderValueChanged(int value);
  void sliceSpinBoxValueChanged(int value);
  void toggleRightSpinBoxValueChanged(int value);
  void toggleLeftSpinBoxValueChanged(int value);
  void toggleSlices();
  void startStopFlicker(bool start);
  void startStopAnimation(bool start);
  void animationDurationChanged(double seconds);
  void setLinkedSlices(bool linked);

Q_SIGNALS:
  void sliceNumberChanged(int sliceNumber, VXImageSliceRepPimpl* sourceView);
  void sliceDirectionChanged(ZRVtkModule::constants::SliceDirection sliceDirection,
                             VXImageSliceRepPimpl* sourceView);
  void linkPhysicalUnitsChanged(bool linkPhysicalUnits, VXImageSliceRepPimpl* sourceView);

private:
  // A new slice number from the slider or the spin box: both show it, and the slice follows.
  void sliceControlChanged(int value);
  void updateColoring();
  void updateSpacing();
  void updateSliceControls();
  void loadKeptRgbPreset();
  const std::set<double>& uniqueValues();
  void observeProducer();
  void stopObservingProducer();
  void startTimer();
  void stopTimer();
  void setSliceControlsEnabled(bool enabled);
  void connectColorDialogs();
  void addColoringControls(QVBoxLayout* layout);
  void addSlicingControls(QVBoxLayout* layout);
  void addAnimationControls(QVBoxLayout* layout);
  void addHistogramControls(QVBoxLayout* layout);
  void arrayNameComboTextChanged(const QString& text);
  static void SliceAnimatorCallbackFunction(vtkObject* caller, unsigned long eventId, void* clientData,
                                            void* callData);

  vtkSmartPointer<vtkAlgorithmOutput> m_InputPort;
  vtkSmartPointer<image_slice_utilities::VXImageSliceFilter> m_Filter;
  vtkSmartPointer<image_slice_utilities::VXOpenGLImageSliceMapper> m_Mapper;
  vtkSmartPointer<vtkImageSlice> m_ImageSlice;
  vtkSmartPointer<vtkLookupTable> m_SolidColorTable;
  QPointer<VXLookupTable> m_LookupTable;
  vtkSmartPointer<vtkScalarBarWidget> m_ScalarBarWidget;

  VXColouringSettings m_Colouring;
  SliceDirection m_SliceDirection = ZRVtkModule::constants::XYPlane;
  int m_SliceNumber = 0;
  QColor m_SolidColor = Qt::white;
  int m_ToggleLeftSlice = 0;
  int m_ToggleRightSlice = 0;
  double m_AnimationDuration = 0.5;
  int m_HistogramMode = HistogramOff;
  double m_Opacity = 1.0;
  bool m_ToggleState = true;
  int m_NumSlicesCache = 0;
  QMap<QString, QMap<int, std::set<double>>> m_UniqueValues;

  // The running timer of flicker or play all, on the window's interactor.
  bool m_Flickering = false;
  bool m_PlayingAll = false;
  int m_TimerId = -1;
  vtkSmartPointer<vtkCallbackCommand> m_AnimatorCallback;
  unsigned long m_TimerObserverTag = 0;
  unsigned long m_DestroyTimerObserverTag = 0;
  vtkSmartPointer<VXUpdateHistogramCallback> m_HistogramCallback;
  vtkWeakPointer<vtkAlgorithm> m_ObservedProducer;
  unsigned long m_HistogramObserverTag = 0;

  QPointer<ColorPresetsDialog> m_ColorPresetsDialog;
  QPointer<VXCustomRangeDialog> m_CustomRangeDialog;
  QPointer<VXArrayHistogramWidget> m_HistogramWidget;
  QPointer<ZRComboBox> m_ArrayComboBox;
  QPointer<ZRComboBox> m_ComponentComboBox;
  QPointer<QLabel> m_SolidColorLabel;
  QPointer<ZRColorButton> m_SolidColorButton;
  VXColouringControls m_ColourControls;
  QPointer<ZRSlider> m_OpacitySlider;
  QPointer<ZRCheckBox> m_ScalarBarCheckBox;
  QPointer<ZRIconPushButton> m_LinkSlicesButton;
  QPointer<ZRCheckBox> m_LinkPhysicalUnitsCheckBox;
  QPointer<ZRComboBox> m_SliceDirectionComboBox;
  QPointer<ZRSlider> m_SliceSlider;
  QPointer<ZRSpinBox> m_SliceSpinBox;
  QPointer<ZRIconPushButton> m_ToggleSlicesButton;
  QPointer<ZRSpinBox> m_ToggleLeftSpinBox;
  QPointer<ZRSpinBox> m_ToggleRightSpinBox;
  QPointer<QDoubleSpinBox> m_DurationSpinBox;
  QPointer<ZRIconPushButton> m_SliceAnimationButton;
  QPointer<ZRComboBox> m_HistogramModeComboBox;
};
