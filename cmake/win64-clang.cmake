# The 64-bit DLL and its tools by clang and LLVM's linker.
set(CORVELLE_TRIPLET x86_64-w64-mingw32)
set(CORVELLE_FLAVOUR clang)
set(CORVELLE_WINDOWS_MAJOR 5)
set(CORVELLE_WINDOWS_MINOR 2)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
