# The target xlsxwriter: libxlsxwriter as the distribution has it; for Windows as tools/windows_xlsx.sh builds it, whose
# folder is given as TRADEBOOK_WINDOWS_XLSX. Without that folder there is no such target for Windows, and the
# terminal refuses to save workbooks.
set(TRADEBOOK_WINDOWS_XLSX "" CACHE PATH "Where libxlsxwriter for Windows is installed")
if(WIN32 AND NOT TRADEBOOK_WINDOWS_XLSX)
  return()
endif()
add_library(xlsxwriter INTERFACE)
if(WIN32)
  target_include_directories(xlsxwriter SYSTEM INTERFACE ${TRADEBOOK_WINDOWS_XLSX}/include)
  target_link_libraries(xlsxwriter INTERFACE ${TRADEBOOK_WINDOWS_XLSX}/lib/libxlsxwriter.a ZLIB::ZLIB)
else()
  find_library(XLSXWRITER_LIBRARY xlsxwriter REQUIRED)
  target_link_libraries(xlsxwriter INTERFACE ${XLSXWRITER_LIBRARY})
endif()
