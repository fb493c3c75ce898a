// The tree model over a pipeline with real render windows: structure, names, visibility per window,
// the search filter and the row delegate.
#include "data_views/VXRepresentationPimpl.h"
#include "pipeline/FileToVXBridge.h"
#include "pipeline/PipelineTreeFixture.h"
#include "pipeline/VXInfoWidgetProxyModel.h"
#include "pipeline/VXPipelineModelItemDelegate.h"
#include "pipeline/VXRenderTreeView.h"
#include "platform/ZRStyle.h"

#include <QAbstractItemModelTester>
#include <QImage>
#include <QLineEdit>
#include <QPointer>
#include <QSignalSpy>
#include <QStringListModel>
#include <QStyleOptionViewItem>

namespace
{
class PipelineModelTest : public PipelineTreeFixture
{
protected:
  VXDataSource* sourceOf(VXBridgeObject* bridge) const
  {
    return bridge != nullptr && bridge->dataSources().size() == 1 ? bridge->dataSources().front() : nullptr;
  }

  QList<VXRepresentation*> viewsUnder(VXDataSource* source) const
  {
    QList<VXRepresentation*> views;
    const QModelIndex parent = m_Model.dataSourceIndex(source);
    for (int row = 0; row < m_Model.rowCount(parent); ++row)
    {
      if (VXRepresentation* view = m_Model.getRepresentation(m_Model.index(row, 1, parent)))
      {
        views.append(view);
      }
    }
    return views;
  }

