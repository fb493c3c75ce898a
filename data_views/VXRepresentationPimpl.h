#pragma once

#include "views/VXGridAxesActor.h"

#include <nlohmann/json_fwd.hpp>

#include <QFrame>
#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QScrollArea>
#include <QString>

#include <vtkSmartPointer.h>
#include <vtkWeakPointer.h>

#include <array>
#include <functional>

class QElidedLabel;
class QVBoxLayout;
class QtZRSettings;
class ZRCheckBox;
class ZRIconPushButton;
class VXAbstractViewWidget;
class VXLookupTable;
class VXRepresentation;
class VXVisualizationWidget;
class vtkActor;
class vtkAlgorithmOutput;
class vtkMapper;
class vtkObject;
class vtkRenderWindowInteractor;
class vtkScalarBarWidget;

/**
 * The part of a data view that lives in one render window: its settings there, and (in the concrete
 * views) its mappers and actors. Its Qt parent is the data view; a split window gets a copy.
 */
class VXRepresentationPimpl : public QObject
{
  Q_OBJECT

public:
  VXRepresentationPimpl(VXRepresentation* owner, VXAbstractViewWidget* view);
  ~VXRepresentationPimpl() override;

  virtual void initialize(vtkAlgorithmOutput* inputPort) = 0;
  // Takes the props out of the window; true when they were there.
  virtual bool finalize() = 0;
  virtual void write(nlohmann::json& json) const;
  // Each key is read only when present; a key of the wrong type raises the JSON library's error.
  virtual void read(const nlohmann::json& json);
  virtual vtkAlgorithmOutput* inputPort() const = 0;
  virtual vtkAlgorithmOutput* outputPort() const = 0;
  virtual bool isVisible() const { return m_ModuleVisible; }
  virtual void setVisibility(bool visible);
  virtual std::array<double, 6> getModuleBounds() const;
  virtual VXLookupTable* lookupTable() const { return nullptr; }
  virtual vtkActor* getActor() const { return nullptr; }
  virtual vtkMapper* getMapper() const { return nullptr; }
  virtual void highlightInRenderWindow(bool highlight);
  virtual void receivePipelineOutputReloaded() {}
  // Moves the VTK objects to the stored settings (after a read or a copy).
  virtual void applySettings() {}
  // A cheaper geometry while the user moves the camera: built once, kept until its inputs change.
  void setUseDecimationOnInteraction(bool use);
  virtual void decimateGeometry() { m_DecimationStale = false; }
  virtual void trySetDecimatedDataSet() {}
  virtual void trySetOriginalDataSet() {}
  /** @brief Gives the view's data to its histogram, if it has one and it is asked for. */
  virtual void generateHistogramData() {}
  bool isDecimationStale() const { return m_DecimationStale; }
  // Takes the settings of another window's implementation of the same view.
  virtual void copySettings(const VXRepresentationPimpl* other);
  // The settings as JSON text on the clipboard, and back.
  void copySettings();
  void pasteSettings();
  // Default settings of this kind of view, under the view's type name.
  /**
   * Asks whether to save the current settings as the defaults of this kind of view: Yes writes them,
   * Reset removes the stored defaults so that the built-in ones apply again. True only after Yes.
   */
  bool writeSettings();
  virtual void writeSettings(QtZRSettings& settings) const;
  virtual void readSettings(QtZRSettings& settings);
  void readDefaultSettings();
  // The owner's path, then "Split View " and the window's split id.
  virtual QString pathName() const;

  /** @brief The answer to the default-settings question; a host or test may answer it instead of a box. */
  using DefaultSettingsQuestion =
      std::function<QMessageBox::StandardButton(const QString& title, const QString& text)>;
  static void setDefaultSettingsQuestion(DefaultSettingsQuestion question);

