#pragma once

#include <vtkSmartPointer.h>

class vtkHardwareSelector;

/**
 * Our override of the toolkit's hardware selector. Image slices are drawn as textured quads cut into
 * sub-extents, so the toolkit's cell ids would only name the quad: the slice mapper writes texel
 * indices in the low cell-id pass and the index of the sub-extent being drawn in the high one. The
 * override keeps the high pass even for small scenes, and hands the list of sub-extents of the
 * selection in progress (image_slice_utilities::SubDividedTextureExtents) to the slice mappers
 * afterwards, so that a pick can be decoded.
 */
namespace VXHardwareSelection
{
/**
 * Puts the override in place: every toolkit request for a vtkHardwareSelector yields ours. Done at
 * library load; calling it again is harmless and makes sure that no factory registered since wins.
 */
void RegisterSelectorOverride();

/**
 * Our selector, set up for the picks of one cell under the mouse: it renders only the passes that
 * name the prop and the cell (not the composite index, point ids or process id), and only inside its
 * area (SetArea): the viewport shrinks to the area and the projection narrows to what the area shows,
 * so a pick of a few pixels costs little more than the vertices of the scene. The other renderers of
 * the window (overlays, the corner axes) never draw into a selection.
 */
vtkSmartPointer<vtkHardwareSelector> NewCellPickSelector();
} // namespace VXHardwareSelection
