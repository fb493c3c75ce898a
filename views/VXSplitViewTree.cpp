#include "views/VXSplitViewTree.h"

#include <QSplitter>
#include <QVariant>

#include <algorithm>
#include <cmath>

namespace VXSplitViewTree
{
namespace
{
const char k_RootProperty[] = "VXSplitViewTreeRoot";
// Whole percents: a reloaded splitter laid out at any width above a few hundred pixels saves the same.
constexpr int k_WholeShare = 100;
const char k_LoadedSharesProperty[] = "VXSplitViewLoadedShares";

void EqualSizes(QSplitter* splitter)
{
  const int extent = splitter->orientation() == Qt::Horizontal ? splitter->width() : splitter->height();
  const int each = std::max(1, extent / std::max(1, splitter->count()));
  QList<int> sizes;
  for (int i = 0; i < splitter->count(); ++i)
  {
    sizes << each;
  }
  splitter->setSizes(sizes);
}

// Sizes in proportion to the saved shares: the splitter spreads them over whatever extent it gets.
void ApplyShares(QSplitter* splitter, const nlohmann::json& json)
{
  const auto shares = json.find(k_SharesKey);
  if (shares == json.end() || !shares->is_array() || int(shares->size()) != splitter->count())
  {
    return;
  }
  QList<int> sizes;
  for (const nlohmann::json& share : *shares)
  {
    if (!share.is_number_integer() || share.get<int>() <= 0 || share.get<int>() > k_WholeShare)
    {
      return;
    }
    sizes << share.get<int>();
  }
  splitter->setSizes(sizes);
  // Kept for a window saved before it is ever shown, whose splitters have no sizes of their own yet.
  splitter->setProperty(k_LoadedSharesProperty, QVariant::fromValue(sizes));
}

bool IsSplitterObject(const nlohmann::json& json)
{
  return json.is_object() && (json.contains(k_OrientationKey) || json.contains(k_FirstKey));
}

QString LoadChildren(QSplitter* splitter, const nlohmann::json& json,
                     const std::function<QWidget*(const nlohmann::json&)>& makeLeaf)
{
  for (const char* key : {k_FirstKey, k_SecondKey})
  {
    if (!json.contains(key) || !json[key].is_object())
    {
      continue;
    }
    const nlohmann::json& child = json[key];
    if (IsSplitterObject(child))
    {
      if (!child.contains(k_OrientationKey) || !child[k_OrientationKey].is_number_integer())
      {
        return QStringLiteral(
            "Error loading charting state from state file; missing second split view orientation key");
      }
      auto* nested =
          new QSplitter(static_cast<Qt::Orientation>(child[k_OrientationKey].get<int>()), splitter);
      nested->setChildrenCollapsible(false);
      splitter->addWidget(nested);
      const QString error = LoadChildren(nested, child, makeLeaf);
      if (!error.isEmpty())
      {
        return error;
      }
    }
    else if (QWidget* leaf = makeLeaf(child))
    {
      splitter->addWidget(leaf);
    }
  }
  EqualSizes(splitter);
  ApplyShares(splitter, json);
  return {};
}
} // namespace

void MarkRoot(QSplitter* root)
{
  root->setProperty(k_RootProperty, true);
}

QSplitter* FindRoot(const QWidget* leaf)
{
  for (QWidget* parent = leaf->parentWidget(); parent != nullptr; parent = parent->parentWidget())
  {
    auto* splitter = qobject_cast<QSplitter*>(parent);
    if (splitter == nullptr)
    {
      return nullptr;
    }
    if (splitter->property(k_RootProperty).toBool())
    {
      return splitter;
    }
  }
  return nullptr;
}

QSplitter* SplitLeaf(QWidget* leaf, QWidget* newLeaf, Qt::Orientation orientation)
{
  auto* parent = qobject_cast<QSplitter*>(leaf->parentWidget());
  if (parent == nullptr)
  {
    return nullptr;
  }
  // A splitter of one leaf (the root of a fresh window) only needs turning.
  if (parent->count() == 1)
  {
    parent->setOrientation(orientation);
    parent->addWidget(newLeaf);
    EqualSizes(parent);
    return parent;
  }
  const QList<int> sizes = parent->sizes();
  const int index = parent->indexOf(leaf);
  auto* splitter = new QSplitter(orientation);
  splitter->setChildrenCollapsible(false);
  parent->replaceWidget(index, splitter);
  splitter->addWidget(leaf);
  splitter->addWidget(newLeaf);
  parent->setSizes(sizes);
  const int extent = orientation == Qt::Horizontal ? sizes.value(index) : splitter->height();
  splitter->setSizes({std::max(1, extent / 2), std::max(1, extent / 2)});
  leaf->show();
  newLeaf->show();
  return splitter;
}

bool CloseLeaf(QSplitter* root, QWidget* leaf)
{
  auto* parent = qobject_cast<QSplitter*>(leaf->parentWidget());
  if (parent == nullptr || Leaves(root).size() < 2)
  {
    return false;
  }
  leaf->hide();
  leaf->setParent(nullptr);
  if (parent->count() != 1)
  {
    return true;
  }
  QWidget* sibling = parent->widget(0);
  if (parent == root)
  {
    // The root stays; a lone nested splitter hands its children up to it.
    if (auto* nested = qobject_cast<QSplitter*>(sibling))
    {
      root->setOrientation(nested->orientation());
      const QList<int> sizes = nested->sizes();
      while (nested->count() > 0)
      {
        root->addWidget(nested->widget(0));
      }
      nested->hide();
      nested->setParent(nullptr);
      nested->deleteLater();
      root->setSizes(sizes);
    }
    return true;
  }
  auto* grandParent = qobject_cast<QSplitter*>(parent->parentWidget());
  if (grandParent == nullptr)
  {
    return true;
  }
  const QList<int> sizes = grandParent->sizes();
  grandParent->replaceWidget(grandParent->indexOf(parent), sibling);
  grandParent->setSizes(sizes);
  sibling->show();
  parent->hide();
  parent->setParent(nullptr);
  parent->deleteLater();
  return true;
}

QList<QWidget*> Leaves(const QSplitter* splitter)
{
  QList<QWidget*> leaves;
  if (splitter == nullptr)
  {
    return leaves;
  }
  for (int i = 0; i < splitter->count(); ++i)
  {
    QWidget* child = splitter->widget(i);
    if (auto* nested = qobject_cast<QSplitter*>(child))
    {
      leaves += Leaves(nested);
    }
    else if (child != nullptr)
    {
      leaves << child;
    }
  }
  return leaves;
}

void Clear(QSplitter* root)
{
  while (root->count() > 0)
  {
    QWidget* child = root->widget(0);
    child->hide();
    child->setParent(nullptr);
    delete child;
  }
}

void Save(const QSplitter* splitter, nlohmann::json& json,
          const std::function<void(QWidget*, nlohmann::json&)>& saveLeaf)
{
  json[k_OrientationKey] = static_cast<int>(splitter->orientation());
  for (int i = 0; i < splitter->count() && i < 2; ++i)
  {
    nlohmann::json child = nlohmann::json::object();
    QWidget* widget = splitter->widget(i);
    if (auto* nested = qobject_cast<const QSplitter*>(widget))
    {
      Save(nested, child, saveLeaf);
    }
    else
    {
      saveLeaf(widget, child);
    }
    json[i == 0 ? k_FirstKey : k_SecondKey] = child;
  }
  // A hidden splitter has not been laid out: its sizes are no one's choice.
  if (!splitter->isVisible())
  {
    const QList<int> loaded = splitter->property(k_LoadedSharesProperty).value<QList<int>>();
    if (loaded.size() == 2)
    {
      json[k_SharesKey] = {loaded[0], loaded[1]};
    }
    return;
  }
  const QList<int> sizes = splitter->sizes();
  const long long total = sizes.size() == 2 ? (long long)(sizes[0]) + sizes[1] : 0;
  if (total > 0)
  {
    const int first =
        std::clamp(int(std::llround(double(sizes[0]) * k_WholeShare / double(total))), 1, k_WholeShare - 1);
    json[k_SharesKey] = {first, k_WholeShare - first};
  }
}

bool HasTree(const nlohmann::json& json)
{
  return IsSplitterObject(json);
}

QString Load(QSplitter* root, const nlohmann::json& json,
             const std::function<QWidget*(const nlohmann::json&)>& makeLeaf)
{
  if (!HasTree(json))
  {
    return QStringLiteral("Error reading charting state from state file; no chart split views found");
  }
  if (!json.contains(k_OrientationKey) || !json[k_OrientationKey].is_number_integer())
  {
    return QStringLiteral("Error loading charting state from state file; missing split view orientation key");
  }
  root->setOrientation(static_cast<Qt::Orientation>(json[k_OrientationKey].get<int>()));
  return LoadChildren(root, json, makeLeaf);
}
} // namespace VXSplitViewTree
