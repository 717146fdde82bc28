# What every target of the project has in common: warnings, sanitizers, include root.

add_library(tradebook_options INTERFACE)
target_include_directories(tradebook_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(tradebook_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual)
# clang counts changes of sign under -Wconversion, gcc does not: both say the same here.
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  target_compile_options(tradebook_options INTERFACE -Wno-sign-conversion)
endif()
# gcc 12 sees overlaps in joined std::strings that are not there; drop when gcc 13 is the floor.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(tradebook_options INTERFACE -Wno-restrict)
endif()
if(TRADEBOOK_SANITIZE)
  target_compile_options(tradebook_options INTERFACE
    -fsanitize=${TRADEBOOK_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tradebook_options INTERFACE -fsanitize=${TRADEBOOK_SANITIZE})
endif()
if(WIN32)
  # The module stands in a foreign process: it brings its own language runtime.
  target_link_options(tradebook_options INTERFACE -static)
else()
  # Unique symbols would keep the module in the process for ever after its end.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(tradebook_options INTERFACE -fno-gnu-unique)
  endif()
endif()

# tradebook_layer(NAME SOURCES file... LINKS target...): one static library of the project.
function(tradebook_layer name)
  cmake_parse_arguments(LAYER "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${LAYER_SOURCES})
  target_link_libraries(${name} PUBLIC tradebook_options ${LAYER_LINKS})
endfunction()

# tradebook_platform_sources(OUT stem...): picks stem_windows.cpp or stem_linux.cpp for each stem. Each stays an object of
# its own: the headers of a system rename functions, and tests replace some of these files.
function(tradebook_platform_sources out)
  set(files)
  foreach(stem ${ARGN})
    if(WIN32)
      list(APPEND files ${stem}_windows.cpp)
    else()
      list(APPEND files ${stem}_linux.cpp)
    endif()
  endforeach()
  set_source_files_properties(${files} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  set(${out} ${files} PARENT_SCOPE)
endfunction()
