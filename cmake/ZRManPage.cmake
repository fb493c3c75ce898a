# Writes the kestrix-viewer manual page from the viewer's own --help text.
#   cmake -DVIEWER=path/to/kestrix-viewer -DOUTPUT=kestrix-viewer.1 -DVERSION=x.y.z -P ZRManPage.cmake
# The usage lines become the synopsis and the rest the description, kept as the help lays it out, so
# every option --help names is in the page and none other.
set(ENV{QT_QPA_PLATFORM} offscreen)
execute_process(COMMAND ${VIEWER} --help OUTPUT_VARIABLE help RESULT_VARIABLE status)
if(NOT status EQUAL 0 OR help STREQUAL "")
  message(FATAL_ERROR "${VIEWER} --help failed (${status})")
endif()

# roff: backslashes first, then hyphens (so options read and search as -), then control characters
# at the start of a line.
string(REPLACE "\\" "\\e" help "${help}")
string(REPLACE "-" "\\-" help "${help}")
string(REGEX REPLACE "(^|\n)([.'])" "\\1\\\\&\\2" help "${help}")

string(REGEX MATCH "^Usage: [^\n]*(\n +kestrix\\\\-viewer[^\n]*)*" synopsis "${help}")
string(LENGTH "${synopsis}" synopsis_length)
string(SUBSTRING "${help}" ${synopsis_length} -1 description)
string(REGEX REPLACE "^Usage: " "" synopsis "${synopsis}")
string(REGEX REPLACE "\n +" "\n" synopsis "${synopsis}")
string(STRIP "${description}" description)

file(WRITE ${OUTPUT} ".TH KESTRIX\\-VIEWER 1 \"\" \"kestrix-viewer ${VERSION}\" \"User Commands\"
.SH NAME
kestrix\\-viewer \\- show materials data: .kestrix, VTK, STL and image files
.SH SYNOPSIS
.nf
${synopsis}
.fi
.SH DESCRIPTION
.nf
${description}
.fi
")
