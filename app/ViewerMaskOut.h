#pragma once

#include <QStringList>

/**
 * The viewer's mask export, which needs no window:
 *   kestrix-viewer FILE.kestrix --threshold ARRAY:MIN:MAX [--threshold ...] [--geometry NAME] --mask-out
 * OUT.kestrix adds the mask of the cells that pass every threshold to the cell data of the geometry (by
 * default each geometry whose cell data holds all the arrays), as a threshold filter's multi-threshold button
 * does in the window, and writes the data structure to OUT.kestrix.
 */
class ViewerMaskOut
{
public:
  static bool handles(const QStringList& arguments);
  /** @brief Exit code: 0 written, 1 a file could not be read or written, 2 a request that cannot be followed.
   */
  static int run(const QStringList& arguments);
};
