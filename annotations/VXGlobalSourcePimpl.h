#pragma once

#include <nlohmann/json_fwd.hpp>

#include <QObject>
#include <QPointer>
#include <QRectF>

#include <optional>

class QFrame;
class QLabel;
class QVBoxLayout;
class QWidget;
class QtZRSettings;
class VXAbstractViewWidget;
class VXGlobalSource;
class VXVisualizationWidget;

/**
 * One render view's instance of an annotation: its props in that window and its own settings. It
 * watches its render window's events, so that an annotation with a place on the screen can be
 * double-clicked to edit.
 */
class VXGlobalSourcePimpl : public QObject
{
  Q_OBJECT

public:
  VXGlobalSourcePimpl(VXGlobalSource* source, VXAbstractViewWidget* view);
  ~VXGlobalSourcePimpl() override;

  bool eventFilter(QObject* watched, QEvent* event) override;
  virtual void write(nlohmann::json& json) const;
  virtual void read(const nlohmann::json& json);
  /** Puts the props of the annotation into the render window. */
  virtual void addToScene() = 0;
  /** Takes them out again; the instance may be added back later. */
  virtual void removeFromScene() = 0;
  /** Asks whether the current values become the defaults of the type, and stores them if so. */
  virtual void writeSettings();
  virtual void readSettings();
  virtual void setVisibility(bool visible) = 0;
  /** Where the annotation sits on the screen, x and y from the bottom left, all in 0..1; none by default. */
  virtual std::optional<QRectF> getAnnotationNormalizedRect() const;
  virtual QWidget* createEditOverlay(QWidget* parent);
  virtual void populateEditOverlay();
  /** Brings the settings form in line with the instance's values. */
  virtual void syncSettingsWidget();
  virtual int editOverlayMinWidth() const;
  /** The settings form of this instance; made on first use. */
  virtual QWidget* settingsForm() = 0;

  /** Stores the current values as the defaults of the type, without asking. */
  void saveDefaultSettings();
  void show() { setVisibility(true); }
  void hide() { setVisibility(false); }
  bool isVisible() const { return m_Visible; }
  VXGlobalSource* source() const;
  VXAbstractViewWidget* viewWidget() const;
  VXVisualizationWidget* renderWindow() const;

  void installEditOverlaySupport();
  void removeEditOverlaySupport();
  bool hitTest(const QPoint& point) const;
  void showEditOverlay();
  void hideEditOverlay();
  bool isEditOverlayShown() const;
  void onVisualizationDoubleClicked(const QPoint& pos);
  /** The title row of a settings form: visibility eye, name, save-as-default button. */
  QWidget* addTitleWithVisibilityBtn();
  void addVisibilityHintLabel(QVBoxLayout* layout);

Q_SIGNALS:
  void requestRender();

protected:
  /** The settings keys of the subclass, below the type's group; the base writes the visibility. */
  virtual void writeSettingValues(QtZRSettings& settings) const;
  virtual void readSettingValues(QtZRSettings& settings);
  void setVisibleFlag(bool visible) { m_Visible = visible; }

  QPointer<VXGlobalSource> m_Source;
  QPointer<VXAbstractViewWidget> m_View;
  QPointer<QWidget> m_EditOverlay;
  QPointer<QLabel> m_VisibilityHintLabel;
  bool m_Visible = true;

private:
  void openSettingsGroup(QtZRSettings& settings) const;
};
