# The 64-bit DLL and its tools. The win32 thread flavour keeps imports that Windows XP lacks out of it.
set(CORVELLE_TRIPLET x86_64-w64-mingw32)
set(CORVELLE_FLAVOUR win32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
