# Warnings, hardening, sanitizers, the compiler cache and the linker, for every target of the project.
add_library(torvex_options INTERFACE)
# Only for C++: the one assembler file knows none of these.
target_compile_options(torvex_options INTERFACE
  "$<$<COMPILE_LANGUAGE:CXX>:-Wall;-Wextra;-Wpedantic;-Wshadow;-Wconversion;-Wsign-conversion;-Wold-style-cast>"
  "$<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor;-Woverloaded-virtual;-Wcast-align>"
  # Warnings are errors with the compiler that releases are built with. GCC 12 sees overlaps in std::string that are
  # not there once it inlines, and unset values behind its own sanitizers.
  "$<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Werror;-Wno-restrict>")

# What users run ends at a fault instead of going on with it. scripts/check_hardening.py looks for it in the program.
if(CMAKE_BUILD_TYPE STREQUAL "Release")
  target_compile_options(torvex_options INTERFACE
    # Optimizing, GCC 12 takes the members of an aggregate for unset where making one of the later ones may throw.
    "$<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-maybe-uninitialized>"
    "$<$<COMPILE_LANGUAGE:CXX>:-fPIE;-fstack-protector-strong;-fstack-clash-protection;-U_FORTIFY_SOURCE>"
    # Its checks are made while optimizing; what isn't optimised gets a warning instead.
    "$<$<AND:$<COMPILE_LANGUAGE:CXX>,$<NOT:$<BOOL:$<TARGET_PROPERTY:TORVEX_UNOPTIMISED>>>>:-D_FORTIFY_SOURCE=3>")
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
    target_compile_options(torvex_options INTERFACE "$<$<COMPILE_LANGUAGE:CXX>:-fcf-protection>")
  endif()
  target_compile_definitions(torvex_options INTERFACE _GLIBCXX_ASSERTIONS)
  target_link_options(torvex_options INTERFACE -pie -Wl,-z,relro,-z,now,-z,noexecstack)
endif()

if(TORVEX_SANITIZE)
  target_compile_options(torvex_options INTERFACE
    "$<$<COMPILE_LANGUAGE:CXX>:-fsanitize=${TORVEX_SANITIZE};-fno-omit-frame-pointer;-fno-sanitize-recover=all>"
    "$<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-maybe-uninitialized>")
  target_compile_definitions(torvex_options INTERFACE _GLIBCXX_ASSERTIONS)
  target_link_options(torvex_options INTERFACE -fsanitize=${TORVEX_SANITIZE})
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  # Paths are made relative, so that another checkout of the same sources hits the cache too.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
      CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_PCH_EXTSUM=1 ${CCACHE_PROGRAM})
endif()

# The quick linker, except for what users run: of two unwind entries at one address it keeps the first, and GCC writes
# entries of no length for cold parts that came out empty. A function that loses its entry so lets no exception pass.
# scripts/check_unwind.py looks for such functions.
find_program(LLD_PROGRAM ld.lld)
if(CMAKE_BUILD_TYPE STREQUAL "Release")
  add_link_options(-fuse-ld=bfd)
elseif(LLD_PROGRAM)
  add_link_options(-fuse-ld=lld)
endif()
