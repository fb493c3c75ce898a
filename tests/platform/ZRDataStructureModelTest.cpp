#include "platform/ZRDataStructureModel.h"
#include "platform/ZRDataStructureTreeView.h"
#include "platform/ZRDataStructureWidget.h"
#include "platform/ZRDragAndDrop.h"
#include "platform/ZRLineEdit.h"

#include "common/ZRTestStructures.h"

#include "data_bridge/zr_contract/NeighborList.h"
#include "data_bridge/zr_contract/StringArray.h"

#include <QAbstractItemModelTester>
#include <QMimeData>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <memory>

namespace
{
using zr::core::DataPath;

// Every geometry kind, plus a group holding a string array, a neighbour list, and the image's
// feature ids reached a second time through that group.
std::shared_ptr<zr::core::DataStructure> MakeStructure()
{
  std::shared_ptr<zr::core::DataStructure> ds = ZRTest::MakeAllKinds();
  auto* extras = zr::core::DataGroup::Create(*ds, "Extras");
  zr::core::StringArray::Create(*ds, "Names", {"a", "b"}, extras->getId());
  auto* list = zr::core::NeighborList<float>::Create(*ds, "Neighbors", 2, extras->getId());
  list->setList(0, {1.0f, 2.0f});
  const auto ids = ds->getId(DataPath({"Scan", "Grains", "Cell Data", "FeatureIds"}));
  EXPECT_TRUE(ids.has_value());
  EXPECT_TRUE(ds->addAdditionalParent(*ids, extras->getId()));
  return ds;
}

// The model tester reports faults as warnings of its own category.
QStringList s_TesterFaults;
void CollectTesterFaults(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
  if (type != QtDebugMsg && QString::fromLatin1(context.category).startsWith(QStringLiteral("qt.modeltest")))
  {
    s_TesterFaults << message;
  }
}

int CountRows(const QAbstractItemModel& model, const QModelIndex& parent = QModelIndex())
{
  int count = 0;
  for (int row = 0; row < model.rowCount(parent); ++row)
  {
    count += 1 + CountRows(model, model.index(row, 0, parent));
  }
  return count;
}
} // namespace

TEST(ZRDataStructureModelTest, PassesTheModelTesterThroughResets)
{
  s_TesterFaults.clear();
  const QtMessageHandler previous = qInstallMessageHandler(CollectTesterFaults);
  ZRDataStructureModel model;
  QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Warning);
  QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
  std::shared_ptr<zr::core::DataStructure> ds = MakeStructure();
  model.setDataStructure(ds);
  EXPECT_EQ(model.getDataStructure(), ds);
  // One row per path: FeatureIds has two parents and so two rows.
  EXPECT_EQ(CountRows(model), static_cast<int>(ds->getAllDataPaths().size()));
  model.setDataStructure(MakeStructure());
  model.setDataStructure(nullptr);
  EXPECT_EQ(model.rowCount(), 0);
  EXPECT_EQ(resets.count(), 3);
  qInstallMessageHandler(previous);
  EXPECT_TRUE(s_TesterFaults.isEmpty()) << s_TesterFaults.join('\n').toStdString();
}

TEST(ZRDataStructureModelTest, RowsCarryPathTypeAndShape)
{
  ZRDataStructureModel model;
  std::shared_ptr<zr::core::DataStructure> ds = MakeStructure();
  model.setDataStructure(ds);

  const DataPath colorsPath({"Scan", "Grains", "Cell Data", "Colors"});
  const QModelIndex colors = model.indexOf(colorsPath);
  ASSERT_TRUE(colors.isValid());
  EXPECT_EQ(model.dataPath(colors), colorsPath);
  EXPECT_EQ(colors.data().toString(), QStringLiteral("Colors"));
  EXPECT_EQ(colors.data(ZRDataStructureModel::DataPathRole).toString(),
            QStringLiteral("Scan/Grains/Cell Data/Colors"));
  EXPECT_EQ(colors.data(ZRDataStructureModel::ObjectTypeRole).toString(), QStringLiteral("DataArray"));
  const QString tip = colors.data(Qt::ToolTipRole).toString();
  EXPECT_TRUE(tip.contains(QStringLiteral("DataArray<uint8>"))) << tip.toStdString();
  EXPECT_TRUE(tip.contains(QStringLiteral("Tuple Shape: (2, 2, 3)"))) << tip.toStdString();
  EXPECT_TRUE(tip.contains(QStringLiteral("Component Shape: (3)"))) << tip.toStdString();

  const QModelIndex image = model.indexOf(DataPath({"Scan", "Grains"}));
  ASSERT_TRUE(image.isValid());
  EXPECT_EQ(image.data(ZRDataStructureModel::ObjectTypeRole).toString(), QStringLiteral("ImageGeom"));
  EXPECT_FALSE(model.isArray(image));
  EXPECT_FALSE(model.flags(image).testFlag(Qt::ItemIsDragEnabled));
  EXPECT_TRUE(model.flags(colors).testFlag(Qt::ItemIsDragEnabled));

  EXPECT_EQ(
      model.indexOf(DataPath({"Extras", "Names"})).data(ZRDataStructureModel::ObjectTypeRole).toString(),
      QStringLiteral("StringArray"));
  EXPECT_EQ(
      model.indexOf(DataPath({"Extras", "Neighbors"})).data(ZRDataStructureModel::ObjectTypeRole).toString(),
      QStringLiteral("NeighborList"));
  // The second parent shows the same object under its own path.
  const QModelIndex shared = model.indexOf(DataPath({"Extras", "FeatureIds"}));
  ASSERT_TRUE(shared.isValid());
  EXPECT_EQ(model.parent(shared), model.indexOf(DataPath({"Extras"})));
  EXPECT_FALSE(model.indexOf(DataPath({"Scan", "Missing"})).isValid());
}

