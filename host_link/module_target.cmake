# The entry points stand on everything else of the plug-in, so their targets come last; this file is included by the root.
tradebook_layer(host_link_entry
  SOURCES host_link/plugin_info.cpp host_link/message_router.cpp
  LINKS plugin_state)

# tradebook.so or tradebook.dll: exports the three entry points and nothing else.
add_library(tradebook MODULE host_link/exports.cpp)
target_link_libraries(tradebook PRIVATE host_link_entry book_windows)
tradebook_windows_resources(tradebook "Trade Book plug-in")
# The toolkit's library lies beside.
set_target_properties(tradebook PROPERTIES PREFIX "" BUILD_RPATH_USE_ORIGIN ON)
if(NOT WIN32)
  set(TRADEBOOK_EXPORT_LIST ${CMAKE_SOURCE_DIR}/host_link/exports.map)
  # Bound to itself: a terminal exports an OnMessage of its own, which must not stand in for the module's.
  target_link_options(tradebook PRIVATE -Wl,--version-script=${TRADEBOOK_EXPORT_LIST} -Wl,-Bsymbolic)
  set_target_properties(tradebook PROPERTIES LINK_DEPENDS ${TRADEBOOK_EXPORT_LIST})
endif()
