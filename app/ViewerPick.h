#pragma once

#include <nlohmann/json.hpp>

#include <QPoint>
#include <QString>

class VXVisualizationWidget;

/**
 * --pick X,Y: what lies under one pixel of the render window (origin top left), as one JSON object:
 * "geometry" (the data source's name), "cell_id" and "point_id" (-1 where none), "position" (world
 * coordinates) and "values" (each array's value there: a number, or a list of components).
 */
class ViewerPick
{
public:
  /** False, with the reason, when the text is not two whole numbers X,Y of at least 0. */
  static bool Parse(const QString& text, QPoint& pixel, QString* error);
  /** Picks in the window's current frame; a pixel off the data gives null geometry and position. */
  static nlohmann::json Report(VXVisualizationWidget* window, const QPoint& pixel);
};
