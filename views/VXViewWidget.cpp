#include "views/VXViewWidget.h"

#include "views/VXButtonHoverReset.h"

#include "ui_VXViewWidget.h"

#include "platform/ZRStyle.h"
#include "views/VXInteractorStyleCamera.h"
#include "views/VXVisualizationWidget.h"

#include <nlohmann/json.hpp>

#include <QGraphicsBlurEffect>
#include <QGraphicsOpacityEffect>
#include <QLabel>

// The first view of a session has id 1.
int VXViewWidget::s_NextSplitViewId = 2;

VXViewWidget::VXViewWidget(QWidget* parent, Qt::WindowFlags flags)
    : VXAbstractViewWidget(parent, flags)
    , m_Ui(std::make_shared<Ui::VXViewWidget>())
{
  m_Ui->setupUi(this);
  setupView();
  setupGui();
}

VXViewWidget::VXViewWidget(const VXViewWidget& other)
    : VXAbstractViewWidget(other.parentWidget(), other.windowFlags())
    , m_Ui(std::make_shared<Ui::VXViewWidget>())
{
  m_Ui->setupUi(this);
  setupView();
}

VXViewWidget::~VXViewWidget() = default;

int VXViewWidget::nextSplitViewId()
{
  return s_NextSplitViewId;
}

void VXViewWidget::setNextSplitViewId(int splitId)
{
  s_NextSplitViewId = splitId;
}

Ui::VXViewWidget* VXViewWidget::form() const
{
  return m_Ui.get();
}

QLabel* VXViewWidget::overlayHintLabel() const
{
  return m_MoveChartOverlayHint;
}

QLabel* VXViewWidget::overlayBackgroundLabel() const
{
  return m_MoveChartOverlayBackground;
}

QGraphicsBlurEffect* VXViewWidget::renderWindowBlurEffect() const
{
  return m_BlurEffect;
}

void VXViewWidget::setupView()
{
  if (m_VisualizationWidget == nullptr)
  {
    m_VisualizationWidget = new VXVisualizationWidget(this, 2);
    connect(m_VisualizationWidget, &VXVisualizationWidget::mousePressed, this, &VXViewWidget::mousePressed);
    connect(m_VisualizationWidget, &VXVisualizationWidget::requestSplitHorizontally, this,
            [this] { Q_EMIT requestSplitHorizontally(this); });
    connect(m_VisualizationWidget, &VXVisualizationWidget::requestSplitVertically, this,
            [this] { Q_EMIT requestSplitVertically(this); });
    connect(m_VisualizationWidget, &VXVisualizationWidget::statusMessage, this,
            &VXViewWidget::updateStatusMessage);
  }
  m_VisualizationWidget->setVisible(true);
  m_Ui->verticalLayout->addWidget(m_VisualizationWidget, 1);
  if (m_VisualizationWidget->getInteractorStyle() != nullptr)
  {
    m_VisualizationWidget->getInteractorStyle()->setViewWidget(this);
  }

  const Qt::Alignment centred = Qt::AlignHCenter | Qt::AlignVCenter;
  m_MoveChartOverlayBackground = new QLabel(QString(), this);
  m_MoveChartOverlayBackground->setObjectName(QStringLiteral("m_MoveChartOverlayBackground"));
  m_MoveChartOverlayBackground->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  m_MoveChartOverlayBackground->setAlignment(centred);
  m_MoveChartOverlayBackground->setFixedSize(size());
  m_MoveChartOverlayBackground->move(0, 0);

  m_MoveChartOverlayHint = new QLabel(QStringLiteral("Split View %1").arg(m_SplitId), this);
  m_MoveChartOverlayHint->setObjectName(QStringLiteral("m_MoveChartOverlayHint"));
  m_MoveChartOverlayHint->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  m_MoveChartOverlayHint->setAlignment(centred);
  m_MoveChartOverlayHint->setWordWrap(true);
  m_MoveChartOverlayHint->setFixedSize(size());
  m_MoveChartOverlayHint->move(0, 0);

  // The render window's blur stays disabled while its radius is 0: an active effect would make
  // every frame go through an off-screen copy.
  m_BlurEffect = new QGraphicsBlurEffect(this);
  m_BlurEffect->setBlurRadius(0.0);
  m_BlurEffect->setEnabled(false);
  m_VisualizationWidget->setGraphicsEffect(m_BlurEffect);
  for (QWidget* widget :
       {static_cast<QWidget*>(m_Ui->transformTextLabel), static_cast<QWidget*>(m_Ui->statusLabel),
        static_cast<QWidget*>(m_Ui->splitVizVerticalBtn), static_cast<QWidget*>(m_Ui->splitVizHorizontalBtn),
        static_cast<QWidget*>(m_Ui->closeVizBtn)})
  {
    auto* blur = new QGraphicsBlurEffect(this);
    blur->setBlurRadius(0.0);
    widget->setGraphicsEffect(blur);
  }

  m_OpacityEffect = new QGraphicsOpacityEffect(this);
  m_OpacityEffect->setOpacity(0.75);
  m_MoveChartOverlayBackground->setGraphicsEffect(m_OpacityEffect);

  m_MoveChartOverlayBackground->hide();
  m_MoveChartOverlayHint->hide();
}

