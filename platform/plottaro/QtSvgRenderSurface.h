#pragma once

#include "platform/plottaro/PlottaroExport.h"

#include <QBuffer>
#include <QPainter>
#include <QSvgGenerator>

#include <string>

namespace plottaro
{
/** @brief An SVG document painted through a QPainter, then written to a file. */
class PLOTTARO_EXPORT QtSvgRenderSurface
{
public:
  QtSvgRenderSurface() = default;
  ~QtSvgRenderSurface();
  QtSvgRenderSurface(const QtSvgRenderSurface&) = delete;
  QtSvgRenderSurface& operator=(const QtSvgRenderSurface&) = delete;

  /** @brief Starts a document of width x height pixels; false when painting cannot begin. */
  bool create(int width, int height);
  QPainter& painter() { return m_Painter; }
  /** @brief Ends the painting and writes the document; false when the file cannot be written. */
  bool saveToFile(const std::string& path);

private:
  QBuffer m_Buffer;
  QSvgGenerator m_Generator;
  QPainter m_Painter;
};
} // namespace plottaro
