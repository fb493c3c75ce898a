#pragma once

#include <QTreeView>

/**
 * The tree of the pipeline: single selection, names edited in place, the header hidden. With nothing
 * in it, it tells the user how to bring data in.
 */
class VXRenderTreeView : public QTreeView
{
  Q_OBJECT

public:
  explicit VXRenderTreeView(QWidget* parent = nullptr);

  void setModel(QAbstractItemModel* model) override;

  // The rich text shown while the tree is empty.
  static QString emptyHintText();

  static constexpr int k_VisibilityColumnWidth = 20;

protected:
  void paintEvent(QPaintEvent* event) override;

private:
  // The eye column keeps its width whatever the model does to the header's sections.
  void applyColumnWidths();
};
