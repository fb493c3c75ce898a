#pragma once

#include "data_views/VXRepresentation.h"

#include <QAbstractItemModel>
#include <QList>
#include <QModelIndex>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QStringList>

#include <any>
#include <memory>

class FileToVXBridge;
class VXBridgeObject;
class VXCoreObject;
class VXDataSource;
class VXFilter;
class VXGlobalSource;
class VXInfoWidget;
class VXPipeline;
class VXRepresentationPimpl;
class ZRToVXBridge;

/**
 * The item model over the objects of a pipeline: bridges at the top level, data sources under them,
 * filters and data views below those. Column 0 holds the visibility in the active view, column 1 the
 * name. Every change of structure comes in through the slots, which follow the pipeline's signals.
 */
class VXPipelineModel : public QAbstractItemModel
{
  Q_OBJECT

public:
  enum Column
  {
    VisibilityColumn = 0,
    NameColumn = 1
  };

  /**
   * One node of the tree; it owns its children. The payload of a bridge is its VXBridgeObject*; data
   * sources, filters and data views are held through their VXCoreObject base.
   */
  class TreeItem
  {
  public:
    // The numbers are part of the model's contract: keep them.
    enum Kind
    {
      Pipeline = 0,
      DataSource = 1,
      Filter = 2,
      Representation = 3,
      GlobalSource = 4,
      Root = -1
    };

    struct Item
    {
      Kind kind = Root;
      std::any payload;
    };

    explicit TreeItem(Item item, TreeItem* parent = nullptr);
    ~TreeItem();
    TreeItem(const TreeItem&) = delete;
    TreeItem& operator=(const TreeItem&) = delete;

    TreeItem* parent() const { return m_Parent; }
    Kind kind() const { return m_Item.kind; }
    const Item& item() const { return m_Item; }
    VXBridgeObject* bridgeObject() const;
    VXGlobalSource* globalSource() const;
    VXCoreObject* coreObject() const;
    // The object behind the node whatever its kind; null for the root.
    QObject* object() const;

    TreeItem* child(int row) const;
    int childCount() const { return m_Children.size(); }
    const QList<TreeItem*>& children() const { return m_Children; }
    // The row of this node under its parent; 0 for the root.
    int childIndex() const;
    int numChildRepresentations() const;
    TreeItem* appendChild(Item item);
    // Deletes the child node and its subtree; the objects behind them are not touched.
    bool removeChild(TreeItem* child);

    TreeItem* find(VXRepresentation* representation);
    TreeItem* find(VXDataSource* dataSource);
    TreeItem* find(VXCoreObject* coreObject);
    TreeItem* find(const QObject* object);
    QList<VXCoreObject*> getAllFilters() const;
    QList<VXCoreObject*> getAllCoreObjects() const;
    QList<VXRepresentation*> getAllRepresentations() const;

  private:
    TreeItem* m_Parent = nullptr;
    Item m_Item;
    QList<TreeItem*> m_Children;
  };

  VXPipelineModel(VXPipeline* pipeline, VXInfoWidget* infoWidget, QObject* parent = nullptr);
  ~VXPipelineModel() override;

  QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
  QModelIndex parent(const QModelIndex& index) const override;
  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

  VXPipeline* pipeline() const { return m_Pipeline; }
  VXInfoWidget* infoWidget() const;

  // Queries by index.
  TreeItem* treeItem(const QModelIndex& index) const;
  // The settings panel of the object of the row, built on first use; null for a bridge.
  QWidget* itemWidget(const QModelIndex& index) const;
  bool isPipeline(const QModelIndex& index) const;
  bool isDataSource(const QModelIndex& index) const;
  bool isFilter(const QModelIndex& index) const;
  bool isRepresentation(const QModelIndex& index) const;
  bool isGlobalSource(const QModelIndex& index) const;
  bool canAddRepresentation(const QModelIndex& index) const;
  bool canAddFilter(const QModelIndex& index) const;
  bool canReload(const QModelIndex& index) const;
  bool canSave(const QModelIndex& index) const;
  VXBridgeObject* getPipelineObject(const QModelIndex& index) const;
  VXGlobalSource* getGlobalSource(const QModelIndex& index) const;
  VXCoreObject* getCoreObject(const QModelIndex& index) const;
  VXRepresentation* getRepresentation(const QModelIndex& index) const;
  VXFilter* getFilter(const QModelIndex& index) const;
  VXDataSource* getDataSource(const QModelIndex& index) const;
  QList<VXDataSource*> getChildDataSources(const QModelIndex& index) const;

