#pragma once

#include <nlohmann/json_fwd.hpp>

#include <QFrame>

class VXVisualizationWidget;

/**
 * @brief One cell of the split-view grid: a frame around a render window.
 *
 * The Qt property "Active" lets the style sheet frame the active cell. A cell asks the grid for
 * splits and its own closing through signals; the grid decides.
 */
class VXAbstractViewWidget : public QFrame
{
  Q_OBJECT
  Q_PROPERTY(bool Active READ isActive WRITE setActive)

public:
  explicit VXAbstractViewWidget(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
  ~VXAbstractViewWidget() override;

  /** @brief The render window of this cell; null until setupView() ran. */
  VXVisualizationWidget* getVisualizationWidget() const;
  bool isClosable() const;
  bool isRenderBlocked() const;

public Q_SLOTS:
  virtual bool isActive() const;
  /** @brief Stores the flag and re-polishes, so that the style sheet follows it. */
  virtual void setActive(bool active);
  /** @brief A new cell for a split of this one, with this one's camera. */
  virtual VXAbstractViewWidget* clone() = 0;
  /** @brief A plain new cell of the same kind (used when a state is loaded). */
  virtual VXAbstractViewWidget* newInstance() = 0;
  virtual void setupView() = 0;
  virtual void setSplitId(int splitId) = 0;
  virtual int getSplitId() const = 0;
  virtual void setSplitIdOverlayHintVisibility(bool visible) = 0;
  virtual void mousePressed();
  virtual void updateStatusMessage(const QString& status) = 0;
  virtual void saveState(nlohmann::json& output);
  virtual void loadState(const nlohmann::json& input);
  virtual void updateClosable() = 0;

  void setClosable(bool closable);
  void notifyClosingView();
  void notifyViewWidgetCreated(VXAbstractViewWidget* splitView);
  void renderView();
  void resetCamera();
  void unlinkCamera();
  void updateScene();
  /** @brief While blocked the renderer draws nothing; unblocking draws once. */
  void setBlockRender(bool block);
  void onPipelineOutputReloaded();

Q_SIGNALS:
  void markActive(QWidget* self);
  void requestSplitHorizontally(QWidget* self);
  void requestSplitVertically(QWidget* self);
  void requestClose(QWidget* self);
  void viewWidgetCreated(VXAbstractViewWidget* sourceViewWidget, VXAbstractViewWidget* splitViewWidget);
  void closingView();

protected:
  void mousePressEvent(QMouseEvent* event) override;

  VXVisualizationWidget* m_VisualizationWidget = nullptr;
  bool m_Closable = false;
  bool m_BlockRender = false;
  bool m_Active = false;
};
