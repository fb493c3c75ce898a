#include "charts/VXChartTypeSelector.h"

#include "platform/ZRStyle.h"

#include <nlohmann/json.hpp>

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <array>

VXChartTypeSelector::VXChartTypeSelector(QWidget* parent)
    : QFrame(parent)
{
  auto* layout = new QVBoxLayout(this);
  layout->addStretch();
  auto* title = new QLabel(QStringLiteral("Create Chart View"), this);
  title->setAlignment(Qt::AlignCenter);
  layout->addWidget(title);
  const std::array<std::pair<ChartType, QString>, 4> buttons = {
      {{ChartType::Scatter, QStringLiteral("Scatter Chart")},
       {ChartType::Line, QStringLiteral("Line Chart")},
       {ChartType::Bar, QStringLiteral("Bar Chart")},
       {ChartType::Histogram, QStringLiteral("Histogram")}}};
  for (const auto& [type, text] : buttons)
  {
    auto* button = new QPushButton(ZRStyle::generateThemeIconFromName(IconName(type)), text, this);
    button->setObjectName(text);
    layout->addWidget(button, 0, Qt::AlignHCenter);
    const ChartType chosen = type;
    connect(button, &QPushButton::clicked, this,
            [this, chosen]
            {
              m_Type = chosen;
              m_Chosen = true;
              Q_EMIT chartTypeSelected(chosen);
            });
  }
  layout->addStretch();
}

VXChartTypeSelector::~VXChartTypeSelector() = default;

QString VXChartTypeSelector::IconName(ChartType type)
{
  switch (type)
  {
  case ChartType::Scatter:
    return QStringLiteral("ScatterChart");
  case ChartType::Line:
    return QStringLiteral("LineChart");
  case ChartType::Bar:
    return QStringLiteral("BarChart");
  case ChartType::Histogram:
    return QStringLiteral("HistogramChart");
  }
  return {};
}

void VXChartTypeSelector::saveState(nlohmann::json& json) const
{
  json["chart_type"] = static_cast<int>(m_Type);
  json["chart_type_visible"] = !m_Chosen;
}

void VXChartTypeSelector::loadState(const nlohmann::json& json)
{
  if (json.contains("chart_type"))
  {
    const int type = json.at("chart_type").get<int>();
    if (type < 0 || type > 3)
    {
      Q_EMIT printOutput(
          QStringLiteral("Unknown chart type %1 in the charting state; a scatter chart is made instead.")
              .arg(type));
    }
    m_Type = static_cast<ChartType>(type < 0 || type > 3 ? 0 : type);
  }
  if (json.contains("chart_type_visible"))
  {
    m_Chosen = !json.at("chart_type_visible").get<bool>();
  }
}