TEST(ZRDataStructureModelTest, DragCarriesOnlyTheArraysInTheDropFormat)
{
  ZRDataStructureModel model;
  model.setDataStructure(MakeStructure());
  const QModelIndexList indexes = {model.indexOf(DataPath({"Scan", "Grains", "Cell Data", "FeatureIds"})),
                                   model.indexOf(DataPath({"Scan", "Grains"})),
                                   model.indexOf(DataPath({"Extras", "Names"}))};
  std::unique_ptr<QMimeData> mime(model.mimeData(indexes));
  ASSERT_NE(mime, nullptr);
  EXPECT_TRUE(model.mimeTypes().contains(ZR::DragAndDrop::DataStructureItem));
  const auto values = ZR::DragAndDrop::DropValuesFromMimeData(mime.get());
  ASSERT_TRUE(values.has_value());
  ASSERT_EQ(values->size(), 2u);
  EXPECT_EQ((*values)[0].path.toString(), "Scan/Grains/Cell Data/FeatureIds");
  EXPECT_EQ((*values)[0].objectType, "DataArray");
  EXPECT_EQ((*values)[1].path.toString(), "Extras/Names");
  EXPECT_EQ((*values)[1].objectType, "StringArray");

  std::unique_ptr<QMimeData> none(model.mimeData({model.indexOf(DataPath({"Scan"}))}));
  EXPECT_EQ(none, nullptr);
}

TEST(ZRDataStructureTreeViewTest, SearchHidesRowsThatDoNotLeadToAMatch)
{
  ZRDataStructureWidget widget;
  ZRDataStructureTreeView* tree = widget.getDataStructureTreeView();
  tree->setActiveDataStructure(MakeStructure());
  ZRDataStructureModel* model = tree->getDataStructureModel();
  const QModelIndex scan = model->indexOf(DataPath({"Scan"}));
  const QModelIndex grains = model->indexOf(DataPath({"Scan", "Grains"}));
  const QModelIndex surface = model->indexOf(DataPath({"Scan", "Surface"}));
  const QModelIndex extras = model->indexOf(DataPath({"Extras"}));

  widget.searchField()->setText(QStringLiteral("colors"));
  EXPECT_FALSE(tree->isRowHidden(scan.row(), QModelIndex()));
  EXPECT_FALSE(tree->isRowHidden(grains.row(), scan));
  EXPECT_TRUE(tree->isRowHidden(surface.row(), scan));
  EXPECT_TRUE(tree->isRowHidden(extras.row(), QModelIndex()));

  // A matching group keeps its members in view.
  widget.searchField()->setText(QStringLiteral("EXTRAS"));
  const QModelIndex names = model->indexOf(DataPath({"Extras", "Names"}));
  EXPECT_FALSE(tree->isRowHidden(names.row(), extras));
  EXPECT_TRUE(tree->isRowHidden(scan.row(), QModelIndex()));

  widget.searchField()->clear();
  EXPECT_FALSE(tree->isRowHidden(surface.row(), scan));
  EXPECT_FALSE(tree->isRowHidden(extras.row(), QModelIndex()));
}

TEST(ZRDataStructureTreeViewTest, NewRunKeepsOpenBranchesAndSelectionGivesArrayPaths)
{
  ZRDataStructureTreeView tree;
  tree.resize(300, 600);
  tree.setActiveDataStructure(MakeStructure());
  ZRDataStructureModel* model = tree.getDataStructureModel();
  const DataPath cellData({"Scan", "Grains", "Cell Data"});
  tree.expand(model->indexOf(cellData));
  tree.collapse(model->indexOf(DataPath({"Extras"})));

  tree.setActiveDataStructure(MakeStructure());
  EXPECT_TRUE(tree.isExpanded(model->indexOf(cellData)));
  EXPECT_FALSE(tree.isExpanded(model->indexOf(DataPath({"Extras"}))));

  tree.selectionModel()->select(model->indexOf(cellData.createChildPath("Colors")),
                                QItemSelectionModel::Select);
  tree.selectionModel()->select(model->indexOf(cellData), QItemSelectionModel::Select);
  tree.selectionModel()->select(model->indexOf(cellData.createChildPath("FeatureIds")),
                                QItemSelectionModel::Select);
  const std::vector<DataPath> paths = tree.selectedArrayPaths();
  ASSERT_EQ(paths.size(), 2u);
  EXPECT_EQ(paths[0], cellData.createChildPath("FeatureIds"));
  EXPECT_EQ(paths[1], cellData.createChildPath("Colors"));
}
