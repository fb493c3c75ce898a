#include "platform/plottaro/Font.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QHash>

namespace plottaro
{
Font Font::defaultFont(double size)
{
  QFont font = QGuiApplication::font();
  font.setPointSizeF(size > 0.0 ? size : 12.0);
  return Font(font);
}

Font Font::fromFile(const std::string& path, const std::string& family, double size)
{
  // A file is registered with the font database once; later calls reuse its family name.
  static QHash<QString, QString> s_FamilyOfFile;
  const QString filePath = QString::fromStdString(path);
  QString loadedFamily = s_FamilyOfFile.value(filePath);
  if (loadedFamily.isEmpty() && !filePath.isEmpty())
  {
    const int id = QFontDatabase::addApplicationFont(filePath);
    const QStringList families = id >= 0 ? QFontDatabase::applicationFontFamilies(id) : QStringList();
    if (!families.isEmpty())
    {
      loadedFamily = families.front();
      s_FamilyOfFile.insert(filePath, loadedFamily);
    }
  }
  Font font = defaultFont(size);
  font.m_Font.setFamily(loadedFamily.isEmpty() ? QString::fromStdString(family) : loadedFamily);
  return font;
}
} // namespace plottaro
