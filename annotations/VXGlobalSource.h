#pragma once

#include "pipeline/VXBridgeObject.h"

#include <QMap>
#include <QPointer>

class QVBoxLayout;
class VXAbstractViewWidget;
class VXGlobalSourcePimpl;
class VXPipeline;
class ZRIconPushButton;

/**
 * An annotation: a scene object that is not data (a build plate, an arrow, a text). It is one row at
 * the top of the pipeline tree, beside the bridges, and keeps one instance per render view in which it
 * exists, so that one row can be shown in some views and not in others, each with its own settings.
 */
class VXGlobalSource : public VXBridgeObject
{
  Q_OBJECT

public:
  using InstanceMap = QMap<VXAbstractViewWidget*, QPointer<VXGlobalSourcePimpl>>;

  static inline const QString k_DefaultName = QStringLiteral("Global Source");

  explicit VXGlobalSource(QObject* parent = nullptr);
  ~VXGlobalSource() override;

  QString sourceName() const override;
  QIcon getIcon() const override;
  virtual void setPipeline(VXPipeline* pipeline);
  /**
   * Makes the instance of one view, copying the settings of sourceView's instance when it is given
   * and then reading state when that is given. An existing instance of the view is returned as it is.
   */
  virtual VXGlobalSourcePimpl* addModuleInstance(VXAbstractViewWidget* sourceView, VXAbstractViewWidget* view,
                                                 const nlohmann::json* state) = 0;
  /** Words of the type for people ("Build Plate Annotation"); also the settings group of its defaults. */
  virtual QString humanTypeName() const = 0;

  // The bridge form writes and reads without render windows: names only.
  void write(nlohmann::json& json) const override;
  void read(const nlohmann::json& json) override;
  /** Writes the names and one entry per instance whose view has an index in viewIndexes. */
  virtual void write(nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) const;
  /** Reads the names and makes an instance for each entry whose index names a known view. */
  virtual void read(const nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes);

  /** Ends the instances: their props leave the windows. */
  void finalize();
  VXPipeline* pipeline() const;
  /** Visibility in the active view; false where there is no instance. */
  bool isVisible() const;
  void setVisibility(bool visible);
  void show() { setVisibility(true); }
  void hide() { setVisibility(false); }
  bool isVisibleIn(VXAbstractViewWidget* view) const;
  /** The settings panel: a title row and the form of the active view's instance. */
  void initializeSettingsWidget();
  QWidget* settingsWidget();
  void removeModuleInstance(VXAbstractViewWidget* view);
  VXGlobalSourcePimpl* instance(VXAbstractViewWidget* view) const;
  InstanceMap instances() const { return m_Instances; }

public Q_SLOTS:
  virtual void addViewWidgetCopy(VXAbstractViewWidget* sourceViewWidget,
                                 VXAbstractViewWidget* splitViewWidget);
  virtual void activeViewChanged(VXAbstractViewWidget* previousActiveView,
                                 VXAbstractViewWidget* currentActiveView);
  void renderAll();

Q_SIGNALS:
  void requestRender();
  void requestRenderAll();
  void settingsWidgetVisibilityButtonClicked(bool checked);
  void enabledDisabledStateChanged(VXGlobalSource* globalSource, bool isEnabled);

protected:
  /** Keys of the names in the subclass's record. */
  virtual const char* nameKey() const;
  virtual const char* nameSuffixKey() const;
  /** Takes a new instance into the map and wires it to its view. */
  void adoptInstance(VXAbstractViewWidget* view, VXGlobalSourcePimpl* instance);
  VXAbstractViewWidget* activeView() const;
  void showActiveForm();

  InstanceMap m_Instances;
  QPointer<VXPipeline> m_Pipeline;
  QPointer<QWidget> m_SettingsWidget;
  QPointer<QVBoxLayout> m_FormLayout;
  QPointer<QWidget> m_ShownForm;
};
