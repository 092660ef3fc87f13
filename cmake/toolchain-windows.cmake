# What both Windows toolchains share; they set NR_ARCHITECTURE and NR_TRIPLET. The compiler is Debian's MinGW
# with POSIX threads; what the product links lies in a cache that packaging/windows/dipendenze fills.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${NR_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${NR_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${NR_TRIPLET}-windres)
set(NR_WIDL ${NR_TRIPLET}-widl)

get_filename_component(checkout ${CMAKE_CURRENT_LIST_DIR} DIRECTORY)
execute_process(COMMAND ${checkout}/packaging/windows/dipendenze --dove ${NR_ARCHITECTURE}
  OUTPUT_VARIABLE dependencies OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "packaging/windows/dipendenze --dove ${NR_ARCHITECTURE} failed")
endif()
list(GET dependencies 0 toolkit)
set(wxWidgets_CONFIG_EXECUTABLE ${toolkit}/bin/wx-config CACHE FILEPATH "The toolkit built for Windows")
set(CMAKE_FIND_ROOT_PATH ${dependencies} /usr/${NR_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Tests are Windows programs, too.
set(CMAKE_CROSSCOMPILING_EMULATOR ${checkout}/tests/windows/con_wine ${NR_ARCHITECTURE})
