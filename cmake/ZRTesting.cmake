# One helper per kind of test, so that adding a test is one line.
#   zr_add_gtest(NAME name SOURCES a.cpp b.cpp LIBS lib... [GUI] [LABELS l...])
# GUI tests need a display: the test command runs the whole suite under xvfb-run.
include(GoogleTest)
find_package(GTest REQUIRED)

function(zr_add_gtest)
  cmake_parse_arguments(T "GUI" "NAME;TIMEOUT" "SOURCES;LIBS;LABELS" ${ARGN})
  add_executable(${T_NAME} ${T_SOURCES})
  set_target_properties(${T_NAME} PROPERTIES AUTOMOC ON AUTOUIC ON AUTORCC ON
    RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  # Tests write and read .kestrix files directly, so they link the reader rather than load it.
  target_link_libraries(${T_NAME} PRIVATE ${T_LIBS} zorekestrix GTest::gtest GTest::gmock)
  target_include_directories(${T_NAME} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/tests)
  target_compile_definitions(${T_NAME} PRIVATE
    ZR_TEST_DATA_DIR="${PROJECT_SOURCE_DIR}/tests/data"
    ZR_TEST_BINARY_DIR="${CMAKE_BINARY_DIR}")
  if(NOT T_TIMEOUT)
    set(T_TIMEOUT 300)
  endif()
  set(labels ${T_LABELS})
  if(T_GUI)
    list(APPEND labels gui)
  else()
    list(APPEND labels unit)
  endif()
  gtest_discover_tests(${T_NAME} DISCOVERY_MODE PRE_TEST
    PROPERTIES TIMEOUT ${T_TIMEOUT} LABELS "${labels}"
    ENVIRONMENT "ZR_SETTINGS_DIR=${CMAKE_BINARY_DIR}/test-settings/${T_NAME};QT_QPA_PLATFORM=xcb")
endfunction()
