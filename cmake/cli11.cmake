# The target cli11: headers alone, which the distribution ships among the native ones. They are copied into the build
# tree, so that a cross build finds them without the native headers beside them.
include_guard(GLOBAL)
find_path(CLI11_FOLDER CLI/CLI.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
file(COPY ${CLI11_FOLDER}/CLI DESTINATION ${CMAKE_BINARY_DIR}/cli11)
add_library(cli11 INTERFACE)
target_include_directories(cli11 SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/cli11)
