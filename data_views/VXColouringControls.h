#pragma once

#include <QPointer>

#include <functional>

class QColor;
class QHBoxLayout;
class QLabel;
class QVBoxLayout;
class QWidget;
class QObject;
class VXColouringSettings;
class ZRCheckBox;
class ZRColorButton;
class ZRComboBox;
class ZRIconPushButton;

/**
 * The panel rows that set a view's colouring by data: presets and invert, the NaN colour, custom
 * and data range, categories and the scalar mapping. The points view and the image slice view each
 * hold one; each row calls back into its view, and `showSettings` shows a view's values without
 * signals.
 */
class VXColouringControls
{
public:
  /** @brief A row added to `layout` with the panel's spacing and the given side margin. */
  static QHBoxLayout* addRow(QVBoxLayout* layout, int sideMargin);

  // Each control calls back while `receiver` lives; `parent` owns the widgets.
  void addPresetRow(QHBoxLayout* row, QWidget* parent, QObject* receiver,
                    const std::function<void()>& showPresets, const std::function<void(bool)>& invert);
  void addNanColorRow(QHBoxLayout* row, QWidget* parent, QObject* receiver, const QColor& color,
                      const std::function<void(const QColor&)>& setNanColor);
  void addRangeRow(QHBoxLayout* row, QWidget* parent, QObject* receiver,
                   const std::function<void()>& showCustomRange, const std::function<void()>& useDataRange);
  void addCategoriesCheckBox(QVBoxLayout* layout, QWidget* parent, QObject* receiver,
                             const std::function<void(bool)>& setCategories);
  void addMapScalarsRow(QHBoxLayout* row, QWidget* parent, QObject* receiver, int mapping,
                        const std::function<void(int)>& setMapping);

  /** @brief The NaN colour, inversion, categories and mapping of `settings`, set without signals. */
  void showSettings(const VXColouringSettings& settings) const;

  QPointer<ZRIconPushButton> m_PresetButton;
  QPointer<ZRIconPushButton> m_InvertButton;
  QPointer<QLabel> m_NanColorLabel;
  QPointer<ZRColorButton> m_NanColorButton;
  QPointer<ZRIconPushButton> m_CustomRangeButton;
  QPointer<ZRIconPushButton> m_RescaleButton;
  QPointer<ZRCheckBox> m_CategoriesCheckBox;
  QPointer<ZRComboBox> m_MapScalarsComboBox;
};
