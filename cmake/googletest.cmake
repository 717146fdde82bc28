# GTest::gtest_main: built from the sources that the distribution ships, so that sanitizers, the cross compiler and
# the native build all get one made with their own flags.
if(NOT TARGET GTest::gtest_main)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
  foreach(library gtest gtest_main gmock gmock_main)
    set_target_properties(${library} PROPERTIES COMPILE_WARNING_AS_ERROR OFF)
    target_compile_options(${library} PRIVATE -w)
  endforeach()
  if(NOT TARGET GTest::gtest_main)
    add_library(GTest::gtest_main ALIAS gtest_main)
  endif()
endif()