  QString displayName(VXCoreObject* object) const
  {
    return nameIndex(object).data(Qt::DisplayRole).toString();
  }
};

TEST_F(PipelineModelTest, StaysConsistentWhileItemsAreAddedRenamedMovedAndRemoved)
{
  QAbstractItemModelTester modelTester(&m_Model, QAbstractItemModelTester::FailureReportingMode::Fatal);
  QAbstractItemModelTester proxyTester(m_Info.proxyModel(),
                                       QAbstractItemModelTester::FailureReportingMode::Fatal);

  VXBridgeObject* first = importSphere(QStringLiteral("first.vtp"));
  VXBridgeObject* second = importSphere(QStringLiteral("second.vtp"));
  ASSERT_EQ(m_Model.rowCount(), 2);
  VXDataSource* source = sourceOf(first);
  ASSERT_NE(source, nullptr);
  const QModelIndex sourceIndex = m_Model.dataSourceIndex(source);
  EXPECT_EQ(m_Model.parent(sourceIndex), m_Model.pipelineIndex(first));
  EXPECT_EQ(m_Model.rowCount(sourceIndex), 1); // the default data view

  ASSERT_TRUE(m_Model.addRepresentation(sourceIndex, VXRepresentation::Surface));
  ASSERT_TRUE(m_Model.addRepresentation(sourceIndex, VXRepresentation::Points));
  ASSERT_EQ(m_Model.rowCount(sourceIndex), 3);
  EXPECT_EQ(m_Model.treeItem(sourceIndex)->numChildRepresentations(), 3);
  EXPECT_EQ(m_Model.getAllRepresentations().size(), 4);

  ASSERT_TRUE(m_Model.setData(nameIndex(second), QStringLiteral("Zeta"), Qt::EditRole));
  ASSERT_TRUE(m_Model.setData(nameIndex(first), QStringLiteral("Alpha"), Qt::EditRole));

  // Sorting moves the proxy's rows; descending and back.
  m_Info.proxyModel()->sort(VXPipelineModel::NameColumn, Qt::DescendingOrder);
  EXPECT_EQ(m_Info.proxyModel()->index(0, 1).data().toString(), QStringLiteral("Zeta"));
  m_Info.proxyModel()->sort(VXPipelineModel::NameColumn, Qt::AscendingOrder);
  EXPECT_EQ(m_Info.proxyModel()->index(0, 1).data().toString(), QStringLiteral("Alpha"));

  // A data view removed from the middle, then a whole data source, then a bridge.
  QPointer<VXRepresentation> middle = viewsUnder(source).at(1);
  m_Model.removeItem(m_Model.representationIndex(middle));
  EXPECT_EQ(m_Model.rowCount(sourceIndex), 2);
  settle();
  EXPECT_TRUE(middle.isNull());

  QPointer<VXDataSource> secondSource = sourceOf(second);
  m_Model.removeItem(m_Model.dataSourceIndex(secondSource));
  EXPECT_EQ(m_Model.rowCount(m_Model.pipelineIndex(second)), 0);
  EXPECT_TRUE(second->dataSources().isEmpty());
  settle();
  EXPECT_TRUE(secondSource.isNull());

  QPointer<VXBridgeObject> firstBridge = first;
  m_Model.removeItems({m_Model.pipelineIndex(first)});
  EXPECT_EQ(m_Model.rowCount(), 1);
  EXPECT_FALSE(m_Pipeline.bridges().contains(first));
  settle();
  EXPECT_TRUE(firstBridge.isNull());
  EXPECT_TRUE(m_Model.getAllRepresentations().isEmpty());
}

TEST_F(PipelineModelTest, ObjectsDeletedElsewhereLeaveTheTree)
{
  QAbstractItemModelTester tester(&m_Model, QAbstractItemModelTester::FailureReportingMode::Fatal);
  VXBridgeObject* bridge = importSphere(QStringLiteral("sphere.vtp"));
  VXDataSource* source = sourceOf(bridge);
  ASSERT_NE(source, nullptr);
  delete viewsUnder(source).front();
  EXPECT_EQ(m_Model.rowCount(m_Model.dataSourceIndex(source)), 0);
  // A data source that vanishes from a reload is taken out of the tree with its data views.
  ASSERT_TRUE(m_Model.addRepresentation(m_Model.dataSourceIndex(source), VXRepresentation::Outline));
  Q_EMIT m_Pipeline.removeDataSource(source);
  EXPECT_EQ(m_Model.rowCount(m_Model.pipelineIndex(bridge)), 0);
  EXPECT_TRUE(m_Model.getAllCoreObjects().isEmpty());
}

TEST_F(PipelineModelTest, SuffixCountersTellDataViewsOfOneNameApart)
{
  VXDataSource* source = sourceOf(importSphere(QStringLiteral("sphere.vtp")));
  ASSERT_NE(source, nullptr);
  const QModelIndex sourceIndex = m_Model.dataSourceIndex(source);
  ASSERT_TRUE(m_Model.addRepresentation(sourceIndex, VXRepresentation::Outline));
  QList<VXRepresentation*> views = viewsUnder(source);
  ASSERT_EQ(views.size(), 2);
  EXPECT_EQ(views.at(0)->getNameSuffixCounter(), 1);
  EXPECT_EQ(views.at(1)->getNameSuffixCounter(), 2);
  EXPECT_EQ(displayName(views.at(0)), QStringLiteral("Outline Representation 1"));
  EXPECT_EQ(displayName(views.at(1)), QStringLiteral("Outline Representation 2"));

  // Another kind counts on its own; the counter is shared by all data views of the tree.
  ASSERT_TRUE(m_Model.addRepresentation(sourceIndex, VXRepresentation::Surface));
  EXPECT_EQ(viewsUnder(source).back()->getNameSuffixCounter(), 1);
  VXDataSource* other = sourceOf(importSphere(QStringLiteral("other.vtp")));
  ASSERT_NE(other, nullptr);
  EXPECT_EQ(viewsUnder(other).front()->getNameSuffixCounter(), 3);

  // Removing the first frees its counter for the next new one.
  m_Model.removeItem(m_Model.representationIndex(views.at(0)));
  ASSERT_TRUE(m_Model.addRepresentation(sourceIndex, VXRepresentation::Outline));
  EXPECT_EQ(viewsUnder(source).back()->getNameSuffixCounter(), 1);
  ASSERT_TRUE(m_Model.addRepresentation(sourceIndex, VXRepresentation::Outline));
  EXPECT_EQ(viewsUnder(source).back()->getNameSuffixCounter(), 4);

  // A data view renamed by the user is no longer counted with the default name.
  VXRepresentation* renamed = viewsUnder(source).front();
  ASSERT_TRUE(m_Model.setData(nameIndex(renamed), QStringLiteral("Hull"), Qt::EditRole));
  EXPECT_EQ(renamed->getNameSuffixCounter(), 0);
  EXPECT_EQ(displayName(renamed), QStringLiteral("Hull"));
}

TEST_F(PipelineModelTest, RenameToASiblingsNameIsRefused)
{
  VXBridgeObject* bridge = importSphere(QStringLiteral("sphere.vtp"));
  VXBridgeObject* otherBridge = importSphere(QStringLiteral("other.vtp"));
  VXDataSource* source = sourceOf(bridge);
  ASSERT_NE(source, nullptr);
  ASSERT_TRUE(m_Model.addRepresentation(m_Model.dataSourceIndex(source), VXRepresentation::Surface));
  const QList<VXRepresentation*> views = viewsUnder(source);
  ASSERT_EQ(views.size(), 2);

  QSignalSpy changed(&m_Model, &QAbstractItemModel::dataChanged);
  const QString taken = displayName(views.at(0));
  EXPECT_FALSE(m_Model.setData(nameIndex(views.at(1)), taken, Qt::EditRole));
  EXPECT_EQ(displayName(views.at(1)), QStringLiteral("Surface Representation 1"));
  EXPECT_EQ(views.at(1)->getNameSuffixCounter(), 1);
  EXPECT_EQ(changed.count(), 0);

  const QString bridgeName = otherBridge->name();
  EXPECT_FALSE(m_Model.setData(nameIndex(bridge), bridgeName, Qt::DisplayRole));
  EXPECT_NE(bridge->name(), bridgeName);

  // Only the name column with the display or edit role takes a name.
  EXPECT_FALSE(m_Model.setData(checkIndex(views.at(1)), QStringLiteral("Fresh"), Qt::EditRole));
  EXPECT_FALSE(m_Model.setData(nameIndex(views.at(1)), QStringLiteral("Fresh"), Qt::ToolTipRole));

  // A name held by an item of another kind or under another parent is free.
  ASSERT_TRUE(m_Model.setData(nameIndex(views.at(1)), source->name(), Qt::EditRole));
  EXPECT_EQ(displayName(views.at(1)), source->name());
  EXPECT_EQ(views.at(1)->getNameSuffixCounter(), 0);
  ASSERT_GE(changed.count(), 1);
  EXPECT_EQ(changed.back().at(0).toModelIndex(), nameIndex(views.at(1)));

  ASSERT_TRUE(m_Model.setData(nameIndex(bridge), QStringLiteral("Renamed"), Qt::EditRole));
  EXPECT_EQ(bridge->name(), QStringLiteral("Renamed"));
  EXPECT_EQ(source->pathName(), QStringLiteral("Renamed > ") + source->name());
}

TEST_F(PipelineModelTest, CheckStateFollowsTheActiveView)
{
  VXDataSource* source = sourceOf(importSphere(QStringLiteral("sphere.vtp")));
  ASSERT_NE(source, nullptr);
  VXRepresentation* view = viewsUnder(source).front();
  VXAbstractViewWidget* left = m_Grid.activeView();
  EXPECT_EQ(checkIndex(view).data(Qt::CheckStateRole).toInt(), Qt::Checked);
  EXPECT_FALSE(nameIndex(view).data(Qt::CheckStateRole).isValid());
  EXPECT_FALSE(m_Model.pipelineIndex(qobject_cast<VXBridgeObject*>(source->parent()))
                   .siblingAtColumn(0)
                   .data(Qt::CheckStateRole)
                   .isValid());

  m_Grid.addColumn(left);
  QCoreApplication::processEvents();
  VXAbstractViewWidget* right = m_Grid.allViews().back();
  ASSERT_NE(right, left);
  const int rows = m_Model.rowCount(m_Model.dataSourceIndex(source));

  // The same row, another window: a split window starts with the data view hidden.
  QSignalSpy changed(&m_Model, &QAbstractItemModel::dataChanged);
  QSignalSpy drawnThere(view, &VXCoreObject::enabledDisabledStateChanged);
  m_Pipeline.setActiveViewWidget(right);
  // The data view hears of the new window and tells whether it is drawn there.
  ASSERT_EQ(drawnThere.count(), 1);
  EXPECT_TRUE(drawnThere.front().at(1).toBool());
  m_Info.onActiveViewChanged(right);
  EXPECT_GE(changed.count(), 1);
  EXPECT_EQ(checkIndex(view).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
  EXPECT_EQ(m_Model.rowCount(m_Model.dataSourceIndex(source)), rows);

  QSignalSpy visibility(&m_Model, &VXPipelineModel::itemVisibilityChanged);
  ASSERT_TRUE(m_Model.setData(checkIndex(view), Qt::Checked, Qt::CheckStateRole));
  ASSERT_EQ(visibility.count(), 1);
  EXPECT_TRUE(visibility.front().at(1).toBool());
  EXPECT_EQ(checkIndex(view).data(Qt::CheckStateRole).toInt(), Qt::Checked);
  EXPECT_TRUE(view->implementation(right)->isVisible());

  // Hidden on the left; the right keeps its own state.
  m_Pipeline.setActiveViewWidget(left);
  m_Info.onActiveViewChanged(left);
  ASSERT_TRUE(m_Model.setData(checkIndex(view), false, Qt::CheckStateRole));
  EXPECT_EQ(checkIndex(view).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
  EXPECT_FALSE(view->implementation(left)->isVisible());
  m_Pipeline.setActiveViewWidget(right);
  m_Info.onActiveViewChanged(right);
  EXPECT_EQ(checkIndex(view).data(Qt::CheckStateRole).toInt(), Qt::Checked);
}

TEST_F(PipelineModelTest, FlagsToolTipsAndColoursByKind)
{
  auto* bridge = qobject_cast<FileToVXBridge*>(importSphere(QStringLiteral("sphere.vtp")));
  ASSERT_NE(bridge, nullptr);
  VXDataSource* source = sourceOf(bridge);
  ASSERT_NE(source, nullptr);
  VXRepresentation* view = viewsUnder(source).front();

  EXPECT_EQ(int(m_Model.flags(QModelIndex())), 0);
  EXPECT_EQ(int(m_Model.flags(nameIndex(view))), 51);
  EXPECT_EQ(int(m_Model.flags(checkIndex(view))), 33);
  EXPECT_EQ(m_Model.columnCount(), 2);

  const QModelIndex bridgeIndex = m_Model.pipelineIndex(bridge);
  EXPECT_EQ(bridgeIndex.data(Qt::ToolTipRole).toString(),
            QStringLiteral("Name: %1\nType: Pipeline or File").arg(bridge->name()));
  EXPECT_EQ(
      nameIndex(source).data(Qt::ToolTipRole).toString(),
      QStringLiteral("Name: %1\nType: DataSource\nWith this item selected, use the above toolbar to add a "
                     "DataView or add a Visual Filter to see your data.")
          .arg(source->name()));
  EXPECT_EQ(nameIndex(view).data(Qt::ToolTipRole).toString(),
            QStringLiteral(
                "Name: Outline Representation 1\nType: Data View\nClick on the parent of this item in the "
                "tree to add another DataView or additional Visual Filters."));
  EXPECT_EQ(nameIndex(bridge).data(Qt::DisplayRole).toString(), bridge->name());
  EXPECT_EQ(nameIndex(bridge).data(Qt::EditRole).toString(), bridge->name());
  EXPECT_FALSE(bridgeIndex.data(Qt::DisplayRole).isValid());
  EXPECT_FALSE(nameIndex(view).data(Qt::DecorationRole).value<QIcon>().isNull());

  EXPECT_TRUE(m_Model.isPipeline(bridgeIndex));
  EXPECT_TRUE(m_Model.canReload(bridgeIndex));
  EXPECT_TRUE(m_Model.canAddRepresentation(nameIndex(source)));
  EXPECT_FALSE(m_Model.canAddRepresentation(nameIndex(view)));
  EXPECT_FALSE(m_Model.canAddRepresentation(bridgeIndex));
  EXPECT_EQ(m_Model.getDataSource(source->pathName()), source);
  EXPECT_EQ(m_Model.pathIndex(view->pathName()), checkIndex(view));
  EXPECT_EQ(m_Model.getChildDataSources(bridgeIndex), QList<VXDataSource*>{source});

  // A file that the item no longer follows marks its whole subtree.
  const QColor normal = ZRStyle::getDefaultTextColor();
  EXPECT_EQ(nameIndex(view).data(Qt::ForegroundRole).value<QColor>(), normal);
  m_Model.onFileObjectFlagged(bridge, true);
  EXPECT_TRUE(source->autoReload());
  EXPECT_TRUE(view->autoReload());
  EXPECT_NE(nameIndex(view).data(Qt::ForegroundRole).value<QColor>(), normal);
  EXPECT_NE(nameIndex(source).data(Qt::ForegroundRole).value<QColor>(), normal);
  m_Model.onFileObjectFlagged(bridge, false);
  EXPECT_FALSE(view->autoReload());
  EXPECT_EQ(nameIndex(view).data(Qt::ForegroundRole).value<QColor>(), normal);
}

TEST_F(PipelineModelTest, SearchKeepsTheSubtreesOfMatches)
{
  VXBridgeObject* bridge = importSphere(QStringLiteral("sphere.vtp"));
  importSphere(QStringLiteral("other.vtp"));
  VXDataSource* source = sourceOf(bridge);
  ASSERT_NE(source, nullptr);
  ASSERT_TRUE(m_Model.addRepresentation(m_Model.dataSourceIndex(source), VXRepresentation::Surface));
  ASSERT_TRUE(m_Model.setData(nameIndex(source), QStringLiteral("Grain Boundaries"), Qt::EditRole));
  VXInfoWidgetProxyModel* proxy = m_Info.proxyModel();

  // A matching data source keeps its data views, whose names do not match, and its bridge.
  proxy->setSearchText(QStringLiteral("grain"));
  ASSERT_EQ(proxy->rowCount(), 1);
  const QModelIndex bridgeRow = proxy->index(0, 0);
  EXPECT_EQ(proxy->mapToSource(bridgeRow), m_Model.pipelineIndex(bridge).siblingAtColumn(0));
  ASSERT_EQ(proxy->rowCount(bridgeRow), 1);
  EXPECT_EQ(proxy->rowCount(proxy->index(0, 0, bridgeRow)), 2);

  // A matching bridge keeps everything below it.
  proxy->setSearchText(QStringLiteral("other.vtp"));
  ASSERT_EQ(proxy->rowCount(), 1);
  ASSERT_EQ(proxy->rowCount(proxy->index(0, 0)), 1);
  EXPECT_EQ(proxy->rowCount(proxy->index(0, 0, proxy->index(0, 0))), 1);

  // One data view by name: its siblings go.
  proxy->setSearchText(QStringLiteral("surface"));
  ASSERT_EQ(proxy->rowCount(), 1);
  const QModelIndex sourceRow = proxy->index(0, 0, proxy->index(0, 0));
  ASSERT_EQ(proxy->rowCount(sourceRow), 1);
  EXPECT_EQ(proxy->index(0, 1, sourceRow).data().toString(), QStringLiteral("Surface Representation 1"));

  proxy->setSearchText(QStringLiteral("(nothing matches"));
  EXPECT_EQ(proxy->rowCount(), 0);
  proxy->setSearchText(QString());
  EXPECT_EQ(proxy->rowCount(), 2);

  // Over any other model nothing passes.
  QStringListModel names({QStringLiteral("grain")});
  VXInfoWidgetProxyModel foreign;
  foreign.setSourceModel(&names);
  EXPECT_EQ(foreign.rowCount(), 0);
}

TEST_F(PipelineModelTest, DelegateEyeTogglesVisibilityAndEditorRefusesDuplicates)
{
  VXDataSource* source = sourceOf(importSphere(QStringLiteral("sphere.vtp")));
  ASSERT_NE(source, nullptr);
  ASSERT_TRUE(m_Model.addRepresentation(m_Model.dataSourceIndex(source), VXRepresentation::Surface));
  const QList<VXRepresentation*> views = viewsUnder(source);
  VXRenderTreeView* tree = m_Info.treeView();
  m_Info.resize(300, 600);
  m_Info.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_Info));
  tree->expandAll();
  QCoreApplication::processEvents();

  EXPECT_EQ(tree->columnWidth(VXPipelineModel::VisibilityColumn), VXRenderTreeView::k_VisibilityColumnWidth);
  EXPECT_TRUE(tree->isHeaderHidden());
  const QModelIndex eye = m_Info.proxyModel()->mapFromSource(checkIndex(views.at(0)));
  const QRect eyeRect = tree->visualRect(eye);
  ASSERT_TRUE(eyeRect.isValid());
  QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, eyeRect.center());
  EXPECT_FALSE(views.at(0)->isVisible());
  EXPECT_EQ(checkIndex(views.at(0)).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
  QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, eyeRect.center());
  EXPECT_TRUE(views.at(0)->isVisible());

