// The split tree of the spreadsheet and charting windows keeps the proportions the user dragged.
#include "views/VXSplitViewTree.h"

#include <QLabel>
#include <QSplitter>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace
{
QWidget* makeLabel(const nlohmann::json& json)
{
  return new QLabel(QString::fromStdString(json.value("name", std::string())));
}

void saveLabel(QWidget* leaf, nlohmann::json& json)
{
  json["name"] = qobject_cast<QLabel*>(leaf)->text().toStdString();
}

double firstShare(const QSplitter* splitter)
{
  const QList<int> sizes = splitter->sizes();
  return double(sizes.at(0)) / double(sizes.at(0) + sizes.at(1));
}

// A window of three views: a left one, and a right column split into top and bottom.
std::unique_ptr<QSplitter> threeViews(int width, int height)
{
  auto root = std::make_unique<QSplitter>(Qt::Horizontal);
  VXSplitViewTree::MarkRoot(root.get());
  auto* left = new QLabel(QStringLiteral("left"));
  root->addWidget(left);
  root->resize(width, height);
  root->show();
  VXSplitViewTree::SplitLeaf(left, new QLabel(QStringLiteral("top")), Qt::Horizontal);
  auto* top = VXSplitViewTree::Leaves(root.get()).at(1);
  VXSplitViewTree::SplitLeaf(top, new QLabel(QStringLiteral("bottom")), Qt::Vertical);
  return root;
}
} // namespace

TEST(VXSplitViewTree, AReloadedWindowKeepsTheProportionsOfEverySplitter)
{
  std::unique_ptr<QSplitter> root = threeViews(1000, 600);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(root.get()));
  auto* column = qobject_cast<QSplitter*>(root->widget(1));
  ASSERT_NE(column, nullptr);
  root->setSizes({300, 700});
  column->setSizes({450, 150});
  QCoreApplication::processEvents();

  nlohmann::json saved;
  VXSplitViewTree::Save(root.get(), saved, saveLabel);
  EXPECT_EQ(saved[VXSplitViewTree::k_SharesKey], nlohmann::json({30, 70}));

  // Reloaded into a window of another size: the same proportions.
  QSplitter reloaded;
  VXSplitViewTree::MarkRoot(&reloaded);
  reloaded.resize(700, 900);
  ASSERT_TRUE(VXSplitViewTree::Load(&reloaded, saved, makeLabel).isEmpty());
  reloaded.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&reloaded));
  EXPECT_NEAR(firstShare(&reloaded), 0.30, 0.01);
  auto* reloadedColumn = qobject_cast<QSplitter*>(reloaded.widget(1));
  ASSERT_NE(reloadedColumn, nullptr);
  EXPECT_NEAR(firstShare(reloadedColumn), 0.75, 0.01);
  EXPECT_EQ(qobject_cast<QLabel*>(reloadedColumn->widget(1))->text(), QStringLiteral("bottom"));

  // And it saves as it was loaded, shown or never shown.
  nlohmann::json again;
  VXSplitViewTree::Save(&reloaded, again, saveLabel);
  EXPECT_EQ(again, saved);
  QSplitter hidden;
  VXSplitViewTree::MarkRoot(&hidden);
  ASSERT_TRUE(VXSplitViewTree::Load(&hidden, saved, makeLabel).isEmpty());
  nlohmann::json unseen;
  VXSplitViewTree::Save(&hidden, unseen, saveLabel);
  EXPECT_EQ(unseen, saved);
}

TEST(VXSplitViewTree, SharesThatMakeNoSenseLeaveEqualHalves)
{
  for (const nlohmann::json& shares :
       {nlohmann::json({0, 100}), nlohmann::json({30}), nlohmann::json("30,70"), nlohmann::json({-5, 105})})
  {
    nlohmann::json state = {{VXSplitViewTree::k_OrientationKey, int(Qt::Horizontal)},
                            {VXSplitViewTree::k_FirstKey, {{"name", "a"}}},
                            {VXSplitViewTree::k_SecondKey, {{"name", "b"}}},
                            {VXSplitViewTree::k_SharesKey, shares}};
    QSplitter root;
    VXSplitViewTree::MarkRoot(&root);
    root.resize(800, 400);
    ASSERT_TRUE(VXSplitViewTree::Load(&root, state, makeLabel).isEmpty()) << shares.dump();
    root.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&root));
    EXPECT_NEAR(firstShare(&root), 0.5, 0.02) << shares.dump();
  }
}
