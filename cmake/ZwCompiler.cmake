# Language level, warnings, sanitizers and the compiler cache, for every target.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

find_program(ZW_CCACHE ccache)
if(ZW_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${ZW_CCACHE}")
endif()

if(CMAKE_BUILD_TYPE STREQUAL "Release")
  set(CMAKE_CXX_FLAGS_RELEASE "-O3 -DNDEBUG")
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align)
if(ZW_WERROR)
  add_compile_options(-Werror)
endif()

if(ZW_SANITIZE)
  add_compile_options(-fsanitize=${ZW_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all -g1)
  add_link_options(-fsanitize=${ZW_SANITIZE})
endif()
if(ZW_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
