# Language level, warnings and sanitizers, the same for every target of the project.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Werror)
add_compile_options("$<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor;-Woverloaded-virtual>")
if(CMAKE_BUILD_TYPE STREQUAL "RelWithDebInfo")
  add_compile_options(-O2 -g1)
endif()

# Windows: one file that needs only what Windows 7 and later bring, texts in UTF-16, nothing to debug inside.
if(WIN32)
  add_compile_definitions(UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601)
  set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")
  set(CMAKE_C_FLAGS_RELEASE "-O2 -DNDEBUG")
  add_compile_options(-ffunction-sections -fdata-sections)
  if(NR_ARCHITECTURE STREQUAL "x86")
    # Floating point as in the other builds (the old unit's hidden digits make sums differ), and stacks that
    # hosts' compilers align to 4 bytes only.
    add_compile_options(-msse2 -mfpmath=sse -mstackrealign)
  endif()
  # Calls through pointers to members of an empty class: GCC 12 takes them for virtual ones here.
  add_compile_options(-Wno-array-bounds)
  add_link_options(-static -s -Wl,--gc-sections)
endif()

set(NR_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize= takes them")
if(NR_SANITIZE)
  add_compile_options(-fsanitize=${NR_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer -O1)
  add_link_options(-fsanitize=${NR_SANITIZE})
endif()

find_program(CCACHE ccache)
if(CCACHE)
  # What was compiled in one checkout serves in another: paths inside the checkout count as relative ones.
  set(launcher ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
  set(CMAKE_C_COMPILER_LAUNCHER ${launcher})
endif()
