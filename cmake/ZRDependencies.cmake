# Third-party packages, all from the distribution.
find_package(MPI COMPONENTS C REQUIRED) # Debian's VTK links an MPI target
find_package(VTK REQUIRED COMPONENTS
  CommonCore CommonDataModel CommonExecutionModel CommonTransforms CommonColor CommonMath CommonSystem
  FiltersCore FiltersGeneral FiltersGeometry FiltersSources FiltersExtraction FiltersModeling
  FiltersHybrid FiltersPoints FiltersTexture
  IOCore IOXML IOParallelXML IOLegacy IOGeometry IOImage
  ImagingCore ImagingGeneral ImagingSources ImagingStatistics
  RenderingCore RenderingOpenGL2 RenderingAnnotation RenderingFreeType RenderingLabel
  RenderingVolume RenderingVolumeOpenGL2 RenderingImage
  InteractionStyle InteractionWidgets InteractionImage GUISupportQt)
set(ZR_VTK_LIBRARIES ${VTK_LIBRARIES})

# Use the Qt major version that VTK's Qt widget was built against.
if(VTK_QT_VERSION)
  set(ZR_QT_MAJOR ${VTK_QT_VERSION})
else()
  set(ZR_QT_MAJOR 5)
endif()
set(_zr_qt_components Core Gui Widgets OpenGL Svg Test)
if(ZR_QT_MAJOR GREATER_EQUAL 6)
  list(APPEND _zr_qt_components OpenGLWidgets SvgWidgets)
endif()
find_package(Qt${ZR_QT_MAJOR} REQUIRED COMPONENTS ${_zr_qt_components})
set(ZR_QT_LIBRARIES Qt${ZR_QT_MAJOR}::Core Qt${ZR_QT_MAJOR}::Gui Qt${ZR_QT_MAJOR}::Widgets
    Qt${ZR_QT_MAJOR}::OpenGL Qt${ZR_QT_MAJOR}::Svg)
if(ZR_QT_MAJOR GREATER_EQUAL 6)
  list(APPEND ZR_QT_LIBRARIES Qt6::OpenGLWidgets Qt6::SvgWidgets)
endif()

find_package(TBB REQUIRED)
find_package(fmt REQUIRED)
find_package(nlohmann_json REQUIRED)
# The serial HDF5 (pkg-config's hdf5.pc points at the MPI build; CMake's module finds the serial one).
find_package(HDF5 REQUIRED COMPONENTS C)

# Qwt has no CMake package on Debian.
find_path(QWT_INCLUDE_DIR qwt_plot.h PATH_SUFFIXES qwt qwt-qt${ZR_QT_MAJOR} REQUIRED)
find_library(QWT_LIBRARY NAMES qwt-qt${ZR_QT_MAJOR} qwt REQUIRED)
add_library(ZR::Qwt INTERFACE IMPORTED)
target_include_directories(ZR::Qwt INTERFACE ${QWT_INCLUDE_DIR})
target_link_libraries(ZR::Qwt INTERFACE ${QWT_LIBRARY})
