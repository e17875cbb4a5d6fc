# GoogleTest: Debian's library for native programs; for Windows it is built from Debian's source package, with the same
# compiler as the tests.
include(GoogleTest)
if(NOT WIN32)
  find_package(GTest REQUIRED)
  add_library(gtest ALIAS GTest::gtest)
  add_library(gtest_main ALIAS GTest::gtest_main)
  return()
endif()

if(NOT EXISTS /usr/src/googletest/CMakeLists.txt)
  message(FATAL_ERROR "GoogleTest is missing: run scripts/setup first")
endif()
set(INSTALL_GTEST OFF)
set(gtest_force_shared_crt ON)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
