set(NR_ARCHITECTURE x86)
set(NR_TRIPLET i686-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/toolchain-windows.cmake)
