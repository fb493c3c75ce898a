#!/bin/sh
# Copies the Breeze icons (LGPL-3+, KDE; Debian package breeze-icon-theme) that the module uses into
# icons/light and icons/dark under the names the code asks for, and rewrites ZRIcons.qrc.
# Run it again on purpose after changing the table below; the copies are committed.
set -e
here=$(cd "$(dirname "$0")" && pwd)
src=/usr/share/icons
# theme name|breeze icon (an optional "-off" name is the unchecked state of a checkable icon)
table='
Annotation|actions/22/insert-text
BarChart|actions/22/office-chart-bar
BasicSpreadsheet|actions/22/table
Cells|actions/22/view-grid
Close|actions/22/window-close
CustomCamera|devices/22/camera-photo
DataSource|places/22/server-database
EdgeGeometry|actions/22/draw-polyline
Eye|actions/22/view-visible
Eye-off|actions/22/view-hidden
FocalPoint|actions/22/crosshairs
Glyph|actions/22/draw-arrow-forward
HelpBlue|actions/22/help-contents
HistogramChart|actions/22/view-object-histogram-linear
HoverCells|actions/22/select-rectangular
HoverPoints|actions/22/node
I Up|actions/22/object-flip-vertical
LineChart|actions/22/office-chart-line
MultidimSpreadsheet|actions/22/labplot-matrix
ParameterSeparator|actions/22/arrow-down
ParameterSeparator-off|actions/22/arrow-right
PickFocalPoint|actions/22/color-picker
PipelineFileBridgeObj|actions/22/document-import
ResetCamera|actions/22/zoom-fit-best
ResetFocalPoint|actions/22/snap-bounding-box-center
RotateClockwise|actions/22/object-rotate-right
RotateCounterClockwise|actions/22/object-rotate-left
ScaleToData|actions/22/zoom-fit-width
ScatterChart|actions/22/office-chart-scatter
Settings|actions/22/configure
SliceView|mimetypes/22/image-x-generic
SnapToCamera|actions/22/transform-move
Split Horizontal|actions/22/view-split-left-right
Split Vertical|actions/22/view-split-top-bottom
TriangleGeometry|actions/22/draw-triangle
Undo|actions/22/edit-undo
VertexGeometry|actions/22/snap-nodes-cusp
Visualization|actions/22/shape-cuboid
VolumeView|actions/22/draw-cuboid
VXFClip|actions/22/transform-crop
VXFImageResample|actions/22/transform-scale
VXFQuadricClustering|actions/22/draw-halfcircle1
VXFSlice|actions/22/edit-cut
VXFThreshold|actions/22/view-filter
VXPipelineTreeIcon|actions/22/view-list-tree
invert|actions/22/exchange-positions
preset|actions/22/color-gradient
'
qrc="$here/ZRIcons.qrc"
printf '<!DOCTYPE RCC>\n<RCC version="1.0">\n  <qresource prefix="/ZRStyle">\n' >"$qrc"
for theme in light dark; do
  case $theme in light) dir=breeze ;; dark) dir=breeze-dark ;; esac
  mkdir -p "$here/icons/$theme"
  echo "$table" | while IFS='|' read -r name file; do
    [ -n "$name" ] || continue
    cp -L "$src/$dir/$file.svg" "$here/icons/$theme/$name.svg"
    printf '    <file>icons/%s/%s.svg</file>\n' "$theme" "$name" >>"$qrc"
  done
done
printf '    <file>themes/light.json</file>\n    <file>themes/dark.json</file>\n' >>"$qrc"
printf '  </qresource>\n</RCC>\n' >>"$qrc"