  VXPipelineModelItemDelegate delegate(&m_Info, VXPipelineModel::VisibilityColumn);
  QStyleOptionViewItem option;
  EXPECT_EQ(delegate.createEditor(tree->viewport(), option, checkIndex(views.at(1))), nullptr);
  std::unique_ptr<QWidget> editor(delegate.createEditor(tree->viewport(), option, nameIndex(views.at(1))));
  auto* lineEdit = qobject_cast<QLineEdit*>(editor.get());
  ASSERT_NE(lineEdit, nullptr);
  delegate.setEditorData(lineEdit, nameIndex(views.at(1)));
  EXPECT_EQ(lineEdit->text(), QStringLiteral("Surface Representation 1"));

  QSignalSpy messages(&m_Info, &VXInfoWidget::sendOutputMessage);
  lineEdit->setText(views.at(0)->name());
  delegate.setModelData(lineEdit, &m_Model, nameIndex(views.at(1)));
  EXPECT_EQ(views.at(1)->name(), QStringLiteral("Surface Representation 1"));
  EXPECT_EQ(messages.count(), 1);
  lineEdit->setText(QStringLiteral("Shell"));
  delegate.setModelData(lineEdit, &m_Model, nameIndex(views.at(1)));
  EXPECT_EQ(views.at(1)->name(), QStringLiteral("Shell"));
}

