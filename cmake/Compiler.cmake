# Warnings, sanitizers and the compiler cache, for every target of the project.
add_library(torvex_options INTERFACE)
# Only for C++: the one assembler file knows none of these.
target_compile_options(torvex_options INTERFACE
  "$<$<COMPILE_LANGUAGE:CXX>:-Wall;-Wextra;-Wpedantic;-Wshadow;-Wconversion;-Wsign-conversion;-Wold-style-cast>"
  "$<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor;-Woverloaded-virtual;-Wcast-align>"
  # Warnings are errors with the compiler that releases are built with. GCC 12 sees overlaps in std::string that are
  # not there once it inlines, and unset values behind its own sanitizers.
  "$<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Werror;-Wno-restrict>")

if(TORVEX_SANITIZE)
  target_compile_options(torvex_options INTERFACE
    "$<$<COMPILE_LANGUAGE:CXX>:-fsanitize=${TORVEX_SANITIZE};-fno-omit-frame-pointer;-fno-sanitize-recover=all>"
    "$<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-maybe-uninitialized>")
  target_link_options(torvex_options INTERFACE -fsanitize=${TORVEX_SANITIZE})
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  # Paths are made relative, so that another checkout of the same sources hits the cache too.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
      ${CCACHE_PROGRAM})
endif()

find_program(LLD_PROGRAM ld.lld)
if(LLD_PROGRAM)
  add_link_options(-fuse-ld=lld)
endif()
