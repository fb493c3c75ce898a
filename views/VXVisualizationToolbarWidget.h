#pragma once

#include <QMap>
#include <QWidget>

#include <memory>

class QAction;
class QGraphicsOpacityEffect;
class QMenu;
class QPushButton;
class VXSnapToCameraMenu;
class VXVisualizationWidget;

namespace Ui
{
class VXVisualizationToolbarWidget;
}

/**
 * @brief The floating camera toolbar at the left edge of a render window: camera reset, presets,
 * rotation, view directions, hover modes, 2D/3D lock and the focal point.
 */
class VXVisualizationToolbarWidget : public QWidget
{
  Q_OBJECT

public:
  explicit VXVisualizationToolbarWidget(VXVisualizationWidget* window);
  ~VXVisualizationToolbarWidget() override;

  Ui::VXVisualizationToolbarWidget* ui() const { return m_Ui.get(); }
  VXSnapToCameraMenu* getSnapToCameraMenu() const { return m_SnapToCameraMenu; }
  QMenu* getCameraPresetMenu() const { return m_PresetMenu; }
  QStringList getCameraPresetMenuNames() const { return m_PresetActions.keys(); }
  /** Height with every camera button shown, collapsed or not. */
  int fullHeight() const;
  /**
   * Shows the camera buttons that fit in the given height; the rest are reached through the overflow
   * button at the end. Zero or less means no limit.
   */
  void fitToHeight(int available);
  bool isCollapsed() const { return m_Collapsed; }
  QPushButton* getOverflowButton() const { return m_OverflowButton; }
  QMenu* getOverflowMenu() const { return m_OverflowMenu; }
  QList<QPushButton*> getOverflowedButtons() const { return m_Overflowed; }

public Q_SLOTS:
  void toggleInteractiveVisModeBtn();
  void toggleHoverPointsButtonClicked(bool checked);
  void toggleHoverCellsButtonClicked(bool checked);
  void togglePickFocalPtButtonClicked(bool checked);
  void enableDisableHoverFeatures(int allowHover);
  void updateExpandCollapseState(bool collapsed);
  void styleSheetChanged(const QString& jsonFilePath);
  void addCustomCameraPreset();
  void removeCustomCameraPreset();
  void addCustomCameraPresetToMenu(const QString& presetName);
  void removeCustomCameraPresetFromMenu(const QString& presetName);
  void turnOffPickFocalPointButton();
  void toggleSnapToCameraMenu();

Q_SIGNALS:
  void resetCameraBtnClicked();
  void xMCameraBtnClicked();
  void xPCameraBtnClicked();
  void yMCameraBtnClicked();
  void yPCameraBtnClicked();
  void zMCameraBtnClicked();
  void zPCameraBtnClicked();
  void hoverPointsBtnClicked();
  void hoverCellsBtnClicked();
  void interactiveModeBtnClicked();

protected:
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
  void enterEvent(QEnterEvent* event) override;
#else
  void enterEvent(QEvent* event) override;
#endif
  void leaveEvent(QEvent* event) override;

private:
  void setupGui();
  void connectWindow();
  void buildCameraPresetMenu();
  void setIcons();
  void addPresetAction(const QString& presetName);
  QList<QPushButton*> cameraButtons() const;
  void applyFit();
  void fillOverflowMenu();

  std::unique_ptr<Ui::VXVisualizationToolbarWidget> m_Ui;
  VXVisualizationWidget* m_Window = nullptr;
  QGraphicsOpacityEffect* m_OpacityEffect = nullptr;
  QGraphicsOpacityEffect* m_MenuOpacityEffect = nullptr;
  QAction* m_AddPresetAction = nullptr;
  QAction* m_DeletePresetAction = nullptr;
  QAction* m_DeleteSeparator = nullptr;
  QMap<QString, QAction*> m_PresetActions;
  QMenu* m_PresetMenu = nullptr;
  VXSnapToCameraMenu* m_SnapToCameraMenu = nullptr;
  QPushButton* m_OverflowButton = nullptr;
  QMenu* m_OverflowMenu = nullptr;
  QList<QPushButton*> m_Overflowed;
  int m_AvailableHeight = 0;
  bool m_Collapsed = false;
};