TEST_F(PipelineModelTest, EmptyTreeShowsHowToBringDataIn)
{
  VXRenderTreeView* tree = m_Info.treeView();
  m_Info.resize(300, 400);
  m_Info.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_Info));
  const QString hint = VXRenderTreeView::emptyHintText();
  EXPECT_TRUE(hint.contains(QStringLiteral("Import Data for Visualization")));
  EXPECT_TRUE(hint.contains(QStringLiteral("- Visualization Menu -&gt; Load State")));
  EXPECT_TRUE(hint.contains(QStringLiteral("&nbsp;&nbsp;.stl, .jpg, .png, .tif, .bmp)")));

  // Text is drawn while the tree is empty; an item in the tree replaces it.
  auto inkInTopLeft = [tree]()
  {
    const QImage image = tree->viewport()->grab().toImage();
    const QRgb background = image.pixel(image.width() - 1, image.height() - 1);
    int ink = 0;
    for (int y = 0; y < qMin(60, image.height()); ++y)
    {
      for (int x = 0; x < qMin(200, image.width()); ++x)
      {
        ink += image.pixel(x, y) != background ? 1 : 0;
      }
    }
    return ink;
  };
  const int emptyInk = inkInTopLeft();
  EXPECT_GT(emptyInk, 50);
  importSphere(QStringLiteral("sphere.vtp"));
  tree->collapseAll();
  QCoreApplication::processEvents();
  EXPECT_NE(inkInTopLeft(), emptyInk);
}
} // namespace
