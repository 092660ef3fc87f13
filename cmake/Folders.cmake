# One function per kind of folder, so that a folder's own CMakeLists.txt is a line or two.

# nr_for_this_system(VARIABLE): takes out of a list of sources what is for the other system. Names tell:
# TextWin32.cpp is for Windows; TextIcu.cpp, HostWindowsGtk.cpp and the like for the rest.
function(nr_for_this_system variable)
  set(sources ${${variable}})
  if(WIN32)
    list(FILTER sources EXCLUDE REGEX "(Icu|Posix|Gtk|Pango)(Test)?\\.cpp$")
  else()
    list(FILTER sources EXCLUDE REGEX "Win32(Test)?\\.cpp$")
  endif()
  set(${variable} ${sources} PARENT_SCOPE)
endfunction()

# nr_library(NAME [WX] USES target...): a static library of every .cpp of the calling folder.
# WX: the folder draws windows; it is skipped where the build has none.
function(nr_library name)
  cmake_parse_arguments(ARG "WX" "" "USES;SOURCES" ${ARGN})
  if(ARG_WX AND NOT NR_WINDOWS)
    return()
  endif()
  if(NOT ARG_SOURCES)
    file(GLOB ARG_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  endif()
  nr_for_this_system(ARG_SOURCES)
  if(NOT ARG_SOURCES) # a folder of headers only
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} INTERFACE ${ARG_USES})
    return()
  endif()
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${ARG_USES})
  if(ARG_WX)
    nr_use_wx(${name})
  endif()
endfunction()

# nr_use_wx(TARGET): compiles and links TARGET with the window toolkit, whose headers are not ours to warn about.
function(nr_use_wx target)
  target_include_directories(${target} SYSTEM PUBLIC ${wxWidgets_INCLUDE_DIRS})
  target_compile_definitions(${target} PUBLIC ${wxWidgets_DEFINITIONS})
  target_compile_options(${target} PUBLIC ${wxWidgets_CXX_FLAGS})
  target_link_libraries(${target} PUBLIC ${wxWidgets_LIBRARIES})
endfunction()

# nr_test(NAME [WINDOW] [TIMEOUT seconds] [NOT_ON_WINDOWS test...] USES target...): a GoogleTest program of every .cpp
# of the calling folder.
# WINDOW: drives real windows; its tests run under a virtual display.
# NOT_ON_WINDOWS: tests of what Wine's windows do otherwise.
function(nr_test name)
  cmake_parse_arguments(ARG "WINDOW" "TIMEOUT" "USES;SOURCES;NOT_ON_WINDOWS" ${ARGN})
  if(ARG_WINDOW AND NOT NR_WINDOWS)
    return()
  endif()
  if(NOT ARG_SOURCES)
    file(GLOB ARG_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  endif()
  nr_for_this_system(ARG_SOURCES)
  if(NOT ARG_SOURCES)
    return()
  endif()
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  add_executable(${name} ${ARG_SOURCES})
  target_compile_definitions(${name} PRIVATE NR_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  if(ARG_WINDOW)
    nr_use_wx(${name})
    target_link_libraries(${name} PRIVATE ${ARG_USES} nr_test_windows GTest::gtest)
    # Each test gets a virtual display of its own, so window tests run side by side.
    set(on_display ${PROJECT_SOURCE_DIR}/tests/under_display)
    if(WIN32)
      set(on_display ${PROJECT_SOURCE_DIR}/tests/windows/con_wine --scrivania ${NR_ARCHITECTURE})
    endif()
    set_property(TARGET ${name} PROPERTY CROSSCOMPILING_EMULATOR ${on_display})
  else()
    target_link_libraries(${name} PRIVATE ${ARG_USES} GTest::gtest GTest::gtest_main)
  endif()
  if(WIN32) # starting Wine costs more than the tests: one start for all
    list(JOIN ARG_NOT_ON_WINDOWS ":" left_out)
    add_test(NAME ${NR_PRESET}.${name} COMMAND ${name} --gtest_filter=-${left_out})
    set_tests_properties(${NR_PRESET}.${name} PROPERTIES TIMEOUT 600)
    return()
  endif()
  gtest_discover_tests(${name} TEST_PREFIX "${NR_PRESET}." DISCOVERY_MODE PRE_TEST
                       DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT ${ARG_TIMEOUT})
endfunction()