  // Reverse lookups, in the first column so that they serve as parents; an object that is not in the
  // tree gives an invalid index.
  QModelIndex pipelineIndex(VXBridgeObject* bridge) const;
  QModelIndex globalSourceIndex(VXGlobalSource* globalSource) const;
  QModelIndex representationIndex(VXRepresentation* representation) const;
  QModelIndex dataSourceIndex(VXDataSource* dataSource) const;
  QModelIndex filterIndex(VXFilter* filter) const;
  QModelIndex coreObjectIndex(VXCoreObject* coreObject) const;
  QModelIndex helperIndex(const QObject* object, int column = VisibilityColumn) const;

  // Collections, in tree order.
  QList<VXRepresentation*> getAllRepresentations() const;
  QList<VXCoreObject*> getAllFilters() const;
  QList<VXCoreObject*> getAllCoreObjects() const;
  QList<VXDataSource*> getAllDataSources() const;
  QStringList getAllDataSourceNames() const;
  QList<VXBridgeObject*> getAllBridgeObjects() const;
  QList<VXGlobalSource*> getAllGlobalSources() const;
  VXDataSource* getDataSource(const QString& pathName) const;
  QModelIndex pathIndex(const QString& pathName) const;

  // Changes that go through the pipeline.
  void addBridgeObject(VXBridgeObject* bridge);
  void addGlobalSource(VXGlobalSource* globalSource);
  bool addRepresentation(const QModelIndex& index, VXRepresentation::Type type);
  bool loadRepresentation(const QModelIndex& index, VXRepresentation* representation);
  // Adds the filter under the data source or filter of the row; the model takes the row from filterAdded.
  bool addFilter(const QModelIndex& index, VXFilter* filter);
  void linkLoadedRepresentations();
  // Asks the panel to select the row, which shows its settings.
  void showInfoWidget(const QModelIndex& index);
  void flagChildren(TreeItem* item, bool flag);
  // Tells the views that the check state of every row may have changed (the active view changed).
  void refreshVisibility();

  // The data view implementations whose slices move together.
  QList<VXRepresentationPimpl*> linkedSliceViews() const;

  // The lowest suffix counter not in use among the objects with that base name; 1 when none has it.
  template<class ObjectT>
  static int GetNameSuffixCounter(const QList<ObjectT*>& objects, const QString& baseName)
  {
    QSet<int> used;
    bool nameInUse = false;
    for (const ObjectT* object : objects)
    {
      if (object != nullptr && object->baseName() == baseName)
      {
        nameInUse = true;
        used.insert(object->getNameSuffixCounter());
      }
    }
    if (!nameInUse)
    {
      return 1;
    }
    int counter = 1;
    while (used.contains(counter))
    {
      ++counter;
    }
    return counter;
  }

public Q_SLOTS:
  void pipelineBridgeAdded(VXBridgeObject* pipelineBridge);
  void globalSourceAdded(VXGlobalSource* globalSource);
  void removeGlobalSource(VXGlobalSource* source);
  void dataSourceAdded(VXDataSource* dataSource);
  void filterAdded(VXFilter* filter);
  void representationAdded(VXRepresentation* vxRepresentation);
  void removePipeline(VXBridgeObject* bridge);
  void removeLeafItem(VXCoreObject* coreObject);
  void removeItems(QModelIndexList indexList);
  void removeItem(QModelIndex index);
  void removeDataSource(VXDataSource* dataSource);
  void coreObjectViewStateChanged(VXCoreObject* coreObject, bool isEnabled);
  void onFileObjectFlagged(FileToVXBridge* fileBridgeObject, bool flagged);
  void linkImageSliceSlices(VXRepresentationPimpl* representation);

Q_SIGNALS:
  void zrToVXBridgeObjectAdded(ZRToVXBridge* bridgeObj);
  void zrToVXBridgeObjectRemoved();
  void representationViewInstanceAdded();
  void applyDefaultPresetRequest(const QModelIndex& index);
  void spreadsheetDataChanged(const QModelIndex& index);
  void selectIndexRequest(const QModelIndex& indexToSelect);
  void itemVisibilityChanged(const QModelIndex& index, bool visibility);
  void linkingDataViews(bool isLinking);

private:
  QModelIndex itemIndex(const TreeItem* item, int column = NameColumn) const;
  // Adds a row for a core object under the row of its parent object.
  void appendCoreObjectRow(VXCoreObject* coreObject, TreeItem::Kind kind);
  void watchObject(QObject* object);
  void removeTreeItem(TreeItem* item);
  bool itemNameIsDuplicate(const QModelIndex& index, const QString& name) const;
  void emitSubtreeChanged(TreeItem* item, const QVector<int>& roles);
  // Has a linked image slice view move the other linked views, or stops it.
  void connectLinkedSliceView(VXRepresentationPimpl* representation, bool linked);

  VXPipeline* m_Pipeline = nullptr;
  QPointer<VXInfoWidget> m_InfoWidget;
  std::unique_ptr<TreeItem> m_Root;
  QList<QPointer<VXRepresentationPimpl>> m_LinkedSliceViews;
};
