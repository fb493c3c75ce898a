#include "platform/ZRStyle.h"

#include <QApplication>
#include <QFile>
#include <QFontMetrics>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStyle>
#include <QWidget>

namespace
{
const QString k_EditedProperty = QStringLiteral("ZREdited");

QMap<QString, QColor> readColors(const QJsonObject& object)
{
  QMap<QString, QColor> colors;
  for (auto it = object.begin(); it != object.end(); ++it)
  {
    const QColor color(it.value().toString());
    if (color.isValid())
    {
      colors.insert(it.key(), color);
    }
  }
  return colors;
}
} // namespace

ZRStyle* ZRStyle::Instance()
{
  static ZRStyle* s_Instance = nullptr;
  if (s_Instance == nullptr)
  {
    s_Instance = new ZRStyle();
  }
  return s_Instance;
}

ZRStyle::ZRStyle()
{
  // Colours and icons are there from the start; the style sheet is applied only by an explicit load.
  const QString path = QStringLiteral(":/ZRStyle/themes/%1.json").arg(k_LightTheme);
  QFile file(path);
  if (file.open(QIODevice::ReadOnly))
  {
    const QJsonObject root = QJsonDocument::fromJson(file.readAll()).object();
    m_ThemeName = root.value(QStringLiteral("name")).toString();
    m_ThemeFile = path;
    m_IconTheme = root.value(QStringLiteral("icon_theme")).toString();
    m_FontName = root.value(QStringLiteral("font_family")).toString();
    m_Colors = readColors(root.value(QStringLiteral("colors")).toObject());
    m_VisSettingsColors = readColors(root.value(QStringLiteral("vis_settings_widget_colors")).toObject());
    m_StyleSheet = buildStyleSheet();
  }
}

bool ZRStyle::setTheme(const QString& themeName)
{
  const QString path = QStringLiteral(":/ZRStyle/themes/%1.json").arg(themeName);
  if (!QFile::exists(path))
  {
    return false;
  }
  return loadStyleSheet(path);
}

bool ZRStyle::loadStyleSheet(const QString& jsonFilePath)
{
  QFile file(jsonFilePath);
  if (!file.open(QIODevice::ReadOnly))
  {
    return false;
  }
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
  if (error.error != QJsonParseError::NoError || !document.isObject())
  {
    return false;
  }
  const QJsonObject root = document.object();
  const QMap<QString, QColor> colors = readColors(root.value(QStringLiteral("colors")).toObject());
  if (colors.isEmpty())
  {
    return false;
  }
  m_ThemeName = root.value(QStringLiteral("name")).toString();
  m_ThemeFile = jsonFilePath;
  m_IconTheme = root.value(QStringLiteral("icon_theme")).toString(k_LightTheme);
  m_FontName = root.value(QStringLiteral("font_family")).toString(QApplication::font().family());
  m_Colors = colors;
  m_VisSettingsColors = readColors(root.value(QStringLiteral("vis_settings_widget_colors")).toObject());
  m_StyleSheet = buildStyleSheet();
  if (auto* app = qobject_cast<QApplication*>(QCoreApplication::instance()))
  {
    app->setStyleSheet(m_StyleSheet);
  }
  Q_EMIT styleSheetLoaded(jsonFilePath);
  return true;
}

QString ZRStyle::currentThemeName() const
{
  return m_ThemeName;
}

QString ZRStyle::currentThemeFile() const
{
  return m_ThemeFile;
}

QString ZRStyle::styleSheet() const
{
  return m_StyleSheet;
}

