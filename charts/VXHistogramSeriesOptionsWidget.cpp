#include "charts/VXHistogramSeriesOptionsWidget.h"

#include "ui_VXHistogramSeriesOptions.h"

#include <nlohmann/json.hpp>

#include <QDoubleValidator>
#include <QSignalBlocker>

VXHistogramSeriesOptionsWidget::VXHistogramSeriesOptionsWidget(const QString& seriesName, QWidget* parent)
    : VXSeriesOptionsWidget(Kind::Histogram, seriesName, parent)
    , m_Ui(std::make_unique<Ui::VXHistogramSeriesOptions>())
{
  auto* controls = new QWidget(extraArea());
  m_Ui->setupUi(controls);
  extraArea()->layout()->addWidget(controls);
  m_Ui->minBinRangeEdit->setValidator(new QDoubleValidator(m_Ui->minBinRangeEdit));
  m_Ui->maxBinRangeEdit->setValidator(new QDoubleValidator(m_Ui->maxBinRangeEdit));
  setCustomRanges(0.0, 1.0);
  setUseCustomBinRanges(false);
  connect(m_Ui->binCountSpin, QOverload<int>::of(&QSpinBox::valueChanged), this,
          [this](int count)
          {
            Q_EMIT binCountChanged(getSeriesName(), count);
            Q_EMIT inputsChanged();
          });
  connect(m_Ui->binValueCombo, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
          [this]
          {
            Q_EMIT binRangeValueChanged(getSeriesName());
            Q_EMIT inputsChanged();
          });
  connect(m_Ui->useCustomRangesCheck, &QCheckBox::toggled, this,
          [this](bool use)
          {
            m_Ui->minBinRangeEdit->setEnabled(use);
            m_Ui->maxBinRangeEdit->setEnabled(use);
            Q_EMIT useCustomRangesChanged(getSeriesName(), use);
            Q_EMIT inputsChanged();
          });
  connect(m_Ui->minBinRangeEdit, &QLineEdit::editingFinished, this,
          &VXHistogramSeriesOptionsWidget::onMinBinRangeEdited);
  connect(m_Ui->maxBinRangeEdit, &QLineEdit::editingFinished, this,
          &VXHistogramSeriesOptionsWidget::onMaxBinRangeEdited);
}

VXHistogramSeriesOptionsWidget::~VXHistogramSeriesOptionsWidget() = default;

bool VXHistogramSeriesOptionsWidget::useCustomBinRanges() const
{
  return m_Ui->useCustomRangesCheck->isChecked();
}

void VXHistogramSeriesOptionsWidget::setUseCustomBinRanges(bool use)
{
  const QSignalBlocker blocker(m_Ui->useCustomRangesCheck);
  m_Ui->useCustomRangesCheck->setChecked(use);
  m_Ui->minBinRangeEdit->setEnabled(use);
  m_Ui->maxBinRangeEdit->setEnabled(use);
}

void VXHistogramSeriesOptionsWidget::setCustomRanges(double min, double max)
{
  const QSignalBlocker minBlocker(m_Ui->minBinRangeEdit);
  const QSignalBlocker maxBlocker(m_Ui->maxBinRangeEdit);
  m_Ui->minBinRangeEdit->setText(QString::number(min, 'g', 17));
  m_Ui->maxBinRangeEdit->setText(QString::number(max, 'g', 17));
}

std::pair<double, double> VXHistogramSeriesOptionsWidget::getCustomRanges() const
{
  return {m_Ui->minBinRangeEdit->text().toDouble(), m_Ui->maxBinRangeEdit->text().toDouble()};
}

int VXHistogramSeriesOptionsWidget::getBinCount() const
{
  return m_Ui->binCountSpin->value();
}

void VXHistogramSeriesOptionsWidget::setBinCount(int count)
{
  m_Ui->binCountSpin->setValue(count);
}

int VXHistogramSeriesOptionsWidget::getBinRangeValue() const
{
  return m_Ui->binValueCombo->currentIndex() == 1 ? BinMaximum : BinMinimum;
}

void VXHistogramSeriesOptionsWidget::setBinRangeValue(int value)
{
  m_Ui->binValueCombo->setCurrentIndex(value == BinMaximum ? 1 : 0);
}

void VXHistogramSeriesOptionsWidget::onMinBinRangeEdited()
{
  const auto [min, max] = getCustomRanges();
  onCustomBinRangesChanged(min, max);
}

void VXHistogramSeriesOptionsWidget::onMaxBinRangeEdited()
{
  const auto [min, max] = getCustomRanges();
  onCustomBinRangesChanged(min, max);
}

void VXHistogramSeriesOptionsWidget::onCustomBinRangesChanged(double min, double max)
{
  if (useCustomBinRanges())
  {
    Q_EMIT customBinRangesChanged(getSeriesName(), min, max);
    Q_EMIT inputsChanged();
  }
}

void VXHistogramSeriesOptionsWidget::resetProperties()
{
  VXSeriesOptionsWidget::resetProperties();
  setBinCount(k_DefaultBinCount);
  setBinRangeValue(BinMinimum);
  setUseCustomBinRanges(false);
}

void VXHistogramSeriesOptionsWidget::writeStyle(nlohmann::json& json) const
{
  VXSeriesOptionsWidget::writeStyle(json);
  json["bin_count"] = getBinCount();
  json["bin_value"] = getBinRangeValue();
  json["use_custom_ranges"] = useCustomBinRanges();
  const auto [min, max] = getCustomRanges();
  json["custom_bin_range_min"] = min;
  json["custom_bin_range_max"] = max;
}

void VXHistogramSeriesOptionsWidget::readStyle(const nlohmann::json& json)
{
  VXSeriesOptionsWidget::readStyle(json);
  const QSignalBlocker countBlocker(m_Ui->binCountSpin);
  const QSignalBlocker valueBlocker(m_Ui->binValueCombo);
  if (json.contains("bin_count"))
  {
    setBinCount(json.at("bin_count").get<int>());
  }
  if (json.contains("bin_value"))
  {
    setBinRangeValue(json.at("bin_value").get<int>());
  }
  if (json.contains("use_custom_ranges"))
  {
    setUseCustomBinRanges(json.at("use_custom_ranges").get<bool>());
  }
  auto [min, max] = getCustomRanges();
  if (json.contains("custom_bin_range_min"))
  {
    min = json.at("custom_bin_range_min").get<double>();
  }
  if (json.contains("custom_bin_range_max"))
  {
    max = json.at("custom_bin_range_max").get<double>();
  }
  setCustomRanges(min, max);
}
