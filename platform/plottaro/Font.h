#pragma once

#include "platform/plottaro/PlottaroExport.h"

#include <QFont>

#include <string>

namespace plottaro
{
/** @brief A font in points; fonts from files are registered once with the application. */
class PLOTTARO_EXPORT Font
{
public:
  Font() = default;
  explicit Font(const QFont& font)
      : m_Font(font)
  {
  }

  static Font defaultFont(double size);
  /** @brief The font of a .ttf/.otf file; when the file cannot be loaded, the family from the system
   * (or the default font when the system has none of that name). */
  static Font fromFile(const std::string& path, const std::string& family, double size);

  void setBold(bool bold) { m_Font.setBold(bold); }
  void setItalic(bool italic) { m_Font.setItalic(italic); }
  bool bold() const { return m_Font.bold(); }
  bool italic() const { return m_Font.italic(); }
  double size() const { return m_Font.pointSizeF(); }
  std::string family() const { return m_Font.family().toStdString(); }
  const QFont& toQFont() const { return m_Font; }

private:
  QFont m_Font;
};
} // namespace plottaro
