#pragma once

#include <nlohmann/json.hpp>

#include <QList>
#include <QObject>
#include <QString>

#include <functional>

class QSplitter;
class QWidget;

/**
 * @brief The mechanics of a window made of nested QSplitters whose leaves are view widgets (the
 * spreadsheet and charting windows): split a leaf, close one and collapse its splitter, find the
 * leaves, and write or rebuild the whole tree as JSON.
 *
 * A splitter's object holds "split_view_orientation" (the Qt::Orientation number) and one object per
 * child under "split_view_first" and "split_view_second", a splitter's object or a view's alike, and
 * "split_view_shares", the part of the splitter each child takes.
 */
namespace VXSplitViewTree
{
inline const char k_OrientationKey[] = "split_view_orientation";
inline const char k_FirstKey[] = "split_view_first";
inline const char k_SecondKey[] = "split_view_second";
// The share of the splitter each child had, in percent, so that a reloaded window keeps the
// user's proportions at any window size.
inline const char k_SharesKey[] = "split_view_shares";

/** @brief Marks the splitter at the top of a window's tree, where the search of FindRoot stops. */
void MarkRoot(QSplitter* root);
/** @brief The marked root splitter above a leaf, or null. */
QSplitter* FindRoot(const QWidget* leaf);
/** @brief Puts newLeaf beside leaf (right of it, or below it), the two sharing leaf's old place equally. */
QSplitter* SplitLeaf(QWidget* leaf, QWidget* newLeaf, Qt::Orientation orientation);
/**
 * @brief Takes leaf out of its splitter and lifts its sibling into the splitter's place; leaf is not
 * deleted. False when leaf is the only leaf under root or lies in no splitter.
 */
bool CloseLeaf(QSplitter* root, QWidget* leaf);
/** @brief All leaves (widgets that are not splitters) below splitter, depth first. */
QList<QWidget*> Leaves(const QSplitter* splitter);
/** @brief The first leaf of type T below splitter, depth first, or null. */
template<class T>
T* FindViewWidget(const QSplitter* splitter)
{
  for (QWidget* leaf : Leaves(splitter))
  {
    if (auto* view = qobject_cast<T*>(leaf))
    {
      return view;
    }
  }
  return nullptr;
}
/** @brief Deletes every child of root, splitters and leaves. */
void Clear(QSplitter* root);

void Save(const QSplitter* splitter, nlohmann::json& json,
          const std::function<void(QWidget* leaf, nlohmann::json& json)>& saveLeaf);
/**
 * @brief Rebuilds the tree below an empty root from json, making each leaf with makeLeaf (which may
 * return null to leave a view out). Returns the message of the first fault, empty on success; what
 * was rebuilt before the fault stays.
 */
QString Load(QSplitter* root, const nlohmann::json& json,
             const std::function<QWidget*(const nlohmann::json& json)>& makeLeaf);
/** @brief Whether json holds a tree (orientation or a first child). */
bool HasTree(const nlohmann::json& json);
} // namespace VXSplitViewTree
