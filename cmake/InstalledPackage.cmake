# What other projects find the installed libraries by: a package of CMake and files of pkg-config.
include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/zol)
set(ZOL_COMPONENT_FILE libzol_file_management.so.${PROJECT_VERSION_MAJOR})
set(ZOL_COMPONENT_PLACE ${CMAKE_INSTALL_LIBDIR}/${ZOL_COMPONENT_FILE})
configure_package_config_file(cmake/package/zolConfig.cmake.in package/zolConfig.cmake
    INSTALL_DESTINATION ${package_folder}
    PATH_VARS ZOL_COMPONENT_PLACE)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/package/zolConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/package/zolConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/package/zolConfigVersion.cmake
    DESTINATION ${package_folder})

file(RELATIVE_PATH up "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" ZOL_PREFIX_FROM_PKGCONFIG "${up}")
set(pkgconfig_files zol-spi zol-file-management)
install(EXPORT zolSpiTargets NAMESPACE zol:: DESTINATION ${package_folder})
if(NOT ZOL_COMMON_ROOT)
    list(APPEND pkgconfig_files zol-common)
    install(EXPORT zolCommonTargets NAMESPACE zol:: DESTINATION ${package_folder})
endif()
foreach(name IN LISTS pkgconfig_files)
    configure_file(cmake/package/${name}.pc.in package/${name}.pc @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/package/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

install(FILES README.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR} PATTERN docs/reference EXCLUDE)
# What the target reference has made, if it has.
install(DIRECTORY ${PROJECT_BINARY_DIR}/reference/html DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs/reference OPTIONAL)
