#pragma once

#include "views/VXAbstractViewWidget.h"

#include <memory>

class QGraphicsBlurEffect;
class QGraphicsOpacityEffect;
class QLabel;

namespace Ui
{
class VXViewWidget;
}

/**
 * @brief The cell of the grid: a render window under a status line with split and close buttons,
 * and an overlay that names the view ("Split View 2") when asked.
 */
class VXViewWidget : public VXAbstractViewWidget
{
  Q_OBJECT

public:
  explicit VXViewWidget(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
  /** @brief A new view beside the same parent, with its own render window (the camera is not copied). */
  VXViewWidget(const VXViewWidget& other);
  ~VXViewWidget() override;

  VXViewWidget& operator=(const VXViewWidget&) = delete;

  /** @brief The id the next split view will get. */
  static int nextSplitViewId();
  static void setNextSplitViewId(int splitId);

  Ui::VXViewWidget* form() const;
  QLabel* overlayHintLabel() const;
  QLabel* overlayBackgroundLabel() const;
  QGraphicsBlurEffect* renderWindowBlurEffect() const;

public Q_SLOTS:
  VXAbstractViewWidget* clone() override;
  VXAbstractViewWidget* newInstance() override;
  void setupView() override;
  void setSplitId(int splitId) override;
  int getSplitId() const override;
  void setSplitIdOverlayHintVisibility(bool visible) override;
  void updateStatusMessage(const QString& status) override;
  void saveState(nlohmann::json& output) override;
  void loadState(const nlohmann::json& input) override;
  void updateClosable() override;

  void splitHorizontally();
  void splitVertically();
  void closeView();

protected:
  void resizeEvent(QResizeEvent* event) override;

private:
  void setupGui();
  void connectSlots();
  void updateIcons();

  std::shared_ptr<Ui::VXViewWidget> m_Ui;
  int m_SplitId = 1;
  QLabel* m_MoveChartOverlayHint = nullptr;
  QLabel* m_MoveChartOverlayBackground = nullptr;
  QGraphicsBlurEffect* m_BlurEffect = nullptr;
  QGraphicsOpacityEffect* m_OpacityEffect = nullptr;

  static int s_NextSplitViewId;
};
