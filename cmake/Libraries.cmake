# What Torvex stands on, all from the distribution's packages.
find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
find_package(OpenSSL REQUIRED)
# The finder of this CMake is older than Boost 1.81 and would warn of every component.
set(Boost_NO_WARN_NEW_VERSIONS ON)
find_package(Boost 1.81 EXACT REQUIRED COMPONENTS json url)
find_package(fmt REQUIRED)
find_package(spdlog REQUIRED)
find_package(CURL REQUIRED)
pkg_check_modules(SQLITE REQUIRED IMPORTED_TARGET sqlite3)
pkg_check_modules(PQ REQUIRED IMPORTED_TARGET libpq)
pkg_check_modules(ICU REQUIRED IMPORTED_TARGET icu-uc icu-i18n)
pkg_check_modules(XML REQUIRED IMPORTED_TARGET libxml-2.0 libxslt)
pkg_check_modules(SODIUM REQUIRED IMPORTED_TARGET libsodium)
pkg_check_modules(ENCODINGS REQUIRED IMPORTED_TARGET zlib libbrotlienc libzstd)
pkg_check_modules(QRENCODE REQUIRED IMPORTED_TARGET libqrencode)
pkg_check_modules(NGHTTP2 REQUIRED IMPORTED_TARGET libnghttp2>=1.52)
# One source each includes these, by paths below the system's include folder: no further flags for all.
pkg_check_modules(XAPIAN REQUIRED xapian-core)
pkg_check_modules(POPPLER REQUIRED poppler-cpp)
pkg_check_modules(ZIP REQUIRED libzip)

# Programs that are measured or released allocate with this. The others keep the system's allocator, which
# sanitizers and debuggers know.
add_library(torvex_allocator INTERFACE)
if(CMAKE_BUILD_TYPE STREQUAL "Release")
  find_library(TCMALLOC_LIBRARY tcmalloc_minimal REQUIRED)
  target_link_libraries(torvex_allocator INTERFACE ${TCMALLOC_LIBRARY})
endif()

add_library(torvex_libraries INTERFACE)
target_link_libraries(torvex_libraries INTERFACE
  Threads::Threads OpenSSL::SSL OpenSSL::Crypto Boost::json Boost::url fmt::fmt spdlog::spdlog CURL::libcurl
  PkgConfig::SQLITE PkgConfig::PQ PkgConfig::ICU PkgConfig::XML PkgConfig::SODIUM PkgConfig::ENCODINGS PkgConfig::QRENCODE
  PkgConfig::NGHTTP2
  ${XAPIAN_LINK_LIBRARIES} ${POPPLER_LINK_LIBRARIES} ${ZIP_LINK_LIBRARIES})
target_compile_definitions(torvex_libraries INTERFACE
  BOOST_ASIO_NO_DEPRECATED BOOST_ASIO_SEPARATE_COMPILATION BOOST_BEAST_SEPARATE_COMPILATION SPDLOG_FMT_EXTERNAL)