QString ZRStyle::buildStyleSheet() const
{
  auto c = [this](const char* name) { return m_Colors.value(QString::fromLatin1(name)).name(); };
  QString sheet;
  sheet += QStringLiteral("QWidget { color: %1; }\n").arg(c("Text"));
  sheet += QStringLiteral("QMainWindow, QDialog, QFrame, QScrollArea { background-color: %1; }\n")
               .arg(c("Window"));
  sheet +=
      QStringLiteral("QLineEdit, QComboBox, QSpinBox, QDoubleSpinBox, QPlainTextEdit, QTextEdit, QTreeView, "
                     "QTableView, QListView { background-color: %1; border: 1px solid %2; }\n")
          .arg(c("Base"), c("Border"));
  sheet += QStringLiteral("QLineEdit[%1=\"true\"] { border: 2px solid %2; }\n")
               .arg(k_EditedProperty, c("BorderEdited"));
  sheet += QStringLiteral("QPushButton { background-color: %1; border: 1px solid %2; padding: 2px 6px; }\n"
                          "QPushButton:hover { background-color: %3; }\n"
                          "QPushButton:checked { border: 1px solid %4; }\n")
               .arg(c("Button"), c("Border"), c("ButtonHover"), c("Highlight"));
  sheet += QStringLiteral("ZRIconPushButton { background-color: transparent; border: none; padding: 1px; }\n"
                          "ZRIconPushButton:hover { background-color: %1; }\n"
                          "ZRIconPushButton:disabled { background-color: transparent; }\n")
               .arg(c("ButtonHover"));
  sheet += QStringLiteral("ZRHeaderLabel { font-weight: bold; }\n");
  sheet += QStringLiteral("ZRSectionHeader { background-color: %1; }\n").arg(c("HeaderBackground"));
  sheet += QStringLiteral("QFrame[Active=\"true\"] { border: 2px solid %1; }\n").arg(c("ActiveViewBorder"));
  sheet += QStringLiteral("QFrame[Active=\"false\"] { border: 2px solid transparent; }\n");
  return sheet;
}

QString ZRStyle::themeIconPath(const QString& name)
{
  return themeIconPath(name, Instance()->m_IconTheme);
}

QString ZRStyle::themeIconPath(const QString& name, const QString& iconTheme)
{
  const QString path = QStringLiteral(":/ZRStyle/icons/%1/%2.svg").arg(iconTheme, name);
  return QFile::exists(path) ? path : QString();
}

QIcon ZRStyle::generateThemeIconFromName(const QString& name, const QString& iconTheme)
{
  const QString path = themeIconPath(name, iconTheme);
  return path.isEmpty() ? QIcon() : QIcon(path);
}

QIcon ZRStyle::generateThemeIconFromName(const QString& name)
{
  const QString path = themeIconPath(name);
  return path.isEmpty() ? QIcon() : QIcon(path);
}

QIcon ZRStyle::generateCheckableThemeIconFromName(const QString& name)
{
  const QString onPath = themeIconPath(name);
  if (onPath.isEmpty())
  {
    return QIcon();
  }
  const QString offPath = themeIconPath(name + QStringLiteral("-off"));
  QIcon icon;
  icon.addFile(onPath, QSize(), QIcon::Normal, QIcon::On);
  icon.addFile(offPath.isEmpty() ? onPath : offPath, QSize(), QIcon::Normal, QIcon::Off);
  return icon;
}

int ZRStyle::getItemSize(int level)
{
  return 6 + 2 * qBound(0, level, 20);
}

int ZRStyle::getFontSize(int level)
{
  return 8 + qBound(0, level, 24);
}

QString ZRStyle::getFontName()
{
  const QString name = Instance()->m_FontName;
  return name.isEmpty() ? QApplication::font().family() : name;
}

QFont ZRStyle::getDefaultFont()
{
  QFont font(getFontName());
  font.setPointSize(getFontSize(2));
  return font;
}

int ZRStyle::getStringWidth(const QString& text)
{
  return QFontMetrics(getDefaultFont()).horizontalAdvance(text);
}

QColor ZRStyle::getColor(const QString& name)
{
  return Instance()->m_Colors.value(name);
}

QColor ZRStyle::getMediumBlue()
{
  return getColor(QStringLiteral("MediumBlue"));
}

QColor ZRStyle::getLightBlue()
{
  return getColor(QStringLiteral("LightBlue"));
}

QColor ZRStyle::getDarkRed()
{
  return getColor(QStringLiteral("DarkRed"));
}

QColor ZRStyle::getTextWhite()
{
  return getColor(QStringLiteral("TextWhite"));
}

QColor ZRStyle::getTextBlack()
{
  return getColor(QStringLiteral("TextBlack"));
}

QColor ZRStyle::getTextGray()
{
  return getColor(QStringLiteral("TextGray"));
}

QColor ZRStyle::getDefaultTextColor()
{
  return getColor(QStringLiteral("Text"));
}

QMap<QString, QColor> ZRStyle::getVisSettingsWidgetColors()
{
  return Instance()->m_VisSettingsColors;
}

void ZRStyle::ChangeBorderStyle(QWidget* widget, bool edited)
{
  if (widget == nullptr || widget->property(k_EditedProperty.toLatin1().constData()).toBool() == edited)
  {
    return;
  }
  widget->setProperty(k_EditedProperty.toLatin1().constData(), edited);
  // The selector on the property only takes effect after a re-polish.
  widget->style()->unpolish(widget);
  widget->style()->polish(widget);
  widget->update();
}
