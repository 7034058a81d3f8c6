# Headers that most sources include are read once for each preset: a quarter of all that compiling costs.
#
# The compiler cache would take each build's own precompiled file for another one, so that no other checkout could use what
# it holds. Beside it stands what the cache compares in its place: the compiler, its flags and the headers by name and
# content. A source must still include what it uses; the preset "debug" has no precompiled headers and shows it.

option(TORVEX_PRECOMPILED "precompile the headers that most sources include" ON)

# As CMake does it, but for the path of the header beside the precompiled file: the cache compares that as it stands.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  set(CMAKE_CXX_COMPILE_OPTIONS_USE_PCH -Xclang -include-pch -Xclang <PCH_FILE>)
endif()

# Where the standard library or a package keeps a header; nothing for one that can't be found.
function(torvex_hash_of_header result header)
  string(MAKE_C_IDENTIFIER "torvex_header_${header}" place)
  find_file(${place} ${header} PATHS ${CMAKE_CXX_IMPLICIT_INCLUDE_DIRECTORIES} NO_CACHE)
  if(NOT ${place})
    message(FATAL_ERROR "there is no header ${header} to be precompiled")
  endif()
  file(SHA256 ${${place}} hash)
  set(${result} ${hash} PARENT_SCOPE)
endfunction()

# torvex_precompile(TARGET HEADER...): headers by their names in <>.
function(torvex_precompile target)
  if(NOT TORVEX_PRECOMPILED)
    return()
  endif()
  set(compared "${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION} ${CMAKE_BUILD_TYPE} ${TORVEX_SANITIZE}\n")
  set(headers)
  foreach(header IN LISTS ARGN)
    torvex_hash_of_header(hash ${header})
    string(APPEND compared "${header} ${hash}\n")
    list(APPEND headers "$<$<COMPILE_LANGUAGE:CXX>:<${header}$<ANGLE-R>>")
  endforeach()
  target_precompile_headers(${target} PRIVATE ${headers})
  # Without it GCC's preprocessed source, which the cache reads, would name no precompiled file.
  target_compile_options(${target} PRIVATE "$<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fpch-preprocess>")
  set(ending gch)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    set(ending pch)
  endif()
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${target}.dir)
  file(CONFIGURE OUTPUT ${folder}/cmake_pch.hxx.${ending}.sum CONTENT "${compared}")
endfunction()
