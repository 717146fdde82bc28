# The target wxwidgets: wxWidgets 3.2 as the distribution has it; for Windows as tools/windows_wx.sh builds it, whose
# folder is given as TRADEBOOK_WINDOWS_WX.
add_library(wxwidgets INTERFACE)
if(WIN32)
  set(TRADEBOOK_WINDOWS_WX "" CACHE PATH "Where wxWidgets for Windows is installed")
  find_package(wxWidgets 3.2 CONFIG REQUIRED COMPONENTS mono PATHS ${TRADEBOOK_WINDOWS_WX} NO_DEFAULT_PATH
               NO_CMAKE_FIND_ROOT_PATH)
  target_link_libraries(wxwidgets INTERFACE wx::mono)
  target_compile_definitions(wxwidgets INTERFACE wxDEBUG_LEVEL=0)  # as the library was built
else()
  find_package(wxWidgets 3.2 REQUIRED COMPONENTS propgrid aui core base)
  target_include_directories(wxwidgets SYSTEM INTERFACE ${wxWidgets_INCLUDE_DIRS})
  target_compile_definitions(wxwidgets INTERFACE ${wxWidgets_DEFINITIONS})
  target_compile_options(wxwidgets INTERFACE ${wxWidgets_CXX_FLAGS})
  target_link_libraries(wxwidgets INTERFACE ${wxWidgets_LIBRARIES})
endif()
