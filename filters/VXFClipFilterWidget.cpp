#include "filters/VXFClipFilterWidget.h"

#include "filters/VXBoxWidget.h"
#include "filters/VXPlaneWidget.h"

#include "ui_VXFClipFilterWidget.h"

#include <QSignalBlocker>

VXFClipFilterWidget::VXFClipFilterWidget(VXFClip* filter, QWidget* parent)
    : QWidget(parent)
    , m_Ui(std::make_unique<Ui::VXFClipFilterWidget>())
    , m_Filter(filter)
{
  m_Ui->setupUi(this);
  m_Ui->m_ClipTypeCombo->addItems({QStringLiteral("Plane"), QStringLiteral("Box")});
  m_PlaneWidget = new VXPlaneWidget(filter->plane(), this);
  m_BoxWidget = new VXBoxWidget(filter->box(), this);
  m_PlaneWidget->hide();
  m_BoxWidget->hide();
  {
    const QSignalBlocker blockCombo(m_Ui->m_ClipTypeCombo);
    const QSignalBlocker blockInvert(m_Ui->m_InvertCheckBox);
    const QSignalBlocker blockShow(m_Ui->m_ShowToolCheckBox);
    m_Ui->m_ClipTypeCombo->setCurrentIndex(static_cast<int>(filter->clipType()));
    m_Ui->m_InvertCheckBox->setChecked(filter->inverted());
    m_Ui->m_ShowToolCheckBox->setChecked(filter->showClipTool());
  }
  updateClipType(filter->clipType());

  connect(m_Ui->m_ClipTypeCombo, qOverload<int>(&QComboBox::currentIndexChanged), filter,
          [filter](int index) { filter->setClipType(static_cast<VXFClip::ClipType>(index)); });
  connect(m_Ui->m_InvertCheckBox, &QCheckBox::toggled, filter, &VXFClip::setInverted);
  connect(m_Ui->m_ShowToolCheckBox, &QCheckBox::toggled, filter, &VXFClip::setShowClipTool);
  connect(m_Ui->m_ApplyButton, &QPushButton::clicked, filter, &VXFClip::applyFilter);
  connect(filter, &VXFClip::clipTypeChanged, this, &VXFClipFilterWidget::updateClipType);
  connect(filter, &VXFClip::showClipToolChanged, this, &VXFClipFilterWidget::updateShowTool);
  connect(filter, &VXFClip::invertedChanged, m_Ui->m_InvertCheckBox,
          [this](bool inverted)
          {
            const QSignalBlocker block(m_Ui->m_InvertCheckBox);
            m_Ui->m_InvertCheckBox->setChecked(inverted);
          });
}

VXFClipFilterWidget::~VXFClipFilterWidget() = default;

QVBoxLayout* VXFClipFilterWidget::representationTypeLayout() const
{
  return m_Ui->m_RepTypeLayout;
}

void VXFClipFilterWidget::updateClipType(VXFClip::ClipType type)
{
  QWidget* shown = type == VXFClip::Box ? static_cast<QWidget*>(m_BoxWidget) : m_PlaneWidget;
  QWidget* hidden = type == VXFClip::Box ? static_cast<QWidget*>(m_PlaneWidget) : m_BoxWidget;
  m_Ui->m_ToolLayout->removeWidget(hidden);
  hidden->hide();
  m_Ui->m_ToolLayout->addWidget(shown);
  shown->show();
  m_Ui->m_ShowToolCheckBox->setText(type == VXFClip::Box ? QStringLiteral("Show Box")
                                                         : QStringLiteral("Show Plane"));
  {
    const QSignalBlocker block(m_Ui->m_ClipTypeCombo);
    m_Ui->m_ClipTypeCombo->setCurrentIndex(static_cast<int>(type));
  }
  updateShowTool(m_Filter ? m_Filter->showClipTool() : true);
}

void VXFClipFilterWidget::updateShowTool(bool show)
{
  {
    const QSignalBlocker block(m_Ui->m_ShowToolCheckBox);
    m_Ui->m_ShowToolCheckBox->setChecked(show);
  }
  m_PlaneWidget->setEnabled(show);
  m_BoxWidget->setEnabled(show);
}
