# The 32-bit DLL and its tools by clang and LLVM's linker.
set(CORVELLE_TRIPLET i686-w64-mingw32)
set(CORVELLE_FLAVOUR clang)
set(CORVELLE_WINDOWS_MAJOR 4)
set(CORVELLE_WINDOWS_MINOR 0)
# Hosts call with a stack aligned to 4 bytes only.
set(CORVELLE_MACHINE_FLAGS "-msse2 -mfpmath=sse -mstackrealign")
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
