# SPDX-License-Identifier: MIT
# What the tests need on Windows: GoogleTest compiled from its sources, the tests of the units for that system, and the names
# of what cannot exist there.
set(gtest_sources /usr/src/googletest/googletest CACHE PATH "Sources of GoogleTest")
add_library(windows_gtest STATIC EXCLUDE_FROM_ALL ${gtest_sources}/src/gtest-all.cc)
target_include_directories(windows_gtest SYSTEM PUBLIC ${gtest_sources}/include PRIVATE ${gtest_sources})
target_compile_features(windows_gtest PUBLIC cxx_std_20)
add_library(windows_gtest_main STATIC EXCLUDE_FROM_ALL ${gtest_sources}/src/gtest_main.cc)
target_link_libraries(windows_gtest_main PUBLIC windows_gtest)
add_library(GTest::gtest ALIAS windows_gtest)
add_library(GTest::gtest_main ALIAS windows_gtest_main)

# Under wine the drive of the tests' data is the one that holds all folders.
set(QMX_TEST_DRIVE "Z:")

# Lines of the table: a source or the name of a test, a tab, the reason.
file(STRINGS windows/absent.tsv absent REGEX "^[^#]")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS windows/absent.tsv)
foreach(line IN LISTS absent)
  string(REGEX REPLACE "\t.*" "" name "${line}")
  if(name MATCHES "\\.cpp$")
    list(APPEND QMX_ABSENT_SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/${name})
  else()
    string(APPEND QMX_ABSENT_TESTS "${name}:")
  endif()
endforeach()

# Numbers, their texts and faults rest on another C library there.
file(GLOB windows_tests CONFIGURE_DEPENDS windows/*_test.cpp base/*_test.cpp desktop/decimal_guard_test.cpp)
add_executable(qmx_windows_tests EXCLUDE_FROM_ALL ${windows_tests} support/core_screen.cpp)
target_include_directories(qmx_windows_tests PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(qmx_windows_tests PRIVATE qmx_platform GTest::gtest_main)
add_test(NAME qmx_windows_tests COMMAND qmx_windows_tests)
add_custom_target(qmx_all_tests DEPENDS qmx_windows_tests)
