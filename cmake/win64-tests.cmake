# The 64-bit test programs. GoogleTest needs std::thread, so the posix thread flavour.
set(CORVELLE_TRIPLET x86_64-w64-mingw32)
set(CORVELLE_FLAVOUR posix)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
