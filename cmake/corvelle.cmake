# What every folder's CMakeLists.txt shares: language level, output folders, and one function each for a library and a test.

include(GNUInstallDirs)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})

set(CORVELLE_COMPILE_OPTIONS "" CACHE STRING "Further compiler options: warnings, sanitizers.")
set(CORVELLE_LINK_OPTIONS "" CACHE STRING "Further linker options.")
add_compile_options(${CORVELLE_COMPILE_OPTIONS})
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  add_compile_options(-Wno-restrict)  # GCC 12 sees overlaps inside std::u16string that cannot be (its bug 105651)
endif()
add_link_options(${CORVELLE_LINK_OPTIONS})

if(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
  add_compile_options(-fconstexpr-steps=100000000)  # the code page's table is worked out while compiling
endif()

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # What ccache asks of those who precompile headers.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
endif()

# corvelle_compile_as_product(name): without what would need the compiler's C++ runtime: errors are values. Functions
# notice when an array of theirs was written past its end; whatever is linked from them needs
# base/stack_guard_windows.cpp for that, on Windows.
function(corvelle_compile_as_product name)
  target_compile_options(${name} PRIVATE -fno-exceptions -fno-rtti -fno-threadsafe-statics -fstack-protector-strong)
  # Nobody unwinds it. On 64-bit Windows the system wants the tables all the same, for stack traces.
  if(WIN32 AND CMAKE_SIZEOF_VOID_P EQUAL 4)
    target_compile_options(${name} PRIVATE -fno-asynchronous-unwind-tables)
  endif()
endfunction()

# corvelle_library(name SOURCES … LIBRARIES … HEADERS …): one layer of the product as a static library. HEADERS are what
# its users include; a library that has any is installed with them, as corvelle::<name without corvelle_>.
function(corvelle_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES;HEADERS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
  target_link_libraries(${name} PUBLIC ${ARG_LIBRARIES})
  target_compile_features(${name} PUBLIC cxx_std_20)
  corvelle_compile_as_product(${name})
  if(ARG_HEADERS)
    target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${ARG_HEADERS})
    string(REPLACE corvelle_ "" exported ${name})
    set_target_properties(${name} PROPERTIES EXPORT_NAME ${exported})
    install(TARGETS ${name} EXPORT corvelle
            ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
            FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/corvelle)
  endif()
endfunction()

# corvelle_compile_as_test(name): the product is optimised and watched for undefined behaviour; doing either to tables of
# cases takes the compiler minutes and gains nothing.
function(corvelle_compile_as_test name)
  target_compile_options(${name} PRIVATE -O0 -fno-sanitize=undefined)
endfunction()

# corvelle_sources_together(name SOURCES…): adds sources to a target, eight at a time in one file that includes them: what
# they include takes the compiler longer than what they say. CMake's own way to do this names the sources by their whole
# paths, with which no checkout finds the compilations of another in the cache.
function(corvelle_sources_together name)
  set(count 0)
  set(content "")
  foreach(source IN LISTS ARGN)
    cmake_path(ABSOLUTE_PATH source NORMALIZE)
    cmake_path(RELATIVE_PATH source BASE_DIRECTORY ${PROJECT_SOURCE_DIR})
    string(APPEND content "#include \"${source}\"\n")
    math(EXPR count "${count} + 1")
    math(EXPR place "${count} % 8")
    list(LENGTH ARGN all)
    if(place EQUAL 0 OR count EQUAL all)
      set(file ${CMAKE_CURRENT_BINARY_DIR}/${name}_until_${count}.cpp)
      file(GENERATE OUTPUT ${file} CONTENT "${content}")
      target_sources(${name} PRIVATE ${file})
      set(content "")
    endif()
  endforeach()
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
endfunction()

# corvelle_test_program(name SOURCES … LIBRARIES …): one GoogleTest program.
function(corvelle_test_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name})
  corvelle_sources_together(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gmock GTest::gtest_main)
  corvelle_compile_as_test(${name})
  # GoogleTest's headers cost more to read than most tests, so they are read once, for the first program.
  if(name STREQUAL precompiled_test_headers)
    target_precompile_headers(${name} PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
  else()
    target_precompile_headers(${name} REUSE_FROM precompiled_test_headers)
  endif()
endfunction()

# corvelle_test(name SOURCES … LIBRARIES …): one GoogleTest program, registered as one CTest test.
# Under Wine starting a process costs far more than running a case, hence one test a program.
function(corvelle_test name)
  corvelle_test_program(${name} ${ARGN})
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 300)
endfunction()