void VXViewWidget::setupGui()
{
  connectSlots();
  updateClosable();
  renderView();
  updateIcons();
}

void VXViewWidget::updateIcons()
{
  m_Ui->closeVizBtn->setThemeIconName(QStringLiteral("Close"));
  m_Ui->splitVizHorizontalBtn->setThemeIconName(QStringLiteral("Split Horizontal"));
  m_Ui->splitVizVerticalBtn->setThemeIconName(QStringLiteral("Split Vertical"));
}

void VXViewWidget::connectSlots()
{
  // A split acts on the view that has just become active, so activation comes first.
  connect(m_Ui->splitVizHorizontalBtn, &QPushButton::clicked, this, &VXViewWidget::mousePressed);
  connect(m_Ui->splitVizVerticalBtn, &QPushButton::clicked, this, &VXViewWidget::mousePressed);
  connect(m_Ui->splitVizHorizontalBtn, &QPushButton::clicked, this, &VXViewWidget::splitHorizontally);
  connect(m_Ui->splitVizVerticalBtn, &QPushButton::clicked, this, &VXViewWidget::splitVertically);
  // A split moves the buttons from under the pointer without a leave event.
  for (QPushButton* split : {m_Ui->splitVizHorizontalBtn, m_Ui->splitVizVerticalBtn})
  {
    connect(split, &QPushButton::clicked, split, [split]() { VXButtonHoverReset::resetSoon(split); });
  }
  connect(m_Ui->closeVizBtn, &QPushButton::clicked, this, &VXViewWidget::closeView);
  connect(ZRStyle::Instance(), &ZRStyle::styleSheetLoaded, this, &VXViewWidget::updateIcons);
}

void VXViewWidget::splitHorizontally()
{
  Q_EMIT requestSplitHorizontally(this);
}

void VXViewWidget::splitVertically()
{
  Q_EMIT requestSplitVertically(this);
}

void VXViewWidget::closeView()
{
  Q_EMIT requestClose(this);
}

VXAbstractViewWidget* VXViewWidget::clone()
{
  auto* view = new VXViewWidget(*this);
  if (view->m_VisualizationWidget != nullptr && m_VisualizationWidget != nullptr)
  {
    view->m_VisualizationWidget->copy(m_VisualizationWidget);
  }
  view->setupGui();
  view->setSplitId(s_NextSplitViewId++);
  return view;
}

VXAbstractViewWidget* VXViewWidget::newInstance()
{
  return new VXViewWidget(parentWidget(), windowFlags());
}

void VXViewWidget::setSplitId(int splitId)
{
  m_SplitId = splitId;
  if (m_MoveChartOverlayHint != nullptr)
  {
    m_MoveChartOverlayHint->setText(QStringLiteral("Split View %1").arg(splitId, 0, 10, QLatin1Char(' ')));
  }
}

int VXViewWidget::getSplitId() const
{
  return m_SplitId;
}

void VXViewWidget::setSplitIdOverlayHintVisibility(bool visible)
{
  for (QLabel* label : {m_MoveChartOverlayBackground, m_MoveChartOverlayHint})
  {
    label->setFixedSize(size());
    label->setVisible(visible);
    if (visible)
    {
      label->raise();
    }
  }
  m_BlurEffect->setBlurRadius(visible ? 5.0 : 0.0);
  m_BlurEffect->setEnabled(visible);
}

void VXViewWidget::resizeEvent(QResizeEvent* event)
{
  for (QLabel* label : {m_MoveChartOverlayBackground, m_MoveChartOverlayHint})
  {
    if (label != nullptr)
    {
      label->setFixedSize(size());
    }
  }
  QFrame::resizeEvent(event);
}

void VXViewWidget::updateClosable()
{
  m_Ui->closeVizBtn->setEnabled(m_Closable);
  m_Ui->closeVizBtn->setToolTip(m_Closable ? QStringLiteral("Close this view.")
                                           : QStringLiteral("Cannot close the last view."));
}

void VXViewWidget::updateStatusMessage(const QString& status)
{
  m_Ui->statusLabel->setText(status);
  m_Ui->statusLabel->setToolTip(QStringLiteral("<html><head/><body><p>%1</p></body></html>").arg(status));
}

void VXViewWidget::saveState(nlohmann::json& output)
{
  output["split_view_index"] = m_SplitId;
  VXAbstractViewWidget::saveState(output);
}

void VXViewWidget::loadState(const nlohmann::json& input)
{
  if (input.is_object() && input.contains("split_view_index"))
  {
    setSplitId(input["split_view_index"].get<int>()); // numbers and booleans; others raise
  }
  else
  {
    setSplitId(0);
  }
  VXAbstractViewWidget::loadState(input);
}
