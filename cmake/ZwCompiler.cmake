# SPDX-License-Identifier: MIT
# Language level, warnings, sanitizers and the compiler cache, for every target.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

find_program(ZW_CCACHE ccache)
if(ZW_CCACHE)
  # The precompiled headers are part of the key: they and what they include are hashed whole.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${ZW_CCACHE})
endif()

if(CMAKE_BUILD_TYPE STREQUAL "Release")
  set(CMAKE_CXX_FLAGS_RELEASE "-O3 -DNDEBUG")
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align)
if(ZW_WERROR)
  add_compile_options(-Werror)
endif()

if(ZW_PCH AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(-fpch-preprocess) # For ccache.
elseif(ZW_PCH)
  add_compile_options("SHELL:-Xclang -fno-pch-timestamp")
endif()

# All of a program's links to libraries are made at its start, and read only from then on.
add_link_options(-Wl,-z,relro -Wl,-z,now)

if(ZW_SANITIZE)
  add_compile_options(-fsanitize=${ZW_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all -g1)
  add_link_options(-fsanitize=${ZW_SANITIZE})
endif()
if(ZW_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
