# The target nats_client: the NATS client in C, as the distribution has it; for Windows as tools/windows_nats.sh builds
# it, whose folder is given as TRADEBOOK_WINDOWS_NATS. Without that folder there is no such target for Windows.
set(TRADEBOOK_WINDOWS_NATS "" CACHE PATH "Where the NATS client for Windows is installed")
if(WIN32 AND NOT TRADEBOOK_WINDOWS_NATS)
  return()
endif()
add_library(nats_client INTERFACE)
if(WIN32)
  target_include_directories(nats_client SYSTEM INTERFACE ${TRADEBOOK_WINDOWS_NATS}/include)
  target_link_libraries(nats_client INTERFACE ${TRADEBOOK_WINDOWS_NATS}/lib/libnats_static.a ws2_32)
else()
  find_library(NATS_LIBRARY nats REQUIRED)
  target_link_libraries(nats_client INTERFACE ${NATS_LIBRARY})
endif()
