#include "platform/plottaro/QtSvgRenderSurface.h"

#include <QSaveFile>

namespace plottaro
{
QtSvgRenderSurface::~QtSvgRenderSurface()
{
  if (m_Painter.isActive())
  {
    m_Painter.end();
  }
}

bool QtSvgRenderSurface::create(int width, int height)
{
  m_Buffer.setData(QByteArray());
  m_Buffer.open(QIODevice::WriteOnly);
  m_Generator.setOutputDevice(&m_Buffer);
  m_Generator.setSize(QSize(width, height));
  m_Generator.setViewBox(QRect(0, 0, width, height));
  m_Generator.setTitle(QStringLiteral("Chart"));
  return m_Painter.begin(&m_Generator);
}

bool QtSvgRenderSurface::saveToFile(const std::string& path)
{
  if (m_Painter.isActive())
  {
    m_Painter.end();
  }
  QSaveFile file(QString::fromStdString(path));
  if (!file.open(QIODevice::WriteOnly))
  {
    return false;
  }
  file.write(m_Buffer.data());
  return file.commit();
}
} // namespace plottaro
