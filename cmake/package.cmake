# `cmake --install` and the target `archive`: one folder that may lie anywhere, packed as .tar.gz for Linux and as .zip
# for Windows. bin/ has the programs with all that they look for beside themselves, doc/ the pages and the licences.
set(package_licences libcli11-dev libsimpleini-dev)
if(WIN32)
  list(APPEND package_licences wx3.2-headers gcc-mingw-w64-x86-64-posix-runtime mingw-w64-x86-64-dev libz-mingw-w64-dev)
  if(TARGET xlsxwriter)
    list(APPEND package_licences libxlsxwriter-dev)
  endif()
endif()

# Libraries are found beside the program, wherever that is.
set_target_properties(terminal tradebook toolkit PROPERTIES INSTALL_RPATH "$ORIGIN")
install(TARGETS terminal tradebook toolkit RUNTIME DESTINATION bin LIBRARY DESTINATION bin ARCHIVE EXCLUDE_FROM_ALL)
if(WIN32)
  get_directory_property(package_companions DIRECTORY ${CMAKE_SOURCE_DIR}/toolkit DEFINITION TOOLKIT_COMPANIONS)
  install(FILES ${package_companions} DESTINATION bin)
  # The archive's programs come without symbols; what others have built is stripped here, and only in the archive.
  install(CODE "
    if(CMAKE_INSTALL_DO_STRIP)
      set(files \"${package_companions}\")
      foreach(file IN LISTS files)
        get_filename_component(name \${file} NAME)
        execute_process(COMMAND \"${CMAKE_STRIP}\" \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/bin/\${name}\"
                        COMMAND_ERROR_IS_FATAL ANY)
      endforeach()
    endif()")
endif()
if(NOT WIN32)
  install(TARGETS trade_gateway demo_venue RUNTIME DESTINATION bin)
  install(FILES gateway/trade_gateway.service DESTINATION doc)
endif()
foreach(folder sample_day working_folder scripts)
  install(DIRECTORY ${CMAKE_SOURCE_DIR}/terminal/data/${folder} DESTINATION bin)
endforeach()

install(FILES README.md CHANGELOG.md LICENSE DESTINATION doc)
install(DIRECTORY docs DESTINATION doc)
# The notices of what the binaries hold of others, as the distribution has them.
foreach(package ${package_licences})
  install(FILES /usr/share/doc/${package}/copyright DESTINATION doc/licences RENAME ${package}.txt)
endforeach()

# Tests and benchmarks are no part of it and need not be built.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
add_custom_target(archive
  COMMAND ${CMAKE_CPACK_COMMAND}
  WORKING_DIRECTORY ${CMAKE_BINARY_DIR}
  VERBATIM)
add_dependencies(archive terminal tradebook toolkit)
if(NOT WIN32)
  add_dependencies(archive trade_gateway demo_venue)
endif()

set(CPACK_PACKAGE_VENDOR "The Trade Book developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_SOURCE_DIR}/LICENSE)
set(CPACK_GENERATOR TGZ)
set(CPACK_PACKAGE_FILE_NAME tradebook-${PROJECT_VERSION}-linux-x86_64)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME tradebook-${PROJECT_VERSION}-windows-x64)
endif()
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
