# The operations as a library for others: `cmake --install` puts headers, archives and a CMake package in place.
include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/corvelle)

# corvelle::corvelle is all of them; each layer can be had alone.
add_library(corvelle_all INTERFACE)
set_target_properties(corvelle_all PROPERTIES EXPORT_NAME corvelle)
target_link_libraries(corvelle_all INTERFACE corvelle_text corvelle_datenum corvelle_data corvelle_exceptions)
# Found as <corvelle/text/fields.h>; the headers find each other from within that folder.
target_include_directories(corvelle_all INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
install(TARGETS corvelle_all EXPORT corvelle)

install(EXPORT corvelle NAMESPACE corvelle:: FILE corvelle-config.cmake DESTINATION ${package_folder})
write_basic_package_version_file(corvelle-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/corvelle-config-version.cmake DESTINATION ${package_folder})
