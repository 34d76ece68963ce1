include(CMakePackageConfigHelpers)

set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/mokcntr14)

install(EXPORT mokcntr14-targets NAMESPACE mok14:: DESTINATION ${packageDir})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/mokcntr14-config.cmake.in
                              ${PROJECT_BINARY_DIR}/mokcntr14-config.cmake INSTALL_DESTINATION ${packageDir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/mokcntr14-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/mokcntr14-config.cmake ${PROJECT_BINARY_DIR}/mokcntr14-config-version.cmake
        DESTINATION ${packageDir})

install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation)

# The way from the directory of the .pc file back to the prefix, so that an installed tree may be moved.
file(RELATIVE_PATH prefixFromPc "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
configure_file(${CMAKE_CURRENT_LIST_DIR}/mokcntr14.pc.in ${PROJECT_BINARY_DIR}/mokcntr14.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/mokcntr14.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
