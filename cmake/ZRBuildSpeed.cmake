# Build-speed settings: ccache and precompiled headers.
find_program(ZR_CCACHE ccache)
if(ZR_CCACHE)
  # Precompiled headers and ccache get along only when ccache ignores the PCH timestamps. Paths are
  # hashed relative to the source tree, so a fresh clone elsewhere reuses the cache.
  set(_zr_launcher ${CMAKE_COMMAND} -E env
      "CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime"
      "CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}" "CCACHE_NOHASHDIR=true" ${ZR_CCACHE})
  set(CMAKE_C_COMPILER_LAUNCHER ${_zr_launcher})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${_zr_launcher})
endif()

# The heavy headers that almost every translation unit of the module pulls in.
function(zr_precompile_heavy_headers target)
  target_precompile_headers(${target} PRIVATE
    <memory> <string> <vector> <map> <functional> <optional>
    <QObject> <QString> <QList> <QMap> <QPointer> <QWidget>
    <vtkSmartPointer.h> <vtkNew.h> <vtkDataSet.h> <vtkDataArray.h> <vtkPolyData.h> <vtkImageData.h>
    <nlohmann/json.hpp>)
endfunction()
