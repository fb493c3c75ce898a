#pragma once

#include "platform/AbstractZRGridSplitterWidget.h"

class VXAbstractViewWidget;
class VXViewWidget;

/**
 * @brief The split-view grid of the visualization area. A horizontal split of a view adds a column
 * (the two views side by side), a vertical split adds a row.
 */
class VXViewGridWidget : public AbstractZRGridSplitterWidget
{
  Q_OBJECT

public:
  /** @brief Starts with one view. */
  explicit VXViewGridWidget(QWidget* parent = nullptr);
  ~VXViewGridWidget() override;

  VXAbstractViewWidget* activeView() const;
  int viewCount() const;
  /** @brief The views in row-major order. */
  QList<VXAbstractViewWidget*> allViews() const;

  void saveState(nlohmann::json& output) const;
  /**
   * @brief Rebuilds the grid from a grid record (or from the older record, a binary tree of splits).
   * The first cell reuses existing; the others are new views. A key of the wrong JSON type raises
   * the JSON library's type error.
   */
  void loadState(const nlohmann::json& input, VXViewWidget* existing);
  void reset();

  /** @brief The smallest size of a view: its toolbar stays usable down to this. */
  static QSize minimumViewSize();
  /** @brief Room for every row and column at the smallest view size, so that no view disappears. */
  QSize minimumSizeHint() const override;

Q_SIGNALS:
  void activeViewChanged(VXAbstractViewWidget* view);
  void viewCreated(VXAbstractViewWidget* view);
  void viewClosed(VXAbstractViewWidget* view);

protected:
  void childEvent(QChildEvent* event) override;
  QWidget* createSplitWidget(QWidget* source) override;
  void saveWidgetState(QWidget* widget, nlohmann::json& output) const override;
  void loadWidgetState(const nlohmann::json& input, QWidget* widget) override;
  void setWidgetClosable(QWidget* widget, bool closable) override;
  void onWidgetCreated(QWidget* source, QWidget* created) override;
  void onWidgetClosing(QWidget* widget) override;
  void onActiveWidgetChanged(QWidget* widget) override;
  void connectWidget(QWidget* widget) override;

private:
  void loadLegacyState(const nlohmann::json& input, VXViewWidget* existing);
  void raiseNextSplitViewIdAboveLoaded();
  void traverseLegacyNode(VXAbstractViewWidget* view, const nlohmann::json& node);
  void loadGridRecord(const nlohmann::json& input, VXViewWidget* existing);
  void placeWidget(int row, int col, VXViewWidget* view);
  void placeAlone(VXViewWidget* view);
};