  // The settings panel of this window's instance; built by initializeSettingsWidget.
  virtual void initializeSettingsWidget();
  QWidget* settingsWidget() const { return m_SettingsWidget; }
  /** @brief Moves every control of the panel to the stored settings, without their signals. */
  virtual void updateSettingsControls();
  /** @brief The manual's page of the data views; the view's anchor is appended when opened. */
  QString helpUrl() const { return m_HelpUrl; }
  virtual QString helpAnchor() const { return QString(); }
  virtual void openHelpLink();
  /** @brief A help button beside each control that has a page anchor. */
  virtual void addHelpToolTipControls();

  void setDataGridVisibility(bool visible);
  VXGridAxesActor* dataAxesGridActor() const { return m_DataAxesGridActor; }

  VXRepresentation* owner() const { return m_Owner; }
  VXAbstractViewWidget* view() const;
  VXVisualizationWidget* visualizationWidget() const;
  int splitId() const { return m_SplitId; }
  bool isLinked() const { return m_Linked; }
  void setLinked(bool linked) { m_Linked = linked; }
  bool detachColorSettings() const { return m_DetachColorSettings; }
  bool isDataGridVisible() const { return m_DataGridVisible; }
  std::array<double, 3> gridSpacing() const { return m_GridSpacing; }
  bool showGridLines() const { return m_ShowGridLines; }
  bool linkPhysicalUnits() const { return m_LinkPhysicalUnits; }
  bool useDecimationOnInteraction() const { return m_UseDecimationOnInteraction; }

public Q_SLOTS:
  void show() { setVisibility(true); }
  void hide() { setVisibility(false); }
  void requestRender() const;

protected:
  /** @brief The colour legend every coloured view shows: placed freely, five labels, framed in grey. */
  static void ConfigureScalarBar(vtkScalarBarWidget* widget);

  // The header of the panel: visibility button, title, help and default-settings buttons.
  void addTitleWithVisibilityBtn();
  void addVisibilityHintLabel(QVBoxLayout* layout);
  void updateVisibilityControls();
  QVBoxLayout* settingsContentLayout() const;
  /** @brief Registers a control for addHelpToolTipControls. */
  void addHelpToolTip(QWidget* control, const QString& anchor, const QString& toolTip);
  // Adds or removes the data axes grid without changing the stored flag.
  void showDataGrid(bool shown);
  void addDataAxesGridControls(QVBoxLayout* layout);
  void setupInteractorObserver();
  void removeInteractorObserver();

  bool m_DetachColorSettings = true;
  bool m_DataGridVisible = false;
  bool m_ModuleVisible = true;
  QPointer<VXAbstractViewWidget> m_View;
  int m_SplitId = 1;
  bool m_Linked = false;
  std::array<double, 3> m_GridSpacing = {0.0, 0.0, 0.0};
  bool m_ShowGridLines = false;
  bool m_LinkPhysicalUnits = false;
  bool m_UseDecimationOnInteraction = false;
  bool m_DecimationStale = true;
  vtkWeakPointer<vtkRenderWindowInteractor> m_Interactor;
  unsigned long m_PressObserverTag = 0;
  unsigned long m_EndInteractionObserverTag = 0;
  VXRepresentation* m_Owner = nullptr;

  QPointer<QWidget> m_SettingsWidget;
  QPointer<QFrame> m_TitleFrame;
  QPointer<QScrollArea> m_ScrollArea;
  QPointer<ZRIconPushButton> m_VisibilityButton;
  QPointer<QElidedLabel> m_VisibilityHintLabel;
  QPointer<ZRIconPushButton> m_HelpButton;
  QPointer<ZRIconPushButton> m_DefaultSettingsButton;
  QPointer<ZRCheckBox> m_DataGridCheckBox;
  QString m_HelpUrl;
  vtkSmartPointer<VXGridAxesActor> m_DataAxesGridActor;

private:
  struct HelpToolTip
  {
    QPointer<QWidget> control;
    QString anchor;
    QString toolTip;
  };
  QList<HelpToolTip> m_HelpToolTips;
};
