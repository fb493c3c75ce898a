#include "data_views/ZRVtkModuleUtils.h"

#include <QVBoxLayout>

namespace ZRVtkModule::utils
{
namespace
{
const QString k_LayoutName = QStringLiteral("vxInfoWidgetSettingsWidgetLayout");
constexpr int k_Margin = 2;
} // namespace

QPointer<QWidget> CreateSettingsWidget(QPointer<QWidget> titleFrame, QPointer<QScrollArea> scrollArea)
{
  auto* widget = new QWidget();
  widget->setObjectName(QStringLiteral("vxInfoWidgetSettingsWidget"));
  widget->setMinimumHeight(300);
  auto* layout = new QVBoxLayout(widget);
  layout->setObjectName(k_LayoutName);
  layout->setContentsMargins(k_Margin, k_Margin, k_Margin, k_Margin);

  if (titleFrame)
  {
    titleFrame->setParent(nullptr);
    layout->addWidget(titleFrame);
  }
  if (scrollArea)
  {
    scrollArea->setParent(nullptr);
    scrollArea->setWidgetResizable(true);
    auto* content = new QWidget();
    content->setObjectName(QStringLiteral("contentSettingsWidget"));
    auto* contentLayout = new QVBoxLayout(content);
    contentLayout->setObjectName(k_LayoutName);
    contentLayout->setContentsMargins(k_Margin, k_Margin, k_Margin, k_Margin);
    scrollArea->setWidget(content);
    layout->addWidget(scrollArea, 1);
  }
  return widget;
}
} // namespace ZRVtkModule::utils
