#pragma once

#include "data_views/VXRepresentation.h"

#include <nlohmann/json.hpp>

#include <QList>
#include <QMap>
#include <QModelIndex>
#include <QPointer>
#include <QSharedPointer>
#include <QString>
#include <QWidget>

#include <memory>

class QLineEdit;
class QMenu;
class QToolButton;
class QVBoxLayout;
class VXAbstractViewWidget;
class VXBridgeObject;
class VXCoreObject;
class VXDatasetInfoWidget;
class VXInfoWidgetProxyModel;
class VXPipelineModel;
class VXRenderTreeView;

namespace Ui
{
class VXInfoWidget;
} // namespace Ui

/**
 * The information panel beside the render views: the pipeline tree with a search field and a small
 * toolbar, the settings of the selected item below it, and the dataset information of the selected
 * data source at the bottom. It also writes and reads the tree part of a state record.
 */
class VXInfoWidget : public QWidget
{
  Q_OBJECT

public:
  explicit VXInfoWidget(QWidget* parent = nullptr);
  ~VXInfoWidget() override;

  void setPipelineModel(VXPipelineModel* model);
  VXPipelineModel* pipelineModel() const;
  // The view whose visibility the tree shows; the pipeline's active view until one is set.
  VXAbstractViewWidget* activeViewWidget() const;

  // Writes the rows under index (of the pipeline model) as an array of tree item records.
  void saveState(const QModelIndex& index, nlohmann::json& output,
                 const QMap<VXAbstractViewWidget*, int>& viewIndexes);
  /**
   * Rebuilds rows from tree item records under parent (of the pipeline model). The first malformed
   * record ends the load with a message; rows loaded before it stay. A value of the wrong JSON type
   * raises the JSON library's error to the caller.
   */
  void loadState(const nlohmann::json& input, const QMap<VXAbstractViewWidget*, int>& viewIndexes,
                 const QModelIndex& parent = QModelIndex());

  VXRenderTreeView* treeView() const { return m_TreeView; }
  VXInfoWidgetProxyModel* proxyModel() const { return m_ProxyModel; }
  QLineEdit* searchField() const { return m_SearchField; }
  // The selected row, as an index of the pipeline model.
  QModelIndex selectedIndex() const;
  void selectIndex(const QModelIndex& index);
  // The settings panel shown for the selected row, or null.
  QWidget* currentSettingsWidget() const { return m_CurrentSettingsWidget; }
  QWidget* datasetInfoArea() const { return m_DatasetInfoArea; }
  // The dataset information shown for the selected data source or data view, or null.
  QWidget* currentDatasetInfoWidget() const { return m_CurrentDatasetInfoWidget; }

  // Data view kinds offered by the toolbar and the context menu.
  static const QList<VXRepresentation::Type> k_AddableRepresentationTypes;

public Q_SLOTS:
  void onActiveViewChanged(VXAbstractViewWidget* view);
  void addRepresentationToSelection(VXRepresentation::Type type);
  // Adds a filter of the type name ("VXFClip", ...) under the selected data source or filter.
  void addFilterToSelection(const QString& filterType);
  void removeSelectedItem();
  void renameSelectedItem();
  void reloadSelectedItem();
  void copySelectedSettings();
  void pasteSelectedSettings();

Q_SIGNALS:
  void loadStateFileRequest(const QString& filePath);
  void createPresetRequest(const QModelIndex& dataSourceIndex, const QString& presetName,
                           bool saveSplitViewState);
  void applyPresetRequest(const QModelIndex& parentIndex, const QString& presetName);
  void exportPresets(const QString& filePath, const QList<QString>& presetNames);
  void importPresets(const QString& filePath);
  void importFileRequest(const QString& filePath);
  void sendOutputMessage(const QString& message);
  void clearHighlightsRequest();

protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

private:
  void buildLayout();
  void onSelectionChanged();
  void showItemPanels(const QModelIndex& index);
  // Puts the widget into the layout in place of the shown one, which goes back to its owner.
  static void swapPanel(QVBoxLayout* layout, QPointer<QWidget>& shown, QWidget* next);
  void showContextMenu(const QPoint& position);
  // Adds the image slice view to the add-data-view menu when the item gives an image.
  void addImageDataViews(QMenu* menu, const QModelIndex& index);
  void fillPresetMenu(QMenu* menu, const QModelIndex& index);
  void updateToolbarState();

  std::unique_ptr<Ui::VXInfoWidget> m_Ui;
  QPointer<VXPipelineModel> m_Model;
  VXInfoWidgetProxyModel* m_ProxyModel = nullptr;
  VXRenderTreeView* m_TreeView = nullptr;
  QLineEdit* m_SearchField = nullptr;
  QToolButton* m_AddViewButton = nullptr;
  QToolButton* m_AddFilterButton = nullptr;
  QToolButton* m_RemoveButton = nullptr;
  QWidget* m_SettingsArea = nullptr;
  QVBoxLayout* m_SettingsLayout = nullptr;
  QWidget* m_DatasetInfoArea = nullptr;
  QVBoxLayout* m_DatasetInfoLayout = nullptr;
  QPointer<QWidget> m_CurrentSettingsWidget;
  QPointer<QWidget> m_CurrentDatasetInfoWidget;
  // A data view shares its dataset panel: held while shown, so that it outlives a removed view.
  QSharedPointer<VXDatasetInfoWidget> m_DatasetInfoHold;
  QPointer<VXAbstractViewWidget> m_ActiveView;
};
