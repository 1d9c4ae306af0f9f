# Shared by the Windows toolchain files, which set CORVELLE_TRIPLET and CORVELLE_FLAVOUR and include this. The flavours
# win32 and posix are GCC's; clang takes the headers and libraries of the first.
set(CMAKE_SYSTEM_NAME Windows)
if(CORVELLE_FLAVOUR STREQUAL clang)
  set(CMAKE_CXX_COMPILER clang++-19)
  set(CMAKE_CXX_COMPILER_TARGET ${CORVELLE_TRIPLET})
else()
  set(CMAKE_CXX_COMPILER ${CORVELLE_TRIPLET}-g++-${CORVELLE_FLAVOUR})
  set(CMAKE_C_COMPILER ${CORVELLE_TRIPLET}-gcc-${CORVELLE_FLAVOUR})  # for the libraries that tests use
endif()
set(CMAKE_RC_COMPILER ${CORVELLE_TRIPLET}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${CORVELLE_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine)

# Hosts still run on Windows XP, whose functions the contract's list of imports keeps to; GCC 14's own headers do not compile
# for less than Windows Vista. char16_t views of the system's wchar_t texts need no-strict-aliasing.
set(CMAKE_CXX_FLAGS_INIT "-D_WIN32_WINNT=0x0600 -DUNICODE -D_UNICODE -DNOMINMAX -DWIN32_LEAN_AND_MEAN -fno-strict-aliasing -ffunction-sections -fdata-sections ${CORVELLE_MACHINE_FLAGS}")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
if(CORVELLE_FLAVOUR STREQUAL posix)
  string(APPEND CMAKE_EXE_LINKER_FLAGS_INIT " -wrapper \"${CMAKE_CURRENT_LIST_DIR}/link_quickly\"")
elseif(CORVELLE_FLAVOUR STREQUAL clang)
  # By itself this linker asks for Windows 6.0, and Windows XP refuses what does.
  set(link_with_lld " -fuse-ld=lld-19 -Wl,--major-subsystem-version=${CORVELLE_WINDOWS_MAJOR},--minor-subsystem-version=${CORVELLE_WINDOWS_MINOR}")
  string(APPEND CMAKE_EXE_LINKER_FLAGS_INIT ${link_with_lld})
  string(APPEND CMAKE_SHARED_LINKER_FLAGS_INIT ${link_with_lld})
endif()
