#include "platform/ZRSectionHeader.h"

#include "platform/ZRHeaderLabel.h"
#include "platform/ZRIconPushButton.h"

#include <QHBoxLayout>

ZRSectionHeader::ZRSectionHeader(const QString& title, QWidget* parent)
    : QWidget(parent)
    , m_ShowHideButton(new ZRIconPushButton(this))
    , m_Label(new ZRHeaderLabel(title, this))
{
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(2, 2, 2, 2);
  layout->setSpacing(4);
  m_ShowHideButton->setObjectName(QStringLiteral("showHideButton"));
  m_ShowHideButton->setCheckable(true);
  m_ShowHideButton->setChecked(true);
  m_ShowHideButton->setThemeIconName(QStringLiteral("ParameterSeparator"), true);
  layout->addWidget(m_ShowHideButton);
  layout->addWidget(m_Label, 1);
  setAttribute(Qt::WA_StyledBackground, true);
  connect(m_ShowHideButton, &QPushButton::clicked, this, &ZRSectionHeader::showHideButtonClicked);
}

ZRSectionHeader::~ZRSectionHeader() = default;

QString ZRSectionHeader::text() const
{
  return m_Label->text();
}

void ZRSectionHeader::setText(const QString& title)
{
  m_Label->setText(title);
}

bool ZRSectionHeader::isExpanded() const
{
  return m_ShowHideButton->isChecked();
}

void ZRSectionHeader::setExpanded(bool expanded)
{
  m_ShowHideButton->setChecked(expanded);
}

ZRIconPushButton* ZRSectionHeader::showHideButton() const
{
  return m_ShowHideButton;
}
