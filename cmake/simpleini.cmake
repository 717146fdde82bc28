# The target simpleini: the one header SimpleIni.h, which the distribution ships among the native headers. It is copied
# into the build tree, so that a cross build finds it without the native headers beside it.
find_path(SIMPLEINI_FOLDER SimpleIni.h PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
configure_file(${SIMPLEINI_FOLDER}/SimpleIni.h ${CMAKE_BINARY_DIR}/simpleini/SimpleIni.h COPYONLY)
add_library(simpleini INTERFACE)
target_include_directories(simpleini SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/simpleini)
