# What `cmake --install` lays down: the library, its headers, the package for find_package and the
# one for pkg-config. Packages that only the library's sources need are asked of a consumer only when
# the library is static.

include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/OrvaneSchedule)

install(TARGETS orvane_schedule EXPORT OrvaneScheduleTargets
    FILE_SET folders DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/orvane
    FILE_SET umbrella DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT OrvaneScheduleTargets NAMESPACE orvane:: DESTINATION ${package_dir})

configure_package_config_file(cmake/OrvaneScheduleConfig.cmake.in OrvaneScheduleConfig.cmake
    INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(OrvaneScheduleConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/OrvaneScheduleConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/OrvaneScheduleConfigVersion.cmake
    DESTINATION ${package_dir})

file(RELATIVE_PATH prefix_from_pkgconfig "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
configure_file(cmake/orvane-schedule.pc.in orvane-schedule.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/orvane-schedule.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
