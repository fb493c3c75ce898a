#pragma once

#include "platform/plottaro/Color.h"

#include <nlohmann/json_fwd.hpp>

#include <QColor>
#include <QWidget>

#include <array>
#include <memory>

class ZRIconPushButton;
namespace Ui
{
class VXSeriesOptionsWidget;
}

/**
 * @brief The panel that styles one chart series: its name, whether it shows, its colour. Subclasses add the
 * controls of their kind of series below these.
 */
class VXSeriesOptionsWidget : public QWidget
{
  Q_OBJECT

public:
  /** @brief The kinds of series, each with its own stored defaults. */
  enum class Kind
  {
    Point,
    Line,
    Bar,
    Histogram
  };

  VXSeriesOptionsWidget(Kind kind, const QString& seriesName, QWidget* parent = nullptr);
  ~VXSeriesOptionsWidget() override;

  Kind kind() const { return m_Kind; }
  QColor getColor() const;
  void setColor(const QColor& color);
  std::array<float, 3> getColorArray() const;
  QString getSeriesName() const { return m_SeriesName; }
  void setSeriesName(const QString& name);
  bool showInChart() const;
  void setShowInChart(bool show);
  void initializeTitleWithVisibilityBtn(ZRIconPushButton* button);

  virtual void saveState(nlohmann::json& json) const;
  virtual void loadState(const nlohmann::json& json);
  virtual void resetProperties();
  void readSettings();
  void writeSettings() const;
  void saveDefaultSettings() const { writeSettings(); }
  /** @brief Asks, then stores the current values as this kind's defaults. */
  void askToSaveDefaultSettings();
  /** @brief Asks, then forgets this kind's stored defaults and returns to the built-in ones. */
  void askToResetDefaultSettings();
  /** @brief Keeps this series' style for pasteSettings() on another series of the same kind. */
  void copySettings() const;
  /** @brief The style last copied from a series of this kind; false when there is none. */
  bool pasteSettings();

public Q_SLOTS:
  void onSeriesNameChanged();
  void onVisibilityChanged(bool visible);

Q_SIGNALS:
  void seriesNameChanged(const QString& oldName, const QString& newName);
  void visibilityButtonClicked(bool visible);
  void colorChanged(const QString& seriesName, const plottaro::Color& color);

protected:
  /** @brief Where subclasses put their own controls. */
  QWidget* extraArea() const;
  /** @brief The style keys only (no name): what defaults and copies carry. */
  virtual void writeStyle(nlohmann::json& json) const;
  virtual void readStyle(const nlohmann::json& json);
  QString settingsGroup() const;

private:
  std::unique_ptr<Ui::VXSeriesOptionsWidget> m_Ui;
  Kind m_Kind;
  QString m_SeriesName;
};
