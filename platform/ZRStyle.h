#pragma once

#include "platform/ZRPlatformExport.h"

#include <QColor>
#include <QFont>
#include <QIcon>
#include <QMap>
#include <QObject>
#include <QString>

class QWidget;

/**
 * @brief The look of the application: a theme (colours, font, icon set) read from a JSON file,
 * the style sheet built from it, and the themed icons, sizes and colours that widgets ask for.
 *
 * Themes "light" and "dark" are built in (":/ZRStyle/themes/<name>.json"). Icons are looked up by
 * name in the icon set of the current theme; widgets that show themed icons listen to
 * styleSheetLoaded() and ask again.
 */
class ZR_PLATFORM_EXPORT ZRStyle : public QObject
{
  Q_OBJECT

public:
  static inline const QString k_LightTheme = QStringLiteral("light");
  static inline const QString k_DarkTheme = QStringLiteral("dark");

  static ZRStyle* Instance();

  /** @brief Loads a built-in theme by name; false for an unknown name. */
  bool setTheme(const QString& themeName);
  /**
   * @brief Loads a theme file, applies its style sheet to the application (when one exists) and
   * emits styleSheetLoaded(). A file that cannot be read or parsed leaves the current theme.
   */
  bool loadStyleSheet(const QString& jsonFilePath);
  QString currentThemeName() const;
  QString currentThemeFile() const;
  QString styleSheet() const;

  /** @brief The icon of that name in the current theme; a null icon for an unknown name. */
  static QIcon generateThemeIconFromName(const QString& name);
  /** @brief Like generateThemeIconFromName, with the "<name>-off" icon, if any, as the unchecked state. */
  static QIcon generateCheckableThemeIconFromName(const QString& name);
  /**
   * @brief The icon of that name from a given icon set (k_LightTheme has dark glyphs, k_DarkTheme
   * light ones), for controls that sit on a background of their own, such as a render window.
   */
  static QIcon generateThemeIconFromName(const QString& name, const QString& iconTheme);
  /** @brief Resource path of a themed icon, empty when the theme has none of that name. */
  static QString themeIconPath(const QString& name);
  static QString themeIconPath(const QString& name, const QString& iconTheme);

  /** @brief Pixel size of a control for a size level (0 is the smallest). */
  static int getItemSize(int level);
  /** @brief Point size of text for a size level (0 is the smallest). */
  static int getFontSize(int level);
  static QString getFontName();
  static QFont getDefaultFont();
  /** @brief Width in pixels of the text in the default font. */
  static int getStringWidth(const QString& text);

  /** @brief A colour of the current theme by its name in the theme file; invalid if absent. */
  static QColor getColor(const QString& name);
  static QColor getMediumBlue();
  static QColor getLightBlue();
  static QColor getDarkRed();
  static QColor getTextWhite();
  static QColor getTextBlack();
  static QColor getTextGray();
  static QColor getDefaultTextColor();
  /** @brief Breadcrumb colours of the settings panels ("BreadcrumbTextVisible", ...). */
  static QMap<QString, QColor> getVisSettingsWidgetColors();

  /** @brief Marks an input whose edit is not applied yet (edited true) or clears the mark. */
  static void ChangeBorderStyle(QWidget* widget, bool edited);

Q_SIGNALS:
  void styleSheetLoaded(const QString& jsonFilePath);

private:
  ZRStyle();
  QString buildStyleSheet() const;

  QString m_ThemeName;
  QString m_ThemeFile;
  QString m_IconTheme;
  QString m_FontName;
  QMap<QString, QColor> m_Colors;
  QMap<QString, QColor> m_VisSettingsColors;
  QString m_StyleSheet;
};
