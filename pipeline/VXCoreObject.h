#pragma once

#include <nlohmann/json_fwd.hpp>

#include <QFrame>
#include <QIcon>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QScrollArea>
#include <QString>
#include <QWidget>

class VXAbstractViewWidget;
class VXPipeline;
class VXLookupTable;
class ZRIconPushButton;
class vtkAlgorithmOutput;
class vtkDataSet;
class vtkPolyData;
class vtkUnstructuredGrid;

/**
 * Base of everything that hangs in the pipeline tree under a bridge: data sources, filters and data
 * views. Visibility is kept per render view; the name is a base name with an optional number.
 */
class VXCoreObject : public QObject
{
  Q_OBJECT

public:
  using ViewMap = QMap<VXAbstractViewWidget*, bool>;

  explicit VXCoreObject(QObject* parent = nullptr);
  ~VXCoreObject() override;

  // Writes one entry per view that has an index in viewIndexes.
  virtual void write(nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) const;
  // Finds each entry's view by its index in viewIndexes and sets its visibility.
  virtual void read(const nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes);
  virtual bool finalize();
  virtual QString humanTypeName() const = 0;
  virtual QString typeName() const = 0;
  virtual void setBaseName(const QString& name);
  virtual vtkAlgorithmOutput* outputPort() const = 0;
  virtual VXLookupTable* lookupTable() const;
  virtual QWidget* settingsWidget();
  virtual void initializeSettingsWidget() = 0;
  virtual QWidget* addSettingsWidgetTitle(ZRIconPushButton* helpButton, ZRIconPushButton* closeButton);
  virtual void addViewWidget(VXAbstractViewWidget* view);
  virtual bool isVisible() const;
  virtual void setVisibility(bool visible);
  virtual QIcon getIcon() const = 0;
  virtual void copyActiveSettings() = 0;
  virtual void pasteToActiveSettings() = 0;

  QString baseName() const { return m_BaseName; }
  QString name() const;
  QString pathName() const;
  int getNameSuffixCounter() const { return m_NameSuffixCounter; }
  void setNameSuffixCounter(int counter);
  void setPathDelimeter(const QString& delimiter) { m_PathDelimiter = delimiter; }
  QString getPathDelimeter() const { return m_PathDelimiter; }
  bool autoReload() const { return m_AutoReload; }
  void setAutoReload(bool autoReload);

  void setPipeline(VXPipeline* pipeline) { m_Pipeline = pipeline; }
  VXPipeline* pipeline() const { return m_Pipeline; }
  ViewMap viewWidgets() const { return m_ViewMap; }

public Q_SLOTS:
  virtual void updatePath();
  virtual void receivePipelineOutputReloaded() = 0;
  virtual void addViewWidgetCopy(VXAbstractViewWidget* sourceViewWidget,
                                 VXAbstractViewWidget* splitViewWidget) = 0;
  virtual void activeViewChanged(VXAbstractViewWidget* previousActiveView,
                                 VXAbstractViewWidget* currentActiveView);

Q_SIGNALS:
  void requestRender();
  void requestRenderAll();
  void requestUpdate(QString dataSetItemPathName, vtkDataSet* dataset);
  void requestUnstructuredGridUpdate(QString dataSetItemPathName, vtkUnstructuredGrid* dataset);
  void requestPolyDataUpdate(QString dataSetItemPathName, vtkPolyData* dataset);
  void requestClear();
  void autoReloadFlagChanged(bool flagged);
  void enabledDisabledStateChanged(VXCoreObject* representation, bool isEnabled);
  void pathChanged(QString pathName);
  void settingsWidgetVisibilityButtonClicked(bool checked);

protected:
  VXAbstractViewWidget* activeView() const;

  ViewMap m_ViewMap;
  VXPipeline* m_Pipeline = nullptr;
  QString m_BaseName;
  int m_NameSuffixCounter = 0;
  QString m_PathDelimiter = QStringLiteral(" > ");
  bool m_AutoReload = false;
  QPointer<QWidget> m_SettingsWidget;
  QPointer<QFrame> m_SettingsFrame;
  QPointer<QScrollArea> m_SettingsScrollArea;
};
