# Windows, i686.
set(MINGW_CPU i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
